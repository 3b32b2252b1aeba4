#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/pixel_rect.h"
#include "platform/pictures.h"

// The panel right of the page: three buttons, and the stamps of the library in one column. Places
// are pixels from the panel's top left corner.
namespace quillmere {

// What lies at a place of the panel: one of these, or a stamp's index.
inline constexpr std::int32_t kMarkUpItem = -4;
inline constexpr std::int32_t kAddTextItem = -3;
inline constexpr std::int32_t kAddStampItem = -2;
inline constexpr std::int32_t kNoStampItem = -1;

// One rectangle for each entry of the library, before scrolling. Returns the height of the whole
// content.
int LayoutStampGrid(int panelWidth, std::vector<PixelRect>& rectangles);

std::int32_t StampPanelHit(int x, int y);

// Brings the library up to date. Must be called before the panel is shown. Thumbnails follow while
// the program is idle, those that are seen first; what cannot be decoded leaves the library then.
void openStampPanel();
// The same when settings show the panel from the start; a read-only process has none.
void openStampPanelAtStart();

void pressStampPanel(int x, int y);
void moveOverStampPanel(int x, int y);
void releaseStampPanel(int x, int y);
// Another window took the mouse: the drag ends without effect.
void cancelStampDrag();
void leaveStampPanel();
// `delta` is how far the wheel turned, 120 for one notch.
void turnStampPanelWheel(int delta);
// Removes the selected stamp from the library and ends a drag. False when none is selected.
bool deleteSelectedStamp();
// Stamps left the library: what is no longer there is neither selected nor hovered.
void dropMissingStamps();

struct StampPanelButton {
  const char16_t* label;
  PixelRect rect;
  bool hovered = false;
  bool pressed = false;  // its dialog is open
};

struct StampPanelThumbnail {
  platform::SharedPicture picture;  // null until it has been made
  PixelRect rect;                   // in the panel, scrolled
  bool selected = false;
  bool hovered = false;
};

// What the panel shows. Thumbnails that are not there yet are made soon.
struct StampPanelPlan {
  std::vector<StampPanelButton> buttons;
  PixelRect list;  // where thumbnails appear
  std::vector<StampPanelThumbnail> thumbnails;
  PixelRect insertionMark;  // where a dragged stamp would go; empty without such a drag
};
StampPanelPlan planStampPanel();

}  // namespace quillmere
