#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "annot/placement_test.h"
#include "annot/placement_view.h"
#include "annot/text_tool.h"
#include "support/compare_pictures.h"
#include "support/readers_folder.h"

namespace quillmere::test {
namespace {

constexpr float kZoom = 2;  // 144 DPI

// Stamps and texts in files that were written, where the program showed them before.
class PlacementReadersTest : public PlacementTest {
 protected:
  static PictureView viewOf(const platform::Picture& picture) {
    return {picture.width, picture.height, picture.pixels};
  }

  // Opens a page whose boxes do not begin at 0,0, shown at 144 DPI in the pane's corner.
  void openTurned(int rotate) {
    PdfPage page;
    page.width = 240;
    page.height = 160;
    page.rotate = rotate;
    page.entries = "/CropBox [-10 15 220 150]";
    openPlain(1, page);
    setView(0, kZoom, 0.0f, 0.0f);
  }

  // The drawing's pixel at a place of the page's picture, given by its middle; null outside it.
  static const std::uint32_t* pixelUnder(const PictureDrawing& drawing, double x, double y) {
    const double angle = drawing.degrees * std::numbers::pi / 180;
    const double dx = x - drawing.centre.x;
    const double dy = y - drawing.centre.y;
    const double u = (dx * std::cos(angle) + dy * std::sin(angle)) / drawing.width + 0.5;
    const double v = (dy * std::cos(angle) - dx * std::sin(angle)) / drawing.height + 0.5;
    if (u < 0 || u >= 1 || v < 0 || v >= 1) return nullptr;
    const platform::Picture& source = *drawing.picture;
    const int column = static_cast<int>(u * source.width);
    const int row = static_cast<int>(v * source.height);
    return &source.pixels[static_cast<std::size_t>(row * source.width + column)];
  }

  // What the program paints over an empty page of this size.
  static platform::Picture overlayOf(int width, int height) {
    platform::Picture overlay = plainPicture(width, height, 0xFFFFFFFF);
    for (const PictureDrawing& drawing : placementDrawings(0, {0, 0, width, height})) {
      for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
          const std::uint32_t* pixel = pixelUnder(drawing, x + 0.5, y + 0.5);
          if (pixel != nullptr) overlay.pixels[static_cast<std::size_t>(y * width + x)] = *pixel;
        }
      }
    }
    return overlay;
  }

  // A file with everything that was pending, and what PDFium draws of its first page.
  struct WrittenFile {
    std::string bytes;
    DocumentHandle document;
    platform::Picture picture;
  };
  // The document is null when writing failed.
  WrittenFile writePending() {
    const FPDF_DOCUMENT document = session.placementDocument;
    writePendingPlacements(document);
    WrittenFile written;
    written.bytes = writtenCopy(document);
    written.document = loadDocument(written.bytes);
    EXPECT_NE(written.document, nullptr);
    const PageHandle page(FPDF_LoadPage(written.document.get(), 0));
    if (page) written.picture = pictureOf(page.get());
    return written;
  }

  // Leaves the file and what it should look like to the other readers.
  static void keepBoth(const std::string& name, const WrittenFile& written,
                       const platform::Picture& picture) {
    keepForReaders(name + ".pdf", written.bytes);
    keepForReaders(name + ".ppm", ppmOf(picture));
  }

  void compareStamps(const std::string& name);
};

// Writes the stamps of page 0 and compares the file with what was shown.
void PlacementReadersTest::compareStamps(const std::string& name) {
  const PageHandle page(FPDF_LoadPage(session.placementDocument, 0));
  const platform::Picture empty = pictureOf(page.get());
  const platform::Picture shown = overlayOf(empty.width, empty.height);
  ASSERT_GT(strays(viewOf(shown), viewOf(empty)), 5000) << "stamps are shown";
  const WrittenFile written = writePending();
  EXPECT_EQ(strays(viewOf(shown), viewOf(written.picture)), 0);
  EXPECT_EQ(strays(viewOf(written.picture), viewOf(shown)), 0);
  keepBoth(name, written, shown);
}

TEST_F(PlacementReadersTest, StampsLieInTheFileWhereTheyWereShown) {
  for (const int rotate : {0, 90, 180, 270}) {
    SCOPED_TRACE(rotate);
    openTurned(rotate);
    add(0, stampOf(quarters(256), 10, 100, 60, 30));
    add(0, stampOf(quarters(256), 90, 90, 50, 30, std::numbers::pi));
    add(0, stampOf(quarters(256), 160, 85, 40, 30, -std::numbers::pi / 2));
    add(0, stampOf(quarters(256), 40, 35, 60, 25, std::numbers::pi / 2));
    compareStamps("stamps-" + std::to_string(rotate));
  }
}

