#include "platform/find_bar.h"
#include "platform/tree.h"
#include "stand_in.h"

namespace quillmere::platform {

namespace {

StandInTree& treeOf(Tree tree) {
  return tree == Tree::Navigation ? standIn().navigationTree : standIn().binderTree;
}

}  // namespace

void beginTreeUpdate(Tree tree) {
  ++treeOf(tree).updates;
}

void endTreeUpdate(Tree tree) {
  --treeOf(tree).updates;
}

void clearTree(Tree tree) {
  noteShown(tree == Tree::Navigation ? "navigation tree" : "binder tree");
  treeOf(tree).rows.clear();
}

TreeRow insertTreeRow(Tree tree, const TreePlace& place, const TreeRowContent& content) {
  std::vector<StandInTreeRow>& rows = treeOf(tree).rows;
  rows.push_back({place, content});
  return rows.size();
}

void expandTreeRow(Tree tree, TreeRow row) {
  treeOf(tree).rows.at(row - 1).expanded = true;
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
