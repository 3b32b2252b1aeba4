#include <fpdfview.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/exit.h"
#include "documents/modes.h"
#include "documents/open_requests.h"
#include "documents/shelve.h"
#include "store/binder_library.h"
#include "store/settings.h"
#include "store/shelf.h"
#include "store/working_documents.h"
#include "support/pdf_builder.h"
#include "support/settings_file.h"
#include "support/shelf_flow_test.h"
#include "view/navigation.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::standIn;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char16_t* kStaysText =
    u"Some documents could not be saved, so the application will stay open. Their changes are "
    u"still marked unsaved.";

class ExitShelfTest : public ShelfFlowTest {
 protected:
  static void viewerRuns() {
    platform::OtherWindow window;
    window.id = 1;
    window.className = u"QuillmereViewerWnd";
    standIn().otherWindows.push_back(window);
  }
  static void leave() {
    tearDown();
    FPDF_InitLibrary();  // tearDown() has shut it down
  }
};

TEST_F(ExitShelfTest, WithNothingShelvedNobodyIsAskedAndTheFolderIsEmptied) {
  putPdf(session.shelveFolder + u"unknown.pdf", simplePdf(1));
  EXPECT_TRUE(settleBeforeClose());
  EXPECT_THAT(unsavedDialogScript().titles, IsEmpty());
  EXPECT_THAT(shelfFiles(), IsEmpty());
}

TEST_F(ExitShelfTest, TheDialogListsWhatIsShelvedAndCancelKeepsTheWindow) {
  shelveFile(1, 0);
  openFile(1, 1);
  mark();
  session.closeWaits = true;
  EXPECT_FALSE(settleBeforeClose());
  EXPECT_THAT(unsavedDialogScript().titles, ElementsAre(u"Save Changes Before Closing"));
  EXPECT_THAT(unsavedDialogScript().labels[0], ElementsAre(u"a.pdf  -  Work", u"b.pdf  -  Work"));
  EXPECT_TRUE(IsShelved(kA));
  EXPECT_NE(copyOf(kA), u"");
  EXPECT_FALSE(session.leaving);
  EXPECT_FALSE(session.closeWaits);
}

