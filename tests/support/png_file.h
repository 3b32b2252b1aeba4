#pragma once

#include <string>
#include <string_view>

#include "platform/pictures.h"

// PNG files of the simplest kind: 8 bits for red, green, blue and alpha, stored without
// compression.
namespace quillmere::test {

std::string encodePng(const platform::Picture& picture);

// Null for anything that encodePng() does not write.
platform::SharedPicture decodePng(std::string_view bytes);

// A picture of one colour, 0xAARRGGBB.
platform::Picture plainPicture(int width, int height, std::uint32_t color);

// A file with such a picture.
std::string plainPng(int width, int height, std::uint32_t color);

}  // namespace quillmere::test
