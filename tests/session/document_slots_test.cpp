#include "session/document_slots.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "documents/modes.h"
#include "session/loaded_file.h"
#include "session/session.h"
#include "support/engine.h"
#include "support/pdf_builder.h"
#include "support/session_test.h"
#include "support/unusual_pdfs.h"
#include "view/navigation.h"
#include "view/panes.h"

namespace quillmere::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class DocumentSlotsTest : public SessionTest {
 protected:
  // A freshly loaded document, as after a save.
  DocumentHandle freshDocument(int pages) { return loadDocument(simplePdf(pages)); }
  static void reopen(DocumentSlot& slot, DocumentHandle fresh) {
    const ClosedDocument closed = closeToReopen(slot);
    reopenDocument(slot, std::move(fresh), {}, closed);
  }
};

TEST_F(DocumentSlotsTest, AMoveTakesEverythingAlongAndLeavesNothing) {
  const FPDF_DOCUMENT document = openInActive(simplePdf(3));
  markEdited(session.active);
  moveDocument(session.active, session.panes[1]);
  const PaneSlot& to = session.panes[1];
  EXPECT_EQ(to.document.get(), document);
  EXPECT_EQ(to.pageCount, 3);
  EXPECT_EQ(to.path, u"C:\\active.pdf");
  EXPECT_TRUE(to.dirty);
  EXPECT_TRUE(to.altered);
  EXPECT_EQ(session.active.document, nullptr);
  EXPECT_EQ(session.active.pageCount, 0);
  EXPECT_EQ(session.active.path, u"");
  EXPECT_FALSE(session.active.dirty);
  EXPECT_FALSE(session.active.altered);
}

TEST_F(DocumentSlotsTest, AMoveClosesWhatStoodThereWithItsPages) {
  openInPane(0, simplePdf(1));
  openInPane(1, simplePdf(2));
  loadPane(0, 0);
  loadPane(1, 1);
  moveDocument(session.panes[1], session.panes[0]);
  EXPECT_EQ(session.panes[0].page, nullptr);
  EXPECT_EQ(session.panes[0].pageCount, 2);
}

TEST_F(DocumentSlotsTest, APageOfAMovedDocumentStaysOpen) {
  openInPane(1, simplePdf(2));
  loadPane(1, 1);
  moveDocument(session.panes[1], session.active);
  EXPECT_NE(session.panes[1].page, nullptr);
  EXPECT_EQ(session.panes[1].openPage, 1);
}

TEST_F(DocumentSlotsTest, ClearingClosesThePagesOfBothPanesFirst) {
  openInActive(simplePdf(2));
  setViewMode(ViewMode::IndependentPages);
  ASSERT_NE(session.panes[1].page, nullptr);
  markEdited(session.active);
  clearDocument(session.active);
  for (const PaneSlot& slot : session.panes) {
    EXPECT_EQ(slot.page, nullptr);
    EXPECT_EQ(slot.openPage, -1);
    EXPECT_EQ(slot.pageBitmap, nullptr);
  }
  EXPECT_EQ(session.active.pageCount, 0);
  EXPECT_FALSE(session.active.dirty);
  EXPECT_FALSE(session.active.altered);
}

TEST_F(DocumentSlotsTest, PlacementsStillToBeReadGoWithTheirDocument) {
  openInActive(simplePdf(2));
  openInPane(1, simplePdf(2));
  session.waitingPlacements = session.active.document.get();
  clearDocument(session.panes[1]);
  EXPECT_EQ(session.waitingPlacements, session.active.document.get());
  clearDocument(session.active);
  EXPECT_EQ(session.waitingPlacements, nullptr);
}

