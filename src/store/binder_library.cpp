#include "store/binder_library.h"

#include <algorithm>
#include <optional>
#include <unordered_set>
#include <utility>

#include "base/limits.h"
#include "base/text_format.h"
#include "platform/files.h"
#include "platform/text.h"
#include "session/session.h"
#include "store/binder_file.h"
#include "store/binder_names.h"
#include "store/data_folder.h"
#include "store/probe_path.h"
#include "store/recent_files.h"
#include "store/settings.h"
#include "store/settings_lists.h"
#include "store/working_documents.h"
#include "ui/boxes.h"

namespace quillmere {

namespace {

using platform::equalIgnoringCase;

// Keeps the list of loaded binders from being saved during a bulk load.
class BulkLoad {
 public:
  BulkLoad() { session.restoringBinders = true; }
  ~BulkLoad() { session.restoringBinders = false; }
  BulkLoad(const BulkLoad&) = delete;
  BulkLoad& operator=(const BulkLoad&) = delete;
};

bool isCustom(const BinderFile& binder) {
  return !binder.isWorkingDocuments;
}

bool isCustomBinder(int index) {
  return IsValidBinder(index) && isCustom(binderAt(index));
}

// Absent binders count too: once they are back, the settings have to name them all.
std::ptrdiff_t customBinderCount() {
  return std::count_if(session.binderLibrary.begin(), session.binderLibrary.end(), isCustom) +
         static_cast<std::ptrdiff_t>(session.absentBinders.size());
}

// The odd characters are deliberate: users know the message in this form.
int reportFullLibrary() {
  showBox(formatText(u"Cannot load another binder \u00E2\u20AC\u201D the maximum of %d binders is "
                     u"already loaded.\n\nClose a binder first (right-click the binder name in the "
                     u"Binder Library panel \u2192 Close Binder).",
                     {decimal(kMostCustomBinders)}),
          u"Binder Limit", BoxButtons::Ok, BoxIcon::Information);
  return kTooManyBinders;
}

void forgetAbsent(const std::u16string& path) {
  std::erase_if(session.absentBinders,
                [&](const AbsentBinder& absent) { return equalIgnoringCase(absent.path, path); });
}

bool isAbsent(const std::u16string& path) {
  return std::any_of(
      session.absentBinders.begin(), session.absentBinders.end(),
      [&](const AbsentBinder& absent) { return equalIgnoringCase(absent.path, path); });
}

bool isKnown(const std::u16string& path) {
  return FindBinder(path) != kNoBinder || isAbsent(path);
}

// True when the limit keeps this binder out.
bool libraryIsFullFor(const std::u16string& path) {
  return !isKnown(path) && customBinderCount() >= kMostCustomBinders;
}

// Appends the binder of a file that can be reached.
int appendBinder(const std::u16string& path) {
  BinderFile binder;
  if (!LoadBinderFile(path, binder)) return kNoBinder;
  forgetAbsent(path);
  session.binderLibrary.push_back(std::move(binder));
  SaveBinderList();
  return static_cast<int>(session.binderLibrary.size()) - 1;
}

// Empties the file or makes it. One that could not be reached at the start is a binder with
// contents, and is loaded as it is.
int createAndAppend(const std::u16string& path) {
  if (isAbsent(path) && platform::fileExists(path)) return appendBinder(path);
  if (!platform::writeFile(path, nullptr, 0)) return kNoBinder;
  const int index = appendBinder(path);
  if (index == kNoBinder) platform::deleteFile(path);
  return index;
}

// A binder that the settings name, and whether its file can be reached.
struct ListedBinder {
  std::u16string path;
  ProbeResult state = ProbeResult::Missing;
};

// A local file has gone only where its drive answers and says so.
ProbeResult judgeBinderFile(const std::u16string& path, ProbeResult probe) {
  if (probe != ProbeResult::Missing || onNetwork(path)) return probe;
  const std::uint32_t error = platform::queryAttributes(path).error;
  const bool notFound =
      error == platform::kErrorFileNotFound || error == platform::kErrorPathNotFound;
  return notFound && !platform::driveIsAbsent(path) ? ProbeResult::Missing
                                                    : ProbeResult::Unavailable;
}

// Nullopt when the settings cannot be read at the moment. `timeout` is for all shares together.
std::optional<std::vector<ListedBinder>> listedBinders(std::uint32_t timeoutMilliseconds) {
  const std::u16string iniPath = GetIniPath();
  if (iniPath.empty() || !iniFileReadable(iniPath)) return std::nullopt;
  const std::vector<std::u16string> paths = readBinderPaths(iniPath);
  const std::vector<ProbeResult> states = probePaths(paths, timeoutMilliseconds);
  std::vector<ListedBinder> listed;
  for (std::size_t i = 0; i < paths.size(); ++i) {
    listed.push_back({paths[i], judgeBinderFile(paths[i], states[i])});
  }
  return listed;
}

// An absent binder, placed after the last one of `library`.
AbsentBinder absentAfter(const std::vector<BinderFile>& library, const std::u16string& path) {
  const bool first = library.empty() || library.back().isWorkingDocuments;
  return {path, first ? std::u16string() : library.back().path};
}

// What a bulk refresh builds while the present library stays in use.
struct FreshLibrary {
  std::vector<BinderFile> binders;
  std::vector<AbsentBinder> absent;
};

void addListed(const ListedBinder& listed, FreshLibrary& fresh) {
  const auto isListed = [&](const BinderFile& binder) {
    return equalIgnoringCase(binder.path, listed.path);
  };
  if (std::any_of(fresh.binders.begin(), fresh.binders.end(), isListed)) return;
  BinderFile binder;
  const int loaded = FindBinder(listed.path);
  if (listed.state == ProbeResult::Available && LoadBinderFile(listed.path, binder)) {
    fresh.binders.push_back(std::move(binder));
  } else if (loaded != kNoBinder) {
    fresh.binders.push_back(binderAt(loaded));
  } else {
    fresh.absent.push_back(absentAfter(fresh.binders, listed.path));
  }
}

void removeBinder(int index) {
  session.binderLibrary.erase(session.binderLibrary.begin() + index);
}

// Removes a file with its view from the binder in memory.
std::u16string takeFileOut(BinderFile& binder, int fileIndex) {
  const auto file = binder.files.begin() + fileIndex;
  std::u16string path = std::move(*file);
  binder.files.erase(file);
  binder.views.erase(platform::toLower(path));
  binder.dirty = true;
  return path;
}

void complainAboutName(const std::u16string& text, BoxIcon icon) {
  showBox(text, u"Rename Binder", BoxButtons::Ok, icon);
}

// Updates everything that refers to the binder by its path.
void followRename(const std::u16string& oldPath, const std::u16string& newPath) {
  for (auto& [document, binder] : session.documentBinders) {
    if (equalIgnoringCase(binder, oldPath)) binder = newPath;
  }
  for (AbsentBinder& absent : session.absentBinders) {
    if (equalIgnoringCase(absent.before, oldPath)) absent.before = newPath;
  }
}

// The index that an entry gets after removing it from `count` entries and inserting it again.
int indexAfterDrop(int from, DropPlace place, int count) {
  int to = place.over + (place.after ? 1 : 0);
  if (to > from) --to;
  return std::clamp(to, 0, count - 1);
}

template <typename Entry>
void moveEntry(std::vector<Entry>& entries, int from, int to) {
  Entry moved = std::move(entries[static_cast<std::size_t>(from)]);
  entries.erase(entries.begin() + from);
  entries.insert(entries.begin() + to, std::move(moved));
}

}  // namespace

BinderFile& binderAt(int index) {
  return session.binderLibrary[static_cast<std::size_t>(index)];
}

int FindBinder(std::u16string_view path) {
  if (path.empty()) return kNoBinder;
  for (std::size_t i = 0; i < session.binderLibrary.size(); ++i) {
    if (equalIgnoringCase(session.binderLibrary[i].path, path)) return static_cast<int>(i);
  }
  return kNoBinder;
}

int WorkingDocumentsIndex() {
  for (std::size_t i = 0; i < session.binderLibrary.size(); ++i) {
    if (session.binderLibrary[i].isWorkingDocuments) return static_cast<int>(i);
  }
  return kNoBinder;
}

bool IsValidBinder(int index) {
  return index >= 0 && static_cast<std::size_t>(index) < session.binderLibrary.size();
}

bool IsValidBinderFile(int index, int fileIndex) {
  return IsValidBinder(index) && fileIndex >= 0 &&
         static_cast<std::size_t>(fileIndex) < binderAt(index).files.size();
}

int LoadBinder(const std::u16string& path) {
  if (path.empty()) return kNoBinder;
  const std::u16string full = platform::absolutePath(path);
  const int loaded = FindBinder(full);
  if (loaded != kNoBinder) return loaded;
  if (session.viewerRole) return kNoBinder;
  if (libraryIsFullFor(full)) return reportFullLibrary();
  return onGoneShare(full) ? kNoBinder : appendBinder(full);
}

void RestoreBinders() {
  // A viewer shows its document and no binders at first, so it waits for none.
  const auto listedNow = listedBinders(session.viewerRole ? 0 : openTimeoutMilliseconds());
  if (!listedNow) return;
  {
    const BulkLoad guard;
    for (const ListedBinder& listed : *listedNow) {
      if (listed.state == ProbeResult::Missing || isKnown(listed.path)) continue;
      if (listed.state == ProbeResult::Unavailable || appendBinder(listed.path) == kNoBinder) {
        session.absentBinders.push_back(absentAfter(session.binderLibrary, listed.path));
      }
    }
  }
  // What has gone, or was no custom binder at all, drops out of the settings here. A first start
  // writes the empty list.
  const std::size_t listedBefore = readPathList(kBinderList, GetIniPath()).size();
  const bool unchanged = static_cast<std::size_t>(customBinderCount()) == listedBefore;
  if (!unchanged || listedBefore == 0) SaveBinderList();
}

int CreateBinder(const std::u16string& path) {
  if (session.viewerRole) return kNoBinder;
  const std::u16string full = platform::absolutePath(path);
  const int loaded = FindBinder(full);
  if (loaded != kNoBinder) return loaded;
  if (libraryIsFullFor(full)) return reportFullLibrary();
  const int index = onGoneShare(full) ? kNoBinder : createAndAppend(full);
  if (index == kNoBinder) {
    showBox(u"Could not create the binder file.", u"Add New Binder", BoxButtons::Ok,
            BoxIcon::Error);
  }
  return index;
}

void RefreshBinder(int index) {
  if (!isCustomBinder(index)) return;
  BinderFile& binder = binderAt(index);
  const ProbeResult state = judgeBinderFile(binder.path, probeWithinOpenTimeout(binder.path));
  if (state == ProbeResult::Missing) {
    removeBinder(index);
    SaveBinderList();
    return;
  }
  BinderFile fresh;
  if (state == ProbeResult::Available && LoadBinderFile(binder.path, fresh)) {
    binder = std::move(fresh);
  }
}

void RefreshAllBinders() {
  if (session.listsUnread) SaveBinderList();  // what was loaded meanwhile is to be listed too
  const auto listedNow = listedBinders(openTimeoutMilliseconds());
  if (!listedNow) return;
  {
    const BulkLoad guard;
    FreshLibrary fresh;
    const int workingDocuments = WorkingDocumentsIndex();
    if (workingDocuments != kNoBinder) fresh.binders.push_back(binderAt(workingDocuments));
    for (const ListedBinder& listed : *listedNow) {
      if (listed.state != ProbeResult::Missing) addListed(listed, fresh);
    }
    session.binderLibrary = std::move(fresh.binders);
    session.absentBinders = std::move(fresh.absent);
  }
  SaveBinderList();
}

void AddFilesToBinder(int index, const std::vector<std::u16string>& paths) {
  if (session.viewerRole || !IsValidBinder(index)) return;
  BinderFile& binder = binderAt(index);
  std::unordered_set<std::u16string, Fnv1aTextHash> listed;
  for (const std::u16string& path : binder.files) listed.insert(platform::toLower(path));
  int added = 0;
  int refused = 0;
  for (const std::u16string& path : paths) {
    std::u16string full = platform::absolutePath(path);
    const std::u16string key = platform::toLower(full);
    if (full.empty() || listed.contains(key)) continue;
    if (binder.files.size() >= kMostFilesInBinder) {
      ++refused;
      continue;
    }
    binder.files.push_back(std::move(full));
    listed.insert(key);
    ++added;
  }
  if (added > 0) {
    binder.dirty = true;
    SaveBinderFile(binder);
  }
  if (refused == 0) return;
  showBox(formatText(u"Added %d file(s). %d not added because the binder is at its limit of %d "
                     u"files.\n\nSplit larger collections across multiple binders.",
                     {decimal(added), decimal(refused), decimal(kMostFilesInBinder)}),
          u"Binder File Limit", BoxButtons::Ok, BoxIcon::Information);
}

void RemoveFileRecord(int index, int fileIndex) {
  if (session.viewerRole || !IsValidBinderFile(index, fileIndex)) return;
  BinderFile& binder = binderAt(index);
  catchUpWithFile(binder);
  const std::u16string path = takeFileOut(binder, fileIndex);
  if (binder.isWorkingDocuments) AddToRecentFiles({path});
  SaveBinderFile(binder);
}

void RemoveAllFileRecords(int index) {
  if (session.viewerRole || !IsValidBinder(index)) return;
  BinderFile& binder = binderAt(index);
  catchUpWithFile(binder);
  if (binder.isWorkingDocuments) AddToRecentFiles(binder.files);
  binder.files.clear();
  binder.views.clear();
  binder.furtherLines.clear();
  binder.dirty = true;
  SaveBinderFile(binder);
}

bool FinishBinderRename(int index, std::u16string_view typed) {
  if (session.viewerRole || !isCustomBinder(index)) return false;
  const std::u16string name(trimmedBinderName(typed));
  if (name == binderAt(index).name) return false;
  if (const char16_t* complaint = binderNameComplaint(name)) {
    complainAboutName(complaint, BoxIcon::Warning);
    return false;
  }
  return RenameBinder(index, name);
}

bool RenameBinder(int index, const std::u16string& newName) {
  if (session.viewerRole || !isCustomBinder(index)) return false;
  const std::u16string oldPath = binderAt(index).path;
  const std::u16string newPath =
      oldPath.substr(0, oldPath.find_last_of(u"\\/") + 1) + newName + u".lst";
  if (newPath == oldPath) return true;
  const bool gone = onGoneShare(oldPath);
  const bool otherFile = !equalIgnoringCase(newPath, oldPath);
  if (!gone && otherFile && (isKnown(newPath) || platform::fileExists(newPath))) {
    complainAboutName(formatText(u"A binder named '%s' already exists.", {newName}),
                      BoxIcon::Warning);
    return false;
  }
  if (gone || !platform::renameFile(oldPath, newPath)) {
    complainAboutName(formatText(u"Could not rename the binder file:\n\n    %s\n    -> %s\n\nThe "
                                 u"binder name was not changed.",
                                 {oldPath, newPath}),
                      BoxIcon::Error);
    return false;
  }
  binderAt(index).path = newPath;
  binderAt(index).name = newName;
  followRename(oldPath, newPath);
  SaveBinderList();
  return true;
}

void CloseBinder(int index) {
  if (session.viewerRole || !isCustomBinder(index)) return;
  removeBinder(index);
  SaveBinderList();
}

bool AnyCustomBinder() {
  return customBinderCount() > 0;
}

bool CloseAllCustomBinders() {
  if (session.viewerRole || !AnyCustomBinder()) return false;
  std::erase_if(session.binderLibrary, isCustom);
  session.absentBinders.clear();
  SaveBinderList();
  return true;
}

bool DeleteBinder(int index) {
  if (session.viewerRole || !isCustomBinder(index)) return false;
  const BoxAnswer answer =
      showBox(u"Permanently delete the binder file?\nThis cannot be undone.", u"Confirm Delete",
              BoxButtons::OkDefaultCancel, BoxIcon::Warning);
  if (answer != BoxAnswer::Ok) return false;
  const std::u16string path = binderAt(index).path;
  removeBinder(index);
  if (!onGoneShare(path)) platform::deleteFile(path);
  SaveBinderList();
  return true;
}

int MoveFileInBinder(int index, int fileIndex, DropPlace place) {
  if (session.viewerRole || !IsValidBinderFile(index, fileIndex)) return fileIndex;
  BinderFile& binder = binderAt(index);
  const int to = indexAfterDrop(fileIndex, place, static_cast<int>(binder.files.size()));
  if (to == fileIndex) return fileIndex;
  moveEntry(binder.files, fileIndex, to);
  binder.dirty = true;
  SaveBinderFile(binder);
  return to;
}

int MoveBinder(int index, DropPlace place) {
  if (session.viewerRole || !isCustomBinder(index)) return index;
  const int workingDocuments = WorkingDocumentsIndex();
  if (place.over == workingDocuments && !place.after) return index;
  const int wanted = indexAfterDrop(index, place, static_cast<int>(session.binderLibrary.size()));
  const int to = std::max(wanted, workingDocuments + 1);
  if (to == index) return index;
  moveEntry(session.binderLibrary, index, to);
  SaveBinderList();
  return to;
}

bool IsFileInOtherBinder(std::u16string_view path, int exceptIndex) {
  for (int index = 0; IsValidBinder(index); ++index) {
    if (index == exceptIndex) continue;
    const std::vector<std::u16string>& files = binderAt(index).files;
    if (std::any_of(files.begin(), files.end(),
                    [path](const std::u16string& file) { return equalIgnoringCase(file, path); })) {
      return true;
    }
  }
  return false;
}

}  // namespace quillmere
