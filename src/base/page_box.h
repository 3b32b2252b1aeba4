#pragma once

#include <algorithm>
#include <vector>

namespace quillmere {

// An upright rectangle of page points; top lies above bottom.
struct PageBox {
  double left = 0;
  double top = 0;
  double right = 0;
  double bottom = 0;
};

// The smallest box around all of them, of which there must be one.
inline PageBox boxAround(const std::vector<PageBox>& boxes) {
  PageBox all = boxes.front();
  for (const PageBox& box : boxes) {
    all.left = std::min(all.left, box.left);
    all.top = std::max(all.top, box.top);
    all.right = std::max(all.right, box.right);
    all.bottom = std::min(all.bottom, box.bottom);
  }
  return all;
}

}  // namespace quillmere