TEST_F(DocumentSlotsTest, AReopeningKeepsViewTurnsAndPath) {
  openInActive(simplePdf(5));
  setViewMode(ViewMode::IndependentPages);
  goToPage(0, 3, false);
  goToPage(1, 1, false);
  PaneSlot& left = session.panes[0];
  left.zoom = 1.5f;
  left.panX = 12;
  left.panY = -34;
  left.zoomMode = kCustomFit;
  session.active.pageRotations[3] = 1;
  left.documentRotation = 2;
  markEdited(session.active);
  DocumentHandle fresh = freshDocument(5);
  const FPDF_DOCUMENT expected = fresh.get();
  reopen(session.active, std::move(fresh));
  EXPECT_EQ(session.active.document.get(), expected);
  EXPECT_EQ(session.active.path, u"C:\\active.pdf");
  EXPECT_FALSE(session.active.dirty);
  EXPECT_FALSE(session.active.altered);
  EXPECT_EQ(left.currentPage, 3);
  EXPECT_EQ(left.openPage, 3);
  EXPECT_NE(left.page, nullptr);
  EXPECT_EQ(session.panes[1].openPage, 1);
  EXPECT_EQ(left.zoom, 1.5f);
  EXPECT_EQ(left.panX, 12);
  EXPECT_EQ(left.panY, -34);
  EXPECT_EQ(left.zoomMode, kCustomFit);
  EXPECT_EQ(left.documentRotation, 2u);
  EXPECT_EQ(session.active.pageRotations[3], 1u);
}

TEST_F(DocumentSlotsTest, AReopeningOpensTheLastPageWhereTheNewDocumentIsShorter) {
  openInActive(simplePdf(5));
  goToPage(0, 4, false);
  reopen(session.active, freshDocument(2));
  EXPECT_EQ(session.active.pageCount, 2);
  EXPECT_EQ(session.panes[0].openPage, 1);
  EXPECT_EQ(session.panes[0].currentPage, 1);
}

TEST_F(DocumentSlotsTest, AReopeningKeepsANumberThatDiffersFromTheOpenPage) {
  openInActive(simplePdf(4));
  goToPage(0, 3, false);
  setViewMode(ViewMode::Book);
  setViewMode(ViewMode::SinglePage);
  ASSERT_EQ(session.panes[0].currentPage, 2);
  ASSERT_EQ(session.panes[0].openPage, 3);
  reopen(session.active, freshDocument(4));
  EXPECT_EQ(session.panes[0].currentPage, 2);
  EXPECT_EQ(session.panes[0].openPage, 3);
}

TEST_F(DocumentSlotsTest, ANumberPastTheEndOfAShorterDocumentBecomesItsLast) {
  openInActive(simplePdf(6));
  loadPane(0, 4);
  session.panes[0].currentPage = 5;
  reopen(session.active, freshDocument(3));
  EXPECT_EQ(session.panes[0].currentPage, 2);
  EXPECT_EQ(session.panes[0].openPage, 2);
}

TEST_F(DocumentSlotsTest, AReopeningThatFailsHoldsNoFile) {
  const std::u16string path = putPdf(u"a.pdf", simplePdf(1));
  openInActive(simplePdf(1), path);
  const ClosedDocument closed = closeToReopen(session.active);
  reopenDocument(session.active, nullptr, loadedFileNow(path), closed);
  EXPECT_FALSE(platform::isHeld(path));
  EXPECT_EQ(session.active.loadedFrom.path, u"");
}

TEST_F(DocumentSlotsTest, PlacementsGoOverToTheReopenedDocument) {
  session.placementDocument = openInActive(simplePdf(2));
  session.placements[1] = {Placement{}};
  reopen(session.active, freshDocument(2));
  EXPECT_EQ(session.placementDocument, session.active.document.get());
  EXPECT_EQ(session.placements[1].size(), 1u);
  EXPECT_EQ(session.waitingPlacements, nullptr);
}

TEST_F(DocumentSlotsTest, PlacementsThatWaitToBeReadAreThoseOfTheReopenedDocument) {
  session.waitingPlacements = openInActive(simplePdf(2));
  reopen(session.active, freshDocument(2));
  EXPECT_EQ(session.waitingPlacements, session.active.document.get());
  EXPECT_EQ(session.placementDocument, nullptr);
}

