#pragma once

#include <fpdf_doc.h>

#include <cstdint>

#include "platform/tree.h"

// The navigation tree: the outline of the active pane's document.
namespace quillmere {

// Empties the tree and fills it from the outline of the active pane's document.
void RebuildNavigationTree();

// Empties the tree.
void ClearNavigationTree();

// Appends `first` and its following siblings below a row, each with all that lies below it. An
// outline that refers back to itself is shown once.
void AddBookmarkLevel(platform::TreeRow parent, FPDF_BOOKMARK first);

// Looks up where every entry leads, and notes it in the list in tree order.
void ResolveBookmarks();

// Shows what an entry of the tree leads to; without effect for entries that lead nowhere.
void JumpToTreeEntry(std::int32_t index);

// True when the active pane's document has at least one bookmark at its top level.
bool documentHasBookmarks();

}  // namespace quillmere
