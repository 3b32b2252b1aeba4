#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "documents/close.h"
#include "documents/modes.h"
#include "documents/open.h"
#include "documents/open_binder_entry.h"
#include "platform/text.h"
#include "store/binder_library.h"
#include "store/binder_views.h"
#include "store/working_documents.h"
#include "support/pdf_builder.h"
#include "support/session_test.h"
#include "view/navigation.h"
#include "view/zoom.h"

namespace quillmere::test {
namespace {

using platform::standIn;
using testing::IsEmpty;

constexpr const char16_t* kList = u"C:\\list.lst";

// A custom binder with a.pdf and b.pdf behind the documents in use.
class BinderViewsTest : public SessionTest {
 protected:
  BinderViewsTest() {
    putPdf(u"a.pdf", simplePdf(6));
    putPdf(u"b.pdf", simplePdf(4));
    platform::putFile(kList, "C:\\a.pdf\r\nC:\\b.pdf\r\n");
    LoadWorkingDocuments();
    LoadBinder(kList);
  }

  static void openEntry(int file, bool ask = false) {
    openBinderEntry(1u << 16 | static_cast<std::uint32_t>(file), ask, false);
  }

  static const BinderEntry* viewOf(const std::u16string& path) {
    const auto& views = session.binderLibrary.at(1).views;
    const auto found = views.find(platform::toLower(path));
    return found == views.end() ? nullptr : &found->second;
  }

  static std::string onDisk() { return platform::fileBytes(kList).value_or(""); }

