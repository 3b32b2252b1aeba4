#include "nav/markup_tree.h"

#include <fpdf_annot.h>
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "annot/markup_pdf.h"
#include "nav/bookmarks.h"
#include "nav/nav_test.h"
#include "panels/panel_toggles.h"
#include "session/changes.h"
#include "view/geometry.h"
#include "view/render.h"

namespace quillmere::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MarkupTreeTest : public NavTest {
 protected:
  MarkupTreeTest() {
    session.navigationPanelVisible = true;
    session.settings.markupsUnderBookmarks = true;
  }

  // A highlight over the whole text of a line of a page made by `courierPage`.
  static std::string lineMarkup(int line, const std::string& entries = "/C [1 1 0]") {
    return markup("Highlight", {charactersOf(line, 0, 2)}, entries);
  }
  static PdfPage page(const std::vector<int>& markedLines) {
    PdfPage page = courierPage({"l00", "l01", "l02", "l03", "l04", "l05", "l06", "l07"});
    for (const int line : markedLines) page.annotations.push_back(lineMarkup(line));
    return page;
  }
  // A destination a little above a line.
  static std::string toLine(int pageNumber, int line) {
    return pageDestination(pageNumber, baselineOf(line) + 10);
  }

  static bool openWith(const std::vector<PdfPage>& pages,
                       const std::vector<PdfOutlineItem>& outline = {}) {
    return open(buildPdf(pages, {outline, "", ""}));
  }
  static platform::StandInTree& tree() { return platform::standIn().navigationTree; }
  static std::vector<std::u16string> texts() { return tree().outline(); }

  static platform::TreeRow rowWith(const std::u16string& text) {
    for (const platform::TreeRow row : tree().order()) {
      if (tree().rows[row - 1].content.text == text) return row;
    }
    ADD_FAILURE() << "no such row";
    return 1;
  }
  static const platform::StandInTreeRow& row(const std::u16string& text) {
    return tree().rows[rowWith(text) - 1];
  }
  static void expandRoot() { FillTreeEntry(row(u"Markups").content.entry); }

  // Acts as an edit: changes annotations of a page and reports it.
  static void mark(int pageIndex, int line) {
    const FPDF_DOCUMENT document = documentOf(session.activePane);
    {
      const PageHandle loaded(FPDF_LoadPage(document, pageIndex));
      const FPDF_ANNOTATION annotation = FPDFPage_CreateAnnot(loaded.get(), FPDF_ANNOT_HIGHLIGHT);
      const Box box = charactersOf(line, 0, 2);
      const FS_RECTF rect{static_cast<float>(box.left), static_cast<float>(box.top),
                          static_cast<float>(box.right), static_cast<float>(box.bottom)};
      const FS_QUADPOINTSF quad{rect.left, rect.top,    rect.right, rect.top,
                                rect.left, rect.bottom, rect.right, rect.bottom};
      FPDFAnnot_AppendAttachmentPoints(annotation, &quad);
      FPDFAnnot_SetRect(annotation, &rect);
      FPDFPage_CloseAnnot(annotation);
    }
    markupsChanged(document, pageIndex);
  }
  static void unmark(int pageIndex, int annotation) {
    const FPDF_DOCUMENT document = documentOf(session.activePane);
    {
      const PageHandle loaded(FPDF_LoadPage(document, pageIndex));
      FPDFPage_RemoveAnnot(loaded.get(), annotation);
    }
    markupsChanged(document, pageIndex);
  }
  static void setNote(int pageIndex, int index, const std::u16string& text) {
    const FPDF_DOCUMENT document = documentOf(session.activePane);
    {
      const PageHandle loaded(FPDF_LoadPage(document, pageIndex));
      const FPDF_ANNOTATION annotation = FPDFPage_GetAnnot(loaded.get(), index);
      FPDFAnnot_SetStringValue(annotation, "Contents",
                               reinterpret_cast<FPDF_WIDESTRING>(text.c_str()));
      FPDFPage_CloseAnnot(annotation);
    }
    markupsChanged(document, pageIndex);
  }
};

