#include "panels/stamp_splitter.h"

#include <algorithm>

#include "platform/main_window.h"
#include "session/density.h"
#include "session/session.h"
#include "view/geometry.h"
#include "view/panes.h"

namespace quillmere {

namespace {

constexpr int kMinimumWidth = 120;  // pixels
constexpr int kMaximumWidth = 400;  // pixels

bool panelShown() {
  return session.stampPanelVisible && session.viewMode == ViewMode::SinglePage;
}

}  // namespace

PixelRect stampPanelRect() {
  if (!panelShown()) return {};
  const int right = platform::mainWindowClientSize().width;
  return {right - session.stampPanelWidth, pageAreaTop(), right, pageAreaBottom()};
}

bool onStampSplitter(int x, int y) {
  if (!panelShown()) return false;
  const PixelRect panel = stampPanelRect();
  return x >= panel.left - scaled(kStampSplitterWidth) && x < panel.left && y >= panel.top &&
         y < panel.bottom;
}

void startStampSplitterDrag(int x) {
  beginGesture(Gesture::StampSplitter, x, 0, session.stampPanelWidth);
}

void moveStampSplitterDrag(int x) {
  const GestureState& drag = session.gesture;
  if (drag.kind != Gesture::StampSplitter) return;
  const int width =
      std::clamp(drag.start - (x - drag.pressX), scaled(kMinimumWidth), scaled(kMaximumWidth));
  if (width == session.stampPanelWidth) return;
  session.stampPanelWidth = width;
  platform::layoutMainWindow();
  platform::invalidateMainWindow(true);
  platform::updateMainWindow();
}

void endStampSplitterDrag() {
  if (!endGesture(Gesture::StampSplitter)) return;
  if (session.stampPanelWidth != session.gesture.start) refitPanes();
}

}  // namespace quillmere
