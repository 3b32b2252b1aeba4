#pragma once

#include <cstdint>
#include <string>
#include <unordered_set>
#include <vector>

#include "platform/tree.h"
#include "session/markup_entry.h"

namespace quillmere {

// Numbers of rows of the navigation tree that are not bookmarks; bookmarks count from 0, and -1
// leads nowhere.
inline constexpr std::int32_t kMarkupsRootEntry = -2;
inline constexpr std::int32_t kFirstMarkupNodeEntry = -16;  // markups count down from here

// The parent of a markup's row at the top of the tree.
inline constexpr std::int32_t kTopOfTree = -1;

// A markup's row, with what a click on it needs.
struct MarkupNode {
  std::int32_t entry = kFirstMarkupNodeEntry;  // the row's number
  std::int32_t parent = kMarkupsRootEntry;     // this, kTopOfTree, or a bookmark's number
  platform::TreeRow row = platform::kNoTreeRow;
  std::u16string label;
  std::int32_t page = 0;  // zero-based
  bool hasRect = false;
  double left = 0;  // its rectangle in page points
  double top = 0;
  double right = 0;
  double bottom = 0;
};

// The Markups group of the navigation tree.
struct MarkupTree {
  bool shown = false;  // the rows follow the list; until then none was collected
  platform::TreeRow root = platform::kNoTreeRow;     // "Markups"; kNoTreeRow when there is none
  platform::TreeRow noneRow = platform::kNoTreeRow;  // "(no markups)"; likewise
  std::vector<MarkupNode> nodes;                     // in the order of the list
  std::int32_t nextEntry = kFirstMarkupNodeEntry;
  std::unordered_set<std::int32_t> expanded;  // bookmarks that were once expanded for a markup
};

}  // namespace quillmere
