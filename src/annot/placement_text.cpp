#include "annot/placement_text.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "annot/placement_fonts.h"
#include "session/session.h"

namespace quillmere {

namespace {

constexpr double kPixelsPerPoint = 4;
constexpr double kMostPixels = 16e6;
// A file may hold any amount of text; only this many units of it are measured and drawn.
constexpr std::size_t kMostUnits = 4096;

// The characters of Windows code page 1252 between those of ASCII and Latin-1, in order.
constexpr char16_t kWinAnsiExtras[] = {0x0152, 0x0153, 0x0160, 0x0161, 0x0178, 0x017D, 0x017E,
                                       0x0192, 0x02C6, 0x02DC, 0x2013, 0x2014, 0x2018, 0x2019,
                                       0x201A, 0x201C, 0x201D, 0x201E, 0x2020, 0x2021, 0x2022,
                                       0x2026, 0x2030, 0x2039, 0x203A, 0x20AC, 0x2122};

platform::TextFace faceOf(std::int32_t fontIndex, int pixelSize) {
  const PlacementFont& font = placementFont(fontIndex);
  return {font.family, std::max(pixelSize, 1), isBold(font)};
}

int pixelSizeOf(std::int32_t fontSize) {
  return std::max(1, static_cast<int>(fontSize * kPixelsPerPoint + 0.5));
}

int sideOf(double extent) {
  return std::max(1, static_cast<int>(std::ceil(extent)) + 1);
}

bool inWinAnsi(char16_t unit) {
  if (unit < 0x20) return false;
  if (unit < 0x7F || (unit >= 0xA0 && unit <= 0xFF)) return true;
  return std::binary_search(std::begin(kWinAnsiExtras), std::end(kWinAnsiExtras), unit);
}

}  // namespace

bool isBlankText(std::u16string_view text) {
  return text.find_first_not_of(u" \t\r\n\u00A0") == std::u16string_view::npos;
}

void MeasureTextPixels(std::u16string_view text, int pixelSize, std::int32_t fontIndex, int& width,
                       int& height) {
  width = 1;
  height = 1;
  if (text.empty()) return;
  const platform::TextExtent extent = platform::measureTextBox(
      faceOf(fontIndex, pixelSize), platform::TextSetting::Tight, text.substr(0, kMostUnits));
  width = sideOf(extent.width);
  height = sideOf(extent.height);
}

double FontAscentPoints(std::int32_t fontIndex, std::int32_t fontSize) {
  const PlacementFont& font = placementFont(fontIndex);
  return platform::cellAscent(font.family, isBold(font)).value_or(font.ascentRatio) * fontSize;
}

TextMetrics measureTextDrop(std::u16string_view text, std::int32_t fontSize,
                            std::int32_t fontIndex) {
  int width = 1;
  int height = 1;
  MeasureTextPixels(text, pixelSizeOf(fontSize), fontIndex, width, height);
  return {width / kPixelsPerPoint, height / kPixelsPerPoint, FontAscentPoints(fontIndex, fontSize)};
}

platform::SharedPicture RenderTextBitmap(std::u16string_view text, std::int32_t fontSize,
                                         std::int32_t fontIndex, std::int32_t colorIndex) {
  if (isBlankText(text)) return nullptr;
  text = text.substr(0, kMostUnits);
  int pixelSize = pixelSizeOf(fontSize);
  int width = 1;
  int height = 1;
  MeasureTextPixels(text, pixelSize, fontIndex, width, height);
  while (static_cast<double>(width) * height > kMostPixels && pixelSize > 1) {
    const double share = std::sqrt(kMostPixels / (static_cast<double>(width) * height));
    pixelSize = std::max(1, std::min(pixelSize - 1, static_cast<int>(pixelSize * share)));
    MeasureTextPixels(text, pixelSize, fontIndex, width, height);
  }
  if (static_cast<double>(width) * height > kMostPixels) return nullptr;
  return platform::drawTextPicture(faceOf(fontIndex, pixelSize), platform::TextSetting::Tight, text,
                                   textColor(colorIndex), {width, height, 0, 0});
}

std::uint32_t textColor(std::int32_t colorIndex) {
  const TextColorTable& colors = session.settings.textColors;
  const auto row = static_cast<std::size_t>(colorIndex);
  const ColorEntry& color = colors[row < colors.size() ? row : 0];
  return std::uint32_t{color.r} << 16 | std::uint32_t{color.g} << 8 | color.b;
}

bool standardFontsCover(std::u16string_view text) {
  return std::all_of(text.begin(), text.end(), inWinAnsi);
}

}  // namespace quillmere
