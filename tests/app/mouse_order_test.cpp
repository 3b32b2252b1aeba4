#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "annot/placements.h"
#include "app/mouse.h"
#include "documents/modes.h"
#include "support/opening_test.h"
#include "support/pdf_builder.h"
#include "view/geometry.h"
#include "view/panes.h"

// Places where several things lie above each other: the first in order has the cursor and the
// press.
namespace quillmere::test {
namespace {

using platform::standIn;

struct Place {
  int x = 0;
  int y = 0;
};

enum class Began {
  Nothing,
  PanelBar,
  PanelWidth,
  StampSplitter,
  Divider,
  Text,
  OpenDialog,
  Placement,
  Pan,
  Link,
  Selection,
};

// A document of two pages; the first has a line of text, and below it one that is a link to the
// second. Panels have their usual widths, and both parts of the left panel are hidden.
class MouseOrderTest : public OpeningTest {
 protected:
  MouseOrderTest() {
    PdfPage page;
    page.content = textContent("Word", 100, 600) + "\n" + textContent("Link", 100, 300);
    page.annotations = {linkAnnotation(90, 290, 200, 330, pageDestination(2))};
    EXPECT_TRUE(open(buildPdf({page, PdfPage{}})));
    standIn().openDialogAnswers = {{}};  // cancelled
  }

  static void showLeftPanel() {
    session.navigationPanelVisible = true;
    session.binderPanelVisible = true;
    refitPanes();
  }

  static void showStampPanel() {
    session.stampPanelVisible = true;
    refitPanes();
  }

  static void showTwoPanes() { setViewMode(ViewMode::IndependentPages); }

  static void putPlaceholder(Place at) {
    session.placeholderRect[0] = {at.x - 20, at.y - 20, at.x + 20, at.y + 20};
  }

  static void armTextTool() {
    session.textTool.armed = true;
    session.textTool.text = u"Paid";
  }
  static bool textPlaced() {
    const auto found = session.placements.find(0);
    return found != session.placements.end() &&
           found->second.back().kind == PlacementKind::TextDrop;
  }

  // A stamp over the line that is a link, selected.
  static void putStampOnLink() {
    showStampPanel();
    Placement stamp;
    stamp.x = 50;
    stamp.y = 250;
    stamp.width = 300;
    stamp.height = 150;
    session.placements[0] = {stamp};
    selectPlacement(0, 0);
  }
  static Place onRotationHandle() { return onPage(50, 400); }

  static Place onPage(double x, double y) {
    const PanePoint point = pageToPane(0, x, y);
    const PixelRect rect = paneRect(0);
    return {rect.left + static_cast<int>(point.x), rect.top + static_cast<int>(point.y)};
  }
  static Place onText() { return onPage(108, 606); }
  static Place onLinkedText() { return onPage(103, 306); }
  static Place besideText() { return onPage(400, 500); }
  static Place onDividerLine() { return {dividerX(), 300}; }

  static CursorKind cursorOver(Place place) { return cursorAt(place.x, place.y); }

  static Began began() {
    const Gesture drag = session.gesture.kind;
    if (drag == Gesture::LeftPanelBar) return Began::PanelBar;
    if (drag == Gesture::LeftPanelWidth) return Began::PanelWidth;
    if (drag == Gesture::StampSplitter) return Began::StampSplitter;
    if (drag == Gesture::Divider) return Began::Divider;
    if (textPlaced()) return Began::Text;
    if (!standIn().openDialogs.empty()) return Began::OpenDialog;
    if (drag == Gesture::Placement) return Began::Placement;
    if (session.panes[0].shiftPan) return Began::Pan;
    if (session.panes[0].currentPage == 1) return Began::Link;
    return session.selection.dragging ? Began::Selection : Began::Nothing;
  }

