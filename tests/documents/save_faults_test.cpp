#include <gmock/gmock.h>

#include <algorithm>
#include <utility>

#include "annot/placements.h"
#include "documents/close.h"
#include "documents/modes.h"
#include "documents/save.h"
#include "documents/save_test.h"
#include "support/pdf_builder.h"
#include "view/rotation.h"
#include "view/view_test.h"

// Whatever fails, the user is told what, the file is the old or the new one, and the edits are
// either in it or still open.
namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::BoxIcon;
using platform::fileBytes;
using platform::FileCall;
using platform::namesIn;
using platform::standIn;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

using Names = std::vector<std::u16string>;

class SaveFaultsTest : public SaveTest {
 protected:
  SaveFaultsTest() { begin(); }

  // A document with a mark on its first page and a text on its second that no file has.
  void begin() {
    closeAllDocuments();
    standIn().refuseFileCall = {};
    standIn().diskFree.reset();
    standIn().boxes.clear();
    expectNotices(2);
    for (const std::u16string& name : namesIn(u"C:\\docs"))
      platform::deleteFile(u"C:\\docs\\" + name);
    const std::u16string name = u"docs\\a.pdf";
    path = opened(name);
    old = *fileBytes(path);
    mark(0);
    placeText(0, 1);
  }

  // Saves in vain, and nothing can read the sibling either.
  void failToReadTheSibling() {
    int openings = 0;
    standIn().refuseFileCall = [&](FileCall call) {
      return call == FileCall::ReadWhole || (call == FileCall::OpenInLibrary && ++openings == 2);
    };
    EXPECT_FALSE(save());
    standIn().refuseFileCall = {};
  }

  static Names names() { return namesIn(u"C:\\docs"); }
  bool fileIsNew(const std::u16string& file) { return marksIn(file) == 1 && marksIn(file, 1) == 1; }

  // The edits as the window has them, each once.
  static void expectEditsOpen() {
    ASSERT_NE(documentOf(0), nullptr);
    EXPECT_TRUE(hasUnsavedChanges());
    EXPECT_TRUE(session.active.dirty);
    EXPECT_EQ(marksOf(0), 1);
    readWaitingPlacements();
    ASSERT_EQ(session.placements[1].size(), 1u);
    EXPECT_EQ(marksOf(0, 1), session.placements[1][0].pending() ? 0 : 1);
    EXPECT_NE(session.panes[0].page, nullptr);
    EXPECT_NE(session.panes[0].pageBitmap, nullptr);
  }

  // After the fault has gone.
  void expectNextSaveIsWhole() {
    standIn().refuseFileCall = {};
    standIn().diskFree.reset();
    standIn().boxes.clear();
    ASSERT_TRUE(save());
    EXPECT_THAT(boxTexts(), IsEmpty());
    EXPECT_TRUE(fileIsNew(path));
    EXPECT_FALSE(hasUnsavedChanges());
    EXPECT_THAT(names(), ElementsAre(u"a.pdf"));
  }

  void expectNoFileHeldAfterClosing() {
    closeAllDocuments();
    for (const std::u16string& name : names()) EXPECT_FALSE(platform::isHeld(u"C:\\docs\\" + name));
  }

  std::u16string path;
  std::string old;
};

// Each call fails in turn, until none was left to fail.
TEST_F(SaveFaultsTest, WhicheverCallFailsNothingIsLost) {
  for (int failing = 0;; ++failing) {
    SCOPED_TRACE(failing);
    begin();
    int calls = 0;
    standIn().refuseFileCall = [&](FileCall) { return calls++ == failing; };
    const bool saved = save();
    standIn().refuseFileCall = {};
    if (calls <= failing) {
      EXPECT_TRUE(saved);
      EXPECT_GE(failing, 8) << "start, block, flush, close, two openings, copies, replace";
      break;
    }
    EXPECT_EQ(saved, fileIsNew(path));
    if (!saved) {
      EXPECT_EQ(*fileBytes(path), old);
      EXPECT_THAT(boxTexts(), SizeIs(1));
      expectEditsOpen();
      expectNextSaveIsWhole();
    } else if (documentOf(0) == nullptr) {
      EXPECT_THAT(boxTexts(), ElementsAre(u"Saved successfully but could not reopen the file."));
    } else {
      EXPECT_THAT(boxTexts(), IsEmpty());
      EXPECT_FALSE(hasUnsavedChanges());
    }
    expectNoFileHeldAfterClosing();
  }
}

