#include "view/render.h"

#include "view/geometry.h"
#include "view/view_test.h"

namespace quillmere::test {
namespace {

class RenderTest : public ViewTest {
 protected:
  static std::uint32_t pixel(int x, int y) {
    return platform::pixelsOf(pane(0).pageBitmap.get())[y * pane(0).pageBitmapWidth + x] & 0xFFFFFF;
  }
};

PdfPage cornerPage(int degrees) {
  PdfPage page;
  page.width = 200;
  page.height = 100;
  page.rotate = degrees;
  page.content = rectangleContent(0, 80, 20, 20, 0, 0, 1);  // blue, at the top left
  return page;
}

TEST_F(RenderTest, TheBitmapHasThePagesSizeCutToWholePixels) {
  openAndShow(simplePdf(1, 200, 100));
  setView(0, 1.337f, 0, 0);
  EXPECT_EQ(pane(0).pageBitmapWidth, 267);   // 267.4
  EXPECT_EQ(pane(0).pageBitmapHeight, 133);  // 133.7
}

TEST_F(RenderTest, PaperIsWhiteAndInkHasItsColour) {
  openAndShow(buildPdf({cornerPage(0)}));
  setView(0, 1.0f, 0, 0);
  EXPECT_EQ(pixel(10, 10), 0x0000FFu);
  EXPECT_EQ(pixel(100, 50), 0xFFFFFFu);
}

TEST_F(RenderTest, ATurnedViewTurnsThePictureClockwise) {
  openAndShow(buildPdf({cornerPage(0)}));
  pane(0).documentRotation = 1;
  setView(0, 1.0f, 0, 0);
  ASSERT_EQ(pane(0).pageBitmapWidth, 100);
  ASSERT_EQ(pane(0).pageBitmapHeight, 200);
  EXPECT_EQ(pixel(90, 10), 0x0000FFu);  // the top left corner is now at the top right
  EXPECT_EQ(pixel(10, 10), 0xFFFFFFu);
}

TEST_F(RenderTest, ThePagesOwnTurnIsNotAppliedTwice) {
  openAndShow(buildPdf({cornerPage(90)}));
  setView(0, 1.0f, 0, 0);
  ASSERT_EQ(pane(0).pageBitmapWidth, 100);
  EXPECT_EQ(pixel(90, 10), 0x0000FFu);
}

TEST_F(RenderTest, FilledInFormFieldsAreSeenAndHiddenOnesAreNot) {
  openAndShow(filledFormPdf());
  setView(0, 1.0f, 0, 0);
  EXPECT_EQ(pixel(100, 400 - 325), 0x00FF00u);
  int ink = 0;  // of the value without an appearance in the file
  for (int y = 400 - 220; y < 400 - 200; ++y) {
    for (int x = 50; x < 150; ++x) ink += (pixel(x, y) & 0xFF) < 0x80 ? 1 : 0;
  }
  EXPECT_GT(ink, 40);
  EXPECT_EQ(pixel(100, 400 - 125), 0xFFFFFFu);
  EXPECT_FALSE(hasUnsavedChanges());
}

TEST_F(RenderTest, AnnotationsAreDrawnWithThePage) {
  PdfPage page = cornerPage(0);
  page.content.clear();
  page.annotations = {"<< /Type /Annot /Subtype /Square /Rect [50 20 90 60] /IC [1 0 0] >>"};
  openAndShow(buildPdf({page}));
  setView(0, 1.0f, 0, 0);
  EXPECT_EQ(pixel(70, 60), 0xFF0000u);
}

TEST_F(RenderTest, AVerySmallPageHasAtLeastOnePixel) {
  openAndShow(simplePdf(1, 3, 1));
  setView(0, 0.2f, 0, 0);
  EXPECT_EQ(pane(0).pageBitmapWidth, 1);
  EXPECT_EQ(pane(0).pageBitmapHeight, 1);
  EXPECT_NE(pane(0).pageBitmap, nullptr);
}

TEST_F(RenderTest, APageBeyondAllMemoryLeavesThePaneWithoutABitmap) {
  openAndShow(hugePagePdf());
  EXPECT_NE(pane(0).page, nullptr);
  EXPECT_EQ(pane(0).pageBitmap, nullptr);
  EXPECT_EQ(pane(0).pageBitmapWidth, 0);
  EXPECT_EQ(pane(0).pageBitmapHeight, 0);
}

TEST_F(RenderTest, WithoutAPageTheOldBitmapGoes) {
  openAndShow(simplePdf(1, 200, 100));
  closePanePage(0);
  renderPane(0);
  EXPECT_EQ(pane(0).pageBitmap, nullptr);
  EXPECT_EQ(pane(0).pageBitmapWidth, 0);
}

TEST_F(RenderTest, AHiddenPaneIsNotRendered) {
  openAndShow(simplePdf(2, 200, 100));
  session.viewMode = ViewMode::IndependentPages;
  show(1, 1);
  ASSERT_NE(pane(1).pageBitmap, nullptr);
  session.viewMode = ViewMode::SinglePage;
  refreshPicture(1);
  EXPECT_EQ(pane(1).pageBitmap, nullptr);
  EXPECT_NE(pane(1).page, nullptr);
}

TEST_F(RenderTest, ANewPictureAtTheUsersZoomStaysWhereItWas) {
  openAndShow(simplePdf(1, 2000, 100));
  setView(0, 1.5f, -40, 0);
  pane(0).zoomMode = kCustomFit;
  refreshPicture(0);
  EXPECT_EQ(pane(0).panX, -40);
  EXPECT_EQ(pane(0).zoom, 1.5f);
}

}  // namespace
}  // namespace quillmere::test
