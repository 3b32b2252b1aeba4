#include "documents/settle_shelf.h"

#include <fpdf_edit.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "documents/modes.h"
#include "documents/save.h"
#include "documents/shelve.h"
#include "store/binder_library.h"
#include "store/shelf.h"
#include "support/pdf_builder.h"
#include "support/shelf_flow_test.h"
#include "view/rotation.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::standIn;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::uint64_t kAnotherTime = 132'000'000'000'000'000u;

// a.pdf is on the shelf with one mark, from a process that ended without a word.
class SettleShelfTest : public ShelfFlowTest {
 protected:
  SettleShelfTest() { shelve(); }
  void shelve() {
    shelveFile(1, 0);
    restart();
  }
  // As if the index in the file had these values.
  void setStamps(std::uint64_t size, std::uint64_t time) {
    shelfEntryOf(kA)->sourceSize = size;
    shelfEntryOf(kA)->sourceTime = time;
    ASSERT_TRUE(SaveShelfIndex());
    restart();
  }
};

TEST_F(SettleShelfTest, TheConflictQuestionSaysWhatEachAnswerDoes) {
  platform::setWriteTime(kA, kAnotherTime);
  standIn().boxAnswers = {BoxAnswer::Cancel};
  openFile(1, 0);
  ASSERT_THAT(standIn().boxes, SizeIs(1));
  EXPECT_EQ(standIn().boxes[0].title, u"Conflicting Versions");
  EXPECT_EQ(standIn().boxes[0].text,
            u"This file has unsaved changes from a previous session, but the file on disk has "
            u"been modified since then.\n\n"
            u"  Yes      Keep your unsaved changes (discards the on-disk update)\n"
            u"  No       Use the on-disk version (discards your unsaved changes)\n"
            u"  Cancel  Don't open anything");
  EXPECT_EQ(standIn().boxes[0].buttons, platform::BoxButtons::YesNoCancel);
  EXPECT_EQ(standIn().boxes[0].icon, platform::BoxIcon::Warning);
}

