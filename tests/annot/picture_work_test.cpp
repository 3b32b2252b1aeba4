#include "annot/picture_work.h"

#include <gtest/gtest.h>

#include <string>

#include "support/png_file.h"

namespace quillmere::test {
namespace {

using platform::Picture;

std::uint32_t faded(std::uint32_t pixel, int threshold) {
  Picture picture{1, 1, {pixel}};
  MakeWhiteTransparent(picture, threshold);
  return picture.pixels.front();
}

TEST(PictureWorkTest, PixelsFadeFromTheThresholdToWhite) {
  EXPECT_EQ(faded(0xFFFFFFFF, 220), 0x00FFFFFFu);
  EXPECT_EQ(faded(0xFFDCDCDC, 220), 0xFFDCDCDCu) << "a pixel at the threshold";
  // (1 - 20 / 35) * 255 + 0.5, cut off.
  EXPECT_EQ(faded(0xFFF0F0F0, 220), 0x6DF0F0F0u);
  EXPECT_EQ(faded(0x80F0F0F0, 220), 0x37F0F0F0u) << "alpha that is already there fades further";
}

TEST(PictureWorkTest, AllColoursMustBeNearWhite) {
  EXPECT_EQ(faded(0xFFF0F0C8, 220), 0xFFF0F0C8u);
  EXPECT_EQ(faded(0xFFFF00FF, 220), 0xFFFF00FFu);
  EXPECT_EQ(faded(0xFFDBFFFF, 220), 0xFFDBFFFFu);
}

TEST(PictureWorkTest, TheHighestThresholdTakesWhiteAlone) {
  EXPECT_EQ(faded(0xFFFFFFFF, 255), 0x00FFFFFFu);
  EXPECT_EQ(faded(0xFFFEFEFE, 255), 0xFFFEFEFEu);
}

TEST(PictureWorkTest, TheLowestThresholdFadesEverythingButBlack) {
  EXPECT_EQ(faded(0xFF000000, 0), 0xFF000000u);
  EXPECT_EQ(faded(0xFF808080, 0), 0x7F808080u);
  EXPECT_EQ(faded(0xFFFFFFFF, -9), 0x00FFFFFFu);
}

TEST(PictureWorkTest, APixelOfACopyIsTheMeanOfThoseItStandsFor) {
  const Picture picture{
      4, 2, {0xFF000000, 0xFF0000FE, 0, 0xFFFFFFFF, 0xFF0000FE, 0xFF000000, 0, 0xFFFFFFFF}};
  const platform::SharedPicture copy = scaledDown(picture, {2, 1});
  ASSERT_EQ(copy->pixels.size(), 2u);
  EXPECT_EQ(copy->pixels[0], 0xFF00007Fu);
  // Transparent pixels lower the alpha and leave no colour.
  EXPECT_EQ(copy->pixels[1], 0x80FFFFFFu);
}

TEST(PictureWorkTest, SidesThatDoNotDivideAreCoveredWholly) {
  const platform::SharedPicture copy = scaledDown(plainPicture(7, 5, 0x80123456), {3, 2});
  EXPECT_EQ(copy->width, 3);
  EXPECT_EQ(copy->height, 2);
  for (const std::uint32_t pixel : copy->pixels) EXPECT_EQ(pixel, 0x80123456u);
}

TEST(PictureWorkTest, ACopyIsNeverLarger) {
  const platform::SharedPicture copy = scaledDown(plainPicture(3, 2, 0xFF00FF00), {30, 0});
  EXPECT_EQ(copy->width, 3);
  EXPECT_EQ(copy->height, 1);
}

std::optional<PictureSize> sizeOf(const std::string& bytes) {
  const auto* first = reinterpret_cast<const std::uint8_t*>(bytes.data());
  return pngSize({first, bytes.size()});
}

TEST(PictureWorkTest, AFilesHeadTellsItsSize) {
  const auto size = sizeOf(plainPng(300, 7, 0));
  ASSERT_TRUE(size);
  EXPECT_EQ(size->width, 300);
  EXPECT_EQ(size->height, 7);
}

TEST(PictureWorkTest, WhatIsNoPngOrTooLargeHasNoSize) {
  const std::string png = plainPng(3, 2, 0);
  EXPECT_FALSE(sizeOf(""));
  EXPECT_FALSE(sizeOf(png.substr(0, kPngHeadBytes - 1)));
  EXPECT_FALSE(sizeOf("GIF89a" + png));
  const auto withSides = [&](const std::string& sides) {
    return sizeOf(png.substr(0, 16) + sides + png.substr(24));
  };
  EXPECT_FALSE(withSides(std::string(8, '\0')));
  EXPECT_FALSE(withSides(std::string(8, '\xFF')));
  EXPECT_FALSE(withSides(std::string("\0\1\0\0\0\1\0\0", 8)));
}

}  // namespace
}  // namespace quillmere::test
