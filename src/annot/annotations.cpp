#include "annot/annotations.h"

#include <fpdf_annot.h>
#include <quillmere_engine.h>

#include <algorithm>
#include <vector>

#include "session/document_slots.h"
#include "session/session.h"

namespace quillmere {

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
  const int kinds = static_cast<int>(subtypes.size());
  std::vector<int> pages(64);
  for (;;) {
    const int room = static_cast<int>(pages.size());
    const int count =
        QuillmereEngine_FindAnnotatedPages(document, subtypes.data(), kinds, pages.data(), room);
    pages.resize(static_cast<std::size_t>(std::max(count, 0)));
    if (count <= room) return pages;
  }
}

std::u16string ReadAnnotString(FPDF_ANNOTATION annotation, const char* key) {
  const unsigned long bytes = FPDFAnnot_GetStringValue(annotation, key, nullptr, 0);
  if (bytes <= sizeof(FPDF_WCHAR)) return {};
  std::vector<FPDF_WCHAR> units(bytes / sizeof(FPDF_WCHAR));
  FPDFAnnot_GetStringValue(annotation, key, units.data(), bytes);
  return std::u16string(units.begin(), units.end() - 1);
}

}  // namespace quillmere
