#include <fpdf_text.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "annot/annot_test.h"
#include "annot/markup_summary.h"
#include "annot/markups.h"
#include "platform/text.h"
#include "store/write_document_copy.h"

namespace quillmere::test {
namespace {

// What other readers make of our files. With QUILLMERE_READERS_FOLDER set, scripts/check-readers
// compares what is left there; PDFium reads the files here in any case.
class ReadersTest : public AnnotTest {
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

  // A page with two lines of words that no reader draws and a bar in place of each, in its middle.
  // The words run along the page's width, or upright as the turned page is seen.
  static PdfPage wordsOnPage(int rotate, bool upright) {
    const std::map<int, std::string> directions{
        {0, "1 0 0 1"}, {90, "0 1 -1 0"}, {180, "-1 0 0 -1"}, {270, "0 -1 1 0"}};
    PdfPage page;
    page.width = 240;
    page.height = 160;
    page.rotate = rotate;
    page.entries = "/CropBox [-10 15 220 150]";
    page.content = "q " + directions.at(upright ? rotate : 0) + " 110 85 cm\n" +
                   rectangleContent(-58, 0, 116, 9, 0.2, 0.2, 0.2) +
                   rectangleContent(-58, -12, 116, 9, 0.2, 0.4, 0.8) + "3 Tr\n" +
                   textContent("dipped words", -58, 0, 16, "F3") +
                   textContent("dipped again", -58, -12, 16, "F3") + "Q\n";
    return page;
  }
  // Marks both lines and strikes the second one through.
  void markWords() {
    session.settings.highlightOpacity = 55;
    selectCharacters(0, FPDFText_CountChars(pane(0).textPage.get()) - 1);
    highlightSelection();
    selectText(u"dipped again");
    strikeSelectionThrough();
  }
};

// Bars stand for words, as every reader has letters of its own.
TEST_F(ReadersTest, MarksLieWhereTheyWereMadeInAFileThatWasWritten) {
  for (const int rotate : {0, 90, 180, 270}) {
    for (const bool upright : {false, true}) {
      SCOPED_TRACE(testing::Message() << rotate << (upright ? " upright" : ""));
      resetSession();
      openPages({wordsOnPage(rotate, upright)});
      markWords();
      const std::string bytes = written(documentOf(0));
      const DocumentHandle copy = loadDocument(bytes);
      ASSERT_NE(copy, nullptr);
      const std::vector<FoundMark> marks = marksOn(copy.get(), 0);
      ASSERT_EQ(marks.size(), 2u);
      EXPECT_EQ(marks[0].quads.size(), 2u);
      EXPECT_EQ(marks[1].quads.size(), 1u);
      const PageHandle page(FPDF_LoadPage(copy.get(), 0));
      const std::string picture = pictureOf(page.get());
      EXPECT_TRUE(picture == pictureOf(pane(0).page.get()));
      const std::string name = "written-" + std::to_string(rotate) + (upright ? "-upright" : "");
      keep(name + ".pdf", bytes);
      keep(name + ".ppm", picture);
    }
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
