#include "documents/page_operations.h"

#include <fpdf_edit.h>
#include <fpdf_save.h>
#include <gmock/gmock.h>

#include <cstdint>
#include <string>
#include <vector>

#include "annot/markup_list.h"
#include "annot/placements.h"
#include "app/commands.h"
#include "documents/modes.h"
#include "documents/open_requests.h"
#include "nav/bookmarks.h"
#include "nav/find_bar.h"
#include "nav/jump_history.h"
#include "support/page_edit_test.h"
#include "support/pdf_builder.h"
#include "view/navigation.h"
#include "view/panes.h"
#include "view/rotation.h"
#include "view/selection.h"
#include "view/view_test.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::standIn;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

using DeletePageTest = PageEditTest;

class InsertDocumentTest : public PageEditTest {
 protected:
  // Inserts a file whose pages read "Page 1" and so on.
  static void insert(bool below, int pages) {
    PageEditTest::insert(below, simplePdf(pages, 300, 300));
  }
};

// Four indexes that are two pages: the second node of the tree is named twice.
std::string sharedPagesPdf() {
  PdfFile file;
  const int catalog = file.reserve();
  const int tree = file.reserve();
  const int node = file.reserve();
  const auto addPage = [&](const std::string& text, int parent) {
    const std::string content = PdfFile::reference(file.addStream(textContent(text)));
    return PdfFile::reference(
        file.add("<< /Type /Page /Parent " + PdfFile::reference(parent) +
                 " /MediaBox [0 0 612 792] /Contents " + content +
                 " /Resources << /Font << /F1 << /Type /Font /Subtype /Type1 /BaseFont /Helvetica "
                 ">> >> >> >>"));
  };
  const std::string one = addPage("One", tree);
  const std::string two = addPage("Two", node);
  const std::string nodeReference = PdfFile::reference(node);
  file.set(catalog, "<< /Type /Catalog /Pages " + PdfFile::reference(tree) + " >>");
  file.set(tree, "<< /Type /Pages /Count 4 /Kids [" + nodeReference + " " + one + " " +
                     nodeReference + " " + one + "] >>");
  file.set(node, "<< /Type /Pages /Count 1 /Parent " + PdfFile::reference(tree) + " /Kids [" + two +
                     "] >>");
  return file.finish(catalog);
}

// What the document would be after saving and opening it again.
DocumentHandle savedAndOpened(FPDF_DOCUMENT document, std::string& bytes) {
  struct Writer : FPDF_FILEWRITE {
    std::string* bytes;
  } writer{};
  writer.version = 1;
  writer.bytes = &bytes;
  writer.WriteBlock = [](FPDF_FILEWRITE* self, const void* data, unsigned long size) {
    static_cast<Writer*>(self)->bytes->append(static_cast<const char*>(data), size);
    return 1;
  };
  FPDF_SaveAsCopy(document, &writer, FPDF_NO_INCREMENTAL);
  return DocumentHandle(FPDF_LoadMemDocument64(bytes.data(), bytes.size(), nullptr));
}

TEST_F(DeletePageTest, TheShownPageGoesAfterAQuestion) {
  opened(u"a.pdf", 3);
  goToPage(0, 1, false);
  deletePage();
  EXPECT_THAT(textsOf(document()), ElementsAre("Page 1", "Page 3"));
  ASSERT_THAT(standIn().boxes, SizeIs(1));
  EXPECT_EQ(standIn().boxes[0].title, u"Delete Page");
  EXPECT_EQ(standIn().boxes[0].text,
            u"Delete page 2 from the document?\n\nThe deletion is in-memory until you save. Use "
            u"Edit->Discard Changes to revert before saving.");
  EXPECT_EQ(standIn().boxes[0].buttons, BoxButtons::OkCancel);
  EXPECT_EQ(session.active.pageCount, 2);
  EXPECT_EQ(pane(0).currentPage, 1);
  EXPECT_EQ(pane(0).openPage, 1);
  EXPECT_TRUE(pane(0).pageBitmap);
  EXPECT_TRUE(session.active.dirty);
  EXPECT_TRUE(session.active.altered);
}

TEST_F(DeletePageTest, CancelKeepsThePage) {
  opened(u"a.pdf", 3);
  standIn().boxAnswers = {BoxAnswer::Cancel};
  DeleteCurrentPage();
  EXPECT_EQ(FPDF_GetPageCount(document()), 3);
  EXPECT_FALSE(session.active.dirty);
  EXPECT_TRUE(pane(0).page);
}

