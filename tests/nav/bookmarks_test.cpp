#include "nav/bookmarks.h"

#include <map>
#include <string>
#include <vector>

#include "documents/close.h"
#include "nav/nav_test.h"
#include "session/page_memory.h"
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

  static std::vector<platform::StandInTreeRow>& rows() {
    return platform::standIn().navigationTree.rows;
  }
  static const platform::StandInTreeRow& row(std::int32_t entry) {
    return rows().at(session.bookmarkOrder.at(static_cast<std::size_t>(entry)).row - 1);
  }

  // Expands every expandable row, those that this adds included.
  static void expandAll() {
    for (std::size_t i = 0; i < rows().size(); ++i) {
      if (rows()[i].content.expandable) FillTreeEntry(rows()[i].content.entry);
    }
  }

  // Texts of the rows from top to bottom, indented by level.
  static std::vector<std::u16string> texts() {
    std::map<platform::TreeRow, std::vector<platform::TreeRow>> rowsOf;
    for (std::size_t i = 0; i < rows().size(); ++i) {
      std::vector<platform::TreeRow>& siblings = rowsOf[rows()[i].place.parent];
      EXPECT_EQ(rows()[i].place.previous,
                siblings.empty() ? platform::kNoTreeRow : siblings.back());
      siblings.push_back(i + 1);
    }
    std::vector<std::u16string> result;
    appendTexts(rowsOf, platform::kNoTreeRow, u"", result);
    return result;
  }

 private:
  static void appendTexts(std::map<platform::TreeRow, std::vector<platform::TreeRow>>& rowsOf,
                          platform::TreeRow parent, const std::u16string& indentation,
                          std::vector<std::u16string>& result) {
    for (const platform::TreeRow row : rowsOf[parent]) {
      result.push_back(indentation + rows()[row - 1].content.text);
      appendTexts(rowsOf, row, indentation + u" ", result);
    }
  }
};

using Texts = std::vector<std::u16string>;

TEST_F(BookmarksTest, TheTreeShowsTheOutlineInOrder) {
  ASSERT_TRUE(openWith({{u"One", "", {{u"Inner", "", {}}}}, {u"Two", "", {}}}));
  expandAll();
  EXPECT_EQ(texts(), (Texts{u"One", u" Inner", u"Two"}));
  EXPECT_EQ(platform::standIn().navigationTree.updates, 0);
}

TEST_F(BookmarksTest, WithHeadingsBothGroupsHaveARoot) {
  session.settings.markupsUnderBookmarks = false;
  ASSERT_TRUE(openWith({{u"One", "", {}}}));
  EXPECT_EQ(texts(), (Texts{u"Bookmarks", u" One", u"Markups"}));
  EXPECT_TRUE(rows()[0].expanded);
  EXPECT_FALSE(rows()[1].content.expandable);
  EXPECT_TRUE(rows()[2].content.expandable);
}

