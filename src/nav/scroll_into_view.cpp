#include "nav/scroll_into_view.h"

#include <algorithm>

#include "session/density.h"
#include "session/session.h"
#include "view/geometry.h"
#include "view/selection.h"

namespace quillmere {

namespace {

constexpr int kScreenMargin = 24;  // pixels between a box in view and the pane's edges

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
  PaneSlot& slot = session.panes[pane];
  const PanePoint centre =
      pageToPane(pane, (box.left + box.right) * 0.5, (box.top + box.bottom) * 0.5);
  slot.panX += static_cast<float>(rect.width() * 0.5 - centre.x);
  slot.panY += static_cast<float>(rect.height() * 0.5 - centre.y);
  clampPan(pane);
}

}  // namespace quillmere
