#include "view/selection.h"

#include <fpdf_edit.h>
#include <fpdf_text.h>

#include "app/mouse.h"
#include "documents/modes.h"
#include "view/navigation.h"
#include "view/view_test.h"

namespace quillmere::test {
namespace {

struct ClientPoint {
  int x = 0;
  int y = 0;
};

class SelectionTest : public ViewTest {
 protected:
  void openText(const std::string& text, int degrees = 0) {
    PdfPage page;
    page.width = 600;
    page.height = 800;
    page.rotate = degrees;
    page.content = textContent(text, 72, 400, 24);
    openAndShow(buildPdf({page, page}));
    setView(0, 1.0f, 40.0f, 20.0f);
  }

  // The centre of a character in client pixels.
  static ClientPoint placeOf(int index, int inPane = 0) {
    double left = 0;
    double right = 0;
    double bottom = 0;
    double top = 0;
    FPDFText_GetCharBox(pane(inPane).textPage.get(), index, &left, &right, &bottom, &top);
    const PanePoint point = pageToPane(inPane, (left + right) / 2, (bottom + top) / 2);
    const PixelRect rect = paneRect(inPane);
    return {rect.left + static_cast<int>(point.x), rect.top + static_cast<int>(point.y)};
  }

  static void drag(int from, int to) {
    const ClientPoint start = placeOf(from);
    const ClientPoint end = placeOf(to);
    startTextSelection(0, start.x, start.y);
    moveTextSelection(end.x, end.y);
    endTextSelection();
  }

  static std::u16string copied() {
    platform::standIn().clipboard.reset();
    copySelection();
    return platform::standIn().clipboard.value_or(u"nothing");
  }

