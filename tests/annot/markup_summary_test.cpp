#include "annot/markup_summary.h"

#include <fpdf_edit.h>
#include <fpdf_text.h>
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "annot/markup_pdf.h"
#include "store/write_document_copy.h"
#include "support/session_test.h"

namespace quillmere::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

// A line of the report as it stands on its page.
struct Line {
  std::u16string text;
  std::string font;
  double x = 0;
  double y = 0;
  float size = 0;
  unsigned red = 0;
  unsigned green = 0;
  unsigned blue = 0;
};

class MarkupSummaryTest : public SessionTest {
 protected:
  static MarkupSummaryItem item(int page, const std::u16string& text,
                                const std::u16string& note = u"") {
    return {page, true, 0, text, note};
  }
  static Line lineOf(FPDF_PAGEOBJECT object, FPDF_TEXTPAGE text) {
    Line line;
    const unsigned long bytes = FPDFTextObj_GetText(object, text, nullptr, 0);
    line.text.resize(bytes / sizeof(char16_t));
    FPDFTextObj_GetText(object, text, reinterpret_cast<FPDF_WCHAR*>(line.text.data()), bytes);
    while (!line.text.empty() && line.text.back() == u'\0') line.text.pop_back();
    const FPDF_FONT font = FPDFTextObj_GetFont(object);
    line.font.resize(FPDFFont_GetBaseFontName(font, nullptr, 0) - 1);
    FPDFFont_GetBaseFontName(font, line.font.data(), line.font.size() + 1);
    FS_MATRIX matrix{};
    FPDFPageObj_GetMatrix(object, &matrix);
    line.x = matrix.e;
    line.y = matrix.f;
    FPDFTextObj_GetFontSize(object, &line.size);
    unsigned alpha = 0;
    FPDFPageObj_GetFillColor(object, &line.red, &line.green, &line.blue, &alpha);
    return line;
  }
  // The lines of one page of a report that was saved and loaded again.
  std::vector<Line> linesOf(FPDF_DOCUMENT document, int page) {
    platform::putFolder(u"C:\\out");
    EXPECT_TRUE(WriteDocumentCopy(document, u"C:\\out\\summary.pdf"));
    const DocumentHandle copy = loadDocument(*platform::fileBytes(u"C:\\out\\summary.pdf"));
    const PageHandle loaded(FPDF_LoadPage(copy.get(), page));
    const TextPageHandle text(FPDFText_LoadPage(loaded.get()));
    std::vector<Line> lines;
    for (int i = 0; i < FPDFPage_CountObjects(loaded.get()); ++i) {
      lines.push_back(lineOf(FPDFPage_GetObject(loaded.get(), i), text.get()));
    }
    return lines;
  }
  std::vector<std::u16string> textsOf(const std::vector<MarkupSummaryItem>& items) {
    const DocumentHandle summary = buildMarkupSummary(items, u"source.pdf");
    std::vector<std::u16string> texts;
    for (const Line& line : linesOf(summary.get(), 0)) texts.push_back(line.text);
    return texts;
  }
};

TEST_F(MarkupSummaryTest, MarkupsAndNotesStandUnderTheirPages) {
  MarkupSummaryItem struck = item(4, u"gone", u"why");
  struck.isHighlight = false;
  EXPECT_THAT(
      textsOf({item(0, u"marked words"), item(0, u"", u"on a picture"), struck}),
      ElementsAre(u"Markup Summary", u"source.pdf", u"Page 1", u"Highlight: \"marked words\"",
                  u"Highlight (no text)", u"Note: on a picture", u"Page 5",
                  u"Strikethrough: \"gone\"", u"Note: why"));
}

TEST_F(MarkupSummaryTest, EveryElementHasItsPlaceSizeAndColour) {
  const DocumentHandle summary = buildMarkupSummary({item(0, u"a", u"b"), item(0, u"c")}, u"n.pdf");
  const std::vector<Line> lines = linesOf(summary.get(), 0);
  ASSERT_THAT(lines, SizeIs(6));
  const struct {
    double x, y;
    float size;
    unsigned red, green, blue;
  } wanted[] = {
      {54, 716.56, 16, 30, 30, 30},     // 738 - 16 * 1.34
      {54, 703.16, 10, 110, 110, 110},  // - 10 * 1.34
      {54, 673.08, 12, 40, 70, 140},    // - 8 - 6 - 12 * 1.34
      {68, 659.68, 10, 70, 70, 70},     // - 10 * 1.34
      {82, 646.28, 10, 0, 0, 0},        // - 10 * 1.34
      {68, 626.88, 10, 70, 70, 70},     // - 6 - 10 * 1.34
  };
  for (std::size_t i = 0; i < lines.size(); ++i) {
    EXPECT_NEAR(lines[i].x, wanted[i].x, 0.01) << i;
    EXPECT_NEAR(lines[i].y, wanted[i].y, 0.01) << i;
    EXPECT_EQ(lines[i].size, wanted[i].size) << i;
    EXPECT_EQ(lines[i].red, wanted[i].red) << i;
    EXPECT_EQ(lines[i].green, wanted[i].green) << i;
    EXPECT_EQ(lines[i].blue, wanted[i].blue) << i;
  }
  FS_SIZEF size{};
  FPDF_GetPageSizeByIndexF(summary.get(), 0, &size);
  EXPECT_EQ(size.width, 612);
  EXPECT_EQ(size.height, 792);
}

