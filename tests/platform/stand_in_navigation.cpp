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

TreeRow insertTreeRow(const TreePlace& place, const TreeRowContent& content) {
  standIn().treeRows.push_back({place, content});
  return standIn().treeRows.size();
}

void expandTreeRow(TreeRow row) {
  standIn().treeRows.at(row - 1).expanded = true;
}

std::u16string findFieldText() {
  return standIn().findBar.field;
}

void setFindFieldText(const std::u16string& text) {
  StandInFindBar& bar = standIn().findBar;
  bar.field = text.c_str();  // as a real field ends its text at the first NUL
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
