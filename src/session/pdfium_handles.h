#pragma once

#include <fpdf_annot.h>
#include <fpdf_text.h>
#include <fpdfview.h>
#include <quillmere_engine.h>

#include <cstddef>
#include <memory>
#include <type_traits>

// RAII owners of PDFium's handles. A record with several of them declares them in the order
// document, page, text page, so that they close in reverse.
namespace quillmere {

struct DocumentCloser {
  void operator()(FPDF_DOCUMENT document) const { FPDF_CloseDocument(document); }
};
struct PageCloser {
  void operator()(FPDF_PAGE page) const { FPDF_ClosePage(page); }
};
struct TextPageCloser {
  void operator()(FPDF_TEXTPAGE textPage) const { FPDFText_ClosePage(textPage); }
};
struct AnnotationCloser {
  void operator()(FPDF_ANNOTATION annotation) const { FPDFPage_CloseAnnot(annotation); }
};

struct PageSearchCloser {
  void operator()(QUILLMERE_PAGE_SEARCH search) const { QuillmereEngine_EndPageSearch(search); }
};

struct PdfBitmapCloser {
  void operator()(FPDF_BITMAP bitmap) const { FPDFBitmap_Destroy(bitmap); }
};

using PdfBitmapHandle = std::unique_ptr<std::remove_pointer_t<FPDF_BITMAP>, PdfBitmapCloser>;
using DocumentHandle = std::unique_ptr<std::remove_pointer_t<FPDF_DOCUMENT>, DocumentCloser>;
using PageHandle = std::unique_ptr<std::remove_pointer_t<FPDF_PAGE>, PageCloser>;
using TextPageHandle = std::unique_ptr<std::remove_pointer_t<FPDF_TEXTPAGE>, TextPageCloser>;
using PageSearchHandle =
    std::unique_ptr<std::remove_pointer_t<QUILLMERE_PAGE_SEARCH>, PageSearchCloser>;
using AnnotationHandle = std::unique_ptr<std::remove_pointer_t<FPDF_ANNOTATION>, AnnotationCloser>;

// The text page of an open page. It is loaded on first use, since showing a page does not need it.
class TextOfPage {
 public:
  TextOfPage() = default;
  TextOfPage(const TextOfPage&) = delete;
  TextOfPage& operator=(const TextOfPage&) = delete;

  // Switches to another page, which must outlive this object; null for none.
  void reset(FPDF_PAGE page = nullptr) {
    textPage_.reset();
    unread_ = page;
  }
  // Null without a page or when loading failed.
  FPDF_TEXTPAGE get() const {
    if (unread_ != nullptr) textPage_.reset(FPDFText_LoadPage(unread_));
    unread_ = nullptr;
    return textPage_.get();
  }
  explicit operator bool() const { return get() != nullptr; }
  bool operator==(std::nullptr_t) const { return get() == nullptr; }

 private:
  mutable TextPageHandle textPage_;
  mutable FPDF_PAGE unread_ = nullptr;
};

}  // namespace quillmere
