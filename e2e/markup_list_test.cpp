#include "driver/tree_scenario.h"

#include "annot/markup_pdf.h"

namespace quillmere::e2e {
namespace {

using test::Box;
using test::pageDestination;
using ::testing::ElementsAre;

constexpr Size kPage{300, 400};
constexpr int kPages = 3;
constexpr std::uint32_t kStruck = rgb(255, 0, 0);

// A highlight over a page's first line and a strikethrough over its second; nothing on page 2.
std::string markedPdf(const std::vector<test::PdfOutlineItem>& outline) {
  std::vector<test::PdfPage> pages;
  for (int i = 0; i < kPages; ++i) {
    const std::string number = std::to_string(i + 1);
    pages.push_back(linedPage({"First" + number, "Second" + number}, kPage));
    if (i == 1) continue;
    const double first = kPage.height - kFirstBaseline;
    const double second = first - kLineStep;
    const double right = kLineLeft + 8 * kCourierAdvance;
    pages.back().annotations = {
        test::markup("StrikeOut", {Box{kLineLeft, second - 4, right, second + 16}}, "/C [1 0 0]"),
        test::markup("Highlight", {Box{kLineLeft, first - 4, right, first + 16}},
                     test::note(u"remember"))};
  }
  test::PdfOptions options;
  options.outline = outline;
  return test::buildPdf(pages, options);
}

class MarkupList : public TreeScenario {
 protected:
  // Waits for the summary's viewer, which would otherwise open in the middle of another scenario.
  static bool viewerShows(const std::wstring& name) {
    return eventually([&] {
      const std::vector<HWND> viewers = windowsOfClass(kViewerClass);
      return !viewers.empty() && titleOf(viewers.front()).ends_with(name);
    });
  }
};

TEST_F(MarkupList, TheGroupIsFilledWhenItIsExpandedAndItsRowsLeadToTheirPages) {
  startGrouped(false, markedPdf({{u"Chapter", pageDestination(2), {}}}));
  EXPECT_THAT(rows(), ElementsAre(L"0|Bookmarks", L"1|Chapter", L"0|Markups"));
  clickButtonOf(L"Markups");
  ASSERT_TRUE(rowShown(L"Second3"));
  EXPECT_THAT(rows(),
              ElementsAre(L"0|Bookmarks", L"1|Chapter", L"0|Markups", L"1|First1 - remember",
                          L"1|Second1", L"1|First3 - remember", L"1|Second3"));
  picture("expanded");
  clickRow(L"Second3");
  EXPECT_TRUE(pageTextBecomes(L"Page 3 of 3"));
  EXPECT_TRUE(rowSelected(L"Second3"));
  clickRow(L"Second1");
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 3"));
  press(VK_TAB);
  ASSERT_TRUE(eventually([&] { return focusOf(window) == window; }));
  press(VK_BACK);
  EXPECT_TRUE(pageTextBecomes(L"Page 3 of 3"));
}

TEST_F(MarkupList, ADocumentWithoutMarkupsSaysSo) {
  startGrouped(false, coloredPdf(2));
  clickButtonOf(L"Markups");
  ASSERT_TRUE(rowShown(L"(no markups)"));
  clickRow(L"(no markups)");
  EXPECT_TRUE(rowSelected(L"(no markups)"));
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 2"));
}

TEST_F(MarkupList, TheGroupingPutsMarkupsUnderBookmarksAndBack) {
  startGrouped(
      true,
      markedPdf({{u"Chapter", pageDestination(2), {{u"Section", pageDestination(3), {}}}, false}}));
  ASSERT_TRUE(rowShown(L"Second3"));
  EXPECT_THAT(rows(), ElementsAre(L"0|First1 - remember", L"0|Second1", L"0|Chapter", L"1|Section",
                                  L"2|First3 - remember", L"2|Second3"));
  picture("grouped");
  clickRow(L"First3 - remember");
  EXPECT_TRUE(pageTextBecomes(L"Page 3 of 3"));
  runCommand(window, 214);
  EXPECT_TRUE(eventually([&] { return !menuItem(window, 214).checked; }));
  ASSERT_TRUE(rowShown(L"Markups"));
  clickButtonOf(L"Markups");
  EXPECT_TRUE(rowShown(L"First3 - remember"));
}

TEST_F(MarkupList, ARowOutOfSightOnThePageComesIntoSight) {
  startGrouped(true, markedPdf({}));
  ASSERT_TRUE(rowShown(L"Markups"));
  EXPECT_THAT(rows(), ElementsAre(L"0|Markups", L"1|First1 - remember", L"1|Second1",
                                  L"1|First3 - remember", L"1|Second3"));
  runCommand(window, 206);
  for (int i = 0; i < 9; ++i) runCommand(window, 202);
  ASSERT_TRUE(zoomTextBecomes(L"Zoom: 444%"));
  const POINT middle = middleOf(pageArea());
  for (int i = 0; i < 40; ++i) turnWheel(middle, -120);
  ASSERT_TRUE(eventually([&] { return client().count(pageArea(), kStruck) == 0; }));
  clickRow(L"Second1");
  EXPECT_TRUE(eventually([&] { return client().count(pageArea(), kStruck) > 0; }));
  picture("in sight");
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 3"));
}

TEST_F(MarkupList, TheSummaryIsSavedThroughTheDialogAndOpensInAViewer) {
  startWith(markedPdf({}));
  runCommand(window, 731);
  const HWND dialog = waitForFileDialog(program);
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(titleOf(dialog), L"Save Markup Summary");
  picture("dialog");
  ASSERT_TRUE(bringToFront(dialog));
  press(VK_RETURN);
  const std::wstring path = scenarioFolder() + L"\\one - Markup Summary.pdf";
  EXPECT_TRUE(eventually([&] { return exists(path); }));
  EXPECT_TRUE(viewerShows(L"one - Markup Summary.pdf"));
  EXPECT_EQ(readFile(path).substr(0, 5), "%PDF-");
  EXPECT_EQ(boxNow(program).window, nullptr);
  picture("viewer");
}

TEST_F(MarkupList, ADocumentWithoutMarkupsMakesNoSummary) {
  startWith(coloredPdf(2));
  runCommand(window, 731);
  EXPECT_TRUE(boxSays(L"This document has no highlights or strikethroughs to summarize."));
}

TEST_F(MarkupList, ASummaryGoesWhereThePersonWantsIt) {
  startWith(markedPdf({}));
  const std::string before = readFile(scenarioFolder() + L"\\one.pdf");
  runCommand(window, 731);
  const HWND dialog = waitForFileDialog(program);
  ASSERT_NE(dialog, nullptr);
  ASSERT_TRUE(bringToFront(dialog));
  press(VK_HOME);
  press(VK_END, kShift);
  ASSERT_TRUE(chooseInFileDialog(dialog, scenarioFolder() + L"\\other"));
  EXPECT_TRUE(eventually([&] { return exists(scenarioFolder() + L"\\other.pdf"); }));
  EXPECT_TRUE(viewerShows(L"other.pdf"));
  EXPECT_EQ(readFile(scenarioFolder() + L"\\one.pdf"), before);
}

}  // namespace
}  // namespace quillmere::e2e
