#include <fpdf_annot.h>
#include <fpdf_edit.h>
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "annot/placements.h"
#include "documents/modes.h"
#include "support/page_edit_test.h"
#include "support/pdf_builder.h"
#include "view/navigation.h"
#include "view/rotation.h"
#include "view/view_test.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::standIn;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

// Pages that come and go below what the session keeps by their numbers.
class PageNumbersTest : public PageEditTest {
 protected:
  static void insertAbove(const std::string& bytes) { insert(false, bytes); }

  // A page with a link and two stamps of this program, the second one's record damaged.
  static PdfPage stampedPage() {
    PdfPage page;
    page.annotations = {
        linkAnnotation(0, 0, 50, 50, webAction("https://example.org")),
        "<< /Type /Annot /Subtype /Stamp /Rect [100 100 200 150] /QMR (QMR1;S;0;100;100;100;50;) "
        ">>",
        "<< /Type /Annot /Subtype /Stamp /Rect [100 100 200 150] /QMR (QMR1;S;0) >>"};
    return page;
  }

  static std::vector<int> widths(FPDF_DOCUMENT document) {
    std::vector<int> found;
    for (int i = 0; i < FPDF_GetPageCount(document); ++i) {
      const PageHandle page(FPDF_LoadPage(document, i));
      found.push_back(static_cast<int>(FPDF_GetPageWidthF(page.get())));
    }
    return found;
  }
};

TEST_F(PageNumbersTest, TurnsThatWaitForAnotherModeFollowTheirPages) {
  opened(u"a.pdf", 5);
  session.active.pageRotations = {{1, 1}, {3, 2}, {4, 3}};
  setViewMode(ViewMode::TwoDocuments);
  pane(0).pageRotations = {{4, 1}};
  deletePage(1);
  EXPECT_THAT(pane(0).pageRotations, ElementsAre(Pair(3, 1)));
  setViewMode(ViewMode::SinglePage);
  EXPECT_THAT(session.active.pageRotations, ElementsAre(Pair(2, 2), Pair(3, 3)));
  deletePage(0);
  EXPECT_THAT(session.active.pageRotations, ElementsAre(Pair(1, 2), Pair(2, 3)));
  setViewMode(ViewMode::TwoDocuments);
  EXPECT_THAT(pane(0).pageRotations, ElementsAre(Pair(2, 1)));
}

TEST_F(PageNumbersTest, TurnsOfTheSharedDocumentStayWhenTheOtherDocumentLosesAPage) {
  openTwo(4, 4);
  session.active.pageRotations = {{2, 1}};
  setActivePane(1);
  deletePage(0);
  EXPECT_THAT(session.active.pageRotations, ElementsAre(Pair(2, 1)));
}

TEST_F(PageNumbersTest, StampsOfInsertedPagesCanBeEdited) {
  ASSERT_TRUE(open(buildPdf({PdfPage{}, stampedPage()})));
  readWaitingPlacements();
  ASSERT_EQ(session.placements.size(), 1u);
  goToPage(0, 1, false);
  insertAbove(buildPdf({PdfPage{}, stampedPage()}));
  ASSERT_EQ(session.placements.size(), 2u);
  ASSERT_EQ(session.placements.count(2), 1u);
  ASSERT_EQ(session.placements.at(2).size(), 1u);
  EXPECT_EQ(session.placements.at(2)[0].annotIndex, 1);
  EXPECT_EQ(session.placements.count(3), 1u);
}

TEST_F(PageNumbersTest, StampsInsertedIntoADocumentThatOwnsNoPlacementsAreReadLater) {
  openTwo(2, 2);
  setActivePane(1);
  LoadPlacements(documentOf(0));
  insertAbove(buildPdf({stampedPage()}));
  EXPECT_THAT(session.placements, IsEmpty());
  LoadPlacements(documentOf(1));
  EXPECT_EQ(session.placements.count(0), 1u);
}

TEST_F(PageNumbersTest, AFailedInsertionLeavesTheBooksView) {
  opened(u"a.pdf", 5);
  setViewMode(ViewMode::Book);
  goToPage(0, 2, false);
  for (const int each : {0, 1}) {
    pane(each).zoomMode = kCustomFit;
    pane(each).zoom = 2;
    pane(each).panX = -30;
    pane(each).panY = -40;
  }
  standIn().boxAnswers = {BoxAnswer::Ok};
  insertAbove(pdfWithBrokenPage(4, 3));
  for (const int each : {0, 1}) {
    EXPECT_EQ(pane(each).openPage, 2 + each);
    EXPECT_EQ(pane(each).currentPage, 2 + each);
    EXPECT_EQ(pane(each).zoom, 2);
    EXPECT_EQ(pane(each).panY, -40);
    EXPECT_TRUE(pane(each).pageBitmap);
  }
}

