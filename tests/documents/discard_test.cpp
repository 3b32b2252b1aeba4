#include "documents/discard.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "documents/modes.h"
#include "documents/open.h"
#include "documents/shelve.h"
#include "documents/unsaved_files.h"
#include "store/binder_library.h"
#include "store/shelf.h"
#include "support/pdf_builder.h"
#include "support/shelf_flow_test.h"
#include "view/navigation.h"
#include "view/rotation.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::standIn;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class DiscardTest : public ShelfFlowTest {
 protected:
  static void expectBox(const std::u16string& title, const std::u16string& text, BoxButtons buttons,
                        BoxIcon icon) {
    ASSERT_FALSE(standIn().boxes.empty());
    EXPECT_EQ(standIn().boxes.back().title, title);
    EXPECT_EQ(standIn().boxes.back().text, text);
    EXPECT_EQ(standIn().boxes.back().buttons, buttons);
    EXPECT_EQ(standIn().boxes.back().icon, icon);
  }
  static std::vector<std::u16string> labels() {
    std::vector<std::u16string> found;
    for (const UnsavedFile& file : BuildUnsavedList()) found.push_back(file.label);
    return found;
  }
  static void openTwo() {
    setViewMode(ViewMode::TwoDocuments);
    openFile(1, 0);
    setActivePane(1);
    openFile(1, 1);
  }
};

// The list of unsaved files.

TEST_F(DiscardTest, TheListHasARowForEachShelvedFileInTheOrderOfTheShelf) {
  shelveFile(1, 2);
  shelveFile(1, 0);
  const std::vector<UnsavedFile> files = BuildUnsavedList();
  ASSERT_THAT(files, SizeIs(2));
  EXPECT_EQ(files[0].label, u"c.pdf  -  Work");
  EXPECT_EQ(files[0].path, kC);
  EXPECT_EQ(files[0].binderIndex, 1);
  EXPECT_EQ(files[0].fileIndex, 2);
  EXPECT_FALSE(files[0].isOpen);
  EXPECT_TRUE(files[0].save);
  EXPECT_EQ(files[1].label, u"a.pdf  -  Work");
  EXPECT_TRUE(files[1].isOpen);
}

TEST_F(DiscardTest, AFileInTwoBindersIsListedOnceUnderTheFirst) {
  shelveFile(2, 0);
  EXPECT_THAT(labels(), ElementsAre(u"b.pdf  -  Work"));
}

TEST_F(DiscardTest, AFileThatNoLoadedBinderListsHasNoRow) {
  shelveFile(1, 0);
  CloseBinder(1);
  EXPECT_THAT(labels(), IsEmpty());
  EXPECT_TRUE(IsShelved(kA));
}

TEST_F(DiscardTest, LiveEditsAreListedUntilTheirDocumentCloses) {
  openFile(1, 0);
  mark();
  EXPECT_THAT(labels(), ElementsAre(u"a.pdf  -  Work"));
  openFile(1, 1, false);
  EXPECT_THAT(labels(), IsEmpty());
}

// The active document.

TEST_F(DiscardTest, WithNothingOpenThereIsNothingToDiscard) {
  standIn().boxAnswers = {BoxAnswer::Ok};
  DiscardActive();
  expectBox(u"Quillmere", u"No file is open.", BoxButtons::Ok, BoxIcon::Information);
}

TEST_F(DiscardTest, WithoutEditsThereIsNothingToDiscard) {
  openFile(1, 0);
  standIn().boxAnswers = {BoxAnswer::Ok};
  DiscardActive();
  expectBox(u"Discard Changes", u"No edits have been made. Nothing to discard.", BoxButtons::Ok,
            BoxIcon::Information);
}

TEST_F(DiscardTest, TheActiveDocumentIsReadFromItsFileAgain) {
  shelveFile(1, 0);
  mark();
  goToPage(0, 2, false);
  standIn().boxAnswers = {BoxAnswer::Ok};
  DiscardActive();
  expectBox(u"Discard Changes",
            u"Discard all unsaved changes and reload the file from disk?\n\nAny newly-placed "
            u"stamps or text drops, and any loaded annotations you've deleted, will be reverted.",
            BoxButtons::OkCancel, BoxIcon::Question);
  EXPECT_EQ(marks(), 0);
  EXPECT_FALSE(hasUnsavedChanges());
  EXPECT_FALSE(IsShelved(kA));
  EXPECT_THAT(shelfFiles(), IsEmpty());
  EXPECT_EQ(session.documentBinders[u"c:\\a.pdf"], u"C:\\Work.lst");
  EXPECT_EQ(session.panes[0].currentPage, 2);  // as the binder holds it
}

TEST_F(DiscardTest, CancelKeepsTheEdits) {
  shelveFile(1, 0);
  mark();
  standIn().boxAnswers = {BoxAnswer::Cancel};
  DiscardActive();
  EXPECT_EQ(marks(), 2);
  EXPECT_TRUE(IsShelved(kA));
}

