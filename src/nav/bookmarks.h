#pragma once

namespace quillmere {

// Empties the navigation tree and fills it from the outline of the active pane's document.
void RebuildNavigationTree();

// Empties the navigation tree.
void ClearNavigationTree();

// True when the active pane's document has at least one bookmark at its top level.
bool documentHasBookmarks();

}  // namespace quillmere
