#include <fpdf_edit.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/exit.h"
#include "documents/close.h"
#include "documents/discard.h"
#include "documents/document_loader.h"
#include "documents/modes.h"
#include "documents/save.h"
#include "documents/shelve.h"
#include "store/shelf.h"
#include "support/pdf_builder.h"
#include "support/shelf_flow_test.h"
#include "view/geometry.h"
#include "view/rotation.h"
#include "view/view_test.h"

// Turns of pages stay behind when the mode changes to or from TwoDocuments. They must not be lost
// when their document is saved or goes before the mode comes back.
namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::standIn;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char16_t* kTurnsText =
    u"This document has rotations that haven't been saved:\n"
    u"  \u2022 1 page individually rotated\n"
    u"\nSave these rotations to the file?";

// a.pdf was turned on its first page in one mode, and the other is on; with true it was turned in
// TwoDocuments.
class WaitingTurnsTest : public ShelfFlowTest, public testing::WithParamInterface<bool> {
 protected:
  WaitingTurnsTest() {
    if (GetParam()) setViewMode(ViewMode::TwoDocuments);
    openFile(1, 0);
    rotatePage(0);
    setViewMode(GetParam() ? ViewMode::SinglePage : ViewMode::TwoDocuments);
    EXPECT_EQ(pageRotationOf(0), 0u);
    EXPECT_TRUE(turnsWait(0));
  }

  static int turnsIn(const std::u16string& path) {
    return ownRotationOf(loadDocumentFile(path).get(), 0);
  }
};

TEST_P(WaitingTurnsTest, TheyAreAskedAboutBeforeTheirDocumentCloses) {
  standIn().boxAnswers = {BoxAnswer::Cancel};
  closeCommand(0);
  ASSERT_NE(documentOf(0), nullptr);
  EXPECT_EQ(pageRotationOf(0), 1u) << "the question is about what is seen";
  standIn().boxAnswers = {BoxAnswer::Yes, BoxAnswer::Yes};
  closeCommand(0);
  EXPECT_EQ(documentOf(0), nullptr);
  ASSERT_THAT(standIn().boxes, SizeIs(3));
  EXPECT_EQ(standIn().boxes[2].text, kTurnsText);
  EXPECT_EQ(turnsIn(kA), 1);
}

TEST_P(WaitingTurnsTest, SavingAsksAboutThem) {
  standIn().boxAnswers = {BoxAnswer::Yes};
  SaveCommand();
  ASSERT_THAT(standIn().boxes, SizeIs(1));
  EXPECT_EQ(standIn().boxes[0].text, kTurnsText);
  EXPECT_EQ(turnsIn(kA), 1);
  EXPECT_FALSE(turnsWait(0));
  EXPECT_FALSE(IsShelved(kA));
}

TEST_P(WaitingTurnsTest, TheyAreSavedWithTheirRowAtTheExit) {
  answerDialog({u"a.pdf  -  Work"});
  EXPECT_TRUE(settleBeforeClose());
  EXPECT_EQ(turnsIn(kA), 1);
}

TEST_P(WaitingTurnsTest, TheyMoveToTheShelfWhenAnotherDocumentIsOpened) {
  openFile(1, 1);
  EXPECT_EQ(turnsIn(kA), 0);
  EXPECT_EQ(turnsIn(copyOf(kA)), 1);
  EXPECT_EQ(pageRotationOf(0), 0u);
  openFile(1, 0);
  EXPECT_EQ(pageRotationOf(0), 1u);
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_P(WaitingTurnsTest, TheyMoveToTheShelfAtALogoff) {
  settleForLogoff();
  EXPECT_EQ(turnsIn(copyOf(kA)), 1);
}

TEST_P(WaitingTurnsTest, TheRecordOfEditsKnowsThem) {
  for (int n = 0; n < 4; ++n) rotatePage(0);
  EXPECT_TRUE(IsShelved(kA));
}

TEST_P(WaitingTurnsTest, APageThatIsTurnedInBothModesIsWrittenAsItIsSeen) {
  rotatePage(0);
  rotatePage(0);
  standIn().boxAnswers = {BoxAnswer::Yes};
  SaveCommand();
  EXPECT_EQ(turnsIn(kA), 2);
  EXPECT_FALSE(hasUnsavedChanges());
}

TEST_P(WaitingTurnsTest, TheyCanBeDiscarded) {
  standIn().boxAnswers = {BoxAnswer::Ok};
  DiscardActive();
  EXPECT_EQ(pageRotationOf(0), 0u);
  EXPECT_FALSE(turnsWait(0));
  EXPECT_FALSE(IsShelved(kA));
}

TEST_P(WaitingTurnsTest, TheyComeBackWithTheirMode) {
  setViewMode(GetParam() ? ViewMode::TwoDocuments : ViewMode::SinglePage);
  EXPECT_EQ(pageRotationOf(0), 1u);
  EXPECT_TRUE(hasUnsavedChanges());
}

INSTANTIATE_TEST_SUITE_P(EitherWay, WaitingTurnsTest, testing::Bool());

TEST_F(ShelfFlowTest, TurnsOfTheLeftDocumentAreNoneOfTheRightOnes) {
  openFile(1, 0);
  rotatePage(0);
  setViewMode(ViewMode::TwoDocuments);
  setActivePane(1);
  openFile(1, 1);
  EXPECT_FALSE(turnsWait(1));
  closeCommand(1);
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_TRUE(turnsWait(0));
}

}  // namespace
}  // namespace quillmere::test
