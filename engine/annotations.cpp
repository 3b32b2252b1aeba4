// What editing annotations needs and PDFium's public functions do not give.

#include <stddef.h>

#include <memory>
#include <utility>

#include "core/fpdfapi/page/cpdf_annotcontext.h"
#include "core/fpdfapi/page/cpdf_image.h"
#include "core/fpdfapi/page/cpdf_imageobject.h"
#include "core/fpdfapi/page/cpdf_page.h"
#include "core/fpdfapi/parser/cpdf_array.h"
#include "core/fpdfapi/parser/cpdf_dictionary.h"
#include "core/fpdfapi/parser/cpdf_document.h"
#include "core/fpdfapi/parser/cpdf_stream.h"
#include "core/fxcrt/retain_ptr.h"
#include "fpdf_annot.h"
#include "fpdfsdk/cpdfsdk_helpers.h"
#include "quillmere_engine.h"

namespace {

RetainPtr<CPDF_Array> AnnotationsOf(FPDF_PAGE page) {
  CPDF_Page* pdf_page = CPDFPageFromFPDFPage(page);
  return pdf_page ? pdf_page->GetMutableAnnotsArray() : nullptr;
}

bool IsPopupOf(const CPDF_Dictionary& candidate, const CPDF_Dictionary& annotation) {
  return candidate.GetNameFor("Subtype") == "Popup" &&
         (annotation.GetDictFor("Popup") == &candidate ||
          candidate.GetDictFor("Parent") == &annotation);
}

}  // namespace

FPDF_EXPORT FPDF_PAGE FPDF_CALLCONV QuillmereEngine_LoadPageForAnnots(FPDF_DOCUMENT document,
                                                                      int page_index) {
  CPDF_Document* pdf = CPDFDocumentFromFPDFDocument(document);
  if (!pdf || page_index < 0 || page_index >= pdf->GetPageCount()) {
    return nullptr;
  }
  RetainPtr<CPDF_Dictionary> dictionary = pdf->GetMutablePageDictionary(page_index);
  if (!CPDF_Page::IsValidPageDictLoose(dictionary)) {
    return nullptr;
  }
  return FPDFPageFromIPDFPage(pdfium::MakeRetain<CPDF_Page>(pdf, std::move(dictionary)).Leak());
}

FPDF_EXPORT FPDF_BOOL FPDF_CALLCONV QuillmereEngine_MakeAnnotIndirect(FPDF_PAGE page, int index) {
  RetainPtr<CPDF_Array> annotations = AnnotationsOf(page);
  if (!annotations || index < 0 || static_cast<size_t>(index) >= annotations->size() ||
      !annotations->GetDictAt(index)) {
    return false;
  }
  annotations->ConvertToIndirectObjectAt(index, CPDFPageFromFPDFPage(page)->GetDocument());
  return true;
}

FPDF_EXPORT FPDF_BOOL FPDF_CALLCONV QuillmereEngine_RemoveAnnotEntry(FPDF_ANNOTATION annotation,
                                                                     FPDF_BYTESTRING key) {
  CPDF_AnnotContext* context = CPDFAnnotContextFromFPDFAnnotation(annotation);
  return context && key && !!context->GetMutableAnnotDict()->RemoveFor(key);
}

FPDF_EXPORT int FPDF_CALLCONV QuillmereEngine_PopupIndex(FPDF_PAGE page, int index) {
  RetainPtr<const CPDF_Array> annotations = AnnotationsOf(page);
  RetainPtr<const CPDF_Dictionary> annotation =
      annotations && index >= 0 ? annotations->GetDictAt(index) : nullptr;
  if (!annotation) {
    return -1;
  }
  for (size_t i = 0; i < annotations->size(); ++i) {
    RetainPtr<const CPDF_Dictionary> candidate = annotations->GetDictAt(i);
    if (candidate && candidate != annotation && IsPopupOf(*candidate, *annotation)) {
      return static_cast<int>(i);
    }
  }
  return -1;
}

FPDF_EXPORT FPDF_PAGEOBJECT FPDF_CALLCONV QuillmereEngine_ShareImage(FPDF_PAGEOBJECT image) {
  CPDF_PageObject* object = CPDFPageObjectFromFPDFPageObject(image);
  CPDF_ImageObject* original = object ? object->AsImage() : nullptr;
  RetainPtr<CPDF_Image> picture = original ? original->GetImage() : nullptr;
  if (!picture || picture->IsInline() || !picture->GetStream()) {
    return nullptr;
  }
  auto copy = std::make_unique<CPDF_ImageObject>();
  copy->SetImage(std::move(picture));
  return FPDFPageObjectFromCPDFPageObject(copy.release());
}
