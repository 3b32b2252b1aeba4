#include "annot/placements.h"

#include <fpdf_edit.h>
#include <gmock/gmock.h>

#include <random>

#include "annot/annotation_image.h"
#include "annot/annotations.h"
#include "annot/markups.h"
#include "annot/placement_editing.h"
#include "annot/placement_test.h"
#include "annot/stamp_library.h"
#include "documents/modes.h"
#include "view/geometry.h"
#include "view/view_test.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::standIn;
using testing::IsEmpty;

class PlacementsTest : public PlacementTest {
 protected:
  // A page with these annotations, opened and loaded.
  FPDF_DOCUMENT openWith(const std::vector<std::string>& annotations, int pages = 1) {
    PdfPage page = plainPage();
    page.annotations = annotations;
    return openPlain(pages, page);
  }
};

TEST_F(PlacementsTest, RecordsOnAllPagesAreRead) {
  const FPDF_DOCUMENT document =
      openWith({stampAnnotation(u"QMR1;S;0;1;2;3;4;"), linkAnnotation(0, 0, 9, 9, webAction("x")),
                stampAnnotation(u"QMR1;T;0.5;5;6;7;8;20;1;2;Hi; there")},
               3);
  EXPECT_EQ(session.placementDocument, document);
  ASSERT_EQ(session.placements.size(), 3u);
  for (const int page : {0, 1, 2}) {
    ASSERT_EQ(session.placements[page].size(), 2u);
    EXPECT_EQ(placement(page, 0).kind, PlacementKind::Stamp);
    EXPECT_EQ(placement(page, 0).annotIndex, 0);
    EXPECT_EQ(placement(page, 0).stampIndex, -1);
    EXPECT_EQ(placement(page, 1).text, u"Hi; there");
    EXPECT_EQ(placement(page, 1).annotIndex, 2);
    EXPECT_FALSE(placement(page, 1).pending());
  }
}

TEST_F(PlacementsTest, ForeignStampsAndBadRecordsAreLeftAlone) {
  openWith({"<< /Type /Annot /Subtype /Stamp /Rect [1 1 9 9] >>", stampAnnotation(u""),
            stampAnnotation(u"QMR2;S;0;1;2;3;4;"), stampAnnotation(u"QMR1;S;0;1;2;3;4")});
  EXPECT_THAT(session.placements, IsEmpty());
  EXPECT_EQ(annotationsOf(session.active.document.get(), 0).size(), 4u);
}

TEST_F(PlacementsTest, TheKeyCountsOnStampsAlone) {
  openWith({"<< /Type /Annot /Subtype /Square /Rect [1 1 9 9] /QMR (QMR1;S;0;1;2;3;4;) >>",
            "<< /Type /Annot /Subtype /FreeText /Rect [1 1 9 9] /QMR (QMR1;S;0;1;2;3;4;) >>"});
  EXPECT_THAT(session.placements, IsEmpty());
}

TEST_F(PlacementsTest, RecordsInOtherEncodingsAreRead) {
  openWith({"<< /Type /Annot /Subtype /Stamp /Rect [1 1 9 9] /QMR (QMR1;S;0;1;2;3;4;) >>"});
  ASSERT_EQ(session.placements[0].size(), 1u);
  EXPECT_EQ(placement(0, 0).width, 3);
}

TEST_F(PlacementsTest, WaitingPlacementsAreReadOnce) {
  const FPDF_DOCUMENT document = openWith({stampAnnotation(u"QMR1;S;0;1;2;3;4;")});
  loadPlacementsLater(document);
  EXPECT_THAT(session.placements, IsEmpty());
  readWaitingPlacements();
  EXPECT_EQ(session.placementDocument, document);
  ASSERT_EQ(session.placements[0].size(), 1u);
  add(0, textOf(u"Hi", 1, 1));
  readWaitingPlacements();
  EXPECT_EQ(session.placements[0].size(), 2u);
}

TEST_F(PlacementsTest, NewOnesJoinThoseThatWereStillToBeRead) {
  loadPlacementsLater(openWith({stampAnnotation(u"QMR1;S;0;1;2;3;4;")}));
  EXPECT_TRUE(ClaimPlacementOwner());
  EXPECT_EQ(session.placements[0].size(), 1u);
}

