#include "store/recent_files.h"

#include <algorithm>
#include <cstdint>

#include "platform/files.h"
#include "platform/text.h"
#include "session/session.h"
#include "store/settings.h"

namespace quillmere {

namespace {

constexpr std::int32_t kFewestEntries = 1;
constexpr std::int32_t kMostEntries = 20;

std::size_t eraseEntry(std::vector<std::u16string>& list, const std::u16string& path) {
  return std::erase_if(
      list, [&](const std::u16string& entry) { return platform::equalIgnoringCase(entry, path); });
}

}  // namespace

void AddToRecentFiles(const std::vector<std::u16string>& paths) {
  if (!session.settings.recentFilesEnabled || paths.empty()) return;
  const auto limit = static_cast<std::size_t>(
      std::clamp(session.settings.recentFilesMaxEntries, kFewestEntries, kMostEntries));
  std::vector<std::u16string> head;
  std::vector<std::u16string>& list = session.settings.recentFiles;
  for (const std::u16string& path : paths) {
    const std::u16string full = platform::absolutePath(path);
    eraseEntry(list, full);
    const bool twice = std::any_of(head.begin(), head.end(), [&](const std::u16string& entry) {
      return platform::equalIgnoringCase(entry, full);
    });
    if (!twice && head.size() < limit) head.push_back(full);
  }
  list.insert(list.begin(), head.begin(), head.end());
  list.resize(std::min(list.size(), limit));
  SaveRecentFiles();
}

void RemoveFromRecentFiles(const std::u16string& path) {
  if (!path.empty() && eraseEntry(session.settings.recentFiles, path) > 0) SaveRecentFiles();
}

}  // namespace quillmere
