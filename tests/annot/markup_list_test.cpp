#include "annot/markup_list.h"

#include <fpdf_annot.h>
#include <fpdf_edit.h>
#include <gmock/gmock.h>
#include <quillmere_engine.h>

#include <string>
#include <vector>

#include "annot/markup_pdf.h"
#include "session/document_slots.h"
#include "support/session_test.h"

namespace quillmere::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class MarkupListTest : public SessionTest {
 protected:
  std::vector<MarkupEntry> collect(const std::vector<PdfPage>& pages) {
    document = openInActive(buildPdf(pages));
    std::vector<MarkupEntry> list;
    CollectMarkups(document, list);
    return list;
  }
  std::vector<MarkupEntry> collect(const PdfPage& page) { return collect(std::vector{page}); }

  static std::vector<std::u16string> texts(const std::vector<MarkupEntry>& list) {
    std::vector<std::u16string> texts;
    for (const MarkupEntry& entry : list) texts.push_back(entry.text);
    return texts;
  }

  // Adds a highlight over a box of a page, as the program's own edit does.
  void addHighlight(int page, const Box& box) const {
    const PageHandle loaded(FPDF_LoadPage(document, page));
    const FPDF_ANNOTATION annotation = FPDFPage_CreateAnnot(loaded.get(), FPDF_ANNOT_HIGHLIGHT);
    const auto left = static_cast<float>(box.left);
    const auto top = static_cast<float>(box.top);
    const auto right = static_cast<float>(box.right);
    const auto bottom = static_cast<float>(box.bottom);
    const FS_QUADPOINTSF quad{left, top, right, top, left, bottom, right, bottom};
    FPDFAnnot_AppendAttachmentPoints(annotation, &quad);
    const FS_RECTF rect{left, top, right, bottom};
    FPDFAnnot_SetRect(annotation, &rect);
    FPDFPage_CloseAnnot(annotation);
  }

  static std::u16string labelOf(const std::u16string& text, const std::u16string& note = u"") {
    MarkupEntry entry;
    entry.page = 2;
    entry.subtype = FPDF_ANNOT_HIGHLIGHT;
    entry.text = text;
    entry.note = note;
    return markupLabel(entry);
  }

  FPDF_DOCUMENT document = nullptr;
};

TEST_F(MarkupListTest, AMarkupComesWithAllThatTheFileTellsOfIt) {
  PdfPage page = courierPage({"Alpha Beta Gamma"});
  page.annotations = {markup("StrikeOut", {charactersOf(0, 6, 9)},
                             "/C [1 0 0.2] /Contents " + PdfFile::textString(u"a note"))};
  const auto list = collect({PdfPage{}, page});
  ASSERT_THAT(list, SizeIs(1));
  EXPECT_EQ(list[0].page, 1);
  EXPECT_EQ(list[0].subtype, FPDF_ANNOT_STRIKEOUT);
  EXPECT_EQ(list[0].text, u"Beta");
  EXPECT_EQ(list[0].note, u"a note");
  EXPECT_EQ(list[0].color, 0x3300FFu);  // red in the low byte
  EXPECT_TRUE(list[0].hasRect);
  EXPECT_NEAR(list[0].left, 108.5, 0.01);
  EXPECT_NEAR(list[0].top, 708, 0.01);
  EXPECT_NEAR(list[0].right, 131.5, 0.01);
  EXPECT_NEAR(list[0].bottom, 698, 0.01);
}

TEST_F(MarkupListTest, TheOrderIsByPageAndFromTheTopOfEachPage) {
  PdfPage page = courierPage({"one", "two", "three"});
  page.annotations = {markup("Highlight", {charactersOf(2, 0, 4)}),
                      markup("StrikeOut", {charactersOf(0, 0, 2)}),
                      markup("Highlight", {charactersOf(1, 0, 2)})};
  PdfPage other = courierPage({"four"});
  other.annotations = {markup("Highlight", {charactersOf(0, 0, 3)})};
  EXPECT_THAT(texts(collect({page, PdfPage{}, other})),
              ElementsAre(u"one", u"two", u"three", u"four"));
}

TEST_F(MarkupListTest, OtherAnnotationsAreNotListed) {
  PdfPage page = courierPage({"text"});
  page.annotations = {linkAnnotation(72, 690, 100, 710, pageDestination(1)),
                      markup("Underline", {charactersOf(0, 0, 3)}),
                      markup("Squiggly", {charactersOf(0, 0, 3)}),
                      "<< /Type /Annot /Subtype /Stamp /Rect [0 0 10 10] >>"};
  EXPECT_THAT(collect(page), IsEmpty());
}

