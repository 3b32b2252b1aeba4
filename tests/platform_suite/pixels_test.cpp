#include "platform/pixels.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillmere::platform {
namespace {

TEST(PixelsSuite, EveryPixelIsWrittenAndReadBack) {
  constexpr int kWidth = 37;
  constexpr int kHeight = 19;
  const PixelSurfaceHandle surface(createPixelSurface(kWidth, kHeight));
  ASSERT_TRUE(surface);
  std::uint32_t* pixels = pixelsOf(surface.get());
  ASSERT_NE(pixels, nullptr);
  for (std::uint32_t n = 0; n < kWidth * kHeight; ++n) pixels[n] = n * 0x01010101u;
  for (std::uint32_t n = 0; n < kWidth * kHeight; ++n) ASSERT_EQ(pixels[n], n * 0x01010101u);
}

TEST(PixelsSuite, TheSmallestSurfaceHasOnePixel) {
  const PixelSurfaceHandle surface(createPixelSurface(1, 1));
  ASSERT_TRUE(surface);
  *pixelsOf(surface.get()) = 0x12345678;
  EXPECT_EQ(*pixelsOf(surface.get()), 0x12345678u);
}

TEST(PixelsSuite, ASurfaceRefusesSizesThatItsMemoryDoesNotServe) {
  const PixelSurfaceHandle surface(createPixelSurface(40, 30));
  ASSERT_TRUE(surface);
  EXPECT_FALSE(resizePixelSurface(surface.get(), 4000, 3000));
  EXPECT_FALSE(resizePixelSurface(surface.get(), 0, 30));
  EXPECT_FALSE(resizePixelSurface(surface.get(), 40, -30));
  EXPECT_FALSE(resizePixelSurface(surface.get(), std::numeric_limits<int>::max(), 1));
}

TEST(PixelsSuite, SurfacesDoNotShareTheirPixels) {
  const PixelSurfaceHandle one(createPixelSurface(4, 4));
  const PixelSurfaceHandle two(createPixelSurface(4, 4));
  ASSERT_TRUE(one && two);
  *pixelsOf(one.get()) = 1;
  *pixelsOf(two.get()) = 2;
  EXPECT_EQ(*pixelsOf(one.get()), 1u);
}

TEST(PixelsSuite, SidesBelowOneGiveNone) {
  EXPECT_EQ(createPixelSurface(0, 10), nullptr);
  EXPECT_EQ(createPixelSurface(10, 0), nullptr);
  EXPECT_EQ(createPixelSurface(-1, 10), nullptr);
  EXPECT_EQ(createPixelSurface(10, std::numeric_limits<int>::min()), nullptr);
}

TEST(PixelsSuite, SidesBeyondMemoryGiveNone) {
  constexpr int kLargest = std::numeric_limits<int>::max();
  EXPECT_EQ(createPixelSurface(kLargest, kLargest), nullptr);
  EXPECT_EQ(createPixelSurface(kLargest, 1), nullptr);
  EXPECT_EQ(createPixelSurface(1 << 16, 1 << 16), nullptr);
  EXPECT_EQ(createPixelSurface(1 << 15, 1 << 15), nullptr);
}

}  // namespace
}  // namespace quillmere::platform
