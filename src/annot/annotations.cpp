#include "annot/annotations.h"

#include <fpdf_annot.h>
#include <quillmere_engine.h>

#include <vector>

#include "session/document_slots.h"
#include "session/session.h"

namespace quillmere {

namespace {

constexpr FPDF_ANNOTATION_SUBTYPE kSubtypesInUse[] = {FPDF_ANNOT_HIGHLIGHT, FPDF_ANNOT_STRIKEOUT,
                                                      FPDF_ANNOT_STAMP};
constexpr int kStepsAtATime = 1 << 20;
constexpr int kStepsWhileIdle = 64;  // of about 30 microseconds each

PageSearchHandle startSearch(FPDF_DOCUMENT document,
                             std::span<const FPDF_ANNOTATION_SUBTYPE> subtypes) {
  return PageSearchHandle(QuillmereEngine_StartPageSearch(document, subtypes.data(),
                                                          static_cast<int>(subtypes.size())));
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

AnnotationHandle annotationAt(FPDF_PAGE page, std::int32_t index) {
  return AnnotationHandle(FPDFPage_GetAnnot(page, index));
}

bool isMarkup(FPDF_ANNOTATION annotation) {
  const FPDF_ANNOTATION_SUBTYPE subtype = FPDFAnnot_GetSubtype(annotation);
  return subtype == FPDF_ANNOT_HIGHLIGHT || subtype == FPDF_ANNOT_STRIKEOUT;
}

std::vector<int> pagesWithAnnotations(FPDF_DOCUMENT document,
                                      std::span<const FPDF_ANNOTATION_SUBTYPE> subtypes) {
  const AnnotationSearch& known = session.annotationSearch;
  if (known.complete && known.document == document) return foundPages(known.search, subtypes);
  const PageSearchHandle search = startSearch(document, subtypes);
  while (QuillmereEngine_ContinuePageSearch(search.get(), kStepsAtATime)) {
  }
  return foundPages(search, subtypes);
}

bool continueAnnotationSearch(FPDF_DOCUMENT document) {
  AnnotationSearch& search = session.annotationSearch;
  if (search.document != document) search = {startSearch(document, kSubtypesInUse), document};
  search.complete = !QuillmereEngine_ContinuePageSearch(search.search.get(), kStepsWhileIdle);
  return !search.complete;
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

std::u16string ReadAnnotString(FPDF_ANNOTATION annotation, const char* key) {
  const unsigned long bytes = FPDFAnnot_GetStringValue(annotation, key, nullptr, 0);
  if (bytes <= sizeof(FPDF_WCHAR)) return {};
  std::vector<FPDF_WCHAR> units(bytes / sizeof(FPDF_WCHAR));
  FPDFAnnot_GetStringValue(annotation, key, units.data(), bytes);
  return std::u16string(units.begin(), units.end() - 1);
}

}  // namespace quillmere
