#include "platform/files.h"

#include <windows.h>

#include <shlobj.h>

#include <algorithm>
#include <limits>
#include <new>

#include "platform/text.h"
#include "platform/win32/handles.h"
#include "platform/win32/long_path.h"
#include "platform/win32/read_only.h"
#include "platform/win32/wide.h"
#include "platform/win32/write_bytes.h"

namespace quillmere::platform {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr std::size_t kTemporaryPathUnits = 260;
constexpr std::size_t kUsualPathUnits = 260;  // longer ones are read in a second call

std::optional<std::uint64_t> sizeOf(HANDLE file) {
  LARGE_INTEGER size{};
  if (!GetFileSizeEx(file, &size) || size.QuadPart < 0) return std::nullopt;
  return static_cast<std::uint64_t>(size.QuadPart);
}

// Reads up to `size` bytes; nullopt when that failed or memory ran out.
std::optional<std::vector<std::uint8_t>> readBytes(HANDLE file, std::uint64_t size) {
  if (size > std::numeric_limits<DWORD>::max()) return std::nullopt;
  try {
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size));
    DWORD got = 0;
    if (!ReadFile(file, bytes.data(), static_cast<DWORD>(size), &got, nullptr)) return std::nullopt;
    bytes.resize(got);
    return bytes;
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }
}

bool makeFile(const std::u16string& path, DWORD sharing, DWORD disposition, const void* bytes,
              std::uint64_t size) {
  const KernelHandle file = openFile(wide(path), GENERIC_WRITE, sharing, disposition);
  return file && writeBytes(file.get(), bytes, size);
}

std::u16string knownFolder(const KNOWNFOLDERID& id) {
  wchar_t* path = nullptr;
  const HRESULT result = SHGetKnownFolderPath(id, 0, nullptr, &path);
  const TaskText owner(path);
  return SUCCEEDED(result) && path != nullptr ? fromWide(path) : std::u16string();
}

// True when the file's name has the letter case that it has in `path`.
bool isSpelledSo(const std::u16string& path) {
  WIN32_FIND_DATAW entry{};
  const HANDLE found = FindFirstFileW(wide(path), &entry);
  if (found == INVALID_HANDLE_VALUE) return false;
  const FindHandle search(found);
  return path.substr(path.find_last_of(u"\\/") + 1) == fromWide(entry.cFileName);
}

bool isSeparator(char16_t unit) {
  return unit == u'\\' || unit == u'/';
}

// DRIVE_UNKNOWN for a path without a drive letter.
UINT driveTypeOf(const std::u16string& path) {
  if (path.size() < 2 || path[1] != u':') return DRIVE_UNKNOWN;
  const std::u16string root = path.substr(0, 2) + u"\\";
  return GetDriveTypeW(wide(root));
}

// A search pattern also matches short names, whose extensions are cut to three letters.
bool endsIgnoringCase(std::u16string_view name, std::u16string_view end) {
  return name.size() >= end.size() && equalIgnoringCase(name.substr(name.size() - end.size()), end);
}

}  // namespace

namespace {

std::u16string longNameOf(const std::u16string& path) {
  std::u16string name(kUsualPathUnits, u'\0');
  const DWORD length = GetLongPathNameW(wide(path), wideBuffer(name), kUsualPathUnits);
  name.resize(length < kUsualPathUnits ? length : 0);
  return name;
}

// Short names such as "LONGNA~1.PDF" stand for longer ones; a file that does not exist yet has
// none, but its folder may. A share may keep whoever asks it waiting, and asking what kind a drive
// is takes as long as drawing a page does.
std::u16string withLongNames(const std::u16string& full) {
  const bool canBeShort = full.find(u'~') != std::u16string::npos && full.size() < MAX_PATH;
  if (!canBeShort || isNetworkPath(full)) return full;
  std::size_t end = full.size();
  while (end != std::u16string::npos && full.rfind(u'~', end - 1) < end) {
    const std::u16string start = longNameOf(full.substr(0, end));
    const std::size_t length = start.size() + full.size() - end;
    if (!start.empty()) return length < MAX_PATH ? start + full.substr(end) : full;
    end = full.rfind(u'\\', end - 1);
  }
  return full;
}

}  // namespace

std::u16string absolutePath(const std::u16string& path) {
  if (path.empty()) return path;
  std::u16string full(kUsualPathUnits, u'\0');
  DWORD length = GetFullPathNameW(wide(path), kUsualPathUnits, wideBuffer(full), nullptr);
  if (length >= full.size()) {  // the size that the buffer must have
    full.resize(length);
    length = GetFullPathNameW(wide(path), length, wideBuffer(full), nullptr);
  }
  if (length == 0 || length >= full.size()) return path;
  full.resize(length);
  return withLongNames(full);
}

AttributeQuery queryAttributes(const std::u16string& path) {
  const DWORD attributes = GetFileAttributesW(wide(path));
  if (attributes == INVALID_FILE_ATTRIBUTES) return {kInvalidAttributes, GetLastError()};
  return {attributes, kErrorNone};
}

bool fileExists(const std::u16string& path) {
  return GetFileAttributesW(wide(path)) != INVALID_FILE_ATTRIBUTES;
}

