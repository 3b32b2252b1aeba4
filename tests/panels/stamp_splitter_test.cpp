#include "panels/stamp_splitter.h"

#include "session/density.h"
#include "view/geometry.h"
#include "view/view_test.h"
#include "view/zoom.h"

namespace quillmere::test {
namespace {

// The panel's left edge is at 820, its splitter at 817 to 819.
class StampSplitterTest : public ViewTest {
 protected:
  StampSplitterTest() {
    session.stampPanelVisible = true;
    session.stampPanelWidth = 180;
  }

  static int dragFrom180By(int distance) {
    session.stampPanelWidth = 180;
    startStampSplitterDrag(818);
    moveStampSplitterDrag(818 + distance);
    endStampSplitterDrag();
    return session.stampPanelWidth;
  }
};

TEST_F(StampSplitterTest, ThePanelStandsAtTheRightBelowTheFindBar) {
  EXPECT_EQ(stampPanelRect(), (PixelRect{820, 0, 1000, 778}));
  session.findBarVisible = true;
  EXPECT_EQ(stampPanelRect(), (PixelRect{820, 34, 1000, 778}));
}

TEST_F(StampSplitterTest, ItIsGrabbedWhereItIsPainted) {
  EXPECT_FALSE(onStampSplitter(816, 300));
  EXPECT_TRUE(onStampSplitter(817, 300));
  EXPECT_TRUE(onStampSplitter(819, 300));
  EXPECT_FALSE(onStampSplitter(820, 300));
  EXPECT_TRUE(onStampSplitter(818, 0));
  EXPECT_TRUE(onStampSplitter(818, 777));
  EXPECT_FALSE(onStampSplitter(818, 778));
}

TEST_F(StampSplitterTest, TheFindBarLiesAboveIt) {
  session.findBarVisible = true;
  EXPECT_FALSE(onStampSplitter(818, 33));
  EXPECT_TRUE(onStampSplitter(818, 34));
}

TEST_F(StampSplitterTest, ThereIsNoneWithoutThePanelOrOutsideSinglePage) {
  session.viewMode = ViewMode::IndependentPages;
  EXPECT_TRUE(stampPanelRect().empty());
  EXPECT_FALSE(onStampSplitter(818, 300));
  session.viewMode = ViewMode::SinglePage;
  session.stampPanelVisible = false;
  EXPECT_TRUE(stampPanelRect().empty());
  EXPECT_FALSE(onStampSplitter(818, 300));
}

TEST_F(StampSplitterTest, ThePanelGrowsWhenThePointerGoesLeft) {
  EXPECT_EQ(dragFrom180By(-70), 250);
  EXPECT_EQ(dragFrom180By(20), 160);
  EXPECT_EQ(dragFrom180By(-900), 400);
  EXPECT_EQ(dragFrom180By(900), 120);
}

TEST_F(StampSplitterTest, BandAndLimitsGrowWithTheScreensDensity) {
  changeDensity(144);
  EXPECT_EQ(stampPanelRect(), (PixelRect{730, 0, 1000, 778}));
  EXPECT_FALSE(onStampSplitter(724, 300));
  EXPECT_TRUE(onStampSplitter(725, 300));
  EXPECT_EQ(dragFrom180By(-900), 600);
  EXPECT_EQ(dragFrom180By(900), 180);
}

TEST_F(StampSplitterTest, ANewWidthIsShownAtOnce) {
  startStampSplitterDrag(818);
  EXPECT_TRUE(window().mouseCaptured);
  moveStampSplitterDrag(818);
  EXPECT_EQ(window().layouts, 0);
  moveStampSplitterDrag(800);
  EXPECT_EQ(window().layouts, 1);
  EXPECT_EQ(window().erasingInvalidations, 1);
  EXPECT_EQ(window().updates, 1);
  endStampSplitterDrag();
  EXPECT_FALSE(window().mouseCaptured);
}

TEST_F(StampSplitterTest, ThePageIsFittedAnewAtTheEnd) {
  openAndShow(simplePdf(1, 400, 200));
  ASSERT_EQ(session.lastPaneWidth[0], 817);
  startStampSplitterDrag(818);
  moveStampSplitterDrag(718);
  EXPECT_EQ(session.lastPaneWidth[0], 817);
  endStampSplitterDrag();
  EXPECT_EQ(session.lastPaneWidth[0], 717);
}

TEST_F(StampSplitterTest, APressOnItAloneLeavesThePageWhereItIs) {
  openAndShow(simplePdf(1, 400, 2000));
  setZoomMode(0, kFitWidth);
  pane(0).panY = -300;
  startStampSplitterDrag(818);
  moveStampSplitterDrag(818);
  endStampSplitterDrag();
  EXPECT_EQ(pane(0).panY, -300);
}

TEST_F(StampSplitterTest, MovesWithoutADragDoNothing) {
  moveStampSplitterDrag(700);
  EXPECT_EQ(session.stampPanelWidth, 180);
  window().mouseCaptured = true;  // by something else
  endStampSplitterDrag();
  EXPECT_TRUE(window().mouseCaptured);
}

}  // namespace
}  // namespace quillmere::test
