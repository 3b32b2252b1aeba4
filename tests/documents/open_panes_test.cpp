// Opening with two panes involved: splitting into two documents, opening into one pane, and falling
// back to one document.
#include <fpdf_annot.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "documents/modes.h"
#include "platform/pixels.h"
#include "support/opening_test.h"
#include "support/pdf_builder.h"
#include "view/navigation.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::standIn;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

void fillHistories() {
  for (PaneSlot& slot : session.panes) {
    slot.backHistory.resize(2);
    slot.forwardHistory.resize(1);
  }
}

bool historiesEmpty(int pane) {
  return session.panes[pane].backHistory.empty() && session.panes[pane].forwardHistory.empty();
}

void expectSharedModeInvariant() {
  for (const PaneSlot& slot : session.panes) {
    EXPECT_EQ(slot.document, nullptr);
    EXPECT_FALSE(slot.dirty);
  }
}

void expectTwoDocumentsInvariant() {
  EXPECT_EQ(session.viewMode, ViewMode::TwoDocuments);
  EXPECT_EQ(session.active.document, nullptr);
  EXPECT_EQ(session.active.pageCount, 0);
  EXPECT_FALSE(session.active.dirty);
}

int pageWidth(int pane) {
  return static_cast<int>(FPDF_GetPageWidthF(session.panes[pane].page.get()));
}

class SplitTest : public OpeningTest {
 protected:
  // One document in both panes, on pages 3 and 5 of 9, 500 points wide.
  SplitTest() {
    session.viewMode = ViewMode::IndependentPages;
    old_ = putPdf(u"old.pdf", simplePdf(9, 500, 700));
    EXPECT_TRUE(open(old_, {.pane = 0, .ask = true}));
    goToPage(0, 2, false);
    goToPage(1, 4, false);
    new_ = putPdf(u"new.pdf", simplePdf(4, 300, 400));
  }

  std::u16string old_;
  std::u16string new_;
};

TEST_F(SplitTest, TheOldDocumentMovesToTheOtherPane) {
  for (int pane : {0, 1}) {
    SCOPED_TRACE(pane);
    resetSession();
    session.viewMode = ViewMode::IndependentPages;
    ASSERT_TRUE(open(old_, {.pane = 0, .ask = true}));
    goToPage(0, 2, false);
    goToPage(1, 4, false);
    const FPDF_DOCUMENT oldDocument = session.active.document.get();

    ASSERT_TRUE(open(new_, {.pane = pane, .ask = true}));
    const int other = 1 - pane;
    expectTwoDocumentsInvariant();
    EXPECT_EQ(session.panes[other].document.get(), oldDocument);
    EXPECT_EQ(session.panes[other].pageCount, 9);
    EXPECT_EQ(session.panes[other].path, old_);
    EXPECT_EQ(session.panes[other].currentPage, other == 0 ? 2 : 4);
    ASSERT_NE(session.panes[other].page, nullptr);
    EXPECT_EQ(pageWidth(other), 500);
    EXPECT_NE(session.panes[other].pageBitmap, nullptr);

    EXPECT_EQ(session.panes[pane].pageCount, 4);
    EXPECT_EQ(session.panes[pane].path, new_);
    EXPECT_EQ(session.panes[pane].currentPage, 0);
    ASSERT_NE(session.panes[pane].page, nullptr);
    EXPECT_EQ(pageWidth(pane), 300);
    EXPECT_EQ(session.placementDocument, session.panes[pane].document.get());
  }
}

TEST_F(SplitTest, UnsavedChangesMoveWithTheOldDocumentAndNothingIsAsked) {
  session.active.dirty = true;
  session.active.pageRotations[6] = 3;
  session.panes[0].documentRotation = 1;
  session.panes[1].documentRotation = 2;
  ASSERT_TRUE(open(new_, {.pane = 1, .ask = true}));
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_TRUE(session.panes[0].dirty);
  EXPECT_THAT(session.panes[0].pageRotations, ElementsAre(Pair(6, 3u)));
  EXPECT_EQ(session.panes[0].documentRotation, 1u);
  EXPECT_FALSE(session.panes[1].dirty);
  EXPECT_THAT(session.panes[1].pageRotations, IsEmpty());
  EXPECT_EQ(session.panes[1].documentRotation, 0u);
  EXPECT_THAT(session.active.pageRotations, IsEmpty());
}

