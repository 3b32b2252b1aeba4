#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/instances.h"

// What the program's logic needs from this process's main window. While there is no window,
// operations do nothing and queries return zero or nullopt.
namespace quillmere::platform {

struct PixelSize {
  int width = 0;
  int height = 0;
};

bool mainWindowExists();
PixelSize mainWindowClientSize();

// Outer height of the status bar; 0 without one.
int statusBarHeight();

// The caption changes once the current message is done and invalid pages are painted, because
// drawing it is slow.
void setMainWindowTitle(const std::u16string& title);

// Repaints the whole client area, with or without erasing first.
void invalidateMainWindow(bool erase);
// Repaints part of the client area without erasing; right and bottom are exclusive.
void invalidateMainWindowPart(int left, int top, int right, int bottom);
// Repaints the stamp panel.
void invalidateStampPanel();
// Repaints everything invalid at once.
void updateMainWindow();
// The same without the child windows.
void updatePages();

// Calls `fill` before the status bar is next painted or queried. Filling it can take longer than
// the change that it reports, and the page should be painted first.
void fillStatusBarLater(void (*fill)());
// Right edges of the `count` parts of the status bar in pixels, -1 for "to the end".
void setStatusParts(const int* rightEdges, int count);
void setStatusText(int part, const std::u16string& text);
// Position of the zoom slider inside the status bar, whether it is enabled, and its thumb.
void placeZoomSlider(int x, int y, int width, int height);
void enableZoomSlider(bool enabled);
void setZoomSlider(int position);

// Sets check mark and enabling of a menu bar item by its command id.
void setMenuItem(std::uint32_t command, bool checked, bool enabled);

// Lays out the child windows again, as after a size change.
void layoutMainWindow();

// Chooses the cursor for the present pointer position again.
void refreshCursor();

void captureMouse();
void releaseMouse();
void focusMainWindow();
// Restores the window if it is minimised, then brings it to the foreground.
void raiseMainWindow();
// Moves the keyboard focus to a panel's tree.
void focusNavigationTree();
void focusBinderTree();

// Posts the message that rebuilds the binder tree once the current message is done. Several before
// it is handled are one.
void postBinderTreeRebuild();

// Posts the message that makes the main message loop handle waiting work.
void postWaitingWork();

// Calls `work` once the current message is done and invalid pages are painted; once, however often
// it was asked for until then; at once where there is no main window. For what takes longer than
// the change that it follows.
void doAfterPainting(void (*work)());
// Whether anything asked for by doAfterPainting() has not been done yet.
bool anyWorkAfterPainting();

// Calls `work` again and again while there is nothing else to do, until it returns false. Asking
// for it twice is the same as once. Each call should take no more than a few milliseconds, since
// the user may press a key during it.
void doWhenIdle(bool (*work)());

// Calls `work` once, half a second after it was last asked for. For what a burst of changes needs
// only at its end. Does nothing without a main window.
void doWhenQuiet(void (*work)());

// The system's colour behind selected text.
struct SystemColor {
  std::uint8_t r = 0;
  std::uint8_t g = 0;
  std::uint8_t b = 0;
};
SystemColor highlightColor();

struct WindowPlacement {
  ScreenRect normal;
  bool maximised = false;
};
std::optional<WindowPlacement> mainWindowPlacement();
void placeMainWindow(const WindowPlacement& placement);

// Asks the window to close, as its close box does.
void closeMainWindow();

}  // namespace quillmere::platform
