#include "view/status.h"

#include <algorithm>

#include "base/limits.h"
#include "base/product.h"
#include "base/text_format.h"
#include "platform/main_window.h"
#include "session/density.h"
#include "session/session.h"
#include "view/zoom.h"

namespace quillmere {

namespace {

enum StatusPart : int { kZoomPart = 0, kSliderPart = 1, kPagePart = 2 };

// Pixels.
constexpr int kZoomPartEdge = 88;
constexpr int kSliderPartEdge = 238;
constexpr int kLeastPagePartEdge = 318;
constexpr int kVersionPartWidth = 220;
constexpr int kSliderX = 90;
constexpr int kSliderY = 2;
constexpr int kSliderWidth = 146;
constexpr int kSliderHeightAllowance = 4;

std::u16string shownPage(int pane) {
  return decimal(session.panes[pane].currentPage + 1);
}

std::u16string shownCount(int pane) {
  return decimal(pageCountOf(pane));
}

void fillStatusBar() {
  platform::enableZoomSlider(session.panes[session.activePane].page != nullptr);
  const auto edges = statusPartEdges(platform::mainWindowClientSize().width);
  platform::setStatusParts(edges.data(), kStatusPartCount);
  refreshVersionPart();
  platform::setStatusText(kZoomPart, statusZoomText());
  platform::setStatusText(kSliderPart, u"");
  const PixelRect slider = zoomSliderPlace(platform::statusBarHeight());
  platform::placeZoomSlider(slider.left, slider.top, slider.width(), slider.height());
  platform::setZoomSlider(sliderPositionOfZoom(session.panes[session.activePane].zoom));
  platform::setStatusText(kPagePart, statusPageText());
}

}  // namespace

std::u16string titleText() {
  std::u16string base = session.viewerRole ? kViewerTitle : kProductTitle;
  const PaneSlot* panes = session.panes;
  if (!session.active.document && !panes[0].document && !panes[1].document) {
    return base;
  }
  if (session.viewMode == ViewMode::TwoDocuments) {
    return formatText(u"%s - %s | %s",
                      {base, fileNameOf(panes[0].path), fileNameOf(panes[1].path)});
  }
  return formatText(u"%s - %s", {base, fileNameOf(session.active.path)});
}

std::u16string statusZoomText() {
  const double zoom = session.panes[session.activePane].zoom;
  return formatText(u"  Zoom: %d%%", {decimal(static_cast<std::int64_t>(zoom * 100 + 0.5))});
}

std::u16string statusPageText() {
  if (documentOf(session.activePane) == nullptr) return {};
  switch (session.viewMode) {
    case ViewMode::TwoDocuments:
      return formatText(u"\t\tL:%d/%d  R:%d/%d  ",
                        {shownPage(0), shownCount(0), shownPage(1), shownCount(1)});
    case ViewMode::Book:
    case ViewMode::IndependentPages:
      return formatText(u"\t\tL:%d  R:%d  of %d  ", {shownPage(0), shownPage(1), shownCount(0)});
    default:
      return formatText(u"\t\tPage %d of %d  ", {shownPage(0), shownCount(0)});
  }
}

std::u16string versionText() {
  if (session.latestVersion.empty()) return formatText(u"  v%ls", {kProductVersion});
  return formatText(u"  v%ls - Update to v%ls", {kProductVersion, session.latestVersion});
}

std::array<int, kStatusPartCount> statusPartEdges(int width) {
  return {scaled(kZoomPartEdge), scaled(kSliderPartEdge),
          std::max(scaled(kLeastPagePartEdge), width - scaled(kVersionPartWidth)), -1};
}

bool onUpdateLink(int x, int y) {
  const int width = platform::mainWindowClientSize().width;
  const PixelRect part{statusPartEdges(width)[kPagePart], 0, width, platform::statusBarHeight()};
  return !session.latestVersion.empty() && part.contains(x, y);
}

PixelRect zoomSliderPlace(int height) {
  const int left = scaled(kSliderX);
  const int top = scaled(kSliderY);
  return {left, top, left + scaled(kSliderWidth), top + height - scaled(kSliderHeightAllowance)};
}

void refreshTitle() {
  platform::setMainWindowTitle(titleText());
}

void refreshVersionPart() {
  platform::setStatusText(kVersionPart, versionText());
}

void refreshStatus() {
  platform::fillStatusBarLater(fillStatusBar);
}

}  // namespace quillmere
