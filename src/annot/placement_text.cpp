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

// What Unicode counts as white space.
constexpr std::u16string_view kBlanks =
    u" \t\n\v\f\r\u0085\u00A0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007\u2008"
    u"\u2009\u200A\u2028\u2029\u202F\u205F\u3000";

// Characters of Windows code page 1252 between those of ASCII and Latin-1, by character.
struct WinAnsiCode {
  char16_t unit;
  std::uint8_t code;
};
constexpr WinAnsiCode kWinAnsiExtras[] = {
    {0x0152, 0x8C}, {0x0153, 0x9C}, {0x0160, 0x8A}, {0x0161, 0x9A}, {0x0178, 0x9F}, {0x017D, 0x8E},
    {0x017E, 0x9E}, {0x0192, 0x83}, {0x02C6, 0x88}, {0x02DC, 0x98}, {0x2013, 0x96}, {0x2014, 0x97},
    {0x2018, 0x91}, {0x2019, 0x92}, {0x201A, 0x82}, {0x201C, 0x93}, {0x201D, 0x94}, {0x201E, 0x84},
    {0x2020, 0x86}, {0x2021, 0x87}, {0x2022, 0x95}, {0x2026, 0x85}, {0x2030, 0x89}, {0x2039, 0x8B},
    {0x203A, 0x9B}, {0x20AC, 0x80}, {0x2122, 0x99}};

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

std::optional<std::uint32_t> winAnsiCode(char16_t unit) {
  if (unit < 0x20) return std::nullopt;
  if (unit < 0x7F || (unit >= 0xA0 && unit <= 0xFF)) return unit;
  const auto* found =
      std::lower_bound(std::begin(kWinAnsiExtras), std::end(kWinAnsiExtras), unit,
                       [](const WinAnsiCode& row, char16_t wanted) { return row.unit < wanted; });
  if (found == std::end(kWinAnsiExtras) || found->unit != unit) return std::nullopt;
  return found->code;
}

}  // namespace

bool isBlankText(std::u16string_view text) {
  return text.find_first_not_of(kBlanks) == std::u16string_view::npos;
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

std::optional<std::vector<std::uint32_t>> standardFontCodes(std::u16string_view text) {
  if (text.size() > kMostUnits) return std::nullopt;
  std::vector<std::uint32_t> codes;
  codes.reserve(text.size());
  for (const char16_t unit : text) {
    const std::optional<std::uint32_t> code = winAnsiCode(unit);
    if (!code) return std::nullopt;
    codes.push_back(*code);
  }
  return codes;
}

}  // namespace quillmere
