#pragma once

#include <cstdint>

namespace quillmere {

// The note shown beside the pointer. Places are client pixels.
struct MarkupTipState {
  std::int32_t pane = -1;  // -1 when none is shown
  std::int32_t annot = -1;
  std::int32_t x = 0;  // where the pointer was last
  std::int32_t y = 0;
  // The tip was hidden at x, y and stays hidden until the pointer leaves that place: Windows
  // reports a movement even when the pointer rests and only what lies below it has changed.
  bool quiet = false;
};

}  // namespace quillmere
