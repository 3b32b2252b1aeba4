#include "profile_encoding.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

namespace quillmere::platform {
namespace {

constexpr std::string_view kUtf16Mark = "\xFF\xFE";

// Windows-1252 from 80 to 9F; all its other bytes equal their Unicode numbers.
constexpr char16_t kCodePageUpper[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

char16_t fromCodePage(char byte) {
  const auto value = static_cast<std::uint8_t>(byte);
  return value >= 0x80 && value < 0xA0 ? kCodePageUpper[value - 0x80] : value;
}

char toCodePage(char16_t unit) {
  if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF)) return static_cast<char>(unit);
  const auto place = std::find(std::begin(kCodePageUpper), std::end(kCodePageUpper), unit);
  if (place == std::end(kCodePageUpper)) return '?';
  return static_cast<char>(0x80 + (place - std::begin(kCodePageUpper)));
}

}  // namespace

ProfileEncoding profileEncodingOf(std::string_view bytes) {
  return bytes.starts_with(kUtf16Mark) ? ProfileEncoding::Utf16 : ProfileEncoding::CodePage;
}

std::u16string decodeProfile(std::string_view bytes, ProfileEncoding encoding) {
  std::u16string text;
  if (encoding == ProfileEncoding::CodePage) {
    std::transform(bytes.begin(), bytes.end(), std::back_inserter(text), fromCodePage);
    return text;
  }
  for (std::size_t n = kUtf16Mark.size(); n + 1 < bytes.size(); n += 2) {
    const auto low = static_cast<std::uint8_t>(bytes[n]);
    const auto high = static_cast<std::uint8_t>(bytes[n + 1]);
    text += static_cast<char16_t>(high << 8 | low);
  }
  return text;
}

std::string encodeProfile(std::u16string_view text, ProfileEncoding encoding) {
  std::string bytes;
  if (encoding == ProfileEncoding::CodePage) {
    std::transform(text.begin(), text.end(), std::back_inserter(bytes), toCodePage);
    return bytes;
  }
  bytes = kUtf16Mark;
  for (const char16_t unit : text) {
    bytes += static_cast<char>(unit & 0xFF);
    bytes += static_cast<char>(unit >> 8);
  }
  return bytes;
}

}  // namespace quillmere::platform
