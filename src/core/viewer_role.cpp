#include "core/viewer_role.h"

#include <algorithm>

#include "core/commands.h"
#include "core/session.h"
#include "nav/bookmarks.h"
#include "platform/main_window.h"
#include "view/modes.h"

namespace quillmere {

namespace {

constexpr double kViewerPanelShare = 0.8;
constexpr std::int32_t kMinimumPanelWidth = 150;  // pixels

}  // namespace

void arrangeViewerPanels() {
  session.binderPanelVisible = false;
  session.navigationPanelVisible = documentHasBookmarks();
  const auto narrower = static_cast<std::int32_t>(session.leftPanelWidth * kViewerPanelShare + 0.5);
  session.leftPanelWidth = std::max(narrower, kMinimumPanelWidth);
  platform::layoutMainWindow();
  refitPanes();
  refreshMenus();
}

}  // namespace quillmere
