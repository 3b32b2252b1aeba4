#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "ui/popup_menu.h"

namespace quillmere {

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
