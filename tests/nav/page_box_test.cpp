#include <cmath>
#include <string>
#include <vector>

#include "nav/bookmarks.h"
#include "nav/find_view.h"
#include "nav/links.h"
#include "nav/nav_test.h"
#include "view/geometry.h"
#include "view/render.h"
#include "view/selection.h"

namespace quillmere::test {
namespace {

// Pages whose boxes do not begin at 0, 0. Places are taken from the picture of a red square, below
// which there are a character and a link, so that nothing here relies on the mapping it tests.
class PageBoxTest : public NavTest {
 protected:
  static constexpr double kSquareSide = 20;  // points

  // `square` is the bottom left corner of the red square.
  static PdfPage pageWithSquare(PagePoint square) {
    PdfPage page;
    page.content = textContent("Q", square.x + 2, square.y + 3, 20) +
                   rectangleContent(square.x, square.y, kSquareSide, kSquareSide, 1, 0, 0) + "\n";
    page.annotations.push_back(linkAnnotation(square.x, square.y, square.x + kSquareSide,
                                              square.y + kSquareSide, pageDestination(1)));
    return page;
  }

  struct BoxCase {
    const char* what;
    PagePoint square;
    double left;  // of the media box, like `bottom`
    double bottom;
    const char* entries;

    PdfPage page() const {
      PdfPage page = pageWithSquare(square);
      page.left = left;
      page.bottom = bottom;
      page.entries = entries;
      return page;
    }
  };
  static inline const std::vector<BoxCase> kCases = {
      {"crop box", {320, 300}, 0, 0, "/CropBox [100 150 512 692]"},
      {"negative corner", {-40, -70}, -300, -400, ""},
      {"crop box beyond the page's edges", {320, 300}, 0, 0, "/CropBox [-200 250 400 5000]"},
      {"corner far away", {5100.5, 7200.25}, 5000, 7000, ""},
  };

  // The square in the pane, in pixels from the pane's top left corner; empty when not found.
  static PaneBox squareIn(int index) {
    const PaneSlot& slot = session.panes[index];
    PaneBox box{1e9, 1e9, -1e9, -1e9};
    const std::uint32_t* pixels = platform::pixelsOf(slot.pageBitmap.get());
    for (int y = 0; y < slot.pageBitmapHeight; ++y) {
      for (int x = 0; x < slot.pageBitmapWidth; ++x) {
        if ((pixels[y * slot.pageBitmapWidth + x] & 0xFFFFFF) != 0xFF0000) continue;
        box = {std::min(box.left, x + 0.0), std::min(box.top, y + 0.0),
               std::max(box.right, x + 1.0), std::max(box.bottom, y + 1.0)};
      }
    }
    return {box.left + slot.panX, box.top + slot.panY, box.right + slot.panX,
            box.bottom + slot.panY};
  }

  static void expectEverythingAtTheSquare(int index) {
    const PaneBox square = squareIn(index);
    ASSERT_LT(square.left, square.right);
    const double x = (square.left + square.right) / 2;
    const double y = (square.top + square.bottom) / 2;
    const PixelRect rect = paneRect(index);
    const int clientX = rect.left + static_cast<int>(x);
    const int clientY = rect.top + static_cast<int>(y);
    EXPECT_EQ(charAtPoint(index, clientX, clientY), 0);
    EXPECT_NE(LinkAtPoint(index, clientX, clientY), nullptr);

    selectAll(index);
    const std::vector<PaneBox> boxes = selectionBoxes(index);
    ASSERT_EQ(boxes.size(), 1u);
    expectAround(boxes[0], x, y);
    const std::vector<FindHitQuad> hits = findHitQuads(index);
    ASSERT_EQ(hits.size(), 1u);
    const auto& corner = hits[0].quad.corner;
    EXPECT_NEAR((corner[0].x + corner[2].x) / 2, x, kSquareSide / 2);
    EXPECT_NEAR((corner[0].y + corner[2].y) / 2, y, kSquareSide / 2);

    const PagePoint there = paneToPage(index, x, y);
    const PanePoint back = pageToPane(index, there.x, there.y);
    EXPECT_NEAR(back.x, x, 1e-6);
    EXPECT_NEAR(back.y, y, 1e-6);
  }

  // The target is the upper edge that the square has on an unturned page.
  static void expectTargetAtTheTop(int turns) {
    switch (turns) {
      case 0:
        EXPECT_NEAR(squareIn(0).top, 24.0, 1.5);
        break;
      case 2:
        EXPECT_NEAR(squareIn(0).bottom, 24.0, 1.5);
        break;
      default:
        EXPECT_NEAR(pane(0).panY, 24.0, 0.01);
        break;
    }
  }