TEST_F(DeletePageTest, TheOnlyPageStays) {
  opened(u"a.pdf", 1);
  standIn().boxAnswers = {BoxAnswer::Ok};
  DeleteCurrentPage();
  ASSERT_THAT(standIn().boxes, SizeIs(1));
  EXPECT_EQ(standIn().boxes[0].text,
            u"This is the only page in the document and cannot be deleted.");
  EXPECT_EQ(standIn().boxes[0].icon, BoxIcon::Information);
  EXPECT_EQ(standIn().boxes[0].buttons, BoxButtons::Ok);
  EXPECT_EQ(FPDF_GetPageCount(document()), 1);
  EXPECT_FALSE(session.active.dirty);
}

TEST_F(DeletePageTest, WithoutADocumentNothingIsAsked) {
  DeleteCurrentPage();
  InsertDocument(true);
  FlattenAnnotations();
  RemoveAllAnnotations();
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_THAT(standIn().openDialogs, IsEmpty());
}

TEST_F(DeletePageTest, AViewerEditsNothing) {
  opened(u"a.pdf", 3);
  session.viewerRole = true;
  for (const std::uint32_t id :
       {kCmdDeletePage, kCmdInsertAbove, kCmdInsertBelow, kCmdFlatten, kCmdRemoveAnnotations}) {
    EXPECT_FALSE(runCommand(id));
  }
  DeleteCurrentPage();
  InsertDocument(false);
  FlattenAnnotations();
  RemoveAllAnnotations();
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_EQ(FPDF_GetPageCount(document()), 3);
}

TEST_F(DeletePageTest, PlacementsAndTurnsOfLaterPagesFollowAndThoseOfThePageGo) {
  opened(u"a.pdf", 5);
  for (const int page : {0, 2, 3, 4}) addText(page);
  session.active.pageRotations = {{1, 1}, {2, 2}, {3, 3}, {4, 1}};
  goToPage(0, 2, false);
  deletePage();
  EXPECT_THAT(pagesWithPlacements(), ElementsAre(0, 2, 3));
  EXPECT_THAT(session.active.pageRotations, ElementsAre(Pair(1, 1), Pair(2, 3), Pair(3, 1)));
}

TEST_F(DeletePageTest, TheLastPageGivesWayToTheNewLastOne) {
  opened(u"a.pdf", 3);
  goToPage(0, 2, false);
  deletePage();
  EXPECT_EQ(pane(0).openPage, 1);
  EXPECT_EQ(textOf(document(), pane(0).openPage), "Page 2");
}

TEST_F(DeletePageTest, APlacementOnALaterPageStaysSelected) {
  opened(u"a.pdf", 4);
  addText(3);
  selectPlacement(3, 0);
  goToPage(0, 1, false);
  deletePage();
  EXPECT_EQ(session.selectedPlacementPage, 2);
  ASSERT_NE(selectedPlacement(), nullptr);
  EXPECT_TRUE(selectedPlacement()->selected);
}

TEST_F(DeletePageTest, APlacementOfThePageIsNoLongerSelected) {
  opened(u"a.pdf", 4);
  addText(1);
  addText(2);
  selectPlacement(1, 0);
  goToPage(0, 1, false);
  deletePage();
  EXPECT_EQ(session.selectedPlacementPage, -1);
  EXPECT_EQ(session.selectedPlacementIndex, -1);
  EXPECT_FALSE(session.placements.at(1)[0].selected);
}

TEST_F(DeletePageTest, WrittenPlacementsKeepTheirAnnotations) {
  PdfPage stamped;
  stamped.annotations = {highlight(), stampAnnotation()};
  ASSERT_TRUE(open(buildPdf({PdfPage{}, PdfPage{}, stamped})));
  readWaitingPlacements();
  deletePage();
  ASSERT_THAT(pagesWithPlacements(), ElementsAre(1));
  EXPECT_EQ(session.placements.at(1)[0].annotIndex, 1);
}

TEST_F(DeletePageTest, JumpsLeadToTheSamePagesAndThoseToThePageGo) {
  opened(u"a.pdf", 5);
  for (const int page : {1, 2, 4, 0}) {
    PushJump(0);
    goToPage(0, page, false);
  }
  goToPage(0, 2, false);
  deletePage();
  ASSERT_THAT(pane(0).backHistory, SizeIs(3));  // from pages 0, 1 and 4
  EXPECT_EQ(pane(0).backHistory[2].page, 3);
  JumpBack(0);
  EXPECT_EQ(textOf(document(), pane(0).openPage), "Page 5");
}

