#include <gmock/gmock.h>

#include "annot/placements.h"
#include "app/keys.h"
#include "app/mouse.h"
#include "documents/close.h"
#include "documents/discard.h"
#include "documents/modes.h"
#include "documents/save_document.h"
#include "panels/panel_toggles.h"
#include "support/page_edit_test.h"
#include "support/pdf_builder.h"
#include "view/geometry.h"
#include "view/navigation.h"

namespace quillmere::test {
namespace {

using platform::standIn;
using testing::IsEmpty;
using testing::SizeIs;

// What happens to the document or its view while a text on the second page is dragged.
class PlacementDragTest : public PageEditTest {
 protected:
  void SetUp() override {
    session.stampPanelVisible = true;
    ASSERT_TRUE(open(stamped()));
    goToPage(0, 1, false);
    const PixelRect rect = paneRect(0);
    const PanePoint middle = pageToPane(0, 150, 125);
    x_ = rect.left + static_cast<int>(middle.x);
    y_ = rect.top + static_cast<int>(middle.y);
    pressLeft(x_, y_);
    movePointer(x_ + 10, y_);
    ASSERT_EQ(session.gesture.kind, Gesture::Placement);
    ASSERT_TRUE(session.placements[1][0].pending());
    placed_ = session.placements[1][0].x;
  }

  // Three pages with a text on each.
  static std::string stamped() {
    PdfPage page;
    page.annotations = {
        "<< /Type /Annot /Subtype /Stamp /Rect [100 100 200 150] /QMR "
        "(QMR1;T;0;100;100;100;50;12;0;0;Hi) >>"};
    return buildPdf({page, page, page});
  }

  // The pointer goes on and the button comes up, and nothing of that counts any more.
  void expectEnded() const {
    EXPECT_EQ(session.gesture.kind, Gesture::None);
    EXPECT_FALSE(standIn().window.mouseCaptured);
    const auto boxes = [] {
      std::vector<double> all;
      for (const auto& [page, list] : session.placements) {
        for (const Placement& placement : list) all.insert(all.end(), {placement.x, placement.y});
      }
      return all;
    };
    readWaitingPlacements();
    const std::vector<double> before = boxes();
    movePointer(x_ + 40, y_ + 40);
    releaseLeft(x_ + 40, y_ + 40);
    EXPECT_EQ(boxes(), before);
  }

  int x_ = 0;
  int y_ = 0;
  double placed_ = 0;
};

TEST_F(PlacementDragTest, ASaveWritesItWhereItIs) {
  ASSERT_TRUE(SaveDocumentTo(0, pathOf(0)));
  expectEnded();
  ASSERT_THAT(session.placements[1], SizeIs(1));
  EXPECT_FALSE(session.placements[1][0].pending());
  EXPECT_NEAR(session.placements[1][0].x, placed_, 1e-3);
  EXPECT_EQ(annotationsOn(document(), 1), 1);
}

TEST_F(PlacementDragTest, AFailedSaveLeavesItPendingWhereItIs) {
  standIn().refuseFileCall = [](platform::FileCall call) {
    return call == platform::FileCall::Flush;
  };
  standIn().boxAnswers = {platform::BoxAnswer::Ok};
  EXPECT_FALSE(SaveDocumentTo(0, u"C:\\other.pdf"));
  standIn().refuseFileCall = {};
  expectEnded();
  ASSERT_THAT(session.placements[1], SizeIs(1));
  EXPECT_TRUE(session.placements[1][0].pending());
  EXPECT_EQ(session.placements[1][0].x, placed_);
  EXPECT_EQ(annotationsOn(document(), 1), 0);
}

TEST_F(PlacementDragTest, AnotherDocumentsPlacementsStay) {
  ASSERT_TRUE(open(putPdf(u"other.pdf", stamped())));
  goToPage(0, 1, false);
  expectEnded();
  for (const std::int32_t page : {0, 1, 2}) EXPECT_EQ(session.placements[page][0].x, 100);
}

TEST_F(PlacementDragTest, DiscardedChangesStayDiscarded) {
  standIn().boxAnswers = {platform::BoxAnswer::Ok};
  DiscardActive();
  goToPage(0, 1, false);
  expectEnded();
  EXPECT_EQ(session.placements[1][0].x, 100);
  EXPECT_FALSE(hasUnsavedChanges());
}

TEST_F(PlacementDragTest, ItGoesWithItsPage) {
  deletePage();
  expectEnded();
  EXPECT_THAT(session.placements, SizeIs(2));
  EXPECT_EQ(selectedPlacement(), nullptr);
}

TEST_F(PlacementDragTest, PagesInsertedAboveTakeItAlong) {
  insert(false, stamped());
  goToPage(0, 4, false);
  expectEnded();
  ASSERT_THAT(session.placements[4], SizeIs(1));
  EXPECT_EQ(session.placements[4][0].x, placed_);
  EXPECT_EQ(selectedPlacement(), &session.placements[4][0]);
}

TEST_F(PlacementDragTest, ANewModeEndsIt) {
  setViewMode(ViewMode::IndependentPages);
  expectEnded();
  EXPECT_EQ(selectedPlacement(), nullptr);
  EXPECT_EQ(session.placements[1][0].x, placed_);
}

TEST_F(PlacementDragTest, HidingThePanelEndsIt) {
  toggleStampPanel();
  expectEnded();
  EXPECT_EQ(selectedPlacement(), nullptr);
  EXPECT_EQ(session.placements[1][0].x, placed_);
}

TEST_F(PlacementDragTest, DeleteEndsItWithItsPlacement) {
  EXPECT_TRUE(handleKey(kKeyDelete));
  expectEnded();
  EXPECT_THAT(session.placements, SizeIs(2));
  EXPECT_FALSE(session.placements.contains(1));
}

TEST_F(PlacementDragTest, AClosedDocumentLeavesNothing) {
  closeAllDocuments();
  expectEnded();
  EXPECT_THAT(session.placements, IsEmpty());
}

}  // namespace
}  // namespace quillmere::test