TEST_F(MarkupListTest, HiddenMarkupsAreListed) {
  PdfPage page = courierPage({"text"});
  page.annotations = {markup("Highlight", {charactersOf(0, 0, 3)}, "/F 2"),
                      markup("Highlight", {charactersOf(0, 0, 3)}, "/F 32")};
  EXPECT_THAT(collect(page), SizeIs(2));
}

TEST_F(MarkupListTest, SeveralLinesAreJoinedByBlanks) {
  PdfPage page = courierPage({"first line", "second line", "third"});
  page.annotations = {
      markup("Highlight", {charactersOf(0, 6, 9), charactersOf(1, 0, 10), charactersOf(2, 0, 4)})};
  EXPECT_THAT(texts(collect(page)), ElementsAre(u"line second line third"));
}

TEST_F(MarkupListTest, AWordDividedAtALinesEndComesOutWhole) {
  PdfPage page;
  page.content = "BT /F3 10 Tf 72 700 Td (all infor-) Tj 0 -20 Td (mation is) Tj ET";
  page.annotations = {markup("Highlight", {charactersOf(0, 4, 9), charactersOf(1, 0, 5)})};
  EXPECT_THAT(texts(collect(page)), ElementsAre(u"information"));
}

// The quad reaches into the lines above and below, whose letters PDFium then gives too.
TEST_F(MarkupListTest, OfANeighbouringLineThatTheQuadTouchesNothingIsTaken) {
  PdfPage page;
  for (int i = 0; i < 3; ++i) {
    page.content += textContent(
        std::vector<std::string>{"above it", "inside of", "below it"}[static_cast<std::size_t>(i)],
        72, 700 - 10 * i, 10, "F3");
  }
  page.annotations = {markup("Highlight", {Box{72, 685, 200, 700}})};
  EXPECT_THAT(texts(collect(page)), ElementsAre(u"inside of"));
}

TEST_F(MarkupListTest, AMarkupWithoutTextUnderItHasNone) {
  PdfPage page = courierPage({"text"});
  page.annotations = {markup("Highlight", {Box{300, 300, 350, 320}})};
  EXPECT_THAT(texts(collect(page)), ElementsAre(u""));
  page.content.clear();
  EXPECT_THAT(texts(collect(page)), ElementsAre(u""));
}

TEST_F(MarkupListTest, WithoutARectangleTheQuadsGiveIt) {
  PdfPage page = courierPage({"text"});
  std::string annotation = markup("Highlight", {charactersOf(0, 0, 1), charactersOf(0, 3, 3)});
  annotation.replace(annotation.find("/Rect"), 5, "/Tcer");
  page.annotations = {annotation, "<< /Type /Annot /Subtype /Highlight >>",
                      markup("Highlight", {charactersOf(0, 0, 0)})};
  const auto list = collect(page);
  ASSERT_THAT(list, SizeIs(3));
  EXPECT_TRUE(list[0].hasRect);
  EXPECT_NEAR(list[0].left, 72.5, 0.01);
  EXPECT_NEAR(list[0].right, 95.5, 0.01);
  EXPECT_NEAR(list[0].top, 708, 0.01);
  EXPECT_FALSE(list[2].hasRect);
  EXPECT_EQ(list[2].top, 0);
  EXPECT_EQ(list[2].text, u"");
}

TEST_F(MarkupListTest, ARectangleWithSwappedCornersIsPutRight) {
  PdfPage page;
  page.annotations = {"<< /Type /Annot /Subtype /Highlight /Rect [200 300 100 250] >>"};
  const auto list = collect(page);
  ASSERT_THAT(list, SizeIs(1));
  EXPECT_EQ(list[0].left, 100);
  EXPECT_EQ(list[0].bottom, 250);
  EXPECT_EQ(list[0].right, 200);
  EXPECT_EQ(list[0].top, 300);
}

TEST_F(MarkupListTest, BrokenQuadsAreSurvived) {
  PdfPage page = courierPage({"text"});
  const std::string rect = "<< /Type /Annot /Subtype /Highlight /Rect [72 690 100 710] ";
  page.annotations = {rect + "/QuadPoints [1 2 3] >>", rect + "/QuadPoints /Name >>",
                      rect + "/QuadPoints [0 0 0 0 0 0 0 0] >>",
                      rect + "/QuadPoints [9e30 9e30 -9e30 9e30 9e30 -9e30 -9e30 -9e30] >>",
                      rect + "/QuadPoints [(a) (b) (c) (d) (e) (f) (g) (h)] >>"};
  EXPECT_THAT(collect(page), SizeIs(5));
}

