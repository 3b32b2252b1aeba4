#include "annot/write_placements.h"

#include <fpdf_edit.h>
#include <gmock/gmock.h>

#include <array>
#include <numbers>

#include "annot/annotation_image.h"
#include "annot/annotations.h"
#include "annot/placement_box.h"
#include "annot/placement_record.h"
#include "annot/placement_test.h"
#include "annot/placement_text.h"
#include "annot/stamp_library.h"
#include "store/data_folder.h"

namespace quillmere::test {
namespace {

using platform::standIn;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class WritePlacementsTest : public PlacementTest {
 protected:
  static std::vector<std::u16string> recordsOf(FPDF_DOCUMENT document, int page) {
    std::vector<std::u16string> records;
    for (const FoundAnnotation& found : annotationsOf(document, page))
      records.push_back(found.record);
    return records;
  }
};

TEST_F(WritePlacementsTest, AStampBecomesAnAnnotationWithItsRecord) {
  const FPDF_DOCUMENT document = openPlain(2);
  add(1, stampOf(quarters(), 100, 200, 30, 40));
  EXPECT_THAT(WritePendingStamps(document), SizeIs(1));
  EXPECT_THAT(annotationsOf(document, 0), IsEmpty());
  const std::vector<FoundAnnotation> found = annotationsOf(document, 1);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].subtype, FPDF_ANNOT_STAMP);
  EXPECT_EQ(found[0].flags, FPDF_ANNOT_FLAG_PRINT);
  EXPECT_EQ(found[0].record, u"QMR1;S;0;100;200;30;40;");
  EXPECT_EQ(found[0].objectType, FPDF_PAGEOBJ_IMAGE);
  EXPECT_EQ(found[0].rect.left, 100);
  EXPECT_EQ(found[0].rect.top, 240);
  EXPECT_TRUE(session.active.altered) << "memory and file differ now";
}

TEST_F(WritePlacementsTest, ATextBecomesTextInAStandardFont) {
  const FPDF_DOCUMENT document = openPlain();
  Placement text = textOf(u"Paid \u20AC", 100, 200);
  text.fontIndex = 3;
  add(0, text);
  EXPECT_THAT(WritePendingStamps(document), IsEmpty());
  EXPECT_THAT(WritePendingTextDrops(document), SizeIs(1));
  const std::vector<FoundAnnotation> found = annotationsOf(document, 0);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].subtype, FPDF_ANNOT_STAMP);
  EXPECT_EQ(found[0].flags, FPDF_ANNOT_FLAG_PRINT);
  EXPECT_EQ(found[0].objectType, FPDF_PAGEOBJ_TEXT);
  EXPECT_EQ(found[0].record, u"QMR1;T;0;100;200;100;20;12;3;0;Paid \u20AC");
  EXPECT_NE(savedCopy(document).find("/Times-Bold"), std::string::npos);
}

TEST_F(WritePlacementsTest, OnlyALoadTurnsPendingIntoWritten) {
  const FPDF_DOCUMENT document = openPlain();
  add(0, stampOf(quarters(), 100, 200, 30, 40));
  WritePendingStamps(document);
  EXPECT_TRUE(placement(0, 0).pending());
  LoadPlacements(document);
  EXPECT_EQ(placement(0, 0).annotIndex, 0);
  EXPECT_THAT(WritePendingStamps(document), IsEmpty());
}

TEST_F(WritePlacementsTest, StampsComeBeforeTextsWhateverTheirOrder) {
  const FPDF_DOCUMENT document = openPlain();
  add(0, textOf(u"one", 1, 1));
  add(0, stampOf(quarters(), 2, 2, 3, 3));
  add(0, textOf(u"two", 3, 3));
  add(0, stampOf(quarters(), 4, 4, 3, 3));
  writeAll(document);
  EXPECT_THAT(recordsOf(document, 0),
              ElementsAre(u"QMR1;S;0;2;2;3;3;", u"QMR1;S;0;4;4;3;3;",
                          u"QMR1;T;0;1;1;100;20;12;0;0;one", u"QMR1;T;0;3;3;100;20;12;0;0;two"));
}