std::optional<FileStamp> fileStamp(const std::u16string& path) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  const std::u16string name = longPath(path);
  if (!GetFileAttributesExW(wide(name), GetFileExInfoStandard, &data)) return std::nullopt;
  const auto join = [](DWORD high, DWORD low) { return std::uint64_t{high} << 32 | low; };
  return FileStamp{join(data.nFileSizeHigh, data.nFileSizeLow),
                   join(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime)};
}

bool setReadOnly(const std::u16string& path, bool readOnly) {
  const DWORD attributes = GetFileAttributesW(wide(path));
  if (attributes == INVALID_FILE_ATTRIBUTES) return false;
  const DWORD without = attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY);
  DWORD wanted = readOnly ? without | FILE_ATTRIBUTE_READONLY : without;
  if (wanted == 0) wanted = FILE_ATTRIBUTE_NORMAL;
  return SetFileAttributesW(wide(path), wanted) != 0;
}

bool isNetworkPath(const std::u16string& path) {
  const bool share = path.size() >= 2 && isSeparator(path[0]) && isSeparator(path[1]);
  return share || driveTypeOf(path) == DRIVE_REMOTE;
}

bool driveIsAbsent(const std::u16string& path) {
  return driveTypeOf(path) == DRIVE_NO_ROOT_DIR;
}

std::optional<std::vector<std::uint8_t>> readFileShared(const std::u16string& path,
                                                        std::uint64_t maximumSize) {
  const std::u16string name = longPath(path);
  const KernelHandle file = openFile(wide(name), GENERIC_READ, kShareAll, OPEN_EXISTING);
  if (!file) return std::nullopt;
  const std::optional<std::uint64_t> size = sizeOf(file.get());
  if (!size || *size > maximumSize) return std::nullopt;
  auto bytes = readBytes(file.get(), *size);
  if (bytes && bytes->size() != *size) return std::nullopt;
  return bytes;
}

std::optional<std::vector<std::uint8_t>> readFileHead(const std::u16string& path,
                                                      std::uint64_t maximumSize) {
  const KernelHandle file = openFile(wide(path), GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
  if (!file) return std::nullopt;
  const std::optional<std::uint64_t> size = sizeOf(file.get());
  if (!size) return std::nullopt;
  return readBytes(file.get(), std::min(*size, maximumSize));
}

bool writeFile(const std::u16string& path, const void* bytes, std::uint64_t size) {
  return !isReadOnlyFile(path) && makeFile(path, FILE_SHARE_READ, CREATE_ALWAYS, bytes, size);
}

bool createNewFile(const std::u16string& path, const void* bytes, std::uint64_t size) {
  return makeFile(path, 0, CREATE_NEW, bytes, size);
}

bool deleteFile(const std::u16string& path) {
  const std::u16string name = longPath(path);
  return DeleteFileW(wide(name)) != 0;
}

bool replaceFile(const std::u16string& source, const std::u16string& target) {
  constexpr DWORD kHow = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  const std::u16string from = longPath(source);
  const std::u16string to = longPath(target);
  return !isReadOnlyFile(to) && MoveFileExW(wide(from), wide(to), kHow) != 0;
}

bool renameFile(const std::u16string& source, const std::u16string& target) {
  const bool moved = MoveFileExW(wide(source), wide(target), 0) != 0;
  if (source == target || !equalIgnoringCase(source, target)) return moved;
  if (moved && isSpelledSo(target)) return true;
  // Some file systems change letter case in no single step. Between the two steps the file has
  // another name, where a program that ends then would leave it.
  const std::u16string between = source + u"~";
  if (!MoveFileExW(wide(source), wide(between), 0)) return false;
  if (MoveFileExW(wide(between), wide(target), 0)) return true;
  MoveFileExW(wide(between), wide(source), 0);
  return false;
}

bool createFolder(const std::u16string& path) {
  if (CreateDirectoryW(wide(path), nullptr)) return true;
  const DWORD attributes = GetFileAttributesW(wide(path));
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::string pathForLibraries(const std::u16string& path) {
  return toUtf8(longPath(path));
}

std::optional<std::vector<std::u16string>> listFiles(const std::u16string& folder,
                                                     const std::u16string& extension) {
  WIN32_FIND_DATAW entry{};
  const std::u16string pattern = folder + u"*" + extension;
  const HANDLE first = FindFirstFileW(wide(pattern), &entry);
  if (first == INVALID_HANDLE_VALUE) {
    if (GetLastError() != ERROR_FILE_NOT_FOUND) return std::nullopt;
    return std::vector<std::u16string>();
  }
  const FindHandle search(first);
  std::vector<std::u16string> names;
  do {
    const std::u16string name = fromWide(entry.cFileName);
    const bool isFolder = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    if (!isFolder && endsIgnoringCase(name, extension)) names.push_back(name);
  } while (FindNextFileW(search.get(), &entry));
  return names;
}

std::u16string localAppDataFolder() {
  return knownFolder(FOLDERID_LocalAppData);
}

std::u16string desktopFolder() {
  return knownFolder(FOLDERID_Desktop);
}

std::u16string temporaryFolder() {
  wchar_t path[kTemporaryPathUnits] = {};
  const DWORD length = GetTempPathW(kTemporaryPathUnits, path);
  if (length < 1 || length >= kTemporaryPathUnits) return {};
  return fromWide({path, length});
}

}  // namespace quillmere::platform
