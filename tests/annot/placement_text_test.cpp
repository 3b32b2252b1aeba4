#include "annot/placement_text.h"

#include <gtest/gtest.h>

#include <string>

#include "annot/placement_fonts.h"
#include "support/session_test.h"

namespace quillmere::test {
namespace {

class PlacementTextTest : public SessionTest {};

TEST_F(PlacementTextTest, NoTextIsOnePixel) {
  int width = 0;
  int height = 0;
  MeasureTextPixels(u"", 40, 0, width, height);
  EXPECT_EQ(width, 1);
  EXPECT_EQ(height, 1);
}

TEST_F(PlacementTextTest, SidesAreRoundedUpWithOneToSpare) {
  int width = 0;
  int height = 0;
  MeasureTextPixels(u"Hello", 40, 0, width, height);
  EXPECT_EQ(width, 93);  // 40 * 2.278 = 91.12
  EXPECT_EQ(height, 47);
}

TEST_F(PlacementTextTest, ThePictureHasFourPixelsAPoint) {
  const platform::SharedPicture picture = RenderTextBitmap(u"Hello", 10, 0, 0);
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->width, 93);
  EXPECT_EQ(picture->height, 47);
  const TextMetrics metrics = measureTextDrop(u"Hello", 10, 0);
  EXPECT_EQ(metrics.width, 93 / 4.0);
  EXPECT_EQ(metrics.height, 47 / 4.0);
}

std::uint32_t inkOf(const platform::SharedPicture& picture) {
  for (const std::uint32_t pixel : picture->pixels) {
    if (pixel != 0) return pixel;
  }
  return 0;
}

TEST_F(PlacementTextTest, TheColourIsThatOfTheTablesRow) {
  session.settings.textColors[3] = {u"Odd", 0x12, 0x34, 0x56};
  EXPECT_EQ(inkOf(RenderTextBitmap(u"H", 10, 0, 3)), 0xFF123456u);
  session.settings.textColors[0] = {u"First", 1, 2, 3};
  EXPECT_EQ(inkOf(RenderTextBitmap(u"H", 10, 0, 8)), 0xFF010203u);
  EXPECT_EQ(inkOf(RenderTextBitmap(u"H", 10, 0, -1)), 0xFF010203u);
}

TEST_F(PlacementTextTest, RowsBeyondTheFontsCountAsTheFirst) {
  EXPECT_EQ(RenderTextBitmap(u"Hello", 10, 6, 0)->width,
            RenderTextBitmap(u"Hello", 10, 0, 0)->width);
  EXPECT_GT(RenderTextBitmap(u"Hello", 10, 1, 0)->width,
            RenderTextBitmap(u"Hello", 10, 0, 0)->width);
}

TEST_F(PlacementTextTest, BlankTextHasNoPicture) {
  EXPECT_FALSE(RenderTextBitmap(u"", 10, 0, 0));
  EXPECT_FALSE(RenderTextBitmap(u" \t\r\n ", 10, 0, 0));
  EXPECT_TRUE(isBlankText(u"  "));
  EXPECT_FALSE(isBlankText(u" x"));
  for (const char16_t* text : {u"\u3000\u3000", u"\u2003\u00A0\u2009", u"\u2028", u"\v\f"}) {
    EXPECT_TRUE(isBlankText(text));
  }
  EXPECT_FALSE(isBlankText(u"\u200B\u3001"));
}

TEST_F(PlacementTextTest, LongTextTakesAtMostSixteenMegapixels) {
  const platform::SharedPicture picture = RenderTextBitmap(std::u16string(256, u'W'), 96, 0, 0);
  ASSERT_TRUE(picture);
  EXPECT_LE(picture->pixels.size(), 16'000'000u);
  EXPECT_GT(picture->pixels.size(), 12'000'000u);
  const auto huge = RenderTextBitmap(std::u16string(1 << 20, u'W'), 96, 0, 0);
  ASSERT_TRUE(huge);
  EXPECT_LE(huge->pixels.size(), 16'000'000u);
}

TEST_F(PlacementTextTest, TheAscentIsTheFamilysOwn) {
  EXPECT_NEAR(FontAscentPoints(0, 12), 12 * 1854.0 / 2048, 1e-9);
  EXPECT_NEAR(FontAscentPoints(2, 12), 12 * 1825.0 / 2048, 1e-9);
  EXPECT_NEAR(FontAscentPoints(5, 12), 12 * 1705.0 / 2048, 1e-9);
}

TEST_F(PlacementTextTest, WithoutTheFamilyTheTablesRatioCounts) {
  platform::standIn().fontFilesThere = false;
  EXPECT_NEAR(FontAscentPoints(0, 100), 71.8, 1e-9);
  EXPECT_NEAR(FontAscentPoints(3, 100), 68.3, 1e-9);
  EXPECT_NEAR(FontAscentPoints(4, 100), 62.9, 1e-9);
}

TEST_F(PlacementTextTest, StandardFontsHaveWestEuropeanText) {
  EXPECT_THAT(standardFontCodes(u"A~ \u2013\u20AC\u201E\u201C\u00E9\u0161\u0178"),
              testing::Optional(
                  testing::ElementsAre('A', '~', ' ', 0x96, 0x80, 0x84, 0x93, 0xE9, 0x9A, 0x9F)));
  EXPECT_THAT(standardFontCodes(u"\u2022\u00A0\u00AD\u2122\u0152"),
              testing::Optional(testing::ElementsAre(0x95, 0xA0, 0xAD, 0x99, 0x8C)));
  for (const char16_t* text : {u"\u0141ukasz", u"\u03B1", u"one\ntwo", u"\U0001F600", u"\u0081",
                               u"\u007F", u"\u2123", u"\u0151"}) {
    EXPECT_EQ(standardFontCodes(text), std::nullopt);
  }
  EXPECT_TRUE(standardFontCodes(std::u16string(4096, u'x')));
}

TEST_F(PlacementTextTest, TheTableNamesSixFonts) {
  EXPECT_STREQ(PlacementFontTable[3].baseFont, "Times-Bold");
  EXPECT_TRUE(isBold(PlacementFontTable[3]));
  EXPECT_FALSE(isBold(PlacementFontTable[4]));
  EXPECT_EQ(std::u16string(placementFont(-1).label), u"Helvetica");
}

}  // namespace
}  // namespace quillmere::test
