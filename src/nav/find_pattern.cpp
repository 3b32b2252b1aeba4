#include "nav/find_pattern.h"

// States that one search may visit before it gives up: a fraction of a second.
#define BOOST_REGEX_MAX_STATE_COUNT 8000000
#include <boost/regex.hpp>

#include <algorithm>
#include <cstddef>
#include <exception>
#include <iterator>
#include <locale>

#include "nav/matching_watch.h"

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

// The character traits that the library asks for. Their classes cover ASCII, as in ECMAScript.
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
    // Negated escapes look up their class by the capital letter.
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
  locale_type imbue(const locale_type&) { return {}; }
  locale_type getloc() const { return {}; }
};

using Expression = boost::basic_regex<char16_t, UnitTraits>;

// A bidirectional iterator: for a random access one the library computes a limit of its own, which
// grows with the pattern beyond the one set here. Every loop of the matcher reads characters or
// steps back, and both are counted.
class UnitPointer {
 public:
  using iterator_category = std::bidirectional_iterator_tag;
  using value_type = char16_t;
  using difference_type = std::ptrdiff_t;
  using pointer = const char16_t*;
  using reference = const char16_t&;

  UnitPointer() = default;
  explicit UnitPointer(const char16_t* unit) : unit_(unit) {}

  const char16_t* get() const { return unit_; }
  reference operator*() const {
    MatchingWatch::step();
    return *unit_;
  }
  UnitPointer& operator++() {
    ++unit_;
    return *this;
  }
  UnitPointer operator++(int) { return UnitPointer(unit_++); }
  UnitPointer& operator--() {
    MatchingWatch::step();
    --unit_;
    return *this;
  }
  UnitPointer operator--(int) {
    MatchingWatch::step();
    return UnitPointer(unit_--);
  }
  bool operator==(const UnitPointer&) const = default;

 private:
  const char16_t* unit_ = nullptr;
};

using Iterator = boost::regex_iterator<UnitPointer, char16_t, UnitTraits>;

bool isHexadecimal(std::u16string_view digits) {
  const UnitTraits traits;
  for (const char16_t unit : digits) {
    if (traits.value(unit, 16) < 0) return false;
  }
  return true;
}

// How many units after "\\x" or "\\u" form its number; 0 when there is no number.
std::size_t numberLength(char16_t escape, std::u16string_view rest) {
  const std::size_t wanted = escape == u'u' ? 4 : escape == u'x' ? 2 : 0;
  const std::u16string_view digits = rest.substr(0, wanted);
  return digits.size() == wanted && isHexadecimal(digits) ? wanted : 0;
}

// Escapes that mean the same to ECMAScript and to the library.
bool sharedEscape(char16_t escape, std::u16string_view rest) {
  if (escape == u'k') return rest.starts_with(u'<');
  return isDigit(escape) || std::u16string_view(u"dDsSwWbBfnrtv^$\\.*+?()[]{}|/-").find(escape) !=
                                std::u16string_view::npos;
}

// A control character is named by a letter; "\c" before anything else is a backslash and a "c".
bool isControl(char16_t escape, std::u16string_view rest) {
  return escape == u'c' && !rest.empty() && (isLower(rest[0]) || isUpper(rest[0]));
}

// A character by its hexadecimal digits, in the one form that the library cannot misread.
std::u16string asNumber(std::u16string_view digits) {
  return std::u16string(u"\\x{").append(digits).append(u"}");
}

std::u16string hexadecimal(char16_t unit) {
  std::u16string digits;
  for (int shift = 12; shift >= 0; shift -= 4) digits += u"0123456789ABCDEF"[(unit >> shift) & 15];
  return digits;
}

// Appends the library's form of the escape whose backslash is at `at`, and returns the index after
// it. Numbers get the library's own form; an escaped unit that means nothing to ECMAScript stands
// for itself, whatever it means to the library.
std::size_t appendEscape(std::u16string_view text, std::size_t at, std::u16string& result) {
  if (at + 1 == text.size()) {
    result += text[at];
    return at + 1;
  }
  const char16_t escape = text[at + 1];
  const std::size_t next = at + 2;
  const std::u16string_view rest = text.substr(next);
  if (const std::size_t length = numberLength(escape, rest); length > 0) {
    result += asNumber(rest.substr(0, length));
    return next + length;
  }
  if (isControl(escape, rest)) {
    result += asNumber(hexadecimal(rest[0] % 32));
    return next + 1;
  }
  if (escape == u'c') {
    result += u"\\\\c";
  } else if (sharedEscape(escape, rest)) {
    result.append({u'\\', escape});
  } else {
    result += asNumber(hexadecimal(escape));
  }
  return next;
}

// One operand of a hyphen in a class.
struct ClassAtom {
  std::size_t end = 0;  // index after it
  bool isClass = false;
};

// The length of "[:name:]", "[.name.]" or "[=name=]" at the front of the text; 0 if it is none.
std::size_t bracketedNameLength(std::u16string_view text) {
  constexpr std::size_t kShortest = 3;  // units before the second mark
  if (text.size() < kShortest || std::u16string_view(u":.=").find(text[1]) == text.npos) return 0;
  const std::size_t mark = text.find(text[1], kShortest);
  return mark != text.npos && text.substr(mark + 1).starts_with(u']') ? mark + 2 : 0;
}