TEST_F(SaveFaultsTest, WhateverFailsAfterAFailedReplaceNothingIsLost) {
  for (int failing = 0;; ++failing) {
    SCOPED_TRACE(failing);
    begin();
    int calls = 0;
    bool replacing = false;
    standIn().refuseFileCall = [&](FileCall call) {
      if (call == FileCall::Replace) return replacing = true;
      return replacing && calls++ == failing;
    };
    EXPECT_FALSE(save());
    EXPECT_THAT(boxTexts(), ElementsAre(kReplaceFailed));
    EXPECT_EQ(*fileBytes(path), old);
    EXPECT_TRUE(fileIsNew(u"C:\\docs\\a.pdf.tmp")) << "the only file with the edits";
    expectEditsOpen();
    EXPECT_EQ(session.active.path, path);
    expectNextSaveIsWhole();
    expectNoFileHeldAfterClosing();
    if (calls <= failing) break;
  }
}

TEST_F(SaveFaultsTest, AWriteThatFailsLeavesNoTemporaryFile) {
  for (const FileCall call : {FileCall::Start, FileCall::Write, FileCall::Flush, FileCall::Close,
                              FileCall::OpenInLibrary}) {
    begin();
    standIn().refuseFileCall = [&](FileCall asked) { return asked == call; };
    EXPECT_FALSE(save());
    EXPECT_THAT(boxTexts(), ElementsAre(u"Could not write temporary file."));
    EXPECT_EQ(standIn().boxes[0].icon, BoxIcon::Error);
    EXPECT_EQ(standIn().boxes[0].title, u"Quillmere");
    EXPECT_THAT(names(), ElementsAre(u"a.pdf"));
    EXPECT_EQ(marksOf(0, 1), 0) << "the text is pending again";
    expectEditsOpen();
  }
}

TEST_F(SaveFaultsTest, ADiskThatFillsUpAnywhereFailsTheWrite) {
  ASSERT_TRUE(save());
  const std::size_t whole = fileBytes(path)->size();
  for (std::size_t room = 0; room < whole; room += 97) {
    begin();
    standIn().diskFree = room;
    EXPECT_FALSE(save()) << room;
    EXPECT_EQ(*fileBytes(path), old) << room;
    EXPECT_THAT(names(), ElementsAre(u"a.pdf")) << room;
    expectEditsOpen();
  }
  expectNextSaveIsWhole();
}

TEST_F(SaveFaultsTest, AReadOnlyFileStaysAndTheNextSaveOverwritesTheTemporaryFile) {
  const std::u16string temporary = u"C:\\docs\\a.pdf.tmp";
  platform::setReadOnly(path, true);
  int marksBehindBox = -1;
  standIn().onBox = [&](const platform::ShownBox&) { marksBehindBox = marksOf(0); };
  EXPECT_FALSE(save());
  standIn().onBox = {};
  EXPECT_THAT(boxTexts(), ElementsAre(kReplaceFailed));
  EXPECT_EQ(standIn().boxes[0].icon, BoxIcon::Error);
  EXPECT_EQ(marksBehindBox, 1) << "the window shows the edits behind the message";
  EXPECT_EQ(*fileBytes(path), old);
  EXPECT_TRUE(fileIsNew(temporary));
  EXPECT_FALSE(platform::isHeld(temporary));
  EXPECT_TRUE(session.active.dirty);
  EXPECT_EQ(session.active.path, path);

  mark(0);
  EXPECT_FALSE(save());
  EXPECT_EQ(marksIn(temporary), 2);
  EXPECT_THAT(names(), ElementsAre(u"a.pdf", u"a.pdf.tmp"));

  platform::setReadOnly(path, false);
  EXPECT_TRUE(save());
  EXPECT_EQ(marksIn(path), 2);
  EXPECT_THAT(names(), ElementsAre(u"a.pdf"));
  EXPECT_FALSE(hasUnsavedChanges());
}

