#include <fpdf_annot.h>
#include <fpdf_edit.h>
#include <fpdf_transformpage.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "annot/annotations.h"
#include "annot/markups.h"
#include "annot/place_stamp.h"
#include "annot/placement_box.h"
#include "annot/placements.h"
#include "annot/stamp_library.h"
#include "documents/close.h"
#include "documents/save.h"
#include "store/data_folder.h"
#include "support/page_edit_test.h"
#include "support/pdf_builder.h"
#include "support/png_file.h"
#include "view/navigation.h"
#include "view/rotation.h"
#include "view/selection.h"

// Pages keep their boxes and turns through a save, and what lies on them keeps its place.
namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::standIn;
using testing::ElementsAre;

const std::u16string kPath = u"C:\\docs\\a.pdf";

std::string written(const FS_RECTF& box) {
  std::string text;
  for (const float edge : {box.left, box.bottom, box.right, box.top}) {
    text += (text.empty() ? "" : " ") + std::to_string(static_cast<int>(edge));
  }
  return text;
}

class SavePagesTest : public PageEditTest {
 protected:
  // Saves the document and opens the file as another process would.
  static void saveAndReopen() {
    SaveCommand();
    EXPECT_FALSE(hasUnsavedChanges());
    closeAllDocuments();
    ASSERT_TRUE(open(kPath));
  }
};

// Marks and stamps.

constexpr int kTurns = 4;

// Pages in each of the four turns, with boxes that begin elsewhere than at 0, 0.
std::string croppedPages() {
  std::vector<PdfPage> pages(kTurns);
  for (int turn = 0; turn < kTurns; ++turn) {
    PdfPage& page = pages[static_cast<std::size_t>(turn)];
    page.left = 30;
    page.bottom = -40;
    page.rotate = 90 * turn;
    page.entries = "/CropBox [60 -10 500 700]";
    page.content = textContent("Word", 130, 640);
  }
  return buildPdf(pages);
}

struct Found {
  FS_QUADPOINTSF quad{};  // of the mark
  FS_RECTF stamp{};
};

class SaveCroppedPagesTest : public SavePagesTest {
 protected:
  SaveCroppedPagesTest() {
    makeDataFolders();
    platform::putFile(session.stampsFolder + u"a.png", plainPng(40, 20, 0xFF203040));
    LoadStampLibrary();
    session.stampPanelWidth = 180;
  }

  // What a person does with each page: turn it, mark its text and put a stamp on it.
  static void editPages() {
    for (int page = 0; page < kTurns; ++page) {
      goToPage(0, page, false);
      rotatePage(0);
      selectAll(0);
      highlightSelection();
      PlaceStamp(0, 300, 400);
    }
  }

  // The page must have the two annotations and no others.
  static Found found(int page) {
    const PageHandle handle(FPDF_LoadPage(document(), page));
    EXPECT_EQ(FPDFPage_GetAnnotCount(handle.get()), 2);
    Found all;
    for (int i = 0; i < FPDFPage_GetAnnotCount(handle.get()); ++i) {
      const AnnotationHandle annotation = annotationAt(handle.get(), i);
      if (FPDFAnnot_GetSubtype(annotation.get()) == FPDF_ANNOT_STAMP) {
        FPDFAnnot_GetRect(annotation.get(), &all.stamp);
      } else {
        FPDFAnnot_GetAttachmentPoints(annotation.get(), 0, &all.quad);
      }
    }
    return all;
  }
};

TEST_F(SaveCroppedPagesTest, BoxesStayAndPendingTurnsAreAddedToThoseOfThePages) {
  ASSERT_TRUE(open(croppedPages(), 0, kPath));
  editPages();
  standIn().boxAnswers = {BoxAnswer::Yes};
  saveAndReopen();
  ASSERT_EQ(session.active.pageCount, kTurns);
  for (int page = 0; page < kTurns; ++page) {
    SCOPED_TRACE(page);
    const PageHandle handle(FPDF_LoadPage(document(), page));
    FS_RECTF media{};
    FS_RECTF crop{};
    EXPECT_TRUE(
        FPDFPage_GetMediaBox(handle.get(), &media.left, &media.bottom, &media.right, &media.top));
    EXPECT_TRUE(
        FPDFPage_GetCropBox(handle.get(), &crop.left, &crop.bottom, &crop.right, &crop.top));
    EXPECT_EQ(written(media), "30 -40 642 752");
    EXPECT_EQ(written(crop), "60 -10 500 700");
    EXPECT_EQ(FPDFPage_GetRotation(handle.get()), (page + 1) % kTurns);
  }
}

