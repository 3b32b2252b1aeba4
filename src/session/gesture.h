#pragma once

#include <cstdint>

// What the mouse has begun over the main window and not yet ended. Places are client pixels.
namespace quillmere {

// The drags of the main window; one at a time. app/mouse.cpp has the table of what each does.
enum class Gesture {
  None,
  LeftPanelBar,    // the bar between bookmarks and binders
  LeftPanelWidth,  // the splitter right of the left panel
  StampSplitter,
  Divider,
  Pan,
  Select,
};

struct GestureState {
  Gesture kind = Gesture::None;
  std::int32_t pressX = 0;
  std::int32_t pressY = 0;
  std::int32_t start = 0;  // the dragged width or position when the drag began, in pixels
};

// Less than a notch of wheel movement that page turns and zoom steps still wait for, and where it
// was gathered.
struct WheelGathering {
  std::int32_t delta = 0;
  std::int32_t pane = -1;
  unsigned modifiers = 0;
};

// Takes the mouse for a drag.
void beginGesture(Gesture kind, int x, int y, int start = 0);

// Gives the mouse back. False, with nothing done, when another drag or none is going on.
bool endGesture(Gesture kind);

}  // namespace quillmere
