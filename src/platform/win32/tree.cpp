#include "platform/tree.h"

#include <windows.h>

#include <commctrl.h>

#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"

namespace quillmere::platform {
namespace {

HWND tree() {
  return windowHandles.bookmarksTree;
}

HTREEITEM itemOf(TreeRow row) {
  return reinterpret_cast<HTREEITEM>(row);
}

// Past the subclass that watches the tree's keys: on its way through that, a message can take ten
// times as long as the row itself.
LRESULT sendToControl(UINT message, WPARAM wParam, LPARAM lParam) {
  const auto control = reinterpret_cast<WNDPROC>(GetClassLongPtrW(tree(), GCLP_WNDPROC));
  return CallWindowProcW(control, tree(), message, wParam, lParam);
}

}  // namespace

void beginTreeUpdate() {
  if (tree() != nullptr) SendMessageW(tree(), WM_SETREDRAW, FALSE, 0);
}

void endTreeUpdate() {
  if (tree() == nullptr) return;
  SendMessageW(tree(), WM_SETREDRAW, TRUE, 0);
  InvalidateRect(tree(), nullptr, TRUE);
}

void clearTree() {
  if (tree() != nullptr) TreeView_DeleteAllItems(tree());
}

TreeRow insertTreeRow(const TreePlace& place, const TreeRowContent& content) {
  if (tree() == nullptr) return kNoTreeRow;
  TVINSERTSTRUCTW insert{};
  insert.hParent = place.parent == kNoTreeRow ? TVI_ROOT : itemOf(place.parent);
  insert.hInsertAfter = place.previous == kNoTreeRow ? TVI_FIRST : itemOf(place.previous);
  insert.item.mask = TVIF_TEXT | TVIF_PARAM | TVIF_CHILDREN;
  insert.item.pszText = const_cast<wchar_t*>(wide(content.text));
  insert.item.lParam = content.entry;
  insert.item.cChildren = content.expandable ? 1 : 0;
  return static_cast<TreeRow>(sendToControl(TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
}

void expandTreeRow(TreeRow row) {
  if (tree() != nullptr) {
    SendMessageW(tree(), TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(itemOf(row)));
  }
}

}  // namespace quillmere::platform
