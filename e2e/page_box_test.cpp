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
