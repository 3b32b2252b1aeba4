#pragma once

#include <cstdint>
#include <optional>

#include "platform/tree.h"
#include "session/markup_tree.h"

// The Markups group of the navigation tree: either below a root of its own, or each markup below
// the bookmark that stands last before it.
namespace quillmere {

// Makes the root behind a row of the top level. Its rows come when it is expanded first.
void addMarkupsRoot(platform::TreeRow previous);

// Brings the rows below the root up to date with the markups of the active pane's document.
void FillMarkupsRoot();

// The same for the form without headings. Markups before the first bookmark stand at the top of the
// tree, and without bookmarks below a root, which is there as long as there are markups.
void FillMarkupsUnderBookmarks();

// Shows the markups below bookmarks, where that is the form and the panel is shown, unless they are
// already.
void showMarkupsUnderBookmarks();

// Brings what is shown of the group up to date after a change of the list.
void updateMarkupRows();

// The markup that a row of the tree stands for; nothing for other rows.
std::optional<MarkupNode> markupNodeOf(std::int32_t entry);

}  // namespace quillmere