TEST_F(MarkupListTest, CountsOfAnnotationsThatAreNoneAreSurvived) {
  PdfPage page = courierPage({"text"});
  page.entries = "/Annots [null 17 (text) [] << >> << /Subtype /Highlight >>]";
  EXPECT_THAT(collect(page), SizeIs(testing::Le(1u)));
}

TEST_F(MarkupListTest, ColoursComeFromTheAppearanceWhereThereIsOne) {
  PdfPage page = courierPage({"text"});
  page.annotations = {markup("Highlight", {charactersOf(0, 0, 0)}, ""),
                      markup("Highlight", {charactersOf(0, 1, 1)}, "/C [0 0 1]"),
                      markup("Highlight", {charactersOf(0, 2, 2)}, "")};
  document = openInActive(buildPdf({page}));
  {
    const PageHandle loaded(FPDF_LoadPage(document, 0));
    const auto setAppearance = [&](int index, const std::u16string& content) {
      const FPDF_ANNOTATION annotation = FPDFPage_GetAnnot(loaded.get(), index);
      EXPECT_TRUE(FPDFAnnot_SetAP(annotation, FPDF_ANNOT_APPEARANCEMODE_NORMAL,
                                  reinterpret_cast<FPDF_WIDESTRING>(content.c_str())));
      FPDFPage_CloseAnnot(annotation);
    };
    setAppearance(0, u"1 0 0.2 rg 72 690 6 10 re f");
    setAppearance(1, u"0 1 0 rg 72 690 6 10 re f");
    setAppearance(2, u"");
  }
  std::vector<MarkupEntry> list;
  CollectMarkups(document, list);
  ASSERT_THAT(list, SizeIs(3));
  EXPECT_EQ(list[0].color, 0x3300FFu);
  EXPECT_EQ(list[1].color, 0x00FF00u);
  EXPECT_EQ(list[2].color, 60u << 16 | 235u << 8 | 255u);
}

TEST_F(MarkupListTest, AnAppearanceOfOursTellsItsColour) {
  PdfPage page = courierPage({"text"});
  page.annotations = {markup("Highlight", {charactersOf(0, 0, 3)}, "/C [0 1 0.2]")};
  document = openInActive(buildPdf({page}));
  {
    const PageHandle loaded(FPDF_LoadPage(document, 0));
    const FPDF_ANNOTATION annotation = FPDFPage_GetAnnot(loaded.get(), 0);
    ASSERT_TRUE(QuillmereEngine_WriteMarkAppearance(annotation, 0));
    FPDFPage_CloseAnnot(annotation);
  }
  std::vector<MarkupEntry> list;
  CollectMarkups(document, list);
  ASSERT_THAT(list, SizeIs(1));
  EXPECT_EQ(list[0].color, 0x33FF00u);
}

TEST_F(MarkupListTest, NotesKeepEveryCharacterAndAnyLength) {
  std::u16string longNote;
  while (longNote.size() < 500000) longNote += u"word \U0001F600\r";
  PdfPage page = courierPage({"text"});
  page.annotations = {markup("Highlight", {charactersOf(0, 0, 3)}, note(longNote))};
  const auto list = collect(page);
  ASSERT_THAT(list, SizeIs(1));
  EXPECT_EQ(list[0].note, longNote);
  EXPECT_EQ(markupLabel(list[0]), u"text - word \U0001F600 word \U0001F600 word \U0001F600...");
}

TEST_F(MarkupListTest, OnTurnedPagesAndPagesWithCropBoxesTheTextIsFound) {
  for (const int rotate : {0, 90, 180, 270}) {
    PdfPage page = courierPage({"Alpha Beta Gamma"});
    page.rotate = rotate;
    page.entries = "/CropBox [50 300 400 760]";
    page.annotations = {markup("Highlight", {charactersOf(0, 6, 9)})};
    EXPECT_THAT(texts(collect(page)), ElementsAre(u"Beta")) << rotate;
  }
}

TEST_F(MarkupListTest, ALabelHasTheFirstFiveWords) {
  EXPECT_EQ(labelOf(u"one two three four five"), u"one two three four five");
  EXPECT_EQ(labelOf(u"one two three four five six"), u"one two three four five...");
  EXPECT_EQ(labelOf(u" \tone\r\ntwo \n three"), u"one two three");
}

