#include <fpdf_annot.h>
#include <fpdf_edit.h>
#include <gtest/gtest.h>
#include <quillmere_engine.h>

#include <string>
#include <vector>

#include "annot/markup_pdf.h"
#include "annot/markup_summary.h"
#include "platform/text.h"
#include "support/readers_folder.h"
#include "support/session_test.h"

namespace quillmere::test {
namespace {

// What other readers make of our files.
class ReadersTest : public SessionTest {
 protected:
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
    const std::string bytes = writtenCopy(document.get());
    const DocumentHandle copy = loadDocument(bytes);
    ASSERT_NE(copy, nullptr);
    const PageHandle page(FPDF_LoadPage(copy.get(), 0));
    EXPECT_EQ(FPDFPage_GetAnnotCount(page.get()), 2);
    const std::string picture = ppmOf(page.get());
    const PageHandle original(FPDF_LoadPage(document.get(), 0));
    EXPECT_TRUE(picture == ppmOf(original.get())) << rotate;
    keepForReaders("written-" + std::to_string(rotate) + ".pdf", bytes);
    keepForReaders("written-" + std::to_string(rotate) + ".ppm", picture);
  }
}

TEST_F(ReadersTest, TheTextOfASummaryComesOutOfTheFile) {
  const std::vector<MarkupSummaryItem> items{
      {0, true, 0, u"plain words", u"a note with \u201Cquotes\u201D \u2013 and \u20AC"},
      {0, false, 0, u"\u03B1\u03B2\u03B3 \u0142\u00F3d\u017A", u""},
      {6, true, 0, u"", u"line one\rline two"}};
  const DocumentHandle summary = buildMarkupSummary(items, u"na\u00EFve.pdf");
  const std::string bytes = writtenCopy(summary.get());
  const DocumentHandle copy = loadDocument(bytes);
  ASSERT_NE(copy, nullptr);
  const std::u16string text =
      u"Markup Summary\nna\u00EFve.pdf\nPage 1\nHighlight: \"plain words\"\n"
      u"Note: a note with \u201Cquotes\u201D \u2013 and \u20AC\n"
      u"Strikethrough: \"\u03B1\u03B2\u03B3 \u0142\u00F3d\u017A\"\nPage 7\n"
      u"Highlight (no text)\nNote: line one\nline two\n";
  keepForReaders("summary.pdf", bytes);
  keepForReaders("summary.txt", platform::toUtf8(text));
}

}  // namespace
}  // namespace quillmere::test
