#include "session/document_slots.h"

#include <quillmere_engine.h>

#include <algorithm>
#include <utility>

#include "session/loaded_file.h"
#include "session/session.h"

namespace quillmere {

namespace {

void closePagesOf(FPDF_DOCUMENT document) {
  for (const int pane : panesHolding(document)) dropPaneView(pane);
}

// Another document can get the same handle later.
void forgetAnnotationsOf(FPDF_DOCUMENT document) {
  if (session.annotationSearch.document == document) session.annotationSearch = {};
  if (session.waitingPlacements == document) {
    session.waitingPlacements = nullptr;
    session.placementPagesRead.clear();
  }
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

// The bytes of a document that was loaded from memory go with it.
void closeDocument(DocumentSlot& slot) {
  const FPDF_DOCUMENT document = slot.document.get();
  forgetAnnotationsOf(document);
  slot.document.reset();
  session.documentKeptBuffer.erase(document);
  slot.loadedFrom = {};
  slot.knownFile.reset();
  slot.pagesSeparate = false;
}

}  // namespace

void moveDocument(DocumentSlot& from, DocumentSlot& to) {
  clearDocument(to);
  to.document = std::move(from.document);
  to.pageCount = std::exchange(from.pageCount, 0);
  to.path = std::exchange(from.path, {});
  to.dirty = std::exchange(from.dirty, false);
  to.altered = std::exchange(from.altered, false);
  to.pagesSeparate = std::exchange(from.pagesSeparate, false);
  to.loadedFrom = std::exchange(from.loadedFrom, {});
  to.knownFile = std::exchange(from.knownFile, {});
  to.keptSibling = std::exchange(from.keptSibling, {});
}

void clearDocument(DocumentSlot& slot) {
  closePagesOf(slot.document.get());
  noteEditsGivenUp(slot);
  closeDocument(slot);
  slot.pageCount = 0;
  slot.path.clear();
  slot.dirty = false;
  slot.altered = false;
  slot.keptSibling = {};
}

ClosedDocument closeToReopen(DocumentSlot& slot) {
  const FPDF_DOCUMENT document = slot.document.get();
  ClosedDocument closed;
  for (const int pane : panesHolding(document)) {
    closed.openPage[pane] = session.panes[pane].openPage;
    dropPaneView(pane);
  }
  closed.ownedPlacements = document != nullptr && session.placementDocument == document;
  closed.waited = document != nullptr && session.waitingPlacements == document;
  if (closed.ownedPlacements) session.placementDocument = nullptr;
  session.editsGivenUp.erase(document);
  closeDocument(slot);
  return closed;
}

void reopenDocument(DocumentSlot& slot, DocumentHandle fresh, LoadedFile from,
                    const ClosedDocument& closed) {
  slot.document = std::move(fresh);
  slot.pageCount = slot.document ? FPDF_GetPageCount(slot.document.get()) : 0;
  slot.dirty = false;
  slot.altered = false;
  if (slot.document) slot.loadedFrom = std::move(from);
  if (closed.ownedPlacements) session.placementDocument = slot.document.get();
  if (closed.waited) session.waitingPlacements = slot.document.get();
  for (int pane = 0; pane < 2; ++pane) {
    if (closed.openPage[pane] >= 0) openUnderItsNumber(pane, closed.openPage[pane]);
  }
}

// A page that was open under the number of another stays so.
void openUnderItsNumber(int pane, std::int32_t page) {
  const std::int32_t shown = session.panes[pane].currentPage;
  loadPane(pane, page);
  const std::int32_t last = std::max(pageCountOf(pane) - 1, 0);
  if (shown != page) session.panes[pane].currentPage = std::min(shown, last);
}

void reopenPage(int pane) {
  if (session.panes[pane].page) openUnderItsNumber(pane, session.panes[pane].openPage);
}

void markEdited(DocumentSlot& slot) {
  slot.dirty = true;
  markAltered(slot);
}

void markAltered(DocumentSlot& slot) {
  if (!slot.altered) guardLoadedFile(slot.loadedFrom);
  slot.altered = true;
}

void separatePages(DocumentSlot& slot) {
  if (slot.pagesSeparate) return;
  // It would go on in the page tree as it was.
  if (session.annotationSearch.document == slot.document.get()) session.annotationSearch = {};
  if (!QuillmereEngine_SeparatePages(slot.document.get())) return;
  slot.pagesSeparate = true;
  markAltered(slot);
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