TEST_F(SplitTest, TurnsThatWaitForTwoDocumentsStayWithTheOldDocument) {
  for (const int pane : {0, 1}) {
    resetSession();
    session.viewMode = ViewMode::IndependentPages;
    ASSERT_TRUE(open(old_, {.pane = 0}));
    session.panes[0].pageRotations = {{6, 1}, {7, 1}};
    session.active.pageRotations = {{7, 2}};
    ASSERT_TRUE(open(new_, {.pane = pane}));
    EXPECT_THAT(session.panes[1 - pane].pageRotations, ElementsAre(Pair(6, 1u), Pair(7, 2u)));
    EXPECT_THAT(session.panes[pane].pageRotations, IsEmpty());
  }
}

TEST_F(SplitTest, TheOldDocumentKeepsItsBinder) {
  session.documentBinders[u"c:\\old.pdf"] = u"C:\\b.lst";
  ASSERT_TRUE(open(new_, {.pane = 1, .ask = true}));
  EXPECT_TRUE(session.documentBinders.contains(u"c:\\old.pdf"));
}

TEST_F(SplitTest, PendingPlacementsAreWrittenIntoTheOldDocumentFirst) {
  session.placements[0] = {Placement{}};
  ASSERT_TRUE(open(new_, {.pane = 1, .ask = true}));
  EXPECT_TRUE(session.panes[0].dirty);
  EXPECT_THAT(session.placements, IsEmpty());
  EXPECT_EQ(session.placementDocument, session.panes[1].document.get());
  EXPECT_TRUE(hasUnsavedChanges());
}

// A text that is not an annotation yet.
Placement pendingText() {
  Placement text;
  text.kind = PlacementKind::TextDrop;
  text.text = u"HHHH";
  text.x = 100;
  text.y = 100;
  text.width = 300;
  text.height = 100;
  return text;
}

TEST_F(SplitTest, AFailedOpenLeavesPlacementsPendingAndUnwritten) {
  session.placements[2] = {pendingText()};
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_FALSE(open(putPdf(u"bad.pdf", garbageFile()), {.pane = 1, .ask = true}));
  ASSERT_EQ(session.placements[2].size(), 1u);
  EXPECT_TRUE(session.placements[2].front().pending());
  EXPECT_EQ(session.placementDocument, session.panes[0].document.get());
  EXPECT_EQ(FPDFPage_GetAnnotCount(session.panes[0].page.get()), 0) << "a save would add it again";
  EXPECT_FALSE(session.panes[0].dirty);
}

TEST_F(SplitTest, WrittenPlacementsDoNotMakeTheOldDocumentDirty) {
  Placement written;
  written.annotIndex = 0;
  session.placements[0] = {written};
  ASSERT_TRUE(open(new_, {.pane = 1, .ask = true}));
  EXPECT_FALSE(session.panes[0].dirty);
}

TEST_F(SplitTest, APageNumberOutsideTheDocumentBecomesTheFirst) {
  session.panes[0].currentPage = 40;
  ASSERT_TRUE(open(new_, {.pane = 1, .ask = true}));
  EXPECT_EQ(session.panes[0].currentPage, 0);
  EXPECT_NE(session.panes[0].page, nullptr);
}

TEST_F(SplitTest, TheSameFileInOtherLettersIsNoSplit) {
  ASSERT_TRUE(open(u"C:\\OLD.PDF", {.pane = 1, .ask = true}));
  EXPECT_EQ(session.viewMode, ViewMode::IndependentPages);
  EXPECT_EQ(session.active.path, u"C:\\OLD.PDF");
  EXPECT_EQ(session.panes[0].currentPage, 0);
  EXPECT_EQ(session.panes[1].currentPage, 0);
}

TEST_F(SplitTest, ACopyThatStandsForTheShownFileIsNoSplit) {
  ASSERT_TRUE(open(putPdf(u"shelf\\copy.pdf", simplePdf(2)),
                   {.pane = 1, .ask = true, .displayPath = old_}));
  EXPECT_EQ(session.viewMode, ViewMode::IndependentPages);
  EXPECT_EQ(session.active.path, old_);
  EXPECT_EQ(session.active.pageCount, 2);
}

