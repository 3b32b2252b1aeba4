#include "store/settings_lists.h"

#include <gtest/gtest.h>

#include "base/text_format.h"
#include "store/recent_files.h"
#include "store/settings.h"
#include "support/settings_file.h"

namespace quillmere::test {
namespace {

class SettingsListTest : public SettingsFileTest {
 protected:
  static void addBinder(std::u16string path, bool workingDocuments = false) {
    BinderFile binder;
    binder.path = std::move(path);
    binder.isWorkingDocuments = workingDocuments;
    session.binderLibrary.push_back(std::move(binder));
  }
};

std::u16string listLines(const char16_t* section, const char16_t* count, int paths) {
  std::u16string lines = std::u16string(u"[") + section + u"]\nCount=" + count + u"\n";
  for (int index = 0; index < paths; ++index) {
    lines += u"Path" + decimal(index) + u"=C:\\Texts\\" + decimal(index) + u".pdf\n";
  }
  return lines;
}

TEST_F(SettingsListTest, RecentFilesAreReadNewestFirst) {
  putIni(listLines(u"RecentFiles", u"3", 5));
  restart();
  EXPECT_EQ(
      session.settings.recentFiles,
      (std::vector<std::u16string>{u"C:\\Texts\\0.pdf", u"C:\\Texts\\1.pdf", u"C:\\Texts\\2.pdf"}));
}

TEST_F(SettingsListTest, ACountOfThirtyReadsTwentyRecentFiles) {
  putIni(listLines(u"RecentFiles", u"30", 30));
  restart();
  ASSERT_EQ(session.settings.recentFiles.size(), 20u);
  EXPECT_EQ(session.settings.recentFiles.back(), u"C:\\Texts\\19.pdf");
}

TEST_F(SettingsListTest, ANegativeCountReadsNothing) {
  putIni(listLines(u"RecentFiles", u"-1", 3));
  restart();
  EXPECT_TRUE(session.settings.recentFiles.empty());
}

TEST_F(SettingsListTest, AListLongerThanItsLimitIsNotCutWhenRead) {
  putIni(listLines(u"RecentFiles", u"9", 9) + u"MaxEntries=2\n");
  restart();
  EXPECT_EQ(session.settings.recentFilesMaxEntries, 2);
  EXPECT_EQ(session.settings.recentFiles.size(), 9u);
}

TEST_F(SettingsListTest, EmptyAndMissingPathsAreSkipped) {
  putIni(u"[RecentFiles]\nCount=4\nPath0=\nPath1=C:\\b.pdf\nPath3=C:\\d.pdf\n");
  restart();
  EXPECT_EQ(session.settings.recentFiles,
            (std::vector<std::u16string>{u"C:\\b.pdf", u"C:\\d.pdf"}));
}

TEST_F(SettingsListTest, PathsAreCutToWhatAPathBufferHolds) {
  const std::u16string path = u"C:\\" + std::u16string(300, u'x');
  putIni(u"[RecentFiles]\nCount=1\nPath0=" + path + u"\n");
  restart();
  ASSERT_EQ(session.settings.recentFiles.size(), 1u);
  EXPECT_EQ(session.settings.recentFiles[0], path.substr(0, 259));
}

TEST_F(SettingsListTest, PathsOfAnyScriptSurvive) {
  const std::vector<std::u16string> paths = {
      u"C:\\Unterlagen\\Übersicht für Köln.pdf", u"D:\\文書\\概要 [1] = a;b.pdf",
      u"\\\\server\\share\\🖋️ féder.pdf", u"C:\\мой файл #2.pdf"};
  restart();
  session.settings.recentFiles = paths;
  SaveRecentFiles();
  restart();
  EXPECT_EQ(session.settings.recentFiles, paths);
}

TEST_F(SettingsListTest, AShorterListKeepsItsKeysWithEmptyValues) {
  putIni(listLines(u"RecentFiles", u"5", 5));
  restart();
  session.settings.recentFiles = {u"C:\\only.pdf"};
  SaveRecentFiles();
  EXPECT_EQ(iniValue(u"RecentFiles", u"Count"), u"1");
  EXPECT_EQ(iniValue(u"RecentFiles", u"Path0"), u"C:\\only.pdf");
  for (int index = 1; index < 20; ++index) {
    EXPECT_EQ(iniValue(u"RecentFiles", u"Path" + decimal(index)), u"") << index;
  }
  EXPECT_EQ(iniValue(u"RecentFiles", u"Path20"), std::nullopt);
}

TEST_F(SettingsListTest, SavingRecentFilesWritesNothingElse) {
  putIni(u"");
  session.settings.recentFiles = {u"C:\\a.pdf"};
  SaveRecentFiles();
  for (const IniEntry& entry : iniEntries()) EXPECT_EQ(entry.section, u"RecentFiles");
  EXPECT_EQ(iniEntries().size(), 21u);
}

TEST_F(SettingsListTest, AFileThatLeavesTheRecentListIsNotInTheFileEither) {
  session.settings.recentFiles = {u"C:\\x.pdf", u"C:\\A.PDF", u"C:\\y.pdf"};
  SaveRecentFiles();
  RemoveFromRecentFiles(u"c:\\a.pdf");
  restart();
  EXPECT_EQ(session.settings.recentFiles,
            (std::vector<std::u16string>{u"C:\\x.pdf", u"C:\\y.pdf"}));
}

TEST_F(SettingsListTest, AViewerDoesNotSaveRecentFiles) {
  session.viewerRole = true;
  session.settings.recentFiles = {u"C:\\a.pdf"};
  SaveRecentFiles();
  EXPECT_FALSE(platform::fileExists(kIniPath));
}

TEST_F(SettingsListTest, TheBinderListHoldsBindersWithAFileInPanelOrder) {
  addBinder(std::u16string(kDataFolder) + u"WorkingDocs.lst", true);
  addBinder(u"C:\\B\\Zebra.lst");
  addBinder(u"");
  addBinder(u"C:\\B\\Äpfel.lst");
  SaveBinderList();
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"2");
  EXPECT_EQ(iniValue(u"Binders", u"Path0"), u"C:\\B\\Zebra.lst");
  EXPECT_EQ(iniValue(u"Binders", u"Path1"), u"C:\\B\\Äpfel.lst");
  EXPECT_EQ(iniValue(u"Binders", u"Path2"), u"");
  EXPECT_EQ(iniValue(u"Binders", u"Path19"), u"");
}

TEST_F(SettingsListTest, KeysOfALongListBeyondTheTwentiethStayWhenItShrinks) {
  for (int index = 0; index < 23; ++index) addBinder(u"C:\\" + decimal(index) + u".lst");
  SaveBinderList();
  EXPECT_EQ(iniValue(u"Binders", u"Path22"), u"C:\\22.lst");
  session.binderLibrary.resize(1);
  SaveBinderList();
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"1");
  EXPECT_EQ(iniValue(u"Binders", u"Path19"), u"");
  EXPECT_EQ(iniValue(u"Binders", u"Path20"), u"C:\\20.lst");
}

