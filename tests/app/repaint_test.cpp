#include "app/repaint.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "documents/close.h"
#include "documents/modes.h"
#include "nav/find.h"
#include "nav/find_bar.h"
#include "support/opening_test.h"
#include "support/pdf_builder.h"
#include "view/navigation.h"
#include "view/panes.h"
#include "view/selection.h"
#include "view/zoom.h"

namespace quillmere::test {
namespace {

using platform::standIn;
using testing::ElementsAre;
using testing::IsEmpty;

PdfPage pageOf(double width, double height) {
  PdfPage page;
  page.width = width;
  page.height = height;
  page.content = textContent("one word", 20, height - 60);
  return page;
}

// The second page is narrower than the others, and lower.
class RepaintTest : public OpeningTest {
 protected:
  RepaintTest() {
    EXPECT_TRUE(open(buildPdf({pageOf(600, 800), pageOf(300, 400), pageOf(600, 800)})));
    setView(1);
    paint();
  }
  ~RepaintTest() override {
    closeAllDocuments();
    notePainted(pictureNow());
  }

  static void setView(float zoom) {
    session.panes[0].zoomMode = kCustomFit;
    session.panes[0].zoom = zoom;
  }
  static void paint() {
    notePainted(pictureNow());
    standIn().window.invalidParts.clear();
    standIn().window.invalidations = 0;
  }
  static const std::vector<PixelRect>& parts() { return standIn().window.invalidParts; }
  // The page with its shadow, in client pixels.
  static PixelRect pageNow(int pane) {
    const PanePlan plan = planPane(pane, pictureNow().panes[static_cast<std::size_t>(pane)].rect);
    return {plan.rect.left + plan.bitmapX, plan.rect.top + plan.bitmapY,
            std::min(plan.rect.left + plan.shadow.right, plan.rect.right),
            std::min(plan.rect.top + plan.shadow.bottom, plan.rect.bottom)};
  }
  static void expectWholeRepaint() {
    EXPECT_THAT(parts(), IsEmpty());
    EXPECT_GT(standIn().window.invalidations, 0);
  }
};

TEST_F(RepaintTest, ATurnRepaintsThePageAndItsShadow) {
  setZoomMode(0, kFitPage);
  paint();
  const PixelRect page = pageNow(0);
  goToPage(0, 2, false);
  ASSERT_EQ(pageNow(0), page);
  EXPECT_THAT(parts(), ElementsAre(page));
  EXPECT_EQ(standIn().window.invalidations, 0);
  EXPECT_GT(page.left, 0);
}

TEST_F(RepaintTest, PagesOfTwoSizesAreBothRepainted) {
  setZoomMode(0, kFitPage);
  setView(0.5F);
  goToPage(0, 0, false);
  goToPage(0, 2, false);
  paint();
  const PixelRect large = pageNow(0);
  goToPage(0, 1, false);
  const PixelRect small = pageNow(0);
  ASSERT_LT(small.width(), large.width());
  EXPECT_THAT(parts(), ElementsAre(large));
  paint();
  goToPage(0, 2, false);
  EXPECT_THAT(parts(), ElementsAre(large));
}

TEST_F(RepaintTest, WhatIsNotSeenOfALargePageIsNotRepainted) {
  setView(4);
  goToPage(0, 2, false);
  paint();
  goToPage(0, 0, false);
  ASSERT_EQ(parts().size(), 1u);
  const PixelRect pane = pictureNow().panes[0].rect;
  EXPECT_GE(parts()[0].left, pane.left);
  EXPECT_GE(parts()[0].top, pane.top);
  EXPECT_LE(parts()[0].right, pane.right);
  EXPECT_LE(parts()[0].bottom, pane.bottom);
}

TEST_F(RepaintTest, ASelectionThatGoesIsPaintedAway) {
  selectAll(0);
  paint();
  goToPage(0, 2, false);
  expectWholeRepaint();
}

TEST_F(RepaintTest, HitsThatComeArePainted) {
  OpenFindBar();
  paint();
  standIn().findBar.field = u"word";
  findFieldChanged();
  FindInDocument();
  standIn().window.invalidParts.clear();
  goToPage(0, 2, false);
  expectWholeRepaint();
}

TEST_F(RepaintTest, APlacementIsPaintedAwayWithItsPage) {
  Placement placement;
  placement.x = 100;
  placement.y = 100;
  placement.width = 50;
  placement.height = 50;
  session.placementDocument = documentOf(0);
  session.placements[0].push_back(placement);
  paint();
  goToPage(0, 2, false);
  expectWholeRepaint();
}

TEST_F(RepaintTest, ThePreviewOfATextIsPaintedToo) {
  session.textTool.armed = true;
  session.textTool.pointerKnown = true;
  session.textTool.x = 500;
  session.textTool.y = 300;
  paint();
  goToPage(0, 2, false);
  expectWholeRepaint();
}

TEST_F(RepaintTest, APanelThatCameMeanwhileIsPaintedToo) {
  session.stampPanelVisible = true;
  goToPage(0, 2, false);
  expectWholeRepaint();
}

TEST_F(RepaintTest, TheFrameOfThePaneThatBecameActiveIsPaintedToo) {
  setViewMode(ViewMode::IndependentPages);
  paint();
  session.activePane = 1;
  goToPage(1, 2, false);
  expectWholeRepaint();
}

TEST_F(RepaintTest, BothPagesOfABookAreRepainted) {
  setViewMode(ViewMode::Book);
  paint();
  const PixelRect left = pageNow(0);
  goToPage(0, 1, false);
  const PixelRect right = pageNow(1);
  ASSERT_EQ(parts().size(), 1u);
  EXPECT_LE(parts()[0].left, left.left);
  EXPECT_GE(parts()[0].right, right.right);
}

TEST_F(RepaintTest, AnOpenIntoAnEmptyWindowRepaintsAllOfIt) {
  closeAllDocuments();
  paint();
  EXPECT_TRUE(open(buildPdf({pageOf(600, 800)})));
  expectWholeRepaint();
}

}  // namespace
}  // namespace quillmere::test
