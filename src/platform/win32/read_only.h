#pragma once

#include <windows.h>

#include <string>

#include "platform/win32/wide.h"

namespace quillmere::platform {

// The system refuses to replace read-only files, but some file servers do not, nor does Wine
// running as root. So check before replacing a file.
inline bool isReadOnlyFile(const std::u16string& path) {
  const DWORD attributes = GetFileAttributesW(wide(path));
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

}  // namespace quillmere::platform
