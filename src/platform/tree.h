#pragma once

#include <cstdint>
#include <string>

// The navigation tree of the left panel. Without the main window nothing is shown, rows still get
// their numbers.
namespace quillmere::platform {

// A row of the tree; kNoTreeRow stands for the top level as a parent.
using TreeRow = std::uintptr_t;
inline constexpr TreeRow kNoTreeRow = 0;

// Between the two nothing is repainted, so that thousands of rows come in one go.
void beginTreeUpdate();
void endTreeUpdate();

void clearTree();

// Appends a row below `parent`. `entry` comes back when the row is chosen; -1 for a row that leads
// nowhere.
TreeRow appendTreeRow(TreeRow parent, const std::u16string& text, std::int32_t entry);

// Shows that the row has rows below it although there are none yet.
void showTreeRowExpandable(TreeRow row);
void expandTreeRow(TreeRow row);

}  // namespace quillmere::platform