TEST_F(WritePlacementsTest, WhatIsWrittenReadsBackFromASavedCopy) {
  const FPDF_DOCUMENT document = openPlain();
  add(0, stampOf(quarters(), 100, 200, 30, 40, 0.5));
  Placement text = textOf(u"semi; colon\r\nline \u0142", 10, 20);
  text.fontSize = 30;
  text.colorIndex = 5;
  add(0, text);
  writeAll(document);
  const DocumentHandle copy = loadDocument(savedCopy(document));
  LoadPlacements(copy.get());
  ASSERT_EQ(session.placements[0].size(), 2u);
  EXPECT_EQ(placement(0, 0).rotation, 0.5);
  EXPECT_EQ(placement(0, 1).text, text.text);
  EXPECT_EQ(placement(0, 1).fontSize, 30);
  EXPECT_EQ(placement(0, 1).colorIndex, 5);
  ClearPlacements();
}

TEST_F(WritePlacementsTest, TextBeyondTheStandardFontsIsWrittenAsItsPicture) {
  const FPDF_DOCUMENT document = openPlain();
  add(0, textOf(u"\u0141ukasz", 100, 200));
  WritePendingTextDrops(document);
  const std::vector<FoundAnnotation> found = annotationsOf(document, 0);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].objectType, FPDF_PAGEOBJ_IMAGE);
  EXPECT_EQ(found[0].record, u"QMR1;T;0;100;200;100;20;12;0;0;\u0141ukasz");
}

// As text it would be wider than its box, which was measured around what is drawn of it.
TEST_F(WritePlacementsTest, TextTooLongToBeDrawnWholeIsWrittenAsItIsShown) {
  const FPDF_DOCUMENT document = openPlain();
  const std::u16string text(5000, u'x');
  add(0, textOf(text, 100, 200));
  WritePendingTextDrops(document);
  const std::vector<FoundAnnotation> found = annotationsOf(document, 0);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].objectType, FPDF_PAGEOBJ_IMAGE);
  EXPECT_EQ(found[0].record, u"QMR1;T;0;100;200;100;20;12;0;0;" + text);
}

TEST_F(WritePlacementsTest, BlankTextsAndStampsWithoutAPictureAreLeftOut) {
  const FPDF_DOCUMENT document = openPlain();
  add(0, textOf(u"", 100, 200));
  add(0, textOf(u"  \t", 100, 200));
  add(0, stampOf(nullptr, 100, 200, 30, 40));
  add(0, stampOf(quarters(), 1, 2, 3, 4));
  writeAll(document);
  EXPECT_THAT(recordsOf(document, 0), ElementsAre(u"QMR1;S;0;1;2;3;4;"));
}

TEST_F(WritePlacementsTest, AViewerWritesNothing) {
  const FPDF_DOCUMENT document = openPlain();
  add(0, textOf(u"Hi", 100, 200));
  add(0, stampOf(quarters(), 1, 2, 3, 4));
  session.viewerRole = true;
  EXPECT_THAT(WritePendingStamps(document), IsEmpty());
  EXPECT_THAT(WritePendingTextDrops(document), IsEmpty());
  EXPECT_THAT(annotationsOf(document, 0), IsEmpty());
}

TEST_F(WritePlacementsTest, OnlyTheOwnerGetsAnnotations) {
  const FPDF_DOCUMENT document = openPlain();
  add(0, textOf(u"Hi", 100, 200));
  const DocumentHandle other = loadDocument(simplePdf(1));
  EXPECT_THAT(WritePendingTextDrops(other.get()), IsEmpty());
  EXPECT_THAT(WritePendingTextDrops(nullptr), IsEmpty());
  EXPECT_THAT(annotationsOf(document, 0), IsEmpty());
}

TEST_F(WritePlacementsTest, PagesThatDoNotExistAreSkipped) {
  const FPDF_DOCUMENT document = openPlain();
  add(7, textOf(u"Hi", 100, 200));
  add(0, textOf(u"Hi", 100, 200));
  EXPECT_THAT(WritePendingTextDrops(document), SizeIs(1));
}

TEST_F(WritePlacementsTest, WhatAFailedSaveAddedIsTakenBack) {
  PdfPage page = plainPage();
  page.annotations = {linkAnnotation(0, 0, 9, 9, webAction("x"))};
  const FPDF_DOCUMENT document = openPlain(2, page);
  for (const int number : {0, 1}) {
    add(number, stampOf(quarters(), 1, 2, 3, 4));
    add(number, stampOf(quarters(), 5, 2, 3, 4));
    add(number, textOf(u"Hi", 100, 200));
  }
  EXPECT_FALSE(writeWithPlacements(document, [&] {
    EXPECT_EQ(annotationsOf(document, 0).size(), 4u);
    return false;
  }));
  for (const int number : {0, 1}) {
    ASSERT_EQ(annotationsOf(document, number).size(), 1u);
    EXPECT_EQ(annotationsOf(document, number)[0].subtype, FPDF_ANNOT_LINK);
  }
  EXPECT_TRUE(writeWithPlacements(document, [] { return true; }));
  EXPECT_EQ(annotationsOf(document, 0).size(), 4u) << "the next try adds them once";
}