TEST_F(SettingsListTest, NoMoreThanFiftyBinderPathsAreRead) {
  putIni(listLines(u"Binders", u"60", 60));
  EXPECT_EQ(readPathList(kBinderList, kIniPath).size(), 50u);
}

TEST_F(SettingsListTest, TheBinderListIsNotSavedWhileBindersAreRestored) {
  putIni(listLines(u"Binders", u"2", 2));
  session.restoringBinders = true;
  SaveBinderList();
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"2");
}

TEST_F(SettingsListTest, AStartDropsBindersWhoseFileHasGone) {
  platform::putFile(u"C:\\B\\first.lst", "C:\\a.pdf\r\n");
  platform::putFile(u"C:\\B\\third.lst", "");
  putIni(
      u"[Binders]\nCount=3\nPath0=C:\\B\\first.lst\nPath1=C:\\B\\second.lst\n"
      u"Path2=C:\\B\\third.lst\n");
  restart();
  ASSERT_EQ(session.binderLibrary.size(), 3u);  // behind the documents in use
  EXPECT_EQ(session.binderLibrary[1].name, u"first");
  EXPECT_EQ(session.binderLibrary[1].files, (std::vector<std::u16string>{u"C:\\a.pdf"}));
  EXPECT_EQ(session.binderLibrary[2].name, u"third");
  EXPECT_FALSE(session.restoringBinders);
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"2");
  EXPECT_EQ(iniValue(u"Binders", u"Path0"), u"C:\\B\\first.lst");
  EXPECT_EQ(iniValue(u"Binders", u"Path1"), u"C:\\B\\third.lst");
  EXPECT_EQ(iniValue(u"Binders", u"Path2"), u"");
}

TEST_F(SettingsListTest, WithRestoringOffTheBinderListStaysAsItIs) {
  putIni(listLines(u"Binders", u"2", 2) + u"RestoreOnLaunch=0\n");
  restart();
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"2");
  EXPECT_EQ(iniValue(u"Binders", u"Path1"), u"C:\\Texts\\1.pdf");
}

TEST_F(SettingsListTest, AViewerDoesNotSaveTheBinderList) {
  session.viewerRole = true;
  addBinder(u"C:\\B\\one.lst");
  SaveBinderList();
  EXPECT_FALSE(platform::fileExists(kIniPath));
  putIni(listLines(u"Binders", u"2", 2));
  SaveBinderList();
  EXPECT_EQ(iniValue(u"Binders", u"Count"), u"2");
}

}  // namespace
}  // namespace quillmere::test
