#include "panels/binder_panel.h"

#include <algorithm>
#include <utility>

#include "panels/binder_rows.h"
#include "platform/files.h"
#include "platform/main_window.h"
#include "platform/text.h"
#include "session/session.h"
#include "store/binder_file.h"
#include "store/binder_library.h"
#include "store/probe_path.h"

namespace quillmere {

namespace {

using platform::kNoTreeRow;
using platform::TreeRow;

bool mustWait() {
  const BinderTree& tree = session.binderTree;
  return tree.guards > 0 || tree.drag.source.kind != BinderRowKind::None;
}

// Few binders have bold documents, and looking a document up is slow.
bool hasBoldFiles(const BinderFile& binder) {
  return std::any_of(binder.views.begin(), binder.views.end(),
                     [](const auto& view) { return view.second.bold; });
}

bool isBold(const BinderFile& binder, const std::u16string& path) {
  const auto view = binder.views.find(platform::toLower(path));
  return view != binder.views.end() && view->second.bold;
}

void insertFiles(ShownBinder& shown, std::size_t index, const BinderFile& binder) {
  const std::size_t count = std::min(binder.files.size(), kMostFileRows);
  const bool anyBold = hasBoldFiles(binder);
  platform::TreePlace place{shown.head, shown.addDocument};
  shown.files.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    const std::u16string& path = binder.files[i];
    place.previous = platform::insertTreeRow(
        kBinderTree, place,
        {binderFileText(path), binderRowValue(index, static_cast<std::uint32_t>(i)), false,
         anyBold && isBold(binder, path)});
    shown.files.push_back({path, place.previous});
  }
}

void insertRowsBelow(ShownBinder& shown, std::size_t index, const BinderFile& binder) {
  shown.filled = true;
  if (!binder.isWorkingDocuments) {
    shown.addDocument = platform::insertTreeRow(
        kBinderTree, {shown.head, kNoTreeRow},
        {u"\u2795 Add Document...", binderRowValue(index, kAddDocumentMarker)});
  }
  insertFiles(shown, index, binder);
}

ShownBinder insertBinder(TreeRow previous, std::size_t index, const BinderFile& binder) {
  ShownBinder shown;
  shown.path = binder.path;
  const bool rowsBelow = !binder.isWorkingDocuments || !binder.files.empty();
  shown.head = platform::insertTreeRow(
      kBinderTree, {kNoTreeRow, previous},
      {binder.name, binderRowValue(index, kHeadMarker), rowsBelow, binder.bold});
  if (binder.collapsed) return shown;
  insertRowsBelow(shown, index, binder);
  platform::expandTreeRow(kBinderTree, shown.head);
  return shown;
}

void insertAllRows() {
  BinderTree& tree = session.binderTree;
  tree.newBinder = platform::insertTreeRow(
      kBinderTree, {}, {u"\u2795 New Binder...", binderRowValue(0, kNewBinderMarker)});
  TreeRow previous = tree.newBinder;
  for (std::size_t i = 0; i < session.binderLibrary.size(); ++i) {
    tree.binders.push_back(insertBinder(previous, i, session.binderLibrary[i]));
    previous = tree.binders.back().head;
  }
}

void rebuild() {
  BinderTree& tree = session.binderTree;
  tree.rebuildWaits = false;
  const BinderRow selected = selectedBinderRow();
  const BinderRow top =
      binderRowOf(platform::treeRowEntry(kBinderTree, platform::topTreeRow(kBinderTree)));
  const std::optional<BinderRow> next = std::exchange(tree.selectNext, std::nullopt);
  const OwnTreeChange own;
  platform::beginTreeUpdate(kBinderTree);
  platform::selectTreeRow(kBinderTree, kNoTreeRow);
  platform::clearTree(kBinderTree);
  tree.binders.clear();
  insertAllRows();
  if (!next) platform::selectTreeRow(kBinderTree, nearestTreeRow(selected));
  platform::keepTreeRowOnTop(kBinderTree, nearestTreeRow(top));
  platform::endTreeUpdate(kBinderTree);
  // Selecting it now scrolls it into view.
  if (next) platform::selectTreeRow(kBinderTree, nearestTreeRow(*next));
}

ShownBinder* shownHead(std::int32_t value, std::size_t& index) {
  const BinderRow row = binderRowOf(value);
  if (row.kind != BinderRowKind::Head) return nullptr;
  index = static_cast<std::size_t>(row.binderIndex);
  return &session.binderTree.binders[index];
}

bool isMissing(const std::u16string& path) {
  if (session.unavailableFiles.contains(platform::toLower(path))) return true;
  return !onNetwork(path) && !platform::fileExists(path);
}

// Changes what the binder's file keeps.
bool setCollapsed(BinderFile& binder, bool collapsed) {
  if (binder.collapsed == collapsed) return false;
  binder.collapsed = collapsed;
  WriteBinderFile(binder);
  return true;
}

}  // namespace

