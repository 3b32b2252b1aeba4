#include <gmock/gmock.h>

#include "annot/annotations.h"
#include "annot/markups.h"
#include "annot/placement_editing.h"
#include "annot/placement_test.h"
#include "support/unusual_pdfs.h"
#include "view/rotation.h"

namespace quillmere::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char16_t* kFirst = u"QMR1;T;0;100;700;100;50;12;0;0;first";
constexpr const char16_t* kSecond = u"QMR1;T;0;100;500;100;50;12;0;0;second";

// Documents in which two page numbers stand for one page object.
class SharedPagesTest : public PlacementTest {
 protected:
  // Opens a page of 600 by 800 points with these annotations, twice, and shows one of the two.
  void openTwice(const std::vector<std::string>& annotations, std::int32_t shown) {
    PdfFile file;
    const int catalog = file.reserve();
    const int tree = file.reserve();
    std::string list;
    for (const std::string& annotation : annotations) {
      list += PdfFile::reference(file.add(annotation)) + " ";
    }
    const std::string page =
        PdfFile::reference(file.add("<< /Type /Page /Parent " + PdfFile::reference(tree) +
                                    " /MediaBox [0 0 600 800] /Annots [" + list + "] >>"));
    file.set(catalog, "<< /Type /Catalog /Pages " + PdfFile::reference(tree) + " >>");
    file.set(tree, "<< /Type /Pages /Count 2 /Kids [" + page + " " + page + "] >>");
    document = openAndShow(file.finish(catalog));
    showPage(shown);
    LoadPlacements(document);
  }
  static void showPage(std::int32_t page) {
    show(0, page);
    setView(0, 1.0f, 40.0f, 20.0f);
  }

  // What the annotations of a page are: the text of ours, the subtype of others.
  std::vector<std::u16string> on(int page) const {
    std::vector<std::u16string> all;
    for (const FoundAnnotation& found : annotationsOf(document, page)) {
      const std::size_t text = found.record.rfind(u';');
      all.push_back(found.record.empty() ? u"foreign" : found.record.substr(text + 1));
    }
    return all;
  }
  static void erase(std::int32_t page, std::int32_t index) {
    selectPlacement(page, index);
    deleteSelectedPlacement();
  }
  static std::string link() { return linkAnnotation(0, 0, 50, 50, webAction("x")); }

  FPDF_DOCUMENT document = nullptr;
};

TEST_F(SharedPagesTest, ADeletedPlacementStaysOnTheOtherPage) {
  openTwice({stampAnnotation(kFirst), stampAnnotation(kSecond), link()}, 0);
  ASSERT_THAT(session.placements[1], SizeIs(2));
  erase(0, 0);
  EXPECT_THAT(on(0), ElementsAre(u"second", u"foreign"));
  EXPECT_THAT(on(1), ElementsAre(u"first", u"second", u"foreign"));
  showPage(1);
  erase(1, 1);
  erase(1, 0);
  EXPECT_THAT(on(1), ElementsAre(u"foreign"));
  EXPECT_THAT(on(0), ElementsAre(u"second", u"foreign"));
  EXPECT_THAT(session.placements[0], SizeIs(1));
}

TEST_F(SharedPagesTest, ThePageThatIsShownIsTheOneThatIsEdited) {
  openTwice({stampAnnotation(kFirst), link()}, 1);
  selectPlacement(1, 0);
  DetachPlacement();
  EXPECT_THAT(on(0), ElementsAre(u"first", u"foreign"));
  EXPECT_THAT(on(1), ElementsAre(u"foreign"));
  EXPECT_EQ(FPDFPage_GetAnnotCount(pane(0).page.get()), 1);
  EXPECT_EQ(pane(0).openPage, 1);
  EXPECT_FALSE(session.placements[0][0].pending());
}

TEST_F(SharedPagesTest, APlacementIsWrittenToItsPageAlone) {
  openTwice({link()}, 1);
  add(1, textOf(u"new", 100, 200));
  writeAll(document);
  EXPECT_THAT(on(0), ElementsAre(u"foreign"));
  EXPECT_THAT(on(1), ElementsAre(u"foreign", u"new"));
  EXPECT_THAT(session.placements, SizeIs(1));
  EXPECT_EQ(FPDFPage_GetAnnotCount(pane(0).page.get()), 2);
}

