#include "nav/find.h"

#include <string>
#include <vector>

#include "documents/open_requests.h"
#include "nav/find_view.h"
#include "nav/jump_history.h"
#include "nav/nav_test.h"

namespace quillmere::test {
namespace {

class FindTest : public NavTest {
 protected:
  std::vector<int> hitPages() {
    std::vector<int> pages;
    for (const FindResult& hit : find().results) pages.push_back(hit.page);
    return pages;
  }
};

using Pages = std::vector<int>;

TEST_F(FindTest, TypingSearchesTheShownPageAlone) {
  ASSERT_TRUE(openLines({"apple", "apple apple", "apple"}));
  goToPage(0, 1, false);
  const float panY = pane(0).panY;
  type(u"apple");
  EXPECT_EQ(hitPages(), (Pages{1, 1}));
  EXPECT_EQ(bar().status, u"2 on page");
  EXPECT_EQ(find().currentIndex, 0);
  EXPECT_EQ(pane(0).currentPage, 1);
  EXPECT_EQ(pane(0).panY, panY);
}

TEST_F(FindTest, TheFirstStepLandsOnTheFirstHitOfTheDocument) {
  std::vector<std::string> lines(50, "nothing");
  lines[2] = "needle";
  lines[49] = "needle";
  ASSERT_TRUE(openLines(lines));
  goToPage(0, 39, false);
  type(u"needle");
  EXPECT_EQ(bar().status, u"0 on page");
  FindStep(1);
  EXPECT_EQ(pane(0).currentPage, 2);
  EXPECT_EQ(bar().status, u"1 of 2");
  EXPECT_TRUE(pane(0).backHistory.empty());
}

TEST_F(FindTest, SteppingNeverWrapsAround) {
  ASSERT_TRUE(openLines({"x one", "two", "x three"}));
  type(u"x");
  FindStep(1);
  EXPECT_EQ(bar().status, u"1 of 2");
  FindStep(-1);
  EXPECT_EQ(bar().status, u"1 of 2");
  FindStep(1);
  EXPECT_EQ(pane(0).currentPage, 2);
  FindStep(1);
  EXPECT_EQ(bar().status, u"2 of 2");
  EXPECT_EQ(pane(0).currentPage, 2);
}

TEST_F(FindTest, SteppingOnTheLastHitComesBackToItsPage) {
  ASSERT_TRUE(openLines({"x", "none", "x", "none"}));
  type(u"x");
  FindStep(1);
  FindStep(1);
  goToPage(0, 3, false);
  FindStep(1);
  EXPECT_EQ(pane(0).currentPage, 2);
  EXPECT_EQ(bar().status, u"2 of 2");
  ASSERT_EQ(pane(0).backHistory.size(), 2u);
  EXPECT_EQ(pane(0).backHistory[1].page, 3);
}

TEST_F(FindTest, AStepToAnotherPageCanBeUndone) {
  ASSERT_TRUE(openLines({"x", "none", "x"}));
  type(u"x");
  FindStep(1);
  EXPECT_TRUE(pane(0).backHistory.empty());
  FindStep(1);
  ASSERT_EQ(pane(0).backHistory.size(), 1u);
  JumpBack(0);
  EXPECT_EQ(pane(0).currentPage, 0);
}

TEST_F(FindTest, ThePageThatIsLeftBringsItsHitBackWhenTheUserReturns) {
  ASSERT_TRUE(openLines({"x", "x", "x x"}));
  type(u"x");
  FindStep(1);
  goToPage(0, 2, false);
  EXPECT_EQ(find().currentIndex, 2);
  EXPECT_EQ(bar().status, u"3 of 4");
  goToPage(0, 0, false);
  EXPECT_EQ(find().currentIndex, 0);
}

TEST_F(FindTest, ShowingThePageOfTheCurrentHitAgainKeepsIt) {
  for (const ViewMode mode : {ViewMode::SinglePage, ViewMode::Book}) {
    ASSERT_TRUE(openLines({"x x", "none"}));
    setViewMode(mode);
    type(u"x");
    FindInDocument();
    FindStep(1);
    ASSERT_EQ(bar().status, u"2 of 2");
    goToPage(0, 0, false);
    EXPECT_EQ(bar().status, u"2 of 2") << static_cast<int>(mode);
    EXPECT_EQ(find().currentIndex, 1) << static_cast<int>(mode);
  }
}

TEST_F(FindTest, HitsOfTypingFollowThePage) {
  ASSERT_TRUE(openLines({"x", "x x x"}));
  type(u"x");
  EXPECT_EQ(bar().status, u"1 on page");
  goToPage(0, 1, false);
  EXPECT_EQ(bar().status, u"3 on page");
}

TEST_F(FindTest, OptionsDecideWhatCounts) {
  ASSERT_TRUE(openLines({"Apple apple apples"}));
  type(u"apple");
  EXPECT_EQ(find().results.size(), 3u);
  chooseMatchCase(true);
  EXPECT_EQ(find().results.size(), 2u);
  chooseWholeWord(true);
  EXPECT_EQ(find().results.size(), 1u);
  chooseMatchCase(false);
  EXPECT_EQ(find().results.size(), 2u);
}

TEST_F(FindTest, OptionsAreIgnoredForPatterns) {
  ASSERT_TRUE(openLines({"Apple apple apples"}));
  find().matchCase = true;
  find().wholeWord = true;
  type(u"apple");
  EXPECT_EQ(find().results.size(), 1u);
  chooseFindMode(true);
  EXPECT_EQ(find().results.size(), 2u);
  EXPECT_FALSE(bar().optionsEnabled);
  EXPECT_TRUE(find().matchCase);
  chooseFindMode(false);
  EXPECT_TRUE(bar().optionsEnabled);
  EXPECT_EQ(find().results.size(), 1u);
}

TEST_F(FindTest, APatternSearchesOnlyWhenAsked) {
  ASSERT_TRUE(openLines({"abc"}));
  chooseFindMode(true);
  type(u"a.c");
  EXPECT_TRUE(find().query.empty());
  EXPECT_EQ(bar().status, u"");
  FindStep(1);
  EXPECT_EQ(bar().status, u"1 of 1");
}

TEST_F(FindTest, ABadPatternSaysSoAndTheNextSearchStartsAfresh) {
  ASSERT_TRUE(openLines({"abc", "abc"}));
  chooseFindMode(true);
  type(u"[");
  FindStep(1);
  EXPECT_EQ(bar().status, u"Bad pattern");
  EXPECT_TRUE(find().results.empty());
  type(u"[a]");
  EXPECT_EQ(bar().status, u"");
  FindStep(1);
  EXPECT_EQ(bar().status, u"1 of 2");
}

TEST_F(FindTest, APatternThatExplodesIsABadOne) {
  ASSERT_TRUE(openLines({std::string(2000, 'a') + "!"}));
  chooseFindMode(true);
  type(u"(a+)+$");
  FindStep(1);
  EXPECT_EQ(bar().status, u"Bad pattern");
}

TEST_F(FindTest, EmptyMatchesOfAPatternAreNoHits) {
  ASSERT_TRUE(openLines({"axxb"}));
  chooseFindMode(true);
  type(u"x*");
  FindStep(1);
  EXPECT_EQ(bar().status, u"1 of 1");
  EXPECT_EQ(find().results[0].count, 2);
}

PdfPage pageOfHits(int hits) {
  std::vector<std::string> lines;
  for (int left = hits; left > 0; left -= 40) {
    std::string line;
    for (int i = 0; i < std::min(left, 40); ++i) line += "q ";
    lines.push_back(line);
  }
  return pageWith(lines);
}

TEST_F(FindTest, TheThousandthHitEndsTheSearchWithAMessage) {
  for (const bool regex : {false, true}) {
    ASSERT_TRUE(open(buildPdf({pageOfHits(1000)})));
    chooseFindMode(regex);
    platform::standIn().boxAnswers = {platform::BoxAnswer::Ok};
    platform::standIn().boxes.clear();
    type(u"q");
    FindInDocument();
    EXPECT_EQ(bar().status, u"1 of 1000+");
    ASSERT_EQ(platform::standIn().boxes.size(), 1u);
    const platform::ShownBox& box = platform::standIn().boxes[0];
    EXPECT_EQ(box.text,
              u"Search found more than 1000 results.\nOnly the first 1000 are shown. Try a more "
              u"specific query.");
    EXPECT_EQ(box.title, u"Quillmere");
    EXPECT_EQ(box.icon, platform::BoxIcon::Information);
  }
}

TEST_F(FindTest, TheThousandHitsAreThoseOfAllPagesTogether) {
  for (const bool regex : {false, true}) {
    ASSERT_TRUE(open(buildPdf({pageOfHits(600), pageOfHits(600)})));
    chooseFindMode(regex);
    platform::standIn().boxAnswers = {platform::BoxAnswer::Ok};
    platform::standIn().boxes.clear();
    type(u"q");
    FindInDocument();
    EXPECT_EQ(bar().status, u"1 of 1000+") << regex;
    EXPECT_EQ(platform::standIn().boxes.size(), 1u) << regex;
    ASSERT_EQ(find().results.size(), 1000u) << regex;
    EXPECT_EQ(find().results.back().page, 1) << regex;
  }
}

TEST_F(FindTest, ReportsNoCapBelowOneThousandHits) {
  ASSERT_TRUE(open(buildPdf({pageOfHits(999)})));
  type(u"q");
  FindInDocument();
  EXPECT_EQ(bar().status, u"1 of 999");
}

TEST_F(FindTest, TypingHasNoCap) {
  ASSERT_TRUE(open(buildPdf({pageOfHits(1200)})));
  type(u"q");
  EXPECT_EQ(bar().status, u"1200 on page");
}

TEST_F(FindTest, TwoPanesOnOnePageAreSearchedOnce) {
  ASSERT_TRUE(openLines({"x", "x"}));
  setViewMode(ViewMode::IndependentPages);
  type(u"x");
  EXPECT_EQ(hitPages(), Pages{0});
  goToPage(1, 1, false);
  EXPECT_EQ(hitPages(), (Pages{0, 1}));
}

TEST_F(FindTest, HitsAreInPageOrderWhateverThePanesShow) {
  ASSERT_TRUE(openLines({"x", "none", "x x"}));
  setViewMode(ViewMode::IndependentPages);
  goToPage(0, 2, false);
  type(u"x");
  EXPECT_EQ(hitPages(), (Pages{0, 2, 2}));
}

TEST_F(FindTest, ABookIsSearchedOnBothPages) {
  ASSERT_TRUE(openLines({"x x", "x", "x"}));
  setViewMode(ViewMode::Book);
  type(u"x");
  EXPECT_EQ(hitPages(), (Pages{0, 0, 1}));
}

TEST_F(FindTest, StepsOnTheRightPageOfABookStayOnTheirHit) {
  ASSERT_TRUE(openLines({"none", "none", "x", "x", "none"}));
  setViewMode(ViewMode::Book);
  setActivePane(1);
  type(u"x");
  FindStep(1);
  EXPECT_EQ(pane(1).currentPage, 2);
  EXPECT_EQ(bar().status, u"1 of 2");
  FindStep(1);
  EXPECT_EQ(pane(0).currentPage, 2);
  EXPECT_EQ(pane(1).currentPage, 3);
  EXPECT_EQ(bar().status, u"2 of 2");
  ASSERT_EQ(pane(0).backHistory.size(), 1u);
  EXPECT_EQ(pane(0).backHistory[0].page, 1);
  EXPECT_TRUE(pane(1).backHistory.empty());
  FindStep(-1);  // to the hit now on the left
  EXPECT_EQ(pane(0).currentPage, 2);
  EXPECT_EQ(pane(0).backHistory.size(), 1u);
  EXPECT_EQ(bar().status, u"1 of 2");
}

TEST_F(FindTest, ABookKeepsItsFirstPageOnTheLeftForAHitThere) {
  ASSERT_TRUE(openLines({"x", "none", "none", "none"}));
  setViewMode(ViewMode::Book);
  goToPage(0, 2, false);
  setActivePane(1);
  type(u"x");
  FindStep(1);
  EXPECT_EQ(pane(0).currentPage, 0);
  EXPECT_EQ(pane(1).currentPage, 1);
  EXPECT_EQ(bar().status, u"1 of 1");
  FindStep(1);
  EXPECT_EQ(pane(0).currentPage, 0);
}

TEST_F(FindTest, ABookShowsAHitOnItsLastPageOnTheRight) {
  for (const int active : {0, 1}) {
    ASSERT_TRUE(openLines({"none", "none", "none", "none", "x"}));
    setViewMode(ViewMode::Book);
    setActivePane(active);
    type(u"x");
    FindStep(1);
    EXPECT_EQ(pane(0).currentPage, 3) << active;
    EXPECT_EQ(pane(1).currentPage, 4) << active;
    EXPECT_EQ(bar().status, u"1 of 1") << active;
    setViewMode(ViewMode::SinglePage);
  }
}

TEST_F(FindTest, ASinglePageNeverSearchesThePaneThatIsHidden) {
  ASSERT_TRUE(openLines({"x", "x"}));
  setViewMode(ViewMode::Book);
  setViewMode(ViewMode::SinglePage);
  ASSERT_TRUE(pane(1).page);
  type(u"x");
  EXPECT_EQ(hitPages(), Pages{0});
}

TEST_F(FindTest, TwoDocumentsSearchTheActiveOne) {
  setViewMode(ViewMode::TwoDocuments);
  ASSERT_TRUE(open(buildPdf({pageWith({"x"})}), 0, u"C:\\left.pdf"));
  ASSERT_TRUE(open(buildPdf({pageWith({"x x x"})}), 1, u"C:\\right.pdf"));
  setActivePane(1);
  type(u"x");
  EXPECT_EQ(find().results.size(), 3u);
  EXPECT_TRUE(findHitQuads(0).empty());
  EXPECT_EQ(findHitQuads(1).size(), 3u);
}

TEST_F(FindTest, TurningTheOtherDocumentLeavesTheHitsAlone) {
  setViewMode(ViewMode::TwoDocuments);
  ASSERT_TRUE(open(simplePdf(2), 0, u"C:\\left.pdf"));
  ASSERT_TRUE(open(buildPdf({pageWith({"x"}), pageWith({"x"})}), 1, u"C:\\right.pdf"));
  setActivePane(1);
  type(u"x");
  FindInDocument();
  ASSERT_EQ(find().currentIndex, 0);
  goToPage(0, 1, false);
  EXPECT_EQ(find().currentIndex, 0);
}

TEST_F(FindTest, ABlankInFrontOfAWholeWordEnds) {
  ASSERT_TRUE(openLines({"the ab a b"}));
  find().wholeWord = true;
  for (const char16_t* text : {u" a", u"  a", u" a b", u" "}) type(text);
  type(u" a");
  EXPECT_EQ(find().results.size(), 1u);
}

TEST_F(FindTest, APathThatComesDuringTheMessageWaits) {
  ASSERT_TRUE(open(buildPdf({pageOfHits(1000)})));
  const std::u16string other = putPdf(u"other.pdf", simplePdf(1));
  platform::standIn().boxAnswers = {platform::BoxAnswer::Ok};
  const FPDF_DOCUMENT before = documentOf(0);
  FPDF_DOCUMENT during = nullptr;
  platform::standIn().onBox = [&](const platform::ShownBox&) {
    openHandedOver(other);
    during = documentOf(0);
  };
  type(u"q");
  FindInDocument();
  EXPECT_EQ(during, before);
  EXPECT_EQ(documentOf(0), before);
  deliverPosted();
  EXPECT_EQ(pathOf(0), other);
}

TEST_F(FindTest, ChangingTheActiveDocumentEndsTheSearchAndKeepsTheText) {
  setViewMode(ViewMode::TwoDocuments);
  ASSERT_TRUE(open(buildPdf({pageWith({"x"})}), 0, u"C:\\left.pdf"));
  ASSERT_TRUE(open(buildPdf({pageWith({"x x x"})}), 1, u"C:\\right.pdf"));
  type(u"x");
  setActivePane(1);
  EXPECT_TRUE(find().results.empty());
  EXPECT_EQ(bar().field, u"x");
}

TEST_F(FindTest, APageWithoutTextHasNoHits) {
  ASSERT_TRUE(open(buildPdf({PdfPage{}, pageWith({"x"})})));
  for (const bool regex : {false, true}) {
    chooseFindMode(regex);
    type(u"x");
    FindInDocument();
    EXPECT_EQ(hitPages(), Pages{1});
  }
}

// Three pages: text on the first and the last, and one in the middle that is none.
std::string pdfWithABrokenPage() {
  PdfFile file;
  const int catalog = file.reserve();
  const int pages = file.reserve();
  const int content = file.addStream(textContent("x marks"));
  const std::string page =
      "<< /Type /Page /MediaBox [0 0 612 792] /Parent " + PdfFile::reference(pages) +
      " /Contents " + PdfFile::reference(content) +
      " /Resources << /Font << /F1 << /Type /Font /Subtype /Type1 /BaseFont /Helvetica >> >> >> >>";
  const int first = file.add(page);
  const int broken = file.add("(no page)");
  const int last = file.add(page);
  file.set(pages, "<< /Type /Pages /Count 3 /Kids [" + PdfFile::reference(first) + " " +
                      PdfFile::reference(broken) + " " + PdfFile::reference(last) + "] >>");
  file.set(catalog, "<< /Type /Catalog /Pages " + PdfFile::reference(pages) + " >>");
  return file.finish(catalog);
}

TEST_F(FindTest, APageThatCannotBeLoadedIsPassedOver) {
  ASSERT_TRUE(open(pdfWithABrokenPage()));
  ASSERT_EQ(pageCountOf(0), 3);
  for (const bool regex : {false, true}) {
    goToPage(0, 0, false);
    chooseFindMode(regex);
    type(u"x");
    FindInDocument();
    EXPECT_EQ(hitPages(), (Pages{0, 2}));
    EXPECT_EQ(bar().status, u"1 of 2");
    EXPECT_TRUE(platform::standIn().boxes.empty());
    FindStep(1);
    EXPECT_EQ(pane(0).currentPage, 2);
  }
}

TEST_F(FindTest, ThePageThatCannotBeLoadedMayBeTheOneShown) {
  ASSERT_TRUE(open(pdfWithABrokenPage()));
  goToPage(0, 1, false);
  ASSERT_FALSE(pane(0).page);
  for (const bool regex : {false, true}) {
    chooseFindMode(regex);
    type(u"x");
    FindInVisiblePages();
    EXPECT_EQ(bar().status, u"0 on page");
  }
  FindStep(1);
  EXPECT_EQ(bar().status, u"1 of 2");
  EXPECT_EQ(pane(0).currentPage, 0);
}

TEST_F(FindTest, WithoutATextPageThereAreNoHits) {
  FindPattern pattern;
  ASSERT_TRUE(FindCompilePattern(u"x", pattern));
  std::vector<FindResult> results;
  EXPECT_FALSE(FindRegexPage(nullptr, 0, pattern, 1, results));
  EXPECT_TRUE(results.empty());
  EXPECT_FALSE(find().badPattern);
}

TEST_F(FindTest, ADocumentWithoutPagesHasNoHits) {
  openInActive(zeroPagePdf());
  for (const bool regex : {false, true}) {
    chooseFindMode(regex);
    type(u"x");
    FindStep(1);
    EXPECT_EQ(bar().status, u"No results");
    FindStep(-1);
  }
}

TEST_F(FindTest, FiftyThousandPiecesOfTextAreOnePage) {
  PdfPage page;
  page.height = 5000;
  page.content = "BT /F1 4 Tf 6 TL 20 4900 Td\n";
  for (int line = 0; line < 500; ++line) {
    for (int i = 0; i < 99; ++i) page.content += "(ab) Tj 5.5 0 Td\n";
    page.content += "(q) Tj -544.5 -6 Td\n";
  }
  page.content += "ET\n";
  ASSERT_TRUE(open(buildPdf({page})));
  for (const bool regex : {false, true}) {
    chooseFindMode(regex);
    type(u"q");
    FindInDocument();
    EXPECT_EQ(bar().status, u"1 of 500");
    for (int i = 0; i < 3; ++i) FindStep(1);
    EXPECT_EQ(bar().status, u"4 of 500");
    EXPECT_FALSE(findHitQuads(0).empty());
  }
}

TEST_F(FindTest, TheTimeForAPatternIsThatOfTheWholeDocument) {
  for (const auto& [pages, status] :
       {std::pair(90, u"No results"), std::pair(110, u"Bad pattern")}) {
    ASSERT_TRUE(open(manyPagesPdf(pages)));
    chooseFindMode(true);
    type(u"absent");
    platform::standIn().clockStep = 100;
    FindInDocument();
    platform::standIn().clockStep = 0;
    EXPECT_EQ(bar().status, status) << pages;
  }
}

TEST_F(FindTest, HitsFoundBeforeTheTimeWasUpStand) {
  std::vector<std::string> lines(110, "nothing");
  lines[3] = "needle";
  lines[109] = "needle";
  ASSERT_TRUE(openLines(lines));
  chooseFindMode(true);
  type(u"needle");
  platform::standIn().clockStep = 100;
  FindInDocument();
  EXPECT_EQ(bar().status, u"Bad pattern");
  EXPECT_EQ(hitPages(), Pages{3});
  EXPECT_EQ(pane(0).currentPage, 3);
  platform::standIn().clockStep = 0;
  FindInDocument();
  EXPECT_EQ(bar().status, u"1 of 2");
}

TEST_F(FindTest, NothingFoundSaysSo) {
  ASSERT_TRUE(openLines({"abc"}));
  type(u"zzz");
  EXPECT_EQ(bar().status, u"0 on page");
  FindStep(1);
  EXPECT_EQ(bar().status, u"No results");
}

TEST_F(FindTest, AnEmptyFieldOrNoDocumentClears) {
  type(u"x");
  EXPECT_TRUE(find().query.empty());
  ASSERT_TRUE(openLines({"x"}));
  type(u"x");
  EXPECT_EQ(find().query, u"x");
  type(u"");
  EXPECT_TRUE(find().query.empty());
  EXPECT_EQ(bar().status, u"");
}

TEST_F(FindTest, ClosingForgetsTheHits) {
  ASSERT_TRUE(openLines({"x"}));
  type(u"x");
  ASSERT_TRUE(open(simplePdf(1)));
  EXPECT_TRUE(find().results.empty());
  EXPECT_TRUE(find().query.empty());
}

}  // namespace
}  // namespace quillmere::test
