#pragma once

#include <cstdint>

namespace quillmere {

// A rectangle in client pixels; right and bottom are exclusive.
struct PixelRect {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t right = 0;
  std::int32_t bottom = 0;

  std::int32_t width() const { return right - left; }
  std::int32_t height() const { return bottom - top; }
  bool empty() const { return right <= left || bottom <= top; }
  bool contains(std::int32_t x, std::int32_t y) const {
    return x >= left && x < right && y >= top && y < bottom;
  }
  bool operator==(const PixelRect&) const = default;
};

}  // namespace quillmere
