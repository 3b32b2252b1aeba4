#include "nav/bookmarks.h"

#include <quillmere_engine.h>

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include "nav/idle_reading.h"
#include "nav/jump_history.h"
#include "nav/links.h"
#include "nav/markup_tree.h"
#include "nav/scroll_into_view.h"
#include "platform/main_window.h"
#include "session/changes.h"
#include "session/density.h"
#include "session/session.h"
#include "view/geometry.h"
#include "view/navigation.h"

namespace quillmere {

namespace {

// Tree controls walk their rows recursively, so deeper bookmarks are shown beside their parent.
constexpr std::int32_t kDeepestLevel = 200;
constexpr platform::Tree kTree = platform::Tree::Navigation;
constexpr int kTargetDistance = 24;       // pixels from the pane's top edge to the target
constexpr std::uint32_t kUpsideDown = 2;  // quarter turns

std::u16string titleOf(FPDF_BOOKMARK bookmark) {
  const unsigned long size = FPDFBookmark_GetTitle(bookmark, nullptr, 0);  // bytes
  std::u16string title(size / sizeof(char16_t), u'\0');
  if (!title.empty()) FPDFBookmark_GetTitle(bookmark, title.data(), size);
  while (!title.empty() && title.back() == u'\0') title.pop_back();
  return title.empty() ? u"(untitled)" : title;
}

// The top edge of the destination's view, for the kinds of view that have one.
std::optional<double> topOfView(FPDF_DEST destination) {
  unsigned long count = 0;
  FS_FLOAT parameters[4] = {};
  switch (FPDFDest_GetView(destination, &count, parameters)) {
    case PDFDEST_VIEW_FITH:
    case PDFDEST_VIEW_FITBH:
      if (count >= 1) return parameters[0];
      break;
    case PDFDEST_VIEW_FITR:
      if (count >= 4) return parameters[3];
      break;
    default:
      break;
  }
  return std::nullopt;
}

std::optional<double> targetY(FPDF_DEST destination) {
  FPDF_BOOL hasX = 0;
  FPDF_BOOL hasY = 0;
  FPDF_BOOL hasZoom = 0;
  FS_FLOAT x = 0;
  FS_FLOAT y = 0;
  FS_FLOAT zoom = 0;
  if (FPDFDest_GetLocationInPage(destination, &hasX, &hasY, &hasZoom, &x, &y, &zoom) && hasY) {
    return y;
  }
  return topOfView(destination);
}

void setTarget(FPDF_DOCUMENT document, FPDF_BOOKMARK bookmark, BookmarkEntry& entry) {
  entry.resolved = true;
  const FPDF_DEST destination = destinationHere(document, FPDFBookmark_GetDest(document, bookmark),
                                                FPDFBookmark_GetAction(bookmark));
  if (destination == nullptr) return;
  entry.page = QuillmereEngine_PageIndexOfDest(document, destination);
  if (const std::optional<double> y = targetY(destination)) {
    entry.hasY = true;
    entry.y = *y;
  }
}

// Calls `visit` with `first`, its following siblings and all that lies below them, in the order of
// the tree and with the level of each, until it returns false. An outline can be deeper than the
// call stack, so waiting levels are kept in a list; an item is visited once, even if others refer
// back to it.
template <typename Visit>
void walkOutline(FPDF_DOCUMENT document, FPDF_BOOKMARK first, Visit visit) {
  struct Waiting {
    FPDF_BOOKMARK next;
    std::int32_t level;
  };
  std::unordered_set<FPDF_BOOKMARK> seen;
  std::vector<Waiting> waiting{{first, 1}};
  while (!waiting.empty()) {
    const Waiting here = waiting.back();
    waiting.pop_back();
    if (here.next == nullptr || !seen.insert(here.next).second) continue;
    if (!visit(here.next, here.level)) return;
    waiting.push_back({FPDFBookmark_GetNextSibling(document, here.next), here.level});
    waiting.push_back(
        {FPDFBookmark_GetFirstChild(document, here.next), std::min(here.level + 1, kDeepestLevel)});
  }
}

// Looks up where `entries`, given in the order of the list, lead. PDFium's handles do not live as
// long as the entries, so the outline is walked again.
void resolve(const std::vector<BookmarkEntry*>& entries) {
  const FPDF_DOCUMENT document = documentOf(session.activePane);
  if (document == nullptr || entries.empty()) return;
  auto next = entries.begin();
  std::int32_t number = 0;
  const auto visit = [&](FPDF_BOOKMARK bookmark, std::int32_t) {
    if ((*next)->outlineNumber == number++) setTarget(document, bookmark, **next++);
    return next != entries.end();
  };
  walkOutline(document, FPDFBookmark_GetFirstChild(document, nullptr), visit);
}

bool unresolved(const BookmarkEntry& entry) {
  return entry.outlineNumber >= 0 && !entry.resolved;
}

bool isEntry(std::int32_t index) {
  return index >= 0 && static_cast<std::size_t>(index) < session.bookmarks.size();
}

std::int32_t levelOf(std::size_t index) {
  return index < session.bookmarks.size() ? session.bookmarks[index].level : 0;
}

// Adds rows for the entries of one level, from `first` to the last one with the same parent.
void addRows(platform::TreeRow parent, std::size_t first) {
  const std::int32_t level = levelOf(first);
  platform::TreePlace place{parent, platform::kNoTreeRow};
  for (std::size_t i = first; level > 0 && levelOf(i) >= level; ++i) {
    if (levelOf(i) > level) continue;
    const bool expandable = levelOf(i + 1) > level;
    place.previous = platform::insertTreeRow(
        kTree, place, {session.bookmarks[i].title, static_cast<std::int32_t>(i), expandable});
    session.bookmarkOrder[i].row = place.previous;
  }
}

void readOutline(FPDF_BOOKMARK first) {
  std::int32_t number = 0;
  walkOutline(documentOf(session.activePane), first,
              [&](FPDF_BOOKMARK bookmark, std::int32_t level) {
                BookmarkEntry entry;
                entry.level = level;
                entry.title = titleOf(bookmark);
                entry.outlineNumber = number++;
                session.bookmarks.push_back(std::move(entry));
                return true;
              });
  session.bookmarkOrder.resize(session.bookmarks.size());
}

void fillUnderHeadings(FPDF_BOOKMARK first) {
  const platform::TreeRow bookmarks = platform::insertTreeRow(kTree, {}, {u"Bookmarks", -1, true});
  if (first == nullptr) {
    platform::insertTreeRow(kTree, {bookmarks, platform::kNoTreeRow},
                            {u"(no bookmarks)", -1, false});
  } else {
    AddBookmarkLevel(bookmarks, first);
  }
  platform::expandTreeRow(kTree, bookmarks);
  addMarkupsRoot(bookmarks);
}

void fillTree(FPDF_DOCUMENT document) {
  const FPDF_BOOKMARK first = FPDFBookmark_GetFirstChild(document, nullptr);
  if (!session.settings.markupsUnderBookmarks) {
    fillUnderHeadings(first);
  } else {
    AddBookmarkLevel(platform::kNoTreeRow, first);
  }
}

// Turns the pane that jumps go to, unless a pane shows the page already. Returns the pane that then
// shows it, -1 if none does.
int jumpToPage(std::int32_t page) {
  const bool eachPaneItsOwn =
      session.viewMode == ViewMode::IndependentPages || session.viewMode == ViewMode::TwoDocuments;
  const int pane = eachPaneItsOwn ? session.activePane : 0;
  if (paneShowing(pane, page) < 0) {
    PushJump(pane);
    goToPage(pane, page, false);
  }
  return paneShowing(pane, page);
}

void jumpToMarkup(const MarkupNode& markup) {
  const int pane = jumpToPage(markup.page);
  if (markup.hasRect && pane >= 0 && session.panes[pane].openPage == markup.page) {
    scrollIntoView(pane, {markup.left, markup.top, markup.right, markup.bottom});
  }
  pictureChanged();
}

// Puts the upper end of the target's line across the page a little below the pane's top edge. On a
// page that is upside down, a target at its top stands at the bottom of the screen with nothing of
// the page below it, so the page stays where the turn put it.
void scrollToTarget(int pane, double y) {
  const PageBox box = pageBoxOf(pane);
  if (pageRotationOf(pane) == kUpsideDown && y >= box.top) return;
  const double line = std::min(pageToPane(pane, box.left, y).y, pageToPane(pane, box.right, y).y);
  movePageInSight(pane, 0, scaled(kTargetDistance) - line);
}

}  // namespace

void RebuildNavigationTree() {
  platform::beginTreeUpdate(kTree);
  ClearNavigationTree();
  const FPDF_DOCUMENT document = documentOf(session.activePane);
  if (document != nullptr) fillTree(document);
  platform::endTreeUpdate(kTree);
  readAnnotationsWhenIdle();
}

void ClearNavigationTree() {
  platform::clearTree(kTree);
  session.bookmarks.clear();
  session.bookmarkOrder.clear();
  session.markupTree = {};
}

void AddBookmarkLevel(platform::TreeRow parent, FPDF_BOOKMARK first) {
  const std::size_t firstIndex = session.bookmarks.size();
  readOutline(first);
  addRows(parent, firstIndex);
}

void FillTreeEntry(std::int32_t index) {
  if (index == kMarkupsRootEntry && !session.markupTree.shown) FillMarkupsRoot();
  if (!isEntry(index)) return;
  const auto parent = static_cast<std::size_t>(index);
  const std::size_t first = parent + 1;
  const platform::TreeRow row = session.bookmarkOrder[parent].row;
  if (row == platform::kNoTreeRow || levelOf(first) <= levelOf(parent)) return;
  if (session.bookmarkOrder[first].row != platform::kNoTreeRow) return;
  addRows(row, first);
}

void ResolveBookmarks() {
  std::vector<BookmarkEntry*> entries;
  for (BookmarkEntry& entry : session.bookmarks) {
    if (unresolved(entry)) entries.push_back(&entry);
  }
  resolve(entries);
  for (std::size_t i = 0; i < session.bookmarks.size(); ++i) {
    const BookmarkEntry& entry = session.bookmarks[i];
    session.bookmarkOrder[i].page = entry.page;
    session.bookmarkOrder[i].y = entry.hasY ? entry.y : kNoBookmarkY;
  }
}

void JumpToTreeEntry(std::int32_t index) {
  if (const std::optional<MarkupNode> markup = markupNodeOf(index)) jumpToMarkup(*markup);
  if (!isEntry(index)) return;
  BookmarkEntry& entry = session.bookmarks[static_cast<std::size_t>(index)];
  if (unresolved(entry)) resolve({&entry});
  if (entry.page < 0) return;
  const int pane = jumpToPage(entry.page);
  if (entry.hasY && pane >= 0) scrollToTarget(pane, entry.y);
  pictureChanged();
}

bool documentHasBookmarks() {
  const FPDF_DOCUMENT document = documentOf(session.activePane);
  return document != nullptr && FPDFBookmark_GetFirstChild(document, nullptr) != nullptr;
}

}  // namespace quillmere
