#pragma once

#include "base/page_box.h"

namespace quillmere {

// Pans so that a box on the pane's page is in the middle of the pane; does nothing when the box is
// well in view already.
void scrollIntoView(int pane, const PageBox& box);

}  // namespace quillmere
