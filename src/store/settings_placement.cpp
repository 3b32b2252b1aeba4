#include "store/settings_placement.h"

#include <algorithm>
#include <limits>
#include <optional>

#include "platform/main_window.h"
#include "session/session.h"

namespace quillmere {

namespace {

constexpr std::int32_t kEdge = 32;
constexpr std::int32_t kLeastWidth = 400;
constexpr std::int32_t kLeastHeight = 300;
constexpr std::int32_t kNoPosition = -1;

// The file may hold any number, so computing the far edge may overflow.
std::int32_t farEdge(std::int32_t start, std::int32_t length) {
  const std::int64_t edge = std::int64_t{start} + length;
  return static_cast<std::int32_t>(
      std::min<std::int64_t>(edge, std::numeric_limits<std::int32_t>::max()));
}

platform::ScreenRect rectOf(const StoredPlacement& placement) {
  return {placement.x, placement.y, farEdge(placement.x, placement.width),
          farEdge(placement.y, placement.height)};
}

}  // namespace

StoredPlacement fitToWorkArea(const StoredPlacement& stored, const platform::ScreenRect& workArea) {
  StoredPlacement fitted;
  fitted.width =
      std::min(stored.width, std::max(workArea.right - workArea.left - 2 * kEdge, kLeastWidth));
  fitted.height =
      std::min(stored.height, std::max(workArea.bottom - workArea.top - 2 * kEdge, kLeastHeight));
  // The far edge is applied last, so it wins when both cannot be kept.
  fitted.x =
      std::min(std::max(stored.x, workArea.left + kEdge), workArea.right - fitted.width - kEdge);
  fitted.y =
      std::min(std::max(stored.y, workArea.top + kEdge), workArea.bottom - fitted.height - kEdge);
  return fitted;
}

void placeMainWindowFromSettings() {
  const AppSettings& settings = session.settings;
  if (session.viewerRole || !platform::mainWindowExists()) return;
  if (settings.windowX == kNoPosition || settings.windowY == kNoPosition) return;
  if (settings.windowWidth < 1 || settings.windowHeight < 1) return;
  StoredPlacement placement = {settings.windowX, settings.windowY, settings.windowWidth,
                               settings.windowHeight};
  const std::optional<platform::ScreenRect> workArea = platform::workAreaNearest(rectOf(placement));
  if (workArea) placement = fitToWorkArea(placement, *workArea);
  platform::placeMainWindow({rectOf(placement), settings.windowMaximised});
}

bool rememberMainWindowPlacement() {
  const std::optional<platform::WindowPlacement> placement = platform::mainWindowPlacement();
  if (!placement) return false;
  AppSettings& settings = session.settings;
  settings.windowX = placement->normal.left;
  settings.windowY = placement->normal.top;
  settings.windowWidth = placement->normal.right - placement->normal.left;
  settings.windowHeight = placement->normal.bottom - placement->normal.top;
  settings.windowMaximised = placement->maximised;
  return true;
}

}  // namespace quillmere
