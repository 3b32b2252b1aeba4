#pragma once

#include <fpdf_text.h>
#include <fpdfview.h>

#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "session/pdfium_handles.h"

// Direct PDFium calls with nothing around them: the baseline for the reader.
namespace quillmere::bench {

struct BitmapCloser {
  void operator()(FPDF_BITMAP bitmap) const { FPDFBitmap_Destroy(bitmap); }
};
using PlainBitmap = std::unique_ptr<std::remove_pointer_t<FPDF_BITMAP>, BitmapCloser>;

struct BitmapSize {
  int width = 0;
  int height = 0;
};

// Starts PDFium as the reader does.
void startPdfium();

// The page on white paper, with annotations, turned by `rotate` quarters. `pixels` is the memory to
// render into, four bytes a pixel without padding; null lets PDFium allocate it.
PlainBitmap renderPlain(FPDF_PAGE page, BitmapSize size, int rotate = 0, void* pixels = nullptr);

// A page of one document, for loading and rendering it again and again.
struct PlainView {
  DocumentHandle document;
  PageHandle page;
  TextPageHandle textPage;
  std::vector<std::uint32_t> pixels;
};

bool openPlain(PlainView& view, const std::string& path);
void closePlain(PlainView& view);
void loadPlainPage(PlainView& view, int index, bool withText);
// Renders into the same memory each time: fresh memory costs about as much as the rendering.
void renderView(PlainView& view, BitmapSize size, int rotate = 0);

// The number of hits on a page, or on all pages of a document, loading them one by one.
int searchPlainPage(FPDF_PAGE page, const std::u16string& text);
int searchPlain(FPDF_DOCUMENT document, const std::u16string& text);

}  // namespace quillmere::bench
