#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace quillmere {

// One row of a menu as the window shows it.
struct MenuRow {
  std::uint32_t command = 0;  // 0 for a separator and for a submenu
  std::u16string text;        // empty for a separator
  bool enabled = true;
  bool checked = false;
  std::vector<MenuRow> submenu;

  bool separator() const { return command == 0 && text.empty(); }
};

// Shows the rows as a menu at a place on the screen, in pixels, and waits. The command of the row
// that the user chose; 0 for none. The main window holds back other opens meanwhile.
std::uint32_t chooseFromMenu(const std::vector<MenuRow>& rows, int x, int y);

}  // namespace quillmere