// Nothing can read the sibling, so the window shows the old file and no save may touch the sibling.
TEST_F(SaveFaultsTest, EditsThatOnlyTheTemporaryFileHasAreNotOverwritten) {
  platform::setReadOnly(path, true);
  failToReadTheSibling();
  EXPECT_EQ(marksOf(0), 0);
  EXPECT_TRUE(session.active.dirty);
  ASSERT_THAT(session.placements[1], SizeIs(1));
  EXPECT_TRUE(session.placements[1][0].pending()) << "the old file does not have it";
  EXPECT_FALSE(save());
  EXPECT_TRUE(fileIsNew(u"C:\\docs\\a.pdf.tmp"));
}

TEST_F(SaveFaultsTest, TheOldFilesPlacementsCanBeEditedBesideThoseThatItLacks) {
  ASSERT_TRUE(save());
  readWaitingPlacements();
  placeText(0, 1);
  expectNotices(2);
  platform::setReadOnly(path, true);
  failToReadTheSibling();
  readWaitingPlacements();
  ASSERT_THAT(session.placements[1], SizeIs(2));
  EXPECT_EQ(session.placements[1][0].annotIndex, 0);
  EXPECT_TRUE(session.placements[1][1].pending());
  platform::setReadOnly(path, false);
}

TEST_F(SaveFaultsTest, ASaveAfterAFailedOneGivesTheMemoryBack) {
  platform::setReadOnly(path, true);
  EXPECT_FALSE(save());
  EXPECT_THAT(session.documentKeptBuffer, SizeIs(1));
  platform::setReadOnly(path, false);
  EXPECT_TRUE(save());
  EXPECT_THAT(session.documentKeptBuffer, IsEmpty());
}

TEST_F(SaveFaultsTest, ALockedFileStaysAndCanBeSavedElsewhere) {
  platform::setOtherUse(path, platform::OtherUse::Exclusive);
  EXPECT_FALSE(save());
  EXPECT_THAT(boxTexts(), ElementsAre(kReplaceFailed));
  ASSERT_TRUE(SaveDocumentTo(0, u"C:\\docs\\b.pdf"));
  EXPECT_TRUE(fileIsNew(u"C:\\docs\\b.pdf"));
  EXPECT_EQ(session.active.path, u"C:\\docs\\b.pdf");
  EXPECT_FALSE(hasUnsavedChanges());
}

TEST_F(SaveFaultsTest, ASiblingThatTheDocumentDidNotMakeIsNeverOverwritten) {
  platform::putFile(u"C:\\docs\\a.pdf.tmp", "theirs");
  platform::setReadOnly(path, true);
  EXPECT_FALSE(save());
  EXPECT_EQ(*fileBytes(u"C:\\docs\\a.pdf.tmp"), "theirs");
  EXPECT_TRUE(fileIsNew(u"C:\\docs\\~quillmere1.tmp"));
  platform::setReadOnly(path, false);
  EXPECT_TRUE(save());
  EXPECT_TRUE(fileIsNew(path));
  EXPECT_EQ(*fileBytes(u"C:\\docs\\a.pdf.tmp"), "theirs");
  EXPECT_THAT(names(), ElementsAre(u"a.pdf", u"a.pdf.tmp"));
}

TEST_F(SaveFaultsTest, ANameWithoutRoomForTheSuffixGetsAShortSibling) {
  const std::u16string name = std::u16string(249, u'n') + u".pdf";
  const std::u16string longPath = u"C:\\" + name;
  ASSERT_TRUE(open(simplePdf(1), 0, longPath));
  mark(0);
  Names during;
  standIn().refuseFileCall = [&](FileCall call) {
    if (call == FileCall::Replace) during = namesIn(u"C:\\");
    return false;
  };
  ASSERT_TRUE(save());
  EXPECT_THAT(during, testing::Contains(u"~quillmere1.tmp"));
  EXPECT_EQ(marksIn(longPath), 1);
}

