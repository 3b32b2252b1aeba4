#include "annot/summary_text.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace quillmere {

namespace {

// Measure at four times the size, since the system measures in whole pixels.
constexpr double kMeasuredScale = 4;

// The characters of the encoding WinAnsi beyond Latin-1.
constexpr std::u16string_view kBeyondLatin1 =
    u"\u20AC\u201A\u0192\u201E\u2026\u2020\u2021\u02C6\u2030\u0160\u2039\u0152\u017D"
    u"\u2018\u2019\u201C\u201D\u2022\u2013\u2014\u02DC\u2122\u0161\u203A\u0153\u017E\u0178";

bool isHighSurrogate(char16_t unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
bool isLowSurrogate(char16_t unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}
bool isControl(char16_t unit) {
  return unit < u' ' || (unit >= 0x7F && unit <= 0x9F);
}

// The letters of the ligatures U+FB00 to U+FB06.
constexpr std::u16string_view kJoinedLetters[] = {u"ff",  u"fi", u"fl", u"ffi",
                                                  u"ffl", u"st", u"st"};
constexpr char16_t kFirstJoinedLetters = 0xFB00;

// PDFium writes both of these as another letter in the standard fonts.
constexpr char16_t kNoBreakBlank = 0x00A0;
constexpr char16_t kSoftHyphen = 0x00AD;

// Fonts give ligatures numbers of their own, so write their letters; control characters show
// nothing, and half of a surrogate pair is not a character.
std::u16string printable(std::u16string_view text) {
  std::u16string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t unit = text[i];
    const auto joined = static_cast<std::size_t>(unit - kFirstJoinedLetters);
    if (isHighSurrogate(unit) && i + 1 < text.size() && isLowSurrogate(text[i + 1])) {
      result.append(text.substr(i++, 2));
    } else if (isHighSurrogate(unit) || isLowSurrogate(unit)) {
      result += u'?';
    } else if (unit >= kFirstJoinedLetters && joined < std::size(kJoinedLetters)) {
      result += kJoinedLetters[joined];
    } else if (unit != kSoftHyphen) {
      result += isControl(unit) ? u' ' : unit;
    }
  }
  return result;
}

bool inStandardFonts(char16_t unit) {
  if (unit == kNoBreakBlank || unit == kSoftHyphen) return false;
  const bool latin1 = (unit >= u' ' && unit <= u'~') || (unit >= 0xA0 && unit <= 0xFF);
  return latin1 || kBeyondLatin1.find(unit) != std::u16string_view::npos;
}

// A line ends with a carriage return, a line feed, or both in this order.
std::vector<std::u16string> paragraphsOf(const std::u16string& text) {
  std::vector<std::u16string> paragraphs;
  std::size_t begin = 0;
  for (;;) {
    const std::size_t end = text.find_first_of(u"\r\n", begin);
    paragraphs.push_back(printable(std::u16string_view(text).substr(begin, end - begin)));
    if (end == std::u16string::npos) return paragraphs;
    begin = end + (text.compare(end, 2, u"\r\n") == 0 ? 2 : 1);
  }
}

// More units than any line shows; text without any width is broken here.
constexpr std::size_t kLongestLine = 1000;

// Finds how much of the remaining text the next line takes. Widths grow with the text, so the
// search starts at the length of the line before, which takes a few measurements instead of one for
// each word.
class LineBreaker {
 public:
  LineBreaker(const SummaryRuler& ruler, double width) : ruler_(ruler), width_(width) {}

  // Units of the next line; at least 1 unless the text is empty.
  std::size_t lineLength(std::u16string_view text) {
    text_ = text.substr(0, kLongestLine);
    if (text_.size() < text.size() && isHighSurrogate(text_.back())) text_.remove_suffix(1);
    std::size_t length = endOfWords();
    if (length == 0 && !text_.empty()) length = endOfCharacters();
    guess_ = std::max<std::size_t>(length, 1);
    return length;
  }

