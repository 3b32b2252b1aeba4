#include "nav/idle_reading.h"

#include <fpdf_annot.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <vector>

#include "annot/markup_list.h"
#include "annot/markup_pdf.h"
#include "annot/placements.h"
#include "documents/close.h"
#include "nav/nav_test.h"
#include "session/changes.h"

namespace quillmere::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kPages = 200;  // several slices

// Documents of 200 pages; a mark stands on the last and a stamp of ours on the last but one.
class IdleReadingTest : public NavTest {
 protected:
  IdleReadingTest() {
    session.navigationPanelVisible = true;
    session.settings.markupsUnderBookmarks = true;
    window().paintsLater = true;
  }

  static platform::StandInWindow& window() { return platform::standIn().window; }

  static std::string document() {
    std::vector<PdfPage> pages(kPages, courierPage({"abc"}));
    pages[kPages - 1].annotations = {markup("Highlight", {charactersOf(0, 0, 2)}, "/C [1 1 0]")};
    pages[kPages - 2].annotations = {
        "<< /Type /Annot /Subtype /Stamp /Rect [1 1 9 9] /QMR (QMR1;S;0;1;2;3;4;) >>"};
    return buildPdf(pages);
  }
  static void openDocument() { ASSERT_TRUE(open(document())); }
  // Opens one with a mark on each page.
  static void openMarked() {
    PdfPage page = courierPage({"abc"});
    page.annotations = {markup("Highlight", {charactersOf(0, 0, 2)}, "/C [1 1 0]")};
    ASSERT_TRUE(open(buildPdf(std::vector<PdfPage>(kPages, page))));
  }
  // Reads until some marks are known.
  static void collectSome() {
    while (!window().whenIdle.empty() && session.markupList.size() < kPages / 4) {
      window().idleSlice();
    }
    ASSERT_GT(session.markupList.size(), 0u);
    ASSERT_LT(session.markupList.size(), kPages / 2);
  }

  // How many slices it takes until nothing is left.
  static int slicesToTheEnd() {
    int slices = 0;
    while (!window().whenIdle.empty()) {
      window().idleSlice();
      ++slices;
    }
    return slices;
  }
  static void addHighlight(int page) {
    const FPDF_DOCUMENT document = documentOf(session.activePane);
    {
      const PageHandle loaded(FPDF_LoadPage(document, page));
      FPDFPage_CloseAnnot(FPDFPage_CreateAnnot(loaded.get(), FPDF_ANNOT_HIGHLIGHT));
    }
    markupsChanged(document, page);
  }
  static std::vector<int> markedPages() {
    std::vector<int> pages;
    for (const MarkupNode& node : session.markupTree.nodes) pages.push_back(node.page);
    return pages;
  }
};

TEST_F(IdleReadingTest, AnOpenReadsNoAnnotationsUntilTheProgramIsIdle) {
  openDocument();
  EXPECT_THAT(markedPages(), IsEmpty());
  EXPECT_THAT(session.placements, IsEmpty());
  EXPECT_EQ(session.placementDocument, nullptr);
  EXPECT_GT(slicesToTheEnd(), 2);
  EXPECT_THAT(markedPages(), ElementsAre(kPages - 1));
  EXPECT_TRUE(session.placements.contains(kPages - 2));
  EXPECT_EQ(session.placementDocument, documentOf(0));
  EXPECT_EQ(session.annotationSearch.document, nullptr);
}

TEST_F(IdleReadingTest, WhatWasReadIsNotReadAgain) {
  openDocument();
  slicesToTheEnd();
  readAnnotationsWhenIdle();
  EXPECT_THAT(window().whenIdle, IsEmpty());
}

TEST_F(IdleReadingTest, AMarkMadeOnAPageAlreadySearchedIsFound) {
  openDocument();
  window().idleSlice();
  addHighlight(0);
  slicesToTheEnd();
  EXPECT_THAT(markedPages(), ElementsAre(0, kPages - 1));
}

