#include "annot/markups.h"

#include <fpdf_edit.h>
#include <fpdf_text.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

#include "annot/annot_test.h"
#include "annot/annotations.h"
#include "app/commands.h"
#include "app/keys.h"
#include "app/mouse.h"
#include "documents/modes.h"
#include "session/changes.h"
#include "view/geometry.h"
#include "view/navigation.h"
#include "view/render.h"
#include "view/rotation.h"
#include "view/selection.h"

namespace quillmere::test {
namespace {

Placement written(std::int32_t annotIndex) {
  Placement placement;
  placement.annotIndex = annotIndex;
  return placement;
}

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

constexpr std::uint32_t kYellow = 0xFFEB3C;  // row 0 of the colours
constexpr std::uint32_t kRed = 0xEB5050;     // row 6

class MarkupsTest : public AnnotTest {
 protected:
  static FPDF_DOCUMENT document() { return documentOf(session.activePane); }
  static std::vector<FoundMark> marks(int page = 0) { return marksOn(document(), page); }
};

TEST_F(MarkupsTest, AHighlightHasTheColourAndOpacityOfTheSettings) {
  struct Case {
    std::int32_t percent;
    int alpha;
  };
  for (const Case& c : {Case{100, 255}, Case{55, 140}, Case{50, 127}, Case{20, 51}, Case{5, 51},
                        Case{400, 255}, Case{-7, 51}}) {
    SCOPED_TRACE(c.percent);
    resetSession();
    openLines({"Quill and page"});
    session.settings.highlightOpacity = c.percent;
    session.settings.highlightColorIndex = 2;
    selectText(u"and");
    highlightSelection();
    ASSERT_THAT(marks(), SizeIs(1));
    EXPECT_EQ(marks()[0].subtype, FPDF_ANNOT_HIGHLIGHT);
    EXPECT_EQ(marks()[0].color, 0x78DCEBu);
    EXPECT_EQ(marks()[0].alpha, c.alpha);
  }
}

TEST_F(MarkupsTest, AStrikethroughIsOpaqueWhateverTheOpacity) {
  openLines({"Quill and page"});
  session.settings.highlightOpacity = 20;
  selectText(u"and");
  strikeSelectionThrough();
  ASSERT_THAT(marks(), SizeIs(1));
  EXPECT_EQ(marks()[0].subtype, FPDF_ANNOT_STRIKEOUT);
  EXPECT_EQ(marks()[0].color, kRed);
  EXPECT_EQ(marks()[0].alpha, 255);
}

TEST_F(MarkupsTest, AColourBeyondTheTableIsItsFirst) {
  openLines({"Quill and page"});
  session.settings.highlightColorIndex = 7;
  session.settings.strikeColorIndex = 0xFFFFFFFF;
  selectText(u"and");
  highlightSelection();
  selectText(u"page");
  strikeSelectionThrough();
  ASSERT_THAT(marks(), SizeIs(2));
  EXPECT_EQ(marks()[0].color, kYellow);
  EXPECT_EQ(marks()[1].color, kYellow);
  EXPECT_EQ(session.settings.highlightColorIndex, 7u);
}

TEST_F(MarkupsTest, OneCharacterGivesOneQuadAroundIt) {
  openLines({"Quill and page"});
  selectCharacters(6, 6);
  double left = 0, right = 0, bottom = 0, top = 0;
  ASSERT_TRUE(FPDFText_GetCharBox(pane(0).textPage.get(), 6, &left, &right, &bottom, &top));
  highlightSelection();
  ASSERT_THAT(marks(), SizeIs(1));
  ASSERT_THAT(marks()[0].quads, SizeIs(1));
  EXPECT_NEAR(marks()[0].quads[0].x1, left, 1);
  EXPECT_NEAR(marks()[0].quads[0].x2, right, 1);
}

TEST_F(MarkupsTest, ASelectionOverThreeLinesGivesOneMarkWithAQuadForEach) {
  openLines({"first line", "second", "the third line"});
  selectCharacters(0, FPDFText_CountChars(pane(0).textPage.get()) - 1);
  highlightSelection();
  ASSERT_THAT(marks(), SizeIs(1));
  const FoundMark mark = marks()[0];
  ASSERT_THAT(mark.quads, SizeIs(3));
  FS_RECTF around{1e9f, -1e9f, -1e9f, 1e9f};
  for (const FS_QUADPOINTSF& quad : mark.quads) {
    around.left = std::min(around.left, quad.x1);
    around.right = std::max(around.right, quad.x2);
    around.top = std::max(around.top, quad.y1);
    around.bottom = std::min(around.bottom, quad.y3);
  }
  EXPECT_FLOAT_EQ(mark.rect.left, around.left);
  EXPECT_FLOAT_EQ(mark.rect.right, around.right);
  EXPECT_FLOAT_EQ(mark.rect.top, around.top);
  EXPECT_FLOAT_EQ(mark.rect.bottom, around.bottom);
}

TEST_F(MarkupsTest, CornersStandTopLeftTopRightBottomLeftBottomRight) {
  openLines({"Quill and page"});
  selectText(u"and");
  highlightSelection();
  ASSERT_THAT(marks(), SizeIs(1));
  const FS_QUADPOINTSF quad = marks()[0].quads.at(0);
  EXPECT_LT(quad.x1, quad.x2);
  EXPECT_GT(quad.y1, quad.y3);
  EXPECT_EQ(quad.x1, quad.x3);
  EXPECT_EQ(quad.x2, quad.x4);
  EXPECT_EQ(quad.y1, quad.y2);
  EXPECT_EQ(quad.y3, quad.y4);
}

TEST_F(MarkupsTest, ASelectionMadeBackwardsGivesTheSameMark) {
  openLines({"first line", "second"});
  selectCharacters(2, 14);
  highlightSelection();
  selectCharacters(14, 2);
  highlightSelection();
  ASSERT_THAT(marks(), SizeIs(2));
  const auto quads = [&](int i) { return marks()[static_cast<std::size_t>(i)].quads; };
  ASSERT_EQ(quads(0).size(), quads(1).size());
  for (std::size_t i = 0; i < quads(0).size(); ++i) {
    EXPECT_EQ(quads(0)[i].x1, quads(1)[i].x1);
    EXPECT_EQ(quads(0)[i].y1, quads(1)[i].y1);
    EXPECT_EQ(quads(0)[i].x4, quads(1)[i].x4);
    EXPECT_EQ(quads(0)[i].y4, quads(1)[i].y4);
  }
}

TEST_F(MarkupsTest, MarkingEndsTheSelectionAndLeavesTheDocumentUnsaved) {
  openLines({"Quill and page"});
  selectText(u"and");
  window().invalidations = 0;
  highlightSelection();
  EXPECT_FALSE(session.selection.active);
  EXPECT_TRUE(session.active.dirty);
  EXPECT_TRUE(session.active.altered);
  EXPECT_GT(window().invalidations, 0);
}

TEST_F(MarkupsTest, TheMarkIsDrawnAtOnceWhereThePageIs) {
  openLines({"Quill and page"});
  selectText(u"and");
  highlightSelection();
  ASSERT_THAT(marks(), SizeIs(1));
  const FS_QUADPOINTSF quad = marks()[0].quads.at(0);
  EXPECT_EQ(pictureAt(placeOf(quad.x1 + 1, quad.y1 - 1)), kYellow);
  EXPECT_EQ(pictureAt(placeOf(quad.x1 - 4, quad.y1 - 1)), 0xFFFFFFu);
  EXPECT_EQ(pane(0).zoom, 1.0f);
  EXPECT_EQ(pane(0).panX, 40.0f);
  EXPECT_EQ(pane(0).panY, 20.0f);
}

TEST_F(MarkupsTest, TheMarkPrintsAndCarriesNothingElse) {
  openLines({"Quill and page"});
  selectText(u"and");
  highlightSelection();
  ASSERT_THAT(marks(), SizeIs(1));
  EXPECT_EQ(marks()[0].flags, FPDF_ANNOT_FLAG_PRINT);
  const AnnotationHandle mark = annotationAt(pane(0).page.get(), 0);
  for (const char* key : {"Contents", "T", "M", "CreationDate", "NM", "Popup"}) {
    EXPECT_FALSE(FPDFAnnot_HasKey(mark.get(), key)) << key;
  }
}

TEST_F(MarkupsTest, TheFileNamesTheMarkByReference) {
  openLines({"Quill and page"}, 1);
  selectText(u"and");
  highlightSelection();
  const std::string saved = savedCopy(document());
  const std::size_t list = saved.find("/Annots");
  ASSERT_NE(list, std::string::npos);
  const std::string entry = saved.substr(list, saved.find(']', list) - list);
  EXPECT_THAT(entry, HasSubstr(" 0 R"));
  EXPECT_THAT(entry, Not(HasSubstr("<<")));
}

TEST_F(MarkupsTest, AViewerMarksNothing) {
  openLines({"Quill and page"});
  session.viewerRole = true;
  selectText(u"and");
  handleKey(kKeySpace);
  platform::standIn().controlDown = true;
  handleKey(kKeySpace);
  platform::standIn().controlDown = false;
  runCommand(kCmdHighlight);
  runCommand(kCmdStrikethrough);
  CreateMarkup(FPDF_ANNOT_HIGHLIGHT, 1, 2, 3, 255);
  EXPECT_THAT(marks(), IsEmpty());
  EXPECT_FALSE(session.active.dirty);
  EXPECT_TRUE(session.selection.active);
}

TEST_F(MarkupsTest, SpaceHighlightsAndCtrlSpaceStrikesThrough) {
  openLines({"Quill and page"});
  selectText(u"Quill");
  handleKey(kKeySpace);
  selectText(u"page");
  platform::standIn().controlDown = true;
  handleKey(kKeySpace);
  ASSERT_THAT(marks(), SizeIs(2));
  EXPECT_EQ(marks()[0].subtype, FPDF_ANNOT_HIGHLIGHT);
  EXPECT_EQ(marks()[1].subtype, FPDF_ANNOT_STRIKEOUT);
}

TEST_F(MarkupsTest, WithoutASelectionNothingIsMarked) {
  openLines({"Quill and page"});
  const auto nothingHappens = [&] {
    highlightSelection();
    strikeSelectionThrough();
    EXPECT_THAT(marks(), IsEmpty());
    EXPECT_FALSE(session.active.dirty);
  };
  nothingHappens();
  session.selection = {true, 0, -1, 3, false};
  nothingHappens();
  session.selection = {true, 0, 3, -1, false};
  nothingHappens();
  session.selection = {true, 2, 0, 3, false};
  nothingHappens();
  session.selection = {true, 1, 0, 3, false};  // a pane without a page
  nothingHappens();
  pane(0).textPage.reset();
  session.selection = {true, 0, 0, 3, false};
  nothingHappens();
}

TEST_F(MarkupsTest, ALineBreakAloneCannotBeMarkedAndStaysSelected) {
  openLines({"first", "second"});
  const FPDF_TEXTPAGE textPage = pane(0).textPage.get();
  std::int32_t lineBreak = 0;
  while (FPDFText_GetUnicode(textPage, lineBreak) != '\r') ++lineBreak;
  selectCharacters(lineBreak, lineBreak + 1);
  highlightSelection();
  EXPECT_THAT(marks(), IsEmpty());
  EXPECT_FALSE(session.active.dirty);
  EXPECT_TRUE(session.selection.active);
}

TEST_F(MarkupsTest, AMarkedLineBreakAddsNoQuad) {
  openLines({"first", "second"});
  selectCharacters(0, 6);  // including the line break after "first"
  highlightSelection();
  ASSERT_THAT(marks(), SizeIs(1));
  EXPECT_THAT(marks()[0].quads, SizeIs(1));
  EXPECT_GT(marks()[0].rect.left, 50);
  EXPECT_GT(marks()[0].rect.bottom, 600);
}

TEST_F(MarkupsTest, AScannedPageHasNothingToMark) {
  PdfPage page;
  page.width = 600;
  page.height = 800;
  page.content = rectangleContent(0, 0, 600, 800, 0.9, 0.9, 0.9);
  openPages({page});
  selectAll(0);
  highlightSelection();
  EXPECT_THAT(marks(), IsEmpty());
}

TEST_F(MarkupsTest, ASelectionAcrossColumnsIsOneMark) {
  PdfPage page = linedPage({"left one", "left two"});
  page.content += textContent("right one", 350, 700) + textContent("right two", 350, 650);
  openPages({page});
  selectAll(0);
  highlightSelection();
  ASSERT_THAT(marks(), SizeIs(1));
  EXPECT_GE(marks()[0].quads.size(), 2u);
  EXPECT_GT(marks()[0].rect.right, 400);
}

TEST_F(MarkupsTest, TheSameWordsMarkedTwiceAreTwoMarks) {
  openLines({"Quill and page"});
  for (int i = 0; i < 2; ++i) {
    selectText(u"and");
    highlightSelection();
  }
  ASSERT_THAT(marks(), SizeIs(2));
  EXPECT_EQ(marks()[0].rect.left, marks()[1].rect.left);
}

TEST_F(MarkupsTest, AStrikethroughRunsAlongTurnedText) {
  PdfPage page;
  page.width = 600;
  page.height = 800;
  page.rotate = 90;
  page.content = "BT /F1 24 Tf 0 1 -1 0 300 100 Tm (Quill and page) Tj ET\n";
  openPages({page});
  selectAll(0);
  strikeSelectionThrough();
  ASSERT_THAT(marks(), SizeIs(1));
  const AnnotationHandle mark = annotationAt(pane(0).page.get(), 0);
  float left = 0, bottom = 0, right = 0, top = 0;
  ASSERT_TRUE(
      FPDFPageObj_GetBounds(FPDFAnnot_GetObject(mark.get(), 0), &left, &bottom, &right, &top));
  EXPECT_GT(top - bottom, 100);
  EXPECT_LT(right - left, 6);
}

TEST_F(MarkupsTest, AMarkLiesOnTheSelectedWordsWhateverTheBoxAndTurnOfThePage) {
  for (const int degrees : {0, 90, 180, 270}) {
    for (const bool cropped : {false, true}) {
      SCOPED_TRACE(testing::Message() << degrees << " " << cropped);
      resetSession();
      PdfPage page = linedPage({"Quill and page"});
      page.rotate = degrees;
      if (cropped) page.entries = "/CropBox [50 100 550 750]";
      openPages({page});
      selectText(u"and");
      double left = 0, right = 0, bottom = 0, top = 0;
      FPDFText_CountRects(pane(0).textPage.get(), 6, 3);
      ASSERT_TRUE(FPDFText_GetRect(pane(0).textPage.get(), 0, &left, &top, &right, &bottom));
      highlightSelection();
      ASSERT_THAT(marks(), SizeIs(1));
      const FS_RECTF rect = marks()[0].rect;
      EXPECT_NEAR(rect.left, left, 0.01);
      EXPECT_NEAR(rect.right, right, 0.01);
      EXPECT_NEAR(rect.top, top, 0.01);
      EXPECT_NEAR(rect.bottom, bottom, 0.01);
      EXPECT_NEAR(rect.left, 72 + 6 * 10, 30);
    }
  }
}

TEST_F(MarkupsTest, EachPaneThatShowsThePageDrawsItAnew) {
  openLines({"Quill and page"});
  setViewMode(ViewMode::IndependentPages);
  goToPage(0, 0, false);
  goToPage(1, 0, false);
  selectText(u"and", 1);
  highlightSelection();
  ASSERT_THAT(marks(), SizeIs(1));
  const FS_QUADPOINTSF quad = marks()[0].quads.at(0);
  for (const int shown : {0, 1}) {
    EXPECT_EQ(pictureAt(placeOf(quad.x1 + 2, quad.y1 - 2, shown), shown), kYellow) << shown;
  }
}

TEST_F(MarkupsTest, APaneOnAnotherPageKeepsItsPicture) {
  openLines({"Quill and page"});
  setViewMode(ViewMode::IndependentPages);
  goToPage(0, 0, false);
  goToPage(1, 1, false);
  const ClientPoint place = placeOf(100, 700, 1);
  *platform::pixelsOf(pane(1).pageBitmap.get()) = 0x123456;
  selectText(u"and", 0);
  highlightSelection();
  EXPECT_EQ(*platform::pixelsOf(pane(1).pageBitmap.get()), 0x123456u);
  EXPECT_EQ(pictureAt(place, 1), 0xFFFFFFu);
}

TEST_F(MarkupsTest, AHiddenPaneWithThePageLosesItsPicture) {
  openLines({"Quill and page"});
  setViewMode(ViewMode::IndependentPages);
  goToPage(1, 0, false);
  setViewMode(ViewMode::SinglePage);
  if (!pane(1).page) loadPane(1, 0);
  show(0, 0);
  selectText(u"and");
  highlightSelection();
  EXPECT_EQ(pane(1).pageBitmap, nullptr);
  setViewMode(ViewMode::IndependentPages);
  goToPage(1, 0, false);
  const FS_QUADPOINTSF quad = marks().at(0).quads.at(0);
  EXPECT_EQ(pictureAt(placeOf(quad.x1 + 2, quad.y1 - 2, 1), 1), kYellow);
}

// Entering Book on the last page lowers the left pane's number by one.
TEST_F(MarkupsTest, TheMarkBelongsToThePageThatIsOpenNotToItsNumberInThePane) {
  openLines({"Quill and page"}, 4);
  goToPage(0, 3, false);
  ASSERT_EQ(pane(0).openPage, 3);
  pane(0).currentPage = 2;
  selectText(u"and");
  highlightSelection();
  EXPECT_THAT(marks(2), IsEmpty());
  ASSERT_THAT(marks(3), SizeIs(1));
  const FS_QUADPOINTSF quad = marks(3)[0].quads.at(0);
  EXPECT_EQ(pictureAt(placeOf(quad.x1 + 1, quad.y1 - 1)), kYellow);
  pick(middleOf(marks(3)[0]));
  EXPECT_EQ(session.markupMenuPage, 3);
  RemoveMarkup();
  EXPECT_THAT(marks(3), IsEmpty());
}

TEST_F(MarkupsTest, OfTwoDocumentsTheMarkedOneAloneIsUnsaved) {
  openAndShowIn(0, buildPdf({linedPage({"left side"})}));
  openAndShowIn(1, buildPdf({linedPage({"right side"})}));
  session.activePane = 1;
  selectText(u"right", 1);
  highlightSelection();
  EXPECT_FALSE(pane(0).dirty);
  EXPECT_TRUE(pane(1).dirty);
  EXPECT_EQ(countMarks(pane(0).document.get()), 0);
  EXPECT_EQ(countMarks(pane(1).document.get()), 1);
  const FoundMark mark = marksOn(pane(1).document.get(), 0).at(0);
  pick(middleOf(mark, 1), 1);
  RemoveMarkup();
  EXPECT_EQ(countMarks(pane(1).document.get()), 0);
}

class MarkupHitTest : public MarkupsTest {
 protected:
  // A page with these annotations, as written by another program.
  void openAnnotated(const std::vector<std::string>& annotations, int degrees = 0) {
    PdfPage page = linedPage({"Quill and page"});
    page.annotations = annotations;
    page.rotate = degrees;
    openPages({page, page});
  }
  static std::int32_t hit(double x, double y, int inPane = 0) {
    const ClientPoint place = placeOf(x, y, inPane);
    return HitTestMarkup(inPane, place.x, place.y);
  }
};

TEST_F(MarkupHitTest, TheEdgesOfAQuadCountAndNothingBeyondThem) {
  openAnnotated({highlightBox(100, 200, 180, 230)});
  for (const double x : {100.0, 140.0, 180.0}) {
    for (const double y : {200.0, 215.0, 230.0}) EXPECT_EQ(hit(x, y), 0) << x << " " << y;
  }
  EXPECT_EQ(hit(99, 215), -1);
  EXPECT_EQ(hit(181, 215), -1);
  EXPECT_EQ(hit(140, 199), -1);
  EXPECT_EQ(hit(140, 231), -1);
}

TEST_F(MarkupHitTest, WhereMarksOverlapTheLaterOneIsHit) {
  openAnnotated({highlightBox(100, 200, 180, 230), highlightBox(150, 200, 250, 230)});
  EXPECT_EQ(hit(120, 215), 0);
  EXPECT_EQ(hit(160, 215), 1);
  EXPECT_EQ(hit(240, 215), 1);
}

TEST_F(MarkupHitTest, ASlantedQuadIsHitAnywhereInItsBox) {
  openAnnotated({highlightAnnotation("100 220 180 300 110 200 190 280")});
  EXPECT_EQ(hit(105, 295), 0);
  EXPECT_EQ(hit(185, 205), 0);
  EXPECT_EQ(hit(195, 205), -1);
}

TEST_F(MarkupHitTest, AQuadWithItsCornersInAnotherOrderIsHitAsWell) {
  openAnnotated({highlightAnnotation("100 200 180 200 180 230 100 230")});
  EXPECT_EQ(hit(140, 215), 0);
}

TEST_F(MarkupHitTest, EveryQuadOfAMarkCounts) {
  openAnnotated(
      {highlightAnnotation("100 230 180 230 100 200 180 200 "
                           "300 130 380 130 300 100 380 100")});
  EXPECT_EQ(hit(140, 215), 0);
  EXPECT_EQ(hit(340, 115), 0);
  EXPECT_EQ(hit(240, 165), -1);
}

TEST_F(MarkupHitTest, WhatIsNotToBeSeenAndOtherKindsAreNotHit) {
  openAnnotated({highlightBox(100, 200, 180, 230, "/F 2"),
                 highlightBox(100, 200, 180, 230, "/F 32"),
                 "<< /Type /Annot /Subtype /Underline /Rect [100 200 180 230] /QuadPoints [100 230 "
                 "180 230 100 200 180 200] >>",
                 "<< /Type /Annot /Subtype /Stamp /Rect [100 200 180 230] >>"});
  EXPECT_EQ(hit(140, 215), -1);
}

TEST_F(MarkupHitTest, BrokenQuadsAreNeitherHitNorInTheWay) {
  openAnnotated({highlightBox(100, 200, 180, 230), highlightAnnotation(""),
                 highlightAnnotation("100 230 180"), highlightAnnotation("/a /b /c /d /e /f /g /h"),
                 "<< /Type /Annot /Subtype /Highlight >>", "null", "42"});
  EXPECT_EQ(hit(140, 215), 0);
  EXPECT_EQ(hit(300, 300), -1);
}

TEST_F(MarkupHitTest, WithoutAPageOrAPictureNothingIsHit) {
  openAnnotated({highlightBox(100, 200, 180, 230)});
  const ClientPoint place = placeOf(140, 215);
  EXPECT_EQ(HitTestMarkup(-1, place.x, place.y), -1);
  EXPECT_EQ(HitTestMarkup(2, place.x, place.y), -1);
  EXPECT_EQ(HitTestMarkup(1, place.x, place.y), -1);
  freePaneBitmap(0);
  EXPECT_EQ(HitTestMarkup(0, place.x, place.y), -1);
}

TEST_F(MarkupHitTest, AMarkIsHitAtEveryTurnAndInBothPanes) {
  for (const int degrees : {0, 90, 180, 270}) {
    for (std::uint32_t turns = 0; turns < 4; ++turns) {
      SCOPED_TRACE(testing::Message() << degrees << " " << turns);
      resetSession();
      openAnnotated({highlightBox(100, 200, 180, 230)}, degrees);
      setViewMode(ViewMode::IndependentPages);
      for (const int shown : {0, 1}) {
        goToPage(shown, 1, false);
        for (std::uint32_t i = 0; i < turns; ++i) rotateDocument(shown);
        EXPECT_EQ(hit(140, 215, shown), 0);
        EXPECT_EQ(hit(240, 215, shown), -1);
      }
    }
  }
}

TEST_F(MarkupHitTest, AMarkIsHitOnADenseScreenAtAnyZoom) {
  openAnnotated({highlightBox(100, 200, 180, 230)});
  session.dpi = 144;
  for (const float zoom : {0.3f, 1.0f, 4.5f}) {
    setView(0, zoom, 10.0f, -100.0f);
    EXPECT_EQ(hit(140, 215), 0) << zoom;
    EXPECT_EQ(hit(240, 215), -1) << zoom;
  }
}

TEST_F(MarkupHitTest, NewMarksAndRemovedOnesAreKnownAtOnce) {
  openLines({"Quill and page"});
  const ClientPoint nothing = placeOf(140, 215);
  EXPECT_EQ(HitTestMarkup(0, nothing.x, nothing.y), -1);
  selectText(u"and");
  highlightSelection();
  const ClientPoint place = middleOf(marks().at(0));
  EXPECT_EQ(HitTestMarkup(0, place.x, place.y), 0);
  pick(place);
  RemoveMarkup();
  EXPECT_EQ(HitTestMarkup(0, place.x, place.y), -1);
}

TEST_F(MarkupHitTest, AnotherPageHasItsOwnMarks) {
  openLines({"Quill and page"});
  selectText(u"and");
  highlightSelection();
  const ClientPoint place = middleOf(marks().at(0));
  EXPECT_EQ(HitTestMarkup(0, place.x, place.y), 0);
  show(0, 1);
  setView(0, 1.0f, 40.0f, 20.0f);
  EXPECT_EQ(HitTestMarkup(0, place.x, place.y), -1);
}

TEST_F(MarkupHitTest, ThousandsOfAnnotationsAreReadOnceForAPage) {
  std::vector<std::string> many;
  for (int i = 0; i < 1000; ++i) many.push_back(highlightBox(100, 200, 180, 230));
  for (int i = 0; i < 4000; ++i) many.emplace_back("<< /Subtype /Link /Rect [0 0 1 1] >>");
  openAnnotated(many);
  EXPECT_EQ(hit(140, 215), 999);
  ASSERT_TRUE(pane(0).markupBoxes.has_value());
  // Answers come from the cached boxes: add one that no annotation has.
  pane(0).markupBoxes->boxes.push_back({7, 300, 300, 310, 310});
  for (int i = 0; i < 1000; ++i) ASSERT_EQ(hit(305, 305), 7);
}

class RemovalTest : public MarkupsTest {
 protected:
  void openAnnotated(const std::vector<std::string>& annotations) {
    PdfPage page = linedPage({"Quill and page"});
    page.annotations = annotations;
    openPages({page});
  }
  static void choose(std::int32_t page, std::int32_t annot) {
    session.markupMenuPage = page;
    session.markupMenuAnnot = annot;
  }
  static void expectNothingRemoved(int annotations) {
    RemoveMarkup();
    EXPECT_EQ(annotationsOn(document(), 0), annotations);
    EXPECT_EQ(session.markupMenuPage, -1);
    EXPECT_EQ(session.markupMenuAnnot, -1);
    EXPECT_FALSE(session.active.dirty);
  }
};

TEST_F(RemovalTest, ARemovedMarkIsGoneFromDocumentAndPicture) {
  openLines({"Quill and page"});
  selectText(u"and");
  highlightSelection();
  const FS_QUADPOINTSF quad = marks().at(0).quads.at(0);
  const ClientPoint place = placeOf(quad.x1 + 1, quad.y1 - 1);
  session.active.dirty = false;
  pick(middleOf(marks().at(0)));
  runCommand(kCmdRemoveMarkup);
  EXPECT_THAT(marks(), IsEmpty());
  EXPECT_EQ(pictureAt(place), 0xFFFFFFu);
  EXPECT_TRUE(session.active.dirty);
  EXPECT_EQ(session.markupMenuPage, -1);
  EXPECT_EQ(session.markupMenuAnnot, -1);
}

TEST_F(RemovalTest, TheTopmostOfOverlappingMarksIsRemoved) {
  openAnnotated({highlightBox(100, 200, 180, 230, "/Contents (lower)"),
                 highlightBox(150, 200, 250, 230, "/Contents (upper)")});
  pick(placeOf(160, 215));
  RemoveMarkup();
  ASSERT_THAT(marks(), SizeIs(1));
  EXPECT_EQ(marks()[0].note, u"lower");
}

TEST_F(RemovalTest, ARemovalWithNothingToRemoveChangesNothing) {
  openAnnotated({highlightBox(100, 200, 180, 230), "<< /Subtype /Stamp /Rect [0 0 9 9] >>"});
  choose(0, -1);
  expectNothingRemoved(2);
  choose(0, 2);
  expectNothingRemoved(2);
  choose(7, 0);
  expectNothingRemoved(2);
  choose(-1, 0);
  expectNothingRemoved(2);
  choose(0, 1);  // the stamp
  expectNothingRemoved(2);
}

TEST_F(RemovalTest, WithoutADocumentOnlyThePickedMarkIsForgotten) {
  choose(3, 4);
  RemoveMarkup();
  EXPECT_EQ(session.markupMenuPage, -1);
  EXPECT_EQ(session.markupMenuAnnot, -1);
}

TEST_F(RemovalTest, AViewerRemovesNothing) {
  openAnnotated({highlightBox(100, 200, 180, 230)});
  session.viewerRole = true;
  choose(0, 0);
  runCommand(kCmdRemoveMarkup);
  RemoveMarkup();
  EXPECT_THAT(marks(), SizeIs(1));
  EXPECT_EQ(session.markupMenuAnnot, 0);
}

TEST_F(RemovalTest, PlacementsBehindItKeepTheirAnnotations) {
  openAnnotated({highlightBox(100, 200, 180, 230), "<< /Subtype /Stamp /Rect [0 0 9 9] >>",
                 "<< /Subtype /Stamp /Rect [0 0 9 9] >>"});
  session.placementDocument = document();
  session.placements[0] = {written(1), written(2), Placement{}};
  session.placements[1] = {written(1)};
  choose(0, 0);
  RemoveMarkup();
  EXPECT_EQ(session.placements[0][0].annotIndex, 0);
  EXPECT_EQ(session.placements[0][1].annotIndex, 1);
  EXPECT_EQ(session.placements[0][2].annotIndex, -1);
  EXPECT_EQ(session.placements[1][0].annotIndex, 1);
}

TEST_F(RemovalTest, PlacementsBeforeItAndThoseOfAnotherDocumentStayAsTheyAre) {
  openAnnotated({"<< /Subtype /Stamp /Rect [0 0 9 9] >>", highlightBox(100, 200, 180, 230)});
  session.placementDocument = document();
  session.placements[0] = {written(0)};
  choose(0, 1);
  RemoveMarkup();
  EXPECT_EQ(session.placements[0][0].annotIndex, 0);

  openAnnotated({highlightBox(100, 200, 180, 230)});
  session.placementDocument = nullptr;
  session.placements[0] = {written(1)};
  choose(0, 0);
  RemoveMarkup();
  EXPECT_EQ(session.placements[0][0].annotIndex, 1);
}

std::string pdfWithPopup(bool popupFirst, const std::string& popupKind) {
  PdfFile file;
  const int tree = file.reserve();
  const int page = file.reserve();
  const int mark = file.reserve();
  const int popup = file.reserve();
  // Being a reply to the mark, it keeps the mark's object in the file.
  const int stamp = file.add("<< /Type /Annot /Subtype /Stamp /Rect [0 0 9 9] /IRT " +
                             PdfFile::reference(mark) + " >>");
  file.set(mark,
           "<< /Type /Annot /Subtype /Highlight /Rect [100 200 180 230] /QuadPoints [100 230 "
           "180 230 100 200 180 200] /Contents (a secret) /RC (<p>a secret</p>) /Popup " +
               PdfFile::reference(popup) + " >>");
  file.set(popup, "<< /Subtype /" + popupKind + " /Rect [300 300 400 400] /Contents (a secret) " +
                      "/Parent " + PdfFile::reference(mark) + " >>");
  const std::string first = PdfFile::reference(popupFirst ? popup : mark);
  const std::string second = PdfFile::reference(popupFirst ? mark : popup);
  file.set(page, "<< /Type /Page /Parent " + PdfFile::reference(tree) +
                     " /MediaBox [0 0 600 800] /Resources << >> /Annots [" + first + " " + second +
                     " " + PdfFile::reference(stamp) + "] >>");
  file.set(tree, "<< /Type /Pages /Count 1 /Kids [" + PdfFile::reference(page) + "] >>");
  return file.finish(file.add("<< /Type /Catalog /Pages " + PdfFile::reference(tree) + " >>"));
}

TEST_F(RemovalTest, TheMarksPopUpGoesAlongWhicheverStandsFirst) {
  for (const bool popupFirst : {false, true}) {
    SCOPED_TRACE(popupFirst);
    resetSession();
    openAndShow(pdfWithPopup(popupFirst, "Popup"));
    session.placementDocument = document();
    session.placements[0] = {written(2)};
    choose(0, popupFirst ? 1 : 0);
    RemoveMarkup();
    EXPECT_EQ(annotationsOn(document(), 0), 1);
    EXPECT_EQ(session.placements[0][0].annotIndex, 0);
  }
}

TEST_F(RemovalTest, WhatAFileOnlyCallsAPopUpStays) {
  openAndShow(pdfWithPopup(false, "FreeText"));
  choose(0, 0);
  RemoveMarkup();
  EXPECT_EQ(annotationsOn(document(), 0), 2);
}

TEST_F(RemovalTest, TheTextOfARemovedNoteIsNotSaved) {
  openAndShow(pdfWithPopup(false, "Popup"));
  ASSERT_THAT(savedCopy(document()), HasSubstr("a secret"));
  choose(0, 0);
  RemoveMarkup();
  EXPECT_THAT(savedCopy(document()), Not(HasSubstr("a secret")));
}

TEST_F(RemovalTest, AMarkIsPickedByARightClickUntilTheDocumentOrThePaneChanges) {
  openAnnotated({highlightBox(100, 200, 180, 230)});
  const ClientPoint place = placeOf(140, 215);
  releaseRight(place.x, place.y);
  EXPECT_EQ(session.markupMenuAnnot, 0);
  EXPECT_EQ(session.markupMenuPage, 0);
  const ClientPoint beside = placeOf(300, 300);
  releaseRight(beside.x, beside.y);
  EXPECT_EQ(session.markupMenuAnnot, -1);
  EXPECT_EQ(session.markupMenuPage, -1);
  releaseRight(place.x, place.y);
  documentsLeaving();
  EXPECT_EQ(session.markupMenuAnnot, -1);
  releaseRight(place.x, place.y);
  activePaneChanged();
  EXPECT_EQ(session.markupMenuAnnot, -1);
}

}  // namespace
}  // namespace quillmere::test
