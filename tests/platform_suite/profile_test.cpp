#include "platform/profile.h"

#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "platform/files.h"
#include "platform/text.h"
#include "platform_suite/suite_side.h"

namespace quillmere::platform {
namespace {

constexpr std::uint32_t kSize = 260;

std::string utf16File(const std::u16string& text) {
  std::string bytes = "\xFF\xFE";
  for (const char16_t unit : text) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  }
  return bytes;
}

class ProfileSuite : public PlatformSuite {
 protected:
  void SetUp() override {
    PlatformSuite::SetUp();
    ini = in(u"settings.ini");
  }

  void put(const std::u16string& text) { putBytes(ini, utf16File(text)); }
  void putPlain(const std::string& text) { putBytes(ini, text); }

  // Asks for the key alone and for the whole section, which must agree.
  std::u16string text(const std::u16string& section, const std::u16string& key) const {
    const std::u16string alone = readProfileText(section, key, kSize, ini);
    EXPECT_EQ(textInSection(section, key), alone) << toUtf8(section + u" " + key);
    return alone;
  }
  std::u16string textInSection(const std::u16string& section, const std::u16string& key) const {
    for (const ProfileEntry& entry : readProfileSection(section, ini)) {
      if (equalIgnoringCase(entry.key, key)) return entry.value.substr(0, kSize - 1);
    }
    return {};
  }
  std::int32_t integer(const std::u16string& section, const std::u16string& key) const {
    return readProfileInteger(section, key, -7, ini);
  }
  bool write(const std::u16string& section, const std::u16string& key,
             const std::u16string& value) const {
    return writeProfileText(section, key, value, ini);
  }

