#include "session/waiting_opens.h"

#include <string>

#include "app/exit.h"
#include "app/mouse.h"
#include "app/startup.h"
#include "documents/close.h"
#include "documents/modes.h"
#include "documents/open_requests.h"
#include "platform/text.h"
#include "store/working_documents.h"
#include "support/pdf_builder.h"
#include "support/session_test.h"
#include "view/navigation.h"
#include "view/selection.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::standIn;

class WaitingOpensTest : public SessionTest {
 protected:
  WaitingOpensTest() {
    first_ = putPdf(u"first.pdf", simplePdf(1));
    second_ = putPdf(u"second.pdf", simplePdf(2));
    third_ = putPdf(u"third.pdf", simplePdf(3));
    openRequested(first_, 0, kWorkingDocsToHead, true);
    session.active.dirty = true;
  }

  std::u16string first_;
  std::u16string second_;
  std::u16string third_;
};

TEST_F(WaitingOpensTest, APathThatComesDuringAQuestionIsOpenedAfterIt) {
  standIn().boxAnswers = {BoxAnswer::No};
  FPDF_DOCUMENT duringTheBox = nullptr;
  standIn().onBox = [&](const platform::ShownBox&) {
    openHandedOver(third_);
    duringTheBox = session.active.document.get();
  };
  const FPDF_DOCUMENT before = session.active.document.get();
  openRequested(second_, 0, kWorkingDocsToHead, true);
  EXPECT_EQ(duringTheBox, before);
  EXPECT_EQ(session.active.path, second_);
  deliverPosted();
  EXPECT_EQ(session.active.path, third_);
  EXPECT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(standIn().window.raises, 1);
}

TEST_F(WaitingOpensTest, WhatIsAskedAboutIsWhatIsClosed) {
  standIn().boxAnswers = {BoxAnswer::No};
  standIn().onBox = [&](const platform::ShownBox&) { openHandedOver(second_); };
  closeCommand(0);
  EXPECT_EQ(session.active.document, nullptr);
  deliverPosted();
  EXPECT_EQ(session.active.path, second_);
  EXPECT_NE(session.active.document, nullptr);
}

TEST_F(WaitingOpensTest, ARefusedQuestionStillLetsThePathCome) {
  standIn().boxAnswers = {BoxAnswer::Cancel, BoxAnswer::Cancel};
  standIn().onBox = [&](const platform::ShownBox&) {
    if (standIn().boxes.size() == 1) openHandedOver(third_);
  };
  openRequested(second_, 0, kWorkingDocsToHead, true);
  deliverPosted();
  EXPECT_EQ(session.active.path, first_);
  EXPECT_EQ(standIn().boxes.size(), 2u);  // the waiting path asks its own question
}

TEST_F(WaitingOpensTest, DroppedFilesWaitForTheirPane) {
  session.active.dirty = false;
  session.viewMode = ViewMode::SinglePage;
  {
    const DocumentWork work;
    openDropped({second_}, 900);
    EXPECT_EQ(session.active.path, first_);
  }
  deliverPosted();
  EXPECT_EQ(session.active.path, second_);
}

TEST_F(WaitingOpensTest, ADropOnTheLeftPaneOpensThereThoughTheRightOneIsActive) {
  session.active.dirty = false;
  setViewMode(ViewMode::TwoDocuments);
  openRequested(second_, 1, kWorkingDocsToHead, true);
  session.activePane = 1;
  {
    const DocumentWork work;
    openDroppedOnPane({third_}, 0);
  }
  deliverPosted();
  EXPECT_EQ(pathOf(0), third_);
  EXPECT_EQ(pathOf(1), second_);
}

TEST_F(WaitingOpensTest, PathsOpenInTheOrderInWhichTheyCame) {
  session.active.dirty = false;
  {
    const DocumentWork work;
    openHandedOver(second_);
  }
  openHandedOver(third_);  // before the message about the first is handled
  EXPECT_EQ(session.active.path, first_);
  deliverPosted();
  EXPECT_EQ(session.active.path, third_);
  EXPECT_EQ(standIn().window.waitingWorkPosted, 0);
}

