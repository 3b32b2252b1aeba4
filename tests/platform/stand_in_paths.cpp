#include "stand_in_paths.h"

#include <algorithm>
#include <chrono>
#include <map>
#include <mutex>
#include <random>
#include <system_error>
#include <thread>

#include "platform/files.h"
#include "platform/text.h"
#include "stand_in.h"

namespace fs = std::filesystem;

namespace quillmere::platform {
namespace {

constexpr std::uint32_t kErrorBadNetworkPath = 53;
constexpr std::size_t kPathLimit = 260;  // units with the terminator
constexpr std::size_t kNameLimit = 255;  // units of one name in a path
// Separates a file's name from its stream's name in the temporary folder.
constexpr char16_t kStreamMark = 0xA789;

struct VolumeScript {
  VolumeState state = VolumeState::Present;
  std::uint32_t error = 0;
};

std::mutex volumeMutex;
std::map<std::u16string, VolumeScript> volumeScripts;

// One folder per process, removed when it ends.
struct RootFolder {
  fs::path path;
  RootFolder() {
    std::random_device random;
    const std::string name =
        "quillmere-" + std::to_string(random()) + "-" + std::to_string(random());
    path = fs::temp_directory_path() / name;
    fs::create_directories(path);
  }
  ~RootFolder() {
    std::error_code ignored;
    fs::remove_all(path, ignored);
  }
  RootFolder(const RootFolder&) = delete;
  RootFolder& operator=(const RootFolder&) = delete;
};

// Counts the tests that left behind what cannot be removed: on Windows, paths too long for it.
int leftBehind = 0;

fs::path rootFolder() {
  static const RootFolder root;
  return root.path / std::to_string(leftBehind);
}

bool isSeparator(char16_t unit) {
  return unit == u'\\' || unit == u'/';
}

std::vector<std::u16string> splitAtSeparators(const std::u16string& text) {
  std::vector<std::u16string> parts(1);
  for (const char16_t unit : text) {
    if (isSeparator(unit)) {
      parts.emplace_back();
    } else {
      parts.back() += unit;
    }
  }
  std::erase(parts, std::u16string());
  return parts;
}

bool isValidName(const std::u16string& name) {
  return std::none_of(name.begin(), name.end(), [](char16_t unit) {
    return unit < 0x20 || std::u16string_view(u"<>\"|?*:").find(unit) != std::u16string_view::npos;
  });
}

// Takes the volume from the front of `parts`; a path without one is on C:.
std::u16string takeVolume(const std::u16string& path, std::vector<std::u16string>& parts) {
  if (namesShare(path)) {
    const std::size_t taken = std::min<std::size_t>(parts.size(), 2);
    std::u16string volume = u"\\";
    for (std::size_t n = 0; n < taken; ++n) volume += u"\\" + toLower(parts[n]);
    parts.erase(parts.begin(), parts.begin() + static_cast<std::ptrdiff_t>(taken));
    return volume;
  }
  if (!parts.empty() && parts[0].size() >= 2 && parts[0][1] == u':') {
    const std::u16string volume = toLower(parts[0].substr(0, 2));
    parts[0].erase(0, 2);
    std::erase(parts, std::u16string());
    return volume;
  }
  return u"c:";
}

void dropDotComponents(std::vector<std::u16string>& parts) {
  std::vector<std::u16string> kept;
  for (std::u16string& part : parts) {
    if (part == u"..") {
      if (!kept.empty()) kept.pop_back();
    } else if (part != u".") {
      kept.push_back(std::move(part));
    }
  }
  parts = std::move(kept);
}

// The system drops blanks and dots at the end of the last name.
void trimLastComponent(std::vector<std::u16string>& parts) {
  if (parts.empty()) return;
  std::u16string& last = parts.back();
  while (!last.empty() && (last.back() == u' ' || last.back() == u'.')) last.pop_back();
  if (last.empty()) parts.pop_back();
}

void expandShortNames(std::vector<std::u16string>& parts) {
  for (std::u16string& part : parts) {
    const auto known = standIn().shortNames.find(toLower(part));
    if (known != standIn().shortNames.end()) part = known->second;
  }
}

fs::path volumeFolder(const std::u16string& volume) {
  if (volume.size() == 2 && volume[1] == u':') {
    return rootFolder() / nativeName(volume.substr(0, 1));
  }
  fs::path folder = rootFolder() / "network";
  for (const std::u16string& part : splitAtSeparators(volume)) folder /= nativeName(part);
  return folder;
}

// The entry of `folder` with that name, ignoring case; the name as given when there is none.
fs::path findEntry(const fs::path& folder, const std::u16string& name) {
  std::error_code error;
  const fs::path exact = folder / nativeName(name);
  if (fs::exists(exact, error)) return exact;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder, error)) {
    if (equalIgnoringCase(unitsOf(entry.path().filename()), name)) return entry.path();
  }
  return exact;
}

