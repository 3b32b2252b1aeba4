#include <algorithm>
#include <chrono>
#include <cstdio>
#include <map>
#include <mutex>
#include <set>
#include <system_error>

#include "platform/file_in_writing.h"
#include "platform/file_properties.h"
#include "platform/files.h"
#include "platform/open_file.h"
#include "platform/text.h"
#include "platform/write_guard.h"
#include "stand_in.h"
#include "stand_in_files.h"
#include "stand_in_paths.h"

namespace fs = std::filesystem;

namespace quillmere::platform {

struct OpenFile {
  fs::path path;
  bool cutOff = false;
};

namespace {

constexpr std::uint32_t kAttributeArchive = 0x20;
constexpr std::uint64_t kTicksPerSecond = 10'000'000;
constexpr std::uint64_t kSecondsFrom1601To1970 = 11'644'473'600;

// The time that the seam or a test gave to a file; valid until something else writes to the file.
struct RecordedTime {
  std::uint64_t ticks = 0;
  fs::file_time_type realTime;
};

// File properties that the real file system does not keep. Locked, because probe threads query
// attributes.
struct FileBooks {
  std::mutex mutex;
  std::set<fs::path> readOnly;
  std::map<fs::path, OtherUse> otherUses;
  std::map<fs::path, RecordedTime> times;
  std::map<fs::path, FileProperties> properties;
  std::multiset<fs::path> guarded;
  std::set<OpenFile*> keptOpen;
  std::map<std::u16string, std::uint32_t> attributeErrors;  // by path in lower case
  std::uint64_t lastTicks = 0;
};

FileBooks& books() {
  static FileBooks instance;
  return instance;
}

bool isReadOnly(const fs::path& path) {
  const std::lock_guard lock(books().mutex);
  return books().readOnly.contains(path);
}

OtherUse otherUseOf(const fs::path& path) {
  const std::lock_guard lock(books().mutex);
  const auto entry = books().otherUses.find(path);
  return entry == books().otherUses.end() ? OtherUse::Nobody : entry->second;
}

std::uint32_t scriptedAttributeError(const std::u16string& path) {
  const std::lock_guard lock(books().mutex);
  const auto entry = books().attributeErrors.find(toLower(path));
  return entry == books().attributeErrors.end() ? 0 : entry->second;
}

std::uint64_t ticksOf(std::chrono::system_clock::time_point time) {
  using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;
  const auto since1970 = std::chrono::duration_cast<Ticks>(time.time_since_epoch()).count();
  return static_cast<std::uint64_t>(since1970) + kSecondsFrom1601To1970 * kTicksPerSecond;
}

std::uint64_t realTicks(fs::file_time_type time) {
  const auto onSystemClock = std::chrono::file_clock::to_sys(time);
  return ticksOf(std::chrono::time_point_cast<std::chrono::system_clock::duration>(onSystemClock));
}

void setTime(const fs::path& path, std::uint64_t ticks) {
  std::error_code error;
  const fs::file_time_type realTime = fs::last_write_time(path, error);
  const std::lock_guard lock(books().mutex);
  books().times[path] = {ticks, realTime};
}

// Every write through the seam gets a later time than the previous one.
void setCurrentTime(const fs::path& path) {
  std::uint64_t ticks = ticksOf(std::chrono::system_clock::now());
  {
    const std::lock_guard lock(books().mutex);
    ticks = std::max(ticks, books().lastTicks + 1);
    books().lastTicks = ticks;
  }
  setTime(path, ticks);
}

std::uint64_t writeTimeOf(const fs::path& path) {
  std::error_code error;
  const fs::file_time_type realTime = fs::last_write_time(path, error);
  const std::lock_guard lock(books().mutex);
  const auto given = books().times.find(path);
  if (given != books().times.end() && given->second.realTime == realTime) {
    return given->second.ticks;
  }
  return realTicks(realTime);
}

void forgetPath(const fs::path& path) {
  const std::lock_guard lock(books().mutex);
  books().readOnly.erase(path);
  books().times.erase(path);
  books().properties.erase(path);
}

FileProperties recordedProperties(const fs::path& path) {
  const std::lock_guard lock(books().mutex);
  const auto found = books().properties.find(path);
  return found == books().properties.end() ? FileProperties() : found->second;
}

bool guarded(const fs::path& path) {
  const std::lock_guard lock(books().mutex);
  return books().guarded.contains(path);
}

// Whether PDFium has the file open; it opens files by itself. What the seam writes is known
// otherwise.
bool openInLibrary(const fs::path& path) {
  std::error_code error;
#ifdef _WIN32
  // The system renames no open file, not even to its own name.
  if (fs::exists(path, error)) fs::rename(path, path, error);
  return static_cast<bool>(error);
#else
  const fs::path whole = fs::weakly_canonical(path, error);
  for (const fs::directory_entry& open : fs::directory_iterator("/proc/self/fd", error)) {
    if (fs::read_symlink(open.path(), error) == whole) return true;
  }
  return false;
#endif
}

bool keptOpen(const fs::path& path) {
  const std::lock_guard lock(books().mutex);
  return std::any_of(books().keptOpen.begin(), books().keptOpen.end(),
                     [&path](const OpenFile* file) { return file->path == path; });
}

bool held(const fs::path& path) {
  return guarded(path) || keptOpen(path) || openInLibrary(path);
}

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

File openReal(const fs::path& path, bool forWriting) {
#ifdef _WIN32
  return File(_wfopen(path.c_str(), forWriting ? L"wb" : L"rb"));
#else
  return File(std::fopen(path.c_str(), forWriting ? "wb" : "rb"));
#endif
}

std::optional<std::vector<std::uint8_t>> readReal(const fs::path& path) {
  const File file = openReal(path, false);
  if (!file) return std::nullopt;
  std::vector<std::uint8_t> bytes;
  std::uint8_t part[65536];
  std::size_t got = 0;
  while ((got = std::fread(part, 1, sizeof part, file.get())) > 0) {
    bytes.insert(bytes.end(), part, part + got);
  }
  return bytes;
}

bool writeReal(const fs::path& path, const void* bytes, std::uint64_t size) {
  const File file = openReal(path, true);
  if (!file) return false;
  return size == 0 || std::fwrite(bytes, 1, size, file.get()) == size;
}

bool fitsOnDisk(std::uint64_t size, std::uint64_t& written) {
  std::optional<std::uint64_t>& free = standIn().diskFree;
  written = free ? std::min(*free, size) : size;
  if (free) *free -= written;
  return written == size;
}

// Writes as much as the disk has room for. Makes a missing file first when `found` is a stream of
// it.
bool writeFound(const FoundPath& found, const void* bytes, std::uint64_t size) {
  std::error_code error;
  if (found.owner != found.real && !fs::exists(found.owner, error)) {
    if (!writeReal(found.owner, nullptr, 0)) return false;
  }
  std::uint64_t written = 0;
  const bool fits = fitsOnDisk(size, written);
  const bool done = writeReal(found.real, bytes, written);
  setCurrentTime(found.real);
  if (found.owner != found.real) setCurrentTime(found.owner);
  return done && fits;
}

// The folder's access list keeps everyone from writing its files.
bool deniesWriting(const fs::path& folder) {
  return recordedProperties(folder).accessList.find(u"(D;;FW;;;WD)") != std::u16string::npos;
}

bool canBeWritten(const FoundPath& found) {
  if (found.error != 0 && found.error != kErrorFileNotFound) return false;
  if (deniesWriting(found.owner.parent_path())) return false;
  return !found.folder && !isReadOnly(found.owner) && otherUseOf(found.real) == OtherUse::Nobody &&
         !held(found.real);
}

void removeWithStreams(const fs::path& path) {
  std::error_code ignored;
  for (const fs::path& stream : streamsOf(path)) fs::remove(stream, ignored);
  fs::remove(path, ignored);
  forgetPath(path);
}

// Renames the file with its streams, time and attributes, replacing any file of that name.
bool moveWithStreams(const fs::path& from, const fs::path& to) {
  const bool readOnly = isReadOnly(from);
  const std::uint64_t ticks = writeTimeOf(from);
  const FileProperties properties = recordedProperties(from);
  const std::vector<fs::path> streams = streamsOf(from);
  removeWithStreams(to);
  std::error_code error;
  fs::rename(from, to, error);
  if (error) return false;
  for (const fs::path& stream : streams) {
    fs::rename(stream, renamedStream(stream, from, to), error);
  }
  forgetPath(from);
  setTime(to, ticks);
  const std::lock_guard lock(books().mutex);
  if (readOnly) books().readOnly.insert(to);
  books().properties[to] = properties;
  return true;
}

bool refused(FileCall call) {
  return standIn().refuseFileCall && standIn().refuseFileCall(call);
}

void noteUse(const fs::path& path, OtherUse use) {
  const std::lock_guard lock(books().mutex);
  books().otherUses[path] = use;
}

}  // namespace

struct FileInWriting {
  File file;
  fs::path path;
};

FileInWriting* startNewFile(const std::u16string& path) {
  const FoundPath found = findLongPath(path);
  if (refused(FileCall::Start) || found.exists || !canBeWritten(found)) return nullptr;
  File file = openReal(found.real, true);
  if (!file) return nullptr;
  noteUse(found.real, OtherUse::Exclusive);
  return new FileInWriting{std::move(file), found.real};
}

bool writeBlock(FileInWriting& file, const void* bytes, std::uint64_t size) {
  if (refused(FileCall::Write)) return false;
  std::uint64_t written = 0;
  const bool fits = fitsOnDisk(size, written);
  return (written == 0 || std::fwrite(bytes, 1, written, file.file.get()) == written) && fits;
}

bool flushFile(FileInWriting& file) {
  return !refused(FileCall::Flush) && std::fflush(file.file.get()) == 0;
}

bool closeFile(FileInWriting* file) {
  const bool closed = std::fclose(file->file.release()) == 0;
  noteUse(file->path, OtherUse::Nobody);
  setCurrentTime(file->path);
  delete file;
  return !refused(FileCall::Close) && closed;
}

void resetFileBooks() {
  const std::lock_guard lock(books().mutex);
  books().readOnly.clear();
  books().otherUses.clear();
  books().times.clear();
  books().properties.clear();
  books().guarded.clear();
  books().attributeErrors.clear();
}

std::optional<std::string> readForProfile(const std::u16string& path) {
  const FoundPath found = findPath(path);
  if (!found.exists || found.folder || otherUseOf(found.real) == OtherUse::Exclusive) {
    return std::nullopt;
  }
  const auto bytes = readReal(found.real);
  if (!bytes) return std::nullopt;
  return std::string(bytes->begin(), bytes->end());
}

AttributeQuery queryAttributes(const std::u16string& path) {
  if (const std::uint32_t error = scriptedAttributeError(path)) return {kInvalidAttributes, error};
  const FoundPath found = findPath(path);
  if (!found.exists) return {kInvalidAttributes, found.error};
  std::uint32_t attributes = found.folder ? kAttributeFolder : kAttributeArchive;
  if (isReadOnly(found.owner)) attributes |= kAttributeReadOnly;
  attributes |= recordedProperties(found.owner).attributes;
  return {attributes, kErrorNone};
}

bool fileExists(const std::u16string& path) {
  return queryAttributes(path).attributes != kInvalidAttributes;
}

std::optional<FileStamp> fileStamp(const std::u16string& path) {
  const FoundPath found = findLongPath(path);
  if (!found.exists || refused(FileCall::Stamp)) return std::nullopt;
  FileStamp stamp;
  std::error_code error;
  if (!found.folder) stamp.size = fs::file_size(found.real, error);
  stamp.writeTime = writeTimeOf(found.real);
  return stamp;
}

bool setReadOnly(const std::u16string& path, bool readOnly) {
  const FoundPath found = findPath(path);
  if (!found.exists) return false;
  const std::lock_guard lock(books().mutex);
  if (readOnly) {
    books().readOnly.insert(found.owner);
  } else {
    books().readOnly.erase(found.owner);
  }
  return true;
}

bool isNetworkPath(const std::u16string& path) {
  if (namesShare(path)) return true;
  return path.size() >= 2 && path[1] == u':' &&
         standIn().mappedDrives.find(toLower(path)[0]) != std::u16string::npos;
}

bool driveIsAbsent(const std::u16string& path) {
  return path.size() >= 2 && path[1] == u':' && driveIsMissing(parsePath(path).volume);
}

std::optional<std::vector<std::uint8_t>> readFileShared(const std::u16string& path,
                                                        std::uint64_t maximumSize) {
  const FoundPath found = findLongPath(path);
  if (refused(FileCall::ReadWhole)) return std::nullopt;
  if (!found.exists || found.folder || otherUseOf(found.real) == OtherUse::Exclusive) {
    return std::nullopt;
  }
  std::error_code error;
  const std::uintmax_t size = fs::file_size(found.real, error);
  if (error || size > maximumSize) return std::nullopt;
  return readReal(found.real);
}

std::optional<std::vector<std::uint8_t>> readFileHead(const std::u16string& path,
                                                      std::uint64_t maximumSize) {
  const FoundPath found = findPath(path);
  if (!found.exists || found.folder || otherUseOf(found.real) != OtherUse::Nobody) {
    return std::nullopt;
  }
  auto bytes = readReal(found.real);
  if (bytes && bytes->size() > maximumSize) bytes->resize(static_cast<std::size_t>(maximumSize));
  return bytes;
}

bool writeFile(const std::u16string& path, const void* bytes, std::uint64_t size) {
  const FoundPath found = findPath(path);
  // The system refuses to write such a file anew under plain attributes.
  const bool special = recordedProperties(found.real).attributes != 0;
  return !special && canBeWritten(found) && writeFound(found, bytes, size);
}

bool createNewFile(const std::u16string& path, const void* bytes, std::uint64_t size) {
  const FoundPath found = findPath(path);
  return !found.exists && canBeWritten(found) && writeFound(found, bytes, size);
}

bool deleteFile(const std::u16string& path) {
  const FoundPath found = findLongPath(path);
  if (refused(FileCall::Delete)) return false;
  if (!found.exists || found.folder || isReadOnly(found.owner)) return false;
  if (otherUseOf(found.real) == OtherUse::Exclusive || held(found.real)) return false;
  if (found.owner != found.real) {
    std::error_code error;
    return fs::remove(found.real, error);
  }
  removeWithStreams(found.real);
  return true;
}

bool replaceFile(const std::u16string& source, const std::u16string& target) {
  if (refused(FileCall::Replace)) return false;
  const FoundPath from = findLongPath(source);
  const FoundPath to = findLongPath(target);
  if (!from.exists || otherUseOf(from.real) == OtherUse::Exclusive) return false;
  if (held(from.real) || held(to.real)) return false;
  if (to.error != 0 && to.error != kErrorFileNotFound) return false;
  if (from.volume != to.volume) return false;
  if (from.real == to.real) return true;
  if (to.folder || isReadOnly(to.real)) return false;
  if (otherUseOf(to.real) == OtherUse::Exclusive) return false;
  // The new name is the one that was asked for, whatever name led to the old file.
  const std::u16string name = target.substr(target.find_last_of(u"\\/") + 1);
  const fs::path named = to.real.parent_path() / nativeName(name);
  if (named != to.real) removeWithStreams(to.real);
  return moveWithStreams(from.real, named);
}

bool renameFile(const std::u16string& source, const std::u16string& target) {
  const FoundPath from = findPath(source);
  const FoundPath to = findPath(target);
  if (!from.exists || otherUseOf(from.real) == OtherUse::Exclusive) return false;
  if (held(from.real)) return false;
  std::error_code ignored;
  const bool otherFile = to.exists && !fs::equivalent(from.real, to.real, ignored);
  if (otherFile || (!to.exists && to.error != kErrorFileNotFound)) return false;
  if (from.volume != to.volume) return false;
  const fs::path named = to.real.parent_path() / nativeName(lastNameOf(target));
  if (from.real == named) return true;
  if (!to.exists) return moveWithStreams(from.real, named);
  // Where the machine ignores letter case, a change of it alone takes two steps.
  const fs::path between = named.parent_path() / nativeName(lastNameOf(target) + u"~");
  return moveWithStreams(from.real, between) && moveWithStreams(between, named);
}

bool createFolder(const std::u16string& path) {
  const FoundPath found = findPath(path);
  if (found.exists) return found.folder;
  if (found.error != kErrorFileNotFound) return false;
  std::error_code error;
  return fs::create_directory(found.real, error);
}

// Empty when the system would not let a library open the file.
std::string pathForLibraries(const std::u16string& path) {
  const FoundPath found = findLongPath(path);
  const bool closed = refused(FileCall::OpenInLibrary) || !found.exists || found.folder ||
                      otherUseOf(found.real) == OtherUse::Exclusive;
  return closed ? std::string() : toUtf8(unitsOf(found.real));
}

namespace {

// The usual file system of Windows keeps names in the order of their capital letters.
bool comesFirst(const std::u16string& left, const std::u16string& right) {
  const auto capital = [](char16_t unit) {
    const char16_t lower = lowerUnit(unit);
    const bool ascii = lower >= u'a' && lower <= u'z';
    return ascii ? static_cast<char16_t>(lower - u'a' + u'A') : lower;
  };
  const auto before = [&](char16_t a, char16_t b) { return capital(a) < capital(b); };
  return std::lexicographical_compare(left.begin(), left.end(), right.begin(), right.end(), before);
}

}  // namespace

std::optional<std::vector<std::u16string>> listFiles(const std::u16string& folder,
                                                     const std::u16string& extension) {
  const FoundPath found = findPath(folder);
  if (!found.exists || !found.folder || refused(FileCall::List)) return std::nullopt;
  std::vector<std::u16string> names;
  for (const auto& entry : std::filesystem::directory_iterator(found.real)) {
    if (entry.is_directory() || isStreamName(entry.path().filename())) continue;
    const std::u16string name = unitsOf(entry.path().filename());
    if (name.size() < extension.size()) continue;
    const std::u16string end = name.substr(name.size() - extension.size());
    if (equalIgnoringCase(end, extension)) names.push_back(name);
  }
  std::sort(names.begin(), names.end(), comesFirst);
  return names;
}

std::u16string localAppDataFolder() {
  return standIn().localAppDataFolder;
}

std::u16string desktopFolder() {
  return standIn().desktopFolder;
}

std::u16string temporaryFolder() {
  return standIn().temporaryFolder;
}

struct WriteGuard {
  fs::path path;
};

WriteGuard* denyWriters(const std::u16string& path) {
  const FoundPath found = findLongPath(path);
  if (refused(FileCall::Guard) || !found.exists || found.folder) return nullptr;
  if (otherUseOf(found.real) != OtherUse::Nobody) return nullptr;
  const std::lock_guard lock(books().mutex);
  books().guarded.insert(found.real);
  return new WriteGuard{found.real};
}

void allowWriters(WriteGuard* guard) {
  {
    const std::lock_guard lock(books().mutex);
    const auto entry = books().guarded.find(guard->path);
    if (entry != books().guarded.end()) books().guarded.erase(entry);
  }
  delete guard;
}

OpenFile* keepOpen(const std::u16string& path) {
  const FoundPath found = findLongPath(path);
  if (refused(FileCall::KeepOpen) || !found.exists || found.folder) return nullptr;
  if (otherUseOf(found.real) == OtherUse::Exclusive) return nullptr;
  auto* file = new OpenFile{found.real};
  const std::lock_guard lock(books().mutex);
  books().keptOpen.insert(file);
  return file;
}

void letGo(OpenFile* file) {
  {
    const std::lock_guard lock(books().mutex);
    books().keptOpen.erase(file);
  }
  delete file;
}

bool canStillRead(OpenFile& file) {
  return !file.cutOff;
}

void cutOff(const std::u16string& path) {
  const fs::path real = realPath(path);
  const std::lock_guard lock(books().mutex);
  for (OpenFile* file : books().keptOpen) file->cutOff |= file->path == real;
}

bool copyFileProperties(const std::u16string& from, const std::u16string& to) {
  const FoundPath source = findLongPath(from);
  const FoundPath target = findLongPath(to);
  if (refused(FileCall::CopyProperties) || !source.exists || !target.exists) return false;
  const FileProperties properties = recordedProperties(source.real);
  const std::lock_guard lock(books().mutex);
  books().properties[target.real] = properties;
  return true;
}

bool copyAlternateStreams(const std::u16string& from, const std::u16string& to) {
  const FoundPath source = findLongPath(from);
  const FoundPath target = findLongPath(to);
  if (refused(FileCall::CopyStreams) || !source.exists || !target.exists) return false;
  for (const fs::path& stream : streamsOf(source.real)) {
    const auto bytes = readReal(stream);
    const fs::path copy = renamedStream(stream, source.real, target.real);
    if (!bytes || !writeReal(copy, bytes->data(), bytes->size())) return false;
  }
  return true;
}

bool isHeld(const std::u16string& path) {
  return held(findPathUnscripted(path).real);
}

bool isGuarded(const std::u16string& path) {
  return guarded(findPathUnscripted(path).real);
}

void setProperties(const std::u16string& path, const FileProperties& properties) {
  const fs::path real = realPath(path);
  const std::lock_guard lock(books().mutex);
  books().properties[real] = properties;
}

FileProperties propertiesOf(const std::u16string& path) {
  return recordedProperties(realPath(path));
}

void setOtherUse(const std::u16string& path, OtherUse use) {
  noteUse(findPathUnscripted(path).real, use);
}

void setAttributeError(const std::u16string& path, std::uint32_t error) {
  const std::lock_guard lock(books().mutex);
  books().attributeErrors[toLower(path)] = error;
}

fs::path realPath(const std::u16string& path) {
  return findPathUnscripted(path).real;
}

std::string realPathUtf8(const std::u16string& path) {
  return toUtf8(unitsOf(realPath(path)));
}

void putFile(const std::u16string& path, std::string_view bytes) {
  const FoundPath found = findPathUnscripted(path);
  fs::create_directories(found.real.parent_path());
  if (found.owner != found.real && !fs::exists(found.owner)) writeReal(found.owner, nullptr, 0);
  writeReal(found.real, bytes.data(), bytes.size());
  setCurrentTime(found.real);
}

void putFile(const std::u16string& path, const std::vector<std::uint8_t>& bytes) {
  putFile(path, std::string_view(reinterpret_cast<const char*>(bytes.data()), bytes.size()));
}

void putFolder(const std::u16string& path) {
  fs::create_directories(realPath(path));
}

std::optional<std::string> fileBytes(const std::u16string& path) {
  const auto bytes = readReal(realPath(path));
  if (!bytes) return std::nullopt;
  return std::string(bytes->begin(), bytes->end());
}

void setWriteTime(const std::u16string& path, std::uint64_t ticks) {
  setTime(realPath(path), ticks);
}

std::vector<std::u16string> namesIn(const std::u16string& folder) {
  std::vector<std::u16string> names;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(realPath(folder), error)) {
    if (!isStreamName(entry.path())) names.push_back(unitsOf(entry.path().filename()));
  }
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace quillmere::platform
