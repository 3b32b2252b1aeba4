#include "platform/tree.h"

#include <windows.h>

#include <commctrl.h>

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

}  // namespace

void beginTreeUpdate(Tree tree) {
  const HWND window = windowOf(tree);
  if (window != nullptr) SendMessageW(window, WM_SETREDRAW, FALSE, 0);
}

void endTreeUpdate(Tree tree) {
  const HWND window = windowOf(tree);
  if (window == nullptr) return;
  SendMessageW(window, WM_SETREDRAW, TRUE, 0);
  InvalidateRect(window, nullptr, TRUE);
}

void clearTree(Tree tree) {
  const HWND window = windowOf(tree);
  if (window != nullptr) TreeView_DeleteAllItems(window);
}

TreeRow insertTreeRow(Tree tree, const TreePlace& place, const TreeRowContent& content) {
  const HWND window = windowOf(tree);
  if (window == nullptr) return kNoTreeRow;
  TVINSERTSTRUCTW insert{};
  insert.hParent = place.parent == kNoTreeRow ? TVI_ROOT : itemOf(place.parent);
  insert.hInsertAfter = place.previous == kNoTreeRow ? TVI_FIRST : itemOf(place.previous);
  insert.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_CHILDREN;
  insert.item.pszText = const_cast<wchar_t*>(wide(content.text));
  insert.item.lParam = content.entry;
  insert.item.cChildren = content.expandable ? 1 : 0;
  return static_cast<TreeRow>(
      sendToControl(window, TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
}

void expandTreeRow(Tree tree, TreeRow row) {
  const HWND window = windowOf(tree);
  if (window != nullptr) {
    SendMessageW(window, TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(itemOf(row)));
  }
}

}  // namespace quillmere::platform
