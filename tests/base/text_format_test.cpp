#include "base/text_format.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace quillmere::test {
namespace {

TEST(TextFormatTest, NumbersAreWrittenInDecimal) {
  EXPECT_EQ(decimal(0), u"0");
  EXPECT_EQ(decimal(-42), u"-42");
  EXPECT_EQ(decimal(std::numeric_limits<std::int64_t>::min()), u"-9223372036854775808");
  EXPECT_EQ(decimal(0xFFFFFFFF), u"4294967295");
}

TEST(TextFormatTest, NumbersKeepSixSignificantDigits) {
  EXPECT_EQ(sixDigits(0), u"0");
  EXPECT_EQ(sixDigits(1234.567), u"1234.57");
  EXPECT_EQ(sixDigits(-0.5), u"-0.5");
  EXPECT_EQ(sixDigits(12345678), u"1.23457e+07");
  EXPECT_EQ(sixDigits(-std::numeric_limits<double>::max()), u"-1.79769e+308");
}

TEST(TextFormatTest, PlaceholdersTakeTheValuesInOrder) {
  EXPECT_EQ(formatText(u"&%d  %s", {u"3", u"a.pdf"}), u"&3  a.pdf");
  EXPECT_EQ(formatText(u"%u%lu%ls%d%s", {u"1", u"2", u"3", u"4", u"5"}), u"12345");
  EXPECT_EQ(formatText(u"%d second%s.", {u"1", u""}), u"1 second.");
}

TEST(TextFormatTest, ValuesAreNotReadAsPatterns) {
  EXPECT_EQ(formatText(u"\"%s\" %s", {u"100%d %s %%", u"b"}), u"\"100%d %s %%\" b");
}

TEST(TextFormatTest, PercentSignsStandWhereTheyAreDoubledOrMeanNothing) {
  EXPECT_EQ(formatText(u"%d%%", {u"50"}), u"50%");
  EXPECT_EQ(formatText(u"50% or %x", {}), u"50% or %x");
  EXPECT_EQ(formatText(u"%", {}), u"%");
}

TEST(TextFormatTest, AMissingValueGivesNothing) {
  EXPECT_EQ(formatText(u"a%sb%sc", {u"-"}), u"a-bc");
}

}  // namespace
}  // namespace quillmere::test
