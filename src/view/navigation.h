#pragma once

#include <cstdint>

namespace quillmere {

// Turns a pane to a page, clamped to the document. `fromBottom` shows the bottom of a page that is
// taller than the pane. In Book both panes turn together.
void goToPage(int pane, std::int32_t index, bool fromBottom);

}  // namespace quillmere
