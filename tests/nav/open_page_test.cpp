#include <string>
#include <vector>

#include "annot/markup_pdf.h"
#include "documents/modes.h"
#include "nav/bookmarks.h"
#include "nav/find_view.h"
#include "nav/jump_history.h"
#include "nav/links.h"
#include "nav/nav_test.h"
#include "view/geometry.h"
#include "view/render.h"

namespace quillmere::test {
namespace {

// What leads to a page where the number shown is not that of the page which is open.
class OpenPageTest : public NavTest {
 protected:
  static constexpr int kPages = 6;

  // Page i (from 1) reads "word i" and links to page 5 at its top left and to page 6 below that.
  static std::string pages(const std::vector<PdfOutlineItem>& outline = {}) {
    std::vector<PdfPage> list;
    for (int i = 1; i <= kPages; ++i) {
      PdfPage page = pageWith({"word" + std::to_string(i)});
      page.annotations = {linkAnnotation(0, 692, 60, 792, pageDestination(5)),
                          linkAnnotation(0, 592, 60, 692, pageDestination(6))};
      if (i == 5) page.annotations.push_back(markup("Highlight", {{72, 300, 90, 310}}));
      list.push_back(page);
    }
    return buildPdf(list, {outline, "", ""});
  }

  // The last page stays open under the number of the one before.
  static void showLastPageUnderTheNumberBefore() {
    goToPage(0, kPages - 1, false);
    setViewMode(ViewMode::Book);
    setViewMode(ViewMode::SinglePage);
    ASSERT_EQ(pane(0).currentPage, kPages - 2);
    ASSERT_EQ(pane(0).openPage, kPages - 1);
  }

  // The first page is open under the number of `index`.
  static void refreshOn(std::int32_t index) {
    session.viewerRole = true;
    goToPage(0, index, false);
    refreshFromSource();
    ASSERT_EQ(pane(0).currentPage, index);
    ASSERT_EQ(pane(0).openPage, 0);
  }

  static bool followLinkAt(double x, double y) {
    const PixelRect rect = paneRect(0);
    const PanePoint place = pageToPane(0, x, y);
    return FollowLink(0, LinkAtPoint(0, rect.left + static_cast<int>(place.x),
                                     rect.top + static_cast<int>(place.y)));
  }

  static std::int32_t entryOf(const std::u16string& text) {
    for (const platform::StandInTreeRow& row : platform::standIn().navigationTree.rows) {
      if (!row.removed && row.content.text == text) return row.content.entry;
    }
    ADD_FAILURE() << "no such row";
    return -1;
  }

