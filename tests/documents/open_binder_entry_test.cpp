#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "documents/open_binder_entry.h"
#include "documents/open_requests.h"
#include "platform/text.h"
#include "store/working_documents.h"
#include "support/opening_test.h"
#include "support/pdf_builder.h"
#include "view/navigation.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::setVolume;
using platform::standIn;
using platform::VolumeState;
using testing::IsEmpty;

constexpr const char16_t* kShare = u"\\\\server\\share";
constexpr const char16_t* kNetworkFile = u"\\\\server\\share\\net.pdf";

std::u16string unavailableText(const std::u16string& seconds) {
  return u"This document is on a network location that didn't respond within " + seconds +
         u".\n\nIf it's a slow or sleeping connection (for example a NAS waking up), increase "
         u"\"Network open timeout\" in Settings (App) and try again.\n\nOtherwise, check that "
         u"you're connected to the network (VPN / Wi-Fi).";
}

std::uint32_t itemData(std::uint32_t binder, std::uint32_t file) {
  return binder << 16 | file;
}

// Two binders: the first holds the documents in use; the second holds a.pdf, a missing file and
// one on the network.
class OpenBinderEntryTest : public OpeningTest {
 protected:
  OpenBinderEntryTest() {
    BinderFile inUse;
    inUse.isWorkingDocuments = true;
    inUse.path = u"C:\\WorkingDocs.lst";
    inUse.files = {u"C:\\used.pdf"};
    putPdf(u"used.pdf", simplePdf(3));
    BinderFile binder;
    binder.path = u"C:\\Binder.lst";
    binder.files = {putPdf(u"A.pdf", simplePdf(5)), u"C:\\missing.pdf", kNetworkFile};
    session.binderLibrary = {inUse, binder};
    session.settings.recentFiles = {u"C:\\A.pdf", u"C:\\used.pdf"};
  }

  ~OpenBinderEntryTest() override {
    setVolume(kShare, VolumeState::Failing);
    platform::waitForDetachedThreads();
  }

  // A copy of two pages with unsaved changes of the document.
  static ShelfEntry& shelve(const std::u16string& path) {
    session.shelveFolder = u"C:\\Shelve\\";
    putPdf(u"Shelve\\0123.pdf", simplePdf(2));
    ShelfEntry& entry = session.shelfIndex[platform::toLower(path)];
    entry.path = platform::toLower(path);
    entry.dirty = true;
    entry.shelfName = u"0123";
    return entry;
  }

  static bool unavailable(const std::u16string& path) {
    return session.unavailableFiles.contains(platform::toLower(path));
  }

  static void expectNothingOpen() {
    EXPECT_EQ(session.active.document, nullptr);
    EXPECT_EQ(session.panes[0].document, nullptr);
    EXPECT_EQ(session.panes[1].document, nullptr);
  }
};

TEST_F(OpenBinderEntryTest, AFileOpensAndRemembersItsBinder) {
  session.unavailableFiles.insert(u"c:\\a.pdf");
  openBinderEntry(itemData(1, 0), true, false);
  EXPECT_EQ(session.active.path, u"C:\\A.pdf");
  EXPECT_EQ(session.active.pageCount, 5);
  EXPECT_EQ(session.documentBinders[u"c:\\a.pdf"], u"C:\\Binder.lst");
  EXPECT_FALSE(unavailable(u"C:\\A.pdf"));
  // A file of an ordinary binder does not join the documents in use.
  EXPECT_EQ(session.settings.recentFiles.size(), 2u);
  EXPECT_EQ(session.binderLibrary[0].files.size(), 1u);
}

TEST_F(OpenBinderEntryTest, AFileOfTheDocumentsInUseLeavesTheRecentList) {
  openBinderEntry(itemData(0, 0), true, false);
  EXPECT_EQ(session.active.path, u"C:\\used.pdf");
  EXPECT_EQ(session.settings.recentFiles.size(), 1u);
  EXPECT_EQ(session.documentBinders[u"c:\\used.pdf"], u"C:\\WorkingDocs.lst");
}

TEST_F(OpenBinderEntryTest, HeadersAndItemsOutOfRangeOpenNothing) {
  for (std::uint32_t data :
       {itemData(1, 65533), itemData(1, 65534), itemData(1, 65535), itemData(0, 65535),
        itemData(1, 3), itemData(2, 0), itemData(65535, 0), 0xFFFFFFFFu}) {
    openBinderEntry(data, true, false);
    expectNothingOpen();
  }
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_THAT(standIn().beeps, IsEmpty());
  EXPECT_THAT(session.unavailableFiles, IsEmpty());
}

TEST_F(OpenBinderEntryTest, AMissingFileBeepsAndIsMarked) {
  openBinderEntry(itemData(1, 1), true, false);
  expectNothingOpen();
  ASSERT_EQ(standIn().beeps.size(), 1u);
  EXPECT_EQ(standIn().beeps[0], platform::Sound::Exclamation);
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_TRUE(unavailable(u"C:\\missing.pdf"));
}

