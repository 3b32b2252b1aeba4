#include "annot/annot_test.h"

#include <fpdf_edit.h>
#include <fpdf_save.h>
#include <fpdf_text.h>

#include <cmath>

#include "annot/annotations.h"
#include "annot/markups.h"
#include "platform/pixels.h"
#include "view/geometry.h"
#include "view/render.h"

namespace quillmere::test {

namespace {

struct CopyWriter : FPDF_FILEWRITE {
  std::string bytes;
};

int appendBlock(FPDF_FILEWRITE* file, const void* data, unsigned long size) {
  static_cast<CopyWriter*>(file)->bytes.append(static_cast<const char*>(data), size);
  return 1;
}

FoundMark readMark(FPDF_ANNOTATION annotation) {
  FoundMark mark;
  mark.subtype = FPDFAnnot_GetSubtype(annotation);
  unsigned r = 0, g = 0, b = 0, a = 0;
  if (FPDFAnnot_GetObjectCount(annotation) > 0) {
    FPDFPageObj_GetFillColor(FPDFAnnot_GetObject(annotation, 0), &r, &g, &b, &a);
  }
  mark.color = r << 16 | g << 8 | b;
  float opacity = 0;
  FPDFAnnot_GetNumberValue(annotation, "CA", &opacity);
  mark.alpha = static_cast<int>(std::lround(opacity * 255));
  mark.flags = FPDFAnnot_GetFlags(annotation);
  FPDFAnnot_GetRect(annotation, &mark.rect);
  for (std::size_t i = 0; i < FPDFAnnot_CountAttachmentPoints(annotation); ++i) {
    FPDFAnnot_GetAttachmentPoints(annotation, i, &mark.quads.emplace_back());
  }
  mark.note = ReadAnnotString(annotation, "Contents");
  return mark;
}

}  // namespace

PdfPage AnnotTest::linedPage(const std::vector<std::string>& lines) {
  PdfPage page;
  page.width = 600;
  page.height = 800;
  double baseline = 700;
  for (const std::string& line : lines) {
    page.content += textContent(line, 72, baseline, 24);
    baseline -= 50;
  }
  return page;
}

void AnnotTest::openLines(const std::vector<std::string>& lines, int pages) {
  openPages(std::vector<PdfPage>(static_cast<std::size_t>(pages), linedPage(lines)));
}

void AnnotTest::openPages(const std::vector<PdfPage>& pages) {
  openAndShow(buildPdf(pages));
  setView(0, 1.0f, 40.0f, 20.0f);
}

void AnnotTest::selectCharacters(std::int32_t anchor, std::int32_t end, int inPane) {
  session.selection = {true, inPane, anchor, end, false};
}

void AnnotTest::selectText(const std::u16string& text, int inPane) {
  const FPDF_TEXTPAGE textPage = pane(inPane).textPage.get();
  const std::vector<unsigned short> wanted = [&] {
    std::vector<unsigned short> units(text.begin(), text.end());
    units.push_back(0);
    return units;
  }();
  const FPDF_SCHHANDLE search = FPDFText_FindStart(textPage, wanted.data(), 0, 0);
  ASSERT_TRUE(FPDFText_FindNext(search));
  const int first = FPDFText_GetSchResultIndex(search);
  selectCharacters(first, first + FPDFText_GetSchCount(search) - 1, inPane);
  FPDFText_FindClose(search);
}

std::vector<FoundMark> AnnotTest::marksOn(FPDF_DOCUMENT document, int page) {
  std::vector<FoundMark> marks;
  const PageHandle loaded(FPDF_LoadPage(document, page));
  for (int i = 0; i < FPDFPage_GetAnnotCount(loaded.get()); ++i) {
    const AnnotationHandle annotation = annotationAt(loaded.get(), i);
    if (isMarkup(annotation.get())) marks.push_back(readMark(annotation.get()));
  }
  return marks;
}

int AnnotTest::annotationsOn(FPDF_DOCUMENT document, int page) {
  const PageHandle loaded(FPDF_LoadPage(document, page));
  return FPDFPage_GetAnnotCount(loaded.get());
}

int AnnotTest::countMarks(FPDF_DOCUMENT document) {
  std::size_t count = 0;
  for (int page = 0; page < FPDF_GetPageCount(document); ++page) {
    count += marksOn(document, page).size();
  }
  return static_cast<int>(count);
}

std::string AnnotTest::savedCopy(FPDF_DOCUMENT document) {
  CopyWriter writer;
  writer.version = 1;
  writer.WriteBlock = appendBlock;
  EXPECT_TRUE(FPDF_SaveAsCopy(document, &writer, 0));
  return writer.bytes;
}

ClientPoint AnnotTest::placeOf(double x, double y, int inPane) {
  const PanePoint point = pageToPane(inPane, x, y);
  const PixelRect rect = paneRect(inPane);
  return {rect.left + static_cast<int>(std::lround(point.x)),
          rect.top + static_cast<int>(std::lround(point.y))};
}

ClientPoint AnnotTest::middleOf(const FoundMark& mark, int inPane) {
  const FS_QUADPOINTSF& quad = mark.quads.front();
  return placeOf((quad.x1 + quad.x4) / 2, (quad.y1 + quad.y4) / 2, inPane);
}

std::uint32_t AnnotTest::pictureAt(const ClientPoint& place, int inPane) {
  const PaneSlot& slot = pane(inPane);
  if (!slot.pageBitmap) return 0;
  const PixelRect rect = paneRect(inPane);
  const int x = place.x - rect.left - static_cast<int>(slot.panX);
  const int y = place.y - rect.top - static_cast<int>(slot.panY);
  if (x < 0 || y < 0 || x >= slot.pageBitmapWidth || y >= slot.pageBitmapHeight) return 0;
  const std::uint32_t* pixels = platform::pixelsOf(slot.pageBitmap.get());
  return pixels[static_cast<std::size_t>(y) * slot.pageBitmapWidth + x] & 0xFFFFFF;
}

void AnnotTest::pick(const ClientPoint& place, int inPane) {
  pickMarkup(inPane, place.x, place.y);
  ASSERT_GE(session.markupMenuAnnot, 0);
}

std::string highlightAnnotation(const std::string& quads, const std::string& entries) {
  return "<< /Type /Annot /Subtype /Highlight /C [1 1 0] /Rect [10 10 90 90] /QuadPoints [" +
         quads + "] " + entries + " >>";
}

std::string highlightBox(int left, int bottom, int right, int top, const std::string& entries) {
  const auto corner = [](int x, int y) {
    return std::to_string(x) + " " + std::to_string(y) + " ";
  };
  return highlightAnnotation(
      corner(left, top) + corner(right, top) + corner(left, bottom) + corner(right, bottom),
      entries);
}

}  // namespace quillmere::test