// Entering Book on the last page lowers the number alone.
TEST_F(PageNumbersTest, AFailedInsertionLeavesAPageUnderTheNumberOfAnother) {
  opened(u"a.pdf", 3);
  goToPage(0, 2, false);
  setViewMode(ViewMode::Book);
  standIn().boxAnswers = {BoxAnswer::Ok};
  insertAbove(pdfWithBrokenPage(4, 3));
  EXPECT_EQ(pane(0).currentPage, 1);
  EXPECT_EQ(pane(0).openPage, 2);
}

TEST_F(PageNumbersTest, AFailedInsertionLeavesTheOnlyPageOfABookAlone) {
  opened(u"a.pdf", 1);
  setViewMode(ViewMode::Book);
  standIn().boxAnswers = {BoxAnswer::Ok};
  insertAbove(pdfWithBrokenPage(4, 3));
  EXPECT_EQ(pane(0).openPage, 0);
  EXPECT_FALSE(pane(1).page);
}

// PDFium looks for the page to delete by the counts of the nodes.
TEST_F(PageNumbersTest, NodesThatCountWronglyDoNotDivertADeletion) {
  PdfFile file;
  const int catalog = file.reserve();
  const int tree = file.reserve();
  const int first = file.reserve();
  const int second = file.reserve();
  const auto pages = [&file](int parent, std::vector<int> wide) {
    std::string kids;
    for (const int width : wide) {
      kids +=
          PdfFile::reference(file.add("<< /Type /Page /Parent " + PdfFile::reference(parent) +
                                      " /MediaBox [0 0 " + std::to_string(width) + " 400] >>")) +
          " ";
    }
    return "/Kids [" + kids + "] >>";
  };
  const std::string ofFirst = pages(first, {100, 200});
  const std::string ofSecond = pages(second, {300, 400});
  const std::string root = PdfFile::reference(tree);
  file.set(catalog, "<< /Type /Catalog /Pages " + root + " >>");
  file.set(tree, "<< /Type /Pages /Count 4 /Kids [" + PdfFile::reference(first) + " " +
                     PdfFile::reference(second) + "] >>");
  file.set(first, "<< /Type /Pages /Count 1 /Parent " + root + " " + ofFirst);
  file.set(second, "<< /Type /Pages /Count 3 /Parent " + root + " " + ofSecond);
  ASSERT_TRUE(open(file.finish(catalog)));
  ASSERT_THAT(widths(documentOf(0)), ElementsAre(100, 200, 300, 400));
  deletePage(1);
  EXPECT_THAT(widths(documentOf(0)), ElementsAre(100, 300, 400));
}

// A page that stands twice, and another one.
TEST_F(PageNumbersTest, ADocumentThatIsOpenedAgainIsSeparatedAgain) {
  PdfFile file;
  const int catalog = file.reserve();
  const int tree = file.reserve();
  const std::string root = PdfFile::reference(tree);
  const auto page = [&](int width) {
    return PdfFile::reference(file.add("<< /Type /Page /Parent " + root + " /MediaBox [0 0 " +
                                       std::to_string(width) + " 400] >>"));
  };
  const std::string twice = page(100);
  const std::string once = page(200);
  file.set(catalog, "<< /Type /Catalog /Pages " + root + " >>");
  file.set(tree, "<< /Type /Pages /Count 3 /Kids [" + twice + " " + twice + " " + once + "] >>");
  for (int round = 0; round < 2; ++round) {
    ASSERT_TRUE(open(file.finish(catalog)));
    EXPECT_FALSE(session.active.pagesSeparate);
    goToPage(0, 1, false);
    rotatePage(0);
    commitRotations(0);
    EXPECT_EQ(ownRotationOf(documentOf(0), 0), 0);
    EXPECT_EQ(ownRotationOf(documentOf(0), 1), 1);
    setViewMode(round == 0 ? ViewMode::TwoDocuments : ViewMode::SinglePage);
    EXPECT_TRUE(documentSlotOf(0).pagesSeparate);
    deletePage(0);
    EXPECT_THAT(widths(documentOf(0)), ElementsAre(400, 200));
  }
}

}  // namespace
}  // namespace quillmere::test
