#include "view/geometry.h"

#include "session/density.h"
#include "view/navigation.h"
#include "view/render.h"
#include "view/view_test.h"
#include "view/zoom.h"

namespace quillmere::test {
namespace {

using testing::FloatNear;

class GeometryTest : public ViewTest {};

PdfPage turnedPage(int degrees) {
  PdfPage page;
  page.width = 400;
  page.height = 600;
  page.rotate = degrees;
  return page;
}

TEST_F(GeometryTest, LengthsAreThoseAt96PixelsAnInch) {
  EXPECT_EQ(scaled(34), 34);
  session.dpi = 144;
  EXPECT_EQ(scaled(34), 51);
  EXPECT_EQ(scaled(3), 5);  // 4.5 rounds up
  session.dpi = 192;
  EXPECT_EQ(scaled(3), 6);
}

TEST_F(GeometryTest, SinglePageTakesTheWholeClientAreaAboveTheStatusBar) {
  EXPECT_EQ(paneRect(0), (PixelRect{0, 0, 1000, 778}));
  EXPECT_TRUE(paneRect(1).empty());
}

TEST_F(GeometryTest, PanelsAndFindBarTakeTheirShare) {
  session.binderPanelVisible = true;
  session.leftPanelWidth = 190;
  session.findBarVisible = true;
  session.stampPanelVisible = true;
  session.stampPanelWidth = 180;
  EXPECT_EQ(paneRect(0), (PixelRect{193, 34, 817, 778}));
}

TEST_F(GeometryTest, EitherPartOfTheLeftPanelOpensIt) {
  session.leftPanelWidth = 200;
  EXPECT_EQ(leftPanelEdge(), 0);
  session.navigationPanelVisible = true;
  EXPECT_EQ(leftPanelEdge(), 203);
  session.navigationPanelVisible = false;
  session.binderPanelVisible = true;
  EXPECT_EQ(leftPanelEdge(), 203);
}

TEST_F(GeometryTest, TheStampPanelTakesNothingOutsideSinglePage) {
  session.stampPanelVisible = true;
  session.viewMode = ViewMode::IndependentPages;
  EXPECT_EQ(paneRect(1), (PixelRect{502, 0, 1000, 778}));
}

TEST_F(GeometryTest, TheDividerIsCentredBetweenLeftPanelAndRightEdge) {
  session.viewMode = ViewMode::Book;
  session.navigationPanelVisible = true;
  session.leftPanelWidth = 190;
  EXPECT_EQ(dividerX(), 596);  // 193 + 807 / 2
  EXPECT_EQ(paneRect(0), (PixelRect{193, 0, 596, 778}));
  EXPECT_EQ(paneRect(1), (PixelRect{598, 0, 1000, 778}));
}

TEST_F(GeometryTest, AMovedDividerDecidesBothPanes) {
  session.viewMode = ViewMode::TwoDocuments;
  session.paneDividerPosition = 321;
  EXPECT_EQ(paneRect(0), (PixelRect{0, 0, 321, 778}));
  EXPECT_EQ(paneRect(1), (PixelRect{323, 0, 1000, 778}));
}

TEST_F(GeometryTest, ClientXBelongsToPanelPaneOrDivider) {
  session.navigationPanelVisible = true;
  session.leftPanelWidth = 190;
  EXPECT_EQ(paneAt(192), -1);
  EXPECT_EQ(paneAt(193), 0);
  EXPECT_EQ(paneAt(999), 0);
  session.viewMode = ViewMode::Book;
  EXPECT_EQ(paneAt(192), -1);
  EXPECT_EQ(paneAt(595), 0);
  EXPECT_EQ(paneAt(596), -1);
  EXPECT_EQ(paneAt(597), -1);
  EXPECT_EQ(paneAt(598), 1);
  EXPECT_EQ(paneAt(-1), -1);
  session.navigationPanelVisible = false;
  session.binderPanelVisible = false;
  EXPECT_EQ(paneAt(-1), 0);
}

TEST_F(GeometryTest, TheShownSizeFollowsAllTurnsTogether) {
  for (int own = 0; own < 4; ++own) {
    resetSession();
    openAndShow(buildPdf({turnedPage(own * 90)}));
    for (std::uint32_t document = 0; document < 4; ++document) {
      for (std::uint32_t page = 0; page < 4; ++page) {
        session.panes[0].documentRotation = document;
        session.active.pageRotations[0] = page;
        const bool sideways = (static_cast<std::uint32_t>(own) + document + page) % 2 == 1;
        SCOPED_TRACE(testing::Message() << own << " " << document << " " << page);
        EXPECT_EQ(pageRotationOf(0), (static_cast<std::uint32_t>(own) + document + page) % 4);
        EXPECT_EQ(renderRotationOf(0), (document + page) % 4);
        EXPECT_DOUBLE_EQ(pageSizeRotated(0).width, sideways ? 600 : 400);
        EXPECT_DOUBLE_EQ(pageSizeRotated(0).height, sideways ? 400 : 600);
      }
    }
  }
}

TEST_F(GeometryTest, OnlyTheLowTwoBitsOfATurnCount) {
  openAndShow(simplePdf(1, 400, 600));
  session.active.pageRotations[0] = 4;
  session.panes[0].documentRotation = 8;
  EXPECT_EQ(pendingPageRotation(0), 0u);
  EXPECT_EQ(pageRotationOf(0), 0u);
  session.active.pageRotations[0] = 7;
  EXPECT_EQ(pendingPageRotation(0), 3u);
}

TEST_F(GeometryTest, APageTurnAppliesToItsPageAlone) {
  openAndShow(simplePdf(2, 400, 600));
  session.active.pageRotations[1] = 1;
  EXPECT_EQ(pageRotationOf(0), 0u);
  show(0, 1);
  EXPECT_EQ(pageRotationOf(0), 1u);
}

TEST_F(GeometryTest, PageTurnsOfAPaneCountInTwoDocumentsAlone) {
  openAndShow(simplePdf(1, 400, 600));
  session.panes[0].pageRotations[0] = 1;
  EXPECT_EQ(pageRotationOf(0), 0u);
  session.viewMode = ViewMode::TwoDocuments;
  EXPECT_EQ(pageRotationOf(0), 1u);
}

struct LayoutCase {
  const char* what;
  double pageWidth;
  double pageHeight;
  ZoomMode zoomMode;
  bool fromBottom;
  float zoom;
  float panX;
  float panY;
};

TEST_F(GeometryTest, EachZoomModeComputesZoomAndPan) {
  // The pane is 1000 by 778 pixels; a page up to 762 pixels high is centred.
  const LayoutCase cases[] = {
      {"fit page, tall", 400, 600, kFitPage, false, 1.2448f, 251.04f, 15.56f},
      {"fit page ignores fromBottom", 400, 600, kFitPage, true, 1.2448f, 251.04f, 15.56f},
      {"fit page, wide", 2000, 100, kFitPage, false, 0.48f, 20.0f, 365.0f},
      {"fit page, upper limit", 10, 10, kFitPage, false, 5.0f, 475.0f, 364.0f},
      {"fit page, lower limit", 10000, 10000, kFitPage, false, 0.2f, -500.0f, -611.0f},
      {"fit width, top", 400, 600, kFitWidth, false, 2.4f, 20.0f, 8.0f},
      {"fit width, bottom", 400, 600, kFitWidth, true, 2.4f, 20.0f, -670.0f},
      {"fit width, short page, top", 1000, 500, kFitWidth, false, 0.96f, 20.0f, 149.0f},
      {"fit width, short page, bottom", 1000, 500, kFitWidth, true, 0.96f, 20.0f, 149.0f},
      {"fit width, upper limit", 100, 10, kFitWidth, false, 5.0f, 250.0f, 364.0f},
      {"actual size", 400, 600, kActualSize, false, 1.0f, 300.0f, 89.0f},
      {"actual size, wider than the pane", 1200, 600, kActualSize, false, 1.0f, -100.0f, 89.0f},
      {"actual size, tall, top", 400, 900, kActualSize, false, 1.0f, 300.0f, 8.0f},
      {"actual size, tall, bottom", 400, 900, kActualSize, true, 1.0f, 300.0f, -130.0f},
      {"actual size, last centred height", 400, 762, kActualSize, false, 1.0f, 300.0f, 8.0f},
      {"actual size, just too high, bottom", 400, 763, kActualSize, true, 1.0f, 300.0f, 7.0f},
  };
  for (const LayoutCase& c : cases) {
    SCOPED_TRACE(c.what);
    resetSession();
    openInActive(simplePdf(1, c.pageWidth, c.pageHeight));
    loadPane(0, 0);
    pane(0).zoomMode = c.zoomMode;
    layoutPane(0, c.fromBottom, 0);
    EXPECT_FLOAT_EQ(pane(0).zoom, c.zoom);
    EXPECT_THAT(pane(0).panX, FloatNear(c.panX, 1e-3f));
    EXPECT_THAT(pane(0).panY, FloatNear(c.panY, 1e-3f));
    EXPECT_EQ(session.lastPaneWidth[0], 1000);
  }
}

TEST_F(GeometryTest, CustomFitKeepsZoomAndLeftEdgeButCentresVertically) {
  openAndShow(simplePdf(1, 400, 600));
  setView(0, 0.5f, 37.0f, -55.0f);
  layoutPane(0, false, 0);
  EXPECT_FLOAT_EQ(pane(0).zoom, 0.5f);
  EXPECT_FLOAT_EQ(pane(0).panX, 37.0f);
  EXPECT_FLOAT_EQ(pane(0).panY, 239.0f);
}

TEST_F(GeometryTest, CustomFitMovesByHalfOfWhatThePaneGained) {
  openAndShow(simplePdf(1, 400, 600));
  setView(0, 2.0f, 10.0f, 0.0f);
  layoutPane(0, false, 101);
  EXPECT_FLOAT_EQ(pane(0).panX, 60.5f);
  layoutPane(0, false, -40);
  EXPECT_FLOAT_EQ(pane(0).panX, 40.5f);
  EXPECT_FLOAT_EQ(pane(0).panY, 8.0f);
  layoutPane(0, true, 0);
  EXPECT_FLOAT_EQ(pane(0).panY, -430.0f);
}

TEST_F(GeometryTest, FitPageOfATurnedPageUsesTheSwappedSize) {
  openAndShow(simplePdf(1, 400, 600));
  pane(0).documentRotation = 1;
  layoutPane(0, false, 0);
  EXPECT_FLOAT_EQ(pane(0).zoom, 1.6f);  // 1000 / 600 * 0.96
  EXPECT_THAT(pane(0).panX, FloatNear(20.0f, 1e-3f));
}

TEST_F(GeometryTest, WithoutAPageOrRoomNothingIsLaidOut) {
  openInActive(simplePdf(1));
  pane(0).panX = 12.0f;
  layoutPane(0, false, 0);
  EXPECT_FLOAT_EQ(pane(0).panX, 12.0f);
  EXPECT_EQ(session.lastPaneWidth[0], -1);

  loadPane(0, 0);
  window().client = {0, 0};
  layoutPane(0, false, 0);
  EXPECT_FLOAT_EQ(pane(0).panX, 12.0f);
  EXPECT_FLOAT_EQ(pane(0).zoom, 1.0f);
}

TEST_F(GeometryTest, ZoomIsLimitedFromAboveFirst) {
  EXPECT_FLOAT_EQ(clampZoom(7.0), 5.0f);
  EXPECT_FLOAT_EQ(clampZoom(0.01), 0.2f);
  EXPECT_FLOAT_EQ(clampZoom(-3.0), 0.2f);
  EXPECT_FLOAT_EQ(clampZoom(1.25), 1.25f);
}

TEST_F(GeometryTest, APartOfThePageStaysVisible) {
  openAndShow(simplePdf(1, 400, 600));
  struct {
    float panX, panY, expectedX, expectedY;
  } const cases[] = {
      {100, 50, 100, 50},        // inside
      {-700, -900, -320, -520},  // 80 - 400, 80 - 600
      {5000, 5000, 920, 698},    // 1000 - 80, 778 - 80
      {-320, 698, -320, 698},    // on the limits
  };
  for (const auto& c : cases) {
    setView(0, 1.0f, c.panX, c.panY);
    clampPan(0);
    EXPECT_FLOAT_EQ(pane(0).panX, c.expectedX);
    EXPECT_FLOAT_EQ(pane(0).panY, c.expectedY);
  }
}

TEST_F(GeometryTest, APaneNarrowerThanTheMarginsLeavesThePanAlone) {
  openAndShow(simplePdf(1, 40, 600));
  window().client = {100, 800};
  setView(0, 1.0f, 900.0f, 5000.0f);
  clampPan(0);  // 100 - 80 is less than 80 - 40
  EXPECT_FLOAT_EQ(pane(0).panX, 900.0f);
  EXPECT_FLOAT_EQ(pane(0).panY, 698.0f);
}

TEST_F(GeometryTest, WithoutABitmapThePanIsFree) {
  openAndShow(simplePdf(1, 400, 600));
  freePaneBitmap(0);
  pane(0).panX = 99999.0f;
  clampPan(0);
  EXPECT_FLOAT_EQ(pane(0).panX, 99999.0f);
}

struct MappingCase {
  std::uint32_t turns;
  double paneX;
  double paneY;
};

TEST_F(GeometryTest, PagePointsLandWhereTheTurnPutsThem) {
  // The point (100, 50) of a page of 400 by 600, at zoom 2 with the page's corner at (10, 20).
  const MappingCase cases[] = {
      {0, 210, 1120},  // 100 from the left, 550 from the top
      {1, 110, 220},
      {2, 610, 120},
      {3, 1110, 620},
  };
  for (const MappingCase& c : cases) {
    SCOPED_TRACE(c.turns);
    resetSession();
    openAndShow(simplePdf(1, 400, 600));
    pane(0).documentRotation = c.turns;
    setView(0, 2.0f, 10.0f, 20.0f);
    const PanePoint point = pageToPane(0, 100, 50);
    EXPECT_DOUBLE_EQ(point.x, c.paneX);
    EXPECT_DOUBLE_EQ(point.y, c.paneY);
    const PagePoint back = paneToPage(0, c.paneX, c.paneY);
    EXPECT_DOUBLE_EQ(back.x, 100);
    EXPECT_DOUBLE_EQ(back.y, 50);
  }
}

TEST_F(GeometryTest, MappingThereAndBackChangesNothingUnderAnyTurn) {
  for (int own = 0; own < 4; ++own) {
    resetSession();
    openAndShow(buildPdf({turnedPage(own * 90)}));
    for (std::uint32_t pending = 0; pending < 4; ++pending) {
      SCOPED_TRACE(testing::Message() << own << " " << pending);
      session.active.pageRotations[0] = pending;
      setView(0, 0.73f, -31.5f, 17.25f);
      const PanePoint seen = pageToPane(0, 12.5, 580.25);
      const PagePoint back = paneToPage(0, seen.x, seen.y);
      EXPECT_NEAR(back.x, 12.5, 1e-9);
      EXPECT_NEAR(back.y, 580.25, 1e-9);
    }
  }
}

// Around the red pixels of the pane's bitmap, in pixels of the pane, where the bitmap is painted.
PixelRect redOnScreen() {
  const PaneSlot& slot = session.panes[0];
  const std::uint32_t* pixels = platform::pixelsOf(slot.pageBitmap.get());
  PixelRect box{slot.pageBitmapWidth, slot.pageBitmapHeight, 0, 0};
  for (int y = 0; y < slot.pageBitmapHeight; ++y) {
    for (int x = 0; x < slot.pageBitmapWidth; ++x) {
      if ((pixels[y * slot.pageBitmapWidth + x] & 0xFF) >= 128) continue;
      box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1),
             std::max(box.bottom, y + 1)};
    }
  }
  const int left = static_cast<int>(slot.panX);
  const int top = static_cast<int>(slot.panY);
  return {box.left + left, box.top + top, box.right + left, box.bottom + top};
}

