#include "platform/text.h"

#include <windows.h>

#include <algorithm>
#include <limits>

#include "platform/win32/wide.h"

namespace quillmere::platform {
namespace {

// The system counts text in ints. No text is longer; if one were, it would convert to empty text.
int countOf(std::size_t size) {
  return size > std::numeric_limits<int>::max() ? 0 : static_cast<int>(size);
}

}  // namespace

char16_t lowerUnit(char16_t unit) {
  if (unit < 0x80) return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit;
  if (unit >= 0xD800 && unit <= 0xDFFF) return unit;
  const auto upper = static_cast<wchar_t>(unit);
  wchar_t lower = upper;
  LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_LOWERCASE, &upper, 1, &lower, 1, nullptr, nullptr, 0);
  return static_cast<char16_t>(lower);
}

std::u16string toLower(std::u16string_view text) {
  std::u16string lower(text);
  for (char16_t& unit : lower) unit = lowerUnit(unit);
  return lower;
}

bool equalIgnoringCase(std::u16string_view left, std::u16string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char16_t a, char16_t b) { return a == b || lowerUnit(a) == lowerUnit(b); });
}

std::string toUtf8(std::u16string_view text) {
  const int units = countOf(text.size());
  const int size =
      WideCharToMultiByte(CP_UTF8, 0, wideUnits(text), units, nullptr, 0, nullptr, nullptr);
  if (units == 0 || size <= 0) return {};
  std::string bytes(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, wideUnits(text), units, bytes.data(), size, nullptr, nullptr);
  return bytes;
}

std::u16string fromUtf8(std::string_view bytes) {
  const int count = countOf(bytes.size());
  const int size = MultiByteToWideChar(CP_UTF8, 0, bytes.data(), count, nullptr, 0);
  if (count == 0 || size <= 0) return {};
  std::u16string text(static_cast<std::size_t>(size), u'\0');
  MultiByteToWideChar(CP_UTF8, 0, bytes.data(), count, wideBuffer(text), size);
  return text;
}

bool isLetterOrDigit(char16_t unit) {
  const auto character = static_cast<wchar_t>(unit);
  WORD type = 0;
  if (!GetStringTypeW(CT_CTYPE1, &character, 1, &type)) return false;
  return (type & (C1_ALPHA | C1_DIGIT)) != 0;
}

}  // namespace quillmere::platform
