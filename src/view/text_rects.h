#pragma once

#include <fpdf_text.h>

#include <cstdint>
#include <vector>

#include "base/page_box.h"

namespace quillmere {

// The boxes of `count` characters from `first` on their page: one for each stretch of a line, in
// PDFium's order. A selected line break is a box without a size. Empty when PDFium knows none.
std::vector<PageBox> textRects(FPDF_TEXTPAGE textPage, std::int32_t first, std::int32_t count);

}  // namespace quillmere