TEST_F(ExitShelfTest, CheckedFilesAreSavedAndTheRestIsDiscarded) {
  shelveFile(1, 0);
  shelveFile(1, 2);
  openFile(1, 1);
  answerDialog({u"c.pdf  -  Work"});
  EXPECT_TRUE(settleBeforeClose());
  leave();
  EXPECT_EQ(marksIn(kA), 0);
  EXPECT_EQ(marksIn(kC), 1);
  EXPECT_THAT(shelfFiles(), IsEmpty());
  EXPECT_EQ(index(), "none");
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(ExitShelfTest, AFailedSaveDropsNothingNotEvenWhatWasSaved) {
  shelveFile(1, 0);
  shelveFile(1, 2);
  openFile(1, 1);
  platform::setReadOnly(kA, true);
  answerDialog({u"a.pdf  -  Work", u"c.pdf  -  Work"});
  standIn().boxAnswers = {BoxAnswer::Ok, BoxAnswer::Ok};
  EXPECT_FALSE(settleBeforeClose());
  EXPECT_EQ(standIn().boxes.back().text, kStaysText);
  EXPECT_TRUE(IsShelved(kA));
  EXPECT_EQ(marksIn(kC), 1);
  EXPECT_EQ(session.shelfIndex.size(), 2u);
  EXPECT_EQ(copyOf(kC), u"");  // the file has caught up with it
  EXPECT_EQ(session.active.path, kB);
}

TEST_F(ExitShelfTest, AfterAFailedSaveTheWindowIsNotAskedToCloseOnceMore) {
  shelveFile(1, 0);
  openFile(1, 1);
  platform::setReadOnly(kA, true);
  answerDialog({u"a.pdf  -  Work"});
  standIn().boxAnswers = {BoxAnswer::Ok, BoxAnswer::Ok};
  session.closeWaits = true;
  EXPECT_FALSE(settleBeforeClose());
  EXPECT_FALSE(session.closeWaits);
}

TEST_F(ExitShelfTest, AnOpenDocumentIsSavedWithItsLiveEdits) {
  shelveFile(1, 0);
  mark();
  answerDialog({u"a.pdf  -  Work"});
  EXPECT_TRUE(settleBeforeClose());
  leave();
  EXPECT_EQ(marksIn(kA), 2);
  EXPECT_THAT(shelfFiles(), IsEmpty());
}

TEST_F(ExitShelfTest, AFileThatNoLoadedBinderListsIsLostWithoutAQuestion) {
  shelveFile(1, 0);
  CloseBinder(1);
  EXPECT_TRUE(settleBeforeClose());
  EXPECT_THAT(unsavedDialogScript().titles, IsEmpty());
  leave();
  EXPECT_THAT(shelfFiles(), IsEmpty());
}

TEST_F(ExitShelfTest, ACopyThatIsOpenGoesWhenItsDocumentCloses) {
  shelveFile(1, 0);
  openFile(1, 1);
  openFile(1, 0);
  platform::setOtherUse(copyOf(kA), platform::OtherUse::Exclusive);
  const std::u16string copy = copyOf(kA);
  answerDialog({});
  EXPECT_TRUE(settleBeforeClose());
  EXPECT_TRUE(platform::fileExists(copy));
  platform::setOtherUse(copy, platform::OtherUse::Nobody);
  leave();
  EXPECT_FALSE(platform::fileExists(copy));
}

TEST_F(ExitShelfTest, TheNextStartFindsNothingAfterANormalExit) {
  shelveFile(1, 0);
  answerDialog({});
  EXPECT_TRUE(settleBeforeClose());
  leave();
  restart();
  EXPECT_TRUE(session.shelfIndex.empty());
  openFile(1, 0);
  EXPECT_EQ(marks(), 0);
}

TEST_F(ExitShelfTest, EditsAfterTheShelfWasClearedMakeNoNewIndex) {
  openFile(1, 0);
  EXPECT_TRUE(settleBeforeClose());
  mark();
  EXPECT_EQ(index(), "none");
}

// Files that are handed over.

TEST_F(ExitShelfTest, AFileHandedOverWhileTheDialogIsUpIsOpenedAndTheWindowStays) {
  shelveFile(1, 0);
  openFile(1, 1);
  const std::u16string late = putPdf(u"C:\\late.pdf", simplePdf(1));
  unsavedDialogScript().answer = [&](std::vector<UnsavedFile>& files) {
    const DocumentWork work;
    openHandedOver(late);
    files[0].save = false;
    return UnsavedAnswer::GoAhead;
  };
  EXPECT_FALSE(settleBeforeClose());
  EXPECT_TRUE(IsShelved(kA));
  deliverPosted();
  EXPECT_EQ(session.active.path, late);
}

TEST_F(ExitShelfTest, WhatWasSavedBeforeTheWindowStayedIsNotListedAgain) {
  openFile(1, 0);
  mark();
  shelveFile(1, 1);
  const std::u16string late = putPdf(u"C:\\late.pdf", simplePdf(1));
  unsavedDialogScript().answer = [&](std::vector<UnsavedFile>& files) {
    const DocumentWork work;
    openHandedOver(late);
    session.closeWaits = true;
    files[0].save = false;
    return UnsavedAnswer::GoAhead;
  };
  EXPECT_FALSE(settleBeforeClose());
  EXPECT_EQ(marksIn(kB), 1);
  EXPECT_FALSE(IsShelved(kB));
  EXPECT_TRUE(IsShelved(kA));
  EXPECT_FALSE(session.closeWaits);
}

TEST_F(ExitShelfTest, AFileHandedOverOnceTheShelfIsClearedIsForAFreshProcess) {
  viewerRuns();
  openFile(1, 0);
  const std::u16string late = putPdf(u"C:\\late file.pdf", simplePdf(1));
  standIn().boxAnswers = {BoxAnswer::No};
  standIn().onBox = [&](const platform::ShownBox&) { openHandedOver(late); };
  EXPECT_TRUE(settleBeforeClose());
  openHandedOver(kC);  // no box is up any more
  deliverPosted();
  EXPECT_EQ(session.active.path, kA);
  EXPECT_THAT(standIn().processes, IsEmpty());

  leave();
  standIn().startProcessResult = true;
  handOnWaitingFiles();
  ASSERT_THAT(standIn().processes, SizeIs(2));
  EXPECT_EQ(standIn().processes[0].program, standIn().executable);
  EXPECT_EQ(standIn().processes[0].commandLine,
            u"\"" + standIn().executable + u"\" \"C:\\late file.pdf\"");
  EXPECT_EQ(standIn().mutexCloses, 1);
}

TEST_F(ExitShelfTest, WithNothingHandedOverNoProcessStarts) {
  EXPECT_TRUE(settleBeforeClose());
  leave();
  handOnWaitingFiles();
  EXPECT_THAT(standIn().processes, IsEmpty());
  EXPECT_EQ(standIn().mutexCloses, 0);
}

// Windows without a shelf.

TEST_F(ExitShelfTest, AViewerAndAWindowBesideAnotherLeaveTheShelfAlone) {
  shelveFile(1, 0);
  const std::string before = index();
  for (const bool viewer : {true, false}) {
    restart();
    session.viewerRole = viewer;
    session.ownsPrimaryName = viewer;
    LoadShelfIndex();
    EXPECT_TRUE(settleBeforeClose());
    EXPECT_EQ(index(), before);
    EXPECT_THAT(shelfFiles(), SizeIs(1));
  }
  EXPECT_THAT(unsavedDialogScript().titles, IsEmpty());
}

// Logging off.

TEST_F(ExitShelfTest, LoggingOffWhileViewersAreAskedAboutBringsNothingBack) {
  viewerRuns();
  openFile(1, 0);
  mark();
  answerDialog({});  // discards it
  standIn().boxAnswers = {BoxAnswer::No};
  standIn().onBox = [](const platform::ShownBox&) { settleForLogoff(); };
  EXPECT_TRUE(settleBeforeClose());
  EXPECT_THAT(shelfFiles(), IsEmpty());
  EXPECT_EQ(index(), "none");
}

TEST_F(ExitShelfTest, LoggingOffWhileTheDialogIsUpShelvesEverything) {
  openFile(1, 0);
  mark();
  unsavedDialogScript().answer = [](std::vector<UnsavedFile>&) {
    settleForLogoff();
    return UnsavedAnswer::Cancel;
  };
  EXPECT_FALSE(settleBeforeClose());
  restart();
  openFile(1, 0);
  EXPECT_EQ(marks(), 1);
}

TEST_F(ExitShelfTest, LoggingOffWritesAnIndexThatCouldNotBeWrittenBefore) {
  openFile(1, 0);
  mark();
  int replaced = 0;
  standIn().refuseFileCall = [&replaced](platform::FileCall call) {
    return call == platform::FileCall::Replace && ++replaced == 2;  // first the copy
  };
  ASSERT_TRUE(ShelveCurrentDocument());
  standIn().refuseFileCall = {};
  settleForLogoff();
  restart();
  openFile(1, 0);
  EXPECT_EQ(marks(), 1);
}

TEST_F(ExitShelfTest, LoggingOffShelvesBothDocumentsBeforeTheSettingsAreSaved) {
  setViewMode(ViewMode::TwoDocuments);
  openFile(1, 0);
  setActivePane(1);
  openFile(1, 1);
  mark(0);
  mark(1);
  bool shelvedFirst = false;
  standIn().refuseFileCall = [&](platform::FileCall) {
    shelvedFirst = shelvedFirst || !iniValue(u"Panels", u"NavWidth");
    return false;
  };
  settleForLogoff();
  EXPECT_TRUE(shelvedFirst);
  EXPECT_THAT(shelfFiles(), SizeIs(2));
  EXPECT_THAT(standIn().boxes, IsEmpty());
  restart();
  openFile(1, 1);
  EXPECT_EQ(marks(), 1);
}

}  // namespace
}  // namespace quillmere::test
