#include "plain_pdfium.h"

#include <cstddef>

namespace quillmere::bench {

void startPdfium() {
  FPDF_LIBRARY_CONFIG config{};
  config.version = 2;
  FPDF_InitLibraryWithConfig(&config);
}

PlainBitmap renderPlain(FPDF_PAGE page, BitmapSize size, int rotate, void* pixels) {
  PlainBitmap bitmap(FPDFBitmap_CreateEx(size.width, size.height, FPDFBitmap_BGRx, pixels,
                                         pixels == nullptr ? 0 : size.width * 4));
  FPDFBitmap_FillRect(bitmap.get(), 0, 0, size.width, size.height, 0xFFFFFFFF);
  FPDF_RenderPageBitmap(bitmap.get(), page, 0, 0, size.width, size.height, rotate,
                        FPDF_ANNOT | FPDF_LCD_TEXT);
  return bitmap;
}

bool openPlain(PlainView& view, const std::string& path) {
  closePlain(view);
  view.document.reset(FPDF_LoadDocument(path.c_str(), nullptr));
  return view.document != nullptr;
}

void closePlain(PlainView& view) {
  view.textPage.reset();
  view.page.reset();
  view.document.reset();
}

void loadPlainPage(PlainView& view, int index, bool withText) {
  view.page.reset(FPDF_LoadPage(view.document.get(), index));
  if (withText) view.textPage.reset(FPDFText_LoadPage(view.page.get()));
}

void renderView(PlainView& view, BitmapSize size, int rotate) {
  const auto count = static_cast<std::size_t>(size.width) * static_cast<std::size_t>(size.height);
  if (view.pixels.size() < count) view.pixels.resize(count);
  renderPlain(view.page.get(), size, rotate, view.pixels.data());
}

int searchPlainPage(FPDF_PAGE page, const std::u16string& text) {
  const TextPageHandle textPage(FPDFText_LoadPage(page));
  const FPDF_SCHHANDLE search =
      FPDFText_FindStart(textPage.get(), reinterpret_cast<FPDF_WIDESTRING>(text.c_str()), 0, 0);
  int hits = 0;
  while (FPDFText_FindNext(search)) ++hits;
  FPDFText_FindClose(search);
  return hits;
}

int searchPlain(FPDF_DOCUMENT document, const std::u16string& text) {
  const int count = FPDF_GetPageCount(document);
  int hits = 0;
  for (int i = 0; i < count; ++i) {
    const PageHandle page(FPDF_LoadPage(document, i));
    hits += searchPlainPage(page.get(), text);
  }
  return hits;
}

}  // namespace quillmere::bench
