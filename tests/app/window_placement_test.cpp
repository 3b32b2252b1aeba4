#include "app/window_placement.h"

#include <gtest/gtest.h>

#include "support/session_test.h"

namespace quillmere::test {
namespace {

using platform::ScreenRect;

constexpr ScreenRect kScreen{0, 0, 1920, 1040};

ViewerSurroundings beside(const ScreenRect& mainWindow, int viewerCount = 0,
                          const ScreenRect& workArea = kScreen) {
  ViewerSurroundings surroundings;
  surroundings.mainWindow = mainWindow;
  surroundings.workArea = workArea;
  surroundings.viewerCount = viewerCount;
  surroundings.captionHeight = 23;
  return surroundings;
}

ViewerSurroundings alone(const ScreenRect& workArea) {
  ViewerSurroundings surroundings;
  surroundings.workArea = workArea;
  surroundings.captionHeight = 23;
  return surroundings;
}

TEST(WindowPlacementTest, TheMainWindowHasASizeAndLeavesThePlaceToTheSystem) {
  const InitialPlacement placement = mainWindowInitialPlacement(kScreen);
  EXPECT_FALSE(placement.positioned);
  EXPECT_EQ(placement.width, 1100);
  EXPECT_EQ(placement.height, 800);
}

TEST(WindowPlacementTest, TheFirstViewerStandsOneCaptionUpAndTwoToTheRight) {
  const InitialPlacement placement = viewerInitialPlacement(beside({100, 100, 1200, 900}));
  EXPECT_TRUE(placement.positioned);
  EXPECT_EQ(placement.width, 715);   // 65% of 1100
  EXPECT_EQ(placement.height, 720);  // 90% of 800
  EXPECT_EQ(placement.x, 1200 + 46 - 715);
  EXPECT_EQ(placement.y, 77);
}

TEST(WindowPlacementTest, EachFurtherViewerStepsUpAndToTheRight) {
  for (int others = 0; others < 4; ++others) {
    const InitialPlacement placement =
        viewerInitialPlacement(beside({100, 200, 1200, 1000}, others));
    EXPECT_EQ(placement.x, 531 + 46 * others);
    EXPECT_EQ(placement.y, 177 - 23 * others);
  }
}

TEST(WindowPlacementTest, SharesOfTheMainWindowAreRoundedToTheNearestPixel) {
  // 65% of 1101 is 715.65, of 1102 it is 716.3, of 1090 it is 708.5.
  EXPECT_EQ(viewerInitialPlacement(beside({0, 0, 1101, 800})).width, 716);
  EXPECT_EQ(viewerInitialPlacement(beside({0, 0, 1102, 800})).width, 716);
  EXPECT_EQ(viewerInitialPlacement(beside({0, 0, 1090, 800})).width, 709);
  // 90% of 801 is 720.9, of 802 it is 721.8, of 805 it is 724.5, of 803 it is 722.7.
  EXPECT_EQ(viewerInitialPlacement(beside({0, 0, 1000, 801})).height, 721);
  EXPECT_EQ(viewerInitialPlacement(beside({0, 0, 1000, 804})).height, 724);
  EXPECT_EQ(viewerInitialPlacement(beside({0, 0, 1000, 805})).height, 725);
}

TEST(WindowPlacementTest, TheRightEdgeOfTheWorkAreaHoldsTheViewer) {
  EXPECT_EQ(viewerInitialPlacement(beside({800, 100, 1900, 900})).x, 1920 - 715);
}

TEST(WindowPlacementTest, ATouchedRightEdgeIsNotCrossed) {
  EXPECT_EQ(viewerInitialPlacement(beside({774, 100, 1874, 900})).x, 1205);
  EXPECT_EQ(viewerInitialPlacement(beside({773, 100, 1873, 900})).x, 1204);
}

TEST(WindowPlacementTest, TheLeftEdgeOfTheWorkAreaHoldsTheViewer) {
  EXPECT_EQ(viewerInitialPlacement(beside({-500, 100, 600, 900})).x, 0);
  EXPECT_EQ(viewerInitialPlacement(beside({-500, 100, 600, 900}, 0, {60, 0, 1920, 1040})).x, 60);
}

TEST(WindowPlacementTest, TheTopOfTheWorkAreaHoldsTheViewer) {
  EXPECT_EQ(viewerInitialPlacement(beside({100, 10, 1200, 810})).y, 0);
  EXPECT_EQ(viewerInitialPlacement(beside({100, 50, 1200, 850}, 0, {0, 40, 1920, 1080})).y, 40);
}

TEST(WindowPlacementTest, TheBottomOfTheWorkAreaHoldsTheViewer) {
  EXPECT_EQ(viewerInitialPlacement(beside({100, 500, 1200, 1300})).y, 1040 - 720);
}

TEST(WindowPlacementTest, AScreenLeftOfThePrimaryOneIsUsedAsItIs) {
  const InitialPlacement placement =
      viewerInitialPlacement(beside({-1800, 100, -700, 900}, 0, {-1920, 0, 0, 1040}));
  EXPECT_EQ(placement.x, -700 + 46 - 715);
  EXPECT_EQ(placement.y, 77);
}

TEST(WindowPlacementTest, AViewerKeepsFortyPixelsOfTheWorkAreaFree) {
  const InitialPlacement placement =
      viewerInitialPlacement(beside({0, 0, 1100, 800}, 0, {0, 0, 740, 640}));
  EXPECT_EQ(placement.width, 700);
  EXPECT_EQ(placement.height, 600);
}

TEST(WindowPlacementTest, AWorkAreaThatIsJustLargeEnoughLeavesTheSizeAlone) {
  const InitialPlacement placement =
      viewerInitialPlacement(beside({0, 0, 1100, 800}, 0, {0, 0, 755, 760}));
  EXPECT_EQ(placement.width, 715);
  EXPECT_EQ(placement.height, 720);
}

TEST(WindowPlacementTest, AViewerIsNeverBelowItsMinimum) {
  const InitialPlacement small = viewerInitialPlacement(beside({0, 0, 500, 400}));
  EXPECT_EQ(small.width, 600);
  EXPECT_EQ(small.height, 480);
}

TEST(WindowPlacementTest, TheMinimumExceedsASmallWorkArea) {
  const InitialPlacement placement =
      viewerInitialPlacement(beside({100, 100, 1200, 900}, 0, {0, 0, 500, 400}));
  EXPECT_EQ(placement.width, 600);
  EXPECT_EQ(placement.height, 480);
  EXPECT_EQ(placement.x, 0);
  EXPECT_EQ(placement.y, 0);
}

TEST(WindowPlacementTest, AWorkAreaOfFortyPixelsLimitsNothing) {
  const InitialPlacement placement =
      viewerInitialPlacement(beside({0, 0, 1100, 800}, 0, {0, 0, 40, 40}));
  EXPECT_EQ(placement.width, 715);
  EXPECT_EQ(placement.height, 720);
}

TEST(WindowPlacementTest, WithoutAMainWindowTheSystemChoosesThePlace) {
  const InitialPlacement placement = viewerInitialPlacement(alone(kScreen));
  EXPECT_FALSE(placement.positioned);
  EXPECT_EQ(placement.width, 740);
  EXPECT_EQ(placement.height, 720);
}

TEST(WindowPlacementTest, TheWorkAreaAlsoLimitsAViewerWithoutMainWindow) {
  const InitialPlacement placement = viewerInitialPlacement(alone({0, 0, 720, 600}));
  EXPECT_FALSE(placement.positioned);
  EXPECT_EQ(placement.width, 680);
  EXPECT_EQ(placement.height, 560);
}

// The same screens seen at both densities: lengths of the program's own grow, those of other
// windows and of the screen are given in its pixels anyway.
class WindowPlacementAtDensityTest : public SessionTest {};

TEST_F(WindowPlacementAtDensityTest, WindowsAreAsLargeToTheEye) {
  const struct {
    std::int32_t dpi, mainWidth, mainHeight, viewerWidth, viewerHeight;
  } rows[] = {{96, 1100, 800, 740, 720}, {144, 1650, 1200, 1110, 1080}};
  for (const auto& row : rows) {
    session.dpi = row.dpi;
    const InitialPlacement main = mainWindowInitialPlacement({0, 0, 2880, 1560});
    EXPECT_EQ(main.width, row.mainWidth);
    EXPECT_EQ(main.height, row.mainHeight);
    const InitialPlacement viewer = viewerInitialPlacement(alone({0, 0, 2880, 1560}));
    EXPECT_EQ(viewer.width, row.viewerWidth);
    EXPECT_EQ(viewer.height, row.viewerHeight);
  }
}

TEST_F(WindowPlacementAtDensityTest, OnASmallDenseScreenTheMainWindowStaysWithinTheWorkArea) {
  session.dpi = 144;
  EXPECT_EQ(mainWindowInitialPlacement(kScreen).width, 1650);
  EXPECT_EQ(mainWindowInitialPlacement(kScreen).height, 980) << "60 pixels less than the work area";
  EXPECT_EQ(mainWindowInitialPlacement({0, 0, 1366, 728}).width, 1306);
  EXPECT_EQ(mainWindowInitialPlacement({0, 0, 1366, 728}).height, 800) << "as at 96 DPI";
  session.dpi = 96;
  EXPECT_EQ(mainWindowInitialPlacement({0, 0, 800, 560}).width, 1100);
}

TEST_F(WindowPlacementAtDensityTest, MinimumAndFreePartOfTheWorkAreaGrow) {
  const struct {
    std::int32_t dpi, minimumWidth, minimumHeight, limitedWidth, limitedHeight;
  } rows[] = {{96, 600, 480, 1160, 960}, {144, 900, 720, 1140, 940}};
  for (const auto& row : rows) {
    session.dpi = row.dpi;
    const InitialPlacement small = viewerInitialPlacement(beside({0, 0, 500, 400}));
    EXPECT_EQ(small.width, row.minimumWidth);
    EXPECT_EQ(small.height, row.minimumHeight);
    const InitialPlacement limited =
        viewerInitialPlacement(beside({0, 0, 2400, 1800}, 0, {0, 0, 1200, 1000}));
    EXPECT_EQ(limited.width, row.limitedWidth);
    EXPECT_EQ(limited.height, row.limitedHeight);
  }
}

TEST_F(WindowPlacementAtDensityTest, SharesOfTheMainWindowAreOfItsRealSize) {
  for (const std::int32_t dpi : {96, 144}) {
    session.dpi = dpi;
    const InitialPlacement placement =
        viewerInitialPlacement(beside({100, 100, 1700, 1100}, 0, {0, 0, 2880, 1560}));
    EXPECT_EQ(placement.width, 1040);
    EXPECT_EQ(placement.height, 900);
    EXPECT_EQ(placement.x, 1700 + 46 - 1040);
    EXPECT_EQ(placement.y, 77);
  }
}

}  // namespace
}  // namespace quillmere::test
