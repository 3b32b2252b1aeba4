#include "driver/clipboard.h"
#include "driver/scenario.h"

namespace quillmere::e2e {
namespace {

constexpr Size kPage{612, 792};
constexpr double kBaseline = 200;  // points from the top
constexpr double kTextLeft = 72;   // points

class Selection : public Scenario {
 protected:
  void startWithText(const std::string& text) {
    startWith(markedPdf(2, kPage.width, kPage.height, text, kBaseline));
    press('A');
    page = placedPage(pageArea(), kPage, 1);
    ASSERT_TRUE(pageBecomes(pageArea(), clipped(page, pageArea())));
    ASSERT_TRUE(clearClipboard());
  }
  // The middle of a character of the line, counted from 0, so many pixels above the baseline.
  POINT character(int index, int above = 6) const {
    const double x = kTextLeft + (index + 0.5) * kCourierAdvance;
    return onScreen(page.left + static_cast<int>(x),
                    page.top + static_cast<int>(kBaseline) - above);
  }
  static ::testing::AssertionResult copies(const std::wstring& wanted) {
    press('C', kCtrl);
    const std::wstring seen = settled(clipboardText, wanted);
    if (seen == wanted) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "copied " << ::testing::PrintToString(seen);
  }
  // White paper under the system's highlight colour at an opacity of 130 of 255.
  static std::uint32_t selectedPaper() {
    const COLORREF highlight = GetSysColor(COLOR_HIGHLIGHT);
    return mixed(rgb(GetRValue(highlight), GetGValue(highlight), GetBValue(highlight)), 130,
                 kPaper);
  }
  // Client pixels of the page that look selected.
  int selectedPixels() const {
    return client().countAlike({page.left, page.top, page.right, pageArea().bottom},
                               selectedPaper());
  }

  RECT page{};
};

TEST_F(Selection, ADragSelectsFromCharacterToCharacter) {
  startWithText("Quill and page");
  drag(character(2), character(8));
  EXPECT_TRUE(copies(L"ill and"));
  EXPECT_TRUE(eventually([&] { return selectedPixels() > 200; }));
}

TEST_F(Selection, ADragBackwardsSelectsTheSame) {
  startWithText("Quill and page");
  drag(character(8), character(2));
  EXPECT_TRUE(copies(L"ill and"));
}

TEST_F(Selection, ADoubleClickSelectsTheWord) {
  startWithText("the reader's-own word");
  doubleClick(character(6));
  ASSERT_TRUE(copies(L"reader's-own"));
  click(character(0));
  ASSERT_TRUE(clearClipboard());
  // The apostrophe belongs to the word.
  doubleClick(character(10, 12));
  EXPECT_TRUE(copies(L"reader's-own"));
}

TEST_F(Selection, ADoubleClickBetweenWordsSelectsNothing) {
  startWithText("one two");
  doubleClick(character(1));
  ASSERT_TRUE(copies(L"one"));
  ASSERT_TRUE(clearClipboard());
  // The first press of the double click ends the selection.
  doubleClick(character(3));
  EXPECT_TRUE(eventually([&] { return selectedPixels() == 0; }));
  press('C', kCtrl);
  ASSERT_TRUE(inputIsHandled(window));
  EXPECT_EQ(clipboardText(), L"");
}

TEST_F(Selection, SelectAllTakesThePage) {
  startWithText("Quill and page");
  press('A', kCtrl);
  EXPECT_TRUE(copies(L"Quill and page"));
}

TEST_F(Selection, AClickSelectsNothingAndEndsASelection) {
  startWithText("Quill and page");
  press('A', kCtrl);
  ASSERT_TRUE(eventually([&] { return selectedPixels() > 200; }));
  click(character(3));
  EXPECT_TRUE(eventually([&] { return selectedPixels() == 0; }));
  press('C', kCtrl);
  press(VK_NEXT);
  ASSERT_TRUE(pageTextBecomes(L"Page 2 of 2"));
  EXPECT_EQ(clipboardText(), L"");
}

TEST_F(Selection, APageTurnEndsTheSelection) {
  startWithText("Quill and page");
  press('A', kCtrl);
  ASSERT_TRUE(eventually([&] { return selectedPixels() > 200; }));
  press(VK_NEXT);
  ASSERT_TRUE(pageTextBecomes(L"Page 2 of 2"));
  EXPECT_TRUE(eventually([&] { return selectedPixels() == 0; }));
  EXPECT_TRUE(menuItem(window, 702).grayed);
}

TEST_F(Selection, ASelectionFollowsTheTurnedPage) {
  startWithText("Quill and page");
  press('A', kCtrl);
  ASSERT_TRUE(eventually([&] { return selectedPixels() > 200; }));
  press('F');
  press('R');
  const Size turned{kPage.height, kPage.width};
  page = fitPage(pageArea(), turned);
  ASSERT_TRUE(pageBecomes(pageArea(), page));
  const float zoom = fitPageZoom(pageArea(), turned);
  // The line runs down; its baseline is 200 points from the right edge.
  const int x = page.right - static_cast<int>(zoom * (kBaseline - 3));
  const int y = page.top + static_cast<int>(zoom * (kTextLeft + 5.5 * kCourierAdvance));
  EXPECT_TRUE(eventually([&] { return alike(client().at(x, y), selectedPaper()); }));
  EXPECT_TRUE(copies(L"Quill and page"));
}

}  // namespace
}  // namespace quillmere::e2e
