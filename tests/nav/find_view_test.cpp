#include "nav/find.h"

#include <cmath>
#include <string>
#include <vector>

#include "nav/find_view.h"
#include "nav/nav_test.h"
#include "session/density.h"
#include "view/geometry.h"
#include "view/render.h"

namespace quillmere::test {
namespace {

// Where hits stand on the screen.
class FindViewTest : public NavTest {
 protected:
  void showTheOnlyHitOutOfView() {
    ASSERT_TRUE(openLines({"x"}));
    type(u"x");
    FindStep(1);
    pane(0).zoomMode = kCustomFit;
    pane(0).panY = -700;
  }
};

// What a hit covers, in page points: one box for each line that it stands on.
struct Box {
  double left;
  double right;
  double bottom;
  double top;
};
std::vector<Box> boxesOf(int pane, const FindResult& hit) {
  std::vector<Box> boxes;
  const FPDF_TEXTPAGE text = session.panes[pane].textPage.get();
  const int count = FPDFText_CountRects(text, hit.start, hit.count);
  for (int i = 0; i < count; ++i) {
    Box box{};
    EXPECT_TRUE(FPDFText_GetRect(text, i, &box.left, &box.top, &box.right, &box.bottom));
    boxes.push_back(box);
  }
  return boxes;
}

TEST_F(FindViewTest, AHitInViewStaysWhereItIs) {
  ASSERT_TRUE(openLines({"x"}));
  type(u"x");
  const float panY = pane(0).panY;
  FindStep(1);
  EXPECT_EQ(pane(0).panY, panY);
}

TEST_F(FindViewTest, AHitOutsideIsBroughtToTheMiddle) {
  PdfPage page = pageWith({"top"});
  page.content += textContent("bottom", 300, 40, 12);
  ASSERT_TRUE(open(buildPdf({page})));
  pane(0).zoomMode = kCustomFit;
  pane(0).zoom = 3.0f;
  layoutAndRender(0);
  type(u"bottom");
  FindStep(1);
  const std::vector<FindHitQuad> quads = findHitQuads(0);
  ASSERT_EQ(quads.size(), 1u);
  const PixelRect rect = paneRect(0);
  const auto& corner = quads[0].quad.corner;
  EXPECT_NEAR((corner[0].x + corner[2].x) / 2, rect.width() * 0.5, 1.0);
  EXPECT_NEAR((corner[0].y + corner[2].y) / 2, rect.height() * 0.5, 1.0);
}

TEST_F(FindViewTest, AHitKeepsItsPlaceAsLongAsItsEdgesStandInsideTheMargin) {
  PdfPage page;
  page.content = textContent("x", 540, 700, 12);
  ASSERT_TRUE(open(buildPdf({page})));
  type(u"x");
  FindInDocument();
  pane(0).zoomMode = kCustomFit;
  for (const int margin : {24, 36}) {
    changeDensity(margin * 4);
    pane(0).zoom = 1;
    layoutAndRender(0);
    const PixelRect rect = paneRect(0);
    const Box box = boxesOf(0, find().results[0]).at(0);
    for (const int distance : {margin, margin - 1}) {
      // The pans that put the hit at this distance from one edge of the pane.
      const float left = static_cast<float>(distance - box.left);
      const float right = static_cast<float>(rect.width() - distance - box.right);
      const float top = static_cast<float>(distance - (page.height - box.top));
      const float bottom =
          static_cast<float>(rect.height() - distance - (page.height - box.bottom));
      for (const auto& [panX, panY] : {std::pair(left, 0.0f), std::pair(right, 0.0f),
                                       std::pair(0.0f, top), std::pair(0.0f, bottom)}) {
        pane(0).panX = panX;
        pane(0).panY = panY;
        FindScrollToCurrent(0);
        const bool stayed = pane(0).panX == panX && pane(0).panY == panY;
        EXPECT_EQ(stayed, distance == margin) << panX << " " << panY << " at " << margin;
      }
    }
  }
}

TEST_F(FindViewTest, StepsBringTheLastHitBackIntoView) {
  showTheOnlyHitOutOfView();
  ASSERT_TRUE(findHitQuads(0).empty());
  FindStep(1);
  ASSERT_EQ(findHitQuads(0).size(), 1u);
  EXPECT_GE(findHitQuads(0)[0].quad.corner[0].y, 24.0);
  EXPECT_EQ(bar().status, u"1 of 1");
}

TEST_F(FindViewTest, AHitOnTheRightPageOfABookScrollsThatPaneWithoutATurn) {
  for (const int active : {0, 1}) {
    SCOPED_TRACE(active);
    ASSERT_TRUE(openLines({"none", "stone", "none", "stone stone"}));
    setViewMode(ViewMode::Book);
    session.settings.bookRevertToFit = false;
    setActivePane(active);
    for (int index = 0; index < 2; ++index) {
      pane(index).zoomMode = kCustomFit;
      pane(index).zoom = 3;
      layoutAndRender(index);
      pane(index).panX = -900;
      pane(index).panY = -900;
    }
    type(u"stone");
    FindStep(1);
    EXPECT_EQ(pane(0).currentPage, 0);
    EXPECT_EQ(pane(0).panY, -900);
    EXPECT_NE(pane(1).panY, -900);
    ASSERT_EQ(findHitQuads(1).size(), 1u);
    EXPECT_TRUE(pane(0).backHistory.empty());
    EXPECT_TRUE(pane(1).backHistory.empty());

    // The last page is shown on the right, whichever pane is active.
    FindStep(1);
    EXPECT_EQ(pane(0).currentPage, 2);
    EXPECT_EQ(pane(0).backHistory.size(), 1u);
    EXPECT_EQ(findHitQuads(1).size(), 2u);
    EXPECT_EQ(bar().status, u"2 of 3");
    FindStep(1);
    EXPECT_EQ(bar().status, u"3 of 3");
    EXPECT_EQ(pane(0).currentPage, 2);
    EXPECT_EQ(pane(0).backHistory.size(), 1u);
    setViewMode(ViewMode::SinglePage);
  }
}

TEST_F(FindViewTest, WithoutATextPageNothingIsPaintedOrScrolled) {
  showTheOnlyHitOutOfView();
  pane(0).textPage.reset();
  EXPECT_TRUE(findHitQuads(0).empty());
  FindStep(1);
  EXPECT_EQ(pane(0).panY, -700);
  EXPECT_EQ(bar().status, u"1 of 1");
}

TEST_F(FindViewTest, PaintedHitsTellWhichIsCurrent) {
  ASSERT_TRUE(openLines({"x x x"}));
  type(u"x");
  FindStep(1);
  FindStep(1);
  const std::vector<FindHitQuad> quads = findHitQuads(0);
  ASSERT_EQ(quads.size(), 3u);
  EXPECT_FALSE(quads[0].current);
  EXPECT_TRUE(quads[1].current);
  EXPECT_FALSE(quads[2].current);
}

TEST_F(FindViewTest, OnlyTheActivePaneOfTwoShowsHits) {
  setViewMode(ViewMode::TwoDocuments);
  ASSERT_TRUE(open(buildPdf({pageWith({"x x"})}), 0, u"C:\\left.pdf"));
  ASSERT_TRUE(open(buildPdf({pageWith({"x x"})}), 1, u"C:\\right.pdf"));
  for (const int active : {0, 1}) {
    setActivePane(active);
    type(u"x");
    EXPECT_EQ(findHitQuads(active).size(), 2u);
    EXPECT_TRUE(findHitQuads(1 - active).empty());
  }
}

TEST_F(FindViewTest, BothPanesOfOneDocumentShowTheirHits) {
  ASSERT_TRUE(openLines({"x", "x x"}));
  setViewMode(ViewMode::IndependentPages);
  goToPage(1, 1, false);
  type(u"x");
  EXPECT_EQ(findHitQuads(0).size(), 1u);
  EXPECT_EQ(findHitQuads(1).size(), 2u);
}

TEST_F(FindViewTest, HitsTurnWithThePage) {
  ASSERT_TRUE(openLines({"wide text"}));
  type(u"wide text");
  for (std::uint32_t turns = 0; turns < 4; ++turns) {
    pane(0).documentRotation = turns;
    layoutAndRender(0);
    const std::vector<FindHitQuad> quads = findHitQuads(0);
    ASSERT_EQ(quads.size(), 1u);
    const auto& corner = quads[0].quad.corner;
    const double across = std::abs(corner[0].x - corner[2].x);
    const double down = std::abs(corner[0].y - corner[2].y);
    EXPECT_EQ(across > down, turns % 2 == 0) << turns;
  }
}

TEST_F(FindViewTest, NothingIsPaintedWhileTheBarIsHidden) {
  ASSERT_TRUE(openLines({"x"}));
  type(u"x");
  ASSERT_EQ(findHitQuads(0).size(), 1u);
  session.findBarVisible = false;
  EXPECT_TRUE(findHitQuads(0).empty());
}

TEST_F(FindViewTest, HitsOutsideThePaneAreNotPainted) {
  ASSERT_TRUE(openLines({"x"}));
  type(u"x");
  pane(0).panY = -5000;
  EXPECT_TRUE(findHitQuads(0).empty());
}

// A word that a hyphen parts at a line's end, with text behind it.
std::string hyphenatedPdf() {
  PdfPage page;
  page.content =
      textContent("an exam-", 72, 700, 20, "F3") + textContent("ple behind", 72, 670, 20, "F3");
  return buildPdf({page});
}

TEST_F(FindViewTest, AHyphenAtALinesEndCountsAsOneCharacter) {
  constexpr double kAdvance = 12;  // of a Courier letter at 20 points
  ASSERT_TRUE(open(hyphenatedPdf()));
  for (const bool regex : {false, true}) {
    chooseFindMode(regex);
    type(u"behind");
    FindInDocument();
    ASSERT_EQ(find().results.size(), 1u) << regex;
    EXPECT_EQ(find().results[0].start, 12);
    EXPECT_EQ(find().results[0].count, 6);
    const std::vector<Box> boxes = boxesOf(0, find().results[0]);
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_NEAR(boxes[0].left, 72 + 4 * kAdvance, 2) << regex;
    EXPECT_NEAR(boxes[0].right, 72 + 10 * kAdvance, 2) << regex;
    EXPECT_GT(boxes[0].bottom, 660);
    EXPECT_LT(boxes[0].top, 690);
  }
}

TEST_F(FindViewTest, APatternSeesTheHyphenAsOneUnitInsideTheWord) {
  ASSERT_TRUE(open(hyphenatedPdf()));
  chooseFindMode(true);
  for (const char16_t* pattern : {u"exam.ple", u"exam\\uFFFEple", u"exam\uFFFEple"}) {
    type(pattern);
    FindInDocument();
    ASSERT_EQ(find().results.size(), 1u);
    EXPECT_EQ(find().results[0].start, 3);
    EXPECT_EQ(find().results[0].count, 8);
    const std::vector<Box> boxes = boxesOf(0, find().results[0]);
    ASSERT_EQ(boxes.size(), 2u);
    EXPECT_GT(boxes[0].bottom, 690);
    EXPECT_LT(boxes[1].top, 690);
    EXPECT_EQ(findHitQuads(0).size(), 2u);
  }
  type(u"example");
  FindInDocument();
  EXPECT_EQ(bar().status, u"No results");
}

}  // namespace
}  // namespace quillmere::test
