#include <cstdlib>

#include "driver/scenario.h"

namespace quillmere::e2e {
namespace {

constexpr Size kPage{300, 400};
constexpr int kStepLength = 60;  // at 96 DPI, of an arrow key or a notch of the wheel

class Navigation : public Scenario {
 protected:
  // At Actual Size the small page is surrounded by background, so every move is visible.
  void startAtActualSize(int pages) {
    startWith(coloredPdf(pages));
    press('A');
    home = placedPage(pageArea(), kPage, 1);
    ASSERT_TRUE(pageBecomes(pageArea(), home));
  }
  ::testing::AssertionResult movedBy(int x, int y) const {
    RECT wanted = home;
    OffsetRect(&wanted, x, y);
    return pageBecomes(pageArea(), clipped(wanted, pageArea()));
  }
  int paneHeight() const { return pageArea().bottom - pageArea().top; }

  const int kStep = dip(kStepLength);
  RECT home{};
};

TEST_F(Navigation, TheKeysTurnPages) {
  startWith(coloredPdf(6));
  press(VK_NEXT);
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 6"));
  press(VK_NEXT, kCtrl);
  EXPECT_TRUE(pageTextBecomes(L"Page 3 of 6"));
  press(VK_PRIOR);
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 6"));
  press(VK_END);
  EXPECT_TRUE(pageTextBecomes(L"Page 6 of 6"));
  press(VK_NEXT);
  press(VK_HOME);
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 6"));
  press(VK_PRIOR);
  press(VK_NEXT);
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 6"));
  EXPECT_TRUE(pixelBecomes((pageArea().left + pageArea().right) / 2, 300, pageColor(1)));
}

TEST_F(Navigation, GoingBackLandsOnTheBottomOfThePageBefore) {
  startWith(markedPdf(3, kPage.width, kPage.height));
  press('W');
  const RECT area = pageArea();
  const RECT top = placedPage(area, kPage, fitWidthZoom(area, kPage));
  ASSERT_TRUE(pageBecomes(area, clipped(top, area)));
  press(VK_NEXT);
  ASSERT_TRUE(pageTextBecomes(L"Page 2 of 3"));
  EXPECT_TRUE(pageBecomes(area, clipped(top, area)));
  press(VK_PRIOR);
  ASSERT_TRUE(pageTextBecomes(L"Page 1 of 3"));
  RECT bottom = top;
  OffsetRect(&bottom, 0, area.bottom - dip(8) - bottom.bottom);
  EXPECT_TRUE(pageBecomes(area, clipped(bottom, area)));
  press(VK_HOME);
  press(VK_NEXT);
  press(VK_HOME);
  EXPECT_TRUE(pageBecomes(area, clipped(top, area)));
}

TEST_F(Navigation, ArrowsPanBySixtyPixels) {
  startAtActualSize(1);
  press(VK_RIGHT);
  EXPECT_TRUE(movedBy(-kStep, 0));
  press(VK_LEFT);
  press(VK_LEFT);
  EXPECT_TRUE(movedBy(kStep, 0));
  press(VK_UP);
  EXPECT_TRUE(movedBy(kStep, kStep));
  press(VK_DOWN);
  press(VK_DOWN);
  EXPECT_TRUE(movedBy(kStep, -kStep));
}

TEST_F(Navigation, PanningKeepsEightyPixelsInThePane) {
  startAtActualSize(1);
  for (int i = 0; i < 20; ++i) press(VK_UP);
  EXPECT_TRUE(movedBy(0, paneHeight() - dip(80) - home.top));
  for (int i = 0; i < 30; ++i) press(VK_RIGHT);
  const RECT area = pageArea();
  EXPECT_TRUE(
      pageBecomes(area, {area.left, area.bottom - dip(80), area.left + dip(80), area.bottom}));
}

TEST_F(Navigation, PanScrollTurnsThePageThatWasPannedPast) {
  startAtActualSize(3);
  // The page's bottom edge must rise into the top fifth of the pane.
  const int needed = home.bottom - static_cast<int>(paneHeight() * 0.2);
  const int steps = (needed + kStep - 1) / kStep;
  for (int i = 0; i < steps; ++i) press(VK_DOWN);
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 3"));
  EXPECT_TRUE(zoomTextBecomes(L"Zoom: 100%"));
  // The new page enters from below.
  EXPECT_TRUE(movedBy(0, static_cast<int>(paneHeight() * 0.75f) - home.top));
  press(VK_UP);
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 3"));
}

TEST_F(Navigation, WithoutPanScrollPanningNeverTurns) {
  startAtActualSize(3);
  press('N', kCtrl);
  ASSERT_TRUE(eventually([&] { return !menuItem(window, 209).checked; }));
  for (int i = 0; i < 15; ++i) press(VK_DOWN);
  EXPECT_TRUE(movedBy(0, -(home.bottom - dip(80))));
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 3"));
}

TEST_F(Navigation, TheWheelDoesWhatEachModifierStandsFor) {
  startAtActualSize(3);
  const POINT place = middleOf(pageArea());
  turnWheel(place, WHEEL_DELTA);
  EXPECT_TRUE(movedBy(0, kStep));
  turnWheel(place, -2 * WHEEL_DELTA);
  EXPECT_TRUE(movedBy(0, -kStep));
  turnWheel(place, WHEEL_DELTA, kCtrl | kShift);
  EXPECT_TRUE(movedBy(kStep, -kStep));
  turnWheel(place, -WHEEL_DELTA, kShift);
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 3"));
  turnWheel(place, WHEEL_DELTA, kShift);
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 3"));
  turnWheel(place, WHEEL_DELTA, kCtrl);
  EXPECT_TRUE(zoomTextBecomes(L"Zoom: 118%"));
  turnWheel(place, -WHEEL_DELTA, kCtrl);
  EXPECT_TRUE(zoomTextBecomes(L"Zoom: 100%"));
}

TEST_F(Navigation, AHighResolutionWheelScrollsByItsShareAndTurnsByFullNotches) {
  startAtActualSize(3);
  const POINT place = middleOf(pageArea());
  turnWheel(place, 40);
  EXPECT_TRUE(movedBy(0, kStep / 3));
  turnWheel(place, -60, kShift);
  turnWheel(place, 20);
  EXPECT_TRUE(movedBy(0, kStep / 2));
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 3"));
  turnWheel(place, -60, kShift);
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 3"));
}

TEST_F(Navigation, TheWheelZoomsAroundThePointer) {
  startAtActualSize(1);
  const POINT corner = onScreen(home.left, home.top);
  turnWheel(corner, WHEEL_DELTA, kCtrl);
  EXPECT_TRUE(zoomTextBecomes(L"Zoom: 118%"));
  EXPECT_TRUE(eventually([&] {
    const RECT page = pageOnScreen(client(), pageArea());
    return page.right - page.left > 350 && std::abs(page.left - home.left) <= 1 &&
           std::abs(page.top - home.top) <= 1;
  }));
}

TEST_F(Navigation, InABookTheWheelTurnsAndShiftScrolls) {
  startWith(coloredPdf(4));
  press(VK_F6);
  ASSERT_TRUE(pageTextBecomes(L"L:1  R:2  of 4"));
  turnWheel(middleOf(leftPane()), -WHEEL_DELTA);
  EXPECT_TRUE(pageTextBecomes(L"L:2  R:3  of 4"));
  const RECT right = rightPane();
  const RECT before = fitPage(right, kPage);
  ASSERT_TRUE(pageBecomes(right, before));
  turnWheel(middleOf(right), -WHEEL_DELTA, kShift);
  RECT scrolled = before;
  OffsetRect(&scrolled, 0, -kStep);
  EXPECT_TRUE(pageBecomes(right, scrolled));
  EXPECT_TRUE(pageTextBecomes(L"L:2  R:3  of 4"));
}

TEST_F(Navigation, TheMiddleButtonAndShiftWithTheLeftDragThePage) {
  startAtActualSize(1);
  const POINT middle = middleOf(home);
  drag(middle, {middle.x + 100, middle.y - 50}, Button::Middle);
  EXPECT_TRUE(movedBy(100, -50));
  drag({middle.x + 100, middle.y}, {middle.x - 40, middle.y + 90}, Button::Left, kShift);
  EXPECT_TRUE(movedBy(-40, 40));
}

TEST_F(Navigation, DraggingPastTheEndTurnsThePage) {
  startAtActualSize(3);
  const POINT low = onScreen((home.left + home.right) / 2, home.bottom - 5);
  const int needed = home.bottom - static_cast<int>(paneHeight() * 0.2) + 1;
  drag(low, {low.x, low.y - needed}, Button::Middle);
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 3"));
}

TEST_F(Navigation, PlainKeysReachThePanels) {
  startWith(coloredPdf(1));
  press(VK_F2);
  press(VK_F3);
  EXPECT_TRUE(eventually([&] { return pageArea().left == 0; }));
  press('N');
  const HWND bookmarks = childOf(window, 401);
  EXPECT_TRUE(eventually([&] { return focusOf(window) == bookmarks; }));
  EXPECT_TRUE(IsWindowVisible(bookmarks));
  press(VK_TAB);
  EXPECT_TRUE(eventually([&] { return focusOf(window) == window; }));
  press('L');
  const HWND binders = childOf(window, 420);
  EXPECT_TRUE(eventually([&] { return focusOf(window) == binders; }));
  EXPECT_TRUE(IsWindowVisible(binders));
  press(VK_TAB);
  EXPECT_TRUE(eventually([&] { return focusOf(window) == window; }));
}

TEST_F(Navigation, APanelThatIsHiddenGivesTheKeyboardBackToThePage) {
  startWith(coloredPdf(2));
  press('N');
  const HWND bookmarks = childOf(window, 401);
  ASSERT_TRUE(eventually([&] { return focusOf(window) == bookmarks; }));
  press(VK_F2);
  EXPECT_TRUE(eventually([&] { return focusOf(window) == window; }));
  press(VK_NEXT);
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 2"));
}

TEST_F(Navigation, ShiftShowsTheHandWithoutAMovement) {
  startAtActualSize(1);
  movePointer(middleOf(home));
  ASSERT_TRUE(inputIsHandled(window));
  const std::wstring arrow = cursorOf(window);
  holdKeys(kShift);
  EXPECT_TRUE(eventually([&] { return cursorOf(window) != arrow; }));
  releaseKeys(kShift);
  EXPECT_TRUE(eventually([&] { return cursorOf(window) == arrow; }));
}

TEST_F(Navigation, F4TogglesTheAnnotationPanelAmongSinglePagesOnly) {
  startWith(coloredPdf(2));
  const HWND panel = childOf(window, 402);
  press(VK_F4);
  EXPECT_TRUE(eventually([&] { return IsWindowVisible(panel) != FALSE; }));
  EXPECT_TRUE(becomesChecked(601));
  RECT area = pageArea();
  area.right -= dip(180) + dip(3);
  EXPECT_TRUE(pageBecomes(area, fitPage(area, kPage)));
  EXPECT_TRUE(pixelBecomes(area.right + 1, area.top + 5, kSplitter));
  press(VK_F6);
  EXPECT_TRUE(eventually([&] { return !IsWindowVisible(panel); }));
  press(VK_F4);
  press(VK_F5);
  EXPECT_TRUE(becomesChecked(301));
  EXPECT_FALSE(IsWindowVisible(panel));
}

TEST_F(Navigation, CtrlTakesTheMeaningFromTheKeysOfTheZoomModes) {
  startWith(coloredPdf(2));
  press('C', kCtrl);
  press('W');
  EXPECT_TRUE(becomesChecked(205));
  press('A', kCtrl);
  press('C', kCtrl);
  press(VK_NEXT);
  ASSERT_TRUE(pageTextBecomes(L"Page 2 of 2"));
  EXPECT_TRUE(menuItem(window, 205).checked);
}

TEST_F(Navigation, KeysWithoutADocumentDoNothing) {
  start();
  toFront();
  const RECT area = pageArea();
  for (const WORD key : {VK_NEXT, VK_PRIOR, VK_HOME, VK_END, VK_LEFT, VK_RIGHT, VK_UP, VK_DOWN,
                         VK_DELETE, VK_BACK, VK_SPACE, VK_ESCAPE, VK_RETURN}) {
    press(static_cast<WORD>(key));
    press(static_cast<WORD>(key), kCtrl);
    press(static_cast<WORD>(key), kShift);
  }
  for (const WORD key : {'R', 'A', 'C', 'V'}) press(key, kCtrl);
  press('R');
  press(VK_F2);
  EXPECT_TRUE(eventually([&] { return !menuItem(window, 201).checked; }));
  EXPECT_EQ(title(), L"Quillmere");
  EXPECT_EQ(pageArea(), area);
}

}  // namespace
}  // namespace quillmere::e2e
