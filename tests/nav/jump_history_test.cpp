#include "nav/jump_history.h"

#include "app/keys.h"
#include "app/mouse.h"
#include "nav/nav_test.h"
#include "view/geometry.h"
#include "view/selection.h"
#include "view/zoom.h"

namespace quillmere::test {
namespace {

class JumpHistoryTest : public NavTest {
 protected:
  static void jump(int paneIndex, std::int32_t page) {
    PushJump(paneIndex);
    goToPage(paneIndex, page, false);
  }
};

TEST_F(JumpHistoryTest, BackAndForwardReturnToTheExactPlace) {
  ASSERT_TRUE(open(simplePdf(9)));
  zoomAround(0, 1.5, 100, 100);
  pane(0).panX = -33;
  pane(0).panY = -44;
  const float zoom = pane(0).zoom;
  const int width = pane(0).pageBitmapWidth;
  jump(0, 5);
  zoomAround(0, 0.5, 0, 0);
  ASSERT_TRUE(JumpBack(0));
  EXPECT_EQ(pane(0).currentPage, 0);
  EXPECT_EQ(pane(0).zoomMode, kCustomFit);
  EXPECT_FLOAT_EQ(pane(0).zoom, zoom);
  EXPECT_EQ(pane(0).pageBitmapWidth, width);
  EXPECT_FLOAT_EQ(pane(0).panX, -33);
  EXPECT_FLOAT_EQ(pane(0).panY, -44);
  ASSERT_TRUE(JumpForward(0));
  EXPECT_EQ(pane(0).currentPage, 5);
}

TEST_F(JumpHistoryTest, OtherZoomModesAreComputedAnew) {
  ASSERT_TRUE(open(simplePdf(3)));
  setZoomMode(0, kFitPage);
  const float fitted = pane(0).panY;
  const float zoom = pane(0).zoom;
  const int width = pane(0).pageBitmapWidth;
  pane(0).panY = -300;
  jump(0, 2);
  zoomAround(0, 1.5, 0, 0);
  JumpBack(0);
  EXPECT_EQ(pane(0).zoomMode, kFitPage);
  EXPECT_FLOAT_EQ(pane(0).panY, fitted);
  EXPECT_FLOAT_EQ(pane(0).zoom, zoom);
  EXPECT_EQ(pane(0).pageBitmapWidth, width);
}

TEST_F(JumpHistoryTest, TheFiftyFirstJumpDropsTheOldest) {
  ASSERT_TRUE(open(simplePdf(60)));
  for (int page = 1; page <= 51; ++page) jump(0, page);
  int steps = 0;
  while (JumpBack(0)) ++steps;
  EXPECT_EQ(steps, 50);
  EXPECT_EQ(pane(0).currentPage, 1);
  EXPECT_EQ(pane(0).forwardHistory.size(), 50u);
}

TEST_F(JumpHistoryTest, ForwardMayLeadBackBeyondFifty) {
  ASSERT_TRUE(open(simplePdf(60)));
  for (int page = 1; page <= 50; ++page) jump(0, page);
  pane(0).forwardHistory.push_back({55, 0, 0, 1, kFitPage});
  ASSERT_TRUE(JumpForward(0));
  EXPECT_EQ(pane(0).backHistory.size(), 51u);
}

TEST_F(JumpHistoryTest, BackMayLeadForwardBeyondFifty) {
  ASSERT_TRUE(open(simplePdf(60)));
  for (int page = 1; page <= 50; ++page) jump(0, page);
  for (const std::int32_t page : {57, 56, 55}) {
    pane(0).forwardHistory.push_back({page, 0, 0, 1, kFitPage});
  }
  while (JumpForward(0)) {
  }
  int steps = 0;
  while (JumpBack(0)) ++steps;
  EXPECT_EQ(steps, 53);
  EXPECT_EQ(pane(0).forwardHistory.size(), 53u);
  while (JumpForward(0)) {
  }
  EXPECT_EQ(pane(0).currentPage, 57);
}

TEST_F(JumpHistoryTest, ANewJumpEndsTheForwardPath) {
  ASSERT_TRUE(open(simplePdf(9)));
  jump(0, 3);
  JumpBack(0);
  jump(0, 5);
  EXPECT_FALSE(JumpForward(0));
  EXPECT_EQ(pane(0).currentPage, 5);
}

TEST_F(JumpHistoryTest, ARecordBeyondTheEndLandsOnTheLastPage) {
  ASSERT_TRUE(open(simplePdf(4)));
  pane(0).backHistory.push_back({99, 0, 0, 1, kFitPage});
  JumpBack(0);
  EXPECT_EQ(pane(0).currentPage, 3);
}

TEST_F(JumpHistoryTest, ARecordedZoomIsHeldToTheLimits) {
  ASSERT_TRUE(open(simplePdf(2)));
  RestoreJump(0, {0, 0, 0, 50.0f, kCustomFit});
  EXPECT_FLOAT_EQ(pane(0).zoom, 5.0f);
}

TEST_F(JumpHistoryTest, ARecordedPlaceIsKeptInSight) {
  ASSERT_TRUE(open(simplePdf(2)));
  RestoreJump(0, {0, 99999, 99999, 1.0f, kCustomFit});
  EXPECT_LT(pane(0).panX, 1000);
  EXPECT_LT(pane(0).panY, 800);
}

TEST_F(JumpHistoryTest, ABookSharesOneHistory) {
  ASSERT_TRUE(open(simplePdf(9)));
  setViewMode(ViewMode::Book);
  for (const int from : {0, 1}) {
    PushJump(from);
    goToPage(0, 4, false);
    EXPECT_TRUE(pane(1).backHistory.empty());
    ASSERT_TRUE(JumpBack(1 - from));
    EXPECT_EQ(pane(0).currentPage, 0);
    EXPECT_EQ(pane(1).currentPage, 1);
    EXPECT_TRUE(pane(1).page);
    ASSERT_TRUE(JumpForward(from));
    EXPECT_EQ(pane(0).currentPage, 4);
    EXPECT_EQ(pane(1).currentPage, 5);
    EXPECT_TRUE(pane(1).forwardHistory.empty());
    ASSERT_TRUE(JumpBack(from));
    EXPECT_EQ(pane(0).currentPage, 0);
    EXPECT_EQ(pane(1).currentPage, 1);
  }
}

TEST_F(JumpHistoryTest, ABookWithoutANextPageEmptiesTheRightPane) {
  ASSERT_TRUE(open(simplePdf(4)));
  setViewMode(ViewMode::Book);
  RestoreJump(0, {3, 0, 0, 1, kFitPage});
  EXPECT_EQ(pane(0).currentPage, 3);
  EXPECT_FALSE(pane(1).page);
  EXPECT_FALSE(pane(1).pageBitmap);
}

TEST_F(JumpHistoryTest, EachPaneHasItsOwnHistory) {
  ASSERT_TRUE(open(simplePdf(9)));
  setViewMode(ViewMode::IndependentPages);
  jump(1, 5);
  EXPECT_FALSE(JumpBack(0));
  EXPECT_TRUE(JumpBack(1));
}

TEST_F(JumpHistoryTest, BackspaceGoesBackAndWithShiftForward) {
  ASSERT_TRUE(open(simplePdf(9)));
  jump(0, 5);
  handleKey(kKeyBackspace);
  EXPECT_EQ(pane(0).currentPage, 0);
  platform::standIn().shiftDown = true;
  handleKey(kKeyBackspace);
  EXPECT_EQ(pane(0).currentPage, 5);
}

TEST_F(JumpHistoryTest, SideButtonsActOnThePaneUnderThePointer) {
  ASSERT_TRUE(open(simplePdf(9)));
  setViewMode(ViewMode::IndependentPages);
  jump(1, 5);
  pressSideButton(900, false);
  EXPECT_EQ(pane(1).currentPage, 0);
  pressSideButton(900, true);
  EXPECT_EQ(pane(1).currentPage, 5);
}

TEST_F(JumpHistoryTest, SideButtonsOutsideThePanesActOnTheActiveOne) {
  ASSERT_TRUE(open(simplePdf(9)));
  session.navigationPanelVisible = true;
  setViewMode(ViewMode::IndependentPages);
  const int places[] = {10, dividerX()};
  for (const int active : {0, 1}) {
    setActivePane(active);
    for (const int x : places) {
      ASSERT_EQ(paneAt(x), -1);
      jump(active, 5);
      pressSideButton(x, false);
      EXPECT_EQ(pane(active).currentPage, 0) << active << " at " << x;
      pressSideButton(x, true);
      EXPECT_EQ(pane(active).currentPage, 5) << active << " at " << x;
      pressSideButton(x, false);
    }
    EXPECT_EQ(session.activePane, active);
  }
}

TEST_F(JumpHistoryTest, ARecordOfADocumentThatLostItsPagesIsIgnored) {
  openInActive(zeroPagePdf());
  RestoreJump(0, {0, 0, 0, 1, kActualSize});
  EXPECT_FALSE(pane(0).page);
  EXPECT_EQ(pane(0).zoomMode, kFitPage);
}

TEST_F(JumpHistoryTest, WithoutADocumentNothingHappens) {
  PushJump(0);
  EXPECT_TRUE(pane(0).backHistory.empty());
  EXPECT_FALSE(JumpBack(0));
  EXPECT_FALSE(JumpForward(0));
}

TEST_F(JumpHistoryTest, WithoutAnOpenPageTheListsStay) {
  ASSERT_TRUE(open(simplePdf(9)));
  jump(0, 3);
  jump(0, 5);
  JumpBack(0);
  closePanePage(0);
  EXPECT_FALSE(JumpBack(0));
  EXPECT_FALSE(JumpForward(0));
  EXPECT_EQ(pane(0).backHistory.size(), 1u);
  EXPECT_EQ(pane(0).forwardHistory.size(), 1u);
  EXPECT_EQ(pane(0).currentPage, 3);
  EXPECT_FALSE(pane(0).page);
}

TEST_F(JumpHistoryTest, ComingBackEndsASelectionAndMovesTheHits) {
  ASSERT_TRUE(open(simplePdf(9)));
  type(u"Page");
  jump(0, 5);
  selectAll(0);
  JumpBack(0);
  EXPECT_FALSE(session.selection.active);
  EXPECT_EQ(find().results.front().page, 0);
}

}  // namespace
}  // namespace quillmere::test
