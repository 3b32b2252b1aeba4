#include "session/session.h"

#include <algorithm>

#include "platform/files.h"
#include "platform/text.h"
#include "session/changes.h"
#include "session/page_memory.h"

namespace quillmere {

SessionState session;

namespace {

bool anyPending(const PageRotations& rotations) {
  return std::any_of(rotations.begin(), rotations.end(),
                     [](const auto& entry) { return (entry.second & kQuarterTurnBits) != 0; });
}

bool anyPlacementPending() {
  for (const auto& [page, list] : session.placements) {
    for (const Placement& placement : list) {
      if (placement.annotIndex < 0) return true;
    }
  }
  return false;
}

}  // namespace

void resetSession() {
  std::destroy_at(&session);
  std::construct_at(&session);
}

bool inTwoDocuments() {
  return session.viewMode == ViewMode::TwoDocuments;
}

bool documentRotationPending(const PaneSlot& pane) {
  return (pane.documentRotation & kQuarterTurnBits) != 0;
}

DocumentSlot& documentSlotOf(int pane) {
  if (inTwoDocuments()) return session.panes[pane];
  return session.active;
}

FPDF_DOCUMENT documentOf(int pane) {
  return documentSlotOf(pane).document.get();
}

std::int32_t& pageCountOf(int pane) {
  return documentSlotOf(pane).pageCount;
}

std::u16string& pathOf(int pane) {
  return documentSlotOf(pane).path;
}

bool& dirtyOf(int pane) {
  return documentSlotOf(pane).dirty;
}

PageRotations& pageRotationsOf(int pane) {
  return inTwoDocuments() ? session.panes[pane].pageRotations : session.active.pageRotations;
}

int paneWithPath(std::u16string_view path) {
  const std::u16string full = platform::absolutePath(std::u16string(path));
  for (const int pane : {session.activePane, 1 - session.activePane}) {
    if (documentOf(pane) == nullptr) continue;
    if (platform::equalIgnoringCase(platform::absolutePath(pathOf(pane)), full)) return pane;
  }
  return -1;
}

bool hasUnsavedChanges() {
  return hasUnsavedChanges(session.activePane);
}

bool hasUnsavedChanges(int pane) {
  const FPDF_DOCUMENT document = documentOf(pane);
  if (document == nullptr) return false;
  if (dirtyOf(pane)) return true;
  if (placementsPending(document)) return true;
  if (inTwoDocuments()) {
    return documentRotationPending(session.panes[pane]) ||
           anyPending(session.panes[pane].pageRotations);
  }
  return documentRotationPending(session.panes[0]) || anyPending(session.active.pageRotations) ||
         documentRotationPending(session.panes[1]);
}

bool placementsPending(FPDF_DOCUMENT document) {
  return document != nullptr && session.placementDocument == document && anyPlacementPending();
}

bool anyPageRotationPending(int pane) {
  return anyPending(pageRotationsOf(pane));
}

void closePanePage(int pane) {
  PaneSlot& slot = session.panes[pane];
  slot.textPage.reset();
  slot.page.reset();
  slot.openPage = -1;
  slot.markupBoxes.reset();
}

void freePaneBitmap(int pane) {
  PaneSlot& slot = session.panes[pane];
  slot.pageBitmap.reset();
  slot.pageBitmapWidth = 0;
  slot.pageBitmapHeight = 0;
}

void dropPaneView(int pane) {
  freePaneBitmap(pane);
  closePanePage(pane);
}

void loadPane(int pane, std::int32_t index) {
  const FPDF_DOCUMENT document = documentOf(pane);
  if (document == nullptr) return;
  PaneSlot& slot = session.panes[pane];
  const std::int32_t last = std::max(pageCountOf(pane) - 1, 0);
  closePanePage(pane);
  slot.currentPage = std::clamp(index, 0, last);
  slot.page.reset(FPDF_LoadPage(document, slot.currentPage));
  if (slot.page) slot.openPage = slot.currentPage;
  slot.textPage.reset(slot.page.get());
  notePageRead(pane);
}

void clearJumpHistories(int pane) {
  session.panes[pane].backHistory.clear();
  session.panes[pane].forwardHistory.clear();
}

void clearJumpHistories() {
  clearJumpHistories(0);
  clearJumpHistories(1);
}

void setActivePane(int pane) {
  if (session.activePane == pane) return;
  session.activePane = pane;
  activePaneChanged();
}

}  // namespace quillmere