  static void showCustomFit(int pane, float zoom, float panX, float panY) {
    PaneSlot& slot = session.panes[pane];
    slot.zoomMode = kCustomFit;
    slot.zoom = zoom;
    slot.panX = panX;
    slot.panY = panY;
  }
};

// Storing.

TEST_F(BinderViewsTest, AViewIsStoredWithItsPageAndWritten) {
  openEntry(0);
  goToPage(0, 3, false);
  showCustomFit(0, 1.25f, -20, 15);
  SaveCurrentView(0);
  ASSERT_NE(viewOf(u"C:\\A.pdf"), nullptr);
  EXPECT_NE(onDisk().find("C:\\a.pdf\tpage=3\tpanX=-20\tpanY=15\tzoom=1.25\tmode=3\r\n"),
            std::string::npos)
      << onDisk();
}

TEST_F(BinderViewsTest, BoldSurvivesANewView) {
  openEntry(0);
  session.binderLibrary[1].views[u"c:\\a.pdf"].bold = true;
  SaveCurrentView(0);
  EXPECT_TRUE(viewOf(u"c:\\a.pdf")->bold);
  EXPECT_TRUE(viewOf(u"c:\\a.pdf")->hasPage);
}

TEST_F(BinderViewsTest, ADocumentOfNoBinderStoresNothing) {
  const std::u16string path = u"C:\\a.pdf";
  ASSERT_TRUE(openDocument(&path, 0, kWorkingDocsLeaveAlone, false, nullptr));
  SaveCurrentView(0);
  EXPECT_EQ(viewOf(path), nullptr);
  session.documentBinders[u"c:\\a.pdf"] = u"C:\\closed.lst";
  SaveCurrentView(0);
  EXPECT_EQ(viewOf(path), nullptr);
}

TEST_F(BinderViewsTest, APaneWithoutAPageStoresNothing) {
  openEntry(0);
  closePanePage(0);
  SaveCurrentView(0);
  EXPECT_EQ(viewOf(u"C:\\a.pdf"), nullptr);
}

TEST_F(BinderViewsTest, AFittedBookStoresThePageAlone) {
  openEntry(0);
  BinderEntry& stored = session.binderLibrary[1].views[u"c:\\a.pdf"];
  stored.mode = kFitWidth;
  stored.zoom = 2;
  session.settings.bookRevertToFit = true;
  setViewMode(ViewMode::Book);
  goToPage(0, 2, false);
  SaveCurrentView(1);  // pane 0 stands for both
  EXPECT_EQ(viewOf(u"C:\\a.pdf")->page, 2);
  EXPECT_EQ(viewOf(u"C:\\a.pdf")->mode, kFitWidth);
  EXPECT_EQ(viewOf(u"C:\\a.pdf")->zoom, 2.0f);
}

TEST_F(BinderViewsTest, ABookThatIsNotFittedStoresItsView) {
  session.settings.bookRevertToFit = false;
  openEntry(0);
  setViewMode(ViewMode::Book);
  showCustomFit(0, 0.5f, 1, 2);
  SaveCurrentView(0);
  EXPECT_EQ(viewOf(u"C:\\a.pdf")->mode, kCustomFit);
  EXPECT_EQ(viewOf(u"C:\\a.pdf")->zoom, 0.5f);
}

TEST_F(BinderViewsTest, AFailedWriteOfAViewIsSilent) {
  openEntry(0);
  platform::setReadOnly(kList, true);
  SaveCurrentView(0);
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_NE(viewOf(u"C:\\a.pdf"), nullptr);
}

TEST_F(BinderViewsTest, AViewIsStoredWhenTheDocumentIsReplaced) {
  openEntry(0);
  goToPage(0, 4, false);
  openEntry(1);
  EXPECT_EQ(viewOf(u"C:\\a.pdf")->page, 4);
}

TEST_F(BinderViewsTest, AViewIsStoredWhenTheDocumentIsClosed) {
  openEntry(0);
  goToPage(0, 4, false);
  closeCommand(0);
  ASSERT_NE(viewOf(u"C:\\a.pdf"), nullptr);
  EXPECT_EQ(viewOf(u"C:\\a.pdf")->page, 4);
}

TEST_F(BinderViewsTest, AViewIsStoredWhenAChangeOfModeTakesTheDocumentAway) {
  setViewMode(ViewMode::TwoDocuments);
  openEntry(0);
  setActivePane(1);
  openEntry(1);
  goToPage(1, 2, false);
  setViewMode(ViewMode::SinglePage);
  ASSERT_NE(viewOf(u"C:\\b.pdf"), nullptr);
  EXPECT_EQ(viewOf(u"C:\\b.pdf")->page, 2);
  EXPECT_EQ(viewOf(u"C:\\a.pdf"), nullptr);  // it stays
}

TEST_F(BinderViewsTest, TheViewsOfBothDocumentsAreStoredAtTheEnd) {
  setViewMode(ViewMode::TwoDocuments);
  openEntry(0);
  goToPage(0, 1, false);
  setActivePane(1);
  openEntry(1);
  goToPage(1, 2, false);
  SaveCurrentViews();
  EXPECT_EQ(viewOf(u"C:\\a.pdf")->page, 1);
  EXPECT_EQ(viewOf(u"C:\\b.pdf")->page, 2);
}

TEST_F(BinderViewsTest, TheActivePaneTellsTheViewOfASharedDocument) {
  openEntry(0);
  setViewMode(ViewMode::IndependentPages);
  goToPage(1, 5, false);
  setActivePane(1);
  SaveCurrentViews();
  EXPECT_EQ(viewOf(u"C:\\a.pdf")->page, 5);
}

TEST_F(BinderViewsTest, DocumentsInUseThatAreNotRestoredGetNoFileByAView) {
  session.settings.restoreOpenDocs = false;
  const std::u16string path = u"C:\\a.pdf";
  ASSERT_TRUE(openDocument(&path, 0, kWorkingDocsToHead, false, nullptr));
  platform::deleteFile(WorkingDocsPath());
  SaveCurrentView(0);
  EXPECT_FALSE(platform::fileExists(WorkingDocsPath()));
  EXPECT_EQ(session.binderLibrary[0].views.size(), 1u);
  session.settings.restoreOpenDocs = true;
  SaveCurrentView(0);
  EXPECT_TRUE(platform::fileExists(WorkingDocsPath()));
}

TEST_F(BinderViewsTest, ARenamedBinderStillTakesTheViewsOfItsOpenDocuments) {
  openEntry(0);
  ASSERT_TRUE(RenameBinder(1, u"renamed"));
  goToPage(0, 2, false);
  closeCommand(0);
  ASSERT_NE(viewOf(u"C:\\a.pdf"), nullptr);
  EXPECT_EQ(viewOf(u"C:\\a.pdf")->page, 2);
}

// Restoring.

TEST_F(BinderViewsTest, AFileComesBackWhereItWasLeft) {
  openEntry(0);
  goToPage(0, 3, false);
  zoomIn(0);
  zoomIn(0);
  session.panes[0].panX = 30;
  const PaneSlot& slot = session.panes[0];
  const JumpRecord before{slot.currentPage, slot.panX, slot.panY, slot.zoom, slot.zoomMode};
  openEntry(1);
  EXPECT_EQ(session.panes[0].currentPage, 0);
  setZoomMode(0, kFitPage);
  openEntry(0);
  EXPECT_EQ(slot.currentPage, before.page);
  EXPECT_EQ(slot.openPage, before.page);
  EXPECT_EQ(slot.zoomMode, kCustomFit);
  EXPECT_FLOAT_EQ(slot.zoom, before.zoom);
  EXPECT_FLOAT_EQ(slot.panX, before.panX);
  EXPECT_FLOAT_EQ(slot.panY, before.panY);
  EXPECT_NE(slot.pageBitmap, nullptr);
}

class RestoreViewTest : public BinderViewsTest {
 protected:
  static BinderEntry& stored(const char16_t* key = u"c:\\a.pdf") {
    return session.binderLibrary[1].views[key];
  }
  static PaneSlot& pane(int index = 0) { return session.panes[index]; }
};

TEST_F(RestoreViewTest, AStoredPageAloneKeepsTheZoomMode) {
  stored().page = 2;
  stored().hasPage = true;
  pane().zoomMode = kFitWidth;
  openEntry(0);
  EXPECT_EQ(pane().currentPage, 2);
  EXPECT_EQ(pane().zoomMode, kFitWidth);
}

TEST_F(RestoreViewTest, AViewWithoutAPageIsTheFirstPage) {
  stored().mode = kActualSize;
  openEntry(0);
  EXPECT_EQ(pane().currentPage, 0);
  EXPECT_EQ(pane().zoomMode, kActualSize);
  EXPECT_EQ(pane().zoom, 1.0f);
}

TEST_F(RestoreViewTest, BoldAloneRestoresNothing) {
  stored().bold = true;
  stored().page = 3;
  openEntry(0);
  EXPECT_EQ(pane().currentPage, 0);
}

TEST_F(RestoreViewTest, TheSettingTurnsItOff) {
  session.settings.restoreView = false;
  stored().page = 3;
  stored().hasPage = true;
  openEntry(0);
  EXPECT_EQ(pane().currentPage, 0);
}

TEST_F(RestoreViewTest, APageBeyondTheDocumentIsTheLastOne) {
  stored().page = 999999;
  stored().hasPage = true;
  openEntry(0);
  EXPECT_EQ(pane().currentPage, 5);
}

TEST_F(RestoreViewTest, FitModesIgnoreTheStoredZoomAndPan) {
  stored().mode = kFitPage;
  stored().zoom = 4;
  stored().panX = -5000;
  openEntry(0);
  const float zoom = pane().zoom;
  const float panX = pane().panX;
  setZoomMode(0, kFitPage);
  EXPECT_EQ(pane().zoom, zoom);
  EXPECT_EQ(pane().panX, panX);
}

TEST_F(RestoreViewTest, ACustomZoomIsHeldToItsLimitsAndThePanToThePane) {
  stored().mode = kCustomFit;
  stored().zoom = 99;
  stored().panX = -3e38f;
  stored().panY = 3e38f;
  openEntry(0);
  EXPECT_EQ(pane().zoom, 5.0f);
  EXPECT_EQ(pane().panX, static_cast<float>(80 - pane().pageBitmapWidth));
  EXPECT_EQ(pane().panY, static_cast<float>(778 - 80));
  openEntry(1);
  stored().zoom = 0.011f;
  openEntry(0);
  EXPECT_EQ(pane().zoom, 0.2f);
}

TEST_F(RestoreViewTest, APaneTooNarrowToHoldAPanStillGetsOneThatIsNoMonster) {
  standIn().window.client = {100, 100};
  stored().mode = kCustomFit;
  stored().zoom = 0.2f;
  stored().panX = 3e38f;
  openEntry(0);
  EXPECT_LE(pane().panX, 1e6f);
}

TEST_F(RestoreViewTest, ABookKeepsAPageForItsRightSide) {
  session.settings.bookRevertToFit = false;
  setViewMode(ViewMode::Book);
  stored().page = 5;
  stored().hasPage = true;
  stored().mode = kCustomFit;
  stored().zoom = 0.5f;
  openEntry(0);
  EXPECT_EQ(pane(0).currentPage, 4);
  EXPECT_EQ(pane(1).currentPage, 5);
  EXPECT_NE(pane(1).pageBitmap, nullptr);
  EXPECT_EQ(pane(0).zoom, 0.5f);
}

TEST_F(RestoreViewTest, AFittedBookTakesThePageAlone) {
  session.settings.bookRevertToFit = true;
  setViewMode(ViewMode::Book);
  stored().page = 2;
  stored().hasPage = true;
  stored().mode = kCustomFit;
  stored().zoom = 0.5f;
  openEntry(0);
  EXPECT_EQ(pane(0).currentPage, 2);
  EXPECT_EQ(pane(1).currentPage, 3);
  EXPECT_EQ(pane(0).zoomMode, kFitPage);
}

TEST_F(RestoreViewTest, ABookOfOnePageHasNothingOnTheRight) {
  putPdf(u"a.pdf", simplePdf(1));
  session.settings.bookRevertToFit = false;
  setViewMode(ViewMode::Book);
  stored().page = 3;
  stored().hasPage = true;
  stored().mode = kFitWidth;
  openEntry(0);
  EXPECT_EQ(pane(0).currentPage, 0);
  EXPECT_EQ(pane(1).page, nullptr);
}

TEST_F(RestoreViewTest, TheActivePaneOfTwoDocumentsGetsTheView) {
  setViewMode(ViewMode::TwoDocuments);
  setActivePane(1);
  stored().page = 4;
  stored().hasPage = true;
  openEntry(0);
  EXPECT_EQ(pane(1).currentPage, 4);
  EXPECT_EQ(pane(0).currentPage, 0);
}

TEST_F(RestoreViewTest, ADocumentInUseComesBackToItsPageToo) {
  const std::u16string path = u"C:\\b.pdf";
  ASSERT_TRUE(openDocument(&path, 0, kWorkingDocsToHead, false, nullptr));
  goToPage(0, 2, false);
  closeCommand(0);
  openBinderEntry(0, false, false);
  EXPECT_EQ(session.active.path, path);
  EXPECT_EQ(pane().currentPage, 2);
}

}  // namespace
}  // namespace quillmere::test
