#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quillmere {

// A stretch of the searched text, in UTF-16 units.
struct PatternMatch {
  std::size_t start = 0;
  std::size_t length = 0;
};

enum class PatternOutcome {
  Done,        // all matches were found
  Stopped,     // as many as were wanted were found
  TooComplex,  // matching was given up; the matches found until then count
};

// A compiled regular expression over UTF-16 units, case-sensitive.
//
// The grammar is that of ECMAScript without flags, with these differences of the library behind it:
// - a reference to a group that has not matched fails, while ECMAScript takes it as empty, and
//   a reference has one digit;
// - a "]" that comes first in a class stands for itself, so that "[]" and "[^]" are errors;
// - a class with two negated classes, as in "[\D\S]", matches only what is in both;
// - "[[:alpha:]]", "[[.a.]]" and "[[=a=]]" are POSIX classes;
// - "\s" knows the blanks of ASCII and U+00A0, U+2028, U+2029 and U+FEFF, and "." stops at U+000C
//   and U+0085 too;
// - possessive quantifiers are known, and blanks are allowed within the braces of "a{2}";
// - a lookbehind must have a fixed length.
// Groups that ECMAScript does not know are refused, and an escaped character without a meaning
// there stands for itself.
struct FindPattern {
  struct Compiled;
  struct Deleter {
    void operator()(Compiled* compiled) const;
  };
  std::unique_ptr<Compiled, Deleter> compiled;  // null until a compilation succeeds
  std::uint64_t millisecondsLeft = 0;           // left for matching, over all texts together
};

// Time that a pattern may take for one text, and for all the texts it is matched against: a second
// and ten seconds, less what it takes to give up.
inline constexpr std::uint64_t kTextMilliseconds = 900;
inline constexpr std::uint64_t kMatchingMilliseconds = 9900;

// Characters read between two looks at the clock; fewer with a long pattern.
inline constexpr std::uint32_t kStepsBetweenLooks = 4096;

// False when the text is not a regular expression; `pattern` is then empty.
bool compilePattern(std::u16string_view text, FindPattern& pattern);

// Appends every match with at least one unit, from left to right and not overlapping, until `limit`
// of them are appended; 0 for no limit. Matching that grows beyond bounds, or uses up the time of a
// text or the pattern's, is given up, so that no pattern can hang the program or exhaust its stack.
PatternOutcome findMatches(FindPattern& pattern, std::u16string_view text, std::size_t limit,
                           std::vector<PatternMatch>& matches);

}  // namespace quillmere
