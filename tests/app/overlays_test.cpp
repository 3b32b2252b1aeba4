#include "app/overlays.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "nav/find_bar.h"
#include "platform/main_window.h"
#include "support/opening_test.h"
#include "support/pdf_builder.h"
#include "view/selection.h"

namespace quillmere::test {
namespace {

class OverlaysTest : public OpeningTest {
 protected:
  OverlaysTest() {
    PdfPage page;
    page.content = textContent("one word", 100, 600);
    EXPECT_TRUE(open(buildPdf({page})));
  }
  static void search() {
    OpenFindBar();
    platform::standIn().findBar.field = u"o";
    findFieldChanged();
  }
};

TEST_F(OverlaysTest, APlainPageHasNone) {
  EXPECT_TRUE(overlayQuads(0).empty());
}

TEST_F(OverlaysTest, HitsLieUnderTheSelection) {
  search();
  selectAll(0);
  const std::vector<OverlayQuad> quads = overlayQuads(0);
  ASSERT_EQ(quads.size(), 3u);
  EXPECT_EQ(quads[0].color, kCurrentHitColor);
  EXPECT_EQ(quads[1].color, kFindHitColor);
  const platform::SystemColor system = platform::highlightColor();
  EXPECT_EQ(quads[2].color, (OverlayColor{kSelectionAlpha, system.r, system.g, system.b}));
}

TEST_F(OverlaysTest, TheSelectionIsAnUprightBoxInTheOrderAroundIt) {
  selectAll(0);
  const std::vector<OverlayQuad> quads = overlayQuads(0);
  ASSERT_EQ(quads.size(), 1u);
  const TextQuad& quad = quads[0].quad;
  EXPECT_EQ(quad.corner[0].y, quad.corner[1].y);
  EXPECT_EQ(quad.corner[1].x, quad.corner[2].x);
  EXPECT_EQ(quad.corner[2].y, quad.corner[3].y);
  EXPECT_EQ(quad.corner[3].x, quad.corner[0].x);
  EXPECT_LT(quad.corner[0].x, quad.corner[1].x);
  EXPECT_LT(quad.corner[1].y, quad.corner[2].y);
}

TEST_F(OverlaysTest, PicturesLieInTheOrderOfTheirListUnderThePreviews) {
  Placement written;
  written.annotIndex = 0;
  Placement pending;
  pending.kind = PlacementKind::TextDrop;
  pending.text = u"Paid";
  pending.x = 100;
  pending.y = 300;
  pending.width = 60;
  pending.height = 20;
  Placement later = pending;
  later.text = u"Received";
  session.placements[0] = {written, pending, later};
  session.stampLibrary = {StampEntry{}};
  session.stampLibrary[0].width = 40;
  session.stampLibrary[0].height = 20;
  session.stampDrag.stamp = 0;
  session.stampDrag.stampOverPage = true;
  const PixelRect everything{0, 0, 5000, 5000};
  session.textTool.armed = true;
  session.textTool.pointerKnown = true;
  session.textTool.x = 500;
  session.textTool.y = 300;
  const std::vector<OverlayDrawing> drawings = overlayDrawings(0, everything);
  ASSERT_EQ(drawings.size(), 4u);
  EXPECT_EQ(std::get<PictureDrawing>(drawings[0]).picture, session.placements[0][1].image);
  EXPECT_EQ(std::get<PictureDrawing>(drawings[1]).picture, session.placements[0][2].image);
  EXPECT_EQ(std::get<PictureDrawing>(drawings[2]).alpha, kGhostAlpha);
  EXPECT_EQ(std::get<PictureDrawing>(drawings[2]).height, 80);
  EXPECT_EQ(std::get<TextGhost>(drawings[3]).alpha, kTextGhostAlpha);
  EXPECT_TRUE(overlayDrawings(1, everything).empty());
}

TEST_F(OverlaysTest, AnyOfThemLiesOverThePage) {
  const PixelRect everything{0, 0, 5000, 5000};
  EXPECT_FALSE(anythingOver(0, everything));
  selectAll(0);
  EXPECT_TRUE(anythingOver(0, everything));
  EXPECT_FALSE(anythingOver(1, everything));
  dropTextSelection();
  ASSERT_FALSE(anythingOver(0, everything));
  session.textTool.armed = true;
  session.textTool.pointerKnown = true;
  session.textTool.x = 500;
  session.textTool.y = 300;
  EXPECT_TRUE(anythingOver(0, everything)) << "the preview of a text";
  session.textTool.armed = false;
  session.placements[0] = {Placement{}};
  EXPECT_TRUE(anythingOver(0, everything));
}

TEST_F(OverlaysTest, PicturesOutsideTheAreaAreLeftOut) {
  Placement stamp;
  stamp.x = 100;
  stamp.y = 300;
  stamp.width = 60;
  stamp.height = 20;
  session.placements[0] = {stamp};
  const PixelRect bounds = PlacementScreenBounds(0, stamp);
  EXPECT_EQ(overlayDrawings(0, bounds).size(), 1u);
  const PixelRect beside{bounds.right + 2, bounds.top, bounds.right + 50, bounds.bottom};
  EXPECT_TRUE(overlayDrawings(0, beside).empty());
}

TEST_F(OverlaysTest, APaneWithoutASelectionHasNone) {
  selectAll(0);
  EXPECT_TRUE(overlayQuads(1).empty());
}

}  // namespace
}  // namespace quillmere::test