TEST_F(IdleReadingTest, StampsReadEarlierAreNotReadAgain) {
  openDocument();
  window().idleSlice();
  readWaitingPlacements();
  ASSERT_TRUE(session.placements.contains(kPages - 2));
  session.placements[kPages - 2].emplace_back();  // as if one had been placed
  slicesToTheEnd();
  EXPECT_EQ(session.placements[kPages - 2].size(), 2u);
  EXPECT_THAT(markedPages(), ElementsAre(kPages - 1));
}

TEST_F(IdleReadingTest, MarksOfAFewPagesAreCollectedInEachSlice) {
  openMarked();
  std::size_t before = 0;
  while (!window().whenIdle.empty()) {
    window().idleSlice();
    const std::size_t now = session.markupList.size();
    EXPECT_LE(now - before, 8u);
    before = now;
    if (now < kPages) {
      EXPECT_THAT(markedPages(), IsEmpty());
    }
  }
  const std::vector<int> pages = markedPages();
  ASSERT_EQ(pages.size(), static_cast<std::size_t>(kPages));
  EXPECT_TRUE(std::is_sorted(pages.begin(), pages.end()));
}

TEST_F(IdleReadingTest, MarksMadeWhileOthersAreCollectedAreFoundOnce) {
  openMarked();
  collectSome();
  addHighlight(0);
  addHighlight(kPages - 1);
  slicesToTheEnd();
  const std::vector<int> pages = markedPages();
  EXPECT_EQ(pages.size(), static_cast<std::size_t>(kPages + 2));
  EXPECT_EQ(std::count(pages.begin(), pages.end(), 0), 2);
  EXPECT_EQ(std::count(pages.begin(), pages.end(), kPages - 1), 2);
}

TEST_F(IdleReadingTest, WhoeverAsksForAllMarksMeanwhileGetsThem) {
  openMarked();
  collectSome();
  EXPECT_EQ(markupsOf(documentOf(0)).size(), static_cast<std::size_t>(kPages));
  slicesToTheEnd();
  EXPECT_EQ(markedPages().size(), static_cast<std::size_t>(kPages));
}

TEST_F(IdleReadingTest, AListThatBecameInvalidMeanwhileIsCollectedAnew) {
  openMarked();
  collectSome();
  InvalidateMarkupList();
  slicesToTheEnd();
  EXPECT_EQ(markedPages().size(), static_cast<std::size_t>(kPages));
}

TEST_F(IdleReadingTest, ADocumentClosedWhileItsMarksAreCollectedIsForgotten) {
  openMarked();
  collectSome();
  closeAllDocuments();
  EXPECT_TRUE(session.pagesToCollect.empty());
  slicesToTheEnd();
  EXPECT_THAT(markedPages(), IsEmpty());
}

TEST_F(IdleReadingTest, ADocumentClosedMeanwhileIsForgotten) {
  openDocument();
  window().idleSlice();
  closeAllDocuments();
  EXPECT_EQ(session.annotationSearch.document, nullptr);
  slicesToTheEnd();
  EXPECT_EQ(session.placementDocument, nullptr);
  EXPECT_THAT(markedPages(), IsEmpty());
}

TEST_F(IdleReadingTest, AnotherDocumentOpenedMeanwhileIsReadInstead) {
  openDocument();
  window().idleSlice();
  ASSERT_TRUE(openLines({"one"}));
  slicesToTheEnd();
  EXPECT_EQ(session.placementDocument, documentOf(0));
  EXPECT_THAT(session.placements, IsEmpty());
  EXPECT_THAT(markedPages(), IsEmpty());
}

TEST_F(IdleReadingTest, StampsAreReadAlsoWhenNoMarksAreShown) {
  session.navigationPanelVisible = false;
  openDocument();
  slicesToTheEnd();
  EXPECT_TRUE(session.placements.contains(kPages - 2));
  EXPECT_EQ(session.markupListDocument, nullptr);
}

}  // namespace
}  // namespace quillmere::test
