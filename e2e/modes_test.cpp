#include "driver/scenario.h"

namespace quillmere::e2e {
namespace {

constexpr Size kPage{300, 400};
constexpr std::uint32_t kPlaceholder = rgb(120, 200, 255);

class Modes : public Scenario {
 protected:
  // Waits until the middle of a pane shows a page of coloredPdf().
  ::testing::AssertionResult showsPage(RECT pane, int page) const {
    return pixelBecomes((pane.left + pane.right) / 2, (pane.top + pane.bottom) / 2,
                        pageColor(page));
  }
  bool paneShowsPlaceholder(RECT pane) const {
    return eventually([&] { return client().count(pane, kPlaceholder) > 100; });
  }
};

TEST_F(Modes, TheFunctionKeysChooseTheModes) {
  startWith(coloredPdf(3));
  press(VK_F6);
  EXPECT_TRUE(pageTextBecomes(L"L:1  R:2  of 3"));
  EXPECT_TRUE(becomesChecked(302));
  EXPECT_TRUE(showsPage(leftPane(), 0));
  EXPECT_TRUE(showsPage(rightPane(), 1));
  press(VK_F7);
  EXPECT_TRUE(becomesChecked(303));
  EXPECT_TRUE(pageTextBecomes(L"L:1  R:2  of 3"));
  press(VK_F8);
  EXPECT_TRUE(pageTextBecomes(L"L:1/3  R:1/0"));
  EXPECT_TRUE(titleBecomes(L"Quillmere - one.pdf | "));
  EXPECT_TRUE(becomesChecked(304));
  press(VK_F5);
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 3"));
  EXPECT_TRUE(titleBecomes(L"Quillmere - one.pdf"));
  EXPECT_TRUE(becomesChecked(301));
  EXPECT_FALSE(menuItem(window, 304).checked);
}

TEST_F(Modes, BookFitsEachPageIntoItsPane) {
  startWith(coloredPdf(4));
  press('A');
  ASSERT_TRUE(zoomTextBecomes(L"Zoom: 100%"));
  press(VK_F6);
  EXPECT_TRUE(pageTextBecomes(L"L:1  R:2  of 4"));
  const RECT left = leftPane();
  const RECT right = rightPane();
  const RECT inside{left.left + dip(5), left.top + dip(5), left.right - dip(5),
                    left.bottom - dip(5)};
  EXPECT_TRUE(pageBecomes(inside, clipped(fitPage(left, kPage), inside)));
  EXPECT_TRUE(pageBecomes(right, fitPage(right, kPage)));
  press(VK_NEXT);
  EXPECT_TRUE(pageTextBecomes(L"L:2  R:3  of 4"));
  EXPECT_TRUE(showsPage(rightPane(), 2));
  press(VK_END);
  EXPECT_TRUE(pageTextBecomes(L"L:3  R:4  of 4"));
  // Back in Single Page, the earlier zoom applies again.
  press(VK_F5);
  EXPECT_TRUE(zoomTextBecomes(L"Zoom: 100%"));
}

TEST_F(Modes, AOnePageDocumentLeavesTheRightSideOfABookEmpty) {
  startWith(coloredPdf(1));
  press(VK_F6);
  EXPECT_TRUE(pageTextBecomes(L"L:1  R:1  of 1"));
  EXPECT_TRUE(showsPage(leftPane(), 0));
  const RECT right = rightPane();
  EXPECT_TRUE(eventually([&] { return client().isFilledWith(right, kBackground); }));
}

TEST_F(Modes, IndependentPanesTurnByThemselves) {
  startWith(coloredPdf(4));
  press(VK_F7);
  EXPECT_TRUE(pageTextBecomes(L"L:1  R:1  of 4"));
  EXPECT_TRUE(paneIsActive(leftPane()));
  press(VK_TAB);
  EXPECT_TRUE(paneIsActive(rightPane()));
  press(VK_END);
  EXPECT_TRUE(pageTextBecomes(L"L:1  R:4  of 4"));
  EXPECT_TRUE(showsPage(leftPane(), 0));
  EXPECT_TRUE(showsPage(rightPane(), 3));
  click(onScreen(leftPane().left + 10, 30));
  EXPECT_TRUE(paneIsActive(leftPane()));
  press(VK_NEXT);
  EXPECT_TRUE(pageTextBecomes(L"L:2  R:4  of 4"));
}

TEST_F(Modes, TabInATreeGoesToThePageAndNotToTheOtherPane) {
  startWith(coloredPdf(4));
  press(VK_F7);
  ASSERT_TRUE(pageTextBecomes(L"L:1  R:1  of 4"));
  ASSERT_TRUE(paneIsActive(leftPane()));
  const auto backFrom = [&](WORD key, int tree) {
    press(key);
    ASSERT_TRUE(eventually([&] { return focusOf(window) == childOf(window, tree); }));
    press(VK_TAB);
    ASSERT_TRUE(eventually([&] { return focusOf(window) == window; }));
    press(VK_NEXT);
  };
  backFrom('N', 401);
  EXPECT_TRUE(pageTextBecomes(L"L:2  R:1  of 4"));
  backFrom('L', 420);
  EXPECT_TRUE(pageTextBecomes(L"L:3  R:1  of 4"));
  EXPECT_TRUE(paneIsActive(leftPane()));
}

TEST_F(Modes, TwoEmptyPanesShowTheirPlaceholders) {
  start();
  toFront();
  press(VK_F8);
  EXPECT_TRUE(becomesChecked(304));
  EXPECT_TRUE(paneIsActive(leftPane()));
  EXPECT_TRUE(paneShowsPlaceholder(leftPane()));
  EXPECT_TRUE(paneShowsPlaceholder(rightPane()));
  EXPECT_EQ(title(), L"Quillmere");
  const RECT right = client().extent(kPlaceholder);
  EXPECT_GT(right.right, rightPane().left);
}

TEST_F(Modes, ThePlaceholderOfTheRightPaneOpensThere) {
  const std::wstring two = makeFile(L"two.pdf", coloredPdf(2));
  startWith(coloredPdf(1));
  press(VK_F8);
  // The empty window's text stays on the screen until the first page is painted.
  ASSERT_TRUE(showsPage(leftPane(), 0));
  ASSERT_TRUE(paneIsActive(leftPane()));
  ASSERT_TRUE(paneShowsPlaceholder(rightPane()));
  click(middleOf(rightPane()));
  const HWND dialog = waitForFileDialog(program);
  ASSERT_NE(dialog, nullptr);
  EXPECT_TRUE(chooseInFileDialog(dialog, two));
  EXPECT_TRUE(titleBecomes(L"Quillmere - one.pdf | two.pdf"));
  EXPECT_TRUE(pageTextBecomes(L"L:1/1  R:1/2"));
}

TEST_F(Modes, ASecondFileAmongIndependentPagesSplitsTheWindow) {
  startWith(coloredPdf(4));
  press(VK_F7);
  press(VK_NEXT);
  ASSERT_TRUE(pageTextBecomes(L"L:2  R:1  of 4"));
  dropFiles(window, {rightPane().left + 50, 100}, {makeFile(L"two.pdf", coloredPdf(3))});
  EXPECT_TRUE(titleBecomes(L"Quillmere - one.pdf | two.pdf"));
  EXPECT_TRUE(pageTextBecomes(L"L:2/4  R:1/3"));
  EXPECT_TRUE(becomesChecked(304));
  EXPECT_TRUE(showsPage(leftPane(), 1));
  EXPECT_TRUE(showsPage(rightPane(), 0));
}

TEST_F(Modes, TheFileOfTheOtherPaneFallsBackToIndependentPages) {
  startWithTwo(coloredPdf(1), coloredPdf(2));
  dropFiles(window, {leftPane().left + 50, 100}, {scenarioFolder() + L"\\TWO.pdf"});
  EXPECT_TRUE(titleBecomes(L"Quillmere - two.pdf"));
  EXPECT_TRUE(becomesChecked(303));
  EXPECT_TRUE(pageTextBecomes(L"L:1  R:1  of 2"));
}

TEST_F(Modes, ClosingOneOfTwoDocumentsLeavesTheOther) {
  startWithTwo(coloredPdf(1), coloredPdf(2));
  press(VK_TAB);
  ASSERT_TRUE(paneIsActive(rightPane()));
  press('W', kCtrl);
  EXPECT_TRUE(titleBecomes(L"Quillmere - one.pdf | "));
  EXPECT_TRUE(paneShowsPlaceholder(rightPane()));
  EXPECT_TRUE(showsPage(leftPane(), 0));
}

TEST_F(Modes, LeavingTwoDocumentsKeepsTheLeftOne) {
  startWithTwo(coloredPdf(1), coloredPdf(2));
  press(VK_F5);
  EXPECT_TRUE(titleBecomes(L"Quillmere - one.pdf"));
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 1"));
  EXPECT_EQ(boxNow(program).window, nullptr);
}

TEST_F(Modes, TheDividerIsDraggedAndPutBackInTheMiddle) {
  startWith(coloredPdf(2));
  press(VK_F7);
  ASSERT_TRUE(pageTextBecomes(L"L:1  R:1  of 2"));
  const RECT left = leftPane();
  const RECT right = rightPane();
  const LONG middle = (left.top + left.bottom) / 2;
  drag(onScreen(left.right, middle), onScreen(left.right + 100, middle));
  EXPECT_TRUE(pixelBecomes(left.right + 100, left.top + 2, kDivider));
  const RECT wider{left.left, left.top, left.right + 100, left.bottom};
  const RECT inside{wider.left + dip(5), wider.top + dip(5), wider.right - dip(5),
                    wider.bottom - dip(5)};
  EXPECT_TRUE(pageBecomes(inside, clipped(fitPage(wider, kPage), inside)));
  press(VK_OEM_5, kCtrl);
  EXPECT_TRUE(pixelBecomes(left.right, left.top + 2, kDivider));
  EXPECT_TRUE(pageBecomes(right, fitPage(right, kPage)));
}

TEST_F(Modes, AStillClickOnTheDividerMovesNothing) {
  startWith(coloredPdf(2));
  press(VK_F7);
  ASSERT_TRUE(pageTextBecomes(L"L:1  R:1  of 2"));
  const RECT left = leftPane();
  const RECT right = rightPane();
  press('A');
  press(VK_DOWN);
  ASSERT_TRUE(inputIsHandled(window));
  const RECT inside{left.left + dip(5), left.top + dip(5), left.right - dip(5),
                    left.bottom - dip(5)};
  RECT moved = placedPage(left, kPage, 1);
  OffsetRect(&moved, 0, -dip(60));
  ASSERT_TRUE(pageBecomes(inside, clipped(moved, inside)));
  const POINT grip = onScreen(left.right, (left.top + left.bottom) / 2);
  movePointer(grip);
  ASSERT_TRUE(inputIsHandled(window));
  click(grip);
  ASSERT_TRUE(inputIsHandled(window));
  EXPECT_TRUE(pixelBecomes(left.right, left.top + 2, kDivider));
  EXPECT_TRUE(pageBecomes(inside, clipped(moved, inside)));
  EXPECT_TRUE(pageBecomes(right, fitPage(right, kPage)));
}

TEST_F(Modes, ADragEndsWithTheDocumentThatItMoves) {
  startWith(coloredPdf(6));
  const RECT page = fitPage(pageArea(), kPage);
  ASSERT_TRUE(pageBecomes(pageArea(), page));
  const POINT place = middleOf(pageArea());
  movePointer(place);
  ASSERT_TRUE(inputIsHandled(window));
  pressButton(place, Button::Middle);
  movePointer({place.x + 30, place.y + 20});
  ASSERT_TRUE(inputIsHandled(window));
  sendPath(window, makeFile(L"two.pdf", coloredPdf(3)));
  ASSERT_TRUE(titleBecomes(L"Quillmere - two.pdf"));
  ASSERT_TRUE(pageBecomes(pageArea(), page));
  movePointer({place.x + 90, place.y + 60});
  ASSERT_TRUE(inputIsHandled(window));
  releaseButton({place.x + 90, place.y + 60}, Button::Middle);
  press(VK_NEXT);
  ASSERT_TRUE(pageTextBecomes(L"Page 2 of 3"));
  EXPECT_TRUE(pageBecomes(pageArea(), page));
}

TEST_F(Modes, ABoxThatComesDuringADragEndsIt) {
  startWithTwo(coloredPdf(2), coloredPdf(1));
  const RECT left = leftPane();
  const POINT grip = onScreen(left.right, (left.top + left.bottom) / 2);
  movePointer(grip);
  ASSERT_TRUE(inputIsHandled(window));
  pressButton(grip);
  ASSERT_TRUE(inputIsHandled(window));
  movePointer({grip.x + 40, grip.y});
  ASSERT_TRUE(pixelBecomes(left.right + 40, left.top + 2, kDivider));
  sendPathAndReturn(window, scenarioFolder() + L"\\missing.pdf");
  ASSERT_TRUE(boxSays(L"Could not open PDF.\n(PDFium error 2)"));
  movePointer({grip.x + 120, grip.y});
  ASSERT_TRUE(inputIsHandled(window));
  releaseButton({grip.x + 120, grip.y});
  press(VK_NEXT);
  ASSERT_TRUE(pageTextBecomes(L"L:2/2  R:1/1"));
  // A late pointer event may have moved the divider back, but the movement after the box must not
  // have moved it.
  EXPECT_NE(client().at(left.right + 120, left.top + 2), kDivider);
}

TEST_F(Modes, TheDividerOfABookWithEqualPanesCannotBeGrabbed) {
  startWith(coloredPdf(3));
  press(VK_F6);
  const RECT left = leftPane();
  const LONG middle = (left.top + left.bottom) / 2;
  ASSERT_TRUE(pixelBecomes(left.right, middle, kDivider));
  drag(onScreen(left.right, middle), onScreen(left.right + 100, middle));
  press(VK_NEXT);
  EXPECT_TRUE(pageTextBecomes(L"L:2  R:3  of 3"));
  EXPECT_TRUE(pixelBecomes(left.right, middle, kDivider));
}

TEST_F(Modes, ThePanelIsMadeWiderByItsSplitter) {
  startWith(coloredPdf(1));
  const RECT before = pageArea();
  drag(onScreen(before.left - 2, 300), onScreen(before.left + 58, 300));
  EXPECT_TRUE(eventually([&] { return pageArea().left == before.left + 60; }));
  const RECT area = pageArea();
  EXPECT_TRUE(pageBecomes(area, fitPage(area, kPage)));
  press(VK_F2);
  press(VK_F3);
  EXPECT_TRUE(eventually([&] { return pageArea().left == 0; }));
  EXPECT_TRUE(pageBecomes(pageArea(), fitPage(pageArea(), kPage)));
}

TEST_F(Modes, AClickOnASplitterLeavesThePageWhereItIs) {
  startWith(markedPdf(1, kPage.width, kPage.height));
  press(VK_F4);
  RECT area = pageArea();
  area.right -= dip(180) + dip(3);
  ASSERT_TRUE(pageBecomes(area, fitPage(area, kPage)));
  press('W');
  const RECT page = placedPage(area, kPage, fitWidthZoom(area, kPage));
  ASSERT_TRUE(pageBecomes(area, clipped(page, area)));
  // The square in the page's corner shows how far the page was scrolled.
  const auto squareBottom = [&] { return client().extentAlike(area, rgb(255, 0, 0)).bottom; };
  LONG bottom = squareBottom();
  for (const LONG splitter : {area.left - 2, area.right + 1}) {
    press(VK_DOWN);
    bottom -= dip(60);
    ASSERT_EQ(settled(squareBottom, bottom), bottom);
    click(onScreen(splitter, 300));
    ASSERT_TRUE(inputIsHandled(window));
  }
  press(VK_UP);
  bottom += dip(60);
  EXPECT_EQ(settled(squareBottom, bottom), bottom);
}

}  // namespace
}  // namespace quillmere::e2e
