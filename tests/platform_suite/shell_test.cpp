#include "platform/shell.h"

#include "platform/files.h"
#include "platform_suite/suite_side.h"

namespace quillmere::platform {
namespace {

using ShellSuite = PlatformSuite;

TEST_F(ShellSuite, WhatTheRegistryDoesNotHoldIsNothing) {
  EXPECT_FALSE(readUserRegistryText(u"Software\\QuillmereNoSuchKey", u"Name"));
  EXPECT_FALSE(readUserRegistryText(u"Software\\QuillmereNoSuchKey", u""));
}

TEST_F(ShellSuite, OutsideAPackageThereIsNoIdentity) {
  EXPECT_EQ(packageIdentity(), u"");
}

TEST_F(ShellSuite, AnUnknownExtensionHasNoHandler) {
  EXPECT_EQ(effectiveDefaultHandler(u".quillmerenone"), u"");
}

TEST_F(ShellSuite, AShortcutIsMadeAndReplaced) {
  const Shortcut shortcut{in(u"Viewer ü.lnk"), in(u"some program.exe"), u"A viewer"};
  ASSERT_TRUE(createShortcut(shortcut));
  EXPECT_TRUE(fileExists(shortcut.path));
  EXPECT_TRUE(createShortcut(shortcut));
}

TEST_F(ShellSuite, AMissingFileCannotBeShownInItsFolder) {
  EXPECT_FALSE(showInFolder(in(u"none.pdf")));
  EXPECT_FALSE(showInFolder(in(u"none\\none.pdf")));
}

TEST_F(ShellSuite, AShortcutInAMissingFolderFails) {
  EXPECT_FALSE(createShortcut({in(u"none\\a.lnk"), in(u"a.exe"), u""}));
}

}  // namespace
}  // namespace quillmere::platform
