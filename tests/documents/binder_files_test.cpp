#include "documents/binder_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "dialogs/unsaved_dialog_script.h"
#include "documents/modes.h"
#include "documents/open.h"
#include "documents/open_binder_entry.h"
#include "documents/unsaved_files.h"
#include "platform/text.h"
#include "store/binder_library.h"
#include "store/shelf.h"
#include "store/working_documents.h"
#include "support/pdf_builder.h"
#include "support/session_test.h"
#include "support/shelf_flow_test.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::standIn;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

// The documents in use, then a binder "list" with a.pdf and b.pdf, then one "other" with b.pdf.
class BinderFilesTest : public SessionTest {
 protected:
  BinderFilesTest() {
    unsavedDialogScript() = {};
    for (const char16_t* name : {u"a.pdf", u"b.pdf", u"used.pdf"}) putPdf(name, simplePdf(2));
    platform::putFile(u"C:\\list.lst", "C:\\a.pdf\r\nC:\\b.pdf\r\n");
    platform::putFile(u"C:\\other.lst", "c:\\B.PDF\r\n");
    LoadWorkingDocuments();
    LoadBinder(u"C:\\list.lst");
    LoadBinder(u"C:\\other.lst");
    session.shelveFolder = u"C:\\Shelve\\";
  }

  ~BinderFilesTest() override { EXPECT_THAT(standIn().boxAnswers, IsEmpty()); }

  static std::vector<std::u16string>& files(int binder) { return binderAt(binder).files; }

  static void openEntry(std::uint32_t binder, std::uint32_t file) {
    openBinderEntry(binder << 16 | file, false, false);
  }

  static void shelve(const std::u16string& path) {
    ShelfEntry entry;
    entry.path = platform::toLower(path);
    entry.dirty = true;
    entry.shelfName = u"copy";
    putPdf(u"Shelve\\copy.pdf", simplePdf(3));
    session.shelfIndex[entry.path] = entry;
  }
};

// One file.

TEST_F(BinderFilesTest, ARemovalIsConfirmedWithNamesAlone) {
  standIn().boxAnswers = {BoxAnswer::Yes};
  EXPECT_TRUE(RemoveFileFromBinder(1, 0, true));
  ASSERT_THAT(standIn().boxes, SizeIs(1));
  EXPECT_EQ(standIn().boxes[0].title, u"Remove from Binder");
  EXPECT_EQ(standIn().boxes[0].text,
            u"Remove this file from binder 'list'?\n\n    a.pdf\n\nThe file itself will not be "
            u"deleted from disk.");
  EXPECT_EQ(standIn().boxes[0].buttons, BoxButtons::YesNo);
  EXPECT_THAT(files(1), ElementsAre(u"C:\\b.pdf"));
  EXPECT_TRUE(platform::fileExists(u"C:\\a.pdf"));
}

TEST_F(BinderFilesTest, NoKeepsTheFile) {
  standIn().boxAnswers = {BoxAnswer::No};
  EXPECT_FALSE(RemoveFileFromBinder(1, 0, true));
  EXPECT_THAT(files(1), SizeIs(2));
}

TEST_F(BinderFilesTest, WithoutConfirmationNothingIsAsked) {
  EXPECT_TRUE(RemoveFileFromBinder(1, 1, false));
  EXPECT_THAT(files(1), ElementsAre(u"C:\\a.pdf"));
  EXPECT_FALSE(RemoveFileFromBinder(1, 1, false));
  EXPECT_FALSE(RemoveFileFromBinder(9, 0, false));
}

TEST_F(BinderFilesTest, ADocumentThatIsOpenFromTheBinderIsClosed) {
  openEntry(1, 0);
  EXPECT_TRUE(RemoveFileFromBinder(1, 0, false));
  EXPECT_EQ(session.active.document, nullptr);
  EXPECT_THAT(session.documentBinders, IsEmpty());
}

TEST_F(BinderFilesTest, ADocumentThatIsOpenFromAnotherBinderStaysOpen) {
  openEntry(2, 0);
  EXPECT_TRUE(RemoveFileFromBinder(1, 1, false));
  EXPECT_NE(session.active.document, nullptr);
  EXPECT_EQ(session.documentBinders[u"c:\\b.pdf"], u"C:\\other.lst");
}

TEST_F(BinderFilesTest, AChangedDocumentIsAskedAboutAsCloseDoes) {
  openEntry(1, 0);
  session.active.dirty = true;
  standIn().boxAnswers = {BoxAnswer::Cancel};
  EXPECT_FALSE(RemoveFileFromBinder(1, 0, false));
  EXPECT_EQ(standIn().boxes[0].text,
            u"Document \"a.pdf\" has unsaved changes.\n\nSave them before closing?");
  EXPECT_NE(session.active.document, nullptr);
  EXPECT_THAT(files(1), SizeIs(2));
  standIn().boxAnswers = {BoxAnswer::No};
  EXPECT_TRUE(RemoveFileFromBinder(1, 0, false));
  EXPECT_EQ(session.active.document, nullptr);
}

