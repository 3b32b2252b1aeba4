#include "app/repaint.h"

#include <algorithm>
#include <cstddef>
#include <utility>

#include "app/overlays.h"
#include "platform/main_window.h"
#include "view/geometry.h"

namespace quillmere {

namespace {

WindowPicture lastPainted;

bool pageOnly(int pane, const PanePlan& plan) {
  return plan.hasBitmap && !anythingOver(pane, plan.content);
}

// Two panes look alike around their pages.
bool sameAround(const PanePlan& before, const PanePlan& now) {
  return before.rect == now.rect && before.content == now.content && before.framed == now.framed;
}

PixelRect joined(const PixelRect& a, const PixelRect& b) {
  return {std::min(a.left, b.left), std::min(a.top, b.top), std::max(a.right, b.right),
          std::max(a.bottom, b.bottom)};
}

// The page with its shadow, in client pixels.
PixelRect pageArea(const PanePlan& plan) {
  const PixelRect page{plan.bitmapX, plan.bitmapY, plan.bitmapX + plan.shadow.width(),
                       plan.bitmapY + plan.shadow.height()};
  const PixelRect both = joined(page, plan.shadow);
  return {std::max(both.left, plan.content.left) + plan.rect.left,
          std::max(both.top, plan.content.top) + plan.rect.top,
          std::min(both.right, plan.content.right) + plan.rect.left,
          std::min(both.bottom, plan.content.bottom) + plan.rect.top};
}

}  // namespace

WindowPicture pictureNow() {
  WindowPicture picture;
  picture.window = planWindow();
  picture.pagesOnly = true;
  for (int pane = 0; pane < picture.window.paneCount; ++pane) {
    PanePlan& plan = picture.panes[static_cast<std::size_t>(pane)];
    plan = planPane(pane, paneRect(pane));
    picture.pagesOnly = picture.pagesOnly && pageOnly(pane, plan);
  }
  return picture;
}

std::optional<PixelRect> changedArea(const WindowPicture& before, const WindowPicture& now) {
  if (!before.pagesOnly || !now.pagesOnly || before.window != now.window) return std::nullopt;
  std::optional<PixelRect> area;
  for (std::size_t pane = 0; pane < static_cast<std::size_t>(now.window.paneCount); ++pane) {
    if (!sameAround(before.panes[pane], now.panes[pane])) return std::nullopt;
    const PixelRect pages = joined(pageArea(before.panes[pane]), pageArea(now.panes[pane]));
    area = area ? joined(*area, pages) : pages;
  }
  return area;
}

void notePainted(const WindowPicture& picture) {
  lastPainted = picture;
}

void repaintPages() {
  if (!lastPainted.pagesOnly) return platform::invalidateMainWindow(false);
  const auto area = changedArea(lastPainted, pictureNow());
  if (!area) return platform::invalidateMainWindow(false);
  platform::invalidateMainWindowPart(area->left, area->top, area->right, area->bottom);
}

}  // namespace quillmere
