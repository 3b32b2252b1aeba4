#include "platform/pictures.h"

#include <algorithm>
#include <string>

#include "platform_suite/suite_side.h"
#include "support/png_file.h"

namespace quillmere::platform {
namespace {

using test::encodePng;
using test::plainPng;

class PicturesSuite : public PlatformSuite {
 protected:
  SharedPicture loaded(const std::string& bytes, const std::u16string& name = u"a.png") const {
    putBytes(in(name), bytes);
    return loadPicture(in(name));
  }
};

const Picture kSmall{
    3, 2, {0xFF102030, 0x80FF0000, 0x00000000, 0xFFFFFFFF, 0xFF00FF00, 0x400000FF}};

TEST_F(PicturesSuite, APictureComesBackAsItWasSaved) {
  ASSERT_TRUE(savePng(kSmall, in(u"a.png")));
  const SharedPicture picture = loadPicture(in(u"a.png"));
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->width, 3);
  EXPECT_EQ(picture->height, 2);
  EXPECT_EQ(picture->pixels, kSmall.pixels);
}

TEST_F(PicturesSuite, RowsComeFromTheTopAndTheContentDecides) {
  const SharedPicture picture = loaded(encodePng(kSmall), u"really.jpg");
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->pixels, kSmall.pixels);
}

TEST_F(PicturesSuite, SavingReplacesAFile) {
  putBytes(in(u"a.png"), plainPng(200, 200, 0xFF123456));
  ASSERT_TRUE(savePng(kSmall, in(u"a.png")));
  EXPECT_EQ(loadPicture(in(u"a.png"))->width, 3);
}

TEST_F(PicturesSuite, LoadingLeavesTheFileFree) {
  const SharedPicture picture = loaded(encodePng(kSmall));
  ASSERT_TRUE(picture);
  EXPECT_TRUE(savePng(*picture, in(u"a.png")));
}

TEST_F(PicturesSuite, WhatIsNoPictureGivesNone) {
  const std::string whole = plainPng(30, 30, 0xFF123456);
  EXPECT_FALSE(loaded(""));
  EXPECT_FALSE(loaded("no picture at all"));
  EXPECT_FALSE(loaded(whole.substr(0, 20)));
  EXPECT_FALSE(loadPicture(in(u"missing.png")));
  EXPECT_FALSE(loadPicture(folder));
}

TEST_F(PicturesSuite, OnePixelAndAVeryLongLineArePictures) {
  const SharedPicture dot = loaded(plainPng(1, 1, 0xFF123456));
  ASSERT_TRUE(dot);
  EXPECT_EQ(dot->pixels, (std::vector<std::uint32_t>{0xFF123456}));
  const SharedPicture line = loaded(plainPng(30000, 3, 0xFF123456));
  ASSERT_TRUE(line);
  EXPECT_EQ(line->width, 30000);
  EXPECT_EQ(line->height, 3);
  EXPECT_EQ(line->pixels.back(), 0xFF123456u);
}

TEST_F(PicturesSuite, SidesBeyondTheLimitAreRefused) {
  const std::string small = plainPng(3, 2, 0xFF123456);
  EXPECT_FALSE(
      loaded(small.substr(0, 16) + std::string("\0\1\x86\xA0\0\1\x86\xA0", 8) + small.substr(24)));
}

TEST_F(PicturesSuite, SavingWhereNothingCanBeIsRefused) {
  EXPECT_FALSE(savePng(kSmall, in(u"no folder\\a.png")));
  putBytes(in(u"used.png"), "used");
  const FileLock lock(in(u"used.png"), LockKind::Exclusive);
  EXPECT_FALSE(savePng(kSmall, in(u"used.png")));
}

TEST_F(PicturesSuite, PatternsNameTheUsualFormats) {
  const std::u16string patterns = picturePatterns();
  EXPECT_NE(patterns.find(u"*.png"), std::u16string::npos);
  EXPECT_NE(patterns.find(u"*.bmp"), std::u16string::npos);
  EXPECT_EQ(patterns.find(u"PNG"), std::u16string::npos);
}