TEST_F(DeletePageTest, SearchAndSelectionEnd) {
  opened(u"a.pdf", 3);
  OpenFindBar();
  standIn().findBar.field = u"Page";
  findFieldChanged();
  selectAll(0);
  deletePage();
  EXPECT_THAT(session.find.results, IsEmpty());
  EXPECT_FALSE(session.selection.active);
}

TEST_F(DeletePageTest, BookmarksLeadToTheSamePages) {
  PdfOptions options;
  options.outline = {{u"First", pageDestination(1), {}},
                     {u"Second", pageDestination(2), {}},
                     {u"Third", pageDestination(3), {}}};
  std::vector<PdfPage> pages(3);
  for (int i = 0; i < 3; ++i) {
    pages[static_cast<std::size_t>(i)].content = textContent("Page " + std::to_string(i + 1));
  }
  ASSERT_TRUE(open(buildPdf(pages, options)));
  session.navigationPanelVisible = true;
  goToPage(0, 1, false);
  deletePage();
  ASSERT_THAT(session.bookmarks, SizeIs(3));
  ResolveBookmarks();
  EXPECT_EQ(session.bookmarks[0].page, 0);
  EXPECT_LT(session.bookmarks[1].page, 0);
  EXPECT_EQ(session.bookmarks[2].page, 1);
  JumpToTreeEntry(1);
  EXPECT_EQ(pane(0).openPage, 1);
}

TEST_F(DeletePageTest, MarksAreListedUnderTheirNewPages) {
  PdfPage marked;
  marked.annotations = {highlight()};
  ASSERT_TRUE(open(buildPdf({PdfPage{}, marked, marked})));
  ASSERT_THAT(markupsOf(document()), SizeIs(2));
  deletePage();
  ASSERT_THAT(markupsOf(document()), SizeIs(2));
  EXPECT_EQ(markupsOf(document())[0].page, 0);
  EXPECT_EQ(markupsOf(document())[1].page, 1);
}

TEST_F(DeletePageTest, AHiddenPaneFollowsItsPage) {
  opened(u"a.pdf", 5);
  setViewMode(ViewMode::IndependentPages);
  goToPage(1, 3, false);
  setViewMode(ViewMode::SinglePage);
  goToPage(0, 1, false);
  deletePage();
  EXPECT_EQ(pane(1).currentPage, 2);
  setViewMode(ViewMode::IndependentPages);
  EXPECT_EQ(textOf(document(), pane(1).openPage), "Page 4");
}

TEST_F(DeletePageTest, TheOtherPaneKeepsItsPageAndView) {
  opened(u"a.pdf", 4);
  setViewMode(ViewMode::IndependentPages);
  goToPage(1, 3, false);
  pane(1).zoomMode = kCustomFit;
  pane(1).zoom = 2;
  pane(1).panX = -30;
  pane(1).panY = -40;
  deletePage();
  EXPECT_EQ(pane(0).openPage, 0);
  EXPECT_EQ(pane(1).currentPage, 2);
  EXPECT_EQ(pane(1).openPage, 2);
  EXPECT_EQ(pane(1).panY, -40);
  EXPECT_EQ(pane(1).pageBitmapWidth, 1224);
}

TEST_F(DeletePageTest, BothPanesOnThePageShowTheNextOne) {
  opened(u"a.pdf", 3);
  setViewMode(ViewMode::IndependentPages);
  goToPage(0, 2, false);
  goToPage(1, 2, false);
  deletePage();
  EXPECT_EQ(pane(0).openPage, 1);
  EXPECT_EQ(pane(1).openPage, 1);
}

TEST_F(DeletePageTest, ABookKeepsItsLeftPage) {
  opened(u"a.pdf", 5);
  setViewMode(ViewMode::Book);
  goToPage(0, 1, false);
  setActivePane(1);
  deletePage();
  EXPECT_THAT(textsOf(document()), ElementsAre("Page 1", "Page 2", "Page 4", "Page 5"));
  EXPECT_EQ(pane(0).openPage, 1);
  EXPECT_EQ(pane(1).openPage, 2);
}

TEST_F(DeletePageTest, ABookOfTwoPagesKeepsOne) {
  opened(u"a.pdf", 2);
  setViewMode(ViewMode::Book);
  deletePage();
  EXPECT_EQ(textOf(document(), pane(0).openPage), "Page 2");
  EXPECT_FALSE(pane(1).page);
}

