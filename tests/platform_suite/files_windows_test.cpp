#include <windows.h>

#include <string>

#include "platform/files.h"
#include "platform/win32/wide.h"
#include "platform_suite/suite_side.h"

namespace quillmere::platform {
namespace {

using FilesOnWindows = PlatformSuite;

// Empty where the file system gives no short names.
std::u16string shortNameOf(const std::u16string& path) {
  std::u16string name(MAX_PATH, u'\0');
  name.resize(GetShortPathNameW(wide(path), wideBuffer(name), MAX_PATH));
  return name == path ? std::u16string() : name;
}

TEST_F(FilesOnWindows, AShortNameIsCompletedToTheLongOne) {
  const std::u16string path = in(u"Really long name.pdf");
  putBytes(path, "x");
  const std::u16string shortName = shortNameOf(path);
  if (shortName.empty()) GTEST_SKIP() << "no short names here";
  ASSERT_NE(shortName.find(u'~'), std::u16string::npos);
  EXPECT_EQ(absolutePath(shortName), absolutePath(path));
}

TEST_F(FilesOnWindows, AShortNameOfAFolderIsCompletedForAFileThatDoesNotExistYet) {
  ASSERT_TRUE(createFolder(in(u"Really long folder")));
  const std::u16string shortName = shortNameOf(in(u"Really long folder"));
  if (shortName.empty()) GTEST_SKIP() << "no short names here";
  EXPECT_EQ(absolutePath(shortName + u"\\new~1.pdf"),
            absolutePath(in(u"Really long folder\\new~1.pdf")));
}

TEST_F(FilesOnWindows, ANameWithATildeThatIsNoShortOneStays) {
  putBytes(in(u"draft~.pdf"), "x");
  for (const char16_t* name : {u"draft~.pdf", u"none~1.pdf", u"~"}) {
    EXPECT_TRUE(absolutePath(in(name)).ends_with(std::u16string(u"\\") + name));
  }
  EXPECT_EQ(absolutePath(u"\\\\server\\share\\LONGNA~1.PDF"), u"\\\\server\\share\\LONGNA~1.PDF");
}

}  // namespace
}  // namespace quillmere::platform
