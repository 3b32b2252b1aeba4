#include "nav/find_view.h"

#include <algorithm>
#include <optional>

#include "base/page_box.h"
#include "nav/scroll_into_view.h"
#include "session/session.h"
#include "view/geometry.h"

namespace quillmere {

namespace {

constexpr double kFarAway = 1e18;

std::optional<PageBox> boundingBoxOf(FPDF_TEXTPAGE textPage, const FindResult& hit) {
  const int count = FPDFText_CountRects(textPage, hit.start, hit.count);
  if (count <= 0) return std::nullopt;
  PageBox box{kFarAway, -kFarAway, -kFarAway, kFarAway};
  for (int i = 0; i < count; ++i) {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
    if (!FPDFText_GetRect(textPage, i, &left, &top, &right, &bottom)) continue;
    box.left = std::min(box.left, left);
    box.top = std::max(box.top, top);
    box.right = std::max(box.right, right);
    box.bottom = std::min(box.bottom, bottom);
  }
  if (box.left > box.right) return std::nullopt;
  return box;
}

bool touchesPane(const TextQuad& quad, const PixelRect& pane) {
  const auto [left, right] =
      std::minmax_element(quad.corner, quad.corner + 4,
                          [](const PanePoint& a, const PanePoint& b) { return a.x < b.x; });
  const auto [top, bottom] =
      std::minmax_element(quad.corner, quad.corner + 4,
                          [](const PanePoint& a, const PanePoint& b) { return a.y < b.y; });
  return right->x > 0 && bottom->y > 0 && left->x < pane.width() && top->y < pane.height();
}

bool hitsShownIn(int pane) {
  const PaneSlot& slot = session.panes[pane];
  if (!session.findBarVisible || session.find.results.empty() || !slot.page) return false;
  return session.viewMode != ViewMode::TwoDocuments || pane == session.activePane;
}

}  // namespace

void FindScrollToCurrent(int pane) {
  const FindState& find = session.find;
  const PaneSlot& slot = session.panes[pane];
  if (find.currentIndex < 0 || static_cast<std::size_t>(find.currentIndex) >= find.results.size()) {
    return;
  }
  const FindResult& hit = find.results[static_cast<std::size_t>(find.currentIndex)];
  if (hit.page != slot.openPage || !slot.textPage) return;
  const std::optional<PageBox> box = boundingBoxOf(slot.textPage.get(), hit);
  if (!box) return;
  scrollIntoView(pane, *box);
}

std::vector<FindHitQuad> findHitQuads(int pane) {
  std::vector<FindHitQuad> quads;
  if (!hitsShownIn(pane)) return quads;
  const FindState& find = session.find;
  const PixelRect rect = paneRect(pane);
  for (std::size_t i = 0; i < find.results.size(); ++i) {
    const FindResult& hit = find.results[i];
    if (hit.page != session.panes[pane].openPage) continue;
    const bool current = static_cast<std::int32_t>(i) == find.currentIndex;
    for (const TextQuad& quad : textQuads(pane, hit.start, hit.count)) {
      if (touchesPane(quad, rect)) quads.push_back({quad, current});
    }
  }
  return quads;
}

}  // namespace quillmere
