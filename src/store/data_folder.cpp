#include "store/data_folder.h"

#include <array>
#include <cstdint>
#include <string_view>

#include "base/limits.h"
#include "platform/files.h"
#include "session/session.h"

namespace quillmere {

namespace {

// Byte order mark of little-endian UTF-16. The system keeps a file without it in its code page,
// which would lose paths with characters outside the code page.
constexpr std::array<std::uint8_t, 2> kUtf16Mark = {0xFF, 0xFE};
constexpr std::uint64_t kLargestIniFile = 16 << 20;  // bytes

std::u16string makeDataFolder(std::u16string_view name) {
  const std::u16string parent = GetAppDataFolder();
  if (parent.empty()) return {};
  const std::u16string folder = boundedPath(parent + std::u16string(name));
  platform::createFolder(folder);
  return boundedPath(folder + u"\\");
}

}  // namespace

std::u16string GetAppDataFolder() {
  std::u16string folder = platform::localAppDataFolder();
  if (folder.empty()) return {};
  if (folder.back() != u'\\') folder += u'\\';
  folder = boundedPath(folder + u"Quillmere");
  platform::createFolder(folder);
  return boundedPath(folder + u"\\");
}

std::u16string GetIniPath() {
  const std::u16string folder = GetAppDataFolder();
  if (folder.empty()) return {};
  std::u16string path = boundedPath(folder + u"quillmere.ini");
  if (!session.viewerRole) seedIniFile(path);
  return path;
}

void seedIniFile(const std::u16string& iniPath) {
  if (session.settingsFileSeeded) return;
  session.settingsFileSeeded = true;
  platform::createNewFile(iniPath, kUtf16Mark.data(), kUtf16Mark.size());
}

bool iniFileReadable(const std::u16string& iniPath) {
  return !platform::fileExists(iniPath) ||
         platform::readFileShared(iniPath, kLargestIniFile).has_value();
}

void makeDataFolders() {
  session.stampsFolder = makeDataFolder(u"Stamps");
  session.bindersFolder = makeDataFolder(u"Binders");
  session.shelveFolder = makeDataFolder(u"Shelve");
}

}  // namespace quillmere