TEST_F(SaveFaultsTest, AFileThatCannotBeOpenedAgainLeavesAnEmptyWindow) {
  int openings = 0;
  standIn().refuseFileCall = [&](FileCall call) {
    return call == FileCall::OpenInLibrary && ++openings == 2;
  };
  EXPECT_TRUE(save());
  EXPECT_THAT(boxTexts(), ElementsAre(u"Saved successfully but could not reopen the file."));
  EXPECT_EQ(standIn().boxes[0].icon, BoxIcon::Error);
  EXPECT_EQ(documentOf(0), nullptr);
  EXPECT_EQ(session.active.pageCount, 0);
  EXPECT_EQ(session.panes[0].pageBitmap, nullptr);
  EXPECT_THAT(session.placements, IsEmpty());
  EXPECT_FALSE(hasUnsavedChanges());
  EXPECT_TRUE(fileIsNew(path));
}

TEST_F(SaveFaultsTest, AFailedReplaceInTwoDocumentsLeavesTheOtherPaneAlone) {
  closeAllDocuments();
  openTwo();
  mark(0);
  mark(1);
  const FPDF_DOCUMENT other = documentOf(1);
  platform::setReadOnly(left_, true);
  EXPECT_FALSE(save(0));
  EXPECT_EQ(marksOf(0), 1);
  EXPECT_TRUE(session.panes[0].dirty);
  EXPECT_EQ(documentOf(1), other);
  EXPECT_TRUE(session.panes[1].dirty);
}

TEST_F(SaveFaultsTest, SaveAsThatFailsLeavesTheDocumentAsItWas) {
  const std::u16string target = u"C:\\docs\\b.pdf";
  for (int failing = 0;; ++failing) {
    SCOPED_TRACE(failing);
    begin();
    platform::putFile(target, "older");
    int calls = 0;
    standIn().refuseFileCall = [&](FileCall) { return calls++ == failing; };
    const bool saved = SaveDocumentTo(0, target);
    standIn().refuseFileCall = {};
    if (saved) {
      EXPECT_TRUE(fileIsNew(target));
      if (calls <= failing) break;
      continue;
    }
    EXPECT_EQ(*fileBytes(target), "older");
    EXPECT_THAT(boxTexts(), ElementsAre(u"Failed to save PDF."));
    EXPECT_EQ(session.active.path, path);
    EXPECT_THAT(names(), ElementsAre(u"a.pdf", u"b.pdf"));
    expectEditsOpen();
    platform::deleteFile(target);
    expectNextSaveIsWhole();
  }
}

// It would be missing from the file, and after the save from the window too.
TEST_F(SaveFaultsTest, APlacementThatCannotBeWrittenFailsTheSave) {
  closeAllDocuments();
  ASSERT_TRUE(open(pdfWithBrokenPage(3, 1), 0, path));
  old = *fileBytes(path);
  placeText(0, 0);
  placeText(0, 1);
  EXPECT_FALSE(save());
  EXPECT_FALSE(SaveDocumentTo(0, u"C:\\docs\\b.pdf"));
  EXPECT_THAT(boxTexts(), ElementsAre(u"Could not write temporary file.", u"Failed to save PDF."));
  EXPECT_EQ(*fileBytes(path), old);
  EXPECT_THAT(names(), ElementsAre(u"a.pdf"));
  EXPECT_EQ(marksOf(0), 0);
  EXPECT_TRUE(hasUnsavedChanges());
}

// Questions before closing.

TEST_F(SaveFaultsTest, YesBeforeClosingSavesAndThenCloses) {
  standIn().boxAnswers = {BoxAnswer::Yes};
  closeCommand(0);
  EXPECT_EQ(documentOf(0), nullptr);
  EXPECT_TRUE(fileIsNew(path));
}

TEST_F(SaveFaultsTest, TurnsLeftOutOfTheFileStopTheClose) {
  rotateDocument(0);
  standIn().boxAnswers = {BoxAnswer::Yes, BoxAnswer::No};
  closeCommand(0);
  ASSERT_NE(documentOf(0), nullptr);
  EXPECT_TRUE(fileIsNew(path));
  EXPECT_TRUE(hasUnsavedChanges());
}

// The file behind an open document.

constexpr const char16_t* kChanged =
    u"The file was changed by another program, so it cannot be saved.";

