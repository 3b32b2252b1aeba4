#include "view/left_panel.h"

#include <algorithm>

#include "core/session.h"
#include "platform/main_window.h"
#include "view/geometry.h"
#include "view/modes.h"

namespace quillmere {

namespace {

constexpr int kHeaderHeight = 22;      // pixels
constexpr int kBarHeight = 3;          // pixels
constexpr int kSplitterReachLeft = 1;  // pixels left of the panel's edge that still grab
constexpr int kSplitterReachRight = 4;
constexpr int kMinimumPanelWidth = 150;  // pixels
constexpr int kMaximumPanelWidth = 500;  // pixels
constexpr double kLargestShare = 0.4;    // of the client width
constexpr float kMinimumSplit = 0.05f;
constexpr float kMaximumSplit = 0.95f;

void placePart(const PaneRect& part, PaneRect& header, PaneRect& tree) {
  const int headerBottom = std::min(part.top + scaled(kHeaderHeight), part.bottom);
  header = {part.left, part.top, part.right, headerBottom};
  tree = {part.left, headerBottom, part.right, part.bottom};
}

PaneRect panelArea() {
  const int top = pageAreaTop();
  return {0, top, session.leftPanelWidth, std::max(top, pageAreaBottom())};
}

int limitedPanelWidth(int wanted) {
  const int share = static_cast<int>(platform::mainWindowClientSize().width * kLargestShare);
  const int most = std::min(scaled(kMaximumPanelWidth), share);
  return std::max(std::min(wanted, most), scaled(kMinimumPanelWidth));
}

void showNewPanelLayout() {
  platform::layoutMainWindow();
  platform::invalidateMainWindow(true);
  platform::updateMainWindow();
}

}  // namespace

LeftPanelParts leftPanelParts() {
  LeftPanelParts parts;
  if (!leftPanelShown()) return parts;
  const PaneRect area = panelArea();
  if (!session.binderPanelVisible) {
    placePart(area, parts.bookmarksHeader, parts.bookmarksTree);
  } else if (!session.navigationPanelVisible) {
    placePart(area, parts.bindersHeader, parts.bindersTree);
  } else {
    const int split =
        area.top + static_cast<int>(static_cast<float>(area.height()) * session.leftPanelSplit);
    const int below = std::min(split + scaled(kBarHeight), area.bottom);
    parts.bar = {area.left, split, area.right, below};
    placePart({area.left, area.top, area.right, split}, parts.bookmarksHeader, parts.bookmarksTree);
    placePart({area.left, below, area.right, area.bottom}, parts.bindersHeader, parts.bindersTree);
  }
  return parts;
}

bool onLeftSplitter(int x) {
  return leftPanelShown() && x >= session.leftPanelWidth - scaled(kSplitterReachLeft) &&
         x <= session.leftPanelWidth + scaled(kSplitterReachRight);
}

bool onLeftPanelBar(int x, int y) {
  return leftPanelParts().bar.contains(x, y);
}

void startPanelWidthDrag(int x) {
  session.input.panelWidthDrag = true;
  session.input.panelPressX = x;
  session.input.panelStartWidth = session.leftPanelWidth;
  platform::captureMouse();
}

void movePanelWidthDrag(int x) {
  const ViewInput& input = session.input;
  if (!input.panelWidthDrag) return;
  const int width = limitedPanelWidth(input.panelStartWidth + (x - input.panelPressX));
  if (width == session.leftPanelWidth) return;
  session.leftPanelWidth = width;
  showNewPanelLayout();
}

void endPanelWidthDrag() {
  if (!session.input.panelWidthDrag) return;
  session.input.panelWidthDrag = false;
  platform::releaseMouse();
  if (session.leftPanelWidth != session.input.panelStartWidth) refitPanes();
}

void startPanelBarDrag(int y) {
  session.input.panelBarDrag = true;
  session.input.panelBarGrip = y - leftPanelParts().bar.top;
  platform::captureMouse();
}

void movePanelBarDrag(int y) {
  if (!session.input.panelBarDrag) return;
  const PaneRect area = panelArea();
  if (area.empty()) return;
  const int top = y - session.input.panelBarGrip - area.top;
  const float share = static_cast<float>(top) / static_cast<float>(area.height());
  session.leftPanelSplit = std::clamp(share, kMinimumSplit, kMaximumSplit);
  showNewPanelLayout();
}

void endPanelBarDrag() {
  if (!session.input.panelBarDrag) return;
  session.input.panelBarDrag = false;
  platform::releaseMouse();
}

}  // namespace quillmere
