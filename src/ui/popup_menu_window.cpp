#include <windows.h>

#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"
#include "ui/popup_menu_window.h"

namespace quillmere {

void appendMenuRows(HMENU menu, const std::vector<MenuRow>& rows) {
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
      appendMenuRows(submenu, row.submenu);
      flags |= MF_POPUP;
      target = reinterpret_cast<UINT_PTR>(submenu);
    }
    AppendMenuW(menu, flags, target, platform::wide(row.text));
  }
}

std::uint32_t chooseFromMenu(const std::vector<MenuRow>& rows, int x, int y) {
  if (rows.empty()) return 0;
  const HMENU menu = CreatePopupMenu();
  appendMenuRows(menu, rows);
  const BOOL chosen = TrackPopupMenu(menu, TPM_RIGHTBUTTON | TPM_RETURNCMD, x, y, 0,
                                     platform::windowHandles.main, nullptr);
  DestroyMenu(menu);
  return static_cast<std::uint32_t>(chosen);
}

}  // namespace quillmere
