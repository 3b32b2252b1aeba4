#include <cstdlib>

#include "driver/clipboard.h"
#include "driver/find_scenario.h"

namespace quillmere::e2e {
namespace {

// What is seen of a page of 612 by 792 points whose crop box begins elsewhere than at 0, 0.
constexpr Size kSeen{412, 542};
constexpr double kLeft = 100;  // the crop box's corner, in points
constexpr double kBottom = 150;
constexpr double kTextLeft = 72;    // points from the visible page's left edge
constexpr double kBaseline = 200;   // points from its top
constexpr double kTargetTop = 300;  // points from its bottom

test::PdfPage croppedPage() {
  test::PdfPage page;
  page.entries = "/CropBox [100 150 512 692]";
  page.content = test::textContent("Quill and page", kLeft + kTextLeft,
                                   kBottom + kSeen.height - kBaseline, 24, "F3");
  page.annotations = {
      test::linkAnnotation(kLeft, kBottom, kLeft + 100, kBottom + 100, test::pageDestination(2))};
  return page;
}

test::PdfPage squaredPage() {
  test::PdfPage page;
  page.entries = "/CropBox [100 150 512 692]";
  page.content = test::rectangleContent(kLeft + 200, kBottom + kTargetTop - 50, 50, 50, 1, 0, 0);
  return page;
}

class PageBox : public FindScenario {
 protected:
  void startAtActualSize() {
    test::PdfOptions options;
    options.outline = {{u"Square", test::pageDestination(2, kBottom + kTargetTop), {}}};
    startWith(test::buildPdf({croppedPage(), squaredPage()}, options));
    press('A');
    page = placedPage(pageArea(), kSeen, 1);
    ASSERT_TRUE(pageBecomes(pageArea(), clipped(page, pageArea())));
  }
  POINT character(int index) const {
    return onScreen(page.left + static_cast<int>(kTextLeft + (index + 0.5) * kCourierAdvance),
                    page.top + static_cast<int>(kBaseline) - 6);
  }

  RECT page{};
};

// A page whose visible part is 412 by 542 points and begins at `left`, `bottom`: a red square with
// a word below it and a link over it.
constexpr double kSquareLeft = 250;  // points from the visible part's left edge
constexpr double kSquareBottom = 380;
constexpr double kSquareSide = 60;

test::PdfPage linkedSquare(double left, double bottom, int target) {
  const double x = left + kSquareLeft;
  const double y = bottom + kSquareBottom;
  test::PdfPage page;
  page.content = test::textContent("Quill", x, y - 26, 24, "F3") +
                 test::rectangleContent(x, y, kSquareSide, kSquareSide, 1, 0, 0);
  page.annotations = {
      test::linkAnnotation(x, y, x + kSquareSide, y + kSquareSide, test::pageDestination(target))};
  return page;
}

struct BoxCase {
  const char* what;
  double left;  // of the visible part
  double bottom;
  bool cropped;
};
constexpr BoxCase kBoxes[] = {{"crop box", 100, 150, true}, {"negative corner", -300, -400, false}};

test::PdfPage pageOf(const BoxCase& box, int quarterTurns, int target) {
  test::PdfPage page = linkedSquare(box.left, box.bottom, target);
  page.rotate = quarterTurns * 90;
  if (box.cropped) {
    page.entries = "/CropBox [100 150 512 692]";
  } else {
    page.left = box.left;
    page.bottom = box.bottom;
    page.width = kSeen.width;
    page.height = kSeen.height;
  }
  return page;
}

// Every box with every turn of its own; the turns of the document and of single pages add up while
// the pages are walked.
class TurnedPageBox : public FindScenario {
 protected:
  static constexpr int kLast = 9;  // the page that all links lead to

