#include "store/shelf.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/text.h"
#include "support/pdf_builder.h"
#include "support/session_test.h"

namespace quillmere::test {
namespace {

using platform::standIn;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr const char* kMark = "\xEF\xBB\xBF";

class ShelfTest : public SessionTest {
 protected:
  ShelfTest() {
    platform::putFolder(u"C:\\Shelve");
    session.shelveFolder = u"C:\\Shelve\\";
  }

  static void putIndex(const std::string& lines) {
    platform::putFile(u"C:\\Shelve\\_index.txt", kMark + lines);
  }
  static std::string index() {
    return platform::fileBytes(u"C:\\Shelve\\_index.txt").value_or("none");
  }
  static ShelfEntry& put(const std::u16string& path, const std::u16string& name) {
    ShelfEntry& entry = session.shelfIndex[shelfKeyOf(path)];
    entry.dirty = true;
    entry.shelfName = name;
    if (!name.empty()) putPdf(u"Shelve\\" + name + u".pdf", simplePdf(1));
    return entry;
  }
  static std::vector<std::string> paths() {
    std::vector<std::string> found;
    for (const ShelfEntry& entry : session.shelfIndex) {
      found.push_back(platform::toUtf8(entry.path));
    }
    return found;
  }
  // What reading and writing the index again makes of these lines.
  static std::string rewritten(const std::string& lines) {
    ShelfIndex read;
    parseShelfIndex(lines, read);
    const std::string bytes = shelfIndexBytes(read);
    EXPECT_EQ(bytes.substr(0, 3), kMark);
    return bytes.substr(3);
  }
};

// The file.

TEST_F(ShelfTest, AnEntryIsALineOfFiveFields) {
  ShelfEntry& entry = put(u"C:\\Pl\u00E4ne\\A.pdf", u"0123");
  entry.sourceSize = 18'446'744'073'709'551'615u;
  entry.sourceTime = 132'000'000'000'000'000u;
  put(u"C:\\b.pdf", u"");
  EXPECT_TRUE(SaveShelfIndex());
  EXPECT_EQ(index(), std::string(kMark) +
                         "0123\t1\t18446744073709551615\t132000000000000000\tc:\\pl\xC3\xA4ne\\"
                         "a.pdf\r\n-\t1\t0\t0\tc:\\b.pdf\r\n");
}

TEST_F(ShelfTest, WhatWasWrittenIsReadAgainInItsOrder) {
  for (const char16_t* path : {u"C:\\z.pdf", u"C:\\a.pdf", u"C:\\m.pdf"}) put(path, u"n");
  session.shelfIndex.begin()->sourceSize = 12;
  ASSERT_TRUE(SaveShelfIndex());
  const std::string written = index();
  LoadShelfIndex();
  EXPECT_THAT(paths(), ElementsAre("c:\\z.pdf", "c:\\a.pdf", "c:\\m.pdf"));
  EXPECT_EQ(session.shelfIndex.begin()->sourceSize, 12u);
  ASSERT_TRUE(SaveShelfIndex());
  EXPECT_EQ(index(), written);
}

TEST_F(ShelfTest, AnEntryThatHoldsNothingIsNotWritten) {
  put(u"C:\\a.pdf", u"").dirty = false;
  put(u"C:\\b.pdf", u"kept").dirty = false;
  ASSERT_TRUE(SaveShelfIndex());
  EXPECT_EQ(index(), std::string(kMark) + "kept\t0\t0\t0\tc:\\b.pdf\r\n");
}

TEST_F(ShelfTest, AHyphenWithoutDirtIsDropped) {
  EXPECT_EQ(rewritten("-\t0\t1\t2\tc:\\a.pdf\r\n"), "");
}

TEST_F(ShelfTest, AnyWordThatDoesNotBeginWithAZeroIsDirty) {
  EXPECT_EQ(rewritten("-\tno\t1\t2\tc:\\a.pdf\r\nn\t0x\t1\t2\tc:\\b.pdf\r\n"),
            "-\t1\t1\t2\tc:\\a.pdf\r\nn\t0\t1\t2\tc:\\b.pdf\r\n");
}

TEST_F(ShelfTest, RunsOfTabsAreOneSeparatorAndFurtherFieldsAreIgnored) {
  EXPECT_EQ(rewritten("\tn\t\t1\t\t\t3\t4\tC:\\A.pdf\tmore\n"), "n\t1\t3\t4\tc:\\a.pdf\r\n");
}

TEST_F(ShelfTest, ALineWithoutAFifthFieldIsSkipped) {
  EXPECT_EQ(rewritten("n\t1\t3\tc:\\a.pdf\r\n\r\nn\t1\t3\t4\t\r\nn\t1\t3\t4\tc:\\b.pdf"),
            "n\t1\t3\t4\tc:\\b.pdf\r\n");
}

TEST_F(ShelfTest, NumbersThatAreNoneCountAsUnknown) {
  EXPECT_EQ(rewritten("n\t1\tx\t99999999999999999999\tc:\\a.pdf\r\n"),
            "n\t1\t0\t18446744073709551615\tc:\\a.pdf\r\n");
}

TEST_F(ShelfTest, ALaterLineForTheSameDocumentCounts) {
  EXPECT_EQ(rewritten("n\t1\t3\t4\tc:\\a.pdf\nm\t1\t0\t0\tc:\\b.pdf\no\t1\t5\t6\tC:\\A.PDF\n"),
            "o\t1\t5\t6\tc:\\a.pdf\r\nm\t1\t0\t0\tc:\\b.pdf\r\n");
}

TEST_F(ShelfTest, ALineThatIsTooLongIsSkippedAndTheNextOneRead) {
  const std::string start = "n\t1\t3\t4\tc:\\";
  const std::string fits = start + std::string(2046 - start.size(), 'x');
  EXPECT_EQ(rewritten(fits + "\n"), fits + "\r\n");
  EXPECT_EQ(rewritten(fits + "x\nm\t1\t0\t0\tc:\\b.pdf\n"), "m\t1\t0\t0\tc:\\b.pdf\r\n");
}

TEST_F(ShelfTest, AMissingIndexEmptiesTheShelf) {
  put(u"C:\\a.pdf", u"n");
  LoadShelfIndex();
  EXPECT_TRUE(session.shelfIndex.empty());
}

TEST_F(ShelfTest, WithoutADataFolderNothingIsReadOrWritten) {
  put(u"C:\\a.pdf", u"n");
  session.shelveFolder.clear();
  EXPECT_EQ(ShelfIndexPath(), u"");
  EXPECT_EQ(ShelfFilePath(u"n"), u"");
  EXPECT_FALSE(SaveShelfIndex());
  ClearShelf();
  EXPECT_EQ(session.shelfIndex.size(), 1u);
}

TEST_F(ShelfTest, TheOldIndexStaysWhereverWritingTheNewOneFails) {
  using platform::FileCall;
  for (const FileCall call :
       {FileCall::Start, FileCall::Write, FileCall::Flush, FileCall::Close, FileCall::Replace}) {
    putIndex("n\t1\t3\t4\tc:\\a.pdf\r\n");
    put(u"C:\\b.pdf", u"m");
    standIn().refuseFileCall = [call](FileCall asked) { return asked == call; };
    EXPECT_FALSE(SaveShelfIndex()) << static_cast<int>(call);
    EXPECT_EQ(index(), std::string(kMark) + "n\t1\t3\t4\tc:\\a.pdf\r\n");
    EXPECT_THAT(platform::namesIn(u"C:\\Shelve"), UnorderedElementsAre(u"_index.txt", u"m.pdf"));
  }
}

TEST_F(ShelfTest, AFullDiskKeepsTheOldIndex) {
  putIndex("n\t1\t3\t4\tc:\\a.pdf\r\n");
  put(u"C:\\b.pdf", u"m");
  standIn().diskFree = 5;
  EXPECT_FALSE(SaveShelfIndex());
  EXPECT_EQ(index(), std::string(kMark) + "n\t1\t3\t4\tc:\\a.pdf\r\n");
}

TEST_F(ShelfTest, AnIndexThatCouldNotBeReadIsNeverWrittenOver) {
  putIndex("n\t1\t3\t4\tc:\\a.pdf\r\n");
  putPdf(u"Shelve\\n.pdf", simplePdf(1));
  platform::setOtherUse(u"C:\\Shelve\\_index.txt", platform::OtherUse::Exclusive);
  LoadShelfIndex();
  put(u"C:\\b.pdf", u"m");
  EXPECT_FALSE(SaveShelfIndex());
  ClearShelf();
  EXPECT_TRUE(platform::fileExists(u"C:\\Shelve\\n.pdf"));

  platform::setOtherUse(u"C:\\Shelve\\_index.txt", platform::OtherUse::Nobody);
  EXPECT_TRUE(SaveShelfIndex());
  EXPECT_EQ(index(), std::string(kMark) + "m\t1\t0\t0\tc:\\b.pdf\r\nn\t1\t3\t4\tc:\\a.pdf\r\n");
}

// Other processes.

TEST_F(ShelfTest, AViewerAndAWindowBesideAnotherHaveNoShelf) {
  putIndex("n\t1\t3\t4\tc:\\a.pdf\r\n");
  putPdf(u"Shelve\\n.pdf", simplePdf(1));
  for (const bool viewer : {true, false}) {
    session.viewerRole = viewer;
    session.ownsPrimaryName = viewer;
    LoadShelfIndex();
    EXPECT_TRUE(session.shelfIndex.empty());
    EXPECT_FALSE(SaveShelfIndex());
    DeleteShelfFile(u"n");
    ClearShelf();
    EXPECT_EQ(index(), std::string(kMark) + "n\t1\t3\t4\tc:\\a.pdf\r\n");
    EXPECT_TRUE(platform::fileExists(u"C:\\Shelve\\n.pdf"));
  }
}

// Entries and copies.

TEST_F(ShelfTest, NamesAreFreshGuids) {
  const std::u16string name = NewShelfName();
  EXPECT_EQ(name.size(), 36u);
  EXPECT_NE(NewShelfName(), name);
  standIn().failGuids = true;
  EXPECT_EQ(NewShelfName(), u"");
}

TEST_F(ShelfTest, ANameFromADamagedIndexLeadsToNoFileElsewhere) {
  putPdf(u"mine.pdf", simplePdf(1));
  put(u"C:\\a.pdf", u"").shelfName = u"..\\mine";
  EXPECT_EQ(ShelfFilePath(u"..\\mine"), u"");
  DropShelfEntry(u"C:\\a.pdf");
  EXPECT_TRUE(platform::fileExists(u"C:\\mine.pdf"));
  EXPECT_TRUE(session.shelfIndex.empty());
}

TEST_F(ShelfTest, ADocumentIsFoundUnderAnySpellingOfItsPath) {
  standIn().workingFolder = u"C:\\Users";
  put(u"C:\\Folder\\A.pdf", u"n");
  for (const char16_t* path : {u"c:\\folder\\a.PDF", u"C:/Folder/a.pdf",
                               u"C:\\Folder\\.\\sub\\..\\a.pdf", u"..\\Folder\\a.pdf"}) {
    EXPECT_TRUE(IsShelved(path)) << platform::toUtf8(path);
  }
  EXPECT_FALSE(IsShelved(u"C:\\Other\\A.pdf"));
  put(u"C:\\Other\\A.pdf", u"m");
  EXPECT_EQ(session.shelfIndex.size(), 2u);
}

TEST_F(ShelfTest, AnEntryWithoutACopyCountsOnlyWhileItsDocumentIsOpen) {
  put(u"C:\\a.pdf", u"");
  EXPECT_FALSE(IsShelved(u"C:\\a.pdf"));
  openInActive(simplePdf(1), u"C:\\a.pdf");
  EXPECT_TRUE(IsShelved(u"C:\\a.pdf"));
  EXPECT_TRUE(ActiveIsShelved());
  session.active.path.clear();
  EXPECT_FALSE(ActiveIsShelved());
}

TEST_F(ShelfTest, DroppingAnEntryForgetsItEverywhere) {
  put(u"C:\\a.pdf", u"n");
  put(u"C:\\b.pdf", u"m");
  DropShelfEntry(u"C:\\A.PDF");
  DropShelfEntry(u"C:\\A.PDF");
  EXPECT_THAT(paths(), ElementsAre("c:\\b.pdf"));
  EXPECT_EQ(index(), std::string(kMark) + "m\t1\t0\t0\tc:\\b.pdf\r\n");
  EXPECT_THAT(platform::namesIn(u"C:\\Shelve"), UnorderedElementsAre(u"_index.txt", u"m.pdf"));
}

TEST_F(ShelfTest, ACopyThatTheFileHasCaughtUpWithGoesAndItsEntryStays) {
  put(u"C:\\a.pdf", u"n");
  DropShelfCopy(u"C:\\a.pdf");
  EXPECT_EQ(index(), std::string(kMark) + "-\t1\t0\t0\tc:\\a.pdf\r\n");
  EXPECT_FALSE(platform::fileExists(u"C:\\Shelve\\n.pdf"));
}

TEST_F(ShelfTest, ACopyThatIsOpenIsDeletedOnceItIsClosed) {
  put(u"C:\\a.pdf", u"n");
  platform::setOtherUse(u"C:\\Shelve\\n.pdf", platform::OtherUse::Exclusive);
  DropShelfEntry(u"C:\\a.pdf");
  deleteLeftShelfFiles();
  EXPECT_TRUE(platform::fileExists(u"C:\\Shelve\\n.pdf"));
  platform::setOtherUse(u"C:\\Shelve\\n.pdf", platform::OtherUse::Nobody);
  deleteLeftShelfFiles();
  EXPECT_FALSE(platform::fileExists(u"C:\\Shelve\\n.pdf"));
}

TEST_F(ShelfTest, ClearingTakesEveryCopyAndTheIndexButNoFolders) {
  put(u"C:\\a.pdf", u"n");
  ASSERT_TRUE(SaveShelfIndex());
  putPdf(u"Shelve\\unknown.PDF", simplePdf(1));
  platform::putFile(u"C:\\Shelve\\~quillmere1.tmp", "left by a process that ended");
  platform::putFile(u"C:\\Shelve\\notes.txt", "of somebody else");
  putPdf(u"Shelve\\sub\\kept.pdf", simplePdf(1));
  ClearShelf();
  EXPECT_TRUE(session.shelfIndex.empty());
  EXPECT_THAT(platform::namesIn(u"C:\\Shelve"), UnorderedElementsAre(u"notes.txt", u"sub"));
  EXPECT_TRUE(platform::fileExists(u"C:\\Shelve\\sub\\kept.pdf"));
}

TEST_F(ShelfTest, ClearingAnEmptyShelfDeletesWhatNoEntryKnew) {
  putPdf(u"Shelve\\unknown.pdf", simplePdf(1));
  platform::putFile(u"C:\\Shelve\\_index.txt", "");
  ClearShelf();
  EXPECT_THAT(platform::namesIn(u"C:\\Shelve"), IsEmpty());
}

}  // namespace
}  // namespace quillmere::test
