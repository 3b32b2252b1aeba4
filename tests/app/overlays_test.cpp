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

TEST_F(OverlaysTest, APaneWithoutASelectionHasNone) {
  selectAll(0);
  EXPECT_TRUE(overlayQuads(1).empty());
}

}  // namespace
}  // namespace quillmere::test
