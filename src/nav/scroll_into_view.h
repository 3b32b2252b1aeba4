#pragma once

#include "base/page_box.h"

namespace quillmere {

// Pans so that the box of the pane's page stands in the middle of the pane; without effect when it
// is well in sight already.
void scrollIntoView(int pane, const PageBox& box);

}  // namespace quillmere
