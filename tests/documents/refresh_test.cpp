#include "documents/modes.h"
#include "documents/open.h"
#include "store/working_documents.h"
#include "view/navigation.h"
#include "view/view_test.h"

namespace quillmere::test {
namespace {

class RefreshTest : public ViewTest {
 protected:
  RefreshTest() {
    session.viewerRole = true;
    path_ = putPdf(u"C:\\docs\\shown.pdf", simplePdf(10, 400, 600));
    openDocument(&path_, 0, kWorkingDocsLeaveAlone, false, nullptr);
  }

  static char16_t shownPageDigit() {
    unsigned short text[16] = {};
    FPDFText_GetText(pane(0).textPage.get(), 0, 15, text);
    return text[5];  // of "Page N"
  }

  std::u16string path_;
};

TEST_F(RefreshTest, TheFirstPageComesUnderTheOldNumberWithTheOldView) {
  goToPage(0, 6, false);
  setView(0, 2.0f, -70.0f, -320.0f);
  putPdf(path_, simplePdf(12, 400, 600));
  refreshFromSource();
  EXPECT_EQ(session.active.pageCount, 12);
  EXPECT_EQ(pane(0).currentPage, 6);
  EXPECT_EQ(shownPageDigit(), u'1');
  EXPECT_EQ(pane(0).zoomMode, kCustomFit);
  EXPECT_FLOAT_EQ(pane(0).zoom, 2.0f);
  EXPECT_FLOAT_EQ(pane(0).panX, -70.0f);
  EXPECT_FLOAT_EQ(pane(0).panY, -320.0f);
  EXPECT_EQ(pane(0).pageBitmapWidth, 800);
  EXPECT_EQ(window().statusTexts[2], u"\t\tPage 7 of 12  ");
  goToPage(0, 7, false);
  EXPECT_EQ(shownPageDigit(), u'8');
}

TEST_F(RefreshTest, TheStatusShowsThePageAndTheZoomThatCameBack) {
  goToPage(0, 6, false);
  setView(0, 2.0f, -70.0f, -320.0f);
  refreshFromSource();
  EXPECT_EQ(window().statusTexts[0], u"  Zoom: 200%");
  EXPECT_EQ(window().statusTexts[2], u"\t\tPage 7 of 10  ");
}

TEST_F(RefreshTest, AShorterFileHoldsTheNumberAtItsEnd) {
  goToPage(0, 6, false);
  putPdf(path_, simplePdf(3, 400, 600));
  refreshFromSource();
  EXPECT_EQ(pane(0).currentPage, 2);
}

TEST_F(RefreshTest, AFileThatIsGoneIsReportedAndCanBeTriedAgain) {
  platform::deleteFile(path_);
  platform::standIn().boxAnswers = {platform::BoxAnswer::Ok};
  refreshFromSource();
  EXPECT_EQ(platform::standIn().boxes.size(), 1u);
  EXPECT_EQ(session.active.document, nullptr);
  putPdf(path_, simplePdf(4, 400, 600));
  refreshFromSource();
  EXPECT_EQ(session.active.pageCount, 4);
}

TEST_F(RefreshTest, OnlyAViewerRefreshes) {
  session.viewerRole = false;
  putPdf(path_, simplePdf(12, 400, 600));
  refreshFromSource();
  EXPECT_EQ(session.active.pageCount, 10);
}

TEST_F(RefreshTest, WithNothingOpenThereIsNothingToRefresh) {
  resetSession();
  session.viewerRole = true;
  refreshFromSource();
  EXPECT_TRUE(platform::standIn().boxes.empty());
}

}  // namespace
}  // namespace quillmere::test