TEST_F(BinderFilesTest, AChangedDocumentInTheOtherPaneIsActiveWhenItIsAskedAbout) {
  setViewMode(ViewMode::TwoDocuments);
  openEntry(1, 0);
  setActivePane(1);
  openEntry(1, 1);
  session.panes[0].dirty = true;
  standIn().boxAnswers = {BoxAnswer::No};
  EXPECT_TRUE(RemoveFileFromBinder(1, 0, false));
  EXPECT_EQ(session.activePane, 0);
  EXPECT_EQ(session.panes[0].document, nullptr);
  EXPECT_NE(session.panes[1].document, nullptr);
}

TEST_F(BinderFilesTest, AnUnchangedDocumentInTheOtherPaneClosesWithoutAWord) {
  setViewMode(ViewMode::TwoDocuments);
  openEntry(1, 0);
  setActivePane(1);
  openEntry(1, 1);
  session.panes[1].dirty = true;
  EXPECT_TRUE(RemoveFileFromBinder(1, 0, false));
  EXPECT_EQ(session.activePane, 1);
  EXPECT_EQ(session.panes[0].document, nullptr);
  EXPECT_NE(session.panes[1].document, nullptr);
}

TEST_F(BinderFilesTest, ShelvedChangesThatWouldBeOrphanedAreAskedAboutEvenWithoutConfirmation) {
  shelve(u"C:\\a.pdf");
  standIn().boxAnswers = {BoxAnswer::Cancel};
  EXPECT_FALSE(RemoveFileFromBinder(1, 0, false));
  EXPECT_EQ(standIn().boxes[0].title, u"Remove from Binder");
  EXPECT_EQ(standIn().boxes[0].text,
            u"'a.pdf' has unsaved changes.\n\nYes  -  Save the changes, then remove\nNo  -  "
            u"Discard the changes and remove\nCancel  -  Keep the file in the binder");
  EXPECT_EQ(standIn().boxes[0].buttons, BoxButtons::YesNoCancel);
  EXPECT_TRUE(IsShelved(u"C:\\a.pdf"));
  EXPECT_THAT(files(1), SizeIs(2));
}

TEST_F(BinderFilesTest, NoDiscardsShelvedChangesAndAsksNothingMore) {
  shelve(u"C:\\a.pdf");
  openEntry(1, 0);
  ASSERT_EQ(session.active.pageCount, 3);  // of the copy
  session.active.dirty = true;
  standIn().boxAnswers = {BoxAnswer::No};
  EXPECT_TRUE(RemoveFileFromBinder(1, 0, true));
  EXPECT_FALSE(IsShelved(u"C:\\a.pdf"));
  EXPECT_EQ(platform::fileBytes(u"C:\\Shelve\\copy.pdf"), std::nullopt);
  EXPECT_EQ(session.active.document, nullptr);
  EXPECT_THAT(files(1), ElementsAre(u"C:\\b.pdf"));
}

TEST_F(BinderFilesTest, AFailedSaveOfShelvedChangesStopsTheRemoval) {
  shelve(u"C:\\a.pdf");
  platform::setReadOnly(u"C:\\a.pdf", true);
  standIn().boxAnswers = {BoxAnswer::Yes, BoxAnswer::Ok};
  EXPECT_FALSE(RemoveFileFromBinder(1, 0, false));
  EXPECT_TRUE(IsShelved(u"C:\\a.pdf"));
  EXPECT_THAT(files(1), SizeIs(2));
}

TEST_F(BinderFilesTest, AShelvedFileThatAnotherBinderListsGoesWithoutAQuestion) {
  shelve(u"C:\\b.pdf");
  EXPECT_TRUE(RemoveFileFromBinder(1, 1, true));
  EXPECT_TRUE(IsShelved(u"C:\\b.pdf"));
  EXPECT_THAT(files(1), ElementsAre(u"C:\\a.pdf"));
}

TEST_F(BinderFilesTest, AFileClosedFromTheDocumentsInUseBecomesARecentOne) {
  const std::u16string path = u"C:\\used.pdf";
  ASSERT_TRUE(openDocument(&path, 0, kWorkingDocsToHead, false, nullptr));
  EXPECT_TRUE(RemoveFileFromBinder(0, 0, false));
  EXPECT_EQ(session.active.document, nullptr);
  EXPECT_THAT(session.settings.recentFiles, ElementsAre(path));
  EXPECT_THAT(files(0), IsEmpty());
}

// All files.