  void startWithAll() {
    std::vector<test::PdfPage> pages;
    for (const BoxCase& box : kBoxes) {
      for (int turns = 0; turns < 4; ++turns) pages.push_back(pageOf(box, turns, kLast));
    }
    pages.push_back(coloredPage(3, kSeen));
    startWith(test::buildPdf(pages));
    ASSERT_TRUE(pageTextBecomes(L"Page 1 of 9"));
  }
  RECT squareNow() const { return client().extentAlike(pageArea(), rgb(255, 0, 0)); }
  // Waits until the square is somewhere else than it was.
  void squareMoves() {
    const RECT before = square;
    EXPECT_TRUE(eventually([&] {
      square = squareNow();
      return !IsRectEmpty(&square) && !(square == before);
    }));
  }
  void followAndComeBack(const std::wstring& here) {
    click(onScreen((square.left + square.right) / 2 + aside, (square.top + square.bottom) / 2));
    aside = -aside;
    EXPECT_TRUE(pageTextBecomes(L"Page 9 of 9"));
    press(VK_BACK);
    ASSERT_TRUE(pageTextBecomes(here));
    EXPECT_TRUE(eventually([&] { return squareNow() == square; }));
  }
  // The middle of the hit is half a square and half a line away from the middle of the square.
  void expectHitBesideTheSquare() const {
    RECT hit{};
    EXPECT_TRUE(eventually([&] {
      hit = client().extentAlike(pageArea(), hitColor());
      if (IsRectEmpty(&hit)) hit = client().extentAlike(pageArea(), currentHitColor());
      return !IsRectEmpty(&hit);
    }));
    const LONG side = square.right - square.left;
    EXPECT_NEAR(hit.left + hit.right, square.left + square.right, 2 * side);
    EXPECT_NEAR(hit.top + hit.bottom, square.top + square.bottom, 2 * side);
  }

  RECT square{};
  LONG aside = 8;  // pixels; two clicks on one spot would be a double click
};

TEST_F(TurnedPageBox, LinksAndHitsLieWhereTheyAreSeen) {
  startWithAll();
  lookFor(L"Quill");
  EXPECT_TRUE(hitsBecome(L"1 on page"));
  toFront();
  click(onScreen(pageArea().left + 5, pageArea().top + 5));
  ASSERT_TRUE(keyboardGoesTo(0));
  for (int number = 1; number < kLast; ++number) {
    SCOPED_TRACE(number);
    const std::wstring here = L"Page " + std::to_wstring(number) + L" of 9";
    ASSERT_TRUE(pageTextBecomes(here));
    EXPECT_TRUE(eventually([&] { return !IsRectEmpty(&(square = squareNow())); }));
    expectHitBesideTheSquare();
    followAndComeBack(here);
    press('R', kCtrl);
    squareMoves();
    expectHitBesideTheSquare();
    followAndComeBack(here);
    press('R');
    squareMoves();
    followAndComeBack(here);
    press(VK_NEXT);
  }
}

TEST_F(PageBox, SelectionHitsAndLinksLieWhereTheyAreSeen) {
  startAtActualSize();
  ASSERT_TRUE(clearClipboard());
  drag(character(2), character(8));
  press('C', kCtrl);
  EXPECT_EQ(settled(clipboardText, std::wstring(L"ill and")), L"ill and");

  lookFor(L"page");
  EXPECT_TRUE(hitsBecome(L"1 on page"));
  page = placedPage(pageArea(), kSeen, 1);
  const int left = page.left + static_cast<int>(kTextLeft + 10 * kCourierAdvance);
  const int right = page.left + static_cast<int>(kTextLeft + 14 * kCourierAdvance);
  const int baseline = page.top + static_cast<int>(kBaseline);
  RECT hit{};
  EXPECT_TRUE(eventually([&] {
    hit = client().extentAlike(page, currentHitColor());
    return !IsRectEmpty(&hit);
  }));
  EXPECT_NEAR(hit.left, left, 6);
  EXPECT_NEAR(hit.right, right, 6);
  EXPECT_NEAR(hit.bottom, baseline, 8);
  press(VK_ESCAPE);

  page = placedPage(pageArea(), kSeen, 1);
  click(onScreen(page.left + 50, page.bottom - 50));
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 2"));
}

TEST_F(PageBox, ABookmarksTargetStandsBelowThePanesTop) {
  startAtActualSize();
  SetWindowPos(window, nullptr, 0, 0, dip(900), dip(400), SWP_NOMOVE | SWP_NOZORDER);
  const HWND tree = childOf(window, 401);
  RECT row{};
  ASSERT_TRUE(eventually([&] {
    row = treeRowOnScreen(window, tree, L"Square");
    return !IsRectEmpty(&row);
  }));
  click({row.left + 4, (row.top + row.bottom) / 2});
  ASSERT_TRUE(pageTextBecomes(L"Page 2 of 2"));
  RECT square{};
  const RECT area = pageArea();
  EXPECT_TRUE(eventually([&] {
    square = client().extentAlike(area, rgb(255, 0, 0));
    return std::abs(square.top - area.top - dip(24)) <= 1;
  })) << ::testing::PrintToString(square);
}

}  // namespace
}  // namespace quillmere::e2e
