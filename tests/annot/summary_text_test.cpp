#include "annot/summary_text.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "support/session_test.h"

namespace quillmere::test {
namespace {

using testing::ElementsAre;

class SummaryTextTest : public SessionTest {
 protected:
  using Lines = std::vector<std::u16string>;
  static Lines wrap(const std::u16string& text, double width = 100) {
    return WrapSummaryText(text, false, 10, width);
  }
  // As a report measures it: Helvetica at 10 points.
  static double widthOf(const std::u16string& text) {
    return SummaryRuler(false, 10).widthOf(text);
  }
  static std::u16string joined(const Lines& lines) {
    std::u16string text;
    for (const std::u16string& line : lines) text += line;
    return text;
  }
};

TEST_F(SummaryTextTest, AShortTextIsOneLine) {
  EXPECT_THAT(wrap(u"short"), ElementsAre(u"short"));
}

TEST_F(SummaryTextTest, LinesHoldAsManyWordsAsFit) {
  std::u16string text;
  for (int i = 0; i < 60; ++i) text += (i == 0 ? u"" : u" ") + std::u16string(1u + i % 7u, u'a');
  const Lines lines = wrap(text);
  ASSERT_GT(lines.size(), 3u);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    EXPECT_LE(widthOf(lines[i]), 100);
    if (i + 1 == lines.size()) break;
    const std::u16string next = lines[i + 1].substr(0, lines[i + 1].find(u' '));
    EXPECT_GT(widthOf(lines[i] + u" " + next), 100);
  }
}

TEST_F(SummaryTextTest, EveryKindOfLineEndBeginsAParagraph) {
  EXPECT_THAT(wrap(u"a\rb\nc\r\nd"), ElementsAre(u"a", u"b", u"c", u"d"));
  EXPECT_THAT(wrap(u"a\r\rb"), ElementsAre(u"a", u"", u"b"));
}

TEST_F(SummaryTextTest, ALongWordBreaksInsideAndKeepsAllItsCharacters) {
  std::u16string word;
  for (int i = 0; i < 300; ++i) word += static_cast<char16_t>(u'a' + i % 26);
  const Lines lines = wrap(word);
  ASSERT_GT(lines.size(), 5u);
  EXPECT_EQ(joined(lines), word);
  for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
    EXPECT_LE(widthOf(lines[i]), 100);
    EXPECT_GT(widthOf(lines[i] + lines[i + 1][0]), 100);
  }
}

TEST_F(SummaryTextTest, WordsGoOnBehindTheLastPieceOfALongOne) {
  const Lines lines = wrap(u"start " + std::u16string(25, u'm') + u" end");
  EXPECT_EQ(lines.front(), u"start");
  EXPECT_TRUE(lines.back().ends_with(u"m end")) << lines.size();
}

TEST_F(SummaryTextTest, SurrogatePairsStayTogether) {
  std::u16string text;
  for (int i = 0; i < 100; ++i) text += u"\U0001F600";
  for (const std::u16string& line : wrap(text)) {
    EXPECT_EQ(line.size() % 2, 0u);
    EXPECT_EQ(line[0], u'\xD83D');
  }
}

TEST_F(SummaryTextTest, TheLastPairAndTheLastControlCharacterAreKnown) {
  EXPECT_THAT(wrap(u"\U000103FF"), ElementsAre(u"\U000103FF"));
  EXPECT_THAT(wrap(std::u16string{u'a', char16_t{0x9F}, u'b'}), ElementsAre(u"a b"));
}

TEST_F(SummaryTextTest, ALineMayFillTheWidthToTheLastPoint) {
  EXPECT_THAT(wrap(u"some words", widthOf(u"some words")), ElementsAre(u"some words"));
}

TEST_F(SummaryTextTest, ALineHoldsACharacterHoweverNarrowItIs) {
  EXPECT_THAT(wrap(u"mmm", 1), ElementsAre(u"m", u"m", u"m"));
}

TEST_F(SummaryTextTest, ControlCharactersAndHalfPairsDoNotComeThrough) {
  EXPECT_THAT(wrap(std::u16string(u"a\tb\x01\x7F") + u"c"), ElementsAre(u"a b  c"));
  const std::u16string half{u'a', char16_t{0xD83D}, u'b', char16_t{0xDE00}};
  EXPECT_THAT(wrap(half), ElementsAre(u"a?b?"));
}

TEST_F(SummaryTextTest, ABlankThatHoldsWordsTogetherIsABlankOnceTheLinesAreBroken) {
  EXPECT_THAT(wrap(u"mmmmmm mm\u00A0mm mm", 80), ElementsAre(u"mmmmmm", u"mm mm mm"));
  EXPECT_THAT(wrap(u"mmmmmm mm mm mm", 80), ElementsAre(u"mmmmmm mm", u"mm mm"));
}

TEST_F(SummaryTextTest, AHyphenThatIsOnlyAPlaceToBreakIsLeftOut) {
  EXPECT_THAT(wrap(u"in\u00ADfor\u00ADmation"), ElementsAre(u"information"));
}

TEST_F(SummaryTextTest, JoinedLettersComeOutOneByOne) {
  EXPECT_THAT(wrap(u"\uFB01nd o\uFB03ce \uFB06"), ElementsAre(u"find office st"));
}

TEST_F(SummaryTextTest, TextsOfAMegabyteAreBrokenQuickly) {
  std::u16string words;
  while (words.size() < 500000) words += u"some words \U0001F600 ";
  std::size_t units = 0;
  for (const std::u16string& line : wrap(words, 470)) {
    EXPECT_LE(widthOf(line), 470);
    units += line.size() + 1;
  }
  EXPECT_NEAR(static_cast<double>(units), static_cast<double>(words.size()), 20000);
  EXPECT_EQ(joined(wrap(std::u16string(500000, u'x'), 470)).size(), 500000u);
}

TEST_F(SummaryTextTest, WidthsAreRoundedUpToQuarters) {
  EXPECT_EQ(widthOf(u""), 0);
  // "a" has 0.556 of 40 pixels: 22.24, rounded up 23, one more 24, a quarter of it 6.
  EXPECT_EQ(widthOf(u"a"), 6);
  EXPECT_GT(SummaryRuler(true, 10).widthOf(u"some text"), widthOf(u"some text"));
}

TEST_F(SummaryTextTest, TheStandardFontsHaveWesternCharacters) {
  EXPECT_TRUE(
      fitsStandardFonts(u"Plain, \u00FC\u00E9\u00DF \u20AC \u201Cquoted\u201D \u2013 \u0160"));
  for (const std::u16string text :
       {u"\u00A0", u"\u00AD", u"\u03B1", u"\u0142", u"\uFB01", u"\u4E2D", u"\U0001F600"}) {
    EXPECT_FALSE(fitsStandardFonts(text));
  }
}

}  // namespace
}  // namespace quillmere::test
