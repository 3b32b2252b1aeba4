#include "driver/scenario.h"

namespace quillmere::e2e {
namespace {

constexpr Size kPage{300, 400};
constexpr Size kTurned{400, 300};
constexpr std::uint32_t kRed = rgb(255, 0, 0);

class Rotation : public Scenario {
 protected:
  static RECT placeOfPage(int turns, RECT pane) {
    return fitPage(pane, turns % 2 == 0 ? kPage : kTurned);
  }
  // Waits until the page is where so many quarter turns put it.
  ::testing::AssertionResult turnedBy(int turns, RECT pane) const {
    const ::testing::AssertionResult placed = pageBecomes(pane, placeOfPage(turns, pane));
    return placed ? squareTurnedBy(turns, pane) : placed;
  }
  // The same of the red square of its top left corner alone, as in a pane with a frame.
  ::testing::AssertionResult squareTurnedBy(int turns, RECT pane) const {
    const RECT page = placeOfPage(turns, pane);
    const bool right = turns == 1 || turns == 2;
    const bool bottom = turns == 2 || turns == 3;
    return pixelBecomes(right ? page.right - 5 : page.left + 5,
                        bottom ? page.bottom - 5 : page.top + 5, kRed);
  }
};

TEST_F(Rotation, TheDocumentTurnsClockwiseAndComesRoundAgain) {
  startWith(markedPdf(2, kPage.width, kPage.height));
  const RECT area = pageArea();
  EXPECT_TRUE(turnedBy(0, area));
  for (const int turns : {1, 2, 3, 0, 1}) {
    press('R');
    EXPECT_TRUE(turnedBy(turns, area));
  }
  press(VK_NEXT);
  ASSERT_TRUE(pageTextBecomes(L"Page 2 of 2"));
  EXPECT_TRUE(turnedBy(1, area));
}

TEST_F(Rotation, OnePageTurnsAlone) {
  startWith(markedPdf(2, kPage.width, kPage.height));
  const RECT area = pageArea();
  press('R', kCtrl);
  EXPECT_TRUE(turnedBy(1, area));
  press(VK_NEXT);
  ASSERT_TRUE(pageTextBecomes(L"Page 2 of 2"));
  EXPECT_TRUE(turnedBy(0, area));
  press(VK_PRIOR);
  EXPECT_TRUE(turnedBy(1, area));
}

TEST_F(Rotation, IndependentPanesOfOneDocumentTurnTogether) {
  startWith(markedPdf(2, kPage.width, kPage.height));
  press(VK_F7);
  ASSERT_TRUE(pageTextBecomes(L"L:1  R:1  of 2"));
  press('R');
  EXPECT_TRUE(turnedBy(1, rightPane()));
  press(VK_TAB);
  RECT inside = leftPane();
  ASSERT_TRUE(pixelBecomes(rightPane().left + dip(1), dip(1), kFrame));
  EXPECT_TRUE(turnedBy(1, inside));
}

TEST_F(Rotation, ClosingATurnedDocumentAsksAndCancelKeepsIt) {
  startWith(markedPdf(1, kPage.width, kPage.height));
  const RECT area = pageArea();
  press('R');
  ASSERT_TRUE(turnedBy(1, area));
  press('W', kCtrl);
  const Box box = waitForBox(program);
  EXPECT_EQ(box.title, L"Quillmere");
  EXPECT_EQ(box.text, L"Document \"one.pdf\" has unsaved changes.\n\nSave them before closing?");
  EXPECT_THAT(box.buttons, ::testing::ElementsAre(L"Yes", L"No", L"Cancel"));
  EXPECT_TRUE(answerBox(box, VK_ESCAPE));
  EXPECT_TRUE(turnedBy(1, area));
  press('W', kCtrl);
  EXPECT_TRUE(answerBox(waitForBox(program), 'N'));
  EXPECT_TRUE(titleBecomes(L"Quillmere"));
}

TEST_F(Rotation, ATurnOfAnotherModeIsShownAndAskedAboutBeforeItsDocumentCloses) {
  startWith(markedPdf(1, kPage.width, kPage.height));
  press('R', kCtrl);
  ASSERT_TRUE(turnedBy(1, pageArea()));
  press(VK_F8);
  ASSERT_TRUE(squareTurnedBy(0, leftPane()));
  press('W', kCtrl);
  const Box box = waitForBox(program);
  EXPECT_EQ(box.text, L"Document \"one.pdf\" has unsaved changes.\n\nSave them before closing?");
  EXPECT_TRUE(answerBox(box, VK_ESCAPE));
  EXPECT_TRUE(squareTurnedBy(1, leftPane()));
  picture("asked about");
  press('W', kCtrl);
  EXPECT_TRUE(answerBox(waitForBox(program), 'N'));
  EXPECT_TRUE(titleBecomes(L"Quillmere"));
}

TEST_F(Rotation, FourTurnsLeaveNothingToSave) {
  startWith(markedPdf(1, kPage.width, kPage.height));
  for (int i = 0; i < 4; ++i) press('R');
  press('W', kCtrl);
  EXPECT_TRUE(titleBecomes(L"Quillmere"));
}

}  // namespace
}  // namespace quillmere::e2e
