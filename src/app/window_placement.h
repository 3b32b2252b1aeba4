#pragma once

#include <cstdint>
#include <optional>

#include "platform/instances.h"

namespace quillmere {

// Where a new top-level window goes. Without a position the system chooses one.
struct InitialPlacement {
  bool positioned = false;
  std::int32_t x = 0;
  std::int32_t y = 0;
  std::int32_t width = 0;
  std::int32_t height = 0;
};

// The window's usual size, on a dense screen within the work area.
InitialPlacement mainWindowInitialPlacement(const platform::ScreenRect& workArea);

struct ViewerSurroundings {
  std::optional<platform::ScreenRect> mainWindow;  // nullopt when there is none to open beside
  platform::ScreenRect workArea;
  int viewerCount = 0;  // windows of other viewers
  int captionHeight = 0;
};

// Beside the main window, each further viewer one caption higher and two further to the right.
InitialPlacement viewerInitialPlacement(const ViewerSurroundings& surroundings);

// The screen as it is now.
ViewerSurroundings viewerSurroundings();

}  // namespace quillmere