TEST_F(BookmarksTest, ADocumentWithoutAnOutlineSaysSoUnderTheHeading) {
  session.settings.markupsUnderBookmarks = false;
  ASSERT_TRUE(openWith({}));
  EXPECT_EQ(texts(), (Texts{u"Bookmarks", u" (no bookmarks)", u"Markups"}));
  goToPage(0, 2, false);
  JumpToTreeEntry(rows()[1].content.entry);
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

TEST_F(BookmarksTest, ATargetAtThePagesEndKeepsAPartOfThePageInSight) {
  ASSERT_TRUE(openWith({{u"End", pageDestination(2, 0), {}}}));
  JumpToTreeEntry(0);
  ASSERT_EQ(pane(0).currentPage, 1);
  EXPECT_NEAR(pageToPane(0, 0, 0).y, 80.0, 1.0);
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

TEST_F(BookmarksTest, ATargetOnTheRightPageOfABookScrollsThatPaneAlone) {
  ASSERT_TRUE(
      openWith({{u"Two", pageDestination(2, 300), {}}, {u"Five", pageDestination(5, 300), {}}}));
  setViewMode(ViewMode::Book);
  for (int index = 0; index < 2; ++index) {
    pane(index).zoomMode = kCustomFit;
    pane(index).zoom = 2;
    layoutAndRender(index);
  }
  session.settings.bookRevertToFit = false;
  const float leftPanY = pane(0).panY;
  JumpToTreeEntry(0);
  EXPECT_EQ(pane(0).currentPage, 0);
  EXPECT_EQ(pane(0).panY, leftPanY);
  EXPECT_TRUE(pane(0).backHistory.empty());
  EXPECT_NEAR(pageToPane(1, 0, 300).y, 24.0, 0.5);

  // The last page is on the right, whichever was asked for.
  JumpToTreeEntry(1);
  EXPECT_EQ(pane(0).currentPage, 3);
  EXPECT_EQ(pane(0).backHistory.size(), 1u);
  EXPECT_NEAR(pageToPane(1, 0, 300).y, 24.0, 0.5);
}

TEST_F(BookmarksTest, TheTreeFollowsTheActiveDocument) {
  setViewMode(ViewMode::TwoDocuments);
  ASSERT_TRUE(open(buildPdf({PdfPage{}}, {{{u"Left", "", {}}}, "", ""}), 0, u"C:\\l.pdf"));
  ASSERT_TRUE(open(buildPdf({PdfPage{}}, {{{u"Right", "", {}}}, "", ""}), 1, u"C:\\r.pdf"));
  EXPECT_EQ(texts(), Texts{u"Left"});
  setActivePane(1);
  EXPECT_EQ(texts(), Texts{u"Right"});
}

TEST_F(BookmarksTest, RowsBelowAnotherComeWhenItIsExpanded) {
  ASSERT_TRUE(openWith({{u"A", "", {{u"B", "", {{u"C", "", {}}}}, {u"D", "", {}}}},
                        {u"E", "", {{u"F", pageDestination(3), {}}}}}));
  EXPECT_EQ(texts(), (Texts{u"A", u"E"}));
  EXPECT_TRUE(row(0).content.expandable);
  FillTreeEntry(0);
  EXPECT_EQ(texts(), (Texts{u"A", u" B", u" D", u"E"}));
  EXPECT_TRUE(row(1).content.expandable);
  EXPECT_FALSE(row(3).content.expandable);
  FillTreeEntry(4);
  FillTreeEntry(1);
  EXPECT_EQ(texts(), (Texts{u"A", u" B", u"  C", u" D", u"E", u" F"}));
  JumpToTreeEntry(row(5).content.entry);
  EXPECT_EQ(pane(0).currentPage, 2);
  EXPECT_EQ(platform::standIn().navigationTree.updates, 0);
}

TEST_F(BookmarksTest, ExpandingAgainAddsNoRows) {
  ASSERT_TRUE(openWith({{u"A", "", {{u"B", "", {}}}}, {u"C", "", {}}}));
  for (const std::int32_t index : {0, 0, 1, 2, -1, 3}) FillTreeEntry(index);
  EXPECT_EQ(texts(), (Texts{u"A", u" B", u"C"}));
}

TEST_F(BookmarksTest, AnEntryWithoutARowOfItsOwnIsNotFilled) {
  ASSERT_TRUE(openWith({{u"A", "", {{u"B", "", {{u"C", "", {}}}}}}}));
  FillTreeEntry(1);
  EXPECT_EQ(texts(), Texts{u"A"});
}

TEST_F(BookmarksTest, ADeepOutlineIsShownWhole) {
  PdfOutlineItem item{u"level", "", {}};
  for (int level = 1; level < 60; ++level) item = PdfOutlineItem{u"level", "", {item}};
  ASSERT_TRUE(openWith({item}));
  expandAll();
  ASSERT_EQ(rows().size(), 60u);
  EXPECT_EQ(texts().back(), std::u16string(59, u' ') + u"level");
}

TEST_F(BookmarksTest, LevelsBeyondWhatATreeCanHoldStandSideBySide) {
  PdfOutlineItem item{u"level", "", {}};
  for (int level = 1; level < 1000; ++level) item = PdfOutlineItem{u"level", "", {item}};
  ASSERT_TRUE(openWith({item}));
  expandAll();
  ASSERT_EQ(rows().size(), 1000u);
  const Texts shown = texts();
  EXPECT_EQ(shown[198], std::u16string(198, u' ') + u"level");
  for (const std::size_t at : {199u, 200u, 999u}) {
    EXPECT_EQ(shown[at], std::u16string(199, u' ') + u"level") << at;
  }
}

TEST_F(BookmarksTest, AWideOutlineIsShownWhole) {
  ASSERT_TRUE(openWith(std::vector<PdfOutlineItem>(10000, {u"entry", pageDestination(2), {}})));
  EXPECT_EQ(rows().size(), 10000u);
  EXPECT_EQ(texts().size(), 10000u);
  EXPECT_EQ(session.bookmarks.back().page, 1);
}

// `branches` chains, each of them `levels` deep.
std::vector<PdfOutlineItem> chains(int branches, int levels) {
  PdfOutlineItem chain{u"leaf", pageDestination(2), {}};
  for (int level = 1; level < levels; ++level) chain = PdfOutlineItem{u"node", "", {chain}};
  return std::vector<PdfOutlineItem>(static_cast<std::size_t>(branches), chain);
}

TEST_F(BookmarksTest, OfALargeNestedOutlineOnlyTheFirstLevelHasRows) {
  ASSERT_TRUE(openWith(chains(167, 60)));
  EXPECT_EQ(session.bookmarks.size(), 10020u);
  EXPECT_EQ(rows().size(), 167u);
  expandAll();
  EXPECT_EQ(rows().size(), 10020u);
  EXPECT_EQ(texts().back(), std::u16string(59, u' ') + u"leaf");
  EXPECT_EQ(session.bookmarks.back().page, 1);
}

// One page and an outline of the items that are given, by "{item N}", N from 1; the first one is
// the first of the outline.
std::string outlinePdf(const std::vector<std::string>& items) {
  PdfFile file;
  const int catalog = file.reserve();
  const int pages = file.reserve();
  const int page = file.add("<< /Type /Page /MediaBox [0 0 200 200] /Parent " +
                            PdfFile::reference(pages) + " >>");
  file.set(pages, "<< /Type /Pages /Count 1 /Kids [" + PdfFile::reference(page) + "] >>");
  const int outlines = file.reserve();
  file.set(outlines, "<< /First " + PdfFile::reference(outlines + 1) + " >>");
  for (std::string item : items) {
    for (std::size_t at = item.find("{item "); at != std::string::npos; at = item.find("{item ")) {
      const std::size_t end = item.find('}', at);
      const int number = std::stoi(item.substr(at + 6, end - at - 6));
      item.replace(at, end + 1 - at, PdfFile::reference(outlines + number));
    }
    file.add("<< " + item + " >>");
  }
  file.set(catalog, "<< /Type /Catalog /Pages " + PdfFile::reference(pages) + " /Outlines " +
                        PdfFile::reference(outlines) + " >>");
  return file.finish(catalog);
}

TEST_F(BookmarksTest, AnOutlineThatRefersBackToItselfEnds) {
  ASSERT_TRUE(open(outlinePdf(
      {"/Title (first) /Next {item 2}", "/Title (second) /Next {item 1} /First {item 1}"})));
  expandAll();
  EXPECT_EQ(texts(), (Texts{u"first", u"second"}));
}

TEST_F(BookmarksTest, AnItemThatIsItsOwnChildIsShownOnce) {
  ASSERT_TRUE(open(outlinePdf({"/Title (own child) /First {item 1} /Next {item 2}",
                               "/Title (own sibling) /Next {item 2}"})));
  expandAll();
  EXPECT_EQ(texts(), (Texts{u"own child", u"own sibling"}));
}

// Each of forty items has the next two as its children, so there are a million millions of ways
// through the outline.
TEST_F(BookmarksTest, ItemsSharedByManyParentsAreShownOnce) {
  std::vector<std::string> items;
  for (int i = 1; i <= 40; ++i) {
    std::string item = "/Title (" + std::to_string(i) + ")";
    if (i < 40) item += " /First {item " + std::to_string(i + 1) + "}";
    if (i < 39) item += " /Next {item " + std::to_string(i + 2) + "}";
    items.push_back(item);
  }
  ASSERT_TRUE(open(outlinePdf(items)));
  expandAll();
  EXPECT_EQ(rows().size(), 40u);
}

TEST_F(BookmarksTest, DestinationsThatPointNowhereDoNothing) {
  ASSERT_TRUE(openWith({{u"name", "/Dest (missing)", {}},
                        {u"no page", "/Dest [null /XYZ 0 0 0]", {}},
                        {u"not a page", "/Dest [(text) /Fit]", {}},
                        {u"below the first", "/Dest [-1 /Fit]", {}},
                        {u"empty", "/Dest []", {}},
                        {u"number", "/Dest 7", {}},
                        {u"no object", "/Dest [9999 0 R /Fit]", {}},
                        {u"no destination", "/A << /S /GoTo >>", {}},
                        {u"another file", "/A << /S /Launch /F (x.exe) >>", {}}}));
  goToPage(0, 2, false);
  for (std::int32_t index = 0; index < 9; ++index) {
    JumpToTreeEntry(index);
    EXPECT_EQ(pane(0).currentPage, 2) << index;
    EXPECT_TRUE(pane(0).backHistory.empty()) << index;
  }
}

TEST_F(BookmarksTest, ABookmarkIntoAnotherFileDoesNothing) {
  const std::vector<std::string> targets = {
      "/A << /S /GoToR /F (other.pdf) /D [3 /XYZ 0 300 null] >>",
      "/A << /S /GoToR /F (other.pdf) /D (chapter) >>",
      "/A << /S /GoToE /F (other.pdf) /D [3 /Fit] >>",
      "/A << /S /Launch /F (other.pdf) /D [3 /Fit] >>",
      "/Dest (missing) /A << /S /GoToR /F (other.pdf) /D [3 /Fit] >>"};
  std::vector<PdfOutlineItem> outline;
  for (const std::string& target : targets) outline.push_back({u"elsewhere", target, {}});
  ASSERT_TRUE(openWith(outline));
  const float panY = pane(0).panY;
  for (std::size_t i = 0; i < targets.size(); ++i) {
    JumpToTreeEntry(static_cast<std::int32_t>(i));
    EXPECT_EQ(pane(0).currentPage, 0) << targets[i];
    EXPECT_EQ(pane(0).panY, panY) << targets[i];
    EXPECT_TRUE(pane(0).backHistory.empty()) << targets[i];
    EXPECT_EQ(session.bookmarkOrder[i].page, -1) << targets[i];
    EXPECT_EQ(session.bookmarkOrder[i].y, kNoBookmarkY) << targets[i];
  }
  EXPECT_TRUE(platform::standIn().openedWithSystem.empty());
  EXPECT_TRUE(platform::standIn().processes.empty());
}

TEST_F(BookmarksTest, ADestinationOfTheBookmarksOwnComesBeforeItsAction) {
  ASSERT_TRUE(openWith(
      {{u"Four", pageDestination(4) + " /A << /S /GoToR /F (other.pdf) /D [1 /Fit] >>", {}},
       {u"Two", "/A << /S /GoTo /D [{page 2} /Fit] >>", {}}}));
  JumpToTreeEntry(0);
  EXPECT_EQ(pane(0).currentPage, 3);
  JumpToTreeEntry(1);
  EXPECT_EQ(pane(0).currentPage, 1);
}

TEST_F(BookmarksTest, APageBeyondTheEndLeadsNowhere) {
  ASSERT_TRUE(openWith({{u"beyond", "/Dest [99 /Fit]", {}}, {u"last", "/Dest [4 /Fit]", {}}}));
  goToPage(0, 2, false);
  JumpToTreeEntry(0);
  EXPECT_EQ(pane(0).currentPage, 2);
  EXPECT_TRUE(pane(0).backHistory.empty());
  JumpToTreeEntry(1);
  EXPECT_EQ(pane(0).currentPage, 4);
}

// Two nodes of the page tree that list each other's ancestor twice; a search for a page that is not
// in the tree can go round for ever.
TEST_F(BookmarksTest, TargetsInAPageTreeThatLeadsBackAreFoundOrNot) {
  PdfFile file;
  const int catalog = file.reserve();
  const int tree = file.reserve();
  const int node = file.reserve();
  const int outline = file.reserve();
  const auto addPage = [&](int parent) {
    return file.add("<< /Type /Page /MediaBox [0 0 200 200] /Parent " + PdfFile::reference(parent) +
                    " >>");
  };
  const std::string first = PdfFile::reference(addPage(tree));
  const std::string second = PdfFile::reference(addPage(node));
  const std::string stray = PdfFile::reference(addPage(tree));
  const std::string up = PdfFile::reference(tree);
  file.set(tree,
           "<< /Type /Pages /Count 3 /Kids [" + first + " " + PdfFile::reference(node) + "] >>");
  file.set(node, "<< /Type /Pages /Count 3 /Kids [" + up + " " + second + " " + up + "] >>");
  const int stranger = file.add("<< /Title (stray) /Dest [" + stray + " /Fit] >>");
  const int known = file.add("<< /Title (first) /Dest [" + first + " /XYZ 0 100 0] /Next " +
                             PdfFile::reference(stranger) + " >>");
  file.set(outline, "<< /First " + PdfFile::reference(known) + " >>");
  file.set(catalog,
           "<< /Type /Catalog /Pages " + up + " /Outlines " + PdfFile::reference(outline) + " >>");
  ASSERT_TRUE(open(file.finish(catalog)));
  ResolveBookmarks();
  ASSERT_EQ(session.bookmarks.size(), 2u);
  EXPECT_EQ(session.bookmarks[0].page, 0);
  EXPECT_EQ(session.bookmarks[1].page, -1);
  JumpToTreeEntry(1);
  EXPECT_EQ(pane(0).currentPage, 0);
}

// Items that no row shows yet are found by their place in the outline, whatever was forgotten
// since.
TEST_F(BookmarksTest, TargetsAreFoundAfterMemoryWasGivenBack) {
  const std::vector<PdfOutlineItem> outline = {
      {u"A",
       pageDestination(2),
       {{u"B", pageDestination(3, 400), {{u"C", pageDestination(4), {}}}}}},
      {u"D", pageDestination(70), {}}};
  ASSERT_TRUE(open(buildPdf(std::vector<PdfPage>(100), {outline, "", ""})));
  noteDocumentRead(0);
  JumpToTreeEntry(2);
  EXPECT_EQ(pane(0).currentPage, 3);
  noteDocumentRead(0);
  ResolveBookmarks();
  std::vector<std::int32_t> pages;
  for (const BookmarkOrderEntry& entry : session.bookmarkOrder) pages.push_back(entry.page);
  EXPECT_EQ(pages, (std::vector<std::int32_t>{1, 2, 3, 69}));
  EXPECT_DOUBLE_EQ(session.bookmarkOrder[1].y, 400);
}

// Documents that go, each with an outline of one entry that bears the document's name.
class BookmarksOfClosedDocumentsTest : public BookmarksTest {
 protected:
  static bool openNamed(const std::u16string& name, int pane) {
    return open(buildPdf({PdfPage{}}, {{{name, "", {}}}, "", ""}), pane, pathFor(name));
  }
  static bool openGarbage() { return open(garbageFile(), 0, u"C:\\garbage.pdf"); }
  static std::u16string pathFor(const std::u16string& name) { return u"C:\\" + name + u".pdf"; }

  static void openTwo() {
    session.viewMode = ViewMode::TwoDocuments;
    ASSERT_TRUE(openNamed(u"Left", 0));
    ASSERT_TRUE(openNamed(u"Right", 1));
  }

  static void expectEntries(const Texts& expected) {
    EXPECT_EQ(texts(), expected);
    Texts titles;
    for (const BookmarkEntry& entry : session.bookmarks) titles.push_back(entry.title);
    EXPECT_EQ(titles, expected);
    EXPECT_EQ(session.bookmarkOrder.size(), expected.size());
  }
};

TEST_F(BookmarksOfClosedDocumentsTest, ADocumentClosedByItsPathTakesItsEntriesAlong) {
  const std::u16string names[] = {u"Left", u"Right"};
  for (const int active : {0, 1}) {
    resetSession();
    openTwo();
    setActivePane(active);
    closeDocumentByPath(pathFor(names[active]));
    expectEntries({});
    setActivePane(1 - active);
    expectEntries({names[1 - active]});
  }
}

TEST_F(BookmarksOfClosedDocumentsTest, ADocumentClosedBesideTheActiveOneLeavesItsEntries) {
  openTwo();
  closeDocumentByPath(pathFor(u"Right"));
  expectEntries({u"Left"});
}

TEST_F(BookmarksOfClosedDocumentsTest, TheCloseCommandTakesTheEntriesOfItsPaneAlong) {
  openTwo();
  setActivePane(1);
  closeCommand(1);
  expectEntries({});
  setActivePane(0);
  expectEntries({u"Left"});
  closeCommand(0);
  expectEntries({});
}

TEST_F(BookmarksOfClosedDocumentsTest, ADocumentThatTakesBothPanesBringsItsEntries) {
  openTwo();
  ASSERT_TRUE(open(pathFor(u"Right")));
  ASSERT_EQ(session.viewMode, ViewMode::IndependentPages);
  expectEntries({u"Right"});
}

TEST_F(BookmarksOfClosedDocumentsTest, AFailedOpenLeavesTheEntriesOfWhatIsStillOpen) {
  using platform::BoxAnswer;
  platform::standIn().boxAnswers = {BoxAnswer::Ok, BoxAnswer::Ok, BoxAnswer::Ok};
  ASSERT_TRUE(openNamed(u"Alone", 0));
  EXPECT_FALSE(openGarbage());
  expectEntries({});

  session.viewMode = ViewMode::IndependentPages;
  ASSERT_TRUE(openNamed(u"Moved", 0));
  EXPECT_FALSE(openGarbage());
  ASSERT_EQ(session.viewMode, ViewMode::TwoDocuments);
  expectEntries({});
  setActivePane(1);
  expectEntries({u"Moved"});

  ASSERT_TRUE(openNamed(u"Left", 0));
  setActivePane(0);
  EXPECT_FALSE(openGarbage());
  expectEntries({u"Left"});
}

}  // namespace
}  // namespace quillmere::test
