#include "nav/scroll_into_view.h"

#include <algorithm>
#include <cmath>

#include "session/density.h"
#include "session/session.h"
#include "view/geometry.h"
#include "view/selection.h"

namespace quillmere {

namespace {

constexpr int kScreenMargin = 24;  // pixels between a box in view and the pane's edges
constexpr double kFarthest = 1e9;  // pixels that a page can be moved by

PaneBox toScreen(int pane, const PageBox& box) {
  const PanePoint one = pageToPane(pane, box.left, box.top);
  const PanePoint other = pageToPane(pane, box.right, box.bottom);
  return {std::min(one.x, other.x), std::min(one.y, other.y), std::max(one.x, other.x),
          std::max(one.y, other.y)};
}

bool insidePane(const PaneBox& box, const PixelRect& pane) {
  const double margin = scaled(kScreenMargin);
  return box.left >= margin && box.top >= margin && box.right <= pane.width() - margin &&
         box.bottom <= pane.height() - margin;
}

}  // namespace

void scrollIntoView(int pane, const PageBox& box) {
  const PixelRect rect = paneRect(pane);
  if (insidePane(toScreen(pane, box), rect)) return;
  const PanePoint centre =
      pageToPane(pane, (box.left + box.right) * 0.5, (box.top + box.bottom) * 0.5);
  movePageInSight(pane, rect.width() * 0.5 - centre.x, rect.height() * 0.5 - centre.y);
}

void movePageInSight(int pane, double dx, double dy) {
  if (!std::isfinite(dx) || !std::isfinite(dy)) return;
  PaneSlot& slot = session.panes[pane];
  slot.panX += static_cast<float>(std::clamp(dx, -kFarthest, kFarthest));
  slot.panY += static_cast<float>(std::clamp(dy, -kFarthest, kFarthest));
  clampPan(pane);
}

}  // namespace quillmere
