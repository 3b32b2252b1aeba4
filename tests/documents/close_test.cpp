#include "documents/close.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "documents/save.h"
#include "support/opening_test.h"
#include "support/pdf_builder.h"
#include "view/navigation.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::standIn;
using testing::IsEmpty;

constexpr ViewMode kAllModes[] = {ViewMode::SinglePage, ViewMode::Book, ViewMode::IndependentPages,
                                  ViewMode::TwoDocuments};

class CloseTest : public OpeningTest {
 protected:
  static void expectEmpty(int pane) {
    const PaneSlot& slot = session.panes[pane];
    EXPECT_EQ(slot.document, nullptr);
    EXPECT_EQ(slot.page, nullptr);
    EXPECT_EQ(slot.textPage, nullptr);
    EXPECT_EQ(slot.pageBitmap, nullptr);
    EXPECT_EQ(slot.pageBitmapWidth, 0);
    EXPECT_EQ(slot.pageBitmapHeight, 0);
    EXPECT_EQ(slot.currentPage, 0);
    EXPECT_EQ(slot.pageCount, 0);
    EXPECT_EQ(slot.path, u"");
    EXPECT_EQ(slot.documentRotation, 0u);
    EXPECT_THAT(slot.pageRotations, IsEmpty());
    EXPECT_FALSE(slot.dirty);
  }

  // Sets every kind of state that belongs to an open document.
  static void leaveTraces() {
    for (int pane : {0, 1}) {
      PaneSlot& slot = session.panes[pane];
      slot.documentRotation = 1;
      dirtyOf(pane) = true;
      pageRotationsOf(pane)[0] = 1;
    }
    session.placements[0] = {Placement{}};
    session.selectedPlacementPage = 0;
    session.documentBinders[u"c:\\a.pdf"] = u"C:\\b.lst";
    leaveSearchAndSelection();
  }

  static void leaveSearchAndSelection() {
    session.find.query = u"word";
    session.find.results = {{0, 1, 2}};
    session.find.currentIndex = 0;
    session.selection.active = true;
    session.selection.pane = 0;
    session.selection.anchorChar = 0;
    session.selection.endChar = 2;
  }

  static void expectSearchAndSelectionEnded() {
    EXPECT_EQ(session.find.query, u"");
    EXPECT_THAT(session.find.results, IsEmpty());
    EXPECT_EQ(session.find.currentIndex, -1);
    EXPECT_FALSE(session.selection.active);
  }

  static void expectAllClosed() {
    EXPECT_EQ(session.active.document, nullptr);
    EXPECT_EQ(session.active.pageCount, 0);
    EXPECT_EQ(session.active.path, u"");
    EXPECT_FALSE(session.active.dirty);
    EXPECT_THAT(session.active.pageRotations, IsEmpty());
    expectEmpty(0);
    expectEmpty(1);
    EXPECT_THAT(session.placements, IsEmpty());
    EXPECT_EQ(session.placementDocument, nullptr);
    EXPECT_EQ(session.selectedPlacementPage, -1);
    EXPECT_THAT(session.documentBinders, IsEmpty());
    expectSearchAndSelectionEnded();
    EXPECT_FALSE(hasUnsavedChanges());
  }
};

// Closing everything.

TEST_F(CloseTest, EverythingOfEveryDocumentGoesInEveryMode) {
  for (ViewMode mode : kAllModes) {
    SCOPED_TRACE(static_cast<int>(mode));
    resetSession();
    session.viewMode = mode;
    opened(u"a.pdf", 5, 0);
    if (mode == ViewMode::TwoDocuments) opened(u"b.pdf", 5, 1);
    goToPage(0, 2, false);
    leaveTraces();
    const int erased = standIn().window.erasingInvalidations;
    closeAllDocuments();
    expectAllClosed();
    EXPECT_EQ(session.viewMode, mode);
    EXPECT_GT(standIn().window.erasingInvalidations, erased);
  }
}

TEST_F(CloseTest, LeftOverRecordsOfTheOtherModesGoToo) {
  openTwo(5, 6);
  session.active.path = u"C:\\left over.pdf";
  session.active.pageRotations[3] = 1;
  closeAllDocuments();
  expectAllClosed();
}