TEST_F(MarkupTreeTest, UnderHeadingsTheGroupIsFilledWhenItIsExpandedFirst) {
  session.settings.markupsUnderBookmarks = false;
  ASSERT_TRUE(openWith({page({1, 0}), page({2})}));
  EXPECT_THAT(texts(), ElementsAre(u"Bookmarks", u" (no bookmarks)", u"Markups"));
  EXPECT_TRUE(row(u"Markups").content.expandable);
  EXPECT_EQ(session.markupListDocument, nullptr);
  expandRoot();
  EXPECT_THAT(texts(),
              ElementsAre(u"Bookmarks", u" (no bookmarks)", u"Markups", u" l00", u" l01", u" l02"));
  expandRoot();
  EXPECT_EQ(texts().size(), 6u);
}

TEST_F(MarkupTreeTest, ADocumentWithoutMarkupsSaysSo) {
  session.settings.markupsUnderBookmarks = false;
  ASSERT_TRUE(openWith({page({})}));
  expandRoot();
  EXPECT_THAT(texts(), ElementsAre(u"Bookmarks", u" (no bookmarks)", u"Markups", u" (no markups)"));
  JumpToTreeEntry(row(u"(no markups)").content.entry);
  EXPECT_TRUE(pane(0).backHistory.empty());
  mark(0, 3);
  EXPECT_THAT(texts(), ElementsAre(u"Bookmarks", u" (no bookmarks)", u"Markups", u" l03"));
  unmark(0, 0);
  EXPECT_THAT(texts(), ElementsAre(u"Bookmarks", u" (no bookmarks)", u"Markups", u" (no markups)"));
}

TEST_F(MarkupTreeTest, NothingIsCollectedByEditsBeforeTheGroupWasShown) {
  session.settings.markupsUnderBookmarks = false;
  ASSERT_TRUE(openWith({page({1})}));
  mark(0, 3);
  EXPECT_EQ(session.markupListDocument, nullptr);
  EXPECT_TRUE(session.markupList.empty());
  expandRoot();
  EXPECT_THAT(texts(), ElementsAre(u"Bookmarks", u" (no bookmarks)", u"Markups", u" l01", u" l03"));
}

TEST_F(MarkupTreeTest, NothingIsCollectedForAHiddenPanel) {
  session.navigationPanelVisible = false;
  ASSERT_TRUE(openWith({page({1})}));
  EXPECT_EQ(session.markupListDocument, nullptr);
  EXPECT_THAT(texts(), IsEmpty());
  toggleNavigationPanel();
  EXPECT_THAT(texts(), ElementsAre(u"Markups", u" l01"));
  toggleNavigationPanel();
  toggleNavigationPanel();
  EXPECT_THAT(texts(), ElementsAre(u"Markups", u" l01"));
}

TEST_F(MarkupTreeTest, WithoutBookmarksTheMarkupsHaveARootAsLongAsThereAreAny) {
  ASSERT_TRUE(openWith({page({})}));
  EXPECT_THAT(texts(), IsEmpty());
  mark(0, 1);
  EXPECT_THAT(texts(), ElementsAre(u"Markups", u" l01"));
  EXPECT_TRUE(row(u"Markups").expanded);
  tree().collapse(rowWith(u"Markups"));
  mark(0, 0);
  EXPECT_THAT(texts(), ElementsAre(u"Markups", u" l00", u" l01"));
  EXPECT_FALSE(row(u"Markups").expanded);
  unmark(0, 0);
  unmark(0, 0);
  EXPECT_THAT(texts(), IsEmpty());
}

TEST_F(MarkupTreeTest, AMarkupStandsUnderTheLastBookmarkBeforeIt) {
  ASSERT_TRUE(
      openWith({page({0, 3, 6}), page({2}), page({})},
               {{u"A", toLine(1, 1), {}}, {u"B", toLine(1, 5), {}}, {u"C", toLine(3, 0), {}}}));
  EXPECT_THAT(texts(), ElementsAre(u"l00", u"A", u" l03", u"B", u" l06", u" l02", u"C"));
  EXPECT_TRUE(row(u"A").expanded);
  EXPECT_TRUE(row(u"B").expanded);
  EXPECT_FALSE(row(u"C").content.expandable);
}

TEST_F(MarkupTreeTest, ABookmarkAtTheSameHeightStandsBeforeTheMarkup) {
  ASSERT_TRUE(openWith({page({1})}, {{u"Same", pageDestination(1, baselineOf(1) + 8), {}},
                                     {u"Below", pageDestination(1, baselineOf(1) + 7), {}}}));
  EXPECT_THAT(texts(), ElementsAre(u"Same", u" l01", u"Below"));
}

