#include "platform/tree.h"

#include <string>
#include <vector>

#include "platform_suite/suite_side.h"

namespace quillmere::platform {
namespace {

using Rows = std::vector<std::u16string>;

class TreeSuite : public PlatformSuite {
 protected:
  static TreeRow insert(TreeRow parent, TreeRow previous, const std::u16string& text,
                        bool expandable = false) {
    return insertTreeRow(Tree::Navigation, {parent, previous}, {text, -1, expandable});
  }

  TreeScene scene;
};

TEST_F(TreeSuite, RowsStandBehindTheOnesThatTheyFollow) {
  const TreeRow one = insert(kNoTreeRow, kNoTreeRow, u"one");
  const TreeRow three = insert(kNoTreeRow, one, u"three", true);
  insert(kNoTreeRow, one, u"two");
  insert(kNoTreeRow, kNoTreeRow, u"zero");
  const TreeRow below = insert(three, kNoTreeRow, u"below");
  insert(three, kNoTreeRow, u"above it");
  insert(three, below, u"under it");
  EXPECT_EQ(scene.rows(),
            (Rows{u"zero", u"one", u"two", u"+three", u" above it", u" below", u" under it"}));
}

TEST_F(TreeSuite, ARowThatIsRemovedLeavesTheOthers) {
  const TreeRow one = insert(kNoTreeRow, kNoTreeRow, u"one", true);
  const TreeRow two = insert(kNoTreeRow, one, u"two");
  const TreeRow below = insert(one, kNoTreeRow, u"below");
  insert(one, below, u"last");
  removeTreeRow(Tree::Navigation, below);
  removeTreeRow(Tree::Navigation, two);
  EXPECT_EQ(scene.rows(), (Rows{u"+one", u" last"}));
}

TEST_F(TreeSuite, ARowGetsAnotherText) {
  const TreeRow one = insert(kNoTreeRow, kNoTreeRow, u"one");
  insert(kNoTreeRow, one, u"two");
  setTreeRowText(Tree::Navigation, one, u"\u00FC \u4E2D");
  EXPECT_EQ(scene.rows(), (Rows{u"\u00FC \u4E2D", u"two"}));
}

TEST_F(TreeSuite, ALeafBecomesExpandableAndALeafAgain) {
  const TreeRow one = insert(kNoTreeRow, kNoTreeRow, u"one");
  const TreeRow below = insert(one, kNoTreeRow, u"below");
  setTreeRowExpandable(Tree::Navigation, one, true);
  EXPECT_EQ(scene.rows(), (Rows{u"+one", u" below"}));
  expandTreeRow(Tree::Navigation, one);
  EXPECT_EQ(scene.rows(), (Rows{u"-one", u" below"}));
  removeTreeRow(Tree::Navigation, below);
  setTreeRowExpandable(Tree::Navigation, one, false);
  insert(one, kNoTreeRow, u"again");
  setTreeRowExpandable(Tree::Navigation, one, true);
  expandTreeRow(Tree::Navigation, one);
  EXPECT_EQ(scene.rows(), (Rows{u"-one", u" again"}));
}

TEST_F(TreeSuite, ExpandingTwiceIsExpandingOnce) {
  const TreeRow one = insert(kNoTreeRow, kNoTreeRow, u"one", true);
  const TreeRow below = insert(one, kNoTreeRow, u"below", true);
  insert(below, kNoTreeRow, u"deep");
  for (int i = 0; i < 2; ++i) {
    expandTreeRow(Tree::Navigation, one);
    expandTreeRow(Tree::Navigation, below);
  }
  EXPECT_EQ(scene.rows(), (Rows{u"-one", u" -below", u"  deep"}));
}

TEST_F(TreeSuite, AnExpandedRowStaysSoWhileItsRowsChange) {
  const TreeRow root = insert(kNoTreeRow, kNoTreeRow, u"root", true);
  const TreeRow none = insert(root, kNoTreeRow, u"(none)");
  expandTreeRow(Tree::Navigation, root);
  beginTreeUpdate(Tree::Navigation);
  insert(root, kNoTreeRow, u"first");
  removeTreeRow(Tree::Navigation, none);
  endTreeUpdate(Tree::Navigation);
  EXPECT_EQ(scene.rows(), (Rows{u"-root", u" first"}));
}

TEST_F(TreeSuite, ARowIsSelectedAndNoneIsAfterClearing) {
  const TreeRow one = insert(kNoTreeRow, kNoTreeRow, u"one");
  const TreeRow two = insert(kNoTreeRow, one, u"two");
  EXPECT_EQ(selectedTreeRow(Tree::Navigation), kNoTreeRow);
  selectTreeRow(Tree::Navigation, two);
  EXPECT_EQ(selectedTreeRow(Tree::Navigation), two);
  selectTreeRow(Tree::Navigation, kNoTreeRow);
  EXPECT_EQ(selectedTreeRow(Tree::Navigation), kNoTreeRow);
  selectTreeRow(Tree::Navigation, one);
  clearTree(Tree::Navigation);
  EXPECT_EQ(selectedTreeRow(Tree::Navigation), kNoTreeRow);
}

TEST_F(TreeSuite, ARowKeepsItsEntry) {
  const TreeRow row = insertTreeRow(Tree::Navigation, {}, {u"row", 0x0032FFFF, false, true});
  EXPECT_EQ(treeRowEntry(Tree::Navigation, row), 0x0032FFFF);
  EXPECT_EQ(treeRowEntry(Tree::Navigation, kNoTreeRow), -1);
  setTreeRowBold(Tree::Navigation, row, false);
  setTreeRowDimmed(Tree::Navigation, row, true);
  EXPECT_EQ(treeRowEntry(Tree::Navigation, row), 0x0032FFFF);
}

TEST_F(TreeSuite, ACollapsedRowKeepsItsRows) {
  const TreeRow one = insert(kNoTreeRow, kNoTreeRow, u"one", true);
  insert(one, kNoTreeRow, u"below");
  expandTreeRow(Tree::Navigation, one);
  collapseTreeRow(Tree::Navigation, one);
  EXPECT_EQ(scene.rows(), (Rows{u"+one", u" below"}));
}

TEST_F(TreeSuite, TheFirstRowIsOnTopOfATreeThatWasNotScrolled) {
  const TreeRow one = insert(kNoTreeRow, kNoTreeRow, u"one");
  insert(kNoTreeRow, one, u"two");
  EXPECT_EQ(topTreeRow(Tree::Navigation), one);
}

TEST_F(TreeSuite, ARebuiltTreeIsScrolledToTheRowThatWasNamed) {
  beginTreeUpdate(Tree::Navigation);
  clearTree(Tree::Navigation);
  TreeRow rows[100];
  TreeRow previous = kNoTreeRow;
  for (TreeRow& row : rows) row = previous = insert(kNoTreeRow, previous, u"row");
  keepTreeRowOnTop(Tree::Navigation, rows[40]);
  endTreeUpdate(Tree::Navigation);
  EXPECT_EQ(topTreeRow(Tree::Navigation), rows[40]);
}

TEST_F(TreeSuite, AClearedTreeHasNoRows) {
  const TreeRow one = insert(kNoTreeRow, kNoTreeRow, u"one");
  insert(one, kNoTreeRow, u"below");
  beginTreeUpdate(Tree::Navigation);
  clearTree(Tree::Navigation);
  endTreeUpdate(Tree::Navigation);
  EXPECT_EQ(scene.rows(), Rows{});
}

}  // namespace
}  // namespace quillmere::platform
