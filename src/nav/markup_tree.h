#pragma once

#include <cstdint>
#include <optional>

#include "platform/tree.h"
#include "session/markup_tree.h"

// The Markups group of the navigation tree: either below a root of its own, or each markup below
// the last bookmark before it.
namespace quillmere {

// Adds the root after a row of the top level. Its own rows are added when it is first expanded.
void addMarkupsRoot(platform::TreeRow previous);

// Updates the rows below the root from the markups of the active pane's document.
void FillMarkupsRoot();

// The same for the form without headings. Markups before the first bookmark go at the top of the
// tree; without bookmarks all go below a root, which is there as long as there are markups.
void FillMarkupsUnderBookmarks();

// Whether markups belong below bookmarks and are not shown yet: that is the form, the panel is
// shown, and a document is open.
bool markupRowsWait();

// Shows them if so.
void showMarkupsUnderBookmarks();

// Updates the rows that the group shows after a change of the list.
void updateMarkupRows();

// The markup that a row of the tree stands for; nullopt for other rows.
std::optional<MarkupNode> markupNodeOf(std::int32_t entry);

}  // namespace quillmere
