#include "nav/bookmarks.h"

#include <string>
#include <vector>

#include "nav/nav_test.h"
#include "view/geometry.h"
#include "view/render.h"

namespace quillmere::test {
namespace {

class BookmarksTest : public NavTest {
 protected:
  static bool openWith(const std::vector<PdfOutlineItem>& outline, int pages = 5) {
    const bool opened =
        open(buildPdf(std::vector<PdfPage>(static_cast<std::size_t>(pages)), {outline, "", ""}));
    ResolveBookmarks();
    return opened;
  }

  static std::vector<platform::StandInTreeRow>& rows() { return platform::standIn().treeRows; }
  static std::vector<std::u16string> texts() {
    std::vector<std::u16string> result;
    for (const auto& row : rows()) result.push_back(row.text);
    return result;
  }
};

using Texts = std::vector<std::u16string>;

TEST_F(BookmarksTest, TheTreeShowsTheOutlineInOrder) {
  ASSERT_TRUE(openWith({{u"One", "", {{u"Inner", "", {}}}}, {u"Two", "", {}}}));
  EXPECT_EQ(texts(), (Texts{u"One", u"Inner", u"Two"}));
  EXPECT_EQ(rows()[0].parent, platform::kNoTreeRow);
  EXPECT_EQ(rows()[1].parent, 1u);
  EXPECT_EQ(rows()[2].parent, platform::kNoTreeRow);
  EXPECT_EQ(platform::standIn().treeUpdates, 0);
}

TEST_F(BookmarksTest, WithHeadingsBothGroupsHaveARoot) {
  session.settings.markupsUnderBookmarks = false;
  ASSERT_TRUE(openWith({{u"One", "", {}}}));
  EXPECT_EQ(texts(), (Texts{u"Bookmarks", u"One", u"Markups"}));
  EXPECT_TRUE(rows()[0].expanded);
  EXPECT_EQ(rows()[1].parent, 1u);
  EXPECT_TRUE(rows()[2].expandable);
  EXPECT_EQ(rows()[2].parent, platform::kNoTreeRow);
}

TEST_F(BookmarksTest, ADocumentWithoutAnOutlineSaysSoUnderTheHeading) {
  session.settings.markupsUnderBookmarks = false;
  ASSERT_TRUE(openWith({}));
  EXPECT_EQ(texts(), (Texts{u"Bookmarks", u"(no bookmarks)", u"Markups"}));
  goToPage(0, 2, false);
  JumpToTreeEntry(rows()[1].entry);
  EXPECT_EQ(pane(0).currentPage, 2);
  EXPECT_TRUE(pane(0).backHistory.empty());
}

TEST_F(BookmarksTest, AnEmptyTitleIsReplaced) {
  ASSERT_TRUE(openWith({{u"", "", {}}}));
  EXPECT_EQ(texts(), Texts{u"(untitled)"});
}

TEST_F(BookmarksTest, TitlesKeepEveryScript) {
  ASSERT_TRUE(openWith({{u"\u00DCber \u4E2D \U0001F600", "", {}}}));
  EXPECT_EQ(texts(), Texts{u"\u00DCber \u4E2D \U0001F600"});
}

TEST_F(BookmarksTest, ABookmarkTurnsToItsPageAndCanBeUndone) {
  ASSERT_TRUE(openWith({{u"Four", pageDestination(4), {}}}));
  JumpToTreeEntry(0);
  EXPECT_EQ(pane(0).currentPage, 3);
  ASSERT_EQ(pane(0).backHistory.size(), 1u);
  EXPECT_EQ(pane(0).backHistory[0].page, 0);
}

TEST_F(BookmarksTest, TargetsAreLookedUpWhenTheyAreChosen) {
  ASSERT_TRUE(open(
      buildPdf(std::vector<PdfPage>(3),
               {{{u"A", pageDestination(2), {}}, {u"B", pageDestination(3, 500), {}}}, "", ""})));
  EXPECT_FALSE(session.bookmarks[1].resolved);
  JumpToTreeEntry(1);
  EXPECT_EQ(pane(0).currentPage, 2);
  EXPECT_TRUE(session.bookmarks[1].hasY);
  EXPECT_FALSE(session.bookmarks[0].resolved);
}

TEST_F(BookmarksTest, ThePageIsPaintedBeforeTheOutlineIsRead) {
  const int before = platform::standIn().window.updates;
  ASSERT_TRUE(openWith({{u"A", "", {}}}));
  EXPECT_EQ(platform::standIn().window.updates, before + 1);
}

TEST_F(BookmarksTest, ABookmarkOnTheShownPageAddsNoHistory) {
  ASSERT_TRUE(openWith({{u"One", pageDestination(1), {}}}));
  JumpToTreeEntry(0);
  EXPECT_TRUE(pane(0).backHistory.empty());
}

TEST_F(BookmarksTest, ATargetStandsALittleBelowTheTop) {
  for (const std::string& target :
       {std::string("/Dest [{page 2} /XYZ null 300 null]"),
        std::string("/Dest [{page 2} /FitH 300]"), std::string("/Dest [{page 2} /FitBH 300]"),
        std::string("/Dest [{page 2} /FitR 10 20 200 300]")}) {
    ASSERT_TRUE(openWith({{u"Two", target, {}}}));
    ASSERT_TRUE(session.bookmarks[0].hasY) << target;
    pane(0).zoomMode = kFitWidth;
    layoutAndRender(0);
    JumpToTreeEntry(0);
    EXPECT_NEAR(pageToPane(0, 0, 300).y, 24.0, 0.5) << target;
  }
}

TEST_F(BookmarksTest, ADestinationWithoutAPlaceOnlyTurnsThePage) {
  for (const std::string& target :
       {std::string("/Dest [{page 2} /Fit]"), std::string("/Dest [{page 2} /FitV 20]"),
        std::string("/Dest [{page 2} /XYZ null null null]")}) {
    ASSERT_TRUE(openWith({{u"Two", target, {}}}));
    EXPECT_FALSE(session.bookmarks[0].hasY) << target;
    const float panY = pane(0).panY;
    JumpToTreeEntry(0);
    EXPECT_EQ(pane(0).currentPage, 1);
    EXPECT_EQ(pane(0).panY, panY);
  }
}

TEST_F(BookmarksTest, AnEntryWithoutADestinationLeadsNowhere) {
  ASSERT_TRUE(openWith({{u"Nothing", "", {}}}));
  EXPECT_EQ(session.bookmarks[0].page, -1);
  goToPage(0, 3, false);
  for (const std::int32_t index : {0, -1, 1, 1000}) JumpToTreeEntry(index);
  EXPECT_EQ(pane(0).currentPage, 3);
}

TEST_F(BookmarksTest, TheOrderListHoldsTargetsAndRows) {
  ASSERT_TRUE(openWith({{u"A", pageDestination(2, 500), {}}, {u"B", pageDestination(3), {}}}));
  ASSERT_EQ(session.bookmarkOrder.size(), 2u);
  EXPECT_EQ(session.bookmarkOrder[0].page, 1);
  EXPECT_DOUBLE_EQ(session.bookmarkOrder[0].y, 500);
  EXPECT_DOUBLE_EQ(session.bookmarkOrder[1].y, 1e18);
  EXPECT_EQ(session.bookmarkOrder[1].row, 2u);
}

TEST_F(BookmarksTest, JumpsGoToTheActivePaneWherePanesAreIndependent) {
  ASSERT_TRUE(openWith({{u"Four", pageDestination(4), {}}}));
  setViewMode(ViewMode::IndependentPages);
  setActivePane(1);
  JumpToTreeEntry(0);
  EXPECT_EQ(pane(0).currentPage, 0);
  EXPECT_EQ(pane(1).currentPage, 3);
}

TEST_F(BookmarksTest, ABookTurnsAsAWhole) {
  ASSERT_TRUE(openWith({{u"Three", pageDestination(3), {}}}));
  setViewMode(ViewMode::Book);
  setActivePane(1);
  JumpToTreeEntry(0);
  EXPECT_EQ(pane(0).currentPage, 2);
  EXPECT_EQ(pane(1).currentPage, 3);
}

TEST_F(BookmarksTest, TheTreeFollowsTheActiveDocument) {
  setViewMode(ViewMode::TwoDocuments);
  ASSERT_TRUE(open(buildPdf({PdfPage{}}, {{{u"Left", "", {}}}, "", ""}), 0, u"C:\\l.pdf"));
  ASSERT_TRUE(open(buildPdf({PdfPage{}}, {{{u"Right", "", {}}}, "", ""}), 1, u"C:\\r.pdf"));
  EXPECT_EQ(texts(), Texts{u"Left"});
  setActivePane(1);
  EXPECT_EQ(texts(), Texts{u"Right"});
}

TEST_F(BookmarksTest, ADeepOutlineIsShownWhole) {
  PdfOutlineItem item{u"level", "", {}};
  for (int level = 1; level < 60; ++level) item = PdfOutlineItem{u"level", "", {item}};
  ASSERT_TRUE(openWith({item}));
  EXPECT_EQ(rows().size(), 60u);
  EXPECT_EQ(rows()[59].parent, 59u);
}

TEST_F(BookmarksTest, LevelsBeyondWhatATreeCanHoldStandSideBySide) {
  PdfOutlineItem item{u"level", "", {}};
  for (int level = 1; level < 1000; ++level) item = PdfOutlineItem{u"level", "", {item}};
  ASSERT_TRUE(openWith({item}));
  ASSERT_EQ(rows().size(), 1000u);
  EXPECT_EQ(rows()[199].parent, 199u);
  EXPECT_EQ(rows()[200].parent, 199u);
  EXPECT_EQ(rows()[999].parent, 199u);
}

TEST_F(BookmarksTest, AWideOutlineIsShownWhole) {
  ASSERT_TRUE(openWith(std::vector<PdfOutlineItem>(10000, {u"entry", pageDestination(2), {}})));
  EXPECT_EQ(rows().size(), 10000u);
  EXPECT_EQ(session.bookmarks.back().page, 1);
}

// An outline whose second item names the first one as its next sibling and as its child.
std::string cyclicOutlinePdf() {
  PdfFile file;
  const int catalog = file.reserve();
  const int pages = file.reserve();
  const int page = file.add("<< /Type /Page /MediaBox [0 0 200 200] /Parent " +
                            PdfFile::reference(pages) + " >>");
  file.set(pages, "<< /Type /Pages /Count 1 /Kids [" + PdfFile::reference(page) + "] >>");
  const int outlines = file.reserve();
  const int first = file.reserve();
  const int second = file.reserve();
  file.set(outlines, "<< /First " + PdfFile::reference(first) + " /Last " +
                         PdfFile::reference(second) + " /Count 2 >>");
  file.set(first, "<< /Title (first) /Parent " + PdfFile::reference(outlines) + " /Next " +
                      PdfFile::reference(second) + " >>");
  file.set(second, "<< /Title (second) /Parent " + PdfFile::reference(outlines) + " /Next " +
                       PdfFile::reference(first) + " /First " + PdfFile::reference(first) +
                       " /Last " + PdfFile::reference(second) + " /Count 1 >>");
  file.set(catalog, "<< /Type /Catalog /Pages " + PdfFile::reference(pages) + " /Outlines " +
                        PdfFile::reference(outlines) + " >>");
  return file.finish(catalog);
}

TEST_F(BookmarksTest, AnOutlineThatRefersBackToItselfEnds) {
  ASSERT_TRUE(open(cyclicOutlinePdf()));
  EXPECT_EQ(texts(), (Texts{u"first", u"second"}));
}

TEST_F(BookmarksTest, DestinationsThatPointNowhereDoNothing) {
  ASSERT_TRUE(openWith({{u"beyond", "/Dest [99 /Fit]", {}},
                        {u"number", "/Dest 7", {}},
                        {u"name", "/Dest (missing)", {}},
                        {u"null", "/Dest [null /XYZ 0 0 0]", {}}}));
  goToPage(0, 2, false);
  for (std::int32_t index = 0; index < 4; ++index) {
    const std::int32_t page = session.bookmarks[static_cast<std::size_t>(index)].page;
    JumpToTreeEntry(index);
    EXPECT_TRUE(pane(0).page);
    if (page < 0) {
      EXPECT_EQ(pane(0).currentPage, 2);
    }
    goToPage(0, 2, false);
  }
}

}  // namespace
}  // namespace quillmere::test
