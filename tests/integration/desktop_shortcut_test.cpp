#include "integration/desktop_shortcut.h"

#include <gtest/gtest.h>

#include "platform/stand_in.h"

namespace quillmere::test {
namespace {

class DesktopShortcutTest : public ::testing::Test {
 protected:
  void SetUp() override { platform::resetStandIn(); }
};

TEST_F(DesktopShortcutTest, TheShortcutStartsTheExecutable) {
  ASSERT_TRUE(createDesktopShortcut());
  ASSERT_EQ(platform::standIn().shortcuts.size(), 1u);
  const platform::Shortcut& shortcut = platform::standIn().shortcuts[0];
  EXPECT_EQ(shortcut.path, u"C:\\Users\\User\\Desktop\\Quillmere.lnk");
  EXPECT_EQ(shortcut.target, u"C:\\Program Files\\Quillmere\\quillmere.exe");
  EXPECT_EQ(shortcut.description, u"Quillmere PDF Viewer");
}

TEST_F(DesktopShortcutTest, APackagedProgramIsStartedByItsPackage) {
  platform::standIn().packageIdentity = u"Quillmere_abc!App";
  ASSERT_TRUE(createDesktopShortcut());
  EXPECT_EQ(platform::standIn().shortcuts.at(0).target, u"shell:AppsFolder\\Quillmere_abc!App");
}

TEST_F(DesktopShortcutTest, ADesktopAtADrivesRootHasOneBackslash) {
  platform::setVolume(u"D:", platform::VolumeState::Present);
  platform::standIn().desktopFolder = u"D:\\";
  ASSERT_TRUE(createDesktopShortcut());
  EXPECT_EQ(platform::standIn().shortcuts.at(0).path, u"D:\\Quillmere.lnk");
}

TEST_F(DesktopShortcutTest, WithoutADesktopOrAProgramThereIsNoShortcut) {
  platform::standIn().desktopFolder.clear();
  EXPECT_FALSE(createDesktopShortcut());
  platform::standIn().desktopFolder = u"D:\\";
  platform::standIn().executable.clear();
  EXPECT_FALSE(createDesktopShortcut());
  EXPECT_TRUE(platform::standIn().shortcuts.empty());
}

TEST_F(DesktopShortcutTest, AFailureOfTheSystemIsTold) {
  platform::standIn().shortcutResult = false;
  EXPECT_FALSE(createDesktopShortcut());
}

}  // namespace
}  // namespace quillmere::test
