#pragma once

namespace quillmere {

// Renders the pane's page at its zoom and rotation into its bitmap. Without a page, or without
// memory for it, the pane is left without a bitmap.
void renderPane(int pane);

// layoutPane with the top of the page showing, then renderPane.
void layoutAndRender(int pane);

}  // namespace quillmere
