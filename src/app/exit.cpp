#include "app/exit.h"

#include <fpdfview.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "base/product.h"
#include "base/text_format.h"
#include "documents/close.h"
#include "documents/shelve.h"
#include "documents/unsaved_dialog.h"
#include "integration/viewers.h"
#include "platform/files.h"
#include "platform/instances.h"
#include "platform/process.h"
#include "session/session.h"
#include "store/binder_library.h"
#include "store/binder_views.h"
#include "store/settings.h"
#include "store/working_documents.h"
#include "ui/boxes.h"

namespace quillmere {

namespace {

// What the user wants saved is saved; the rest is discarded later. False when the window stays.
bool settleUnsavedFiles(std::vector<UnsavedFile>& files) {
  if (files.empty()) return true;
  if (ShowUnsavedDialog(files, u"Save Changes Before Closing") == UnsavedAnswer::Cancel) {
    return false;
  }
  if (saveChosenFiles(files)) return true;
  showNotice(
      u"Some documents could not be saved, so the application will stay open. Their changes are "
      u"still marked unsaved.",
      BoxIcon::Warning);
  return false;
}

// A file that was handed over meanwhile keeps the window. True when it stays.
bool staysForWaitingFile(const std::vector<UnsavedFile>& settled) {
  if (session.waitingOpens.empty()) return false;
  for (const UnsavedFile& file : settled) {
    if (file.save) DropShelfEntry(file.path);
  }
  return true;
}

void forgetWorkingDocuments() {
  if (session.settings.restoreOpenDocs || !session.ownsPrimaryName) return;
  const std::u16string path = WorkingDocsPath();
  if (!path.empty()) platform::deleteFile(path);
}

void offerToCloseViewers() {
  if (countViewers() == 0) return;
  const BoxAnswer answer =
      showBox(u"Close All Viewer Windows?", kProductTitle, BoxButtons::YesNo, BoxIcon::Question);
  if (answer == BoxAnswer::Yes) closeViewers();
}

}  // namespace

bool settleBeforeClose() {
  if (session.viewerRole) return true;
  std::vector<UnsavedFile> files = BuildUnsavedList();
  if (!settleUnsavedFiles(files) || staysForWaitingFile(files)) {
    session.closeWaits = false;  // a request that came meanwhile has its answer, too
    return false;
  }
  session.leaving = true;
  ClearShelf();
  forgetWorkingDocuments();
  offerToCloseViewers();
  return true;
}

void tearDown() {
  // Waiting files are handed on only once the user has settled the exit. The window may also be
  // destroyed from outside while a question is up.
  if (session.leaving) {
    for (const WaitingOpen& open : session.waitingOpens) {
      std::copy(open.paths.begin(), open.paths.end(), std::back_inserter(session.pathsToHandOn));
    }
  }
  session.waitingOpens.clear();
  SaveSettings();
  if (session.settings.restoreOpenDocs) SaveWorkingDocuments();
  SaveCurrentViews();
  closeAllDocuments();
  session.stampLibrary.clear();
  FPDF_DestroyLibrary();
}

void settleForLogoff() {
  // The system may end the process at any moment: unsaved work first. An earlier change of the
  // index may not have reached its file.
  shelveChangedDocuments();
  if (!session.shelfIndex.empty()) SaveShelfIndex();
  SaveSettings();
  SaveWorkingDocuments();
  SaveCurrentViews();
}

void handOnWaitingFiles() {
  const std::u16string program = platform::executablePath();
  if (session.pathsToHandOn.empty() || program.empty()) return;
  platform::closePrimaryMutex();
  for (const std::u16string& path : std::exchange(session.pathsToHandOn, {})) {
    platform::startProcess(program, formatText(u"\"%s\" \"%s\"", {program, path}));
  }
}

}  // namespace quillmere
