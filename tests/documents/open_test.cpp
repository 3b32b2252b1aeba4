#include "documents/open.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "documents/modes.h"
#include "platform/files.h"
#include "support/opening_test.h"
#include "support/pdf_builder.h"
#include "view/navigation.h"
#include "view/view_test.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::standIn;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr ViewMode kSharedModes[] = {ViewMode::SinglePage, ViewMode::Book,
                                     ViewMode::IndependentPages};

class OpenTest : public OpeningTest {
 protected:
  static void expectBox(const std::u16string& text, BoxButtons buttons) {
    ASSERT_EQ(standIn().boxes.size(), 1u);
    EXPECT_EQ(standIn().boxes[0].text, text);
    EXPECT_EQ(standIn().boxes[0].title, u"Quillmere");
    EXPECT_EQ(standIn().boxes[0].buttons, buttons);
  }

  static void startSearch() {
    session.find.query = u"word";
    session.find.results = {{0, 1, 2}};
    session.find.currentIndex = 0;
  }

  static void selectText() {
    session.selection.active = true;
    session.selection.pane = 0;
    session.selection.anchorChar = 1;
    session.selection.endChar = 3;
  }

  static void fillHistories() {
    for (PaneSlot& slot : session.panes) {
      slot.backHistory.resize(2);
      slot.forwardHistory.resize(1);
    }
  }

  static bool historiesEmpty(int pane) {
    return session.panes[pane].backHistory.empty() && session.panes[pane].forwardHistory.empty();
  }
};

std::u16string pathOfUnits(std::size_t units) {
  std::u16string path = u"C:\\";
  while (path.size() + 60 < units) path += std::u16string(49, u'd') + u"\\";
  return path + std::u16string(units - path.size() - 4, u'f') + u".pdf";
}

// The limit of a path.

