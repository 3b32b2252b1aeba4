#include "app/paint_plan.h"

#include "session/density.h"
#include "view/geometry.h"
#include "view/view_test.h"

namespace quillmere::test {
namespace {

class PaintPlanTest : public ViewTest {};

TEST_F(PaintPlanTest, SinglePageHasOnePaneAndNoLines) {
  const WindowPlan plan = planWindow();
  EXPECT_EQ(plan.paneCount, 1);
  EXPECT_TRUE(plan.divider.rect.empty());
  EXPECT_TRUE(plan.leftSplitter.rect.empty());
  EXPECT_TRUE(plan.leftPanelBar.rect.empty());
  EXPECT_TRUE(plan.stampSplitter.rect.empty());
}

TEST_F(PaintPlanTest, TheDividerRunsDownToTheStatusBar) {
  session.viewMode = ViewMode::Book;
  session.findBarVisible = true;
  const WindowPlan plan = planWindow();
  EXPECT_EQ(plan.paneCount, 2);
  EXPECT_EQ(plan.divider.rect, (PixelRect{500, 0, 502, 778}));
  EXPECT_EQ(plan.divider.color, (Color{40, 40, 40}));
}

TEST_F(PaintPlanTest, SplittersStandBesideTheirPanels) {
  session.navigationPanelVisible = true;
  session.binderPanelVisible = true;
  session.leftPanelWidth = 190;
  session.stampPanelVisible = true;
  session.stampPanelWidth = 180;
  const WindowPlan plan = planWindow();
  EXPECT_EQ(plan.leftSplitter.rect, (PixelRect{190, 0, 193, 778}));
  EXPECT_EQ(plan.stampSplitter.rect, (PixelRect{817, 0, 820, 778}));
  EXPECT_EQ(plan.leftPanelBar.rect, (PixelRect{0, 389, 190, 392}));
  EXPECT_EQ(plan.leftSplitter.color, (Color{45, 45, 45}));
  EXPECT_EQ(plan.stampSplitter.color, (Color{45, 45, 45}));
  EXPECT_EQ(plan.leftPanelBar.color, (Color{45, 45, 45}));
}

TEST_F(PaintPlanTest, TheStampPanelHasItsLineInSinglePageAlone) {
  session.stampPanelVisible = true;
  session.viewMode = ViewMode::IndependentPages;
  EXPECT_TRUE(planWindow().stampSplitter.rect.empty());
}

TEST_F(PaintPlanTest, TheBarNeedsBothPartsOfTheLeftPanel) {
  session.navigationPanelVisible = true;
  EXPECT_TRUE(planWindow().leftPanelBar.rect.empty());
}

TEST_F(PaintPlanTest, AnEmptyPaneHasNothingToPaint) {
  openAndShow(simplePdf(1));
  const PanePlan plan = planPane(0, PixelRect{500, 0, 500, 700});
  EXPECT_FALSE(plan.hasBitmap);
  EXPECT_FALSE(plan.showsPlaceholder);
  EXPECT_FALSE(plan.framed);
}

TEST_F(PaintPlanTest, TheBitmapStandsAtTheCutPanAndItsShadowFourFurther) {
  openAndShow(simplePdf(1, 100, 50));
  setView(0, 1.0f, 20.75f, -30.75f);
  const PanePlan plan = planPane(0, paneRect(0));
  EXPECT_TRUE(plan.hasBitmap);
  EXPECT_EQ(plan.bitmapX, 20);
  EXPECT_EQ(plan.bitmapY, -30);
  EXPECT_EQ(plan.shadow, (PixelRect{24, -26, 124, 24}));
  EXPECT_EQ(plan.content, (PixelRect{0, 0, 1000, 778}));
}

TEST_F(PaintPlanTest, TheActivePaneIsFramedInModesWithTwoPanes) {
  session.viewMode = ViewMode::TwoDocuments;
  session.activePane = 1;
  const PanePlan active = planPane(1, PixelRect{502, 0, 602, 50});
  EXPECT_TRUE(active.framed);
  EXPECT_EQ(active.content, (PixelRect{4, 4, 96, 46}));
  EXPECT_THAT(active.frame, testing::ElementsAre(PixelRect{1, 1, 99, 4}, PixelRect{1, 46, 99, 49},
                                                 PixelRect{1, 4, 4, 46}, PixelRect{96, 4, 99, 46}));
  const PanePlan other = planPane(0, PixelRect{0, 0, 500, 50});
  EXPECT_FALSE(other.framed);
  EXPECT_EQ(other.content, (PixelRect{0, 0, 500, 50}));
}

TEST_F(PaintPlanTest, FrameShadowAndLinesGrowWithTheScreensDensity) {
  openAndShow(simplePdf(1, 100, 50));
  setView(0, 1.0f, 20.0f, 30.0f);
  session.viewMode = ViewMode::Book;
  session.dpi = 144;
  const PanePlan plan = planPane(0, PixelRect{0, 0, 100, 50});
  EXPECT_EQ(plan.content, (PixelRect{6, 6, 94, 44}));
  EXPECT_THAT(plan.frame, testing::ElementsAre(PixelRect{2, 2, 98, 7}, PixelRect{2, 43, 98, 48},
                                               PixelRect{2, 7, 7, 43}, PixelRect{93, 7, 98, 43}));
  EXPECT_EQ(plan.bitmapX, 20);
  EXPECT_EQ(plan.bitmapY, 30);
  EXPECT_EQ(plan.shadow, (PixelRect{26, 36, 126, 86}));  // the page itself has its own size
  EXPECT_EQ(planWindow().divider.rect, (PixelRect{500, 0, 503, 778}));
}

TEST_F(PaintPlanTest, SplittersGrowWithTheScreensDensity) {
  session.navigationPanelVisible = true;
  session.binderPanelVisible = true;
  session.stampPanelVisible = true;
  session.leftPanelWidth = 190;
  session.stampPanelWidth = 180;
  changeDensity(144);
  const WindowPlan plan = planWindow();
  EXPECT_EQ(plan.leftSplitter.rect, (PixelRect{285, 0, 290, 778}));
  EXPECT_EQ(plan.leftPanelBar.rect, (PixelRect{0, 389, 285, 394}));
  EXPECT_EQ(plan.stampSplitter.rect, (PixelRect{725, 0, 730, 778}));
}

TEST_F(PaintPlanTest, SinglePageHasNoFrame) {
  EXPECT_FALSE(planPane(0, paneRect(0)).framed);
}

TEST_F(PaintPlanTest, ThePlaceholderShowsOnlyWithoutADocument) {
  EXPECT_TRUE(planPane(0, paneRect(0)).showsPlaceholder);
  openInActive(simplePdf(1));
  EXPECT_FALSE(planPane(0, paneRect(0)).showsPlaceholder);
}

TEST_F(PaintPlanTest, APageThatCannotBeLoadedLeavesTheBackgroundAlone) {
  openInActive(pdfWithBrokenPage(2, 0));
  show(0, 0);
  ASSERT_EQ(pane(0).page, nullptr);
  const PanePlan plan = planPane(0, paneRect(0));
  EXPECT_FALSE(plan.hasBitmap);
  EXPECT_FALSE(plan.showsPlaceholder);
}

TEST_F(PaintPlanTest, ThePlaceholderSaysWhereADocumentCanComeFrom) {
  const std::u16string whole = u"Open a PDF with  File \u203A Open\u2026  or drag a file here";
  EXPECT_EQ(placeholderText(0), whole);
  session.viewMode = ViewMode::IndependentPages;
  EXPECT_EQ(placeholderText(1), whole);
  session.viewMode = ViewMode::TwoDocuments;
  EXPECT_EQ(placeholderText(0), whole);
  EXPECT_EQ(placeholderText(1), u"Open a PDF here, or drag a file in");
}

TEST_F(PaintPlanTest, ThePlaceholderIsCentredInsideTheInset) {
  session.viewMode = ViewMode::TwoDocuments;
  const PanePlan plan = planPane(0, PixelRect{0, 0, 500, 778});
  EXPECT_EQ(placeholderBox(plan, {200, 20}), (PixelRect{150, 379, 350, 399}));
}

}  // namespace
}  // namespace quillmere::test
