#include <fpdf_annot.h>
#include <fpdf_edit.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "annot/markup_list.h"
#include "annot/placements.h"
#include "annot/write_placements.h"
#include "documents/page_operations.h"
#include "platform/pixels.h"
#include "support/page_edit_test.h"
#include "support/pdf_builder.h"
#include "support/png_file.h"
#include "view/panes.h"
#include "view/selection.h"
#include "view/view_test.h"

// Annotations that become part of their pages, or go.
namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::standIn;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class FlattenTest : public PageEditTest {
 protected:
  static void flatten() {
    standIn().boxAnswers = {BoxAnswer::Ok};
    FlattenAnnotations();
  }
};

class RemoveAllTest : public PageEditTest {
 protected:
  static void removeAll() {
    standIn().boxAnswers = {BoxAnswer::Ok};
    RemoveAllAnnotations();
  }
};

TEST_F(FlattenTest, WithoutPlacementsTheQuestionSaysSo) {
  opened(u"a.pdf", 1);
  standIn().boxAnswers = {BoxAnswer::Cancel};
  FlattenAnnotations();
  ASSERT_THAT(standIn().boxes, SizeIs(1));
  EXPECT_EQ(standIn().boxes[0].title, u"Flatten Annotations");
  EXPECT_EQ(standIn().boxes[0].buttons, BoxButtons::OkCancel);
  EXPECT_EQ(standIn().boxes[0].text,
            u"No stamps or text drops to flatten. The document may still contain annotations from "
            u"other applications (form fields, comments, signatures); flattening will bake those "
            u"into the page if any exist.\n\nContinue anyway?");
}

TEST_F(FlattenTest, WithPlacementsTheQuestionWarns) {
  opened(u"a.pdf", 1);
  addText(0);
  standIn().boxAnswers = {BoxAnswer::Cancel};
  FlattenAnnotations();
  EXPECT_EQ(standIn().boxes[0].text,
            u"Flatten will permanently merge all stamps and text drops into the document. They "
            u"will no longer be selectable or deletable.\n\nAnnotations added by other "
            u"applications (form fields, comments, signatures) will also be baked into the page "
            u"content.\n\nContinue?");
  EXPECT_THAT(pagesWithPlacements(), ElementsAre(0));
}

TEST_F(FlattenTest, InTwoDocumentsTheQuestionIsAboutTheActiveDocument) {
  openTwo(1, 1);
  setActivePane(1);
  LoadPlacements(documentOf(0));
  addText(0);
  flatten();
  EXPECT_TRUE(standIn().boxes[0].text.starts_with(u"No stamps"));
  EXPECT_THAT(pagesWithPlacements(), ElementsAre(0));
  EXPECT_FALSE(session.panes[1].dirty);
}

TEST_F(FlattenTest, PendingTextBecomesTextOfThePage) {
  opened(u"a.pdf", 2);
  addText(1, u"Drop");
  selectPlacement(1, 0);
  flatten();
  EXPECT_THAT(session.placements, IsEmpty());
  EXPECT_EQ(session.selectedPlacementPage, -1);
  EXPECT_EQ(annotationsOn(document(), 1), 0);
  EXPECT_NE(textOf(document(), 1).find("Drop"), std::string::npos);
  EXPECT_TRUE(session.active.dirty);
  EXPECT_FALSE(placementsPending(document()));
}

TEST_F(FlattenTest, APendingStampBecomesPartOfThePage) {
  ASSERT_TRUE(open(buildPdf({PdfPage{}})));
  readWaitingPlacements();
  Placement stamp;
  stamp.stampIndex = -1;
  stamp.image = std::make_shared<platform::Picture>(plainPicture(8, 8, 0xFF203040));
  stamp.width = stamp.height = 100;
  session.placements[0].push_back(stamp);
  flatten();
  EXPECT_THAT(session.placements, IsEmpty());
  EXPECT_EQ(annotationsOn(document(), 0), 0);
  EXPECT_EQ(FPDFPage_CountObjects(pane(0).page.get()), 1);
}

TEST_F(FlattenTest, MarksLeaveTheListAndTheShownPageIsReadAgain) {
  PdfPage marked;
  marked.annotations = {highlight()};
  ASSERT_TRUE(open(buildPdf({marked})));
  ASSERT_THAT(markupsOf(document()), SizeIs(1));
  flatten();
  EXPECT_THAT(markupsOf(document()), IsEmpty());
  EXPECT_EQ(FPDFPage_GetAnnotCount(pane(0).page.get()), 0);
  EXPECT_GT(FPDFPage_CountObjects(pane(0).page.get()), 0);
  EXPECT_TRUE(pane(0).pageBitmap);
}