TEST_F(CloseTest, ViewAndHistoriesSurvive) {
  opened(u"a.pdf", 5);
  for (PaneSlot& slot : session.panes) {
    slot.zoom = 2.5f;
    slot.panX = 11;
    slot.panY = -7;
    slot.zoomMode = kCustomFit;
    slot.backHistory.resize(2);
    slot.forwardHistory.resize(1);
  }
  session.activePane = 1;
  closeAllDocuments();
  for (const PaneSlot& slot : session.panes) {
    EXPECT_EQ(slot.zoom, 2.5f);
    EXPECT_EQ(slot.panX, 11);
    EXPECT_EQ(slot.panY, -7);
    EXPECT_EQ(slot.zoomMode, kCustomFit);
    EXPECT_EQ(slot.backHistory.size(), 2u);
    EXPECT_EQ(slot.forwardHistory.size(), 1u);
  }
}

TEST_F(CloseTest, ClosingNothingIsHarmless) {
  closeAllDocuments();
  closeAllDocuments();
  expectAllClosed();
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(CloseTest, TheTitleShowsThatNothingIsOpen) {
  opened(u"a.pdf", 5);
  EXPECT_NE(standIn().window.title, u"Quillmere");
  closeAllDocuments();
  EXPECT_EQ(standIn().window.title, u"Quillmere");
}

// Forgetting a document's binder.

TEST_F(CloseTest, ABinderIsForgottenByThePathInAnyLetters) {
  session.documentBinders[u"c:\\a.pdf"] = u"C:\\b.lst";
  session.documentBinders[u""] = u"C:\\odd.lst";
  session.documentBinders[u"c:\\\u00E4.pdf"] = u"C:\\b.lst";
  forgetDocumentBinder(u"");
  EXPECT_EQ(session.documentBinders.size(), 3u);
  forgetDocumentBinder(u"C:\\A.PDF");
  EXPECT_FALSE(session.documentBinders.contains(u"c:\\a.pdf"));
  forgetDocumentBinder(u"C:\\\u00C4.pdf");
  EXPECT_EQ(session.documentBinders.size(), 1u);
  forgetDocumentBinder(u"C:\\never seen.pdf");
  EXPECT_EQ(session.documentBinders.size(), 1u);
}

// Closing by path.

TEST_F(CloseTest, ByPathASingleDocumentClosesWhateverItsPath) {
  opened(u"a.pdf", 5);
  leaveTraces();
  closeDocumentByPath(u"C:\\not compared.pdf");
  expectAllClosed();
}

TEST_F(CloseTest, ByPathOnlyTheMatchingPaneCloses) {
  for (int pane : {0, 1}) {
    SCOPED_TRACE(pane);
    resetSession();
    openTwo(5, 6);
    const int other = 1 - pane;
    goToPage(pane, 3, false);
    session.panes[pane].dirty = true;
    session.panes[pane].documentRotation = 1;
    session.panes[pane].pageRotations[1] = 1;
    session.placementDocument = session.panes[pane].document.get();
    session.placements[0] = {Placement{}};
    session.documentBinders[u"c:\\left.pdf"] = u"C:\\b.lst";
    session.documentBinders[u"c:\\right.pdf"] = u"C:\\b.lst";
    leaveSearchAndSelection();

    closeDocumentByPath(pane == 0 ? u"C:\\LEFT.PDF" : u"C:\\Right.pdf");
    EXPECT_EQ(session.viewMode, ViewMode::TwoDocuments);
    expectEmpty(pane);
    EXPECT_NE(session.panes[other].document, nullptr);
    EXPECT_NE(session.panes[other].page, nullptr);
    EXPECT_EQ(session.placementDocument, session.panes[other].document.get());
    EXPECT_THAT(session.placements, IsEmpty());
    EXPECT_EQ(session.documentBinders.size(), 1u);
    expectSearchAndSelectionEnded();
    EXPECT_FALSE(hasUnsavedChanges());
  }
}

TEST_F(CloseTest, TurnsThatWaitForAnotherModeGoWithTheirDocument) {
  openTwo(5, 6);
  session.active.pageRotations[1] = 1;
  closeDocumentByPath(right_);
  EXPECT_EQ(session.active.pageRotations.size(), 1u);
  closeDocumentByPath(left_);
  EXPECT_THAT(session.active.pageRotations, IsEmpty());
}

TEST_F(CloseTest, ByPathBothPanesCloseWhenBothShowIt) {
  openTwo(5, 6);
  session.panes[1].path = u"c:\\LEFT.pdf";
  closeDocumentByPath(left_);
  expectEmpty(0);
  expectEmpty(1);
  EXPECT_EQ(session.placementDocument, nullptr);
}

TEST_F(CloseTest, ByPathNothingClosesWhereNoPaneShowsIt) {
  openTwo(5, 6);
  leaveSearchAndSelection();
  closeDocumentByPath(u"C:\\other.pdf");
  EXPECT_NE(session.panes[0].document, nullptr);
  EXPECT_NE(session.panes[1].document, nullptr);
  EXPECT_NE(session.placementDocument, nullptr);
  expectSearchAndSelectionEnded();
}

TEST_F(CloseTest, ByPathPendingPlacementsOfTheOtherDocumentAreNotLost) {
  openTwo(5, 6);
  session.placementDocument = session.panes[0].document.get();
  session.placements[0] = {Placement{}};
  closeDocumentByPath(right_);
  EXPECT_TRUE(hasUnsavedChanges());
}

// The question.

TEST_F(CloseTest, WithoutChangesNothingIsAsked) {
  opened(u"a.pdf", 5);
  EXPECT_EQ(PromptSaveBeforeClose(u"a.pdf"), BoxAnswer::No);
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(CloseTest, TheQuestionNamesTheDocumentWhenItCan) {
  opened(u"a.pdf", 5);
  session.active.dirty = true;
  standIn().boxAnswers = {BoxAnswer::Cancel, BoxAnswer::No};
  EXPECT_EQ(PromptSaveBeforeClose(u"a 100%d.pdf"), BoxAnswer::Cancel);
  EXPECT_EQ(PromptSaveBeforeClose(u""), BoxAnswer::No);
  ASSERT_EQ(standIn().boxes.size(), 2u);
  EXPECT_EQ(standIn().boxes[0].text,
            u"Document \"a 100%d.pdf\" has unsaved changes.\n\nSave them before closing?");
  EXPECT_EQ(standIn().boxes[1].text,
            u"This document has unsaved changes.\n\nSave them before closing?");
  for (const platform::ShownBox& box : standIn().boxes) {
    EXPECT_EQ(box.title, u"Quillmere");
    EXPECT_EQ(box.buttons, BoxButtons::YesNoCancel);
    EXPECT_EQ(box.icon, BoxIcon::Warning);
  }
}

TEST_F(CloseTest, NoForgetsWhatTheShelfHoldsOnceTheDocumentCloses) {
  const std::u16string path = opened(u"a.pdf", 5);
  session.active.dirty = true;
  session.shelveFolder = u"C:\\Shelve\\";
  putPdf(u"Shelve\\copy.pdf", simplePdf(1));
  ShelfEntry entry;
  entry.path = u"c:\\a.pdf";
  entry.dirty = true;
  entry.shelfName = u"copy";
  session.shelfIndex[entry.path] = entry;
  standIn().boxAnswers = {BoxAnswer::No};
  EXPECT_EQ(PromptSaveBeforeClose(u"a.pdf"), BoxAnswer::No);
  EXPECT_EQ(session.shelfIndex.size(), 1u);
  closeAllDocuments();
  EXPECT_TRUE(session.shelfIndex.empty());
  EXPECT_EQ(platform::fileBytes(u"C:\\Shelve\\copy.pdf"), std::nullopt);
}

TEST_F(CloseTest, ASaveThatFailsStopsTheClose) {
  opened(u"a.pdf", 5);
  session.active.dirty = true;
  session.active.path = u"Z:\\unreachable.pdf";
  standIn().boxAnswers = {BoxAnswer::Yes, BoxAnswer::Ok};
  EXPECT_EQ(PromptSaveBeforeClose(u"a.pdf"), BoxAnswer::Cancel);
  EXPECT_NE(session.active.document, nullptr);
  EXPECT_TRUE(session.active.dirty);
}

// The Close command.

TEST_F(CloseTest, TheCommandWithNothingOpenAsksNothing) {
  for (ViewMode mode : kAllModes) {
    session.viewMode = mode;
    closeCommand(0);
    EXPECT_EQ(session.viewMode, mode);
  }
  expectAllClosed();
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(CloseTest, TheCommandAsksWithTheFileName) {
  const std::u16string path = opened(u"folder\\a b.pdf", 5);
  session.active.dirty = true;
  standIn().boxAnswers = {BoxAnswer::Cancel};
  closeCommand(0);
  ASSERT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(standIn().boxes[0].text,
            u"Document \"a b.pdf\" has unsaved changes.\n\nSave them before closing?");
  EXPECT_EQ(session.active.path, path);
  EXPECT_NE(session.panes[0].page, nullptr);
  EXPECT_TRUE(session.active.dirty);
}

TEST_F(CloseTest, CancelKeepsEverything) {
  opened(u"a.pdf", 5);
  leaveTraces();
  standIn().boxAnswers = {BoxAnswer::Cancel};
  closeCommand(0);
  EXPECT_NE(session.active.document, nullptr);
  EXPECT_EQ(session.find.query, u"word");
  EXPECT_TRUE(session.selection.active);
  EXPECT_EQ(session.placements.size(), 1u);
  EXPECT_EQ(session.documentBinders.size(), 1u);
}

TEST_F(CloseTest, NoClosesWithoutSaving) {
  opened(u"a.pdf", 5);
  leaveTraces();
  standIn().boxAnswers = {BoxAnswer::No};
  closeCommand(0);
  expectAllClosed();
  EXPECT_EQ(platform::fileBytes(u"C:\\a.pdf"), simplePdf(5));
}

TEST_F(CloseTest, AFailedSaveKeepsTheDocumentOpen) {
  opened(u"a.pdf", 5);
  session.active.dirty = true;
  session.active.path = u"Z:\\unreachable.pdf";
  standIn().boxAnswers = {BoxAnswer::Yes, BoxAnswer::Ok};
  closeCommand(0);
  EXPECT_NE(session.active.document, nullptr);
  EXPECT_NE(session.panes[0].page, nullptr);
}

TEST_F(CloseTest, TheRightDocumentClosesBesideTheLeft) {
  openTwo(5, 6);
  session.activePane = 1;
  goToPage(1, 3, false);
  session.placementDocument = session.panes[1].document.get();
  session.selectedPlacementPage = 2;
  session.documentBinders[u"c:\\left.pdf"] = u"C:\\b.lst";
  session.documentBinders[u"c:\\right.pdf"] = u"C:\\b.lst";
  leaveSearchAndSelection();
  closeCommand(1);
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_EQ(session.viewMode, ViewMode::TwoDocuments);
  EXPECT_EQ(session.activePane, 1);
  expectEmpty(1);
  EXPECT_EQ(session.panes[0].path, left_);
  EXPECT_NE(session.panes[0].page, nullptr);
  EXPECT_EQ(session.placementDocument, session.panes[0].document.get());
  EXPECT_EQ(session.selectedPlacementPage, -1);
  EXPECT_TRUE(session.documentBinders.contains(u"c:\\left.pdf"));
  EXPECT_FALSE(session.documentBinders.contains(u"c:\\right.pdf"));
  expectSearchAndSelectionEnded();
}

TEST_F(CloseTest, TheLastOfTwoDocumentsLeavesNothingToHoldPlacements) {
  openTwo(5, 6);
  closeCommand(0);
  session.activePane = 1;
  closeCommand(1);
  expectEmpty(0);
  expectEmpty(1);
  EXPECT_EQ(session.placementDocument, nullptr);
  EXPECT_THAT(session.placements, IsEmpty());
  EXPECT_EQ(session.viewMode, ViewMode::TwoDocuments);
  EXPECT_FALSE(hasUnsavedChanges());
}

TEST_F(CloseTest, TheQuestionInTwoDocumentsIsAboutThePanesOwnDocument) {
  openTwo(5, 6);
  session.activePane = 1;
  session.panes[0].dirty = true;
  closeCommand(1);
  EXPECT_THAT(standIn().boxes, IsEmpty());
  session.activePane = 0;
  standIn().boxAnswers = {BoxAnswer::Cancel};
  closeCommand(0);
  ASSERT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(standIn().boxes[0].text,
            u"Document \"left.pdf\" has unsaved changes.\n\nSave them before closing?");
  EXPECT_NE(session.panes[0].document, nullptr);
}

TEST_F(CloseTest, PendingPlacementsOfTheOtherDocumentSurviveTheCommand) {
  openTwo(5, 6);
  session.placementDocument = session.panes[0].document.get();
  session.placements[0] = {Placement{}};
  session.activePane = 1;
  closeCommand(1);
  session.activePane = 0;
  EXPECT_TRUE(hasUnsavedChanges());
}

TEST_F(CloseTest, ADocumentCanBeOpenedIntoAnEmptiedPane) {
  openTwo(5, 6);
  closeCommand(0);
  opened(u"new.pdf", 5, 0);
  EXPECT_NE(session.panes[0].page, nullptr);
  EXPECT_EQ(session.panes[1].path, right_);
}

}  // namespace
}  // namespace quillmere::test
