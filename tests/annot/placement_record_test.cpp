#include "annot/placement_record.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <random>
#include <string>

namespace quillmere::test {
namespace {

std::optional<Placement> parsed(std::u16string_view record) {
  Placement placement;
  if (!ParsePlacementRecord(record, placement)) return std::nullopt;
  return placement;
}

Placement stampAt(double x, double y, double width, double height, double rotation = 0) {
  Placement placement;
  placement.x = x;
  placement.y = y;
  placement.width = width;
  placement.height = height;
  placement.rotation = rotation;
  placement.stampIndex = 3;
  return placement;
}

void expectBox(const Placement& placement, double x, double y, double width, double height) {
  EXPECT_EQ(placement.x, x);
  EXPECT_EQ(placement.y, y);
  EXPECT_EQ(placement.width, width);
  EXPECT_EQ(placement.height, height);
}

TEST(PlacementRecordTest, AStampIsItsTurnAndItsBox) {
  EXPECT_EQ(FormatPlacementRecord(stampAt(72, 640.5, 118.25, 14, -std::acos(0.0))),
            u"QMR1;S;-1.5708;72;640.5;118.25;14;");
}

TEST(PlacementRecordTest, ATextDropEndsWithItsText) {
  Placement text = stampAt(72, 640.5, 118.25, 14);
  text.kind = PlacementKind::TextDrop;
  text.fontSize = 12;
  text.fontIndex = 1;
  text.colorIndex = 3;
  text.text = u"Paid; in full";
  EXPECT_EQ(FormatPlacementRecord(text), u"QMR1;T;0;72;640.5;118.25;14;12;1;3;Paid; in full");
}

TEST(PlacementRecordTest, NumbersKeepSixDigits) {
  EXPECT_EQ(FormatPlacementRecord(stampAt(1234.567, 1e-7, 12345678, 0.1 + 0.2)),
            u"QMR1;S;0;1234.57;1e-07;1.23457e+07;0.3;");
}

TEST(PlacementRecordTest, MinusZeroIsWrittenAsZero) {
  EXPECT_EQ(FormatPlacementRecord(stampAt(-0.0, 0, 1, 1, -0.0)), u"QMR1;S;0;0;0;1;1;");
}

TEST(PlacementRecordTest, AStampIsReadAsOneFromADocument) {
  const auto stamp = parsed(u"QMR1;S;0.5;1;2;3;4;");
  ASSERT_TRUE(stamp);
  EXPECT_EQ(stamp->kind, PlacementKind::Stamp);
  EXPECT_EQ(stamp->rotation, 0.5);
  expectBox(*stamp, 1, 2, 3, 4);
  EXPECT_EQ(stamp->stampIndex, -1);
  EXPECT_EQ(stamp->annotIndex, -1);
  EXPECT_EQ(stamp->image, nullptr);
  EXPECT_FALSE(stamp->selected);
}

TEST(PlacementRecordTest, TheLastFieldNeedsItsSemicolon) {
  EXPECT_TRUE(parsed(u"QMR1;S;0;1;2;3;4;"));
  EXPECT_FALSE(parsed(u"QMR1;S;0;1;2;3;4"));
  EXPECT_FALSE(parsed(u"QMR1;S;0;1;2;3;"));
  EXPECT_FALSE(parsed(u"QMR1;T;0;1;2;3;4;12;0;0"));
  EXPECT_FALSE(parsed(u"QMR1;T;0;1;2;3;4;"));
}

TEST(PlacementRecordTest, WhatFollowsAStampsLastFieldIsIgnored) {
  const auto stamp = parsed(u"QMR1;S;0;1;2;3;4;more;of it");
  ASSERT_TRUE(stamp);
  EXPECT_TRUE(stamp->text.empty());
}

TEST(PlacementRecordTest, ATextDropMayHaveNoText) {
  const auto text = parsed(u"QMR1;T;0;1;2;3;4;12;0;0;");
  ASSERT_TRUE(text);
  EXPECT_EQ(text->kind, PlacementKind::TextDrop);
  EXPECT_EQ(text->text, u"");
  EXPECT_EQ(text->image, nullptr);
  EXPECT_EQ(text->stampIndex, 0);
}

TEST(PlacementRecordTest, FontsAndColoursBeyondTheirTablesAreCorrected) {
  const auto text = parsed(u"QMR1;T;0;1;2;3;4;2;9;99;Hi");
  ASSERT_TRUE(text);
  EXPECT_EQ(text->fontSize, 4);
  EXPECT_EQ(text->fontIndex, 0);
  EXPECT_EQ(text->colorIndex, 0);
  EXPECT_EQ(text->text, u"Hi");
  EXPECT_EQ(parsed(u"QMR1;T;0;1;2;3;4;97;5;7;")->fontSize, 96);
  EXPECT_EQ(parsed(u"QMR1;T;0;1;2;3;4;99999999999999999999;-1;-2147483649;")->fontSize, 96);
  EXPECT_EQ(parsed(u"QMR1;T;0;1;2;3;4;-99999999999999999999;5;7;")->fontSize, 4);
  EXPECT_EQ(parsed(u"QMR1;T;0;1;2;3;4;12;5;7;")->fontIndex, 5);
  EXPECT_EQ(parsed(u"QMR1;T;0;1;2;3;4;12;5;7;")->colorIndex, 7);
  EXPECT_EQ(parsed(u"QMR1;T;0;1;2;3;4;12;-1;-7;")->fontIndex, 0);
}

TEST(PlacementRecordTest, OnlyReadingLimitsFontsAndColours) {
  Placement text = stampAt(1, 2, 3, 4);
  text.kind = PlacementKind::TextDrop;
  text.fontSize = 200;
  text.fontIndex = 17;
  text.colorIndex = -3;
  EXPECT_EQ(FormatPlacementRecord(text), u"QMR1;T;0;1;2;3;4;200;17;-3;");
}

TEST(PlacementRecordTest, TextInPlaceOfANumberCountsAsZero) {
  const auto stamp = parsed(u"QMR1;S;0;abc;2;\u0663;;");
  ASSERT_TRUE(stamp);
  expectBox(*stamp, 0, 2, 0, 0);
}

TEST(PlacementRecordTest, ANumberMayBeFollowedByOtherText) {
  const auto stamp = parsed(u"QMR1;S; 0.25rad;1pt;+2;3,5;4e0x;");
  ASSERT_TRUE(stamp);
  EXPECT_EQ(stamp->rotation, 0.25);
  expectBox(*stamp, 1, 2, 3, 4);
}

TEST(PlacementRecordTest, WhatIsNotFiniteIsRefused) {
  EXPECT_FALSE(parsed(u"QMR1;S;1e999;1;2;3;4;"));
  EXPECT_FALSE(parsed(u"QMR1;S;0;-inf;2;3;4;"));
  EXPECT_FALSE(parsed(u"QMR1;T;0;1;2;3;nan;12;0;0;Hi"));
}

TEST(PlacementRecordTest, OtherMagicFormsAndShortTextsAreRefused) {
  EXPECT_FALSE(parsed(u"QMR2;S;0;1;2;3;4;"));
  EXPECT_FALSE(parsed(u"qmr1;S;0;1;2;3;4;"));
  EXPECT_FALSE(parsed(u"QMR1;X;0;1;2;3;4;"));
  EXPECT_FALSE(parsed(u"QMR1;s;0;1;2;3;4;"));
  EXPECT_FALSE(parsed(u"QMR1;SS;0;1;2;3;4;"));
  EXPECT_FALSE(parsed(u"QMR1;S"));
  EXPECT_FALSE(parsed(u"QMR1;S;"));
  EXPECT_FALSE(parsed(u""));
}

TEST(PlacementRecordTest, ARefusedRecordLeavesThePlacementAlone) {
  Placement placement = stampAt(9, 8, 7, 6, 5);
  placement.text = u"kept";
  EXPECT_FALSE(ParsePlacementRecord(u"QMR1;T;0;1;2;3;4;12;0;", placement));
  expectBox(placement, 9, 8, 7, 6);
  EXPECT_EQ(placement.text, u"kept");
}

TEST(PlacementRecordTest, TextKeepsSemicolonsAndLineBreaks) {
  Placement text = stampAt(1, 2, 3, 4);
  text.kind = PlacementKind::TextDrop;
  text.text = u"one; two;\r\nthree;\u0142\U0001F600";
  const auto read = parsed(FormatPlacementRecord(text));
  ASSERT_TRUE(read);
  EXPECT_EQ(read->text, text.text);
}

TEST(PlacementRecordTest, BoxesBeyondAnyPageAreLimited) {
  const auto stamp = parsed(u"QMR1;S;0;1e300;-1e300;1e300;-5;");
  ASSERT_TRUE(stamp);
  expectBox(*stamp, kFarthestPlace, -kFarthestPlace, kFarthestPlace, 0);
}

TEST(PlacementRecordTest, AMegabyteOfTextIsRead) {
  const std::u16string text(1 << 20, u'x');
  const auto read = parsed(u"QMR1;T;0;1;2;3;4;12;0;0;" + text);
  ASSERT_TRUE(read);
  EXPECT_EQ(read->text, text);
}

// Numbers that the six digits of a record hold exactly.
double randomNumber(std::mt19937& random, int least, int most) {
  return std::uniform_int_distribution<int>(least, most)(random) / 8.0;
}

std::u16string randomRecord(std::mt19937& random) {
  Placement placement = stampAt(randomNumber(random, -900, 900), randomNumber(random, -900, 900),
                                randomNumber(random, 0, 900), randomNumber(random, 0, 900),
                                randomNumber(random, -50, 50));
  if (random() % 2 == 0) return FormatPlacementRecord(placement);
  placement.kind = PlacementKind::TextDrop;
  placement.fontSize = static_cast<std::int32_t>(4 + random() % 93);
  placement.fontIndex = static_cast<std::int32_t>(random() % 6);
  placement.colorIndex = static_cast<std::int32_t>(random() % 8);
  for (std::size_t length = random() % 20; length > 0; --length) {
    placement.text += static_cast<char16_t>(1 + random() % 0xFFFF);
  }
  return FormatPlacementRecord(placement);
}

std::u16string damaged(std::u16string record, std::mt19937& random) {
  constexpr std::u16string_view kUnits = u"0123456789;.-+eEQMRSTinfax \u00E9";
  for (std::size_t changes = 1 + random() % 4; changes > 0 && !record.empty(); --changes) {
    const std::size_t at = random() % record.size();
    const char16_t unit = kUnits[random() % kUnits.size()];
    if (random() % 3 == 0) {
      record.erase(at, 1 + random() % 3);
    } else if (random() % 2 == 0) {
      record.insert(at, 1, unit);
    } else {
      record[at] = unit;
    }
  }
  return record;
}

TEST(PlacementRecordTest, AHundredThousandGoodRecordsComeBackUnchanged) {
  std::mt19937 random(7);
  for (int i = 0; i < 100'000; ++i) {
    const std::u16string record = randomRecord(random);
    const auto read = parsed(record);
    ASSERT_TRUE(read) << i;
    ASSERT_EQ(FormatPlacementRecord(*read), record) << i;
  }
}

TEST(PlacementRecordTest, AHundredThousandDamagedRecordsAreRefusedOrReadSoundly) {
  std::mt19937 random(11);
  int accepted = 0;
  for (int i = 0; i < 100'000; ++i) {
    const auto read = parsed(damaged(randomRecord(random), random));
    if (!read) continue;
    ++accepted;
    ASSERT_TRUE(std::isfinite(read->rotation)) << i;
    ASSERT_LE(std::abs(read->x), kFarthestPlace) << i;
    ASSERT_GE(read->width, 0) << i;
    // What was accepted is written in a form that reads as the same placement.
    const std::u16string written = FormatPlacementRecord(*read);
    const auto again = parsed(written);
    ASSERT_TRUE(again) << i;
    ASSERT_EQ(FormatPlacementRecord(*again), written) << i;
  }
  EXPECT_GT(accepted, 10'000);
}

}  // namespace
}  // namespace quillmere::test