TEST_F(GeometryTest, TheBitmapShowsPlacesWhereItIsPaintedOnWholePixels) {
  for (int own = 0; own < 4; ++own) {
    for (std::uint32_t pending = 0; pending < 4; ++pending) {
      SCOPED_TRACE(testing::Message() << own << " " << pending);
      resetSession();
      PdfPage page = turnedPage(own * 90);
      // Reaches to the far edges of the page, where what is lost of its size shows most.
      page.content = rectangleContent(3, 4, page.width - 10, page.height - 10, 1, 0, 0);
      openAndShow(buildPdf({page}));
      pane(0).documentRotation = pending;
      setView(0, 0.7393f, 31.9f, -17.9f);
      const PanePoint one = pageToBitmap(0, 3, 4);
      const PanePoint other = pageToBitmap(0, page.width - 7, page.height - 6);
      const PixelRect seen = redOnScreen();
      EXPECT_NEAR(std::min(one.x, other.x), seen.left, 0.55);
      EXPECT_NEAR(std::max(one.x, other.x), seen.right, 0.55);
      EXPECT_NEAR(std::min(one.y, other.y), seen.top, 0.55);
      EXPECT_NEAR(std::max(one.y, other.y), seen.bottom, 0.55);
    }
  }
}

TEST_F(GeometryTest, WithoutABitmapPlacesAreWhereTheMappingSays) {
  openAndShow(simplePdf(1, 400, 600));
  setView(0, 0.7393f, 31.9f, -17.9f);
  freePaneBitmap(0);
  const PanePoint mapped = pageToPane(0, 390, 10);
  const PanePoint place = pageToBitmap(0, 390, 10);
  EXPECT_EQ(place.x, mapped.x);
  EXPECT_EQ(place.y, mapped.y);
}

