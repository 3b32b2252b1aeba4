#pragma once

#include <cstdint>

// Every way of moving inside a document. Panes without an open page stay as they are.
namespace quillmere {

inline constexpr int kKeyPanStep = 60;    // pixels
inline constexpr int kWheelNotch = 120;   // delta of one wheel detent
inline constexpr int kWheelPanStep = 60;  // pixels per notch

// Modifier bits of a wheel turn; together they index `AppSettings::wheelActions`.
inline constexpr unsigned kWheelShift = 1;
inline constexpr unsigned kWheelControl = 2;

// Turns a pane to a page, clamped to the document. `fromBottom` shows the bottom of a page that is
// taller than the pane. In Book both panes turn together.
void goToPage(int pane, std::int32_t index, bool fromBottom);

// The pane in which the user of `pane` sees a page: that pane, or in Book the other one; -1 when
// the pane has to be turned to the page first.
int paneShowing(int pane, std::int32_t page);

// The last page's number as users see it: the page count of the pane's document.
std::int32_t lastPage(int pane);

enum class PageKey { PageUp, PageDown, Home, End };
void turnPageByKey(int pane, PageKey key);

enum class ArrowKey { Left, Right, Up, Down };
void panByKey(int pane, ArrowKey key);

// Turns the page when the user has panned past its end. True when it did.
bool panScrollTurn(int pane);

// A page turn that keeps zoom and left offset; `forward` says from which side the page appears.
void turnPageKeepingPan(int pane, std::int32_t index, bool forward);

// The pane that a wheel turn or a side button press at client x goes to.
int paneForPointer(int x);

// One wheel message over client x, y. Scrolling follows every delta; page turns and zoom steps wait
// until small deltas add up to a notch. A delta of 0 turns forward.
void handleWheel(int pane, unsigned modifiers, int delta, int x, int y);

// Panning with the mouse button held, in client pixels.
void startDragPan(int pane, int x, int y);
void moveDragPan(int x, int y);
void endDragPan();
bool dragPanActive();

}  // namespace quillmere
