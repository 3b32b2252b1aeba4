#include "store/recent_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/text_format.h"
#include "support/settings_file.h"

namespace quillmere::test {
namespace {

using platform::standIn;
using testing::ElementsAre;
using testing::IsEmpty;

class RecentFilesTest : public SettingsFileTest {
 protected:
  static std::vector<std::u16string>& recent() { return session.settings.recentFiles; }
};

TEST_F(RecentFilesTest, FilesComeToTheHeadInTheirOrder) {
  recent() = {u"C:\\old.pdf"};
  AddToRecentFiles({u"C:\\a.pdf", u"C:\\b.pdf"});
  EXPECT_THAT(recent(), ElementsAre(u"C:\\a.pdf", u"C:\\b.pdf", u"C:\\old.pdf"));
  EXPECT_EQ(iniValue(u"RecentFiles", u"Count"), u"3");
  EXPECT_EQ(iniValue(u"RecentFiles", u"Path0"), u"C:\\a.pdf");
}

TEST_F(RecentFilesTest, AFileAtTheEndMovesToTheHead) {
  recent() = {u"C:\\a.pdf", u"C:\\b.pdf", u"C:\\c.pdf"};
  AddToRecentFiles({u"c:\\C.PDF"});
  EXPECT_THAT(recent(), ElementsAre(u"c:\\C.PDF", u"C:\\a.pdf", u"C:\\b.pdf"));
}

TEST_F(RecentFilesTest, TheListIsCutToItsLimitWhichIsHeldToItsRange) {
  session.settings.recentFilesMaxEntries = 2;
  AddToRecentFiles({u"C:\\a.pdf", u"C:\\b.pdf", u"C:\\c.pdf"});
  EXPECT_THAT(recent(), ElementsAre(u"C:\\a.pdf", u"C:\\b.pdf"));
  session.settings.recentFilesMaxEntries = 0;
  AddToRecentFiles({u"C:\\d.pdf"});
  EXPECT_THAT(recent(), ElementsAre(u"C:\\d.pdf"));
  session.settings.recentFilesMaxEntries = 99;
  std::vector<std::u16string> many;
  for (int i = 0; i < 30; ++i) many.push_back(u"C:\\" + decimal(i) + u".pdf");
  AddToRecentFiles(many);
  EXPECT_EQ(recent().size(), 20u);
}

TEST_F(RecentFilesTest, ALongerListFromTheSettingsIsCutByTheNextAddition) {
  recent().assign(9, u"C:\\x.pdf");
  for (std::size_t i = 0; i < recent().size(); ++i) {
    recent()[i] = u"C:\\" + decimal(static_cast<std::int64_t>(i)) + u".pdf";
  }
  AddToRecentFiles({u"C:\\8.pdf"});
  EXPECT_THAT(recent(),
              ElementsAre(u"C:\\8.pdf", u"C:\\0.pdf", u"C:\\1.pdf", u"C:\\2.pdf", u"C:\\3.pdf"));
}

TEST_F(RecentFilesTest, NothingIsAddedOrSavedWhileTheListIsOff) {
  session.settings.recentFilesEnabled = false;
  AddToRecentFiles({u"C:\\a.pdf"});
  EXPECT_THAT(recent(), IsEmpty());
  session.settings.recentFilesEnabled = true;
  AddToRecentFiles({});
  EXPECT_EQ(iniValue(u"RecentFiles", u"Count"), std::nullopt);
}

TEST_F(RecentFilesTest, EveryAdditionIsSaved) {
  recent() = {u"C:\\a.pdf"};
  AddToRecentFiles({u"C:\\a.pdf"});
  EXPECT_EQ(iniValue(u"RecentFiles", u"Path0"), u"C:\\a.pdf");
}

TEST_F(RecentFilesTest, RelativePathsEnterAsAbsoluteOnes) {
  standIn().workingFolder = u"C:\\Texts";
  AddToRecentFiles({u"a.pdf"});
  EXPECT_THAT(recent(), ElementsAre(u"C:\\Texts\\a.pdf"));
}

TEST_F(RecentFilesTest, EveryEntryOfAFileIsRemoved) {
  recent() = {u"C:\\a.pdf", u"C:\\b.pdf", u"c:\\A.pdf"};
  RemoveFromRecentFiles(u"C:\\A.PDF");
  EXPECT_THAT(recent(), ElementsAre(u"C:\\b.pdf"));
  EXPECT_EQ(iniValue(u"RecentFiles", u"Count"), u"1");
}

TEST_F(RecentFilesTest, ARemovalThatFindsNothingSavesNothing) {
  recent() = {u"C:\\a.pdf"};
  RemoveFromRecentFiles(u"C:\\b.pdf");
  RemoveFromRecentFiles(u"");
  EXPECT_EQ(iniValue(u"RecentFiles", u"Count"), std::nullopt);
}

// The settings.

TEST_F(RecentFilesTest, TurningTheListOffEmptiesItOnDiskToo) {
  AddToRecentFiles({u"C:\\a.pdf", u"C:\\b.pdf"});
  session.settings.recentFilesEnabled = false;
  ApplyRecentFilesSettings();
  EXPECT_THAT(recent(), IsEmpty());
  EXPECT_EQ(iniValue(u"RecentFiles", u"Count"), u"0");
  EXPECT_EQ(iniValue(u"RecentFiles", u"Path0"), u"");
}

TEST_F(RecentFilesTest, ALowerLimitCutsTheList) {
  AddToRecentFiles({u"C:\\a.pdf", u"C:\\b.pdf", u"C:\\c.pdf", u"C:\\d.pdf", u"C:\\e.pdf"});
  session.settings.recentFilesMaxEntries = 3;
  ApplyRecentFilesSettings();
  EXPECT_THAT(recent(), ElementsAre(u"C:\\a.pdf", u"C:\\b.pdf", u"C:\\c.pdf"));
  EXPECT_EQ(iniValue(u"RecentFiles", u"Count"), u"3");
  EXPECT_EQ(iniValue(u"RecentFiles", u"Path3"), u"");
}

TEST_F(RecentFilesTest, AListWithinItsLimitIsNotSavedAgain) {
  recent() = {u"C:\\a.pdf"};
  ApplyRecentFilesSettings();
  EXPECT_EQ(iniValue(u"RecentFiles", u"Count"), std::nullopt);
}

class ClearRecentFilesTest : public SessionTest {
 protected:
  static std::vector<std::u16string>& recent() { return session.settings.recentFiles; }

