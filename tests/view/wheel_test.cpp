#include <utility>

#include "documents/modes.h"
#include "view/geometry.h"
#include "view/navigation.h"
#include "view/view_test.h"

namespace quillmere::test {
namespace {

constexpr unsigned kPlain = 0;
constexpr unsigned kBothModifiers = kWheelShift | kWheelControl;

class WheelTest : public ViewTest {
 protected:
  WheelTest() { openTen(); }

  void openTen() {
    openAndShow(simplePdf(10, 400, 600));
    show(0, 3);
    setView(0, 2.0f, -50.0f, -100.0f);
  }

  // The effect of one backward notch of the wheel on pane 0.
  enum class Effect { PageTurn, Vertical, Horizontal, Zoom, Nothing };
  static Effect effectOfNotch(unsigned modifiers) {
    const PaneSlot& slot = pane(0);
    const std::int32_t page = slot.currentPage;
    const float zoom = slot.zoom;
    const float x = slot.panX;
    const float y = slot.panY;
    handleWheel(0, modifiers, 120, 100, 100);
    if (slot.currentPage != page) return Effect::PageTurn;
    if (slot.zoom != zoom) return Effect::Zoom;
    if (slot.panX != x) return Effect::Horizontal;
    return slot.panY != y ? Effect::Vertical : Effect::Nothing;
  }
};

TEST_F(WheelTest, ModifiersChooseTheActionThatTheSettingsGive) {
  EXPECT_EQ(effectOfNotch(kPlain), Effect::Vertical);
  EXPECT_EQ(effectOfNotch(kWheelShift), Effect::PageTurn);
  setView(0, 2.0f, -50.0f, -100.0f);
  EXPECT_EQ(effectOfNotch(kWheelControl), Effect::Zoom);
  EXPECT_EQ(effectOfNotch(kBothModifiers), Effect::Horizontal);
}

TEST_F(WheelTest, AScrollGoesFurtherOnADenserScreen) {
  const std::pair<std::int32_t, float> rows[] = {{96, 60.0f}, {144, 90.0f}};
  for (const auto& [dpi, distance] : rows) {
    session.dpi = dpi;
    setView(0, 2.0f, -50.0f, -100.0f);
    handleWheel(0, kPlain, -120, 100, 100);
    EXPECT_FLOAT_EQ(pane(0).panY, -100.0f - distance);
    handleWheel(0, kBothModifiers, 120, 100, 100);
    EXPECT_FLOAT_EQ(pane(0).panX, -50.0f + distance);
  }
}

TEST_F(WheelTest, EveryActionCanStandUnderEveryModifier) {
  const Effect effects[] = {Effect::PageTurn, Effect::Vertical, Effect::Horizontal, Effect::Zoom};
  for (unsigned modifiers = 0; modifiers < 4; ++modifiers) {
    for (std::uint32_t action = 0; action < 4; ++action) {
      SCOPED_TRACE(testing::Message() << modifiers << " " << action);
      resetSession();
      openTen();
      session.settings.wheelActions.fill(action == 0 ? WheelAction::Zoom : WheelAction::PageTurn);
      session.settings.wheelActions[modifiers] = static_cast<WheelAction>(action);
      EXPECT_EQ(effectOfNotch(modifiers), effects[action]);
    }
  }
}

TEST_F(WheelTest, ABookTurnsPagesWithThePlainWheelAndScrollsWithShift) {
  setViewMode(ViewMode::Book);
  const Effect table[] = {Effect::Horizontal, Effect::Horizontal, Effect::Zoom, Effect::Horizontal};
  session.settings.wheelActions = {WheelAction::HorizontalScroll, WheelAction::HorizontalScroll,
                                   WheelAction::Zoom, WheelAction::HorizontalScroll};
  for (const bool overridden : {false, true}) {
    session.settings.bookPageTurnWheel = overridden;
    for (unsigned modifiers = 0; modifiers < 4; ++modifiers) {
      SCOPED_TRACE(testing::Message() << overridden << " " << modifiers);
      show(0, 4);
      show(1, 5);
      setView(0, 2.0f, -50.0f, -100.0f);
      Effect expected = table[modifiers];
      if (overridden && modifiers == kPlain) expected = Effect::PageTurn;
      if (overridden && modifiers == kWheelShift) expected = Effect::Vertical;
      EXPECT_EQ(effectOfNotch(modifiers), expected);
    }
  }
}

TEST_F(WheelTest, TheBookOverrideHoldsInABookAlone) {
  session.settings.bookPageTurnWheel = true;
  setViewMode(ViewMode::IndependentPages);
  setView(0, 2.0f, -50.0f, -100.0f);
  EXPECT_EQ(effectOfNotch(kPlain), Effect::Vertical);
}

TEST_F(WheelTest, ScrollingFollowsTheDelta) {
  handleWheel(0, kPlain, 120, 0, 0);
  EXPECT_FLOAT_EQ(pane(0).panY, -40.0f);
  handleWheel(0, kPlain, -240, 0, 0);
  EXPECT_FLOAT_EQ(pane(0).panY, -160.0f);
  handleWheel(0, kBothModifiers, 60, 0, 0);
  EXPECT_FLOAT_EQ(pane(0).panX, -20.0f);
  EXPECT_FLOAT_EQ(pane(0).panY, -160.0f);
}

TEST_F(WheelTest, SmallDeltasScrollByTheirShare) {
  for (int i = 0; i < 12; ++i) handleWheel(0, kPlain, -10, 0, 0);
  EXPECT_FLOAT_EQ(pane(0).panY, -160.0f);
  handleWheel(0, kPlain, 1, 0, 0);
  EXPECT_FLOAT_EQ(pane(0).panY, -159.5f);
}

TEST_F(WheelTest, SmallDeltasTurnOnceANotchHasGathered) {
  for (int i = 0; i < 3; ++i) {
    handleWheel(0, kWheelShift, -30, 0, 0);
    EXPECT_EQ(pane(0).currentPage, 3);
  }
  handleWheel(0, kWheelShift, -30, 0, 0);
  EXPECT_EQ(pane(0).currentPage, 4);
  handleWheel(0, kWheelShift, -30, 0, 0);
  EXPECT_EQ(pane(0).currentPage, 4);
}

TEST_F(WheelTest, SmallDeltasZoomOnceANotchHasGathered) {
  handleWheel(0, kWheelControl, 80, 0, 0);
  EXPECT_FLOAT_EQ(pane(0).zoom, 2.0f);
  handleWheel(0, kWheelControl, 80, 0, 0);
  EXPECT_FLOAT_EQ(pane(0).zoom, 2.36f);
  handleWheel(0, kWheelControl, 80, 0, 0);  // 40 were left over
  EXPECT_FLOAT_EQ(pane(0).zoom, 2.7848f);
}

TEST_F(WheelTest, GatheringStartsAnewWithDirectionModifiersOrPane) {
  handleWheel(0, kWheelShift, -100, 0, 0);
  handleWheel(0, kWheelShift, 100, 0, 0);
  handleWheel(0, kWheelShift, -100, 0, 0);
  EXPECT_EQ(pane(0).currentPage, 3);
  handleWheel(0, kWheelControl, -100, 0, 0);
  EXPECT_FLOAT_EQ(pane(0).zoom, 2.0f);
  setViewMode(ViewMode::IndependentPages);
  show(1, 5);
  handleWheel(0, kWheelShift, -100, 0, 0);
  handleWheel(1, kWheelShift, -100, 0, 0);
  EXPECT_EQ(pane(0).currentPage, 3);
  EXPECT_EQ(pane(1).currentPage, 5);
}

TEST_F(WheelTest, ALargeDeltaTurnsOnePage) {
  handleWheel(0, kWheelShift, -360, 0, 0);
  EXPECT_EQ(pane(0).currentPage, 4);
}

TEST_F(WheelTest, ADeltaOfZeroTurnsForward) {
  handleWheel(0, kWheelShift, 0, 0, 0);
  EXPECT_EQ(pane(0).currentPage, 4);
}

TEST_F(WheelTest, ADeltaOfZeroZoomsOut) {
  handleWheel(0, kWheelControl, 0, 0, 0);
  EXPECT_FLOAT_EQ(pane(0).zoom, 1.6949153f);
}

TEST_F(WheelTest, TurningBackLandsOnTheBottom) {
  handleWheel(0, kWheelShift, 120, 0, 0);
  EXPECT_EQ(pane(0).currentPage, 2);
  EXPECT_FLOAT_EQ(pane(0).panY, -430.0f);  // 778 - 1200 - 8
  handleWheel(0, kWheelShift, -120, 0, 0);
  EXPECT_FLOAT_EQ(pane(0).panY, 8.0f);
}

TEST_F(WheelTest, ZoomIsCentredOnThePointerInsideThePane) {
  session.navigationPanelVisible = true;
  session.leftPanelWidth = 190;
  session.findBarVisible = true;
  const PagePoint before = paneToPage(0, 107, 66);
  handleWheel(0, kWheelControl, 120, 300, 100);  // 193 and 34 into the window
  const PagePoint after = paneToPage(0, 107, 66);
  EXPECT_NEAR(after.x, before.x, 1e-3);
  EXPECT_NEAR(after.y, before.y, 1e-3);
  handleWheel(0, kWheelControl, -120, 300, 100);
  EXPECT_NEAR(pane(0).zoom, 2.0f, 1e-5f);
}

TEST_F(WheelTest, ScrollingPastAThresholdTurnsThePage) {
  session.panScrollEnabled = true;
  setView(0, 1.0f, 0.0f, 600.0f);
  handleWheel(0, kPlain, 120, 0, 0);
  EXPECT_EQ(pane(0).currentPage, 2);
  setView(0, 1.0f, 0.0f, 600.0f);
  session.settings.wheelActions[0] = WheelAction::HorizontalScroll;
  pane(0).panY = 690.0f;
  handleWheel(0, kPlain, 120, 0, 0);
  EXPECT_EQ(pane(0).currentPage, 2);
}

TEST_F(WheelTest, OverTheDividerTheWheelIsForTheActivePane) {
  setViewMode(ViewMode::IndependentPages);
  session.activePane = 1;
  EXPECT_EQ(paneForPointer(100), 0);
  EXPECT_EQ(paneForPointer(501), 1);
  EXPECT_EQ(paneForPointer(900), 1);
  session.activePane = 0;
  EXPECT_EQ(paneForPointer(501), 0);
}

class DragPanTest : public ViewTest {
 protected:
  DragPanTest() {
    openAndShow(simplePdf(10, 400, 600));
    show(0, 3);
    setView(0, 2.0f, -50.0f, -100.0f);
  }
};

TEST_F(DragPanTest, ThePageFollowsThePointerWithoutRendering) {
  const auto* bitmap = pane(0).pageBitmap.get();
  const auto page = pane(0).page.get();
  startDragPan(0, 300, 300);
  EXPECT_TRUE(dragPanActive());
  EXPECT_TRUE(window().mouseCaptured);
  for (int step = 1; step <= 200; ++step) {
    moveDragPan(300 + step, 300 - step);
    ASSERT_FLOAT_EQ(pane(0).panX, static_cast<float>(-50 + step));
    ASSERT_FLOAT_EQ(pane(0).panY, static_cast<float>(-100 - step));
  }
  EXPECT_EQ(pane(0).pageBitmap.get(), bitmap);
  EXPECT_EQ(pane(0).page.get(), page);
  endDragPan();
  EXPECT_FALSE(dragPanActive());
  EXPECT_FALSE(window().mouseCaptured);
  moveDragPan(0, 0);
  EXPECT_FLOAT_EQ(pane(0).panX, 150.0f);
}

TEST_F(DragPanTest, TheCursorIsChosenAnewAtBothEnds) {
  startDragPan(0, 300, 300);
  EXPECT_EQ(window().cursorRefreshes, 1);
  endDragPan();
  EXPECT_EQ(window().cursorRefreshes, 2);
  endDragPan();
  EXPECT_EQ(window().cursorRefreshes, 2);
}

TEST_F(DragPanTest, TheLimitHoldsThePage) {
  startDragPan(0, 0, 0);
  moveDragPan(-5000, 5000);
  EXPECT_FLOAT_EQ(pane(0).panX, -720.0f);
  EXPECT_FLOAT_EQ(pane(0).panY, 698.0f);
  moveDragPan(-10, 0);  // the anchor is still where the press was
  EXPECT_FLOAT_EQ(pane(0).panX, -60.0f);
}

TEST_F(DragPanTest, ADragGoesOnSmoothlyOnTheNextPage) {
  session.panScrollEnabled = true;
  setView(0, 1.0f, 10.0f, 0.0f);
  startDragPan(0, 500, 700);
  moveDragPan(505, 200);
  ASSERT_EQ(pane(0).currentPage, 4);
  EXPECT_FLOAT_EQ(pane(0).panX, 15.0f);
  EXPECT_FLOAT_EQ(pane(0).panY, 583.5f);
  moveDragPan(507, 190);
  EXPECT_FLOAT_EQ(pane(0).panX, 17.0f);
  EXPECT_FLOAT_EQ(pane(0).panY, 573.5f);
}

TEST_F(DragPanTest, ThePaneThatIsDraggedBecomesActive) {
  setViewMode(ViewMode::IndependentPages);
  show(1, 5);
  startDragPan(1, 700, 100);
  EXPECT_EQ(session.activePane, 1);
  moveDragPan(710, 100);
  EXPECT_FALSE(pane(0).shiftPan);
  EXPECT_TRUE(pane(1).shiftPan);
}

TEST_F(DragPanTest, AnEmptyPaneBecomesActiveButDragsNothing) {
  setViewMode(ViewMode::TwoDocuments);
  startDragPan(1, 700, 100);
  EXPECT_EQ(session.activePane, 1);
  EXPECT_FALSE(dragPanActive());
  EXPECT_FALSE(window().mouseCaptured);
}

}  // namespace
}  // namespace quillmere::test
