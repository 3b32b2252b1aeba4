#pragma once

#include <cstdint>

// The mouse drag or partial wheel step in progress over the main window. Positions are in client
// pixels.
namespace quillmere {

// The drags of the main window; one at a time. app/mouse.cpp has the table of what each does.
enum class Gesture {
  None,
  LeftPanelBar,    // the bar between bookmarks and binders
  LeftPanelWidth,  // the splitter right of the left panel
  StampSplitter,
  Divider,
  Placement,
  Pan,
  Select,
};

struct GestureState {
  Gesture kind = Gesture::None;
  std::int32_t pressX = 0;
  std::int32_t pressY = 0;
  std::int32_t start = 0;  // the dragged width or position when the drag began, in pixels
};

// Wheel movement too small for a page turn or zoom step so far, with the pane and the modifier keys
// that it was collected for.
struct WheelGathering {
  std::int32_t delta = 0;
  std::int32_t pane = -1;
  unsigned modifiers = 0;
};

// Captures the mouse for a drag.
void beginGesture(Gesture kind, int x, int y, int start = 0);

// Releases the mouse. Does nothing and returns false unless this kind of drag is in progress.
bool endGesture(Gesture kind);

// Ends whatever drag is in progress and releases the mouse; what was dragged so far stays. For when
// the pane or document that it moves goes away.
void dropGesture();

}  // namespace quillmere
