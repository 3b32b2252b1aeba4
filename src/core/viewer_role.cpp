#include "core/viewer_role.h"

#include <algorithm>

#include "core/commands.h"
#include "core/session.h"
#include "nav/bookmarks.h"
#include "platform/main_window.h"
#include "view/geometry.h"
#include "view/modes.h"

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
  refreshMenus();
}

}  // namespace quillmere