TEST_F(MarkupListTest, ALabelWithoutWordsNamesKindAndPage) {
  EXPECT_EQ(labelOf(u""), u"Highlight (p.3)");
  EXPECT_EQ(labelOf(u" \r\n\t "), u"Highlight (p.3)");
  MarkupEntry entry;
  entry.page = 9;
  entry.subtype = FPDF_ANNOT_STRIKEOUT;
  EXPECT_EQ(markupLabel(entry), u"Strikeout (p.10)");
}

TEST_F(MarkupListTest, ANoteAddsItsFirstSixWords) {
  EXPECT_EQ(labelOf(u"marked", u"a b c d e f"), u"marked - a b c d e f");
  EXPECT_EQ(labelOf(u"marked", u"a b c d e f g"), u"marked - a b c d e f...");
  EXPECT_EQ(labelOf(u"", u"see\rthere"), u"Highlight (p.3) - see there");
  EXPECT_EQ(labelOf(u"marked", u" \r "), u"marked");
}

TEST_F(MarkupListTest, WordsWithoutAnEndAreCutBetweenCharacters) {
  const std::u16string label = labelOf(std::u16string(249, u'x') + u"\U0001F600\U0001F600");
  EXPECT_EQ(label, std::u16string(249, u'x') + u"...");
  EXPECT_LT(labelOf(std::u16string(1000000, u'\u4E2D')).size(), 300u);
}

TEST_F(MarkupListTest, TheListIsKeptForItsDocument) {
  PdfPage page = courierPage({"text"});
  page.annotations = {markup("Highlight", {charactersOf(0, 0, 3)})};
  document = openInActive(buildPdf({page}));
  EXPECT_THAT(markupsOf(document), SizeIs(1));
  addHighlight(0, charactersOf(0, 0, 1));
  EXPECT_THAT(markupsOf(document), SizeIs(1));
  InvalidateMarkupList();
  EXPECT_EQ(session.markupListDocument, nullptr);
  EXPECT_THAT(session.markupList, IsEmpty());
  EXPECT_THAT(markupsOf(document), SizeIs(2));
}

TEST_F(MarkupListTest, AnEditedPageIsCollectedAgainAlone) {
  std::vector<PdfPage> pages(3, courierPage({"one two", "three"}));
  for (PdfPage& page : pages) page.annotations = {markup("Highlight", {charactersOf(0, 0, 2)})};
  document = openInActive(buildPdf(pages));
  ASSERT_THAT(markupsOf(document), SizeIs(3));
  addHighlight(0, charactersOf(1, 0, 4));
  addHighlight(1, charactersOf(1, 0, 4));
  collectPageLater(document, 1);
  EXPECT_THAT(texts(markupsOf(document)), ElementsAre(u"one", u"one", u"three", u"one"));
  EXPECT_EQ(session.markupList[2].page, 1);
  {
    const PageHandle page(FPDF_LoadPage(document, 1));
    FPDFPage_RemoveAnnot(page.get(), 1);
    FPDFPage_RemoveAnnot(page.get(), 0);
  }
  collectPageLater(document, 1);
  EXPECT_THAT(texts(markupsOf(document)), ElementsAre(u"one", u"one"));
  EXPECT_EQ(session.markupList[1].page, 2);
}

// Only the open page knows of text that was added to it in memory.
TEST_F(MarkupListTest, APageThatAPaneHasOpenIsNotReadAgain) {
  PdfPage page;
  page.annotations = {markup("Highlight", {charactersOf(0, 0, 3)})};
  document = openInActive(buildPdf({page, page}));
  loadPane(0, 0);
  const FPDF_PAGEOBJECT words = FPDFPageObj_NewTextObj(document, "Courier", 10);
  FPDFText_SetText(words, reinterpret_cast<FPDF_WIDESTRING>(u"seen"));
  FPDFPageObj_Transform(words, 1, 0, 0, 1, 72, baselineOf(0));
  FPDFPage_InsertObject(session.panes[0].page.get(), words);
  EXPECT_THAT(texts(markupsOf(document)), ElementsAre(u"seen", u""));
  collectPageLater(document, 0);
  EXPECT_THAT(texts(markupsOf(document)), ElementsAre(u"seen", u""));
}

TEST_F(MarkupListTest, AnEditCollectsNothingBeforeTheListWasAskedFor) {
  document = openInActive(buildPdf({courierPage({"text"})}));
  addHighlight(0, charactersOf(0, 0, 3));
  collectPageLater(document, 0);
  collectPageLater(nullptr, 0);
  EXPECT_THAT(session.pagesToCollect, IsEmpty());
  EXPECT_THAT(session.markupList, IsEmpty());
  EXPECT_EQ(session.markupListDocument, nullptr);
}