TEST_F(MarkupTreeTest, OfBookmarksAtOnePlaceTheInnermostHoldsTheMarkup) {
  ASSERT_TRUE(openWith({page({1})},
                       {{u"Chapter", pageDestination(1), {{u"Section", pageDestination(1), {}}}}}));
  EXPECT_THAT(texts(), ElementsAre(u"Chapter", u" Section", u"  l01"));
}

TEST_F(MarkupTreeTest, BookmarksThatLeadNowhereHoldNoMarkups) {
  ASSERT_TRUE(
      openWith({page({1}), page({})}, {{u"Nowhere", "", {}}, {u"Two", pageDestination(2), {}}}));
  EXPECT_THAT(texts(), ElementsAre(u"l01", u"Nowhere", u"Two"));
}

TEST_F(MarkupTreeTest, RowsThatWereNotExpandedYetComeForTheirMarkups) {
  ASSERT_TRUE(openWith(
      {page({}), page({4}), page({})},
      {{u"A",
        pageDestination(1),
        {{u"B", pageDestination(1), {{u"C", toLine(2, 1), {}}, {u"D", toLine(2, 6), {}}}}}},
       {u"E", pageDestination(3), {{u"F", pageDestination(3), {}}}}}));
  EXPECT_THAT(texts(), ElementsAre(u"A", u" B", u"  C", u"   l04", u"  D", u"E"));
  EXPECT_TRUE(row(u"A").expanded);
  EXPECT_TRUE(row(u"B").expanded);
  EXPECT_TRUE(row(u"C").expanded);
  EXPECT_TRUE(row(u"E").content.expandable);
}

TEST_F(MarkupTreeTest, MarkupsStandAmongTheBookmarksBelowInReadingOrder) {
  // A leads to the top of the page and holds the markups before its first bookmark on that page;
  // one bookmark below it leads to an earlier page.
  ASSERT_TRUE(openWith({page({}), page({1, 2, 7})},
                       {{u"A",
                         pageDestination(2),
                         {{u"Earlier", pageDestination(1), {}}, {u"B", toLine(2, 5), {}}}}}));
  EXPECT_THAT(texts(), ElementsAre(u"A", u" Earlier", u" l01", u" l02", u" B", u"  l07"));
}

TEST_F(MarkupTreeTest, RowsBelowTheNextBookmarkAreNoneOfItsOwn) {
  ASSERT_TRUE(
      openWith({page({}), page({}), page({}), page({})},
               {{u"X", toLine(2, 0), {}}, {u"Y", toLine(4, 0), {{u"early", toLine(1, 0), {}}}}}));
  FillTreeEntry(row(u"Y").content.entry);
  mark(2, 3);
  EXPECT_THAT(texts(), ElementsAre(u"X", u" l03", u"Y", u" early"));
}

TEST_F(MarkupTreeTest, ANewMarkupAddsOneRowAndRebuildsNothing) {
  ASSERT_TRUE(openWith({page({1, 5}), page({2})}, {{u"A", pageDestination(1), {}}}));
  const int clearings = tree().clearings;
  const std::size_t rows = tree().rows.size();
  const platform::TreeRow first = rowWith(u"l01");
  mark(0, 3);
  EXPECT_THAT(texts(), ElementsAre(u"A", u" l01", u" l03", u" l05", u" l02"));
  EXPECT_EQ(tree().rows.size(), rows + 1);
  EXPECT_EQ(tree().clearings, clearings);
  EXPECT_EQ(rowWith(u"l01"), first);
  unmark(0, 0);
  EXPECT_THAT(texts(), ElementsAre(u"A", u" l03", u" l05", u" l02"));
  EXPECT_EQ(tree().rows.size(), rows + 1);
  EXPECT_EQ(tree().updates, 0);
}

TEST_F(MarkupTreeTest, AChangedNoteChangesTheTextOfItsRow) {
  ASSERT_TRUE(openWith({page({1, 2})}));
  const platform::TreeRow before = rowWith(u"l02");
  const std::size_t rows = tree().rows.size();
  setNote(0, 1, u"a note of more than six words");
  EXPECT_THAT(texts(), ElementsAre(u"Markups", u" l01", u" l02 - a note of more than six..."));
  EXPECT_EQ(rowWith(u"l02 - a note of more than six..."), before);
  EXPECT_EQ(tree().rows.size(), rows);
  setNote(0, 1, u"");
  EXPECT_THAT(texts(), ElementsAre(u"Markups", u" l01", u" l02"));
}

