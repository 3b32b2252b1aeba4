#include "session/document_slots.h"

#include <utility>

#include "session/session.h"

namespace quillmere {

namespace {

void closePagesOf(FPDF_DOCUMENT document) {
  for (const int pane : panesHolding(document)) dropPaneView(pane);
}

// Another document can get the same handle later.
void forgetMarkupsOf(FPDF_DOCUMENT document) {
  session.otherMarkupLists.erase(document);
  session.pagesToCollect.erase(document);
  if (document == nullptr || session.markupListDocument != document) return;
  session.markupListDocument = nullptr;
  session.markupList.clear();
}

// The shelf forgets the document's changes once it is told that documents changed.
void noteEditsGivenUp(const DocumentSlot& slot) {
  if (session.editsGivenUp.erase(slot.document.get()) > 0) {
    session.givenUpPaths.push_back(slot.path);
  }
}

// A page that was open under the number of another stays so.
void openUnderItsNumber(int pane, std::int32_t page) {
  const std::int32_t shown = session.panes[pane].currentPage;
  loadPane(pane, page);
  if (shown != page) session.panes[pane].currentPage = shown;
}

}  // namespace

void moveDocument(DocumentSlot& from, DocumentSlot& to) {
  clearDocument(to);
  to.document = std::move(from.document);
  to.pageCount = std::exchange(from.pageCount, 0);
  to.path = std::exchange(from.path, {});
  to.dirty = std::exchange(from.dirty, false);
  to.altered = std::exchange(from.altered, false);
}

void clearDocument(DocumentSlot& slot) {
  closePagesOf(slot.document.get());
  forgetMarkupsOf(slot.document.get());
  noteEditsGivenUp(slot);
  slot.document.reset();
  slot.pageCount = 0;
  slot.path.clear();
  slot.dirty = false;
  slot.altered = false;
}

void swapDocument(DocumentSlot& slot, DocumentHandle fresh) {
  const FPDF_DOCUMENT before = slot.document.get();
  int opened[2] = {-1, -1};
  for (const int pane : panesHolding(before)) {
    if (session.panes[pane].page) opened[pane] = session.panes[pane].openPage;
    closePanePage(pane);
  }
  if (session.placementDocument == before) session.placementDocument = fresh.get();
  forgetMarkupsOf(before);
  session.editsGivenUp.erase(before);
  slot.document = std::move(fresh);
  slot.pageCount = FPDF_GetPageCount(slot.document.get());
  slot.dirty = false;
  slot.altered = false;
  for (int pane = 0; pane < 2; ++pane) {
    if (opened[pane] < 0) continue;
    openUnderItsNumber(pane, opened[pane]);
  }
}

void reopenPage(int pane) {
  if (session.panes[pane].page) openUnderItsNumber(pane, session.panes[pane].openPage);
}

void markEdited(DocumentSlot& slot) {
  slot.dirty = true;
  slot.altered = true;
}

std::vector<int> panesHolding(FPDF_DOCUMENT document) {
  std::vector<int> panes;
  for (int pane = 0; pane < 2; ++pane) {
    if (document != nullptr && documentOf(pane) == document) panes.push_back(pane);
  }
  return panes;
}

std::vector<int> panesHoldingPage(FPDF_DOCUMENT document, int page) {
  std::vector<int> panes = panesHolding(document);
  std::erase_if(panes, [&](int pane) {
    const PaneSlot& slot = session.panes[pane];
    return !slot.page || slot.openPage != page;
  });
  return panes;
}

}  // namespace quillmere
