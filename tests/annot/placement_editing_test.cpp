#include "annot/placement_editing_test.h"

#include <gmock/gmock.h>

#include <cmath>

#include "annot/placement_editing.h"
#include "app/keys.h"
#include "documents/modes.h"
#include "view/navigation.h"
#include "view/rotation.h"

namespace quillmere::test {
namespace {

TEST_F(PlacementEditingTest, AClickSelectsAndChangesNothing) {
  select();
  EXPECT_TRUE(stamp().selected);
  EXPECT_EQ(selectedPlacement(), &stamp());
  EXPECT_FALSE(stamp().pending());
  EXPECT_FALSE(session.active.dirty);
  EXPECT_FALSE(hasUnsavedChanges());
  select();
  EXPECT_TRUE(stamp().selected);
  EXPECT_FALSE(stamp().pending());
  expectBox(stamp(), 200, 400, 100, 60);
  EXPECT_FALSE(platform::standIn().window.mouseCaptured);
}

TEST_F(PlacementEditingTest, ADragMovesAndDetaches) {
  drag(centreOf(stamp()), 30, -50);
  expectBox(stamp(), 230, 450, 100, 60);
  EXPECT_TRUE(stamp().pending());
  EXPECT_TRUE(stamp().selected);
  EXPECT_TRUE(session.active.dirty);
  EXPECT_EQ(annotationsOf(document, 0).size(), 0u);
  EXPECT_FALSE(session.placementDrag.moving);
}

TEST_F(PlacementEditingTest, MovingAPendingOneSetsNoDirtyFlag) {
  drag(centreOf(stamp()), 30, -50);
  session.active.dirty = false;
  drag(centreOf(stamp()), 10, 10);
  EXPECT_FALSE(session.active.dirty);
  EXPECT_TRUE(hasUnsavedChanges());
}

TEST_F(PlacementEditingTest, AMoveRendersThePageOnceAtMost) {
  const ClientPoint from = centreOf(stamp());
  press(from);
  movePointer(from.x + 1, from.y);
  const std::uint32_t* pixels = platform::pixelsOf(pane(0).pageBitmap.get());
  for (int n = 2; n < 20; ++n) movePointer(from.x + n, from.y);
  EXPECT_EQ(platform::pixelsOf(pane(0).pageBitmap.get()), pixels);
}

TEST_F(PlacementEditingTest, WhatAPressOrAMoveChangesIsPaintedAtOnce) {
  const ClientPoint at = centreOf(stamp());
  const auto painted = [](const auto& action) {
    const int before = window().invalidations;
    action();
    return window().invalidations > before;
  };
  EXPECT_TRUE(painted([&] { press(at); }));
  EXPECT_TRUE(painted([&] { movePointer(at.x + 5, at.y); }));
  EXPECT_TRUE(painted([&] { movePointer(at.x + 6, at.y); })) << "it is pending by now";
  release({at.x + 6, at.y});
  const ClientPoint handle = handleOf(stamp(), 4);
  press(handle);
  EXPECT_TRUE(painted([&] { movePointer(handle.x + 5, handle.y); }));
  release(handle);
  EXPECT_TRUE(painted([&] { deleteSelectedPlacement(); }));
  add(0, stampOf(quarters(), 200, 400, 100, 60));
  select();
  EXPECT_TRUE(painted([&] { pressPlacement(0, 0); })) << "the frame and the handles go";
}

TEST_F(PlacementEditingTest, AResizeKeepsTheCentreOnThePage) {
  select();
  drag(handleOf(stamp(), 3), -700, 0);
  expectBox(stamp(), -2.5, 400, 5, 60);
}

TEST_F(PlacementEditingTest, ADragThatLeavesThePageKeepsTheCentreOnIt) {
  drag(centreOf(stamp()), -900, 900);
  expectBox(stamp(), -50, -30, 100, 60);
}

TEST_F(PlacementEditingTest, AReturnToThePressMovesBack) {
  const ClientPoint from = centreOf(stamp());
  press(from);
  movePointer(from.x + 40, from.y);
  release(from);
  expectBox(stamp(), 200, 400, 100, 60);
}

TEST_F(PlacementEditingTest, MovesFollowTheZoomAndTheTurn) {
  setView(0, 2.0f, 40.0f, 20.0f);
  drag(centreOf(stamp()), 30, -50);
  expectBox(stamp(), 215, 425, 100, 60);
  rotateDocument(0);
  setView(0, 1.0f, 40.0f, 20.0f);
  // On a page turned clockwise, right on the screen is up on the page.
  drag(centreOf(stamp()), 10, 0);
  expectBox(stamp(), 215, 435, 100, 60);
}

// A page that shows the crop box [100 150 512 692], turned by its own /Rotate.
struct CroppedPage {
  int rotate;  // degrees, clockwise
  ClientPoint at(double x, double y) const {
    const PixelRect rect = paneRect(0);
    const PaneSlot& slot = session.panes[0];
    const auto client = [&](double across, double down) {
      return ClientPoint{rect.left + static_cast<int>(std::lround(slot.panX + across)),
                         rect.top + static_cast<int>(std::lround(slot.panY + down))};
    };
    if (rotate == 90) return client(y - 150, x - 100);
    if (rotate == 180) return client(512 - x, y - 150);
    if (rotate == 270) return client(692 - y, 512 - x);
    return client(x - 100, 692 - y);
  }
};

TEST_F(PlacementEditingTest, OnCroppedAndTurnedPagesItIsPickedUpAndDroppedWhereThePointerIs) {
  for (const int rotate : {0, 90, 180, 270}) {
    SCOPED_TRACE(rotate);
    PdfPage page;
    page.rotate = rotate;
    page.entries = "/CropBox [100 150 512 692]";
    document = openPlain(1, page);
    add(0, stampOf(quarters(), 200, 400, 100, 60));
    writeAll(document);
    const CroppedPage seen{rotate};
    const ClientPoint from = seen.at(250, 430);
    const ClientPoint to = seen.at(330, 280);
    press(from);
    ASSERT_TRUE(stamp().selected);
    movePointer(to.x, to.y);
    release(to);
    expectBox(stamp(), 280, 250, 100, 60);
    const PixelRect rect = paneRect(0);
    const PixelRect bounds = PlacementScreenBounds(0, stamp());
    EXPECT_NEAR((bounds.left + bounds.right) / 2.0, to.x - rect.left, 1);
    EXPECT_NEAR((bounds.top + bounds.bottom) / 2.0, to.y - rect.top, 1);
    // Its middle goes no farther than the corner of what is seen.
    const ClientPoint beyond = seen.at(0, 0);
    press(to);
    movePointer(beyond.x, beyond.y);
    release(beyond);
    expectBox(stamp(), 50, 120, 100, 60);
  }
}

TEST_F(PlacementEditingTest, TheLastInTheListIsOnTop) {
  add(0, stampOf(quarters(), 220, 410, 100, 60));
  press(placeOf(250, 430));
  EXPECT_FALSE(stamp(0).selected);
  EXPECT_TRUE(stamp(1).selected);
}

TEST_F(PlacementEditingTest, ALaterBodyBeatsAnEarliersHandle) {
  select();
  const ClientPoint corner = handleOf(stamp(), 4);
  add(0, stampOf(quarters(), 280, 390, 100, 60));
  press(corner);
  EXPECT_TRUE(stamp(1).selected);
  EXPECT_FALSE(stamp(0).selected);
  EXPECT_TRUE(session.placementDrag.moving);
}

TEST_F(PlacementEditingTest, ATurnedBoxIsPickedUpByItsBounds) {
  stamp().rotation = kQuarter / 2;
  const PixelRect bounds = PlacementScreenBounds(0, stamp());
  const PixelRect rect = paneRect(0);
  press({rect.left + bounds.left + 1, rect.top + bounds.top + 1});
  EXPECT_TRUE(stamp().selected);
  release({0, 0});
}

TEST_F(PlacementEditingTest, TheBoundsRightAndBottomAreOutside) {
  const PixelRect bounds = PlacementScreenBounds(0, stamp());
  const PixelRect rect = paneRect(0);
  press({rect.left + bounds.right, rect.top + bounds.top + 5});
  EXPECT_FALSE(stamp().selected);
  press({rect.left + bounds.left + 5, rect.top + bounds.bottom});
  EXPECT_FALSE(stamp().selected);
  press({rect.left + bounds.right - 1, rect.top + bounds.bottom - 1});
  EXPECT_TRUE(stamp().selected);
}

TEST_F(PlacementEditingTest, APressElsewhereTakesTheSelectionAwayAndGoesOn) {
  select();
  press(placeOf(50, 50));
  EXPECT_FALSE(stamp().selected);
  EXPECT_EQ(session.selectedPlacementPage, -1);
  EXPECT_EQ(session.gesture.kind, Gesture::Select);
}

TEST_F(PlacementEditingTest, ASecondQuickPressIsAPressToo) {
  const ClientPoint at = centreOf(stamp());
  press(at);
  release(at);
  doubleClickLeft(at.x, at.y);
  EXPECT_EQ(session.gesture.kind, Gesture::Placement);
  movePointer(at.x + 10, at.y);
  EXPECT_TRUE(stamp().pending());
}

// Resizing.

struct ResizeCase {
  int handle;
  int dx;
  int dy;
  double x;
  double y;
  double width;
  double height;
};

class PlacementResizeTest : public PlacementEditingTest,
                            public testing::WithParamInterface<ResizeCase> {};

TEST_P(PlacementResizeTest, TheOppositeSideStays) {
  const ResizeCase& c = GetParam();
  select();
  drag(handleOf(stamp(), c.handle), c.dx, c.dy);
  expectBox(stamp(), c.x, c.y, c.width, c.height);
  EXPECT_TRUE(stamp().pending());
}

INSTANTIATE_TEST_SUITE_P(Handles, PlacementResizeTest,
                         testing::Values(ResizeCase{1, 9, -20, 200, 400, 100, 80},
                                         ResizeCase{2, 20, -20, 200, 400, 120, 80},
                                         ResizeCase{3, 20, 9, 200, 400, 120, 60},
                                         ResizeCase{4, 20, 20, 200, 380, 120, 80},
                                         ResizeCase{5, 9, 20, 200, 380, 100, 80},
                                         ResizeCase{6, -20, 20, 180, 380, 120, 80},
                                         ResizeCase{7, -20, 9, 180, 400, 120, 60}));

TEST_F(PlacementEditingTest, AResizeFollowsTheBoxsOwnAxes) {
  stamp().rotation = kQuarter;
  select();
  // The right middle of the unturned box points down now.
  drag(handleOf(stamp(), 3), 0, 20);
  const PagePoint centre = placementCentre(stamp());
  EXPECT_NEAR(stamp().width, 120, 1e-3);
  EXPECT_NEAR(stamp().height, 60, 1e-3);
  EXPECT_NEAR(centre.x, 250, 1e-3);
  EXPECT_NEAR(centre.y, 420, 1e-3);
}

TEST_F(PlacementEditingTest, AResizeFollowsTheZoomAndTheViewsTurn) {
  rotateDocument(0);
  setView(0, 2.0f, -400.0f, 20.0f);
  select();
  drag(handleOf(stamp(), 3), 0, 40);
  expectBox(stamp(), 200, 400, 120, 60);
}

TEST_F(PlacementEditingTest, PastTheSmallestSizeTheCentreGoesOn) {
  select();
  drag(handleOf(stamp(), 3), -200, 0);
  EXPECT_NEAR(stamp().width, 5, 1e-3);
  EXPECT_NEAR(stamp().height, 60, 1e-3);
  EXPECT_NEAR(placementCentre(stamp()).x, 250 - 100, 1e-3);
}

TEST_F(PlacementEditingTest, ResizingATextStretchesIt) {
  add(0, textOf(u"Hi", 100, 100, 50, 20));
  selectPlacement(0, 1);
  drag(handleOf(stamp(1), 4), 30, 0);
  EXPECT_NEAR(stamp(1).width, 80, 1e-3);
  EXPECT_EQ(stamp(1).fontSize, 12);
}

TEST_F(PlacementEditingTest, TheTopLeftHandleTurns) {
  select();
  const ClientPoint centre = centreOf(stamp());
  const ClientPoint corner = handleOf(stamp(), 0);
  press(corner);
  EXPECT_TRUE(session.placementDrag.rotating);
  // A quarter turn clockwise on the screen takes the corner to the right of the centre, above it.
  const ClientPoint turned{centre.x - (corner.y - centre.y), centre.y + (corner.x - centre.x)};
  movePointer(turned.x, turned.y);
  EXPECT_NEAR(stamp().rotation, kQuarter, 0.02);
  release(turned);
  expectBox(stamp(), 200, 400, 100, 60);
  EXPECT_TRUE(stamp().pending());
}

TEST_F(PlacementEditingTest, TurnsAccumulate) {
  stamp().rotation = 7;
  select();
  const ClientPoint centre = centreOf(stamp());
  const ClientPoint corner = handleOf(stamp(), 0);
  press(corner);
  movePointer(centre.x - (corner.y - centre.y), centre.y + (corner.x - centre.x));
  EXPECT_NEAR(stamp().rotation, 7 + kQuarter, 0.03);
  release(centre);
}

TEST_F(PlacementEditingTest, AFailedDetachLeavesItWrittenAndMovesOn) {
  PdfPage page = plainPage();
  page.annotations = {stampAnnotation(u"QMR1;S;0;200;400;100;60;")};
  document = openPlain(1, page);
  drag(centreOf(stamp()), 30, 0);
  EXPECT_FALSE(stamp().pending());
  expectBox(stamp(), 230, 400, 100, 60);
  EXPECT_EQ(annotationsOf(document, 0).size(), 1u);
}

TEST_F(PlacementEditingTest, ADragEndsWhenItsPlacementGoes) {
  const ClientPoint at = centreOf(stamp());
  press(at);
  LoadPlacements(document);
  movePointer(at.x + 10, at.y);
  EXPECT_EQ(session.gesture.kind, Gesture::None);
  expectBox(stamp(), 200, 400, 100, 60);
}

TEST_F(PlacementEditingTest, ADragEndsWhenThePageTurns) {
  const ClientPoint at = centreOf(stamp());
  press(at);
  goToPage(0, 1, false);
  movePointer(at.x + 10, at.y);
  EXPECT_EQ(session.gesture.kind, Gesture::None);
  EXPECT_FALSE(stamp().pending());
}

TEST_F(PlacementEditingTest, AnotherWindowTakingTheMouseEndsTheDrag) {
  const ClientPoint at = centreOf(stamp());
  press(at);
  movePointer(at.x + 10, at.y);
  loseCapture();
  EXPECT_EQ(session.gesture.kind, Gesture::None);
  expectBox(stamp(), 210, 400, 100, 60);
}

// Where editing is not possible.

TEST_F(PlacementEditingTest, WithThePanelHiddenNothingIsSelected) {
  session.stampPanelVisible = false;
  select();
  EXPECT_FALSE(stamp().selected);
}

TEST_F(PlacementEditingTest, InOtherModesNothingIsSelected) {
  for (const ViewMode mode : {ViewMode::Book, ViewMode::IndependentPages, ViewMode::TwoDocuments}) {
    setViewMode(mode);
    ASSERT_EQ(documentOf(0), session.placementDocument);
    session.stampPanelVisible = true;
    const ClientPoint at = centreOf(stamp());
    select();
    EXPECT_FALSE(stamp().selected);
    selectPlacement(0, 0);
    EXPECT_EQ(placementCursorAt(at.x, at.y), PlacementCursor::None);
    for (const int each : {0, 1}) {
      EXPECT_TRUE(placementDrawings(each, {0, 0, 1000, 1000}).empty()) << "no handles";
    }
    deleteSelectedPlacement();
    ASSERT_EQ(session.placements[0].size(), 1u);
    ClearPlacementSelection();
  }
}

TEST_F(PlacementEditingTest, PlacementsOfAnotherDocumentAreNotTouched) {
  const DocumentHandle other = loadDocument(simplePdf(1));
  session.placementDocument = other.get();
  select();
  EXPECT_FALSE(stamp().selected);
  ClearPlacements();
}

// Cursors.

TEST_F(PlacementEditingTest, OnlyTheSelectedOneHasCursors) {
  const ClientPoint at = centreOf(stamp());
  EXPECT_EQ(placementCursorAt(at.x, at.y), PlacementCursor::None);
  select();
  EXPECT_EQ(placementCursorAt(at.x, at.y), PlacementCursor::Move);
  EXPECT_EQ(cursorAt(at.x, at.y), CursorKind::Move);
}

TEST_F(PlacementEditingTest, CursorsFollowTheHandles) {
  using enum PlacementCursor;
  select();
  const auto cursors = [&] {
    std::vector<PlacementCursor> all;
    for (int handle = 0; handle < kPlacementHandles; ++handle) {
      const ClientPoint at = handleOf(stamp(), handle);
      all.push_back(placementCursorAt(at.x, at.y));
    }
    return all;
  };
  using testing::ElementsAre;
  EXPECT_THAT(cursors(),
              ElementsAre(Rotate, ResizeVertical, ResizeRising, ResizeHorizontal, ResizeFalling,
                          ResizeVertical, ResizeRising, ResizeHorizontal));
  stamp().rotation = kQuarter;
  EXPECT_THAT(cursors(),
              ElementsAre(Rotate, ResizeHorizontal, ResizeFalling, ResizeVertical, ResizeRising,
                          ResizeHorizontal, ResizeFalling, ResizeVertical));
  stamp().rotation = -kQuarter / 2;
  EXPECT_EQ(cursors()[3], ResizeRising);
}

// Deleting.

TEST_F(PlacementEditingTest, DeleteRemovesAWrittenOneFromTheDocument) {
  add(0, stampOf(quarters(), 20, 40, 10, 10));
  add(0, textOf(u"Hi", 100, 100));
  writeAll(document);
  session.active.dirty = false;
  selectPlacement(0, 1);
  EXPECT_TRUE(handleKey(kKeyDelete));
  ASSERT_EQ(session.placements[0].size(), 2u);
  EXPECT_EQ(stamp(0).annotIndex, 0);
  EXPECT_EQ(stamp(1).annotIndex, 1);
  EXPECT_EQ(stamp(1).kind, PlacementKind::TextDrop);
  EXPECT_EQ(annotationsOf(document, 0).size(), 2u);
  EXPECT_TRUE(session.active.dirty);
  EXPECT_EQ(selectedPlacement(), nullptr);
  EXPECT_EQ(session.selectedPlacementPage, -1);
}

TEST_F(PlacementEditingTest, DeleteTakesItOffThePicture) {
  ASSERT_EQ(pictureAt(placeOf(210, 450)), 0xFF0000u);
  selectPlacement(0, 0);
  deleteSelectedPlacement();
  EXPECT_EQ(pictureAt(placeOf(210, 450)), 0xFFFFFFu);
}

TEST_F(PlacementEditingTest, DeletingAPendingOneSetsNoDirtyFlag) {
  add(0, stampOf(quarters(), 20, 40, 10, 10));
  selectPlacement(0, 1);
  deleteSelectedPlacement();
  EXPECT_EQ(session.placements[0].size(), 1u);
  EXPECT_FALSE(session.active.dirty);
  EXPECT_FALSE(hasUnsavedChanges());
  EXPECT_EQ(session.selectedPlacementPage, -1);
}

TEST_F(PlacementEditingTest, DeleteNeedsASelectionOnThePageThatIsShown) {
  deleteSelectedPlacement();
  EXPECT_EQ(session.placements[0].size(), 1u);
  selectPlacement(0, 0);
  show(0, 1);
  deleteSelectedPlacement();
  EXPECT_EQ(session.placements[0].size(), 1u);
}

TEST_F(PlacementEditingTest, AViewerDeletesNothing) {
  selectPlacement(0, 0);
  session.viewerRole = true;
  deleteSelectedPlacement();
  EXPECT_EQ(session.placements[0].size(), 1u);
}

TEST_F(PlacementEditingTest, ADeletionThatFailsChangesNothing) {
  stamp().annotIndex = 9;
  selectPlacement(0, 0);
  deleteSelectedPlacement();
  EXPECT_EQ(session.placements[0].size(), 1u);
  EXPECT_FALSE(session.active.dirty);
}

}  // namespace
}  // namespace quillmere::test
