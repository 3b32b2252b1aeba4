#pragma once

#include <cstdint>
#include <string>

#include "platform/pictures.h"

namespace quillmere {

// A picture of the stamp library. Its file has all of its pixels; what is kept here is for drawing
// and is made when it is first needed.
struct StampEntry {
  std::u16string path;                // of the PNG file
  std::u16string name;                // the file's name without its extension, at most 63 units
  platform::SharedPicture bitmap;     // to draw over the page; null until needed
  platform::SharedPicture thumbnail;  // for the panel; null until needed
  std::int32_t width = 0;             // of the file's picture, in pixels
  std::int32_t height = 0;
  bool isSystem = false;  // shown, but not counted, listed or removable
};

}  // namespace quillmere
