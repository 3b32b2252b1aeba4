#include "session/changes.h"

#include <fpdf_annot.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "annot/markup_list.h"
#include "annot/text_dialog.h"
#include "documents/close.h"
#include "documents/modes.h"
#include "documents/open.h"
#include "documents/page_operations.h"
#include "documents/save_document.h"
#include "nav/find.h"
#include "nav/find_bar.h"
#include "support/opening_test.h"
#include "support/pdf_builder.h"
#include "view/navigation.h"
#include "view/panes.h"
#include "view/rotation.h"
#include "view/selection.h"
#include "view/zoom.h"

// What follows a change, in its order.
namespace quillmere::test {
namespace {

using platform::standIn;
using testing::ElementsAre;
using testing::IsEmpty;

class ChangesTest : public OpeningTest {
 protected:
  ChangesTest() {
    opened(u"a.pdf", 3);
    forget();
  }
  static void forget() { standIn().shown.clear(); }
  // On the second page, without a report.
  static void addMarkUnnoticed(FPDF_DOCUMENT document) {
    const PageHandle page(FPDF_LoadPage(document, 1));
    FPDFPage_CloseAnnot(FPDFPage_CreateAnnot(page.get(), FPDF_ANNOT_HIGHLIGHT));
  }
  static std::vector<std::string>& shown() { return standIn().shown; }
};

TEST_F(ChangesTest, APageTurnMovesTheHitsBeforeItRepaintsAndTellsTitleAndStatusLast) {
  OpenFindBar();
  standIn().findBar.field = u"Page";
  findFieldChanged();
  forget();
  goToPage(0, 1, false);
  EXPECT_THAT(shown(), ElementsAre("find status", "repaint", "title", "status bar"));
}

TEST_F(ChangesTest, APageTurnEndsTheSelectionBeforeItRepaints) {
  selectAll(0);
  ASSERT_TRUE(session.selection.active);
  goToPage(0, 1, false);
  EXPECT_FALSE(session.selection.active);
}

TEST_F(ChangesTest, AnotherActivePaneChangesStatusAndMenus) {
  setViewMode(ViewMode::IndependentPages);
  forget();
  activatePane(1);
  EXPECT_THAT(shown(), ElementsAre("status bar", "menus", "repaint"));
}

TEST_F(ChangesTest, InTwoDocumentsTheTreeFollowsTheActivePaneFirst) {
  setViewMode(ViewMode::TwoDocuments);
  forget();
  activatePane(1);
  EXPECT_THAT(shown(), ElementsAre("navigation tree", "status bar", "menus", "repaint"));
}

TEST_F(ChangesTest, InTwoDocumentsTheSearchEndsBeforeTheTreeFollows) {
  setViewMode(ViewMode::TwoDocuments);
  OpenFindBar();
  standIn().findBar.field = u"Page";
  findFieldChanged();
  ASSERT_FALSE(session.find.results.empty());
  forget();
  activatePane(1);
  EXPECT_TRUE(session.find.results.empty());
  EXPECT_THAT(shown(),
              ElementsAre("find status", "navigation tree", "status bar", "menus", "repaint"));
}

TEST_F(ChangesTest, HitsAreToldBeforeTheyArePainted) {
  OpenFindBar();
  standIn().findBar.field = u"Page";
  forget();
  hitsChanged();
  EXPECT_THAT(shown(), ElementsAre("find status", "repaint"));
}

TEST_F(ChangesTest, ASearchEndsVisiblyWithItsDocument) {
  OpenFindBar();
  standIn().findBar.field = u"Page";
  FindInDocument();
  ASSERT_FALSE(session.find.results.empty());
  forget();
  documentsLeaving();
  EXPECT_THAT(shown(), ElementsAre("find status", "repaint"));
  forget();
  documentsLeaving();
  EXPECT_THAT(shown(), IsEmpty());
}

TEST_F(ChangesTest, AModeChangeEndsWithMenusTitleStatusAndAFullRepaint) {
  setViewMode(ViewMode::Book);
  EXPECT_THAT(shown(), ElementsAre("menus", "title", "status bar", "repaint with erasing"));
}

TEST_F(ChangesTest, AModeChangeClosesAddTextFirst) {
  toggleTextDialog();
  forget();
  setViewMode(ViewMode::Book);
  EXPECT_FALSE(textDialogOpen());
  EXPECT_THAT(shown(), ElementsAre("repaint", "stamp panel", "menus", "title", "status bar",
                                   "repaint with erasing"));
}

TEST_F(ChangesTest, AnOpenPaintsThePageBeforeItReadsTheOutline) {
  opened(u"b.pdf", 2);
  EXPECT_THAT(shown(),
              ElementsAre("repaint", "title", "status bar", "pages painted", "navigation tree",
                          "menus", "title", "status bar", "repaint with erasing"));
}

TEST_F(ChangesTest, AnOpenIntoAPanePaintsThePageBeforeItReadsTheOutline) {
  setViewMode(ViewMode::TwoDocuments);
  forget();
  const std::u16string path = putPdf(u"b.pdf", simplePdf(2));
  EXPECT_TRUE(openDocument(&path, 0, kWorkingDocsLeaveAlone, false, nullptr));
  EXPECT_THAT(shown(),
              ElementsAre("repaint", "title", "status bar", "pages painted", "navigation tree",
                          "menus", "title", "status bar", "repaint with erasing"));
}

TEST_F(ChangesTest, ASavedDocumentIsShownAnewWithItsTreeFirst) {
  ASSERT_TRUE(SaveDocumentTo(0, pathOf(0)));
  EXPECT_THAT(shown(), ElementsAre("navigation tree", "menus", "title", "status bar",
                                   "repaint with erasing"));
}

TEST_F(ChangesTest, ASavedDocumentOfTheInactivePaneLeavesTheTree) {
  setViewMode(ViewMode::TwoDocuments);
  const std::u16string path = putPdf(u"b.pdf", simplePdf(2));
  EXPECT_TRUE(openDocument(&path, 1, kWorkingDocsLeaveAlone, false, nullptr));
  forget();
  ASSERT_TRUE(SaveDocumentTo(1, path));
  EXPECT_THAT(shown(), ElementsAre("menus", "title", "status bar", "repaint with erasing"));
}

TEST_F(ChangesTest, AFailedOpenShowsTheEmptyStateBeforeItsBox) {
  const std::u16string path = putPdf(u"bad.pdf", garbageFile());
  std::vector<std::string> before;
  standIn().boxAnswers = {platform::BoxAnswer::Ok};
  standIn().onBox = [&](const platform::ShownBox&) { before = shown(); };
  EXPECT_FALSE(open(path));
  EXPECT_THAT(before, ElementsAre("navigation tree", "menus", "title", "status bar",
                                  "repaint with erasing"));
}

TEST_F(ChangesTest, ACloseEmptiesTheTreeBeforeItTellsThatNothingIsOpen) {
  closeAllDocuments();
  EXPECT_THAT(shown(), ElementsAre("navigation tree", "menus", "title", "status bar",
                                   "repaint with erasing"));
}

TEST_F(ChangesTest, ATurnChangesStatusAndPicture) {
  rotateDocument(0);
  EXPECT_THAT(shown(), ElementsAre("status bar", "repaint"));
}

TEST_F(ChangesTest, AZoomChecksCustomFitBeforeItTellsTheZoom) {
  zoomIn(0);
  EXPECT_THAT(shown(), ElementsAre("menus", "status bar", "repaint"));
  forget();
  zoomIn(0);
  EXPECT_THAT(shown(), ElementsAre("status bar", "repaint"));
}

TEST_F(ChangesTest, NewPaneSizesChangeStatusAndRepaintEverything) {
  refitPanes();
  EXPECT_THAT(shown(), ElementsAre("status bar", "repaint with erasing"));
}

TEST_F(ChangesTest, AMarkupBringsTheShownListAndTreeUpToDateBeforeItRepaints) {
  session.navigationPanelVisible = true;
  outlineChanged();
  const FPDF_DOCUMENT document = documentOf(0);
  addMarkUnnoticed(document);
  forget();
  markupsChanged(document, 1);
  EXPECT_EQ(session.markupList.size(), 1u);
  EXPECT_THAT(shown(), ElementsAre("navigation rows", "repaint"));
}

TEST_F(ChangesTest, ThePageIsPaintedBeforeTheRowsOfItsMarkups) {
  const FPDF_DOCUMENT document = documentOf(0);
  session.markupTree.shown = true;
  markupsOf(document);
  addMarkUnnoticed(document);
  standIn().window.paintsLater = true;
  forget();
  markupsChanged(document, 0);
  markupsChanged(document, 1);
  EXPECT_THAT(shown(), ElementsAre("repaint"));
  EXPECT_EQ(standIn().window.afterPainting.size(), 1u);
  standIn().window.paintNow();
  EXPECT_THAT(shown(), ElementsAre("repaint", "navigation rows"));
}

TEST_F(ChangesTest, MarkupsThatChangedAnywhereAreCollectedAgain) {
  const FPDF_DOCUMENT document = documentOf(0);
  session.markupTree.shown = true;
  markupsOf(document);
  session.markupMenuAnnot = 3;
  addMarkUnnoticed(document);
  allMarkupsChanged(document);
  EXPECT_EQ(session.markupTree.nodes.size(), 1u);
  EXPECT_EQ(session.markupMenuAnnot, -1);
}

TEST_F(ChangesTest, MarkupsThatChangedAnywhereAreRepaintedBeforeTheirRowsFollow) {
  const FPDF_DOCUMENT document = documentOf(0);
  session.markupTree.shown = true;
  markupsOf(document);
  addMarkUnnoticed(document);
  standIn().window.paintsLater = true;
  forget();
  allMarkupsChanged(document);
  EXPECT_THAT(shown(), ElementsAre("repaint"));
  standIn().window.paintNow();
  EXPECT_THAT(shown(), ElementsAre("repaint", "navigation rows"));
}

TEST_F(ChangesTest, ADeletedPageIsSeenBeforeTheOutlineIsRead) {
  deletePage(0);
  EXPECT_THAT(shown(), ElementsAre("repaint", "title", "status bar", "menus", "title", "status bar",
                                   "repaint", "pages painted", "navigation tree"));
}

TEST_F(ChangesTest, InsertedPagesAreSeenBeforeTheOutlineIsRead) {
  insertPages(loadDocument(simplePdf(2)), 1);
  EXPECT_THAT(shown(), ElementsAre("repaint", "title", "status bar", "menus", "title", "status bar",
                                   "repaint", "pages painted", "navigation tree"));
}

TEST_F(ChangesTest, ChangedBindersAreShownFromTheMessageLoop) {
  bindersChanged();
  EXPECT_THAT(shown(), IsEmpty());
  EXPECT_EQ(standIn().window.binderTreeRebuildsPosted, 1);
}

TEST_F(ChangesTest, AMarkupBeforeTheGroupWasShownOnlyRepaints) {
  markupsChanged(documentOf(0), 1);
  EXPECT_THAT(shown(), ElementsAre("repaint"));
}

TEST_F(ChangesTest, AChangedPlacementForgetsThePickedMarkupAndRepaints) {
  session.markupMenuPage = 0;
  session.markupMenuAnnot = 3;
  placementsChanged(documentOf(0));
  EXPECT_EQ(session.markupMenuAnnot, -1);
  EXPECT_THAT(shown(), ElementsAre("repaint"));
}

TEST_F(ChangesTest, AnOpenPaintsThePageBeforeItReadsPlacements) {
  standIn().window.paintsLater = true;
  opened(u"b.pdf", 2);
  EXPECT_EQ(session.placementDocument, nullptr);
  standIn().window.paintNow();
  EXPECT_EQ(session.placementDocument, documentOf(0));
}

#ifndef NDEBUG
TEST_F(ChangesTest, AChangeReportedWhileOneIsFollowedUpIsAnErrorOfTheProgram) {
  // This fills the status bar at once, so filling it can report a change.
  EXPECT_DEATH(
      {
        standIn().onStatusFilled = [] { pictureChanged(); };
        zoomChanged();
      },
      "");
}
#endif

}  // namespace
}  // namespace quillmere::test
