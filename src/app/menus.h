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

struct MenuBarEntry {
  std::u16string title;
  std::vector<MenuRow> rows;
};

// The whole menu bar in its present state.
std::vector<MenuBarEntry> menuBar();

// The File menu, rebuilt each time it opens since its recent documents change.
std::vector<MenuRow> fileMenu();

// The menu for a right click at client x and y in a pane that shows a page. The markup there must
// have been picked before.
std::vector<MenuRow> contextMenu(int pane, int x, int y);

}  // namespace quillmere
