#include "app/viewer_role.h"

#include <gtest/gtest.h>

#include "documents/open.h"
#include "store/working_documents.h"
#include "support/pdf_builder.h"
#include "support/session_test.h"
#include "view/geometry.h"

namespace quillmere::test {
namespace {

class ViewerRoleTest : public SessionTest {
 protected:
  ViewerRoleTest() {
    session.viewerRole = true;
    session.navigationPanelVisible = true;
    session.binderPanelVisible = true;
  }

  void open(const std::string& bytes) {
    const std::u16string path = putPdf(u"a.pdf", bytes);
    ASSERT_TRUE(openDocument(&path, 0, kWorkingDocsLeaveAlone, false, nullptr));
  }
};

TEST_F(ViewerRoleTest, BookmarksShowOnlyWhereTheDocumentHasSome) {
  open(simplePdf(2));
  arrangeViewerPanels();
  EXPECT_FALSE(session.navigationPanelVisible);
  EXPECT_FALSE(session.binderPanelVisible);
  EXPECT_EQ(paneRect(0).left, 0);

  PdfOptions options;
  options.outline = {{u"One", pageDestination(1), {}}};
  open(buildPdf(std::vector<PdfPage>(2), options));
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
  open(simplePdf(1, 2000, 200));
  session.leftPanelWidth = 400;
  const int layouts = platform::standIn().window.layouts;
  session.panes[0].zoom = 3.0f;
  arrangeViewerPanels();
  EXPECT_NEAR(session.panes[0].zoom, 1000.0 / 2000 * 0.96, 1e-5);
  EXPECT_GT(platform::standIn().window.layouts, layouts);
}

}  // namespace
}  // namespace quillmere::test
