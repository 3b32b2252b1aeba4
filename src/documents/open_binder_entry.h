#pragma once

#include <cstdint>

namespace quillmere {

// Opens what an item of the binder tree stands for: binder index in the high 16 bits of `itemData`,
// file index in the low ones. With `otherPaneCounts`, a file that the other pane shows counts as
// shown.
void openBinderEntry(std::uint32_t itemData, bool askBeforeReplace, bool otherPaneCounts);

}  // namespace quillmere
