#include "platform/file_in_writing.h"

#include <windows.h>

#include <utility>

#include "platform/win32/handles.h"
#include "platform/win32/long_path.h"
#include "platform/win32/wide.h"
#include "platform/win32/write_bytes.h"

namespace quillmere::platform {

struct FileInWriting {
  KernelHandle handle;
};

FileInWriting* startNewFile(const std::u16string& path) {
  const std::u16string name = longPath(path);
  KernelHandle handle = openFile(wide(name), GENERIC_WRITE, 0, CREATE_NEW);
  return handle ? new FileInWriting{std::move(handle)} : nullptr;
}

bool writeBlock(FileInWriting& file, const void* bytes, std::uint64_t size) {
  return writeBytes(file.handle.get(), bytes, size);
}

bool flushFile(FileInWriting& file) {
  return FlushFileBuffers(file.handle.get()) != 0;
}

bool closeFile(FileInWriting* file) {
  const bool closed = CloseHandle(file->handle.release()) != 0;
  delete file;
  return closed;
}

}  // namespace quillmere::platform
