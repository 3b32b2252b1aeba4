#include <fpdf_annot.h>
#include <gmock/gmock.h>

#include <map>
#include <random>
#include <string>
#include <vector>

#include "annot/annotations.h"
#include "annot/placement_editing.h"
#include "annot/placement_record.h"
#include "annot/placements.h"
#include "annot/text_tool.h"
#include "documents/close.h"
#include "documents/modes.h"
#include "documents/page_operations.h"
#include "documents/save_document.h"
#include "support/page_edit_test.h"
#include "support/pdf_builder.h"
#include "view/geometry.h"
#include "view/navigation.h"

namespace quillmere::test {
namespace {

using platform::standIn;
using testing::IsEmpty;
using testing::SizeIs;

constexpr int kPages = 200;       // too many to be found or read in one slice
constexpr int kReadHalfway = 43;  // what the first slice of the search finds

// A document with a written text on each of its pages, edited before the program has read them all.
class HalfReadPlacementsTest : public PageEditTest {
 protected:
  HalfReadPlacementsTest() {
    standIn().window.paintsLater = true;
    standIn().clockStopped = true;
    session.stampPanelVisible = true;
  }

  static PdfPage stampedPage() {
    PdfPage page;
    page.annotations = {
        "<< /Type /Annot /Subtype /Stamp /Rect [100 100 200 150] /QMR "
        "(QMR1;T;0;100;100;100;50;12;0;0;Hi) >>"};
    return page;
  }
  static std::string stamped(int pages) {
    return buildPdf(std::vector<PdfPage>(static_cast<std::size_t>(pages), stampedPage()));
  }
  static void slices(int count) {
    for (int n = 0; n < count; ++n) standIn().window.idleSlice();
  }
  static void readRest() {
    while (!standIn().window.whenIdle.empty()) slices(1);
  }
  // Opens the document and reads until the search is under way and some pages are known.
  static void openHalfRead() {
    ASSERT_TRUE(open(stamped(kPages)));
    slices(2);
    ASSERT_THAT(session.placements, SizeIs(kReadHalfway));
    ASSERT_EQ(session.waitingPlacements, document());
    ASSERT_FALSE(session.annotationSearch.complete);
  }

  // Presses on the middle of the text that each page has.
  static bool press(std::int32_t page) {
    goToPage(0, page, false);
    const PixelRect rect = paneRect(0);
    const PanePoint middle = pageToPane(0, 150, 125);
    pressX = rect.left + static_cast<int>(middle.x);
    pressY = rect.top + static_cast<int>(middle.y);
    return pressPlacement(pressX, pressY);
  }
  // Moves it, which makes it pending.
  static void move(std::int32_t page) {
    ASSERT_TRUE(press(page));
    movePlacementDrag(pressX + 30, pressY);
    endPlacementDrag();
  }
  static void erase(std::int32_t page) {
    ASSERT_TRUE(press(page));
    endPlacementDrag();
    deleteSelectedPlacement();
  }
  static void place(std::int32_t page) {
    goToPage(0, page, false);
    PlaceTextDrop(page, 300, 300, u"New", 12, 0, 0, 0);
  }

  // The pages on which something else stands than one written text.
  static std::vector<std::int32_t> unusualPages(int pages = kPages) {
    std::vector<std::int32_t> unusual;
    for (std::int32_t page = 0; page < pages; ++page) {
      const std::vector<Placement>& list = session.placements[page];
      if (list.size() != 1 || list[0].annotIndex != 0) unusual.push_back(page);
    }
    return unusual;
  }