TEST_F(DocumentSlotsTest, AReopeningOfOneOfTwoDocumentsLeavesTheOtherAlone) {
  const FPDF_DOCUMENT left = openInPane(0, simplePdf(1));
  openInPane(1, simplePdf(2));
  loadPane(0, 0);
  loadPane(1, 1);
  const FPDF_PAGE leftPage = session.panes[0].page.get();
  reopen(session.panes[1], freshDocument(2));
  EXPECT_EQ(session.panes[0].document.get(), left);
  EXPECT_EQ(session.panes[0].page.get(), leftPage);
  EXPECT_EQ(session.panes[1].openPage, 1);
}

TEST_F(DocumentSlotsTest, SeparatingPagesAltersTheDocumentAndIsNoEditToSave) {
  openInActive(sharedPagePdf());
  separatePages(session.active);
  EXPECT_TRUE(session.active.pagesSeparate);
  EXPECT_TRUE(session.active.altered);
  EXPECT_FALSE(session.active.dirty);
}

TEST_F(DocumentSlotsTest, PagesThatCannotBeSeparatedLeaveTheDocumentAsItIs) {
  PdfFile file;
  const int catalog = file.reserve();
  const int tree = file.reserve();
  const int node = file.reserve();
  const int page = file.add("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] >>");
  const auto nodeWith = [](int parent, const std::string& kids) {
    return "<< /Type /Pages /Parent " + PdfFile::reference(parent) + " /Count 2 /Kids [" + kids +
           "] >>";
  };
  file.set(catalog, "<< /Type /Catalog /Pages " + PdfFile::reference(tree) + " >>");
  file.set(tree, nodeWith(node, PdfFile::reference(page) + " " + PdfFile::reference(node)));
  file.set(node, nodeWith(tree, PdfFile::reference(tree)));
  ASSERT_NE(openInActive(file.finish(catalog)), nullptr);
  separatePages(session.active);
  EXPECT_FALSE(session.active.pagesSeparate);
  EXPECT_FALSE(session.active.altered);
}

TEST_F(DocumentSlotsTest, AHiddenPaneThatHasAPageOpenHoldsItToo) {
  const FPDF_DOCUMENT document = openInActive(simplePdf(4));
  setViewMode(ViewMode::IndependentPages);
  goToPage(0, 2, false);
  goToPage(1, 2, false);
  setViewMode(ViewMode::SinglePage);
  EXPECT_THAT(panesHolding(document), ElementsAre(0, 1));
  EXPECT_THAT(panesHoldingPage(document, 2), ElementsAre(0, 1));
  goToPage(0, 0, false);
  EXPECT_THAT(panesHoldingPage(document, 2), ElementsAre(1));
  EXPECT_THAT(panesHoldingPage(document, 0), ElementsAre(0));
  EXPECT_THAT(panesHoldingPage(document, 1), IsEmpty());
}

TEST_F(DocumentSlotsTest, ThePageThatIsOpenCountsAndNotTheNumberShown) {
  const FPDF_DOCUMENT document = openInActive(simplePdf(4));
  goToPage(0, 3, false);
  setViewMode(ViewMode::Book);
  EXPECT_EQ(session.panes[0].currentPage, 2);
  EXPECT_THAT(panesHoldingPage(document, 2), IsEmpty());
  EXPECT_THAT(panesHoldingPage(document, 3), ElementsAre(0, 1));
}

TEST_F(DocumentSlotsTest, EachOfTwoDocumentsIsHeldByItsPane) {
  const FPDF_DOCUMENT left = openInPane(0, simplePdf(1));
  const FPDF_DOCUMENT right = openInPane(1, simplePdf(1));
  EXPECT_THAT(panesHolding(left), ElementsAre(0));
  EXPECT_THAT(panesHolding(right), ElementsAre(1));
  EXPECT_THAT(panesHolding(nullptr), IsEmpty());
}

}  // namespace
}  // namespace quillmere::test
