#include <windows.h>

#include <string>

#include "platform/file_properties.h"
#include "platform/files.h"
#include "platform/win32/handles.h"
#include "platform/win32/long_path.h"
#include "platform/win32/wide.h"
#include "platform_suite/suite_side.h"

namespace quillmere::platform {
namespace {

class FilePropertiesOnWindows : public PlatformSuite {
 protected:
  static FILETIME created(const std::u16string& path) {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    EXPECT_TRUE(GetFileAttributesExW(wide(path), GetFileExInfoStandard, &data));
    return data.ftCreationTime;
  }
  // False where the file system keeps no creation time of its own.
  static bool setCreated(const std::u16string& path, FILETIME time) {
    const KernelHandle file = openFile(wide(path), FILE_WRITE_ATTRIBUTES, 0, OPEN_EXISTING);
    SetFileTime(file.get(), &time, nullptr, nullptr);
    const FILETIME now = created(path);
    return CompareFileTime(&now, &time) == 0;
  }
};

TEST_F(FilePropertiesOnWindows, TheCreationTimeIsCopied) {
  putBytes(in(u"a.pdf"), "old");
  putBytes(in(u"a.tmp"), "new");
  const FILETIME time{0x80000000, 0x01C50000};
  if (!setCreated(in(u"a.pdf"), time)) GTEST_SKIP() << "no creation times here";
  EXPECT_TRUE(copyFileProperties(in(u"a.pdf"), in(u"a.tmp")));
  const FILETIME copied = created(in(u"a.tmp"));
  EXPECT_EQ(CompareFileTime(&copied, &time), 0);
}

TEST_F(FilePropertiesOnWindows, AHiddenFileStaysHidden) {
  putBytes(in(u"a.pdf"), "old");
  putBytes(in(u"a.tmp"), "new");
  const std::u16string path = in(u"a.pdf");
  SetFileAttributesW(wide(path), FILE_ATTRIBUTE_HIDDEN);
  if ((queryAttributes(path).attributes & kAttributeHidden) == 0) GTEST_SKIP() << "nothing hides";
  EXPECT_TRUE(copyFileProperties(path, in(u"a.tmp")));
  EXPECT_NE(queryAttributes(in(u"a.tmp")).attributes & kAttributeHidden, 0u);
  EXPECT_TRUE(deleteFile(in(u"a.tmp")));
}

TEST_F(FilePropertiesOnWindows, StreamsAreCopiedWhereTheSystemListsThem) {
  putBytes(in(u"a.pdf"), "old");
  putBytes(in(u"a.pdf:notes"), "more");
  putBytes(in(u"a.tmp"), "new");
  const std::u16string path = in(u"a.pdf");
  WIN32_FIND_STREAM_DATA stream{};
  const HANDLE first = FindFirstStreamW(wide(path), FindStreamInfoStandard, &stream, 0);
  if (first == INVALID_HANDLE_VALUE) GTEST_SKIP() << "streams are not listed here";
  FindClose(first);
  EXPECT_TRUE(copyAlternateStreams(path, in(u"a.tmp")));
  EXPECT_EQ(bytesOf(in(u"a.tmp:notes")), "more");
  EXPECT_EQ(bytesOf(in(u"a.tmp")), "new");
}

TEST_F(FilePropertiesOnWindows, StreamsAreCopiedWherePathAndNameTogetherAreLong) {
  constexpr std::size_t kPathUnits = MAX_PATH - 5;
  ASSERT_LT(folder.size(), kPathUnits);
  const std::u16string path = in(std::u16string(kPathUnits - folder.size(), u'n'));
  const std::u16string target = in(std::u16string(kPathUnits - folder.size(), u't'));
  putBytes(path, "old");
  putBytes(longPath(path + u":notes"), "more");
  putBytes(target, "new");
  WIN32_FIND_STREAM_DATA stream{};
  const HANDLE first = FindFirstStreamW(wide(path), FindStreamInfoStandard, &stream, 0);
  if (first == INVALID_HANDLE_VALUE) GTEST_SKIP() << "streams are not listed here";
  FindClose(first);
  EXPECT_TRUE(copyAlternateStreams(path, target));
  EXPECT_EQ(bytesOf(longPath(target + u":notes")), "more");
}

}  // namespace
}  // namespace quillmere::platform
