#include "panels/binder_panel_window.h"

#include <windows.h>

#include <commctrl.h>
#include <windowsx.h>

#include <algorithm>
#include <string>

#include "panels/binder_choices.h"
#include "panels/binder_drag.h"
#include "panels/binder_menu.h"
#include "panels/binder_panel.h"
#include "panels/binder_rows.h"
#include "platform/keyboard.h"
#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"
#include "session/density.h"

namespace quillmere {

using platform::windowHandles;

namespace {

using Result = std::optional<std::intptr_t>;

constexpr UINT_PTR kSubclass = 0xB1;
constexpr std::int32_t kNoRow = -1;
constexpr int kTextMargin = 2;  // pixels of the control between a row's edge and its text
constexpr int kPlusSize = 8;    // pixels
constexpr int kPlusBar = 2;     // pixels

HWND tree() {
  return windowHandles.binderTree;
}

std::int32_t valueOf(HTREEITEM item) {
  return platform::treeRowEntry(kBinderTree, reinterpret_cast<platform::TreeRow>(item));
}

std::int32_t valueOf(const TVITEMW& item) {
  return item.hItem == nullptr ? kNoRow : static_cast<std::int32_t>(item.lParam);
}

bool hasPlusSign(std::int32_t value) {
  const BinderRowKind kind = binderRowOf(value).kind;
  return kind == BinderRowKind::NewBinder || kind == BinderRowKind::AddDocument;
}

// The row whose text, or the place of its icon, is at this point of the tree; null for none.
HTREEITEM rowAt(POINT point) {
  TVHITTESTINFO hit{};
  hit.pt = point;
  const HTREEITEM row = TreeView_HitTest(tree(), &hit);
  return (hit.flags & TVHT_ONITEM) != 0 ? row : nullptr;
}

POINT inTree(POINT screen) {
  ScreenToClient(tree(), &screen);
  return screen;
}

// The control reports a click when the button comes up, and by then the pointer may be elsewhere or
// the rows may have scrolled.
std::int32_t pressedRow = kNoRow;

void notePress(LPARAM place) {
  pressedRow = valueOf(rowAt({GET_X_LPARAM(place), GET_Y_LPARAM(place)}));
}

// Drags

bool givingMouseBack = false;  // the drag ends in a drop, so losing the mouse does not cancel it

// Anywhere beside a row's text counts as that row.
BinderDragTarget targetAt(POINT point) {
  RECT client{};
  GetClientRect(tree(), &client);
  BinderDragTarget target;
  target.pointerY = point.y;
  if (!PtInRect(&client, point)) return target;
  TVHITTESTINFO hit{};
  hit.pt = point;
  const HTREEITEM row = TreeView_HitTest(tree(), &hit);
  RECT place{};
  if (row == nullptr || !TreeView_GetItemRect(tree(), row, &place, FALSE)) return target;
  target.value = valueOf(row);
  target.top = place.top;
  target.bottom = place.bottom;
  return target;
}

void followDrag(POINT point) {
  const bool allowed = moveBinderDrag(targetAt(point));
  SetCursor(LoadCursorW(nullptr, allowed ? IDC_ARROW : IDC_NO));
}

// A move in the first or the last visible row scrolls by one row.
void scrollAtEdge(POINT point) {
  RECT client{};
  GetClientRect(tree(), &client);
  const int rowHeight = TreeView_GetItemHeight(tree());
  if (point.y >= client.top + rowHeight && point.y < client.bottom - rowHeight) return;
  platform::clearTreeDropMark(kBinderTree);
  SendMessageW(tree(), WM_VSCROLL, point.y < client.top + rowHeight ? SB_LINEUP : SB_LINEDOWN, 0);
}

void moveDrag(POINT point) {
  static POINT last{};
  // The system repeats moves when something under the pointer changes.
  if (point.x != last.x || point.y != last.y) scrollAtEdge(point);
  last = point;
  followDrag(point);
}

void turnWheelInDrag(WPARAM wParam, LPARAM lParam) {
  platform::clearTreeDropMark(kBinderTree);
  DefSubclassProc(tree(), WM_MOUSEWHEEL, wParam, lParam);
  followDrag(inTree({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}));
}

void drop() {
  givingMouseBack = true;
  ReleaseCapture();
  givingMouseBack = false;
  dropBinderDrag();
}

// Nothing but the drag gets these messages.
bool handledByDrag(UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_MOUSEMOVE:
      moveDrag({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
      return true;
    case WM_MOUSEWHEEL:
      turnWheelInDrag(wParam, lParam);
      return true;
    case WM_LBUTTONUP:
      drop();
      return true;
    case WM_RBUTTONUP:
      ReleaseCapture();
      return true;
    case WM_KEYDOWN:
      if (wParam == VK_ESCAPE) ReleaseCapture();
      return true;
    case WM_CHAR:
    case WM_LBUTTONDOWN:
    case WM_RBUTTONDOWN:
      return true;
    case WM_CAPTURECHANGED:
      if (!givingMouseBack) cancelBinderDrag();
      return true;
    default:
      return false;
  }
}

// Keys

bool handleTreeKey(WPARAM key) {
  switch (key) {
    case VK_RETURN:
      enterOnBinderRow();
      return true;
    case VK_DELETE:
      deleteOnBinderRow(platform::shiftDown());
      return true;
    case VK_PRIOR:
    case VK_NEXT:
      if (platform::controlDown()) return false;
      moveToBinderSibling(key == VK_NEXT);
      return true;
    default:
      return false;
  }
}

// The keyboard asks for the menu of the selected row.
void showMenuByKey() {
  const HTREEITEM row = TreeView_GetSelection(tree());
  if (row != nullptr) TreeView_EnsureVisible(tree(), row);
  RECT place{};
  if (row == nullptr || !TreeView_GetItemRect(tree(), row, &place, TRUE)) return;
  POINT point{place.left, place.bottom};
  ClientToScreen(tree(), &point);
  ShowBinderContextMenu(point.x, point.y, valueOf(row));
}

// Shift+F10 stands for the menu key. Not every system makes that of it.
bool isMenuShortcut(UINT message, WPARAM key) {
  const bool down = message == WM_KEYDOWN || message == WM_SYSKEYDOWN;
  return down && key == VK_F10 && platform::shiftDown();
}

// The only child window that a tree creates is the field for editing a name.
void followNameField(WORD event) {
  static std::optional<BinderTreeGuard> guard;
  if (event == WM_CREATE) guard.emplace();
  if (event == WM_DESTROY) guard.reset();
}

LRESULT CALLBACK binderTreeProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                     UINT_PTR, DWORD_PTR) {
  const BinderTreeGuard guard;
  if (draggingBinderRow() && handledByDrag(message, wParam, lParam)) return 0;
  if (isMenuShortcut(message, wParam)) {
    showMenuByKey();
    return 0;
  }
  switch (message) {
    case WM_LBUTTONDOWN:
      notePress(lParam);
      pressBinderTree();
      break;
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_RBUTTONDBLCLK:
      notePress(lParam);
      break;
    case WM_KEYDOWN:
      if (handleTreeKey(wParam)) return 0;
      break;
    case WM_CHAR:
      if (wParam == VK_RETURN) return 0;
      break;
    case WM_CONTEXTMENU:
      if (lParam == -1) showMenuByKey();
      return 0;
    case WM_PARENTNOTIFY:
      followNameField(LOWORD(wParam));
      break;
    case WM_SETFOCUS: {
      const OwnTreeChange own;
      return DefSubclassProc(window, message, wParam, lParam);
    }
    default:
      break;
  }
  return DefSubclassProc(window, message, wParam, lParam);
}

// Reports of the control

Result onSelectionChanging(const NMTREEVIEWW& change) {
  return mayMoveBinderSelection(valueOf(change.itemNew)) ? FALSE : TRUE;
}

Result onSelectionChanged(const NMTREEVIEWW& change) {
  const bool byUser = change.action == TVC_BYMOUSE || change.action == TVC_BYKEYBOARD;
  binderSelectionMoved(valueOf(change.itemNew), byUser);
  return 0;
}

Result onClick() {
  if (pressedRow == kNoRow) return 0;
  clickBinderRow(pressedRow, pressedRow == valueOf(TreeView_GetSelection(tree())));
  return 0;
}

Result onRightClick() {
  const DWORD pointer = GetMessagePos();
  ShowBinderContextMenu(GET_X_LPARAM(pointer), GET_Y_LPARAM(pointer), pressedRow);
  return 1;
}

Result onExpanding(const NMTREEVIEWW& change) {
  if (change.action == TVE_EXPAND) fillBinderHead(valueOf(change.itemNew));
  return 0;
}

Result onExpanded(const NMTREEVIEWW& change) {
  if (change.action == TVE_EXPAND || change.action == TVE_COLLAPSE) {
    binderHeadToggled(valueOf(change.itemNew), change.action == TVE_COLLAPSE);
  }
  return 0;
}

Result onEditBegins(const NMTVDISPINFOW& edit) {
  return mayRenameBinderRow(valueOf(edit.item)) ? FALSE : TRUE;
}

bool cancellingEdit = false;

Result onEditEnds(const NMTVDISPINFOW& edit) {
  if (cancellingEdit || edit.item.pszText == nullptr) return FALSE;
  const std::u16string typed = platform::fromWide(edit.item.pszText);
  return finishBinderRowRename(valueOf(edit.item), typed) ? TRUE : FALSE;
}

Result onDragBegins(const NMTREEVIEWW& drag) {
  if (!startBinderDrag(valueOf(drag.itemNew))) return 0;
  SetFocus(tree());
  SetCapture(tree());
  followDrag(drag.ptDrag);
  return 0;
}

Result onTip(const NMTVGETINFOTIPW& tip) {
  const std::u16string text = binderRowTip(static_cast<std::int32_t>(tip.lParam));
  if (tip.cchTextMax > 0) lstrcpynW(tip.pszText, platform::wide(text), tip.cchTextMax);
  return 0;
}

// Drawing

// Dimmed rows are grey, except on the selection's colour.
Result beforeRow(NMTVCUSTOMDRAW& draw, std::int32_t value) {
  if (hasPlusSign(value)) return CDRF_NOTIFYPOSTPAINT;
  if (!binderRowDimmed(value) || (draw.nmcd.uItemState & CDIS_SELECTED) != 0) {
    return CDRF_DODEFAULT;
  }
  draw.clrText = GetSysColor(COLOR_GRAYTEXT);
  return CDRF_NEWFONT;
}

// Where the plus sign of a row's text stands.
RECT plusCell(HDC dc, const RECT& text) {
  const auto font = reinterpret_cast<HGDIOBJ>(SendMessageW(tree(), WM_GETFONT, 0, 0));
  const HGDIOBJ before = SelectObject(dc, font);
  SIZE size{};
  GetTextExtentPoint32W(dc, L"\u2795", 1, &size);
  SelectObject(dc, before);
  const LONG left = text.left + kTextMargin;
  return {left, text.top + 1, left + size.cx, text.bottom - 1};
}

void fill(HDC dc, const RECT& rect, COLORREF color) {
  SetDCBrushColor(dc, color);
  FillRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

// Not every system has a font with this sign.
void drawPlus(const NMCUSTOMDRAW& draw) {
  RECT text{};
  const auto row = reinterpret_cast<HTREEITEM>(draw.dwItemSpec);
  if (!TreeView_GetItemRect(tree(), row, &text, TRUE)) return;
  const bool selected = (draw.uItemState & CDIS_SELECTED) != 0 && GetFocus() == tree();
  const COLORREF color = GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT);
  const RECT cell = plusCell(draw.hdc, text);
  const LONG middle = (cell.top + cell.bottom) / 2;
  const LONG centre = (cell.left + cell.right) / 2;
  const LONG half = scaled(kPlusSize) / 2;
  const LONG bar = scaled(kPlusBar) / 2;
  fill(draw.hdc, cell, GetPixel(draw.hdc, text.left + 1, middle));
  fill(draw.hdc, {centre - half, middle - bar, centre + half, middle + bar}, color);
  fill(draw.hdc, {centre - bar, middle - half, centre + bar, middle + half}, color);
}

Result onDraw(NMTVCUSTOMDRAW& draw) {
  const auto value = static_cast<std::int32_t>(draw.nmcd.lItemlParam);
  switch (draw.nmcd.dwDrawStage) {
    case CDDS_PREPAINT:
      return CDRF_NOTIFYITEMDRAW;
    case CDDS_ITEMPREPAINT:
      return beforeRow(draw, value);
    case CDDS_ITEMPOSTPAINT:
      if (hasPlusSign(value)) drawPlus(draw.nmcd);
      return CDRF_DODEFAULT;
    default:
      return CDRF_DODEFAULT;
  }
}

}  // namespace

std::uint32_t binderTreeStyle() {
  return TVS_EDITLABELS | TVS_INFOTIP;
}

// While it is being cancelled, the field loses the keyboard, and some controls then report what was
// typed after all.
void cancelBinderEdit() {
  if (tree() == nullptr) return;
  cancellingEdit = true;
  TreeView_EndEditLabelNow(tree(), TRUE);
  cancellingEdit = false;
}

void watchBinderTree(HWND window) {
  SetWindowSubclass(window, binderTreeProcedure, kSubclass, 0);
}

std::optional<std::intptr_t> binderTreeReports(NMHDR& report) {
  switch (report.code) {
    case TVN_SELCHANGINGW:
      return onSelectionChanging(reinterpret_cast<const NMTREEVIEWW&>(report));
    case TVN_SELCHANGEDW:
      return onSelectionChanged(reinterpret_cast<const NMTREEVIEWW&>(report));
    case static_cast<UINT>(NM_CLICK):
      return onClick();
    case static_cast<UINT>(NM_RCLICK):
      return onRightClick();
    case TVN_ITEMEXPANDINGW:
      return onExpanding(reinterpret_cast<const NMTREEVIEWW&>(report));
    case TVN_ITEMEXPANDEDW:
      return onExpanded(reinterpret_cast<const NMTREEVIEWW&>(report));
    case TVN_BEGINLABELEDITW:
      return onEditBegins(reinterpret_cast<const NMTVDISPINFOW&>(report));
    case TVN_ENDLABELEDITW:
      return onEditEnds(reinterpret_cast<const NMTVDISPINFOW&>(report));
    case TVN_BEGINDRAGW:
      return onDragBegins(reinterpret_cast<const NMTREEVIEWW&>(report));
    case TVN_GETINFOTIPW:
      return onTip(reinterpret_cast<const NMTVGETINFOTIPW&>(report));
    case static_cast<UINT>(NM_CUSTOMDRAW):
      return onDraw(reinterpret_cast<NMTVCUSTOMDRAW&>(report));
    default:
      return std::nullopt;
  }
}

}  // namespace quillmere
