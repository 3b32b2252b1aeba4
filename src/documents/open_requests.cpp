#include "documents/open_requests.h"

#include <algorithm>
#include <utility>

#include "base/limits.h"
#include "documents/network_notice.h"
#include "documents/open.h"
#include "integration/internet_gate.h"
#include "platform/files.h"
#include "platform/main_window.h"
#include "session/session.h"
#include "session/waiting_opens.h"
#include "store/probe_path.h"
#include "store/recent_files.h"
#include "ui/boxes.h"
#include "view/geometry.h"

namespace quillmere {

namespace {

// Files that are not shown themselves; those that the user refuses at the gate are left out.
void listFurtherFiles(const std::vector<std::u16string>& paths) {
  const std::vector<std::u16string> passed = filesPastGate({paths.begin() + 1, paths.end()});
  AddToWorkingDocuments(passed, kWorkingDocsToHead);
  for (const std::u16string& path : passed) RemoveFromRecentFiles(path);
}

void openDroppedNow(const std::vector<std::u16string>& paths, int pane) {
  if (openRequested(paths.front(), pane, kWorkingDocsToHead, true)) listFurtherFiles(paths);
}

}  // namespace

std::vector<std::u16string> filesPastGate(const std::vector<std::u16string>& paths) {
  std::vector<std::u16string> full;
  full.reserve(paths.size());
  for (const std::u16string& path : paths) full.push_back(platform::absolutePath(path));
  const std::vector<ProbeResult> states = probePaths(full, openTimeoutMilliseconds());
  std::vector<std::u16string> passed;
  for (std::size_t i = 0; i < full.size(); ++i) {
    // The gate cannot look at a file out of reach; it is asked again when that file is opened.
    const bool outOfReach = states[i] == ProbeResult::Unavailable;
    if (outOfReach || CheckInternetZone(full[i])) passed.push_back(std::move(full[i]));
  }
  return passed;
}

bool openRequested(const std::u16string& requested, int pane, WorkingDocsMode workingDocsMode,
                   bool askBeforeReplace) {
  const DocumentWork work;
  const std::u16string path = platform::absolutePath(requested);
  // Everything below looks at the file, which would hold the window while a share is silent.
  if (path.size() < kPathBufferUnits && !networkAnswers(path)) return false;
  return openAsLeft(path, pane, workingDocsMode, askBeforeReplace) == OpenResult::Opened;
}

void openSeveral(const std::vector<std::u16string>& paths, int pane) {
  if (paths.empty()) return;
  openRequested(paths.front(), pane, kWorkingDocsToHead, true);
  listFurtherFiles(paths);
}

void openDropped(const std::vector<std::u16string>& paths, int x) {
  const int pane = std::max(paneAt(x), 0);
  if (paths.empty()) return;
  platform::raiseMainWindow();
  openDroppedOnPane(paths, pane);
}

void openDroppedOnPane(const std::vector<std::u16string>& paths, int pane) {
  if (paths.empty() || openMustWait({paths, pane})) return;
  openDroppedNow(paths, pane);
}

void openHandedOver(const std::u16string& path) {
  if (path.empty()) return;
  platform::raiseMainWindow();
  if (openMustWait({{path}})) return;
  openRequested(path, session.activePane, kWorkingDocsToHead, true);
}

void openWaiting() {
  if (session.documentWork > 0 || session.leaving) return;
  // Each stays out of the queue only while it is opened, so that what arrives meanwhile comes last.
  while (!session.waitingOpens.empty()) {
    const WaitingOpen open = std::move(session.waitingOpens.front());
    session.waitingOpens.erase(session.waitingOpens.begin());
    if (open.pane < 0) {
      openRequested(open.paths.front(), session.activePane, kWorkingDocsToHead, true);
    } else {
      openDroppedNow(open.paths, open.pane);
    }
  }
  if (std::exchange(session.closeWaits, false)) platform::closeMainWindow();
}

void openWithDialog(int pane) {
  OpenDialogRequest request;
  request.filters = {{u"PDF Files (*.pdf)", u"*.pdf"}, {u"All Files", u"*.*"}};
  request.allowSeveral = true;
  openSeveral(askForFiles(request), pane);
}

}  // namespace quillmere
