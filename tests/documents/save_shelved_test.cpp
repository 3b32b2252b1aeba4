#include <fpdf_edit.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "documents/shelve.h"
#include "store/shelf.h"
#include "support/pdf_builder.h"
#include "support/shelf_flow_test.h"
#include "view/rotation.h"

// Writing what is on the shelf to the documents themselves.
namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::FileCall;
using platform::standIn;
using testing::IsEmpty;
using testing::SizeIs;

class SaveShelvedTest : public ShelfFlowTest {
 protected:
  SaveShelvedTest() {
    shelveFile(1, 0);
    openFile(1, 1);
  }
  static void expectReport(const std::u16string& reason) {
    ASSERT_THAT(standIn().boxes, SizeIs(1));
    EXPECT_EQ(standIn().boxes[0].text, u"Could not save 'a.pdf':\n" + reason +
                                           u"\n\nThe unsaved changes are still on its shelf.");
    EXPECT_EQ(standIn().boxes[0].title, u"Quillmere");
    EXPECT_EQ(standIn().boxes[0].icon, platform::BoxIcon::Error);
  }
  // Fails with this reason and leaves the file and the copy as they were.
  static void expectFailure(const std::u16string& reason) {
    standIn().boxAnswers = {BoxAnswer::Ok};
    EXPECT_FALSE(SaveShelved(1, 0));
    expectReport(reason);
    EXPECT_EQ(marksIn(kA), 0);
    EXPECT_TRUE(IsShelved(kA));
    EXPECT_FALSE(platform::fileExists(std::u16string(kA) + u".tmp"));
  }
};

TEST_F(SaveShelvedTest, TheCopyTakesThePlaceOfTheFileAndGoes) {
  EXPECT_TRUE(SaveShelved(1, 0));
  EXPECT_EQ(marksIn(kA), 1);
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_THAT(shelfFiles(), IsEmpty());
  EXPECT_FALSE(platform::fileExists(std::u16string(kA) + u".tmp"));
}

TEST_F(SaveShelvedTest, AFileThatHasGoneIsMadeAgain) {
  platform::deleteFile(kA);
  EXPECT_TRUE(SaveShelved(1, 0));
  EXPECT_EQ(marksIn(kA), 1);
}

TEST_F(SaveShelvedTest, NothingToDoIsASuccess) {
  EXPECT_TRUE(SaveShelved(1, 2));
  EXPECT_FALSE(SaveShelved(1, 3));
  EXPECT_FALSE(SaveShelved(7, 0));
  shelfEntryOf(kA)->dirty = false;
  EXPECT_TRUE(SaveShelved(1, 0));
  EXPECT_EQ(marksIn(kA), 0);
  session.viewerRole = true;
  EXPECT_FALSE(SaveShelved(1, 0));
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(SaveShelvedTest, AnEntryWithoutACopyIsReported) {
  session.shelfIndex.begin()->shelfName.clear();
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_FALSE(SaveShelved(1, 0));
  expectReport(u"No shelf copy of the changes exists.");
}

TEST_F(SaveShelvedTest, AMissingCopyIsReported) {
  platform::deleteFile(copyOf(kA));
  expectFailure(u"The shelf copy of the changes is missing.");
}

TEST_F(SaveShelvedTest, AnUnreadableCopyIsReported) {
  platform::putFile(copyOf(kA), "no document");
  expectFailure(u"The shelf copy could not be opened.");
}

TEST_F(SaveShelvedTest, AChangedFileIsReportedAndStays) {
  platform::setWriteTime(kA, 132'000'000'000'000'000u);
  expectFailure(u"The file on disk has been modified since.");
}

TEST_F(SaveShelvedTest, AFileThatChangesWhileItsCopyIsWrittenStays) {
  standIn().refuseFileCall = [](FileCall call) {
    if (call == FileCall::Flush) platform::setWriteTime(kA, 132'000'000'000'000'000u);
    return false;
  };
  expectFailure(u"The file on disk has been modified since.");
}

TEST_F(SaveShelvedTest, AnOpenDocumentIsSavedWithItsTurns) {
  rotateDocument(0);  // b.pdf
  EXPECT_TRUE(SaveShelved(1, 1));
  EXPECT_FALSE(hasUnsavedChanges());
  EXPECT_EQ(FPDFPage_GetRotation(session.panes[0].page.get()), 1);
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(SaveShelvedTest, EachWayOfNotWritingIsReported) {
  for (const FileCall call : {FileCall::Start, FileCall::Write, FileCall::Flush, FileCall::Close}) {
    standIn().boxes.clear();
    standIn().refuseFileCall = [call](FileCall asked) { return asked == call; };
    expectFailure(u"Writing the file failed.");
  }
}

TEST_F(SaveShelvedTest, ALockedFileIsReported) {
  platform::setOtherUse(kA, platform::OtherUse::Exclusive);
  standIn().boxAnswers = {BoxAnswer::Ok};
  EXPECT_FALSE(SaveShelved(1, 0));
  expectReport(u"The file could not be replaced (it may be locked or read-only).");
  EXPECT_FALSE(platform::fileExists(std::u16string(kA) + u".tmp"));
  EXPECT_EQ(marksIn(copyOf(kA)), 1);
}

TEST_F(SaveShelvedTest, AReadOnlyFileIsReported) {
  platform::setReadOnly(kA, true);
  expectFailure(u"The file could not be replaced (it may be locked or read-only).");
}

}  // namespace
}  // namespace quillmere::test