void describe(FoundPath& found) {
  std::error_code error;
  const fs::file_status status = fs::status(found.real, error);
  found.exists = fs::exists(status);
  found.folder = fs::is_directory(status);
  if (found.exists) return;
  const bool parentThere = fs::is_directory(found.real.parent_path(), error);
  found.error = parentThere ? kErrorFileNotFound : kErrorPathNotFound;
}

FoundPath locate(const ParsedPath& parsed) {
  FoundPath found;
  found.volume = parsed.volume;
  found.error = parsed.error;
  found.real = volumeFolder(parsed.volume);
  for (const std::u16string& component : parsed.components) {
    found.real = findEntry(found.real, component);
  }
  found.owner = found.real;
  if (!parsed.stream.empty()) {
    const std::u16string name = unitsOf(found.real.filename()) + kStreamMark + parsed.stream;
    found.real = findEntry(found.real.parent_path(), name);
  }
  if (found.error == 0) describe(found);
  return found;
}

VolumeScript volumeScript(const std::u16string& volume) {
  const std::lock_guard lock(volumeMutex);
  const auto entry = volumeScripts.find(volume);
  if (entry != volumeScripts.end()) return entry->second;
  if (volume == u"c:") return VolumeScript{};
  const bool network = volume.starts_with(u"\\\\");
  return VolumeScript{VolumeState::Failing, network ? kErrorBadNetworkPath : kErrorPathNotFound};
}

// Waits while the volume is silent. Returns the error that it fails with; 0 when it answers.
std::uint32_t awaitVolume(const std::u16string& volume) {
  VolumeScript script = volumeScript(volume);
  while (script.state == VolumeState::Silent) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
    script = volumeScript(volume);
  }
  return script.state == VolumeState::Failing ? script.error : 0;
}

}  // namespace

bool namesShare(const std::u16string& path) {
  return path.size() >= 2 && isSeparator(path[0]) && isSeparator(path[1]);
}

fs::path nativeName(const std::u16string& name) {
  if constexpr (sizeof(fs::path::value_type) == sizeof(char16_t)) {
    return fs::path(fs::path::string_type(name.begin(), name.end()));
  } else {
    const std::string bytes = toUtf8(name);
    return fs::path(fs::path::string_type(bytes.begin(), bytes.end()));
  }
}

std::u16string unitsOf(const fs::path& path) {
  if constexpr (sizeof(fs::path::value_type) == sizeof(char16_t)) {
    return std::u16string(path.native().begin(), path.native().end());
  } else {
    return fromUtf8(std::string(path.native().begin(), path.native().end()));
  }
}

// On a drive where it does not work now, a process counts from the root.
std::u16string absolutePath(const std::u16string& path) {
  if (path.empty()) return path;
  const std::u16string& working = standIn().workingFolder;
  const bool network = namesShare(path);
  const bool drive = path.size() >= 2 && path[1] == u':';
  std::u16string full = path;
  if (drive && (path.size() == 2 || !isSeparator(path[2]))) {
    const bool present = toLower(path.substr(0, 2)) == toLower(working.substr(0, 2));
    full = (present ? working : path.substr(0, 2)) + u"\\" + path.substr(2);
  } else if (!drive && isSeparator(path[0]) && !network) {
    full = working.substr(0, 2) + path;
  } else if (!drive && !network) {
    full = working + u"\\" + path;
  }
  std::vector<std::u16string> parts = splitAtSeparators(full);
  const std::size_t root = std::min<std::size_t>(parts.size(), network ? 2 : 1);
  std::u16string result = network ? u"\\" : u"";
  for (std::size_t n = 0; n < root; ++n) result += (network ? u"\\" : u"") + parts[n];
  parts.erase(parts.begin(), parts.begin() + static_cast<std::ptrdiff_t>(root));
  dropDotComponents(parts);
  trimLastComponent(parts);
  if (!network) expandShortNames(parts);
  for (const std::u16string& part : parts) result += u"\\" + part;
  return parts.empty() && !network ? result + u"\\" : result;
}

