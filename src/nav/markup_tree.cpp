#include "nav/markup_tree.h"

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "annot/markup_list.h"
#include "nav/bookmarks.h"
#include "session/session.h"

namespace quillmere {

namespace {

constexpr platform::Tree kTree = platform::Tree::Navigation;

// Whether a bookmark comes after a markup in reading order; at the same height it comes before.
bool comesAfter(const BookmarkOrderEntry& bookmark, const MarkupNode& node) {
  return bookmark.page != node.page ? bookmark.page > node.page : bookmark.y < node.top;
}

const BookmarkOrderEntry& placeOf(std::int32_t bookmark) {
  return session.bookmarkOrder[static_cast<std::size_t>(bookmark)];
}

// The bookmarks that lead somewhere, in reading order; those at one place keep the outline's order.
std::vector<std::int32_t> bookmarksInReadingOrder() {
  std::vector<std::int32_t> sorted;
  for (std::int32_t i = 0; static_cast<std::size_t>(i) < session.bookmarkOrder.size(); ++i) {
    if (placeOf(i).page >= 0) sorted.push_back(i);
  }
  std::stable_sort(sorted.begin(), sorted.end(), [](std::int32_t a, std::int32_t b) {
    const bool samePage = placeOf(a).page == placeOf(b).page;
    return samePage ? placeOf(a).y > placeOf(b).y : placeOf(a).page < placeOf(b).page;
  });
  return sorted;
}

std::int32_t lastBookmarkBefore(const MarkupNode& node, const std::vector<std::int32_t>& sorted) {
  const auto behind = std::partition_point(
      sorted.begin(), sorted.end(),
      [&node](std::int32_t bookmark) { return !comesAfter(placeOf(bookmark), node); });
  return behind == sorted.begin() ? kTopOfTree : *std::prev(behind);
}

MarkupNode nodeFor(const MarkupEntry& entry) {
  MarkupNode node;
  node.label = markupLabel(entry);
  node.page = entry.page;
  node.hasRect = entry.hasRect;
  node.left = entry.left;
  node.top = entry.top;
  node.right = entry.right;
  node.bottom = entry.bottom;
  return node;
}

std::vector<MarkupNode> nodesOfList() {
  std::vector<MarkupNode> nodes;
  for (const MarkupEntry& entry : markupsOf(documentOf(session.activePane))) {
    nodes.push_back(nodeFor(entry));
  }
  return nodes;
}

bool sameRow(const MarkupNode& a, const MarkupNode& b) {
  return a.parent == b.parent && a.page == b.page && a.left == b.left && a.top == b.top &&
         a.right == b.right && a.bottom == b.bottom && a.label == b.label;
}

std::int32_t levelOf(std::int32_t bookmark) {
  return session.bookmarks[static_cast<std::size_t>(bookmark)].level;
}

std::int32_t bookmarkCount() {
  return static_cast<std::int32_t>(session.bookmarks.size());
}

bool hasBookmarksBelow(std::int32_t bookmark) {
  return bookmark + 1 < bookmarkCount() && levelOf(bookmark + 1) > levelOf(bookmark);
}

// The bookmark and its ancestors, from the top of the tree down.
std::vector<std::int32_t> pathTo(std::int32_t bookmark) {
  std::vector<std::int32_t> path{bookmark};
  for (std::int32_t i = bookmark - 1; i >= 0 && levelOf(path.back()) > 1; --i) {
    if (levelOf(i) < levelOf(path.back())) path.push_back(i);
  }
  std::reverse(path.begin(), path.end());
  return path;
}

platform::TreeRow rowOfBookmark(std::int32_t bookmark) {
  return placeOf(bookmark).row;
}

// Adds the bookmark rows on the path first, so that markups find their place among them.
void fillPathTo(std::int32_t bookmark) {
  if (rowOfBookmark(bookmark) != platform::kNoTreeRow &&
      (!hasBookmarksBelow(bookmark) || rowOfBookmark(bookmark + 1) != platform::kNoTreeRow)) {
    return;
  }
  for (const std::int32_t step : pathTo(bookmark)) FillTreeEntry(step);
}

platform::TreeRow rowOfParent(std::int32_t parent) {
  if (parent == kTopOfTree) return platform::kNoTreeRow;
  if (parent == kMarkupsRootEntry) return session.markupTree.root;
  fillPathTo(parent);
  return rowOfBookmark(parent);
}

// The last row of the bookmarks right below `bookmark` that do not come after the node; kNoTreeRow
// when all of them do.
platform::TreeRow lastBookmarkRowBefore(std::int32_t bookmark, const MarkupNode& node) {
  platform::TreeRow row = platform::kNoTreeRow;
  const std::int32_t level = levelOf(bookmark);
  for (std::int32_t i = bookmark + 1; i < bookmarkCount() && levelOf(i) > level; ++i) {
    if (levelOf(i) != level + 1) continue;
    const BookmarkOrderEntry& child = placeOf(i);
    if (child.page >= 0 && comesAfter(child, node)) break;
    row = child.row;
  }
  return row;
}

// The row after which that of nodes[index] goes. In reading order the markups below one parent
// follow each other.
platform::TreeRow rowBefore(const std::vector<MarkupNode>& nodes, std::size_t index) {
  const MarkupNode& node = nodes[index];
  const bool first = index == 0 || nodes[index - 1].parent != node.parent;
  const platform::TreeRow sibling = first ? platform::kNoTreeRow : nodes[index - 1].row;
  if (node.parent < 0) return sibling;
  const platform::TreeRow bookmark = lastBookmarkRowBefore(node.parent, node);
  const bool sameGap = !first && lastBookmarkRowBefore(node.parent, nodes[index - 1]) == bookmark;
  return sameGap ? sibling : bookmark;
}

// A bookmark that the user has collapsed since it was expanded here stays collapsed.
void expandPathTo(std::int32_t bookmark) {
  for (const std::int32_t step : pathTo(bookmark)) {
    if (session.markupTree.expanded.insert(step).second) {
      platform::expandTreeRow(kTree, rowOfBookmark(step));
    }
  }
}

void insertRow(std::vector<MarkupNode>& nodes, std::size_t index) {
  MarkupNode& node = nodes[index];
  node.entry = session.markupTree.nextEntry--;
  const platform::TreeRow parent = rowOfParent(node.parent);
  node.row = platform::insertTreeRow(kTree, {parent, rowBefore(nodes, index)},
                                     {node.label, node.entry, false});
  if (node.parent < 0) return;
  if (!hasBookmarksBelow(node.parent)) platform::setTreeRowExpandable(kTree, parent, true);
}

void removeRows(const std::vector<MarkupNode>& gone, const std::vector<MarkupNode>& left) {
  for (const MarkupNode& node : gone) platform::removeTreeRow(kTree, node.row);
  for (const MarkupNode& node : gone) {
    if (node.parent < 0 || hasBookmarksBelow(node.parent)) continue;
    const bool others = std::any_of(left.begin(), left.end(), [&node](const MarkupNode& other) {
      return other.parent == node.parent && other.row != platform::kNoTreeRow;
    });
    if (others) continue;
    platform::setTreeRowExpandable(kTree, rowOfBookmark(node.parent), false);
    session.markupTree.expanded.erase(node.parent);
  }
}

// Takes over the row of the markup that was at the same position in the list.
void takeRow(const MarkupNode& from, MarkupNode& to) {
  to.entry = from.entry;
  to.row = from.row;
  if (from.label != to.label) platform::setTreeRowText(kTree, to.row, to.label);
}

// How many rows at the head and at the tail of the list stay as they are.
struct SameRows {
  std::size_t head = 0;
  std::size_t tail = 0;
};

SameRows sameRows(const std::vector<MarkupNode>& present, const std::vector<MarkupNode>& wanted) {
  const std::size_t shorter = std::min(present.size(), wanted.size());
  SameRows same;
  while (same.head < shorter && sameRow(present[same.head], wanted[same.head])) ++same.head;
  while (same.tail < shorter - same.head &&
         sameRow(present[present.size() - 1 - same.tail], wanted[wanted.size() - 1 - same.tail])) {
    ++same.tail;
  }
  return same;
}

void insertRows(std::vector<MarkupNode>& nodes, std::size_t begin, std::size_t end) {
  for (std::size_t i = begin; i < end; ++i) insertRow(nodes, i);
  for (std::size_t i = begin; i < end; ++i) {
    const bool another = i == begin || nodes[i].parent != nodes[i - 1].parent;
    if (another && nodes[i].parent >= 0) expandPathTo(nodes[i].parent);
  }
}

// Most changes affect one markup, so the rows that both lists begin and end with stay, and the
// nodes between reuse the existing rows while these have the same parent.
void bringRowsUpToDate(std::vector<MarkupNode> wanted) {
  std::vector<MarkupNode>& present = session.markupTree.nodes;
  const SameRows same = sameRows(present, wanted);
  const std::size_t presentEnd = present.size() - same.tail;
  const std::size_t wantedEnd = wanted.size() - same.tail;
  std::size_t kept = 0;
  while (kept < std::min(presentEnd, wantedEnd) && present[kept].parent == wanted[kept].parent) {
    takeRow(present[kept], wanted[kept]);
    ++kept;
  }
  for (std::size_t i = 0; i < same.tail; ++i) {
    takeRow(present[presentEnd + i], wanted[wantedEnd + i]);
  }
  const auto first = present.begin();
  removeRows(
      {first + static_cast<std::ptrdiff_t>(kept), first + static_cast<std::ptrdiff_t>(presentEnd)},
      wanted);
  insertRows(wanted, kept, wantedEnd);
  present = std::move(wanted);
}

// Adds or removes the row that says the group is empty. A root that loses its last row collapses,
// so add this row before the others go, and remove it after others have come.
void showNoneRow(bool none) {
  MarkupTree& tree = session.markupTree;
  if (none && tree.noneRow == platform::kNoTreeRow) {
    tree.noneRow = platform::insertTreeRow(kTree, {tree.root, platform::kNoTreeRow},
                                           {u"(no markups)", -1, false});
  } else if (!none && tree.noneRow != platform::kNoTreeRow) {
    platform::removeTreeRow(kTree, std::exchange(tree.noneRow, platform::kNoTreeRow));
  }
}

// Without bookmarks the markups have a root of their own as long as there are any.
void fillOwnRoot(std::vector<MarkupNode> nodes) {
  MarkupTree& tree = session.markupTree;
  const bool needed = !nodes.empty();
  const bool fresh = needed && tree.root == platform::kNoTreeRow;
  if (fresh) addMarkupsRoot(platform::kNoTreeRow);
  bringRowsUpToDate(std::move(nodes));
  if (fresh) platform::expandTreeRow(kTree, tree.root);
  if (!needed && tree.root != platform::kNoTreeRow) {
    platform::removeTreeRow(kTree, std::exchange(tree.root, platform::kNoTreeRow));
  }
}

}  // namespace

void addMarkupsRoot(platform::TreeRow previous) {
  session.markupTree.root = platform::insertTreeRow(kTree, {platform::kNoTreeRow, previous},
                                                    {u"Markups", kMarkupsRootEntry, true});
}

void FillMarkupsRoot() {
  if (session.markupTree.root == platform::kNoTreeRow) return;
  session.markupTree.shown = true;
  std::vector<MarkupNode> nodes = nodesOfList();
  const bool none = nodes.empty();
  if (none) showNoneRow(true);
  bringRowsUpToDate(std::move(nodes));
  if (!none) showNoneRow(false);
}

void FillMarkupsUnderBookmarks() {
  session.markupTree.shown = true;
  std::vector<MarkupNode> nodes = nodesOfList();
  if (session.bookmarks.empty()) {
    fillOwnRoot(std::move(nodes));
    return;
  }
  if (!nodes.empty()) ResolveBookmarks();
  const std::vector<std::int32_t> sorted = bookmarksInReadingOrder();
  for (MarkupNode& node : nodes) node.parent = lastBookmarkBefore(node, sorted);
  bringRowsUpToDate(std::move(nodes));
}

bool markupRowsWait() {
  return session.settings.markupsUnderBookmarks && session.navigationPanelVisible &&
         !session.markupTree.shown && documentOf(session.activePane) != nullptr;
}

void showMarkupsUnderBookmarks() {
  if (!markupRowsWait()) return;
  platform::beginTreeUpdate(kTree);
  FillMarkupsUnderBookmarks();
  platform::endTreeUpdate(kTree);
}

void updateMarkupRows() {
  if (!session.markupTree.shown) return;
  platform::beginTreeUpdate(kTree);
  if (session.settings.markupsUnderBookmarks) {
    FillMarkupsUnderBookmarks();
  } else {
    FillMarkupsRoot();
  }
  platform::endTreeUpdate(kTree);
}

std::optional<MarkupNode> markupNodeOf(std::int32_t entry) {
  const std::vector<MarkupNode>& nodes = session.markupTree.nodes;
  const auto found = std::find_if(nodes.begin(), nodes.end(),
                                  [entry](const MarkupNode& node) { return node.entry == entry; });
  if (found == nodes.end()) return std::nullopt;
  return *found;
}

}  // namespace quillmere