TEST_F(WritePlacementsTest, APlacementOnAPageThatCannotBeReadFailsTheWrite) {
  const FPDF_DOCUMENT document = openInActive(pdfWithBrokenPage(3, 1));
  LoadPlacements(document);
  const auto write = [&] {
    bool asked = false;
    const bool written = writeWithPlacements(document, [&] { return asked = true; });
    EXPECT_EQ(written, asked);
    return written;
  };
  add(0, textOf(u"Hi", 100, 200));
  add(1, textOf(u" ", 100, 200));
  EXPECT_TRUE(write()) << "nothing is to be seen of a blank text";
  LoadPlacements(document);
  ASSERT_EQ(annotationsOf(document, 0).size(), 1u);

  for (const Placement& unwritable : {textOf(u"Hi", 100, 200), stampOf(quarters(), 1, 2, 3, 4)}) {
    LoadPlacements(document);
    add(0, stampOf(quarters(), 1, 2, 3, 4));
    add(1, unwritable);
    add(2, textOf(u"Hi", 100, 200));
    EXPECT_FALSE(write());
    EXPECT_EQ(annotationsOf(document, 0).size(), 1u);
    EXPECT_THAT(annotationsOf(document, 2), IsEmpty());
    EXPECT_TRUE(placement(1, 0).pending());
  }
}

// It may have passed the page.
TEST_F(WritePlacementsTest, ASearchUnderWayBeginsAnewAfterAWrite) {
  const FPDF_DOCUMENT document = openPlain();
  separatePagesToAnnotate(document);  // which ends a search, too
  continueAnnotationSearch(document);
  writePendingPlacements(document);
  EXPECT_EQ(session.annotationSearch.document, document) << "nothing was written";
  add(0, textOf(u"Hi", 100, 200));
  EXPECT_FALSE(writeWithPlacements(document, [&] {
    EXPECT_EQ(session.annotationSearch.document, nullptr);
    continueAnnotationSearch(document);
    return false;
  }));
  EXPECT_EQ(session.annotationSearch.document, nullptr) << "nothing is there any more";
}

TEST_F(WritePlacementsTest, AnnotationsAreObjectsOfTheirOwn) {
  const FPDF_DOCUMENT document = openPlain();
  add(0, stampOf(quarters(), 1, 2, 3, 4));
  add(0, textOf(u"Hi", 100, 200));
  writeAll(document);
  const std::string bytes = savedCopy(document);
  const std::size_t annots = bytes.find("/Annots");
  ASSERT_NE(annots, std::string::npos);
  const std::string list = bytes.substr(annots, bytes.find(']', annots) - annots);
  EXPECT_EQ(list.find("<<"), std::string::npos) << list;
}

TEST_F(WritePlacementsTest, APictureUsedOftenIsStoredOnce) {
  makeDataFolders();
  const std::u16string path = session.stampsFolder + u"a.png";
  platform::putFile(path, encodePng(*quarters(64)));
  LoadStampLibrary();
  ASSERT_TRUE(isStampIndex(0));
  const FPDF_DOCUMENT document = openPlain(20);
  for (int page = 0; page < 20; ++page) {
    Placement stamp = stampOf(nullptr, 10, 10, 50, 50);
    stamp.stampIndex = 0;
    add(page, stamp);
    add(page, stampOf(quarters(32), 100, 10, 50, 50));
  }
  const auto shared = quarters(48);
  for (int n = 0; n < 10; ++n) add(0, stampOf(shared, 10.0 * n, 100, 50, 50));
  EXPECT_THAT(WritePendingStamps(document), SizeIs(50));
  const std::string bytes = savedCopy(document);
  int images = 0;
  for (std::size_t at = bytes.find("/Subtype/Image"); at != std::string::npos;
       at = bytes.find("/Subtype/Image", at + 1)) {
    ++images;
  }
  // One for the library's, one for the shared one, and twenty that are no copies of each other;
  // none has a mask, as all are opaque, or each has one.
  EXPECT_TRUE(images == 22 || images == 44) << images;
}

