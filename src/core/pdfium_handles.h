#pragma once

#include <fpdf_text.h>
#include <fpdfview.h>

#include <memory>
#include <type_traits>

// Owners of PDFium's handles. Where a record holds several of them, it declares them in the order
// document, page, text page, so that they close in the reverse.
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

using DocumentHandle = std::unique_ptr<std::remove_pointer_t<FPDF_DOCUMENT>, DocumentCloser>;
using PageHandle = std::unique_ptr<std::remove_pointer_t<FPDF_PAGE>, PageCloser>;
using TextPageHandle = std::unique_ptr<std::remove_pointer_t<FPDF_TEXTPAGE>, TextPageCloser>;

}  // namespace quillmere