  inline static int pressX = 0;
  inline static int pressY = 0;
};

using testing::ElementsAre;

TEST_F(HalfReadPlacementsTest, AFewPagesAreReadInEachSlice) {
  ASSERT_TRUE(open(stamped(kPages)));
  while (continueAnnotationSearch(document())) {
  }
  for (const std::size_t read : {64u, 128u, 192u}) {
    slices(1);
    EXPECT_THAT(session.placements, SizeIs(read));
  }
  readRest();
  EXPECT_THAT(unusualPages(), IsEmpty());
  EXPECT_THAT(session.placementPagesRead, IsEmpty());
}

// On the way the engine gives back the memory of what it has read.
TEST_F(HalfReadPlacementsTest, ALongDocumentIsReadToItsEnd) {
  constexpr int kManyPages = 900;
  ASSERT_TRUE(open(stamped(kManyPages)));
  readRest();
  EXPECT_THAT(unusualPages(kManyPages), IsEmpty());
}

TEST_F(HalfReadPlacementsTest, ASliceEndsWithThePageThatTakesLong) {
  ASSERT_TRUE(open(stamped(kPages)));
  slices(1);
  standIn().clockStep = 4;
  slices(1);
  EXPECT_THAT(session.placements, SizeIs(1));
}

TEST_F(HalfReadPlacementsTest, APressReadsItsPageAlone) {
  openHalfRead();
  ASSERT_TRUE(press(kPages - 1));
  EXPECT_THAT(session.placements, SizeIs(kReadHalfway + 1));
  EXPECT_TRUE(selectedPlacement() != nullptr);
  EXPECT_EQ(session.waitingPlacements, document());
}

TEST_F(HalfReadPlacementsTest, APressWhereNothingIsEditedReadsNothing) {
  ASSERT_TRUE(open(stamped(2)));
  session.stampPanelVisible = false;
  EXPECT_FALSE(press(1));
  setViewMode(ViewMode::IndependentPages);
  session.stampPanelVisible = true;
  EXPECT_FALSE(press(1));
  setViewMode(ViewMode::SinglePage);
  session.stampPanelVisible = true;
  EXPECT_FALSE(pressPlacement(-5, -5));
  EXPECT_THAT(session.placements, IsEmpty());
}

TEST_F(HalfReadPlacementsTest, EditsStayWhenTheRestIsRead) {
  openHalfRead();
  move(3);
  erase(5);
  place(150);
  move(180);
  slices(2);
  move(20);
  readRest();
  EXPECT_THAT(unusualPages(), ElementsAre(3, 5, 20, 150, 180));
  for (const std::int32_t page : {3, 20, 180}) {
    ASSERT_THAT(session.placements[page], SizeIs(1));
    EXPECT_TRUE(session.placements[page][0].pending());
    EXPECT_EQ(annotationsOn(document(), page), 0);
  }
  EXPECT_THAT(session.placements[5], IsEmpty());
  ASSERT_THAT(session.placements[150], SizeIs(2));
  EXPECT_EQ(session.placements[150][0].annotIndex, 0);
  EXPECT_EQ(session.placements[150][1].text, u"New");
}

TEST_F(HalfReadPlacementsTest, ReadingAllAtOnceKeepsTheEdits) {
  openHalfRead();
  move(3);
  place(150);
  readWaitingPlacements();
  EXPECT_THAT(unusualPages(), ElementsAre(3, 150));
  EXPECT_EQ(session.waitingPlacements, nullptr);
  readRest();
  EXPECT_THAT(unusualPages(), ElementsAre(3, 150));
}

// Edits in any order, with slices of reading between them or with all of it read before.
TEST_F(HalfReadPlacementsTest, WhenThePagesAreReadMakesNoDifference) {
  const auto edited = [](unsigned seed, bool readBefore) {
    EXPECT_TRUE(open(stamped(kPages)));
    if (readBefore) readWaitingPlacements();
    std::minstd_rand random(seed);
    for (int step = 0; step < 25; ++step) {
      const auto page = static_cast<std::int32_t>(random() % kPages);
      const unsigned action = random() % 12;
      const bool pressed = action < 8 && press(page);
      if (pressed) movePlacementDrag(pressX + static_cast<int>(action), pressY);
      endPlacementDrag();
      if (pressed && action < 3) deleteSelectedPlacement();
      if (action == 8 || action == 9) place(page);
      if (action == 10) deletePage(page);
      if (action == 11) {
        EXPECT_TRUE(SaveDocumentTo(0, pathOf(0)));
        if (readBefore) readWaitingPlacements();
      }
      slices(static_cast<int>(random() % 3));
    }
    readRest();
    std::map<std::int32_t, std::vector<std::u16string>> found;
    for (const auto& [number, list] : session.placements) {
      for (const Placement& each : list) {
        found[number].push_back((each.pending() ? u"pending " : u"written ") +
                                FormatPlacementRecord(each));
      }
    }
    return found;
  };
  for (unsigned seed = 1; seed <= 8; ++seed) {
    EXPECT_EQ(edited(seed, false), edited(seed, true)) << seed;
  }
}

TEST_F(HalfReadPlacementsTest, ASearchThatBeginsAnewReadsNoPageTwice) {
  openHalfRead();
  forgetAnnotationSearch();
  slices(4);
  EXPECT_GT(session.placements.size(), std::size_t{kReadHalfway});
  EXPECT_LT(session.placements.size(), std::size_t{kPages});
  forgetAnnotationSearch();
  readRest();
  EXPECT_THAT(unusualPages(), IsEmpty());
}

TEST_F(HalfReadPlacementsTest, TheSelectionStaysOnItsPlacement) {
  openHalfRead();
  session.placements[190].emplace_back().text = u"pending";
  selectPlacement(190, 0);
  readRest();
  ASSERT_THAT(session.placements[190], SizeIs(2));
  ASSERT_TRUE(selectedPlacement() != nullptr);
  EXPECT_EQ(selectedPlacement()->text, u"pending");
  EXPECT_TRUE(selectedPlacement()->selected);
}

TEST_F(HalfReadPlacementsTest, AStampThatTheSearchHasNotReachedIsAskedAbout) {
  std::vector<PdfPage> pages(kPages);
  pages.back() = stampedPage();
  ASSERT_TRUE(open(buildPdf(pages)));
  slices(1);
  EXPECT_TRUE(hasPlacements(document()));
}

TEST_F(HalfReadPlacementsTest, ADeletedPageTakesItsOwnPlacementsAlone) {
  openHalfRead();
  move(3);
  move(180);
  deletePage(0);
  readRest();
  EXPECT_THAT(unusualPages(kPages - 1), ElementsAre(2, 179));
  EXPECT_THAT(session.placements[2], SizeIs(1));
  EXPECT_FALSE(session.placements.contains(kPages - 1));
}

TEST_F(HalfReadPlacementsTest, APageDeletedFromTheOtherDocumentReadsNothing) {
  setViewMode(ViewMode::TwoDocuments);
  ASSERT_TRUE(open(simplePdf(3)));
  ASSERT_TRUE(open(putPdf(u"second.pdf", stamped(kPages)), {.pane = 1}));
  slices(2);
  setActivePane(0);
  deletePage(0);
  EXPECT_EQ(session.waitingPlacements, documentOf(1));
  readRest();
  EXPECT_THAT(unusualPages(), IsEmpty());
}

TEST_F(HalfReadPlacementsTest, InsertedPagesBringTheirs) {
  openHalfRead();
  move(3);
  goToPage(0, 0, false);
  insert(false, stamped(2));
  readRest();
  EXPECT_THAT(unusualPages(kPages + 2), ElementsAre(5));
}

TEST_F(HalfReadPlacementsTest, ASaveWritesTheEditsOnce) {
  openHalfRead();
  move(3);
  move(180);
  ASSERT_TRUE(SaveDocumentTo(0, pathOf(0)));
  EXPECT_THAT(session.placementPagesRead, IsEmpty());
  readRest();
  EXPECT_THAT(unusualPages(), IsEmpty());
  EXPECT_NEAR(session.placements[3][0].x, session.placements[180][0].x, 1e-3);
  EXPECT_GT(session.placements[3][0].x, 101);
  EXPECT_FALSE(hasUnsavedChanges());
}

// The search has passed the page when the text on it becomes an annotation.
TEST_F(HalfReadPlacementsTest, ASaveUnderAnotherNameDuringTheSearchLosesSightOfNothing) {
  std::vector<PdfPage> pages(kPages);
  pages.back() = stampedPage();
  ASSERT_TRUE(open(buildPdf(pages)));
  place(0);
  slices(2);
  ASSERT_EQ(session.annotationSearch.document, document());
  ASSERT_TRUE(SaveDocumentTo(0, u"C:\\other.pdf"));
  readRest();
  ASSERT_THAT(session.placements[0], SizeIs(1));
  EXPECT_FALSE(session.placements[0][0].pending());
  EXPECT_THAT(session.placements[kPages - 1], SizeIs(1));
}

TEST_F(HalfReadPlacementsTest, AFailedSaveUnderAnotherNameLeavesTheEditsPending) {
  openHalfRead();
  move(3);
  standIn().refuseFileCall = [](platform::FileCall call) {
    return call == platform::FileCall::Flush;
  };
  standIn().boxAnswers = {platform::BoxAnswer::Ok};
  EXPECT_FALSE(SaveDocumentTo(0, u"C:\\other.pdf"));
  standIn().refuseFileCall = {};
  readRest();
  EXPECT_THAT(unusualPages(), ElementsAre(3));
  ASSERT_THAT(session.placements[3], SizeIs(1));
  EXPECT_TRUE(session.placements[3][0].pending());
}

TEST_F(HalfReadPlacementsTest, AChangeOfTheModeLosesNothing) {
  openHalfRead();
  move(3);
  setViewMode(ViewMode::TwoDocuments);
  slices(3);
  setViewMode(ViewMode::Book);
  slices(1);
  setViewMode(ViewMode::SinglePage);
  readRest();
  EXPECT_EQ(session.placementDocument, document());
  EXPECT_THAT(unusualPages(), ElementsAre(3));
}

TEST_F(HalfReadPlacementsTest, ASecondDocumentIsReadInstead) {
  openHalfRead();
  move(3);
  setViewMode(ViewMode::TwoDocuments);
  ASSERT_TRUE(open(putPdf(u"second.pdf", stamped(2)), {.pane = 1}));
  EXPECT_THAT(session.placementPagesRead, IsEmpty());
  readRest();
  EXPECT_EQ(session.placementDocument, documentOf(1));
  EXPECT_THAT(session.placements, SizeIs(2));
  EXPECT_EQ(annotationsOn(documentOf(0), 3), 1) << "what was pending is an annotation";
}

TEST_F(HalfReadPlacementsTest, TheDocumentThatIsLeftIsReadFromItsStart) {
  openHalfRead();
  setViewMode(ViewMode::TwoDocuments);
  ASSERT_TRUE(open(putPdf(u"second.pdf", stamped(2)), {.pane = 1}));
  slices(1);
  closeCommand(1);
  readRest();
  EXPECT_EQ(session.placementDocument, documentOf(0));
  EXPECT_THAT(unusualPages(), IsEmpty());
}

TEST_F(HalfReadPlacementsTest, ADocumentClosedMeanwhileIsForgotten) {
  openHalfRead();
  closeAllDocuments();
  EXPECT_THAT(session.placementPagesRead, IsEmpty());
  readRest();
  EXPECT_THAT(session.placements, IsEmpty());
  EXPECT_EQ(session.placementDocument, nullptr);
}

TEST_F(HalfReadPlacementsTest, AllAreFlattened) {
  openHalfRead();
  move(180);
  standIn().boxAnswers = {platform::BoxAnswer::Ok};
  FlattenAnnotations();
  readRest();
  EXPECT_THAT(session.placements, IsEmpty());
  EXPECT_EQ(annotationsOn(document(), 180), 0);
}

}  // namespace
}  // namespace quillmere::test
