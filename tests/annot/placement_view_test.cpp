#include "annot/placement_view.h"

#include <gmock/gmock.h>

#include <cmath>
#include <numbers>

#include "annot/placement_box.h"
#include "annot/placement_test.h"
#include "documents/modes.h"
#include "view/rotation.h"

namespace quillmere::test {
namespace {

constexpr double kQuarter = std::numbers::pi / 2;
constexpr PixelRect kEverything{-10000, -10000, 10000, 10000};

class PlacementViewTest : public PlacementTest {
 protected:
  static std::vector<PictureDrawing> drawings(const PixelRect& area = kEverything) {
    return placementDrawings(0, area);
  }
};

TEST_F(PlacementViewTest, HandlesAreClientPixels) {
  openPlain();
  session.findBarVisible = true;  // the pane does not begin at the window's top
  const Placement stamp = stampOf(quarters(), 100, 700, 30, 40);
  // The pane's page begins at 40, 20; page point 100, 740 is 100 right of that and 60 down.
  EXPECT_EQ(PlacementHandlePoint(0, stamp, 0), (PixelPoint{140, 34 + 20 + 60}));
  EXPECT_EQ(PlacementHandlePoint(0, stamp, 4), (PixelPoint{170, 34 + 20 + 100}));
}

TEST_F(PlacementViewTest, HalvesOfPixelsGoAwayFromZero) {
  openPlain();
  EXPECT_EQ(PlacementHandlePoint(0, stampOf(quarters(), 100.5, 700, 0, 0), 0).x, 141);
  EXPECT_EQ(PlacementHandlePoint(0, stampOf(quarters(), -140.5, 700, 0, 0), 0).x, -101);
}

TEST_F(PlacementViewTest, AHandlesSquareHasSevenPixels) {
  const PixelRect square = handleSquare({10, 20});
  EXPECT_TRUE(square.contains(7, 17));
  EXPECT_TRUE(square.contains(13, 23));
  EXPECT_FALSE(square.contains(14, 20));
  EXPECT_FALSE(square.contains(10, 24));
  EXPECT_EQ(square.width(), 7);
}

TEST_F(PlacementViewTest, HandlesGrowWithTheDensityOfTheScreen) {
  session.dpi = 192;
  const PixelRect square = handleSquare({10, 20});
  EXPECT_EQ(square.width(), 13);
  EXPECT_TRUE(square.contains(4, 26));
}

TEST_F(PlacementViewTest, BoundsHoldTheTurnedBox) {
  openPlain();
  EXPECT_EQ(PlacementScreenBounds(0, stampOf(quarters(), 100, 700, 30, 40)),
            (PixelRect{140, 80, 170, 120}));
  // A box of 30 by 40 on its side, about the same centre.
  EXPECT_EQ(PlacementScreenBounds(0, stampOf(quarters(), 100.2, 700.2, 30, 40, kQuarter)),
            (PixelRect{135, 84, 176, 115}));
}

TEST_F(PlacementViewTest, BoundsFarFromAnyScreenStayWhole) {
  openPlain();
  const PixelRect bounds = PlacementScreenBounds(0, stampOf(quarters(), 1e7, -1e7, 1e7, 1e7, 1));
  EXPECT_LT(bounds.left, bounds.right);
}

TEST_F(PlacementViewTest, BoundsFollowTheViewsTurn) {
  openPlain();
  rotatePage(0);
  setView(0, 1.0f, 40.0f, 20.0f);
  // Turned clockwise, the page's bottom left corner is at the top left.
  EXPECT_EQ(PlacementScreenBounds(0, stampOf(quarters(), 10, 20, 30, 40)),
            (PixelRect{60, 30, 100, 60}));
}

TEST_F(PlacementViewTest, PendingOnesAreDrawnInTheirPlace) {
  openPlain();
  add(0, stampOf(quarters(), 100, 700, 30, 40, kQuarter));
  setView(0, 2.0f, 40.0f, 20.0f);
  const std::vector<PictureDrawing> all = drawings();
  ASSERT_EQ(all.size(), 1u);
  EXPECT_EQ(all[0].picture->pixels, quarters()->pixels);
  EXPECT_NEAR(all[0].centre.x, 40 + 2 * 115, 1e-3);
  EXPECT_NEAR(all[0].centre.y, 20 + 2 * 80, 1e-3);
  EXPECT_NEAR(all[0].width, 60, 1e-6);
  EXPECT_NEAR(all[0].height, 80, 1e-6);
  EXPECT_NEAR(all[0].degrees, 90, 1e-6);
  EXPECT_EQ(all[0].alpha, 1);
  EXPECT_FALSE(all[0].selected);
}

TEST_F(PlacementViewTest, TheViewsTurnAddsToTheirs) {
  openPlain();
  add(0, stampOf(quarters(), 100, 700, 30, 40, -kQuarter));
  rotateDocument(0);
  ASSERT_EQ(drawings().size(), 1u);
  EXPECT_NEAR(drawings()[0].degrees, 0, 1e-6);
}

TEST_F(PlacementViewTest, AnyTurnIsDrawnAsOneOfLessThanTwoRounds) {
  openPlain();
  add(0, stampOf(quarters(), 100, 700, 30, 40, 9 * kQuarter));
  add(0, stampOf(quarters(), 100, 700, 30, 40, 1e300));
  const std::vector<PictureDrawing> all = drawings();
  ASSERT_EQ(all.size(), 2u);
  EXPECT_NEAR(all[0].degrees, 90, 1e-6);
  EXPECT_LT(std::abs(all[1].degrees), 720);
}

TEST_F(PlacementViewTest, WrittenOnesShowTheirSelectionAlone) {
  PdfPage page = plainPage();
  page.annotations = {stampAnnotation(u"QMR1;S;0;100;700;30;40;")};
  openPlain(1, page);
  EXPECT_TRUE(drawings().empty());
  selectPlacement(0, 0);
  const std::vector<PictureDrawing> all = drawings();
  ASSERT_EQ(all.size(), 1u);
  EXPECT_FALSE(all[0].picture);
  EXPECT_TRUE(all[0].selected);
  EXPECT_EQ(all[0].frame[0], (PixelPoint{140, 80}));
  EXPECT_EQ(all[0].frame[2], (PixelPoint{170, 120}));
  EXPECT_EQ(all[0].frame[4], all[0].frame[0]);
  EXPECT_EQ(all[0].handles[0], (PixelPoint{140, 80}));
  EXPECT_EQ(all[0].handles[3], (PixelPoint{170, 100}));
}

// Otherwise a picture would jump by up to two pixels when it is written.
TEST_F(PlacementViewTest, PicturesFollowTheBitmapOfThePageWhichBeginsOnAWholePixel) {
  openPlain();
  add(0, stampOf(quarters(), 500, 50, 40, 20));
  setView(0, 0.9991f, 40.9f, 20.9f);
  const std::vector<PictureDrawing> all = drawings();
  ASSERT_EQ(all.size(), 1u);
  // The page is 599 by 799 pixels.
  EXPECT_NEAR(all[0].centre.x, 40 + 520.0 / 600 * 599, 1e-6);
  EXPECT_NEAR(all[0].centre.y, 20 + 740.0 / 800 * 799, 1e-6);
}

// The left edge lies at 139.9 in the pane and is painted at 139.
TEST_F(PlacementViewTest, AStripBesideTheBoundsGetsThePixelsThatLieInIt) {
  openPlain();
  add(0, stampOf(quarters(), 100, 700, 30, 40));
  setView(0, 0.9991f, 40.99f, 20.0f);
  const PixelRect bounds = PlacementScreenBounds(0, placement(0, 0));
  const std::vector<PictureDrawing> all = drawings({0, 0, bounds.left, 1000});
  ASSERT_EQ(all.size(), 1u);
  EXPECT_LT(all[0].centre.x - all[0].width / 2, bounds.left);
}

TEST_F(PlacementViewTest, OthersAreLeftOut) {
  openPlain(2);
  add(0, stampOf(quarters(), 100, 700, 30, 40));
  add(1, stampOf(quarters(), 200, 700, 30, 40));
  ASSERT_EQ(drawings().size(), 1u) << "of another page";
  EXPECT_TRUE(drawings({0, 0, 138, 1000}).empty()) << "beside the area";
  EXPECT_EQ(drawings({0, 0, 141, 1000}).size(), 1u);
  EXPECT_TRUE(placementDrawings(1, kEverything).empty()) << "of a hidden pane";
  const DocumentHandle other = loadDocument(simplePdf(1));
  session.placementDocument = other.get();
  EXPECT_TRUE(drawings().empty()) << "of another document";
  ClearPlacements();
}

TEST_F(PlacementViewTest, TheyAreDrawnInSinglePageOnly) {
  openPlain(2);
  add(0, stampOf(quarters(), 100, 700, 30, 40));
  setViewMode(ViewMode::Book);
  EXPECT_TRUE(drawings().empty());
  setViewMode(ViewMode::SinglePage);
  EXPECT_EQ(drawings().size(), 1u);
}

TEST_F(PlacementViewTest, ThePageThatIsOpenCountsAndNotItsNumber) {
  openPlain(2);
  show(0, 1);
  add(1, stampOf(quarters(), 100, 700, 30, 40));
  setViewMode(ViewMode::Book);
  setViewMode(ViewMode::SinglePage);
  ASSERT_NE(pane(0).currentPage, pane(0).openPage);
  EXPECT_EQ(drawings().size(), 1u);
}

TEST_F(PlacementViewTest, TextIsDrawnFromItsPicture) {
  openPlain();
  add(0, textOf(u"Hi", 100, 700));
  add(0, textOf(u"", 100, 600));
  const std::vector<PictureDrawing> all = drawings();
  ASSERT_EQ(all.size(), 2u);
  EXPECT_TRUE(all[0].picture);
  EXPECT_FALSE(all[1].picture);
}

}  // namespace
}  // namespace quillmere::test
