#include "app/command_actions.h"

#include "documents/open_requests.h"
#include "integration/viewers.h"
#include "platform/files.h"
#include "platform/process.h"
#include "session/changes.h"
#include "session/session.h"
#include "ui/boxes.h"

namespace quillmere {

namespace {

constexpr std::u16string_view kUserGuideName = u"UserGuide.pdf";

std::u16string userGuidePath() {
  const std::u16string program = platform::executablePath();
  const std::size_t slash = program.rfind(u'\\');
  if (slash == std::u16string::npos) return {};
  return program.substr(0, slash + 1).append(kUserGuideName);
}

}  // namespace

void openInSeparateViewer() {
  if (documentOf(session.activePane) != nullptr) showInViewer(pathOf(session.activePane));
}

void openUserGuide() {
  const std::u16string path = userGuidePath();
  if (path.empty() || !platform::fileExists(path)) {
    showNotice(u"The User Guide could not be found.", BoxIcon::Warning);
  } else {
    showInViewer(path);
  }
}

void openRecentDocument(std::uint32_t row) {
  if (row >= session.settings.recentFiles.size()) return;
  const std::u16string path = session.settings.recentFiles[row];
  openRequested(path, session.activePane, kWorkingDocsToHead, true);
}

void togglePanScroll() {
  session.panScrollEnabled = !session.panScrollEnabled;
  commandsChanged();
}

}  // namespace quillmere
