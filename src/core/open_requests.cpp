#include "core/open_requests.h"

#include <algorithm>

#include "core/open.h"
#include "core/session.h"
#include "core/settle_shelf.h"
#include "core/waiting_opens.h"
#include "output/internet_gate.h"
#include "platform/file_dialog.h"
#include "platform/main_window.h"
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

}  // namespace

bool openRequested(const std::u16string& path, int pane, int workingDocsMode,
                   bool askBeforeReplace) {
  beginDocumentWork();
  const ShelfDecision decision = settleShelfCopy(path);
  const bool opened = decision.opens && openDocument(&decision.loadPath, pane, workingDocsMode,
                                                     askBeforeReplace, &path);
  endDocumentWork();
  return opened;
}

void openSeveral(const std::vector<std::u16string>& paths, int pane) {
  if (paths.empty()) return;
  openRequested(paths.front(), pane, kWorkingDocsToHead, true);
  listFurtherFiles(paths, RecentList::Keep);
}

void openDropped(const std::vector<std::u16string>& paths, int x) {
  const int pane = std::max(paneAt(x), 0);
  if (paths.empty()) return;
  platform::raiseMainWindow();
  openDroppedOnPane(paths, pane);
}

void openDroppedOnPane(const std::vector<std::u16string>& paths, int pane) {
  if (paths.empty() || mustWait({paths, pane})) return;
  if (openRequested(paths.front(), pane, kWorkingDocsToHead, true)) {
    listFurtherFiles(paths, RecentList::Leave);
  }
}

void openHandedOver(const std::u16string& path) {
  if (path.empty()) return;
  platform::raiseMainWindow();
  if (mustWait({{path}})) return;
  openRequested(path, session.activePane, kWorkingDocsToHead, true);
}

void openWithDialog(int pane) {
  platform::OpenDialogRequest request;
  request.filters = {{u"PDF Files (*.pdf)", u"*.pdf"}, {u"All Files", u"*.*"}};
  request.allowSeveral = true;
  openSeveral(platform::chooseFilesToOpen(request), pane);
}

}  // namespace quillmere
