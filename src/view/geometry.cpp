#include "view/geometry.h"

#include <fpdf_edit.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/main_window.h"
#include "session/density.h"
#include "session/session.h"

namespace quillmere {

namespace {

bool sideways(std::uint32_t quarterTurns) {
  return (quarterTurns & 1) != 0;
}

std::uint32_t ownRotation(int pane) {
  const FPDF_PAGE page = session.panes[pane].page.get();
  if (page == nullptr) return 0;
  return static_cast<std::uint32_t>(FPDFPage_GetRotation(page)) & kQuarterTurnBits;
}

// A page taller than the pane starts one margin away from the pane's top or bottom edge.
double restingPanY(double paneHeight, double pageHeight, bool fromBottom) {
  if (paneHeight - scaled(kFitHeightAllowance) >= pageHeight) return (paneHeight - pageHeight) / 2;
  const int margin = scaled(kVerticalMargin);
  return fromBottom ? paneHeight - pageHeight - margin : margin;
}

// A pane too small for the margins leaves the pan alone.
float keepVisible(float pan, int paneLength, int bitmapLength) {
  const float least = static_cast<float>(scaled(kPanKeepVisible) - bitmapLength);
  const float most = static_cast<float>(paneLength - scaled(kPanKeepVisible));
  return most >= least ? std::clamp(pan, least, most) : pan;
}

}  // namespace

bool leftPanelShown() {
  return session.navigationPanelVisible || session.binderPanelVisible;
}

int leftPanelEdge() {
  return leftPanelShown() ? session.leftPanelWidth + scaled(kLeftSplitterWidth) : 0;
}

int pageAreaTop() {
  return session.findBarVisible ? scaled(kFindBarHeight) : 0;
}

int pageAreaBottom() {
  return platform::mainWindowClientSize().height - platform::statusBarHeight();
}

int dividerX() {
  if (session.paneDividerPosition != 0) return session.paneDividerPosition;
  const int edge = leftPanelEdge();
  return edge + (platform::mainWindowClientSize().width - edge) / 2;
}

bool paneShown(int pane) {
  return pane == 0 || session.viewMode != ViewMode::SinglePage;
}

PixelRect paneRect(int pane) {
  if (!paneShown(pane)) return {};
  PixelRect rect{leftPanelEdge(), pageAreaTop(), platform::mainWindowClientSize().width,
                 pageAreaBottom()};
  if (session.viewMode == ViewMode::SinglePage) {
    if (session.stampPanelVisible) {
      rect.right -= session.stampPanelWidth + scaled(kStampSplitterWidth);
    }
  } else if (pane == 0) {
    rect.right = dividerX();
  } else {
    rect.left = dividerX() + scaled(kDividerWidth);
  }
  return rect;
}

int paneAt(int x) {
  const int edge = leftPanelEdge();
  if (edge > 0 && x < edge) return -1;
  if (session.viewMode == ViewMode::SinglePage || x < dividerX()) return 0;
  return x < dividerX() + scaled(kDividerWidth) ? -1 : 1;
}

int paneUnder(int x, int y) {
  const int pane = paneAt(x);
  return pane >= 0 && paneRect(pane).contains(x, y) ? pane : -1;
}

std::uint32_t pendingPageRotation(int pane) {
  const PageRotations& rotations = pageRotationsOf(pane);
  const auto entry = rotations.find(session.panes[pane].openPage);
  return entry == rotations.end() ? 0 : entry->second & kQuarterTurnBits;
}

std::uint32_t renderRotationOf(int pane) {
  return (pendingPageRotation(pane) + session.panes[pane].documentRotation) & kQuarterTurnBits;
}

std::uint32_t pageRotationOf(int pane) {
  return (renderRotationOf(pane) + ownRotation(pane)) & kQuarterTurnBits;
}

PageBox pageBoxOf(int pane) {
  FS_RECTF box{};
  if (!FPDF_GetPageBoundingBox(session.panes[pane].page.get(), &box)) return {};
  return {box.left, box.top, box.right, box.bottom};
}

PageSize pageSizeRotated(int pane) {
  const PageBox box = pageBoxOf(pane);
  PageSize size{box.right - box.left, box.top - box.bottom};
  if (sideways(pageRotationOf(pane))) std::swap(size.width, size.height);
  return size;
}

float clampZoom(double zoom) {
  return std::max(std::min(static_cast<float>(zoom), kMaximumZoom), kMinimumZoom);
}

void layoutPane(int pane, bool fromBottom, int widthDelta) {
  PaneSlot& slot = session.panes[pane];
  const PixelRect rect = paneRect(pane);
  const PageSize page = pageSizeRotated(pane);
  if (!slot.page || rect.empty() || page.width <= 0 || page.height <= 0) return;

  const double width = rect.width();
  const double height = rect.height();
  const double widthRatio = width / page.width;
  switch (slot.zoomMode) {
    case kFitPage:
      slot.zoom = clampZoom(std::min(height / page.height, widthRatio) * kFitMarginFactor);
      break;
    case kFitWidth:
      slot.zoom = clampZoom(widthRatio * kFitMarginFactor);
      break;
    case kActualSize:
      slot.zoom = 1.0f;
      break;
    default:
      break;
  }

  const double shownWidth = slot.zoom * page.width;
  const double shownHeight = slot.zoom * page.height;
  slot.panX = static_cast<float>(slot.zoomMode == kCustomFit ? slot.panX + widthDelta / 2.0
                                                             : (width - shownWidth) / 2);
  slot.panY =
      static_cast<float>(slot.zoomMode == kFitPage ? (height - shownHeight) / 2
                                                   : restingPanY(height, shownHeight, fromBottom));
  session.lastPaneWidth[pane] = rect.width();
}

void clampPan(int pane) {
  PaneSlot& slot = session.panes[pane];
  if (!slot.pageBitmap) return;
  const PixelRect rect = paneRect(pane);
  slot.panX = keepVisible(slot.panX, rect.width(), slot.pageBitmapWidth);
  slot.panY = keepVisible(slot.panY, rect.height(), slot.pageBitmapHeight);
}

PagePoint paneToPage(int pane, double x, double y) {
  const PaneSlot& slot = session.panes[pane];
  if (!slot.page || !(slot.zoom > 0)) return {};
  const double viewX = (x - slot.panX) / slot.zoom;
  const double viewY = (y - slot.panY) / slot.zoom;
  const PageBox box = pageBoxOf(pane);
  switch (pageRotationOf(pane)) {
    case 1:
      return {box.left + viewY, box.bottom + viewX};
    case 2:
      return {box.right - viewX, box.bottom + viewY};
    case 3:
      return {box.right - viewY, box.top - viewX};
    default:
      return {box.left + viewX, box.top - viewY};
  }
}

PanePoint pageToPane(int pane, double pageX, double pageY) {
  const PaneSlot& slot = session.panes[pane];
  const PageBox box = pageBoxOf(pane);
  PanePoint view;
  switch (pageRotationOf(pane)) {
    case 1:
      view = {pageY - box.bottom, pageX - box.left};
      break;
    case 2:
      view = {box.right - pageX, pageY - box.bottom};
      break;
    case 3:
      view = {box.top - pageY, box.right - pageX};
      break;
    default:
      view = {pageX - box.left, box.top - pageY};
      break;
  }
  return {slot.panX + view.x * slot.zoom, slot.panY + view.y * slot.zoom};
}

PanePoint pageToBitmap(int pane, double pageX, double pageY) {
  const PaneSlot& slot = session.panes[pane];
  const PanePoint place = pageToPane(pane, pageX, pageY);
  if (!slot.pageBitmap) return place;
  const PageSize page = pageSizeRotated(pane);
  const double acrossShare = slot.pageBitmapWidth / (page.width * slot.zoom);
  const double downShare = slot.pageBitmapHeight / (page.height * slot.zoom);
  return {std::trunc(slot.panX) + (place.x - slot.panX) * acrossShare,
          std::trunc(slot.panY) + (place.y - slot.panY) * downShare};
}

}  // namespace quillmere