// What arrives while the first of those that wait asks its question comes after the others.
TEST_F(WaitingOpensTest, WhatComesDuringAQuestionOfTheFirstQueuesBehindTheRest) {
  {
    const DocumentWork work;
    openHandedOver(second_);
    openDropped({third_}, 500);
  }
  const std::u16string last = putPdf(u"last.pdf", simplePdf(4));
  standIn().boxAnswers = {BoxAnswer::No};
  standIn().onBox = [&](const platform::ShownBox&) { openHandedOver(last); };
  deliverPosted();
  EXPECT_EQ(session.active.path, last);
  ASSERT_EQ(session.binderLibrary.size(), 1u);
  EXPECT_EQ(session.binderLibrary[0].files,
            (std::vector<std::u16string>{last, third_, second_, first_}));
  EXPECT_EQ(standIn().window.waitingWorkPosted, 0);
}

TEST_F(WaitingOpensTest, ARequestToCloseThatComesDuringWaitingWorkWaitsForAllOfIt) {
  {
    const DocumentWork work;
    openHandedOver(second_);
    openDropped({third_}, 500);
  }
  standIn().boxAnswers = {BoxAnswer::No};
  int requestsDuringTheBox = -1;
  standIn().onBox = [&](const platform::ShownBox&) {
    EXPECT_TRUE(closeMustWait());
    requestsDuringTheBox = standIn().window.closeRequests;
  };
  deliverPosted();
  EXPECT_EQ(requestsDuringTheBox, 0);
  EXPECT_EQ(session.active.path, third_);
  EXPECT_EQ(standIn().window.closeRequests, 1);
}

TEST_F(WaitingOpensTest, ARequestToCloseWaitsForTheAnswerAndForPathsThatCameBefore) {
  session.active.dirty = false;
  EXPECT_FALSE(closeMustWait());
  {
    const DocumentWork work;
    openHandedOver(second_);
    EXPECT_TRUE(closeMustWait());
  }
  EXPECT_EQ(standIn().window.closeRequests, 0);
  deliverPosted();
  EXPECT_EQ(session.active.path, second_);
  EXPECT_EQ(standIn().window.closeRequests, 1);
}

TEST_F(WaitingOpensTest, WhatWaitsStaysWhereAnotherQuestionIsUp) {
  session.active.dirty = false;
  const DocumentWork outer;
  openHandedOver(second_);
  openWaiting();
  EXPECT_EQ(session.active.path, first_);
}

TEST_F(WaitingOpensTest, AnEmptyPathDoesNotEvenRaiseTheWindow) {
  openHandedOver(u"");
  EXPECT_EQ(standIn().window.raises, 0);
}

TEST_F(WaitingOpensTest, AnInterruptedSelectionGivesTheMouseBack) {
  session.active.dirty = false;
  openRequested(second_, 0, kWorkingDocsToHead, false);
  pressLeft(400, 300);
  ASSERT_TRUE(session.selection.dragging);
  ASSERT_TRUE(standIn().window.mouseCaptured);
  goToPage(0, 1, false);
  ASSERT_FALSE(session.selection.dragging);
  releaseLeft(400, 300);
  EXPECT_FALSE(standIn().window.mouseCaptured);
}

class SecondPrimaryTest : public SessionTest {
 protected:
  static std::u16string workingDocs() { return WorkingDocsPath(); }
  static void exitWithForgetting() {
    putPdf(workingDocs(), "list");
    session.settings.restoreOpenDocs = false;
    EXPECT_TRUE(settleBeforeClose());
  }
};

TEST_F(SecondPrimaryTest, TheFirstForgetsTheListItOwns) {
  standIn().mutexClaim = platform::MutexClaim::Owned;
  handOverToRunningInstance({});
  exitWithForgetting();
  EXPECT_FALSE(platform::fileExists(workingDocs()));
}

TEST_F(SecondPrimaryTest, AnotherOneLeavesItAlone) {
  standIn().mutexClaim = platform::MutexClaim::AlreadyExists;
  handOverToRunningInstance({});
  exitWithForgetting();
  EXPECT_TRUE(platform::fileExists(workingDocs()));
}

}  // namespace
}  // namespace quillmere::test
