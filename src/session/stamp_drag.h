#pragma once

#include <cstdint>

namespace quillmere {

// A drag that began on a thumbnail of the stamp panel.
struct StampDrag {
  std::int32_t stamp = -1;  // the entry under the press
  std::int32_t pressY = 0;  // pixels of the panel
  std::int32_t x = 0;       // where the pointer is, in client pixels of the main window
  std::int32_t y = 0;
  bool dragActive = false;
  bool reorderActive = false;  // it moves in the library
  bool stampOverPage = false;  // it would be put on the page
};

}  // namespace quillmere