TEST_F(SplitTest, ACopyThatStandsForAnotherFileIsASplit) {
  ASSERT_TRUE(open(old_, {.pane = 1, .ask = true, .displayPath = u"C:\\another.pdf"}));
  expectTwoDocumentsInvariant();
  EXPECT_EQ(session.panes[0].path, old_);
  EXPECT_EQ(session.panes[1].path, u"C:\\another.pdf");
}

TEST_F(SplitTest, WithNothingOpenThereIsNothingToSplit) {
  resetSession();
  session.viewMode = ViewMode::IndependentPages;
  session.active.path = old_;
  ASSERT_TRUE(open(new_, {.pane = 1, .ask = true}));
  EXPECT_EQ(session.viewMode, ViewMode::IndependentPages);
  EXPECT_EQ(session.active.path, new_);
}

TEST_F(SplitTest, AFileThatCannotBeReadLeavesItsPaneEmptyBesideTheOldDocument) {
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_FALSE(open(putPdf(u"bad.pdf", garbageFile()), {.pane = 1, .ask = true}));
  expectTwoDocumentsInvariant();
  EXPECT_EQ(session.panes[0].path, old_);
  EXPECT_NE(session.panes[0].page, nullptr);
  EXPECT_EQ(session.panes[1].document, nullptr);
  EXPECT_EQ(session.panes[1].path, u"");
  EXPECT_EQ(session.panes[1].pageCount, 0);
  EXPECT_EQ(session.panes[1].page, nullptr);
  EXPECT_EQ(session.panes[1].pageBitmap, nullptr);
}

class TwoDocumentsOpenTest : public OpeningTest {
 protected:
  TwoDocumentsOpenTest() {
    session.viewMode = ViewMode::TwoDocuments;
    left_ = putPdf(u"left.pdf", simplePdf(5, 500, 700));
    right_ = putPdf(u"right.pdf", simplePdf(6, 400, 600));
    new_ = putPdf(u"new.pdf", simplePdf(4, 300, 400));
    EXPECT_TRUE(open(left_, {.pane = 0, .ask = true}));
    EXPECT_TRUE(open(right_, {.pane = 1, .ask = true}));
    goToPage(0, 3, false);
    goToPage(1, 2, false);
  }

  std::u16string new_;
};

TEST_F(TwoDocumentsOpenTest, OnlyTheGivenPaneChanges) {
  const FPDF_DOCUMENT left = session.panes[0].document.get();
  const FPDF_PAGE leftPage = session.panes[0].page.get();
  session.panes[1].documentRotation = 3;
  session.panes[1].pageRotations[1] = 1;
  session.panes[0].documentRotation = 1;
  fillHistories();
  ASSERT_TRUE(open(new_, {.pane = 1}));
  expectTwoDocumentsInvariant();
  EXPECT_EQ(session.panes[0].document.get(), left);
  EXPECT_EQ(session.panes[0].page.get(), leftPage);
  EXPECT_EQ(session.panes[0].currentPage, 3);
  EXPECT_EQ(session.panes[0].documentRotation, 1u);
  EXPECT_FALSE(historiesEmpty(0));

  EXPECT_EQ(session.panes[1].path, new_);
  EXPECT_EQ(session.panes[1].pageCount, 4);
  EXPECT_EQ(session.panes[1].currentPage, 0);
  EXPECT_EQ(pageWidth(1), 300);
  EXPECT_EQ(session.panes[1].documentRotation, 0u);
  EXPECT_THAT(session.panes[1].pageRotations, IsEmpty());
  EXPECT_FALSE(session.panes[1].dirty);
  EXPECT_TRUE(historiesEmpty(1));
  EXPECT_EQ(session.placementDocument, session.panes[1].document.get());
}

