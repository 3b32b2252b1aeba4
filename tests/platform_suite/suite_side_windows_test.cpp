#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/win32/handles.h"
#include "platform/win32/wide.h"
#include "platform_suite/suite_side.h"

namespace fs = std::filesystem;

namespace quillmere::platform {
namespace {

fs::path pathOf(const std::u16string& path) {
  return fs::path(wide(path));
}

void makeDeletable(const fs::path& folder) {
  std::error_code ignored;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder, ignored)) {
    SetFileAttributesW(entry.path().c_str(), FILE_ATTRIBUTE_NORMAL);
  }
}

}  // namespace

std::u16string makeScratchFolder() {
  static int count = 0;
  const std::wstring name = L"quillmere-suite-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
                            std::to_wstring(++count);
  const fs::path folder = fs::temp_directory_path() / name;
  fs::create_directories(folder);
  return fromWide(folder.native()) + u"\\";
}

void workIn(const std::u16string& folder) {
  EXPECT_TRUE(SetCurrentDirectoryW(wide(folder)));
}

void removeScratchFolder(const std::u16string& folder) {
  // A folder that a process works in cannot be removed.
  SetCurrentDirectoryW(fs::temp_directory_path().c_str());
  makeDeletable(pathOf(folder));
  std::error_code ignored;
  fs::remove_all(pathOf(folder), ignored);
}

void putBytes(const std::u16string& path, const std::string& bytes) {
  std::ofstream file(pathOf(path), std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  EXPECT_TRUE(file.good());
}

std::string bytesOf(const std::u16string& path) {
  std::ifstream file(pathOf(path), std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

FileLock::FileLock(const std::u16string& path, LockKind kind) : path_(path) {
  const DWORD sharing =
      kind == LockKind::Exclusive ? 0 : FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  handle_ = openFile(wide(path), GENERIC_READ | GENERIC_WRITE, sharing, OPEN_EXISTING).release();
  EXPECT_NE(handle_, nullptr);
}

FileLock::~FileLock() {
  if (handle_ != nullptr) CloseHandle(handle_);
}

}  // namespace quillmere::platform
