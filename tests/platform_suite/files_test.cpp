#include "platform/files.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "platform_suite/suite_side.h"

namespace quillmere::platform {
namespace {

using FilesSuite = PlatformSuite;

constexpr std::uint64_t kNoLimit = 1u << 20;
constexpr std::uint64_t kTicksPerSecond = 10'000'000;
// 1 January 2020 in ticks since 1601.
constexpr std::uint64_t kYear2020 = 132'223'104'000'000'000;

bool write(const std::u16string& path, const std::string& bytes) {
  return writeFile(path, bytes.data(), bytes.size());
}

bool create(const std::u16string& path, const std::string& bytes) {
  return createNewFile(path, bytes.data(), bytes.size());
}

std::string textOf(const std::optional<std::vector<std::uint8_t>>& bytes) {
  return bytes ? std::string(bytes->begin(), bytes->end()) : "(nothing)";
}

TEST_F(FilesSuite, APathIsCompletedFromTheFolderThatTheProcessWorksIn) {
  const std::u16string drive = folder.substr(0, 2);
  workIn(folder);
  EXPECT_EQ(absolutePath(u"a b.pdf"), folder + u"a b.pdf");
  EXPECT_EQ(absolutePath(u"sub\\a.pdf"), folder + u"sub\\a.pdf");
  EXPECT_EQ(absolutePath(u"sub/./x/../a.pdf"), folder + u"sub\\a.pdf");
  EXPECT_EQ(absolutePath(u".\\a.pdf"), folder + u"a.pdf");
  EXPECT_EQ(absolutePath(u"\\a\\b.pdf"), drive + u"\\a\\b.pdf");
  EXPECT_EQ(absolutePath(drive + u"a.pdf"), folder + u"a.pdf");
  EXPECT_EQ(absolutePath(u"--viewer"), folder + u"--viewer");
  const std::size_t parent = folder.rfind(u'\\', folder.size() - 2);
  EXPECT_EQ(absolutePath(u"..\\a.pdf"), folder.substr(0, parent + 1) + u"a.pdf");
}

TEST_F(FilesSuite, AFullPathIsCompleteAlready) {
  workIn(folder);
  for (const std::u16string path :
       {u"C:\\a.pdf", u"c:\\A b\\\u00DC.pdf", u"\\\\server\\share\\a.pdf", u"Q:\\a.pdf"}) {
    EXPECT_EQ(absolutePath(path), path);
  }
  EXPECT_EQ(absolutePath(u"C:/a/../b.pdf"), u"C:\\b.pdf");
  EXPECT_EQ(absolutePath(u"Q:a.pdf"), u"Q:\\a.pdf");
  EXPECT_EQ(absolutePath(u""), u"");
}

TEST_F(FilesSuite, ACompletedPathCanBeLongerThanAnyFilesMayBe) {
  workIn(folder);
  const std::u16string name(255, u'x');
  EXPECT_EQ(absolutePath(name), folder + name);
  EXPECT_EQ(absolutePath(name + u"\\" + name), folder + name + u"\\" + name);
}

using Names = std::vector<std::u16string>;

// The listed names, sorted, since the system's order may vary.
std::optional<Names> listed(const std::u16string& folder) {
  std::optional<Names> names = listFiles(folder, u".pdf");
  if (names) std::sort(names->begin(), names->end());
  return names;
}

// A path in `folder` that is `units` long.
std::u16string pathOfLength(const std::u16string& folder, std::size_t units) {
  return folder + std::u16string(units - folder.size() - 4, u'n') + u".pdf";
}

TEST_F(FilesSuite, WrittenBytesAreReadBackWithEveryValue) {
  std::string all;
  for (int n = 0; n < 256; ++n) all += static_cast<char>(n);
  ASSERT_TRUE(write(in(u"all.bin"), all));
  EXPECT_EQ(textOf(readFileShared(in(u"all.bin"), kNoLimit)), all);
  EXPECT_EQ(bytesOf(in(u"all.bin")), all);
}

TEST_F(FilesSuite, WritingReplacesALongerFileWhole) {
  putBytes(in(u"a.txt"), "something long");
  ASSERT_TRUE(write(in(u"a.txt"), "short"));
  EXPECT_EQ(bytesOf(in(u"a.txt")), "short");
}

TEST_F(FilesSuite, AnEmptyFileCanBeWrittenAndHasSizeZero) {
  ASSERT_TRUE(writeFile(in(u"empty"), nullptr, 0));
  ASSERT_TRUE(fileStamp(in(u"empty")));
  EXPECT_EQ(fileStamp(in(u"empty"))->size, 0u);
}

TEST_F(FilesSuite, WritingIntoAMissingFolderFails) {
  EXPECT_FALSE(write(in(u"none\\a.txt"), "x"));
}

TEST_F(FilesSuite, WritingOverAFolderFails) {
  ASSERT_TRUE(createFolder(in(u"sub")));
  EXPECT_FALSE(write(in(u"sub"), "x"));
}

TEST_F(FilesSuite, WritingOverAReadOnlyFileFailsAndKeepsIt) {
  putBytes(in(u"a.txt"), "kept");
  ASSERT_TRUE(setReadOnly(in(u"a.txt"), true));
  EXPECT_FALSE(write(in(u"a.txt"), "new"));
  EXPECT_EQ(bytesOf(in(u"a.txt")), "kept");
  ASSERT_TRUE(setReadOnly(in(u"a.txt"), false));
  EXPECT_TRUE(write(in(u"a.txt"), "new"));
}

TEST_F(FilesSuite, WritingOverAFileInUseFails) {
  putBytes(in(u"a.txt"), "kept");
  {
    const FileLock lock(in(u"a.txt"), LockKind::Exclusive);
    EXPECT_FALSE(write(in(u"a.txt"), "new"));
  }
  EXPECT_EQ(bytesOf(in(u"a.txt")), "kept");
}

TEST_F(FilesSuite, NamesAreFoundIgnoringCase) {
  putBytes(in(u"Mixed.PDF"), "x");
  EXPECT_TRUE(fileExists(in(u"mIXED.pdf")));
  EXPECT_EQ(textOf(readFileShared(in(u"MIXED.PDF"), kNoLimit)), "x");
  EXPECT_TRUE(write(in(u"mixed.pdf"), "y"));
  EXPECT_EQ(bytesOf(in(u"Mixed.PDF")), "y");
}

TEST_F(FilesSuite, TheErrorTellsAMissingFileFromAMissingFolder) {
  EXPECT_EQ(queryAttributes(in(u"none.pdf")).error, kErrorFileNotFound);
  EXPECT_EQ(queryAttributes(in(u"none.pdf")).attributes, kInvalidAttributes);
  EXPECT_EQ(queryAttributes(in(u"none\\a.pdf")).error, kErrorPathNotFound);
  EXPECT_FALSE(fileExists(in(u"none.pdf")));
}

TEST_F(FilesSuite, AnEmptyPathNamesNothing) {
  EXPECT_EQ(queryAttributes(u"").attributes, kInvalidAttributes);
  EXPECT_FALSE(fileExists(u""));
  EXPECT_FALSE(fileStamp(u""));
  EXPECT_FALSE(write(u"", "x"));
}

TEST_F(FilesSuite, AMissingDriveIsMissing) {
  const std::uint32_t error = queryAttributes(u"Q:\\a.pdf").error;
  // Wine reports a missing file instead of a missing path.
  EXPECT_TRUE(error == kErrorPathNotFound || error == kErrorFileNotFound) << error;
}

TEST_F(FilesSuite, NamesWithForbiddenCharactersFail) {
  for (const char16_t unit : std::u16string(u"<>|?*\"")) {
    const std::u16string path = in(std::u16string(u"a") + unit + u"b.pdf");
    EXPECT_FALSE(fileExists(path)) << static_cast<char>(unit);
    EXPECT_FALSE(write(path, "x")) << static_cast<char>(unit);
  }
}

TEST_F(FilesSuite, FoldersAndFilesAreToldApartByAttributes) {
  ASSERT_TRUE(createFolder(in(u"sub")));
  putBytes(in(u"a.txt"), "x");
  EXPECT_TRUE(queryAttributes(in(u"sub")).attributes & kAttributeFolder);
  EXPECT_FALSE(queryAttributes(in(u"a.txt")).attributes & kAttributeFolder);
  EXPECT_TRUE(fileExists(in(u"sub")));
  EXPECT_TRUE(fileExists(in(u"sub\\")));
}

TEST_F(FilesSuite, ReadOnlyShowsInTheAttributes) {
  putBytes(in(u"a.txt"), "x");
  EXPECT_FALSE(queryAttributes(in(u"a.txt")).attributes & kAttributeReadOnly);
  ASSERT_TRUE(setReadOnly(in(u"a.txt"), true));
  EXPECT_TRUE(queryAttributes(in(u"a.txt")).attributes & kAttributeReadOnly);
  EXPECT_EQ(textOf(readFileShared(in(u"a.txt"), kNoLimit)), "x");
  ASSERT_TRUE(setReadOnly(in(u"a.txt"), false));
  EXPECT_FALSE(queryAttributes(in(u"a.txt")).attributes & kAttributeReadOnly);
  EXPECT_FALSE(setReadOnly(in(u"none.txt"), true));
}

TEST_F(FilesSuite, TheStampTellsSizeAndTimeOfWriting) {
  putBytes(in(u"a.txt"), "12345");
  const std::optional<FileStamp> stamp = fileStamp(in(u"a.txt"));
  ASSERT_TRUE(stamp);
  EXPECT_EQ(stamp->size, 5u);
  EXPECT_GT(stamp->writeTime, kYear2020);
  ASSERT_TRUE(write(in(u"b.txt"), "1234567"));
  const std::optional<FileStamp> later = fileStamp(in(u"b.txt"));
  ASSERT_TRUE(later);
  EXPECT_EQ(later->size, 7u);
  EXPECT_GE(later->writeTime + 2 * kTicksPerSecond, stamp->writeTime);
  EXPECT_LT(later->writeTime, stamp->writeTime + 600 * kTicksPerSecond);
  EXPECT_FALSE(fileStamp(in(u"none.txt")));
}

TEST_F(FilesSuite, TheStampStaysWhenTheFileIsOnlyRead) {
  putBytes(in(u"a.txt"), "12345");
  const std::uint64_t before = fileStamp(in(u"a.txt"))->writeTime;
  readFileShared(in(u"a.txt"), kNoLimit);
  readFileHead(in(u"a.txt"), 2);
  EXPECT_EQ(fileStamp(in(u"a.txt"))->writeTime, before);
}

TEST_F(FilesSuite, ARenamedFileKeepsItsStamp) {
  putBytes(in(u"a.txt"), "12345");
  const FileStamp before = *fileStamp(in(u"a.txt"));
  ASSERT_TRUE(replaceFile(in(u"a.txt"), in(u"b.txt")));
  const std::optional<FileStamp> after = fileStamp(in(u"b.txt"));
  ASSERT_TRUE(after);
  EXPECT_EQ(after->writeTime, before.writeTime);
  EXPECT_EQ(after->size, before.size);
}

TEST_F(FilesSuite, RenamingReplacesNothing) {
  putBytes(in(u"a.lst"), "a");
  putBytes(in(u"b.lst"), "b");
  EXPECT_FALSE(renameFile(in(u"a.lst"), in(u"B.lst")));
  EXPECT_EQ(bytesOf(in(u"a.lst")), "a");
  EXPECT_EQ(bytesOf(in(u"b.lst")), "b");
  EXPECT_FALSE(renameFile(in(u"none.lst"), in(u"c.lst")));
  EXPECT_FALSE(renameFile(in(u"a.lst"), in(u"none\\c.lst")));
  EXPECT_TRUE(renameFile(in(u"a.lst"), in(u"c.lst")));
  EXPECT_FALSE(fileExists(in(u"a.lst")));
  EXPECT_EQ(bytesOf(in(u"c.lst")), "a");
}

TEST_F(FilesSuite, AFileCanBeRenamedToOtherLetterCase) {
  putBytes(in(u"list.lst"), "a");
  EXPECT_TRUE(renameFile(in(u"list.lst"), in(u"LIST.lst")));
  EXPECT_EQ(listFiles(folder, u".lst"), (std::optional<Names>{{u"LIST.lst"}}));
}

TEST_F(FilesSuite, AFileHeldExclusivelyIsNotRenamed) {
  putBytes(in(u"a.lst"), "a");
  const FileLock lock(in(u"a.lst"), LockKind::Exclusive);
  EXPECT_FALSE(renameFile(in(u"a.lst"), in(u"b.lst")));
  EXPECT_TRUE(fileExists(in(u"a.lst")));
}

TEST_F(FilesSuite, AbsolutePathsAreCompletedByTheCurrentFolderAlone) {
  EXPECT_EQ(absolutePath(u"C:\\Texts\\a.pdf"), u"C:\\Texts\\a.pdf");
  EXPECT_EQ(absolutePath(u"C:/Texts/./b/../a.pdf"), u"C:\\Texts\\a.pdf");
  EXPECT_EQ(absolutePath(u"\\\\server\\share\\x\\..\\a.pdf"), u"\\\\server\\share\\a.pdf");
  EXPECT_EQ(absolutePath(u"//server/share/x/../a.pdf"), u"\\\\server\\share\\a.pdf");
  EXPECT_EQ(absolutePath(u""), u"");
  const std::u16string completed = absolutePath(u"a.pdf");
  ASSERT_GT(completed.size(), 8u);
  EXPECT_EQ(completed.substr(1, 2), u":\\");
  EXPECT_TRUE(completed.ends_with(u"\\a.pdf"));
  EXPECT_EQ(absolutePath(u"sub\\..\\a.pdf"), completed);
  EXPECT_EQ(absolutePath(u"\\a.pdf"), completed.substr(0, 2) + u"\\a.pdf");
}

TEST_F(FilesSuite, AnAbsolutePathMayBeLongerThanAnyFileName) {
  const std::u16string longPath = u"C:\\" + std::u16string(400, u'x');
  EXPECT_EQ(absolutePath(longPath), longPath);
}

TEST_F(FilesSuite, ASharesNameTellsANetworkPath) {
  EXPECT_TRUE(isNetworkPath(u"\\\\server\\share\\a.pdf"));
  EXPECT_TRUE(isNetworkPath(u"//server/share/a.pdf"));
  EXPECT_TRUE(isNetworkPath(u"\\/server\\share\\a.pdf"));
  EXPECT_TRUE(isNetworkPath(u"/\\server\\share\\a.pdf"));
  EXPECT_FALSE(isNetworkPath(u"/a.pdf"));
  EXPECT_FALSE(isNetworkPath(u"/"));
  EXPECT_FALSE(isNetworkPath(in(u"a.pdf")));
  EXPECT_FALSE(isNetworkPath(u""));
  EXPECT_FALSE(isNetworkPath(u"a.pdf"));
}

TEST_F(FilesSuite, ADriveLetterWithoutADriveIsAbsent) {
  EXPECT_TRUE(driveIsAbsent(u"Q:\\a.pdf"));
  EXPECT_TRUE(driveIsAbsent(u"q:a.pdf"));
  EXPECT_FALSE(driveIsAbsent(in(u"none.pdf")));
  EXPECT_FALSE(driveIsAbsent(u"\\\\server\\share\\a.pdf"));
  EXPECT_FALSE(driveIsAbsent(u""));
}

TEST_F(FilesSuite, ReadingWholeRefusesMissingAndTooLargeFilesAndFolders) {
  putBytes(in(u"empty"), "");
  putBytes(in(u"five"), "12345");
  ASSERT_TRUE(createFolder(in(u"sub")));
  EXPECT_EQ(textOf(readFileShared(in(u"empty"), kNoLimit)), "");
  EXPECT_FALSE(readFileShared(in(u"none"), kNoLimit));
  EXPECT_FALSE(readFileShared(in(u"sub"), kNoLimit));
  EXPECT_FALSE(readFileShared(in(u"five"), 4));
  EXPECT_EQ(textOf(readFileShared(in(u"five"), 5)), "12345");
}

TEST_F(FilesSuite, ReadingWholeRefusesAFileHeldExclusively) {
  putBytes(in(u"a.pdf"), "x");
  {
    const FileLock lock(in(u"a.pdf"), LockKind::Exclusive);
    EXPECT_FALSE(readFileShared(in(u"a.pdf"), kNoLimit));
    EXPECT_TRUE(fileExists(in(u"a.pdf")));
  }
  EXPECT_TRUE(readFileShared(in(u"a.pdf"), kNoLimit));
}

TEST_F(FilesSuite, ReadingWholeWorksWhileAnotherWriterSharesTheFile) {
  putBytes(in(u"a.pdf"), "x");
  const FileLock lock(in(u"a.pdf"), LockKind::SharedWriter);
  EXPECT_EQ(textOf(readFileShared(in(u"a.pdf"), kNoLimit)), "x");
}

TEST_F(FilesSuite, ReadingTheHeadCutsAndTakesEmptyFiles) {
  putBytes(in(u"five"), "12345");
  putBytes(in(u"empty"), "");
  EXPECT_EQ(textOf(readFileHead(in(u"five"), 3)), "123");
  EXPECT_EQ(textOf(readFileHead(in(u"five"), 5)), "12345");
  EXPECT_EQ(textOf(readFileHead(in(u"five"), 100)), "12345");
  EXPECT_EQ(textOf(readFileHead(in(u"empty"), 100)), "");
  EXPECT_FALSE(readFileHead(in(u"none"), 100));
}

TEST_F(FilesSuite, ReadingTheHeadRefusesAFileThatIsBeingWritten) {
  putBytes(in(u"a.txt"), "x");
  const FileLock lock(in(u"a.txt"), LockKind::SharedWriter);
  EXPECT_FALSE(readFileHead(in(u"a.txt"), 100));
}

TEST_F(FilesSuite, ANewFileIsMadeOnlyWhereThereIsNone) {
  ASSERT_TRUE(create(in(u"a.txt"), "first"));
  EXPECT_FALSE(create(in(u"A.TXT"), "second"));
  EXPECT_EQ(bytesOf(in(u"a.txt")), "first");
  ASSERT_TRUE(createFolder(in(u"sub")));
  EXPECT_FALSE(create(in(u"sub"), "x"));
  EXPECT_FALSE(create(in(u"none\\a.txt"), "x"));
}

TEST_F(FilesSuite, DeletingTakesOneFileAndNothingElse) {
  putBytes(in(u"a.txt"), "x");
  putBytes(in(u"ab.txt"), "x");
  ASSERT_TRUE(createFolder(in(u"sub")));
  EXPECT_TRUE(deleteFile(in(u"a.txt")));
  EXPECT_FALSE(fileExists(in(u"a.txt")));
  EXPECT_TRUE(fileExists(in(u"ab.txt")));
  EXPECT_FALSE(deleteFile(in(u"a.txt")));
  EXPECT_FALSE(deleteFile(in(u"sub")));
  EXPECT_TRUE(fileExists(in(u"sub")));
}

TEST_F(FilesSuite, AReadOnlyFileIsNotDeleted) {
  putBytes(in(u"a.txt"), "x");
  ASSERT_TRUE(setReadOnly(in(u"a.txt"), true));
  EXPECT_FALSE(deleteFile(in(u"a.txt")));
  EXPECT_TRUE(fileExists(in(u"a.txt")));
}

TEST_F(FilesSuite, AFileInUseIsNotDeleted) {
  putBytes(in(u"a.txt"), "x");
  {
    const FileLock lock(in(u"a.txt"), LockKind::Exclusive);
    EXPECT_FALSE(deleteFile(in(u"a.txt")));
  }
  EXPECT_TRUE(deleteFile(in(u"a.txt")));
}

TEST_F(FilesSuite, ReplacingPutsTheSourceInTheTargetsPlace) {
  putBytes(in(u"new.tmp"), "new");
  putBytes(in(u"doc.pdf"), "old and longer");
  ASSERT_TRUE(replaceFile(in(u"new.tmp"), in(u"doc.pdf")));
  EXPECT_EQ(bytesOf(in(u"doc.pdf")), "new");
  EXPECT_FALSE(fileExists(in(u"new.tmp")));
}

TEST_F(FilesSuite, ReplacingWithoutATargetRenames) {
  putBytes(in(u"new.tmp"), "new");
  ASSERT_TRUE(replaceFile(in(u"new.tmp"), in(u"doc.pdf")));
  EXPECT_EQ(bytesOf(in(u"doc.pdf")), "new");
  EXPECT_FALSE(fileExists(in(u"new.tmp")));
}

TEST_F(FilesSuite, AFailedReplaceLeavesBothFiles) {
  putBytes(in(u"new.tmp"), "new");
  putBytes(in(u"doc.pdf"), "old");
  {
    const FileLock lock(in(u"doc.pdf"), LockKind::Exclusive);
    EXPECT_FALSE(replaceFile(in(u"new.tmp"), in(u"doc.pdf")));
  }
  {
    const FileLock lock(in(u"new.tmp"), LockKind::Exclusive);
    EXPECT_FALSE(replaceFile(in(u"new.tmp"), in(u"doc.pdf")));
  }
  EXPECT_FALSE(replaceFile(in(u"none.tmp"), in(u"doc.pdf")));
  EXPECT_FALSE(replaceFile(in(u"new.tmp"), in(u"none\\doc.pdf")));
  EXPECT_EQ(bytesOf(in(u"new.tmp")), "new");
  EXPECT_EQ(bytesOf(in(u"doc.pdf")), "old");
}

TEST_F(FilesSuite, AReadOnlyTargetIsNotReplaced) {
  putBytes(in(u"new.tmp"), "new");
  putBytes(in(u"doc.pdf"), "old");
  ASSERT_TRUE(setReadOnly(in(u"doc.pdf"), true));
  EXPECT_FALSE(replaceFile(in(u"new.tmp"), in(u"doc.pdf")));
  EXPECT_EQ(bytesOf(in(u"doc.pdf")), "old");
  EXPECT_EQ(bytesOf(in(u"new.tmp")), "new");
}

TEST_F(FilesSuite, AFolderIsNotReplacedByAFile) {
  putBytes(in(u"new.tmp"), "new");
  ASSERT_TRUE(createFolder(in(u"doc.pdf")));
  EXPECT_FALSE(replaceFile(in(u"new.tmp"), in(u"doc.pdf")));
  EXPECT_EQ(bytesOf(in(u"new.tmp")), "new");
}

TEST_F(FilesSuite, MakingAFolderIsTrueWhenItIsThereAfterwards) {
  EXPECT_TRUE(createFolder(in(u"sub")));
  EXPECT_TRUE(createFolder(in(u"sub")));
  EXPECT_TRUE(createFolder(in(u"SUB\\deeper\\")));
  EXPECT_TRUE(fileExists(in(u"sub\\deeper")));
  EXPECT_FALSE(createFolder(in(u"none\\deeper")));
  putBytes(in(u"file"), "x");
  EXPECT_FALSE(createFolder(in(u"file")));
}

TEST_F(FilesSuite, UnusualNamesWorkWhole) {
  const std::u16string names[] = {
      u"two  blanks and more.pdf",
      u"it's (1) [draft] {x}.pdf",
      u"a,b;c=d+e&f%20~!@#$^`.pdf",
      u"Grüße – č.pdf",
      u"отчёт №5.pdf",
      u"報告書.pdf",
      u"pair \U0001F4C4.pdf",
      u"two..dots...pdf",
  };
  for (const std::u16string& name : names) {
    SCOPED_TRACE(testing::PrintToString(name));
    ASSERT_TRUE(write(in(name), "x"));
    EXPECT_TRUE(fileExists(in(name)));
    EXPECT_EQ(textOf(readFileShared(in(name), kNoLimit)), "x");
    ASSERT_TRUE(replaceFile(in(name), in(name + u".new")));
    EXPECT_TRUE(deleteFile(in(name + u".new")));
  }
}

TEST_F(FilesSuite, BlanksAndDotsBehindANameAreDropped) {
  ASSERT_TRUE(write(in(u"a.pdf"), "x"));
  EXPECT_TRUE(fileExists(in(u"a.pdf ")));
  EXPECT_TRUE(fileExists(in(u"a.pdf. .")));
}

TEST_F(FilesSuite, ForwardSlashesAndDotFoldersAreUnderstood) {
  ASSERT_TRUE(createFolder(in(u"sub")));
  ASSERT_TRUE(write(in(u"sub/a.pdf"), "x"));
  EXPECT_TRUE(fileExists(in(u"sub\\a.pdf")));
  EXPECT_TRUE(fileExists(in(u"sub\\..\\sub\\.\\a.pdf")));
}

TEST_F(FilesSuite, APathOf259UnitsWorks) {
  const std::u16string path = pathOfLength(folder, 259);
  ASSERT_TRUE(write(path, "x"));
  EXPECT_TRUE(fileExists(path));
  EXPECT_EQ(textOf(readFileShared(path, kNoLimit)), "x");
  EXPECT_TRUE(deleteFile(path));
}

TEST_F(FilesSuite, AnAlternateStreamBelongsToItsFile) {
  putBytes(in(u"a.pdf"), "body");
  const std::u16string stream = in(u"a.pdf:Zone.Identifier");
  EXPECT_FALSE(readFileHead(stream, 100));
  ASSERT_TRUE(write(stream, "[ZoneTransfer]"));
  EXPECT_EQ(textOf(readFileHead(stream, 100)), "[ZoneTransfer]");
  EXPECT_EQ(textOf(readFileShared(in(u"a.pdf"), kNoLimit)), "body");
  EXPECT_TRUE(deleteFile(stream));
  EXPECT_FALSE(readFileHead(stream, 100));
  EXPECT_TRUE(fileExists(in(u"a.pdf")));
}

TEST_F(FilesSuite, AListHoldsTheFilesWithTheExtension) {
  const Names wanted = {u".pdf", u"A.PDF", u"b.Pdf", u"c.txt.pdf"};
  for (const std::u16string& name : wanted) putBytes(in(name), "x");
  for (const char16_t* name :
       {u"x.pdfx", u"a long name.pdfx", u"x.pdf.bak", u"x.apdf", u"xpdf", u"x.pd", u"pdf"}) {
    putBytes(in(name), "x");
  }
  EXPECT_EQ(listed(in(u"")), wanted);
}

TEST_F(FilesSuite, AListLeavesFoldersOut) {
  ASSERT_TRUE(createFolder(in(u"folder.pdf")));
  putBytes(in(u"folder.pdf\\inside.pdf"), "x");
  EXPECT_EQ(listed(in(u"")), Names());
  EXPECT_EQ(listed(in(u"FOLDER.pdf\\")), Names{u"inside.pdf"});
}

TEST_F(FilesSuite, AFolderWithoutSuchFilesHasAnEmptyList) {
  EXPECT_EQ(listed(in(u"")), Names());
  putBytes(in(u"a.txt"), "x");
  EXPECT_EQ(listed(in(u"")), Names());
}

TEST_F(FilesSuite, WhatIsNoFolderHasNoList) {
  putBytes(in(u"a.pdf"), "x");
  EXPECT_FALSE(listed(in(u"none\\")));
  EXPECT_FALSE(listed(in(u"none\\deeper\\")));
  EXPECT_FALSE(listed(in(u"a.pdf\\")));
  EXPECT_FALSE(listed(in(u"a<b\\")));
  EXPECT_FALSE(listed(u"Q:\\folder\\"));
  EXPECT_FALSE(listed(u"Q:\\"));
}

TEST_F(FilesSuite, AListNamesFilesThatCannotBeWrittenOrOpened) {
  putBytes(in(u"in use.pdf"), "x");
  putBytes(in(u"read-only.pdf"), "x");
  ASSERT_TRUE(setReadOnly(in(u"read-only.pdf"), true));
  const FileLock lock(in(u"in use.pdf"), LockKind::Exclusive);
  EXPECT_EQ(listed(in(u"")), (Names{u"in use.pdf", u"read-only.pdf"}));
}

TEST_F(FilesSuite, AListKeepsUnusualNamesWhole) {
  Names wanted = {u"it's (1) [draft] {x}.pdf", u"\u043E\u0442\u0447\u0451\u0442 \u21165.pdf",
                  u"pair \U0001F4C4.pdf", u"two..dots...pdf", u"~1.pdf"};
  wanted.push_back(pathOfLength(folder, 259).substr(folder.size()));
  for (const std::u16string& name : wanted) putBytes(in(name), "x");
  std::sort(wanted.begin(), wanted.end());
  EXPECT_EQ(listed(in(u"")), wanted);
}

TEST_F(FilesSuite, KnownFoldersExist) {
  for (const std::u16string& known : {localAppDataFolder(), desktopFolder(), temporaryFolder()}) {
    ASSERT_FALSE(known.empty());
    EXPECT_LT(known.size(), 260u);
    EXPECT_TRUE(queryAttributes(known).attributes & kAttributeFolder);
  }
  EXPECT_EQ(temporaryFolder().back(), u'\\');
}

}  // namespace
}  // namespace quillmere::platform
