#include <cmath>

#include "annot/place_stamp.h"
#include "annot/placement_editing.h"
#include "annot/placement_editing_test.h"
#include "annot/placement_text.h"
#include "annot/text_tool.h"
#include "view/rotation.h"

// Editing wherever the pane lies, whatever its zoom, and however the page is turned.
namespace quillmere::test {
namespace {

using PlacementPaneTest = PlacementEditingTest;

TEST_F(PlacementPaneTest, BesidePanelsAndBelowTheFindBarThePointerTakesWhatItIsOver) {
  session.navigationPanelVisible = true;
  session.findBarVisible = true;
  ASSERT_GT(paneRect(0).left, 0);
  ASSERT_GT(paneRect(0).top, 0);
  select();
  ASSERT_TRUE(stamp().selected);
  drag(centreOf(stamp()), 30, -50);
  expectBox(stamp(), 230, 450, 100, 60);
  drag(handleOf(stamp(), 4), 20, 20);
  expectBox(stamp(), 230, 430, 120, 80);
  const ClientPoint centre = centreOf(stamp());
  EXPECT_EQ(placementCursorAt(centre.x, centre.y), PlacementCursor::Move);
  const ClientPoint corner = handleOf(stamp(), 0);
  press(corner);
  const ClientPoint turned{centre.x - (corner.y - centre.y), centre.y + (corner.x - centre.x)};
  release(turned);
  EXPECT_NEAR(stamp().rotation, kQuarter, 0.02);
}

TEST_F(PlacementPaneTest, FramesAndPreviewsCountFromThePanesCorner) {
  session.navigationPanelVisible = true;
  session.findBarVisible = true;
  const PixelRect rect = paneRect(0);
  select();
  const std::vector<PictureDrawing> drawings =
      placementDrawings(0, {0, 0, rect.width(), rect.height()});
  ASSERT_EQ(drawings.size(), 1u);
  const PixelPoint corner = PlacementHandlePoint(0, stamp(), 0);
  EXPECT_EQ(drawings[0].handles[0], (PixelPoint{corner.x - rect.left, corner.y - rect.top}));
  EXPECT_EQ(drawings[0].frame[0], drawings[0].handles[0]);

  const ClientPoint at = placeOf(300, 200);
  session.stampLibrary = {StampEntry{}};
  session.stampLibrary[0].bitmap = quarters();
  session.stampDrag.stamp = 0;
  session.stampDrag.stampOverPage = true;
  session.stampDrag.x = at.x;
  session.stampDrag.y = at.y;
  const auto stampPreview = stampGhost(0);
  ASSERT_TRUE(stampPreview);
  EXPECT_EQ(stampPreview->centre.x, at.x - rect.left);
  EXPECT_EQ(stampPreview->centre.y, at.y - rect.top);

  session.textTool.armed = true;
  session.textTool.text = u"Paid";
  movePointer(at.x, at.y);
  const auto textPreview = textGhost(0);
  ASSERT_TRUE(textPreview);
  EXPECT_EQ(textPreview->place, (PixelPoint{at.x - rect.left, at.y - rect.top}));
  press(at);
  const Placement& text = stamp(1);
  const FS_MATRIX set =
      textDropMatrix(text, measureTextDrop(text.text, text.fontSize, text.fontIndex));
  EXPECT_NEAR(set.e, 300, 1e-3);
  EXPECT_NEAR(set.f, 200, 1e-3);
}

TEST_F(PlacementPaneTest, WhatLiesOutsideThePaneCannotBePointedAt) {
  session.findBarVisible = true;
  setView(0, 1.0f, 40.0f, -350.0f);
  selectPlacement(0, 0);
  const ClientPoint inside = centreOf(stamp());
  ASSERT_EQ(placementCursorAt(inside.x, inside.y), PlacementCursor::Move);
  setView(0, 1.0f, 40.0f, -385.0f);
  const ClientPoint under = centreOf(stamp());
  ASSERT_LT(under.y, paneRect(0).top);
  ASSERT_GE(under.y, 0);
  EXPECT_EQ(placementCursorAt(under.x, under.y), PlacementCursor::None);
  press(under);
  EXPECT_EQ(session.gesture.kind, Gesture::None);
}

TEST_F(PlacementPaneTest, TheSmallestBoxHasFivePointsAtEveryZoom) {
  struct View {
    float zoom;
    float panX;
    float panY;
  };
  for (const View& view : {View{0.2f, 40, 20}, View{5.0f, -1000, -1700}}) {
    SCOPED_TRACE(view.zoom);
    SetUp();
    setView(0, view.zoom, view.panX, view.panY);
    select();
    // Both sides end below the least size, and the centre goes half as far as the pointer.
    const int across = -static_cast<int>(std::lround(110 * view.zoom));
    const int up = -static_cast<int>(std::lround(80 * view.zoom));
    drag(handleOf(stamp(), 4), across, up);
    EXPECT_NEAR(stamp().width, 5, 1e-3);
    EXPECT_NEAR(stamp().height, 5, 1e-3);
    EXPECT_NEAR(placementCentre(stamp()).x, 250 - 55, 1e-3);
    EXPECT_NEAR(placementCentre(stamp()).y, 430 + 40, 1e-3);
  }
}

struct PageTurns {
  int own;      // quarter turns of the page itself
  int pending;  // further ones that are not saved yet
};

class PlacementTurnedPageTest : public PlacementEditingTest,
                                public testing::WithParamInterface<PageTurns> {
 protected:
  void SetUp() override {
    PdfPage page = plainPage();
    page.rotate = 90 * GetParam().own;
    document = openPlain(1, page);
    add(0, stampOf(quarters(), 200, 400, 100, 60));
    writeAll(document);
    for (int turn = 0; turn < GetParam().pending; ++turn) rotatePage(0);
    setView(0, 1.0f, 40.0f, 20.0f);
  }
  static int turns() { return (GetParam().own + GetParam().pending) % 4; }
  // Drags a handle away from the box's centre.
  void pull(int handle, int pixels) {
    const ClientPoint centre = centreOf(stamp());
    const ClientPoint from = handleOf(stamp(), handle);
    const auto towards = [pixels](int offset) {
      return offset == 0 ? 0 : offset > 0 ? pixels : -pixels;
    };
    drag(from, towards(from.x - centre.x), towards(from.y - centre.y));
  }
};

TEST_P(PlacementTurnedPageTest, AResizeFollowsTheBoxsSides) {
  select();
  ASSERT_TRUE(stamp().selected);
  pull(3, 20);
  expectBox(stamp(), 200, 400, 120, 60);
  pull(5, 20);
  expectBox(stamp(), 200, 380, 120, 80);
  pull(2, 10);
  expectBox(stamp(), 200, 380, 130, 90);
}

TEST_P(PlacementTurnedPageTest, CursorsFollowTheHandlesOnTheScreen) {
  using enum PlacementCursor;
  select();
  const auto cursorOver = [&](int handle) {
    const ClientPoint at = handleOf(stamp(), handle);
    return placementCursorAt(at.x, at.y);
  };
  const bool sideways = turns() % 2 == 1;
  EXPECT_EQ(cursorOver(3), sideways ? ResizeVertical : ResizeHorizontal);
  EXPECT_EQ(cursorOver(1), sideways ? ResizeHorizontal : ResizeVertical);
  EXPECT_EQ(cursorOver(4), sideways ? ResizeRising : ResizeFalling);
}

TEST_P(PlacementTurnedPageTest, ATurnOnTheScreenIsTheSameTurnOfTheBox) {
  select();
  const ClientPoint centre = centreOf(stamp());
  const ClientPoint corner = handleOf(stamp(), 0);
  press(corner);
  release({centre.x - (corner.y - centre.y), centre.y + (corner.x - centre.x)});
  EXPECT_NEAR(std::remainder(stamp().rotation - kQuarter, 4 * kQuarter), 0, 0.02);
}

TEST_P(PlacementTurnedPageTest, WhatIsPlacedStandsUpright) {
  StampEntry entry;
  entry.width = 80;
  entry.height = 40;
  entry.bitmap = quarters();
  session.stampLibrary = {entry};
  PlaceStamp(0, 300, 300);
  session.textTool.armed = true;
  session.textTool.text = u"Paid";
  const ClientPoint at = placeOf(300, 200);
  press(at);
  ASSERT_EQ(session.placements[0].size(), 3u);
  for (const std::size_t index : {1u, 2u}) {
    EXPECT_NEAR(stamp(index).rotation, -kQuarter * turns(), 1e-9);
  }
  for (const PictureDrawing& drawing : placementDrawings(0, paneRect(0))) {
    EXPECT_NEAR(std::remainder(drawing.degrees, 360), 0, 1e-6);
  }
}

INSTANTIATE_TEST_SUITE_P(Turns, PlacementTurnedPageTest,
                         testing::Values(PageTurns{1, 0}, PageTurns{2, 0}, PageTurns{3, 0},
                                         PageTurns{0, 3}, PageTurns{1, 1}, PageTurns{3, 2}));

}  // namespace
}  // namespace quillmere::test
