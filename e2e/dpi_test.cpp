#include "driver/scenario.h"

namespace quillmere::e2e {
namespace {

constexpr Size kLetter{612, 792};

// Runs on a desktop started at 144 DPI: the window's lengths grow, while page zoom still means
// pixels per point.
class HighResolution : public Scenario {
 protected:
  void SetUp() override {
    Scenario::SetUp();
    ASSERT_EQ(GetDpiForSystem(), 144u);
  }
};

TEST_F(HighResolution, PanelsAndMarginsGrowAndThePageFillsItsPane) {
  startWith(markedPdf(1, kLetter.width, kLetter.height));
  SetWindowPos(window, nullptr, 0, 0, 1400, 1000, SWP_NOZORDER);
  const RECT area = pageArea();
  EXPECT_EQ(area.left, 285 + 5);
  const RECT page = fitPage(area, kLetter);
  ASSERT_TRUE(pageBecomes(area, page));
  const Picture shown = client();
  EXPECT_TRUE(shown.isFilledWith({area.left - 5, area.top, area.left, area.bottom}, kSplitter));
  EXPECT_TRUE(
      shown.isFilledWith({page.right, page.top + 6, page.right + 6, page.bottom + 6}, kShadow));
  const RECT header = windowRect(childOf(window, 422));
  EXPECT_EQ(header.bottom - header.top, 33);
  press(VK_F6);
  ASSERT_TRUE(pageTextBecomes(L"L:1  R:1  of 1"));
}

class AnotherScreen : public Scenario {};

TEST_F(AnotherScreen, OfOtherDensityLaysTheWindowOutAnew) {
  startWith(markedPdf(1, kLetter.width, kLetter.height));
  const HWND header = childOf(window, 422);
  const HWND tree = childOf(window, 401);
  const auto widthOf = [](HWND child) { return windowRect(child).right - windowRect(child).left; };
  const int dpi = static_cast<int>(GetDpiForSystem());
  const LONG width = widthOf(tree);
  changeDensity(window, 2 * dpi);
  EXPECT_EQ(windowRect(header).bottom - windowRect(header).top, dip(2 * 22));
  EXPECT_EQ(widthOf(tree), 2 * width);
  RECT area = pageArea();
  area.left = 2 * width + dip(2 * 3);
  EXPECT_TRUE(pageBecomes(area, fitPage(area, kLetter)));
  changeDensity(window, dpi);
  EXPECT_EQ(widthOf(tree), width);
  EXPECT_TRUE(pageBecomes(pageArea(), fitPage(pageArea(), kLetter)));
}

}  // namespace
}  // namespace quillmere::e2e