constexpr TextSetting kTight = TextSetting::Tight;
constexpr TextSetting kPadded = TextSetting::Padded;
const TextFace kArial{u"Arial", 40, false};

TEST_F(PicturesSuite, TextHasTheWidthOfItsGlyphs) {
  // Advances in thousandths: H 722, e 556, l 222, o 556.
  EXPECT_NEAR(measureTextBox(kArial, kTight, u"Hello").width, 40 * 2.278, 3);
  EXPECT_NEAR(measureTextBox(kArial, kTight, u"Hello").height, 40 * 1.15, 3);
  EXPECT_GT(measureTextBox({u"Arial", 40, true}, kTight, u"some text").width,
            measureTextBox(kArial, kTight, u"some text").width);
}

TEST_F(PicturesSuite, EachLineTakesItsHeight) {
  const TextExtent one = measureTextBox(kArial, kTight, u"one");
  const TextExtent two = measureTextBox(kArial, kTight, u"one\r\none");
  EXPECT_NEAR(two.height, 2 * one.height, 4);
  EXPECT_NEAR(two.width, one.width, 1);
}

TEST_F(PicturesSuite, PaddedTextHasRoomAroundIt) {
  EXPECT_GT(measureTextBox(kArial, kPadded, u"Hello").width,
            measureTextBox(kArial, kTight, u"Hello").width + 4);
}

TEST_F(PicturesSuite, AFamilyThatIsMissingIsReplaced) {
  EXPECT_GT(measureTextBox({u"No Such Family", 40, false}, kTight, u"Hello").width, 40);
  EXPECT_TRUE(
      drawTextPicture({u"No Such Family", 40, false}, kTight, u"Hello", 0, {100, 50, 0, 0}));
}

int inkedPixels(const Picture& picture) {
  return static_cast<int>(std::count_if(picture.pixels.begin(), picture.pixels.end(),
                                        [](std::uint32_t pixel) { return pixel >> 24 > 128; }));
}

TEST_F(PicturesSuite, TextIsDrawnInItsColourOnTransparentGround) {
  const SharedPicture picture = drawTextPicture(kArial, kTight, u"HHH", 0xC81E1E, {100, 50, 0, 0});
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->width, 100);
  EXPECT_EQ(picture->height, 50);
  EXPECT_GT(inkedPixels(*picture), 200);
  EXPECT_EQ(picture->pixels.back(), 0u);
  for (const std::uint32_t pixel : picture->pixels) {
    if (pixel >> 24 == 255) {
      ASSERT_EQ(pixel, 0xFFC81E1Eu);
    }
  }
}

TEST_F(PicturesSuite, TextBeginsWhereItsPlaceSays) {
  const SharedPicture picture = drawTextPicture(kArial, kPadded, u"HHH", 0, {200, 100, 60, 40});
  ASSERT_TRUE(picture);
  int left = 200;
  int top = 100;
  for (int y = 0; y < 100; ++y) {
    for (int x = 0; x < 200; ++x) {
      if (picture->pixels[static_cast<std::size_t>(y) * 200 + static_cast<std::size_t>(x)] == 0)
        continue;
      left = std::min(left, x);
      top = std::min(top, y);
    }
  }
  EXPECT_NEAR(left, 60 + 10, 10);
  EXPECT_NEAR(top, 40 + 10, 10);
}

TEST_F(PicturesSuite, AscentsAreThoseOfTheFamilies) {
  EXPECT_NEAR(cellAscent(u"Arial", false).value_or(0), 0.905, 0.002);
  EXPECT_NEAR(cellAscent(u"Times New Roman", true).value_or(0), 0.891, 0.002);
  EXPECT_NEAR(cellAscent(u"Courier New", false).value_or(0), 0.833, 0.002);
  EXPECT_FALSE(cellAscent(u"No Such Family", false));
}

}  // namespace
}  // namespace quillmere::platform