TEST_F(OpenBinderEntryTest, AnUnreachablePlaceIsExplained) {
  setVolume(kShare, VolumeState::Failing, 53);
  standIn().boxAnswers = {BoxAnswer::Ok};
  openBinderEntry(itemData(1, 2), true, false);
  expectNothingOpen();
  ASSERT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(standIn().boxes[0].title, u"Network Location Unavailable");
  EXPECT_EQ(standIn().boxes[0].text, unavailableText(u"3 seconds"));
  EXPECT_TRUE(unavailable(kNetworkFile));
  EXPECT_THAT(standIn().beeps, IsEmpty());
}

TEST_F(OpenBinderEntryTest, OneSecondIsNamedInTheSingular) {
  session.settings.openTimeoutSeconds = 1;
  setVolume(kShare, VolumeState::Failing, 53);
  standIn().boxAnswers = {BoxAnswer::Ok};
  openBinderEntry(itemData(1, 2), true, false);
  ASSERT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(standIn().boxes[0].text, unavailableText(u"1 second"));
}

TEST_F(OpenBinderEntryTest, AMissingNetworkFileOnlyBeeps) {
  setVolume(kShare, VolumeState::Present);
  openBinderEntry(itemData(1, 2), true, false);
  EXPECT_EQ(standIn().beeps.size(), 1u);
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_TRUE(unavailable(kNetworkFile));
}

TEST_F(OpenBinderEntryTest, ANetworkFileOpens) {
  setVolume(kShare, VolumeState::Present);
  putPdf(kNetworkFile, simplePdf(2));
  openBinderEntry(itemData(1, 2), true, false);
  EXPECT_EQ(session.active.path, kNetworkFile);
}

TEST_F(OpenBinderEntryTest, TheShownFileStaysAsItIs) {
  openBinderEntry(itemData(1, 0), true, false);
  goToPage(0, 3, false);
  session.active.dirty = true;
  session.unavailableFiles.insert(u"c:\\a.pdf");
  session.binderLibrary[1].files[0] = u"c:\\a.PDF";
  openBinderEntry(itemData(1, 0), true, false);
  EXPECT_EQ(session.panes[0].currentPage, 3);
  EXPECT_TRUE(session.active.dirty);
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_FALSE(unavailable(u"C:\\A.pdf"));
}

TEST_F(OpenBinderEntryTest, AFileThatCannotBeReadIsMarkedUntilItCan) {
  putPdf(u"A.pdf", garbageFile());
  standIn().boxAnswers = {BoxAnswer::Ok};
  openBinderEntry(itemData(1, 0), true, false);
  EXPECT_TRUE(unavailable(u"C:\\A.pdf"));
  EXPECT_FALSE(session.documentBinders.contains(u"c:\\a.pdf"));
  putPdf(u"A.pdf", simplePdf(1));
  openBinderEntry(itemData(1, 0), true, false);
  EXPECT_EQ(session.active.pageCount, 1);
  EXPECT_FALSE(unavailable(u"C:\\A.pdf"));
}

TEST_F(OpenBinderEntryTest, APathThatAFailedLoadLeftBehindIsNotTheShownFile) {
  openBinderEntry(itemData(1, 0), true, false);
  const std::u16string a = session.active.path;
  putPdf(u"A.pdf", garbageFile());
  standIn().boxAnswers = {BoxAnswer::Ok};
  ASSERT_FALSE(open(a));
  ASSERT_EQ(session.active.path, a);
  putPdf(u"A.pdf", simplePdf(1));
  openBinderEntry(itemData(1, 0), true, false);
  EXPECT_EQ(session.active.pageCount, 1);
}

TEST_F(OpenBinderEntryTest, TheOtherPaneCountsWhenTheCallerSaysSo) {
  session.viewMode = ViewMode::TwoDocuments;
  const std::u16string a = u"C:\\A.pdf";
  ASSERT_TRUE(open(a, {.pane = 1}));
  session.unavailableFiles.insert(u"c:\\a.pdf");
  openBinderEntry(itemData(1, 0), true, true);
  EXPECT_EQ(session.viewMode, ViewMode::TwoDocuments);
  EXPECT_EQ(session.panes[0].document, nullptr);
  EXPECT_FALSE(unavailable(a));

  openBinderEntry(itemData(1, 0), true, false);
  EXPECT_EQ(session.viewMode, ViewMode::IndependentPages);
}

TEST_F(OpenBinderEntryTest, TheFileOpensInTheActivePane) {
  session.viewMode = ViewMode::TwoDocuments;
  session.activePane = 1;
  openBinderEntry(itemData(1, 0), true, false);
  EXPECT_EQ(session.panes[1].path, u"C:\\A.pdf");
  EXPECT_EQ(session.panes[0].document, nullptr);
}

