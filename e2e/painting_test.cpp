#include "driver/scenario.h"

#include <commctrl.h>

#include "support/pdf_builder.h"

namespace quillmere::e2e {
namespace {

constexpr Size kSmall{300, 400};
constexpr Size kLetter{612, 792};
constexpr std::uint32_t kRed = rgb(255, 0, 0);

class Painting : public Scenario {};

TEST_F(Painting, AFittedPageLiesInTheMiddleWithAShadowAtRightAndBottomOnly) {
  startWith(markedPdf(1, kLetter.width, kLetter.height));
  const RECT area = pageArea();
  const RECT page = fitPage(area, kLetter);
  ASSERT_TRUE(pageBecomes(area, page));
  EXPECT_TRUE(zoomTextBecomes(percent(fitPageZoom(area, kLetter))));
  const Picture shown = client();
  const int shadow = dip(4);
  EXPECT_TRUE(shown.isFilledWith({page.left, (page.top + page.bottom) / 2, page.right, page.bottom},
                                 kPaper));
  EXPECT_EQ(shown.at(page.left + 5, page.top + 5), kRed);
  EXPECT_TRUE(shown.isFilledWith(
      {page.right, page.top + shadow, page.right + shadow, page.bottom + shadow}, kShadow));
  EXPECT_TRUE(shown.isFilledWith(
      {page.left + shadow, page.bottom, page.right, page.bottom + shadow}, kShadow));
  EXPECT_TRUE(shown.isFilledWith({area.left, area.top, page.left, area.bottom}, kBackground));
  EXPECT_TRUE(shown.isFilledWith({area.left, area.top, area.right, page.top}, kBackground));
  EXPECT_TRUE(
      shown.isFilledWith({page.right, area.top, area.right, page.top + shadow}, kBackground));
  EXPECT_TRUE(
      shown.isFilledWith({page.right + shadow, area.top, area.right, area.bottom}, kBackground));
  EXPECT_TRUE(
      shown.isFilledWith({area.left, page.bottom, page.left + shadow, area.bottom}, kBackground));
  EXPECT_TRUE(
      shown.isFilledWith({area.left, page.bottom + shadow, area.right, area.bottom}, kBackground));
}

TEST_F(Painting, FilledInFormFieldsAreSeenAndHiddenOnesAreNot) {
  startWith(test::filledFormPdf());
  const RECT area = pageArea();
  const RECT page = fitPage(area, kSmall);
  const float zoom = fitPageZoom(area, kSmall);
  ASSERT_TRUE(pageBecomes(area, page));
  const POINT green = placeOnPage(page, zoom, kSmall, 100, 325);
  EXPECT_TRUE(pixelBecomes(green.x, green.y, rgb(0, 255, 0)));
  const POINT valueEnd = placeOnPage(page, zoom, kSmall, 150, 200);
  const POINT valueStart = placeOnPage(page, zoom, kSmall, 50, 220);
  const RECT value{valueStart.x, valueStart.y, valueEnd.x, valueEnd.y};
  const Picture shown = client();
  EXPECT_LT(shown.countAlike(value, kPaper),
            (value.right - value.left) * (value.bottom - value.top) - 40);
  EXPECT_EQ(shown.countAlike(page, kRed), 0);
}

// Only the pages are repainted after a turn.
TEST_F(Painting, TurningPagesLeavesNothingOfThePageBefore) {
  std::vector<test::PdfPage> pages;
  for (const Size size : {Size{300, 400}, Size{600, 200}, Size{200, 500}, Size{200, 500}}) {
    pages.push_back(coloredPage(static_cast<int>(pages.size()), size));
  }
  startWith(test::buildPdf(pages));
  const auto pagesNow = [&] {
    const RECT area = pageArea();
    const POINT corner = onScreen(area.left, area.top);
    return capture(
        {corner.x, corner.y, corner.x + area.right - area.left, corner.y + area.bottom - area.top});
  };
  const auto matchesWholeRepaint = [&](int page) {
    const RECT area = pageArea();
    ASSERT_TRUE(
        pixelBecomes((area.left + area.right) / 2, (area.top + area.bottom) / 2, pageColor(page)));
    const Picture turned = pagesNow();
    InvalidateRect(window, nullptr, FALSE);
    ASSERT_TRUE(eventually([&] { return !GetUpdateRect(window, nullptr, FALSE); }));
    EXPECT_TRUE(pagesNow() == turned) << "page " << page;
  };
  matchesWholeRepaint(0);
  for (const int page : {1, 2, 3}) {
    press(VK_NEXT);
    matchesWholeRepaint(page);
  }
  for (const int page : {2, 1, 0}) {
    press(VK_PRIOR);
    matchesWholeRepaint(page);
  }
  press('A');
  press(VK_END);
  matchesWholeRepaint(3);
}

TEST_F(Painting, TheStatusBarsPartsFollowTheWindowsWidth) {
  start();
  for (const bool opened : {false, true}) {
    if (opened) {
      dropFiles(window, {dip(400), dip(100)}, {makeFile(L"one.pdf", coloredPdf(1))});
      ASSERT_TRUE(pageTextBecomes(L"Page 1 of 1"));
    }
    for (const int width : {dip(800), dip(500), dip(1000)}) {
      SetWindowPos(window, nullptr, 0, 0, width, dip(600), SWP_NOMOVE | SWP_NOZORDER);
      const RECT client = clientOnScreen(window);
      const int pageEdge = std::max<int>(dip(318), client.right - client.left - dip(220));
      const std::vector<int> wanted{dip(88), dip(238), pageEdge, -1};
      EXPECT_EQ(settled([&] { return statusParts(window); }, wanted), wanted) << width;
    }
  }
}

TEST_F(Painting, ThePanelSplittersHaveTheirColour) {
  start();
  const RECT area = pageArea();
  EXPECT_TRUE(pixelBecomes(area.left - dip(3), area.top + 10, kSplitter));
  const Picture shown = client();
  EXPECT_TRUE(
      shown.isFilledWith({area.left - dip(3), area.top, area.left, area.bottom}, kSplitter));
  const RECT bar = windowRect(childOf(window, 423));
  POINT belowBar{bar.left, bar.top};
  ScreenToClient(window, &belowBar);
  EXPECT_TRUE(shown.isFilledWith({0, belowBar.y - dip(3), area.left, belowBar.y}, kSplitter));
}

TEST_F(Painting, TheActivePaneHasAFrameAndADividerStandsBetween) {
  startWith(coloredPdf(2));
  press(VK_F6);
  ASSERT_TRUE(pageTextBecomes(L"L:1  R:2  of 2"));
  const RECT left = leftPane();
  const RECT right = rightPane();
  ASSERT_TRUE(pixelBecomes(left.left + dip(1), left.top + dip(1), kFrame));
  const Picture shown = client();
  EXPECT_TRUE(shown.isFilledWith({left.right, left.top, right.left, left.bottom}, kDivider));
  const auto expectFrame = [&](RECT pane, std::uint32_t color) {
    const RECT outer{pane.left + dip(1), pane.top + dip(1), pane.right - dip(1),
                     pane.bottom - dip(1)};
    const RECT inner{outer.left + dip(3), outer.top + dip(3), outer.right - dip(3),
                     outer.bottom - dip(3)};
    EXPECT_TRUE(shown.isFilledWith({outer.left, outer.top, outer.right, inner.top}, color));
    EXPECT_TRUE(shown.isFilledWith({outer.left, inner.bottom, outer.right, outer.bottom}, color));
    EXPECT_TRUE(shown.isFilledWith({outer.left, outer.top, inner.left, outer.bottom}, color));
    EXPECT_TRUE(shown.isFilledWith({inner.right, outer.top, outer.right, outer.bottom}, color));
  };
  expectFrame(left, kFrame);
  expectFrame(right, kBackground);
  EXPECT_EQ(shown.at(left.left, left.top), kBackground);
  EXPECT_EQ(shown.at(left.left + dip(1) + dip(3), left.top + dip(1) + dip(3)), kBackground);
}

TEST_F(Painting, ResizingFitsThePageAnew) {
  startWith(markedPdf(1, kLetter.width, kLetter.height));
  const RECT before = windowRect(window);
  SetWindowPos(window, nullptr, 0, 0, 900, 500, SWP_NOMOVE | SWP_NOZORDER);
  const RECT area = pageArea();
  ASSERT_LT(area.right, before.right - before.left);
  EXPECT_TRUE(pageBecomes(area, fitPage(area, kLetter)));
  EXPECT_TRUE(zoomTextBecomes(percent(fitPageZoom(area, kLetter))));
}

TEST_F(Painting, AWindowThatWasCoveredShowsThePageAgain) {
  startWith(markedPdf(1, kLetter.width, kLetter.height));
  const RECT area = pageArea();
  const RECT page = fitPage(area, kLetter);
  ASSERT_TRUE(pageBecomes(area, page));
  ShowWindow(window, SW_MINIMIZE);
  ASSERT_TRUE(eventually([&] { return IsIconic(window) != FALSE; }));
  ShowWindow(window, SW_RESTORE);
  EXPECT_TRUE(pageBecomes(area, page));
}

TEST_F(Painting, TheKeysOfTheZoomModesPlaceThePage) {
  startWith(markedPdf(1, kLetter.width, kLetter.height));
  const RECT area = pageArea();
  press('W');
  const float wide = fitWidthZoom(area, kLetter);
  EXPECT_TRUE(pageBecomes(area, clipped(placedPage(area, kLetter, wide), area)));
  EXPECT_TRUE(zoomTextBecomes(percent(wide)));
  EXPECT_TRUE(becomesChecked(205));
  press('A');
  EXPECT_TRUE(pageBecomes(area, clipped(placedPage(area, kLetter, 1), area)));
  EXPECT_TRUE(zoomTextBecomes(L"Zoom: 100%"));
  EXPECT_TRUE(becomesChecked(206));
  press('C');
  EXPECT_TRUE(becomesChecked(208));
  EXPECT_TRUE(zoomTextBecomes(L"Zoom: 100%"));
  press('F');
  EXPECT_TRUE(pageBecomes(area, fitPage(area, kLetter)));
  EXPECT_TRUE(becomesChecked(204));
}

TEST_F(Painting, ZoomStepsKeepTheMiddleOfThePageStill) {
  startWith(markedPdf(1, kSmall.width, kSmall.height));
  const RECT area = pageArea();
  press('A');
  const RECT before = placedPage(area, kSmall, 1);
  ASSERT_TRUE(pageBecomes(area, before));
  for (const WORD key : {static_cast<WORD>(VK_ADD), static_cast<WORD>(VK_OEM_PLUS)}) {
    press('A');
    ASSERT_TRUE(zoomTextBecomes(L"Zoom: 100%"));
    press(key);
    ASSERT_TRUE(zoomTextBecomes(L"Zoom: 118%"));
    ASSERT_TRUE(eventually([&] {
      const RECT page = pageOnScreen(client(), area);
      return page.right - page.left == 353 && page.bottom - page.top == 471;
    }));
    const RECT page = pageOnScreen(client(), area);
    EXPECT_NEAR((page.left + page.right) / 2, (before.left + before.right) / 2, 1);
    EXPECT_NEAR((page.top + page.bottom) / 2, (before.top + before.bottom) / 2, 1);
    EXPECT_TRUE(becomesChecked(208));
  }
  press(VK_SUBTRACT);
  EXPECT_TRUE(zoomTextBecomes(L"Zoom: 100%"));
  press(VK_OEM_MINUS);
  EXPECT_TRUE(zoomTextBecomes(L"Zoom: 85%"));
}

TEST_F(Painting, ZoomEndsAtItsLimits) {
  startWith(coloredPdf(1, 40, 40));
  press('A');
  for (int i = 0; i < 12; ++i) press(VK_ADD);
  EXPECT_TRUE(zoomTextBecomes(L"Zoom: 500%"));
  for (int i = 0; i < 24; ++i) press(VK_SUBTRACT);
  EXPECT_TRUE(zoomTextBecomes(L"Zoom: 20%"));
}

TEST_F(Painting, TheSliderZoomsByMouseAndFollowsTheZoom) {
  startWith(markedPdf(1, kSmall.width, kSmall.height));
  const HWND slider = childOf(window, 403);
  ASSERT_TRUE(eventually([&] { return IsWindowEnabled(slider) != FALSE; }));
  press('A');
  EXPECT_EQ(settled([&] { return SendMessageW(slider, TBM_GETPOS, 0, 0); }, 10), 10);
  const RECT rect = windowRect(slider);
  const POINT thumb{(rect.left + rect.right) / 2, rect.top + 8};
  drag(thumb, {rect.right + 20, thumb.y});
  EXPECT_TRUE(zoomTextBecomes(L"Zoom: 500%"));
  EXPECT_EQ(SendMessageW(slider, TBM_GETPOS, 0, 0), 19);
  // A click beside the thumb moves it ten steps; a held button would move it on towards the
  // pointer.
  const LONG width = rect.right - rect.left;
  click({rect.left + width * 3 / 4, thumb.y});
  EXPECT_TRUE(zoomTextBecomes(L"Zoom: 89%"));
  click({rect.left + width / 4, thumb.y});
  EXPECT_TRUE(zoomTextBecomes(L"Zoom: 20%"));
  // The page keeps the focus throughout.
  press('A');
  EXPECT_TRUE(zoomTextBecomes(L"Zoom: 100%"));
  EXPECT_EQ(focusOf(window), window);
}

}  // namespace
}  // namespace quillmere::e2e