// Entering Book on the last page lowers the number alone.
TEST_F(DeletePageTest, ThePageThatIsSeenGoesWhateverItsNumber) {
  opened(u"a.pdf", 3);
  goToPage(0, 2, false);
  setViewMode(ViewMode::Book);
  ASSERT_EQ(pane(0).currentPage, 1);
  ASSERT_EQ(pane(0).openPage, 2);
  deletePage();
  EXPECT_THAT(textsOf(document()), ElementsAre("Page 1", "Page 2"));
  EXPECT_TRUE(standIn().boxes[0].text.starts_with(u"Delete page 3 from"));
}

TEST_F(DeletePageTest, InTwoDocumentsTheOtherDocumentIsLeftAlone) {
  openTwo(3, 4);
  setActivePane(1);
  LoadPlacements(documentOf(0));
  addText(2);
  selectPlacement(2, 0);
  ClearPlacementSelection();
  goToPage(1, 1, false);
  goToPage(0, 2, false);
  pane(0).pageRotations = {{2, 1}};
  pane(1).pageRotations = {{2, 1}};
  deletePage();
  EXPECT_EQ(pane(0).pageCount, 3);
  EXPECT_EQ(pane(0).openPage, 2);
  EXPECT_FALSE(pane(0).dirty);
  EXPECT_TRUE(pane(1).dirty);
  EXPECT_EQ(pane(1).pageCount, 3);
  EXPECT_THAT(pagesWithPlacements(), ElementsAre(2));
  EXPECT_THAT(pane(0).pageRotations, ElementsAre(Pair(2, 1)));
  EXPECT_THAT(pane(1).pageRotations, ElementsAre(Pair(1, 1)));
}

TEST_F(DeletePageTest, AnEncryptedDocumentLosesItsPage) {
  ASSERT_TRUE(open(encryptedPdf()));
  insert(true, simplePdf(2));
  ASSERT_THAT(textsOf(document()), ElementsAre("Quill and page", "Page 1", "Page 2"));
  goToPage(0, 1, false);
  deletePage();
  EXPECT_THAT(textsOf(document()), ElementsAre("Quill and page", "Page 2"));
}

TEST_F(DeletePageTest, OfAPageThatStandsTwiceOnlyTheShownOneGoes) {
  ASSERT_TRUE(open(sharedPagesPdf()));
  ASSERT_THAT(textsOf(document()), ElementsAre("Two", "One", "Two", "One"));
  goToPage(0, 2, false);
  deletePage();
  EXPECT_THAT(textsOf(document()), ElementsAre("Two", "One", "One"));
  std::string bytes;
  EXPECT_THAT(textsOf(savedAndOpened(document(), bytes).get()), ElementsAre("Two", "One", "One"));
}

TEST_F(DeletePageTest, APageThatStandsTwiceIsTurnedOnce) {
  ASSERT_TRUE(open(sharedPagesPdf()));
  goToPage(0, 3, false);
  rotatePage(0);
  commitRotations(0);
  std::vector<int> turns;
  for (int page = 0; page < 4; ++page) turns.push_back(ownRotationOf(document(), page));
  EXPECT_THAT(turns, ElementsAre(0, 0, 0, 1));
}

TEST_F(DeletePageTest, ACyclicTreeIsLeftWhole) {
  ASSERT_TRUE(open(cyclicPageTreePdf()));
  const int pages = session.active.pageCount;
  standIn().boxAnswers = {BoxAnswer::Ok, BoxAnswer::Ok};
  DeleteCurrentPage();
  EXPECT_EQ(FPDF_GetPageCount(document()), session.active.pageCount);
  EXPECT_GE(session.active.pageCount, pages - 1);
}

// The page tree has changed in memory all the same.
TEST_F(DeletePageTest, AFailureIsToldAndTheDocumentCountsAsAltered) {
  ASSERT_TRUE(open(sharedPagesPdf()));
  goToPage(0, 1, false);
  standIn().boxAnswers = {BoxAnswer::Ok};
  quillmere::deletePage(session.active.pageCount);  // no such page
  ASSERT_THAT(standIn().boxes, SizeIs(1));
  EXPECT_EQ(standIn().boxes[0].text, u"The page could not be deleted.");
  EXPECT_EQ(standIn().boxes[0].icon, BoxIcon::Error);
  EXPECT_THAT(textsOf(document()), ElementsAre("Two", "One", "Two", "One"));
  EXPECT_EQ(pane(0).openPage, 1);
  EXPECT_TRUE(session.active.altered);
  EXPECT_FALSE(session.active.dirty);
}

