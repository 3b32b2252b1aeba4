#include "annot/text_under_quads.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "annot/markup_list.h"
#include "annot/markup_pdf.h"
#include "support/session_test.h"
#include "view/text_rects.h"

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

}  // namespace
}  // namespace quillmere::test
