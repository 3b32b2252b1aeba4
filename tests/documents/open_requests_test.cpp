#include "documents/open_requests.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>

#include "app/command_ids.h"
#include "app/commands.h"
#include "documents/folder_step.h"
#include "documents/modes.h"
#include "documents/open.h"
#include "platform/text.h"
#include "store/working_documents.h"
#include "support/pdf_builder.h"
#include "support/session_test.h"
#include "view/navigation.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::BoxIcon;
using platform::standIn;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char16_t* kConflictText =
    u"This file has unsaved changes from a previous session, but the file on disk has been "
    u"modified since then.\n\n  Yes      Keep your unsaved changes (discards the on-disk "
    u"update)\n  No       Use the on-disk version (discards your unsaved changes)\n  Cancel  Don't "
    u"open anything";

class OpenRequestsTest : public SessionTest {
 protected:
  // Makes a document of one page with a shelf copy of two pages.
  void shelve(const std::u16string& name, bool conflicting) {
    document_ = putPdf(name, simplePdf(1));
    session.shelveFolder = u"C:\\Shelve\\";
    copy_ = putPdf(u"Shelve\\0123.pdf", simplePdf(2));
    platform::setWriteTime(document_, 132'000'000'000'000'000u);
    ShelfEntry entry;
    entry.path = platform::toLower(document_);
    entry.dirty = true;
    entry.shelfName = u"0123";
    entry.sourceSize = simplePdf(1).size();
    entry.sourceTime = 132'000'000'000'000'000u;
    if (conflicting) platform::setWriteTime(document_, 132'000'000'100'000'000u);
    session.shelfIndex[entry.path] = entry;
  }

  ShelfEntry& entry() { return *session.shelfIndex.begin(); }

  void expectCopyOpen() {
    EXPECT_EQ(session.active.path, document_);
    EXPECT_EQ(session.active.pageCount, 2);
    EXPECT_FALSE(session.active.dirty);
    EXPECT_EQ(session.shelfIndex.size(), 1u);
  }

  void expectDocumentOpen() {
    EXPECT_EQ(session.active.path, document_);
    EXPECT_EQ(session.active.pageCount, 1);
  }

  std::u16string document_;
  std::u16string copy_;
};

// Several files at once.

TEST_F(OpenRequestsTest, TheFirstOfSeveralIsOpenedAndAllLeaveTheRecentList) {
  const std::u16string a = putPdf(u"a.pdf", simplePdf(1));
  const std::u16string b = putPdf(u"b.pdf", simplePdf(2));
  session.settings.recentFiles = {a, b, u"C:\\x.pdf"};
  openSeveral({a, b}, 0);
  EXPECT_EQ(session.active.path, a);
  EXPECT_THAT(session.settings.recentFiles, ElementsAre(u"C:\\x.pdf"));
}

TEST_F(OpenRequestsTest, AllOfSeveralAreInUseTheLastOneAtTheHead) {
  const std::u16string a = putPdf(u"a.pdf", simplePdf(1));
  openSeveral({a, u"C:\\b.pdf", u"C:\\c.pdf"}, 0);
  ASSERT_EQ(session.binderLibrary.size(), 1u);
  EXPECT_THAT(session.binderLibrary[0].files, ElementsAre(u"C:\\c.pdf", u"C:\\b.pdf", a));
  EXPECT_EQ(session.documentBinders[u"c:\\a.pdf"], session.binderLibrary[0].path);
}

TEST_F(OpenRequestsTest, ARelativePathIsCompletedBeforeAnythingRemembersIt) {
  standIn().workingFolder = u"C:\\Texts";
  putPdf(u"Texts\\a.pdf", simplePdf(1));
  openRequested(u"a.pdf", 0, kWorkingDocsToHead, true);
  EXPECT_EQ(session.active.path, u"C:\\Texts\\a.pdf");
  EXPECT_THAT(session.binderLibrary[0].files, ElementsAre(u"C:\\Texts\\a.pdf"));
  EXPECT_TRUE(session.documentBinders.contains(u"c:\\texts\\a.pdf"));
}

TEST_F(OpenRequestsTest, NoFilesOpenNothing) {
  openSeveral({}, 0);
  openDropped({}, 10);
  EXPECT_EQ(session.active.document, nullptr);
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(OpenRequestsTest, AllDroppedFilesLeaveTheRecentList) {
  const std::u16string a = putPdf(u"a.pdf", simplePdf(1));
  session.settings.recentFiles = {u"C:\\x.pdf", u"C:\\b.pdf", a, u"C:\\c.pdf"};
  openDropped({a, u"C:\\B.pdf", u"C:\\c.pdf"}, 10);
  EXPECT_EQ(session.active.path, a);
  EXPECT_THAT(session.settings.recentFiles, ElementsAre(u"C:\\x.pdf"));
}

TEST_F(OpenRequestsTest, AFailedFirstFileAddsNoOthers) {
  session.settings.recentFiles = {u"C:\\b.pdf"};
  standIn().boxAnswers = {BoxAnswer::Ok};
  openDropped({u"C:\\missing.pdf", u"C:\\b.pdf"}, 10);
  EXPECT_EQ(standIn().boxes.size(), 1u);
  EXPECT_THAT(session.settings.recentFiles, ElementsAre(u"C:\\b.pdf"));
}

// Files on a share that does not answer.

class SilentShareTest : public OpenRequestsTest {
 protected:
  SilentShareTest() {
    session.settings.openTimeoutSeconds = 1;
    platform::setVolume(u"\\\\nas\\texts", platform::VolumeState::Silent);
    start_ = std::chrono::steady_clock::now();
  }

  ~SilentShareTest() override {
    platform::setVolume(u"\\\\nas\\texts", platform::VolumeState::Failing);
    platform::waitForDetachedThreads();
  }

  void expectToldWithinTheTimeout() const {
    EXPECT_LT(std::chrono::steady_clock::now() - start_, std::chrono::seconds(5));
    ASSERT_EQ(standIn().boxes.size(), 1u);
    EXPECT_EQ(standIn().boxes[0].title, u"Network Location Unavailable");
    EXPECT_TRUE(standIn().boxes[0].text.starts_with(
        u"This document is on a network location that didn't respond within 1 second.\n\n"));
  }

  std::chrono::steady_clock::time_point start_;
};

TEST_F(SilentShareTest, HoldsTheWindowForTheTimeoutAlone) {
  const std::u16string shown = putPdf(u"a.pdf", simplePdf(1));
  ASSERT_TRUE(openRequested(shown, 0, kWorkingDocsToHead, true));
  session.active.dirty = true;
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_FALSE(openRequested(u"\\\\nas\\texts\\b.pdf", 0, kWorkingDocsToHead, true));
  expectToldWithinTheTimeout();
  EXPECT_EQ(session.active.path, shown);  // nobody was asked about its changes
  EXPECT_THAT(session.binderLibrary[0].files, ElementsAre(shown));
}

TEST_F(SilentShareTest, KeepsItsFileInTheRecentList) {
  session.settings.recentFiles = {u"\\\\nas\\texts\\b.pdf"};
  standIn().boxAnswers = {BoxAnswer::Ok};
  runCommand(kCmdRecentFirst);
  expectToldWithinTheTimeout();
  EXPECT_EQ(session.settings.recentFiles.size(), 1u);
}

TEST_F(SilentShareTest, DelaysADropOfManyFilesOnce) {
  const std::u16string shown = putPdf(u"a.pdf", simplePdf(1));
  std::vector<std::u16string> dropped = {shown};
  for (const char16_t* name : {u"b", u"c", u"d", u"e", u"f", u"g"}) {
    dropped.push_back(std::u16string(u"\\\\nas\\texts\\") + name + u".pdf");
  }
  openDropped(dropped, 10);
  EXPECT_LT(std::chrono::steady_clock::now() - start_, std::chrono::seconds(4));
  EXPECT_EQ(session.active.path, shown);
  EXPECT_EQ(session.binderLibrary[0].files.size(), 7u);
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(OpenRequestsTest, AFileThatIsMissingOnAShareFailsToLoad) {
  platform::setVolume(u"\\\\nas\\texts", platform::VolumeState::Present);
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_FALSE(openRequested(u"\\\\nas\\texts\\none.pdf", 0, kWorkingDocsToHead, true));
  EXPECT_TRUE(standIn().boxes[0].text.starts_with(u"Could not open PDF."));
}

TEST_F(OpenRequestsTest, APathTooLongForTheSystemIsToldAsSuchOnAShareToo) {
  standIn().boxAnswers = {BoxAnswer::Ok};
  const std::u16string path = u"\\\\nas\\texts\\" + std::u16string(260, u'x');
  EXPECT_FALSE(openRequested(path, 0, kWorkingDocsToHead, true));
  EXPECT_EQ(standIn().boxes[0].text, u"The file's path is too long to open.");
}

TEST_F(OpenRequestsTest, ADropGoesToThePaneUnderIt) {
  session.viewMode = ViewMode::TwoDocuments;
  const std::u16string a = putPdf(u"a.pdf", simplePdf(1));
  const std::u16string b = putPdf(u"b.pdf", simplePdf(2));
  openDropped({a}, 900);
  EXPECT_EQ(session.panes[1].path, a);
  openDropped({b}, 10);
  EXPECT_EQ(session.panes[0].path, b);
  EXPECT_EQ(session.panes[1].path, a);
}

TEST_F(OpenRequestsTest, ADropBesideThePanesGoesToTheLeft) {
  session.viewMode = ViewMode::TwoDocuments;
  session.activePane = 1;
  openDropped({putPdf(u"a.pdf", simplePdf(1))}, 500);  // on the divider
  EXPECT_EQ(session.panes[0].path, u"C:\\a.pdf");
  session.navigationPanelVisible = true;
  openDropped({putPdf(u"b.pdf", simplePdf(1))}, 5);  // on the left panel
  EXPECT_EQ(session.panes[0].path, u"C:\\b.pdf");
}

TEST_F(OpenRequestsTest, ADropAsksBeforeItReplaces) {
  openRequested(putPdf(u"old.pdf", simplePdf(1)), 0, kWorkingDocsToHead, true);
  session.active.dirty = true;
  standIn().boxAnswers = {BoxAnswer::Cancel};
  openDropped({putPdf(u"new.pdf", simplePdf(1))}, 10);
  EXPECT_EQ(session.active.path, u"C:\\old.pdf");
}

// Another instance.

TEST_F(OpenRequestsTest, AHandedOverPathOpensInTheActivePane) {
  session.viewMode = ViewMode::TwoDocuments;
  session.activePane = 1;
  openHandedOver(putPdf(u"a b.pdf", simplePdf(1)));
  EXPECT_EQ(session.panes[1].path, u"C:\\a b.pdf");
}

TEST_F(OpenRequestsTest, AHandedOverPathThatIsTooLongIsReported) {
  standIn().boxAnswers = {BoxAnswer::Ok};
  openHandedOver(std::u16string(300, u'x'));
  ASSERT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(standIn().boxes[0].text, u"The file's path is too long to open.");
}

// The Open dialog.

TEST_F(OpenRequestsTest, TheDialogOffersPdfsFirstAndTakesSeveral) {
  standIn().openDialogAnswers = {{}};
  openWithDialog(0);
  ASSERT_EQ(standIn().openDialogs.size(), 1u);
  const platform::OpenDialogRequest& request = standIn().openDialogs[0];
  ASSERT_EQ(request.filters.size(), 2u);
  EXPECT_EQ(request.filters[0].name, u"PDF Files (*.pdf)");
  EXPECT_EQ(request.filters[0].pattern, u"*.pdf");
  EXPECT_EQ(request.filters[1].name, u"All Files");
  EXPECT_EQ(request.filters[1].pattern, u"*.*");
  EXPECT_TRUE(request.allowSeveral);
  EXPECT_EQ(session.active.document, nullptr);
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(OpenRequestsTest, TheDialogsFilesOpenInTheGivenPane) {
  session.viewMode = ViewMode::TwoDocuments;
  const std::u16string a = putPdf(u"a.pdf", simplePdf(1));
  session.settings.recentFiles = {u"C:\\b.pdf", u"C:\\x.pdf"};
  standIn().openDialogAnswers = {{a, u"C:\\b.pdf"}};
  openWithDialog(1);
  EXPECT_EQ(session.panes[1].path, a);
  EXPECT_THAT(session.settings.recentFiles, ElementsAre(u"C:\\x.pdf"));
}

TEST_F(OpenRequestsTest, AFileThatIsDeletedMeanwhileIsReported) {
  const std::u16string a = putPdf(u"a.pdf", simplePdf(1));
  std::filesystem::remove(platform::realPath(a));
  standIn().openDialogAnswers = {{a}};
  standIn().boxAnswers = {BoxAnswer::Ok};
  openWithDialog(0);
  ASSERT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(standIn().boxes[0].text, u"Could not open PDF.\n(PDFium error 2)");
}

// What the shelf holds of a document.

TEST_F(OpenRequestsTest, AShelvedDocumentOpensInItsShelvedState) {
  shelve(u"Real.pdf", false);
  EXPECT_TRUE(openRequested(document_, 0, kWorkingDocsLeaveAlone, true));
  expectCopyOpen();
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(OpenRequestsTest, EveryRequestAsksTheShelf) {
  const std::function<void(const std::u16string&)> requests[] = {
      [](const std::u16string& path) { openHandedOver(path); },
      [](const std::u16string& path) { openDropped({path}, 10); },
      [](const std::u16string& path) { openSeveral({path}, 0); },
      [](const std::u16string& path) {
        standIn().openDialogAnswers = {{path}};
        openWithDialog(0);
      },
      [](const std::u16string& path) {
        session.settings.recentFiles = {path};
        runCommand(kCmdRecentFirst);
      },
  };
  for (const auto& request : requests) {
    resetSession();
    shelve(u"real.pdf", false);
    request(document_);
    expectCopyOpen();
  }
}

TEST_F(OpenRequestsTest, AStepToAShelvedDocumentAsksTheShelf) {
  const std::u16string before = putPdf(u"a.pdf", simplePdf(5));
  shelve(u"real.pdf", false);
  ASSERT_TRUE(openRequested(before, 0, kWorkingDocsLeaveAlone, true));
  StepInFolder(1);
  expectCopyOpen();
}

// The file itself was asked for.
TEST_F(OpenRequestsTest, RefreshingShowsTheFileThoughTheShelfHasACopy) {
  shelve(u"real.pdf", true);
  session.viewerRole = true;
  ASSERT_TRUE(openDocument(&copy_, 0, kWorkingDocsLeaveAlone, false, &document_));
  ASSERT_EQ(session.active.pageCount, 2);
  refreshFromSource();
  expectDocumentOpen();
  EXPECT_EQ(session.shelfIndex.size(), 1u);
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(OpenRequestsTest, AChangedDocumentRaisesTheConflictQuestion) {
  shelve(u"real.pdf", true);
  standIn().boxAnswers = {BoxAnswer::Yes};
  EXPECT_TRUE(openRequested(document_, 0, kWorkingDocsLeaveAlone, true));
  expectCopyOpen();
  ASSERT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(standIn().boxes[0].title, u"Conflicting Versions");
  EXPECT_EQ(standIn().boxes[0].text, kConflictText);
  EXPECT_EQ(standIn().boxes[0].buttons, BoxButtons::YesNoCancel);
  EXPECT_EQ(standIn().boxes[0].icon, BoxIcon::Warning);
}

TEST_F(OpenRequestsTest, NoUsesTheDocumentAndForgetsTheCopy) {
  shelve(u"real.pdf", true);
  standIn().boxAnswers = {BoxAnswer::No};
  EXPECT_TRUE(openRequested(document_, 0, kWorkingDocsLeaveAlone, true));
  expectDocumentOpen();
  EXPECT_TRUE(session.shelfIndex.empty());
  EXPECT_EQ(platform::fileBytes(copy_), std::nullopt);
}

TEST_F(OpenRequestsTest, CancelOpensNothing) {
  shelve(u"real.pdf", true);
  standIn().boxAnswers = {BoxAnswer::Cancel};
  EXPECT_FALSE(openRequested(document_, 0, kWorkingDocsLeaveAlone, true));
  EXPECT_EQ(session.active.document, nullptr);
  EXPECT_EQ(session.shelfIndex.size(), 1u);
  EXPECT_NE(platform::fileBytes(copy_), std::nullopt);
}

TEST_F(OpenRequestsTest, ACanceledFirstFileAddsNoOthers) {
  shelve(u"real.pdf", true);
  session.settings.recentFiles = {u"C:\\b.pdf"};
  standIn().boxAnswers = {BoxAnswer::Cancel};
  openDropped({document_, u"C:\\b.pdf"}, 10);
  EXPECT_THAT(session.settings.recentFiles, ElementsAre(u"C:\\b.pdf"));
}

TEST_F(OpenRequestsTest, ADifferentSizeAloneIsAConflict) {
  shelve(u"real.pdf", false);
  entry().sourceSize += 1;
  standIn().boxAnswers = {BoxAnswer::Cancel};
  EXPECT_FALSE(openRequested(document_, 0, kWorkingDocsLeaveAlone, true));
  EXPECT_EQ(standIn().boxes.size(), 1u);
}

TEST_F(OpenRequestsTest, UnknownSizeAndTimeAreNotCompared) {
  shelve(u"real.pdf", true);
  entry().sourceSize = 0;
  entry().sourceTime = 0;
  EXPECT_TRUE(openRequested(document_, 0, kWorkingDocsLeaveAlone, true));
  expectCopyOpen();
}

TEST_F(OpenRequestsTest, AnUnknownTimeStillLeavesTheSizeToCompare) {
  shelve(u"real.pdf", true);
  entry().sourceTime = 0;
  EXPECT_TRUE(openRequested(document_, 0, kWorkingDocsLeaveAlone, true));
  expectCopyOpen();
}

TEST_F(OpenRequestsTest, AVanishedDocumentOpensFromItsCopyWithoutAQuestion) {
  shelve(u"real.pdf", true);
  std::filesystem::remove(platform::realPath(document_));
  EXPECT_TRUE(openRequested(document_, 0, kWorkingDocsLeaveAlone, true));
  expectCopyOpen();
}

TEST_F(OpenRequestsTest, AVanishedCopyIsForgotten) {
  shelve(u"real.pdf", true);
  std::filesystem::remove(platform::realPath(copy_));
  EXPECT_TRUE(openRequested(document_, 0, kWorkingDocsLeaveAlone, true));
  expectDocumentOpen();
  EXPECT_TRUE(session.shelfIndex.empty());
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(OpenRequestsTest, WithoutADataFolderTheEntryIsForgotten) {
  shelve(u"real.pdf", true);
  session.shelveFolder.clear();
  EXPECT_TRUE(openRequested(document_, 0, kWorkingDocsLeaveAlone, true));
  expectDocumentOpen();
  EXPECT_TRUE(session.shelfIndex.empty());
}

TEST_F(OpenRequestsTest, AnEntryWithoutChangesOrWithoutCopyStandsForNothing) {
  shelve(u"real.pdf", true);
  entry().dirty = false;
  EXPECT_TRUE(openRequested(document_, 0, kWorkingDocsLeaveAlone, true));
  expectDocumentOpen();
  resetSession();
  shelve(u"real.pdf", true);
  entry().shelfName.clear();
  EXPECT_TRUE(openRequested(document_, 0, kWorkingDocsLeaveAlone, true));
  expectDocumentOpen();
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(OpenRequestsTest, OpeningItselfNeverAsksTheShelf) {
  shelve(u"real.pdf", true);
  EXPECT_TRUE(openDocument(&document_, 0, kWorkingDocsLeaveAlone, false, nullptr));
  expectDocumentOpen();
  EXPECT_EQ(session.shelfIndex.size(), 1u);
}

}  // namespace
}  // namespace quillmere::test
