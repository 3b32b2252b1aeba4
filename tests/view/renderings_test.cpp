#include <functional>

#include "documents/modes.h"
#include "documents/open.h"
#include "platform/stand_in_pixels.h"
#include "store/working_documents.h"
#include "view/navigation.h"
#include "view/rotation.h"
#include "view/view_test.h"
#include "view/zoom.h"

namespace quillmere::test {
namespace {

// Rendering is what the reader waits for, so nothing is rendered twice or out of sight.
class RenderingsTest : public ViewTest {
 protected:
  static int renderingsOf(const std::function<void()>& action) {
    const int before = platform::surfacesMade();
    action();
    return platform::surfacesMade() - before;
  }
};

TEST_F(RenderingsTest, AnActionOnOnePageRendersItOnce) {
  openAndShow(simplePdf(5));
  EXPECT_EQ(renderingsOf([] { goToPage(0, 2, false); }), 1);
  EXPECT_EQ(renderingsOf([] { goToPage(0, 2, false); }), 0);
  EXPECT_EQ(renderingsOf([] { zoomIn(0); }), 1);
  EXPECT_EQ(renderingsOf([] { setZoomMode(0, kFitWidth); }), 1);
  EXPECT_EQ(renderingsOf([] { rotateDocument(0); }), 1);
  EXPECT_EQ(renderingsOf([] { rotatePage(0); }), 1);
}

TEST_F(RenderingsTest, PanningRendersNothing) {
  openAndShow(simplePdf(5));
  EXPECT_EQ(renderingsOf([] {
              startDragPan(0, 400, 300);
              for (int x = 0; x < 50; ++x) moveDragPan(400 + x, 300 - x);
              endDragPan();
              panByKey(0, ArrowKey::Left);
            }),
            0);
}

TEST_F(RenderingsTest, AModeRendersThePagesThatItShows) {
  openAndShow(simplePdf(5));
  EXPECT_EQ(renderingsOf([] { setViewMode(ViewMode::Book); }), 2);
  EXPECT_EQ(renderingsOf([] { goToPage(0, 2, false); }), 2);
  EXPECT_EQ(renderingsOf([] { rotateDocument(0); }), 2);
  EXPECT_EQ(renderingsOf([] { setViewMode(ViewMode::IndependentPages); }), 2);
  EXPECT_EQ(renderingsOf([] { goToPage(1, 4, false); }), 1);
  EXPECT_EQ(renderingsOf([] { rotatePage(0); }), 1);
  EXPECT_EQ(renderingsOf([] { setViewMode(ViewMode::TwoDocuments); }), 1);
  EXPECT_EQ(renderingsOf([] { setViewMode(ViewMode::SinglePage); }), 1);
}

TEST_F(RenderingsTest, OpeningRendersTheFirstPageAlone) {
  const std::u16string path = putPdf(u"five.pdf", simplePdf(5));
  EXPECT_EQ(renderingsOf([&] {
              EXPECT_TRUE(openDocument(&path, 0, kWorkingDocsLeaveAlone, false, nullptr));
            }),
            1);
}

}  // namespace
}  // namespace quillmere::test
