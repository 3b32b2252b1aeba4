#include "view/view_test.h"

#include <fpdf_edit.h>

#include "view/render.h"

namespace quillmere::test {

FPDF_DOCUMENT ViewTest::openAndShow(const std::string& bytes, const std::u16string& path) {
  const FPDF_DOCUMENT document = openInActive(bytes, path);
  show(0, 0);
  return document;
}

FPDF_DOCUMENT ViewTest::openAndShowIn(int pane, const std::string& bytes) {
  const FPDF_DOCUMENT document = openInPane(pane, bytes);
  show(pane, 0);
  return document;
}

void ViewTest::show(int pane, std::int32_t page) {
  loadPane(pane, page);
  layoutAndRender(pane);
}

void ViewTest::setView(int pane, float zoom, float panX, float panY) {
  PaneSlot& slot = session.panes[pane];
  slot.zoomMode = kCustomFit;
  slot.zoom = zoom;
  slot.panX = panX;
  slot.panY = panY;
  renderPane(pane);
}

std::string pdfWithBrokenPage(int pages, int broken) {
  PdfFile file;
  const int tree = file.reserve();
  std::string kids;
  for (int page = 0; page < pages; ++page) {
    const std::string body = "<< /Type /Page /Parent " + PdfFile::reference(tree) +
                             " /MediaBox [0 0 400 600] /Resources << >> >>";
    kids += PdfFile::reference(file.add(page == broken ? "42" : body)) + " ";
  }
  file.set(tree, "<< /Type /Pages /Count " + std::to_string(pages) + " /Kids [" + kids + "] >>");
  const int catalog = file.add("<< /Type /Catalog /Pages " + PdfFile::reference(tree) + " >>");
  return file.finish(catalog);
}

int ownRotationOf(FPDF_DOCUMENT document, int page) {
  const PageHandle handle(FPDF_LoadPage(document, page));
  return handle ? FPDFPage_GetRotation(handle.get()) : -1;
}

}  // namespace quillmere::test
