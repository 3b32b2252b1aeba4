#pragma once

#include <cstdint>
#include <span>

#include "platform/pictures.h"

// What the stamp library does to the pixels of pictures.
namespace quillmere {

struct PictureSize {
  std::int32_t width = 0;
  std::int32_t height = 0;
};

// The size that the head of a PNG file names; nullopt when the bytes are not one's beginning.
inline constexpr std::size_t kPngHeadBytes = 33;
std::optional<PictureSize> pngSize(std::span<const std::uint8_t> head);

// Fades pixels whose colours are all at least `threshold`: such a pixel keeps its alpha, a white
// one becomes transparent, and those between in proportion. Colours stay as they are.
void MakeWhiteTransparent(platform::Picture& picture, int threshold);

// A copy of a smaller size, each pixel the mean of those that it stands for. Sides that are not
// smaller than the picture's stay.
platform::SharedPicture scaledDown(const platform::Picture& picture, PictureSize size);

}  // namespace quillmere