BinderTreeGuard::BinderTreeGuard() {
  ++session.binderTree.guards;
}

BinderTreeGuard::~BinderTreeGuard() {
  --session.binderTree.guards;
  releaseWaitingRebuild();
}

OwnTreeChange::OwnTreeChange() : before_(std::exchange(session.binderTree.rebuildingTree, true)) {}

OwnTreeChange::~OwnTreeChange() {
  session.binderTree.rebuildingTree = before_;
}

void BuildBinderTree() {
  if (mustWait()) {
    session.binderTree.rebuildWaits = true;
  } else {
    rebuild();
  }
}

void releaseWaitingRebuild() {
  if (session.binderTree.rebuildWaits && !mustWait()) platform::postBinderTreeRebuild();
}

void selectBinderRow(const BinderRow& row) {
  BinderTree& tree = session.binderTree;
  if (tree.rebuildWaits) {
    tree.selectNext = row;
    return;
  }
  const OwnTreeChange own;
  platform::selectTreeRow(kBinderTree, nearestTreeRow(row));
}

void SelectBinderHead(int index) {
  if (IsValidBinder(index)) selectBinderRow(headRowOf(index));
}

void RepaintBinderTree() {
  for (ShownBinder& binder : session.binderTree.binders) {
    for (ShownBinderFile& file : binder.files) file.tested = false;
  }
  platform::repaintTree(kBinderTree);
}

void fillBinderHead(std::int32_t value) {
  std::size_t index = 0;
  ShownBinder* shown = shownHead(value, index);
  const int binder = binderIndexOf(binderRowOf(value));
  if (shown == nullptr || shown->filled || binder == kNoBinder) return;
  insertRowsBelow(*shown, index, binderAt(binder));
}

void binderHeadToggled(std::int32_t value, bool collapsed) {
  const BinderRow row = binderRowOf(value);
  const int binder = binderIndexOf(row);
  if (session.binderTree.rebuildingTree || row.kind != BinderRowKind::Head) return;
  if (binder != kNoBinder) setCollapsed(binderAt(binder), collapsed);
}

void collapseAllBinders() {
  for (BinderFile& binder : session.binderLibrary) setCollapsed(binder, true);
  const OwnTreeChange own;
  for (const ShownBinder& binder : session.binderTree.binders) {
    platform::collapseTreeRow(kBinderTree, binder.head);
  }
}

bool binderRowDimmed(std::int32_t value) {
  ShownBinderFile* file = shownFile(value);
  if (file == nullptr) return false;
  if (!std::exchange(file->tested, true)) {
    const bool dimmed = isMissing(file->path);
    if (dimmed != std::exchange(file->dimmed, dimmed)) {
      platform::setTreeRowDimmed(kBinderTree, file->row, dimmed);
    }
  }
  return file->dimmed;
}

}  // namespace quillmere
