#include <algorithm>

#include "platform/main_window.h"
#include "view/geometry.h"
#include "view/modes.h"

namespace quillmere {

namespace {

constexpr int kReachLeft = 1;     // pixels left of the divider that still grab it
constexpr int kReachRight = 3;    // first pixel that no longer does
constexpr int kLeftLimit = 150;   // pixels that pane 0 keeps
constexpr int kRightLimit = 152;  // pixels that pane 1 and the divider keep

// A narrow window cannot meet both limits; then pane 0 keeps its width.
int limitedDivider(int wanted) {
  const int most = platform::mainWindowClientSize().width - scaled(kRightLimit);
  return std::max(std::min(wanted, most), leftPanelEdge() + scaled(kLeftLimit));
}

bool dividerMovable() {
  if (session.viewMode == ViewMode::SinglePage) return false;
  return session.viewMode != ViewMode::Book || !session.settings.bookEqualizePanes;
}

}  // namespace

bool onDivider(int x) {
  return dividerMovable() && x >= dividerX() - scaled(kReachLeft) &&
         x < dividerX() + scaled(kReachRight);
}

void startDividerDrag(int x) {
  if (!dividerMovable()) return;
  session.input.dividerDrag = true;
  session.input.dividerPressX = x;
  session.input.dividerStartX = dividerX();
  platform::captureMouse();
}

void moveDividerDrag(int x) {
  const ViewInput& input = session.input;
  if (!input.dividerDrag) return;
  session.paneDividerPosition = limitedDivider(input.dividerStartX + (x - input.dividerPressX));
  platform::invalidateMainWindow(true);
}

void endDividerDrag() {
  if (!session.input.dividerDrag) return;
  session.input.dividerDrag = false;
  platform::releaseMouse();
  refitPanes();
}

void equalizePanes() {
  if (session.viewMode == ViewMode::SinglePage) return;
  session.paneDividerPosition = 0;
  refitPanes();
}

}  // namespace quillmere