TEST_F(SaveCroppedPagesTest, MarksStayOnTheirTextAndStampsInTheirPlace) {
  ASSERT_TRUE(open(croppedPages(), 0, kPath));
  editPages();
  const std::map<std::int32_t, std::vector<Placement>> placed = session.placements;
  ASSERT_EQ(placed.size(), static_cast<std::size_t>(kTurns));
  standIn().boxAnswers = {BoxAnswer::Yes};
  saveAndReopen();
  readWaitingPlacements();
  for (int page = 0; page < kTurns; ++page) {
    SCOPED_TRACE(page);
    const Found now = found(page);
    const auto [low, high] = std::minmax({now.quad.y1, now.quad.y2, now.quad.y3, now.quad.y4});
    EXPECT_NEAR(std::min({now.quad.x1, now.quad.x2, now.quad.x3, now.quad.x4}), 130, 4);
    EXPECT_NEAR(low, 637, 6);
    EXPECT_NEAR(high, 661, 8);
    const FS_RECTF rect = PlacementAnnotRect(placed.at(page)[0]);
    EXPECT_NEAR(now.stamp.left, rect.left, 0.01);
    EXPECT_NEAR(now.stamp.bottom, rect.bottom, 0.01);
    EXPECT_NEAR(now.stamp.right, rect.right, 0.01);
    EXPECT_NEAR(now.stamp.top, rect.top, 0.01);
    EXPECT_NEAR((now.stamp.left + now.stamp.right) / 2, 300, 0.01);
    EXPECT_NEAR((now.stamp.bottom + now.stamp.top) / 2, 400, 0.01);
    const bool wide = page % 2 == 1;  // the stamp is upright on the page as it is shown
    EXPECT_EQ(now.stamp.right - now.stamp.left > now.stamp.top - now.stamp.bottom, wide);
    ASSERT_EQ(session.placements[page].size(), 1u);
    EXPECT_NEAR(session.placements[page][0].x, placed.at(page)[0].x, 0.01);
    EXPECT_NEAR(session.placements[page][0].y, placed.at(page)[0].y, 0.01);
  }
}

// Pages that come and go below nodes that share boxes.

std::string node(const std::string& entries, int count, const std::vector<int>& kids) {
  std::string text = "<< /Type /Pages /Count " + std::to_string(count) + " " + entries + " /Kids [";
  for (const int kid : kids) text += PdfFile::reference(kid) + " ";
  return text + "] >>";
}

// "One" and "Two" are turned and "Two" has a crop box of its own; "Three" and "Four" share a media
// box. All others share the crop box of the whole document.
std::string sharedBoxesPdf() {
  PdfFile file;
  const int catalog = file.reserve();
  const int tree = file.reserve();
  const int turned = file.reserve();
  const int small = file.reserve();
  const auto page = [&file](int parent, const std::string& text, const std::string& entries = "") {
    const int content = file.addStream(textContent(text, 120, 200));
    return file.add("<< /Type /Page /Parent " + PdfFile::reference(parent) + " /Contents " +
                    PdfFile::reference(content) + " " + entries + " >>");
  };
  const std::vector<int> ofTurned = {page(turned, "One"),
                                     page(turned, "Two", "/CropBox [100 100 300 300]")};
  const std::vector<int> ofSmall = {page(small, "Three"), page(small, "Four")};
  const std::string parent = "/Parent " + PdfFile::reference(tree);
  file.set(catalog, "<< /Type /Catalog /Pages " + PdfFile::reference(tree) + " >>");
  file.set(tree, node("/MediaBox [0 0 500 700] /CropBox [50 60 450 640] /Resources << /Font << /F1 "
                      "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >> >> >>",
                      4, {turned, small}));
  file.set(turned, node(parent + " /Rotate 90", 2, ofTurned));
  file.set(small, node(parent + " /MediaBox [10 20 310 420]", 2, ofSmall));
  return file.finish(catalog);
}

class SaveSharedBoxesTest : public SavePagesTest {
 protected:
  SaveSharedBoxesTest() { EXPECT_TRUE(open(sharedBoxesPdf(), 0, kPath)); }

  // The text of each page, what is shown of it, and its turn in degrees.
  static std::vector<std::string> pages() {
    std::vector<std::string> all;
    for (int i = 0; i < FPDF_GetPageCount(document()); ++i) {
      const PageHandle page(FPDF_LoadPage(document(), i));
      FS_RECTF box{};
      FPDF_GetPageBoundingBox(page.get(), &box);
      all.push_back(textOf(document(), i) + ": " + written(box) + ", " +
                    std::to_string(90 * FPDFPage_GetRotation(page.get())));
    }
    return all;
  }

  const std::string one = "One: 50 60 450 640, 90";
  const std::string two = "Two: 100 100 300 300, 90";
  const std::string three = "Three: 50 60 310 420, 0";
  const std::string four = "Four: 50 60 310 420, 0";
};

TEST_F(SaveSharedBoxesTest, ThePagesAreWhatTheirNodesSay) {
  EXPECT_THAT(pages(), ElementsAre(one, two, three, four));
}

TEST_F(SaveSharedBoxesTest, ADeletedPageLeavesTheOthersTheirBoxes) {
  deletePage(0);
  saveAndReopen();
  EXPECT_THAT(pages(), ElementsAre(two, three, four));
  deletePage(2);
  saveAndReopen();
  EXPECT_THAT(pages(), ElementsAre(two, three));
}

TEST_F(SaveSharedBoxesTest, ANodeMayLoseAllItsPages) {
  deletePage(2);
  deletePage(2);
  saveAndReopen();
  EXPECT_THAT(pages(), ElementsAre(one, two));
}

TEST_F(SaveSharedBoxesTest, InsertedPagesBringTheirOwnSharedBoxes) {
  goToPage(0, 1, false);
  insert(false, sharedBoxesPdf());
  saveAndReopen();
  EXPECT_THAT(pages(), ElementsAre(one, one, two, three, four, two, three, four));
}

TEST_F(SaveSharedBoxesTest, InsertedPagesAreNeitherCroppedNorTurnedByTheirNewNode) {
  const std::string plain = simplePdf(2, 600, 800);
  goToPage(0, 0, false);
  insert(true, plain);  // among the turned pages
  goToPage(0, 5, false);
  insert(true, plain);  // at the end
  saveAndReopen();
  const std::string first = "Page 1: 0 0 600 800, 0";
  const std::string second = "Page 2: 0 0 600 800, 0";
  EXPECT_THAT(pages(), ElementsAre(one, first, second, two, three, four, first, second));
}

}  // namespace
}  // namespace quillmere::test
