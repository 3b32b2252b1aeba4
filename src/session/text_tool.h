#pragma once

#include <cstdint>
#include <string>

namespace quillmere {

// What clicks on the page place while the Add Text dialog is open. Font, size and colour are
// settings.
struct TextTool {
  bool armed = false;
  std::u16string text;
  std::uint32_t extraTurns = 0;  // clockwise quarter turns, on top of standing upright on screen
  std::int32_t x = 0;            // where the pointer was last, in client pixels
  std::int32_t y = 0;
  bool pointerKnown = false;  // it is over the window
};

}  // namespace quillmere
