#include "nav/jump_history.h"

#include <algorithm>
#include <vector>

#include "session/changes.h"
#include "session/session.h"
#include "view/geometry.h"
#include "view/render.h"

namespace quillmere {

namespace {

int historyPane(int pane) {
  return session.viewMode == ViewMode::Book ? 0 : pane;
}

// A book's position is that of its two pages, whichever of them the left pane has open.
JumpRecord presentPosition(const PaneSlot& slot) {
  const bool inBook = session.viewMode == ViewMode::Book;
  const std::int32_t page = inBook ? slot.currentPage : slot.openPage;
  return {page, slot.panX, slot.panY, slot.zoom, slot.zoomMode};
}

bool moveAlong(int pane, std::vector<JumpRecord> PaneSlot::*from,
               std::vector<JumpRecord> PaneSlot::*to) {
  const int owner = historyPane(pane);
  PaneSlot& slot = session.panes[owner];
  if ((slot.*from).empty() || !slot.page) return false;
  (slot.*to).push_back(presentPosition(slot));
  const JumpRecord record = (slot.*from).back();
  (slot.*from).pop_back();
  RestoreJump(owner, record);
  return true;
}

void showRecordedView(int pane, const JumpRecord& record) {
  PaneSlot& slot = session.panes[pane];
  slot.zoomMode = record.zoomMode;
  if (record.zoomMode != kCustomFit) {
    layoutAndRender(pane);
    return;
  }
  slot.zoom = clampZoom(record.zoom);
  slot.panX = record.panX;
  slot.panY = record.panY;
  renderPane(pane);
  clampPan(pane);
}

// Shows the page after pane 0's in the right pane of a book.
void showRightPage() {
  const std::int32_t next = session.panes[0].currentPage + 1;
  if (next >= pageCountOf(1)) {
    dropPaneView(1);
    return;
  }
  if (session.panes[1].openPage != next) loadPane(1, next);
  layoutAndRender(1);
}

}  // namespace

void PushJump(int pane) {
  PaneSlot& slot = session.panes[historyPane(pane)];
  if (!slot.page) return;
  slot.backHistory.push_back(presentPosition(slot));
  if (slot.backHistory.size() > kMaximumBackJumps) {
    slot.backHistory.erase(slot.backHistory.begin());
  }
  slot.forwardHistory.clear();
}

bool JumpBack(int pane) {
  return moveAlong(pane, &PaneSlot::backHistory, &PaneSlot::forwardHistory);
}

bool JumpForward(int pane) {
  return moveAlong(pane, &PaneSlot::forwardHistory, &PaneSlot::backHistory);
}

void RestoreJump(int pane, const JumpRecord& record) {
  if (documentOf(pane) == nullptr || pageCountOf(pane) < 1) return;
  PaneSlot& slot = session.panes[pane];
  const std::int32_t page = std::clamp(record.page, 0, pageCountOf(pane) - 1);
  if (page != slot.currentPage || page != slot.openPage) loadPane(pane, page);
  showRecordedView(pane, record);
  if (session.viewMode == ViewMode::Book && pane == 0) showRightPage();
  pageShown(pane);
}

}  // namespace quillmere