TEST_F(OpenBinderEntryTest, TheCallerDecidesAboutTheQuestion) {
  openBinderEntry(itemData(0, 0), true, false);
  session.active.dirty = true;
  session.documentBinders.clear();  // so that the shelf does not take the changes over
  standIn().boxAnswers = {BoxAnswer::Cancel};
  openBinderEntry(itemData(1, 0), true, false);
  EXPECT_EQ(session.active.path, u"C:\\used.pdf");
  openBinderEntry(itemData(1, 0), false, false);
  EXPECT_EQ(session.active.path, u"C:\\A.pdf");
  EXPECT_EQ(standIn().boxes.size(), 1u);
}

TEST_F(OpenBinderEntryTest, AShelvedFileOpensInItsShelvedState) {
  shelve(u"C:\\A.pdf");
  openBinderEntry(itemData(1, 0), true, false);
  EXPECT_EQ(session.active.path, u"C:\\A.pdf");
  EXPECT_EQ(session.active.pageCount, 2);
  EXPECT_EQ(session.documentBinders[u"c:\\a.pdf"], u"C:\\Binder.lst");
}

TEST_F(OpenBinderEntryTest, AMissingFileOpensInItsShelvedState) {
  shelve(u"C:\\missing.pdf").sourceSize = 1;
  openBinderEntry(itemData(1, 1), true, false);
  EXPECT_EQ(session.active.path, u"C:\\missing.pdf");
  EXPECT_EQ(session.active.pageCount, 2);
  EXPECT_THAT(standIn().beeps, IsEmpty());
  EXPECT_FALSE(unavailable(u"C:\\missing.pdf"));

  openBinderEntry(itemData(1, 0), false, false);
  platform::deleteFile(u"C:\\Shelve\\0123.pdf");
  openBinderEntry(itemData(1, 1), false, false);  // now the copy is missing too
  EXPECT_EQ(session.active.path, u"C:\\A.pdf");
  EXPECT_EQ(standIn().beeps.size(), 1u);
  EXPECT_TRUE(unavailable(u"C:\\missing.pdf"));
}

TEST_F(OpenBinderEntryTest, AnUnreachablePlaceIsExplainedEvenWithAShelvedState) {
  shelve(kNetworkFile);
  setVolume(kShare, VolumeState::Failing, 53);
  standIn().boxAnswers = {BoxAnswer::Ok};
  openBinderEntry(itemData(1, 2), true, false);
  expectNothingOpen();
  EXPECT_EQ(standIn().boxes.size(), 1u);
}

TEST_F(OpenBinderEntryTest, AShownFileThatHasGoneBeepsAndStaysOpen) {
  openBinderEntry(itemData(1, 0), true, false);
  platform::setAttributeError(u"C:\\A.pdf", platform::kErrorFileNotFound);
  openBinderEntry(itemData(1, 0), true, false);
  EXPECT_EQ(session.active.pageCount, 5);
  EXPECT_EQ(standIn().beeps.size(), 1u);
  EXPECT_TRUE(unavailable(u"C:\\A.pdf"));
}

TEST_F(OpenBinderEntryTest, AFileOnAMappedDriveThatDoesNotAnswerIsExplained) {
  standIn().mappedDrives = u"n";
  setVolume(u"N:", VolumeState::Failing, 53);
  session.binderLibrary[1].files[1] = u"n:\\a.pdf";
  standIn().boxAnswers = {BoxAnswer::Ok};
  openBinderEntry(itemData(1, 1), true, false);
  ASSERT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(standIn().boxes[0].title, u"Network Location Unavailable");
}

TEST_F(OpenBinderEntryTest, AFileOfTheDocumentsInUseKeepsItsPlaceAndTheTreeFollowsLater) {
  putPdf(u"head.pdf", simplePdf(1));
  session.binderLibrary[0].files.insert(session.binderLibrary[0].files.begin(), u"C:\\head.pdf");
  openBinderEntry(itemData(0, 1), true, false);
  EXPECT_EQ(session.active.path, u"C:\\used.pdf");
  EXPECT_THAT(session.binderLibrary[0].files,
              testing::ElementsAre(u"C:\\head.pdf", u"C:\\used.pdf"));
  EXPECT_EQ(standIn().window.binderTreeRebuildsPosted, 1);
}

TEST_F(OpenBinderEntryTest, CancelAtAConflictLeavesTheTreeAlone) {
  shelve(u"C:\\A.pdf").sourceSize = 1;
  standIn().boxAnswers = {BoxAnswer::Cancel};
  openBinderEntry(itemData(1, 0), true, false);
  expectNothingOpen();
  EXPECT_FALSE(unavailable(u"C:\\A.pdf"));
  EXPECT_EQ(session.shelfIndex.size(), 1u);
}

}  // namespace
}  // namespace quillmere::test
