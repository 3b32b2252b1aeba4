#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillmere {

// Paths live in buffers of 260 UTF-16 units with the terminator.
inline constexpr std::size_t kPathBufferUnits = 260;

// The path as a bounded buffer would hold it.
inline std::u16string boundedPath(std::u16string_view path) {
  return std::u16string(path.substr(0, kPathBufferUnits - 1));
}

// What stands behind the last backslash; the whole text without one.
inline std::u16string fileNameOf(std::u16string_view path) {
  const std::size_t slash = path.rfind(u'\\');
  return std::u16string(slash == std::u16string_view::npos ? path : path.substr(slash + 1));
}

}  // namespace quillmere
