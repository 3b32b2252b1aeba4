#include <windows.h>

#include <gtest/gtest.h>

#include "platform/win32/pixels.h"

namespace quillmere::platform {
namespace {

// The pixel at x, y of a copy of the surface, as 0x00RRGGBB.
std::uint32_t seenAt(PixelSurface* surface, int x, int y) {
  const HDC screen = GetDC(nullptr);
  const HDC context = CreateCompatibleDC(screen);
  const HBITMAP copy = CreateCompatibleBitmap(screen, 16, 16);
  const HGDIOBJ before = SelectObject(context, copy);
  constexpr int kLeft = 3;
  constexpr int kTop = 5;
  copySurface(surface, context, kLeft, kTop);
  const COLORREF color = GetPixel(context, kLeft + x, kTop + y);
  SelectObject(context, before);
  DeleteObject(copy);
  DeleteDC(context);
  ReleaseDC(nullptr, screen);
  return std::uint32_t{GetRValue(color)} << 16 | GetGValue(color) << 8 | GetBValue(color);
}

TEST(PixelsWindows, RowsFollowEachOtherFromTheTopWithBlueFirst) {
  const PixelSurfaceHandle surface(createPixelSurface(3, 2));
  ASSERT_TRUE(surface);
  for (std::uint32_t n = 0; n < 6; ++n) pixelsOf(surface.get())[n] = 0x00102030 + n * 0x010101;
  EXPECT_EQ(seenAt(surface.get(), 0, 0), 0x102030u);
  EXPECT_EQ(seenAt(surface.get(), 2, 0), 0x122232u);
  EXPECT_EQ(seenAt(surface.get(), 0, 1), 0x132333u);
  EXPECT_EQ(seenAt(surface.get(), 2, 1), 0x152535u);
}

TEST(PixelsWindows, TheMemoryOfAnOrdinaryPageServesAnySmallerOne) {
  const PixelSurfaceHandle surface(createPixelSurface(400, 300));
  ASSERT_TRUE(surface);
  EXPECT_TRUE(resizePixelSurface(surface.get(), 4, 3));
  EXPECT_TRUE(resizePixelSurface(surface.get(), 400, 300));
}

TEST(PixelsWindows, TheMemoryOfAHugePageIsNotKeptForASmallOne) {
  const PixelSurfaceHandle surface(createPixelSurface(3000, 2000));
  ASSERT_TRUE(surface);
  EXPECT_TRUE(resizePixelSurface(surface.get(), 2000, 2000));
  EXPECT_FALSE(resizePixelSurface(surface.get(), 400, 300));
}

TEST(PixelsWindows, ASurfaceTakesAnotherSizeOfAboutItsArea) {
  const PixelSurfaceHandle surface(createPixelSurface(40, 30));
  ASSERT_TRUE(surface);
  ASSERT_TRUE(resizePixelSurface(surface.get(), 30, 40));
  ASSERT_TRUE(resizePixelSurface(surface.get(), 20, 30));
  std::uint32_t* pixels = pixelsOf(surface.get());
  for (std::uint32_t n = 0; n < 20 * 30; ++n) pixels[n] = n;
  EXPECT_EQ(pixels[20 * 30 - 1], 20u * 30 - 1);
}

TEST(PixelsWindows, ARowIsAsLongAsThePresentSizeSays) {
  const PixelSurfaceHandle surface(createPixelSurface(4, 2));
  ASSERT_TRUE(surface);
  ASSERT_TRUE(resizePixelSurface(surface.get(), 2, 4));
  for (std::uint32_t n = 0; n < 8; ++n) pixelsOf(surface.get())[n] = 0x00102030 + n * 0x010101;
  EXPECT_EQ(seenAt(surface.get(), 1, 0), 0x112131u);
  EXPECT_EQ(seenAt(surface.get(), 0, 3), 0x162636u);
}

TEST(PixelsWindows, DestroyedSurfacesGiveTheirObjectsBack) {
  const auto objects = [] { return GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS); };
  { const PixelSurfaceHandle warmUp(createPixelSurface(8, 8)); }
  const DWORD before = objects();
  for (int n = 0; n < 200; ++n) {
    const PixelSurfaceHandle surface(createPixelSurface(8, 8));
    ASSERT_TRUE(surface);
  }
  EXPECT_LE(objects(), before);
}

}  // namespace
}  // namespace quillmere::platform
