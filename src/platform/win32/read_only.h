#pragma once

#include <windows.h>

#include <string>

#include "platform/win32/wide.h"

namespace quillmere::platform {

// The system refuses to replace such files, but not every file server does, nor does Wine where it
// runs with all rights; so whoever replaces a file asks first.
inline bool isReadOnlyFile(const std::u16string& path) {
  const DWORD attributes = GetFileAttributesW(wide(path));
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

}  // namespace quillmere::platform
