#pragma once

#include <cstdint>

namespace quillmere {

// Selected characters of one pane's page, in PDFium's numbering; endChar may be less than
// anchorChar.
struct TextSelection {
  bool active = false;
  std::int32_t pane = -1;        // -1 when there is none
  std::int32_t anchorChar = -1;  // -1 when the press hit no character
  std::int32_t endChar = -1;     // -1 when none
  bool dragging = false;
};

}  // namespace quillmere
