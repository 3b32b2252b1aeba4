#pragma once

#include <cstdint>

namespace quillmere {

// Opens the document of an item of the binder tree: binder index in the high 16 bits of `itemData`,
// file index in the low ones. With `otherPaneCounts`, a file in the other pane counts as shown.
void openBinderEntry(std::uint32_t itemData, bool askBeforeReplace, bool otherPaneCounts);

}  // namespace quillmere
