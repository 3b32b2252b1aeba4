#include "view/stamp_splitter.h"

#include <algorithm>

#include "core/session.h"
#include "platform/main_window.h"
#include "view/geometry.h"
#include "view/modes.h"

namespace quillmere {

namespace {

constexpr int kMinimumWidth = 120;  // pixels
constexpr int kMaximumWidth = 400;  // pixels

bool panelShown() {
  return session.stampPanelVisible && session.viewMode == ViewMode::SinglePage;
}

}  // namespace

PaneRect stampPanelRect() {
  if (!panelShown()) return {};
  const int right = platform::mainWindowClientSize().width;
  return {right - session.stampPanelWidth, pageAreaTop(), right, pageAreaBottom()};
}

bool onStampSplitter(int x, int y) {
  if (!panelShown()) return false;
  const PaneRect panel = stampPanelRect();
  return x >= panel.left - scaled(kStampSplitterWidth) && x < panel.left && y >= panel.top &&
         y < panel.bottom;
}

void startStampSplitterDrag(int x) {
  session.input.stampSplitterDrag = true;
  session.input.stampSplitterPressX = x;
  session.input.stampSplitterStartWidth = session.stampPanelWidth;
  platform::captureMouse();
}

void moveStampSplitterDrag(int x) {
  const ViewInput& input = session.input;
  if (!input.stampSplitterDrag) return;
  const int width = std::clamp(input.stampSplitterStartWidth - (x - input.stampSplitterPressX),
                               scaled(kMinimumWidth), scaled(kMaximumWidth));
  if (width == session.stampPanelWidth) return;
  session.stampPanelWidth = width;
  platform::layoutMainWindow();
  platform::invalidateMainWindow(true);
  platform::updateMainWindow();
}

void endStampSplitterDrag() {
  if (!session.input.stampSplitterDrag) return;
  session.input.stampSplitterDrag = false;
  platform::releaseMouse();
  if (session.stampPanelWidth != session.input.stampSplitterStartWidth) refitPanes();
}

}  // namespace quillmere
