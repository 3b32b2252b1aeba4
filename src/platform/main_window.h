#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/instances.h"

// What the logic asks of the one main window of this process. Before the window exists, and after
// it is gone, every operation is without effect and every query gives zero or nothing.
namespace quillmere::platform {

struct PixelSize {
  int width = 0;
  int height = 0;
};

bool mainWindowExists();
PixelSize mainWindowClientSize();

// Outer height of the status bar; 0 without one.
int statusBarHeight();

// The caption follows once the current message is done and invalid pages are painted: it takes long
// to draw.
void setMainWindowTitle(const std::u16string& title);

// Repaints the whole client area, with or without erasing first.
void invalidateMainWindow(bool erase);
// Repaints at once what is invalid.
void updateMainWindow();
// The same without the child windows.
void updatePages();

// Calls `fill` before the status bar is painted or asked for what it shows. Filling it takes longer
// than many a change that it tells of, and the page comes first.
void fillStatusBarLater(void (*fill)());
// Right edges of the status bar's parts in pixels, -1 for "to the end"; `count` of them.
void setStatusParts(const int* rightEdges, int count);
void setStatusText(int part, const std::u16string& text);
// Place of the zoom slider inside the status bar, whether it can be used, and its thumb.
void placeZoomSlider(int x, int y, int width, int height);
void enableZoomSlider(bool enabled);
void setZoomSlider(int position);

// Check mark and enabling of a menu bar item by its command id.
void setMenuItem(std::uint32_t command, bool checked, bool enabled);

// Puts the child windows in their places again, as after a size change.
void layoutMainWindow();

// Chooses the cursor anew for the place where the pointer is.
void refreshCursor();

void captureMouse();
void releaseMouse();
void focusMainWindow();
// Restores the window when it is minimised, then brings it to the foreground.
void raiseMainWindow();
// Gives the keyboard to the tree of a panel.
void focusNavigationTree();
void focusBinderTree();

// Posts the message that rebuilds the binder tree once the current message is done.
void postBinderTreeRebuild();

// Posts the message that deals with what had to wait, from the main message loop.
void postWaitingWork();

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
