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

TreeRow appendTreeRow(TreeRow parent, const std::u16string& text, std::int32_t entry) {
  if (tree() == nullptr) return kNoTreeRow;
  TVINSERTSTRUCTW insert{};
  insert.hParent = parent == kNoTreeRow ? TVI_ROOT : itemOf(parent);
  insert.hInsertAfter = TVI_LAST;
  insert.item.mask = TVIF_TEXT | TVIF_PARAM;
  insert.item.pszText = const_cast<wchar_t*>(wide(text));
  insert.item.lParam = entry;
  return static_cast<TreeRow>(
      SendMessageW(tree(), TVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&insert)));
}

void showTreeRowExpandable(TreeRow row) {
  if (tree() == nullptr) return;
  TVITEMW item{};
  item.mask = TVIF_HANDLE | TVIF_CHILDREN;
  item.hItem = itemOf(row);
  item.cChildren = 1;
  SendMessageW(tree(), TVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
}

void expandTreeRow(TreeRow row) {
  if (tree() != nullptr) {
    SendMessageW(tree(), TVM_EXPAND, TVE_EXPAND, reinterpret_cast<LPARAM>(itemOf(row)));
  }
}

}  // namespace quillmere::platform