  static void doubleClick(int index) {
    const ClientPoint place = placeOf(index);
    selectWordAt(0, place.x, place.y);
  }
};

TEST_F(SelectionTest, TheCharacterUnderThePointIsFound) {
  openText("Hello world");
  for (const int index : {0, 4, 10}) {
    const ClientPoint place = placeOf(index);
    EXPECT_EQ(charAtPoint(0, place.x, place.y), index);
  }
  EXPECT_EQ(charAtPoint(0, 5, 5), -1);
}

TEST_F(SelectionTest, TheCharacterIsFoundUnderEveryTurnAndInBothPanes) {
  for (const int degrees : {0, 90, 180, 270}) {
    resetSession();
    openText("Hello world", degrees);
    setViewMode(ViewMode::IndependentPages);
    for (std::uint32_t turns = 0; turns < 4; ++turns) {
      SCOPED_TRACE(testing::Message() << degrees << " " << turns);
      pane(1).documentRotation = turns;
      const ClientPoint place = placeOf(4, 1);
      EXPECT_EQ(charAtPoint(1, place.x, place.y), 4);
    }
  }
}

TEST_F(SelectionTest, TheReachIsTheSameInPixelsAtAnyZoom) {
  openText("I");
  double left = 0;
  double right = 0;
  double bottom = 0;
  double top = 0;
  FPDFText_GetCharBox(pane(0).textPage.get(), 0, &left, &right, &bottom, &top);
  for (const float zoom : {0.5f, 1.0f, 4.0f}) {
    SCOPED_TRACE(zoom);
    setView(0, zoom, 0.0f, 0.0f);
    const PanePoint edge = pageToPane(0, right, (bottom + top) / 2);
    const int y = static_cast<int>(edge.y);
    EXPECT_EQ(charAtPoint(0, static_cast<int>(edge.x) + 2, y), 0);
    EXPECT_EQ(charAtPoint(0, static_cast<int>(edge.x) + 5, y), -1);
  }
}

TEST_F(SelectionTest, WithoutATextPageThereAreNoCharacters) {
  openText("Hello world");
  const ClientPoint place = placeOf(3);
  pane(0).textPage.reset();
  EXPECT_EQ(charAtPoint(0, place.x, place.y), -1);
  EXPECT_EQ(textCursorAt(0, place.x, place.y), TextCursor::None);
}

TEST_F(SelectionTest, ADragSelectsFromThePressToThePointer) {
  openText("Hello world");
  drag(1, 4);
  EXPECT_TRUE(session.selection.active);
  EXPECT_FALSE(session.selection.dragging);
  EXPECT_EQ(session.selection.pane, 0);
  EXPECT_EQ(session.selection.anchorChar, 1);
  EXPECT_EQ(session.selection.endChar, 4);
  EXPECT_FALSE(window().mouseCaptured);
  EXPECT_EQ(copied(), u"ello");
}

TEST_F(SelectionTest, ADragBackwardsSelectsTheSameText) {
  openText("Hello world");
  drag(4, 1);
  EXPECT_LT(session.selection.endChar, session.selection.anchorChar);
  EXPECT_EQ(copied(), u"ello");
}

TEST_F(SelectionTest, ADragToTheFirstCharacterSelectsIt) {
  openText("Hello world");
  drag(3, 0);
  EXPECT_EQ(session.selection.endChar, 0);
  EXPECT_TRUE(hasTextSelection(0));
  EXPECT_EQ(copied(), u"Hell");
  EXPECT_EQ(selectionBoxes(0).size(), 1u);
}

TEST_F(SelectionTest, ADragFromTheFirstCharacterSelectsItToo) {
  openText("Hello world");
  drag(0, 3);
  EXPECT_TRUE(hasTextSelection(0));
  EXPECT_EQ(copied(), u"Hell");
}

TEST_F(SelectionTest, AClickSelectsNothing) {
  openText("Hello world");
  const ClientPoint place = placeOf(3);
  startTextSelection(0, place.x, place.y);
  EXPECT_TRUE(window().mouseCaptured);
  moveTextSelection(place.x, place.y);
  EXPECT_FALSE(session.selection.active);
  endTextSelection();
  EXPECT_FALSE(session.selection.active);
  EXPECT_EQ(copied(), u"nothing");
}

TEST_F(SelectionTest, ADragThatComesBackToItsCharacterSelectsNothing) {
  openText("Hello world");
  const ClientPoint start = placeOf(3);
  const ClientPoint away = placeOf(6);
  startTextSelection(0, start.x, start.y);
  moveTextSelection(away.x, away.y);
  EXPECT_TRUE(session.selection.active);
  moveTextSelection(start.x, start.y);
  endTextSelection();
  EXPECT_FALSE(session.selection.active);
  EXPECT_EQ(session.selection.pane, -1);
}

TEST_F(SelectionTest, ADragFromOutsideStartsAtTheFirstCharacterItMeets) {
  openText("Hello world");
  const ClientPoint first = placeOf(2);
  const ClientPoint last = placeOf(5);
  startTextSelection(0, 5, 5);
  EXPECT_EQ(session.selection.anchorChar, -1);
  moveTextSelection(first.x, first.y);
  EXPECT_EQ(session.selection.anchorChar, 2);
  moveTextSelection(last.x, last.y);
  moveTextSelection(5, 5);  // off the text: the end stays
  endTextSelection();
  EXPECT_EQ(copied(), u"llo ");
}

TEST_F(SelectionTest, ANewPressEndsTheSelection) {
  openText("Hello world");
  drag(1, 4);
  startTextSelection(0, 5, 5);
  EXPECT_FALSE(session.selection.active);
  endTextSelection();
  EXPECT_FALSE(session.selection.dragging);
}

TEST_F(SelectionTest, APressInAnEmptyPaneSelectsNothing) {
  startTextSelection(0, 50, 50);
  EXPECT_FALSE(session.selection.dragging);
  EXPECT_FALSE(window().mouseCaptured);
}

TEST_F(SelectionTest, ClearingWithoutASelectionRepaintsNothing) {
  clearTextSelection();
  EXPECT_EQ(window().invalidations, 0);
  openText("Hello world");
  drag(1, 4);
  window().invalidations = 0;
  clearTextSelection();
  EXPECT_EQ(window().invalidations, 1);
  EXPECT_EQ(session.selection.pane, -1);
  EXPECT_EQ(session.selection.endChar, -1);
}

TEST_F(SelectionTest, PageTurnsAndModeChangesEndIt) {
  openText("Hello world");
  drag(1, 4);
  goToPage(0, 1, false);
  EXPECT_FALSE(session.selection.active);
  drag(1, 4);
  setViewMode(ViewMode::IndependentPages);
  EXPECT_FALSE(session.selection.active);
}

TEST_F(SelectionTest, ADoubleClickSelectsTheWord) {
  openText("Some don't well-known snake_case 42nd end.");
  struct {
    int index;
    const char16_t* word;
  } const cases[] = {
      {0, u"Some"},        {6, u"don't"},       {8, u"don't"}, {15, u"well-known"},
      {24, u"snake_case"}, {27, u"snake_case"}, {34, u"42nd"}, {40, u"end"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.index);
    doubleClick(c.index);
    EXPECT_TRUE(hasTextSelection(0));
    EXPECT_EQ(copied(), c.word);
  }
}

TEST_F(SelectionTest, ADoubleClickOffAWordDoesNothing) {
  openText("Hello, world");
  drag(7, 9);
  doubleClick(5);  // the comma
  EXPECT_EQ(session.selection.anchorChar, 7);
  selectWordAt(0, 5, 5);
  EXPECT_EQ(session.selection.endChar, 9);
}

TEST_F(SelectionTest, ACurvedApostropheBelongsToItsWord) {
  PdfPage page;
  page.content = "BT /F1 24 Tf 72 400 Td (don\\222t stop) Tj ET";
  openAndShow(buildPdf({page}));
  ASSERT_EQ(FPDFText_GetUnicode(pane(0).textPage.get(), 3), 0x2019u);
  doubleClick(3);
  EXPECT_EQ(copied(), u"don\u2019t");
}

TEST_F(SelectionTest, SelectAllTakesTheCurrentPageAlone) {
  openText("Hello world");
  selectAll(0);
  EXPECT_EQ(session.selection.anchorChar, 0);
  EXPECT_EQ(session.selection.endChar, 10);
  EXPECT_EQ(copied(), u"Hello world");
}

TEST_F(SelectionTest, APageWithoutTextHasNothingToSelect) {
  openAndShow(buildPdf({PdfPage{}}));
  selectAll(0);
  EXPECT_FALSE(session.selection.active);
  EXPECT_EQ(textCursorAt(0, 300, 300), TextCursor::None);
  dropPaneView(0);
  selectAll(0);
  EXPECT_FALSE(session.selection.active);
}

TEST_F(SelectionTest, APageThatIsAPictureHasNothingToSelectAndShowsTheArrow) {
  PdfPage page;
  page.width = 600;
  page.height = 800;
  page.content = "q 500 0 0 700 50 50 cm BI /W 1 /H 1 /CS /G /BPC 8 ID \x80\nEI Q";
  openAndShow(buildPdf({page}));
  ASSERT_NE(pane(0).textPage, nullptr);
  ASSERT_EQ(FPDFPage_CountObjects(pane(0).page.get()), 1);
  selectAll(0);
  EXPECT_FALSE(session.selection.active);
  pressLeft(500, 389);
  movePointer(600, 450);
  releaseLeft(600, 450);
  EXPECT_FALSE(hasTextSelection(0));
  EXPECT_EQ(cursorAt(500, 389), CursorKind::Arrow);
}

// How far beside a character the pointer may be does not depend on the zoom, but on the screen.
TEST_F(SelectionTest, ACharacterIsHitFromAFewPixelsAway) {
  openText("Hello world");
  const struct {
    std::int32_t dpi;
    float zoom;
    double reach;  // pixels beside the character that still hit it
  } rows[] = {{96, 1, 3}, {96, 4, 3}, {144, 1, 4.5}, {144, 4, 4.5}};
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.dpi << " at " << row.zoom);
    session.dpi = row.dpi;
    setView(0, row.zoom, 0.0f, row.zoom > 1 ? -1200.0f : 0.0f);
    const ClientPoint place = placeOf(0);
    int hit = place.x;
    while (charAtPoint(0, hit - 1, place.y) == 0) --hit;
    double left = 0;
    double ignored = 0;
    FPDFText_GetCharBox(pane(0).textPage.get(), 0, &left, &ignored, &ignored, &ignored);
    const double reached = pageToPane(0, left, 0).x - hit;
    EXPECT_LE(reached, row.reach);
    EXPECT_GT(reached, row.reach - 1);
  }
}

