#include "documents/shelve.h"

#include <fpdf_edit.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "annot/placements.h"
#include "documents/close.h"
#include "documents/modes.h"
#include "documents/open.h"
#include "documents/open_requests.h"
#include "documents/save.h"
#include "session/changes.h"
#include "session/gesture.h"
#include "store/binder_library.h"
#include "store/shelf.h"
#include "support/pdf_builder.h"
#include "support/shelf_flow_test.h"
#include "view/rotation.h"
#include "view/view_test.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::FileCall;
using platform::standIn;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char16_t* kFour = u"C:\\four.pdf";  // in no binder

class ShelveTest : public ShelfFlowTest {
 protected:
  static void openTwo() {
    setViewMode(ViewMode::TwoDocuments);
    openFile(1, 0);
    setActivePane(1);
    openFile(1, 1);
  }
  static void addPendingText(int pane, int page = 0) {
    LoadPlacements(documentOf(pane));
    Placement placement;
    placement.kind = PlacementKind::TextDrop;
    placement.text = u"Checked";
    placement.x = 100;
    placement.y = 100;
    placement.width = 80;
    placement.height = 20;
    session.placements[page].push_back(placement);
  }
};

// Leaving and coming back.

TEST_F(ShelveTest, LeavingAMarkedDocumentOfABinderAsksNothingAndComingBackShowsTheMark) {
  openFile(1, 0);
  mark();
  openFile(1, 1);
  EXPECT_EQ(session.active.path, kB);
  EXPECT_EQ(marksIn(kA), 0);
  EXPECT_EQ(marksIn(copyOf(kA)), 1);
  openFile(1, 0);
  EXPECT_EQ(session.active.path, kA);
  EXPECT_EQ(marks(), 1);
  EXPECT_FALSE(session.active.dirty);
  EXPECT_TRUE(IsShelved(kA));
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(ShelveTest, ADocumentInUseIsShelvedTheSameWay) {
  ASSERT_TRUE(openRequested(putPdf(kFour, simplePdf(4)), 0, kWorkingDocsToHead, true));
  mark();
  openFile(1, 1);
  ASSERT_TRUE(openRequested(kFour, 0, kWorkingDocsToHead, true));
  EXPECT_EQ(marks(), 1);
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(ShelveTest, ADocumentOfNoLoadedBinderIsAskedAbout) {
  openFile(1, 0);
  mark();
  CloseBinder(1);
  EXPECT_FALSE(ShelveCurrentDocument());
  standIn().boxAnswers = {BoxAnswer::Cancel};
  EXPECT_EQ(SaveOrShelveBeforeClose(u""), BoxAnswer::Cancel);
  EXPECT_THAT(standIn().boxes, SizeIs(1));
  session.documentBinders.clear();
  EXPECT_FALSE(ShelveCurrentDocument());
  EXPECT_TRUE(session.active.dirty);
}

TEST_F(ShelveTest, ADocumentThatNoBinderListsAnyMoreIsAskedAbout) {
  openFile(1, 0);
  platform::putFile(u"C:\\Work.lst", "C:\\b.pdf\r\n");
  RefreshBinder(1);
  mark();
  EXPECT_FALSE(ShelveCurrentDocument());
  EXPECT_TRUE(session.shelfIndex.empty());
  AddFilesToBinder(2, {kA});
  EXPECT_TRUE(ShelveCurrentDocument());
}

TEST_F(ShelveTest, ADragEndsBeforeItsDocumentIsShelved) {
  openFile(1, 0);
  mark();
  beginGesture(Gesture::Placement, 10, 10);
  ASSERT_TRUE(ShelveCurrentDocument());
  EXPECT_EQ(session.gesture.kind, Gesture::None);
  EXPECT_FALSE(standIn().window.mouseCaptured);
}

TEST_F(ShelveTest, PlacementsThatAreStillToBeReadStaySo) {
  openFile(1, 0);
  addPendingText(0);
  SaveCommand();
  loadPlacementsLater(documentOf(0));
  mark();
  ASSERT_TRUE(ShelveCurrentDocument());
  EXPECT_EQ(marksIn(copyOf(kA)), 2);
  readWaitingPlacements();
  EXPECT_THAT(session.placements[0], SizeIs(1));
}

TEST_F(ShelveTest, OfPlacementsThatAreHalfReadNoneIsLostOrWrittenTwice) {
  openFile(1, 0);
  addPendingText(0);
  session.placements[2] = session.placements[0];
  SaveCommand();
  loadPlacementsLater(documentOf(0));
  readWaitingPlacementsOf(documentOf(0), 2);
  session.placements[2].push_back(session.placements[2][0]);
  session.placements[2].back().annotIndex = -1;
  ASSERT_TRUE(ShelveCurrentDocument());
  EXPECT_FALSE(hasUnsavedChanges());
  readWaitingPlacements();
  EXPECT_THAT(session.placements[0], SizeIs(1));
  EXPECT_THAT(session.placements[2], SizeIs(2));
  EXPECT_EQ(marksIn(copyOf(kA)), 1);
}

TEST_F(ShelveTest, OpeningAShelvedDocumentAndLeavingItUnchangedKeepsItsEntry) {
  shelveFile(1, 0);
  openFile(1, 1);
  const std::string before = index();
  openFile(1, 0);
  openFile(1, 1);
  EXPECT_EQ(index(), before);
  openFile(1, 0);
  EXPECT_EQ(marks(), 1);
}

TEST_F(ShelveTest, TheNextSessionOffersWhatAProcessLeftThatEndedWithoutAWord) {
  shelveFile(1, 0);
  restart();
  EXPECT_TRUE(IsShelved(kA));
  openFile(1, 0);
  EXPECT_EQ(marks(), 1);
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(ShelveTest, TouchingTheFileRaisesTheConflictQuestionInTheNextSession) {
  shelveFile(1, 0);
  restart();
  platform::setWriteTime(kA, 132'000'000'000'000'000u);
  standIn().boxAnswers = {BoxAnswer::Cancel};
  openFile(1, 0);
  EXPECT_EQ(session.active.document, nullptr);
  EXPECT_TRUE(IsShelved(kA));
  standIn().boxAnswers = {BoxAnswer::Yes};
  openFile(1, 0);
  EXPECT_EQ(marks(), 1);
  // The user has decided about this version of the file.
  openFile(1, 1);
  openFile(1, 0);
  EXPECT_EQ(marks(), 1);
  EXPECT_THAT(standIn().boxes, SizeIs(2));
}

TEST_F(ShelveTest, NoInTheConflictKeepsTheEntryUntilTheFileIsOpen) {
  shelveFile(1, 0);
  restart();
  putPdf(kA, garbageFile());
  standIn().boxAnswers = {BoxAnswer::No, BoxAnswer::Ok};
  openFile(1, 0);
  EXPECT_EQ(session.active.document, nullptr);
  EXPECT_TRUE(IsShelved(kA));
  EXPECT_EQ(marksIn(copyOf(kA)), 1);
  putPdf(kA, simplePdf(3));
  standIn().boxAnswers = {BoxAnswer::No};
  openFile(1, 0);
  EXPECT_EQ(marks(), 0);
  EXPECT_FALSE(IsShelved(kA));
  EXPECT_THAT(shelfFiles(), IsEmpty());
}

// The question about what is replaced comes before the shelf is asked.

TEST_F(ShelveTest, TheShownDocumentOpenedAgainComesFromTheCopyThatTheQuestionMade) {
  ASSERT_TRUE(openRequested(kA, 0, kWorkingDocsToHead, true));
  mark();
  ASSERT_TRUE(openRequested(kA, 0, kWorkingDocsToHead, true));
  EXPECT_EQ(marks(), 1);
  EXPECT_TRUE(IsShelved(kA));
}

TEST_F(ShelveTest, ADocumentOfTheOtherPaneIsNotLookedForOnTheShelf) {
  shelveFile(1, 0);
  openFile(1, 2);
  setViewMode(ViewMode::TwoDocuments);
  setActivePane(1);
  openFile(1, 0);
  platform::setWriteTime(kA, 132'000'000'000'000'000u);
  setActivePane(0);
  ASSERT_TRUE(openRequested(kA, 0, kWorkingDocsToHead, true));
  EXPECT_EQ(session.viewMode, ViewMode::IndependentPages);
  EXPECT_EQ(marks(), 1);
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(ShelveTest, ARefusalAtTheGateLeavesEntryAndBinderAsTheyWere) {
  shelveFile(1, 0);
  openFile(1, 1);
  mark();
  const auto binders = session.documentBinders;
  platform::putFile(std::u16string(kC) + u":Zone.Identifier", "[ZoneTransfer]\r\nZoneId=3\r\n");
  putPdf(kC, garbageFile());
  standIn().boxAnswers = {BoxAnswer::Ok};
  setViewMode(ViewMode::TwoDocuments);
  openFile(1, 2);
  EXPECT_EQ(session.panes[0].path, kB);
  EXPECT_EQ(session.documentBinders, binders);
  EXPECT_TRUE(IsShelved(kA));
  EXPECT_TRUE(IsShelved(kB));
}

// What a copy holds.

TEST_F(ShelveTest, PendingTurnsAndPlacementsGoIntoTheCopyAndStayInTheDocument) {
  openFile(1, 0);
  rotatePage(0);
  addPendingText(0);
  ASSERT_TRUE(hasUnsavedChanges());
  ASSERT_TRUE(ShelveCurrentDocument());
  EXPECT_FALSE(hasUnsavedChanges());
  EXPECT_EQ(marksIn(copyOf(kA)), 1);
  EXPECT_EQ(marks(), 1);
  readWaitingPlacements();
  ASSERT_EQ(session.placements[0].size(), 1u);
  EXPECT_GE(session.placements[0][0].annotIndex, 0);
  openFile(1, 1);
  openFile(1, 0);
  EXPECT_EQ(FPDFPage_GetRotation(session.panes[0].page.get()), 1);
}

TEST_F(ShelveTest, AFailedCopyLeavesPlacementsPendingAndAddsThemOnlyOnceLater) {
  openFile(1, 0);
  addPendingText(0);
  standIn().refuseFileCall = [](FileCall call) { return call == FileCall::Flush; };
  EXPECT_FALSE(ShelveCurrentDocument());
  EXPECT_TRUE(hasUnsavedChanges());
  EXPECT_EQ(marks(), 0);
  EXPECT_THAT(shelfFiles(), IsEmpty());
  standIn().refuseFileCall = {};
  EXPECT_TRUE(ShelveCurrentDocument());
  EXPECT_EQ(marksIn(copyOf(kA)), 1);
}

TEST_F(ShelveTest, ATextThatCannotBeWrittenLeavesTheDocumentToTheQuestion) {
  putPdf(kA, pdfWithBrokenPage(3, 1));
  openFile(1, 0);
  addPendingText(0, 1);
  EXPECT_FALSE(ShelveCurrentDocument());
  EXPECT_TRUE(hasUnsavedChanges());
  EXPECT_THAT(shelfFiles(), IsEmpty());
}

TEST_F(ShelveTest, WhereverWritingFailsTheEarlierCopyStays) {
  shelveFile(1, 0);
  const std::string before = index();
  const std::u16string copy = copyOf(kA);
  mark();
  for (const FileCall call :
       {FileCall::Start, FileCall::Write, FileCall::Flush, FileCall::Close, FileCall::Replace}) {
    standIn().refuseFileCall = [call](FileCall asked) { return asked == call; };
    EXPECT_FALSE(ShelveCurrentDocument()) << static_cast<int>(call);
    EXPECT_TRUE(session.active.dirty);
    EXPECT_EQ(index(), before);
    EXPECT_EQ(copyOf(kA), copy);
    EXPECT_EQ(marksIn(copy), 1);
    EXPECT_THAT(shelfFiles(), SizeIs(1));
  }
}

TEST_F(ShelveTest, AFullDiskLeavesTheDocumentToTheQuestion) {
  openFile(1, 0);
  mark();
  standIn().diskFree = 200;
  standIn().boxAnswers = {BoxAnswer::Cancel};
  EXPECT_EQ(SaveOrShelveBeforeClose(u"a.pdf"), BoxAnswer::Cancel);
  EXPECT_THAT(standIn().boxes, SizeIs(1));
  EXPECT_TRUE(session.active.dirty);
  EXPECT_THAT(shelfFiles(), IsEmpty());
}

TEST_F(ShelveTest, WithoutANameOrAFolderNothingIsShelved) {
  openFile(1, 0);
  mark();
  standIn().failGuids = true;
  EXPECT_FALSE(ShelveCurrentDocument());
  standIn().failGuids = false;
  session.shelveFolder.clear();
  EXPECT_FALSE(ShelveCurrentDocument());
  EXPECT_TRUE(session.active.dirty);
}

TEST_F(ShelveTest, EveryShelvingWritesAFreshNameAndDeletesTheCopyBeforeIt) {
  shelveFile(1, 0);
  const std::u16string first = copyOf(kA);
  openFile(1, 1);
  openFile(1, 0);
  mark();
  ASSERT_TRUE(ShelveCurrentDocument());
  const std::u16string second = copyOf(kA);
  EXPECT_NE(second, first);
  EXPECT_EQ(marksIn(second), 2);
  EXPECT_THAT(index(), HasSubstr("\t1\t"));
  openFile(1, 1);  // the document was open from the first copy
  EXPECT_THAT(shelfFiles(), SizeIs(1));
}

TEST_F(ShelveTest, AnIndexThatCannotBeWrittenKeepsTheCopyThatItNames) {
  shelveFile(1, 0);
  const std::string before = index();
  const std::u16string first = copyOf(kA);
  mark();
  int replaced = 0;
  standIn().refuseFileCall = [&replaced](FileCall call) {
    return call == FileCall::Replace && ++replaced >= 2;  // first the copy, then the index
  };
  EXPECT_TRUE(ShelveCurrentDocument());
  EXPECT_EQ(index(), before);
  EXPECT_EQ(marksIn(first), 1);
  EXPECT_EQ(marksIn(copyOf(kA)), 2);
}

TEST_F(ShelveTest, AnEntryHasTheStampsOfTheLoad) {
  openFile(1, 0);
  const auto loaded = platform::fileStamp(kA);
  mark();
  platform::setWriteTime(kA, 132'000'000'000'000'000u);
  ASSERT_TRUE(ShelveCurrentDocument());
  EXPECT_EQ(shelfEntryOf(kA)->sourceSize, loaded->size);
  EXPECT_EQ(shelfEntryOf(kA)->sourceTime, loaded->writeTime);
  openFile(1, 1);
  standIn().boxAnswers = {BoxAnswer::Cancel};
  openFile(1, 0);
  EXPECT_EQ(standIn().boxes[0].title, u"Conflicting Versions");
}

// The entry has the stamps of the file that the user knows, from wherever the document is read.

TEST_F(ShelveTest, AFileThatChangedAfterSaveAsRaisesTheConflictQuestion) {
  openFile(1, 0);
  mark();
  ASSERT_TRUE(SaveDocumentTo(0, kFour));
  putPdf(kFour, simplePdf(5));
  mark();
  ASSERT_TRUE(ShelveCurrentDocument());
  openFile(1, 1);
  standIn().boxAnswers = {BoxAnswer::Cancel};
  EXPECT_FALSE(openRequested(kFour, 0, kWorkingDocsToHead, true));
  ASSERT_THAT(standIn().boxes, SizeIs(1));
  EXPECT_EQ(standIn().boxes[0].title, u"Conflicting Versions");
}

TEST_F(ShelveTest, AFileThatChangedAfterAFailedSaveRaisesTheConflictQuestion) {
  openFile(1, 0);
  mark();
  platform::setReadOnly(kA, true);
  standIn().boxAnswers = {BoxAnswer::Ok, BoxAnswer::Cancel};
  SaveCommand();
  platform::setReadOnly(kA, false);
  putPdf(kA, simplePdf(5));
  ASSERT_TRUE(ShelveCurrentDocument());
  openFile(1, 1);
  openFile(1, 0);
  ASSERT_THAT(standIn().boxes, SizeIs(2));
  EXPECT_EQ(standIn().boxes[1].title, u"Conflicting Versions");
}

TEST_F(ShelveTest, AnEntryFromBeforeSaveAsToItsFileAsksNothingAboutThatSave) {
  shelveFile(1, 1);
  openFile(1, 0);
  mark();
  ASSERT_TRUE(SaveDocumentTo(0, kB));
  mark();
  ASSERT_TRUE(ShelveCurrentDocument());
  openFile(1, 2);
  openFile(1, 1);
  EXPECT_EQ(marks(), 2);
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(ShelveTest, AFileThatChangedBeforeTheFirstEditLeavesTheDocumentToTheQuestion) {
  openFile(1, 0);
  platform::setWriteTime(kA, 132'000'000'000'000'000u);
  mark();
  EXPECT_FALSE(ShelveCurrentDocument());
  EXPECT_TRUE(session.active.dirty);
}

TEST_F(ShelveTest, AnotherSpellingOfThePathIsTheSameDocument) {
  platform::putFile(u"C:\\Odd.lst", "C:/x/../a.pdf\r\n");
  LoadBinder(u"C:\\Odd.lst");
  shelveFile(1, 0);
  openFile(1, 1);
  openFile(3, 0);
  EXPECT_EQ(marks(), 1);
  mark();
  openFile(1, 1);
  openFile(1, 0);
  EXPECT_EQ(marks(), 2);
  EXPECT_EQ(session.shelfIndex.size(), 1u);
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

// Live edits.

TEST_F(ShelveTest, AnEditIsNotedAtOnceAndNoCopyIsMade) {
  openFile(1, 0);
  mark();
  EXPECT_TRUE(IsShelved(kA));
  EXPECT_THAT(index(), HasSubstr("-\t1\t0\t0\tc:\\a.pdf\r\n"));
  EXPECT_THAT(shelfFiles(), IsEmpty());
}

TEST_F(ShelveTest, AnEditIsSeenBeforeTheIndexIsWritten) {
  openFile(1, 0);
  platform::standIn().window.paintsLater = true;
  mark();
  EXPECT_TRUE(IsShelved(kA));
  EXPECT_FALSE(platform::fileExists(ShelfIndexPath()));
  platform::standIn().window.paintNow();
  EXPECT_THAT(index(), HasSubstr("-\t1\t0\t0\tc:\\a.pdf\r\n"));
}

TEST_F(ShelveTest, ARecordOfEditsThatWereLostIsForgottenWhenTheDocumentOpensAgain) {
  openFile(1, 0);
  mark();
  restart();  // before anything was shelved
  EXPECT_FALSE(IsShelved(kA));
  EXPECT_EQ(session.shelfIndex.size(), 1u);
  openFile(1, 0);
  EXPECT_EQ(marks(), 0);
  EXPECT_FALSE(IsShelved(kA));
  EXPECT_TRUE(session.shelfIndex.empty());
}

TEST_F(ShelveTest, FourQuarterTurnsLeaveNoRecord) {
  openFile(1, 0);
  for (int n = 0; n < 3; ++n) rotatePage(0);
  EXPECT_TRUE(IsShelved(kA));
  rotatePage(0);
  EXPECT_FALSE(IsShelved(kA));
  EXPECT_TRUE(session.shelfIndex.empty());
}

TEST_F(ShelveTest, ARecordWithACopyStaysChangedWhateverIsTurnedBack) {
  shelveFile(1, 0);
  for (int n = 0; n < 4; ++n) rotatePage(0);
  EXPECT_TRUE(IsShelved(kA));
  EXPECT_NE(copyOf(kA), u"");
}

TEST_F(ShelveTest, EditsOfADocumentOfNoBinderAreNotNoted) {
  const std::u16string path = putPdf(kFour, simplePdf(4));
  ASSERT_TRUE(openDocument(&path, 0, kWorkingDocsLeaveAlone, false, nullptr));
  mark();
  EXPECT_TRUE(session.shelfIndex.empty());
}

TEST_F(ShelveTest, BakingIntoTheOtherPanesDocumentIsNotedForThatDocument) {
  openTwo();
  addPendingText(0);
  openFile(1, 2);  // into pane 1, whose placements the session will hold
  EXPECT_TRUE(session.panes[0].dirty);
  EXPECT_TRUE(IsShelved(kA));
}

// Giving edits up.

TEST_F(ShelveTest, NoAtThePromptDropsTheEntryWhenTheDocumentGoes) {
  shelveFile(1, 0);
  mark();
  standIn().boxAnswers = {BoxAnswer::No};
  closeCommand(0);
  EXPECT_FALSE(IsShelved(kA));
  EXPECT_THAT(shelfFiles(), IsEmpty());
}

TEST_F(ShelveTest, NoAndThenTheSameDocumentAgainOpensItsFile) {
  shelveFile(1, 0);
  mark();
  standIn().boxAnswers = {BoxAnswer::No};
  standIn().failGuids = true;
  ASSERT_TRUE(openRequested(kA, 0, kWorkingDocsToHead, true));
  EXPECT_EQ(marks(), 0);
  EXPECT_FALSE(IsShelved(kA));
}

TEST_F(ShelveTest, NoCountsForNothingWhenTheDocumentStays) {
  setViewMode(ViewMode::TwoDocuments);
  shelveFile(1, 0);
  mark();
  putPdf(kB, garbageFile());
  standIn().failGuids = true;
  standIn().boxAnswers = {BoxAnswer::No, BoxAnswer::Ok};
  openFile(1, 1);
  EXPECT_EQ(session.panes[0].path, kA);
  EXPECT_TRUE(IsShelved(kA));
  standIn().failGuids = false;
  mark();
  openFile(1, 2);
  EXPECT_TRUE(IsShelved(kA));
  EXPECT_EQ(marksIn(copyOf(kA)), 3);
}

TEST_F(ShelveTest, NoCountsForNothingAfterSaveAs) {
  setViewMode(ViewMode::TwoDocuments);
  openFile(1, 0);
  mark();
  putPdf(kB, garbageFile());
  standIn().failGuids = true;
  standIn().boxAnswers = {BoxAnswer::No, BoxAnswer::Ok};
  openFile(1, 1);
  ASSERT_TRUE(editsGivenUp(kA));
  ASSERT_TRUE(SaveDocumentTo(0, kFour));
  EXPECT_FALSE(editsGivenUp(kFour));
}

TEST_F(ShelveTest, AnEditAfterNoKeepsTheEarlierCopyOfADocumentThatNoBinderLists) {
  openTwo();
  openFile(1, 2);
  mark(1);
  ASSERT_TRUE(ShelveCurrentDocument());
  CloseBinder(1);
  mark(1);
  standIn().boxAnswers = {BoxAnswer::No, BoxAnswer::Ok};
  EXPECT_FALSE(openRequested(putPdf(kFour, garbageFile()), 1, kWorkingDocsToHead, true));
  mark(1);
  setViewMode(ViewMode::SinglePage);
  EXPECT_EQ(marksIn(copyOf(kC)), 1);
}

TEST_F(ShelveTest, NoForTheOtherPaneDropsItsEntryToo) {
  openTwo();
  mark(0);
  setActivePane(1);
  standIn().boxAnswers = {BoxAnswer::No};
  ASSERT_TRUE(openRequested(putPdf(kFour, simplePdf(4)), 0, kWorkingDocsToHead, true));
  EXPECT_FALSE(IsShelved(kA));
  EXPECT_TRUE(session.shelfIndex.empty());
}

// Two documents.

TEST_F(ShelveTest, LeavingTwoDocumentsShelvesTheChangedRightOneWithoutAQuestion) {
  openTwo();
  mark(1);
  setViewMode(ViewMode::SinglePage);
  EXPECT_EQ(session.active.path, kA);
  EXPECT_EQ(marksIn(copyOf(kB)), 1);
  EXPECT_THAT(standIn().boxes, IsEmpty());
  openFile(1, 1);
  EXPECT_EQ(marks(), 1);
}

TEST_F(ShelveTest, LeavingTwoDocumentsLosesWhatCannotBeShelved) {
  openTwo();
  mark(1);
  session.documentBinders.clear();
  setViewMode(ViewMode::SinglePage);
  EXPECT_EQ(copyOf(kB), u"");
  EXPECT_FALSE(IsShelved(kB));
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(ShelveTest, EveryChangedDocumentIsShelvedWhereverItIsShown) {
  openTwo();
  mark(0);
  mark(1);
  shelveChangedDocuments();
  EXPECT_EQ(marksIn(copyOf(kA)), 1);
  EXPECT_EQ(marksIn(copyOf(kB)), 1);
  EXPECT_THAT(shelfFiles(), SizeIs(2));
  shelveChangedDocuments();
  EXPECT_THAT(shelfFiles(), SizeIs(2));
}

// Other processes.

TEST_F(ShelveTest, AViewerAndAWindowBesideAnotherShelveNothing) {
  openFile(1, 0);
  for (const bool viewer : {true, false}) {
    session.viewerRole = viewer;
    session.ownsPrimaryName = viewer;
    mark();
    EXPECT_FALSE(ShelveCurrentDocument());
    EXPECT_TRUE(session.shelfIndex.empty());
  }
  EXPECT_EQ(index(), "none");
}

}  // namespace
}  // namespace quillmere::test
