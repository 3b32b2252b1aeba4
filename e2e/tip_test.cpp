#include "driver/other_window.h"
#include "driver/scenario.h"

namespace quillmere::e2e {
namespace {

constexpr Size kPage{300, 400};

// The note that appears beside the pointer over a mark, and what makes it go.
class Tip : public Scenario {
 protected:
  // Opens a page that one mark with a note covers.
  void startOnMark() {
    test::PdfPage page = coloredPage(0, kPage);
    page.annotations = {
        "<< /Type /Annot /Subtype /Highlight /F 4 /C [1 1 0] /Rect [0 0 300 400] "
        "/QuadPoints [0 400 300 400 0 0 300 0] /Contents (a note) >>"};
    startWith(test::buildPdf({page, coloredPage(1, kPage)}));
    ASSERT_TRUE(pageTextBecomes(L"Page 1 of 2"));
  }
  void rest() {
    const POINT place = middleOf(pageArea());
    movePointer({place.x - 3, place.y + aside});
    ASSERT_TRUE(inputIsHandled(window));
    movePointer({place.x, place.y + aside});
    ++aside;
    // A movement that is still under way would show the tip again.
    ASSERT_TRUE(eventually([&] {
      const HWND tip = shownTip();
      return tip != nullptr && windowRect(tip).left == place.x + dip(16);
    }));
    ASSERT_TRUE(inputIsHandled(window));
  }
  bool tipGoes() const {
    return eventually([&] { return shownTip() == nullptr; });
  }

  LONG aside = 0;  // a resting pointer shows nothing again until it moves
};

TEST_F(Tip, GoesWithThePointerOutOfTheWindow) {
  startOnMark();
  SetWindowPos(window, nullptr, 0, 0, dip(700), dip(600), SWP_NOZORDER);
  rest();
  const RECT frame = windowRect(window);
  movePointer({frame.right + 40, frame.bottom + 40});
  EXPECT_TRUE(tipGoes());
}

TEST_F(Tip, GoesWhenAnotherProgramComesToTheFront) {
  startOnMark();
  rest();
  {
    const OtherWindow other;
    ASSERT_TRUE(other.comesToFront());
    EXPECT_TRUE(tipGoes());
  }
  ASSERT_TRUE(bringToFront(window));
  EXPECT_EQ(shownTip(), nullptr);
}

TEST_F(Tip, GoesWhenAMenuOpens) {
  startOnMark();
  rest();
  press('F', kAlt);
  ASSERT_TRUE(eventually([] { return FindWindowW(L"#32768", nullptr) != nullptr; }));
  EXPECT_TRUE(tipGoes());
  press(VK_ESCAPE);
  press(VK_ESCAPE);
}

TEST_F(Tip, GoesWhileAButtonIsHeld) {
  startOnMark();
  rest();
  const POINT place = middleOf(pageArea());
  pressButton(place);
  EXPECT_TRUE(tipGoes());
  movePointer({place.x + 5, place.y + 5});
  ASSERT_TRUE(inputIsHandled(window));
  EXPECT_EQ(shownTip(), nullptr);
  releaseButton({place.x + 5, place.y + 5});
}

// A key that goes to the find bar reaches the page by what it does there.
TEST_F(Tip, GoesWhenAKeyInTheFindBarSearches) {
  startOnMark();
  press('F', kCtrl);
  ASSERT_TRUE(eventually([&] { return classOf(focusOf(window)) == L"Edit"; }));
  rest();
  type(L"x");
  EXPECT_TRUE(tipGoes());
}

}  // namespace
}  // namespace quillmere::e2e
