#include "nav/bookmarks.h"

#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "core/session.h"
#include "nav/jump_history.h"
#include "platform/main_window.h"
#include "view/geometry.h"
#include "view/navigation.h"

namespace quillmere {

namespace {

// Tree controls walk their rows recursively; what lies deeper stands beside its parent.
constexpr int kDeepestLevel = 200;
constexpr int kTargetDistance = 24;  // pixels from the pane's top edge to the target

std::u16string titleOf(FPDF_BOOKMARK bookmark) {
  const unsigned long size = FPDFBookmark_GetTitle(bookmark, nullptr, 0);  // bytes
  std::u16string title(size / sizeof(char16_t), u'\0');
  if (!title.empty()) FPDFBookmark_GetTitle(bookmark, title.data(), size);
  while (!title.empty() && title.back() == u'\0') title.pop_back();
  return title.empty() ? u"(untitled)" : title;
}

// Which parameter of a fitting view is its top edge.
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

BookmarkEntry entryOf(FPDF_BOOKMARK bookmark) {
  BookmarkEntry entry;
  entry.title = titleOf(bookmark);
  entry.bookmark = bookmark;
  return entry;
}

void resolve(FPDF_DOCUMENT document, BookmarkEntry& entry) {
  if (entry.resolved || entry.bookmark == nullptr) return;
  entry.resolved = true;
  const FPDF_DEST destination = FPDFBookmark_GetDest(document, entry.bookmark);
  if (destination == nullptr) return;
  entry.page = FPDFDest_GetDestPageIndex(document, destination);
  if (const std::optional<double> y = targetY(destination)) {
    entry.hasY = true;
    entry.y = *y;
  }
}

platform::TreeRow appendEntry(platform::TreeRow parent, BookmarkEntry entry) {
  const auto index = static_cast<std::int32_t>(session.bookmarks.size());
  const platform::TreeRow row = platform::appendTreeRow(parent, entry.title, index);
  session.bookmarkOrder.push_back({-1, kNoBookmarkY, row});
  session.bookmarks.push_back(std::move(entry));
  return row;
}

void fillUnderHeadings(FPDF_BOOKMARK first) {
  const platform::TreeRow bookmarks =
      platform::appendTreeRow(platform::kNoTreeRow, u"Bookmarks", -1);
  if (first == nullptr) {
    platform::appendTreeRow(bookmarks, u"(no bookmarks)", -1);
  } else {
    AddBookmarkLevel(bookmarks, first);
  }
  platform::expandTreeRow(bookmarks);
  const platform::TreeRow markups = platform::appendTreeRow(platform::kNoTreeRow, u"Markups", -1);
  platform::showTreeRowExpandable(markups);
}

void fillTree(FPDF_DOCUMENT document) {
  const FPDF_BOOKMARK first = FPDFBookmark_GetFirstChild(document, nullptr);
  if (!session.settings.markupsUnderBookmarks) {
    fillUnderHeadings(first);
  } else {
    AddBookmarkLevel(platform::kNoTreeRow, first);
  }
}

// Puts the target a little below the pane's top edge.
void scrollToTarget(int pane, double y) {
  const PanePoint target = pageToPane(pane, 0, y);
  session.panes[pane].panY += static_cast<float>(scaled(kTargetDistance) - target.y);
  clampPan(pane);
}

}  // namespace

void RebuildNavigationTree() {
  platform::beginTreeUpdate();
  ClearNavigationTree();
  const FPDF_DOCUMENT document = documentOf(session.activePane);
  if (document != nullptr) fillTree(document);
  platform::endTreeUpdate();
}

void ClearNavigationTree() {
  platform::clearTree();
  session.bookmarks.clear();
  session.bookmarkOrder.clear();
}

// An outline can be deeper than the call stack, so the levels that wait stand in a list.
void AddBookmarkLevel(platform::TreeRow parent, FPDF_BOOKMARK first) {
  struct Waiting {
    platform::TreeRow parent;
    FPDF_BOOKMARK next;
    int level;
  };
  const FPDF_DOCUMENT document = documentOf(session.activePane);
  std::unordered_set<FPDF_BOOKMARK> seen;
  std::vector<Waiting> waiting{{parent, first, 1}};
  while (!waiting.empty()) {
    const Waiting here = waiting.back();
    waiting.pop_back();
    if (here.next == nullptr || !seen.insert(here.next).second) continue;
    const platform::TreeRow row = appendEntry(here.parent, entryOf(here.next));
    const bool deepest = here.level == kDeepestLevel;
    waiting.push_back({here.parent, FPDFBookmark_GetNextSibling(document, here.next), here.level});
    waiting.push_back({deepest ? here.parent : row, FPDFBookmark_GetFirstChild(document, here.next),
                       deepest ? here.level : here.level + 1});
  }
}

void ResolveBookmarks() {
  const FPDF_DOCUMENT document = documentOf(session.activePane);
  for (std::size_t i = 0; i < session.bookmarks.size(); ++i) {
    BookmarkEntry& entry = session.bookmarks[i];
    resolve(document, entry);
    session.bookmarkOrder[i].page = entry.page;
    session.bookmarkOrder[i].y = entry.hasY ? entry.y : kNoBookmarkY;
  }
}

void JumpToTreeEntry(std::int32_t index) {
  if (index < 0 || static_cast<std::size_t>(index) >= session.bookmarks.size()) return;
  resolve(documentOf(session.activePane), session.bookmarks[static_cast<std::size_t>(index)]);
  const BookmarkEntry entry = session.bookmarks[static_cast<std::size_t>(index)];
  if (entry.page < 0) return;
  const bool eachPaneItsOwn =
      session.viewMode == ViewMode::IndependentPages || session.viewMode == ViewMode::TwoDocuments;
  const int pane = eachPaneItsOwn ? session.activePane : 0;
  if (entry.page != session.panes[pane].currentPage) {
    PushJump(pane);
    goToPage(pane, entry.page, false);
  }
  if (entry.hasY) scrollToTarget(pane, entry.y);
  platform::invalidateMainWindow(false);
}

bool documentHasBookmarks() {
  const FPDF_DOCUMENT document = documentOf(session.activePane);
  return document != nullptr && FPDFBookmark_GetFirstChild(document, nullptr) != nullptr;
}

}  // namespace quillmere
