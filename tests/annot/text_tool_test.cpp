#include "annot/text_tool.h"

#include <gmock/gmock.h>

#include <numbers>

#include "annot/placement_box.h"
#include "annot/placement_test.h"
#include "annot/placement_text.h"
#include "annot/placement_view.h"
#include "app/mouse.h"
#include "documents/modes.h"
#include "view/rotation.h"

namespace quillmere::test {
namespace {

constexpr double kQuarter = std::numbers::pi / 2;

class TextToolTest : public PlacementTest {
 protected:
  void SetUp() override {
    openPlain();
    session.textTool.armed = true;
    session.textTool.text = u"Paid";
    session.settings.textSizePt = 20;
    session.settings.textFontIndex = 2;
    session.settings.textColorIndex = 5;
  }
  static void click(const ClientPoint& at) {
    pressLeft(at.x, at.y);
    releaseLeft(at.x, at.y);
  }
  // The start of the text's baseline on the page, by its own box.
  static PagePoint baselineOf(const Placement& text) {
    const TextMetrics metrics = measureTextDrop(text.text, text.fontSize, text.fontIndex);
    const FS_MATRIX matrix = textDropMatrix(text, metrics);
    return {matrix.e, matrix.f};
  }
};

TEST_F(TextToolTest, AClickIsTheStartOfTheBaseline) {
  click(placeOf(100, 300));
  ASSERT_EQ(session.placements[0].size(), 1u);
  const Placement& text = placement(0, 0);
  EXPECT_EQ(text.kind, PlacementKind::TextDrop);
  EXPECT_EQ(text.text, u"Paid");
  EXPECT_EQ(text.fontSize, 20);
  EXPECT_EQ(text.fontIndex, 2);
  EXPECT_EQ(text.colorIndex, 5);
  EXPECT_EQ(text.rotation, 0);
  EXPECT_TRUE(text.pending());
  EXPECT_TRUE(text.image);
  EXPECT_NEAR(baselineOf(text).x, 100, 1e-3);
  EXPECT_NEAR(baselineOf(text).y, 300, 1e-3);
  EXPECT_FALSE(session.active.dirty);
  EXPECT_TRUE(hasUnsavedChanges());
}

TEST_F(TextToolTest, EachClickPlacesAnother) {
  click(placeOf(100, 300));
  EXPECT_FALSE(placement(0, 0).selected);
  click(placeOf(110, 305));
  const ClientPoint at = placeOf(300, 300);
  doubleClickLeft(at.x, at.y);
  EXPECT_EQ(session.placements[0].size(), 3u);
  EXPECT_EQ(session.gesture.kind, Gesture::None);
}

TEST_F(TextToolTest, TheTextStandsUprightOnATurnedPage) {
  rotatePage(0);
  setView(0, 1.0f, 40.0f, 20.0f);
  click(placeOf(100, 300));
  ASSERT_EQ(session.placements[0].size(), 1u);
  EXPECT_NEAR(placement(0, 0).rotation, -kQuarter, 1e-9);
  EXPECT_NEAR(baselineOf(placement(0, 0)).x, 100, 1e-3);
  EXPECT_NEAR(baselineOf(placement(0, 0)).y, 300, 1e-3);
}

TEST_F(TextToolTest, TheRightButtonTurnsItClockwise) {
  const ClientPoint at = placeOf(100, 300);
  EXPECT_TRUE(releaseRight(at.x, at.y).empty());
  EXPECT_EQ(session.textTool.extraTurns, 1u);
  click(at);
  EXPECT_NEAR(std::remainder(placement(0, 0).rotation - kQuarter, 4 * kQuarter), 0, 1e-9);
  for (int n = 0; n < 3; ++n) releaseRight(at.x, at.y);
  EXPECT_EQ(session.textTool.extraTurns, 0u);
}

TEST_F(TextToolTest, WithShiftTheMousePans) {
  platform::standIn().shiftDown = true;
  const ClientPoint at = placeOf(100, 300);
  pressLeft(at.x, at.y);
  EXPECT_EQ(session.gesture.kind, Gesture::Pan);
  EXPECT_TRUE(session.placements.empty());
}

TEST_F(TextToolTest, ItWorksInSinglePageWithTheDialogOpenOnly) {
  const ClientPoint at = placeOf(100, 300);
  EXPECT_EQ(cursorAt(at.x, at.y), CursorKind::Cross);
  session.textTool.armed = false;
  click(at);
  EXPECT_TRUE(session.placements.empty());
  session.textTool.armed = true;
  setViewMode(ViewMode::IndependentPages);
  click(at);
  EXPECT_TRUE(session.placements.empty());
}

TEST_F(TextToolTest, BlankTextPlacesNothing) {
  session.textTool.text = u"  ";
  click(placeOf(100, 300));
  EXPECT_TRUE(session.placements.empty());
}

TEST_F(TextToolTest, AViewerPlacesNothing) {
  session.viewerRole = true;
  click(placeOf(100, 300));
  EXPECT_TRUE(session.placements.empty());
}

TEST_F(TextToolTest, ATextAtTheEdgeIsPulledIn) {
  click(placeOf(598, 797));
  const PagePoint centre = placementCentre(placement(0, 0));
  EXPECT_LE(centre.x, 600);
  EXPECT_LE(centre.y, 800);
  EXPECT_NEAR(centre.x, 600, 1e-6);
}

TEST_F(TextToolTest, NumbersBeyondTheirLimitsAreCorrected) {
  PlaceTextDrop(0, 100, 100, u"Hi", 200, 6, 8, 5);
  EXPECT_EQ(placement(0, 0).fontSize, 96);
  EXPECT_EQ(placement(0, 0).fontIndex, 0);
  EXPECT_EQ(placement(0, 0).colorIndex, 0);
  EXPECT_NEAR(placement(0, 0).rotation, -kQuarter, 1e-9);
}

TEST_F(TextToolTest, ThePreviewFollowsThePointer) {
  const ClientPoint at = placeOf(100, 300);
  EXPECT_FALSE(textGhost(0)) << "nobody pointed yet";
  movePointer(at.x, at.y);
  const auto ghost = textGhost(0);
  ASSERT_TRUE(ghost);
  EXPECT_EQ(ghost->text, u"Paid");
  EXPECT_EQ(ghost->pixelHeight, 20);
  EXPECT_EQ(ghost->alpha, 160);
  EXPECT_EQ(ghost->color, textColor(5));
  EXPECT_EQ(ghost->fontIndex, 2);
  EXPECT_EQ(ghost->place, (PixelPoint{at.x, at.y}));
  setView(0, 1.5f, 40.0f, 20.0f);
  EXPECT_EQ(textGhost(0)->pixelHeight, 30);
  session.settings.textSizePt = 11;
  EXPECT_EQ(textGhost(0)->pixelHeight, 17) << "halves are rounded up";
  releaseRight(at.x, at.y);
  EXPECT_EQ(textGhost(0)->turns, 1);
  platform::standIn().shiftDown = true;
  EXPECT_FALSE(textGhost(0));
  platform::standIn().shiftDown = false;
  EXPECT_FALSE(textGhost(1));
  leaveTextTool();
  EXPECT_FALSE(textGhost(0));
}

TEST_F(TextToolTest, ThePreviewIsDrawnWhoeverOwnsThePlacements) {
  const ClientPoint at = placeOf(100, 300);
  movePointer(at.x, at.y);
  const DocumentHandle other = loadDocument(simplePdf(1));
  session.placementDocument = other.get();
  EXPECT_TRUE(textGhost(0));
  ClearPlacements();
  EXPECT_TRUE(textGhost(0));
}

TEST_F(TextToolTest, WithoutTextThePreviewIsItsCrossAlone) {
  const ClientPoint at = placeOf(100, 300);
  session.textTool.text = u"  ";
  movePointer(at.x, at.y);
  ASSERT_TRUE(textGhost(0));
  EXPECT_EQ(textGhost(0)->text, u"");
  EXPECT_EQ(textGhost(0)->place, (PixelPoint{at.x, at.y}));
}

TEST_F(TextToolTest, ShiftHidesThePreviewAtOnce) {
  const ClientPoint at = placeOf(100, 300);
  const int before = platform::standIn().window.invalidations;
  shiftChanged();
  EXPECT_EQ(platform::standIn().window.invalidations, before) << "nothing is shown yet";
  movePointer(at.x, at.y);
  const int moved = platform::standIn().window.invalidations;
  const int cursors = platform::standIn().window.cursorRefreshes;
  shiftChanged();
  EXPECT_EQ(platform::standIn().window.invalidations, moved + 1);
  EXPECT_EQ(platform::standIn().window.cursorRefreshes, cursors + 1);
}

// A ghost at 200, 100, with letters that rise 16 pixels and hang down 4.
class TextGhostAreaTest : public testing::Test {
 protected:
  static PixelRect areaOf(int turns, int width = 50) {
    TextGhost ghost;
    ghost.place = {200, 100};
    ghost.turns = turns;
    return textGhostArea(ghost, {width, 16, 4}, pane_);
  }
  static constexpr PixelRect pane_{0, 0, 400, 300};
};

TEST_F(TextGhostAreaTest, HoldsTheTextAndRoomForOverhangingLetters) {
  EXPECT_EQ(areaOf(0), (PixelRect{188, 72, 262, 116}));
}

TEST_F(TextGhostAreaTest, TurnsClockwiseAboutTheStartOfTheBaseline) {
  EXPECT_EQ(areaOf(1), (PixelRect{184, 88, 228, 162}));
  EXPECT_EQ(areaOf(2), (PixelRect{138, 84, 212, 128}));
  EXPECT_EQ(areaOf(3), (PixelRect{172, 38, 216, 112}));
}

TEST_F(TextGhostAreaTest, EndsAtThePanesEdges) {
  EXPECT_EQ(areaOf(0, 60000), (PixelRect{188, 72, 400, 116}));
  EXPECT_EQ(areaOf(1, 60000), (PixelRect{184, 88, 228, 300}));
  EXPECT_EQ(areaOf(2, 60000), (PixelRect{0, 84, 212, 128}));
  EXPECT_EQ(areaOf(3, 60000), (PixelRect{172, 0, 216, 112}));
}

TEST_F(TextGhostAreaTest, IsEmptyWhereNothingIsSeen) {
  TextGhost ghost;
  ghost.place = {500, 100};
  EXPECT_TRUE(textGhostArea(ghost, {50, 16, 4}, pane_).empty());
}

}  // namespace
}  // namespace quillmere::test