TEST_F(PlacementsTest, APressFindsThoseThatWereStillToBeRead) {
  loadPlacementsLater(openWith({stampAnnotation(u"QMR1;S;0;200;300;100;50;")}));
  const PixelRect rect = paneRect(0);
  const PanePoint middle = pageToPane(0, 250, 325);
  EXPECT_TRUE(pressPlacement(rect.left + static_cast<int>(middle.x),
                             rect.top + static_cast<int>(middle.y)));
  EXPECT_EQ(session.selectedPlacementIndex, 0);
}

TEST_F(PlacementsTest, WithoutADocumentNothingIsRead) {
  resetSession();
  readWaitingPlacements();
  EXPECT_EQ(session.placementDocument, nullptr);
}

TEST_F(PlacementsTest, PicturesOfTextsAreMadeWhenTheyAreNeeded) {
  openWith({stampAnnotation(u"QMR1;T;0;5;6;7;8;20;1;2;Hi")}, 5);
  EXPECT_EQ(standIn().textsDrawn, 0);
  const platform::SharedPicture picture = placementPicture(placement(2, 0));
  ASSERT_TRUE(picture);
  EXPECT_EQ(placementPicture(placement(2, 0)), picture);
  EXPECT_EQ(standIn().textsDrawn, 1);
}

TEST_F(PlacementsTest, ADocumentWithoutPagesOwnsNone) {
  const FPDF_DOCUMENT document = openInActive(zeroPagePdf());
  LoadPlacements(document);
  EXPECT_EQ(session.placementDocument, document);
  EXPECT_THAT(session.placements, IsEmpty());
}

TEST_F(PlacementsTest, NoDocumentEmptiesTheTable) {
  openWith({stampAnnotation(u"QMR1;S;0;1;2;3;4;")});
  selectPlacement(0, 0);
  LoadPlacements(nullptr);
  EXPECT_EQ(session.placementDocument, nullptr);
  EXPECT_THAT(session.placements, IsEmpty());
  EXPECT_EQ(session.selectedPlacementPage, -1);
}

TEST_F(PlacementsTest, BrokenPagesAreSkipped) {
  const FPDF_DOCUMENT document = openInActive(pdfWithBrokenPage(3, 1));
  LoadPlacements(document);
  EXPECT_EQ(session.placementDocument, document);
  EXPECT_THAT(session.placements, IsEmpty());
}

TEST_F(PlacementsTest, ASelectionIsOneAndCanBeTakenAway) {
  openWith({stampAnnotation(u"QMR1;S;0;1;2;3;4;"), stampAnnotation(u"QMR1;S;0;1;2;3;4;")});
  selectPlacement(0, 0);
  selectPlacement(0, 1);
  EXPECT_FALSE(placement(0, 0).selected);
  EXPECT_TRUE(placement(0, 1).selected);
  EXPECT_EQ(selectedPlacement(), &placement(0, 1));
  ClearPlacementSelection();
  EXPECT_FALSE(placement(0, 1).selected);
  EXPECT_EQ(selectedPlacement(), nullptr);
}

TEST_F(PlacementsTest, ASelectionOutOfRangeIsNone) {
  openWith({stampAnnotation(u"QMR1;S;0;1;2;3;4;")});
  session.selectedPlacementPage = 0;
  session.selectedPlacementIndex = 1;
  EXPECT_EQ(selectedPlacement(), nullptr);
  session.selectedPlacementIndex = -1;
  EXPECT_EQ(selectedPlacement(), nullptr);
  session.selectedPlacementPage = 7;
  EXPECT_EQ(selectedPlacement(), nullptr);
  DetachPlacement();
}

// Detaching.

class DetachTest : public PlacementTest {
 protected:
  // Three stamps and a text, written, with the first stamp selected.
  void SetUp() override {
    document = openPlain();
    for (const double x : {100.0, 200.0, 300.0}) add(0, stampOf(quarters(), x, 100, 40, 40));
    add(0, textOf(u"Hi", 100, 300));
    writeAll(document);
    session.active.dirty = false;
    session.active.altered = false;
    renderPane();
  }
  static void renderPane() { setView(0, 1.0f, 40.0f, 20.0f); }

  FPDF_DOCUMENT document = nullptr;
};

