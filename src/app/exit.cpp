#include "app/exit.h"

#include <fpdfview.h>

#include "base/product.h"
#include "documents/close.h"
#include "documents/shelve.h"
#include "integration/viewers.h"
#include "platform/files.h"
#include "session/session.h"
#include "store/binder_library.h"
#include "store/binder_views.h"
#include "store/settings.h"
#include "store/working_documents.h"
#include "ui/boxes.h"

namespace quillmere {

namespace {

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
  forgetWorkingDocuments();
  offerToCloseViewers();
  return session.waitingOpens.empty();
}

void tearDown() {
  // The window may be closed while a question is up; nobody is left to open these.
  session.waitingOpens.clear();
  SaveSettings();
  if (session.settings.restoreOpenDocs) SaveWorkingDocuments();
  SaveCurrentViews();
  closeAllDocuments();
  session.stampLibrary.clear();
  FPDF_DestroyLibrary();
}

void settleForLogoff() {
  // The system may end the process at any moment: unsaved work first.
  ShelveCurrentDocument();
  SaveSettings();
  SaveWorkingDocuments();
  SaveCurrentViews();
}

}  // namespace quillmere