TEST_F(SaveFaultsTest, AFileThatAnotherProgramChangedCannotBeSaved) {
  closeAllDocuments();
  ASSERT_TRUE(open(path));
  platform::putFile(path, old.substr(0, old.size() / 2));
  mark(0);
  EXPECT_FALSE(platform::isGuarded(path));
  EXPECT_FALSE(save());
  EXPECT_FALSE(SaveDocumentTo(0, u"C:\\docs\\b.pdf"));
  EXPECT_THAT(boxTexts(), ElementsAre(kChanged, kChanged));
  EXPECT_EQ(*fileBytes(path), old.substr(0, old.size() / 2));
  EXPECT_TRUE(session.active.dirty);
  EXPECT_THAT(names(), ElementsAre(u"a.pdf"));
}

TEST_F(SaveFaultsTest, AChangeDuringTheWriteFailsItToo) {
  closeAllDocuments();
  ASSERT_TRUE(open(path));
  platform::setOtherUse(path, platform::OtherUse::SharedWriter);
  mark(0);
  standIn().refuseFileCall = [&](FileCall call) {
    if (call == FileCall::Flush) platform::putFile(path, "theirs");
    return false;
  };
  EXPECT_FALSE(SaveDocumentTo(0, u"C:\\docs\\b.pdf"));
  EXPECT_THAT(boxTexts(), ElementsAre(kChanged));
  EXPECT_EQ(fileBytes(u"C:\\docs\\b.pdf"), std::nullopt);
  standIn().boxes.clear();
  closeAllDocuments();
  platform::setOtherUse(path, platform::OtherUse::Nobody);
  platform::putFile(path, old);
  ASSERT_TRUE(open(path));
  platform::setOtherUse(path, platform::OtherUse::SharedWriter);
  mark(0);
  EXPECT_FALSE(save());
  EXPECT_THAT(boxTexts(), ElementsAre(kChanged));
  EXPECT_EQ(*fileBytes(path), "theirs");
  EXPECT_THAT(names(), ElementsAre(u"a.pdf"));
  EXPECT_TRUE(session.active.dirty);
}

// Its own file, where the document is read from another one.

TEST_F(SaveFaultsTest, AFileThatAnotherProgramWroteAfterAFailedSaveIsNotReplaced) {
  platform::setReadOnly(path, true);
  EXPECT_FALSE(save());
  platform::setReadOnly(path, false);
  platform::putFile(path, "theirs");
  EXPECT_FALSE(save());
  EXPECT_THAT(boxTexts(), ElementsAre(kReplaceFailed, kChanged));
  EXPECT_EQ(*fileBytes(path), "theirs");
  EXPECT_TRUE(fileIsNew(u"C:\\docs\\a.pdf.tmp"));
  expectEditsOpen();
  EXPECT_TRUE(SaveDocumentTo(0, u"C:\\docs\\b.pdf")) << "the edits can be saved elsewhere";
}

TEST_F(SaveFaultsTest, WhatAnotherProgramWritesWhileTheReplaceIsTriedAgainStays) {
  platform::setOtherUse(path, platform::OtherUse::Exclusive);
  standIn().onSleep = [&] {
    platform::setOtherUse(path, platform::OtherUse::Nobody);
    platform::putFile(path, "theirs");
  };
  EXPECT_FALSE(save());
  EXPECT_FALSE(save());
  EXPECT_THAT(boxTexts(), ElementsAre(kReplaceFailed, kChanged));
  EXPECT_EQ(*fileBytes(path), "theirs");
  expectEditsOpen();
}

TEST_F(SaveFaultsTest, AFileThatAnotherProgramWroteAfterSaveAsIsNotReplaced) {
  const std::u16string other = u"C:\\docs\\b.pdf";
  ASSERT_TRUE(SaveDocumentTo(0, other));
  setViewMode(ViewMode::TwoDocuments);  // what is known of the file moves along
  platform::putFile(other, "theirs");
  mark(0);
  EXPECT_FALSE(save());
  EXPECT_THAT(boxTexts(), ElementsAre(kChanged));
  EXPECT_EQ(*fileBytes(other), "theirs");
  platform::deleteFile(other);
  EXPECT_TRUE(save()) << "a file that has gone is made again";
  EXPECT_EQ(marksIn(other), 2);
}

