#include "core/open_requests.h"

#include "core/open.h"
#include "core/session.h"
#include "core/settle_shelf.h"
#include "output/internet_gate.h"
#include "platform/file_dialog.h"
#include "store/working_documents.h"
#include "view/geometry.h"

namespace quillmere {

namespace {

enum class RecentList { Keep, Leave };

// Files that are not shown themselves; those that the user refuses at the gate are left out.
void listFurtherFiles(const std::vector<std::u16string>& paths, RecentList recent) {
  for (std::size_t i = 1; i < paths.size(); ++i) {
    if (!CheckInternetZone(paths[i])) continue;
    AddToWorkingDocuments(paths[i], kWorkingDocsToHead);
    if (recent == RecentList::Leave) RemoveFromRecentFiles(paths[i]);
  }
}

void openFirstAndList(const std::vector<std::u16string>& paths, int pane, RecentList recent) {
  if (paths.empty()) return;
  if (openRequested(paths.front(), pane, kWorkingDocsToHead, true)) {
    listFurtherFiles(paths, recent);
  }
}

}  // namespace

bool openRequested(const std::u16string& path, int pane, int workingDocsMode,
                   bool askBeforeReplace) {
  const ShelfDecision decision = settleShelfCopy(path);
  if (!decision.opens) return false;
  return openDocument(&decision.loadPath, pane, workingDocsMode, askBeforeReplace, &path);
}

void openSeveral(const std::vector<std::u16string>& paths, int pane) {
  openFirstAndList(paths, pane, RecentList::Keep);
}

void openDropped(const std::vector<std::u16string>& paths, int x) {
  const int pane = paneAt(x);
  openFirstAndList(paths, pane < 0 ? 0 : pane, RecentList::Leave);
}

void openHandedOver(const std::u16string& path) {
  openRequested(path, session.activePane, kWorkingDocsToHead, true);
}

void openWithDialog(int pane) {
  platform::OpenDialogRequest request;
  request.filters = {{u"PDF Files (*.pdf)", u"*.pdf"}, {u"All Files", u"*.*"}};
  request.allowSeveral = true;
  openSeveral(platform::chooseFilesToOpen(request), pane);
}

}  // namespace quillmere
