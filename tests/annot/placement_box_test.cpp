#include "annot/placement_box.h"

#include <gtest/gtest.h>

#include <numbers>

#include "support/pdf_builder.h"
#include "support/session_test.h"

namespace quillmere::test {
namespace {

constexpr double kQuarter = std::numbers::pi / 2;

Placement boxAt(double x, double y, double width, double height, double rotation = 0) {
  Placement placement;
  placement.x = x;
  placement.y = y;
  placement.width = width;
  placement.height = height;
  placement.rotation = rotation;
  return placement;
}

void expectPoint(const PagePoint& point, double x, double y) {
  EXPECT_NEAR(point.x, x, 1e-9);
  EXPECT_NEAR(point.y, y, 1e-9);
}

PagePoint mapped(const FS_MATRIX& matrix, double x, double y) {
  return {matrix.a * x + matrix.c * y + matrix.e, matrix.b * x + matrix.d * y + matrix.f};
}

void expectNearPoint(const PagePoint& point, const PagePoint& wanted) {
  EXPECT_NEAR(point.x, wanted.x, 1e-3);
  EXPECT_NEAR(point.y, wanted.y, 1e-3);
}

TEST(PlacementBoxTest, WithoutATurnTheMatrixIsTheBox) {
  const FS_MATRIX matrix = placementMatrix(boxAt(10, 20, 30, 40));
  EXPECT_EQ(matrix.a, 30);
  EXPECT_EQ(matrix.b, 0);
  EXPECT_EQ(matrix.c, 0);
  EXPECT_EQ(matrix.d, 40);
  EXPECT_EQ(matrix.e, 10);
  EXPECT_EQ(matrix.f, 20);
}

TEST(PlacementBoxTest, WithoutATurnTheRectangleIsTheBox) {
  const FS_RECTF rect = PlacementAnnotRect(boxAt(10, 20, 30, 40));
  EXPECT_EQ(rect.left, 10);
  EXPECT_EQ(rect.top, 60);
  EXPECT_EQ(rect.right, 40);
  EXPECT_EQ(rect.bottom, 20);
}

TEST(PlacementBoxTest, AQuarterTurnSwapsTheRectanglesSides) {
  const FS_RECTF rect = PlacementAnnotRect(boxAt(10, 20, 30, 40, kQuarter));
  EXPECT_NEAR(rect.right - rect.left, 40, 1e-4);
  EXPECT_NEAR(rect.top - rect.bottom, 30, 1e-4);
  EXPECT_NEAR((rect.left + rect.right) / 2, 25, 1e-4);
  EXPECT_NEAR((rect.top + rect.bottom) / 2, 40, 1e-4);
}

TEST(PlacementBoxTest, HandlesGoClockwiseFromTheTopLeft) {
  const Placement box = boxAt(10, 20, 30, 40);
  expectPoint(placementHandle(box, 0), 10, 60);
  expectPoint(placementHandle(box, 1), 25, 60);
  expectPoint(placementHandle(box, 2), 40, 60);
  expectPoint(placementHandle(box, 3), 40, 40);
  expectPoint(placementHandle(box, 4), 40, 20);
  expectPoint(placementHandle(box, 5), 25, 20);
  expectPoint(placementHandle(box, 6), 10, 20);
  expectPoint(placementHandle(box, 7), 10, 40);
}

TEST(PlacementBoxTest, APositiveTurnIsClockwise) {
  // The top left corner goes to the top right one of a square.
  expectPoint(placementHandle(boxAt(0, 0, 10, 10, kQuarter), 0), 10, 10);
  expectPoint(placementHandle(boxAt(0, 0, 10, 10, kQuarter), 1), 10, 5);
}

TEST(PlacementBoxTest, TheMatrixTakesTheUnitSquareToTheTurnedCorners) {
  const Placement box = boxAt(10, 20, 30, 40, 0.7);
  const std::array<PagePoint, 4> corners = placementCorners(box);
  const FS_MATRIX matrix = placementMatrix(box);
  expectNearPoint(mapped(matrix, 0, 1), corners[0]);
  expectNearPoint(mapped(matrix, 1, 1), corners[1]);
  expectNearPoint(mapped(matrix, 1, 0), corners[2]);
  expectNearPoint(mapped(matrix, 0, 0), corners[3]);
}

TEST(PlacementBoxTest, TextInItsNaturalSizeStartsAtTheBaselineInTheBox) {
  const FS_MATRIX matrix = textDropMatrix(boxAt(10, 20, 50, 14), {50, 14, 11});
  EXPECT_EQ(matrix.a, 1);
  EXPECT_EQ(matrix.d, 1);
  EXPECT_NEAR(matrix.e, 10, 1e-4);
  EXPECT_NEAR(matrix.f, 20 + 3, 1e-4);
}

TEST(PlacementBoxTest, AStretchedTextStretchesItsDescent) {
  const FS_MATRIX matrix = textDropMatrix(boxAt(10, 20, 100, 42), {50, 14, 11});
  EXPECT_NEAR(matrix.a, 2, 1e-6);
  EXPECT_NEAR(matrix.d, 3, 1e-6);
  EXPECT_NEAR(matrix.e, 10, 1e-4);
  EXPECT_NEAR(matrix.f, 20 + 9, 1e-4);
}

TEST(PlacementBoxTest, ATurnedTextTurnsAboutTheBoxsCentre) {
  const Placement box = boxAt(10, 20, 50, 14, kQuarter);
  const FS_MATRIX matrix = textDropMatrix(box, {50, 14, 11});
  // The middle of the text's own box lies at the centre of the placement's.
  expectNearPoint(mapped(matrix, 25, 7 - 3), placementCentre(box));
  // Its baseline runs down the page.
  EXPECT_NEAR(matrix.b, -1, 1e-6);
}

TEST(PlacementBoxTest, TextWithoutASizeIsNotStretched) {
  const FS_MATRIX matrix = textDropMatrix(boxAt(10, 20, 50, 14), {0, 0, 11});
  EXPECT_EQ(matrix.a, 1);
  EXPECT_EQ(matrix.d, 1);
}

class PlacementClampTest : public SessionTest {
 protected:
  Placement clamped(const std::string& bytes, Placement placement) {
    document_ = loadDocument(bytes);
    const PageHandle page(FPDF_LoadPage(document_.get(), 0));
    ClampPlacementToPage(placement, page.get());
    return placement;
  }
  static std::string pageOf(double left, double bottom, double width, double height,
                            int rotate = 0) {
    PdfPage page;
    page.left = left;
    page.bottom = bottom;
    page.width = width;
    page.height = height;
    page.rotate = rotate;
    return buildPdf({page});
  }