TEST_F(DetachTest, TheAnnotationGoesAndThePictureStays) {
  selectPlacement(0, 0);
  DetachPlacement();
  EXPECT_EQ(annotationsOf(document, 0).size(), 3u);
  const Placement& detached = placement(0, 0);
  EXPECT_TRUE(detached.pending());
  ASSERT_TRUE(detached.image);
  EXPECT_EQ(detached.image->pixels, quarters()->pixels);
  EXPECT_TRUE(session.active.dirty);
  EXPECT_TRUE(session.active.altered);
  EXPECT_TRUE(hasUnsavedChanges());
}

TEST_F(DetachTest, ThePageIsDrawnWithoutIt) {
  const ClientPoint place = placeOf(110, 130);
  ASSERT_EQ(pictureAt(place), 0xFF0000u);
  selectPlacement(0, 0);
  DetachPlacement();
  EXPECT_EQ(pictureAt(place), 0xFFFFFFu);
}

TEST_F(DetachTest, IndexesAboveTheRemovedOneFollow) {
  selectPlacement(0, 1);
  DetachPlacement();
  EXPECT_EQ(placement(0, 0).annotIndex, 0);
  EXPECT_EQ(placement(0, 1).annotIndex, -1);
  EXPECT_EQ(placement(0, 2).annotIndex, 1);
  EXPECT_EQ(placement(0, 3).annotIndex, 2);
  selectPlacement(0, 2);
  DetachPlacement();
  EXPECT_EQ(placement(0, 3).annotIndex, 1);
  const std::vector<FoundAnnotation> left = annotationsOf(document, 0);
  ASSERT_EQ(left.size(), 2u);
  EXPECT_EQ(left[0].record, u"QMR1;S;0;100;100;40;40;");
  EXPECT_EQ(left[1].objectType, FPDF_PAGEOBJ_TEXT);
}

TEST_F(DetachTest, ATextNeedsNoPictureFromTheDocument) {
  selectPlacement(0, 3);
  DetachPlacement();
  EXPECT_TRUE(placement(0, 3).pending());
  EXPECT_EQ(annotationsOf(document, 0).size(), 3u);
}

TEST_F(DetachTest, APendingOneIsNotDetachedAgain) {
  selectPlacement(0, 0);
  DetachPlacement();
  session.active.dirty = false;
  DetachPlacement();
  EXPECT_FALSE(session.active.dirty);
  EXPECT_EQ(annotationsOf(document, 0).size(), 3u);
}

TEST_F(DetachTest, AStampWithoutAPictureStaysWritten) {
  session.active.dirty = false;
  PdfPage page = plainPage();
  page.annotations = {stampAnnotation(u"QMR1;S;0;1;2;3;4;")};
  document = openPlain(1, page);
  selectPlacement(0, 0);
  DetachPlacement();
  EXPECT_EQ(placement(0, 0).annotIndex, 0);
  EXPECT_EQ(annotationsOf(document, 0).size(), 1u);
  EXPECT_FALSE(session.active.dirty);
}

TEST_F(DetachTest, PlacementsOfAnotherDocumentStayAsTheyAre) {
  selectPlacement(0, 0);
  const DocumentHandle other = loadDocument(simplePdf(1));
  session.placementDocument = other.get();
  DetachPlacement();
  EXPECT_FALSE(placement(0, 0).pending());
  EXPECT_EQ(annotationsOf(document, 0).size(), 4u);
  ClearPlacements();
}

TEST_F(DetachTest, PicturesSurviveManyEditsPixelByPixel) {
  auto picture = std::make_shared<platform::Picture>(plainPicture(67, 45, 0));
  std::minstd_rand random(5);
  for (std::uint32_t& pixel : picture->pixels) {
    const std::uint32_t alpha = random() % 4 * 0x55;
    pixel = alpha == 0 ? 0 : alpha << 24 | (random() & 0xFFFFFF);
  }
  document = openPlain();
  add(0, stampOf(picture, 100, 100, 60, 40, 1.1));
  for (int edit = 0; edit < 3; ++edit) {
    writeAll(document);
    selectPlacement(0, 0);
    DetachPlacement();
    const platform::SharedPicture taken = placement(0, 0).image;
    ASSERT_TRUE(taken);
    EXPECT_EQ(taken->width, 67);
    EXPECT_EQ(taken->height, 45);
    EXPECT_EQ(taken->pixels, picture->pixels) << edit;
  }
}

