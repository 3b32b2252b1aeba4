#include "support/compare_pictures.h"

#include <algorithm>

namespace quillmere::test {

namespace {

constexpr int kTolerance = 12;
constexpr int kReach = 1;  // pixels
constexpr int kDark = 128;
constexpr int kGreen = 8;  // bits

int channelAt(const PictureView& picture, int x, int y, int shift) {
  const auto place = static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                     static_cast<std::size_t>(x);
  return static_cast<int>(picture.pixels[place] >> shift & 0xFF);
}

// Whether the channel of a pixel lies within what `other` has no more than kReach pixels away.
bool foundNear(const PictureView& picture, const PictureView& other, int x, int y, int shift) {
  const int value = channelAt(picture, x, y, shift);
  if (value == channelAt(other, x, y, shift)) return true;
  int least = 255;
  int most = 0;
  for (int row = std::max(y - kReach, 0); row <= std::min(y + kReach, other.height - 1); ++row) {
    for (int column = std::max(x - kReach, 0); column <= std::min(x + kReach, other.width - 1);
         ++column) {
      least = std::min(least, channelAt(other, column, row, shift));
      most = std::max(most, channelAt(other, column, row, shift));
    }
  }
  return value >= least - kTolerance && value <= most + kTolerance;
}

}  // namespace

int strays(const PictureView& picture, const PictureView& other) {
  if (picture.width != other.width || picture.height != other.height) return -1;
  int count = 0;
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      for (const int shift : {16, 8, 0}) count += foundNear(picture, other, x, y, shift) ? 0 : 1;
    }
  }
  return count;
}

InkBox inkBoxOf(const PictureView& picture) {
  InkBox box{picture.width, picture.height, 0, 0};
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      if (channelAt(picture, x, y, kGreen) >= kDark) continue;
      box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
             std::max(box.bottom, y + 1)};
    }
  }
  return box;
}

}  // namespace quillmere::test
