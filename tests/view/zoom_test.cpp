#include "view/zoom.h"

#include "app/command_ids.h"
#include "view/geometry.h"
#include "view/view_test.h"

namespace quillmere::test {
namespace {

class ZoomTest : public ViewTest {
 protected:
  ZoomTest() { openAndShow(simplePdf(2, 400, 600)); }
};

TEST_F(ZoomTest, TheAnchorStaysOnItsPointOfThePage) {
  setView(0, 1.0f, 100.0f, 50.0f);
  const PagePoint before = paneToPage(0, 220, 310);
  zoomAround(0, kZoomStepIn, 220, 310);
  const PagePoint after = paneToPage(0, 220, 310);
  EXPECT_FLOAT_EQ(pane(0).zoom, 1.18f);
  EXPECT_NEAR(after.x, before.x, 1e-4);
  EXPECT_NEAR(after.y, before.y, 1e-4);
  EXPECT_NEAR(pane(0).panX, 78.4f, 1e-3f);  // (100 - 220) * 1.18 + 220
  EXPECT_NEAR(pane(0).panY, 3.2f, 1e-3f);
}

TEST_F(ZoomTest, AStepTurnsToCustomFitAndRendersAnew) {
  const auto* bitmap = pane(0).pageBitmap.get();
  ASSERT_NE(bitmap, nullptr);
  zoomIn(0);
  EXPECT_EQ(pane(0).zoomMode, kCustomFit);
  EXPECT_EQ(pane(0).pageBitmapWidth, static_cast<int>(400 * pane(0).zoom));
  EXPECT_GT(window().invalidations, 0);
  EXPECT_EQ(window().erasingInvalidations, 0);
}

TEST_F(ZoomTest, TheMenuMarksTheZoomMode) {
  setZoomMode(0, kFitWidth);
  EXPECT_TRUE(window().menuItems[kCmdFitWidth].checked);
  zoomIn(0);
  EXPECT_FALSE(window().menuItems[kCmdFitWidth].checked);
  EXPECT_TRUE(window().menuItems[kCmdCustomFit].checked);
}

TEST_F(ZoomTest, OneStepInAndOneOutComeBack) {
  setView(0, 1.0f, 100.0f, 50.0f);
  zoomIn(0);
  EXPECT_FLOAT_EQ(pane(0).zoom, 1.18f);
  zoomOut(0);
  EXPECT_NEAR(pane(0).zoom, 1.0f, 1e-6f);
  EXPECT_NEAR(pane(0).panX, 100.0f, 1.0f);
  EXPECT_NEAR(pane(0).panY, 50.0f, 1.0f);
}

TEST_F(ZoomTest, AStepIsAroundTheBitmapsCentre) {
  setView(0, 1.0f, 100.5f, 50.25f);  // centre 300.5, 350.25, truncated to 300, 350
  zoomIn(0);
  EXPECT_NEAR(pane(0).panX, 64.59f, 1e-3f);   // (100.5 - 300) * 1.18 + 300
  EXPECT_NEAR(pane(0).panY, -3.705f, 1e-3f);  // (50.25 - 350) * 1.18 + 350
}

TEST_F(ZoomTest, AtALimitTheViewStaysButTheModeBecomesCustomFit) {
  for (const float limit : {5.0f, 0.2f}) {
    setView(0, limit, 60.0f, 70.0f);
    pane(0).zoomMode = kFitPage;
    limit > 1 ? zoomIn(0) : zoomOut(0);
    EXPECT_FLOAT_EQ(pane(0).zoom, limit);
    EXPECT_FLOAT_EQ(pane(0).panX, 60.0f);
    EXPECT_FLOAT_EQ(pane(0).panY, 70.0f);
    EXPECT_EQ(pane(0).zoomMode, kCustomFit);
  }
}

TEST_F(ZoomTest, ALastStepIsCutByTheLimit) {
  setView(0, 4.8f, 0.0f, 0.0f);
  zoomIn(0);
  EXPECT_FLOAT_EQ(pane(0).zoom, 5.0f);
  setView(0, 0.21f, 0.0f, 0.0f);
  zoomOut(0);
  EXPECT_FLOAT_EQ(pane(0).zoom, 0.2f);
}

TEST_F(ZoomTest, ZoomingAwayFromThePageKeepsAPartVisible) {
  setView(0, 1.0f, -310.0f, 0.0f);
  zoomAround(0, 0.5, -310, 0);  // the page would end at -110
  EXPECT_FLOAT_EQ(pane(0).panX, 80.0f - static_cast<float>(pane(0).pageBitmapWidth));
}

TEST_F(ZoomTest, WithoutAPageNothingZooms) {
  dropPaneView(0);
  pane(0).zoom = 1.0f;
  zoomIn(0);
  zoomToSliderPosition(3);
  EXPECT_FLOAT_EQ(pane(0).zoom, 1.0f);
  EXPECT_EQ(pane(0).zoomMode, kFitPage);
}

TEST_F(ZoomTest, ChoosingAModeShowsTheTopOfThePage) {
  setView(0, 3.0f, -5.0f, -900.0f);
  setZoomMode(0, kFitWidth);
  EXPECT_FLOAT_EQ(pane(0).zoom, 2.4f);
  EXPECT_FLOAT_EQ(pane(0).panY, 8.0f);
  EXPECT_EQ(pane(0).pageBitmapWidth, 960);
  EXPECT_EQ(window().statusTexts[0], u"  Zoom: 240%");
}

TEST_F(ZoomTest, AModeCanBeChosenBeforeADocumentIsOpen) {
  resetSession();
  setZoomMode(0, kActualSize);
  EXPECT_EQ(pane(0).zoomMode, kActualSize);
}

TEST_F(ZoomTest, TheSliderHasTwentySteps) {
  EXPECT_EQ(zoomSliderMaximum(), 20);
}

TEST_F(ZoomTest, SliderPositionsMeanPowersOfTheStep) {
  EXPECT_FLOAT_EQ(zoomOfSliderPosition(0), 0.2f);
  EXPECT_FLOAT_EQ(zoomOfSliderPosition(1), 0.236f);
  EXPECT_NEAR(zoomOfSliderPosition(10), 1.04677f, 1e-4f);
  EXPECT_NEAR(zoomOfSliderPosition(19), 4.64279f, 1e-3f);
  EXPECT_FLOAT_EQ(zoomOfSliderPosition(20), 5.0f);  // 5.48 before the limit
}

TEST_F(ZoomTest, TheSliderShowsTheNearestStep) {
  EXPECT_EQ(sliderPositionOfZoom(0.2f), 0);
  EXPECT_EQ(sliderPositionOfZoom(0.21f), 0);
  EXPECT_EQ(sliderPositionOfZoom(0.22f), 1);
  EXPECT_EQ(sliderPositionOfZoom(1.0f), 10);
  EXPECT_EQ(sliderPositionOfZoom(5.0f), 19);  // 19.45 steps
  EXPECT_EQ(sliderPositionOfZoom(0.0f), 0);
}

TEST_F(ZoomTest, EverySliderPositionButTheTopOneFindsItselfAgain) {
  for (int position = 0; position < zoomSliderMaximum(); ++position) {
    EXPECT_EQ(sliderPositionOfZoom(zoomOfSliderPosition(position)), position);
  }
}

TEST_F(ZoomTest, MovingTheSliderZoomsTheActivePaneAroundItsCentre) {
  session.viewMode = ViewMode::IndependentPages;
  session.activePane = 1;
  show(1, 1);
  setView(0, 1.0f, 0.0f, 0.0f);
  setView(1, 1.0f, 40.0f, 60.0f);
  zoomToSliderPosition(0);
  EXPECT_FLOAT_EQ(pane(0).zoom, 1.0f);
  EXPECT_FLOAT_EQ(pane(1).zoom, 0.2f);
  EXPECT_FLOAT_EQ(pane(1).panX, 200.0f);  // (40 - 240) * 0.2 + 240
  EXPECT_FLOAT_EQ(pane(1).panY, 300.0f);
}

}  // namespace
}  // namespace quillmere::test