TEST_F(DiscardTest, AFileThatCannotBeReadKeepsItsEntryAndItsBinder) {
  shelveFile(1, 0);
  putPdf(kA, garbageFile());
  standIn().boxAnswers = {BoxAnswer::Ok, BoxAnswer::Ok};
  DiscardActive();
  EXPECT_TRUE(IsShelved(kA));
  EXPECT_EQ(marksIn(copyOf(kA)), 1);
  EXPECT_EQ(session.documentBinders[u"c:\\a.pdf"], u"C:\\Work.lst");
}

TEST_F(DiscardTest, WithItsFileGoneTheCopyStays) {
  shelveFile(1, 0);
  restart();
  platform::deleteFile(kA);
  openFile(1, 0);
  ASSERT_EQ(marks(), 1);
  standIn().boxAnswers = {BoxAnswer::Ok, BoxAnswer::Ok};
  DiscardActive();
  EXPECT_TRUE(IsShelved(kA));
  EXPECT_EQ(marksIn(copyOf(kA)), 1);
}

TEST_F(DiscardTest, ABinderThatIsNotLoadedAnyMoreLeavesItsNoteAndNoView) {
  openFile(1, 0);
  mark();
  goToPage(0, 2, false);
  CloseBinder(1);
  standIn().boxAnswers = {BoxAnswer::Ok};
  DiscardActive();
  EXPECT_EQ(marks(), 0);
  EXPECT_EQ(session.panes[0].currentPage, 0);
  EXPECT_EQ(session.documentBinders[u"c:\\a.pdf"], u"C:\\Work.lst");
}

TEST_F(DiscardTest, ADocumentOfNoBinderCanBeDiscardedToo) {
  const std::u16string path = putPdf(u"C:\\four.pdf", simplePdf(4));
  ASSERT_TRUE(openDocument(&path, 0, kWorkingDocsLeaveAlone, false, nullptr));
  rotateDocument(0);
  standIn().boxAnswers = {BoxAnswer::Ok};
  DiscardActive();
  EXPECT_FALSE(hasUnsavedChanges());
  EXPECT_EQ(session.active.path, path);
  EXPECT_THAT(session.documentBinders, IsEmpty());
}

TEST_F(DiscardTest, InTwoDocumentsOnlyTheActiveOneIsReadAgain) {
  openTwo();
  mark(0);
  mark(1);
  standIn().boxAnswers = {BoxAnswer::Ok};
  DiscardActive();
  EXPECT_EQ(marks(0), 1);
  EXPECT_EQ(marks(1), 0);
  EXPECT_TRUE(IsShelved(kA));
  EXPECT_FALSE(IsShelved(kB));
}

// A file of a binder.

TEST_F(DiscardTest, AFileThatIsNotOpenOnlyLosesItsCopy) {
  shelveFile(1, 0);
  openFile(1, 1);
  standIn().boxAnswers = {BoxAnswer::Cancel};
  DiscardBinderFile(1, 0);
  EXPECT_TRUE(IsShelved(kA));
  standIn().boxAnswers = {BoxAnswer::Ok};
  DiscardBinderFile(1, 0);
  expectBox(u"Discard Changes",
            u"Discard unsaved changes to 'a.pdf'?\n\nThe file reverts to its last saved version.",
            BoxButtons::OkCancel, BoxIcon::Question);
  EXPECT_FALSE(IsShelved(kA));
  EXPECT_THAT(shelfFiles(), IsEmpty());
  EXPECT_EQ(session.active.path, kB);
}