TEST_F(SharedPagesTest, OnePlacementOnEachPageIsWrittenOnce) {
  openTwice({}, 0);
  add(0, textOf(u"left", 100, 200));
  add(1, textOf(u"right", 100, 200));
  writeAll(document);
  EXPECT_THAT(on(0), ElementsAre(u"left"));
  EXPECT_THAT(on(1), ElementsAre(u"right"));
}

TEST_F(SharedPagesTest, ASavedCopyHasTheEditOnOnePage) {
  openTwice({stampAnnotation(kFirst), link()}, 0);
  erase(0, 0);
  const DocumentHandle copy = loadDocument(savedCopy(document));
  EXPECT_THAT(annotationsOf(copy.get(), 0), SizeIs(1));
  EXPECT_THAT(annotationsOf(copy.get(), 1), SizeIs(2));
}

TEST_F(SharedPagesTest, WhatIsNoPlacementIsNotRemovedAsOne) {
  openTwice({stampAnnotation(kFirst), link(), "<< /Type /Annot /Subtype /Stamp /Rect [1 1 9 9] >>"},
            0);
  for (const std::int32_t foreign : {1, 2, 3, -1}) {
    EXPECT_FALSE(removePlacementAnnotation(document, 0, foreign)) << foreign;
  }
  EXPECT_THAT(on(0), ElementsAre(u"first", u"foreign", u"foreign"));
  EXPECT_FALSE(session.active.dirty);
  session.placements[0][0].annotIndex = 1;
  erase(0, 0);
  EXPECT_THAT(session.placements[0], SizeIs(1));
  EXPECT_FALSE(session.active.dirty);
}

TEST_F(SharedPagesTest, ARemovedMarkLeavesTheNumbersOnTheOtherPage) {
  openTwice({highlightBox(10, 10, 50, 30), stampAnnotation(kFirst), link()}, 0);
  pick(placeOf(20, 20));
  RemoveMarkup();
  EXPECT_THAT(on(0), ElementsAre(u"first", u"foreign"));
  EXPECT_THAT(on(1), ElementsAre(u"foreign", u"first", u"foreign"));
  EXPECT_EQ(placement(0, 0).annotIndex, 0);
  EXPECT_EQ(placement(1, 0).annotIndex, 1);
  showPage(1);
  erase(1, 0);
  EXPECT_THAT(on(1), ElementsAre(u"foreign", u"foreign"));
}

TEST_F(SharedPagesTest, AMarkIsMadeOnThePageThatIsShown) {
  document = openAndShow(sharedPagePdf());
  showPage(1);
  selectText(u"Page");
  highlightSelection();
  EXPECT_THAT(marksOn(document, 0), IsEmpty());
  ASSERT_THAT(marksOn(document, 1), SizeIs(1));
  EXPECT_EQ(FPDFPage_GetAnnotCount(pane(0).page.get()), 1);
}

TEST_F(SharedPagesTest, ASearchUnderWayBeginsAnewInPagesThatWereSeparated) {
  openTwice({stampAnnotation(kFirst)}, 1);
  continueAnnotationSearch(document);
  rotatePage(0);
  commitRotations(0);
  EXPECT_EQ(session.annotationSearch.document, nullptr);
}

// Pages of their own that name one list of annotations.
TEST_F(SharedPagesTest, PagesThatShareTheirListOfAnnotationsAreEditedOneByOne) {
  PdfFile file;
  const int catalog = file.reserve();
  const int tree = file.reserve();
  const std::string list = PdfFile::reference(file.add("[" + stampAnnotation(kFirst) + "]"));
  std::string pages;
  for (int n = 0; n < 3; ++n) {
    pages += PdfFile::reference(file.add("<< /Type /Page /Parent " + PdfFile::reference(tree) +
                                         " /MediaBox [0 0 600 800] /Annots " + list + " >>")) +
             " ";
  }
  file.set(catalog, "<< /Type /Catalog /Pages " + PdfFile::reference(tree) + " >>");
  file.set(tree, "<< /Type /Pages /Count 3 /Kids [" + pages + "] >>");
  document = openAndShow(file.finish(catalog));
  showPage(1);
  LoadPlacements(document);
  add(1, textOf(u"new", 100, 200));
  writeAll(document);
  EXPECT_THAT(on(0), ElementsAre(u"first"));
  EXPECT_THAT(on(1), ElementsAre(u"first", u"new"));
  erase(1, 0);
  EXPECT_THAT(on(0), ElementsAre(u"first"));
  EXPECT_THAT(on(1), ElementsAre(u"new"));
  EXPECT_THAT(on(2), ElementsAre(u"first"));
}

}  // namespace
}  // namespace quillmere::test