TEST_F(WritePlacementsTest, ANewStampIsWrittenWithAllPixelsOfItsFile) {
  makeDataFolders();
  platform::putFile(session.stampsFolder + u"a.png", plainPng(3000, 1500, 0xFF336699));
  LoadStampLibrary();
  const FPDF_DOCUMENT document = openPlain();
  Placement stamp = stampOf(nullptr, 10, 10, 50, 25);
  stamp.stampIndex = 0;
  add(0, stamp);
  EXPECT_LT(placementPicture(placement(0, 0))->width, 3000) << "a copy is drawn";
  WritePendingStamps(document);
  EXPECT_NE(savedCopy(document).find("/Width 3000"), std::string::npos);
}

TEST_F(WritePlacementsTest, AStampWhoseFileIsGoneIsWrittenAsItIsShown) {
  makeDataFolders();
  platform::putFile(session.stampsFolder + u"a.png", plainPng(30, 15, 0xFF336699));
  LoadStampLibrary();
  const FPDF_DOCUMENT document = openPlain();
  Placement stamp = stampOf(nullptr, 10, 10, 50, 25);
  stamp.stampIndex = 0;
  add(0, stamp);
  ASSERT_TRUE(placementPicture(placement(0, 0)));
  platform::deleteFile(session.stampsFolder + u"a.png");
  EXPECT_THAT(WritePendingStamps(document), SizeIs(1));
}

TEST_F(WritePlacementsTest, EncryptedDocumentsKeepThemUnderTheirOwnKey) {
  const FPDF_DOCUMENT document = openInActive(encryptedPdf());
  LoadPlacements(document);
  add(0, stampOf(quarters(), 100, 200, 30, 40));
  add(0, textOf(u"semi; colon \u0142", 10, 20));
  writeAll(document);
  const std::string bytes = savedCopy(document);
  EXPECT_EQ(bytes.find("QMR1;S"), std::string::npos);
  const DocumentHandle copy = loadDocument(bytes);
  LoadPlacements(copy.get());
  ASSERT_EQ(session.placements[0].size(), 2u);
  EXPECT_EQ(placement(0, 0).width, 30);
  EXPECT_EQ(placement(0, 1).text, u"semi; colon \u0142");
  const PageHandle page(FPDF_LoadPage(copy.get(), 0));
  const AnnotationHandle stamp(FPDFPage_GetAnnot(page.get(), 0));
  const platform::SharedPicture picture = ExtractAnnotImage(copy.get(), page.get(), stamp.get());
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->pixels, quarters()->pixels);
  ClearPlacements();
}

// PDFium smooths pictures that are turned.
bool nearly(std::uint32_t color, std::uint32_t wanted) {
  for (const int shift : {0, 8, 16}) {
    const int difference =
        static_cast<int>(color >> shift & 0xFF) - static_cast<int>(wanted >> shift & 0xFF);
    if (difference < -8 || difference > 8) return false;
  }
  return true;
}

// The picture that PDFium draws of what was written.
class WrittenPictureTest : public WritePlacementsTest,
                           public testing::WithParamInterface<std::tuple<int, double>> {};

TEST_P(WrittenPictureTest, AStampLiesOnItsBox) {
  const auto [rotate, rotation] = GetParam();
  PdfPage page = plainPage();
  page.left = -50;
  page.bottom = 30;
  page.rotate = rotate;
  page.entries = "/CropBox [-40 50 520 800]";
  const FPDF_DOCUMENT document = openPlain(1, page);
  add(0, stampOf(quarters(64), 200, 300, 120, 60, rotation));
  writeAll(document);
  setView(0, 1.0f, 40.0f, 20.0f);
  // A little inside each corner of the box, from the top left on, clockwise.
  constexpr std::uint32_t kColors[] = {0xFF0000, 0x00FF00, 0xFFFFFF, 0x0000FF};
  const Placement inner = stampOf(nullptr, 210, 310, 100, 40, rotation);
  const std::array<PagePoint, 4> corners = placementCorners(inner);
  for (std::size_t i = 0; i < corners.size(); ++i) {
    const std::uint32_t color = pictureAt(placeOf(corners[i].x, corners[i].y));
    EXPECT_TRUE(nearly(color, kColors[i])) << i << ": " << std::hex << color;
  }
  const std::array<PagePoint, 4> outside =
      placementCorners(stampOf(nullptr, 197, 297, 126, 66, rotation));
  for (const PagePoint& corner : outside) {
    EXPECT_EQ(pictureAt(placeOf(corner.x, corner.y)), 0xFFFFFFu);
  }
}

INSTANTIATE_TEST_SUITE_P(PagesAndTurns, WrittenPictureTest,
                         testing::Combine(testing::Values(0, 90, 180, 270),
                                          testing::Values(0.0, 0.4, -std::numbers::pi / 2, 3.0)));

}  // namespace
}  // namespace quillmere::test