TEST_F(MarkupListTest, AClosedDocumentTakesItsListAlong) {
  PdfPage page = courierPage({"text"});
  page.annotations = {markup("Highlight", {charactersOf(0, 0, 3)})};
  document = openInActive(buildPdf({page}));
  markupsOf(document);
  const ClosedDocument closed = closeToReopen(session.active);
  reopenDocument(session.active, loadDocument(simplePdf(1)), {}, closed);
  EXPECT_EQ(session.markupListDocument, nullptr);
  EXPECT_THAT(markupsOf(session.active.document.get()), IsEmpty());
  clearDocument(session.active);
  EXPECT_EQ(session.markupListDocument, nullptr);
}

TEST_F(MarkupListTest, FiveThousandMarkupsOnAPageAreListedInOrder) {
  PdfPage page = courierPage({"Alpha Beta Gamma"});
  for (int i = 0; i < 5000; ++i) {
    const double top = 100 + (i * 7919 % 5000) * 0.1;
    page.annotations.push_back(markup("Highlight", {Box{300, top - 5, 310, top}}));
  }
  const auto list = collect(page);
  ASSERT_THAT(list, SizeIs(5000));
  for (std::size_t i = 1; i < list.size(); ++i) ASSERT_GE(list[i - 1].top, list[i].top);
}

TEST_F(MarkupListTest, FiftyThousandAnnotationsHideNoMarkup) {
  PdfPage page = courierPage({"Alpha Beta Gamma"});
  page.annotations.assign(50000, linkAnnotation(0, 0, 5, 5, pageDestination(1)));
  page.annotations.push_back(markup("Highlight", {charactersOf(0, 0, 4)}));
  EXPECT_THAT(texts(collect(page)), ElementsAre(u"Alpha"));
}

TEST_F(MarkupListTest, ADamagedPageIsLeftOut) {
  PdfPage page = courierPage({"text"});
  page.annotations = {markup("Highlight", {charactersOf(0, 0, 3)})};
  std::string bytes = buildPdf({page, page});
  const std::size_t second = bytes.find("/Type /Page ", bytes.find("/Type /Page ") + 1);
  ASSERT_NE(second, std::string::npos);
  bytes.replace(second, 12, "/Type /Egap ");
  document = openInActive(bytes);
  ASSERT_NE(document, nullptr);
  std::vector<MarkupEntry> list;
  CollectMarkups(document, list);
  ASSERT_THAT(list, SizeIs(1));
  EXPECT_EQ(list[0].page, 0);
}

// One page with a strikethrough whose appearance is this, drawn without any fill.
std::string strokedPdf(const std::string& appearance) {
  PdfFile file;
  const int tree = file.reserve();
  const int picture = file.addStream(appearance,
                                     "/Type /XObject /Subtype /Form /BBox [0 0 100 100] "
                                     "/Resources << /ExtGState << /Unfilled << /ca 0 >> >> >>");
  std::string annotation = markup("StrikeOut", {Box{10, 10, 90, 30}}, "/C [0 0 1] /AP << /N ");
  annotation.insert(annotation.rfind(">>"), PdfFile::reference(picture) + " >> ");
  const int page = file.add("<< /Type /Page /Parent " + PdfFile::reference(tree) +
                            " /MediaBox [0 0 100 100] /Annots [" + annotation + "] >>");
  file.set(tree, "<< /Type /Pages /Count 1 /Kids [" + PdfFile::reference(page) + "] >>");
  return file.finish(file.add("<< /Type /Catalog /Pages " + PdfFile::reference(tree) + " >>"));
}

TEST_F(MarkupListTest, AnAppearanceThatFillsNothingGivesItsStrokeColour) {
  document = openInActive(strokedPdf("/Unfilled gs 0 1 0 rg 1 0 0.2 RG 10 20 m 90 20 l S"));
  std::vector<MarkupEntry> list;
  CollectMarkups(document, list);
  ASSERT_THAT(list, SizeIs(1));
  EXPECT_EQ(list[0].color, 0x3300FFu);
}

TEST_F(MarkupListTest, AColourBeyondItsRangeIsLimitedToIt) {
  PdfPage page = courierPage({"text"});
  page.annotations = {markup("Highlight", {charactersOf(0, 0, 0)}, "/C [1000 0 0]"),
                      markup("Highlight", {charactersOf(0, 1, 1)}, "/C [0 1.5 0.2]")};
  const auto list = collect(page);
  ASSERT_THAT(list, SizeIs(2));
  EXPECT_EQ(list[0].color, 0x0000FFu);
  EXPECT_EQ(list[1].color, 0x33FF00u);
}

}  // namespace
}  // namespace quillmere::test
