#include "view/rotation.h"

#include "documents/modes.h"
#include "view/geometry.h"
#include "view/navigation.h"
#include "view/view_test.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;

class RotationTest : public ViewTest {
 protected:
  static void giveHistories() {
    for (PaneSlot& slot : session.panes) {
      slot.backHistory = {JumpRecord{}};
      slot.forwardHistory = {JumpRecord{}};
    }
  }
  static bool hasHistory(int index) {
    return !pane(index).backHistory.empty() || !pane(index).forwardHistory.empty();
  }
};

TEST_F(RotationTest, FourTurnsOfTheDocumentComeBackAndCountAsUnchanged) {
  const FPDF_DOCUMENT document = openAndShow(simplePdf(3, 400, 600));
  for (std::uint32_t turns = 1; turns <= 4; ++turns) {
    rotateDocument(0);
    EXPECT_EQ(pane(0).documentRotation, turns % 4);
    EXPECT_EQ(hasUnsavedChanges(), turns != 4);
    EXPECT_EQ(pane(0).pageBitmapWidth > pane(0).pageBitmapHeight, turns % 2 == 1);
  }
  EXPECT_EQ(ownRotationOf(document, 0), 0);
}

TEST_F(RotationTest, FourTurnsOfAPageCountAsUnchanged) {
  openAndShow(simplePdf(3, 400, 600));
  rotatePage(0);
  EXPECT_EQ(session.active.pageRotations[0], 1u);
  EXPECT_TRUE(hasUnsavedChanges());
  for (int turns = 0; turns < 3; ++turns) rotatePage(0);
  EXPECT_FALSE(hasUnsavedChanges());
}

TEST_F(RotationTest, ATurnShowsTheTopOfTheTurnedPage) {
  openAndShow(simplePdf(3, 400, 600));
  setView(0, 2.0f, -70.0f, -320.0f);
  window().invalidations = 0;
  rotateDocument(0);
  EXPECT_EQ(pane(0).pageBitmapWidth, 1200);
  EXPECT_FLOAT_EQ(pane(0).panY, 8.0f);
  EXPECT_GT(window().invalidations, 0);
}

TEST_F(RotationTest, BothPanesOfOneDocumentTurnTogether) {
  openAndShow(simplePdf(5, 400, 600));
  setViewMode(ViewMode::IndependentPages);
  goToPage(1, 3, false);
  pane(0).documentRotation = 2;
  giveHistories();
  rotateDocument(1);
  EXPECT_EQ(pane(0).documentRotation, 1u);
  EXPECT_EQ(pane(1).documentRotation, 1u);
  EXPECT_GT(pane(0).pageBitmapWidth, pane(0).pageBitmapHeight);
  EXPECT_GT(pane(1).pageBitmapWidth, pane(1).pageBitmapHeight);
  EXPECT_FALSE(hasHistory(0));
  EXPECT_FALSE(hasHistory(1));
}

TEST_F(RotationTest, TwoDocumentsTurnAlone) {
  openAndShowIn(0, simplePdf(2, 400, 600));
  openAndShowIn(1, simplePdf(2, 400, 600));
  giveHistories();
  rotateDocument(1);
  rotatePage(1);
  EXPECT_EQ(pane(0).documentRotation, 0u);
  EXPECT_EQ(pane(1).documentRotation, 1u);
  EXPECT_TRUE(pane(0).pageRotations.empty());
  EXPECT_EQ(pane(1).pageRotations[0], 1u);
  EXPECT_TRUE(session.active.pageRotations.empty());
  EXPECT_TRUE(hasHistory(0));
  EXPECT_FALSE(hasHistory(1));
}

TEST_F(RotationTest, APageTurnsInEveryPaneThatShowsIt) {
  openAndShow(simplePdf(5, 400, 600));
  setViewMode(ViewMode::IndependentPages);
  giveHistories();
  rotatePage(0);
  EXPECT_GT(pane(0).pageBitmapWidth, pane(0).pageBitmapHeight);
  EXPECT_GT(pane(1).pageBitmapWidth, pane(1).pageBitmapHeight);
  EXPECT_FALSE(hasHistory(0));
  EXPECT_FALSE(hasHistory(1));
  goToPage(1, 3, false);
  const auto* bitmap = pane(1).pageBitmap.get();
  rotatePage(0);
  EXPECT_EQ(pane(1).pageBitmap.get(), bitmap);
  EXPECT_EQ(session.active.pageRotations, (PageRotations{{0, 2}}));
}

// Entering a book on the last page leaves that page open under the number before.
TEST_F(RotationTest, ATurnIsThatOfThePageWhichIsSeen) {
  const FPDF_DOCUMENT document = openAndShow(simplePdf(5, 400, 600));
  goToPage(0, 4, false);
  setViewMode(ViewMode::Book);
  setViewMode(ViewMode::SinglePage);
  ASSERT_EQ(pane(0).currentPage, 3);
  rotatePage(0);
  EXPECT_EQ(session.active.pageRotations, (PageRotations{{4, 1}}));
  EXPECT_EQ(pageRotationOf(0), 1u);
  EXPECT_GT(pane(0).pageBitmapWidth, pane(0).pageBitmapHeight);
  commitRotations(0);
  EXPECT_EQ(ownRotationOf(document, 3), 0);
  EXPECT_EQ(ownRotationOf(document, 4), 1);
  EXPECT_EQ(pane(0).openPage, 4);
  EXPECT_EQ(pane(0).currentPage, 3);
  EXPECT_EQ(pageRotationOf(0), 1u);
}

