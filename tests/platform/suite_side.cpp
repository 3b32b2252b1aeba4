#include "platform_suite/suite_side.h"

#include "stand_in.h"

namespace quillmere::platform {

std::u16string makeScratchFolder() {
  resetStandIn();
  putFolder(u"C:\\Scratch");
  return u"C:\\Scratch\\";
}

void removeScratchFolder(const std::u16string&) {
  resetStandIn();
}

void workIn(const std::u16string& folder) {
  standIn().workingFolder = folder.substr(0, folder.find_last_not_of(u'\\') + 1);
}

void putBytes(const std::u16string& path, const std::string& bytes) {
  putFile(path, bytes);
}

std::string bytesOf(const std::u16string& path) {
  return fileBytes(path).value_or("");
}

FileLock::FileLock(const std::u16string& path, LockKind kind) : path_(path) {
  setOtherUse(path, kind == LockKind::Exclusive ? OtherUse::Exclusive : OtherUse::SharedWriter);
}

FileLock::~FileLock() {
  setOtherUse(path_, OtherUse::Nobody);
}

namespace {

void appendRows(TreeRow parent, const std::u16string& indentation,
                std::vector<std::u16string>& rows) {
  const StandInTree& tree = standIn().navigationTree;
  const auto found = tree.children.find(parent);
  if (found == tree.children.end()) return;
  for (const TreeRow number : found->second) {
    const StandInTreeRow& row = tree.rows.at(number - 1);
    const char16_t* sign = row.expanded ? u"-" : row.content.expandable ? u"+" : u"";
    rows.push_back(indentation + sign + row.content.text);
    appendRows(number, indentation + u" ", rows);
  }
}

}  // namespace

TreeScene::TreeScene() {
  standIn().navigationTree = {};
}

TreeScene::~TreeScene() = default;

std::vector<std::u16string> TreeScene::rows() const {
  std::vector<std::u16string> rows;
  appendRows(kNoTreeRow, u"", rows);
  return rows;
}

}  // namespace quillmere::platform
