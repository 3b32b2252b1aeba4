#pragma once

#include <vector>

#include "app/menus.h"

namespace quillmere {

// Makes the menu bar of the main window.
void installMenuBar();

// Fills the popup anew, when it is the File menu, and brings the states of all up to date. `popup`
// is the handle that the window system names.
void refreshPopup(const void* popup);

// Shows the rows as a menu at client x and y and runs the command that is chosen.
void showContextMenu(const std::vector<MenuRow>& rows, int x, int y);

}  // namespace quillmere
