#include "app/viewer_role.h"

#include <gtest/gtest.h>

#include "support/opening_test.h"
#include "support/pdf_builder.h"
#include "view/geometry.h"

namespace quillmere::test {
namespace {

class ViewerRoleTest : public OpeningTest {
 protected:
  ViewerRoleTest() {
    session.viewerRole = true;
    session.navigationPanelVisible = true;
    session.binderPanelVisible = true;
  }
};

TEST_F(ViewerRoleTest, BookmarksShowOnlyWhereTheDocumentHasSome) {
  ASSERT_TRUE(open(simplePdf(2)));
  arrangeViewerPanels();
  EXPECT_FALSE(session.navigationPanelVisible);
  EXPECT_FALSE(session.binderPanelVisible);
  EXPECT_EQ(paneRect(0).left, 0);

  PdfOptions options;
  options.outline = {{u"One", pageDestination(1), {}}};
  ASSERT_TRUE(open(buildPdf(std::vector<PdfPage>(2), options)));
  arrangeViewerPanels();
  EXPECT_TRUE(session.navigationPanelVisible);
  EXPECT_FALSE(session.binderPanelVisible);
}

TEST_F(ViewerRoleTest, AnEmptyViewerShowsNoPanels) {
  arrangeViewerPanels();
  EXPECT_FALSE(session.navigationPanelVisible);
  EXPECT_FALSE(session.binderPanelVisible);
}

TEST_F(ViewerRoleTest, ThePanelTakesFourFifthsOfItsWidthAndNoLessThan150) {
  const std::pair<int, int> widths[] = {{500, 400}, {190, 152}, {188, 150}, {187, 150},
                                        {186, 150}, {150, 150}, {203, 162}, {204, 163}};
  for (const auto& [before, after] : widths) {
    session.leftPanelWidth = before;
    arrangeViewerPanels();
    EXPECT_EQ(session.leftPanelWidth, after) << before;
  }
}

TEST_F(ViewerRoleTest, TheLeastWidthOfThePanelGrowsWithTheScreensDensity) {
  session.dpi = 144;
  const std::pair<int, int> widths[] = {{500, 400}, {285, 228}, {240, 225}, {190, 225}};
  for (const auto& [before, after] : widths) {
    session.leftPanelWidth = before;
    arrangeViewerPanels();
    EXPECT_EQ(session.leftPanelWidth, after) << before;
  }
}

TEST_F(ViewerRoleTest, ThePageIsFittedAnew) {
  ASSERT_TRUE(open(simplePdf(1, 2000, 200)));
  session.leftPanelWidth = 400;
  const int layouts = platform::standIn().window.layouts;
  session.panes[0].zoom = 3.0f;
  arrangeViewerPanels();
  EXPECT_NEAR(session.panes[0].zoom, 1000.0 / 2000 * 0.96, 1e-5);
  EXPECT_GT(platform::standIn().window.layouts, layouts);
}

}  // namespace
}  // namespace quillmere::test
