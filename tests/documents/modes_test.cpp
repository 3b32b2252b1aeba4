#include "documents/modes.h"

#include "app/command_ids.h"
#include "view/geometry.h"
#include "view/navigation.h"
#include "view/panes.h"
#include "view/rotation.h"
#include "view/view_test.h"

namespace quillmere::test {
namespace {

constexpr ViewMode kModes[] = {ViewMode::SinglePage, ViewMode::Book, ViewMode::IndependentPages,
                               ViewMode::TwoDocuments};

class ModesTest : public ViewTest {
 protected:
  // Opens a document of ten pages on its third page, in `mode`.
  FPDF_DOCUMENT startIn(ViewMode mode) {
    const FPDF_DOCUMENT document = openAndShow(simplePdf(10, 400, 600));
    setViewMode(mode);
    goToPage(0, 2, false);
    return document;
  }

  // Expects the edited `document` of startIn where `mode` keeps its document.
  static void expectDocumentMovedTo(ViewMode mode, FPDF_DOCUMENT document) {
    EXPECT_EQ(session.viewMode, mode);
    EXPECT_EQ(documentOf(0), document);
    EXPECT_EQ(pageCountOf(0), 10);
    EXPECT_EQ(pathOf(0), u"C:\\active.pdf");
    EXPECT_TRUE(dirtyOf(0));
    const bool two = mode == ViewMode::TwoDocuments;
    EXPECT_EQ(session.active.document == nullptr, two);
    EXPECT_EQ(session.active.pageCount, two ? 0 : 10);
    EXPECT_EQ(session.active.dirty, !two);
    EXPECT_EQ(session.panes[0].document != nullptr, two);
    EXPECT_EQ(session.panes[0].dirty, two);
  }