ParsedPath parsePath(const std::u16string& path) {
  ParsedPath parsed;
  if (path.empty()) parsed.error = kErrorPathNotFound;
  parsed.components = splitAtSeparators(path);
  parsed.volume = takeVolume(path, parsed.components);
  dropDotComponents(parsed.components);
  if (!parsed.components.empty()) {
    std::u16string& last = parsed.components.back();
    const std::size_t colon = last.find(u':');
    if (colon != std::u16string::npos && colon > 0) {
      parsed.stream = last.substr(colon + 1);
      last.erase(colon);
    }
  }
  trimLastComponent(parsed.components);
  expandShortNames(parsed.components);
  for (const std::u16string& component : parsed.components) {
    if (!isValidName(component) || component.size() > kNameLimit) parsed.error = kErrorInvalidName;
  }
  return parsed;
}

std::u16string lastNameOf(const std::u16string& path) {
  const ParsedPath parsed = parsePath(path);
  return parsed.components.empty() ? std::u16string() : parsed.components.back();
}

namespace {

FoundPath findScripted(ParsedPath parsed) {
  if (parsed.error == 0) parsed.error = awaitVolume(parsed.volume);
  return locate(parsed);
}

}  // namespace

FoundPath findPath(const std::u16string& path) {
  ParsedPath parsed = parsePath(path);
  if (path.size() >= kPathLimit) parsed.error = kErrorPathNotFound;
  return findScripted(std::move(parsed));
}

FoundPath findLongPath(const std::u16string& path) {
  return findScripted(parsePath(path));
}

FoundPath findPathUnscripted(const std::u16string& path) {
  return locate(parsePath(path));
}

std::vector<fs::path> streamsOf(const fs::path& owner) {
  const std::u16string prefix = unitsOf(owner.filename()) + kStreamMark;
  std::vector<fs::path> streams;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(owner.parent_path(), error)) {
    if (unitsOf(entry.path().filename()).starts_with(prefix)) streams.push_back(entry.path());
  }
  return streams;
}

fs::path renamedStream(const fs::path& stream, const fs::path& from, const fs::path& to) {
  const std::u16string name = unitsOf(stream.filename());
  const std::size_t ownerLength = unitsOf(from.filename()).size();
  return to.parent_path() / nativeName(unitsOf(to.filename()) + name.substr(ownerLength));
}

bool isStreamName(const fs::path& name) {
  return unitsOf(name.filename()).find(kStreamMark) != std::u16string::npos;
}

void setVolume(const std::u16string& volume, VolumeState state, std::uint32_t error) {
  if (state == VolumeState::Present) {
    std::error_code ignored;
    fs::create_directories(volumeFolder(toLower(volume)), ignored);
  }
  const std::lock_guard lock(volumeMutex);
  volumeScripts[toLower(volume)] = {state, error};
}

bool driveIsMissing(const std::u16string& volume) {
  const VolumeScript script = volumeScript(volume);
  return volume.size() == 2 && script.state == VolumeState::Failing &&
         script.error == kErrorPathNotFound;
}

void releaseSilentVolumes() {
  const std::lock_guard lock(volumeMutex);
  for (auto& [volume, script] : volumeScripts) {
    if (script.state == VolumeState::Silent) script = {VolumeState::Failing, kErrorBadNetworkPath};
  }
}

void resetVolumes() {
  {
    const std::lock_guard lock(volumeMutex);
    volumeScripts.clear();
  }
  std::error_code ignored;
  fs::remove_all(rootFolder(), ignored);
  if (fs::exists(rootFolder(), ignored)) ++leftBehind;
  fs::create_directories(volumeFolder(u"c:"), ignored);
}

}  // namespace quillmere::platform
