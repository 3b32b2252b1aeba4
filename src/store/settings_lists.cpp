#include "store/settings_lists.h"

#include <algorithm>
#include <cstdint>

#include "base/limits.h"
#include "base/text_format.h"
#include "platform/files.h"
#include "platform/profile.h"
#include "platform/text.h"
#include "session/session.h"
#include "store/data_folder.h"
#include "store/profile_section.h"
#include "store/settings.h"
#include "store/working_documents.h"

namespace quillmere {

namespace {

// At least this many path keys are written, with empty values after the last path.
constexpr std::int32_t kMinimumPathKeys = 20;

// Absent binders keep their place behind the one that they followed; where that one is gone too,
// they come last.
std::vector<std::u16string> binderPathsInOrder() {
  std::vector<AbsentBinder> absent = session.absentBinders;
  std::vector<std::u16string> paths;
  const auto takeAbsentBehind = [&](std::u16string_view before) {
    std::erase_if(absent, [&](const AbsentBinder& binder) {
      if (!platform::equalIgnoringCase(binder.before, before)) return false;
      paths.push_back(binder.path);
      return true;
    });
  };
  takeAbsentBehind(u"");
  for (const BinderFile& binder : session.binderLibrary) {
    if (binder.isWorkingDocuments || binder.path.empty()) continue;
    paths.push_back(binder.path);
    takeAbsentBehind(binder.path);
  }
  for (const AbsentBinder& binder : absent) paths.push_back(binder.path);
  return paths;
}

bool contains(const std::vector<std::u16string>& paths, const std::u16string& path) {
  return std::any_of(paths.begin(), paths.end(), [&](const std::u16string& other) {
    return platform::equalIgnoringCase(other, path);
  });
}

// Takes over what the lists in the file hold beyond those in memory.
void adoptLists(const std::u16string& iniPath) {
  const std::vector<std::u16string> known = binderPathsInOrder();
  for (const std::u16string& path : readBinderPaths(iniPath)) {
    if (!contains(known, path)) session.absentBinders.push_back({path, u""});
  }
  std::vector<std::u16string>& recent = session.settings.recentFiles;
  for (std::u16string& path : readPathList(kRecentFilesList, iniPath)) {
    if (!contains(recent, path)) recent.push_back(std::move(path));
  }
}

// Lists that could not be read when the program started would be overwritten, so read them first.
// False when they still cannot be read.
bool catchUpWithLists(const std::u16string& iniPath) {
  if (!session.listsUnread) return true;
  if (!iniFileReadable(iniPath)) return false;
  session.listsUnread = false;
  adoptLists(iniPath);
  return true;
}

}  // namespace

std::vector<std::u16string> readBinderPaths(const std::u16string& iniPath) {
  std::vector<std::u16string> paths = readPathList(kBinderList, iniPath);
  for (std::u16string& path : paths) path = platform::absolutePath(path);
  std::erase_if(paths, IsWorkingDocsPath);
  return paths;
}

std::vector<std::u16string> readPathList(const PathListRow& list, const std::u16string& iniPath) {
  const ProfileSection stored(list.section, iniPath);
  const std::int32_t count = std::clamp(stored.integer(kCountKey, 0), 0, list.maximumCount);
  std::vector<std::u16string> paths;
  for (std::int32_t index = 0; index < count; ++index) {
    std::u16string path = stored.text(pathKey(index), kPathBufferUnits);
    if (!path.empty()) paths.push_back(std::move(path));
  }
  return paths;
}

void writePathList(const PathListRow& list, const std::vector<std::u16string>& paths,
                   const std::u16string& iniPath) {
  const ProfileSection stored(list.section, iniPath);
  const auto write = [&](const std::u16string& key, const std::u16string& value) {
    if (!stored.holds(key, value)) platform::writeProfileText(list.section, key, value, iniPath);
  };
  const auto count = static_cast<std::int32_t>(paths.size());
  write(kCountKey, decimal(count));
  for (std::int32_t index = 0; index < std::max(kMinimumPathKeys, count); ++index) {
    const std::u16string path =
        index < count ? paths[static_cast<std::size_t>(index)] : std::u16string();
    write(pathKey(index), path);
  }
}

void SaveRecentFiles() {
  if (session.viewerRole) return;
  const std::u16string path = GetIniPath();
  if (path.empty() || !catchUpWithLists(path)) return;
  writePathList(kRecentFilesList, session.settings.recentFiles, path);
}

void SaveBinderList() {
  if (session.restoringBinders || session.viewerRole) return;
  const std::u16string iniPath = GetIniPath();
  if (iniPath.empty() || !catchUpWithLists(iniPath)) return;
  writePathList(kBinderList, binderPathsInOrder(), iniPath);
}

}  // namespace quillmere
