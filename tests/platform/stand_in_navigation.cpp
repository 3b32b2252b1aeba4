#include <gtest/gtest.h>

#include <algorithm>

#include "platform/find_bar.h"
#include "platform/tree.h"
#include "stand_in.h"

namespace quillmere::platform {

namespace {

StandInTree& treeOf(Tree tree) {
  return tree == Tree::Navigation ? standIn().navigationTree : standIn().binderTree;
}

StandInTreeRow& rowOf(Tree tree, TreeRow row) {
  StandInTreeRow& found = treeOf(tree).rows.at(row - 1);
  if (found.removed) ADD_FAILURE() << "row " << row << " was removed";
  return found;
}

// A cleared tree says so itself.
void noteRows(Tree tree) {
  if (standIn().shown.empty() || standIn().shown.back() != "navigation tree") {
    noteShown(tree == Tree::Navigation ? "navigation rows" : "binder rows");
  }
}

void appendOutline(const StandInTree& tree, TreeRow parent, const std::u16string& indentation,
                   std::vector<std::u16string>* texts, std::vector<TreeRow>* rows) {
  const auto found = tree.children.find(parent);
  if (found == tree.children.end()) return;
  for (const TreeRow row : found->second) {
    if (texts != nullptr) texts->push_back(indentation + tree.rows.at(row - 1).content.text);
    if (rows != nullptr) rows->push_back(row);
    appendOutline(tree, row, indentation + u" ", texts, rows);
  }
}

}  // namespace

std::vector<std::u16string> StandInTree::outline() const {
  std::vector<std::u16string> texts;
  appendOutline(*this, kNoTreeRow, u"", &texts, nullptr);
  return texts;
}

std::vector<TreeRow> StandInTree::order() const {
  std::vector<TreeRow> rows;
  appendOutline(*this, kNoTreeRow, u"", nullptr, &rows);
  return rows;
}

void beginTreeUpdate(Tree tree) {
  ++treeOf(tree).updates;
}

void endTreeUpdate(Tree tree) {
  --treeOf(tree).updates;
}

TreeRow topTreeRow(Tree tree) {
  const std::vector<TreeRow> order = treeOf(tree).order();
  return treeOf(tree).top == kNoTreeRow && !order.empty() ? order.front() : treeOf(tree).top;
}

void keepTreeRowOnTop(Tree tree, TreeRow row) {
  if (row != kNoTreeRow) rowOf(tree, row);
  treeOf(tree).top = row;
}

void repaintTree(Tree tree) {
  ++treeOf(tree).repaints;
}

void clearTree(Tree tree) {
  treeOf(tree).selected = kNoTreeRow;
  treeOf(tree).top = kNoTreeRow;
  treeOf(tree).marked = kNoTreeRow;
  noteShown(tree == Tree::Navigation ? "navigation tree" : "binder tree");
  treeOf(tree).rows.clear();
  treeOf(tree).children.clear();
  ++treeOf(tree).clearings;
}

TreeRow insertTreeRow(Tree tree, const TreePlace& place, const TreeRowContent& content) {
  std::vector<StandInTreeRow>& rows = treeOf(tree).rows;
  std::vector<TreeRow>& siblings = treeOf(tree).children[place.parent];
  auto before = siblings.begin();
  if (place.previous != kNoTreeRow) {
    // Long levels are filled from the end.
    const auto found = std::find(siblings.rbegin(), siblings.rend(), place.previous);
    if (found == siblings.rend()) ADD_FAILURE() << "a row behind one of another level";
    before = found.base();
  }
  rows.push_back({place, content});
  siblings.insert(before, rows.size());
  if (place.parent != kNoTreeRow) rowOf(tree, place.parent).content.expandable = true;
  noteRows(tree);
  return rows.size();
}

std::int32_t treeRowEntry(Tree tree, TreeRow row) {
  return row == kNoTreeRow ? -1 : rowOf(tree, row).content.entry;
}

void removeTreeRow(Tree tree, TreeRow row) {
  StandInTreeRow& gone = rowOf(tree, row);
  if (!treeOf(tree).children[row].empty()) ADD_FAILURE() << "a row with rows below it";
  gone.removed = true;
  std::erase(treeOf(tree).children[gone.place.parent], row);
  noteRows(tree);
}

void setTreeRowText(Tree tree, TreeRow row, const std::u16string& text) {
  rowOf(tree, row).content.text = text;
  noteRows(tree);
}

void setTreeRowExpandable(Tree tree, TreeRow row, bool expandable) {
  rowOf(tree, row).content.expandable = expandable;
}

void expandTreeRow(Tree tree, TreeRow row) {
  if (!treeOf(tree).children[row].empty()) rowOf(tree, row).expanded = true;
}

void collapseTreeRow(Tree tree, TreeRow row) {
  rowOf(tree, row).expanded = false;
}

void setTreeRowBold(Tree tree, TreeRow row, bool bold) {
  rowOf(tree, row).content.bold = bold;
}

void setTreeRowDimmed(Tree tree, TreeRow row, bool dimmed) {
  rowOf(tree, row).dimmed = dimmed;
}

TreeRow selectedTreeRow(Tree tree) {
  return treeOf(tree).selected;
}

void selectTreeRow(Tree tree, TreeRow row) {
  if (row != kNoTreeRow) rowOf(tree, row);
  treeOf(tree).selected = row;
}

void editTreeRow(Tree tree, TreeRow row) {
  rowOf(tree, row);
  treeOf(tree).edited = row;
}

void markTreeDrop(Tree tree, TreeRow row, bool below) {
  rowOf(tree, row);
  treeOf(tree).marked = row;
  treeOf(tree).markedBelow = below;
}

void clearTreeDropMark(Tree tree) {
  treeOf(tree).marked = kNoTreeRow;
}

std::u16string findFieldText() {
  return standIn().findBar.field;
}

void setFindFieldText(const std::u16string& text) {
  StandInFindBar& bar = standIn().findBar;
  bar.field = text.c_str();  // a real field ends its text at the first NUL
  if (bar.onFieldChanged) bar.onFieldChanged();
}

void focusFindField() {
  ++standIn().findBar.focusRequests;
}

void insertIntoFindField(const std::u16string& text) {
  setFindFieldText(standIn().findBar.field + text);
}

void setFindStatus(const std::u16string& text) {
  noteShown("find status");
  standIn().findBar.status = text;
}

void enableFindOptions(bool enabled) {
  standIn().findBar.optionsEnabled = enabled;
}

}  // namespace quillmere::platform
