#pragma once

#include <cstdint>

namespace quillmere {

// Where a reader stood before a jump: page and view of one pane.
struct JumpRecord {
  std::int32_t page = 0;
  float panX = 0;
  float panY = 0;
  float zoom = 1;
  std::int32_t zoomMode = 0;
};

}  // namespace quillmere