 private:
  bool fits(std::size_t length) const { return ruler_.widthOf(text_.substr(0, length)) <= width_; }
  std::size_t wordEnd(std::size_t from) const {
    return std::min(text_.find(u' ', from), text_.size());
  }

  // Where the last word that fits ends; 0 when the first does not fit.
  std::size_t endOfWords() const {
    std::size_t end = wordEnd(std::min(guess_, text_.size()));
    while (!fits(end)) {
      const std::size_t blank = text_.rfind(u' ', end - 1);
      if (blank == std::u16string_view::npos) return 0;
      end = blank;
    }
    while (end < text_.size()) {
      const std::size_t longer = wordEnd(end + 1);
      if (!fits(longer)) break;
      end = longer;
    }
    return end;
  }

  // Where the last character that fits ends; a line holds at least one.
  std::size_t endOfCharacters() const {
    const std::size_t least = characterEnd(0);
    std::size_t end = characterEnd(std::min(guess_, text_.size()) - 1);
    while (end > least && !fits(end)) end = characterStart(end - 1);
    while (end < text_.size()) {
      const std::size_t longer = characterEnd(end);
      if (!fits(longer)) break;
      end = longer;
    }
    return std::max(end, least);
  }
  std::size_t characterEnd(std::size_t at) const {
    return at + 1 < text_.size() && isHighSurrogate(text_[at]) ? at + 2 : at + 1;
  }
  std::size_t characterStart(std::size_t at) const {
    return at > 0 && isLowSurrogate(text_[at]) ? at - 1 : at;
  }

  std::u16string_view text_;
  const SummaryRuler& ruler_;
  double width_;
  std::size_t guess_ = 60;  // units
};

void appendLines(std::u16string_view paragraph, LineBreaker& breaker,
                 std::vector<std::u16string>& lines) {
  const auto skipBlanks = [&paragraph] {
    paragraph.remove_prefix(std::min(paragraph.find_first_not_of(u' '), paragraph.size()));
  };
  skipBlanks();
  do {
    const std::size_t length = breaker.lineLength(paragraph);
    lines.emplace_back(paragraph.substr(0, length));
    paragraph.remove_prefix(length);
    skipBlanks();
  } while (!paragraph.empty());
}

}  // namespace

SummaryRuler::SummaryRuler(bool bold, double size)
    : ruler_(platform::createTextRuler(std::max(static_cast<int>(size * kMeasuredScale + 0.5), 1),
                                       bold)) {}

double SummaryRuler::widthOf(std::u16string_view text) const {
  if (text.empty()) return 0;
  const double pixels = std::ceil(platform::measureText(*ruler_, text)) + 1;
  return std::max(pixels, 1.0) / kMeasuredScale;
}

std::vector<std::u16string> WrapSummaryText(const std::u16string& text, bool bold, double size,
                                            double width) {
  return WrapSummaryText(text, SummaryRuler(bold, size), width);
}

std::vector<std::u16string> WrapSummaryText(const std::u16string& text, const SummaryRuler& ruler,
                                            double width) {
  std::vector<std::u16string> lines;
  LineBreaker breaker(ruler, width);
  for (const std::u16string& paragraph : paragraphsOf(text)) {
    appendLines(paragraph, breaker, lines);
  }
  for (std::u16string& line : lines) std::replace(line.begin(), line.end(), kNoBreakBlank, u' ');
  return lines;
}

bool fitsStandardFonts(std::u16string_view line) {
  return std::all_of(line.begin(), line.end(), inStandardFonts);
}

std::u16string fittedToStandardFonts(std::u16string_view line) {
  std::u16string fitted;
  for (const char16_t unit : line) {
    if (!isLowSurrogate(unit)) fitted += inStandardFonts(unit) ? unit : u'?';
  }
  return fitted;
}

}  // namespace quillmere
