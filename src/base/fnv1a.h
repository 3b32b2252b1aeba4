#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace quillmere {

// FNV-1a over `size` bytes.
inline std::uint64_t fnv1a(const void* bytes, std::size_t size) {
  std::uint64_t hash = 0xCBF29CE484222325u;
  const auto* data = static_cast<const unsigned char*>(bytes);
  for (std::size_t i = 0; i < size; ++i) {
    hash ^= data[i];
    hash *= 0x100000001B3u;
  }
  return hash;
}

// Hash of text keys, over their UTF-16 bytes.
struct Fnv1aTextHash {
  std::size_t operator()(const std::u16string& text) const {
    return fnv1a(text.data(), text.size() * sizeof(char16_t));
  }
};

// Hash of handles, over the bytes of the pointer.
struct Fnv1aPointerHash {
  std::size_t operator()(const void* pointer) const { return fnv1a(&pointer, sizeof(pointer)); }
};

}  // namespace quillmere
