#include "annot/place_stamp.h"

#include <gmock/gmock.h>

#include <numbers>

#include "annot/placement_box.h"
#include "annot/placement_test.h"
#include "annot/placement_view.h"
#include "view/rotation.h"

namespace quillmere::test {
namespace {

class PlaceStampTest : public PlacementTest {
 protected:
  void SetUp() override {
    openPlain();
    session.stampPanelWidth = 216;
    StampEntry entry;
    entry.width = 800;
    entry.height = 400;
    entry.bitmap = quarters();
    session.stampLibrary = {entry};
  }
};

TEST_F(PlaceStampTest, ThumbnailsFitThePanelAndTheirHeight) {
  const auto sizeOf = [](int width, int height, int panel) {
    StampEntry entry;
    entry.width = width;
    entry.height = height;
    return thumbnailSize(entry, panel);
  };
  EXPECT_EQ(sizeOf(800, 400, 216).width, 160);
  EXPECT_EQ(sizeOf(800, 400, 216).height, 80);
  EXPECT_EQ(sizeOf(2000, 400, 216).width, 200);
  EXPECT_EQ(sizeOf(2000, 400, 216).height, 40);
  EXPECT_EQ(sizeOf(0, 0, 216).width, 80);
  EXPECT_EQ(sizeOf(1000, 100, 10).width, 1);
  EXPECT_EQ(sizeOf(1000, 100, 10).height, 1);
}

TEST_F(PlaceStampTest, AStampLandsInItsSizeOnTheScreen) {
  PlaceStamp(0, 300, 400);
  ASSERT_EQ(session.placements[0].size(), 1u);
  const Placement& stamp = placement(0, 0);
  EXPECT_EQ(stamp.width, 160);
  EXPECT_EQ(stamp.height, 80);
  EXPECT_EQ(placementCentre(stamp).x, 300);
  EXPECT_EQ(placementCentre(stamp).y, 400);
  EXPECT_EQ(stamp.stampIndex, 0);
  EXPECT_TRUE(stamp.selected);
  EXPECT_TRUE(stamp.pending());
  EXPECT_EQ(selectedPlacement(), &stamp);
  EXPECT_FALSE(session.active.dirty);
  EXPECT_TRUE(hasUnsavedChanges());
}

TEST_F(PlaceStampTest, AtTwiceTheZoomItHasHalfTheSizeInPoints) {
  setView(0, 2.0f, 40.0f, 20.0f);
  PlaceStamp(0, 300, 400);
  EXPECT_EQ(placement(0, 0).width, 80);
  EXPECT_EQ(placement(0, 0).height, 40);
}

TEST_F(PlaceStampTest, ItStandsUprightOnATurnedPage) {
  rotatePage(0);
  PlaceStamp(0, 300, 400);
  EXPECT_NEAR(placement(0, 0).rotation, -std::numbers::pi / 2, 1e-9);
}

TEST_F(PlaceStampTest, ANewOneTakesTheSelection) {
  PlaceStamp(0, 300, 400);
  PlaceStamp(0, 310, 400);
  EXPECT_FALSE(placement(0, 0).selected);
  EXPECT_TRUE(placement(0, 1).selected);
}

TEST_F(PlaceStampTest, NothingIsPlacedWhereNothingCanBe) {
  PlaceStamp(1, 300, 400);
  PlaceStamp(-1, 300, 400);
  session.viewerRole = true;
  PlaceStamp(0, 300, 400);
  session.viewerRole = false;
  closePanePage(0);
  PlaceStamp(0, 300, 400);
  EXPECT_TRUE(session.placements.empty());
}

TEST_F(PlaceStampTest, AStampWithoutAPictureIsNotPlaced) {
  session.stampLibrary[0].bitmap = nullptr;
  session.stampLibrary[0].path = u"C:\\gone.png";
  PlaceStamp(0, 300, 400);
  EXPECT_TRUE(session.placements.empty());
  session.stampLibrary[0].thumbnail = quarters();
  PlaceStamp(0, 300, 400);
  EXPECT_EQ(session.placements[0].size(), 1u) << "a small one is better than none";
}

TEST_F(PlaceStampTest, TheDraggedStampIsDrawnUnderThePointer) {
  EXPECT_FALSE(stampGhost(0));
  session.stampDrag.stamp = 0;
  session.stampDrag.stampOverPage = true;
  session.stampDrag.x = 200;
  session.stampDrag.y = 150;
  const auto ghost = stampGhost(0);
  ASSERT_TRUE(ghost);
  EXPECT_EQ(ghost->picture, session.stampLibrary[0].bitmap);
  EXPECT_EQ(ghost->centre.x, 200);
  EXPECT_EQ(ghost->centre.y, 150);
  EXPECT_EQ(ghost->width, 160);
  EXPECT_EQ(ghost->alpha, 0.63);
  EXPECT_FALSE(stampGhost(1));
  closePanePage(0);
  EXPECT_FALSE(stampGhost(0)) << "there is no page to put it on";
}

TEST_F(PlaceStampTest, TheDraggedStampIsDrawnWhoeverOwnsThePlacements) {
  session.stampDrag.stamp = 0;
  session.stampDrag.stampOverPage = true;
  const DocumentHandle other = loadDocument(simplePdf(1));
  session.placementDocument = other.get();
  EXPECT_TRUE(stampGhost(0));
  ClearPlacements();
  EXPECT_TRUE(stampGhost(0));
}

}  // namespace
}  // namespace quillmere::test
