#include "app/paint_plan.h"

#include <algorithm>
#include <cmath>

#include "panels/left_panel.h"
#include "session/density.h"
#include "session/session.h"
#include "view/geometry.h"

namespace quillmere {

namespace {

constexpr int kActiveInset = 4;     // pixels between a framed pane's edge and its content
constexpr int kShadowOffset = 4;    // pixels
constexpr int kFrameDistance = 1;   // pixels between a pane's edge and its frame
constexpr int kFrameThickness = 3;  // pixels

std::int32_t truncated(float pixels) {
  return static_cast<std::int32_t>(std::trunc(pixels));
}

std::array<PixelRect, 4> frameOf(std::int32_t width, std::int32_t height) {
  const int outer = scaled(kFrameDistance);
  const int inner = outer + scaled(kFrameThickness);
  return {{{outer, outer, width - outer, inner},
           {outer, height - inner, width - outer, height - outer},
           {outer, inner, inner, height - inner},
           {width - inner, inner, width - outer, height - inner}}};
}

}  // namespace

WindowPlan planWindow() {
  WindowPlan plan;
  const bool single = session.viewMode == ViewMode::SinglePage;
  const int bottom = pageAreaBottom();
  plan.paneCount = single ? 1 : 2;
  plan.divider.color = kDividerColor;
  if (!single) plan.divider.rect = {dividerX(), 0, dividerX() + scaled(kDividerWidth), bottom};

  plan.leftSplitter.color = kSplitterColor;
  if (leftPanelShown()) {
    plan.leftSplitter.rect = {session.leftPanelWidth, 0, leftPanelEdge(), bottom};
  }
  plan.leftPanelBar = {leftPanelParts().bar, kSplitterColor};

  plan.stampSplitter.color = kSplitterColor;
  if (single && session.stampPanelVisible) {
    const int panelLeft = platform::mainWindowClientSize().width - session.stampPanelWidth;
    plan.stampSplitter.rect = {panelLeft - scaled(kStampSplitterWidth), 0, panelLeft, bottom};
  }
  return plan;
}

PanePlan planPane(int pane, const PixelRect& rect) {
  const PaneSlot& slot = session.panes[pane];
  PanePlan plan;
  plan.rect = rect;
  if (rect.empty()) return plan;
  plan.framed = session.viewMode != ViewMode::SinglePage && session.activePane == pane;
  const int inset = plan.framed ? scaled(kActiveInset) : 0;
  plan.content = {inset, inset, rect.width() - inset, rect.height() - inset};
  if (plan.framed) plan.frame = frameOf(rect.width(), rect.height());

  plan.hasBitmap = slot.pageBitmap != nullptr;
  plan.showsPlaceholder = !plan.hasBitmap && documentOf(pane) == nullptr;
  if (!plan.hasBitmap) return plan;
  plan.bitmapX = truncated(slot.panX);
  plan.bitmapY = truncated(slot.panY);
  const std::int32_t left = truncated(slot.panX + static_cast<float>(scaled(kShadowOffset)));
  const std::int32_t top = truncated(slot.panY + static_cast<float>(scaled(kShadowOffset)));
  plan.shadow = {left, top, left + slot.pageBitmapWidth, top + slot.pageBitmapHeight};
  return plan;
}

std::u16string placeholderText(int pane) {
  if (pane == 1 && session.viewMode == ViewMode::TwoDocuments) {
    return u"Open a PDF here, or drag a file in";
  }
  return u"Open a PDF with  File \u203A Open\u2026  or drag a file here";
}

PixelRect placeholderBox(const PanePlan& plan, platform::PixelSize text) {
  const PixelRect& content = plan.content;
  const std::int32_t left = content.left + (content.width() - text.width) / 2;
  const std::int32_t top = content.top + (content.height() - text.height) / 2;
  return {left, top, left + text.width, top + text.height};
}

PixelRect placeholderTarget(const PanePlan& plan, const PixelRect& box) {
  const PixelRect& content = plan.content;
  return {std::max(box.left, content.left) + plan.rect.left,
          std::max(box.top, content.top) + plan.rect.top,
          std::min(box.right, content.right) + plan.rect.left,
          std::min(box.bottom, content.bottom) + plan.rect.top};
}

}  // namespace quillmere