TEST_F(SettleShelfTest, AnEntryWithoutStampsNeverRaisesTheQuestion) {
  setStamps(0, 0);
  putPdf(kA, simplePdf(7));
  openFile(1, 0);
  EXPECT_EQ(marks(), 1);
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(SettleShelfTest, EitherStampAloneRaisesTheQuestion) {
  const platform::FileStamp stamp = *platform::fileStamp(kA);
  for (const platform::FileStamp& stored :
       {platform::FileStamp{stamp.size + 1, 0}, platform::FileStamp{0, stamp.writeTime + 1}}) {
    setStamps(stored.size, stored.writeTime);
    standIn().boxes.clear();
    standIn().boxAnswers = {BoxAnswer::Cancel};
    openFile(1, 0);
    EXPECT_THAT(standIn().boxes, SizeIs(1));
  }
  setStamps(stamp.size, 0);
  openFile(1, 0);
  EXPECT_EQ(marks(), 1);
}

TEST_F(SettleShelfTest, AFileWithoutAStampOpensFromItsCopyWithoutAQuestion) {
  platform::setWriteTime(kA, kAnotherTime);
  standIn().refuseFileCall = [](platform::FileCall call) {
    return call == platform::FileCall::Stamp;
  };
  openFile(1, 0);
  EXPECT_EQ(marks(), 1);
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(SettleShelfTest, CancelKeepsTheDocumentThatIsShown) {
  openFile(1, 1);
  platform::setWriteTime(kA, kAnotherTime);
  standIn().boxAnswers = {BoxAnswer::Cancel};
  openFile(1, 0);
  EXPECT_EQ(session.active.path, kB);
  EXPECT_NE(session.active.document, nullptr);
  EXPECT_EQ(marksIn(copyOf(kA)), 1);
}

TEST_F(SettleShelfTest, ACopyThatHasGoneIsForgottenAndTheFileOpens) {
  platform::deleteFile(copyOf(kA));
  openFile(1, 0);
  EXPECT_EQ(marks(), 0);
  EXPECT_TRUE(session.shelfIndex.empty());
  EXPECT_EQ(index(), "\xEF\xBB\xBF");
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

TEST_F(SettleShelfTest, ACopyThatCannotBeLookedAtForNowKeepsItsEntry) {
  constexpr std::uint32_t kAccessDenied = 5;
  const std::string before = index();
  platform::setAttributeError(copyOf(kA), kAccessDenied);
  openFile(1, 0);
  EXPECT_EQ(index(), before);
  EXPECT_EQ(marks(), 1);
}

TEST_F(SettleShelfTest, ACopyThatCannotBeReadKeepsItsEntryUntilTheUserDiscardsIt) {
  platform::putFile(copyOf(kA), garbageFile());
  standIn().boxAnswers = {BoxAnswer::Ok};
  openFile(1, 0);
  EXPECT_EQ(session.active.document, nullptr);
  EXPECT_TRUE(IsShelved(kA));
}

TEST_F(SettleShelfTest, AnIndexThatWasLockedAtTheStartIsReadWhenADocumentOpens) {
  platform::setOtherUse(ShelfIndexPath(), platform::OtherUse::Exclusive);
  restart();
  EXPECT_FALSE(IsShelved(kA));
  platform::setOtherUse(ShelfIndexPath(), platform::OtherUse::Nobody);
  openFile(1, 0);
  EXPECT_EQ(marks(), 1);

  platform::setOtherUse(ShelfIndexPath(), platform::OtherUse::Exclusive);
  restart();
  platform::setOtherUse(ShelfIndexPath(), platform::OtherUse::Nobody);
  platform::deleteFile(kA);
  openFile(1, 0);
  EXPECT_EQ(marks(), 1);
}

TEST_F(SettleShelfTest, TheCopyOfAnEntryWithoutChangesNeverComesBack) {
  shelfEntryOf(kA)->dirty = false;
  ASSERT_TRUE(SaveShelfIndex());
  restart();
  openFile(1, 0);
  EXPECT_EQ(marks(), 0);
  mark();
  EXPECT_THAT(index(), HasSubstr("-\t1\t"));
  restart();  // before the new mark was shelved
  openFile(1, 0);
  EXPECT_EQ(marks(), 0);
}

// Other documents than plain ones.

TEST_F(SettleShelfTest, DocumentsOfOneNameInTwoFoldersAreTwoEntries) {
  putPdf(u"C:\\other\\a.pdf", simplePdf(3));
  platform::putFile(u"C:\\Same.lst", "C:\\other\\a.pdf\r\n");
  LoadBinder(u"C:\\Same.lst");
  openFile(3, 0);
  mark();
  mark();
  openFile(1, 0);
  EXPECT_EQ(marks(), 1);
  openFile(3, 0);
  EXPECT_EQ(marks(), 2);
  EXPECT_EQ(session.shelfIndex.size(), 2u);
  EXPECT_THAT(shelfFiles(), SizeIs(2));
}

TEST_F(SettleShelfTest, AnEncryptedDocumentComesBackAndIsSavedEncrypted) {
  putPdf(kB, encryptedPdf());
  shelveFile(1, 1);
  const int revision = FPDF_GetSecurityHandlerRevision(documentOf(0));
  ASSERT_GT(revision, 0);
  restart();
  openFile(1, 1);
  EXPECT_EQ(marks(), 1);
  SaveCommand();
  EXPECT_EQ(FPDF_GetSecurityHandlerRevision(documentOf(0)), revision);
  EXPECT_EQ(marksIn(kB), 1);
  EXPECT_FALSE(IsShelved(kB));
  shelveFile(1, 1);
  openFile(1, 2);
  EXPECT_TRUE(SaveShelved(1, 1));
  EXPECT_EQ(marksIn(kB), 2);
}

TEST_F(SettleShelfTest, ADocumentThatBothPanesShowIsShelvedOnce) {
  openFile(1, 1);
  setViewMode(ViewMode::IndependentPages);
  setActivePane(1);
  rotatePage(1);
  shelveChangedDocuments();
  EXPECT_FALSE(hasUnsavedChanges(0));
  EXPECT_THAT(shelfFiles(), SizeIs(2));  // with that of a.pdf
  for (const int pane : {0, 1}) {
    EXPECT_EQ(FPDFPage_GetRotation(session.panes[pane].page.get()), 1);
    EXPECT_NE(session.panes[pane].pageBitmap, nullptr);
  }
}

// A document that was read from its copy.

TEST_F(SettleShelfTest, AFileThatChangedBelowItsCopyIsNotWrittenOver) {
  openFile(1, 0);
  putPdf(kA, simplePdf(5));
  const std::string theirs = *platform::fileBytes(kA);
  standIn().boxAnswers = {BoxAnswer::Ok, BoxAnswer::Ok};
  SaveCommand();
  EXPECT_FALSE(SaveShelved(1, 0));
  ASSERT_THAT(standIn().boxes, SizeIs(2));
  for (const platform::ShownBox& box : standIn().boxes) {
    EXPECT_EQ(box.text, u"The file was changed by another program, so it cannot be saved.");
  }
  EXPECT_EQ(*platform::fileBytes(kA), theirs);
  EXPECT_EQ(marksIn(copyOf(kA)), 1);

  // Another file can be written, and so can this one once the user has decided about it.
  standIn().saveDialogAnswers = {u"C:\\mine.pdf"};
  SaveAsCommand();
  EXPECT_EQ(marksIn(u"C:\\mine.pdf"), 1);
  standIn().boxAnswers = {BoxAnswer::Yes};
  openFile(1, 0);
  EXPECT_EQ(marks(), 1);
  SaveCommand();
  EXPECT_EQ(marksIn(kA), 1);
}

// As when its stick was unplugged at the start.
TEST_F(SettleShelfTest, AFileThatComesBackChangedIsNotWrittenOver) {
  platform::deleteFile(kA);
  openFile(1, 0);
  ASSERT_EQ(marks(), 1);
  putPdf(kA, simplePdf(5));
  const std::string theirs = *platform::fileBytes(kA);
  standIn().boxAnswers = {BoxAnswer::Ok};
  SaveCommand();
  ASSERT_THAT(standIn().boxes, SizeIs(1));
  EXPECT_EQ(standIn().boxes[0].text,
            u"The file was changed by another program, so it cannot be saved.");
  EXPECT_EQ(*platform::fileBytes(kA), theirs);
  EXPECT_EQ(marksIn(copyOf(kA)), 1);
}

TEST_F(SettleShelfTest, AFileThatComesBackAsItWasIsSaved) {
  const std::string bytes = *platform::fileBytes(kA);
  const platform::FileStamp stamp = *platform::fileStamp(kA);
  platform::deleteFile(kA);
  openFile(1, 0);
  platform::putFile(kA, bytes);
  platform::setWriteTime(kA, stamp.writeTime);
  SaveCommand();
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_EQ(marksIn(kA), 1);
}

}  // namespace
}  // namespace quillmere::test
