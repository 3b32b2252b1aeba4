#include "platform/file_properties.h"

#include <windows.h>

#include <aclapi.h>

#include <memory>
#include <type_traits>
#include <vector>

#include "platform/win32/handles.h"
#include "platform/win32/long_path.h"
#include "platform/win32/read_only.h"
#include "platform/win32/wide.h"
#include "platform/win32/write_bytes.h"

namespace quillmere::platform {
namespace {

constexpr DWORD kStreamPart = 1u << 16;  // bytes copied at a time
constexpr DWORD kCopiedAttributes = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM |
                                    FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;

struct LocalFreer {
  void operator()(void* memory) const { LocalFree(memory); }
};
using SecurityDescriptor = std::unique_ptr<std::remove_pointer_t<PSECURITY_DESCRIPTOR>, LocalFreer>;

bool copyAccessList(std::u16string& from, std::u16string& to) {
  ACL* list = nullptr;
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  if (GetNamedSecurityInfoW(wideBuffer(from), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                            nullptr, &list, nullptr, &descriptor) != ERROR_SUCCESS) {
    return false;
  }
  const SecurityDescriptor owner(descriptor);
  SECURITY_DESCRIPTOR_CONTROL control = 0;
  DWORD revision = 0;
  GetSecurityDescriptorControl(descriptor, &control, &revision);
  // Without the second flag the folder's entries would be added to those of a list that stands
  // alone.
  const DWORD inheritance = (control & SE_DACL_PROTECTED) != 0
                                ? PROTECTED_DACL_SECURITY_INFORMATION
                                : UNPROTECTED_DACL_SECURITY_INFORMATION;
  return SetNamedSecurityInfoW(wideBuffer(to), SE_FILE_OBJECT,
                               DACL_SECURITY_INFORMATION | inheritance, nullptr, nullptr, list,
                               nullptr) == ERROR_SUCCESS;
}

bool copyCreationTime(const FILETIME& created, const std::u16string& to) {
  const KernelHandle file =
      openFile(wide(to), FILE_WRITE_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING);
  return file && SetFileTime(file.get(), &created, nullptr, nullptr);
}

bool markFile(const std::u16string& path, DWORD attributes) {
  const DWORD copied = attributes & kCopiedAttributes;
  return SetFileAttributesW(wide(path), copied != 0 ? copied : FILE_ATTRIBUTE_NORMAL) != 0;
}

bool copyStream(const std::u16string& from, const std::u16string& to) {
  const KernelHandle source =
      openFile(wide(from), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, OPEN_EXISTING);
  if (!source) return false;
  const KernelHandle target = openFile(wide(to), GENERIC_WRITE, 0, CREATE_ALWAYS);
  if (!target) return false;
  std::vector<char> part(kStreamPart);
  for (;;) {
    DWORD got = 0;
    if (!ReadFile(source.get(), part.data(), kStreamPart, &got, nullptr)) return false;
    if (got == 0) return true;
    if (!writeBytes(target.get(), part.data(), got)) return false;
  }
}

}  // namespace

bool copyFileProperties(const std::u16string& from, const std::u16string& to) {
  std::u16string source = longPath(from);
  std::u16string target = longPath(to);
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (!GetFileAttributesExW(wide(source), GetFileExInfoStandard, &data)) return false;
  const bool created = copyCreationTime(data.ftCreationTime, target);
  const bool marked = markFile(target, data.dwFileAttributes);
  // Last, since it may forbid the other two. Where the system keeps the read-only mark in the
  // access list, it comes along.
  const bool listed = copyAccessList(source, target);
  if (isReadOnlyFile(target)) markFile(target, data.dwFileAttributes);
  return created && marked && listed;
}

bool copyAlternateStreams(const std::u16string& from, const std::u16string& to) {
  const std::u16string source = longPath(from);
  WIN32_FIND_STREAM_DATA stream{};
  const HANDLE first = FindFirstStreamW(wide(source), FindStreamInfoStandard, &stream, 0);
  // A file system without streams cannot list them.
  if (first == INVALID_HANDLE_VALUE) return true;
  const FindHandle search(first);
  bool all = true;
  do {
    const std::u16string name = fromWide(stream.cStreamName);
    // With the name of the stream, a path of usual length may be too long.
    if (name != u"::$DATA") all = copyStream(longPath(from + name), longPath(to + name)) && all;
  } while (FindNextStreamW(search.get(), &stream));
  return all;
}

}  // namespace quillmere::platform
