#pragma once

#include <vector>

#include "ui/popup_menu.h"

struct HMENU__;

namespace quillmere {

// Adds the rows to the end of a menu.
void appendMenuRows(HMENU__* menu, const std::vector<MenuRow>& rows);

}  // namespace quillmere
