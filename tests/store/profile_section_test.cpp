#include "store/profile_section.h"

#include "support/settings_file.h"

namespace quillmere::test {
namespace {

using ProfileSectionTest = SettingsFileTest;

TEST_F(ProfileSectionTest, FindsKeysIgnoringCaseAndTheFirstOfTwo) {
  putIni(u"[S]\nWidth=12 units\nwidth=13\n[T]\nwidth=14\n");
  const ProfileSection section(u"s", kIniPath);
  EXPECT_EQ(section.integer(u"WIDTH", -7), 12);
  EXPECT_EQ(section.text(u"Width", 64), u"12 units");
}

TEST_F(ProfileSectionTest, AbsentAndEmptyValuesReadAsTheFallback) {
  putIni(u"[S]\nempty=\n");
  const ProfileSection section(u"S", kIniPath);
  EXPECT_EQ(section.integer(u"empty", -7), -7);
  EXPECT_EQ(section.integer(u"absent", -7), -7);
  EXPECT_EQ(section.text(u"absent", 64), u"");
  EXPECT_EQ(ProfileSection(u"None", kIniPath).integer(u"empty", 5), 5);
}

TEST_F(ProfileSectionTest, TextIsCutToOneLessThanTheSize) {
  putIni(u"[S]\nk=abcdef\n");
  const ProfileSection section(u"S", kIniPath);
  EXPECT_EQ(section.text(u"k", 7), u"abcdef");
  EXPECT_EQ(section.text(u"k", 6), u"abcde");
  EXPECT_EQ(section.text(u"k", 1), u"");
  EXPECT_EQ(section.text(u"k", 0), u"");
}

TEST_F(ProfileSectionTest, HoldsWhatIsThereWhole) {
  putIni(u"[S]\nempty=\nk=12\n");
  const ProfileSection section(u"S", kIniPath);
  EXPECT_TRUE(section.holds(u"K", u"12"));
  EXPECT_FALSE(section.holds(u"k", u"1"));
  EXPECT_TRUE(section.holds(u"empty", u""));
  EXPECT_FALSE(section.holds(u"absent", u""));
}

TEST_F(ProfileSectionTest, StaysAsItWasWhenTheFileChanges) {
  putIni(u"[S]\nk=1\n");
  const ProfileSection section(u"S", kIniPath);
  putIni(u"[S]\nk=2\n");
  EXPECT_EQ(section.integer(u"k", -7), 1);
}

}  // namespace
}  // namespace quillmere::test