TEST_F(GeometryTest, ThePicturesInkIsWhereTheMappingSays) {
  // A red square near the page's bottom left corner, for every rotation of page and view.
  for (int own = 0; own < 4; ++own) {
    for (std::uint32_t pending = 0; pending < 4; ++pending) {
      SCOPED_TRACE(testing::Message() << own << " " << pending);
      resetSession();
      PdfPage page = turnedPage(own * 90);
      page.content = rectangleContent(20, 40, 30, 30, 1, 0, 0);
      openAndShow(buildPdf({page}));
      pane(0).documentRotation = pending;
      setView(0, 1.0f, 0.0f, 0.0f);
      const PanePoint centre = pageToPane(0, 35, 55);
      const int x = static_cast<int>(centre.x);
      const int y = static_cast<int>(centre.y);
      ASSERT_TRUE(x >= 0 && x < pane(0).pageBitmapWidth && y >= 0 && y < pane(0).pageBitmapHeight);
      const std::uint32_t* pixels = platform::pixelsOf(pane(0).pageBitmap.get());
      EXPECT_EQ(pixels[y * pane(0).pageBitmapWidth + x] & 0xFFFFFF, 0xFF0000u);
    }
  }
}

TEST_F(GeometryTest, NothingMapsToAPageThatIsNotThere) {
  openInActive(simplePdf(1));
  pane(0).zoom = 1.0f;
  EXPECT_DOUBLE_EQ(paneToPage(0, 300, 300).x, 0);
  EXPECT_DOUBLE_EQ(paneToPage(0, 300, 300).y, 0);
  show(0, 0);
  pane(0).zoom = 0.0f;
  EXPECT_DOUBLE_EQ(paneToPage(0, 300, 300).x, 0);
  EXPECT_DOUBLE_EQ(paneToPage(0, 300, 300).y, 0);
}

