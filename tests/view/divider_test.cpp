#include "documents/modes.h"
#include "session/density.h"
#include "view/geometry.h"
#include "view/panes.h"
#include "view/view_test.h"

namespace quillmere::test {
namespace {

class DividerTest : public ViewTest {
 protected:
  DividerTest() {
    openAndShow(simplePdf(10, 400, 600));
    setViewMode(ViewMode::IndependentPages);  // the divider is at 500
  }

  static int dragTo(int x) {
    startDividerDrag(500);
    moveDividerDrag(x);
    endDividerDrag();
    return dividerX();
  }
};

TEST_F(DividerTest, ItIsGrabbedInANarrowBand) {
  EXPECT_FALSE(onDivider(498));
  EXPECT_TRUE(onDivider(499));
  EXPECT_TRUE(onDivider(502));
  EXPECT_FALSE(onDivider(503));
}

TEST_F(DividerTest, SinglePageAndAnEqualisedBookHaveNoneToGrab) {
  session.viewMode = ViewMode::Book;
  session.settings.bookEqualizePanes = true;
  EXPECT_FALSE(onDivider(500));
  startDividerDrag(500);
  moveDividerDrag(300);
  EXPECT_EQ(session.paneDividerPosition, 0);
  EXPECT_FALSE(window().mouseCaptured);

  session.settings.bookEqualizePanes = false;
  EXPECT_TRUE(onDivider(500));
  session.settings.bookEqualizePanes = true;
  session.viewMode = ViewMode::TwoDocuments;
  EXPECT_TRUE(onDivider(500));
  session.viewMode = ViewMode::SinglePage;
  EXPECT_FALSE(onDivider(500));
}

TEST_F(DividerTest, ItMovesByWhatThePointerMoves) {
  startDividerDrag(501);
  moveDividerDrag(401);
  EXPECT_EQ(session.paneDividerPosition, 400);
  moveDividerDrag(511);
  EXPECT_EQ(session.paneDividerPosition, 510);
}

TEST_F(DividerTest, AClickThatMovesNothingChangesNothing) {
  setView(0, 2.5f, -40.0f, -130.0f);
  const auto* bitmap = pane(0).pageBitmap.get();
  window().invalidations = 0;
  for (const int x : {499, 500, 502}) {
    startDividerDrag(x);
    moveDividerDrag(x);
    endDividerDrag();
    EXPECT_EQ(session.paneDividerPosition, 0);
  }
  EXPECT_EQ(window().invalidations, 0);
  EXPECT_EQ(pane(0).pageBitmap.get(), bitmap);
  EXPECT_EQ(pane(0).panY, -130.0f);
  // In a window without room for both panes the divider is where no drag could put it.
  window().client.width = 250;
  startDividerDrag(dividerX());
  moveDividerDrag(dividerX());
  endDividerDrag();
  EXPECT_EQ(session.paneDividerPosition, 0);
}

TEST_F(DividerTest, MovesRepaintAndTheReleaseRendersOnce) {
  const auto* bitmap = pane(0).pageBitmap.get();
  startDividerDrag(500);
  EXPECT_TRUE(window().mouseCaptured);
  const int erased = window().erasingInvalidations;
  moveDividerDrag(400);
  EXPECT_EQ(pane(0).pageBitmap.get(), bitmap);
  EXPECT_EQ(window().erasingInvalidations, erased + 1);
  endDividerDrag();
  EXPECT_FALSE(window().mouseCaptured);
  EXPECT_EQ(session.lastPaneWidth[0], 400);
  EXPECT_FLOAT_EQ(pane(0).zoom, 0.96f);  // 400 / 400 * 0.96
}

TEST_F(DividerTest, ItKeepsItsDistanceFromBothEnds) {
  EXPECT_EQ(dragTo(-900), 150);
  session.paneDividerPosition = 0;
  EXPECT_EQ(dragTo(3000), 848);
}

TEST_F(DividerTest, TheLeftLimitCountsFromTheLeftPanel) {
  session.navigationPanelVisible = true;
  session.leftPanelWidth = 190;
  EXPECT_EQ(dragTo(-900), 343);  // 193 + 150
}

TEST_F(DividerTest, InANarrowWindowTheLeftLimitWins) {
  window().client.width = 250;
  EXPECT_EQ(dragTo(501), 150);
}

TEST_F(DividerTest, BandAndLimitsGrowWithTheScreensDensity) {
  const struct {
    std::int32_t dpi;
    int bandStart, bandEnd;  // first pixel that grabs, first that no longer does
    int least, most;
  } rows[] = {{96, 499, 503, 343, 848}, {144, 498, 505, 515, 772}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.dpi);
    session.dpi = 96;
    session.leftPanelWidth = 190;
    session.navigationPanelVisible = false;
    session.paneDividerPosition = 0;
    changeDensity(row.dpi);
    EXPECT_FALSE(onDivider(row.bandStart - 1));
    EXPECT_TRUE(onDivider(row.bandStart));
    EXPECT_TRUE(onDivider(row.bandEnd - 1));
    EXPECT_FALSE(onDivider(row.bandEnd));
    session.navigationPanelVisible = true;
    EXPECT_EQ(dragTo(-900), row.least);
    EXPECT_EQ(dragTo(3000), row.most);
  }
}

TEST_F(DividerTest, MovesWithoutADragDoNothing) {
  moveDividerDrag(300);
  endDividerDrag();
  EXPECT_EQ(session.paneDividerPosition, 0);
}

TEST_F(DividerTest, CustomFitMovesByHalfOfWhatThePaneGained) {
  setView(0, 1.0f, 40.0f, 0.0f);
  setView(1, 1.0f, 40.0f, 0.0f);
  dragTo(600);
  EXPECT_FLOAT_EQ(pane(0).panX, 90.0f);
  EXPECT_FLOAT_EQ(pane(1).panX, -10.0f);
}

TEST_F(DividerTest, EqualPanesCentresIt) {
  dragTo(300);
  equalizePanes();
  EXPECT_EQ(dividerX(), 500);
  EXPECT_EQ(session.lastPaneWidth[0], 500);
}

TEST_F(DividerTest, EqualPanesHasNothingToDoInSinglePage) {
  setViewMode(ViewMode::SinglePage);
  session.paneDividerPosition = 300;
  equalizePanes();
  EXPECT_EQ(session.paneDividerPosition, 300);
}

}  // namespace
}  // namespace quillmere::test
