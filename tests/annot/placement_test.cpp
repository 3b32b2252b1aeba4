#include "annot/placement_test.h"

#include <fpdf_edit.h>

#include "annot/annotations.h"
#include "view/geometry.h"

namespace quillmere::test {

PlacementTest::PlacementTest() {
  session.stampPanelVisible = true;
  session.stampPanelWidth = 180;
}

platform::SharedPicture PlacementTest::quarters(int side) {
  platform::Picture picture = plainPicture(side, side, 0);
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      const bool right = x >= side / 2;
      const std::uint32_t color =
          y < side / 2 ? (right ? 0xFF00FF00 : 0xFFFF0000) : (right ? 0xFFFFFFFF : 0xFF0000FF);
      picture.pixels[static_cast<std::size_t>(y * side + x)] = color;
    }
  }
  return std::make_shared<platform::Picture>(std::move(picture));
}

Placement PlacementTest::stampOf(const platform::SharedPicture& picture, double x, double y,
                                 double width, double height, double rotation) {
  Placement placement;
  placement.stampIndex = -1;
  placement.image = picture;
  placement.x = x;
  placement.y = y;
  placement.width = width;
  placement.height = height;
  placement.rotation = rotation;
  return placement;
}

Placement PlacementTest::textOf(const std::u16string& text, double x, double y, double width,
                                double height) {
  Placement placement = stampOf(nullptr, x, y, width, height);
  placement.kind = PlacementKind::TextDrop;
  placement.stampIndex = 0;
  placement.text = text;
  return placement;
}

PdfPage PlacementTest::plainPage() {
  PdfPage page;
  page.width = 600;
  page.height = 800;
  return page;
}

FPDF_DOCUMENT PlacementTest::openPlain(int pages, const PdfPage& like) {
  openPages(std::vector<PdfPage>(static_cast<std::size_t>(pages), like));
  const FPDF_DOCUMENT document = session.active.document.get();
  LoadPlacements(document);
  return document;
}

Placement& PlacementTest::add(std::int32_t page, Placement placement) {
  return session.placements[page].emplace_back(std::move(placement));
}

void PlacementTest::writeAll(FPDF_DOCUMENT document) {
  writePendingPlacements(document);
  LoadPlacements(document);
}

std::vector<FoundAnnotation> PlacementTest::annotationsOf(FPDF_DOCUMENT document, int page) {
  std::vector<FoundAnnotation> found;
  const PageHandle loaded(FPDF_LoadPage(document, page));
  for (int i = 0; i < FPDFPage_GetAnnotCount(loaded.get()); ++i) {
    const AnnotationHandle annotation = annotationAt(loaded.get(), i);
    FoundAnnotation& one = found.emplace_back();
    one.subtype = FPDFAnnot_GetSubtype(annotation.get());
    one.flags = FPDFAnnot_GetFlags(annotation.get());
    FPDFAnnot_GetRect(annotation.get(), &one.rect);
    one.record = ReadAnnotString(annotation.get(), "QMR");
    if (FPDFAnnot_GetObjectCount(annotation.get()) > 0) {
      one.objectType = FPDFPageObj_GetType(FPDFAnnot_GetObject(annotation.get(), 0));
    }
  }
  return found;
}

Placement& PlacementTest::placement(std::int32_t page, std::size_t index) {
  return session.placements.at(page).at(index);
}

std::string stampAnnotation(const std::u16string& record, const std::string& entries) {
  return "<< /Type /Annot /Subtype /Stamp /Rect [10 10 90 90] /QMR " + PdfFile::textString(record) +
         " " + entries + " >>";
}

}  // namespace quillmere::test
