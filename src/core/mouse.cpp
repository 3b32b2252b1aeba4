#include "core/mouse.h"

#include "core/open_requests.h"
#include "core/session.h"
#include "nav/jump_history.h"
#include "nav/links.h"
#include "platform/keyboard.h"
#include "platform/main_window.h"
#include "view/geometry.h"
#include "view/left_panel.h"
#include "view/modes.h"
#include "view/navigation.h"
#include "view/selection.h"
#include "view/stamp_splitter.h"

namespace quillmere {

namespace {

// The pane that shows its page or background at a place; -1 outside all of them.
int paneUnder(int x, int y) {
  const int pane = paneAt(x);
  return pane >= 0 && paneRect(pane).contains(x, y) ? pane : -1;
}

int placeholderAt(int x, int y) {
  for (int pane = 0; pane < 2; ++pane) {
    if (session.placeholderRect[pane].contains(x, y)) return pane;
  }
  return -1;
}

// Whoever is first to take a press of the left button has it.
bool pressSplitter(int x, int y) {
  if (onLeftPanelBar(x, y)) {
    startPanelBarDrag(y);
  } else if (onLeftSplitter(x)) {
    startPanelWidthDrag(x);
  } else if (onStampSplitter(x, y)) {
    startStampSplitterDrag(x);
  } else if (onDivider(x)) {
    startDividerDrag(x);
  } else {
    return false;
  }
  return true;
}

bool pressPlaceholder(int x, int y) {
  const int pane = placeholderAt(x, y);
  if (pane < 0) return false;
  activatePane(pane);
  openWithDialog(pane);
  return true;
}

bool pressToPan(int x, int y) {
  const int pane = paneUnder(x, y);
  if (pane < 0 || !platform::shiftDown()) return false;
  startDragPan(pane, x, y);
  return true;
}

bool pressLink(int x, int y) {
  const int pane = paneUnder(x, y);
  if (pane < 0) return false;
  activatePane(pane);
  return FollowLink(pane, LinkAtPoint(pane, x, y));
}

bool pressToSelect(int x, int y) {
  const int pane = paneUnder(x, y);
  if (pane < 0) return false;
  startTextSelection(pane, x, y);
  return true;
}

constexpr bool (*kLeftPressHandlers[])(int x, int y) = {pressSplitter, pressPlaceholder, pressToPan,
                                                        pressLink, pressToSelect};

// The last movement before a release may have got lost; what was drawn up to there was meant.
void moveToRelease(int x, int y) {
  moveDragPan(x, y);
  moveTextSelection(x, y);
}

bool aboveStatusBar(int y) {
  return y >= 0 && y < pageAreaBottom();
}

}  // namespace

void pressLeft(int x, int y) {
  for (const auto handler : kLeftPressHandlers) {
    if (handler(x, y)) return;
  }
}

void pressMiddle(int x, int y) {
  const int pane = paneUnder(x, y);
  if (pane >= 0) startDragPan(pane, x, y);
}

// The second press of a double click means a word only where the first one would have selected
// text.
void doubleClickLeft(int x, int y) {
  if (pressSplitter(x, y) || pressPlaceholder(x, y) || pressToPan(x, y)) return;
  const int pane = paneUnder(x, y);
  if (pane < 0) return;
  activatePane(pane);
  selectWordAt(pane, x, y);
}

void movePointer(int x, int y) {
  movePanelBarDrag(y);
  movePanelWidthDrag(x);
  moveStampSplitterDrag(x);
  moveDividerDrag(x);
  moveDragPan(x, y);
  moveTextSelection(x, y);
}

// What ended a drag before its button came up has kept the mouse.
void releaseLeft(int x, int y) {
  moveToRelease(x, y);
  loseCapture();
  platform::releaseMouse();
}

void releaseMiddle(int x, int y) {
  moveToRelease(x, y);
  endDragPan();
}

void loseCapture() {
  endPanelBarDrag();
  endPanelWidthDrag();
  endStampSplitterDrag();
  endDividerDrag();
  endDragPan();
  endTextSelection();
}

std::vector<MenuRow> releaseRight(int x, int y) {
  const int pane = paneUnder(x, y);
  if (pane < 0) return {};
  activatePane(pane);
  if (!session.panes[pane].page) return {};
  return contextMenu(pane, x, y);
}

void pressSideButton(int x, bool forward) {
  const int pane = x < 0 ? session.activePane : paneForPointer(x);
  if (forward) {
    JumpForward(pane);
  } else {
    JumpBack(pane);
  }
}

void turnWheel(int x, int y, int delta, bool shift, bool control) {
  const unsigned modifiers = (shift ? kWheelShift : 0) | (control ? kWheelControl : 0);
  handleWheel(paneForPointer(x), modifiers, delta, x, y);
}

CursorKind cursorAt(int x, int y) {
  if (!aboveStatusBar(y)) return CursorKind::Default;
  if (onLeftPanelBar(x, y)) return CursorKind::ResizeVertical;
  if (onLeftSplitter(x) || onStampSplitter(x, y) || onDivider(x)) {
    return CursorKind::ResizeHorizontal;
  }
  if (placeholderAt(x, y) >= 0) return CursorKind::Hand;
  const int pane = paneUnder(x, y);
  if (pane < 0) return CursorKind::Default;
  if (platform::shiftDown() || dragPanActive() || LinkAtPoint(pane, x, y) != nullptr)
    return CursorKind::Hand;
  switch (textCursorAt(pane, x, y)) {
    case TextCursor::Beam:
      return CursorKind::TextBeam;
    case TextCursor::Sideways:
      return CursorKind::SidewaysBeam;
    case TextCursor::None:
      break;
  }
  return CursorKind::Arrow;
}

}  // namespace quillmere
