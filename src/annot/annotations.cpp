#include "annot/annotations.h"

#include <fpdf_annot.h>
#include <quillmere_engine.h>

#include <vector>

#include "session/document_slots.h"
#include "session/page_memory.h"
#include "session/session.h"

namespace quillmere {

namespace {

constexpr FPDF_ANNOTATION_SUBTYPE kSubtypesInUse[] = {FPDF_ANNOT_HIGHLIGHT, FPDF_ANNOT_STRIKEOUT,
                                                      FPDF_ANNOT_STAMP};
constexpr std::size_t kPagesReadBetweenReleases = 400;
constexpr int kStepsAtATime = 1 << 20;
constexpr int kStepsWhileIdle = 64;  // of about 30 microseconds each

PageSearchHandle startSearch(FPDF_DOCUMENT document,
                             std::span<const FPDF_ANNOTATION_SUBTYPE> subtypes) {
  return PageSearchHandle(QuillmereEngine_StartPageSearch(document, subtypes.data(),
                                                          static_cast<int>(subtypes.size())));
}

void searchToTheEnd(const PageSearchHandle& search) {
  while (QuillmereEngine_ContinuePageSearch(search.get(), kStepsAtATime)) {
  }
}

std::vector<int> foundPages(const PageSearchHandle& search,
                            std::span<const FPDF_ANNOTATION_SUBTYPE> subtypes) {
  const int kinds = static_cast<int>(subtypes.size());
  const auto copyPages = [&](std::span<int> pages) {
    return QuillmereEngine_FoundPages(search.get(), subtypes.data(), kinds, pages.data(),
                                      static_cast<int>(pages.size()));
  };
  std::vector<int> pages(static_cast<std::size_t>(copyPages({})));
  copyPages(pages);
  return pages;
}

}  // namespace

ReachedPage::ReachedPage(FPDF_DOCUMENT document, std::int32_t page) {
  const std::vector<int> panes = panesHoldingPage(document, page);
  if (panes.empty()) own_.reset(FPDF_LoadPage(document, page));
  page_ = panes.empty() ? own_.get() : session.panes[panes.front()].page.get();
}

PageHandle pageForAnnotations(FPDF_DOCUMENT document, std::int32_t page) {
  return PageHandle(QuillmereEngine_LoadPageForAnnots(document, page));
}

AnnotationHandle annotationAt(FPDF_PAGE page, std::int32_t index) {
  return AnnotationHandle(FPDFPage_GetAnnot(page, index));
}

bool isMarkup(FPDF_ANNOTATION annotation) {
  const FPDF_ANNOTATION_SUBTYPE subtype = FPDFAnnot_GetSubtype(annotation);
  return subtype == FPDF_ANNOT_HIGHLIGHT || subtype == FPDF_ANNOT_STRIKEOUT;
}

std::vector<int> pagesWithAnnotations(FPDF_DOCUMENT document,
                                      std::span<const FPDF_ANNOTATION_SUBTYPE> subtypes) {
  AnnotationSearch& known = session.annotationSearch;
  if (document != nullptr && known.document == document) {
    searchToTheEnd(known.search);
    known.complete = true;
    return foundPages(known.search, subtypes);
  }
  const PageSearchHandle search = startSearch(document, subtypes);
  searchToTheEnd(search);
  return foundPages(search, subtypes);
}

bool continueAnnotationSearch(FPDF_DOCUMENT document) {
  AnnotationSearch& search = session.annotationSearch;
  if (search.document != document) search = {startSearch(document, kSubtypesInUse), document};
  search.complete = !QuillmereEngine_ContinuePageSearch(search.search.get(), kStepsWhileIdle);
  return !search.complete;
}

std::vector<int> pagesFoundSoFar(FPDF_DOCUMENT document,
                                 std::span<const FPDF_ANNOTATION_SUBTYPE> subtypes) {
  const AnnotationSearch& search = session.annotationSearch;
  if (document == nullptr || search.document != document) return {};
  return foundPages(search.search, subtypes);
}

void forgetAnnotationSearch() {
  session.annotationSearch = {};
}

void separatePagesToAnnotate(FPDF_DOCUMENT document) {
  const std::vector<int> panes = panesHolding(document);
  if (panes.empty() || documentSlotOf(panes.front()).pagesSeparate) return;
  DocumentSlot& slot = documentSlotOf(panes.front());
  separatePages(slot);
  if (!slot.pagesSeparate) return;
  for (const int pane : panes) reopenPage(pane);
}

void releasePagesRead(FPDF_DOCUMENT document, std::size_t count) {
  const std::vector<int> panes = panesHolding(document);
  const bool due = count != 0 && count % kPagesReadBetweenReleases == 0;
  if (due && !panes.empty()) noteDocumentRead(panes.front());
}

std::u16string ReadAnnotString(FPDF_ANNOTATION annotation, const char* key) {
  const unsigned long bytes = FPDFAnnot_GetStringValue(annotation, key, nullptr, 0);
  if (bytes <= sizeof(FPDF_WCHAR)) return {};
  std::vector<FPDF_WCHAR> units(bytes / sizeof(FPDF_WCHAR));
  FPDFAnnot_GetStringValue(annotation, key, units.data(), bytes);
  return std::u16string(units.begin(), units.end() - 1);
}

}  // namespace quillmere
