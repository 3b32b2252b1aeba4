#include "view/navigation.h"

#include <algorithm>
#include <cstdlib>

#include "platform/main_window.h"
#include "session/changes.h"
#include "session/density.h"
#include "session/session.h"
#include "view/geometry.h"
#include "view/panes.h"
#include "view/render.h"
#include "view/zoom.h"

namespace quillmere {

namespace {

// Where Pan Scroll turns the page and where the new one appears, as shares of the pane's height.
constexpr double kNextPageThreshold = 0.2;
constexpr double kPreviousPageThreshold = 0.8;
constexpr double kNextPageLanding = 0.75;
constexpr double kPreviousPageLanding = 0.25;

bool inBook() {
  return session.viewMode == ViewMode::Book;
}

void showPage(int pane, std::int32_t index, bool fromBottom) {
  loadPane(pane, index);
  layoutPane(pane, fromBottom, 0);
  renderPane(pane);
}

std::int32_t lastIndexToTurnTo(std::int32_t pageCount) {
  return inBook() && pageCount > 1 ? pageCount - 2 : std::max(pageCount - 1, 0);
}

void showFollowingPage(std::int32_t index, std::int32_t pageCount, bool fromBottom) {
  if (index >= pageCount) {
    dropPaneView(1);
  } else if (session.panes[1].openPage != index) {
    showPage(1, index, fromBottom);
  }
}

// Moves the page by this many pixels. A vertical move may turn the page; the new page then has a
// pan of its own.
void panBy(int pane, double dx, double dy) {
  PaneSlot& slot = session.panes[pane];
  if (!slot.page) return;
  slot.panX = static_cast<float>(slot.panX + dx);
  slot.panY = static_cast<float>(slot.panY + dy);
  if (dy != 0 && panScrollTurn(pane)) return;
  clampPan(pane);
  pictureChanged();
}

WheelAction wheelActionFor(unsigned modifiers) {
  if (inBook() && session.settings.bookPageTurnWheel) {
    if (modifiers == 0) return WheelAction::PageTurn;
    if (modifiers == kWheelShift) return WheelAction::VerticalScroll;
  }
  return session.settings.wheelActions[modifiers];
}

// True when a wheel message completes a notch. Small deltas add up as long as pane, modifiers and
// direction stay the same.
bool completesNotch(int pane, unsigned modifiers, int delta) {
  WheelGathering& wheel = session.wheel;
  const bool continues =
      wheel.pane == pane && wheel.modifiers == modifiers && (wheel.delta < 0) == (delta < 0);
  if (!continues) wheel.delta = 0;
  wheel.pane = pane;
  wheel.modifiers = modifiers;
  if (delta == 0) return true;
  wheel.delta += delta;
  if (std::abs(wheel.delta) < kWheelNotch) return false;
  wheel.delta %= kWheelNotch;
  return true;
}

void turnPageByWheel(int pane, int delta) {
  const bool back = delta > 0;
  goToPage(pane, session.panes[pane].currentPage + (back ? -1 : 1), back);
}

void zoomByWheel(int pane, int delta, int x, int y) {
  const PixelRect rect = paneRect(pane);
  zoomAround(pane, delta > 0 ? kZoomStepIn : kZoomStepOut, x - rect.left, y - rect.top);
}

void rememberDragStart(PaneSlot& slot, int x, int y) {
  slot.shiftPanAnchorX = x;
  slot.shiftPanAnchorY = y;
  slot.shiftPanStartX = slot.panX;
  slot.shiftPanStartY = slot.panY;
}

void moveDragPanOf(int pane, int x, int y) {
  PaneSlot& slot = session.panes[pane];
  slot.panX = slot.shiftPanStartX + static_cast<float>(x - slot.shiftPanAnchorX);
  slot.panY = slot.shiftPanStartY + static_cast<float>(y - slot.shiftPanAnchorY);
  if (panScrollTurn(pane)) {
    rememberDragStart(slot, x, y);
  } else {
    clampPan(pane);
    pictureChanged();
  }
}

}  // namespace

void goToPage(int pane, std::int32_t index, bool fromBottom) {
  if (inBook() && pane == 1) {
    index += session.panes[0].currentPage - session.panes[1].currentPage;
    pane = 0;
  }
  if (documentOf(pane) == nullptr) return;
  const std::int32_t pageCount = pageCountOf(pane);
  index = std::clamp(index, 0, lastIndexToTurnTo(pageCount));
  const PaneSlot& slot = session.panes[pane];
  if (!inBook() && index == slot.currentPage && index == slot.openPage) return;
  if (inBook() && session.settings.bookRevertToFit) {
    session.panes[0].zoomMode = kFitPage;
    session.panes[1].zoomMode = kFitPage;
  }
  showPage(pane, index, fromBottom);
  if (inBook()) showFollowingPage(index + 1, pageCount, fromBottom);
  pageShown(pane);
}

int paneShowing(int pane, std::int32_t page) {
  if (session.panes[pane].openPage == page) return pane;
  return inBook() && session.panes[1 - pane].openPage == page ? 1 - pane : -1;
}

std::int32_t lastPage(int pane) {
  return pageCountOf(pane);
}

void turnPageByKey(int pane, PageKey key) {
  const std::int32_t current = session.panes[pane].currentPage;
  switch (key) {
    case PageKey::PageUp:
      return goToPage(pane, current - 1, true);
    case PageKey::PageDown:
      return goToPage(pane, current + 1, false);
    case PageKey::Home:
      return goToPage(pane, 0, false);
    case PageKey::End:
      return goToPage(pane, lastPage(pane) - 1, false);
  }
}

void panByKey(int pane, ArrowKey key) {
  const int step = scaled(kKeyPanStep);
  switch (key) {
    case ArrowKey::Left:
      return panBy(pane, step, 0);
    case ArrowKey::Right:
      return panBy(pane, -step, 0);
    case ArrowKey::Up:
      return panBy(pane, 0, step);
    case ArrowKey::Down:
      return panBy(pane, 0, -step);
  }
}

bool panScrollTurn(int pane) {
  const PaneSlot& slot = session.panes[pane];
  if (!session.panScrollEnabled || inBook() || !slot.page || slot.pageBitmapHeight < 1) {
    return false;
  }
  const double height = paneRect(pane).height();
  if (height * kNextPageThreshold - slot.pageBitmapHeight >= slot.panY &&
      slot.currentPage < pageCountOf(pane) - 1) {
    turnPageKeepingPan(pane, slot.currentPage + 1, true);
    return true;
  }
  if (slot.panY >= height * kPreviousPageThreshold && slot.currentPage >= 1) {
    turnPageKeepingPan(pane, slot.currentPage - 1, false);
    return true;
  }
  return false;
}

void turnPageKeepingPan(int pane, std::int32_t index, bool forward) {
  PaneSlot& slot = session.panes[pane];
  loadPane(pane, index);
  if (!slot.page) {
    freePaneBitmap(pane);
    pageShown(pane);
    return;
  }
  const double height = paneRect(pane).height();
  slot.panY = static_cast<float>(forward ? height * kNextPageLanding
                                         : height * kPreviousPageLanding -
                                               slot.zoom * pageSizeRotated(pane).height);
  renderPane(pane);
  pageShown(pane);
}

int paneForPointer(int x) {
  const int pane = paneAt(x);
  return pane < 0 ? session.activePane : pane;
}

void handleWheel(int pane, unsigned modifiers, int delta, int x, int y) {
  modifiers &= kWheelShift | kWheelControl;
  const double scroll = static_cast<double>(delta) / kWheelNotch * scaled(kWheelPanStep);
  switch (wheelActionFor(modifiers)) {
    case WheelAction::PageTurn:
      if (completesNotch(pane, modifiers, delta)) turnPageByWheel(pane, delta);
      break;
    case WheelAction::VerticalScroll:
      panBy(pane, 0, scroll);
      break;
    case WheelAction::HorizontalScroll:
      panBy(pane, scroll, 0);
      break;
    case WheelAction::Zoom:
      if (completesNotch(pane, modifiers, delta)) zoomByWheel(pane, delta, x, y);
      break;
  }
}

void startDragPan(int pane, int x, int y) {
  activatePane(pane);
  PaneSlot& slot = session.panes[pane];
  if (!slot.page) return;
  slot.shiftPan = true;
  rememberDragStart(slot, x, y);
  beginGesture(Gesture::Pan, x, y);
  platform::refreshCursor();
}

void moveDragPan(int x, int y) {
  for (int pane = 0; pane < 2; ++pane) {
    if (session.panes[pane].shiftPan) moveDragPanOf(pane, x, y);
  }
}

void endDragPan() {
  if (!dragPanActive()) return;
  for (PaneSlot& slot : session.panes) slot.shiftPan = false;
  endGesture(Gesture::Pan);
  platform::refreshCursor();
}

bool dragPanActive() {
  return session.panes[0].shiftPan || session.panes[1].shiftPan;
}

}  // namespace quillmere