TEST_F(GeometryTest, AllLengthsGrowWithTheScreensDensity) {
  session.dpi = 144;
  session.findBarVisible = true;
  session.navigationPanelVisible = true;
  session.leftPanelWidth = 285;
  EXPECT_EQ(paneRect(0), (PixelRect{290, 51, 1000, 778}));
  session.findBarVisible = false;
  session.navigationPanelVisible = false;
  openAndShow(simplePdf(1, 400, 760));
  pane(0).zoomMode = kActualSize;
  layoutPane(0, false, 0);  // 778 - 24 is less than the page's height
  EXPECT_FLOAT_EQ(pane(0).panY, 12.0f);
}

TEST_F(GeometryTest, PanelsAndDividerKeepTheirPlaceToTheEyeOnAnotherScreen) {
  session.leftPanelWidth = 190;
  session.stampPanelWidth = 181;
  session.paneDividerPosition = 400;
  changeDensity(144);
  EXPECT_EQ(session.dpi, 144);
  EXPECT_EQ(session.leftPanelWidth, 285);
  EXPECT_EQ(session.stampPanelWidth, 272);  // 271.5 rounds up
  EXPECT_EQ(session.paneDividerPosition, 600);
  changeDensity(96);
  EXPECT_EQ(session.leftPanelWidth, 190);
  EXPECT_EQ(session.stampPanelWidth, 181);
  EXPECT_EQ(session.paneDividerPosition, 400);
}

TEST_F(GeometryTest, ACentredDividerStaysCentredOnAnotherScreen) {
  session.viewMode = ViewMode::IndependentPages;
  changeDensity(144);
  EXPECT_EQ(session.paneDividerPosition, 0);
  EXPECT_EQ(dividerX(), 500);
}

TEST_F(GeometryTest, ActualSizeOfAPageFarWiderThanThePaneIsCentredUntilTheUserPans) {
  openAndShow(simplePdf(1, 5000, 300));
  window().client.width = 200;
  setZoomMode(0, kActualSize);
  EXPECT_FLOAT_EQ(pane(0).panX, -2400.0f);
  renderPane(0);
  EXPECT_FLOAT_EQ(pane(0).panX, -2400.0f);

  // Beyond the limits of a pan by the user; it stays until the next one.
  pane(0).panX = -4990.0f;
  renderPane(0);
  EXPECT_FLOAT_EQ(pane(0).panX, -4990.0f);
  panByKey(0, ArrowKey::Left);
  EXPECT_FLOAT_EQ(pane(0).panX, -4920.0f);  // 80 pixels of the page stay in view
}

}  // namespace
}  // namespace quillmere::test
