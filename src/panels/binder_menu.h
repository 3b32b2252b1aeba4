#pragma once

#include <cstdint>
#include <vector>

#include "session/binder_tree.h"
#include "ui/popup_menu.h"

namespace quillmere {

// The menu for a right click on this row; on a row of no kind that for the empty space below. Rows
// that act at once have none.
std::vector<MenuRow> binderMenu(const BinderRow& row);

// Runs what the user chose in it.
void runBinderMenu(const BinderRow& row, std::uint32_t command);

// A right click at a place on the screen, in pixels, on the row with this value; -1 for none.
void ShowBinderContextMenu(int x, int y, std::int32_t item);

}  // namespace quillmere
