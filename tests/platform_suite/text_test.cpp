#include "platform/text.h"

#include <gtest/gtest.h>

#include <string>

namespace quillmere::platform {
namespace {

struct Pair {
  std::u16string units;
  std::string bytes;
};

TEST(TextSuite, WellFormedTextConvertsBothWays) {
  const Pair pairs[] = {
      {u"", ""},
      {u"plain", "plain"},
      {std::u16string(u"a\0b", 3), std::string("a\0b", 3)},
      {u"\u007F\u0080\u07FF\u0800", "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80"},
      {u"\uFEFF\uFFFD\uFFFF", "\xEF\xBB\xBF\xEF\xBF\xBD\xEF\xBF\xBF"},
      {u"\U00010000\U0010FFFF", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
      {u"Straße 報告 \U0001F4C4",
       "Stra\xC3\x9F"
       "e \xE5\xA0\xB1\xE5\x91\x8A \xF0\x9F\x93\x84"},
  };
  for (const Pair& pair : pairs) {
    EXPECT_EQ(toUtf8(pair.units), pair.bytes);
    EXPECT_EQ(fromUtf8(pair.bytes), pair.units);
  }
}

TEST(TextSuite, EveryUnitOutsideTheSurrogatesSurvivesTheRoundTrip) {
  std::u16string all;
  for (int unit = 0; unit < 0x10000; ++unit) {
    if (unit < 0xD800 || unit > 0xDFFF) all += static_cast<char16_t>(unit);
  }
  EXPECT_EQ(fromUtf8(toUtf8(all)), all);
}

TEST(TextSuite, UnpairedSurrogatesBecomeTheReplacementCharacter) {
  const std::string replacement = "\xEF\xBF\xBD";
  EXPECT_EQ(toUtf8(std::u16string{u'a', 0xD83D, u'b'}), "a" + replacement + "b");
  EXPECT_EQ(toUtf8(std::u16string{u'a', 0xDE00}), "a" + replacement);
  EXPECT_EQ(toUtf8(std::u16string{0xD83D}), replacement);
  EXPECT_EQ(toUtf8(std::u16string{0xDE00, 0xD83D}), replacement + replacement);
  EXPECT_EQ(toUtf8(std::u16string{0xD83D, 0xD83D, 0xDE00}), replacement + "\xF0\x9F\x98\x80");
}

TEST(TextSuite, MalformedBytesBecomeReplacementCharactersAndTheRestStays) {
  const std::string malformed[] = {
      "\x80",              // cannot begin a sequence
      "\xFF",              // never occurs
      "\xC0\xAF",          // longer than needed
      "\xE0\x80\xAF",      // longer than needed
      "\xED\xA0\x80",      // a surrogate
      "\xF4\x90\x80\x80",  // beyond the last code point
      "\xE5\xA0",
      "\xF0\x9F\x98",  // broken off
      "\xC3",
      "\xF8\x88\x80\x80\x80",  // broken off; five bytes
  };
  for (const std::string& bytes : malformed) {
    SCOPED_TRACE(testing::PrintToString(bytes));
    const std::u16string text = fromUtf8("a" + bytes + "z");
    ASSERT_GE(text.size(), 3u);
    EXPECT_EQ(text.front(), u'a');
    EXPECT_EQ(text.back(), u'z');
    EXPECT_EQ(text.find_first_not_of(u'\xFFFD', 1), text.size() - 1);
    const std::u16string atEnd = fromUtf8("a" + bytes);
    ASSERT_GE(atEnd.size(), 2u);
    EXPECT_EQ(atEnd.find_first_not_of(u'\xFFFD', 1), std::u16string::npos);
  }
}

TEST(TextSuite, LowerCaseOfLatinGreekAndCyrillicLetters) {
  EXPECT_EQ(toLower(u"AZaz09 _-\\[]@`"), u"azaz09 _-\\[]@`");
  EXPECT_EQ(toLower(u"ÀÉÎÕÜÞ×ß÷ÿ"), u"àéîõüþ×ß÷ÿ");
  EXPECT_EQ(toLower(u"ĀČĞŁŐŠŽŸƏ"), u"āčğłőšžÿə");
  EXPECT_EQ(toLower(u"ΑΒΓΣΩΆΈΏ"), u"αβγσωάέώ");
  EXPECT_EQ(toLower(u"АБВЯЁЂЏҐҮ"), u"абвяёђџґү");
  EXPECT_EQ(toLower(u"ԱՖ"), u"աֆ");
  EXPECT_EQ(toLower(u"ＡＺ"), u"ａｚ");
}

TEST(TextSuite, UnitsWithoutCaseStayAsTheyAre) {
  EXPECT_EQ(toLower(u"報告 123 ªº ١٢"), u"報告 123 ªº ١٢");
  const std::u16string pair = u"\U00010400";  // a capital letter beyond the basic plane
  EXPECT_EQ(toLower(pair), pair);
  EXPECT_EQ(lowerUnit(0xD801), 0xD801);
  EXPECT_EQ(lowerUnit(0), 0);
}

TEST(TextSuite, LowerCaseIsSettledAfterOneStep) {
  for (int unit = 0; unit < 0x10000; ++unit) {
    const char16_t lower = lowerUnit(static_cast<char16_t>(unit));
    EXPECT_EQ(lowerUnit(lower), lower) << std::hex << unit;
  }
}

TEST(TextSuite, ComparingIgnoresCaseAndNothingElse) {
  EXPECT_TRUE(equalIgnoringCase(u"C:\\Größe\\A.PDF", u"c:\\GRÖßE\\a.pdf"));
  EXPECT_TRUE(equalIgnoringCase(u"", u""));
  EXPECT_FALSE(equalIgnoringCase(u"a", u""));
  EXPECT_FALSE(equalIgnoringCase(u"a", u"ab"));
  EXPECT_FALSE(equalIgnoringCase(u"ss", u"ß"));
  EXPECT_FALSE(equalIgnoringCase(u"e", u"é"));
  EXPECT_FALSE(equalIgnoringCase(u"a\\b", u"a/b"));
}

TEST(TextSuite, EqualTextsAreThoseWithTheSameLowerCase) {
  for (int unit = 0; unit < 0x10000; ++unit) {
    const std::u16string one(1, static_cast<char16_t>(unit));
    EXPECT_TRUE(equalIgnoringCase(one, toLower(one))) << std::hex << unit;
  }
}

TEST(TextSuite, LettersAndDigitsOfAnyScript) {
  for (const char16_t unit : std::u16string(u"azAZ09àßŁжЯΩא報あ한")) {
    EXPECT_TRUE(isLetterOrDigit(unit)) << std::hex << static_cast<int>(unit);
  }
  for (const char16_t unit : std::u16string(u" \t_-.,;:'\"/\\()[]«»–—…€§©\u00A0\u3000、。")) {
    EXPECT_FALSE(isLetterOrDigit(unit)) << std::hex << static_cast<int>(unit);
  }
}

}  // namespace
}  // namespace quillmere::platform