TEST_F(DiscardTest, AFileWithoutChangesAsksNothing) {
  openFile(1, 0);
  DiscardBinderFile(1, 0);
  DiscardBinderFile(1, 1);
  DiscardBinderFile(5, 1);
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(DiscardTest, TheActiveDocumentIsAskedAboutAsSuch) {
  shelveFile(1, 0);
  standIn().boxAnswers = {BoxAnswer::Ok};
  DiscardBinderFile(1, 0);
  EXPECT_THAT(standIn().boxes, SizeIs(1));
  EXPECT_TRUE(standIn().boxes[0].text.starts_with(u"Discard all unsaved changes"));
  EXPECT_EQ(marks(), 0);
}

TEST_F(DiscardTest, AFileInTheOtherPaneIsReadAgainThere) {
  openTwo();
  mark(0);
  standIn().boxAnswers = {BoxAnswer::Ok};
  DiscardBinderFile(1, 0);
  EXPECT_EQ(marks(0), 0);
  EXPECT_EQ(session.activePane, 1);
  EXPECT_EQ(session.panes[1].path, kB);
  EXPECT_EQ(session.documentBinders[u"c:\\a.pdf"], u"C:\\Work.lst");
}

// All of them.

TEST_F(DiscardTest, WithNothingUnsavedAllIsARemark) {
  standIn().boxAnswers = {BoxAnswer::Ok, BoxAnswer::Ok};
  DiscardAll();
  SaveAll();
  for (const platform::ShownBox& box : standIn().boxes) {
    EXPECT_EQ(box.text, u"No documents have unsaved changes.");
    EXPECT_EQ(box.title, u"Quillmere");
  }
}

TEST_F(DiscardTest, DiscardingAllRevertsWhatIsShownAndForgetsTheRest) {
  shelveFile(1, 0);
  shelveFile(1, 2);
  openFile(1, 1);
  mark();
  standIn().boxAnswers = {BoxAnswer::No};
  DiscardAll();
  expectBox(u"Discard All", u"Discard unsaved changes to all 3 files?\n\nThis cannot be undone.",
            BoxButtons::YesDefaultNo, BoxIcon::Warning);
  EXPECT_THAT(labels(), SizeIs(3));
  standIn().boxAnswers = {BoxAnswer::Yes};
  DiscardAll();
  EXPECT_EQ(marks(), 0);
  EXPECT_EQ(session.active.path, kB);
  EXPECT_EQ(session.documentBinders[u"c:\\b.pdf"], u"C:\\Work.lst");
  EXPECT_TRUE(session.shelfIndex.empty());
  EXPECT_THAT(shelfFiles(), IsEmpty());
}

TEST_F(DiscardTest, OneFileIsNamedInTheSingular) {
  shelveFile(1, 0);
  standIn().boxAnswers = {BoxAnswer::No};
  DiscardAll();
  EXPECT_EQ(standIn().boxes.back().text,
            u"Discard unsaved changes to all 1 file?\n\nThis cannot be undone.");
}

TEST_F(DiscardTest, BothPanesAreRevertedTogether) {
  openTwo();
  mark(0);
  mark(1);
  standIn().boxAnswers = {BoxAnswer::Yes};
  DiscardAll();
  EXPECT_EQ(marks(0), 0);
  EXPECT_EQ(marks(1), 0);
  EXPECT_EQ(session.viewMode, ViewMode::TwoDocuments);
  EXPECT_TRUE(session.shelfIndex.empty());
}

TEST_F(DiscardTest, ADocumentThatBothPanesShowIsRevertedOnce) {
  openFile(1, 0);
  setViewMode(ViewMode::IndependentPages);
  setActivePane(1);
  mark();
  rotatePage(1);
  standIn().boxAnswers = {BoxAnswer::Yes};
  DiscardAll();
  EXPECT_EQ(session.viewMode, ViewMode::IndependentPages);
  EXPECT_EQ(marks(), 0);
  EXPECT_FALSE(hasUnsavedChanges());
  EXPECT_TRUE(session.shelfIndex.empty());
}

TEST_F(DiscardTest, WhatCannotBeReadAgainKeepsItsEntry) {
  openTwo();
  shelveChangedDocuments();
  mark(0);
  mark(1);
  shelveChangedDocuments();
  putPdf(kA, garbageFile());
  standIn().boxAnswers = {BoxAnswer::Yes, BoxAnswer::Ok};
  DiscardAll();
  EXPECT_TRUE(IsShelved(kA));
  EXPECT_FALSE(IsShelved(kB));
}

TEST_F(DiscardTest, TheTreeFollowsWhatWasSavedOrDiscarded) {
  standIn().boxAnswers = {BoxAnswer::Ok, BoxAnswer::Yes};
  int& rebuilds = standIn().window.binderTreeRebuildsPosted;
  for (void (*const settle)() :
       {+[] { SaveAll(); }, +[] { DiscardBinderFile(1, 0); }, +[] { DiscardAll(); }}) {
    shelveFile(1, 0);
    openFile(1, 1);
    rebuilds = 0;
    settle();
    EXPECT_EQ(rebuilds, 1);
    EXPECT_FALSE(IsShelved(kA));
  }
}

TEST_F(DiscardTest, AViewerDiscardsNothing) {
  session.viewerRole = true;
  DiscardActive();
  DiscardBinderFile(1, 0);
  DiscardAll();
  SaveAll();
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

// Saving all.

TEST_F(DiscardTest, SavingAllKeepsTheEntryOfARowThatFailed) {
  shelveFile(1, 0);
  shelveFile(1, 2);
  openFile(1, 1);
  platform::setReadOnly(kA, true);
  standIn().boxAnswers = {BoxAnswer::Ok};
  SaveAll();
  EXPECT_TRUE(IsShelved(kA));
  EXPECT_FALSE(IsShelved(kC));
  EXPECT_EQ(marksIn(kC), 1);
  EXPECT_EQ(marksIn(kA), 0);
}

}  // namespace
}  // namespace quillmere::test
