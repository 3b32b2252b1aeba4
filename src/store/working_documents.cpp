#include "store/working_documents.h"

#include <algorithm>
#include <utility>

#include "platform/files.h"
#include "platform/main_window.h"
#include "platform/text.h"
#include "session/changes.h"
#include "session/session.h"
#include "store/binder_file.h"
#include "store/binder_library.h"
#include "store/data_folder.h"

namespace quillmere {

namespace {

using Files = std::vector<std::u16string>;

Files::iterator findFile(Files& files, const std::u16string& path) {
  return std::find_if(files.begin(), files.end(), [&](const std::u16string& file) {
    return platform::equalIgnoringCase(file, path);
  });
}

// Each of the two is true when the list has the document afterwards.
bool keepPlace(Files& files, const std::u16string& path) {
  const auto found = findFile(files, path);
  if (found != files.end()) {
    *found = path;
  } else {
    files.insert(files.begin(), path);
  }
  return true;
}

bool moveToHead(Files& files, const std::u16string& path) {
  const auto found = findFile(files, path);
  if (found != files.end()) {
    files.erase(found);
  } else if (files.size() >= kMostFilesInBinder) {
    return false;
  }
  files.insert(files.begin(), path);
  return true;
}

// What the last session left, or nothing where that is not restored.
void readOrForget(BinderFile& binder, const std::u16string& path) {
  if (session.settings.restoreOpenDocs && platform::fileExists(path)) {
    session.workingDocumentsUnread = !LoadBinderFile(path, binder);
    return;
  }
  binder.path = path;
  if (keepsBinderFile(binder)) platform::deleteFile(path);
}

// The document is to be seen first, and to be there for the next key. Going through a folder opens
// one after another.
void saveLater() {
  platform::mainWindowExists() ? platform::doWhenQuiet(SaveWorkingDocuments)
                               : SaveWorkingDocuments();
}

int workingDocuments() {
  if (WorkingDocumentsIndex() == kNoBinder) LoadWorkingDocuments();
  return WorkingDocumentsIndex();
}

}  // namespace

void AddToWorkingDocuments(const std::vector<std::u16string>& paths, WorkingDocsMode how) {
  if (how == kWorkingDocsLeaveAlone || session.viewerRole) return;
  const int index = workingDocuments();
  if (index == kNoBinder) return;
  BinderFile& binder = binderAt(index);
  bool listed = false;
  for (const std::u16string& path : paths) {
    if (path.empty()) continue;
    const std::u16string full = platform::absolutePath(path);
    const auto list = how == kWorkingDocsKeepPlace ? keepPlace : moveToHead;
    if (list(binder.files, full)) listed = true;
  }
  if (!listed) return;
  binder.dirty = true;
  saveLater();
  bindersChanged();
}

void AddToWorkingDocuments(const std::u16string& path, WorkingDocsMode how) {
  AddToWorkingDocuments(std::vector<std::u16string>{path}, how);
}

void SaveWorkingDocuments() {
  const int index = WorkingDocumentsIndex();
  if (index != kNoBinder && binderAt(index).dirty) WriteBinderFile(binderAt(index));
}

void LoadWorkingDocuments() {
  if (WorkingDocumentsIndex() != kNoBinder) return;
  const std::u16string path = WorkingDocsPath();
  if (path.empty()) return;
  BinderFile binder;
  binder.isWorkingDocuments = true;
  binder.bold = true;
  if (!session.viewerRole) readOrForget(binder, path);
  binder.name = u"Working Documents";
  session.binderLibrary.insert(session.binderLibrary.begin(), std::move(binder));
}

std::u16string WorkingDocsPath() {
  const std::u16string folder = GetAppDataFolder();
  return folder.empty() ? folder : folder + u"WorkingDocs.lst";
}

bool IsWorkingDocsPath(const std::u16string& path) {
  const std::u16string own = WorkingDocsPath();
  return !own.empty() && platform::equalIgnoringCase(path, own);
}

}  // namespace quillmere
