#pragma once

#include <cstdint>

#include "platform/instances.h"

namespace quillmere {

// A window's normal position as stored in the settings, in pixels.
struct StoredPlacement {
  std::int32_t x = 0;
  std::int32_t y = 0;
  std::int32_t width = 0;   // at least 1
  std::int32_t height = 0;  // at least 1
};

// The position moved and shrunk so that the window stays clear of the work area's edges. A window
// below the minimum size keeps its size; on a work area too small for that size the window stays
// clear of the right and bottom edges and extends beyond the others.
StoredPlacement fitToWorkArea(const StoredPlacement& stored, const platform::ScreenRect& workArea);

// Puts the main window where it was last time, on the nearest screen. Does nothing in a viewer,
// without a stored position, or before the window exists.
void placeMainWindowFromSettings();

// Stores the main window's position in the settings. False when the position is not known.
bool rememberMainWindowPlacement();

}  // namespace quillmere
