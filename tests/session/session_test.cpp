#include "session/session.h"

#include <fpdf_edit.h>
#include <gtest/gtest.h>

#include "documents/document_loader.h"
#include "support/pdf_builder.h"
#include "support/session_test.h"

namespace quillmere::test {
namespace {

constexpr ViewMode kSharedModes[] = {ViewMode::SinglePage, ViewMode::Book,
                                     ViewMode::IndependentPages};

class SessionStateTest : public SessionTest {};

// A page tree whose second page is missing.
std::string pdfWithUnreadablePage() {
  PdfFile file;
  const int catalog = file.reserve();
  const int tree = file.reserve();
  const int page = file.add("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] >>");
  const int missing = file.add("null");
  file.set(catalog, "<< /Type /Catalog /Pages 2 0 R >>");
  file.set(tree, "<< /Type /Pages /Count 2 /Kids [" + PdfFile::reference(page) + " " +
                     PdfFile::reference(missing) + "] >>");
  return file.finish(catalog);
}

Placement pendingPlacement() {
  return {};
}

Placement writtenPlacement(std::int32_t annotIndex) {
  Placement placement;
  placement.annotIndex = annotIndex;
  return placement;
}

void expectRestingView(const PaneSlot& slot) {
  EXPECT_EQ(slot.currentPage, 0);
  EXPECT_EQ(slot.zoom, 1.0f);
  EXPECT_EQ(slot.panX, 0);
  EXPECT_EQ(slot.panY, 0);
  EXPECT_EQ(slot.zoomMode, kFitPage);
  EXPECT_EQ(slot.documentRotation, 0u);
  EXPECT_TRUE(slot.pageRotations.empty());
  EXPECT_FALSE(slot.shiftPan);
  EXPECT_EQ(slot.pageBitmap, nullptr);
  EXPECT_EQ(slot.pageBitmapWidth, 0);
  EXPECT_EQ(slot.pageBitmapHeight, 0);
}

void expectNothingOpenIn(const PaneSlot& slot) {
  EXPECT_EQ(slot.document, nullptr);
  EXPECT_EQ(slot.page, nullptr);
  EXPECT_EQ(slot.textPage, nullptr);
  EXPECT_EQ(slot.pageCount, 0);
  EXPECT_EQ(slot.path, u"");
  EXPECT_FALSE(slot.dirty);
  EXPECT_TRUE(slot.backHistory.empty());
  EXPECT_TRUE(slot.forwardHistory.empty());
}

TEST_F(SessionStateTest, AFreshSessionIsASinglePageWithNothingOpen) {
  EXPECT_FALSE(session.viewerRole);
  EXPECT_TRUE(session.ownsPrimaryName);
  EXPECT_EQ(session.documentWork, 0);
  EXPECT_TRUE(session.waitingOpens.empty());
  EXPECT_EQ(session.viewMode, ViewMode::SinglePage);
  EXPECT_EQ(session.activePane, 0);
  EXPECT_TRUE(session.documentKeptBuffer.empty());
  for (const PaneSlot& slot : session.panes) {
    expectRestingView(slot);
    expectNothingOpenIn(slot);
  }
  EXPECT_EQ(session.active.document, nullptr);
  EXPECT_EQ(session.active.pageCount, 0);
  EXPECT_EQ(session.active.path, u"");
  EXPECT_FALSE(session.active.dirty);
  EXPECT_TRUE(session.active.pageRotations.empty());
  EXPECT_FALSE(hasUnsavedChanges());
}

TEST_F(SessionStateTest, AFreshSessionHasNothingSelectedFoundOrPlaced) {
  EXPECT_TRUE(session.placements.empty());
  EXPECT_EQ(session.placementDocument, nullptr);
  EXPECT_EQ(session.selectedPlacementPage, -1);
  EXPECT_EQ(session.selectedPlacementIndex, -1);
  EXPECT_TRUE(session.documentBinders.empty());
  EXPECT_TRUE(session.bookmarks.empty());
  EXPECT_TRUE(session.bookmarkOrder.empty());
  EXPECT_FALSE(session.selection.active);
  EXPECT_FALSE(session.selection.dragging);
  EXPECT_EQ(session.selection.pane, -1);
  EXPECT_EQ(session.find.query, u"");
  EXPECT_TRUE(session.find.results.empty());
  EXPECT_EQ(session.find.currentIndex, -1);
  EXPECT_FALSE(session.find.regexMode || session.find.matchCase || session.find.wholeWord);
  EXPECT_TRUE(session.binderLibrary.empty());
  EXPECT_TRUE(session.shelfIndex.empty());
  EXPECT_TRUE(session.unavailableFiles.empty());
}

TEST_F(SessionStateTest, AFreshSessionHasBarePanesWithACentredDivider) {
  EXPECT_FALSE(session.panScrollEnabled);
  EXPECT_FALSE(session.navigationPanelVisible);
  EXPECT_FALSE(session.binderPanelVisible);
  EXPECT_FALSE(session.stampPanelVisible);
  EXPECT_FALSE(session.findBarVisible);
  EXPECT_EQ(session.paneDividerPosition, 0);
  EXPECT_EQ(session.leftPanelWidth, 190);
  EXPECT_EQ(session.stampPanelWidth, 180);
  EXPECT_EQ(session.leftPanelSplit, 0.5f);
  EXPECT_EQ(session.dpi, 96);
  EXPECT_FALSE(session.bookOverrideActive);
  for (int pane : {0, 1}) {
    EXPECT_EQ(session.lastPaneWidth[pane], -1);
    EXPECT_EQ(session.bookOverrideZoom[pane], 1.0f);
    EXPECT_EQ(session.bookOverrideZoomMode[pane], kFitPage);
    EXPECT_TRUE(session.bookOverridePane[pane].empty());
    EXPECT_TRUE(session.placeholderRect[pane].empty());
  }
}

TEST_F(SessionStateTest, WithoutADocumentEveryModeHasNone) {
  for (ViewMode mode :
       {ViewMode::SinglePage, ViewMode::Book, ViewMode::IndependentPages, ViewMode::TwoDocuments}) {
    session.viewMode = mode;
    for (int pane : {0, 1}) {
      EXPECT_EQ(documentOf(pane), nullptr);
      EXPECT_EQ(pageCountOf(pane), 0);
      EXPECT_EQ(pathOf(pane), u"");
      EXPECT_FALSE(dirtyOf(pane));
      EXPECT_TRUE(pageRotationsOf(pane).empty());
      loadPane(pane, 3);
      EXPECT_EQ(session.panes[pane].currentPage, 0);
      EXPECT_EQ(session.panes[pane].page, nullptr);
    }
    EXPECT_FALSE(hasUnsavedChanges());
  }
}

TEST_F(SessionStateTest, BothPanesShareTheDocumentOutsideTwoDocuments) {
  const FPDF_DOCUMENT document = openInActive(simplePdf(2), u"C:\\one.pdf");
  session.panes[1].path = u"C:\\left over.pdf";
  session.panes[1].pageCount = 99;
  for (ViewMode mode : kSharedModes) {
    session.viewMode = mode;
    for (int pane : {0, 1}) {
      EXPECT_EQ(documentOf(pane), document);
      EXPECT_EQ(pageCountOf(pane), 2);
      EXPECT_EQ(pathOf(pane), u"C:\\one.pdf");
      EXPECT_EQ(&dirtyOf(pane), &session.active.dirty);
      EXPECT_EQ(&pageRotationsOf(pane), &session.active.pageRotations);
    }
  }
}

TEST_F(SessionStateTest, EachPaneOwnsItsDocumentInTwoDocuments) {
  const FPDF_DOCUMENT left = openInPane(0, simplePdf(2), u"C:\\left.pdf");
  const FPDF_DOCUMENT right = openInPane(1, simplePdf(3), u"C:\\right.pdf");
  session.active.path = u"C:\\left over.pdf";
  EXPECT_EQ(documentOf(0), left);
  EXPECT_EQ(documentOf(1), right);
  EXPECT_EQ(pageCountOf(0), 2);
  EXPECT_EQ(pageCountOf(1), 3);
  EXPECT_EQ(pathOf(0), u"C:\\left.pdf");
  EXPECT_EQ(pathOf(1), u"C:\\right.pdf");
  for (int pane : {0, 1}) {
    EXPECT_EQ(&dirtyOf(pane), &session.panes[pane].dirty);
    EXPECT_EQ(&pageRotationsOf(pane), &session.panes[pane].pageRotations);
  }
}

TEST_F(SessionStateTest, TheDirtyFlagIsAnUnsavedChange) {
  openInActive(simplePdf(1));
  EXPECT_FALSE(hasUnsavedChanges());
  session.active.dirty = true;
  EXPECT_TRUE(hasUnsavedChanges());
}

TEST_F(SessionStateTest, OnlyTheActivePanesDocumentCountsInTwoDocuments) {
  openInPane(0, simplePdf(1));
  openInPane(1, simplePdf(1));
  session.panes[1].dirty = true;
  EXPECT_FALSE(hasUnsavedChanges());
  session.activePane = 1;
  EXPECT_TRUE(hasUnsavedChanges());
}

TEST_F(SessionStateTest, AStaleDirtyFlagOfAPaneIsNotConsultedOutsideTwoDocuments) {
  openInActive(simplePdf(1));
  session.panes[0].dirty = true;
  EXPECT_FALSE(hasUnsavedChanges());
}

TEST_F(SessionStateTest, APendingPlacementIsAnUnsavedChange) {
  session.placementDocument = openInActive(simplePdf(2));
  session.placements[1] = {writtenPlacement(0), writtenPlacement(3)};
  EXPECT_FALSE(hasUnsavedChanges());
  session.placements[1].push_back(pendingPlacement());
  EXPECT_TRUE(hasUnsavedChanges());
}

TEST_F(SessionStateTest, AnAnnotationIndexBelowMinusOneIsAlsoPending) {
  session.placementDocument = openInActive(simplePdf(1));
  session.placements[0] = {writtenPlacement(-2)};
  EXPECT_TRUE(hasUnsavedChanges());
}

TEST_F(SessionStateTest, PlacementsOfAnotherDocumentDoNotCount) {
  openInPane(0, simplePdf(1));
  session.placementDocument = openInPane(1, simplePdf(1));
  session.placements[0] = {pendingPlacement()};
  EXPECT_FALSE(hasUnsavedChanges());
  session.activePane = 1;
  EXPECT_TRUE(hasUnsavedChanges());
}

TEST_F(SessionStateTest, ARotationOfEitherPaneCountsWhereThePanesShareADocument) {
  openInActive(simplePdf(2));
  for (ViewMode mode : kSharedModes) {
    session.viewMode = mode;
    for (int rotated : {0, 1}) {
      for (int active : {0, 1}) {
        session.panes[rotated].documentRotation = 3;
        session.activePane = active;
        EXPECT_TRUE(hasUnsavedChanges());
        session.panes[rotated].documentRotation = 0;
        EXPECT_FALSE(hasUnsavedChanges());
      }
    }
  }
}

TEST_F(SessionStateTest, ARotationOfTheOtherPaneDoesNotCountInTwoDocuments) {
  openInPane(0, simplePdf(1));
  openInPane(1, simplePdf(1));
  session.panes[1].documentRotation = 1;
  EXPECT_FALSE(hasUnsavedChanges());
  session.panes[1].documentRotation = 0;
  session.panes[1].pageRotations[0] = 1;
  EXPECT_FALSE(hasUnsavedChanges());
  session.activePane = 1;
  EXPECT_TRUE(hasUnsavedChanges());
}

TEST_F(SessionStateTest, PageRotationsCountInTheRecordOfTheMode) {
  openInActive(simplePdf(3));
  session.panes[0].pageRotations[1] = 1;
  EXPECT_FALSE(hasUnsavedChanges());
  EXPECT_FALSE(anyPageRotationPending(0));
  session.active.pageRotations[2] = 2;
  EXPECT_TRUE(hasUnsavedChanges());
  EXPECT_TRUE(anyPageRotationPending(0));
  EXPECT_TRUE(anyPageRotationPending(1));
}

TEST_F(SessionStateTest, OldPageRotationsOfTheSingleDocumentDoNotCountInTwoDocuments) {
  openInPane(0, simplePdf(1));
  session.active.pageRotations[0] = 1;
  EXPECT_FALSE(hasUnsavedChanges());
  EXPECT_FALSE(anyPageRotationPending(0));
}

TEST_F(SessionStateTest, FourQuarterTurnsAreNoRotation) {
  openInActive(simplePdf(1));
  session.active.pageRotations[0] = 4;
  session.panes[0].documentRotation = 8;
  EXPECT_FALSE(hasUnsavedChanges());
  EXPECT_FALSE(anyPageRotationPending(0));
  session.active.pageRotations[0] = 5;
  EXPECT_TRUE(hasUnsavedChanges());
  EXPECT_TRUE(anyPageRotationPending(0));
}

TEST_F(SessionStateTest, APageIsOpenedWithItsText) {
  openInActive(simplePdf(3));
  loadPane(0, 1);
  EXPECT_EQ(session.panes[0].currentPage, 1);
  ASSERT_NE(session.panes[0].page, nullptr);
  ASSERT_NE(session.panes[0].textPage, nullptr);
  EXPECT_EQ(FPDFText_CountChars(session.panes[0].textPage.get()), 6);
  EXPECT_EQ(FPDFText_GetUnicode(session.panes[0].textPage.get(), 5), static_cast<unsigned>('2'));
}

// Text added to the page before its text page is first used is found in it.
TEST_F(SessionStateTest, ThePagesTextIsReadWhenItIsAskedFor) {
  openInActive(simplePdf(1));
  loadPane(0, 0);
  PaneSlot& slot = session.panes[0];
  const FPDF_PAGEOBJECT added = FPDFPageObj_NewTextObj(documentOf(0), "Helvetica", 12);
  FPDFText_SetText(added, reinterpret_cast<FPDF_WIDESTRING>(u"more"));
  FPDFPageObj_Transform(added, 1, 0, 0, 1, 72, 100);
  FPDFPage_InsertObject(slot.page.get(), added);
  const std::size_t length = std::string("Page 1\r\nmore").size();
  EXPECT_EQ(FPDFText_CountChars(slot.textPage.get()), static_cast<int>(length));
}

TEST_F(SessionStateTest, AnIndexOutsideTheDocumentIsClamped) {
  openInActive(simplePdf(3));
  loadPane(0, -7);
  EXPECT_EQ(session.panes[0].currentPage, 0);
  EXPECT_NE(session.panes[0].page, nullptr);
  loadPane(0, 3);
  EXPECT_EQ(session.panes[0].currentPage, 2);
  loadPane(0, 1000000);
  EXPECT_EQ(session.panes[0].currentPage, 2);
  EXPECT_NE(session.panes[0].page, nullptr);
}

TEST_F(SessionStateTest, APaneLoadsFromItsOwnDocumentInTwoDocuments) {
  openInPane(0, simplePdf(1));
  openInPane(1, simplePdf(5, 300, 400));
  loadPane(1, 4);
  EXPECT_EQ(session.panes[1].currentPage, 4);
  EXPECT_EQ(FPDF_GetPageWidthF(session.panes[1].page.get()), 300);
  loadPane(0, 4);
  EXPECT_EQ(session.panes[0].currentPage, 0);
}

TEST_F(SessionStateTest, APageThatCannotBeReadLeavesThePaneWithoutOne) {
  openInActive(pdfWithUnreadablePage());
  loadPane(0, 0);
  ASSERT_NE(session.panes[0].page, nullptr);
  loadPane(0, 1);
  EXPECT_EQ(session.panes[0].currentPage, 1);
  EXPECT_EQ(session.panes[0].page, nullptr);
  EXPECT_EQ(session.panes[0].textPage, nullptr);
}

TEST_F(SessionStateTest, ADocumentWithoutPagesGivesThePaneNoPage) {
  openInActive(zeroPagePdf());
  ASSERT_EQ(pageCountOf(0), 0);
  loadPane(0, 0);
  EXPECT_EQ(session.panes[0].page, nullptr);
  EXPECT_GE(session.panes[0].currentPage, 0);
}

TEST_F(SessionStateTest, ClosingThePageKeepsThePageNumber) {
  openInActive(simplePdf(3));
  loadPane(1, 2);
  closePanePage(1);
  EXPECT_EQ(session.panes[1].page, nullptr);
  EXPECT_EQ(session.panes[1].textPage, nullptr);
  EXPECT_EQ(session.panes[1].currentPage, 2);
  closePanePage(1);
  EXPECT_EQ(session.panes[1].page, nullptr);
}

TEST_F(SessionStateTest, DroppingABitmapClearsItsSize) {
  session.panes[0].pageBitmap.reset(platform::createPixelSurface(20, 10));
  session.panes[0].pageBitmapWidth = 20;
  session.panes[0].pageBitmapHeight = 10;
  freePaneBitmap(0);
  EXPECT_EQ(session.panes[0].pageBitmap, nullptr);
  EXPECT_EQ(session.panes[0].pageBitmapWidth, 0);
  EXPECT_EQ(session.panes[0].pageBitmapHeight, 0);
}

TEST_F(SessionStateTest, JumpHistoriesAreClearedTogetherOrByPane) {
  for (PaneSlot& pane : session.panes) {
    pane.backHistory.resize(2);
    pane.forwardHistory.resize(1);
  }
  clearJumpHistories(0);
  EXPECT_TRUE(session.panes[0].backHistory.empty());
  EXPECT_TRUE(session.panes[0].forwardHistory.empty());
  EXPECT_EQ(session.panes[1].backHistory.size(), 2u);
  EXPECT_EQ(session.panes[1].forwardHistory.size(), 1u);
  session.panes[0].backHistory.resize(1);
  clearJumpHistories();
  for (const PaneSlot& pane : session.panes) {
    EXPECT_TRUE(pane.backHistory.empty());
    EXPECT_TRUE(pane.forwardHistory.empty());
  }
}

TEST_F(SessionStateTest, ChangingTheActivePaneLeavesThePlacementsWhereTheyAre) {
  openInPane(0, simplePdf(1));
  const FPDF_DOCUMENT right = openInPane(1, simplePdf(1));
  session.placementDocument = right;
  session.placements[0] = {pendingPlacement()};
  session.activePane = 1;
  setActivePane(0);
  EXPECT_EQ(session.activePane, 0);
  EXPECT_EQ(session.placementDocument, right);
  EXPECT_EQ(session.placements[0].size(), 1u);
}

TEST_F(SessionStateTest, ResettingClosesEverythingInEveryMode) {
  for (ViewMode mode : kSharedModes) {
    openInActive(simplePdf(2));
    session.viewMode = mode;
    loadPane(0, 0);
    loadPane(1, 1);
    session.panes[0].pageBitmap.reset(platform::createPixelSurface(8, 8));
    resetSession();
    EXPECT_EQ(session.active.document, nullptr);
    EXPECT_EQ(session.panes[0].page, nullptr);
    EXPECT_EQ(session.panes[0].pageBitmap, nullptr);
    EXPECT_EQ(session.viewMode, ViewMode::SinglePage);
  }
  openInPane(0, simplePdf(2));
  openInPane(1, simplePdf(2));
  loadPane(0, 0);
  loadPane(1, 1);
  resetSession();
  for (int pane : {0, 1}) {
    EXPECT_EQ(session.panes[pane].document, nullptr);
    EXPECT_EQ(session.panes[pane].page, nullptr);
    EXPECT_EQ(session.panes[pane].textPage, nullptr);
  }
}

// A document loaded from memory reads from its kept bytes until it is closed.
TEST_F(SessionStateTest, KeptBytesOutliveTheDocumentThatReadsFromThem) {
  session.viewerRole = true;
  const std::u16string path = putPdf(u"kept.pdf", simplePdf(3));
  session.active.document = loadDocumentFile(path);
  ASSERT_NE(session.active.document, nullptr);
  ASSERT_EQ(session.documentKeptBuffer.size(), 1u);
  session.active.pageCount = 3;
  loadPane(0, 2);
  loadPane(1, 0);
  resetSession();
  EXPECT_TRUE(session.documentKeptBuffer.empty());

  // Members are destroyed in the reverse of their order in the record.
  const auto place = [](const auto& member) { return reinterpret_cast<std::uintptr_t>(&member); };
  EXPECT_LT(place(session.documentKeptBuffer), place(session.active.document));
  EXPECT_LT(place(session.active.document), place(session.panes[0]));
  for (const PaneSlot& slot : session.panes) {
    EXPECT_LT(place(slot.document), place(slot.page));
    EXPECT_LT(place(slot.page), place(slot.textPage));
  }
}

}  // namespace
}  // namespace quillmere::test
