#include "platform/pixels.h"

#include <limits>
#include <new>

#include "platform/win32/pixel_surface.h"

namespace quillmere::platform {

struct PixelSurface {
  HBITMAP bitmap = nullptr;
  void* bits = nullptr;  // belongs to the bitmap
};

namespace {

HBITMAP createSection(int width, int height, void** bits) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;  // the top row first
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  const HDC screen = GetDC(nullptr);
  const HBITMAP bitmap = CreateDIBSection(screen, &info, DIB_RGB_COLORS, bits, nullptr, 0);
  ReleaseDC(nullptr, screen);
  return bitmap;
}

}  // namespace

PixelSurface* createPixelSurface(int width, int height) {
  if (width < 1 || height < 1) return nullptr;
  const std::int64_t pixelCount = std::int64_t{width} * height;
  if (pixelCount > std::numeric_limits<std::int32_t>::max() / 4) return nullptr;
  auto* surface = new (std::nothrow) PixelSurface;
  if (surface == nullptr) return nullptr;
  surface->bitmap = createSection(width, height, &surface->bits);
  if (surface->bitmap != nullptr && surface->bits != nullptr) return surface;
  destroyPixelSurface(surface);
  return nullptr;
}

void destroyPixelSurface(PixelSurface* surface) {
  if (surface == nullptr) return;
  if (surface->bitmap != nullptr) DeleteObject(surface->bitmap);
  delete surface;
}

std::uint32_t* pixelsOf(PixelSurface* surface) {
  return static_cast<std::uint32_t*>(surface->bits);
}

HBITMAP bitmapOf(const PixelSurface* surface) {
  return surface->bitmap;
}

}  // namespace quillmere::platform
