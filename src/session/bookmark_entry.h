#pragma once

#include <fpdfview.h>

#include <cstdint>
#include <string>

#include "platform/tree.h"

namespace quillmere {

// One node of the navigation tree. A bookmark's target is looked up only when it is needed: each
// look-up can make PDFium walk the document's page tree.
struct BookmarkEntry {
  std::int32_t kind = 0;   // 0 for a bookmark
  std::int32_t level = 1;  // of its row, from 1; its descendants follow with higher levels
  std::int32_t page = -1;  // zero-based target; -1 without a destination
  bool hasY = false;
  double y = 0;  // vertical target in page points
  std::u16string title;
  FPDF_BOOKMARK bookmark = nullptr;  // owned by the document
  bool resolved = false;             // page and y are known
};

inline constexpr double kNoBookmarkY = 1e18;

// The same nodes in tree order, with their rows.
struct BookmarkOrderEntry {
  std::int32_t page = -1;
  double y = kNoBookmarkY;                       // kNoBookmarkY without a vertical target
  platform::TreeRow row = platform::kNoTreeRow;  // kNoTreeRow until its parent was expanded
};

}  // namespace quillmere
