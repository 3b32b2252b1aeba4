#include <windows.h>

#include <gtest/gtest.h>

#include "platform/win32/pixel_surface.h"

namespace quillmere::platform {
namespace {

// What the window sees at a place of the surface, as 0x00RRGGBB.
std::uint32_t seenAt(PixelSurface* surface, int x, int y) {
  const HDC context = CreateCompatibleDC(nullptr);
  const HGDIOBJ before = SelectObject(context, bitmapOf(surface));
  const COLORREF color = GetPixel(context, x, y);
  SelectObject(context, before);
  DeleteDC(context);
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