TEST_F(PlacementReadersTest, StampsAtOddAnglesLieInTheFileWhereTheyWereShown) {
  for (const int rotate : {0, 90, 180, 270}) {
    SCOPED_TRACE(rotate);
    openTurned(rotate);
    add(0, stampOf(quarters(256), 90, 90, 50, 40, 0.4));
    add(0, stampOf(quarters(256), 40, 35, 70, 25, 3.0));
    add(0, stampOf(quarters(256), 140, 30, 50, 30, -20.0));
    compareStamps("turned-" + std::to_string(rotate));
  }
}

// A small error of the angle moves the ends of a long picture most.
TEST_F(PlacementReadersTest, StampsAsLongAsThePageLieInTheFileWhereTheyWereShown) {
  for (const int rotate : {0, 90, 180, 270}) {
    for (const int degrees : {3, 17, 33, 215}) {
      SCOPED_TRACE(testing::Message() << rotate << ", " << degrees);
      openTurned(rotate);
      add(0, stampOf(quarters(512), 10, 72, 180, 20.5, degrees * std::numbers::pi / 180));
      compareStamps("long-" + std::to_string(degrees) + "-" + std::to_string(rotate));
    }
  }
}

TEST_F(PlacementReadersTest, TextsStandUprightOnTheLineThatWasClicked) {
  for (const std::uint32_t turns : {0u, 1u, 2u, 3u}) {
    SCOPED_TRACE(turns);
    openTurned(static_cast<int>(turns) * 90);
    PlaceTextDrop(0, 100, 80, u"HHH", 24, 0, 0, turns);
    const PanePoint click = pageToPane(0, 100, 80);
    const WrittenFile written = writePending();
    const InkBox ink = inkBoxOf(viewOf(written.picture));
    // An H is 0.72 of the size high and has 0.08 of it free on either side; three take 2.17.
    EXPECT_NEAR(ink.bottom, click.y, 1.5);
    EXPECT_NEAR(ink.top, click.y - 0.72 * 24 * kZoom, 2);
    EXPECT_NEAR(ink.left, click.x + 0.08 * 24 * kZoom, 2);
    EXPECT_NEAR(ink.right, click.x + 2.09 * 24 * kZoom, 2);
    keepBoth("text-" + std::to_string(turns) + "-ink", written, written.picture);
  }
}

// A hard blank has no ink, and a bullet has some.
TEST_F(PlacementReadersTest, SignsBeyondAsciiAreWrittenAsThemselves) {
  openTurned(0);
  PlaceTextDrop(0, 40, 80, u"H\u00A0H \u2022", 24, 0, 0, 0);
  const PanePoint click = pageToPane(0, 40, 80);
  const WrittenFile written = writePending();
  const platform::Picture& picture = written.picture;
  const auto inked = [&](double from, double to) {
    int count = 0;
    for (int x = static_cast<int>(click.x + from * 24 * kZoom);
         x < static_cast<int>(click.x + to * 24 * kZoom); ++x) {
      for (int y = 0; y < picture.height; ++y) {
        const std::uint32_t pixel = picture.pixels[static_cast<std::size_t>(y * picture.width + x)];
        count += (pixel & 0xFF) < 128 ? 1 : 0;
      }
    }
    return count;
  };
  // In Helvetica an H is 0.722 wide, a blank 0.278 and a bullet 0.35.
  EXPECT_GT(inked(0.05, 0.7), 50);
  EXPECT_EQ(inked(0.72, 1.0), 0);
  EXPECT_GT(inked(1.05, 1.7), 50);
  EXPECT_GT(inked(2.0, 2.35), 20);
  keepBoth("text-signs-ink", written, picture);
}

TEST_F(PlacementReadersTest, TurnedAndStretchedTextsReadBackAsTheyWereWritten) {
  for (const int rotate : {0, 90, 180, 270}) {
    SCOPED_TRACE(rotate);
    openTurned(rotate);
    Placement text = textOf(u"HIH", 60, 60, 90, 40);
    text.fontSize = 24;
    text.rotation = 0.7;
    text.colorIndex = 3;
    add(0, text);
    const WrittenFile written = writePending();
    LoadPlacements(written.document.get());
    EXPECT_EQ(placement(0, 0).text, u"HIH");
    EXPECT_EQ(placement(0, 0).rotation, 0.7);
    keepBoth("text-turned-" + std::to_string(rotate) + "-ink", written, written.picture);
    ClearPlacements();
  }
}

}  // namespace
}  // namespace quillmere::test