TEST_F(DeletePageTest, FilesThatArriveDuringTheQuestionWait) {
  opened(u"a.pdf", 3);
  standIn().boxAnswers = {BoxAnswer::Ok};
  standIn().onBox = [](const platform::ShownBox&) {
    openHandedOver(putPdf(u"late.pdf", simplePdf(1)));
  };
  DeleteCurrentPage();
  EXPECT_EQ(session.active.pageCount, 2);
}

TEST_F(DeletePageTest, TheMenuFollowsTheNumberOfPages) {
  opened(u"a.pdf", 2);
  ASSERT_TRUE(standIn().window.menuItems[kCmdDeletePage].enabled);
  deletePage();
  EXPECT_FALSE(standIn().window.menuItems[kCmdDeletePage].enabled);
}

TEST_F(InsertDocumentTest, OtherProgramsMayNotWriteToTheFileFromThenOn) {
  opened(u"a.pdf", 2);
  EXPECT_FALSE(documentSlotOf(0).loadedFrom.guard);
  insert(true, 1);
  EXPECT_TRUE(documentSlotOf(0).loadedFrom.guard);
}

TEST_F(InsertDocumentTest, AboveTheFirstInsertedPageTakesThePlaceOfTheShownOne) {
  opened(u"a.pdf", 3);
  goToPage(0, 1, false);
  insert(false, 2);
  EXPECT_THAT(textsOf(document()), ElementsAre("Page 1", "Page 1", "Page 2", "Page 2", "Page 3"));
  ASSERT_THAT(standIn().openDialogs, SizeIs(1));
  EXPECT_EQ(standIn().openDialogs[0].title, u"Insert Document Above");
  EXPECT_FALSE(standIn().openDialogs[0].allowSeveral);
  ASSERT_THAT(standIn().openDialogs[0].filters, SizeIs(1));
  EXPECT_EQ(standIn().openDialogs[0].filters[0].pattern, u"*.pdf");
  EXPECT_EQ(pane(0).openPage, 1);
  EXPECT_EQ(FPDF_GetPageWidthF(pane(0).page.get()), 300);
  EXPECT_EQ(session.active.pageCount, 5);
  EXPECT_TRUE(session.active.dirty);
}

TEST_F(InsertDocumentTest, BelowTheLastPageItComesToTheEnd) {
  opened(u"a.pdf", 2);
  goToPage(0, 1, false);
  insert(true, 2);
  EXPECT_THAT(textsOf(document()), ElementsAre("Page 1", "Page 2", "Page 1", "Page 2"));
  EXPECT_EQ(standIn().openDialogs[0].title, u"Insert Document Below");
  EXPECT_EQ(pane(0).openPage, 2);
}

TEST_F(InsertDocumentTest, PlacementsTurnsAndSelectionFromTherePlusFour) {
  opened(u"a.pdf", 4);
  for (const int page : {0, 1, 3}) addText(page);
  selectPlacement(3, 0);
  session.active.pageRotations = {{0, 1}, {1, 2}, {2, 3}};
  goToPage(0, 1, false);
  insert(false, 4);
  EXPECT_THAT(pagesWithPlacements(), ElementsAre(0, 5, 7));
  EXPECT_THAT(session.active.pageRotations, ElementsAre(Pair(0, 1), Pair(5, 2), Pair(6, 3)));
  EXPECT_EQ(session.selectedPlacementPage, 7);
  EXPECT_NE(selectedPlacement(), nullptr);
}

TEST_F(InsertDocumentTest, ADocumentWithoutPagesChangesNothing) {
  opened(u"a.pdf", 2);
  standIn().openDialogAnswers = {{putPdf(u"none.pdf", zeroPagePdf())}};
  standIn().boxAnswers = {BoxAnswer::Ok};
  InsertDocument(true);
  ASSERT_THAT(standIn().boxes, SizeIs(1));
  EXPECT_EQ(standIn().boxes[0].text, u"That document has no pages to insert.");
  EXPECT_FALSE(session.active.dirty);
  EXPECT_TRUE(pane(0).page);
}

TEST_F(InsertDocumentTest, AFileThatCannotBeOpenedIsToldAsAnyOther) {
  opened(u"a.pdf", 2);
  standIn().openDialogAnswers = {{putPdf(u"bad.pdf", garbageFile())}};
  standIn().boxAnswers = {BoxAnswer::Ok};
  InsertDocument(true);
  ASSERT_THAT(standIn().boxes, SizeIs(1));
  EXPECT_EQ(standIn().boxes[0].text, u"Could not open PDF.\n(PDFium error 3)");
  EXPECT_EQ(session.active.pageCount, 2);
}

