#pragma once

#include <cstdint>
#include <vector>

// How far two pictures of the same thing are apart when different programs drew them.
namespace quillmere::test {

// Rows of 0xRRGGBB from the top left corner, whatever the upper bits hold. The pixels are the
// caller's.
struct PictureView {
  int width;
  int height;
  const std::vector<std::uint32_t>& pixels;
};

// How many channels of pixels of one picture are farther than one pixel from where the other has
// them; -1 when the pictures differ in size. Edges are smoothed differently, so a value between
// those of the neighbours counts as found.
int strays(const PictureView& picture, const PictureView& other);

// Right and bottom lie behind the last pixel.
struct InkBox {
  int left;
  int top;
  int right;
  int bottom;
};

// The smallest box around the dark pixels; empty, with its left at the right, when there are none.
InkBox inkBoxOf(const PictureView& picture);

}  // namespace quillmere::test