TEST_F(FlattenTest, ThePageLooksAsBeforeAndKeepsLinksAndBoxes) {
  PdfPage page;
  page.left = 30;
  page.bottom = 40;
  page.content = textContent("Word", 130, 640);
  page.entries = "/CropBox [60 70 600 780]";
  page.annotations = {highlight(), linkAnnotation(0, 0, 100, 100, pageDestination(1))};
  ASSERT_TRUE(open(buildPdf({page})));
  const auto picture = [] {
    const std::uint8_t* pixels =
        reinterpret_cast<const std::uint8_t*>(platform::pixelsOf(pane(0).pageBitmap.get()));
    return std::vector<std::uint8_t>(
        pixels, pixels + 4 * pane(0).pageBitmapWidth * pane(0).pageBitmapHeight);
  };
  const std::vector<std::uint8_t> before = picture();
  const float width = FPDF_GetPageWidthF(pane(0).page.get());
  flatten();
  EXPECT_EQ(FPDF_GetPageWidthF(pane(0).page.get()), width);
  const std::vector<std::uint8_t> after = picture();
  ASSERT_EQ(after.size(), before.size());
  int largest = 0;
  for (std::size_t i = 0; i < before.size(); ++i) {
    largest = std::max(largest, std::abs(before[i] - after[i]));
  }
  EXPECT_LE(largest, 2);
  ASSERT_EQ(annotationsOn(document(), 0), 1);
  const AnnotationHandle link(FPDFPage_GetAnnot(pane(0).page.get(), 0));
  EXPECT_EQ(FPDFAnnot_GetSubtype(link.get()), FPDF_ANNOT_LINK);
}

TEST_F(FlattenTest, FormFieldsAndSignaturesBecomeContent) {
  ASSERT_TRUE(open(filledFormPdf()));
  flatten();
  EXPECT_EQ(annotationsOn(document(), 0), 1);  // the hidden one
  EXPECT_NE(textOf(document(), 0).find("HHHH"), std::string::npos);
}

TEST_F(FlattenTest, ADocumentWithNothingToFlattenIsNotEdited) {
  opened(u"a.pdf", 2);
  flatten();
  EXPECT_FALSE(session.active.dirty);
  EXPECT_FALSE(session.active.altered);
}

TEST_F(FlattenTest, SearchAndSelectionEnd) {
  PdfPage marked;
  marked.content = textContent("Word");
  marked.annotations = {highlight()};
  ASSERT_TRUE(open(buildPdf({marked})));
  selectAll(0);
  flatten();
  EXPECT_FALSE(session.selection.active);
}

TEST_F(RemoveAllTest, TheQuestionNamesEverythingThatGoes) {
  opened(u"a.pdf", 1);
  standIn().boxAnswers = {BoxAnswer::Cancel};
  RemoveAllAnnotations();
  ASSERT_THAT(standIn().boxes, SizeIs(1));
  EXPECT_EQ(standIn().boxes[0].title, u"Remove All Annotations");
  EXPECT_EQ(standIn().boxes[0].text,
            u"Remove every annotation from this document?\n\nThis permanently deletes all stamps "
            u"and text drops, along with any annotations added by other applications (form fields, "
            u"links, comments, signatures). This cannot be undone except by discarding all "
            u"changes.\n\nContinue?");
  EXPECT_FALSE(session.active.dirty);
}

TEST_F(FlattenTest, APlacementThatCannotBeWrittenStopsIt) {
  ASSERT_TRUE(open(pdfWithBrokenPage(3, 1)));
  addText(0);
  addText(1);
  selectPlacement(0, 0);
  standIn().boxAnswers = {BoxAnswer::Ok, BoxAnswer::Ok};
  FlattenAnnotations();
  ASSERT_THAT(standIn().boxes, SizeIs(2));
  EXPECT_EQ(standIn().boxes[1].text,
            u"Not all stamps and text drops could be written, so nothing was flattened.");
  EXPECT_EQ(standIn().boxes[1].icon, platform::BoxIcon::Error);
  EXPECT_THAT(pagesWithPlacements(), ElementsAre(0, 1));
  EXPECT_TRUE(session.placements[0][0].pending());
  EXPECT_EQ(annotationsOn(document(), 0), 0);
  EXPECT_FALSE(session.active.dirty);
}

TEST_F(RemoveAllTest, EveryAnnotationOfEveryPageGoes) {
  PdfPage full;
  full.annotations = {highlight(), stampAnnotation(),
                      linkAnnotation(0, 0, 100, 100, pageDestination(1)), highlight()};
  ASSERT_TRUE(open(buildPdf({full, PdfPage{}, full})));
  ASSERT_THAT(markupsOf(document()), SizeIs(4));
  addText(1);
  selectPlacement(1, 0);
  removeAll();
  for (int page = 0; page < 3; ++page) EXPECT_EQ(annotationsOn(document(), page), 0);
  EXPECT_EQ(FPDFPage_GetAnnotCount(pane(0).page.get()), 0);
  EXPECT_THAT(session.placements, IsEmpty());
  EXPECT_EQ(session.selectedPlacementPage, -1);
  EXPECT_THAT(markupsOf(document()), IsEmpty());
  EXPECT_TRUE(session.active.dirty);
}

TEST_F(RemoveAllTest, InTwoDocumentsPlacementsOfTheOtherDocumentStay) {
  openTwo(2, 2);
  setActivePane(1);
  LoadPlacements(documentOf(0));
  addText(1);
  removeAll();
  EXPECT_THAT(pagesWithPlacements(), ElementsAre(1));
  EXPECT_TRUE(session.panes[1].dirty);
  EXPECT_FALSE(session.panes[0].dirty);
}

TEST_F(RemoveAllTest, APageThatCannotBeLoadedIsSkipped) {
  ASSERT_TRUE(open(pdfWithBrokenPage(3, 1)));
  addText(2, u"Drop");
  WritePendingTextDrops(document());
  LoadPlacements(document());
  ASSERT_EQ(annotationsOn(document(), 2), 1);
  removeAll();
  EXPECT_EQ(annotationsOn(document(), 2), 0);
  EXPECT_THAT(standIn().boxes, SizeIs(1));
}

}  // namespace
}  // namespace quillmere::test