TEST_F(OpenTest, APathOf259UnitsOpens) {
  const std::u16string path = putPdf(pathOfUnits(259), simplePdf(1));
  ASSERT_EQ(path.size(), 259u);
  EXPECT_TRUE(open(path));
  EXPECT_EQ(session.active.path, path);
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(OpenTest, APathOf260UnitsIsTooLong) {
  const std::u16string old = opened(u"old.pdf");
  startSearch();
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_FALSE(open(pathOfUnits(260)));
  expectBox(u"The file's path is too long to open.", BoxButtons::Ok);
  EXPECT_EQ(standIn().boxes[0].icon, BoxIcon::Error);
  EXPECT_EQ(session.active.path, old);
  EXPECT_NE(session.active.document, nullptr);
  EXPECT_EQ(session.find.query, u"word");
}

TEST_F(OpenTest, ADisplayPathOf260UnitsIsTooLong) {
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_FALSE(open(putPdf(u"a.pdf", simplePdf(1)), {.displayPath = pathOfUnits(260)}));
  expectBox(u"The file's path is too long to open.", BoxButtons::Ok);
}

TEST_F(OpenTest, NoPathAtAllIsReportedAsTooLong) {
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_FALSE(openDocument(nullptr, 0, kWorkingDocsLeaveAlone, true, nullptr));
  expectBox(u"The file's path is too long to open.", BoxButtons::Ok);
}

// One document in the window.

TEST_F(OpenTest, TheFirstPageIsShown) {
  const std::u16string path = opened(u"a.pdf", 5);
  EXPECT_NE(session.active.document, nullptr);
  EXPECT_EQ(session.active.pageCount, 5);
  EXPECT_EQ(session.active.path, path);
  EXPECT_FALSE(session.active.dirty);
  EXPECT_EQ(session.panes[0].currentPage, 0);
  EXPECT_NE(session.panes[0].page, nullptr);
  EXPECT_NE(session.panes[0].pageBitmap, nullptr);
  EXPECT_EQ(session.panes[1].page, nullptr);
  EXPECT_EQ(session.placementDocument, session.active.document.get());
}

TEST_F(OpenTest, ANewDocumentReplacesTheOldWithAllThatWasPending) {
  for (ViewMode mode : {ViewMode::SinglePage, ViewMode::Book}) {
    resetSession();
    session.viewMode = mode;
    opened(u"old.pdf", 9);
    goToPage(0, 4, false);
    session.active.dirty = true;
    session.active.pageRotations[2] = 1;
    for (PaneSlot& slot : session.panes) slot.documentRotation = 2;
    session.placements[3] = {Placement{}};
    session.selectedPlacementPage = 3;
    fillHistories();

    const std::u16string path = opened(u"new.pdf", 4);
    EXPECT_EQ(session.viewMode, mode);
    EXPECT_EQ(session.active.path, path);
    EXPECT_EQ(session.active.pageCount, 4);
    EXPECT_FALSE(session.active.dirty);
    EXPECT_THAT(session.active.pageRotations, IsEmpty());
    EXPECT_THAT(session.placements, IsEmpty());
    EXPECT_EQ(session.selectedPlacementPage, -1);
    EXPECT_EQ(session.placementDocument, session.active.document.get());
    for (int pane : {0, 1}) {
      EXPECT_EQ(session.panes[pane].documentRotation, 0u);
      EXPECT_TRUE(historiesEmpty(pane));
    }
    EXPECT_EQ(session.panes[0].currentPage, 0);
    EXPECT_FALSE(hasUnsavedChanges());
  }
}

TEST_F(OpenTest, BookShowsTheSecondPageBesideTheFirst) {
  session.viewMode = ViewMode::Book;
  opened(u"a.pdf", 3);
  EXPECT_EQ(session.panes[0].currentPage, 0);
  EXPECT_EQ(session.panes[1].currentPage, 1);
  EXPECT_NE(session.panes[1].page, nullptr);
  EXPECT_NE(session.panes[1].pageBitmap, nullptr);
}

TEST_F(OpenTest, AnotherFileOpensInTheBookThatIsShown) {
  opened(u"a.pdf", 5);
  setViewMode(ViewMode::Book);
  goToPage(0, 3, false);
  const std::u16string b = opened(u"b.pdf", 4);
  EXPECT_EQ(session.viewMode, ViewMode::Book);
  EXPECT_EQ(session.active.path, b);
  EXPECT_EQ(session.active.pageCount, 4);
  EXPECT_EQ(session.panes[0].currentPage, 0);
  EXPECT_EQ(session.panes[1].currentPage, 1);
  EXPECT_NE(session.panes[1].pageBitmap, nullptr);
}

TEST_F(OpenTest, ABookOpensAtFitPageWhenItRevertsAndInItsZoomModeOtherwise) {
  for (const bool reverts : {true, false}) {
    SCOPED_TRACE(reverts);
    resetSession();
    session.viewMode = ViewMode::Book;
    session.settings.bookRevertToFit = reverts;
    for (PaneSlot& slot : session.panes) slot.zoomMode = kActualSize;
    opened(u"a.pdf", 3);
    for (const PaneSlot& slot : session.panes) {
      EXPECT_EQ(slot.zoomMode, reverts ? kFitPage : kActualSize);
      // A pane of 498 pixels or more, a page of 612 points, and a margin.
      EXPECT_NEAR(slot.zoom, reverts ? 0.78f : 1.0f, 0.01f);
    }
  }
}

TEST_F(OpenTest, BookWithOnePageLeavesTheRightPaneEmpty) {
  session.viewMode = ViewMode::Book;
  opened(u"a.pdf", 1);
  EXPECT_NE(session.panes[0].page, nullptr);
  EXPECT_EQ(session.panes[1].page, nullptr);
  EXPECT_EQ(session.panes[1].pageBitmap, nullptr);
}

TEST_F(OpenTest, IndependentPagesShowTheFirstPageTwice) {
  session.viewMode = ViewMode::IndependentPages;
  session.panes[1].currentPage = 7;
  opened(u"a.pdf", 9, 1);
  for (int pane : {0, 1}) {
    EXPECT_EQ(session.panes[pane].currentPage, 0);
    EXPECT_NE(session.panes[pane].page, nullptr);
  }
  EXPECT_EQ(session.viewMode, ViewMode::IndependentPages);
}

TEST_F(OpenTest, TheHiddenPaneKeepsItsPageNumberInSinglePage) {
  session.panes[1].currentPage = 7;
  opened(u"a.pdf", 9);
  EXPECT_EQ(session.panes[1].currentPage, 7);
  EXPECT_EQ(session.panes[1].page, nullptr);
}

TEST_F(OpenTest, TheZoomModeSurvives) {
  session.panes[0].zoomMode = kCustomFit;
  session.panes[0].zoom = 2.5f;
  opened(u"a.pdf");
  EXPECT_EQ(session.panes[0].zoomMode, kCustomFit);
  EXPECT_EQ(session.panes[0].zoom, 2.5f);
}

TEST_F(OpenTest, TheDocumentBearsTheDisplayPath) {
  const std::u16string copy = putPdf(u"shelf\\copy.pdf", simplePdf(2));
  EXPECT_TRUE(open(copy, {.displayPath = u"C:\\real.pdf"}));
  EXPECT_EQ(session.active.path, u"C:\\real.pdf");
  EXPECT_EQ(session.active.pageCount, 2);
  EXPECT_FALSE(session.active.dirty);
}

TEST_F(OpenTest, FindAndSelectionEndWithTheOldDocument) {
  opened(u"old.pdf");
  startSearch();
  selectText();
  opened(u"new.pdf");
  EXPECT_EQ(session.find.query, u"");
  EXPECT_THAT(session.find.results, IsEmpty());
  EXPECT_EQ(session.find.currentIndex, -1);
  EXPECT_FALSE(session.selection.active);
}

TEST_F(OpenTest, ReopeningTheShownFileLoadsItAfresh) {
  const std::u16string path = opened(u"a.pdf", 2);
  putPdf(u"a.pdf", simplePdf(6));
  EXPECT_TRUE(open(path));
  EXPECT_EQ(session.active.pageCount, 6);
}

// A load that fails, with one document in the window.

TEST_F(OpenTest, AFailedLoadLeavesAnEmptyWindowThatRemembersThePath) {
  for (ViewMode mode : kSharedModes) {
    resetSession();
    platform::resetStandIn();
    session.viewMode = mode;
    const std::u16string old = opened(u"old.pdf");
    session.active.dirty = true;
    session.active.pageRotations[1] = 1;
    session.panes[1].documentRotation = 1;
    session.placements[0] = {Placement{}};
    session.selectedPlacementPage = 0;
    standIn().boxAnswers = {BoxAnswer::Ok};

    // In IndependentPages another file would move the old one aside; the same name does not.
    putPdf(u"old.pdf", garbageFile());
    EXPECT_FALSE(open(old));
    expectBox(u"Could not open PDF.\n(PDFium error 3)", BoxButtons::Ok);
    EXPECT_EQ(standIn().boxes[0].icon, BoxIcon::Error);
    EXPECT_EQ(session.viewMode, mode);
    EXPECT_EQ(session.active.document, nullptr);
    EXPECT_EQ(session.active.pageCount, 0);
    EXPECT_EQ(session.active.path, old);
    EXPECT_FALSE(session.active.dirty);
    EXPECT_THAT(session.active.pageRotations, IsEmpty());
    EXPECT_THAT(session.placements, IsEmpty());
    EXPECT_EQ(session.placementDocument, nullptr);
    EXPECT_EQ(session.selectedPlacementPage, -1);
    for (int pane : {0, 1}) {
      EXPECT_EQ(session.panes[pane].page, nullptr);
      EXPECT_EQ(session.panes[pane].pageBitmap, nullptr);
    }
    EXPECT_FALSE(hasUnsavedChanges());
  }
}

TEST_F(OpenTest, AFailedLoadHasEndedSearchAndSelectionAndForgetsNoBinder) {
  const std::u16string old = opened(u"old.pdf");
  session.documentBinders[u"c:\\old.pdf"] = u"C:\\b.lst";
  startSearch();
  selectText();
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_FALSE(open(putPdf(u"bad.pdf", garbageFile())));
  EXPECT_EQ(session.find.query, u"");
  EXPECT_FALSE(session.selection.active);
  EXPECT_TRUE(session.documentBinders.contains(u"c:\\old.pdf"));
}

TEST_F(OpenTest, AFileOpensAgainAfterAFailedOne) {
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_FALSE(open(putPdf(u"bad.pdf", garbageFile())));
  opened(u"good.pdf");
  EXPECT_NE(session.panes[0].page, nullptr);
}

// The question before a document is replaced.

TEST_F(OpenTest, UnsavedChangesAreAskedAboutBeforeTheyAreReplaced) {
  const std::u16string old = opened(u"folder\\old.pdf");
  session.active.dirty = true;
  startSearch();
  standIn().boxAnswers = {BoxAnswer::Cancel};
  EXPECT_FALSE(open(putPdf(u"new.pdf", simplePdf(1)), {.ask = true}));
  expectBox(u"Document \"old.pdf\" has unsaved changes.\n\nSave them before closing?",
            BoxButtons::YesNoCancel);
  EXPECT_EQ(standIn().boxes[0].icon, BoxIcon::Warning);
  EXPECT_EQ(session.active.path, old);
  EXPECT_TRUE(session.active.dirty);
  EXPECT_EQ(session.find.query, u"word");
  EXPECT_NE(session.panes[0].page, nullptr);
}

TEST_F(OpenTest, NoGivesTheChangesUp) {
  opened(u"old.pdf");
  session.active.dirty = true;
  standIn().boxAnswers = {BoxAnswer::No};
  const std::u16string path = putPdf(u"new.pdf", simplePdf(1));
  EXPECT_TRUE(open(path, {.ask = true}));
  EXPECT_EQ(session.active.path, path);
  EXPECT_FALSE(session.active.dirty);
}

TEST_F(OpenTest, NothingIsAskedWithoutChangesOrWhenTheCallerDoesNotAsk) {
  opened(u"old.pdf");
  EXPECT_TRUE(open(putPdf(u"b.pdf", simplePdf(1)), {.ask = true}));
  session.active.dirty = true;
  EXPECT_TRUE(open(putPdf(u"c.pdf", simplePdf(1)), {.ask = false}));
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(OpenTest, APendingRotationIsAskedAbout) {
  opened(u"old.pdf");
  session.panes[0].documentRotation = 1;
  standIn().boxAnswers = {BoxAnswer::Cancel};
  EXPECT_FALSE(open(putPdf(u"new.pdf", simplePdf(1)), {.ask = true}));
  EXPECT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(session.panes[0].documentRotation, 1u);
}

TEST_F(OpenTest, TheActivePaneIsAskedAboutLikeASingleDocument) {
  openTwo();
  session.activePane = 1;
  session.panes[1].dirty = true;
  standIn().boxAnswers = {BoxAnswer::Cancel};
  EXPECT_FALSE(open(putPdf(u"new.pdf", simplePdf(1)), {.pane = 1, .ask = true}));
  expectBox(u"Document \"right.pdf\" has unsaved changes.\n\nSave them before closing?",
            BoxButtons::YesNoCancel);
  EXPECT_EQ(session.panes[1].path, right_);
}

TEST_F(OpenTest, TheOtherPaneIsAskedAboutBeforeItIsReplaced) {
  struct Case {
    const char* what;
    void (*change)();
  };
  const Case cases[] = {
      {"dirty", [] { session.panes[1].dirty = true; }},
      {"rotation", [] { session.panes[1].documentRotation = 1; }},
      {"page rotation", [] { session.panes[1].pageRotations[0] = 3; }},
      {"placement",
       [] {
         session.placementDocument = session.panes[1].document.get();
         session.placements[0] = {Placement{}};
       }},
  };
  for (const Case& pending : cases) {
    SCOPED_TRACE(pending.what);
    resetSession();
    platform::resetStandIn();
    openTwo();
    pending.change();
    standIn().boxAnswers = {BoxAnswer::Cancel};
    EXPECT_FALSE(open(putPdf(u"new.pdf", simplePdf(1)), {.pane = 1, .ask = true}));
    expectBox(u"Document \"right.pdf\" has unsaved changes.\n\nSave them before replacing it?",
              BoxButtons::YesNoCancel);
    EXPECT_EQ(session.panes[1].path, right_);
    EXPECT_NE(session.panes[1].page, nullptr);
  }
}

TEST_F(OpenTest, NoReplacesTheOtherPaneAndItsChangesAreLost) {
  openTwo();
  session.panes[1].dirty = true;
  session.panes[1].documentRotation = 2;
  standIn().boxAnswers = {BoxAnswer::No};
  EXPECT_TRUE(open(putPdf(u"new.pdf", simplePdf(1)), {.pane = 1, .ask = true}));
  EXPECT_EQ(session.panes[1].path, u"C:\\new.pdf");
  EXPECT_FALSE(session.panes[1].dirty);
  EXPECT_EQ(session.panes[1].documentRotation, 0u);
}

TEST_F(OpenTest, AFailedSaveKeepsTheOtherPane) {
  openTwo();
  session.panes[1].dirty = true;
  session.panes[1].path = u"Z:\\unreachable.pdf";
  standIn().boxAnswers = {BoxAnswer::Yes, BoxAnswer::Ok};
  EXPECT_FALSE(open(putPdf(u"new.pdf", simplePdf(1)), {.pane = 1, .ask = true}));
  EXPECT_EQ(session.panes[1].path, u"Z:\\unreachable.pdf");
  EXPECT_TRUE(session.panes[1].dirty);
}

TEST_F(OpenTest, YesWritesTheTurnsOfTheOtherPaneIntoItsPages) {
  openTwo();
  session.panes[1].path = u"Z:\\unreachable.pdf";
  session.panes[1].documentRotation = 1;
  session.panes[1].pageRotations[2] = 1;
  session.panes[0].documentRotation = 1;
  standIn().boxAnswers = {BoxAnswer::Yes, BoxAnswer::Ok};
  EXPECT_FALSE(open(putPdf(u"new.pdf", simplePdf(1)), {.pane = 1, .ask = true}));
  const FPDF_DOCUMENT kept = session.panes[1].document.get();
  EXPECT_EQ(ownRotationOf(kept, 0), 1);
  EXPECT_EQ(ownRotationOf(kept, 2), 2);
  EXPECT_EQ(session.panes[1].documentRotation, 0u);
  EXPECT_THAT(session.panes[1].pageRotations, IsEmpty());
  EXPECT_TRUE(session.panes[1].dirty);
  EXPECT_EQ(session.panes[0].documentRotation, 1u);
}

TEST_F(OpenTest, FullTurnsOfTheOtherPaneAreNoChange) {
  openTwo();
  session.panes[1].documentRotation = 4;
  session.panes[1].pageRotations[0] = 8;
  EXPECT_TRUE(open(putPdf(u"new.pdf", simplePdf(1)), {.pane = 1, .ask = true}));
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(OpenTest, ChangesOfTheActivePaneDoNotMatterToTheOther) {
  openTwo();
  session.panes[0].dirty = true;
  EXPECT_TRUE(open(putPdf(u"new.pdf", simplePdf(1)), {.pane = 1, .ask = true}));
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_TRUE(session.panes[0].dirty);
}

TEST_F(OpenTest, AnEmptyPaneIsFilledWithoutAQuestion) {
  session.viewMode = ViewMode::TwoDocuments;
  opened(u"left.pdf", 2, 0);
  session.panes[0].dirty = true;
  EXPECT_TRUE(open(putPdf(u"right.pdf", simplePdf(1)), {.pane = 1, .ask = true}));
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

// The binder entry of the replaced document.

TEST_F(OpenTest, TheReplacedDocumentForgetsItsBinder) {
  opened(u"Old.pdf");
  session.documentBinders[u"c:\\old.pdf"] = u"C:\\b.lst";
  session.documentBinders[u"c:\\other.pdf"] = u"C:\\b.lst";
  opened(u"new.pdf");
  EXPECT_FALSE(session.documentBinders.contains(u"c:\\old.pdf"));
  EXPECT_TRUE(session.documentBinders.contains(u"c:\\other.pdf"));
}

TEST_F(OpenTest, APathLeftFromAFailedLoadIsNotReplaced) {
  const std::u16string old = opened(u"old.pdf");
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_FALSE(open(putPdf(u"bad.pdf", garbageFile())));
  session.documentBinders[u"c:\\old.pdf"] = u"C:\\b.lst";
  opened(u"new.pdf");
  EXPECT_TRUE(session.documentBinders.contains(u"c:\\old.pdf"));
}

// Joining the documents in use.

TEST_F(OpenTest, AnOpenedDocumentLeavesTheRecentListAndJoinsTheBinderOfDocumentsInUse) {
  BinderFile inUse;
  inUse.path = u"C:\\Users\\User\\AppData\\Local\\Quillmere\\WorkingDocs.lst";
  inUse.isWorkingDocuments = true;
  session.binderLibrary.push_back(inUse);
  session.settings.recentFiles = {u"C:\\x.pdf", u"C:\\A.PDF", u"C:\\y.pdf"};
  const std::u16string path = putPdf(u"a.pdf", simplePdf(1));
  EXPECT_TRUE(open(path, {.workingDocsMode = kWorkingDocsToHead}));
  EXPECT_THAT(session.settings.recentFiles, ElementsAre(u"C:\\x.pdf", u"C:\\y.pdf"));
  EXPECT_EQ(session.documentBinders[u"c:\\a.pdf"], inUse.path);
}

TEST_F(OpenTest, ADocumentThatStaysOutOfTheDocumentsInUseChangesNoList) {
  BinderFile inUse;
  inUse.path = u"C:\\WorkingDocs.lst";
  inUse.isWorkingDocuments = true;
  session.binderLibrary.push_back(inUse);
  session.settings.recentFiles = {u"C:\\a.pdf"};
  opened(u"a.pdf");
  EXPECT_THAT(session.settings.recentFiles, ElementsAre(u"C:\\a.pdf"));
  EXPECT_THAT(session.documentBinders, IsEmpty());
  EXPECT_THAT(session.binderLibrary[0].files, IsEmpty());
}

TEST_F(OpenTest, AShelfCopyJoinsUnderTheNameOfItsDocument) {
  BinderFile inUse;
  inUse.path = u"C:\\Users\\User\\AppData\\Local\\Quillmere\\WorkingDocs.lst";
  inUse.isWorkingDocuments = true;
  session.binderLibrary.push_back(inUse);
  session.settings.recentFiles = {u"C:\\real.pdf"};
  const std::u16string copy = putPdf(u"shelf\\copy.pdf", simplePdf(1));
  EXPECT_TRUE(open(copy, {.workingDocsMode = kWorkingDocsToHead, .displayPath = u"C:\\real.pdf"}));
  EXPECT_THAT(session.settings.recentFiles, IsEmpty());
  EXPECT_TRUE(session.documentBinders.contains(u"c:\\real.pdf"));
  EXPECT_FALSE(session.documentBinders.contains(u"c:\\shelf\\copy.pdf"));
}

TEST_F(OpenTest, AFailedOpenJoinsNothing) {
  session.settings.recentFiles = {u"C:\\bad.pdf"};
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_FALSE(open(putPdf(u"bad.pdf", garbageFile()), {.workingDocsMode = kWorkingDocsToHead}));
  EXPECT_THAT(session.settings.recentFiles, ElementsAre(u"C:\\bad.pdf"));
}

TEST_F(OpenTest, TurnsOfADocumentThatIsGoneNeverReachALaterOne) {
  openTwo();
  session.panes[0].pageRotations[1] = 1;
  setViewMode(ViewMode::SinglePage);
  opened(u"later.pdf");
  EXPECT_TRUE(session.panes[0].pageRotations.empty());
}

}  // namespace
}  // namespace quillmere::test