TEST_F(MarkupTreeTest, ABookmarkThatWasCollapsedStaysSo) {
  ASSERT_TRUE(
      openWith({page({1}), page({})}, {{u"A", pageDestination(1), {{u"B", toLine(2, 0), {}}}}}));
  ASSERT_TRUE(row(u"A").expanded);
  tree().collapse(rowWith(u"A"));
  mark(0, 4);
  EXPECT_FALSE(row(u"A").expanded);
  mark(1, 4);
  EXPECT_FALSE(row(u"A").expanded);
  EXPECT_TRUE(row(u"B").expanded);
  EXPECT_THAT(texts(), ElementsAre(u"A", u" l01", u" l04", u" B", u"  l04"));
}

TEST_F(MarkupTreeTest, ABookmarkThatLostItsLastMarkupCannotBeExpanded) {
  ASSERT_TRUE(openWith({page({1}), page({})}, {{u"A", pageDestination(1), {}}}));
  EXPECT_TRUE(row(u"A").content.expandable);
  unmark(0, 0);
  EXPECT_FALSE(row(u"A").content.expandable);
  tree().collapse(rowWith(u"A"));
  mark(0, 2);
  EXPECT_TRUE(row(u"A").content.expandable);
  EXPECT_TRUE(row(u"A").expanded);
}

TEST_F(MarkupTreeTest, TargetsAreNotLookedUpForADocumentWithoutMarkups) {
  ASSERT_TRUE(openWith({page({}), page({})}, {{u"A", pageDestination(2), {}}}));
  EXPECT_FALSE(session.bookmarks[0].resolved);
}

TEST_F(MarkupTreeTest, TheGroupingIsToggledWithoutCollectingAgain) {
  ASSERT_TRUE(openWith({page({1})}, {{u"A", pageDestination(1), {}}}));
  session.markupList[0].text = u"kept";
  toggleMarkupGrouping();
  expandRoot();
  EXPECT_THAT(texts(), ElementsAre(u"Bookmarks", u" A", u"Markups", u" kept"));
  toggleMarkupGrouping();
  EXPECT_THAT(texts(), ElementsAre(u"A", u" kept"));
}

TEST_F(MarkupTreeTest, AClickedMarkupTurnsToItsPageAndComesIntoSight) {
  ASSERT_TRUE(openWith({page({}), page({7})}));
  pane(0).zoomMode = kCustomFit;
  pane(0).zoom = 4;
  layoutAndRender(0);
  const std::int32_t entry = row(u"l07").content.entry;
  JumpToTreeEntry(entry);
  EXPECT_EQ(pane(0).currentPage, 1);
  ASSERT_EQ(pane(0).backHistory.size(), 1u);
  const Box box = charactersOf(7, 0, 2);
  const PanePoint centre = pageToPane(0, (box.left + box.right) / 2, (box.bottom + box.top) / 2);
  EXPECT_NEAR(centre.y, paneRect(0).height() / 2.0, 1.0);
  // Already in view: nothing moves, and the history stays.
  const float panY = pane(0).panY;
  JumpToTreeEntry(entry);
  EXPECT_EQ(pane(0).panY, panY);
  EXPECT_EQ(pane(0).backHistory.size(), 1u);
}

TEST_F(MarkupTreeTest, OnATurnedPageTheMarkupComesIntoSight) {
  for (const int rotate : {90, 180, 270}) {
    PdfPage turned = page({7});
    turned.rotate = rotate;
    turned.entries = "/CropBox [-20 200 500 780]";
    ASSERT_TRUE(openWith({turned}));
    pane(0).zoomMode = kCustomFit;
    pane(0).zoom = 4;
    layoutAndRender(0);
    JumpToTreeEntry(row(u"l07").content.entry);
    const Box box = charactersOf(7, 0, 2);
    const PanePoint centre = pageToPane(0, (box.left + box.right) / 2, (box.bottom + box.top) / 2);
    EXPECT_TRUE(centre.x > 0 && centre.x < paneRect(0).width()) << rotate;
    EXPECT_TRUE(centre.y > 0 && centre.y < paneRect(0).height()) << rotate;
  }
}