TEST_F(InsertDocumentTest, ACancelledDialogChangesNothing) {
  opened(u"a.pdf", 2);
  standIn().openDialogAnswers = {{}};
  InsertDocument(true);
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_FALSE(session.active.dirty);
}

// PDFium copies the pages before the one that it cannot copy.
TEST_F(InsertDocumentTest, AFailedImportLeavesDocumentViewAndSearchAsTheyWere) {
  opened(u"a.pdf", 3);
  goToPage(0, 1, false);
  addText(2);
  session.active.pageRotations = {{2, 1}};
  OpenFindBar();
  standIn().findBar.field = u"Page";
  findFieldChanged();
  standIn().openDialogAnswers = {{putPdf(u"source.pdf", pdfWithBrokenPage(4, 3))}};
  standIn().boxAnswers = {BoxAnswer::Ok};
  InsertDocument(false);
  ASSERT_THAT(standIn().boxes, SizeIs(1));
  EXPECT_EQ(standIn().boxes[0].text,
            u"The document could not be inserted.\n\nThe file may be corrupt, encrypted, or use "
            u"features this reader can't import.");
  EXPECT_THAT(textsOf(document()), ElementsAre("Page 1", "Page 2", "Page 3"));
  EXPECT_THAT(pagesWithPlacements(), ElementsAre(2));
  EXPECT_THAT(session.active.pageRotations, ElementsAre(Pair(2, 1)));
  EXPECT_EQ(pane(0).openPage, 1);
  EXPECT_TRUE(pane(0).pageBitmap);
  EXPECT_FALSE(session.active.dirty);
  EXPECT_FALSE(session.find.results.empty());
}

TEST_F(InsertDocumentTest, AnEncryptedDocumentCanBeInserted) {
  opened(u"a.pdf", 1);
  standIn().openDialogAnswers = {{putPdf(u"source.pdf", encryptedPdf())}};
  InsertDocument(true);
  EXPECT_THAT(textsOf(document()), ElementsAre("Page 1", "Quill and page"));
}

TEST_F(InsertDocumentTest, TheOpenDocumentsOwnFileCanBeInserted) {
  const std::u16string path = opened(u"a.pdf", 2);
  standIn().openDialogAnswers = {{path}};
  InsertDocument(true);
  EXPECT_THAT(textsOf(document()), ElementsAre("Page 1", "Page 1", "Page 2", "Page 2"));
}

TEST_F(InsertDocumentTest, TheOtherPaneKeepsItsPage) {
  opened(u"a.pdf", 3);
  setViewMode(ViewMode::IndependentPages);
  goToPage(1, 2, false);
  setActivePane(0);
  insert(true, 2);
  EXPECT_EQ(pane(0).openPage, 1);
  EXPECT_EQ(pane(1).currentPage, 4);
  EXPECT_EQ(textOf(document(), pane(1).openPage), "Page 3");
}

TEST_F(InsertDocumentTest, ABookShowsTheFirstInsertedPageInTheActivePane) {
  opened(u"a.pdf", 4);
  setViewMode(ViewMode::Book);
  goToPage(0, 1, false);
  setActivePane(1);
  insert(false, 2);
  EXPECT_EQ(pane(1).openPage, 2);
  EXPECT_EQ(FPDF_GetPageWidthF(pane(1).page.get()), 300);
  EXPECT_EQ(pane(0).openPage, 1);
}

TEST_F(InsertDocumentTest, AHiddenPaneFollowsItsPage) {
  opened(u"a.pdf", 3);
  session.panes[1].currentPage = 2;
  insert(true, 3);
  EXPECT_EQ(pane(1).currentPage, 5);
  EXPECT_FALSE(pane(1).page);
}

TEST_F(InsertDocumentTest, SearchSelectionAndListOfMarksEnd) {
  PdfPage marked;
  marked.annotations = {highlight()};
  ASSERT_TRUE(open(buildPdf({marked})));
  ASSERT_EQ(markupsOf(document())[0].page, 0);
  selectAll(0);
  insert(false, 2);
  EXPECT_FALSE(session.selection.active);
  EXPECT_EQ(markupsOf(document())[0].page, 2);
}

}  // namespace
}  // namespace quillmere::test