TEST_F(SaveFaultsTest, AFileThatAnotherProgramWroteBehindAShelfCopyIsNotReplaced) {
  closeAllDocuments();
  const std::u16string copy = putPdf(u"Shelve\\copy.pdf", simplePdf(3));
  session.shelveFolder = u"C:\\Shelve\\";
  ASSERT_TRUE(open(copy, {.displayPath = path}));
  platform::putFile(path, "theirs");
  EXPECT_FALSE(save());
  EXPECT_THAT(boxTexts(), ElementsAre(kChanged));
  EXPECT_EQ(*fileBytes(path), "theirs");
}

// A share or a stick that comes back does not mend what was opened on it before: PDFium then leaves
// out what it cannot read.
TEST_F(SaveFaultsTest, ADocumentWhoseFileCannotBeReadAnyMoreIsNotSaved) {
  platform::cutOff(path);
  EXPECT_FALSE(save());
  EXPECT_FALSE(SaveDocumentTo(0, u"C:\\docs\\b.pdf"));
  EXPECT_THAT(boxTexts(), ElementsAre(u"Could not write temporary file.", u"Failed to save PDF."));
  EXPECT_EQ(*fileBytes(path), old);
  EXPECT_THAT(names(), ElementsAre(u"a.pdf"));
  expectEditsOpen();
}

TEST_F(SaveFaultsTest, AFileThatIsLostDuringTheWriteFailsIt) {
  for (const char16_t* target : {u"C:\\docs\\a.pdf", u"C:\\docs\\b.pdf"}) {
    begin();
    standIn().refuseFileCall = [&](FileCall call) {
      if (call == FileCall::Flush) platform::cutOff(path);
      return false;
    };
    EXPECT_FALSE(SaveDocumentTo(0, target));
    EXPECT_THAT(boxTexts(), SizeIs(1));
    EXPECT_EQ(*fileBytes(path), old);
    EXPECT_THAT(names(), ElementsAre(u"a.pdf"));
    expectEditsOpen();
  }
}

TEST_F(SaveFaultsTest, ADocumentThatWasReadFromElsewhereNeedsThatFileToo) {
  ASSERT_TRUE(SaveDocumentTo(0, u"C:\\docs\\b.pdf"));
  mark(0);
  platform::cutOff(path);
  EXPECT_FALSE(save());
  EXPECT_EQ(marksIn(u"C:\\docs\\b.pdf"), 1);
}

