#include "core/exit.h"

#include <fpdfview.h>

#include "core/close.h"
#include "core/product.h"
#include "core/session.h"
#include "core/waiting_opens.h"
#include "integration/viewers.h"
#include "platform/files.h"
#include "platform/message_box.h"
#include "store/binder_library.h"
#include "store/settings.h"
#include "store/shelf.h"
#include "store/working_documents.h"

namespace quillmere {

namespace {

void forgetWorkingDocuments() {
  if (session.settings.restoreOpenDocs || !session.ownsPrimaryName) return;
  const std::u16string path = WorkingDocsPath();
  if (!path.empty()) platform::deleteFile(path);
}

void offerToCloseViewers() {
  if (countViewers() == 0) return;
  const platform::BoxAnswer answer =
      platform::showMessageBox(u"Close All Viewer Windows?", kProductTitle,
                               platform::BoxButtons::YesNo, platform::BoxIcon::Question);
  if (answer == platform::BoxAnswer::Yes) closeViewers();
}

}  // namespace

bool settleBeforeClose() {
  if (session.viewerRole) return true;
  forgetWorkingDocuments();
  beginDocumentWork();
  offerToCloseViewers();
  const bool wantedAgain = !session.waitingOpens.empty();
  endDocumentWork();
  return !wantedAgain;
}

void tearDown() {
  // A window that is closed below a question leaves nobody to open these.
  session.waitingOpens.clear();
  SaveSettings();
  SaveCurrentView(session.activePane);
  closeAllDocuments();
  FPDF_DestroyLibrary();
}

void settleForLogoff() {
  SaveSettings();
  ShelveCurrentDocument();
}

}  // namespace quillmere