  static void expectShown(std::int32_t index) {
    EXPECT_EQ(pane(0).currentPage, index);
    EXPECT_EQ(pane(0).openPage, index);
  }
};

TEST_F(OpenPageTest, AHitTurnsToItsPageThoughItsNumberIsShownAlready) {
  ASSERT_TRUE(open(pages()));
  showLastPageUnderTheNumberBefore();
  type(u"word5");
  FindStep(1);
  expectShown(4);
  EXPECT_EQ(findHitQuads(0).size(), 1u);

  refreshOn(3);
  type(u"word4");
  FindStep(1);
  expectShown(3);
  EXPECT_EQ(findHitQuads(0).size(), 1u);
}

TEST_F(OpenPageTest, AHitOnTheOpenPageNeedsNoTurn) {
  ASSERT_TRUE(open(pages()));
  showLastPageUnderTheNumberBefore();
  type(u"word6");
  FindStep(1);
  EXPECT_EQ(pane(0).openPage, 5);
  EXPECT_TRUE(pane(0).backHistory.empty());
  EXPECT_EQ(findHitQuads(0).size(), 1u);
}

TEST_F(OpenPageTest, ABookmarkTurnsToItsPageAndBackLeadsToWhereThePersonWas) {
  ASSERT_TRUE(open(pages({{u"Five", pageDestination(5, 300), {}}})));
  showLastPageUnderTheNumberBefore();
  JumpToTreeEntry(0);
  expectShown(4);
  ASSERT_EQ(pane(0).backHistory.size(), 1u);
  ASSERT_TRUE(JumpBack(0));
  expectShown(5);
  ASSERT_TRUE(JumpForward(0));
  expectShown(4);

  refreshOn(4);
  JumpToTreeEntry(0);
  expectShown(4);
}

TEST_F(OpenPageTest, ABookmarkOnTheOpenPageOnlyScrolls) {
  ASSERT_TRUE(open(pages({{u"Six", pageDestination(6, 300), {}}})));
  showLastPageUnderTheNumberBefore();
  pane(0).zoomMode = kFitWidth;
  layoutAndRender(0);
  JumpToTreeEntry(0);
  EXPECT_EQ(pane(0).openPage, 5);
  EXPECT_TRUE(pane(0).backHistory.empty());
  EXPECT_NEAR(pageToPane(0, 0, 300).y, 24.0, 0.5);
}

TEST_F(OpenPageTest, AMarkupsRowTurnsToItsPage) {
  session.navigationPanelVisible = true;
  session.settings.markupsUnderBookmarks = true;
  ASSERT_TRUE(open(pages()));
  showLastPageUnderTheNumberBefore();
  JumpToTreeEntry(entryOf(u"Highlight (p.5)"));
  expectShown(4);

  refreshOn(4);
  JumpToTreeEntry(entryOf(u"Highlight (p.5)"));
  expectShown(4);
}

TEST_F(OpenPageTest, ALinkTurnsToItsPageAndCanBeUndone) {
  ASSERT_TRUE(open(pages()));
  showLastPageUnderTheNumberBefore();
  EXPECT_TRUE(followLinkAt(30, 742));
  expectShown(4);
  ASSERT_EQ(pane(0).backHistory.size(), 1u);
  ASSERT_TRUE(JumpBack(0));
  expectShown(5);
}

TEST_F(OpenPageTest, ALinkToTheOpenPageAddsNoHistory) {
  ASSERT_TRUE(open(pages()));
  showLastPageUnderTheNumberBefore();
  EXPECT_TRUE(followLinkAt(30, 642));
  expectShown(5);
  EXPECT_TRUE(pane(0).backHistory.empty());
}

TEST_F(OpenPageTest, TurningToTheNumberShownOpensItsPage) {
  ASSERT_TRUE(open(pages()));
  showLastPageUnderTheNumberBefore();
  goToPage(0, 4, false);
  expectShown(4);
  refreshOn(5);
  turnPageByKey(0, PageKey::PageDown);
  expectShown(5);
}

TEST_F(OpenPageTest, TheRightPageOfABookFollowsWhateverNumberItHadBefore) {
  ASSERT_TRUE(open(pages()));
  setViewMode(ViewMode::Book);
  goToPage(0, 2, false);
  setActivePane(1);
  session.viewerRole = true;
  refreshFromSource();
  ASSERT_EQ(pane(1).currentPage, 3);
  ASSERT_EQ(pane(1).openPage, 1);
  goToPage(0, 2, false);
  EXPECT_EQ(pane(0).openPage, 2);
  EXPECT_EQ(pane(1).openPage, 3);
}

TEST_F(OpenPageTest, APositionInABookIsThatOfItsTwoPages) {
  ASSERT_TRUE(open(pages({{u"One", pageDestination(1), {}}})));
  goToPage(0, kPages - 1, false);
  setViewMode(ViewMode::Book);
  ASSERT_EQ(pane(0).openPage, 5);
  JumpToTreeEntry(0);
  ASSERT_EQ(pane(0).openPage, 0);
  ASSERT_TRUE(JumpBack(0));
  EXPECT_EQ(pane(0).openPage, 4);
  EXPECT_EQ(pane(1).openPage, 5);
}

TEST_F(OpenPageTest, ThePaneWithoutAPageInABookOfOnePageShowsNothing) {
  std::vector<std::string> lines(50, "line");
  lines.back() = "needle";
  ASSERT_TRUE(open(buildPdf({pageWith(lines)})));
  setViewMode(ViewMode::Book);
  setActivePane(1);
  EXPECT_EQ(paneShowing(1, 0), 0);
  EXPECT_EQ(paneShowing(0, 0), 0);
  EXPECT_EQ(paneShowing(0, 1), -1);
  pane(0).zoomMode = kCustomFit;
  pane(0).zoom = 4;
  layoutAndRender(0);
  const float panY = pane(0).panY;
  type(u"needle");
  FindStep(1);
  EXPECT_LT(pane(0).panY, panY);
}

}  // namespace
}  // namespace quillmere::test
