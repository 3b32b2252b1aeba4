#include "platform/file_properties.h"

#include "platform/files.h"
#include "platform_suite/suite_side.h"

namespace quillmere::platform {
namespace {

using FilePropertiesSuite = PlatformSuite;

TEST_F(FilePropertiesSuite, BytesAndTheReadOnlyMarkAreNoPropertiesToCopy) {
  putBytes(in(u"a.pdf"), "old");
  putBytes(in(u"a.tmp"), "new");
  ASSERT_TRUE(setReadOnly(in(u"a.pdf"), true));
  EXPECT_TRUE(copyFileProperties(in(u"a.pdf"), in(u"a.tmp")));
  EXPECT_EQ(bytesOf(in(u"a.tmp")), "new");
  EXPECT_EQ(queryAttributes(in(u"a.tmp")).attributes & kAttributeReadOnly, 0u);
  EXPECT_TRUE(deleteFile(in(u"a.tmp")));
}

TEST_F(FilePropertiesSuite, AFileThatIsNotThereGivesAndTakesNone) {
  putBytes(in(u"a.pdf"), "old");
  EXPECT_FALSE(copyFileProperties(in(u"none.pdf"), in(u"a.pdf")));
  EXPECT_FALSE(copyFileProperties(in(u"a.pdf"), in(u"none.pdf")));
  EXPECT_FALSE(fileExists(in(u"none.pdf")));
}

TEST_F(FilePropertiesSuite, AFileWithoutStreamsHasNoneToCopy) {
  putBytes(in(u"a.pdf"), "old");
  putBytes(in(u"a.tmp"), "new");
  EXPECT_TRUE(copyAlternateStreams(in(u"a.pdf"), in(u"a.tmp")));
  EXPECT_EQ(bytesOf(in(u"a.tmp")), "new");
}

}  // namespace
}  // namespace quillmere::platform
