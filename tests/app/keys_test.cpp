#include "app/keys.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/opening_test.h"
#include "support/pdf_builder.h"
#include "view/navigation.h"
#include "view/selection.h"

namespace quillmere::test {
namespace {

using platform::standIn;
using testing::IsEmpty;

// Twenty pages of 612 by 792 points in a pane of 1000 by 778 pixels, page 6 showing.
class KeysTest : public OpeningTest {
 protected:
  KeysTest() {
    opened(u"a.pdf", 20);
    goToPage(0, 5, false);
  }

  static bool press(std::uint32_t key) {
    standIn().controlDown = false;
    return handleKey(key);
  }

  static bool pressWithControl(std::uint32_t key) {
    standIn().controlDown = true;
    return handleKey(key);
  }

  // Sets Custom Fit at a zoom where the page is larger than the pane in both directions.
  static void zoomFarIn() {
    PaneSlot& slot = session.panes[0];
    slot.zoomMode = kCustomFit;
    slot.zoom = 4.0f;
    slot.pageBitmapWidth = 2448;
    slot.pageBitmapHeight = 3168;
    slot.panX = -500;
    slot.panY = -500;
  }

  static PaneSlot& pane() { return session.panes[0]; }
};

TEST_F(KeysTest, PageKeysTurnWithAndWithoutControl) {
  bool (*const presses[])(std::uint32_t) = {press, pressWithControl};
  for (const auto pressKey : presses) {
    EXPECT_TRUE(pressKey(kKeyHome));
    EXPECT_EQ(pane().currentPage, 0);
    EXPECT_TRUE(pressKey(kKeyPageDown));
    EXPECT_EQ(pane().currentPage, 1);
    EXPECT_TRUE(pressKey(kKeyEnd));
    EXPECT_EQ(pane().currentPage, 19);
    EXPECT_TRUE(pressKey(kKeyPageUp));
    EXPECT_EQ(pane().currentPage, 18);
  }
}

TEST_F(KeysTest, ArrowsPanBySixtyPixels) {
  session.panScrollEnabled = false;
  zoomFarIn();
  EXPECT_TRUE(press(kKeyLeft));
  EXPECT_EQ(pane().panX, -440);
  EXPECT_TRUE(pressWithControl(kKeyRight));
  EXPECT_EQ(pane().panX, -500);
  EXPECT_TRUE(press(kKeyUp));
  EXPECT_EQ(pane().panY, -440);
  EXPECT_TRUE(pressWithControl(kKeyDown));
  EXPECT_EQ(pane().panY, -500);
}

TEST_F(KeysTest, LettersFitThePageOnlyWithoutControl) {
  EXPECT_TRUE(press(kKeyW));
  EXPECT_EQ(pane().zoomMode, kFitWidth);
  EXPECT_TRUE(press(kKeyA));
  EXPECT_EQ(pane().zoomMode, kActualSize);
  EXPECT_TRUE(press(kKeyC));
  EXPECT_EQ(pane().zoomMode, kCustomFit);
  EXPECT_TRUE(press(kKeyF));
  EXPECT_EQ(pane().zoomMode, kFitPage);

  pane().zoomMode = kActualSize;
  EXPECT_FALSE(pressWithControl(kKeyF));
  EXPECT_FALSE(pressWithControl(kKeyW));
  EXPECT_EQ(pane().zoomMode, kActualSize);
}

TEST_F(KeysTest, ControlAWithCopiesTheWholePage) {
  pressWithControl(kKeyA);
  EXPECT_TRUE(hasTextSelection(0));
  EXPECT_EQ(pane().zoomMode, kFitPage);
  pressWithControl(kKeyC);
  EXPECT_EQ(standIn().clipboard, u"Page 6");
  EXPECT_EQ(pane().zoomMode, kFitPage);
}

TEST_F(KeysTest, ControlCWithoutASelectionDoesNothing) {
  pressWithControl(kKeyC);
  EXPECT_EQ(standIn().clipboard, std::nullopt);
  EXPECT_EQ(pane().zoomMode, kFitPage);
}

TEST_F(KeysTest, CAloneLeavesASelectionUncopied) {
  selectAll(0);
  press(kKeyC);
  EXPECT_EQ(standIn().clipboard, std::nullopt);
  EXPECT_EQ(pane().zoomMode, kCustomFit);
}

TEST_F(KeysTest, ControlCCopiesASelectionOfThePaneThatIsNotActive) {
  session.viewMode = ViewMode::IndependentPages;
  selectAll(0);
  press(kKeyTab);
  ASSERT_EQ(session.activePane, 1);
  pressWithControl(kKeyC);
  EXPECT_EQ(standIn().clipboard, u"Page 6");
}

TEST_F(KeysTest, ArrowsPanFurtherOnADenserScreen) {
  session.dpi = 144;
  session.panScrollEnabled = false;
  zoomFarIn();
  press(kKeyLeft);
  EXPECT_EQ(pane().panX, -410);
  press(kKeyUp);
  EXPECT_EQ(pane().panY, -410);
}

TEST_F(KeysTest, PlusAndMinusZoomWithAndWithoutControl) {
  for (const std::uint32_t plus : {kKeyPadPlus, kKeyMainPlus}) {
    for (const std::uint32_t minus : {kKeyPadMinus, kKeyMainMinus}) {
      const float before = pane().zoom;
      EXPECT_TRUE(press(plus));
      EXPECT_FLOAT_EQ(pane().zoom, before * 1.18f);
      EXPECT_TRUE(pressWithControl(plus));
      EXPECT_TRUE(press(minus));
      EXPECT_TRUE(pressWithControl(minus));
      EXPECT_NEAR(pane().zoom, before, 1e-3);
    }
  }
}

TEST_F(KeysTest, RTurnsTheDocumentAndWithControlThePage) {
  press(kKeyR);
  EXPECT_EQ(pane().documentRotation & 3, 1u);
  EXPECT_THAT(session.active.pageRotations, IsEmpty());
  pressWithControl(kKeyR);
  EXPECT_EQ(pane().documentRotation & 3, 1u);
  EXPECT_EQ(session.active.pageRotations[5] & 3, 1u);
}

TEST_F(KeysTest, AViewerTurnsNothing) {
  session.viewerRole = true;
  press(kKeyR);
  pressWithControl(kKeyR);
  press(kKeyF4);
  EXPECT_EQ(pane().documentRotation, 0u);
  EXPECT_THAT(session.active.pageRotations, IsEmpty());
  EXPECT_FALSE(session.stampPanelVisible);
}

TEST_F(KeysTest, LAndNShowThePanelAndFocusItsTree) {
  session.binderPanelVisible = false;
  session.navigationPanelVisible = false;
  press(kKeyL);
  EXPECT_TRUE(session.binderPanelVisible);
  EXPECT_EQ(standIn().window.binderTreeFocusRequests, 1);
  press(kKeyN);
  EXPECT_TRUE(session.navigationPanelVisible);
  EXPECT_EQ(standIn().window.navigationTreeFocusRequests, 1);
  press(kKeyL);
  EXPECT_TRUE(session.binderPanelVisible);
  EXPECT_EQ(standIn().window.binderTreeFocusRequests, 2);
}

TEST_F(KeysTest, LAndNMeanNothingWithControl) {
  session.binderPanelVisible = false;
  session.navigationPanelVisible = false;
  EXPECT_FALSE(pressWithControl(kKeyL));
  EXPECT_FALSE(pressWithControl(kKeyN));
  EXPECT_FALSE(session.binderPanelVisible);
  EXPECT_FALSE(session.navigationPanelVisible);
}

TEST_F(KeysTest, TabFlipsTheActivePaneOutsideSinglePage) {
  press(kKeyTab);
  EXPECT_EQ(session.activePane, 0);
  session.viewMode = ViewMode::IndependentPages;
  press(kKeyTab);
  EXPECT_EQ(session.activePane, 1);
  pressWithControl(kKeyTab);
  EXPECT_EQ(session.activePane, 0);
}

TEST_F(KeysTest, F4TogglesTheAnnotationPanelInSinglePage) {
  press(kKeyF4);
  EXPECT_TRUE(session.stampPanelVisible);
  pressWithControl(kKeyF4);
  EXPECT_FALSE(session.stampPanelVisible);
  session.viewMode = ViewMode::Book;
  press(kKeyF4);
  EXPECT_FALSE(session.stampPanelVisible);
}

TEST_F(KeysTest, KeysActOnTheActivePane) {
  session.viewMode = ViewMode::IndependentPages;
  goToPage(1, 10, false);
  session.activePane = 1;
  press(kKeyPageDown);
  EXPECT_EQ(session.panes[1].currentPage, 11);
  EXPECT_EQ(session.panes[0].currentPage, 5);
}

TEST_F(KeysTest, OtherKeysMeanNothing) {
  for (const std::uint32_t key : {0x10u, 0x11u, 0x12u, 0x30u, 0x42u, 0x5Au, 0x70u, 0x7Bu}) {
    EXPECT_FALSE(press(key)) << key;
    EXPECT_FALSE(pressWithControl(key)) << key;
  }
}

TEST_F(KeysTest, VPastesOnlyWithControlIntoAVisibleFindBar) {
  standIn().clipboard = u"word";
  session.findBarVisible = true;
  EXPECT_FALSE(press(kKeyV));
  EXPECT_EQ(standIn().findBar.field, u"");
  EXPECT_TRUE(pressWithControl(kKeyV));
  EXPECT_EQ(standIn().findBar.field, u"word");

  standIn().clipboard = u"other";
  session.findBarVisible = false;
  pressWithControl(kKeyV);
  EXPECT_EQ(standIn().findBar.field, u"word");
}

TEST_F(KeysTest, KeysWithoutADocumentAreHarmless) {
  resetSession();
  for (std::uint32_t key = 1; key < 0x100; ++key) {
    press(key);
    pressWithControl(key);
  }
  EXPECT_FALSE(hasUnsavedChanges());
  EXPECT_THAT(standIn().boxes, IsEmpty());
}

}  // namespace
}  // namespace quillmere::test
