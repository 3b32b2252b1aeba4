#include "panels/left_panel.h"

#include <algorithm>

#include "platform/main_window.h"
#include "session/density.h"
#include "session/session.h"
#include "view/geometry.h"
#include "view/panes.h"

namespace quillmere {

namespace {

constexpr int kHeaderHeight = 22;      // pixels
constexpr int kBarHeight = 3;          // pixels
constexpr int kSplitterReachLeft = 1;  // pixels left of the panel's edge that grab too
constexpr int kSplitterReachRight = 4;
constexpr int kMinimumPanelWidth = 150;  // pixels
constexpr int kMaximumPanelWidth = 500;  // pixels
constexpr double kLargestShare = 0.4;    // of the client width
constexpr float kMinimumSplit = 0.05f;
constexpr float kMaximumSplit = 0.95f;

void placePart(const PixelRect& part, PixelRect& header, PixelRect& tree) {
  const int headerBottom = std::min(part.top + scaled(kHeaderHeight), part.bottom);
  header = {part.left, part.top, part.right, headerBottom};
  tree = {part.left, headerBottom, part.right, part.bottom};
}

PixelRect panelArea() {
  const int top = pageAreaTop();
  return {0, top, session.leftPanelWidth, std::max(top, pageAreaBottom())};
}

int clampedPanelWidth(int wanted) {
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
  const PixelRect area = panelArea();
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
  beginGesture(Gesture::LeftPanelWidth, x, 0, session.leftPanelWidth);
}

void movePanelWidthDrag(int x) {
  const GestureState& drag = session.gesture;
  if (drag.kind != Gesture::LeftPanelWidth) return;
  const int width = clampedPanelWidth(drag.start + (x - drag.pressX));
  if (width == session.leftPanelWidth) return;
  session.leftPanelWidth = width;
  showNewPanelLayout();
}

void endPanelWidthDrag() {
  if (!endGesture(Gesture::LeftPanelWidth)) return;
  if (session.leftPanelWidth != session.gesture.start) refitPanes();
}

void startPanelBarDrag(int y) {
  beginGesture(Gesture::LeftPanelBar, 0, y, leftPanelParts().bar.top);
}

void movePanelBarDrag(int y) {
  const GestureState& drag = session.gesture;
  if (drag.kind != Gesture::LeftPanelBar) return;
  const PixelRect area = panelArea();
  if (area.empty()) return;
  const int top = drag.start + (y - drag.pressY) - area.top;
  const float share = static_cast<float>(top) / static_cast<float>(area.height());
  session.leftPanelSplit = std::clamp(share, kMinimumSplit, kMaximumSplit);
  showNewPanelLayout();
}

void endPanelBarDrag() {
  endGesture(Gesture::LeftPanelBar);
}

}  // namespace quillmere
