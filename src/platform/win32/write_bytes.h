#pragma once

#include <windows.h>

#include <cstdint>

namespace quillmere::platform {

// Writes at the file's position. False when not every byte went out.
bool writeBytes(HANDLE file, const void* bytes, std::uint64_t size);

}  // namespace quillmere::platform
