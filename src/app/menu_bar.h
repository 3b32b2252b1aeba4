#pragma once

#include <vector>

#include "app/menus.h"

namespace quillmere {

// Creates the menu bar of the main window.
void installMenuBar();

// Fills the popup again if it is the File menu, and updates the states of all menus. `popup` is the
// window system's handle.
void refreshPopup(const void* popup);

// Shows the rows as a menu at client x and y and runs the command that the user chooses.
void showContextMenu(const std::vector<MenuRow>& rows, int x, int y);

}  // namespace quillmere
