#pragma once

#include <cstdint>

namespace quillmere {

enum ZoomMode : std::int32_t {
  kFitPage = 0,
  kFitWidth = 1,
  kActualSize = 2,
  kCustomFit = 3,
};

}  // namespace quillmere
