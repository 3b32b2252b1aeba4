#include "platform/tree.h"

#include <windows.h>

#include <commctrl.h>

#include <utility>

#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"

namespace quillmere::platform {
namespace {

HWND windowOf(Tree tree) {
  return tree == Tree::Navigation ? windowHandles.bookmarksTree : windowHandles.binderTree;
}

HTREEITEM itemOf(TreeRow row) {
  return reinterpret_cast<HTREEITEM>(row);
}

// Bypasses the subclass that watches the tree's keys: going through it can take ten times as long
// as inserting the row.
LRESULT sendToControl(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const auto control = reinterpret_cast<WNDPROC>(GetClassLongPtrW(window, GCLP_WNDPROC));
  return CallWindowProcW(control, window, message, wParam, lParam);
}

// The first visible row of a tree being updated; null if that is the tree's first row.
HTREEITEM rowsOnTop[2] = {};

HTREEITEM& rowOnTop(Tree tree) {
  return rowsOnTop[tree == Tree::Navigation ? 0 : 1];
}

// One row at a time is dragged.
struct DropMark {
  HTREEITEM row = nullptr;
  bool below = false;
  bool operator==(const DropMark&) const = default;
};
DropMark dropMark;

HTREEITEM nextRow(HWND window, UINT which, HTREEITEM row) {
  return reinterpret_cast<HTREEITEM>(
      SendMessageW(window, TVM_GETNEXTITEM, which, reinterpret_cast<LPARAM>(row)));
}

// If the first visible row is being removed, the one below takes its place, or else the one above.
void leaveTop(HWND window, Tree tree, HTREEITEM row) {
  if (rowOnTop(tree) != row) return;
  const HTREEITEM below = nextRow(window, TVGN_NEXTVISIBLE, row);
  rowOnTop(tree) = below != nullptr ? below : nextRow(window, TVGN_PREVIOUSVISIBLE, row);
}

void setItem(HWND window, const TVITEMW& item) {
  sendToControl(window, TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

void setState(Tree tree, TreeRow row, UINT state, bool on) {
  const HWND window = windowOf(tree);
  if (window == nullptr) return;
  TVITEMW item{};
  item.mask = TVIF_HANDLE | TVIF_STATE;
  item.hItem = itemOf(row);
  item.state = on ? state : 0;
  item.stateMask = state;
  setItem(window, item);
}

}  // namespace

void beginTreeUpdate(Tree tree) {
  const HWND window = windowOf(tree);
  if (window == nullptr) return;
  const HTREEITEM top = nextRow(window, TVGN_FIRSTVISIBLE, nullptr);
  rowOnTop(tree) = top == nextRow(window, TVGN_ROOT, nullptr) ? nullptr : top;
  SendMessageW(window, WM_SETREDRAW, FALSE, 0);
}

// Scrolls back, since expanding and inserting rows scroll the control.
void endTreeUpdate(Tree tree) {
  const HWND window = windowOf(tree);
  if (window == nullptr) return;
  HTREEITEM top = std::exchange(rowOnTop(tree), nullptr);
  if (top == nullptr) top = nextRow(window, TVGN_ROOT, nullptr);
  SendMessageW(window, WM_SETREDRAW, TRUE, 0);
  if (top != nullptr) {
    SendMessageW(window, TVM_SELECTITEM, TVGN_FIRSTVISIBLE, reinterpret_cast<LPARAM>(top));
  }
  InvalidateRect(window, nullptr, TRUE);
}

TreeRow topTreeRow(Tree tree) {
  const HWND window = windowOf(tree);
  if (window == nullptr) return kNoTreeRow;
  return reinterpret_cast<TreeRow>(nextRow(window, TVGN_FIRSTVISIBLE, nullptr));
}

void keepTreeRowOnTop(Tree tree, TreeRow row) {
  rowOnTop(tree) = itemOf(row);
}

void repaintTree(Tree tree) {
  if (windowOf(tree) != nullptr) InvalidateRect(windowOf(tree), nullptr, FALSE);
}

void clearTree(Tree tree) {
  const HWND window = windowOf(tree);
  if (window == nullptr) return;
  rowOnTop(tree) = nullptr;
  TreeView_DeleteAllItems(window);
}

TreeRow insertTreeRow(Tree tree, const TreePlace& place, const TreeRowContent& content) {
  const HWND window = windowOf(tree);
  if (window == nullptr) return kNoTreeRow;
  TVINSERTSTRUCTW insert{};
  insert.hParent = place.parent == kNoTreeRow ? TVI_ROOT : itemOf(place.parent);
  insert.hInsertAfter = place.previous == kNoTreeRow ? TVI_FIRST : itemOf(place.previous);
  insert.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_CHILDREN | TVIF_STATE;
  insert.item.state = content.bold ? TVIS_BOLD : 0;
  insert.item.stateMask = TVIS_BOLD;
  insert.item.pszText = const_cast<wchar_t*>(wide(content.text));
  insert.item.lParam = content.entry;
  insert.item.cChildren = content.expandable ? 1 : 0;
  return static_cast<TreeRow>(
      sendToControl(window, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
}

std::int32_t treeRowEntry(Tree tree, TreeRow row) {
  TVITEMW item{};
  item.mask = TVIF_HANDLE | TVIF_PARAM;
  item.hItem = itemOf(row);
  item.lParam = -1;
  const HWND window = windowOf(tree);
  if (window != nullptr && row != kNoTreeRow) {
    sendToControl(window, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
  }
  return static_cast<std::int32_t>(item.lParam);
}

void removeTreeRow(Tree tree, TreeRow row) {
  const HWND window = windowOf(tree);
  if (window == nullptr) return;
  leaveTop(window, tree, itemOf(row));
  sendToControl(window, TVM_DELETEITEM, 0, reinterpret_cast<LPARAM>(itemOf(row)));
}

void setTreeRowText(Tree tree, TreeRow row, const std::u16string& text) {
  const HWND window = windowOf(tree);
  if (window == nullptr) return;
  TVITEMW item{};
  item.mask = TVIF_HANDLE | TVIF_TEXT;
  item.hItem = itemOf(row);
  item.pszText = const_cast<wchar_t*>(wide(text));
  setItem(window, item);
}

void setTreeRowExpandable(Tree tree, TreeRow row, bool expandable) {
  const HWND window = windowOf(tree);
  if (window == nullptr) return;
  TVITEMW item{};
  item.mask = TVIF_HANDLE | TVIF_CHILDREN;
  item.hItem = itemOf(row);
  item.cChildren = expandable ? 1 : 0;
  setItem(window, item);
}

void expandTreeRow(Tree tree, TreeRow row) {
  const HWND window = windowOf(tree);
  if (window != nullptr) {
    SendMessageW(window, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(itemOf(row)));
  }
}

void collapseTreeRow(Tree tree, TreeRow row) {
  const HWND window = windowOf(tree);
  if (window != nullptr) {
    SendMessageW(window, TVM_EXPAND, TVE_COLLAPSE, reinterpret_cast<LPARAM>(itemOf(row)));
  }
}

void setTreeRowBold(Tree tree, TreeRow row, bool bold) {
  setState(tree, row, TVIS_BOLD, bold);
}

void setTreeRowDimmed(Tree tree, TreeRow row, bool dimmed) {
  setState(tree, row, TVIS_CUT, dimmed);
}

TreeRow selectedTreeRow(Tree tree) {
  const HWND window = windowOf(tree);
  if (window == nullptr) return kNoTreeRow;
  return reinterpret_cast<TreeRow>(nextRow(window, TVGN_CARET, nullptr));
}

void selectTreeRow(Tree tree, TreeRow row) {
  const HWND window = windowOf(tree);
  if (window == nullptr) return;
  SendMessageW(window, TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(itemOf(row)));
}

void editTreeRow(Tree tree, TreeRow row) {
  const HWND window = windowOf(tree);
  if (window == nullptr) return;
  SetFocus(window);
  SendMessageW(window, TVM_EDITLABELW, 0, reinterpret_cast<LPARAM>(itemOf(row)));
}

// The mark reaches into the neighbouring row, and the control repaints only one of them.
void markTreeDrop(Tree tree, TreeRow row, bool below) {
  const HWND window = windowOf(tree);
  const DropMark wanted{itemOf(row), below};
  if (window == nullptr || dropMark == wanted) return;
  dropMark = wanted;
  SendMessageW(window, TVM_SETINSERTMARK, below ? TRUE : FALSE,
               reinterpret_cast<LPARAM>(wanted.row));
  InvalidateRect(window, nullptr, TRUE);
}

void clearTreeDropMark(Tree tree) {
  const HWND window = windowOf(tree);
  if (window == nullptr || std::exchange(dropMark, {}).row == nullptr) return;
  SendMessageW(window, TVM_SETINSERTMARK, FALSE, 0);
  InvalidateRect(window, nullptr, TRUE);
}

}  // namespace quillmere::platform
