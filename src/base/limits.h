#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillmere {

// Size of a path buffer in UTF-16 units, terminator included.
inline constexpr std::size_t kPathBufferUnits = 260;

// The path cut to what such a buffer can hold.
inline std::u16string boundedPath(std::u16string_view path) {
  return std::u16string(path.substr(0, kPathBufferUnits - 1));
}

// The part after the last backslash; the whole path when there is none.
inline std::u16string fileNameOf(std::u16string_view path) {
  const std::size_t slash = path.rfind(u'\\');
  return std::u16string(slash == std::u16string_view::npos ? path : path.substr(slash + 1));
}

}  // namespace quillmere
