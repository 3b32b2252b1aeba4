#include "store/data_folder.h"

#include <gtest/gtest.h>

#include "store/onboarding.h"
#include "support/settings_file.h"

namespace quillmere::test {
namespace {

class DataFolderTest : public SettingsFileTest {};

TEST_F(DataFolderTest, TheFolderIsMadeAndEndsWithABackslash) {
  EXPECT_EQ(GetAppDataFolder(), kDataFolder);
  EXPECT_TRUE(platform::fileExists(u"C:\\Users\\User\\AppData\\Local\\Quillmere"));
}

TEST_F(DataFolderTest, ABackslashThatTheSystemGivesIsNotDoubled) {
  platform::standIn().localAppDataFolder = u"C:\\Users\\User\\AppData\\Local\\";
  EXPECT_EQ(GetAppDataFolder(), kDataFolder);
}

TEST_F(DataFolderTest, WithoutAKnownFolderEveryPathIsEmptyAndNothingIsMade) {
  platform::standIn().localAppDataFolder.clear();
  makeDataFolders();
  EXPECT_EQ(GetAppDataFolder(), u"");
  EXPECT_EQ(GetIniPath(), u"");
  EXPECT_EQ(session.stampsFolder, u"");
  EXPECT_EQ(session.bindersFolder, u"");
  EXPECT_EQ(session.shelveFolder, u"");
  EXPECT_TRUE(desktopShortcutPromptShown());
  rememberDesktopShortcutPrompt();
}

TEST_F(DataFolderTest, TheThreeFoldersAreMadeAndNoted) {
  makeDataFolders();
  EXPECT_EQ(session.stampsFolder, std::u16string(kDataFolder) + u"Stamps\\");
  EXPECT_EQ(session.bindersFolder, std::u16string(kDataFolder) + u"Binders\\");
  EXPECT_EQ(session.shelveFolder, std::u16string(kDataFolder) + u"Shelve\\");
  EXPECT_EQ(platform::namesIn(kDataFolder),
            (std::vector<std::u16string>{u"Binders", u"Shelve", u"Stamps"}));
}

TEST_F(DataFolderTest, FoldersThatExistKeepWhatTheyHold) {
  platform::putFile(std::u16string(kDataFolder) + u"Stamps\\old.png", "x");
  makeDataFolders();
  EXPECT_TRUE(platform::fileExists(session.stampsFolder + u"old.png"));
}

TEST_F(DataFolderTest, TheFirstCallMakesTheSettingsFileWithItsMark) {
  EXPECT_EQ(GetIniPath(), kIniPath);
  EXPECT_EQ(platform::fileBytes(kIniPath), "\xFF\xFE");
}

TEST_F(DataFolderTest, TheSettingsFileIsMadeOnlyOnceInAProcess) {
  GetIniPath();
  ASSERT_TRUE(platform::deleteFile(kIniPath));
  GetIniPath();
  EXPECT_FALSE(platform::fileExists(kIniPath));
}

TEST_F(DataFolderTest, AFailedAttemptIsNotRepeated) {
  platform::putFolder(kIniPath);
  GetIniPath();
  std::filesystem::remove(platform::realPath(kIniPath));
  GetIniPath();
  EXPECT_FALSE(platform::fileExists(kIniPath));
}

TEST_F(DataFolderTest, AnExistingSettingsFileIsLeftAlone) {
  platform::putFile(kIniPath, "[Panels]\r\n");
  GetIniPath();
  EXPECT_EQ(platform::fileBytes(kIniPath), "[Panels]\r\n");
}

TEST_F(DataFolderTest, AViewerDoesNotMakeTheSettingsFile) {
  session.viewerRole = true;
  EXPECT_EQ(GetIniPath(), kIniPath);
  EXPECT_FALSE(platform::fileExists(kIniPath));
}

class OnboardingTest : public SettingsFileTest {};

TEST_F(OnboardingTest, TheShortcutIsOfferedOnceEver) {
  EXPECT_FALSE(desktopShortcutPromptShown());
  rememberDesktopShortcutPrompt();
  EXPECT_TRUE(desktopShortcutPromptShown());
  restart();
  EXPECT_TRUE(desktopShortcutPromptShown());
}

TEST_F(OnboardingTest, AnyNumberButZeroCountsAsOffered) {
  putIni(u"[Onboarding]\nDesktopShortcutPromptShown=0\n");
  EXPECT_FALSE(desktopShortcutPromptShown());
  putIni(u"[Onboarding]\nDesktopShortcutPromptShown=2\n");
  EXPECT_TRUE(desktopShortcutPromptShown());
}

TEST_F(OnboardingTest, AViewerThatWritesFirstMakesTheFileWithItsMark) {
  session.viewerRole = true;
  EXPECT_FALSE(desktopShortcutPromptShown());
  EXPECT_FALSE(platform::fileExists(kIniPath));
  rememberDesktopShortcutPrompt();
  EXPECT_EQ(iniEntries(),
            (std::vector<IniEntry>{{u"Onboarding", u"DesktopShortcutPromptShown", u"1"}}));
}

}  // namespace
}  // namespace quillmere::test
