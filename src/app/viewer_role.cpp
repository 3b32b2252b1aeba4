#include "app/viewer_role.h"

#include <algorithm>

#include "nav/bookmarks.h"
#include "nav/markup_tree.h"
#include "platform/main_window.h"
#include "session/changes.h"
#include "session/density.h"
#include "session/session.h"
#include "view/panes.h"

namespace quillmere {

namespace {

constexpr double kViewerPanelShare = 0.8;
constexpr int kMinimumPanelWidth = 150;  // pixels

}  // namespace

void arrangeViewerPanels() {
  session.binderPanelVisible = false;
  session.navigationPanelVisible = documentHasBookmarks();
  const auto narrower = static_cast<int>(session.leftPanelWidth * kViewerPanelShare + 0.5);
  session.leftPanelWidth = std::max(narrower, scaled(kMinimumPanelWidth));
  platform::layoutMainWindow();
  refitPanes();
  commandsChanged();
  showMarkupsUnderBookmarks();
}

}  // namespace quillmere