  // Expects what the panes show in `mode` with the left pane on the third page.
  static void expectPanesShownIn(ViewMode mode) {
    EXPECT_EQ(pane(0).currentPage, 2);
    EXPECT_NE(pane(0).pageBitmap, nullptr);
    if (mode == ViewMode::Book) {
      EXPECT_EQ(pane(1).currentPage, 3);
    }
    if (mode == ViewMode::Book || mode == ViewMode::IndependentPages) {
      EXPECT_NE(pane(1).pageBitmap, nullptr);
    }
    if (mode == ViewMode::TwoDocuments) {
      EXPECT_EQ(documentOf(1), nullptr);
      EXPECT_EQ(pane(1).page, nullptr);
      EXPECT_EQ(pane(1).currentPage, 0);
    }
  }
};

TEST_F(ModesTest, EveryModeCanFollowEveryOther) {
  for (const ViewMode from : kModes) {
    for (const ViewMode to : kModes) {
      if (from == to) continue;
      SCOPED_TRACE(testing::Message() << static_cast<int>(from) << " to " << static_cast<int>(to));
      resetSession();
      const FPDF_DOCUMENT document = startIn(from);
      session.paneDividerPosition = 333;
      session.active.dirty = from != ViewMode::TwoDocuments;
      session.panes[0].dirty = from == ViewMode::TwoDocuments;
      const int erased = window().erasingInvalidations;

      setViewMode(to);

      expectDocumentMovedTo(to, document);
      expectPanesShownIn(to);
      EXPECT_EQ(session.paneDividerPosition, 0);
      EXPECT_EQ(session.lastPaneWidth[0], to == ViewMode::SinglePage ? 1000 : 500);
      EXPECT_GT(window().erasingInvalidations, erased);
    }
  }
}

TEST_F(ModesTest, TheMenuMarksThePresentMode) {
  const std::uint32_t commands[] = {kCmdSinglePage, kCmdBook, kCmdIndependentPages,
                                    kCmdTwoDocuments};
  startIn(ViewMode::Book);
  for (std::size_t chosen = 0; chosen < 4; ++chosen) {
    setViewMode(kModes[chosen]);
    for (std::size_t each = 0; each < 4; ++each) {
      EXPECT_EQ(window().menuItems[commands[each]].checked, each == chosen);
    }
  }
}

TEST_F(ModesTest, ChoosingThePresentModeChangesNothing) {
  for (const ViewMode mode : kModes) {
    resetSession();
    startIn(mode);
    pane(0).backHistory = {JumpRecord{1, 0, 0, 1, kFitPage}};
    session.selection = {true, 0, 1, 4, false};
    session.paneDividerPosition = 400;
    window().invalidations = 0;
    setViewMode(mode);
    EXPECT_EQ(pane(0).backHistory.size(), 1u);
    EXPECT_TRUE(session.selection.active);
    EXPECT_EQ(session.paneDividerPosition, 400);
    EXPECT_EQ(window().invalidations, 0);
  }
}

TEST_F(ModesTest, AChangeEndsSearchSelectionAndJumpHistories) {
  startIn(ViewMode::SinglePage);
  for (PaneSlot& slot : session.panes) {
    slot.backHistory = {JumpRecord{1, 0, 0, 1, kFitPage}};
    slot.forwardHistory = {JumpRecord{1, 0, 0, 1, kFitPage}};
  }
  session.selection = {true, 0, 1, 4, false};
  session.find.query = u"word";
  setViewMode(ViewMode::IndependentPages);
  for (const PaneSlot& slot : session.panes) {
    EXPECT_TRUE(slot.backHistory.empty());
    EXPECT_TRUE(slot.forwardHistory.empty());
  }
  EXPECT_FALSE(session.selection.active);
  EXPECT_TRUE(session.find.query.empty());
}

TEST_F(ModesTest, ModesChangeWithoutADocument) {
  for (const ViewMode mode :
       {ViewMode::TwoDocuments, ViewMode::Book, ViewMode::IndependentPages, ViewMode::SinglePage}) {
    setViewMode(mode);
    EXPECT_EQ(session.viewMode, mode);
    EXPECT_EQ(documentOf(0), nullptr);
    EXPECT_EQ(pane(0).page, nullptr);
    EXPECT_EQ(pane(1).page, nullptr);
    EXPECT_EQ(window().title, u"Quillmere");
  }
}

TEST_F(ModesTest, TwoDocumentsWithoutADocumentForgetsWhatPanesShowedLongAgo) {
  pane(0).path = u"C:\\old.pdf";
  pane(0).pageCount = 7;
  pane(1).path = u"C:\\older.pdf";
  pane(1).pageCount = 8;
  setViewMode(ViewMode::TwoDocuments);
  EXPECT_TRUE(pathOf(0).empty());
  EXPECT_TRUE(pathOf(1).empty());
  EXPECT_EQ(pageCountOf(0), 0);
  EXPECT_EQ(pageCountOf(1), 0);
}

TEST_F(ModesTest, TheStampPanelExistsInSinglePageAlone) {
  for (const ViewMode mode : {ViewMode::Book, ViewMode::IndependentPages, ViewMode::TwoDocuments}) {
    resetSession();
    startIn(ViewMode::SinglePage);
    session.stampPanelVisible = true;
    const int layouts = window().layouts;
    setViewMode(mode);
    EXPECT_FALSE(session.stampPanelVisible);
    EXPECT_EQ(window().layouts, layouts + 1);
  }
}

TEST_F(ModesTest, TheStampPanelStaysOnTheWayIntoSinglePage) {
  startIn(ViewMode::Book);
  session.stampPanelVisible = true;
  setViewMode(ViewMode::SinglePage);
  EXPECT_TRUE(session.stampPanelVisible);
}

TEST_F(ModesTest, SinglePageMakesItsPaneActive) {
  startIn(ViewMode::IndependentPages);
  setActivePane(1);
  setViewMode(ViewMode::Book);
  EXPECT_EQ(session.activePane, 1);
  setViewMode(ViewMode::SinglePage);
  EXPECT_EQ(session.activePane, 0);
}

TEST_F(ModesTest, LeavingTwoDocumentsKeepsTheLeftOneWithoutAQuestion) {
  const FPDF_DOCUMENT kept = openAndShowIn(0, simplePdf(3));
  openAndShowIn(1, simplePdf(5));
  pane(0).dirty = true;
  pane(1).dirty = true;
  session.documentBinders[u"c:\\left.pdf"] = u"a.lst";
  session.documentBinders[u"c:\\right.pdf"] = u"b.lst";
  setViewMode(ViewMode::IndependentPages);
  EXPECT_TRUE(platform::standIn().boxes.empty());
  EXPECT_EQ(session.active.document.get(), kept);
  EXPECT_EQ(session.active.pageCount, 3);
  EXPECT_EQ(session.active.path, u"C:\\left.pdf");
  EXPECT_TRUE(session.active.dirty);
  EXPECT_EQ(pane(0).document, nullptr);
  EXPECT_EQ(pane(1).document, nullptr);
  EXPECT_FALSE(pane(0).dirty);
  EXPECT_FALSE(pane(1).dirty);
  EXPECT_EQ(session.documentBinders.size(), 1u);
  EXPECT_EQ(session.documentBinders.count(u"c:\\left.pdf"), 1u);
}

TEST_F(ModesTest, LeavingTwoDocumentsWithTheLeftPaneEmptyLeavesNothingOpen) {
  openAndShowIn(1, simplePdf(5));
  session.placementDocument = documentOf(1);
  session.placements[0] = {Placement{}};
  setViewMode(ViewMode::SinglePage);
  EXPECT_EQ(session.active.document, nullptr);
  EXPECT_EQ(session.placementDocument, nullptr);
  EXPECT_TRUE(session.placements.empty());
  EXPECT_EQ(pane(1).page, nullptr);
}

TEST_F(ModesTest, PlacementsFollowTheDocumentThatIsKept) {
  const FPDF_DOCUMENT kept = openAndShowIn(0, simplePdf(3));
  const FPDF_DOCUMENT lost = openAndShowIn(1, simplePdf(5));
  session.placementDocument = lost;
  setViewMode(ViewMode::SinglePage);
  EXPECT_EQ(session.placementDocument, kept);
}

TEST_F(ModesTest, PlacementsOfTheKeptDocumentAreNotReadAnew) {
  session.placementDocument = openAndShowIn(0, simplePdf(3));
  session.placements[2] = {Placement{}};
  setViewMode(ViewMode::SinglePage);
  EXPECT_EQ(session.placements.size(), 1u);
}

TEST_F(ModesTest, TheRightPaneTakesTheTurnOfTheKeptDocument) {
  openAndShowIn(0, simplePdf(3));
  openAndShowIn(1, simplePdf(5));
  pane(0).documentRotation = 3;
  pane(1).documentRotation = 1;
  setViewMode(ViewMode::IndependentPages);
  EXPECT_EQ(pane(0).documentRotation, 3u);
  EXPECT_EQ(pane(1).documentRotation, 3u);
}

TEST_F(ModesTest, TurnsOfTheDocumentStayThroughTwoDocuments) {
  startIn(ViewMode::SinglePage);
  rotateDocument(0);
  session.active.pageRotations[4] = 2;
  setViewMode(ViewMode::TwoDocuments);
  EXPECT_EQ(pane(0).documentRotation, 1u);
  EXPECT_TRUE(pageRotationsOf(0).empty());
  pane(0).pageRotations[1] = 1;
  setViewMode(ViewMode::SinglePage);
  EXPECT_EQ(session.active.pageRotations, (PageRotations{{4, 2}}));
  EXPECT_EQ(pane(0).documentRotation, 1u);
}

TEST_F(ModesTest, TheOldPathOfTheRightPaneDoesNotTakeTheOpenFilesBinder) {
  startIn(ViewMode::SinglePage);
  pane(1).path = u"c:\\ACTIVE.pdf";
  session.documentBinders[u"c:\\active.pdf"] = u"a.lst";
  setViewMode(ViewMode::TwoDocuments);
  EXPECT_EQ(session.documentBinders.count(u"c:\\active.pdf"), 1u);
  EXPECT_TRUE(pane(1).path.empty());
}

TEST_F(ModesTest, TheOldPathOfTheRightPaneLeavesItsBinder) {
  startIn(ViewMode::SinglePage);
  pane(1).path = u"C:\\other.pdf";
  session.documentBinders[u"c:\\other.pdf"] = u"a.lst";
  setViewMode(ViewMode::TwoDocuments);
  EXPECT_TRUE(session.documentBinders.empty());
}

TEST_F(ModesTest, PanesWithoutAPageAreLoadedForTheirNumber) {
  startIn(ViewMode::SinglePage);
  pane(1).currentPage = 6;
  setViewMode(ViewMode::IndependentPages);
  EXPECT_EQ(pane(0).currentPage, 2);
  EXPECT_EQ(pane(1).currentPage, 6);
  EXPECT_NE(pane(1).page, nullptr);
}

TEST_F(ModesTest, AnOpenPageIsLaidOutAnewButNotReloaded) {
  startIn(ViewMode::IndependentPages);
  const auto left = pane(0).page.get();
  setViewMode(ViewMode::SinglePage);
  EXPECT_EQ(pane(0).page.get(), left);
  EXPECT_FLOAT_EQ(pane(0).zoom, 1.2448f);
}

TEST_F(ModesTest, ABookShowsTheFollowingPageWhateverThePaneShowedBefore) {
  startIn(ViewMode::IndependentPages);
  goToPage(1, 7, false);
  setViewMode(ViewMode::Book);
  EXPECT_EQ(pane(1).currentPage, 3);
  ASSERT_NE(pane(1).textPage, nullptr);
  unsigned short text[16] = {};
  FPDFText_GetText(pane(1).textPage.get(), 0, 15, text);
  EXPECT_EQ(text[5], u'4');  // "Page 4"
}

TEST_F(ModesTest, EnteringABookOnTheLastPageKeepsItUnderTheNumberBefore) {
  openAndShow(simplePdf(10, 400, 600));
  goToPage(0, 9, false);
  const auto page = pane(0).page.get();
  setViewMode(ViewMode::Book);
  EXPECT_EQ(pane(0).currentPage, 8);
  EXPECT_EQ(pane(0).page.get(), page);
  EXPECT_EQ(pane(1).currentPage, 9);
  EXPECT_NE(pane(1).page, nullptr);
  goToPage(0, 8, false);
  unsigned short text[16] = {};
  FPDFText_GetText(pane(0).textPage.get(), 0, 15, text);
  EXPECT_EQ(text[5], u'9');
}

TEST_F(ModesTest, ABookOfOnePageLeavesTheRightPaneEmpty) {
  openAndShow(simplePdf(1, 400, 600));
  setViewMode(ViewMode::IndependentPages);
  ASSERT_NE(pane(1).page, nullptr);
  setViewMode(ViewMode::Book);
  EXPECT_EQ(pane(0).currentPage, 0);
  EXPECT_EQ(pane(1).currentPage, 0);
  EXPECT_EQ(pane(1).page, nullptr);
  EXPECT_EQ(pane(1).pageBitmap, nullptr);
  EXPECT_NE(documentOf(1), nullptr);
}

TEST_F(ModesTest, ABookOfTwoPagesStartsWithTheFirst) {
  openAndShow(simplePdf(2, 400, 600));
  goToPage(0, 1, false);
  setViewMode(ViewMode::Book);
  EXPECT_EQ(pane(0).currentPage, 0);
  EXPECT_EQ(pane(1).currentPage, 1);
}

class BookOverrideTest : public ViewTest {
 protected:
  BookOverrideTest() { openAndShow(simplePdf(10, 400, 600)); }
};

TEST_F(BookOverrideTest, ABookShowsWholePagesAndTheViewOfBeforeComesBack) {
  setView(0, 2.0f, -70.0f, -320.0f);
  setViewMode(ViewMode::Book);
  EXPECT_TRUE(session.bookOverrideActive);
  EXPECT_EQ(pane(0).zoomMode, kFitPage);
  EXPECT_FLOAT_EQ(pane(0).zoom, 1.2f);
  setViewMode(ViewMode::SinglePage);
  EXPECT_FALSE(session.bookOverrideActive);
  EXPECT_EQ(pane(0).zoomMode, kCustomFit);
  EXPECT_FLOAT_EQ(pane(0).zoom, 2.0f);
  EXPECT_FLOAT_EQ(pane(0).panX, -70.0f);
  EXPECT_FLOAT_EQ(pane(0).panY, -320.0f);
  EXPECT_EQ(pane(0).pageBitmapWidth, 800);
}

TEST_F(BookOverrideTest, AFitModeComesBackWithTheScrollPositionItHad) {
  pane(0).zoomMode = kFitWidth;
  goToPage(0, 1, false);
  pane(0).panY = -333.0f;
  setViewMode(ViewMode::Book);
  setViewMode(ViewMode::SinglePage);
  EXPECT_EQ(pane(0).zoomMode, kFitWidth);
  EXPECT_FLOAT_EQ(pane(0).zoom, 2.4f);
  EXPECT_FLOAT_EQ(pane(0).panY, -333.0f);
}

TEST_F(BookOverrideTest, BothPanesComeBack) {
  setViewMode(ViewMode::IndependentPages);
  setView(0, 2.0f, -70.0f, -320.0f);
  setView(1, 3.0f, -80.0f, -330.0f);
  setViewMode(ViewMode::Book);
  setViewMode(ViewMode::IndependentPages);
  EXPECT_FLOAT_EQ(pane(0).panX, -70.0f);
  EXPECT_FLOAT_EQ(pane(0).panY, -320.0f);
  EXPECT_FLOAT_EQ(pane(1).zoom, 3.0f);
  EXPECT_FLOAT_EQ(pane(1).panX, -80.0f);
  EXPECT_FLOAT_EQ(pane(1).panY, -330.0f);
}

TEST_F(BookOverrideTest, AFittedPageIsCentredInAPaneOfAnotherSize) {
  setViewMode(ViewMode::Book);
  setViewMode(ViewMode::IndependentPages);
  for (const int each : {0, 1}) {
    const double width = paneRect(each).width();
    EXPECT_EQ(pane(each).zoomMode, kFitPage);
    EXPECT_NEAR(pane(each).panX, (width - pane(each).zoom * 400) / 2, 1e-3);
  }
}

TEST_F(BookOverrideTest, ARestoredPanKeepsAPartOfThePageVisible) {
  setView(0, 2.0f, 900.0f, 0.0f);
  setViewMode(ViewMode::Book);
  window().client.width = 600;
  setViewMode(ViewMode::SinglePage);
  EXPECT_FLOAT_EQ(pane(0).panX, 520.0f);
}

TEST_F(BookOverrideTest, WithoutTheSettingNothingIsSavedOrRestored) {
  session.settings.bookRevertToFit = false;
  setView(0, 2.0f, -70.0f, -320.0f);
  setViewMode(ViewMode::Book);
  EXPECT_FALSE(session.bookOverrideActive);
  EXPECT_EQ(pane(0).zoomMode, kCustomFit);
  setView(0, 3.0f, 0.0f, 0.0f);
  setViewMode(ViewMode::SinglePage);
  EXPECT_FLOAT_EQ(pane(0).zoom, 3.0f);
}

TEST_F(BookOverrideTest, ASavedViewIsNotOverwrittenByEnteringABook) {
  setView(0, 2.0f, -70.0f, -320.0f);
  saveBookOverride();
  setView(0, 4.0f, 0.0f, 0.0f);
  setViewMode(ViewMode::Book);
  EXPECT_FLOAT_EQ(session.bookOverrideZoom[0], 2.0f);
}

TEST_F(BookOverrideTest, SavingTakesBothPanes) {
  setViewMode(ViewMode::IndependentPages);
  setView(0, 2.0f, -70.0f, -320.0f);
  setView(1, 3.0f, -80.0f, -330.0f);
  saveBookOverride();
  EXPECT_TRUE(session.bookOverrideActive);
  EXPECT_FLOAT_EQ(session.bookOverrideZoom[1], 3.0f);
  EXPECT_FLOAT_EQ(session.bookOverridePanX[1], -80.0f);
  EXPECT_FLOAT_EQ(session.bookOverridePanY[0], -320.0f);
  EXPECT_EQ(session.bookOverrideZoomMode[0], kCustomFit);
}

TEST_F(BookOverrideTest, WithoutADocumentABookSavesNothing) {
  resetSession();
  setViewMode(ViewMode::Book);
  EXPECT_FALSE(session.bookOverrideActive);
}

TEST_F(BookOverrideTest, ChangedSettingsReachTheOpenBook) {
  session.settings.bookRevertToFit = false;
  session.settings.bookEqualizePanes = false;
  setViewMode(ViewMode::Book);
  setView(0, 2.0f, -70.0f, -320.0f);
  session.paneDividerPosition = 400;
  applyBookSettings();
  EXPECT_EQ(session.paneDividerPosition, 400);
  EXPECT_FLOAT_EQ(pane(0).zoom, 2.0f);

  session.settings.bookRevertToFit = true;
  session.settings.bookEqualizePanes = true;
  const int erased = window().erasingInvalidations;
  applyBookSettings();
  EXPECT_EQ(session.paneDividerPosition, 0);
  EXPECT_TRUE(session.bookOverrideActive);
  EXPECT_FLOAT_EQ(session.bookOverrideZoom[0], 2.0f);
  EXPECT_EQ(pane(0).zoomMode, kFitPage);
  EXPECT_FLOAT_EQ(pane(0).zoom, 1.2f);
  EXPECT_EQ(window().erasingInvalidations, erased + 1);

  setView(0, 3.0f, 0.0f, 0.0f);
  applyBookSettings();  // the view saved first stays
  EXPECT_FLOAT_EQ(session.bookOverrideZoom[0], 2.0f);

  session.settings.bookRevertToFit = false;
  applyBookSettings();
  EXPECT_FALSE(session.bookOverrideActive);
  EXPECT_EQ(pane(0).zoomMode, kFitPage);
}

TEST_F(BookOverrideTest, BookSettingsConcernABookAlone) {
  setViewMode(ViewMode::IndependentPages);
  session.paneDividerPosition = 400;
  applyBookSettings();
  EXPECT_EQ(session.paneDividerPosition, 400);
  EXPECT_FALSE(session.bookOverrideActive);
}

class RefitTest : public ViewTest {
 protected:
  RefitTest() {
    openAndShow(simplePdf(10, 400, 600));
    setViewMode(ViewMode::IndependentPages);
  }
};

TEST_F(RefitTest, FittedPagesFollowTheWindow) {
  window().client = {2000, 1622};
  const int erased = window().erasingInvalidations;
  refitPanes();
  EXPECT_FLOAT_EQ(pane(0).zoom, 2.4f);  // 1000 / 400 * 0.96
  EXPECT_NEAR(pane(1).zoom, 2.3952f, 1e-5f);
  EXPECT_EQ(pane(0).pageBitmapWidth, 960);
  EXPECT_EQ(session.lastPaneWidth[0], 1000);
  EXPECT_EQ(window().erasingInvalidations, erased + 1);
}

TEST_F(RefitTest, APageTallerThanItsPaneShowsItsTopAgain) {
  for (const ZoomMode mode : {kFitWidth, kActualSize, kCustomFit}) {
    setView(0, 3.0f, 0.0f, -400.0f);
    pane(0).zoomMode = mode;
    window().client.height = 500;
    refitPanes();
    EXPECT_FLOAT_EQ(pane(0).panY, 8.0f) << mode;
  }
}

TEST_F(RefitTest, CustomFitKeepsItsPlaceFromThePanesCentre) {
  setView(0, 1.0f, 40.0f, 0.0f);
  window().client.width = 1100;
  refitPanes();
  EXPECT_FLOAT_EQ(pane(0).panX, 65.0f);  // the pane gained 50
  refitPanes();
  EXPECT_FLOAT_EQ(pane(0).panX, 65.0f);
}

TEST_F(RefitTest, AnUnknownFormerWidthMovesNothing) {
  setView(0, 1.0f, 40.0f, 0.0f);
  session.lastPaneWidth[0] = -1;
  window().client.width = 1100;
  refitPanes();
  EXPECT_FLOAT_EQ(pane(0).panX, 40.0f);
  EXPECT_EQ(session.lastPaneWidth[0], 550);
}

TEST_F(RefitTest, APaneWithoutAPageForgetsItsWidth) {
  dropPaneView(1);
  refitPanes();
  EXPECT_EQ(session.lastPaneWidth[1], -1);
  EXPECT_EQ(session.lastPaneWidth[0], 500);
}

TEST_F(RefitTest, AHiddenPaneIsLeftAlone) {
  setViewMode(ViewMode::SinglePage);
  ASSERT_NE(pane(1).page, nullptr);
  const auto* bitmap = pane(1).pageBitmap.get();
  window().client.width = 1100;
  refitPanes();
  EXPECT_EQ(pane(1).pageBitmap.get(), bitmap);
}

TEST_F(RefitTest, AMinimisedWindowChangesNoZoom) {
  const float zoom = pane(0).zoom;
  window().client = {0, 0};
  refitPanes();
  EXPECT_FLOAT_EQ(pane(0).zoom, zoom);
}

TEST_F(RefitTest, TabFlipsTheActivePaneOutsideSinglePage) {
  window().invalidations = 0;
  flipActivePane();
  EXPECT_EQ(session.activePane, 1);
  EXPECT_EQ(window().invalidations, 1);
  flipActivePane();
  EXPECT_EQ(session.activePane, 0);
  setViewMode(ViewMode::SinglePage);
  flipActivePane();
  EXPECT_EQ(session.activePane, 0);
}

TEST_F(RefitTest, ActivatingTheActivePaneRepaintsNothing) {
  window().invalidations = 0;
  activatePane(0);
  EXPECT_EQ(window().invalidations, 0);
  activatePane(1);
  EXPECT_EQ(window().invalidations, 1);
}

}  // namespace
}  // namespace quillmere::test
