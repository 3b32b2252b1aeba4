#include "view/text_rects.h"

namespace quillmere {

std::vector<PageBox> textRects(FPDF_TEXTPAGE textPage, std::int32_t first, std::int32_t count) {
  std::vector<PageBox> rects;
  const int rectCount = FPDFText_CountRects(textPage, first, count);
  for (int i = 0; i < rectCount; ++i) {
    PageBox box;
    if (FPDFText_GetRect(textPage, i, &box.left, &box.top, &box.right, &box.bottom)) {
      rects.push_back(box);
    }
  }
  return rects;
}

}  // namespace quillmere
