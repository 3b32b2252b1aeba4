#pragma once

#include "base/page_box.h"

namespace quillmere {

// Pans so that a box on the pane's page is in the middle of the pane; does nothing when the box is
// well in view already.
void scrollIntoView(int pane, const PageBox& box);

// Moves the page by so many pixels and keeps a part of it in sight. A file can name places that are
// farther away than a pan can tell, so the distance is bounded.
void movePageInSight(int pane, double dx, double dy);

}  // namespace quillmere
