#pragma once

namespace quillmere {

// The panels of a viewer once its document is open: no binders; bookmarks only when the document
// has some, in a narrower panel.
void arrangeViewerPanels();

}  // namespace quillmere