// Appends the library's form of the class atom that begins at `at`.
ClassAtom appendClassAtom(std::u16string_view text, std::size_t at, std::u16string& result) {
  const std::u16string_view rest = text.substr(at);
  if (rest[0] == u'\\') {
    const bool isClass =
        rest.size() > 1 && std::u16string_view(u"dDsSwW").find(rest[1]) != rest.npos;
    return {appendEscape(text, at, result), isClass};
  }
  if (const std::size_t length = rest[0] == u'[' ? bracketedNameLength(rest) : 0; length > 0) {
    result += rest.substr(0, length);
    return {at + length, rest[1] != u'.'};
  }
  if (rest[0] == u'-') result += u'\\';
  result += rest[0];
  return {at + 1, false};
}

// Appends the library's form of the class whose bracket is at `at`, and returns the index of its
// closing bracket. To ECMAScript a hyphen beside a class like "\d" stands for itself, and so does
// one right after a range; the library refuses both.
std::size_t appendClass(std::u16string_view text, std::size_t at, std::u16string& result) {
  result += text[at++];
  if (text.substr(at).starts_with(u'^')) result += text[at++];
  const std::size_t first = at;
  while (at < text.size() && (at == first || text[at] != u']')) {
    const ClassAtom left = appendClassAtom(text, at, result);
    at = left.end;
    const std::u16string_view rest = text.substr(at);
    if (rest.size() < 2 || rest[0] != u'-' || rest[1] == u']') continue;
    const std::size_t hyphen = result.size();
    result += u'-';
    const ClassAtom right = appendClassAtom(text, at + 1, result);
    if (left.isClass || right.isClass) result.insert(hyphen, 1, u'\\');
    at = right.end;
  }
  return at;
}

// The expression in the library's notation.
std::u16string librarySource(std::u16string_view text) {
  std::u16string result;
  std::size_t at = 0;
  while (at < text.size()) {
    if (text[at] == u'\\') {
      at = appendEscape(text, at, result);
    } else if (text[at] == u'[') {
      at = appendClass(text, at, result);
    } else {
      result += text[at++];
    }
  }
  return result;
}

// The library itself accepts any text up to ">".
bool isGroupName(std::u16string_view name) {
  const auto inName = [](char16_t unit) { return isWord(unit) || unit == u'$' || unit > 0x7F; };
  return !name.empty() && !isDigit(name[0]) && std::all_of(name.begin(), name.end(), inName);
}

// Whether what follows "(" begins a group that ECMAScript knows.
bool sharedGroup(std::u16string_view rest) {
  if (rest.starts_with(u'*')) return false;
  if (!rest.starts_with(u'?')) return true;
  const std::u16string_view kind = rest.substr(1);
  for (const std::u16string_view known : {u":", u"=", u"!", u"<=", u"<!"}) {
    if (kind.starts_with(known)) return true;
  }
  return kind.starts_with(u'<') && isGroupName(kind.substr(1, kind.find(u'>') - 1));
}

// The library's own groups (recursion, atomic groups, options, verbs) are errors in ECMAScript.
// Matching some of them recurses for every unit of the text.
bool hasForeignGroup(std::u16string_view text) {
  bool inClass = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == u'\\') {
      ++i;
    } else if (text[i] == u'[') {
      inClass = true;
    } else if (text[i] == u']') {
      inClass = false;
    } else if (text[i] == u'(' && !inClass && !sharedGroup(text.substr(i + 1))) {
      return true;
    }
  }
  return false;
}

// One step can run through the whole expression, so a long one gets fewer steps between looks.
std::uint32_t stepsBetweenLooks(const Expression& expression) {
  constexpr std::size_t kShortExpression = 64;  // units
  constexpr std::uint32_t kFewest = 256;
  const std::size_t lengths = expression.size() / kShortExpression + 1;
  return std::max(kFewest, static_cast<std::uint32_t>(kStepsBetweenLooks / lengths));
}

}  // namespace

struct FindPattern::Compiled {
  Expression expression;
};

void FindPattern::Deleter::operator()(Compiled* pattern) const {
  delete pattern;
}

bool compilePattern(std::u16string_view text, FindPattern& pattern) {
  pattern.compiled.reset();
  if (hasForeignGroup(text)) return false;
  const std::u16string source = librarySource(text);
  try {
    pattern.compiled.reset(new FindPattern::Compiled{
        Expression(source.data(), source.data() + source.size(), Expression::ECMAScript)});
  } catch (const std::exception&) {
    return false;
  }
  pattern.millisecondsLeft = kMatchingMilliseconds;
  return true;
}

PatternOutcome findMatches(FindPattern& pattern, std::u16string_view text, std::size_t limit,
                           std::vector<PatternMatch>& matches) {
  const auto flags =
      boost::regex_constants::match_single_line | boost::regex_constants::match_not_dot_newline;
  std::size_t appended = 0;
  if (pattern.millisecondsLeft == 0) return PatternOutcome::TooComplex;
  try {
    const Expression& expression = pattern.compiled->expression;
    const MatchingWatch watch(pattern.millisecondsLeft, kTextMilliseconds,
                              stepsBetweenLooks(expression));
    const Iterator end;
    const UnitPointer first(text.data());
    const UnitPointer last(text.data() + text.size());
    for (Iterator match(first, last, expression, flags); match != end; ++match) {
      const auto& whole = (*match)[0];
      if (whole.first == whole.second) continue;
      matches.push_back({static_cast<std::size_t>(whole.first.get() - text.data()),
                         static_cast<std::size_t>(whole.second.get() - whole.first.get())});
      if (++appended == limit) return PatternOutcome::Stopped;
    }
  } catch (const std::exception&) {
    return PatternOutcome::TooComplex;
  }
  return PatternOutcome::Done;
}

}  // namespace quillmere
