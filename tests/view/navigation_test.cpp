#include "view/navigation.h"

#include <fpdf_edit.h>

#include "documents/modes.h"
#include "view/geometry.h"
#include "view/view_test.h"

namespace quillmere::test {
namespace {

class NavigationTest : public ViewTest {
 protected:
  // Ten pages that are taller than the pane at Fit Width.
  void openTen() {
    openAndShow(simplePdf(10, 400, 600));
    pane(0).zoomMode = kFitWidth;
    goToPage(0, 3, false);
  }

  void openBook(int pages) {
    openAndShow(simplePdf(pages, 400, 600));
    setViewMode(ViewMode::Book);
  }
};

TEST_F(NavigationTest, GoingForwardLandsOnTopAndBackOnTheBottom) {
  openTen();
  goToPage(0, 4, false);
  EXPECT_EQ(pane(0).currentPage, 4);
  EXPECT_FLOAT_EQ(pane(0).panY, 8.0f);
  goToPage(0, 3, true);
  EXPECT_EQ(pane(0).currentPage, 3);
  EXPECT_NEAR(pane(0).panY, -670.0f, 1e-3f);  // 778 - 1440 - 8
}

TEST_F(NavigationTest, KeysTurnPages) {
  struct {
    PageKey key;
    std::int32_t page;
    bool onBottom;
  } const cases[] = {
      {PageKey::PageUp, 2, true},
      {PageKey::PageDown, 4, false},
      {PageKey::Home, 0, false},
      {PageKey::End, 9, false},
  };
  for (const auto& c : cases) {
    resetSession();
    openTen();
    turnPageByKey(0, c.key);
    EXPECT_EQ(pane(0).currentPage, c.page);
    EXPECT_EQ(pane(0).panY < 0, c.onBottom);
  }
}

TEST_F(NavigationTest, TurnsStopAtTheEndsOfTheDocument) {
  openTen();
  turnPageByKey(0, PageKey::End);
  const auto* bitmap = pane(0).pageBitmap.get();
  const auto page = pane(0).page.get();
  turnPageByKey(0, PageKey::PageDown);
  EXPECT_EQ(pane(0).currentPage, 9);
  EXPECT_EQ(pane(0).pageBitmap.get(), bitmap);
  EXPECT_EQ(pane(0).page.get(), page);
  goToPage(0, -7, true);
  EXPECT_EQ(pane(0).currentPage, 0);
}

TEST_F(NavigationTest, ATurnToTheShownPageDoesNothing) {
  openTen();
  pane(0).panY = -123.0f;
  window().invalidations = 0;
  goToPage(0, 3, false);
  EXPECT_FLOAT_EQ(pane(0).panY, -123.0f);
  EXPECT_EQ(window().invalidations, 0);
}

TEST_F(NavigationTest, ATurnShowsTheNewPageEverywhere) {
  openTen();
  session.selection = {true, 0, 1, 4, false};
  window().invalidations = 0;
  goToPage(0, 4, false);
  EXPECT_FALSE(session.selection.active);
  EXPECT_EQ(window().title, u"Quillmere - active.pdf");
  EXPECT_EQ(window().statusTexts[2], u"\t\tPage 5 of 10  ");
  EXPECT_GT(window().invalidations, 0);
  EXPECT_EQ(window().erasingInvalidations, 0);
  EXPECT_NE(pane(0).pageBitmap, nullptr);
  EXPECT_NE(pane(0).textPage, nullptr);
}

TEST_F(NavigationTest, WithoutADocumentNothingTurnsOrPans) {
  for (const auto mode :
       {ViewMode::SinglePage, ViewMode::Book, ViewMode::IndependentPages, ViewMode::TwoDocuments}) {
    session.viewMode = mode;
    session.panScrollEnabled = true;
    goToPage(0, 5, false);
    goToPage(1, 5, false);
    turnPageByKey(0, PageKey::End);
    panByKey(0, ArrowKey::Down);
    handleWheel(0, 0, 120, 10, 10);
    EXPECT_EQ(pane(0).currentPage, 0);
    EXPECT_FLOAT_EQ(pane(0).panX, 0.0f);
    EXPECT_FLOAT_EQ(pane(0).panY, 0.0f);
    EXPECT_FALSE(panScrollTurn(0));
  }
}

TEST_F(NavigationTest, APageThatCannotBeLoadedShowsNothingAndCanBeLeft) {
  openInActive(pdfWithBrokenPage(3, 1));
  show(0, 0);
  turnPageByKey(0, PageKey::PageDown);
  EXPECT_EQ(pane(0).currentPage, 1);
  EXPECT_EQ(pane(0).page, nullptr);
  EXPECT_EQ(pane(0).pageBitmap, nullptr);
  session.settings.wheelActions[0] = WheelAction::PageTurn;
  handleWheel(0, 0, -120, 10, 10);
  EXPECT_EQ(pane(0).currentPage, 2);
  EXPECT_NE(pane(0).page, nullptr);
}

TEST_F(NavigationTest, TheLastPageNumberFollowsTheModesDocument) {
  openInActive(simplePdf(4));
  EXPECT_EQ(lastPage(0), 4);
  openInPane(0, simplePdf(2));
  openInPane(1, simplePdf(7));
  EXPECT_EQ(lastPage(0), 2);
  EXPECT_EQ(lastPage(1), 7);
}

TEST_F(NavigationTest, IndependentPagesTurnAlone) {
  openAndShow(simplePdf(10));
  setViewMode(ViewMode::IndependentPages);
  goToPage(1, 6, false);
  EXPECT_EQ(pane(0).currentPage, 0);
  EXPECT_EQ(pane(1).currentPage, 6);
}

TEST_F(NavigationTest, BookTurnsBothPanesFromEitherSide) {
  openBook(10);
  goToPage(0, 4, false);
  EXPECT_EQ(pane(0).currentPage, 4);
  EXPECT_EQ(pane(1).currentPage, 5);
  goToPage(1, 8, false);
  EXPECT_EQ(pane(0).currentPage, 7);
  EXPECT_EQ(pane(1).currentPage, 8);
  EXPECT_NE(pane(1).pageBitmap, nullptr);
}

TEST_F(NavigationTest, BookStopsWithTheLastTwoPages) {
  openBook(10);
  for (const int from : {0, 1}) {
    turnPageByKey(from, PageKey::End);
    EXPECT_EQ(pane(0).currentPage, 8);
    EXPECT_EQ(pane(1).currentPage, 9);
    turnPageByKey(from, PageKey::PageDown);
    EXPECT_EQ(pane(0).currentPage, 8);
    turnPageByKey(from, PageKey::Home);
    EXPECT_EQ(pane(0).currentPage, 0);
    EXPECT_EQ(pane(1).currentPage, 1);
  }
}

TEST_F(NavigationTest, ABookOfOnePageHasNothingOnTheRight) {
  openBook(1);
  goToPage(0, 5, false);
  EXPECT_EQ(pane(0).currentPage, 0);
  EXPECT_NE(pane(0).pageBitmap, nullptr);
  EXPECT_EQ(pane(1).page, nullptr);
  EXPECT_EQ(pane(1).pageBitmap, nullptr);
}

TEST_F(NavigationTest, ATurnInABookReloadsTheShownPage) {
  openBook(10);
  for (const bool revert : {false, true}) {
    session.settings.bookRevertToFit = revert;
    setView(0, 2.0f, 5.0f, -100.0f);
    goToPage(0, 0, false);
    EXPECT_EQ(pane(0).zoomMode, revert ? kFitPage : kCustomFit);
    EXPECT_FLOAT_EQ(pane(0).panY, revert ? pane(0).panY : 8.0f);
    EXPECT_EQ(pane(0).zoom == 2.0f, !revert);
  }
}

TEST_F(NavigationTest, EveryTurnInABookRevertsToFitPageWhenSet) {
  openBook(10);
  setView(0, 2.0f, 0.0f, 0.0f);
  setView(1, 3.0f, 0.0f, 0.0f);
  goToPage(0, 2, false);
  EXPECT_EQ(pane(0).zoomMode, kFitPage);
  EXPECT_EQ(pane(1).zoomMode, kFitPage);
  EXPECT_FLOAT_EQ(pane(0).zoom, 1.2f);     // 500 / 400 * 0.96
  EXPECT_FLOAT_EQ(pane(1).zoom, 1.1952f);  // 498 / 400 * 0.96
  session.settings.bookRevertToFit = false;
  setView(0, 2.0f, 0.0f, 0.0f);
  goToPage(0, 4, false);
  EXPECT_EQ(pane(0).zoomMode, kCustomFit);
  EXPECT_FLOAT_EQ(pane(0).zoom, 2.0f);
}

TEST_F(NavigationTest, ATurnBeyondTheEndOfABookRevertsToFitPageToo) {
  openBook(10);
  for (const int from : {0, 1}) {
    turnPageByKey(from, PageKey::End);
    setView(0, 2.0f, 0.0f, 0.0f);
    setView(1, 3.0f, 0.0f, 0.0f);
    turnPageByKey(from, PageKey::PageDown);
    EXPECT_EQ(pane(0).currentPage, 8);
    EXPECT_EQ(pane(0).zoomMode, kFitPage);
    EXPECT_EQ(pane(1).zoomMode, kFitPage);
    EXPECT_FLOAT_EQ(pane(0).zoom, 1.2f);  // 500 / 400 * 0.96
  }
}

TEST_F(NavigationTest, GoingBackInABookLandsBothPagesOnTheBottom) {
  openBook(10);
  session.settings.bookRevertToFit = false;
  goToPage(0, 4, false);
  setView(0, 2.0f, 0.0f, 0.0f);
  setView(1, 2.0f, 0.0f, 0.0f);
  turnPageByKey(1, PageKey::PageUp);
  EXPECT_EQ(pane(0).currentPage, 3);
  EXPECT_FLOAT_EQ(pane(0).panY, -430.0f);  // 778 - 1200 - 8
  EXPECT_FLOAT_EQ(pane(1).panY, -430.0f);
}

TEST_F(NavigationTest, ArrowsMoveThePageByAFixedStep) {
  openTen();
  struct {
    ArrowKey key;
    float x, y;
  } const cases[] = {
      {ArrowKey::Left, 60, 0},
      {ArrowKey::Right, -60, 0},
      {ArrowKey::Up, 0, 60},
      {ArrowKey::Down, 0, -60},
  };
  for (const auto& c : cases) {
    setView(0, 2.4f, -100.0f, -200.0f);
    const auto* bitmap = pane(0).pageBitmap.get();
    window().invalidations = 0;
    panByKey(0, c.key);
    EXPECT_FLOAT_EQ(pane(0).panX, -100.0f + c.x);
    EXPECT_FLOAT_EQ(pane(0).panY, -200.0f + c.y);
    EXPECT_EQ(pane(0).pageBitmap.get(), bitmap);
    EXPECT_EQ(window().invalidations, 1);
  }
}

TEST_F(NavigationTest, ArrowsStopWhereALittleOfThePageIsLeft) {
  openTen();
  setView(0, 1.0f, 900.0f, 680.0f);
  panByKey(0, ArrowKey::Left);
  panByKey(0, ArrowKey::Up);
  EXPECT_FLOAT_EQ(pane(0).panX, 920.0f);
  EXPECT_FLOAT_EQ(pane(0).panY, 698.0f);
}

class PanScrollTest : public NavigationTest {
 protected:
  PanScrollTest() {
    openTen();
    session.panScrollEnabled = true;
    setView(0, 1.0f, 33.0f, 0.0f);  // a bitmap of 400 by 600 in a pane of 1000 by 778
  }
};

TEST_F(PanScrollTest, APageWhoseEndHasRisenToTheTopFifthGivesWayToTheNext) {
  pane(0).panY = -444.0f;  // its bottom is at 156, the fifth ends at 155.6
  EXPECT_FALSE(panScrollTurn(0));
  pane(0).panY = -444.5f;
  EXPECT_TRUE(panScrollTurn(0));
  EXPECT_EQ(pane(0).currentPage, 4);
  EXPECT_FLOAT_EQ(pane(0).panY, 583.5f);  // three quarters of 778
  EXPECT_FLOAT_EQ(pane(0).panX, 33.0f);
}

TEST_F(PanScrollTest, APageWhoseTopHasSunkToTheBottomFifthGivesWayToTheOneBefore) {
  pane(0).panY = 622.0f;
  EXPECT_FALSE(panScrollTurn(0));
  pane(0).panY = 622.5f;
  EXPECT_TRUE(panScrollTurn(0));
  EXPECT_EQ(pane(0).currentPage, 2);
  EXPECT_FLOAT_EQ(pane(0).panY, -405.5f);  // its bottom is at a quarter of 778
}

TEST_F(PanScrollTest, TheZoomStaysEvenInFitPage) {
  pane(0).zoomMode = kFitPage;
  pane(0).panY = 700.0f;
  ASSERT_TRUE(panScrollTurn(0));
  EXPECT_FLOAT_EQ(pane(0).zoom, 1.0f);
  EXPECT_EQ(pane(0).zoomMode, kFitPage);
  EXPECT_EQ(pane(0).pageBitmapHeight, 600);
}

TEST_F(PanScrollTest, ATurnShowsTheNewPageEverywhere) {
  session.selection = {true, 0, 1, 4, false};
  pane(0).panY = 700.0f;
  ASSERT_TRUE(panScrollTurn(0));
  EXPECT_FALSE(session.selection.active);
  EXPECT_EQ(window().statusTexts[2], u"\t\tPage 3 of 10  ");
}

TEST_F(PanScrollTest, ATurnToAPageThatIsNotThereShowsItsNumberAndNothingOfTheOneBefore) {
  session.selection = {true, 0, 1, 4, false};
  while (FPDF_GetPageCount(documentOf(0)) > 4) FPDFPage_Delete(documentOf(0), 4);
  pane(0).panY = -500.0f;
  ASSERT_TRUE(panScrollTurn(0));
  EXPECT_EQ(pane(0).page, nullptr);
  EXPECT_FALSE(session.selection.active);
  EXPECT_EQ(window().statusTexts[2], u"\t\tPage 5 of 10  ");
}

TEST_F(PanScrollTest, NothingPrecedesTheFirstPageOrFollowsTheLast) {
  show(0, 0);
  setView(0, 1.0f, 0.0f, 690.0f);
  panByKey(0, ArrowKey::Up);
  EXPECT_EQ(pane(0).currentPage, 0);
  EXPECT_FLOAT_EQ(pane(0).panY, 698.0f);
  show(0, 9);
  setView(0, 1.0f, 0.0f, -510.0f);
  panByKey(0, ArrowKey::Down);
  EXPECT_EQ(pane(0).currentPage, 9);
  EXPECT_FLOAT_EQ(pane(0).panY, -520.0f);
}

TEST_F(PanScrollTest, TheTurnComesBeforeTheLimit) {
  // In a pane 300 pixels high the limits keep more of the page than the thresholds leave.
  window().client.height = 322;
  setView(0, 1.0f, 0.0f, -500.0f);
  panByKey(0, ArrowKey::Down);  // to -560; the threshold is -540, the limit -520
  EXPECT_EQ(pane(0).currentPage, 4);
  setView(0, 1.0f, 0.0f, 200.0f);
  panByKey(0, ArrowKey::Up);  // to 260; the threshold is 240, the limit 220
  EXPECT_EQ(pane(0).currentPage, 3);
}

TEST_F(PanScrollTest, ItNeverRunsInABookNorWhenOffNorSideways) {
  setView(0, 1.0f, 0.0f, 700.0f);
  panByKey(0, ArrowKey::Left);
  EXPECT_EQ(pane(0).currentPage, 3);
  session.panScrollEnabled = false;
  EXPECT_FALSE(panScrollTurn(0));
  session.panScrollEnabled = true;
  setViewMode(ViewMode::Book);
  setView(0, 1.0f, 0.0f, 700.0f);
  EXPECT_FALSE(panScrollTurn(0));
}

TEST_F(PanScrollTest, WithoutPageOrBitmapItDoesNotRun) {
  pane(0).panY = 700.0f;
  freePaneBitmap(0);
  EXPECT_FALSE(panScrollTurn(0));
  closePanePage(0);
  EXPECT_FALSE(panScrollTurn(0));
}

TEST_F(PanScrollTest, ATurnedPageIsPlacedByItsTurnedHeight) {
  session.active.pageRotations[2] = 1;
  pane(0).panY = 700.0f;
  ASSERT_TRUE(panScrollTurn(0));
  EXPECT_FLOAT_EQ(pane(0).panY, -205.5f);  // 194.5 - 400
}

TEST_F(PanScrollTest, APageThatCannotBeLoadedLeavesTheBackground) {
  resetSession();
  session.panScrollEnabled = true;
  openInActive(pdfWithBrokenPage(3, 1));
  show(0, 0);
  setView(0, 1.0f, 0.0f, -500.0f);
  EXPECT_TRUE(panScrollTurn(0));
  EXPECT_EQ(pane(0).page, nullptr);
  EXPECT_EQ(pane(0).pageBitmap, nullptr);
}

}  // namespace
}  // namespace quillmere::test
