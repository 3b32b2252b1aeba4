#include "documents/restore_view.h"

#include <algorithm>

#include "nav/jump_history.h"
#include "platform/text.h"
#include "session/changes.h"
#include "session/session.h"
#include "store/binder_library.h"
#include "view/navigation.h"

namespace quillmere {

namespace {

// A stored pan can be any number; no page reaches beyond this many pixels.
constexpr float kFarthestPan = 1e6f;

bool inBook() {
  return session.viewMode == ViewMode::Book;
}

bool hasView(const BinderEntry& entry) {
  return entry.mode >= kFitPage && entry.mode <= kCustomFit;
}

// The binder's entry for the document, if it has a page or view to go to; null otherwise.
const BinderEntry* storedView(int binderIndex, std::u16string_view path) {
  if (!session.settings.restoreView || !IsValidBinder(binderIndex)) return nullptr;
  const auto& views = binderAt(binderIndex).views;
  const auto found = views.find(platform::toLower(path));
  if (found == views.end()) return nullptr;
  const BinderEntry& entry = found->second;
  return hasView(entry) || entry.hasPage ? &entry : nullptr;
}

// A book needs one more page for its right side.
std::int32_t lastPageToShow(std::int32_t pageCount) {
  const bool leavesRoom = inBook() && pageCount > static_cast<std::int32_t>(session.viewMode);
  return std::max(pageCount - (leavesRoom ? 2 : 1), 0);
}

// A book that is always fitted to its panes ignores stored views.
bool viewCounts(const BinderEntry& entry) {
  return hasView(entry) && !(inBook() && session.settings.bookRevertToFit);
}

JumpRecord viewOf(const BinderEntry& entry, std::int32_t page) {
  return {page, std::clamp(entry.panX, -kFarthestPan, kFarthestPan),
          std::clamp(entry.panY, -kFarthestPan, kFarthestPan), entry.zoom,
          static_cast<ZoomMode>(entry.mode)};
}

// True when opening the document has brought this view about, as it does for most documents whose
// first page was fitted when they were left. Rendering takes longest, so do not repeat it.
bool shownAlready(int pane, const JumpRecord& view) {
  const PaneSlot& slot = session.panes[pane];
  if (inBook() || !slot.page || slot.currentPage != view.page || slot.zoomMode != view.zoomMode) {
    return false;
  }
  return view.zoomMode != kCustomFit ||
         (slot.zoom == view.zoom && slot.panX == view.panX && slot.panY == view.panY);
}

}  // namespace

void RestoreView(int binderIndex, std::u16string_view path) {
  const BinderEntry* entry = storedView(binderIndex, path);
  const int pane = inBook() ? 0 : session.activePane;
  const std::int32_t pageCount = pageCountOf(pane);
  if (entry == nullptr || pageCount < 1) return;

  const std::int32_t page = std::clamp(entry->page, 0, lastPageToShow(pageCount));
  if (viewCounts(*entry)) {
    const JumpRecord view = viewOf(*entry, page);
    if (shownAlready(pane, view)) return;
    RestoreJump(pane, view);
  } else {
    goToPage(pane, page, false);
  }
  commandsChanged();
}

}  // namespace quillmere
