#include "core/command_actions.h"

#include "core/commands.h"
#include "core/open_requests.h"
#include "core/product.h"
#include "core/session.h"
#include "integration/viewers.h"
#include "nav/bookmarks.h"
#include "platform/files.h"
#include "platform/main_window.h"
#include "platform/message_box.h"
#include "platform/process.h"
#include "store/settings.h"
#include "store/working_documents.h"
#include "view/modes.h"

namespace quillmere {

namespace {

constexpr std::u16string_view kUserGuideName = u"UserGuide.pdf";

void showBox(const char16_t* text, platform::BoxIcon icon) {
  platform::showMessageBox(text, kProductTitle, platform::BoxButtons::Ok, icon);
}

// Panels take room from the panes or give it back.
void panelsChanged() {
  platform::layoutMainWindow();
  refitPanes();
  refreshMenus();
}

std::u16string userGuidePath() {
  const std::u16string program = platform::executablePath();
  const std::size_t slash = program.rfind(u'\\');
  if (slash == std::u16string::npos) return {};
  return program.substr(0, slash + 1).append(kUserGuideName);
}

}  // namespace

void openInSeparateViewer() {
  if (documentOf(session.activePane) == nullptr) return;
  if (!startViewer(pathOf(session.activePane))) {
    showBox(u"Could not open a separate viewer window.", platform::BoxIcon::Error);
  }
}

void openUserGuide() {
  const std::u16string path = userGuidePath();
  if (path.empty() || !platform::fileExists(path)) {
    showBox(u"The User Guide could not be found.", platform::BoxIcon::Warning);
  } else if (!startViewer(path)) {
    showBox(u"Could not open a separate viewer window.", platform::BoxIcon::Error);
  }
}

void openRecentDocument(std::uint32_t row) {
  if (row >= session.settings.recentFiles.size()) return;
  const std::u16string path = session.settings.recentFiles[row];
  openRequested(path, session.activePane, kWorkingDocsToHead, true);
}

void saveAllDocuments() {
  if (session.viewerRole) return;
  showBox(u"No documents have unsaved changes.", platform::BoxIcon::Information);
}

void discardAllDocuments() {
  if (session.viewerRole) return;
  showBox(u"No documents have unsaved changes.", platform::BoxIcon::Information);
}

void toggleNavigationPanel() {
  session.navigationPanelVisible = !session.navigationPanelVisible;
  panelsChanged();
}

void toggleBinderPanel() {
  session.binderPanelVisible = !session.binderPanelVisible;
  panelsChanged();
}

void toggleStampPanel() {
  if (session.viewMode != ViewMode::SinglePage) return;
  session.stampPanelVisible = !session.stampPanelVisible;
  panelsChanged();
}

void toggleMarkupGrouping() {
  session.settings.markupsUnderBookmarks = !session.settings.markupsUnderBookmarks;
  SaveSettings();
  RebuildNavigationTree();
  refreshMenus();
}

void togglePanScroll() {
  session.panScrollEnabled = !session.panScrollEnabled;
  refreshMenus();
}

void focusNavigationPanel() {
  if (!session.navigationPanelVisible) toggleNavigationPanel();
  platform::focusNavigationTree();
}

void focusBinderPanel() {
  if (!session.binderPanelVisible) toggleBinderPanel();
  platform::focusBinderTree();
}

}  // namespace quillmere
