#include "platform/file_in_writing.h"

#include <string>
#include <utility>

#include "platform/files.h"
#include "platform_suite/suite_side.h"

namespace quillmere::platform {
namespace {

using FileInWritingSuite = PlatformSuite;

bool append(FileInWriting& file, const std::string& bytes) {
  return writeBlock(file, bytes.data(), bytes.size());
}

TEST_F(FileInWritingSuite, BlocksFollowEachOther) {
  FileInWritingHandle file(startNewFile(in(u"a.pdf")));
  ASSERT_TRUE(file);
  EXPECT_TRUE(append(*file, "one "));
  EXPECT_TRUE(append(*file, ""));
  EXPECT_TRUE(append(*file, "two"));
  EXPECT_TRUE(flushFile(*file));
  EXPECT_TRUE(append(*file, " three"));
  EXPECT_TRUE(closeFile(file.release()));
  EXPECT_EQ(bytesOf(in(u"a.pdf")), "one two three");
}

TEST_F(FileInWritingSuite, AnExistingFileIsNotTouched) {
  putBytes(in(u"a.pdf"), "kept");
  EXPECT_EQ(startNewFile(in(u"a.pdf")), nullptr);
  EXPECT_EQ(bytesOf(in(u"a.pdf")), "kept");
  ASSERT_TRUE(createFolder(in(u"sub")));
  EXPECT_EQ(startNewFile(in(u"sub")), nullptr);
  EXPECT_EQ(startNewFile(in(u"none\\a.pdf")), nullptr);
  EXPECT_EQ(startNewFile(u""), nullptr);
}

TEST_F(FileInWritingSuite, NobodyElseOpensItBeforeItIsClosed) {
  FileInWritingHandle file(startNewFile(in(u"a.pdf")));
  ASSERT_TRUE(file);
  EXPECT_TRUE(append(*file, "bytes"));
  EXPECT_TRUE(flushFile(*file));
  EXPECT_TRUE(fileExists(in(u"a.pdf")));
  EXPECT_FALSE(readFileShared(in(u"a.pdf"), 100));
  EXPECT_FALSE(writeFile(in(u"a.pdf"), "x", 1));
  EXPECT_FALSE(deleteFile(in(u"a.pdf")));
  file.reset();
  EXPECT_TRUE(readFileShared(in(u"a.pdf"), 100));
}

TEST_F(FileInWritingSuite, AFileThatIsGivenUpKeepsWhatItHas) {
  {
    const FileInWritingHandle file(startNewFile(in(u"a.pdf")));
    ASSERT_TRUE(file);
    EXPECT_TRUE(append(*file, "part"));
  }
  EXPECT_EQ(bytesOf(in(u"a.pdf")), "part");
  EXPECT_TRUE(deleteFile(in(u"a.pdf")));
}

TEST_F(FileInWritingSuite, AClosedFileTakesThePlaceOfAnother) {
  putBytes(in(u"a.pdf"), "old");
  FileInWritingHandle file(startNewFile(in(u"a.tmp")));
  ASSERT_TRUE(file);
  EXPECT_TRUE(append(*file, "new"));
  EXPECT_FALSE(replaceFile(in(u"a.tmp"), in(u"a.pdf")));
  EXPECT_EQ(bytesOf(in(u"a.pdf")), "old");
  EXPECT_TRUE(closeFile(file.release()));
  EXPECT_TRUE(replaceFile(in(u"a.tmp"), in(u"a.pdf")));
  EXPECT_EQ(bytesOf(in(u"a.pdf")), "new");
}

// A file beside one of 259 units has a longer path.
TEST_F(FileInWritingSuite, APathOfMoreThan259UnitsWorks) {
  const std::u16string path = in(std::u16string(255 - folder.size(), u'n') + u".pdf");
  const std::u16string longer = path + u".tmp";
  ASSERT_EQ(path.size(), 259u);
  putBytes(path, "old");
  FileInWritingHandle file(startNewFile(longer));
  ASSERT_TRUE(file);
  EXPECT_TRUE(append(*file, "new"));
  EXPECT_TRUE(closeFile(file.release()));
  EXPECT_EQ(fileStamp(longer)->size, 3u);
  EXPECT_TRUE(readFileShared(longer, 100));
  EXPECT_FALSE(pathForLibraries(longer).empty());
  EXPECT_EQ(startNewFile(longer), nullptr);
  EXPECT_TRUE(replaceFile(longer, path));
  EXPECT_EQ(bytesOf(path), "new");
  EXPECT_FALSE(deleteFile(longer));
}

TEST_F(FileInWritingSuite, ANameOfMoreThan255UnitsCannotBeMade) {
  EXPECT_EQ(startNewFile(in(std::u16string(256, u'n'))), nullptr);
}

}  // namespace
}  // namespace quillmere::platform