TEST_F(MarkupSummaryTest, ANoteWithALineBreakHasTwoParagraphsWithTheSameIndent) {
  const DocumentHandle summary = buildMarkupSummary({item(0, u"a", u"one\rtwo")}, u"n.pdf");
  const std::vector<Line> lines = linesOf(summary.get(), 0);
  ASSERT_THAT(lines, SizeIs(6));
  EXPECT_EQ(lines[4].text, u"Note: one");
  EXPECT_EQ(lines[5].text, u"two");
  EXPECT_NEAR(lines[4].x, 82, 0.01);
  EXPECT_NEAR(lines[5].x, 82, 0.01);
}

TEST_F(MarkupSummaryTest, ALongReportGoesOnWithoutAHeadingOnTheNextPage) {
  std::vector<MarkupSummaryItem> items;
  for (int i = 0; i < 100; ++i) items.push_back(item(0, u"item"));
  const DocumentHandle summary = buildMarkupSummary(items, u"n.pdf");
  ASSERT_EQ(FPDF_GetPageCount(summary.get()), 3);
  const std::vector<Line> second = linesOf(summary.get(), 1);
  EXPECT_EQ(second.front().text, u"Highlight: \"item\"");
  EXPECT_NEAR(second.front().y, 738 - 13.4, 0.01);
  std::size_t markups = 0;
  for (int page = 0; page < 3; ++page) {
    const std::vector<Line> lines = linesOf(summary.get(), page);
    EXPECT_GE(lines.back().y, 54);
    for (const Line& line : lines) markups += line.text.starts_with(u"Highlight") ? 1 : 0;
  }
  EXPECT_EQ(markups, 100u);
}

TEST_F(MarkupSummaryTest, WesternTextNeedsNoFontOfTheSystem) {
  EXPECT_THAT(textsOf({item(0, u"\u00FC\u20AC \u201Cq\u201D \u2013 \u0160")}),
              testing::Contains(u"Highlight: \"\u00FC\u20AC \u201Cq\u201D \u2013 \u0160\""));
  EXPECT_EQ(platform::standIn().fontFilesRead, 0);
}

TEST_F(MarkupSummaryTest, OtherScriptsAreEmbeddedOnceAndReadable) {
  EXPECT_THAT(textsOf({item(0, u"\u03B1\u03B2\u03B3 \u0142\u00F3d\u017A \uFB01n"),
                       item(0, u"\u03A9"), item(1, u"plain")}),
              ElementsAre(u"Markup Summary", u"source.pdf", u"Page 1",
                          u"Highlight: \"\u03B1\u03B2\u03B3 \u0142\u00F3d\u017A fin\"",
                          u"Highlight: \"\u03A9\"", u"Page 2", u"Highlight: \"plain\""));
  EXPECT_EQ(platform::standIn().fontFilesRead, 1);
}

TEST_F(MarkupSummaryTest, EveryCharacterOfTheStandardFontsIsReadable) {
  std::vector<MarkupSummaryItem> items;
  std::vector<std::u16string> wanted;
  for (char32_t code = u' ' + 1; code <= 0xFFFF; ++code) {
    const std::u16string text = {u'<', static_cast<char16_t>(code), u'>'};
    if (!fitsStandardFonts(text)) continue;
    items.push_back(item(0, text));
    wanted.push_back(u"Highlight: \"" + text + u"\"");
  }
  ASSERT_GT(items.size(), 210u);
  const DocumentHandle summary = buildMarkupSummary(items, u"source.pdf");
  std::vector<std::u16string> found;
  for (int page = 0; page < FPDF_GetPageCount(summary.get()); ++page) {
    for (const Line& line : linesOf(summary.get(), page)) {
      if (line.text.starts_with(u"Highlight")) found.push_back(line.text);
    }
  }
  EXPECT_EQ(found, wanted);
}