TEST_F(TwoDocumentsOpenTest, TurnsThatWaitForAnotherModeGoWithTheirDocument) {
  session.active.pageRotations = {{1, 1}};
  ASSERT_TRUE(open(new_, {.pane = 1}));
  EXPECT_THAT(session.active.pageRotations, ElementsAre(Pair(1, 1u))) << "of the left document";
  ASSERT_TRUE(open(right_, {.pane = 0}));
  setViewMode(ViewMode::SinglePage);
  EXPECT_THAT(session.active.pageRotations, IsEmpty());
  EXPECT_FALSE(hasUnsavedChanges());
}

TEST_F(TwoDocumentsOpenTest, AFailedLoadLeavesThePaneAsItWas) {
  const FPDF_DOCUMENT right = session.panes[1].document.get();
  const FPDF_PAGE page = session.panes[1].page.get();
  session.panes[1].pageRotations[1] = 1;
  session.panes[1].documentRotation = 2;
  session.panes[1].dirty = true;
  session.placementDocument = right;
  session.placements[2] = {Placement{}};
  session.documentBinders[u"c:\\right.pdf"] = u"C:\\b.lst";
  session.find.query = u"word";
  fillHistories();
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_FALSE(open(u"C:\\missing.pdf", {.pane = 1}));
  ASSERT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(standIn().boxes[0].text, u"Could not open PDF.\n(PDFium error 2)");

  EXPECT_EQ(session.panes[1].document.get(), right);
  EXPECT_EQ(session.panes[1].page.get(), page);
  EXPECT_EQ(session.panes[1].path, right_);
  EXPECT_EQ(session.panes[1].pageCount, 6);
  EXPECT_EQ(session.panes[1].currentPage, 2);
  EXPECT_TRUE(session.panes[1].dirty);
  EXPECT_EQ(session.panes[1].documentRotation, 2u);
  EXPECT_THAT(session.panes[1].pageRotations, ElementsAre(Pair(1, 1u)));
  EXPECT_FALSE(historiesEmpty(1));
  EXPECT_EQ(session.placementDocument, right);
  EXPECT_EQ(session.placements[2].size(), 1u);

  EXPECT_EQ(session.find.query, u"");
  EXPECT_TRUE(session.documentBinders.contains(u"c:\\right.pdf"));
}

TEST_F(TwoDocumentsOpenTest, PendingPlacementsOfTheOtherPaneAreWrittenFirst) {
  session.placementDocument = session.panes[0].document.get();
  session.placements[0] = {Placement{}};
  ASSERT_TRUE(open(new_, {.pane = 1, .ask = true}));
  EXPECT_TRUE(session.panes[0].dirty);
  EXPECT_FALSE(session.panes[1].dirty);
  EXPECT_EQ(session.placementDocument, session.panes[1].document.get());
  EXPECT_THAT(session.placements, IsEmpty());
}

TEST_F(TwoDocumentsOpenTest, WhatIsWrittenFirstIsShownOnItsPage) {
  const PaneSlot& slot = session.panes[0];
  session.placementDocument = slot.document.get();
  session.placements[3] = {pendingText()};
  const auto dark = [&slot] {
    const std::uint32_t* pixels = platform::pixelsOf(slot.pageBitmap.get());
    return std::count_if(pixels, pixels + slot.pageBitmapWidth * slot.pageBitmapHeight,
                         [](std::uint32_t pixel) { return (pixel & 0xFF) < 128; });
  };
  const auto before = dark();
  ASSERT_TRUE(open(new_, {.pane = 1, .ask = true}));
  EXPECT_GT(dark(), before + 100);
}

TEST_F(TwoDocumentsOpenTest, PendingPlacementsOfTheReplacedDocumentGoWithIt) {
  session.placementDocument = session.panes[1].document.get();
  session.placements[0] = {Placement{}};
  ASSERT_TRUE(open(new_, {.pane = 1}));
  EXPECT_FALSE(session.panes[0].dirty);
  EXPECT_FALSE(session.panes[1].dirty);
  EXPECT_THAT(session.placements, IsEmpty());
}

TEST_F(TwoDocumentsOpenTest, AnEmptyPaneTakesADocument) {
  resetSession();
  session.viewMode = ViewMode::TwoDocuments;
  ASSERT_TRUE(open(new_, {.pane = 1, .ask = true}));
  EXPECT_EQ(session.panes[0].document, nullptr);
  EXPECT_EQ(session.panes[1].path, new_);
  EXPECT_NE(session.panes[1].pageBitmap, nullptr);
}

