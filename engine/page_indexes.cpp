#include "page_indexes.h"

#include "core/fpdfapi/parser/cpdf_array.h"
#include "core/fpdfapi/parser/cpdf_dictionary.h"
#include "core/fpdfapi/parser/cpdf_document.h"
#include "core/fpdfapi/parser/cpdf_object.h"
#include "core/fxcrt/retain_ptr.h"
#include "fpdfsdk/cpdfsdk_helpers.h"
#include "page_tree.h"
#include "quillmere_engine.h"

int PageIndexes::Of(const CPDF_Document& document, uint32_t number) {
  if (!indexes_) {
    indexes_.emplace();
    ForEachPage(document, [this](int index, const CPDF_Dictionary& page) {
      if (page.GetObjNum() != 0) {
        indexes_->try_emplace(page.GetObjNum(), index);
      }
    });
  }
  const auto found = indexes_->find(number);
  return found == indexes_->end() ? -1 : found->second;
}

FPDF_EXPORT int FPDF_CALLCONV QuillmereEngine_PageIndexOfDest(FPDF_DOCUMENT document,
                                                              FPDF_DEST dest) {
  CPDF_Document* pdf = CPDFDocumentFromFPDFDocument(document);
  const CPDF_Array* array = CPDFArrayFromFPDFDest(dest);
  RetainPtr<const CPDF_Object> page = pdf && array ? array->GetDirectObjectAt(0) : nullptr;
  if (!page) {
    return -1;
  }
  if (page->IsNumber()) {
    const int index = page->GetInteger();
    return index >= 0 && index < pdf->GetPageCount() ? index : -1;
  }
  return page->IsDictionary() ? pdf->page_indexes().Of(*pdf, page->GetObjNum()) : -1;
}
