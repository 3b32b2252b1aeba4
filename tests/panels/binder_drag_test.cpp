#include "panels/binder_drag.h"

#include "panels/binder_panel_test.h"
#include "platform/files.h"

namespace quillmere::test {
namespace {

using platform::kNoTreeRow;
using testing::ElementsAre;

class BinderDragTest : public BinderPanelTest {
 protected:
  static constexpr int kTop = 100;
  static constexpr int kBottom = 117;
  static constexpr int kMiddle = 108;  // half of 217, rounded down

  static bool moveAbove(std::int32_t value) {
    return moveBinderDrag({value, kTop, kBottom, kMiddle});
  }
  static bool moveBelow(std::int32_t value) {
    return moveBinderDrag({value, kTop, kBottom, kMiddle + 1});
  }
  static void drag(std::int32_t from, std::int32_t to, bool after) {
    EXPECT_TRUE(startBinderDrag(from));
    EXPECT_TRUE(after ? moveBelow(to) : moveAbove(to));
    dropBinderDrag();
    EXPECT_EQ(tree().marked, kNoTreeRow);
    EXPECT_FALSE(draggingBinderRow());
  }
  static Texts names() {
    Texts names;
    for (const BinderFile& binder : session.binderLibrary) names.push_back(binder.name);
    return names;
  }
};

TEST_F(BinderDragTest, CustomHeadsAndDocumentsWithOthersBesideThemCanBeDragged) {
  EXPECT_TRUE(startBinderDrag(head(1)));
  cancelBinderDrag();
  EXPECT_TRUE(startBinderDrag(file(0, 1)));
  cancelBinderDrag();
  filesOf(2) = {u"C:\\alone.pdf"};
  BuildBinderTree();
  for (const std::int32_t value : {head(0), file(2, 0), addDocument(1), newBinder(), -1}) {
    EXPECT_FALSE(startBinderDrag(value)) << value;
    EXPECT_FALSE(draggingBinderRow());
  }
  session.viewerRole = true;
  EXPECT_FALSE(startBinderDrag(head(1)));
}

TEST_F(BinderDragTest, TheMarkGoesBelowARowUnderItsMiddle) {
  ASSERT_TRUE(startBinderDrag(file(1, 0)));
  EXPECT_TRUE(moveAbove(file(1, 2)));
  EXPECT_EQ(tree().marked, rowWith(file(1, 2)));
  EXPECT_FALSE(tree().markedBelow);
  EXPECT_TRUE(moveBelow(file(1, 2)));
  EXPECT_TRUE(tree().markedBelow);
}

TEST_F(BinderDragTest, ADocumentCanOnlyGoToRowsOfItsBinder) {
  ASSERT_TRUE(startBinderDrag(file(1, 0)));
  EXPECT_TRUE(moveAbove(file(1, 1)));
  for (const std::int32_t value : {file(0, 0), head(1), head(2), addDocument(1), newBinder(), -1}) {
    EXPECT_FALSE(moveBelow(value)) << value;
    EXPECT_EQ(tree().marked, kNoTreeRow);
  }
  dropBinderDrag();
  EXPECT_THAT(filesOf(1), ElementsAre(u"C:\\a.pdf", u"C:\\b.pdf", u"C:\\c.pdf"));
}

TEST_F(BinderDragTest, ABinderCanOnlyGoToHeadsAndNeverAboveTheDocumentsInUse) {
  ASSERT_TRUE(startBinderDrag(head(2)));
  EXPECT_FALSE(moveAbove(head(0)));
  EXPECT_TRUE(moveBelow(head(0)));
  EXPECT_FALSE(moveBelow(file(1, 0)));
  EXPECT_FALSE(moveBelow(newBinder()));
  EXPECT_TRUE(moveAbove(head(1)));
}

TEST_F(BinderDragTest, ADroppedDocumentStandsWhereTheMarkWasAndIsSelected) {
  drag(file(1, 0), file(1, 2), true);
  EXPECT_THAT(filesOf(1), ElementsAre(u"C:\\b.pdf", u"C:\\c.pdf", u"C:\\a.pdf"));
  EXPECT_EQ(selectedText(), u"a");
  EXPECT_THAT(onDisk(u"C:\\Binders\\Work.lst").files,
              ElementsAre(u"C:\\b.pdf", u"C:\\c.pdf", u"C:\\a.pdf"));
  drag(file(1, 2), file(1, 1), false);
  EXPECT_THAT(filesOf(1), ElementsAre(u"C:\\b.pdf", u"C:\\a.pdf", u"C:\\c.pdf"));
  drag(file(1, 2), file(1, 0), false);
  EXPECT_THAT(filesOf(1), ElementsAre(u"C:\\c.pdf", u"C:\\b.pdf", u"C:\\a.pdf"));
  EXPECT_EQ(rows()[6], u" c");
}

TEST_F(BinderDragTest, ADocumentDroppedBesideItselfStays) {
  drag(file(1, 1), file(1, 0), true);
  drag(file(1, 1), file(1, 1), true);
  drag(file(1, 1), file(1, 2), false);
  EXPECT_THAT(filesOf(1), ElementsAre(u"C:\\a.pdf", u"C:\\b.pdf", u"C:\\c.pdf"));
  EXPECT_EQ(selectedText(), u"b");
}

TEST_F(BinderDragTest, ADroppedBinderStandsWhereTheMarkWasAndIsSelected) {
  drag(head(2), head(0), true);
  EXPECT_THAT(names(), ElementsAre(u"Working Documents", u"Rest", u"Work"));
  EXPECT_EQ(selectedText(), u"Rest");
  drag(head(1), head(2), true);
  EXPECT_THAT(names(), ElementsAre(u"Working Documents", u"Work", u"Rest"));
  drag(head(2), head(1), false);
  EXPECT_THAT(names(), ElementsAre(u"Working Documents", u"Rest", u"Work"));
}

TEST_F(BinderDragTest, ABinderDroppedRightAfterItselfStays) {
  const int clearings = tree().clearings;
  drag(head(1), head(1), true);
  drag(head(1), head(0), true);
  drag(head(1), head(2), false);
  EXPECT_THAT(names(), ElementsAre(u"Working Documents", u"Work", u"Rest"));
  EXPECT_EQ(tree().clearings, clearings);
}

TEST_F(BinderDragTest, ACancelledDragChangesNothing) {
  ASSERT_TRUE(startBinderDrag(file(1, 0)));
  moveBelow(file(1, 2));
  cancelBinderDrag();
  EXPECT_EQ(tree().marked, kNoTreeRow);
  dropBinderDrag();
  EXPECT_FALSE(moveBelow(file(1, 2)));
  EXPECT_THAT(filesOf(1), ElementsAre(u"C:\\a.pdf", u"C:\\b.pdf", u"C:\\c.pdf"));
}

TEST_F(BinderDragTest, ARebuildWaitsForTheEndOfTheDrag) {
  for (const bool drops : {true, false}) {
    const int clearings = tree().clearings;
    ASSERT_TRUE(startBinderDrag(file(1, 0)));
    BuildBinderTree();
    EXPECT_EQ(tree().clearings, clearings);
    drops ? dropBinderDrag() : cancelBinderDrag();
    EXPECT_EQ(standIn().window.binderTreeRebuildsPosted, 1);
    deliverPosted();
    EXPECT_EQ(tree().clearings, clearings + 1);
  }
}

TEST_F(BinderDragTest, WhatWasDraggedIsFoundAlthoughTheLibraryChangedMeanwhile) {
  ASSERT_TRUE(startBinderDrag(file(1, 0)));
  moveBelow(file(1, 2));
  std::swap(session.binderLibrary[1], session.binderLibrary[2]);
  filesOf(2).insert(filesOf(2).begin(), u"C:\\new.pdf");
  dropBinderDrag();
  EXPECT_THAT(filesOf(2), ElementsAre(u"C:\\new.pdf", u"C:\\b.pdf", u"C:\\c.pdf", u"C:\\a.pdf"));
  ASSERT_TRUE(startBinderDrag(file(2, 1)));
  moveBelow(file(2, 3));
  filesOf(2) = {u"C:\\c.pdf", u"C:\\d.pdf"};
  dropBinderDrag();
  EXPECT_THAT(filesOf(2), ElementsAre(u"C:\\c.pdf", u"C:\\d.pdf"));
}

}  // namespace
}  // namespace quillmere::test
