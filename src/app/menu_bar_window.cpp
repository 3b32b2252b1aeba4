#include <windows.h>

#include "app/commands.h"
#include "app/menu_bar.h"
#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"

namespace quillmere {

using platform::windowHandles;

namespace {

constexpr int kFileMenuPosition = 0;

void appendRows(HMENU menu, const std::vector<MenuRow>& rows) {
  for (const MenuRow& row : rows) {
    if (row.separator()) {
      AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
      continue;
    }
    UINT flags = MF_STRING;
    if (!row.enabled) flags |= MF_GRAYED;
    if (row.checked) flags |= MF_CHECKED;
    UINT_PTR target = row.command;
    if (!row.submenu.empty()) {
      const HMENU submenu = CreatePopupMenu();
      appendRows(submenu, row.submenu);
      flags |= MF_POPUP;
      target = reinterpret_cast<UINT_PTR>(submenu);
    }
    AppendMenuW(menu, flags, target, platform::wide(row.text));
  }
}

void refillMenu(HMENU menu, const std::vector<MenuRow>& rows) {
  while (GetMenuItemCount(menu) > 0) DeleteMenu(menu, 0, MF_BYPOSITION);
  windowHandles.menuItems.clear();
  appendRows(menu, rows);
}

}  // namespace

void installMenuBar() {
  const HMENU bar = CreateMenu();
  for (const MenuBarEntry& entry : menuBar()) {
    const HMENU popup = CreatePopupMenu();
    appendRows(popup, entry.rows);
    AppendMenuW(bar, MF_POPUP, reinterpret_cast<UINT_PTR>(popup), platform::wide(entry.title));
  }
  SetMenu(windowHandles.main, bar);
  windowHandles.menuItems.clear();
}

void refreshPopup(const void* popup) {
  const HMENU file = GetSubMenu(GetMenu(windowHandles.main), kFileMenuPosition);
  if (popup == file) refillMenu(file, fileMenu());
  refreshMenus();
}

void showContextMenu(const std::vector<MenuRow>& rows, int x, int y) {
  if (rows.empty()) return;
  const HMENU menu = CreatePopupMenu();
  appendRows(menu, rows);
  POINT point{x, y};
  ClientToScreen(windowHandles.main, &point);
  const BOOL chosen = TrackPopupMenu(menu, TPM_RIGHTBUTTON | TPM_RETURNCMD, point.x, point.y, 0,
                                     windowHandles.main, nullptr);
  DestroyMenu(menu);
  if (chosen != 0) runCommand(static_cast<std::uint32_t>(chosen));
}

}  // namespace quillmere
