#include "platform/open_file.h"

#include "platform/files.h"
#include "platform_suite/suite_side.h"

namespace quillmere::platform {
namespace {

using OpenFileSuite = PlatformSuite;

TEST_F(OpenFileSuite, AnOpenFileCanBeReadAndWrittenByOthers) {
  putBytes(in(u"a.pdf"), "old");
  const OpenFileHandle file(keepOpen(in(u"a.pdf")));
  ASSERT_TRUE(file);
  EXPECT_TRUE(canStillRead(*file));
  EXPECT_TRUE(readFileShared(in(u"a.pdf"), 100));
  const FileLock writer(in(u"a.pdf"), LockKind::SharedWriter);
  EXPECT_TRUE(canStillRead(*file));
}

TEST_F(OpenFileSuite, AnEmptyFileCanBeRead) {
  putBytes(in(u"a.pdf"), "");
  const OpenFileHandle file(keepOpen(in(u"a.pdf")));
  ASSERT_TRUE(file);
  EXPECT_TRUE(canStillRead(*file));
}

TEST_F(OpenFileSuite, WhatCannotBeReadCannotBeKeptOpen) {
  EXPECT_EQ(keepOpen(in(u"none.pdf")), nullptr);
  ASSERT_TRUE(createFolder(in(u"sub")));
  EXPECT_EQ(keepOpen(in(u"sub")), nullptr);
  EXPECT_EQ(keepOpen(u""), nullptr);
  putBytes(in(u"a.pdf"), "old");
  const FileLock lock(in(u"a.pdf"), LockKind::Exclusive);
  EXPECT_EQ(keepOpen(in(u"a.pdf")), nullptr);
}

}  // namespace
}  // namespace quillmere::platform