TEST_F(DetachTest, TakingAPictureLeavesTheAnnotationAsItIs) {
  const PageHandle page(FPDF_LoadPage(document, 0));
  const AnnotationHandle annotation = annotationAt(page.get(), 1);
  ASSERT_TRUE(ExtractAnnotImage(document, page.get(), annotation.get()));
  FS_MATRIX matrix{};
  ASSERT_TRUE(FPDFPageObj_GetMatrix(FPDFAnnot_GetObject(annotation.get(), 0), &matrix));
  EXPECT_EQ(matrix.a, 40);
  EXPECT_EQ(matrix.e, 200);
  EXPECT_EQ(matrix.f, 100);
}

TEST_F(DetachTest, RemovingAMarkupLowersTheIndexesBehindIt) {
  PdfPage page = plainPage();
  page.annotations = {highlightBox(10, 10, 50, 30), stampAnnotation(u"QMR1;S;0;1;2;3;4;")};
  openPlain(1, page);
  ASSERT_EQ(placement(0, 0).annotIndex, 1);
  pick(placeOf(20, 20));
  RemoveMarkup();
  EXPECT_EQ(placement(0, 0).annotIndex, 0);
}

TEST_F(DetachTest, AMarkupIsFoundUnderItsNewNumber) {
  PdfPage page = plainPage();
  page.annotations = {stampAnnotation(u"QMR1;T;0;200;300;100;50;12;0;0;Hi"),
                      highlightBox(10, 10, 50, 30)};
  document = openPlain(1, page);
  const ClientPoint mark = placeOf(20, 20);
  ASSERT_EQ(HitTestMarkup(0, mark.x, mark.y), 1);
  selectPlacement(0, 0);
  DetachPlacement();
  WritePendingTextDrops(document);
  ASSERT_EQ(annotationsOf(document, 0).size(), 2u);
  EXPECT_EQ(HitTestMarkup(0, mark.x, mark.y), 0);
}

// Which document has the placements.

class ClaimTest : public PlacementTest {
 protected:
  void SetUp() override {
    session.viewMode = ViewMode::TwoDocuments;
    session.stampPanelVisible = false;
    left = openAndShowIn(0, simplePdf(1));
    right = openAndShowIn(1, simplePdf(1));
    LoadPlacements(left);
  }
  FPDF_DOCUMENT left = nullptr;
  FPDF_DOCUMENT right = nullptr;
};

TEST_F(ClaimTest, TheOwnerMayAddWithoutAQuestion) {
  add(0, textOf(u"Hi", 1, 1));
  EXPECT_TRUE(ClaimPlacementOwner());
  EXPECT_EQ(session.placements[0].size(), 1u);
}

TEST_F(ClaimTest, AnotherDocumentTakesOverWhenNothingIsPending) {
  session.activePane = 1;
  EXPECT_TRUE(ClaimPlacementOwner());
  EXPECT_EQ(session.placementDocument, right);
}

TEST_F(ClaimTest, PendingPlacementsAreDiscardedOnlyWithConsent) {
  add(0, textOf(u"Hi", 1, 1));
  session.activePane = 1;
  standIn().boxAnswers = {BoxAnswer::Cancel, BoxAnswer::Ok};
  EXPECT_FALSE(ClaimPlacementOwner());
  EXPECT_EQ(session.placementDocument, left);
  EXPECT_EQ(session.placements[0].size(), 1u);
  EXPECT_TRUE(ClaimPlacementOwner());
  EXPECT_EQ(session.placementDocument, right);
  EXPECT_THAT(session.placements, IsEmpty());
  ASSERT_EQ(standIn().boxes.size(), 2u);
  EXPECT_EQ(standIn().boxes[0].text,
            u"Stamp or text placements on the other document haven't been saved yet, and will be "
            u"discarded if you continue.\n\nContinue and discard them?");
  EXPECT_EQ(standIn().boxes[0].buttons, platform::BoxButtons::OkCancel);
}

TEST_F(ClaimTest, WithoutADocumentThereIsNothingToClaim) {
  resetSession();
  EXPECT_FALSE(ClaimPlacementOwner());
}

}  // namespace
}  // namespace quillmere::test