  static void expectAround(const PaneBox& box, double x, double y) {
    EXPECT_LT(box.left, x);
    EXPECT_GT(box.right, x);
    EXPECT_LT(box.top, y);
    EXPECT_GT(box.bottom, y);
  }
};

TEST_F(PageBoxTest, CharactersLinksSelectionAndHitsStandWhereTheyAreSeenUnderEveryTurn) {
  for (const BoxCase& boxCase : kCases) {
    for (int own = 0; own < 4; ++own) {
      PdfPage page = boxCase.page();
      page.rotate = own * 90;
      ASSERT_TRUE(open(buildPdf({page})));
      type(u"Q");
      for (std::uint32_t pending = 0; pending < 4; ++pending) {
        SCOPED_TRACE(testing::Message() << boxCase.what << " " << own << " " << pending);
        session.active.pageRotations[0] = pending;
        layoutAndRender(0);
        expectEverythingAtTheSquare(0);
      }
      session.active.pageRotations.clear();
    }
  }
}

TEST_F(PageBoxTest, TheRightPaneOfTwoDocumentsHasABoxOfItsOwn) {
  ASSERT_TRUE(open(buildPdf({kCases[0].page()})));
  setViewMode(ViewMode::TwoDocuments);
  ASSERT_TRUE(open(buildPdf({kCases[1].page()}), 1, u"C:\\other.pdf"));
  for (const int index : {1, 0}) {
    setActivePane(index);
    type(u"");
    type(u"Q");
    expectEverythingAtTheSquare(index);
  }
}

TEST_F(PageBoxTest, ABookmarksTargetStandsBelowThePanesTopWhateverTheBox) {
  for (const BoxCase& boxCase : kCases) {
    SCOPED_TRACE(boxCase.what);
    PdfOptions options;
    options.outline = {{u"Square", pageDestination(2, boxCase.square.y + kSquareSide), {}}};
    ASSERT_TRUE(open(buildPdf({PdfPage{}, boxCase.page()}, options)));
    pane(0).zoomMode = kFitWidth;
    layoutAndRender(0);
    JumpToTreeEntry(0);
    ASSERT_EQ(pane(0).currentPage, 1);
    EXPECT_NEAR(squareIn(0).top, 24.0, 1.5);
  }
}

// The line of the target is level on a page that is upright or upside down. On a sideways page it
// runs from top to bottom and begins at the page's upper edge.
TEST_F(PageBoxTest, ABookmarksTargetIsInSightUnderEveryTurn) {
  for (const BoxCase& boxCase : kCases) {
    for (int own = 0; own < 4; ++own) {
      PdfPage page = boxCase.page();
      page.rotate = own * 90;
      PdfOptions options;
      options.outline = {{u"Square", pageDestination(2, boxCase.square.y + kSquareSide), {}}};
      ASSERT_TRUE(open(buildPdf({PdfPage{}, page}, options)));
      for (int pending = 0; pending < 4; ++pending) {
        SCOPED_TRACE(testing::Message() << boxCase.what << " " << own << " " << pending);
        goToPage(0, 0, false);
        session.active.pageRotations[1] = static_cast<std::uint32_t>(pending);
        pane(0).zoomMode = kFitWidth;
        JumpToTreeEntry(0);
        ASSERT_EQ(pane(0).currentPage, 1);
        expectTargetAtTheTop((own + pending) % 4);
      }
      session.active.pageRotations.clear();
    }
  }
}

// Upside down, the page's top is at the bottom of the screen, so scrolling to it would show only
// the last of the page.
TEST_F(PageBoxTest, ABookmarkAtTheTopOfAPageThatIsUpsideDownOnlyTurnsToIt) {
  for (const double y : {692.0, 700.0, 1e9}) {
    for (const bool own : {true, false}) {
      SCOPED_TRACE(testing::Message() << y << " " << own);
      PdfPage page = kCases[0].page();
      page.rotate = own ? 180 : 0;
      PdfOptions options;
      options.outline = {{u"Top", pageDestination(2, y), {}}};
      ASSERT_TRUE(open(buildPdf({PdfPage{}, page}, options)));
      if (!own) session.active.pageRotations[1] = 2;
      pane(0).zoomMode = kFitWidth;
      goToPage(0, 1, false);
      const float panY = pane(0).panY;
      goToPage(0, 0, false);
      JumpToTreeEntry(0);
      ASSERT_EQ(pane(0).currentPage, 1);
      EXPECT_EQ(pane(0).panY, panY);
      session.active.pageRotations.clear();
    }
  }
}

// A page too large for a picture has no limits of its own for the pan.
TEST_F(PageBoxTest, ATargetOutsideEveryPageMovesThePageByASoundDistance) {
  for (const char* digits : {"3", "-3"}) {
    PdfPage page;
    page.width = 14000;
    page.height = 14000;
    PdfOptions options;
    const std::string y = digits + std::string(38, '0') + ".5";
    options.outline = {{u"Far", "/Dest [{page 1} /XYZ null " + y + " null]", {}}};
    ASSERT_TRUE(open(buildPdf({page}, options)));
    pane(0).zoomMode = kCustomFit;
    pane(0).zoom = 10;
    layoutAndRender(0);
    ASSERT_EQ(pane(0).pageBitmap, nullptr);
    JumpToTreeEntry(0);
    EXPECT_LE(std::abs(pane(0).panY), 2e9f) << digits;
  }
}

TEST_F(PageBoxTest, ACropBoxBesideThePageShowsNothingAndBreaksNothing) {
  PdfPage page = pageWithSquare({320, 300});
  page.entries = "/CropBox [2000 2000 2100 2100]";
  ASSERT_TRUE(open(buildPdf({page})));
  type(u"Q");
  const PixelRect rect = paneRect(0);
  const int x = (rect.left + rect.right) / 2;
  const int y = (rect.top + rect.bottom) / 2;
  EXPECT_EQ(LinkAtPoint(0, x, y), nullptr);
  charAtPoint(0, x, y);
  selectAll(0);
  for (const PaneBox& box : selectionBoxes(0)) EXPECT_TRUE(std::isfinite(box.left));
}

}  // namespace
}  // namespace quillmere::test