TEST_F(SelectionTest, CopyNeedsASelectionWithBothEnds) {
  openText("Hello world");
  EXPECT_EQ(copied(), u"nothing");
  session.selection = {true, 0, -1, 4, false};
  EXPECT_EQ(copied(), u"nothing");
  EXPECT_FALSE(hasTextSelection(0));
  session.selection = {true, 0, 2, -1, false};
  EXPECT_EQ(copied(), u"nothing");
  session.selection = {true, 0, 2, 4, false};
  EXPECT_TRUE(hasTextSelection(0));
  EXPECT_FALSE(hasTextSelection(1));
  pane(0).textPage.reset();
  EXPECT_EQ(copied(), u"nothing");
}

TEST_F(SelectionTest, ABusyClipboardIsNoReasonToSpeak) {
  openText("Hello world");
  drag(1, 4);
  platform::standIn().clipboardBusy = true;
  copySelection();
  EXPECT_TRUE(platform::standIn().boxes.empty());
}

TEST_F(SelectionTest, SelectedTextIsCoveredUnderEveryTurn) {
  openText("Hello world");
  for (std::uint32_t turns = 0; turns < 4; ++turns) {
    SCOPED_TRACE(turns);
    pane(0).documentRotation = turns;
    session.selection = {true, 0, 4, 1, false};
    const std::vector<PaneBox> boxes = selectionBoxes(0);
    ASSERT_EQ(boxes.size(), 1u);
    const PaneBox& box = boxes[0];
    EXPECT_LT(box.left, box.right);
    EXPECT_LT(box.top, box.bottom);
    EXPECT_EQ(box.bottom - box.top > box.right - box.left, turns % 2 == 1);
    for (const int index : {1, 4}) {
      const ClientPoint place = placeOf(index);
      EXPECT_TRUE(place.x >= box.left && place.x <= box.right && place.y >= box.top &&
                  place.y <= box.bottom);
    }
    const ClientPoint outside = placeOf(8);
    EXPECT_FALSE(outside.x >= box.left && outside.x <= box.right && outside.y >= box.top &&
                 outside.y <= box.bottom);
  }
}