TEST_F(TwoDocumentsOpenTest, ReopeningThePanesOwnFileLoadsItAfresh) {
  putPdf(u"right.pdf", simplePdf(1));
  ASSERT_TRUE(open(right_, {.pane = 1, .ask = true}));
  expectTwoDocumentsInvariant();
  EXPECT_EQ(session.panes[1].pageCount, 1);
}

class CollapseTest : public TwoDocumentsOpenTest {
 protected:
  // Opens both documents; the one that stays has turns and edits of its own.
  void openBoth(int closing) {
    resetSession();
    session.viewMode = ViewMode::TwoDocuments;
    ASSERT_TRUE(open(left_, {.pane = 0, .ask = true}));
    ASSERT_TRUE(open(right_, {.pane = 1, .ask = true}));
    PaneSlot& staying = session.panes[1 - closing];
    goToPage(1 - closing, 4, false);
    goToPage(closing, 2, false);
    staying.documentRotation = 3;
    staying.pageRotations[1] = 2;
    staying.dirty = true;
    session.panes[closing].pageRotations[0] = 1;
    fillHistories();
  }

  static void expectFirstPageOfTheTurnedDocumentIn(int pane) {
    EXPECT_EQ(session.panes[pane].currentPage, 0);
    EXPECT_NE(session.panes[pane].page, nullptr);
    EXPECT_NE(session.panes[pane].pageBitmap, nullptr);
    EXPECT_EQ(session.panes[pane].documentRotation, 3u);
    EXPECT_TRUE(historiesEmpty(pane));
  }
};

TEST_F(CollapseTest, TheFileOfTheOtherPaneIsNeverLoadedTwice) {
  for (int pane : {0, 1}) {
    SCOPED_TRACE(pane);
    ASSERT_NO_FATAL_FAILURE(openBoth(pane));
    const int other = 1 - pane;
    const FPDF_DOCUMENT kept = session.panes[other].document.get();
    const FPDF_PAGE keptPage = session.panes[other].page.get();
    const std::u16string keptPath = session.panes[other].path;
    const int keptCount = session.panes[other].pageCount;

    ASSERT_TRUE(open(keptPath, {.pane = pane}));
    EXPECT_EQ(session.viewMode, ViewMode::IndependentPages);
    expectSharedModeInvariant();
    EXPECT_EQ(session.active.document.get(), kept);
    EXPECT_EQ(session.active.pageCount, keptCount);
    EXPECT_EQ(session.active.path, keptPath);
    EXPECT_TRUE(session.active.dirty);
    EXPECT_THAT(session.active.pageRotations, ElementsAre(Pair(1, 2u)));
    EXPECT_EQ(session.panes[other].page.get(), keptPage);
    EXPECT_EQ(session.panes[other].currentPage, 4);
    EXPECT_FALSE(historiesEmpty(other));
    expectFirstPageOfTheTurnedDocumentIn(pane);
    for (const PaneSlot& slot : session.panes) EXPECT_THAT(slot.pageRotations, IsEmpty());
    EXPECT_EQ(session.panes[pane].path, u"");
    EXPECT_EQ(session.panes[other].path, u"");
    EXPECT_EQ(session.placementDocument, kept);
    EXPECT_GT(standIn().window.erasingInvalidations, 0);
  }
}

TEST_F(CollapseTest, TurnsThatWaitForAnotherModeStayWithTheDocumentThatIsKept) {
  session.active.pageRotations = {{1, 1}, {2, 1}};
  session.panes[0].pageRotations = {{2, 3}};
  ASSERT_TRUE(open(left_, {.pane = 1}));
  EXPECT_THAT(session.active.pageRotations, ElementsAre(Pair(1, 1u), Pair(2, 3u)));
}

TEST_F(CollapseTest, TurnsThatWaitForAnotherModeGoWithTheDocumentThatIsNotKept) {
  session.active.pageRotations = {{1, 1}};
  ASSERT_TRUE(open(right_, {.pane = 0}));
  EXPECT_THAT(session.active.pageRotations, IsEmpty());
}

