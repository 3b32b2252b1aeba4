#pragma once

#include <cstdint>
#include <string>

// The two trees of the left panel. Without the main window nothing is shown, and the rows returned
// mean nothing.
namespace quillmere::platform {

enum class Tree { Navigation, Binders };

// A row of a tree; kNoTreeRow stands for the top level as a parent.
using TreeRow = std::uintptr_t;
inline constexpr TreeRow kNoTreeRow = 0;

// Nothing is repainted between the two calls, so that thousands of rows can be added at once.
// Afterwards the first visible row is the same as before, if it still exists; a tree that was not
// scrolled stays at its first row.
void beginTreeUpdate(Tree tree);
void endTreeUpdate(Tree tree);

// The first visible row. During an update, `keepTreeRowOnTop` names the row that is to be on top
// after it, in place of the one that was when it began.
TreeRow topTreeRow(Tree tree);
void keepTreeRowOnTop(Tree tree, TreeRow row);

// Paints all visible rows again.
void repaintTree(Tree tree);

void clearTree(Tree tree);

// What a row shows and refers to.
struct TreeRowContent {
  std::u16string text;
  std::int32_t entry = -1;  // reported when the row is chosen; -1 for a row without a target
  bool expandable = false;  // has rows below it, even if there are none yet
  bool bold = false;
};

// Where a row goes: after the row `previous` of the same parent, or first for kNoTreeRow. Naming
// the last row keeps long levels fast, because the control need not search for it.
struct TreePlace {
  TreeRow parent = kNoTreeRow;
  TreeRow previous = kNoTreeRow;
};

TreeRow insertTreeRow(Tree tree, const TreePlace& place, const TreeRowContent& content);

// The row's `TreeRowContent::entry`; -1 for kNoTreeRow.
std::int32_t treeRowEntry(Tree tree, TreeRow row);

// Removes a row that has none below it. If it was selected, the control selects a neighbour.
void removeTreeRow(Tree tree, TreeRow row);

void setTreeRowText(Tree tree, TreeRow row, const std::u16string& text);

// Sets whether the row can be expanded, as `TreeRowContent::expandable`.
void setTreeRowExpandable(Tree tree, TreeRow row, bool expandable);

// Does nothing for a row that is expanded already or has nothing below it.
void expandTreeRow(Tree tree, TreeRow row);
// Hides the rows below it, which stay.
void collapseTreeRow(Tree tree, TreeRow row);

void setTreeRowBold(Tree tree, TreeRow row, bool bold);
// Sets whether the row is drawn as one that was cut.
void setTreeRowDimmed(Tree tree, TreeRow row, bool dimmed);

// The selected row; kNoTreeRow for none. Selecting a row scrolls it into view.
TreeRow selectedTreeRow(Tree tree);
void selectTreeRow(Tree tree, TreeRow row);

// Gives the keyboard to the tree and starts the in-place edit of the row's text.
void editTreeRow(Tree tree, TreeRow row);

// Draws a line below the row, or above it, that shows where something will be dropped.
void markTreeDrop(Tree tree, TreeRow row, bool below);
void clearTreeDropMark(Tree tree);

}  // namespace quillmere::platform
