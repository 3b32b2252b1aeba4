#include "core/waiting_opens.h"

#include <utility>

#include "core/open_requests.h"
#include "core/session.h"
#include "store/working_documents.h"

namespace quillmere {

void beginDocumentWork() {
  ++session.documentWork;
}

void endDocumentWork() {
  if (--session.documentWork > 0) return;
  const std::vector<WaitingOpen> waiting = std::exchange(session.waitingOpens, {});
  for (const WaitingOpen& open : waiting) {
    if (open.pane < 0) {
      openRequested(open.paths.front(), session.activePane, kWorkingDocsToHead, true);
    } else {
      openDroppedOnPane(open.paths, open.pane);
    }
  }
}

bool mustWait(const WaitingOpen& open) {
  if (session.documentWork == 0) return false;
  session.waitingOpens.push_back(open);
  return true;
}

}  // namespace quillmere
