#pragma once

namespace quillmere {

// Renders the pane's page at its zoom and rotation into its bitmap. Without a page, or without
// memory for it, the pane is left without a bitmap.
void renderPane(int pane);

// layoutPane with the top of the page showing, then renderPane.
void layoutAndRender(int pane);

// renderPane for a pane that is shown; a hidden one loses its bitmap, which is out of date.
void redrawPicture(int pane);

// layoutAndRender for a pane that is shown. A hidden one loses its bitmap, which is out of date;
// whatever shows the pane again renders it.
void refreshPicture(int pane);

}  // namespace quillmere
