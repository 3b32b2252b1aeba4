#include "store/recent_files.h"

#include <algorithm>
#include <cstdint>

#include "base/text_format.h"
#include "platform/files.h"
#include "platform/text.h"
#include "session/session.h"
#include "store/settings.h"
#include "store/settings_lists.h"
#include "ui/boxes.h"

namespace quillmere {

namespace {

constexpr std::int32_t kFewestEntries = 1;
constexpr std::int32_t kMostEntries = 20;

std::size_t eraseEntry(std::vector<std::u16string>& list, const std::u16string& path) {
  return std::erase_if(
      list, [&](const std::u16string& entry) { return platform::equalIgnoringCase(entry, path); });
}

std::size_t mostEntries() {
  return static_cast<std::size_t>(
      std::clamp(session.settings.recentFilesMaxEntries, kFewestEntries, kMostEntries));
}

}  // namespace

void AddToRecentFiles(const std::vector<std::u16string>& paths) {
  if (!session.settings.recentFilesEnabled || paths.empty()) return;
  const std::size_t limit = mostEntries();
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

void ApplyRecentFilesSettings() {
  std::vector<std::u16string>& list = session.settings.recentFiles;
  const std::size_t limit = session.settings.recentFilesEnabled ? mostEntries() : 0;
  if (list.size() <= limit) return;
  list.resize(limit);
  SaveRecentFiles();
}

void ClearRecentFiles() {
  constexpr const char16_t* kTitle = u"Clear Recent Documents";
  std::vector<std::u16string>& list = session.settings.recentFiles;
  if (list.empty()) {
    showBox(u"The Recent Documents list is already empty.", kTitle, BoxButtons::Ok,
            BoxIcon::Information);
    return;
  }
  const BoxAnswer answer = showBox(
      formatText(
          u"This will clear %d recent document entr%s. Continue?",
          {decimal(static_cast<std::int64_t>(list.size())), list.size() == 1 ? u"y" : u"ies"}),
      kTitle, BoxButtons::YesNo, BoxIcon::Question);
  if (answer != BoxAnswer::Yes) return;
  list.clear();
  SaveRecentFiles();
}

}  // namespace quillmere
