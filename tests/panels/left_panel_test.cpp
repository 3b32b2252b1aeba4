#include "panels/left_panel.h"

#include "session/density.h"
#include "view/geometry.h"
#include "view/view_test.h"
#include "view/zoom.h"

namespace quillmere::test {
namespace {

class LeftPanelTest : public ViewTest {
 protected:
  LeftPanelTest() {
    session.navigationPanelVisible = true;
    session.binderPanelVisible = true;
    session.leftPanelWidth = 190;
  }

  static int dragFrom190To(int x) {
    session.leftPanelWidth = 190;
    startPanelWidthDrag(191);
    movePanelWidthDrag(x + 1);
    endPanelWidthDrag();
    return session.leftPanelWidth;
  }
};

TEST_F(LeftPanelTest, BookmarksStandAboveBindersWithABarBetween) {
  const LeftPanelParts parts = leftPanelParts();
  EXPECT_EQ(parts.bookmarksHeader, (PixelRect{0, 0, 190, 22}));
  EXPECT_EQ(parts.bookmarksTree, (PixelRect{0, 22, 190, 389}));
  EXPECT_EQ(parts.bar, (PixelRect{0, 389, 190, 392}));
  EXPECT_EQ(parts.bindersHeader, (PixelRect{0, 392, 190, 414}));
  EXPECT_EQ(parts.bindersTree, (PixelRect{0, 414, 190, 778}));
}

TEST_F(LeftPanelTest, OnePartAloneTakesTheWholePanelBelowTheFindBar) {
  session.findBarVisible = true;
  session.binderPanelVisible = false;
  LeftPanelParts parts = leftPanelParts();
  EXPECT_EQ(parts.bookmarksHeader, (PixelRect{0, 34, 190, 56}));
  EXPECT_EQ(parts.bookmarksTree, (PixelRect{0, 56, 190, 778}));
  EXPECT_TRUE(parts.bindersTree.empty());
  EXPECT_TRUE(parts.bar.empty());

  session.navigationPanelVisible = false;
  session.binderPanelVisible = true;
  parts = leftPanelParts();
  EXPECT_TRUE(parts.bookmarksTree.empty());
  EXPECT_EQ(parts.bindersHeader, (PixelRect{0, 34, 190, 56}));
  EXPECT_EQ(parts.bindersTree, (PixelRect{0, 56, 190, 778}));
}

TEST_F(LeftPanelTest, AHiddenPanelHasNoParts) {
  session.navigationPanelVisible = false;
  session.binderPanelVisible = false;
  const LeftPanelParts parts = leftPanelParts();
  EXPECT_TRUE(parts.bookmarksHeader.empty());
  EXPECT_TRUE(parts.bindersHeader.empty());
  EXPECT_FALSE(onLeftSplitter(190));
}

TEST_F(LeftPanelTest, NoPartIsUpsideDownInAMinimisedWindow) {
  window().client = {0, 0};
  const LeftPanelParts parts = leftPanelParts();
  for (const PixelRect& rect : {parts.bookmarksHeader, parts.bookmarksTree, parts.bar,
                                parts.bindersHeader, parts.bindersTree}) {
    EXPECT_GE(rect.height(), 0);
  }
}

TEST_F(LeftPanelTest, TheSplitterIsGrabbedInANarrowBand) {
  EXPECT_FALSE(onLeftSplitter(188));
  EXPECT_TRUE(onLeftSplitter(189));
  EXPECT_TRUE(onLeftSplitter(194));
  EXPECT_FALSE(onLeftSplitter(195));
}

TEST_F(LeftPanelTest, TheBarIsGrabbedWhereItIsPainted) {
  EXPECT_TRUE(onLeftPanelBar(100, 389));
  EXPECT_TRUE(onLeftPanelBar(100, 391));
  EXPECT_FALSE(onLeftPanelBar(100, 392));
  EXPECT_FALSE(onLeftPanelBar(190, 390));
}

TEST_F(LeftPanelTest, TheWidthFollowsThePointerWithinItsLimits) {
  EXPECT_EQ(dragFrom190To(260), 260);
  EXPECT_EQ(dragFrom190To(10), 150);
  EXPECT_EQ(dragFrom190To(900), 400);  // 40% of 1000
  window().client.width = 1999;
  EXPECT_EQ(dragFrom190To(900), 500);
  window().client.width = 999;
  EXPECT_EQ(dragFrom190To(900), 399);
  window().client.width = 200;
  EXPECT_EQ(dragFrom190To(900), 150);  // the lower limit wins
}

TEST_F(LeftPanelTest, ANewWidthIsShownAtOnce) {
  startPanelWidthDrag(190);
  EXPECT_TRUE(window().mouseCaptured);
  movePanelWidthDrag(190);
  EXPECT_EQ(window().layouts, 0);
  movePanelWidthDrag(200);
  EXPECT_EQ(window().layouts, 1);
  EXPECT_EQ(window().updates, 1);
  endPanelWidthDrag();
  EXPECT_FALSE(window().mouseCaptured);
}

TEST_F(LeftPanelTest, PagesAreFittedAnewAtTheEndOfAWidthDrag) {
  openAndShow(simplePdf(1, 400, 200));
  EXPECT_EQ(session.lastPaneWidth[0], 807);
  dragFrom190To(290);
  EXPECT_EQ(session.lastPaneWidth[0], 707);
}

TEST_F(LeftPanelTest, APressOnTheSplitterAloneLeavesThePageWhereItIs) {
  openAndShow(simplePdf(1, 400, 2000));
  setZoomMode(0, kFitWidth);
  pane(0).panY = -300;
  dragFrom190To(190);
  EXPECT_EQ(pane(0).panY, -300);
}

TEST_F(LeftPanelTest, TheBarMovesTheShareOfBothParts) {
  startPanelBarDrag(390);  // one pixel into the bar
  movePanelBarDrag(195);
  EXPECT_NEAR(session.leftPanelSplit, 194.0f / 778.0f, 1e-6f);
  EXPECT_EQ(leftPanelParts().bar.top, 194);
  movePanelBarDrag(-4000);
  EXPECT_FLOAT_EQ(session.leftPanelSplit, 0.05f);
  movePanelBarDrag(4000);
  EXPECT_FLOAT_EQ(session.leftPanelSplit, 0.95f);
  endPanelBarDrag();
  movePanelBarDrag(300);
  EXPECT_FLOAT_EQ(session.leftPanelSplit, 0.95f);
}

TEST_F(LeftPanelTest, PartsGrowWithTheScreensDensity) {
  changeDensity(144);
  const LeftPanelParts parts = leftPanelParts();
  EXPECT_EQ(parts.bookmarksHeader, (PixelRect{0, 0, 285, 33}));
  EXPECT_EQ(parts.bookmarksTree, (PixelRect{0, 33, 285, 389}));
  EXPECT_EQ(parts.bar, (PixelRect{0, 389, 285, 394}));
  EXPECT_EQ(parts.bindersHeader, (PixelRect{0, 394, 285, 427}));
  EXPECT_EQ(parts.bindersTree, (PixelRect{0, 427, 285, 778}));
  EXPECT_FALSE(onLeftSplitter(282));
  EXPECT_TRUE(onLeftSplitter(283));
  EXPECT_TRUE(onLeftSplitter(291));
  EXPECT_FALSE(onLeftSplitter(292));
}

TEST_F(LeftPanelTest, LimitsOfTheWidthGrowWithTheScreensDensityAndTheShareDoesNot) {
  session.dpi = 144;
  window().client.width = 1000;
  EXPECT_EQ(dragFrom190To(10), 225);
  EXPECT_EQ(dragFrom190To(900), 400);  // 40% of 1000
  window().client.width = 3000;
  EXPECT_EQ(dragFrom190To(2000), 750);
}

TEST_F(LeftPanelTest, MovesWithoutADragDoNothing) {
  movePanelWidthDrag(300);
  EXPECT_EQ(session.leftPanelWidth, 190);
  endPanelWidthDrag();
  endPanelBarDrag();
  EXPECT_FLOAT_EQ(session.leftPanelSplit, 0.5f);
}

}  // namespace
}  // namespace quillmere::test
