#include "view/status.h"

#include "documents/modes.h"
#include "view/navigation.h"
#include "view/view_test.h"

namespace quillmere::test {
namespace {

using testing::ElementsAre;

class StatusTest : public ViewTest {};

TEST_F(StatusTest, WithNothingOpenTheTitleIsTheProductsName) {
  session.active.path = u"C:\\left over.pdf";
  EXPECT_EQ(titleText(), u"Quillmere");
  session.viewMode = ViewMode::TwoDocuments;
  EXPECT_EQ(titleText(), u"Quillmere");
  session.viewerRole = true;
  EXPECT_EQ(titleText(), u"Quillmere - Viewer (Read-Only)");
}

TEST_F(StatusTest, TheTitleNamesTheFileBehindTheLastBackslash) {
  openInActive(simplePdf(1), u"C:\\a folder\\two words.pdf");
  for (const auto mode : {ViewMode::SinglePage, ViewMode::Book, ViewMode::IndependentPages}) {
    session.viewMode = mode;
    EXPECT_EQ(titleText(), u"Quillmere - two words.pdf");
  }
  session.viewerRole = true;
  EXPECT_EQ(titleText(), u"Quillmere - Viewer (Read-Only) - two words.pdf");
}

TEST_F(StatusTest, APercentSignInANameStaysAsItIs) {
  openInActive(simplePdf(1), u"C:\\100%s %d.pdf");
  EXPECT_EQ(titleText(), u"Quillmere - 100%s %d.pdf");
}

TEST_F(StatusTest, AChangedDocumentIsNotMarkedInTheTitle) {
  openInActive(simplePdf(1));
  session.active.dirty = true;
  EXPECT_EQ(titleText(), u"Quillmere - active.pdf");
}

TEST_F(StatusTest, TwoDocumentsAreBothNamed) {
  openInPane(0, simplePdf(1));
  openInPane(1, simplePdf(1));
  refreshTitle();
  EXPECT_EQ(window().title, u"Quillmere - left.pdf | right.pdf");
}

TEST_F(StatusTest, AnEmptyPaneHasAnEmptyName) {
  openInPane(1, simplePdf(1));
  EXPECT_EQ(titleText(), u"Quillmere -  | right.pdf");
}

TEST_F(StatusTest, PercentagesAreRounded) {
  struct {
    float zoom;
    const char16_t* text;
  } const cases[] = {
      {1.0f, u"  Zoom: 100%"},  {0.2f, u"  Zoom: 20%"},    {0.8475f, u"  Zoom: 85%"},
      {0.844f, u"  Zoom: 84%"}, {1.125f, u"  Zoom: 113%"}, {5.0f, u"  Zoom: 500%"},
  };
  for (const auto& c : cases) {
    session.panes[0].zoom = c.zoom;
    EXPECT_EQ(statusZoomText(), c.text);
  }
}

TEST_F(StatusTest, TheZoomIsTheActivePanes) {
  session.viewMode = ViewMode::IndependentPages;
  session.panes[0].zoom = 0.5f;
  session.panes[1].zoom = 2.0f;
  EXPECT_EQ(statusZoomText(), u"  Zoom: 50%");
  session.activePane = 1;
  EXPECT_EQ(statusZoomText(), u"  Zoom: 200%");
}

TEST_F(StatusTest, WithoutADocumentThePageTextIsEmpty) {
  for (const auto mode :
       {ViewMode::SinglePage, ViewMode::Book, ViewMode::IndependentPages, ViewMode::TwoDocuments}) {
    session.viewMode = mode;
    EXPECT_EQ(statusPageText(), u"");
  }
}

TEST_F(StatusTest, EachModeCountsItsPages) {
  openInActive(simplePdf(12));
  session.panes[0].currentPage = 4;
  session.panes[1].currentPage = 8;
  EXPECT_EQ(statusPageText(), u"\t\tPage 5 of 12  ");
  session.viewMode = ViewMode::Book;
  EXPECT_EQ(statusPageText(), u"\t\tL:5  R:9  of 12  ");
  session.viewMode = ViewMode::IndependentPages;
  EXPECT_EQ(statusPageText(), u"\t\tL:5  R:9  of 12  ");
}

TEST_F(StatusTest, TwoDocumentsCountBothPanes) {
  openInPane(0, simplePdf(3));
  openInPane(1, simplePdf(5));
  session.panes[1].currentPage = 2;
  EXPECT_EQ(statusPageText(), u"\t\tL:1/3  R:3/5  ");
}

TEST_F(StatusTest, AnEmptyPaneCountsNoPages) {
  openAndShow(simplePdf(3));
  setViewMode(ViewMode::TwoDocuments);
  EXPECT_EQ(statusPageText(), u"\t\tL:1/3  R:1/0  ");
  session.activePane = 1;
  EXPECT_EQ(statusPageText(), u"");
}

TEST_F(StatusTest, ABookOfOnePageShowsOneEverywhere) {
  openAndShow(simplePdf(1));
  setViewMode(ViewMode::Book);
  EXPECT_EQ(statusPageText(), u"\t\tL:1  R:1  of 1  ");
}

TEST_F(StatusTest, TheVersionPartTellsOfANewerVersion) {
  EXPECT_EQ(versionText(), u"  v1.4.3.242");
  session.latestVersion = u"1.5.0.1";
  refreshVersionPart();
  EXPECT_EQ(window().statusTexts[3], u"  v1.4.3.242 - Update to v1.5.0.1");
}

TEST_F(StatusTest, TheVersionPartIsALinkOnceThereIsANewerVersion) {
  const int edge = statusPartEdges(window().client.width)[2];
  const int height = platform::statusBarHeight();
  ASSERT_GT(height, 0);
  EXPECT_FALSE(onUpdateLink(edge + 10, 5));
  session.latestVersion = u"1.5.0.1";
  EXPECT_TRUE(onUpdateLink(edge, 0));
  EXPECT_TRUE(onUpdateLink(window().client.width - 1, height - 1));
  EXPECT_FALSE(onUpdateLink(edge - 1, 5));
  EXPECT_FALSE(onUpdateLink(window().client.width, 5));
  EXPECT_FALSE(onUpdateLink(edge + 10, -1));
  EXPECT_FALSE(onUpdateLink(edge + 10, height));
}

TEST_F(StatusTest, ThePagePartGrowsWithTheWindow) {
  EXPECT_THAT(statusPartEdges(1000), ElementsAre(88, 238, 780, -1));
  EXPECT_THAT(statusPartEdges(538), ElementsAre(88, 238, 318, -1));
  EXPECT_THAT(statusPartEdges(100), ElementsAre(88, 238, 318, -1));
  session.dpi = 144;
  EXPECT_THAT(statusPartEdges(1000), ElementsAre(132, 357, 670, -1));
}

TEST_F(StatusTest, TheSliderLiesOnItsPart) {
  EXPECT_EQ(zoomSliderPlace(22), (PixelRect{90, 2, 236, 20}));
}

TEST_F(StatusTest, ARefreshFillsTheWholeBar) {
  openAndShow(simplePdf(2, 400, 600));
  pane(0).zoom = 1.0f;
  refreshStatus();
  EXPECT_THAT(window().statusRightEdges, ElementsAre(88, 238, 780, -1));
  EXPECT_EQ(window().statusTexts[0], u"  Zoom: 100%");
  EXPECT_EQ(window().statusTexts[1], u"");
  EXPECT_EQ(window().statusTexts[2], u"\t\tPage 1 of 2  ");
  EXPECT_EQ(window().statusTexts[3], u"  v1.4.3.242");
  EXPECT_EQ(window().sliderPosition, 10);
  EXPECT_TRUE(window().sliderEnabled);
}

TEST_F(StatusTest, TheSliderNeedsAPage) {
  openInActive(simplePdf(1));
  refreshStatus();
  EXPECT_FALSE(window().sliderEnabled);
  EXPECT_EQ(window().statusTexts[2], u"\t\tPage 1 of 1  ");
}

}  // namespace
}  // namespace quillmere::test
