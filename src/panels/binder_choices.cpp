#include "panels/binder_choices.h"

#include "base/limits.h"
#include "documents/save.h"
#include "panels/binder_actions.h"
#include "panels/binder_panel.h"
#include "panels/binder_rows.h"
#include "session/session.h"
#include "store/binder_library.h"

namespace quillmere {

namespace {

using platform::kNoTreeRow;
using platform::TreeRow;

// Runs what a row is for, if it is no document's; true then.
bool runMarkerRow(const BinderRow& row) {
  if (row.kind == BinderRowKind::NewBinder) AddNewBinder();
  if (row.kind == BinderRowKind::AddDocument) AddFilesDialog(binderIndexOf(row));
  return row.kind == BinderRowKind::NewBinder || row.kind == BinderRowKind::AddDocument;
}

}  // namespace

bool mayMoveBinderSelection(std::int32_t value) {
  if (session.binderTree.rebuildingTree) return true;
  if (binderRowOf(value).kind != BinderRowKind::File) return true;
  const std::u16string path = pathOf(session.activePane);
  if (SaveOrShelveBeforeClose(fileNameOf(path)) == BoxAnswer::Cancel) return false;
  session.binderTree.askedAbout = documentOf(session.activePane);
  return true;
}

// The user was asked about the document that is being replaced when the selection moved.
void binderSelectionMoved(std::int32_t value, bool byUser) {
  const BinderRow row = binderRowOf(value);
  if (session.binderTree.rebuildingTree || !byUser || row.kind != BinderRowKind::File) return;
  if (!sameBinderRow(row, session.binderTree.lastOpened)) openBinderRow(row, false, true);
}

void pressBinderTree() {
  session.binderTree.lastOpened = {};
}

// A row that is not selected yet is opened when the selection moves to it.
void clickBinderRow(std::int32_t value, bool selected) {
  const BinderRow row = binderRowOf(value);
  if (runMarkerRow(row) || !selected || row.kind != BinderRowKind::File) return;
  if (!sameBinderRow(row, session.binderTree.lastOpened)) openBinderRow(row, true, true);
}

void enterOnBinderRow() {
  const BinderRow row = selectedBinderRow();
  if (!runMarkerRow(row)) openBinderRow(row, true, false);
}

void deleteOnBinderRow(bool shift) {
  deleteBinderRow(selectedBinderRow(), shift);
}

void moveToBinderSibling(bool last) {
  const TreeRow row = last ? lastSiblingOfSelected() : firstSiblingOfSelected();
  if (row == kNoTreeRow || row == platform::selectedTreeRow(kBinderTree)) return;
  const std::int32_t value = platform::treeRowEntry(kBinderTree, row);
  if (!mayMoveBinderSelection(value)) return;
  {
    const OwnTreeChange own;
    platform::selectTreeRow(kBinderTree, row);
  }
  binderSelectionMoved(value, true);
}

bool mayRenameBinderRow(std::int32_t value) {
  const BinderRow row = binderRowOf(value);
  return !session.viewerRole && row.kind == BinderRowKind::Head &&
         binderIndexOf(row) != kNoBinder && !isWorkingDocuments(row);
}

bool finishBinderRowRename(std::int32_t value, const std::u16string& typed) {
  const int index = binderIndexOf(binderRowOf(value));
  if (!mayRenameBinderRow(value) || !FinishBinderRename(index, typed)) return false;
  BuildBinderTree();
  SelectBinderHead(index);
  return true;
}

}  // namespace quillmere