TEST_F(SaveFaultsTest, FromTheFirstEditOnNoOtherProgramWritesToTheFile) {
  closeAllDocuments();
  EXPECT_FALSE(platform::isGuarded(path));
  ASSERT_TRUE(open(path));
  EXPECT_FALSE(platform::isGuarded(path));
  mark(0);
  EXPECT_TRUE(platform::isGuarded(path));
  // What was only touched is not changed.
  platform::setWriteTime(path, 132'223'104'000'000'000);
  EXPECT_TRUE(save());
  EXPECT_FALSE(platform::isGuarded(path));
  mark(0);
  EXPECT_TRUE(platform::isGuarded(path));
  closeAllDocuments();
  EXPECT_FALSE(platform::isGuarded(path));
}

TEST_F(SaveFaultsTest, WhatIsKnownOfTheFileMovesWithTheDocument) {
  ASSERT_TRUE(platform::isGuarded(path));
  setViewMode(ViewMode::TwoDocuments);
  EXPECT_EQ(session.panes[0].loadedFrom.path, path);
  EXPECT_EQ(session.active.loadedFrom.path, u"");
  EXPECT_TRUE(platform::isGuarded(path));
  platform::setReadOnly(path, true);
  EXPECT_FALSE(save());
  setViewMode(ViewMode::SinglePage);
  platform::setReadOnly(path, false);
  EXPECT_TRUE(save());
  EXPECT_THAT(names(), ElementsAre(u"a.pdf"));
}

TEST_F(SaveFaultsTest, AFileWithoutAStampIsSavedAllTheSame) {
  closeAllDocuments();
  standIn().refuseFileCall = [](FileCall call) { return call == FileCall::Stamp; };
  ASSERT_TRUE(open(path));
  standIn().refuseFileCall = {};
  mark(0);
  EXPECT_TRUE(save());
  EXPECT_EQ(marksIn(path), 1);
}

// What belongs to the file besides its bytes.

TEST_F(SaveFaultsTest, AttributesCreationTimeAccessListAndStreamsStay) {
  const platform::FileProperties properties{platform::kAttributeHidden, 1234, u"only me"};
  platform::setProperties(path, properties);
  platform::putFile(path + u":Zone.Identifier", "[ZoneTransfer]");
  platform::putFile(path + u":notes", "more");
  ASSERT_TRUE(save());
  EXPECT_TRUE(fileIsNew(path));
  EXPECT_EQ(platform::propertiesOf(path), properties);
  EXPECT_EQ(fileBytes(path + u":Zone.Identifier"), "[ZoneTransfer]");
  EXPECT_EQ(fileBytes(path + u":notes"), "more");
}

// The file with the edits of a failed save goes only when another one has them.
TEST_F(SaveFaultsTest, ThroughoutTheNextSaveSomeFileHasTheEditsOfAFailedOne) {
  for (const bool fails : {true, false}) {
    begin();
    platform::setReadOnly(path, true);
    EXPECT_FALSE(save());
    platform::setReadOnly(path, fails);
    mark(0);
    standIn().refuseFileCall = [&](FileCall call) {
      if (call == FileCall::OpenInLibrary) return false;
      const auto all = names();
      const bool there = std::any_of(all.begin(), all.end(), [&](const std::u16string& name) {
        return marksIn(u"C:\\docs\\" + name) >= 1;
      });
      EXPECT_TRUE(there) << static_cast<int>(call);
      return false;
    };
    EXPECT_EQ(save(), !fails);
    standIn().refuseFileCall = {};
    platform::setReadOnly(path, false);
    EXPECT_EQ(marksIn(fails ? u"C:\\docs\\a.pdf.tmp" : path), 2);
    EXPECT_THAT(names(), SizeIs(fails ? 2u : 1u));
  }
}

TEST_F(SaveFaultsTest, ANextSaveThatRunsOutOfDiskKeepsTheFileOfTheFailedOne) {
  platform::setReadOnly(path, true);
  EXPECT_FALSE(save());
  mark(0);
  standIn().diskFree = 300;
  EXPECT_FALSE(save());
  EXPECT_TRUE(fileIsNew(u"C:\\docs\\a.pdf.tmp"));
  EXPECT_EQ(marksOf(0), 2);
  EXPECT_THAT(names(), ElementsAre(u"a.pdf", u"a.pdf.tmp"));
  platform::setReadOnly(path, false);
}

TEST_F(SaveFaultsTest, AnotherFailedSaveElsewhereLeavesOneTemporaryFile) {
  platform::setReadOnly(path, true);
  EXPECT_FALSE(save());
  const std::u16string other = u"C:\\docs\\b.pdf";
  ASSERT_TRUE(SaveDocumentTo(0, other));
  platform::setReadOnly(other, true);
  mark(0);
  EXPECT_FALSE(save());
  EXPECT_THAT(names(), ElementsAre(u"a.pdf", u"b.pdf", u"b.pdf.tmp"));
  EXPECT_EQ(marksIn(u"C:\\docs\\b.pdf.tmp"), 2);
  platform::setReadOnly(path, false);
  platform::setReadOnly(other, false);
}

TEST_F(SaveFaultsTest, ATemporaryFileThatTheUserMadeTheDocumentStays) {
  const std::u16string chosen = u"C:\\docs\\a.pdf.tmp";
  platform::setReadOnly(path, true);
  EXPECT_FALSE(save());
  ASSERT_TRUE(SaveDocumentTo(0, chosen));
  mark(0);
  platform::setReadOnly(chosen, true);
  EXPECT_FALSE(save());
  platform::setReadOnly(chosen, false);
  EXPECT_TRUE(fileIsNew(chosen));
  EXPECT_TRUE(save());
  EXPECT_EQ(marksIn(chosen), 2);
  platform::setReadOnly(path, false);
}

TEST_F(SaveFaultsTest, AHiddenTemporaryFileIsOverwrittenByTheNextSave) {
  platform::setProperties(path, {platform::kAttributeHidden, 0, u""});
  platform::setReadOnly(path, true);
  EXPECT_FALSE(save());
  EXPECT_FALSE(save());
  EXPECT_THAT(names(), ElementsAre(u"a.pdf", u"a.pdf.tmp"));
}

}  // namespace
}  // namespace quillmere::test
