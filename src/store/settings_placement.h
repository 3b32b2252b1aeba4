#pragma once

#include <cstdint>

#include "platform/instances.h"

namespace quillmere {

// A window's normal position as the settings keep it, in pixels.
struct StoredPlacement {
  std::int32_t x = 0;
  std::int32_t y = 0;
  std::int32_t width = 0;   // at least 1
  std::int32_t height = 0;  // at least 1
};

// The position moved and shrunk so that the window stays clear of the work area's edges. A window
// smaller than the least size keeps its size; on a work area too small for that size the window
// ends clear of the right and bottom edges and goes beyond the others.
StoredPlacement fitToWorkArea(const StoredPlacement& stored, const platform::ScreenRect& workArea);

// Puts the main window where it was last time, on the nearest screen. Without effect in a viewer,
// without a stored position, and before the window exists.
void placeMainWindowFromSettings();

// Takes the main window's position into the settings. False when it does not tell one.
bool rememberMainWindowPlacement();

}  // namespace quillmere
