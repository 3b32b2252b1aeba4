#pragma once

#include <cstdint>
#include <string>

namespace quillmere {

// A highlight or strikethrough in the markup list.
struct MarkupEntry {
  std::int32_t page = 0;  // zero-based
  double left = 0;        // the annotation's rectangle in page points; 0 without one
  double top = 0;
  double right = 0;
  double bottom = 0;
  bool hasRect = false;
  std::int32_t subtype = 0;  // FPDF_ANNOT_HIGHLIGHT or FPDF_ANNOT_STRIKEOUT
  std::uint32_t color = 0;   // red in the low byte, then green, then blue
  std::u16string text;       // the text under it
  std::u16string note;       // its "Contents"
};

}  // namespace quillmere
