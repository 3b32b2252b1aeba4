#include "platform/pixels.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <new>
#include <utility>

#include "platform/win32/pixels.h"

namespace quillmere::platform {

// Rows follow each other in the section's memory without gaps, whatever the surface's current size;
// the size it was created with is only the first.
struct PixelSurface {
  HBITMAP section = nullptr;
  void* bits = nullptr;  // belongs to the section
  std::int64_t capacity = 0;
  int width = 0;
  int height = 0;
};

namespace {

constexpr std::int64_t kMaximumPixels = std::numeric_limits<std::int32_t>::max() / 4;
// Surfaces up to this many pixels reserve memory for a page twice as large; it costs nothing until
// a zoom step uses it.
constexpr std::int64_t kMaximumPixelsWithReserve = 4 << 20;
constexpr int kReserveFactor = 2;

BITMAPINFO describe(int width, int height) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
  info.bmiHeader.biWidth = width;
  info.bmiHeader.biHeight = -height;  // the top row first
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  return info;
}

HBITMAP createSection(int width, int height, void** bits) {
  const BITMAPINFO info = describe(width, height);
  const HDC screen = GetDC(nullptr);
  const HBITMAP section = CreateDIBSection(screen, &info, DIB_RGB_COLORS, bits, nullptr, 0);
  ReleaseDC(nullptr, screen);
  return section;
}

std::int64_t pixelCount(int width, int height) {
  return std::int64_t{width} * height;
}

// Memory up to this size is kept for any smaller page; more than that is released when most of it
// would be unused.
constexpr std::int64_t kOrdinaryPixels = 4 << 20;
constexpr std::int64_t kMaximumWasteFactor = 8;

bool memorySuits(std::int64_t capacity, std::int64_t count) {
  return count <= capacity &&
         (capacity <= kOrdinaryPixels || count >= capacity / kMaximumWasteFactor);
}

// Destroyed surfaces of ordinary pages, one for each pane, kept for reuse: after a change of
// document or mode new ones are needed at once.
PixelSurface* spares[2] = {};

PixelSurface* takeSpare(int width, int height) {
  for (PixelSurface*& spare : spares) {
    if (spare != nullptr && resizePixelSurface(spare, width, height)) {
      return std::exchange(spare, nullptr);
    }
  }
  return nullptr;
}

// False when both places are taken.
bool keepAsSpare(PixelSurface* surface) {
  if (surface->bits == nullptr || surface->capacity > kOrdinaryPixels) return false;
  const auto place = std::find(std::begin(spares), std::end(spares), nullptr);
  if (place == std::end(spares)) return false;
  *place = surface;
  return true;
}

}  // namespace

PixelSurface* createPixelSurface(int width, int height) {
  if (width < 1 || height < 1 || pixelCount(width, height) > kMaximumPixels) return nullptr;
  if (PixelSurface* spare = takeSpare(width, height)) return spare;
  auto* surface = new (std::nothrow) PixelSurface;
  if (surface == nullptr) return nullptr;
  const int rows =
      pixelCount(width, height) <= kMaximumPixelsWithReserve ? kReserveFactor * height : height;
  surface->section = createSection(width, rows, &surface->bits);
  surface->capacity = pixelCount(width, rows);
  surface->width = width;
  surface->height = height;
  if (surface->section != nullptr && surface->bits != nullptr) return surface;
  destroyPixelSurface(surface);
  return nullptr;
}

bool resizePixelSurface(PixelSurface* surface, int width, int height) {
  if (width < 1 || height < 1) return false;
  if (!memorySuits(surface->capacity, pixelCount(width, height))) return false;
  surface->width = width;
  surface->height = height;
  return true;
}

void destroyPixelSurface(PixelSurface* surface) {
  if (surface == nullptr || keepAsSpare(surface)) return;
  if (surface->section != nullptr) DeleteObject(surface->section);
  delete surface;
}

std::uint32_t* pixelsOf(PixelSurface* surface) {
  return static_cast<std::uint32_t*>(surface->bits);
}

void copySurface(const PixelSurface* surface, HDC dc, int x, int y) {
  const BITMAPINFO info = describe(surface->width, surface->height);
  const auto width = static_cast<DWORD>(surface->width);
  const auto height = static_cast<DWORD>(surface->height);
  SetDIBitsToDevice(dc, x, y, width, height, 0, 0, 0, height, surface->bits, &info, DIB_RGB_COLORS);
}

}  // namespace quillmere::platform
