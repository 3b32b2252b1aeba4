#include <fpdf_annot.h>
#include <fpdf_edit.h>
#include <gtest/gtest.h>
#include <quillmere_engine.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "annot/markup_pdf.h"
#include "annot/markup_summary.h"
#include "platform/text.h"
#include "store/write_document_copy.h"
#include "support/session_test.h"

namespace quillmere::test {
namespace {

// What other readers make of our files. With QUILLMERE_READERS_FOLDER set, scripts/check-readers
// compares what is left there; PDFium reads the files here in any case.
class ReadersTest : public SessionTest {
 protected:
  ReadersTest() { platform::putFolder(u"C:\\out"); }

  static void keep(const std::string& name, const std::string& bytes) {
    const char* folder = std::getenv("QUILLMERE_READERS_FOLDER");
    if (folder == nullptr) return;
    std::ofstream file(std::filesystem::path(folder) / name, std::ios::binary);
    file << bytes;
    EXPECT_TRUE(file.good()) << name;
  }

  // The document as written to a file; empty when that failed.
  static std::string written(FPDF_DOCUMENT document) {
    if (!WriteDocumentCopy(document, u"C:\\out\\file.pdf")) return {};
    return *platform::fileBytes(u"C:\\out\\file.pdf");
  }

  // A picture at 144 DPI, as a binary PPM file.
  static std::string pictureOf(FPDF_PAGE page) {
    const int width = static_cast<int>(2 * FPDF_GetPageWidthF(page) + 0.5);
    const int height = static_cast<int>(2 * FPDF_GetPageHeightF(page) + 0.5);
    const FPDF_BITMAP bitmap = FPDFBitmap_Create(width, height, 0);
    FPDFBitmap_FillRect(bitmap, 0, 0, width, height, 0xFFFFFFFF);
    FPDF_RenderPageBitmap(bitmap, page, 0, 0, width, height, 0, FPDF_ANNOT);
    std::string picture = "P6\n" + std::to_string(width) + " " + std::to_string(height) + "\n255\n";
    const auto* pixels = static_cast<const unsigned char*>(FPDFBitmap_GetBuffer(bitmap));
    const int stride = FPDFBitmap_GetStride(bitmap);
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        const unsigned char* pixel = pixels + y * stride + 4 * x;
        for (const int channel : {2, 1, 0}) picture += static_cast<char>(pixel[channel]);
      }
    }
    FPDFBitmap_Destroy(bitmap);
    return picture;
  }

  static void addMark(FPDF_PAGE page, FPDF_ANNOTATION_SUBTYPE subtype,
                      const std::vector<Box>& boxes, unsigned alpha) {
    const FPDF_ANNOTATION mark = FPDFPage_CreateAnnot(page, subtype);
    FPDFAnnot_SetColor(mark, FPDFANNOT_COLORTYPE_Color, 255, 150, 20, alpha);
    for (const Box& box : boxes) {
      const auto left = static_cast<float>(box.left);
      const auto top = static_cast<float>(box.top);
      const auto right = static_cast<float>(box.right);
      const auto bottom = static_cast<float>(box.bottom);
      const FS_QUADPOINTSF quad{left, top, right, top, left, bottom, right, bottom};
      FPDFAnnot_AppendAttachmentPoints(mark, &quad);
    }
    FPDFAnnot_SetFlags(mark, FPDF_ANNOT_FLAG_PRINT);
    EXPECT_TRUE(QuillmereEngine_WriteMarkAppearance(mark, 0));
    FPDFPage_CloseAnnot(mark);
    EXPECT_TRUE(QuillmereEngine_MakeAnnotIndirect(page, FPDFPage_GetAnnotCount(page) - 1));
  }
};

// Bars stand for words, as every reader has letters of its own.
TEST_F(ReadersTest, MarksLieWhereTheyWereMadeInAFileThatWasWritten) {
  for (const int rotate : {0, 90, 180, 270}) {
    PdfPage source;
    source.width = 240;
    source.height = 160;
    source.rotate = rotate;
    source.entries = "/CropBox [-10 15 220 150]";
    source.content = rectangleContent(40, 100, 120, 8, 0.2, 0.2, 0.2) +
                     rectangleContent(40, 60, 80, 8, 0.2, 0.4, 0.8);
    const DocumentHandle document = loadDocument(buildPdf({source}));
    {
      const PageHandle page(FPDF_LoadPage(document.get(), 0));
      addMark(page.get(), FPDF_ANNOT_HIGHLIGHT, {{38, 97, 162, 111}, {38, 57, 122, 98}}, 140);
      addMark(page.get(), FPDF_ANNOT_STRIKEOUT, {{38, 57, 122, 71}}, 255);
    }
    const std::string bytes = written(document.get());
    const DocumentHandle copy = loadDocument(bytes);
    ASSERT_NE(copy, nullptr);
    const PageHandle page(FPDF_LoadPage(copy.get(), 0));
    EXPECT_EQ(FPDFPage_GetAnnotCount(page.get()), 2);
    const std::string picture = pictureOf(page.get());
    const PageHandle original(FPDF_LoadPage(document.get(), 0));
    EXPECT_TRUE(picture == pictureOf(original.get())) << rotate;
    keep("written-" + std::to_string(rotate) + ".pdf", bytes);
    keep("written-" + std::to_string(rotate) + ".ppm", picture);
  }
}

TEST_F(ReadersTest, TheTextOfASummaryComesOutOfTheFile) {
  const std::vector<MarkupSummaryItem> items{
      {0, true, 0, u"plain words", u"a note with \u201Cquotes\u201D \u2013 and \u20AC"},
      {0, false, 0, u"\u03B1\u03B2\u03B3 \u0142\u00F3d\u017A", u""},
      {6, true, 0, u"", u"line one\rline two"}};
  const DocumentHandle summary = buildMarkupSummary(items, u"na\u00EFve.pdf");
  const std::string bytes = written(summary.get());
  const DocumentHandle copy = loadDocument(bytes);
  ASSERT_NE(copy, nullptr);
  const std::u16string text =
      u"Markup Summary\nna\u00EFve.pdf\nPage 1\nHighlight: \"plain words\"\n"
      u"Note: a note with \u201Cquotes\u201D \u2013 and \u20AC\n"
      u"Strikethrough: \"\u03B1\u03B2\u03B3 \u0142\u00F3d\u017A\"\nPage 7\n"
      u"Highlight (no text)\nNote: line one\nline two\n";
  keep("summary.pdf", bytes);
  keep("summary.txt", platform::toUtf8(text));
}

}  // namespace
}  // namespace quillmere::test
