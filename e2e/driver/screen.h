#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

// What is on the screen, pixel by pixel.
namespace quillmere::e2e {

// Colours are 0xRRGGBB.
constexpr std::uint32_t rgb(unsigned r, unsigned g, unsigned b) {
  return r << 16 | g << 8 | b;
}

// Equal except for rounding differences of mixed colours.
bool alike(std::uint32_t a, std::uint32_t b);
// A colour laid over another; `alpha` of 255 hides the one below.
std::uint32_t mixed(std::uint32_t over, unsigned alpha, std::uint32_t below);

class Picture {
 public:
  Picture() = default;
  Picture(int width, int height) : width_(width), height_(height), pixels_(width * height) {}

  int width() const { return width_; }
  int height() const { return height_; }
  // Outside the picture it returns an impossible colour.
  std::uint32_t at(int x, int y) const;
  // True when all pixels of the rectangle (right and bottom not included) have this colour.
  bool isFilledWith(RECT area, std::uint32_t color) const;
  // How many pixels of the rectangle have this colour.
  int count(RECT area, std::uint32_t color) const;
  // The smallest rectangle around all pixels of this colour; empty when there is none.
  RECT extent(std::uint32_t color) const;
  // The same for the pixels of a rectangle that are alike to this colour, and their number.
  RECT extentAlike(RECT area, std::uint32_t color) const;
  int countAlike(RECT area, std::uint32_t color) const;
  bool operator==(const Picture&) const = default;

  std::uint32_t* row(int y) { return pixels_.data() + static_cast<std::size_t>(y) * width_; }
  const std::vector<std::uint32_t>& pixels() const { return pixels_; }

 private:
  template <typename Wanted>
  RECT extentWhere(RECT area, Wanted wanted) const;

  int width_ = 0;
  int height_ = 0;
  std::vector<std::uint32_t> pixels_;
};

// A part of the screen as it is now.
Picture capture(RECT screen);
Picture captureClient(HWND window);
std::uint32_t screenPixel(POINT place);
// False when it could not be written.
bool savePng(const Picture& picture, const std::wstring& path);

}  // namespace quillmere::e2e
