#include <fpdf_text.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "annot/annot_test.h"
#include "annot/markup_summary.h"
#include "annot/markups.h"
#include "platform/text.h"
#include "support/readers_folder.h"

namespace quillmere::test {
namespace {

// What other readers make of our files. PDFium reads them here in any case.
class ReadersTest : public AnnotTest {
 protected:
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
      const std::string bytes = writtenCopy(documentOf(0));
      const DocumentHandle copy = loadDocument(bytes);
      ASSERT_NE(copy, nullptr);
      const std::vector<FoundMark> marks = marksOn(copy.get(), 0);
      ASSERT_EQ(marks.size(), 2u);
      EXPECT_EQ(marks[0].quads.size(), 2u);
      EXPECT_EQ(marks[1].quads.size(), 1u);
      const PageHandle page(FPDF_LoadPage(copy.get(), 0));
      const std::string picture = ppmOf(page.get());
      EXPECT_TRUE(picture == ppmOf(pane(0).page.get()));
      const std::string name = "written-" + std::to_string(rotate) + (upright ? "-upright" : "");
      keepForReaders(name + ".pdf", bytes);
      keepForReaders(name + ".ppm", picture);
    }
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