TEST_F(BinderFilesTest, RemovingAllIsConfirmedOnce) {
  standIn().boxAnswers = {BoxAnswer::Yes, BoxAnswer::Yes};
  EXPECT_TRUE(RemoveAllFromBinder(1));
  EXPECT_EQ(standIn().boxes[0].title, u"Remove All");
  EXPECT_EQ(standIn().boxes[0].text, u"Remove all 2 documents from 'list'?");
  EXPECT_THAT(files(1), IsEmpty());
  EXPECT_TRUE(RemoveAllFromBinder(2));
  EXPECT_EQ(standIn().boxes[1].text, u"Remove all 1 document from 'other'?");
  EXPECT_FALSE(RemoveAllFromBinder(2));  // nothing is left to ask about
}

TEST_F(BinderFilesTest, TheQuestionIsAboutDocumentsOfAListThatCouldNotBeReadAtTheStartToo) {
  session.binderLibrary.erase(session.binderLibrary.begin());
  platform::putFile(WorkingDocsPath(), "C:\\a.pdf\r\nC:\\used.pdf\r\n");
  platform::setOtherUse(WorkingDocsPath(), platform::OtherUse::Exclusive);
  LoadWorkingDocuments();
  AddToWorkingDocuments(u"C:\\b.pdf", kWorkingDocsToHead);
  platform::setOtherUse(WorkingDocsPath(), platform::OtherUse::Nobody);
  shelve(u"C:\\used.pdf");
  EXPECT_FALSE(RemoveAllFromBinder(0));  // cancelled
  EXPECT_THAT(unsavedDialogScript().labels,
              ElementsAre(ElementsAre(u"used.pdf  -  Working Documents")));
  EXPECT_THAT(files(0), SizeIs(3));
}

TEST_F(BinderFilesTest, NoKeepsThemAll) {
  standIn().boxAnswers = {BoxAnswer::No};
  EXPECT_FALSE(RemoveAllFromBinder(1));
  EXPECT_THAT(files(1), SizeIs(2));
}

TEST_F(BinderFilesTest, RemovingAllClosesWhatIsOpenFromTheBinderAlone) {
  setViewMode(ViewMode::TwoDocuments);
  openEntry(1, 0);
  setActivePane(1);
  openEntry(2, 0);
  standIn().boxAnswers = {BoxAnswer::Yes};
  EXPECT_TRUE(RemoveAllFromBinder(1));
  EXPECT_EQ(session.panes[0].document, nullptr);
  EXPECT_NE(session.panes[1].document, nullptr);
}

TEST_F(BinderFilesTest, EveryQuestionComesBeforeTheFirstDocumentCloses) {
  setViewMode(ViewMode::TwoDocuments);
  openEntry(1, 0);
  setActivePane(1);
  openEntry(1, 1);
  session.panes[0].dirty = true;
  session.panes[1].dirty = true;
  standIn().boxAnswers = {BoxAnswer::Yes, BoxAnswer::No, BoxAnswer::Cancel};
  EXPECT_FALSE(RemoveAllFromBinder(1));
  EXPECT_NE(session.panes[0].document, nullptr);
  EXPECT_NE(session.panes[1].document, nullptr);
  EXPECT_THAT(files(1), SizeIs(2));
}

TEST_F(BinderFilesTest, CancelAtTheLastQuestionTakesBackTheAnswersBeforeIt) {
  shelve(u"C:\\b.pdf");  // in the other binder too, so that the dialog does not list it
  setViewMode(ViewMode::TwoDocuments);
  openEntry(1, 1);
  setActivePane(1);
  openEntry(1, 0);
  session.panes[0].dirty = true;
  session.panes[1].dirty = true;
  standIn().boxAnswers = {BoxAnswer::Yes, BoxAnswer::No, BoxAnswer::Cancel};
  EXPECT_FALSE(RemoveAllFromBinder(1));
  EXPECT_TRUE(IsShelved(u"C:\\b.pdf"));
  EXPECT_THAT(files(1), SizeIs(2));
}

TEST_F(BinderFilesTest, CancelAfterTheDialogDiscardsNothing) {
  shelve(u"C:\\a.pdf");
  openEntry(1, 1);
  session.active.dirty = true;
  unsavedDialogScript().answer = [](std::vector<UnsavedFile>& files) {
    for (UnsavedFile& file : files) file.save = false;
    return UnsavedAnswer::GoAhead;
  };
  standIn().boxAnswers = {BoxAnswer::Cancel};
  EXPECT_FALSE(RemoveAllFromBinder(1));
  EXPECT_TRUE(IsShelved(u"C:\\a.pdf"));
  EXPECT_NE(session.active.document, nullptr);
}