TEST_F(CollapseTest, TheFileNeedNotBeReadableAnyMore) {
  putPdf(u"left.pdf", garbageFile());
  ASSERT_TRUE(open(u"c:\\LEFT.pdf", {.pane = 1, .ask = true}));
  EXPECT_EQ(session.viewMode, ViewMode::IndependentPages);
  EXPECT_EQ(session.active.path, left_);
  EXPECT_EQ(session.active.pageCount, 5);
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(CollapseTest, TheEmptyPaneTakesTheOtherDocumentToo) {
  resetSession();
  session.viewMode = ViewMode::TwoDocuments;
  ASSERT_TRUE(open(left_, {.pane = 0, .ask = true}));
  ASSERT_TRUE(open(left_, {.pane = 1, .ask = true}));
  EXPECT_EQ(session.viewMode, ViewMode::IndependentPages);
  EXPECT_NE(session.panes[1].page, nullptr);
}

TEST_F(CollapseTest, ACopyThatStandsForTheOtherFileCounts) {
  ASSERT_TRUE(open(putPdf(u"shelf\\copy.pdf", simplePdf(1)),
                   {.pane = 1, .ask = true, .displayPath = left_}));
  EXPECT_EQ(session.viewMode, ViewMode::IndependentPages);
  EXPECT_EQ(session.active.path, left_);
  EXPECT_EQ(session.active.pageCount, 5);
}

TEST_F(CollapseTest, APathWithoutADocumentInTheOtherPaneDoesNotCount) {
  session.panes[0].page.reset();
  resetSession();
  session.viewMode = ViewMode::TwoDocuments;
  session.panes[0].path = right_;
  ASSERT_TRUE(open(right_, {.pane = 1, .ask = true}));
  EXPECT_EQ(session.viewMode, ViewMode::TwoDocuments);
  EXPECT_EQ(session.panes[1].path, right_);
}

TEST_F(CollapseTest, TheReplacedDocumentIsAskedAboutFirst) {
  session.panes[1].dirty = true;
  standIn().boxAnswers = {BoxAnswer::Cancel};
  EXPECT_FALSE(open(left_, {.pane = 1, .ask = true}));
  EXPECT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(session.viewMode, ViewMode::TwoDocuments);
  EXPECT_EQ(session.panes[1].path, right_);
}

TEST_F(CollapseTest, PendingPlacementsOfTheKeptDocumentStay) {
  session.placementDocument = session.panes[0].document.get();
  session.placements[2] = {Placement{}};
  ASSERT_TRUE(open(left_, {.pane = 1, .ask = true}));
  EXPECT_EQ(session.placementDocument, session.active.document.get());
  EXPECT_EQ(session.placements[2].size(), 1u);
  EXPECT_TRUE(hasUnsavedChanges());
}

TEST_F(CollapseTest, PlacementsOfTheClosedDocumentGo) {
  session.placementDocument = session.panes[1].document.get();
  session.placements[2] = {Placement{}};
  session.selectedPlacementPage = 2;
  ASSERT_TRUE(open(left_, {.pane = 1}));
  EXPECT_EQ(session.placementDocument, session.active.document.get());
  EXPECT_THAT(session.placements, IsEmpty());
  EXPECT_EQ(session.selectedPlacementPage, -1);
  EXPECT_FALSE(hasUnsavedChanges());
}

TEST_F(CollapseTest, TheFileJoinsTheDocumentsInUse) {
  session.settings.recentFiles = {left_};
  ASSERT_TRUE(open(left_, {.pane = 1, .workingDocsMode = kWorkingDocsToHead, .ask = true}));
  EXPECT_THAT(session.settings.recentFiles, IsEmpty());
}

TEST_F(CollapseTest, FindAndSelectionEnd) {
  session.find.query = u"word";
  session.selection.active = true;
  session.selection.pane = 0;
  ASSERT_TRUE(open(left_, {.pane = 1, .ask = true}));
  EXPECT_EQ(session.find.query, u"");
  EXPECT_FALSE(session.selection.active);
}

}  // namespace
}  // namespace quillmere::test
