#include <windows.h>

#include "app/commands.h"
#include "app/menu_bar.h"
#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"
#include "ui/popup_menu_window.h"

namespace quillmere {

using platform::windowHandles;

namespace {

constexpr int kFileMenuPosition = 0;

void refillMenu(HMENU menu, const std::vector<MenuRow>& rows) {
  while (GetMenuItemCount(menu) > 0) DeleteMenu(menu, 0, MF_BYPOSITION);
  windowHandles.menuItems.clear();
  appendMenuRows(menu, rows);
}

}  // namespace

void installMenuBar() {
  const HMENU bar = CreateMenu();
  for (const MenuBarEntry& entry : menuBar()) {
    const HMENU popup = CreatePopupMenu();
    appendMenuRows(popup, entry.rows);
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
  POINT point{x, y};
  ClientToScreen(windowHandles.main, &point);
  const std::uint32_t chosen = chooseFromMenu(rows, point.x, point.y);
  if (chosen != 0) runCommand(chosen);
}

}  // namespace quillmere
