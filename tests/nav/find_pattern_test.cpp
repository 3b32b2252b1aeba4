#include "nav/find_pattern.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "platform/process.h"
#include "platform/stand_in.h"

namespace quillmere::test {
namespace {

std::vector<std::u16string> matchesOf(std::u16string_view pattern, const std::u16string& text) {
  FindPattern compiled;
  std::vector<PatternMatch> matches;
  if (!compilePattern(pattern, compiled)) {
    ADD_FAILURE() << "no expression: " << std::string(pattern.begin(), pattern.end());
    return {};
  }
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
      {u"[\\b]", u"a\bb", {u"\b"}},
      {u"a{2}", u"aaa", {u"aa"}},
      {u"\\{a\\}", u"{a}", {u"{a}"}},
      {u"[{]", u"{", {u"{"}},
      {u"[\\d-]+", u"1-2x", {u"1-2"}},
      {u"[\\d-x]+", u"1-2x3w", {u"1-2x3"}},
      {u"[x-\\d]+", u"1-2x3w", {u"1-2x3"}},
      {u"[\\w-\\s]+", u"!a b-c!", {u"a b-c"}},
      {u"[\\S-\\d]+", u" a-1 ", {u"a-1"}},
      {u"[^\\d-x]+", u"1-yzx", {u"yz"}},
      {u"[\\d-a-z]+", u"m1-az-", {u"1-az-"}},
      {u"[a-c-\\d]+", u"b-1d", {u"b-1"}},
      {u"[a-c-e]+", u"b-ed", {u"b-e"}},
      {u"[-\\d]+", u"a-1", {u"-1"}},
      {u"[--\\d]+", u"a-1.", {u"-1"}},
      {u"[\\d--]+", u"a-1.", {u"-1"}},
      {u"[+--]+", u"a+,-.", {u"+,-"}},
      {u"[\\d-\\u0041]+", u"1-AB", {u"1-A"}},
      {u"[\\u0041-\\x43]+", u"@ABCD", {u"ABC"}},
      {u"[\\--/]+", u",-./0", {u"-./"}},
      {u"[]-a]+", u"]^a\\", {u"]^a"}},
      {u"[^]-a]+", u"]bc", {u"bc"}},
      {u"[[-a]+", u"Z[\\a", {u"[\\a"}},
      {u"[[:lower:]-]+", u"A-a", {u"-a"}},
      {u"[[:lower:]-9]+", u"8A-a9", {u"-a9"}},
      {u"[[.a.]-c]+", u"-abcd", {u"abc"}},
      {u"[a-[.c.]]+", u"-abcd", {u"abc"}},
      {u"[\\d-x]-[\\d-x]", u"1-x", {u"1-x"}},
      {u"\\[\\d-x", u"[1-x", {u"[1-x"}},
      {u"\\cJ", u"a\nb", {u"\n"}},
      {u"[\\cj-\\cM]+", u"a\n\rb", {u"\n\r"}},
      {u"\\c1", u"\\c1 c1", {u"\\c1"}},
      {u"\\c[a]", u"\\ca", {u"\\ca"}},
      {u"(?<\u00E4_1>a)\\k<\u00E4_1>", u"aab", {u"aa"}},
      {u"\\0", std::u16string(u"a\0b", 3), {std::u16string(1, u'\0')}},
      {u"\\/\\-", u"a/-b", {u"/-"}},
      {u"ab*?c|abbd", u"abbd abc", {u"abbd", u"abc"}},
      {u"(a)|b\\1", u"a", {u"a"}},
      {u"(?=(a+))a*b\\1", u"baaabac", {u"aba"}},
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

TEST(FindPatternTest, WhatStandsBeforeTheSearchedPlaceCounts) {
  EXPECT_EQ(matchesOf(u"a|\\bb", u"ab"), Texts{u"a"});
  EXPECT_EQ(matchesOf(u"^a", u"aa").size(), 1u);
  EXPECT_EQ(matchesOf(u"a|(?<=a)b", u"ab"), (Texts{u"a", u"b"}));
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
  for (const std::u16string_view text :
       {u"[", u"(", u")", u"a{2,1}", u"*a", u"[b-a]", u"[\\d-", u"[a-", u"\\"}) {
    FindPattern pattern;
    EXPECT_FALSE(compilePattern(text, pattern)) << std::string(text.begin(), text.end());
    EXPECT_EQ(pattern.compiled, nullptr);
  }
}

TEST(FindPatternTest, GroupsThatOnlyTheLibraryKnowsAreRefused) {
  for (const std::u16string_view text :
       {u"(?>a)", u"(?R)", u"a(?1)", u"(?i)a", u"(?|a|b)", u"(?&n)", u"(?P<n>a)", u"(?'n'a)",
        u"(?#a)", u"(?(1)a|b)", u"(*FAIL)", u"(?>[\\s\\S](?R)?)", u"(?", u"(?<", u"(?<>a)",
        u"(?<1>a)", u"(?<a b>a)", u"\\c[?(?>(?:.|\\s)(?R)?)", u"(?<a[>(?>(?:.|\\s)(?R)?))"}) {
    FindPattern pattern;
    EXPECT_FALSE(compilePattern(text, pattern)) << std::string(text.begin(), text.end());
  }
}

TEST(FindPatternTest, WhatLooksLikeAForeignGroupMayBeCharacters) {
  EXPECT_EQ(matchesOf(u"\\(?", u"a(b"), (Texts{u"("}));
  EXPECT_EQ(matchesOf(u"[(?>]+", u"a(?>b"), Texts{u"(?>"});
  EXPECT_EQ(matchesOf(u"[\\](?R]+", u"a(?R]b"), Texts{u"(?R]"});
  EXPECT_EQ(matchesOf(u"(?<word>b+)\\k<word>", u"abbbb"), Texts{u"bbbb"});
}

TEST(FindPatternTest, ALongRunThatFindsNothingOnADensePageIsNoReasonToGiveUp) {
  FindPattern pattern;
  ASSERT_TRUE(compilePattern(u"[\\s\\S]*b", pattern));
  std::vector<PatternMatch> matches;
  EXPECT_EQ(findMatches(pattern, std::u16string(3500, u'a'), 0, matches), PatternOutcome::Done);
}

TEST(FindPatternTest, ABraceAloneStandsForItself) {
  EXPECT_EQ(matchesOf(u"{", u"a{b"), Texts{u"{"});
  EXPECT_EQ(matchesOf(u"a{x", u"a{x"), Texts{u"a{x"});
  EXPECT_EQ(matchesOf(u"}", u"a}b"), Texts{u"}"});
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
  for (const std::size_t depth : {500u, 5000u, 15000u}) {
    FindPattern pattern;
    EXPECT_FALSE(
        compilePattern(std::u16string(depth, u'(') + u"a" + std::u16string(depth, u')'), pattern))
        << depth;
  }
}

TEST(FindPatternTest, GroupsMayBeNestedAHundredTimes) {
  const std::u16string pattern = std::u16string(100, u'(') + u"a" + std::u16string(100, u')');
  EXPECT_EQ(matchesOf(pattern, u"bab"), Texts{u"a"});
}

TEST(FindPatternTest, APatternAsLongAsTheFieldAllowsIsFound) {
  const std::u16string word(29000, u'w');
  EXPECT_EQ(matchesOf(word, u"a" + word + u"b"), Texts{word});
  std::u16string alternatives;
  while (alternatives.size() < 30000) alternatives += u"ab|";
  EXPECT_EQ(matchesOf(alternatives + u"c", u"xcab"), (Texts{u"c", u"ab"}));
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

// The clock goes on by a fixed time at each look, so that time stands for steps of the matching.
class FindPatternTimeTest : public testing::Test {
 protected:
  void SetUp() override {
    platform::resetStandIn();
    platform::standIn().clockStopped = true;
  }
  void TearDown() override { platform::resetStandIn(); }

  static void lookTakes(std::uint64_t milliseconds) {
    platform::standIn().clockStep = static_cast<std::uint32_t>(milliseconds);
  }

  PatternOutcome match(std::u16string_view text) {
    return findMatches(pattern_, text, 0, matches_);
  }

  FindPattern pattern_;
  std::vector<PatternMatch> matches_;
};

std::u16string englishText(std::size_t length) {
  std::u16string text;
  while (text.size() < length) text += u"It was a bright day, and the clocks were far away. ";
  text.resize(length);
  return text;
}

TEST_F(FindPatternTimeTest, MatchingThatReadsOnAndOnIsGivenUpAfterASecond) {
  const struct {
    std::u16string pattern;
    std::u16string text;
  } cases[] = {
      {u"(?:(?=[\\s\\S]*away)[\\s\\S])+", englishText(20000)},
      {u"(?:(?=[^q]*away)[\\s\\S])+", englishText(20000)},
      {u"(?:(?=.*away).)+", englishText(20000)},
      {u"(?:(?=(?:a|aa)+$)a)+", std::u16string(50000, u'a')},
      {u"(?:(?=a*$)a)+", std::u16string(20000, u'a')},
      {u"(?:(?=(a*))\\1(?=b)|a)+", std::u16string(20000, u'a')},
      {u"(?<=[^q]{40000})x", std::u16string(30000, u'x')},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.pattern.begin(), c.pattern.end()));
    lookTakes(1);
    ASSERT_TRUE(compilePattern(c.pattern, pattern_));
    const std::uint64_t before = platform::monotonicMilliseconds();
    EXPECT_EQ(match(c.text), PatternOutcome::TooComplex);
    // Each look at the clock takes a millisecond: those at both ends, and the one here.
    EXPECT_LE(platform::monotonicMilliseconds() - before, kTextMilliseconds + 3);
  }
}

TEST_F(FindPatternTimeTest, EveryCharacterThatIsReadCounts) {
  lookTakes(kTextMilliseconds / 4);
  for (const std::u16string_view text : {u"a", u"[a]", u"[a\u0100-\u0200]", u"aa"}) {
    SCOPED_TRACE(std::string(text.begin(), text.end()));
    ASSERT_TRUE(compilePattern(text, pattern_));
    EXPECT_EQ(match(std::u16string(kStepsBetweenLooks * 3, u'b')), PatternOutcome::Done);
    EXPECT_EQ(match(std::u16string(kStepsBetweenLooks * 5, u'b')), PatternOutcome::TooComplex);
  }
}

TEST_F(FindPatternTimeTest, ManyMatchesUseUpTheTimeOfAPageToo) {
  lookTakes(kTextMilliseconds / 4);
  ASSERT_TRUE(compilePattern(u"a", pattern_));
  EXPECT_EQ(match(std::u16string(kStepsBetweenLooks * 5, u'a')), PatternOutcome::TooComplex);
  EXPECT_GT(matches_.size(), kStepsBetweenLooks / 2);
}

// One step can go through the whole pattern.
TEST_F(FindPatternTimeTest, TheClockIsReadMoreOftenForALongPattern) {
  lookTakes(kTextMilliseconds / 4);
  ASSERT_TRUE(compilePattern(u"[" + std::u16string(30000, u'c') + u"]", pattern_));
  EXPECT_EQ(match(std::u16string(kStepsBetweenLooks, u'b')), PatternOutcome::TooComplex);
}

TEST_F(FindPatternTimeTest, ThePagesOfADocumentShareTheirTime) {
  lookTakes(kTextMilliseconds / 2);
  ASSERT_TRUE(compilePattern(u"a", pattern_));
  const std::size_t pages = kMatchingMilliseconds / (kTextMilliseconds / 2);
  for (std::size_t i = 0; i < pages; ++i) EXPECT_EQ(match(u"ba"), PatternOutcome::Done) << i;
  EXPECT_EQ(match(u"ba"), PatternOutcome::TooComplex);
  EXPECT_EQ(matches_.size(), pages);
  ASSERT_TRUE(compilePattern(u"a", pattern_));
  EXPECT_EQ(match(u"ba"), PatternOutcome::Done);
}

TEST_F(FindPatternTimeTest, TheLastOfADocumentsTimeEndsInTheMiddleOfAPage) {
  lookTakes(kTextMilliseconds / 3);
  ASSERT_TRUE(compilePattern(u"a", pattern_));
  while (pattern_.millisecondsLeft > kTextMilliseconds / 3) match(u"b");
  ASSERT_GT(pattern_.millisecondsLeft, 0u);
  EXPECT_EQ(match(u"a" + std::u16string(kStepsBetweenLooks, u'b')), PatternOutcome::TooComplex);
  EXPECT_EQ(matches_.size(), 1u);
}

TEST_F(FindPatternTimeTest, TimeBetweenTwoPagesDoesNotCount) {
  ASSERT_TRUE(compilePattern(u"a", pattern_));
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(match(u"ba"), PatternOutcome::Done);
    platform::sleepMilliseconds(static_cast<std::uint32_t>(kMatchingMilliseconds));
  }
  EXPECT_EQ(pattern_.millisecondsLeft, kMatchingMilliseconds);
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