 private:
  DocumentHandle document_;
};

TEST_F(PlacementClampTest, TheCentreStaysOnThePage) {
  const Placement high = clamped(pageOf(0, 0, 600, 800), boxAt(590, 790, 40, 60));
  expectPoint(placementCentre(high), 600, 800);
  const Placement low = clamped(pageOf(0, 0, 600, 800), boxAt(-100, -100, 40, 60));
  expectPoint(placementCentre(low), 0, 0);
  const Placement inside = clamped(pageOf(0, 0, 600, 800), boxAt(580, 3, 40, 60));
  expectPoint(placementCentre(inside), 600, 33);
}

TEST_F(PlacementClampTest, ThePagesOwnTurnDoesNotMatter) {
  const Placement placement = clamped(pageOf(0, 0, 600, 800, 90), boxAt(700, 700, 40, 60));
  expectPoint(placementCentre(placement), 600, 730);
}

TEST_F(PlacementClampTest, PagesNeedNotBeginAtTheOrigin) {
  const Placement placement = clamped(pageOf(-300, 1000, 600, 800), boxAt(0, 0, 40, 60));
  expectPoint(placementCentre(placement), 20, 1000);
}

TEST_F(PlacementClampTest, WithoutAPageNothingMoves) {
  Placement placement = boxAt(1e6, -1e6, 40, 60);
  ClampPlacementToPage(placement, nullptr);
  EXPECT_EQ(placement.x, 1e6);
  EXPECT_EQ(placement.y, -1e6);
}

}  // namespace
}  // namespace quillmere::test