TEST_F(BinderFilesTest, AFailedSaveOfAnOpenDocumentDiscardsNoOther) {
  shelve(u"C:\\b.pdf");
  setViewMode(ViewMode::TwoDocuments);
  openEntry(1, 1);
  setActivePane(1);
  openEntry(1, 0);
  session.panes[0].dirty = true;
  session.panes[1].dirty = true;
  platform::setReadOnly(u"C:\\a.pdf", true);
  standIn().boxAnswers = {BoxAnswer::Yes, BoxAnswer::No, BoxAnswer::Yes, BoxAnswer::Ok};
  EXPECT_FALSE(RemoveAllFromBinder(1));
  EXPECT_TRUE(IsShelved(u"C:\\b.pdf"));
  EXPECT_NE(session.panes[0].document, nullptr);
  EXPECT_NE(session.panes[1].document, nullptr);
}

TEST_F(BinderFilesTest, ShelvedFilesAreListedInTheDialogInPlaceOfTheQuestion) {
  shelve(u"C:\\a.pdf");
  shelve(u"C:\\b.pdf");                  // in the other binder too
  EXPECT_FALSE(RemoveAllFromBinder(1));  // cancelled
  EXPECT_THAT(unsavedDialogScript().titles, ElementsAre(u"Save Changes Before Removing"));
  EXPECT_THAT(unsavedDialogScript().labels, ElementsAre(ElementsAre(u"a.pdf  -  list")));
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_THAT(files(1), SizeIs(2));
  EXPECT_TRUE(IsShelved(u"C:\\a.pdf"));
}

TEST_F(BinderFilesTest, UncheckedFilesLoseTheirShelvedChanges) {
  shelve(u"C:\\a.pdf");
  shelve(u"C:\\b.pdf");
  unsavedDialogScript().answer = [](std::vector<UnsavedFile>& files) {
    for (UnsavedFile& file : files) file.save = false;
    return UnsavedAnswer::GoAhead;
  };
  EXPECT_TRUE(RemoveAllFromBinder(1));
  EXPECT_FALSE(IsShelved(u"C:\\a.pdf"));
  EXPECT_TRUE(IsShelved(u"C:\\b.pdf"));
  EXPECT_THAT(files(1), IsEmpty());
}

TEST_F(BinderFilesTest, AFailedSaveKeepsItsChangesAndStopsTheRemoval) {
  shelve(u"C:\\a.pdf");
  platform::setReadOnly(u"C:\\a.pdf", true);
  standIn().boxAnswers = {BoxAnswer::Ok};
  unsavedDialogScript().answer = [](std::vector<UnsavedFile>&) { return UnsavedAnswer::GoAhead; };
  EXPECT_FALSE(RemoveAllFromBinder(1));
  EXPECT_TRUE(IsShelved(u"C:\\a.pdf"));
  EXPECT_THAT(files(1), SizeIs(2));
}

// With the binders "Work" of a.pdf, b.pdf and c.pdf, and "Other" of b.pdf.
class RemoveAllOpenTest : public ShelfFlowTest {};

TEST_F(RemoveAllOpenTest, AFailedSaveKeepsTheRecordOfUncheckedEditsThatStayOpen) {
  shelveFile(1, 2);
  openFile(1, 0);
  mark();
  platform::setReadOnly(kC, true);
  answerDialog({u"c.pdf  -  Work"});
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_FALSE(RemoveAllFromBinder(1));
  EXPECT_EQ(marks(), 1);
  std::vector<std::u16string> listed;
  for (const UnsavedFile& file : BuildUnsavedList()) listed.push_back(file.path);
  EXPECT_THAT(listed, ElementsAre(kC, kA));
}

// Whole binders.

TEST_F(BinderFilesTest, ClosingOrDeletingABinderTouchesNeitherItsDocumentsNorTheirShelvedChanges) {
  openEntry(1, 0);
  session.active.dirty = true;
  shelve(u"C:\\b.pdf");
  CloseBinder(1);
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_EQ(session.active.path, u"C:\\a.pdf");
  EXPECT_TRUE(session.active.dirty);
  EXPECT_TRUE(IsShelved(u"C:\\b.pdf"));
  EXPECT_EQ(platform::fileBytes(u"C:\\list.lst"), "C:\\a.pdf\r\nC:\\b.pdf\r\n");

  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_TRUE(DeleteBinder(1));
  EXPECT_EQ(platform::fileBytes(u"C:\\other.lst"), std::nullopt);
  EXPECT_EQ(session.active.path, u"C:\\a.pdf");
  EXPECT_TRUE(IsShelved(u"C:\\b.pdf"));
  EXPECT_TRUE(platform::fileExists(u"C:\\b.pdf"));
}

TEST_F(BinderFilesTest, AViewerRemovesNothing) {
  session.viewerRole = true;
  EXPECT_FALSE(RemoveFileFromBinder(1, 0, false));
  EXPECT_FALSE(RemoveAllFromBinder(1));
  EXPECT_THAT(files(1), SizeIs(2));
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

}  // namespace
}  // namespace quillmere::test
