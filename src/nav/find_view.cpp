#include "nav/find_view.h"

#include <algorithm>
#include <optional>

#include "base/page_box.h"
#include "nav/scroll_into_view.h"
#include "session/session.h"
#include "view/geometry.h"
#include "view/text_rects.h"

namespace quillmere {

namespace {

std::optional<PageBox> boundingBoxOf(FPDF_TEXTPAGE textPage, const FindResult& hit) {
  const std::vector<PageBox> rects = textRects(textPage, hit.start, hit.count);
  if (rects.empty()) return std::nullopt;
  return boxAround(rects);
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
