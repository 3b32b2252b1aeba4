#include "documents/binder_files.h"

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "base/limits.h"
#include "base/text_format.h"
#include "documents/close.h"
#include "documents/save.h"
#include "documents/shelve.h"
#include "documents/unsaved_dialog.h"
#include "platform/text.h"
#include "session/session.h"
#include "session/waiting_opens.h"
#include "store/binder_file.h"
#include "store/binder_library.h"
#include "store/shelf.h"
#include "ui/boxes.h"

namespace quillmere {

namespace {

constexpr int kNoPane = -1;

// The pane that shows the file as opened from this binder; kNoPane when none does.
int paneOpenedFrom(const std::u16string& path, int index) {
  const auto opened = session.documentBinders.find(platform::toLower(path));
  if (opened == session.documentBinders.end() || FindBinder(opened->second) != index) {
    return kNoPane;
  }
  return paneWithPath(path);
}

// Asks as Close does, about a document that is made the active one first.
bool mayClose(int pane) {
  if (!changesWouldBeLost(pane)) return true;
  setActivePane(pane);
  return PromptSaveBeforeClose(fileNameOf(pathOf(pane))) != BoxAnswer::Cancel;
}

BoxAnswer askAboutShelved(const std::u16string& path) {
  return showBox(
      formatText(u"'%s' has unsaved changes.\n\nYes  -  Save the changes, then remove\nNo  -  "
                 u"Discard the changes and remove\nCancel  -  Keep the file in the binder",
                 {fileNameOf(path)}),
      u"Remove from Binder", BoxButtons::YesNoCancel, BoxIcon::Warning);
}

bool confirmRemoval(const std::u16string& binder, const std::u16string& path) {
  return showBox(formatText(u"Remove this file from binder '%s'?\n\n    %s\n\nThe file itself will "
                            u"not be deleted from disk.",
                            {binder, fileNameOf(path)}),
                 u"Remove from Binder", BoxButtons::YesNo, BoxIcon::Question) == BoxAnswer::Yes;
}

bool confirmRemovalOfAll(const BinderFile& binder) {
  const std::size_t count = binder.files.size();
  return showBox(formatText(u"Remove all %d document%s from '%s'?",
                            {decimal(static_cast<std::int64_t>(count)), count == 1 ? u"" : u"s",
                             binder.name}),
                 u"Remove All", BoxButtons::YesNo, BoxIcon::Question) == BoxAnswer::Yes;
}

bool orphaned(const std::u16string& path, int index) {
  return IsShelved(path) && !IsFileInOtherBinder(path, index);
}

// The files whose shelved changes could not be found any more without this binder.
std::vector<UnsavedFile> filesToBeOrphaned(int index) {
  const BinderFile& binder = binderAt(index);
  std::vector<UnsavedFile> files;
  std::unordered_set<std::u16string> listed;
  for (std::size_t i = 0; i < binder.files.size(); ++i) {
    const std::u16string& path = binder.files[i];
    if (!orphaned(path, index) || !listed.insert(platform::toLower(path)).second) continue;
    files.push_back(unsavedFileOf(index, static_cast<int>(i)));
  }
  return files;
}

// A document that stays open still has the changes that were not to be saved.
void keepThoseOfOpenDocuments(std::vector<UnsavedFile>& files) {
  std::erase_if(files,
                [](const UnsavedFile& file) { return !file.save && paneWithPath(file.path) >= 0; });
}

void dropEntries(const std::vector<UnsavedFile>& files) {
  for (const UnsavedFile& file : files) DropShelfEntry(file.path);
}

// The panes with documents opened from the binder.
std::vector<int> panesOpenedFrom(int index) {
  std::vector<int> panes;
  for (int pane = 0; pane < 2; ++pane) {
    if (documentOf(pane) != nullptr && paneOpenedFrom(pathOf(pane), index) == pane) {
      panes.push_back(pane);
    }
  }
  return panes;
}

bool isAmong(const std::vector<UnsavedFile>& files, const std::u16string& path) {
  return std::any_of(files.begin(), files.end(), [&](const UnsavedFile& file) {
    return platform::equalIgnoringCase(file.path, path);
  });
}

// What the user wants done with a changed document that is about to close.
struct CloseAnswer {
  int pane = 0;
  BoxAnswer answer = BoxAnswer::Cancel;
};

// Asks about changed documents that are not among `settled`; nullopt when the user cancels.
std::optional<std::vector<CloseAnswer>> askAboutChanged(const std::vector<int>& panes,
                                                        const std::vector<UnsavedFile>& settled) {
  std::vector<CloseAnswer> answers;
  for (const int pane : panes) {
    if (isAmong(settled, pathOf(pane)) || !changesWouldBeLost(pane)) continue;
    setActivePane(pane);
    const BoxAnswer answer = AskSaveBeforeClose(fileNameOf(pathOf(pane)));
    if (answer != BoxAnswer::Yes && answer != BoxAnswer::No) return std::nullopt;
    answers.push_back({pane, answer});
  }
  return answers;
}

// Saves before it discards, so that a failed save leaves the rest as it was.
bool followAnswers(const std::vector<CloseAnswer>& answers) {
  for (const BoxAnswer turn : {BoxAnswer::Yes, BoxAnswer::No}) {
    for (const CloseAnswer& given : answers) {
      if (given.answer != turn) continue;
      setActivePane(given.pane);
      if (FollowCloseAnswer(turn) == BoxAnswer::Cancel) return false;
    }
  }
  return true;
}

bool mayRemoveAll(int index, std::vector<UnsavedFile>& shelved) {
  if (shelved.empty()) return confirmRemovalOfAll(binderAt(index));
  return ShowUnsavedDialog(shelved, u"Save Changes Before Removing") == UnsavedAnswer::GoAhead;
}

}  // namespace

bool RemoveFileFromBinder(int index, int fileIndex, bool confirm) {
  if (session.viewerRole || !IsValidBinderFile(index, fileIndex)) return false;
  const DocumentWork work;
  const std::u16string path = binderAt(index).files[static_cast<std::size_t>(fileIndex)];
  const bool orphans = orphaned(path, index);
  if (orphans) {
    const BoxAnswer answer = askAboutShelved(path);
    if (answer != BoxAnswer::Yes && answer != BoxAnswer::No) return false;
    if (answer == BoxAnswer::Yes && !SaveShelved(index, fileIndex)) return false;
  } else if (confirm && !IsShelved(path) && !confirmRemoval(binderAt(index).name, path)) {
    return false;
  }
  const int pane = paneOpenedFrom(path, index);
  if (pane != kNoPane) {
    if (!orphans && !mayClose(pane)) return false;
    closeDocumentByPath(path);
  }
  // The shelf copy can only be deleted once it is no longer open.
  if (orphans) DropShelfEntry(path);
  RemoveFileRecord(index, fileIndex);
  return true;
}

bool RemoveAllFromBinder(int index) {
  if (session.viewerRole || !IsValidBinder(index) || binderAt(index).files.empty()) return false;
  const DocumentWork work;
  catchUpWithFile(binderAt(index));  // the questions are about all that will be removed
  // Every question comes before the first deed: Cancel leaves everything as it was.
  std::vector<UnsavedFile> shelved = filesToBeOrphaned(index);
  if (!mayRemoveAll(index, shelved)) return false;
  const std::vector<int> panes = panesOpenedFrom(index);
  const auto answers = askAboutChanged(panes, shelved);
  if (!answers) return false;

  const bool settled = saveChosenFiles(shelved) && followAnswers(*answers);
  if (settled) {
    for (const int pane : panes) closeDocumentByPath(pathOf(pane));
  } else {
    keepThoseOfOpenDocuments(shelved);
  }
  dropEntries(shelved);
  if (settled) RemoveAllFileRecords(index);
  return settled;
}

}  // namespace quillmere
