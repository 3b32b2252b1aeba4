#include "platform/open_file.h"

#include <windows.h>

#include <utility>

#include "platform/win32/handles.h"
#include "platform/win32/long_path.h"
#include "platform/win32/wide.h"

namespace quillmere::platform {

struct OpenFile {
  KernelHandle handle;
};

OpenFile* keepOpen(const std::u16string& path) {
  const std::u16string name = longPath(path);
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  KernelHandle handle = openFile(wide(name), GENERIC_READ, kShareAll, OPEN_EXISTING);
  return handle ? new OpenFile{std::move(handle)} : nullptr;
}

void letGo(OpenFile* file) {
  delete file;
}

// The system may answer the second question from memory.
bool canStillRead(OpenFile& file) {
  BY_HANDLE_FILE_INFORMATION information{};
  char byte = 0;
  DWORD got = 0;
  return GetFileInformationByHandle(file.handle.get(), &information) &&
         SetFilePointer(file.handle.get(), 0, nullptr, FILE_BEGIN) != INVALID_SET_FILE_POINTER &&
         ReadFile(file.handle.get(), &byte, 1, &got, nullptr);
}

}  // namespace quillmere::platform