  std::u16string ini;
};

TEST_F(ProfileSuite, AMissingFileReadsAsDefaults) {
  EXPECT_EQ(text(u"S", u"K"), u"");
  EXPECT_EQ(integer(u"S", u"K"), -7);
  EXPECT_FALSE(fileExists(ini));
}

TEST_F(ProfileSuite, ValuesAreFoundIgnoringCase) {
  put(u"[Window]\r\nWidth=1100\r\n[Panels]\r\nWidth=190\r\n");
  EXPECT_EQ(integer(u"Window", u"Width"), 1100);
  EXPECT_EQ(integer(u"WINDOW", u"width"), 1100);
  EXPECT_EQ(integer(u"panels", u"WIDTH"), 190);
  EXPECT_EQ(text(u"Window", u"Height"), u"");
  EXPECT_EQ(text(u"Other", u"Width"), u"");
}

TEST_F(ProfileSuite, BlanksAroundNamesAndValuesDoNotCount) {
  put(u"  [S]  \r\n  key  =  some value  \r\n\tother\t=\ttabbed\t\r\n");
  EXPECT_EQ(text(u"S", u"key"), u"some value");
  EXPECT_EQ(text(u"S", u"other"), u"tabbed");
}

TEST_F(ProfileSuite, OnePairOfEnclosingQuotesIsDropped) {
  put(u"[S]\r\na=\"  kept  \"\r\nb='single'\r\nc=\"\"twice\"\"\r\nd=\"open\r\ne=mid\"dle\r\n"
      u"f=\"mixed'\r\ng=\"\"\r\nh=\"\r\n");
  EXPECT_EQ(text(u"S", u"a"), u"  kept  ");
  EXPECT_EQ(text(u"S", u"b"), u"single");
  EXPECT_EQ(text(u"S", u"c"), u"\"twice\"");
  EXPECT_EQ(text(u"S", u"d"), u"\"open");
  EXPECT_EQ(text(u"S", u"e"), u"mid\"dle");
  EXPECT_EQ(text(u"S", u"f"), u"\"mixed'");
  EXPECT_EQ(text(u"S", u"g"), u"");
  EXPECT_EQ(text(u"S", u"h"), u"\"");
}

TEST_F(ProfileSuite, AValueMayHoldEqualsSignsAndBrackets) {
  put(u"[S]\r\nPath0=C:\\a=b\\[x];y.pdf\r\n");
  EXPECT_EQ(text(u"S", u"Path0"), u"C:\\a=b\\[x];y.pdf");
}

TEST_F(ProfileSuite, TheFirstOfDuplicatesCounts) {
  put(u"[S]\r\nk=1\r\nK=2\r\n[T]\r\nk=3\r\n[s]\r\nk=4\r\nonly=5\r\n");
  EXPECT_EQ(integer(u"S", u"k"), 1);
  EXPECT_EQ(integer(u"T", u"k"), 3);
  ASSERT_TRUE(write(u"S", u"k", u"9"));
  EXPECT_EQ(integer(u"S", u"k"), 9);
}

TEST_F(ProfileSuite, AKeyWithoutAnEqualsSignCountsAsOneWithoutAValue) {
  put(u"[S]\r\nk\r\nk=5\r\n");
  EXPECT_EQ(text(u"S", u"k"), u"");
  EXPECT_EQ(integer(u"S", u"k"), -7);
}

TEST_F(ProfileSuite, CommentsAreNotKeys) {
  put(u"; k=0\r\n[S]\r\n;k=1\r\n  ; k=2\r\nk=3\r\n");
  EXPECT_EQ(integer(u"S", u"k"), 3);
}

TEST_F(ProfileSuite, CommentsAndOtherKeysSurviveAWrite) {
  put(u"; top\r\n[S]\r\n; inside\r\na=1\r\n\r\n[T]\r\nb=2\r\n");
  ASSERT_TRUE(write(u"S", u"a", u"5"));
  ASSERT_TRUE(write(u"S", u"new", u"6"));
  const std::string bytes = bytesOf(ini);
  EXPECT_NE(bytes.find(utf16File(u"; top").substr(2)), std::string::npos);
  EXPECT_NE(bytes.find(utf16File(u"; inside").substr(2)), std::string::npos);
  EXPECT_EQ(integer(u"S", u"a"), 5);
  EXPECT_EQ(integer(u"S", u"new"), 6);
  EXPECT_EQ(integer(u"T", u"b"), 2);
  EXPECT_EQ(integer(u"T", u"new"), -7);
}

TEST_F(ProfileSuite, TextIsCutToOneLessThanTheSize) {
  put(u"[S]\r\nk=abcdef\r\n");
  EXPECT_EQ(readProfileText(u"S", u"k", 7, ini), u"abcdef");
  EXPECT_EQ(readProfileText(u"S", u"k", 6, ini), u"abcde");
  EXPECT_EQ(readProfileText(u"S", u"k", 2, ini), u"a");
  EXPECT_EQ(readProfileText(u"S", u"k", 1, ini), u"");
  EXPECT_EQ(readProfileText(u"S", u"k", 0, ini), u"");
}

TEST_F(ProfileSuite, IntegersAreTheLeadingDecimalNumber) {
  struct Row {
    std::u16string value;
    std::int32_t number;
  };
  const Row rows[] = {
      {u"0", 0},
      {u"12", 12},
      {u"-12", -12},
      {u"+12", 12},
      {u"007", 7},
      {u"12abc", 12},
      {u"12.9", 12},
      {u"12 34", 12},
      {u"abc", 0},
      {u"-", 0},
      {u"- 5", 0},
      {u"--5", 0},
      {u"0x10", 0},
      {u"0b11", 0},
      {u"0o17", 0},
      {u"\"42\"", 42},
      {u"2147483647", 2147483647},
      {u"-2147483648", -2147483647 - 1},
      {u"2147483648", -2147483647 - 1},
      {u"4294967295", -1},
      {u"4294967296", 0},
      {u"4294967301", 5},
      {u"", -7},
  };
  std::u16string file = u"[S]\r\n";
  for (std::size_t n = 0; n < std::size(rows); ++n) {
    file += u"k" + fromUtf8(std::to_string(n)) + u"=" + rows[n].value + u"\r\n";
  }
  put(file);
  for (std::size_t n = 0; n < std::size(rows); ++n) {
    EXPECT_EQ(integer(u"S", u"k" + fromUtf8(std::to_string(n))), rows[n].number)
        << toUtf8(rows[n].value);
  }
}

TEST_F(ProfileSuite, AFileWithTheMarkKeepsUnicode) {
  put(u"");
  const std::u16string path = u"C:\\Büro\\報告 \U0001F4C4\\отчёт.pdf";
  ASSERT_TRUE(write(u"RecentFiles", u"Path0", path));
  EXPECT_EQ(text(u"RecentFiles", u"Path0"), path);
  const std::string bytes = bytesOf(ini);
  EXPECT_EQ(bytes.substr(0, 2), "\xFF\xFE");
  EXPECT_NE(bytes.find(utf16File(path).substr(2)), std::string::npos);
}

TEST_F(ProfileSuite, ANewFileIsInTheCodePageAndLosesWhatLiesOutside) {
  ASSERT_TRUE(write(u"S", u"plain", u"abc"));
  ASSERT_TRUE(write(u"S", u"lost", u"報告"));
  EXPECT_EQ(bytesOf(ini).substr(0, 3), "[S]");
  EXPECT_EQ(text(u"S", u"plain"), u"abc");
  EXPECT_EQ(text(u"S", u"lost"), u"??");
}

TEST_F(ProfileSuite, AFileWithoutTheMarkStaysWithoutIt) {
  putPlain("[S]\r\nk=1\r\n");
  EXPECT_EQ(integer(u"S", u"k"), 1);
  ASSERT_TRUE(write(u"S", u"k", u"2"));
  EXPECT_EQ(bytesOf(ini).substr(0, 8), "[S]\r\nk=2");
}

TEST_F(ProfileSuite, LinesMayEndInALineFeedAlone) {
  putPlain("[S]\nk=1\n\nj=2\n[T]\nk=3");
  EXPECT_EQ(integer(u"S", u"k"), 1);
  EXPECT_EQ(integer(u"S", u"j"), 2);
  EXPECT_EQ(integer(u"T", u"k"), 3);
}

TEST_F(ProfileSuite, WritingReplacesAKeyInPlaceAndAddsNewOnesBehind) {
  put(u"[S]\r\na=1\r\nb=2\r\n[T]\r\nc=3\r\n");
  ASSERT_TRUE(write(u"s", u"A", u"one"));
  ASSERT_TRUE(write(u"S", u"z", u"new"));
  ASSERT_TRUE(write(u"U", u"d", u"4"));
  EXPECT_EQ(text(u"S", u"a"), u"one");
  EXPECT_EQ(text(u"S", u"b"), u"2");
  EXPECT_EQ(text(u"S", u"z"), u"new");
  EXPECT_EQ(text(u"T", u"c"), u"3");
  EXPECT_EQ(text(u"U", u"d"), u"4");
  const std::string bytes = bytesOf(ini);
  const auto place = [&](const std::u16string& part) {
    return bytes.find(utf16File(part).substr(2));
  };
  EXPECT_LT(place(u"=one"), place(u"b=2"));
  EXPECT_LT(place(u"b=2"), place(u"z=new"));
  EXPECT_LT(place(u"z=new"), place(u"[T]"));
  EXPECT_LT(place(u"c=3"), place(u"[U]"));
}

TEST_F(ProfileSuite, AnEmptyValueIsKeptAsAKey) {
  put(u"");
  ASSERT_TRUE(write(u"S", u"Path0", u"x"));
  ASSERT_TRUE(write(u"S", u"Path0", u""));
  EXPECT_EQ(text(u"S", u"Path0"), u"");
  EXPECT_NE(bytesOf(ini).find(utf16File(u"Path0=").substr(2)), std::string::npos);
}

TEST_F(ProfileSuite, AReadOnlyFileIsReadAndNotWritten) {
  put(u"[S]\r\nk=1\r\n");
  ASSERT_TRUE(setReadOnly(ini, true));
  EXPECT_EQ(integer(u"S", u"k"), 1);
  EXPECT_FALSE(write(u"S", u"k", u"2"));
  EXPECT_EQ(bytesOf(ini), utf16File(u"[S]\r\nk=1\r\n"));
}

TEST_F(ProfileSuite, AValueThatStandsThereAlreadyIsLeftAlone) {
  put(u"[S]\r\n  k  =  \"1\"  \r\nlong=12\r\nempty=\r\n");
  EXPECT_TRUE(write(u"S", u"k", u"1"));
  EXPECT_TRUE(write(u"s", u"EMPTY", u""));
  EXPECT_EQ(bytesOf(ini), utf16File(u"[S]\r\n  k  =  \"1\"  \r\nlong=12\r\nempty=\r\n"));
  EXPECT_TRUE(write(u"S", u"long", u"1"));
  EXPECT_EQ(text(u"S", u"long"), u"1");
  EXPECT_TRUE(write(u"S", u"absent", u""));
  EXPECT_NE(bytesOf(ini).find(utf16File(u"absent=").substr(2)), std::string::npos);
}

TEST_F(ProfileSuite, WritingIntoAMissingFolderFails) {
  EXPECT_FALSE(writeProfileText(u"S", u"k", u"1", in(u"none\\settings.ini")));
}

TEST_F(ProfileSuite, AFileInUseIsNotWritten) {
  put(u"[S]\r\nk=1\r\n");
  const FileLock lock(ini, LockKind::Exclusive);
  EXPECT_FALSE(write(u"S", u"k", u"2"));
}

TEST_F(ProfileSuite, ASectionIsReadInTheOrderOfTheFile) {
  put(u"[T]\r\nother=1\r\n[S]\r\n  b  =  \" 2 \"  \r\n; "
      u"a=0\r\n\r\na=1\r\nB=3\r\nbare\r\n[U]\r\na=4\r\n");
  const std::vector<ProfileEntry> entries = readProfileSection(u"s", ini);
  std::u16string seen;
  for (const ProfileEntry& entry : entries) seen += entry.key + u"=" + entry.value + u"|";
  EXPECT_EQ(seen, u"b= 2 |a=1|B=3|bare=|");
  EXPECT_TRUE(readProfileSection(u"none", ini).empty());
  EXPECT_TRUE(readProfileSection(u"S", in(u"none.ini")).empty());
}

TEST_F(ProfileSuite, ALongSectionIsReadWhole) {
  std::u16string file = u"[S]\r\n";
  for (int n = 0; n < 200; ++n) {
    file += u"k" + fromUtf8(std::to_string(n)) + u"=" + std::u16string(200, u'v') + u"\r\n";
  }
  put(file);
  const std::vector<ProfileEntry> entries = readProfileSection(u"S", ini);
  ASSERT_EQ(entries.size(), 200u);
  EXPECT_EQ(entries.back().key, u"k199");
  EXPECT_EQ(entries.back().value.size(), 200u);
}

TEST_F(ProfileSuite, SomebodyElsesChangesAreSeen) {
  put(u"[S]\r\nk=1\r\n");
  EXPECT_EQ(integer(u"S", u"k"), 1);
  put(u"[S]\r\nk=222\r\n");
  EXPECT_EQ(integer(u"S", u"k"), 222);
}

TEST_F(ProfileSuite, AThousandRandomEditsReadBackTheSame) {
  put(u"");
  std::mt19937 random(20200101);
  const auto pick = [&random](std::size_t count) { return random() % count; };
  const std::u16string sections[] = {u"Defaults", u"Binders", u"RecentFiles", u"Two words"};
  const std::u16string keys[] = {u"Count", u"Path0", u"Path1", u"Path10", u"X", u"Color0_Name"};
  const std::u16string values[] = {u"0",       u"-1",         u"C:\\a b\\c=d.pdf",
                                   u"報告",    u"#FFEB3C",    u"a;b",
                                   u"",        u"\U0001F4C4", u"[x]",
                                   u"it's \"", u"100%",       std::u16string(200, u'y')};
  std::map<std::pair<std::u16string, std::u16string>, std::u16string> model;
  for (int n = 0; n < 1000; ++n) {
    const std::u16string& section = sections[pick(std::size(sections))];
    const std::u16string& key = keys[pick(std::size(keys))];
    const std::u16string& value = values[pick(std::size(values))];
    ASSERT_TRUE(write(section, key, value));
    model[{section, key}] = value;
    if (n % 100 != 99) continue;
    for (const auto& [place, expected] : model) {
      ASSERT_EQ(text(place.first, place.second), expected);
    }
  }
  EXPECT_EQ(bytesOf(ini).substr(0, 2), "\xFF\xFE");
}

}  // namespace
}  // namespace quillmere::platform
