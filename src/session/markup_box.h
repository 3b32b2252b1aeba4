#pragma once

#include <cstdint>
#include <vector>

namespace quillmere {

// The upright box around one quad of a markup, in page points.
struct MarkupBox {
  std::int32_t annot = 0;  // the markup's index in the page's annotation list
  float left = 0;
  float bottom = 0;
  float right = 0;
  float top = 0;
};

// The boxes of a page's markups, those of the topmost markup last.
struct MarkupBoxes {
  std::int32_t annotations = 0;  // of any kind, counted when the boxes were read
  std::vector<MarkupBox> boxes;
};

}  // namespace quillmere