TEST_F(SelectionTest, OnlyThePaneOfTheSelectionIsCovered) {
  openText("Hello world");
  setViewMode(ViewMode::IndependentPages);
  session.selection = {true, 1, 1, 4, false};
  EXPECT_TRUE(selectionBoxes(0).empty());
  EXPECT_EQ(selectionBoxes(1).size(), 1u);
  session.selection.active = false;
  EXPECT_TRUE(selectionBoxes(1).empty());
}

TEST_F(SelectionTest, TheBeamFollowsTheTextsDirectionOnTheScreen) {
  PdfPage page;
  page.width = 600;
  page.height = 800;
  page.content =
      textContent("Across", 72, 400, 24) + "\nBT /F1 24 Tf 0 1 -1 0 300 500 Tm (Upwards) Tj ET";
  openAndShow(buildPdf({page}));
  setView(0, 1.0f, 0.0f, 0.0f);
  const int across = 1;
  const int upwards = FPDFText_CountChars(pane(0).textPage.get()) - 2;
  for (std::uint32_t turns = 0; turns < 4; ++turns) {
    SCOPED_TRACE(turns);
    pane(0).documentRotation = turns;
    const bool sideways = turns % 2 == 1;
    ClientPoint place = placeOf(across);
    EXPECT_EQ(textCursorAt(0, place.x, place.y),
              sideways ? TextCursor::Sideways : TextCursor::Beam);
    place = placeOf(upwards);
    EXPECT_EQ(textCursorAt(0, place.x, place.y),
              sideways ? TextCursor::Beam : TextCursor::Sideways);
  }
}

}  // namespace
}  // namespace quillmere::test