TEST_F(RotationTest, APendingTurnOfThePageBeforeLeavesTheOpenOneAlone) {
  openAndShow(simplePdf(5, 400, 600));
  session.active.pageRotations[3] = 1;
  goToPage(0, 4, false);
  setViewMode(ViewMode::Book);
  EXPECT_EQ(pageRotationOf(0), 0u);
  EXPECT_LT(pane(0).pageBitmapWidth, pane(0).pageBitmapHeight);
}

TEST_F(RotationTest, AViewerAndAnEmptyPaneTurnNothing) {
  rotateDocument(0);
  rotatePage(0);
  EXPECT_EQ(pane(0).documentRotation, 0u);
  EXPECT_TRUE(session.active.pageRotations.empty());
  const FPDF_DOCUMENT document = openAndShow(simplePdf(2));
  session.viewerRole = true;
  rotateDocument(0);
  rotatePage(0);
  EXPECT_EQ(pane(0).documentRotation, 0u);
  EXPECT_TRUE(session.active.pageRotations.empty());
  pane(0).documentRotation = 1;
  commitRotations(0);
  EXPECT_EQ(pane(0).documentRotation, 1u);
  EXPECT_EQ(ownRotationOf(document, 0), 0);
}

TEST_F(RotationTest, TheRightPaneOfAShortBookTurnsNothing) {
  openAndShow(simplePdf(1));
  setViewMode(ViewMode::Book);
  rotateDocument(1);
  EXPECT_EQ(pane(0).documentRotation, 0u);
}

TEST_F(RotationTest, ATurnOfTheHiddenPaneCountsAsUnsaved) {
  openAndShow(simplePdf(2));
  setViewMode(ViewMode::IndependentPages);
  pane(1).documentRotation = 1;
  EXPECT_EQ(session.activePane, 0);
  EXPECT_TRUE(hasUnsavedChanges());
  pane(1).documentRotation = 4;
  EXPECT_FALSE(hasUnsavedChanges());
}

TEST_F(RotationTest, CommittingWritesTheSumOfAllTurns) {
  PdfPage turned;
  turned.rotate = 270;
  const FPDF_DOCUMENT document = openAndShow(buildPdf({PdfPage{}, PdfPage{}, PdfPage{}, turned}));
  pane(0).documentRotation = 1;
  pane(1).documentRotation = 1;
  session.active.pageRotations = {{1, 3}, {2, 2}};
  commitRotations(0);
  EXPECT_EQ(ownRotationOf(document, 0), 1);
  EXPECT_EQ(ownRotationOf(document, 1), 0);  // 3 + 1 is a whole turn
  EXPECT_EQ(ownRotationOf(document, 2), 3);
  EXPECT_EQ(ownRotationOf(document, 3), 0);  // 3 + 1
  EXPECT_EQ(pane(0).documentRotation, 0u);
  EXPECT_EQ(pane(1).documentRotation, 0u);
  EXPECT_TRUE(session.active.pageRotations.empty());
  EXPECT_TRUE(session.active.dirty);
}

TEST_F(RotationTest, WhatIsShownStaysTheSameWhenItIsCommitted) {
  openAndShow(simplePdf(3, 400, 600));
  rotateDocument(0);
  const int width = pane(0).pageBitmapWidth;
  ASSERT_EQ(pageRotationOf(0), 1u);
  commitRotations(0);
  EXPECT_EQ(pageRotationOf(0), 1u);
  EXPECT_EQ(renderRotationOf(0), 0u);
  EXPECT_EQ(pane(0).pageBitmapWidth, width);
  EXPECT_NE(pane(0).textPage, nullptr);
}

TEST_F(RotationTest, BothPanesShowTheCommittedTurn) {
  openAndShow(simplePdf(5, 400, 600));
  setViewMode(ViewMode::IndependentPages);
  goToPage(1, 3, false);
  rotateDocument(0);
  commitRotations(1);
  for (const int each : {0, 1}) {
    EXPECT_EQ(pageRotationOf(each), 1u);
    EXPECT_EQ(renderRotationOf(each), 0u);
    EXPECT_GT(pane(each).pageBitmapWidth, pane(each).pageBitmapHeight);
  }
}

