#include "platform/find_bar.h"
#include "platform/tree.h"
#include "stand_in.h"

namespace quillmere::platform {

void beginTreeUpdate() {
  ++standIn().treeUpdates;
}

void endTreeUpdate() {
  --standIn().treeUpdates;
}

void clearTree() {
  standIn().treeRows.clear();
}

TreeRow appendTreeRow(TreeRow parent, const std::u16string& text, std::int32_t entry) {
  standIn().treeRows.push_back({parent, text, entry});
  return standIn().treeRows.size();
}

void showTreeRowExpandable(TreeRow row) {
  standIn().treeRows.at(row - 1).expandable = true;
}

void expandTreeRow(TreeRow row) {
  standIn().treeRows.at(row - 1).expanded = true;
}

std::u16string findFieldText() {
  return standIn().findBar.field;
}

void setFindFieldText(const std::u16string& text) {
  StandInFindBar& bar = standIn().findBar;
  bar.field = text;
  if (bar.onFieldChanged) bar.onFieldChanged();
}

void focusFindField() {
  ++standIn().findBar.focusRequests;
}

void insertIntoFindField(const std::u16string& text) {
  setFindFieldText(standIn().findBar.field + text);
}

void setFindStatus(const std::u16string& text) {
  standIn().findBar.status = text;
}

void enableFindOptions(bool enabled) {
  standIn().findBar.optionsEnabled = enabled;
}

}  // namespace quillmere::platform
