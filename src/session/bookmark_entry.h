#pragma once

#include <cstdint>
#include <string>

#include "platform/tree.h"

namespace quillmere {

// One node of the navigation tree. Where a bookmark leads is looked up when it is asked for: the
// first look-up makes the engine walk the document's page tree.
struct BookmarkEntry {
  std::int32_t kind = 0;   // 0 for a bookmark
  std::int32_t level = 1;  // of its row, from 1; its descendants follow with higher levels
  std::int32_t page = -1;  // zero-based target; -1 without a destination
  bool hasY = false;
  double y = 0;  // vertical target in the page's own coordinates
  std::u16string title;
  // Its place in the document's outline, counted in the order of the tree; -1 for what is none of
  // its items. PDFium's handles do not live as long as the entry does.
  std::int32_t outlineNumber = -1;
  bool resolved = false;  // page and y are known
};

inline constexpr double kNoBookmarkY = 1e18;

// The same nodes in tree order, with their rows.
struct BookmarkOrderEntry {
  std::int32_t page = -1;
  double y = kNoBookmarkY;                       // kNoBookmarkY without a vertical target
  platform::TreeRow row = platform::kNoTreeRow;  // kNoTreeRow until its parent was expanded
};

}  // namespace quillmere
