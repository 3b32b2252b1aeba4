#include "driver/screen.h"

#include <gdiplus.h>

#include <algorithm>
#include <cstdlib>

#include "driver/program.h"

namespace quillmere::e2e {
namespace {

constexpr std::uint32_t kColorBits = 0xFFFFFF;
constexpr std::uint32_t kOutside = 0xFF000000;
constexpr int kRounding = 2;  // in each channel

// {557CF406-1A04-11D3-9A73-0000F81EF32E}
constexpr CLSID kPngEncoder{
    0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

void startGdiplus() {
  static const ULONG_PTR token = [] {
    ULONG_PTR started = 0;
    Gdiplus::GdiplusStartupInput input;
    Gdiplus::GdiplusStartup(&started, &input, nullptr);
    return started;
  }();
  (void)token;
}

}  // namespace

bool alike(std::uint32_t a, std::uint32_t b) {
  for (int shift = 0; shift < 24; shift += 8) {
    const int difference =
        static_cast<int>((a >> shift) & 255) - static_cast<int>((b >> shift) & 255);
    if (std::abs(difference) > kRounding) return false;
  }
  return true;
}

std::uint32_t mixed(std::uint32_t over, unsigned alpha, std::uint32_t below) {
  const auto channel = [&](int shift) {
    const unsigned sum = ((over >> shift) & 255) * alpha + ((below >> shift) & 255) * (255 - alpha);
    return (sum + 127) / 255;
  };
  return rgb(channel(16), channel(8), channel(0));
}

std::uint32_t Picture::at(int x, int y) const {
  if (x < 0 || y < 0 || x >= width_ || y >= height_) return kOutside;
  return pixels_[static_cast<std::size_t>(y) * width_ + x];
}

bool Picture::isFilledWith(RECT area, std::uint32_t color) const {
  const LONG pixels = (area.right - area.left) * (area.bottom - area.top);
  return pixels > 0 && count(area, color) == pixels;
}

int Picture::count(RECT area, std::uint32_t color) const {
  int found = 0;
  for (int y = area.top; y < area.bottom; ++y) {
    for (int x = area.left; x < area.right; ++x) found += at(x, y) == color;
  }
  return found;
}

template <typename Wanted>
RECT Picture::extentWhere(RECT area, Wanted wanted) const {
  RECT found{area.right, area.bottom, -1, -1};
  for (int y = area.top; y < area.bottom; ++y) {
    for (int x = area.left; x < area.right; ++x) {
      if (!wanted(at(x, y))) continue;
      found.left = std::min<LONG>(found.left, x);
      found.top = std::min<LONG>(found.top, y);
      found.right = std::max<LONG>(found.right, x + 1);
      found.bottom = std::max<LONG>(found.bottom, y + 1);
    }
  }
  return found.right < 0 ? RECT{} : found;
}

RECT Picture::extent(std::uint32_t color) const {
  return extentWhere({0, 0, width_, height_}, [&](std::uint32_t pixel) { return pixel == color; });
}

RECT Picture::extentAlike(RECT area, std::uint32_t color) const {
  return extentWhere(area, [&](std::uint32_t pixel) { return alike(pixel, color); });
}

int Picture::countAlike(RECT area, std::uint32_t color) const {
  int found = 0;
  for (int y = area.top; y < area.bottom; ++y) {
    for (int x = area.left; x < area.right; ++x) found += alike(at(x, y), color);
  }
  return found;
}

Picture capture(RECT screen) {
  const int width = screen.right - screen.left;
  const int height = screen.bottom - screen.top;
  if (width <= 0 || height <= 0) return {};
  Picture picture(width, height);
  BITMAPINFO info{};
  info.bmiHeader = {sizeof(BITMAPINFOHEADER), width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  const HDC source = GetDC(nullptr);
  const HDC copy = CreateCompatibleDC(source);
  const HBITMAP bitmap = CreateDIBSection(source, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  const HGDIOBJ previous = SelectObject(copy, bitmap);
  BitBlt(copy, 0, 0, width, height, source, screen.left, screen.top, SRCCOPY);
  GdiFlush();
  std::transform(static_cast<std::uint32_t*>(bits),
                 static_cast<std::uint32_t*>(bits) + static_cast<std::size_t>(width) * height,
                 picture.row(0), [](std::uint32_t pixel) { return pixel & kColorBits; });
  SelectObject(copy, previous);
  DeleteObject(bitmap);
  DeleteDC(copy);
  ReleaseDC(nullptr, source);
  return picture;
}

Picture captureClient(HWND window) {
  return capture(clientOnScreen(window));
}

std::uint32_t screenPixel(POINT place) {
  return capture({place.x, place.y, place.x + 1, place.y + 1}).at(0, 0);
}

bool savePng(const Picture& picture, const std::wstring& path) {
  if (picture.width() == 0) return false;
  startGdiplus();
  auto* pixels = reinterpret_cast<BYTE*>(const_cast<std::uint32_t*>(picture.pixels().data()));
  Gdiplus::Bitmap bitmap(picture.width(), picture.height(), picture.width() * 4,
                         PixelFormat32bppRGB, pixels);
  return bitmap.Save(path.c_str(), &kPngEncoder, nullptr) == Gdiplus::Ok;
}

}  // namespace quillmere::e2e
