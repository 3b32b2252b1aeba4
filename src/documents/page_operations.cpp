#include "documents/page_operations.h"

#include <fpdf_annot.h>
#include <fpdf_edit.h>
#include <fpdf_flatten.h>
#include <fpdf_ppo.h>
#include <quillmere_engine.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "annot/placements.h"
#include "annot/write_placements.h"
#include "base/text_format.h"
#include "documents/document_loader.h"
#include "documents/page_shift.h"
#include "integration/internet_gate.h"
#include "session/changes.h"
#include "session/document_slots.h"
#include "session/session.h"
#include "session/waiting_opens.h"
#include "ui/boxes.h"
#include "view/geometry.h"
#include "view/navigation.h"
#include "view/render.h"

namespace quillmere {

namespace {

// Null where nothing may be edited.
FPDF_DOCUMENT documentToEdit() {
  if (session.viewerRole) return nullptr;
  readWaitingPlacements();
  return documentOf(session.activePane);
}

bool confirmed(const std::u16string& title, const std::u16string& text) {
  return showBox(text, title, BoxButtons::OkCancel, BoxIcon::Warning) == BoxAnswer::Ok;
}

// The page that the user sees in a pane, whatever number it is shown under.
std::int32_t pageSeen(int pane) {
  const PaneSlot& slot = session.panes[pane];
  return slot.page ? slot.openPage : slot.currentPage;
}

bool inBook() {
  return session.viewMode == ViewMode::Book;
}

// The zero-based pages seen in the panes; -1 for a pane that holds another document, and for the
// empty one beside a book's only page.
using PagesSeen = std::array<std::int32_t, 2>;

// Closes the pages of the active document, which must not be open while pages come or go. A page
// that stands at several places of the document becomes several. A shown pane is drawn anew in the
// memory of its picture: fresh memory would cost about as much as the drawing.
PagesSeen closePages() {
  const FPDF_DOCUMENT document = documentOf(session.activePane);
  PagesSeen seen = {-1, -1};
  for (const int pane : panesHolding(document)) {
    const bool empty = paneShown(pane) && !session.panes[pane].page;
    if (!empty || !inBook()) seen[static_cast<std::size_t>(pane)] = pageSeen(pane);
    paneShown(pane) ? closePanePage(pane) : dropPaneView(pane);
  }
  separatePages(documentSlotOf(session.activePane));
  return seen;
}

void showBookFrom(std::int32_t left) {
  goToPage(0, left, false);
  const std::int32_t last = std::max(pageCountOf(0) - 1, 0);
  session.panes[1].currentPage = std::min(session.panes[0].currentPage + 1, last);
}

// A hidden pane loads its page when it is shown.
void showPageIn(int pane, std::int32_t page) {
  if (paneShown(pane)) return goToPage(pane, page, false);
  session.panes[pane].currentPage = std::clamp(page, 0, std::max(pageCountOf(pane) - 1, 0));
}

// Shows the same page as before the operation, and the same part of it.
void showSamePage(int pane, std::int32_t page) {
  if (!paneShown(pane)) return showPageIn(pane, page);
  loadPane(pane, page);
  renderPane(pane);
}

void showSamePages(const PagesSeen& seen) {
  for (int pane = 0; pane < 2; ++pane) {
    const std::int32_t number = session.panes[pane].currentPage;
    const std::int32_t page = seen[static_cast<std::size_t>(pane)];
    if (page >= 0) showSamePage(pane, page);
    session.panes[pane].currentPage = number;
  }
}

// The left page of a book stays where it is, or the page behind it moves up.
void showAfterDeletion(const PagesSeen& seen, const PageShift& shift) {
  if (inBook()) {
    const std::int32_t left = session.panes[0].currentPage;
    return showBookFrom(shiftedPage(left, shift).value_or(left));
  }
  for (int pane = 0; pane < 2; ++pane) {
    const std::int32_t page = seen[static_cast<std::size_t>(pane)];
    if (page < 0) continue;
    const auto now = shiftedPage(page, shift);
    now ? showSamePage(pane, *now) : showPageIn(pane, page);
  }
}

void showAfterInsertion(const PagesSeen& seen, const PageShift& shift) {
  const int active = session.activePane;
  if (inBook()) return showBookFrom(active == 0 ? shift.first : shift.first - 1);
  showPageIn(active, shift.first);
  const std::int32_t page = seen[static_cast<std::size_t>(1 - active)];
  if (page >= 0) showSamePage(1 - active, *shiftedPage(page, shift));
}

// A document whose pages the user wants to insert; null when there is none to be had.
DocumentHandle askForSource(bool below) {
  OpenDialogRequest request;
  request.title = below ? u"Insert Document Below" : u"Insert Document Above";
  request.filters = {{u"PDF Files", u"*.pdf"}};
  const std::vector<std::u16string> chosen = askForFiles(request);
  if (chosen.empty() || !CheckInternetZone(chosen.front())) return nullptr;
  DocumentHandle source = loadDocumentFile(chosen.front());
  if (!source) {
    showLoadFailure(FPDF_GetLastError());
  } else if (FPDF_GetPageCount(source.get()) < 1) {
    showNotice(u"That document has no pages to insert.", BoxIcon::Information);
    return nullptr;
  }
  return source;
}

// Copies all pages of `source` in front of a page. Returns how many came; 0 with the document's
// pages as they were when not all of them could be copied.
int importPages(FPDF_DOCUMENT document, FPDF_DOCUMENT source, int before) {
  const int countBefore = FPDF_GetPageCount(document);
  const bool imported = FPDF_ImportPages(document, source, nullptr, before) != 0;
  const int added = FPDF_GetPageCount(document) - countBefore;
  if (imported && added == FPDF_GetPageCount(source)) return added;
  for (int page = before + added - 1; page >= before; --page) FPDFPage_Delete(document, page);
  return 0;
}

// Pending placements become annotations first, so that they are drawn like all others.
bool writeAndForgetPlacements(FPDF_DOCUMENT document) {
  if (session.placementDocument != document || !hasPlacements(document)) return false;
  ClearPlacementSelection();
  writePendingPlacements(document);
  session.placements.clear();
  return true;
}

bool flattenPages(FPDF_DOCUMENT document) {
  bool any = false;
  const int count = FPDF_GetPageCount(document);
  for (int index = 0; index < count; ++index) {
    any = QuillmereEngine_FlattenPage(document, index) == FLATTEN_SUCCESS || any;
  }
  return any;
}

void removeAnnotationsOfPages(FPDF_DOCUMENT document) {
  const int count = FPDF_GetPageCount(document);
  for (int index = 0; index < count; ++index) {
    const PageHandle page(FPDF_LoadPage(document, index));
    for (int annot = FPDFPage_GetAnnotCount(page.get()) - 1; annot >= 0; --annot) {
      FPDFPage_RemoveAnnot(page.get(), annot);
    }
  }
}

// The panes' open pages were read before their annotations changed.
void showWithoutAnnotations(FPDF_DOCUMENT document) {
  for (const int pane : panesHolding(document)) {
    reopenPage(pane);
    if (session.panes[pane].page) redrawPicture(pane);
  }
}

}  // namespace

void deletePage(std::int32_t page) {
  const int pane = session.activePane;
  const FPDF_DOCUMENT document = documentOf(pane);
  const PagesSeen seen = closePages();
  FPDFPage_Delete(document, page);
  const int count = FPDF_GetPageCount(document);
  if (count >= pageCountOf(pane)) {
    showSamePages(seen);
    showNotice(u"The page could not be deleted.", BoxIcon::Error);
    return;
  }
  documentsLeaving();
  pageCountOf(pane) = count;
  const PageShift shift{page, -1};
  shiftPages(pane, shift);
  markEdited(documentSlotOf(pane));
  showAfterDeletion(seen, shift);
  pagesChanged(document);
}

void insertPages(DocumentHandle source, std::int32_t before) {
  const int pane = session.activePane;
  const FPDF_DOCUMENT document = documentOf(pane);
  const PagesSeen seen = closePages();
  std::vector<int> stamped = stampedPages(source.get());
  const PageShift shift{before, importPages(document, source.get(), before)};
  // What was copied stays in memory even after a failure.
  markAltered(documentSlotOf(pane));
  if (shift.added == 0) {
    source.reset();
    showSamePages(seen);
    showNotice(
        u"The document could not be inserted.\n\nThe file may be corrupt, encrypted, or use "
        u"features this reader can't import.",
        BoxIcon::Error);
    return;
  }
  documentsLeaving();
  pageCountOf(pane) = FPDF_GetPageCount(document);
  shiftPages(pane, shift);
  for (int& page : stamped) page += before;
  addPlacementsOf(document, stamped);
  markEdited(documentSlotOf(pane));
  showAfterInsertion(seen, shift);
  pagesChanged(document);
}

void DeleteCurrentPage() {
  const DocumentWork work;
  const int pane = session.activePane;
  if (documentToEdit() == nullptr) return;
  if (pageCountOf(pane) < 2) {
    showNotice(u"This is the only page in the document and cannot be deleted.",
               BoxIcon::Information);
    return;
  }
  const std::int32_t page = pageSeen(pane);
  if (page < 0 || page >= pageCountOf(pane)) return;
  const std::u16string question = formatText(
      u"Delete page %d from the document?\n\nThe deletion is in-memory until you save. Use "
      u"Edit->Discard Changes to revert before saving.",
      {decimal(page + 1)});
  if (confirmed(u"Delete Page", question)) deletePage(page);
}

void InsertDocument(bool below) {
  const DocumentWork work;
  const int pane = session.activePane;
  if (documentToEdit() == nullptr) return;
  const std::int32_t last = std::max(pageCountOf(pane) - 1, 0);
  const std::int32_t page = std::clamp(pageSeen(pane), 0, last);
  const std::int32_t before = std::min(page + (below ? 1 : 0), pageCountOf(pane));
  DocumentHandle source = askForSource(below);
  if (source) insertPages(std::move(source), before);
}

void FlattenAnnotations() {
  const DocumentWork work;
  const FPDF_DOCUMENT document = documentToEdit();
  if (document == nullptr) return;
  const std::u16string question =
      hasPlacements(document)
          ? u"Flatten will permanently merge all stamps and text drops into the document. They "
            u"will no longer be selectable or deletable.\n\nAnnotations added by other "
            u"applications (form fields, comments, signatures) will also be baked into the page "
            u"content.\n\nContinue?"
          : u"No stamps or text drops to flatten. The document may still contain annotations "
            u"from other applications (form fields, comments, signatures); flattening will bake "
            u"those into the page if any exist.\n\nContinue anyway?";
  if (!confirmed(u"Flatten Annotations", question)) return;
  documentsLeaving();
  const bool hadPlacements = writeAndForgetPlacements(document);
  if (!flattenPages(document) && !hadPlacements) return;
  markEdited(documentSlotOf(session.activePane));
  showWithoutAnnotations(document);
  allMarkupsChanged(document);
}

void RemoveAllAnnotations() {
  const DocumentWork work;
  const FPDF_DOCUMENT document = documentToEdit();
  if (document == nullptr) return;
  const std::u16string question =
      u"Remove every annotation from this document?\n\nThis permanently deletes all stamps and "
      u"text drops, along with any annotations added by other applications (form fields, links, "
      u"comments, signatures). This cannot be undone except by discarding all "
      u"changes.\n\nContinue?";
  if (!confirmed(u"Remove All Annotations", question)) return;
  documentsLeaving();
  if (session.placementDocument == document) {
    ClearPlacementSelection();
    session.placements.clear();
  }
  removeAnnotationsOfPages(document);
  markEdited(documentSlotOf(session.activePane));
  showWithoutAnnotations(document);
  allMarkupsChanged(document);
}

}  // namespace quillmere
