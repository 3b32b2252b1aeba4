#include "app/mouse.h"

#include "annot/markup_tip.h"
#include "annot/markups.h"
#include "annot/placement_editing.h"
#include "annot/text_tool.h"
#include "documents/open_requests.h"
#include "nav/jump_history.h"
#include "nav/links.h"
#include "panels/left_panel.h"
#include "panels/stamp_panel.h"
#include "panels/stamp_splitter.h"
#include "platform/keyboard.h"
#include "platform/main_window.h"
#include "session/session.h"
#include "view/geometry.h"
#include "view/navigation.h"
#include "view/panes.h"
#include "view/selection.h"

namespace quillmere {

namespace {

int placeholderAt(int x, int y) {
  for (int pane = 0; pane < 2; ++pane) {
    if (session.placeholderRect[pane].contains(x, y)) return pane;
  }
  return -1;
}

bool pressPanelBar(int x, int y) {
  if (!onLeftPanelBar(x, y)) return false;
  startPanelBarDrag(y);
  return true;
}

bool pressPanelSplitter(int x, int) {
  if (!onLeftSplitter(x)) return false;
  startPanelWidthDrag(x);
  return true;
}

bool pressStampSplitter(int x, int y) {
  if (!onStampSplitter(x, y)) return false;
  startStampSplitterDrag(x);
  return true;
}

bool pressDivider(int x, int) {
  if (!onDivider(x)) return false;
  startDividerDrag(x);
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

// The second press of a double click selects a word only where the first would have begun a
// selection.
bool pressWord(int x, int y) {
  const int pane = paneUnder(x, y);
  if (pane < 0) return false;
  activatePane(pane);
  selectWordAt(pane, x, y);
  return true;
}

// Handlers of the left button; the first row that takes the press gets it.
struct PressRow {
  bool (*press)(int x, int y);
  bool (*secondPress)(int x, int y);  // of a double click; null when it means nothing there
};
constexpr PressRow kLeftPresses[] = {
    {pressPanelBar, pressPanelBar},
    {pressPanelSplitter, pressPanelSplitter},
    {pressStampSplitter, pressStampSplitter},
    {pressDivider, pressDivider},
    {pressTextTool, pressTextTool},
    {pressPlaceholder, pressPlaceholder},
    {pressPlacement, pressPlacement},
    {pressToPan, pressToPan},
    {pressLink, nullptr},
    {pressToSelect, pressWord},
};

// What each drag does. It ends when its button is released or when something else captures the
// mouse. A release first moves to the pointer, since the last movement before it may have been
// lost.
struct GestureRow {
  Gesture kind;
  void (*move)(int x, int y);
  void (*release)(int x, int y);
  void (*cancel)();
};

template <void (*kMove)(int)>
void moveAlongX(int x, int) {
  kMove(x);
}
template <void (*kMove)(int)>
void moveAlongY(int, int y) {
  kMove(y);
}
template <void (*kEnd)()>
void endWhereItIs(int, int) {
  kEnd();
}
template <void (*kMove)(int, int), void (*kEnd)()>
void moveAndEnd(int x, int y) {
  kMove(x, y);
  kEnd();
}

constexpr GestureRow kGestures[] = {
    {Gesture::LeftPanelBar, moveAlongY<movePanelBarDrag>, endWhereItIs<endPanelBarDrag>,
     endPanelBarDrag},
    {Gesture::LeftPanelWidth, moveAlongX<movePanelWidthDrag>, endWhereItIs<endPanelWidthDrag>,
     endPanelWidthDrag},
    {Gesture::StampSplitter, moveAlongX<moveStampSplitterDrag>, endWhereItIs<endStampSplitterDrag>,
     endStampSplitterDrag},
    {Gesture::Divider, moveAlongX<moveDividerDrag>, endWhereItIs<endDividerDrag>, endDividerDrag},
    {Gesture::Placement, movePlacementDrag, moveAndEnd<movePlacementDrag, endPlacementDrag>,
     endPlacementDrag},
    {Gesture::Pan, moveDragPan, moveAndEnd<moveDragPan, endDragPan>, endDragPan},
    {Gesture::Select, moveTextSelection, moveAndEnd<moveTextSelection, endTextSelection>,
     endTextSelection},
};

static_assert(std::size(kGestures) == static_cast<std::size_t>(Gesture::Select),
              "a drag without a row would neither move nor end");

// The row of the drag under way; null without one.
const GestureRow* currentGesture() {
  for (const GestureRow& row : kGestures) {
    if (row.kind == session.gesture.kind) return &row;
  }
  return nullptr;
}

CursorKind cursorFor(PlacementCursor cursor) {
  switch (cursor) {
    case PlacementCursor::Rotate:
      return CursorKind::Rotate;
    case PlacementCursor::ResizeHorizontal:
      return CursorKind::ResizeHorizontal;
    case PlacementCursor::ResizeVertical:
      return CursorKind::ResizeVertical;
    case PlacementCursor::ResizeFalling:
      return CursorKind::ResizeFalling;
    case PlacementCursor::ResizeRising:
      return CursorKind::ResizeRising;
    case PlacementCursor::Move:
    case PlacementCursor::None:
      break;
  }
  return CursorKind::Move;
}

bool aboveStatusBar(int y) {
  return y >= 0 && y < pageAreaBottom();
}

}  // namespace

// One drag at a time: another button ends the present one where it is.
void pressLeft(int x, int y) {
  HideMarkupTip();
  loseCapture();
  for (const PressRow& row : kLeftPresses) {
    if (row.press(x, y)) return;
  }
}

void pressMiddle(int x, int y) {
  HideMarkupTip();
  const int pane = paneUnder(x, y);
  if (pane < 0) return;
  loseCapture();
  startDragPan(pane, x, y);
}

void doubleClickLeft(int x, int y) {
  loseCapture();
  for (const PressRow& row : kLeftPresses) {
    if (row.secondPress != nullptr && row.secondPress(x, y)) return;
  }
}

void movePointer(int x, int y) {
  moveTextTool(x, y);
  if (const GestureRow* gesture = currentGesture()) gesture->move(x, y);
}

void hoverPointer(int x, int y) {
  // Not every system tells the panel that the pointer left while a dialog opened.
  leaveStampPanel();
  ShowMarkupTip(x, y);
}

// A drag may have ended without releasing the mouse.
void releaseLeft(int x, int y) {
  if (const GestureRow* gesture = currentGesture()) gesture->release(x, y);
  platform::releaseMouse();
}

void releaseMiddle(int x, int y) {
  const GestureRow* gesture = currentGesture();
  if (gesture != nullptr && gesture->kind == Gesture::Pan) gesture->release(x, y);
}

void shiftChanged() {
  platform::refreshCursor();
  changeTextToolShift();
}

void loseCapture() {
  if (const GestureRow* gesture = currentGesture()) gesture->cancel();
}

std::vector<MenuRow> releaseRight(int x, int y) {
  HideMarkupTip();
  if (turnTextTool(x, y)) return {};
  const int pane = paneUnder(x, y);
  if (pane < 0) return {};
  activatePane(pane);
  pickMarkup(pane, x, y);
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
  HideMarkupTip();
  if (stampPanelRect().contains(x, y)) return turnStampPanelWheel(delta);
  const unsigned modifiers = (shift ? kWheelShift : 0) | (control ? kWheelControl : 0);
  handleWheel(paneForPointer(x), modifiers, delta, x, y);
}

CursorKind cursorAt(int x, int y) {
  if (!aboveStatusBar(y)) return CursorKind::Default;
  if (onLeftPanelBar(x, y)) return CursorKind::ResizeVertical;
  if (onLeftSplitter(x) || onStampSplitter(x, y) || onDivider(x)) {
    return CursorKind::ResizeHorizontal;
  }
  if (textToolPlaces(x, y)) return CursorKind::Cross;
  if (placeholderAt(x, y) >= 0) return CursorKind::Hand;
  const PlacementCursor onPlacement = placementCursorAt(x, y);
  if (onPlacement != PlacementCursor::None) return cursorFor(onPlacement);
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
