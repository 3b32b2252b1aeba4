#pragma once

#include <cstdint>

#include "session/zoom_mode.h"

namespace quillmere {

// Where the reader was before a jump: page and view of one pane.
struct JumpRecord {
  std::int32_t page = 0;
  float panX = 0;
  float panY = 0;
  float zoom = 1;
  ZoomMode zoomMode = kFitPage;
};

}  // namespace quillmere
