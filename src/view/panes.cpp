#include "view/panes.h"

#include <algorithm>

#include "platform/main_window.h"
#include "session/changes.h"
#include "session/density.h"
#include "session/session.h"
#include "view/geometry.h"
#include "view/render.h"

namespace quillmere {

namespace {

constexpr int kReachLeft = 1;     // pixels left of the divider that still grab it
constexpr int kReachRight = 3;    // first pixel that no longer does
constexpr int kLeftLimit = 150;   // least width of pane 0, in pixels
constexpr int kRightLimit = 152;  // least width of pane 1 with the divider, in pixels

// A narrow window cannot meet both limits; then pane 0 keeps its width.
int limitedDivider(int wanted) {
  const int most = platform::mainWindowClientSize().width - scaled(kRightLimit);
  return std::max(std::min(wanted, most), leftPanelEdge() + scaled(kLeftLimit));
}

bool dividerMovable() {
  if (session.viewMode == ViewMode::SinglePage) return false;
  return session.viewMode != ViewMode::Book || !session.settings.bookEqualizePanes;
}

// Restore the saved pan only if the pane kept its size: the layout has centred the page again.
void restoreBookPanOf(int pane) {
  PaneSlot& slot = session.panes[pane];
  if (!paneShown(pane) || !slot.page) return;
  const PixelRect now = paneRect(pane);
  const PixelRect& before = session.bookOverridePane[pane];
  const bool custom = slot.zoomMode == kCustomFit;
  if (custom || now.width() == before.width()) slot.panX = session.bookOverridePanX[pane];
  if (custom || now.height() == before.height()) slot.panY = session.bookOverridePanY[pane];
  clampPan(pane);
}

void refitPane(int pane) {
  std::int32_t& lastWidth = session.lastPaneWidth[pane];
  if (!session.panes[pane].page) {
    lastWidth = -1;
    return;
  }
  const int widthDelta = lastWidth < 0 ? 0 : paneRect(pane).width() - lastWidth;
  layoutPane(pane, false, widthDelta);
  renderPane(pane);
}

}  // namespace

void activatePane(int pane) {
  setActivePane(pane);
}

void flipActivePane() {
  if (session.viewMode != ViewMode::SinglePage) activatePane(1 - session.activePane);
}

void refitPanes() {
  for (int pane = 0; pane < 2; ++pane) {
    if (paneShown(pane)) refitPane(pane);
  }
  panesLaidOut();
}

void showPane(int pane) {
  PaneSlot& slot = session.panes[pane];
  if (!slot.page) loadPane(pane, slot.currentPage);
  if (slot.page) layoutAndRender(pane);
}

void saveBookOverride() {
  for (int pane = 0; pane < 2; ++pane) {
    const PaneSlot& slot = session.panes[pane];
    session.bookOverrideZoom[pane] = slot.zoom;
    session.bookOverridePanX[pane] = slot.panX;
    session.bookOverridePanY[pane] = slot.panY;
    session.bookOverrideZoomMode[pane] = slot.zoomMode;
    session.bookOverridePane[pane] = paneRect(pane);
  }
  session.bookOverrideActive = true;
}

void restoreBookOverride() {
  for (int pane = 0; pane < 2; ++pane) {
    PaneSlot& slot = session.panes[pane];
    slot.zoom = session.bookOverrideZoom[pane];
    slot.panX = session.bookOverridePanX[pane];
    slot.panY = session.bookOverridePanY[pane];
    slot.zoomMode = session.bookOverrideZoomMode[pane];
  }
  session.bookOverrideActive = false;
}

void restoreBookPan() {
  restoreBookPanOf(0);
  restoreBookPanOf(1);
}

void applyBookSettings() {
  if (session.viewMode != ViewMode::Book) return;
  if (session.settings.bookEqualizePanes) session.paneDividerPosition = 0;
  if (session.settings.bookRevertToFit) {
    if (!session.bookOverrideActive) saveBookOverride();
    for (int pane = 0; pane < 2; ++pane) {
      if (!session.panes[pane].page) continue;
      session.panes[pane].zoomMode = kFitPage;
      layoutAndRender(pane);
    }
  } else {
    session.bookOverrideActive = false;
  }
  commandsChanged();
  panesLaidOut();
}

bool onDivider(int x) {
  return dividerMovable() && x >= dividerX() - scaled(kReachLeft) &&
         x < dividerX() + scaled(kReachRight);
}

void startDividerDrag(int x) {
  if (!dividerMovable()) return;
  beginGesture(Gesture::Divider, x, 0, dividerX());
}

void moveDividerDrag(int x) {
  const GestureState& drag = session.gesture;
  if (drag.kind != Gesture::Divider) return;
  const int wanted = drag.start + (x - drag.pressX);
  if (wanted == dividerX()) return;  // a centred divider stays centred until it is moved
  session.paneDividerPosition = limitedDivider(wanted);
  platform::invalidateMainWindow(true);
}

void endDividerDrag() {
  if (endGesture(Gesture::Divider) && dividerX() != session.gesture.start) refitPanes();
}

void equalizePanes() {
  if (session.viewMode == ViewMode::SinglePage) return;
  session.paneDividerPosition = 0;
  refitPanes();
}

}  // namespace quillmere
