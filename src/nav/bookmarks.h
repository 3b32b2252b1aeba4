#pragma once

#include <fpdf_doc.h>

#include <cstdint>

#include "platform/tree.h"

// The navigation tree: the outline of the active pane's document, and its markups, which
// nav/markup_tree.h adds.
namespace quillmere {

// Empties the tree and fills it from the outline of the active pane's document. Rows below another
// are added when that one is expanded.
void RebuildNavigationTree();

// Empties the tree.
void ClearNavigationTree();

// Adds the outline's `first` item and its following siblings to the list of entries, each with all
// that lies below it, and shows them as the rows of `parent`. An outline that refers back to itself
// is shown once.
void AddBookmarkLevel(platform::TreeRow parent, FPDF_BOOKMARK first);

// Adds the rows right below an entry's row, which is about to be expanded; for the root of the
// markups it collects these first. Does nothing when the rows are there, for an entry with none,
// and for an entry that has no row itself.
void FillTreeEntry(std::int32_t index);

// Looks up where every entry leads, those without a row included, and notes it in the list in tree
// order.
void ResolveBookmarks();

// Shows what an entry of the tree leads to; does nothing for entries that lead nowhere.
void JumpToTreeEntry(std::int32_t index);

// True when the active pane's document has at least one bookmark at its top level.
bool documentHasBookmarks();

}  // namespace quillmere