  static void expectBox(const char16_t* text, platform::BoxButtons buttons) {
    ASSERT_FALSE(standIn().boxes.empty());
    EXPECT_EQ(standIn().boxes.back().title, u"Clear Recent Documents");
    EXPECT_EQ(standIn().boxes.back().text, text);
    EXPECT_EQ(standIn().boxes.back().buttons, buttons);
  }
};

TEST_F(ClearRecentFilesTest, YesEmptiesTheList) {
  AddToRecentFiles({u"C:\\a.pdf", u"C:\\b.pdf"});
  standIn().boxAnswers = {platform::BoxAnswer::Yes};
  ClearRecentFiles();
  expectBox(u"This will clear 2 recent document entries. Continue?", platform::BoxButtons::YesNo);
  EXPECT_THAT(recent(), IsEmpty());
  EXPECT_EQ(iniValue(u"RecentFiles", u"Count"), u"0");
}

TEST_F(ClearRecentFilesTest, NoKeepsTheList) {
  AddToRecentFiles({u"C:\\a.pdf"});
  standIn().boxAnswers = {platform::BoxAnswer::No};
  ClearRecentFiles();
  expectBox(u"This will clear 1 recent document entry. Continue?", platform::BoxButtons::YesNo);
  EXPECT_EQ(recent().size(), 1u);
  EXPECT_EQ(iniValue(u"RecentFiles", u"Count"), u"1");
}

TEST_F(ClearRecentFilesTest, AnEmptyListIsToldAndNothingIsAsked) {
  standIn().boxAnswers = {platform::BoxAnswer::Ok};
  ClearRecentFiles();
  expectBox(u"The Recent Documents list is already empty.", platform::BoxButtons::Ok);
}

}  // namespace
}  // namespace quillmere::test
