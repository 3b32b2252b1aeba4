#include "platform/win32/write_bytes.h"

#include <algorithm>

namespace quillmere::platform {

namespace {

constexpr std::uint64_t kLargestTransfer = 1u << 30;  // bytes in one call

}  // namespace

bool writeBytes(HANDLE file, const void* bytes, std::uint64_t size) {
  const auto* next = static_cast<const std::uint8_t*>(bytes);
  while (size > 0) {
    const auto part = static_cast<DWORD>(std::min(size, kLargestTransfer));
    DWORD written = 0;
    if (!WriteFile(file, next, part, &written, nullptr) || written != part) return false;
    next += part;
    size -= part;
  }
  return true;
}

}  // namespace quillmere::platform