TEST_F(RotationTest, CommittingOneOfTwoDocumentsLeavesTheOtherAlone) {
  const FPDF_DOCUMENT left = openAndShowIn(0, simplePdf(2, 400, 600));
  const FPDF_DOCUMENT right = openAndShowIn(1, simplePdf(2, 400, 600));
  rotateDocument(0);
  rotateDocument(1);
  pane(0).panY = -12.0f;
  commitRotations(1);
  EXPECT_EQ(ownRotationOf(left, 0), 0);
  EXPECT_EQ(ownRotationOf(right, 0), 1);
  EXPECT_EQ(pane(0).documentRotation, 1u);
  EXPECT_FLOAT_EQ(pane(0).panY, -12.0f);
  EXPECT_FALSE(pane(0).dirty);
  EXPECT_TRUE(pane(1).dirty);
}

TEST_F(RotationTest, WithNothingPendingNothingIsCommitted) {
  openAndShow(simplePdf(2));
  session.active.pageRotations[1] = 4;
  const auto page = pane(0).page.get();
  commitRotations(0);
  EXPECT_FALSE(session.active.dirty);
  EXPECT_EQ(pane(0).page.get(), page);
  EXPECT_EQ(session.active.pageRotations.size(), 1u);
}

TEST_F(RotationTest, TurnsThatCancelOutWriteNothing) {
  openAndShow(simplePdf(1));
  pane(0).documentRotation = 1;
  session.active.pageRotations[0] = 3;
  commitRotations(0);
  EXPECT_FALSE(session.active.dirty);
  EXPECT_EQ(pane(0).documentRotation, 0u);
  EXPECT_TRUE(session.active.pageRotations.empty());
}

TEST_F(RotationTest, APageThatCannotBeLoadedLosesItsTurn) {
  const FPDF_DOCUMENT document = openInActive(pdfWithBrokenPage(2, 1));
  show(0, 0);
  session.active.pageRotations[1] = 1;
  commitRotations(0);
  EXPECT_EQ(ownRotationOf(document, 0), 0);
  EXPECT_TRUE(session.active.pageRotations.empty());
  EXPECT_TRUE(session.active.dirty);
}

TEST_F(RotationTest, WithoutADocumentPendingTurnsAreForgotten) {
  pane(0).documentRotation = 1;
  pane(1).documentRotation = 1;
  commitRotations(0);
  EXPECT_EQ(pane(0).documentRotation, 0u);
  EXPECT_EQ(pane(1).documentRotation, 0u);
  EXPECT_FALSE(session.active.dirty);
}

TEST_F(RotationTest, WithNothingPendingASaveIsNotAskedAbout) {
  openAndShow(simplePdf(1));
  EXPECT_EQ(confirmRotationSave(0), BoxAnswer::Yes);
  EXPECT_TRUE(platform::standIn().boxes.empty());
}

TEST_F(RotationTest, TheQuestionNamesEveryKindOfTurn) {
  struct {
    std::uint32_t document;
    PageRotations pages;
    const char16_t* lines;
  } const cases[] = {
      {1, {}, u"  \u2022 View rotation: 90\u00B0 clockwise\n"},
      {2, {}, u"  \u2022 View rotation: 180\u00B0\n"},
      {3, {}, u"  \u2022 View rotation: 270\u00B0 clockwise\n"},
      {0, {{5, 1}}, u"  \u2022 1 page individually rotated\n"},
      {4, {{5, 1}, {6, 4}, {7, 2}}, u"  \u2022 2 pages individually rotated\n"},
      {5,
       {{5, 1}},
       u"  \u2022 View rotation: 90\u00B0 clockwise\n  \u2022 1 page individually rotated\n"},
  };
  for (const auto& c : cases) {
    pane(0).documentRotation = c.document;
    session.active.pageRotations = c.pages;
    EXPECT_EQ(rotationQuestion(0), u"This document has rotations that haven't been saved:\n" +
                                       std::u16string(c.lines) +
                                       u"\nSave these rotations to the file?");
  }
}

TEST_F(RotationTest, TheAnswerDecidesWhatIsWritten) {
  for (const BoxAnswer answer : {BoxAnswer::Yes, BoxAnswer::No, BoxAnswer::Cancel}) {
    resetSession();
    platform::standIn().boxes.clear();
    const FPDF_DOCUMENT document = openAndShow(simplePdf(1));
    rotateDocument(0);
    platform::standIn().boxAnswers = {answer};
    EXPECT_EQ(confirmRotationSave(0), answer);
    const bool written = answer == BoxAnswer::Yes;
    EXPECT_EQ(ownRotationOf(document, 0), written ? 1 : 0);
    EXPECT_EQ(pane(0).documentRotation, written ? 0u : 1u);
    ASSERT_EQ(platform::standIn().boxes.size(), 1u);
    const platform::ShownBox& box = platform::standIn().boxes[0];
    EXPECT_EQ(box.title, u"Save Rotation");
    EXPECT_EQ(box.text,
              u"This document has rotations that haven't been saved:\n"
              u"  \u2022 View rotation: 90\u00B0 clockwise\n"
              u"\nSave these rotations to the file?");
    EXPECT_EQ(box.buttons, platform::BoxButtons::YesNoCancel);
    EXPECT_EQ(box.icon, platform::BoxIcon::Question);
  }
}

}  // namespace
}  // namespace quillmere::test
