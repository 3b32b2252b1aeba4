#include "annot/text_under_quads.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <vector>

#include "annot/markup_list.h"
#include "annot/markup_pdf.h"
#include "support/session_test.h"

namespace quillmere::test {
namespace {

using testing::SizeIs;

// The text under marks as the list of marks gives it.
class TextUnderQuadsTest : public SessionTest {
 protected:
  std::vector<MarkupEntry> collect(const std::string& content,
                                   const std::vector<std::string>& marks) {
    PdfPage page;
    page.content = content;
    page.annotations = marks;
    std::vector<MarkupEntry> list;
    CollectMarkups(openInActive(buildPdf({page})), list);
    return list;
  }
  std::u16string under(const std::string& content, const std::vector<Box>& quads) {
    const auto list = collect(content, {markup("Highlight", quads)});
    return list.size() == 1 ? list[0].text : u"not one mark";
  }
};

// Lines of Courier without leading, so that a quad over one line also touches the letters of the
// next. A word is divided at the first line's end.
constexpr const char* kDivided =
    "BT /F3 10 Tf 72 700 Td (before it) Tj 0 -10 Td (all infor-) Tj 0 -10 Td (mation is) Tj "
    "0 -10 Td (behind it) Tj ET";
constexpr Box kFirstLine{72, 684, 132, 700};
constexpr Box kSecondLine{72, 675, 132, 690};

TEST_F(TextUnderQuadsTest, AWordDividedAtALinesEndEndsWithItsLine) {
  EXPECT_EQ(under(kDivided, {kFirstLine}), u"all infor");
}

TEST_F(TextUnderQuadsTest, TheSecondHalfOfADividedWordStandsAlone) {
  EXPECT_EQ(under(kDivided, {kSecondLine}), u"mation is");
}

TEST_F(TextUnderQuadsTest, TheHalvesOfADividedWordComeTogether) {
  EXPECT_EQ(under(kDivided, {kFirstLine, kSecondLine}), u"all information is");
  EXPECT_EQ(under(kDivided, {Box{72, 678, 132, 698}}), u"all information is");
}

TEST_F(TextUnderQuadsTest, NeitherDoesADividedWordBringItsNeighboursWithoutOtherLinesAround) {
  const std::string two = "BT /F3 10 Tf 72 690 Td (all infor-) Tj 0 -10 Td (mation is) Tj ET";
  EXPECT_EQ(under(two, {kFirstLine}), u"all infor");
  EXPECT_EQ(under(two, {kSecondLine}), u"mation is");
  EXPECT_EQ(under(two, {kFirstLine, kSecondLine}), u"all information is");
  EXPECT_EQ(under(two, {Box{72, 678, 132, 698}}), u"all information is");
}

TEST_F(TextUnderQuadsTest, WordsWithUnmarkedTextBetweenThemStayApart) {
  EXPECT_EQ(under("BT /F3 10 Tf 72 700 Td (abcdef) Tj ET",
                  {Box{72, 698, 84, 708}, Box{96, 698, 108, 708}}),
            u"ab ef");
}

TEST_F(TextUnderQuadsTest, AQuadThatComesTwiceGivesItsTextOnce) {
  const Box word{72, 698, 132, 708};
  const Box other{72, 678, 132, 688};
  EXPECT_EQ(under("BT /F3 10 Tf 72 700 Td (one) Tj 0 -20 Td (two) Tj ET", {word, other, word}),
            u"one two");
}

constexpr std::size_t kMostText = 5'000'000;  // units from one page, whatever its marks are

std::size_t unitsOf(const std::vector<MarkupEntry>& list) {
  std::size_t units = 0;
  for (const MarkupEntry& entry : list) units += entry.text.size();
  return units;
}

// `letters` letters in lines of 75.
std::string letters(int count) {
  std::string content;
  for (int i = 0; i < count / 75; ++i) {
    content += textContent(std::string(75, 'x'), 72, 750 - 8 * i, 8, "F3");
  }
  return content;
}

Box wholePage(int nudge) {
  return {0, 0, 612, 792 + 0.01 * nudge};
}

TEST_F(TextUnderQuadsTest, OneMarkOfVeryManyQuadsOverTheWholePageHasLimitedText) {
  std::vector<Box> quads;
  for (int i = 0; i < 20'000; ++i) quads.push_back(wholePage(i));
  const auto list = collect(letters(3000), {markup("Highlight", quads)});
  ASSERT_THAT(list, SizeIs(1));
  EXPECT_GE(unitsOf(list), 3000u);
  EXPECT_LE(unitsOf(list), kMostText);
}

TEST_F(TextUnderQuadsTest, VeryManyMarksOverTheWholePageAreAllListedWithLimitedText) {
  std::vector<std::string> marks;
  for (int i = 0; i < 20'000; ++i) marks.push_back(markup("Highlight", {wholePage(i)}));
  const auto list = collect(letters(3000), marks);
  ASSERT_THAT(list, SizeIs(20'000));
  EXPECT_GE(list.back().text.size(), 3000u);  // the lowest top: the first mark of the page
  EXPECT_LE(unitsOf(list), kMostText);
}

TEST_F(TextUnderQuadsTest, ManySmallMarksOnAFullPageAllHaveTheirText) {
  std::vector<std::string> marks;
  for (int i = 0; i < 5'000; ++i) {
    const double left = 72 + 4.8 * (i % 70);
    const double baseline = 750 - 8 * (i / 70 % 40);
    marks.push_back(markup("Highlight", {Box{left + 0.2, baseline - 1, left + 4.6, baseline + 6}}));
  }
  const auto list = collect(letters(3000), marks);
  ASSERT_THAT(list, SizeIs(5'000));
  EXPECT_TRUE(std::all_of(list.begin(), list.end(),
                          [](const MarkupEntry& entry) { return entry.text == u"x"; }));
}

TEST_F(TextUnderQuadsTest, FiftyThousandMarksOnAPageAreListed) {
  std::vector<std::string> marks(50'000, markup("Highlight", {Box{72, 700, 140, 710}}));
  EXPECT_THAT(collect(letters(5000), marks), SizeIs(50'000));
}

}  // namespace
}  // namespace quillmere::test
