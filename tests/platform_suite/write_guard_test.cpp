#include "platform/write_guard.h"

#include "platform/files.h"
#include "platform_suite/suite_side.h"

namespace quillmere::platform {
namespace {

using WriteGuardSuite = PlatformSuite;

TEST_F(WriteGuardSuite, AGuardedFileCanBeReadAndNotChanged) {
  putBytes(in(u"a.pdf"), "kept");
  putBytes(in(u"b.pdf"), "other");
  WriteGuardHandle guard(denyWriters(in(u"a.pdf")));
  ASSERT_TRUE(guard);
  EXPECT_TRUE(readFileShared(in(u"a.pdf"), 100));
  EXPECT_FALSE(writeFile(in(u"a.pdf"), "x", 1));
  EXPECT_FALSE(deleteFile(in(u"a.pdf")));
  EXPECT_FALSE(replaceFile(in(u"b.pdf"), in(u"a.pdf")));
  EXPECT_FALSE(replaceFile(in(u"a.pdf"), in(u"c.pdf")));
  EXPECT_EQ(bytesOf(in(u"a.pdf")), "kept");
  guard.reset();
  EXPECT_TRUE(replaceFile(in(u"b.pdf"), in(u"a.pdf")));
  EXPECT_EQ(bytesOf(in(u"a.pdf")), "other");
}

TEST_F(WriteGuardSuite, SeveralGuardsOfAFileHoldItUntilTheLastIsGone) {
  putBytes(in(u"a.pdf"), "kept");
  WriteGuardHandle first(denyWriters(in(u"a.pdf")));
  WriteGuardHandle second(denyWriters(in(u"a.pdf")));
  ASSERT_TRUE(first);
  ASSERT_TRUE(second);
  first.reset();
  EXPECT_FALSE(writeFile(in(u"a.pdf"), "x", 1));
  second.reset();
  EXPECT_TRUE(writeFile(in(u"a.pdf"), "x", 1));
}

TEST_F(WriteGuardSuite, WhatAnotherProgramHasOpenForWritingCannotBeGuarded) {
  putBytes(in(u"a.pdf"), "kept");
  {
    const FileLock lock(in(u"a.pdf"), LockKind::SharedWriter);
    EXPECT_EQ(denyWriters(in(u"a.pdf")), nullptr);
  }
  const FileLock lock(in(u"a.pdf"), LockKind::Exclusive);
  EXPECT_EQ(denyWriters(in(u"a.pdf")), nullptr);
}

TEST_F(WriteGuardSuite, WhatIsNoFileCannotBeGuarded) {
  ASSERT_TRUE(createFolder(in(u"sub")));
  EXPECT_EQ(denyWriters(in(u"sub")), nullptr);
  EXPECT_EQ(denyWriters(in(u"none.pdf")), nullptr);
  EXPECT_EQ(denyWriters(u""), nullptr);
}

}  // namespace
}  // namespace quillmere::platform