  static Began pressAt(Place place) {
    pressLeft(place.x, place.y);
    return began();
  }
};

// The cursor.

TEST_F(MouseOrderTest, TheCursorBetweenThePartsOfTheLeftPanelIsVertical) {
  showLeftPanel();
  EXPECT_EQ(cursorOver({100, 390}), CursorKind::ResizeVertical);
  // The splitter's band begins there; the bar is checked first.
  EXPECT_EQ(cursorOver({189, 390}), CursorKind::ResizeVertical);
  standIn().shiftDown = true;
  EXPECT_EQ(cursorOver({100, 390}), CursorKind::ResizeVertical);
}

TEST_F(MouseOrderTest, TheCursorOverEverySplitterIsHorizontal) {
  showLeftPanel();
  showStampPanel();
  EXPECT_EQ(cursorOver({191, 300}), CursorKind::ResizeHorizontal);
  EXPECT_EQ(cursorOver({818, 300}), CursorKind::ResizeHorizontal);
  EXPECT_EQ(cursorOver({821, 300}), CursorKind::Default);  // the panel itself
  showTwoPanes();
  EXPECT_EQ(cursorOver(onDividerLine()), CursorKind::ResizeHorizontal);
}

TEST_F(MouseOrderTest, ASplitterComesBeforePlaceholderAndShift) {
  showTwoPanes();
  putPlaceholder(onDividerLine());
  EXPECT_EQ(cursorOver(onDividerLine()), CursorKind::ResizeHorizontal);
  standIn().shiftDown = true;
  EXPECT_EQ(cursorOver(onDividerLine()), CursorKind::ResizeHorizontal);
}

TEST_F(MouseOrderTest, TheCursorOverTheFixedDividerOfABookDoesNotChange) {
  session.settings.bookEqualizePanes = true;
  setViewMode(ViewMode::Book);
  EXPECT_EQ(cursorOver(onDividerLine()), CursorKind::Default);
  session.settings.bookEqualizePanes = false;
  EXPECT_EQ(cursorOver(onDividerLine()), CursorKind::ResizeHorizontal);
}

TEST_F(MouseOrderTest, APlaceholderIsAHandWhereverItIs) {
  showLeftPanel();
  putPlaceholder({60, 200});
  EXPECT_EQ(cursorOver({60, 200}), CursorKind::Hand);
  putPlaceholder(onText());
  EXPECT_EQ(cursorOver(onText()), CursorKind::Hand);
}

TEST_F(MouseOrderTest, OutsideThePanesNeitherShiftNorADragChangesTheCursor) {
  showLeftPanel();
  standIn().shiftDown = true;
  EXPECT_EQ(cursorOver({60, 200}), CursorKind::Default);
  EXPECT_EQ(cursorOver({500, 785}), CursorKind::Default);
  standIn().shiftDown = false;
  pressMiddle(500, 300);
  EXPECT_EQ(cursorOver({60, 200}), CursorKind::Default);
  EXPECT_EQ(cursorOver({500, 785}), CursorKind::Default);
}

TEST_F(MouseOrderTest, OverAPageTheHandComesBeforeTheBeamAndTheBeamBeforeTheArrow) {
  EXPECT_EQ(cursorOver(onText()), CursorKind::TextBeam);
  EXPECT_EQ(cursorOver(onLinkedText()), CursorKind::Hand);
  EXPECT_EQ(cursorOver(besideText()), CursorKind::Arrow);
  standIn().shiftDown = true;
  EXPECT_EQ(cursorOver(onText()), CursorKind::Hand);
  EXPECT_EQ(cursorOver(besideText()), CursorKind::Hand);
  standIn().shiftDown = false;
  pressMiddle(500, 300);
  EXPECT_EQ(cursorOver(onText()), CursorKind::Hand);
  releaseMiddle(500, 300);
  EXPECT_EQ(cursorOver(onText()), CursorKind::TextBeam);
}

TEST_F(MouseOrderTest, TheTextToolsCrossComesBeforeThePlaceholderAndAfterTheSplitters) {
  showStampPanel();
  armTextTool();
  putPlaceholder(onText());
  EXPECT_EQ(cursorOver(onText()), CursorKind::Cross);
  EXPECT_EQ(cursorOver({818, 300}), CursorKind::ResizeHorizontal);
  standIn().shiftDown = true;
  EXPECT_EQ(cursorOver(onText()), CursorKind::Hand);
}

TEST_F(MouseOrderTest, TheCursorOverASelectedStampComesAfterThePlaceholderAndBeforePageAndShift) {
  putStampOnLink();
  EXPECT_EQ(cursorOver(onLinkedText()), CursorKind::Move);
  EXPECT_EQ(cursorOver(onRotationHandle()), CursorKind::Rotate);
  standIn().shiftDown = true;
  EXPECT_EQ(cursorOver(onLinkedText()), CursorKind::Move);
  putPlaceholder(onLinkedText());
  EXPECT_EQ(cursorOver(onLinkedText()), CursorKind::Hand);
}

// Presses of the left button.

TEST_F(MouseOrderTest, TheBarOfTheLeftPanelComesFirst) {
  showLeftPanel();
  EXPECT_EQ(pressAt({189, 390}), Began::PanelBar);
}

TEST_F(MouseOrderTest, TheLeftPanelsSplitterComesBeforeTheDivider) {
  showLeftPanel();
  showTwoPanes();
  session.paneDividerPosition = 195;
  ASSERT_TRUE(onDivider(194));
  EXPECT_EQ(pressAt({194, 300}), Began::PanelWidth);
}

TEST_F(MouseOrderTest, SplittersComeBeforeThePlaceholder) {
  showStampPanel();
  putPlaceholder({818, 300});
  EXPECT_EQ(pressAt({818, 300}), Began::StampSplitter);
  loseCapture();
  showTwoPanes();
  putPlaceholder(onDividerLine());
  EXPECT_EQ(pressAt(onDividerLine()), Began::Divider);
}

TEST_F(MouseOrderTest, ThePlaceholderComesBeforePanning) {
  putPlaceholder(onText());
  standIn().shiftDown = true;
  EXPECT_EQ(pressAt(onText()), Began::OpenDialog);
  EXPECT_FALSE(session.panes[0].shiftPan);
}

TEST_F(MouseOrderTest, TheTextToolComesBeforeThePlaceholderAndAfterTheSplitters) {
  showStampPanel();
  armTextTool();
  EXPECT_EQ(pressAt({818, 300}), Began::StampSplitter);
  loseCapture();
  putPlaceholder(onText());
  EXPECT_EQ(pressAt(onText()), Began::Text);
  EXPECT_TRUE(standIn().openDialogs.empty());
}

TEST_F(MouseOrderTest, WithShiftTheTextToolLeavesThePressToPanning) {
  armTextTool();
  standIn().shiftDown = true;
  EXPECT_EQ(pressAt(onText()), Began::Pan);
}

TEST_F(MouseOrderTest, ThePlaceholderComesBeforeAStamp) {
  putStampOnLink();
  putPlaceholder(onLinkedText());
  EXPECT_EQ(pressAt(onLinkedText()), Began::OpenDialog);
  EXPECT_NE(session.gesture.kind, Gesture::Placement);
}

TEST_F(MouseOrderTest, AStampComesBeforePanningAndLinks) {
  putStampOnLink();
  EXPECT_EQ(pressAt(onLinkedText()), Began::Placement);
  loseCapture();
  standIn().shiftDown = true;
  EXPECT_EQ(pressAt(onLinkedText()), Began::Placement);
}

TEST_F(MouseOrderTest, PanningComesBeforeTheLink) {
  standIn().shiftDown = true;
  EXPECT_EQ(pressAt(onLinkedText()), Began::Pan);
}

TEST_F(MouseOrderTest, TheLinkComesBeforeTheText) {
  EXPECT_EQ(pressAt(onLinkedText()), Began::Link);
  EXPECT_FALSE(session.selection.dragging);
}

TEST_F(MouseOrderTest, TextIsSelectedWhereNothingElseIs) {
  EXPECT_EQ(pressAt(onText()), Began::Selection);
}

TEST_F(MouseOrderTest, OutsideThePanesNothingBegins) {
  showLeftPanel();
  standIn().shiftDown = true;
  EXPECT_EQ(pressAt({60, 200}), Began::Nothing);
  standIn().shiftDown = false;
  EXPECT_EQ(pressAt({60, 200}), Began::Nothing);
}

}  // namespace
}  // namespace quillmere::test