TEST_F(MarkupSummaryTest, BlanksAndHyphensOfTypesettersComeOutAsReadersWriteThem) {
  EXPECT_THAT(textsOf({item(0, u"No.\u00A05", u"infor\u00ADmation")}),
              testing::IsSupersetOf({u"Highlight: \"No. 5\"", u"Note: information"}));
  EXPECT_EQ(platform::standIn().fontFilesRead, 0);
}

TEST_F(MarkupSummaryTest, WithoutAFontOfTheSystemQuestionMarksStandForWhatIsMissing) {
  platform::standIn().fontFilesThere = false;
  EXPECT_THAT(textsOf({item(0, u"a\u03B1\u00FC\U0001F600z"), item(0, u"plain")}),
              testing::IsSupersetOf({u"Highlight: \"a?\u00FC?z\"", u"Highlight: \"plain\""}));
}

TEST_F(MarkupSummaryTest, TitleAndHeadingsAreBold) {
  const DocumentHandle summary = buildMarkupSummary({item(0, u"a", u"b")}, u"n.pdf");
  const std::vector<Line> lines = linesOf(summary.get(), 0);
  std::vector<std::string> fonts;
  for (const Line& line : lines) fonts.push_back(line.font);
  EXPECT_THAT(fonts, ElementsAre("Helvetica-Bold", "Helvetica", "Helvetica-Bold", "Helvetica",
                                 "Helvetica"));
}

TEST_F(MarkupSummaryTest, AHeadingMayStandAloneAtAPagesEnd) {
  // The note leaves room for a heading and not for a line below it.
  std::vector<MarkupSummaryItem> items{item(0, u"first", u"note")};
  while (items.size() < 100) {
    items.push_back(item(0, u"item"));
    auto more = items;
    more.push_back(item(1, u"of the second page"));
    const DocumentHandle summary = buildMarkupSummary(more, u"n.pdf");
    if (FPDF_GetPageCount(summary.get()) == 1) continue;
    EXPECT_EQ(linesOf(summary.get(), 0).back().text, u"Page 2");
    ASSERT_THAT(linesOf(summary.get(), 1), SizeIs(1));
    EXPECT_EQ(linesOf(summary.get(), 1)[0].text, u"Highlight: \"of the second page\"");
    return;
  }
  FAIL() << "one page holds everything";
}

TEST_F(MarkupSummaryTest, ItemsComeFromTheTopOfEachPageAndTiesInTheOrderOfAnnotations) {
  PdfPage page = courierPage({"one two", "three"});
  page.annotations = {markup("StrikeOut", {charactersOf(1, 0, 4)}),
                      markup("Highlight", {charactersOf(0, 4, 6)}),
                      markup("Highlight", {charactersOf(0, 0, 2)}, note(u"n")),
                      "<< /Type /Annot /Subtype /Highlight /Rect [0 0 600 790] >>"};
  PdfPage other = courierPage({"four"});
  other.annotations = {markup("Highlight", {charactersOf(0, 0, 3)})};
  const auto items = collectSummaryItems(openInActive(buildPdf({page, PdfPage{}, other})));
  ASSERT_THAT(items, SizeIs(5));
  EXPECT_EQ(items[0].text, u"two");
  EXPECT_EQ(items[1].text, u"one");
  EXPECT_EQ(items[1].note, u"n");
  EXPECT_EQ(items[2].text, u"three");
  EXPECT_FALSE(items[2].isHighlight);
  EXPECT_EQ(items[3].text, u"");
  EXPECT_EQ(items[3].top, -1e18);
  EXPECT_EQ(items[4].page, 2);
}

TEST_F(MarkupSummaryTest, CollectingForTheReportLeavesTheListAlone) {
  PdfPage page = courierPage({"text"});
  page.annotations = {markup("Highlight", {charactersOf(0, 0, 3)})};
  EXPECT_THAT(collectSummaryItems(openInActive(buildPdf({page}))), SizeIs(1));
  EXPECT_EQ(session.markupListDocument, nullptr);
  EXPECT_THAT(collectSummaryItems(openInActive(simplePdf(2))), IsEmpty());
}

TEST_F(MarkupSummaryTest, ANoteOfAMegabyteFillsManyPages) {
  std::u16string text;
  while (text.size() < 200000) text += u"word \U0001F600 ";
  const DocumentHandle summary = buildMarkupSummary({item(0, u"a", text)}, u"n.pdf");
  EXPECT_GT(FPDF_GetPageCount(summary.get()), 20);
}

}  // namespace
}  // namespace quillmere::test
