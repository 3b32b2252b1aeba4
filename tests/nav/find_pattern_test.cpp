#include "nav/find_pattern.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace quillmere::test {
namespace {

std::vector<std::u16string> matchesOf(std::u16string_view pattern, const std::u16string& text) {
  FindPattern compiled;
  EXPECT_TRUE(compilePattern(pattern, compiled));
  std::vector<PatternMatch> matches;
  EXPECT_EQ(findMatches(compiled, text, 0, matches), PatternOutcome::Done);
  std::vector<std::u16string> found;
  for (const PatternMatch& match : matches) found.push_back(text.substr(match.start, match.length));
  return found;
}

using Texts = std::vector<std::u16string>;

TEST(FindPatternTest, UnderstandsTheCommonConstructs) {
  const struct {
    std::u16string pattern;
    std::u16string text;
    Texts found;
  } cases[] = {
      {u"[b-d]+", u"abcde", {u"bcd"}},
      {u"[^b-d]+", u"abcde", {u"a", u"e"}},
      {u"(ab|cd)e", u"abe cde ace", {u"abe", u"cde"}},
      {u"(?:ab)+", u"ababa", {u"abab"}},
      {u"(\\w+) \\1", u"the the cat", {u"the the"}},
      {u"a(?=b)", u"ab ac", {u"a"}},
      {u"a(?!b)\\w", u"ab ac", {u"ac"}},
      {u"<.+?>", u"<a><b>", {u"<a>", u"<b>"}},
      {u"<.+>", u"<a><b>", {u"<a><b>"}},
      {u"\\d{2,3}", u"1 12 1234", {u"12", u"123"}},
      {u"\\bcat\\b", u"cat concat cat.", {u"cat", u"cat"}},
      {u"\\Bcat", u"cat concat", {u"cat"}},
      {u"\\D+", u"1ab2", {u"ab"}},
      {u"\\S+", u"ab cd", {u"ab", u"cd"}},
      {u"a\\sb", u"a\u00A0b a\tb axb", {u"a\u00A0b", u"a\tb"}},
      {u"\\W", u"a-b", {u"-"}},
      {u"\\u0041\\x42", u"AB", {u"AB"}},
      {u"[\\u0391-\\u03A9]+", u"a\u0391\u0392b", {u"\u0391\u0392"}},
      {u"1\\.5", u"1.5 125", {u"1.5"}},
      {u"\\(a\\)", u"(a)", {u"(a)"}},
      {u"\\<tag\\>", u"tag <tag>", {u"<tag>"}},
      {u"\\A\\z\\Q", u"AzQ", {u"AzQ"}},
      {u"\\u12", u"u12", {u"u12"}},
      {u"\\x4", u"x4", {u"x4"}},
      {u"(?<w>\\w)\\k<w>", u"aab", {u"aa"}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(matchesOf(c.pattern, c.text), c.found)
        << std::string(c.pattern.begin(), c.pattern.end());
  }
}

TEST(FindPatternTest, AnchorsStandForTheWholeText) {
  EXPECT_EQ(matchesOf(u"^a", u"a\na").size(), 1u);
  EXPECT_EQ(matchesOf(u"a$", u"a\na").size(), 1u);
}

TEST(FindPatternTest, ADotStopsAtLineEnds) {
  EXPECT_EQ(matchesOf(u".+", u"ab\r\ncd"), (Texts{u"ab", u"cd"}));
}

TEST(FindPatternTest, CaseCounts) {
  EXPECT_EQ(matchesOf(u"ab", u"AB ab Ab"), Texts{u"ab"});
}

TEST(FindPatternTest, EmptyMatchesAreLeftOut) {
  EXPECT_EQ(matchesOf(u"x*", u"axxbx"), (Texts{u"xx", u"x"}));
  EXPECT_EQ(matchesOf(u"|b", u"ab"), Texts{u"b"});
}

TEST(FindPatternTest, SurrogatesAreTwoUnits) {
  EXPECT_EQ(matchesOf(u"\U0001F600", u"a\U0001F600b"), Texts{u"\U0001F600"});
}

TEST(FindPatternTest, TheSearchEndsAtTheLimit) {
  FindPattern pattern;
  ASSERT_TRUE(compilePattern(u"a", pattern));
  std::vector<PatternMatch> matches;
  EXPECT_EQ(findMatches(pattern, u"aaaaa", 3, matches), PatternOutcome::Stopped);
  ASSERT_EQ(matches.size(), 3u);
  EXPECT_EQ(matches[2].start, 2u);
}

TEST(FindPatternTest, WhatIsNoExpressionIsRefused) {
  for (const std::u16string_view text : {u"[", u"(", u")", u"a{2,1}", u"*a", u"[b-a]", u"\\"}) {
    FindPattern pattern;
    EXPECT_FALSE(compilePattern(text, pattern)) << std::string(text.begin(), text.end());
    EXPECT_EQ(pattern.compiled, nullptr);
  }
}

TEST(FindPatternTest, MatchingThatExplodesIsGivenUp) {
  for (const std::u16string_view text : {u"(a+)+$", u"(a|aa)+$", u"((a+)+)+b", u"(a*)*c"}) {
    FindPattern pattern;
    ASSERT_TRUE(compilePattern(text, pattern));
    std::u16string page(3000, u'a');
    page += u'!';
    std::vector<PatternMatch> matches;
    EXPECT_EQ(findMatches(pattern, page, 0, matches), PatternOutcome::TooComplex)
        << std::string(text.begin(), text.end());
  }
}

TEST(FindPatternTest, ALongPatternDoesNotWidenTheBound) {
  FindPattern pattern;
  ASSERT_TRUE(compilePattern(u"(a+)+$" + std::u16string(3000, u'z'), pattern));
  std::vector<PatternMatch> matches;
  EXPECT_EQ(findMatches(pattern, std::u16string(3000, u'a') + u"!", 0, matches),
            PatternOutcome::TooComplex);
}

TEST(FindPatternTest, DeeplyNestedGroupsAreRefused) {
  FindPattern pattern;
  EXPECT_FALSE(compilePattern(std::u16string(5000, u'(') + std::u16string(5000, u')'), pattern));
}

TEST(FindPatternTest, ALongTextDoesNotExhaustTheStack) {
  const std::u16string page(20000, u'a');
  const std::vector<std::u16string> found = matchesOf(u"(?:a)+", page);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].size(), page.size());
}

TEST(FindPatternTest, AMatchOfAMillionUnitsEndsOneWayOrTheOther) {
  FindPattern pattern;
  ASSERT_TRUE(compilePattern(u"(?:a|b)+", pattern));
  std::vector<PatternMatch> matches;
  EXPECT_EQ(findMatches(pattern, std::u16string(1000000, u'a'), 0, matches),
            PatternOutcome::TooComplex);
}

TEST(FindPatternTest, HitsBeforeMatchingWasGivenUpStand) {
  FindPattern pattern;
  ASSERT_TRUE(compilePattern(u"x|(a+)+$", pattern));
  std::vector<PatternMatch> matches;
  EXPECT_EQ(findMatches(pattern, u"x x " + std::u16string(3000, u'a') + u"!", 0, matches),
            PatternOutcome::TooComplex);
  EXPECT_EQ(matches.size(), 2u);
}

}  // namespace
}  // namespace quillmere::test
