#include "platform/write_guard.h"

#include <windows.h>

#include <utility>

#include "platform/win32/handles.h"
#include "platform/win32/long_path.h"
#include "platform/win32/wide.h"

namespace quillmere::platform {

struct WriteGuard {
  KernelHandle handle;
};

WriteGuard* denyWriters(const std::u16string& path) {
  const std::u16string name = longPath(path);
  KernelHandle handle = openFile(wide(name), GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
  return handle ? new WriteGuard{std::move(handle)} : nullptr;
}

void allowWriters(WriteGuard* guard) {
  delete guard;
}

}  // namespace quillmere::platform
