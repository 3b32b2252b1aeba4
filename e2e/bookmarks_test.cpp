#include "driver/tree_scenario.h"

namespace quillmere::e2e {
namespace {

constexpr Size kPage{300, 400};
constexpr int kPages = 6;

using test::pageDestination;
using ::testing::ElementsAre;

std::string outlinedPdf(const std::vector<test::PdfOutlineItem>& outline) {
  std::vector<test::PdfPage> pages;
  for (int i = 0; i < kPages; ++i) pages.push_back(coloredPage(i, kPage));
  test::PdfOptions options;
  options.outline = outline;
  return test::buildPdf(pages, options);
}

const std::vector<test::PdfOutlineItem> kOutline{
    {u"First", pageDestination(1), {}},
    {u"Third", pageDestination(3), {{u"Fourth", pageDestination(4), {}}}, false},
    {u"", pageDestination(5), {}},
    {u"Nowhere", "", {}},
};

class Bookmarks : public TreeScenario {};

TEST_F(Bookmarks, WithoutHeadingsTheOutlineIsTheTree) {
  startGrouped(true, outlinedPdf(kOutline));
  EXPECT_THAT(rows(), ElementsAre(L"0|First", L"0|Third", L"0|(untitled)", L"0|Nowhere"));
  clickButtonOf(L"Third");
  ASSERT_TRUE(rowShown(L"Fourth"));
  EXPECT_THAT(rows(),
              ElementsAre(L"0|First", L"0|Third", L"1|Fourth", L"0|(untitled)", L"0|Nowhere"));
  runCommand(window, 214);
  EXPECT_TRUE(eventually([&] { return !menuItem(window, 214).checked; }));
  ASSERT_TRUE(rowShown(L"First"));
  clickButtonOf(L"Third");
  ASSERT_TRUE(rowShown(L"Fourth"));
  EXPECT_THAT(rows(), ElementsAre(L"0|Bookmarks", L"1|First", L"1|Third", L"2|Fourth",
                                  L"1|(untitled)", L"1|Nowhere", L"0|Markups"));
  EXPECT_EQ(setting(L"Navigation", L"MarkupsUnderBookmarks"), L"0");
}

TEST_F(Bookmarks, WithHeadingsADocumentWithoutOutlineSaysSo) {
  startGrouped(false, coloredPdf(2));
  EXPECT_THAT(rows(), ElementsAre(L"0|Bookmarks", L"1|(no bookmarks)", L"0|Markups"));
  press(VK_NEXT);
  ASSERT_TRUE(pageTextBecomes(L"Page 2 of 2"));
  for (const wchar_t* row : {L"(no bookmarks)", L"Bookmarks", L"Markups"}) {
    clickRow(row);
    EXPECT_TRUE(rowSelected(row));
  }
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 2"));
  EXPECT_EQ(boxNow(program).window, nullptr);
  runCommand(window, 105);
  ASSERT_TRUE(titleBecomes(L"Quillmere"));
  EXPECT_THAT(rows(), ElementsAre());
}

TEST_F(Bookmarks, AClickedRowLeadsToItsPageAndBackComesBack) {
  startGrouped(false, outlinedPdf(kOutline));
  press(VK_END);
  ASSERT_TRUE(pageTextBecomes(L"Page 6 of 6"));
  clickRow(L"Third");
  EXPECT_TRUE(pageTextBecomes(L"Page 3 of 6"));
  // Expanding a row does not choose it.
  clickButtonOf(L"Third");
  clickRow(L"Fourth");
  EXPECT_TRUE(pageTextBecomes(L"Page 4 of 6"));
  clickRow(L"(untitled)");
  EXPECT_TRUE(pageTextBecomes(L"Page 5 of 6"));
  clickRow(L"Nowhere");
  EXPECT_TRUE(rowSelected(L"Nowhere"));
  EXPECT_TRUE(pageTextBecomes(L"Page 5 of 6"));
  press(VK_TAB);
  ASSERT_TRUE(eventually([&] { return focusOf(window) == window; }));
  for (const wchar_t* page : {L"Page 4 of 6", L"Page 3 of 6", L"Page 6 of 6"}) {
    press(VK_BACK);
    EXPECT_TRUE(pageTextBecomes(page));
  }
}

TEST_F(Bookmarks, AClickOnTheSelectedRowLeadsThereAgain) {
  startGrouped(true, outlinedPdf(kOutline));
  clickRow(L"Third");
  ASSERT_TRUE(pageTextBecomes(L"Page 3 of 6"));
  press(VK_TAB);
  press(VK_END);
  ASSERT_TRUE(pageTextBecomes(L"Page 6 of 6"));
  EXPECT_TRUE(rowSelected(L"Third"));
  clickRow(L"Third");
  EXPECT_TRUE(pageTextBecomes(L"Page 3 of 6"));
  // Its page is shown already, so this adds no step to the history.
  clickRow(L"Third");
  press(VK_TAB);
  press(VK_BACK);
  EXPECT_TRUE(pageTextBecomes(L"Page 6 of 6"));
}

TEST_F(Bookmarks, OpeningARowsChildrenLeadsNowhere) {
  startGrouped(true, outlinedPdf(kOutline));
  press(VK_END);
  ASSERT_TRUE(pageTextBecomes(L"Page 6 of 6"));
  clickButtonOf(L"Third");
  EXPECT_TRUE(rowShown(L"Fourth"));
  EXPECT_TRUE(pageTextBecomes(L"Page 6 of 6"));
}

TEST_F(Bookmarks, KeysChooseRows) {
  startGrouped(true, outlinedPdf(kOutline));
  press(VK_END);
  ASSERT_TRUE(pageTextBecomes(L"Page 6 of 6"));
  press('N');
  ASSERT_TRUE(eventually([&] { return focusOf(window) == tree(); }));
  press(VK_DOWN);
  EXPECT_TRUE(pageTextBecomes(L"Page 3 of 6"));
  press(VK_DOWN);
  EXPECT_TRUE(pageTextBecomes(L"Page 5 of 6"));
  press(VK_HOME);
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 6"));
}

TEST_F(Bookmarks, WhatFocusOrTheProgramSelectsLeadsNowhere) {
  startGrouped(true, outlinedPdf(kOutline));
  press(VK_END);
  ASSERT_TRUE(pageTextBecomes(L"Page 6 of 6"));
  press('N');
  ASSERT_TRUE(eventually([&] { return focusOf(window) == tree(); }));
  EXPECT_TRUE(rowSelected(L"First"));
  SendMessageW(tree(), TVM_SELECTITEM, TVGN_CARET, reinterpret_cast<LPARAM>(itemAfterRoot(2)));
  EXPECT_TRUE(rowSelected(L"(untitled)"));
  EXPECT_TRUE(pageTextBecomes(L"Page 6 of 6"));
  press(VK_TAB);
  press(VK_PRIOR);
  EXPECT_TRUE(pageTextBecomes(L"Page 5 of 6"));
}

TEST_F(Bookmarks, ATargetOnThePageComesToStandBelowThePanesTop) {
  struct Target {
    std::u16string title;
    std::string entries;
    int page;
    double y;  // points from the page's bottom edge
  };
  const std::vector<Target> targets{
      {u"Place", pageDestination(2, 250), 1, 250},
      {u"Width", "/Dest [{page 3} /FitH 180]", 2, 180},
      {u"Box width", "/Dest [{page 4} /FitBH 120]", 3, 120},
      {u"Rectangle", "/Dest [{page 5} /FitR 10 20 200 300]", 4, 300},
  };
  std::vector<test::PdfOutlineItem> outline;
  for (const Target& target : targets) outline.push_back({target.title, target.entries, {}});
  outline.push_back({u"Whole", pageDestination(6), {}});
  startGrouped(true, outlinedPdf(outline));
  press('W');
  const RECT area = pageArea();
  const float zoom = fitWidthZoom(area, kPage);
  const RECT unmoved = placedPage(area, kPage, zoom);
  const int distance = dip(24);
  ASSERT_TRUE(pageBecomes(area, clipped(unmoved, area)));
  for (const Target& target : targets) {
    clickRow({target.title.begin(), target.title.end()});
    RECT wanted = unmoved;
    const double above = (kPage.height - target.y) * static_cast<double>(zoom);
    OffsetRect(&wanted, 0, area.top + distance - static_cast<int>(above) - unmoved.top);
    const int column = (wanted.left + wanted.right) / 2;
    // The page's lower edge gives its exact position.
    EXPECT_TRUE(eventually([&] {
      const RECT page = pageOnScreen(client(), area);
      const bool inPlace = wanted.bottom >= area.bottom
                               ? page.bottom == area.bottom
                               : std::abs(page.bottom - wanted.bottom) <= 1;
      return inPlace && client().at(column, area.top + distance) == pageColor(target.page);
    })) << ::testing::PrintToString(pageOnScreen(client(), area))
        << ::testing::PrintToString(wanted);
  }
  clickRow(L"Whole");
  EXPECT_TRUE(pageTextBecomes(L"Page 6 of 6"));
  EXPECT_TRUE(pageBecomes(area, clipped(unmoved, area)));
}

TEST_F(Bookmarks, InTwoDocumentsTheTreeAndItsJumpsBelongToTheActivePane) {
  setSetting(L"Navigation", L"MarkupsUnderBookmarks", L"1");
  startWithTwo(outlinedPdf(kOutline), outlinedPdf({{u"Second", pageDestination(2), {}}}));
  EXPECT_TRUE(eventually([&] { return rows().size() == 4; }));
  press(VK_TAB);
  ASSERT_TRUE(paneIsActive(rightPane()));
  EXPECT_THAT(settled([&] { return rows(); }, std::vector<std::wstring>{L"0|Second"}),
              ElementsAre(L"0|Second"));
  clickRow(L"Second");
  EXPECT_TRUE(pageTextBecomes(L"L:1/6  R:2/6"));
}

TEST_F(Bookmarks, AnIndependentPaneJumpsAloneAndABookAsAWhole) {
  startGrouped(true, outlinedPdf(kOutline));
  press(VK_F7);
  press(VK_TAB);
  ASSERT_TRUE(paneIsActive(rightPane()));
  clickRow(L"Third");
  EXPECT_TRUE(pageTextBecomes(L"L:1  R:3  of 6"));
  press(VK_TAB);
  press(VK_F6);
  ASSERT_TRUE(becomesChecked(302));
  click(onScreen(rightPane().left + 10, rightPane().top + 10));
  ASSERT_TRUE(paneIsActive(rightPane()));
  clickRow(L"(untitled)");
  EXPECT_TRUE(pageTextBecomes(L"L:5  R:6  of 6"));
}

TEST_F(Bookmarks, APageOnTheRightOfABookNeedsNoTurn) {
  startGrouped(true, outlinedPdf({{u"Second", pageDestination(2, 100), {}}}));
  press(VK_F6);
  ASSERT_TRUE(pageTextBecomes(L"L:1  R:2  of 6"));
  clickRow(L"Second");
  const RECT right = rightPane();
  const float zoom = fitPageZoom(right, kPage);
  const LONG bottom = right.top + dip(24) + static_cast<LONG>(100 * zoom);
  EXPECT_TRUE(
      eventually([&] { return std::abs(pageOnScreen(client(), right).bottom - bottom) <= 1; }));
  const RECT left = leftPane();
  const RECT inside{left.left + dip(5), left.top + dip(5), left.right - dip(5),
                    left.bottom - dip(5)};
  EXPECT_TRUE(pageBecomes(inside, clipped(fitPage(left, kPage), inside)));
  press(VK_TAB);
  press(VK_BACK);
  ASSERT_TRUE(inputIsHandled(window));
  EXPECT_TRUE(pageTextBecomes(L"L:1  R:2  of 6"));
}

TEST_F(Bookmarks, AnotherFileIsNotOpened) {
  makeFile(L"other.pdf", coloredPdf(2));
  startGrouped(true, outlinedPdf({
                         {u"Elsewhere", "/A << /S /GoToR /F (other.pdf) /D [1 /Fit] >>", {}},
                         {u"Inside", "/A << /S /GoToE /D [1 /Fit] >>", {}},
                         {u"Program", "/A << /S /Launch /F (other.pdf) >>", {}},
                     }));
  press(VK_END);
  ASSERT_TRUE(pageTextBecomes(L"Page 6 of 6"));
  for (const wchar_t* row : {L"Elsewhere", L"Inside", L"Program"}) {
    clickRow(row);
    EXPECT_TRUE(rowSelected(row));
  }
  EXPECT_TRUE(pageTextBecomes(L"Page 6 of 6"));
  EXPECT_EQ(title(), L"Quillmere - one.pdf");
  EXPECT_EQ(boxNow(program).window, nullptr);
}

// A node of the page tree that lists its own ancestor twice: a search for a page that the tree does
// not hold could go round for ever.
TEST_F(Bookmarks, APageTreeThatLeadsBackHoldsNobodyUp) {
  test::PdfFile file;
  const auto reference = test::PdfFile::reference;
  const int catalog = file.reserve();
  const int tree = file.reserve();
  const int node = file.reserve();
  const auto addPage = [&](int parent) {
    return file.add("<< /Type /Page /MediaBox [0 0 300 400] /Parent " + reference(parent) + " >>");
  };
  const int first = addPage(tree);
  const int second = addPage(node);
  const int stray = addPage(tree);
  file.set(tree,
           "<< /Type /Pages /Count 3 /Kids [" + reference(first) + " " + reference(node) + "] >>");
  file.set(node, "<< /Type /Pages /Count 3 /Kids [" + reference(tree) + " " + reference(second) +
                     " " + reference(tree) + "] >>");
  const int stranger = file.add("<< /Title (Stray) /Dest [" + reference(stray) + " /Fit] >>");
  const int known = file.add("<< /Title (Known) /Dest [" + reference(first) + " /Fit] /Next " +
                             reference(stranger) + " >>");
  const int outline = file.add("<< /First " + reference(known) + " >>");
  file.set(catalog, "<< /Type /Catalog /Pages " + reference(tree) + " /Outlines " +
                        reference(outline) + " >>");
  startGrouped(true, file.finish(catalog));
  clickRow(L"Stray");
  EXPECT_TRUE(rowSelected(L"Stray"));
  ASSERT_TRUE(inputIsHandled(window));
  clickRow(L"Known");
  EXPECT_TRUE(rowSelected(L"Known"));
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 3"));
}

TEST_F(Bookmarks, SixtyLevelsAreExpandedAtOnceAndClosed) {
  constexpr int kLevels = 60;
  test::PdfOutlineItem chain{u"Deepest", pageDestination(1), {}};
  for (int level = kLevels - 1; level >= 1; --level) {
    chain = {u"Level", pageDestination(1 + level % kPages), {chain}, false};
  }
  startGrouped(true, outlinedPdf({chain}));
  press('N');
  ASSERT_TRUE(eventually([&] { return focusOf(window) == tree(); }));
  press(VK_HOME);
  ASSERT_TRUE(rowSelected(L"Level"));
  press(VK_MULTIPLY);
  EXPECT_TRUE(eventually([&] { return rows().size() == kLevels; }));
  EXPECT_EQ(rows().back(), std::to_wstring(kLevels - 1) + L"|Deepest");
  press('W', kCtrl);
  EXPECT_TRUE(titleBecomes(L"Quillmere"));
  EXPECT_TRUE(eventually([&] { return rows().empty(); }));
}

}  // namespace
}  // namespace quillmere::e2e
