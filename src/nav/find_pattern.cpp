#include "nav/find_pattern.h"

// States that one search may visit before it is given up: a fraction of a second.
#define BOOST_REGEX_MAX_STATE_COUNT 4000000
#include <boost/regex.hpp>

#include <exception>
#include <locale>

namespace quillmere {

namespace {

bool isLineEnd(char16_t unit) {
  return unit == u'\n' || unit == u'\r' || unit == 0x2028 || unit == 0x2029;
}
bool isDigit(char16_t unit) {
  return unit >= u'0' && unit <= u'9';
}
bool isLower(char16_t unit) {
  return unit >= u'a' && unit <= u'z';
}
bool isUpper(char16_t unit) {
  return unit >= u'A' && unit <= u'Z';
}
bool isWord(char16_t unit) {
  return isDigit(unit) || isLower(unit) || isUpper(unit) || unit == u'_';
}
bool isSpace(char16_t unit) {
  return unit == u' ' || (unit >= u'\t' && unit <= u'\r') || unit == 0xA0 || unit == 0xFEFF ||
         isLineEnd(unit);
}

// What the library asks of a character type. Its classes know ASCII, as those of ECMAScript do.
class UnitTraits {
 public:
  using char_type = char16_t;
  using size_type = std::size_t;
  using string_type = std::u16string;
  using locale_type = std::locale;
  using char_class_type = std::uint32_t;

  static constexpr char_class_type kDigit = 1;
  static constexpr char_class_type kSpace = 2;
  static constexpr char_class_type kWord = 4;
  static constexpr char_class_type kLower = 8;
  static constexpr char_class_type kUpper = 16;

  static size_type length(const char16_t* text) { return std::char_traits<char16_t>::length(text); }
  char16_t translate(char16_t unit) const { return unit; }
  char16_t translate_nocase(char16_t unit) const { return unit; }
  string_type transform(const char16_t* first, const char16_t* last) const { return {first, last}; }
  string_type transform_primary(const char16_t* first, const char16_t* last) const {
    return {first, last};
  }
  char_class_type lookup_classname(const char16_t* first, const char16_t* last) const {
    const std::u16string_view name(first, static_cast<std::size_t>(last - first));
    // The negated escapes look their class up by the capital letter.
    if (name == u"d" || name == u"D" || name == u"digit") return kDigit;
    if (name == u"s" || name == u"S" || name == u"space") return kSpace;
    if (name == u"w" || name == u"W" || name == u"word") return kWord;
    if (name == u"lower") return kLower;
    if (name == u"upper") return kUpper;
    return name == u"alpha" ? kLower | kUpper : 0;
  }
  string_type lookup_collatename(const char16_t* first, const char16_t* last) const {
    return last - first == 1 ? string_type(first, last) : string_type();
  }
  bool isctype(char16_t unit, char_class_type wanted) const {
    return ((wanted & kDigit) != 0 && isDigit(unit)) || ((wanted & kSpace) != 0 && isSpace(unit)) ||
           ((wanted & kWord) != 0 && isWord(unit)) || ((wanted & kLower) != 0 && isLower(unit)) ||
           ((wanted & kUpper) != 0 && isUpper(unit));
  }
  int value(char16_t unit, int radix) const {
    int digit = -1;
    if (isDigit(unit)) digit = unit - u'0';
    if (unit >= u'a' && unit <= u'f') digit = unit - u'a' + 10;
    if (unit >= u'A' && unit <= u'F') digit = unit - u'A' + 10;
    return digit < radix ? digit : -1;
  }
  locale_type imbue(locale_type) { return {}; }
  locale_type getloc() const { return {}; }
};

using Expression = boost::basic_regex<char16_t, UnitTraits>;
using Iterator = boost::regex_iterator<std::u16string_view::const_iterator, char16_t, UnitTraits>;

bool isHexadecimal(std::u16string_view digits) {
  const UnitTraits traits;
  for (const char16_t unit : digits) {
    if (traits.value(unit, 16) < 0) return false;
  }
  return true;
}

// "\uXXXX" in the library's own form.
std::u16string withLibraryEscapes(std::u16string_view text) {
  std::u16string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    result += text[i];
    if (text[i] != u'\\' || i + 1 >= text.size()) continue;
    const std::u16string_view digits = text.substr(i + 2 <= text.size() ? i + 2 : i, 4);
    if (text[i + 1] == u'u' && digits.size() == 4 && isHexadecimal(digits)) {
      result.append(u"x{").append(digits).append(u"}");
      i += 5;
    } else {
      result += text[++i];
    }
  }
  return result;
}

}  // namespace

struct FindPattern::Compiled {
  Expression expression;
};

void FindPattern::Deleter::operator()(Compiled* compiled) const {
  delete compiled;
}

bool compilePattern(std::u16string_view text, FindPattern& pattern) {
  pattern.compiled.reset();
  const std::u16string source = withLibraryEscapes(text);
  try {
    pattern.compiled.reset(new FindPattern::Compiled{
        Expression(source.data(), source.data() + source.size(), Expression::ECMAScript)});
  } catch (const std::exception&) {
    return false;
  }
  return true;
}

PatternOutcome findMatches(const FindPattern& pattern, std::u16string_view text, std::size_t limit,
                           std::vector<PatternMatch>& matches) {
  const auto flags =
      boost::regex_constants::match_single_line | boost::regex_constants::match_not_dot_newline;
  std::size_t appended = 0;
  try {
    const Iterator end;
    for (Iterator match(text.begin(), text.end(), pattern.compiled->expression, flags);
         match != end; ++match) {
      const auto length = static_cast<std::size_t>(match->length());
      if (length == 0) continue;
      matches.push_back({static_cast<std::size_t>(match->position()), length});
      if (++appended == limit) return PatternOutcome::Stopped;
    }
  } catch (const std::exception&) {
    return PatternOutcome::TooComplex;
  }
  return PatternOutcome::Done;
}

}  // namespace quillmere
