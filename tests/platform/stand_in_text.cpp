#include <algorithm>
#include <atomic>
#include <cstdint>
#include <iterator>

#include "platform/text.h"
#include "stand_in.h"

namespace quillmere::platform {
namespace {

// The lower case of every `stride`-th unit from `first` to `last` is the unit plus `delta`.
struct LowerRun {
  std::uint16_t first;
  std::uint16_t last;
  std::uint16_t stride;
  std::int32_t delta;
};

struct LetterRun {
  std::uint16_t first;
  std::uint16_t last;
};

#include "unicode_tables.inc"

constexpr char32_t kReplacement = 0xFFFD;

bool isHighSurrogate(char32_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}

bool isLowSurrogate(char32_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

void appendUtf8(std::string& out, char32_t point) {
  const auto put = [&out](char32_t byte) { out += static_cast<char>(byte); };
  if (point < 0x80) {
    put(point);
  } else if (point < 0x800) {
    put(0xC0 | point >> 6);
    put(0x80 | (point & 0x3F));
  } else if (point < 0x10000) {
    put(0xE0 | point >> 12);
    put(0x80 | (point >> 6 & 0x3F));
    put(0x80 | (point & 0x3F));
  } else {
    put(0xF0 | point >> 18);
    put(0x80 | (point >> 12 & 0x3F));
    put(0x80 | (point >> 6 & 0x3F));
    put(0x80 | (point & 0x3F));
  }
}

void appendUtf16(std::u16string& out, char32_t point) {
  if (point < 0x10000) {
    out += static_cast<char16_t>(point);
  } else {
    out += static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10));
    out += static_cast<char16_t>(0xDC00 + (point & 0x3FF));
  }
}

// What a first byte demands: the sequence's length and the range of the second byte.
struct Sequence {
  int length = 0;  // in bytes; 0 for a byte that cannot begin a sequence
  std::uint8_t secondFrom = 0x80;
  std::uint8_t secondTo = 0xBF;
};

Sequence sequenceOf(std::uint8_t first) {
  if (first < 0x80) return {1};
  if (first >= 0xC2 && first <= 0xDF) return {2};
  if (first == 0xE0) return {3, 0xA0, 0xBF};
  if (first == 0xED) return {3, 0x80, 0x9F};
  if (first >= 0xE1 && first <= 0xEF) return {3};
  if (first == 0xF0) return {4, 0x90, 0xBF};
  if (first >= 0xF1 && first <= 0xF3) return {4};
  if (first == 0xF4) return {4, 0x80, 0x8F};
  return {};
}

// Decodes one code point. The valid start of a broken sequence becomes one replacement character.
char32_t decodePoint(std::string_view bytes, std::size_t& at) {
  const auto first = static_cast<std::uint8_t>(bytes[at++]);
  const Sequence sequence = sequenceOf(first);
  if (sequence.length == 0) return kReplacement;
  if (sequence.length == 1) return first;
  char32_t point = first & (0xFF >> (sequence.length + 1));
  for (int n = 1; n < sequence.length; ++n) {
    if (at == bytes.size()) return kReplacement;
    const auto next = static_cast<std::uint8_t>(bytes[at]);
    const std::uint8_t from = n == 1 ? sequence.secondFrom : 0x80;
    const std::uint8_t to = n == 1 ? sequence.secondTo : 0xBF;
    if (next < from || next > to) return kReplacement;
    point = point << 6 | (next & 0x3F);
    ++at;
  }
  return point;
}

std::atomic<std::uint64_t> stepsTaken{0};

void countConversion(std::size_t units) {
  stepsTaken.fetch_add(1 + units, std::memory_order_relaxed);
}

}  // namespace

std::uint64_t conversionSteps() {
  return stepsTaken;
}

char16_t lowerUnit(char16_t unit) {
  const auto run = std::upper_bound(std::begin(kLowerRuns), std::end(kLowerRuns), unit,
                                    [](char16_t u, const LowerRun& r) { return u < r.first; });
  if (run == std::begin(kLowerRuns)) return unit;
  const LowerRun& found = *std::prev(run);
  if (unit > found.last || (unit - found.first) % found.stride != 0) return unit;
  return static_cast<char16_t>(unit + found.delta);
}

std::u16string toLower(std::u16string_view text) {
  countConversion(text.size());
  std::u16string lower(text);
  for (char16_t& unit : lower) unit = lowerUnit(unit);
  return lower;
}

bool equalIgnoringCase(std::u16string_view left, std::u16string_view right) {
  return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                    [](char16_t a, char16_t b) { return lowerUnit(a) == lowerUnit(b); });
}

std::string toUtf8(std::u16string_view text) {
  countConversion(text.size());
  std::string bytes;
  for (std::size_t n = 0; n < text.size(); ++n) {
    char32_t point = text[n];
    if (isHighSurrogate(point) && n + 1 < text.size() && isLowSurrogate(text[n + 1])) {
      point = 0x10000 + ((point - 0xD800) << 10) + (char32_t{text[++n]} - 0xDC00);
    } else if (isHighSurrogate(point) || isLowSurrogate(point)) {
      point = kReplacement;
    }
    appendUtf8(bytes, point);
  }
  return bytes;
}

std::u16string fromUtf8(std::string_view bytes) {
  countConversion(bytes.size());
  std::u16string text;
  for (std::size_t at = 0; at < bytes.size();) appendUtf16(text, decodePoint(bytes, at));
  return text;
}

bool isLetterOrDigit(char16_t unit) {
  const auto run = std::upper_bound(std::begin(kLetterRuns), std::end(kLetterRuns), unit,
                                    [](char16_t u, const LetterRun& r) { return u < r.first; });
  return run != std::begin(kLetterRuns) && unit <= std::prev(run)->last;
}

}  // namespace quillmere::platform