TEST_F(MarkupTreeTest, AMarkupWithoutARectangleOnlyTurnsThePage) {
  PdfPage second;
  second.annotations = {"<< /Type /Annot /Subtype /StrikeOut >>"};
  ASSERT_TRUE(openWith({page({}), second}));
  JumpToTreeEntry(row(u"Strikeout (p.2)").content.entry);
  EXPECT_EQ(pane(0).currentPage, 1);
}

TEST_F(MarkupTreeTest, JumpsGoToTheActivePaneWherePanesAreIndependent) {
  ASSERT_TRUE(openWith({page({}), page({1})}));
  setViewMode(ViewMode::IndependentPages);
  setActivePane(1);
  JumpToTreeEntry(row(u"l01").content.entry);
  EXPECT_EQ(pane(0).currentPage, 0);
  EXPECT_EQ(pane(1).currentPage, 1);
}

TEST_F(MarkupTreeTest, TheTreeFollowsTheActiveDocument) {
  setViewMode(ViewMode::TwoDocuments);
  ASSERT_TRUE(open(buildPdf({page({1})}), 0, u"C:\\l.pdf"));
  ASSERT_TRUE(open(buildPdf({page({2})}), 1, u"C:\\r.pdf"));
  EXPECT_THAT(texts(), ElementsAre(u"Markups", u" l01"));
  setActivePane(1);
  EXPECT_THAT(texts(), ElementsAre(u"Markups", u" l02"));
}

TEST_F(MarkupTreeTest, AnEditOfTheOtherDocumentLeavesTheTreeAlone) {
  setViewMode(ViewMode::TwoDocuments);
  ASSERT_TRUE(open(buildPdf({page({1})}), 0, u"C:\\l.pdf"));
  ASSERT_TRUE(open(buildPdf({page({2})}), 1, u"C:\\r.pdf"));
  setActivePane(1);
  setActivePane(0);
  markupsChanged(documentOf(1), 0);
  EXPECT_THAT(texts(), ElementsAre(u"Markups", u" l01"));
}

TEST_F(MarkupTreeTest, ActivatingAPaneAgainCollectsNothingAnew) {
  setViewMode(ViewMode::TwoDocuments);
  ASSERT_TRUE(open(buildPdf({page({1})}), 0, u"C:\\l.pdf"));
  ASSERT_TRUE(open(buildPdf({page({2})}), 1, u"C:\\r.pdf"));
  session.markupList[0].text = u"kept";
  setActivePane(1);
  EXPECT_THAT(texts(), ElementsAre(u"Markups", u" l02"));
  setActivePane(0);
  EXPECT_THAT(texts(), ElementsAre(u"Markups", u" kept"));
  markupsChanged(documentOf(0), 0);
  EXPECT_THAT(texts(), ElementsAre(u"Markups", u" l01"));
  // An edit of the document that is not shown still updates its list.
  setActivePane(1);
  markupsChanged(documentOf(0), 0);
  session.markupList[0].text = u"kept";
  setActivePane(0);
  EXPECT_THAT(texts(), ElementsAre(u"Markups", u" l01"));
}

TEST_F(MarkupTreeTest, AnotherDocumentAtTheSameHandleShowsItsOwnMarkups) {
  for (int line = 0; line < 5; ++line) {
    ASSERT_TRUE(openWith({page({line})}));
    EXPECT_THAT(texts(), ElementsAre(u"Markups", u" l0" + std::u16string(1, u'0' + line)));
  }
}

TEST_F(MarkupTreeTest, ThousandsOfMarkupsUnderManyBookmarksComeInOrder) {
  std::vector<PdfOutlineItem> outline;
  std::vector<PdfPage> pages;
  for (int i = 1; i <= 200; ++i) {
    outline.push_back({u"B", pageDestination(i), {}});
    pages.push_back(page({0, 1, 2, 3, 4, 5, 6, 7, 0, 1, 2, 3}));
  }
  ASSERT_TRUE(openWith(pages, outline));
  const std::vector<std::u16string> all = texts();
  ASSERT_EQ(all.size(), 2600u);
  for (std::size_t i = 0; i < all.size(); i += 13) {
    EXPECT_EQ(all[i], u"B");
    EXPECT_EQ(all[i + 1], u" l00");
    EXPECT_EQ(all[i + 12], u" l07");
  }
}

}  // namespace
}  // namespace quillmere::test
