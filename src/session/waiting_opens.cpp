#include "session/waiting_opens.h"

#include "platform/main_window.h"
#include "session/session.h"

namespace quillmere {

DocumentWork::DocumentWork() {
  ++session.documentWork;
}

DocumentWork::~DocumentWork() {
  if (--session.documentWork > 0) return;
  if (!session.waitingOpens.empty() || session.closeWaits || platform::anyWorkAfterPainting()) {
    platform::postWaitingWork();
  }
}

// A new open must queue behind those that already wait.
bool openMustWait(const WaitingOpen& open) {
  if (session.documentWork == 0 && session.waitingOpens.empty() && !session.leaving) return false;
  session.waitingOpens.push_back(open);
  return true;
}

bool closeMustWait() {
  if (session.documentWork == 0) return false;
  session.closeWaits = true;
  return true;
}

}  // namespace quillmere
