#include "platform/win32/long_path.h"

#include <windows.h>

#include "platform/files.h"

namespace quillmere::platform {

std::u16string longPath(const std::u16string& path) {
  if (path.size() < MAX_PATH || path.starts_with(u"\\\\?\\")) return path;
  const std::u16string full = absolutePath(path);
  if (full.starts_with(u"\\\\")) return u"\\\\?\\UNC" + full.substr(1);
  return u"\\\\?\\" + full;
}

}  // namespace quillmere::platform
