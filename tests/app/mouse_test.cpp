#include "app/mouse.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "documents/modes.h"
#include "support/opening_test.h"
#include "support/pdf_builder.h"
#include "view/geometry.h"
#include "view/navigation.h"
#include "view/panes.h"
#include "view/selection.h"

namespace quillmere::test {
namespace {

using platform::standIn;
using testing::IsEmpty;

struct Place {
  int x = 0;
  int y = 0;
};

class MouseTest : public OpeningTest {
 protected:
  // Client pixels of a letter of "Page N".
  static Place letter(int pane, int index) {
    double left = 0, right = 0, bottom = 0, top = 0;
    FPDFText_GetCharBox(session.panes[pane].textPage.get(), index, &left, &right, &bottom, &top);
    const PanePoint middle = pageToPane(pane, (left + right) / 2, (bottom + top) / 2);
    const PixelRect rect = paneRect(pane);
    return {rect.left + static_cast<int>(middle.x), rect.top + static_cast<int>(middle.y)};
  }
};

TEST_F(MouseTest, ALeftDragSelectsText) {
  opened(u"a.pdf", 9);
  const Place from = letter(0, 0);
  const Place to = letter(0, 3);
  pressLeft(from.x, from.y);
  EXPECT_TRUE(standIn().window.mouseCaptured);
  movePointer(to.x, to.y);
  releaseLeft(to.x, to.y);
  EXPECT_TRUE(hasTextSelection(0));
  EXPECT_FALSE(standIn().window.mouseCaptured);
}

TEST_F(MouseTest, ASelectionReachesToWhereTheButtonCameUp) {
  opened(u"a.pdf", 9);
  const Place from = letter(0, 0);
  const Place before = letter(0, 2);
  const Place to = letter(0, 3);
  pressLeft(from.x, from.y);
  movePointer(before.x, before.y);
  releaseLeft(to.x, to.y);
  copySelection();
  EXPECT_EQ(standIn().clipboard, u"Page");
}

TEST_F(MouseTest, ADoubleClickSelectsAWord) {
  opened(u"a.pdf", 9);
  const Place place = letter(0, 1);
  doubleClickLeft(place.x, place.y);
  EXPECT_TRUE(hasTextSelection(0));
  copySelection();
  EXPECT_EQ(standIn().clipboard, u"Page");
}

TEST_F(MouseTest, ShiftTurnsALeftDragIntoPanning) {
  opened(u"a.pdf", 9);
  session.panScrollEnabled = false;
  standIn().shiftDown = true;
  const Place place = letter(0, 0);
  const float before = session.panes[0].panX;
  pressLeft(place.x, place.y);
  EXPECT_TRUE(session.panes[0].shiftPan);
  movePointer(place.x + 25, place.y);
  EXPECT_EQ(session.panes[0].panX, before + 25);
  releaseLeft(place.x + 25, place.y);
  EXPECT_FALSE(session.panes[0].shiftPan);
  EXPECT_FALSE(hasTextSelection(0));
}

TEST_F(MouseTest, TheMiddleButtonPans) {
  opened(u"a.pdf", 9);
  session.panScrollEnabled = false;
  const float before = session.panes[0].panY;
  pressMiddle(500, 300);
  movePointer(500, 280);
  EXPECT_EQ(session.panes[0].panY, before - 20);
  releaseMiddle(500, 270);
  EXPECT_EQ(session.panes[0].panY, before - 30);
  movePointer(500, 200);
  EXPECT_EQ(session.panes[0].panY, before - 30);
}

TEST_F(MouseTest, LosingTheMouseEndsEveryDrag) {
  opened(u"a.pdf", 9);
  pressMiddle(500, 300);
  loseCapture();
  EXPECT_FALSE(session.panes[0].shiftPan);

  const Place place = letter(0, 0);
  pressLeft(place.x, place.y);
  loseCapture();
  const Place end = letter(0, 3);
  movePointer(end.x, end.y);
  EXPECT_FALSE(hasTextSelection(0));

  setViewMode(ViewMode::IndependentPages);
  const int divider = dividerX();
  pressLeft(divider, 300);
  loseCapture();
  movePointer(divider + 100, 300);
  EXPECT_EQ(dividerX(), divider);
}

TEST_F(MouseTest, LosingTheMouseEndsTheDragsOfPanelsToo) {
  opened(u"a.pdf", 9);
  session.navigationPanelVisible = true;
  session.binderPanelVisible = true;
  session.stampPanelVisible = true;
  const auto pressLoseAndMove = [](Place from) {
    pressLeft(from.x, from.y);
    EXPECT_TRUE(standIn().window.mouseCaptured);
    standIn().window.mouseCaptured = false;
    loseCapture();
    movePointer(from.x + 60, from.y + 60);
    releaseLeft(from.x + 60, from.y + 60);
  };
  pressLoseAndMove({191, 200});
  EXPECT_EQ(session.leftPanelWidth, 190);
  pressLoseAndMove({100, 390});
  EXPECT_EQ(session.leftPanelSplit, 0.5f);
  pressLoseAndMove({818, 300});
  EXPECT_EQ(session.stampPanelWidth, 180);
}

TEST_F(MouseTest, ADragEndsWithTheModeItBeganIn) {
  opened(u"a.pdf", 9);
  setViewMode(ViewMode::IndependentPages);
  session.panScrollEnabled = true;
  pressMiddle(900, 300);
  ASSERT_TRUE(session.panes[1].shiftPan);
  setViewMode(ViewMode::SinglePage);
  EXPECT_FALSE(standIn().window.mouseCaptured);
  EXPECT_FALSE(dragPanActive());
  movePointer(900, 5000);
  movePointer(900, -5000);
  releaseMiddle(900, -5000);
  EXPECT_EQ(session.panes[1].currentPage, 0);

  setViewMode(ViewMode::IndependentPages);
  const int divider = dividerX();
  pressLeft(divider, 300);
  setViewMode(ViewMode::SinglePage);
  EXPECT_FALSE(standIn().window.mouseCaptured);
  movePointer(divider + 100, 300);
  EXPECT_EQ(session.paneDividerPosition, 0);
}

TEST_F(MouseTest, ADragEndsWithTheDocumentItMoves) {
  opened(u"a.pdf", 9);
  pressMiddle(500, 300);
  opened(u"b.pdf", 4);
  EXPECT_FALSE(standIn().window.mouseCaptured);
  const float panX = session.panes[0].panX;
  movePointer(560, 300);
  EXPECT_EQ(session.panes[0].panX, panX);
  pressMiddle(500, 300);
  movePointer(560, 300);
  EXPECT_EQ(session.panes[0].panX, panX + 60);
}

// What was dragged so far stays, and the page is fitted to it.
TEST_F(MouseTest, LosingTheMouseKeepsTheWidthsThatWereReached) {
  opened(u"a.pdf", 9);
  session.navigationPanelVisible = true;
  session.stampPanelVisible = true;
  refitPanes();
  pressLeft(191, 200);
  movePointer(221, 200);
  loseCapture();
  EXPECT_EQ(session.leftPanelWidth, 220);
  EXPECT_EQ(session.lastPaneWidth[0], 1000 - 223 - 183);
  pressLeft(818, 300);
  movePointer(798, 300);
  loseCapture();
  EXPECT_EQ(session.stampPanelWidth, 200);
  EXPECT_EQ(session.lastPaneWidth[0], 1000 - 223 - 203);
}

TEST_F(MouseTest, TheDividerIsTakenBeforeThePanes) {
  opened(u"a.pdf", 9);
  setViewMode(ViewMode::IndependentPages);
  const int divider = dividerX();
  pressLeft(divider, 300);
  movePointer(divider + 50, 300);
  releaseLeft(divider + 50, 300);
  EXPECT_EQ(dividerX(), divider + 50);
  EXPECT_EQ(session.activePane, 0);
}

TEST_F(MouseTest, APressMakesItsPaneActive) {
  opened(u"a.pdf", 9);
  setViewMode(ViewMode::IndependentPages);
  pressLeft(900, 300);
  releaseLeft(900, 300);
  EXPECT_EQ(session.activePane, 1);
  pressMiddle(100, 300);
  releaseMiddle(100, 300);
  EXPECT_EQ(session.activePane, 0);
  releaseRight(900, 300);
  EXPECT_EQ(session.activePane, 1);
}

TEST_F(MouseTest, ThePlaceholderOpensAFileInItsPane) {
  session.viewMode = ViewMode::TwoDocuments;
  session.placeholderRect[1] = {600, 300, 900, 330};
  standIn().openDialogAnswers = {{putPdf(u"a.pdf", simplePdf(1))}};
  pressLeft(700, 310);
  EXPECT_EQ(session.panes[1].path, u"C:\\a.pdf");
  EXPECT_EQ(session.panes[0].document, nullptr);
}

TEST_F(MouseTest, AQuickSecondPressCountsLikeTheFirst) {
  opened(u"a.pdf", 9);
  setViewMode(ViewMode::IndependentPages);
  const int divider = dividerX();
  doubleClickLeft(divider, 300);
  movePointer(divider + 50, 300);
  releaseLeft(divider + 50, 300);
  EXPECT_EQ(dividerX(), divider + 50);

  standIn().shiftDown = true;
  const Place text = letter(0, 1);
  doubleClickLeft(text.x, text.y);
  EXPECT_TRUE(session.panes[0].shiftPan);
  EXPECT_FALSE(hasTextSelection(0));
}

TEST_F(MouseTest, BesideThePlaceholderNothingOpens) {
  session.placeholderRect[0] = {400, 300, 600, 330};
  for (const Place& place : {Place{399, 310}, Place{600, 310}, Place{500, 299}, Place{500, 330}}) {
    pressLeft(place.x, place.y);
    releaseLeft(place.x, place.y);
  }
  EXPECT_THAT(standIn().openDialogs, IsEmpty());
}

TEST_F(MouseTest, ARightClickMakesAPaneWithoutAPageActive) {
  session.viewMode = ViewMode::TwoDocuments;
  session.activePane = 0;
  EXPECT_THAT(releaseRight(900, 300), IsEmpty());
  EXPECT_EQ(session.activePane, 1);
}

TEST_F(MouseTest, ARightClickOutsidePagesOffersNothing) {
  EXPECT_THAT(releaseRight(500, 300), IsEmpty());
  opened(u"a.pdf", 9);
  EXPECT_FALSE(releaseRight(500, 300).empty());
  EXPECT_THAT(releaseRight(500, 790), IsEmpty());  // over the status bar
}

TEST_F(MouseTest, TheWheelTurnsThePaneUnderThePointer) {
  opened(u"a.pdf", 9);
  setViewMode(ViewMode::IndependentPages);
  turnWheel(900, 300, -120, true, false);
  EXPECT_EQ(session.panes[1].currentPage, 1);
  EXPECT_EQ(session.panes[0].currentPage, 0);
  EXPECT_EQ(session.activePane, 0);
  turnWheel(dividerX(), 300, -120, true, false);
  EXPECT_EQ(session.panes[0].currentPage, 1);
}

TEST_F(MouseTest, WheelModifiersChooseTheAction) {
  opened(u"a.pdf", 9);
  const float zoom = session.panes[0].zoom;
  turnWheel(500, 300, 120, false, true);
  EXPECT_FLOAT_EQ(session.panes[0].zoom, zoom * 1.18f);
  const float panX = session.panes[0].panX;
  turnWheel(500, 300, 120, true, true);
  EXPECT_EQ(session.panes[0].panX, panX + 60);
}

TEST_F(MouseTest, TheCursorTellsWhatAPressWouldDo) {
  opened(u"a.pdf", 9);
  setViewMode(ViewMode::IndependentPages);
  EXPECT_EQ(cursorAt(dividerX(), 300), CursorKind::ResizeHorizontal);
  const Place text = letter(0, 2);
  EXPECT_EQ(cursorAt(text.x, text.y), CursorKind::TextBeam);
  EXPECT_EQ(cursorAt(5, 300), CursorKind::Arrow);
  EXPECT_EQ(cursorAt(500, 790), CursorKind::Default);
  standIn().shiftDown = true;
  EXPECT_EQ(cursorAt(text.x, text.y), CursorKind::Hand);
  EXPECT_EQ(cursorAt(dividerX(), 300), CursorKind::ResizeHorizontal);
}

TEST_F(MouseTest, TheCursorOverTurnedTextLiesOnItsSide) {
  opened(u"a.pdf", 9);
  session.panes[0].documentRotation = 1;
  layoutPane(0, false, 0);
  const Place text = letter(0, 2);
  EXPECT_EQ(cursorAt(text.x, text.y), CursorKind::SidewaysBeam);
}

TEST_F(MouseTest, TheCursorOverAPlaceholderIsAHand) {
  session.placeholderRect[0] = {400, 300, 600, 330};
  EXPECT_EQ(cursorAt(500, 310), CursorKind::Hand);
}

TEST_F(MouseTest, WhilePanningTheCursorStaysAHand) {
  opened(u"a.pdf", 9);
  pressMiddle(500, 300);
  EXPECT_EQ(cursorAt(500, 300), CursorKind::Hand);
  releaseMiddle(500, 300);
}

TEST_F(MouseTest, TheMouseWithoutADocumentIsHarmless) {
  for (ViewMode mode :
       {ViewMode::SinglePage, ViewMode::Book, ViewMode::IndependentPages, ViewMode::TwoDocuments}) {
    session.viewMode = mode;
    for (int x : {-10, 0, 250, 499, 500, 501, 502, 999, 5000}) {
      pressLeft(x, 300);
      movePointer(x + 10, 310);
      releaseLeft(x + 10, 310);
      doubleClickLeft(x, 300);
      pressMiddle(x, 300);
      movePointer(x - 10, 290);
      releaseMiddle(x - 10, 290);
      turnWheel(x, 300, 120, false, true);
      cursorAt(x, 300);
      EXPECT_THAT(releaseRight(x, 300), IsEmpty());
    }
  }
  EXPECT_FALSE(hasUnsavedChanges());
}

}  // namespace
}  // namespace quillmere::test
