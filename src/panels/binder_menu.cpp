#include "panels/binder_menu.h"

#include <algorithm>

#include "documents/binder_files.h"
#include "documents/discard.h"
#include "documents/open_requests.h"
#include "documents/shelve.h"
#include "integration/viewers.h"
#include "panels/binder_actions.h"
#include "panels/binder_choices.h"
#include "panels/binder_panel.h"
#include "panels/binder_rows.h"
#include "platform/text.h"
#include "session/session.h"
#include "store/binder_file.h"
#include "store/binder_library.h"
#include "store/probe_path.h"
#include "store/shelf.h"
#include "ui/boxes.h"
#include "ui/show_in_folder.h"

namespace quillmere {

namespace {

using platform::TreeRow;

// Each kind of row has numbers of its own.
enum SpaceCommand : std::uint32_t {
  kNewBinder = 1,
  kExistingBinder = 2,
  kCollapseAll = 3,
  kRefreshAll = 4,
  kCloseAllCustom = 5,
};
enum HeadCommand : std::uint32_t {
  kAddDocuments = 1,
  kRename = 2,
  kCloseThisBinder = 3,
  kDeleteThisBinder = 4,
  kAddCurrent = 5,
  kRefresh = 6,
  kCloseAll = 10,
  kOpenDocument = 11,
  kBoldHead = 20,
};
enum FileCommand : std::uint32_t {
  kOpen = 1,
  kRemove = 2,
  kBoldFile = 3,
  kSave = 4,
  kDiscard = 5,
  kViewInFolder = 6,
  kViewer = 7,
};

MenuRow item(std::uint32_t command, const char16_t* text, bool enabled = true) {
  return {command, text, enabled, false, {}};
}

MenuRow checkItem(std::uint32_t command, const char16_t* text, bool checked) {
  return {command, text, true, checked, {}};
}

std::vector<MenuRow> spaceMenu() {
  return {item(kNewBinder, u"Add New Binder..."),
          item(kExistingBinder, u"Add Existing Binder..."),
          MenuRow{},
          item(kRefreshAll, u"Refresh Binders"),
          MenuRow{},
          item(kCollapseAll, u"Collapse All", !session.binderLibrary.empty()),
          MenuRow{},
          item(kCloseAllCustom, u"Close All Custom Binders", AnyCustomBinder())};
}

std::vector<MenuRow> workingDocumentsMenu(const BinderFile& binder) {
  return {item(kOpenDocument, u"Open Document..."), MenuRow{}, item(kCloseAll, u"Close All"),
          MenuRow{}, checkItem(kBoldHead, u"Bold", binder.bold)};
}

std::vector<MenuRow> headMenu(const BinderFile& binder) {
  if (binder.isWorkingDocuments) return workingDocumentsMenu(binder);
  return {
      item(kAddDocuments, u"Add Document to Binder..."),
      item(kAddCurrent, u"Add Current Doc to Binder", documentOf(session.activePane) != nullptr),
      item(kRename, u"Rename"),
      checkItem(kBoldHead, u"Bold", binder.bold),
      MenuRow{},
      item(kRefresh, u"Refresh"),
      MenuRow{},
      item(kCloseThisBinder, u"Close Binder"),
      item(kDeleteThisBinder, u"Delete Binder")};
}

std::vector<MenuRow> fileMenu(const BinderFile& binder, const std::u16string& path) {
  const int pane = paneWithPath(path);
  const bool unsaved = IsShelved(path) || (pane >= 0 && hasUnsavedChanges(pane));
  const auto view = binder.views.find(platform::toLower(path));
  return {item(kOpen, u"Open"),
          item(kViewer, u"Open in Separate Viewer"),
          item(kViewInFolder, u"View in Folder"),
          item(kSave, u"Save", unsaved),
          item(kDiscard, u"Discard Changes...", unsaved),
          checkItem(kBoldFile, u"Bold", view != binder.views.end() && view->second.bold),
          MenuRow{},
          item(kRemove,
               binder.isWorkingDocuments ? u"Close from Working Docs" : u"Remove from Binder")};
}

void runSpaceCommand(std::uint32_t command) {
  switch (command) {
    case kNewBinder:
      return AddNewBinder();
    case kExistingBinder:
      return AddExistingBinder();
    case kRefreshAll:
      RefreshAllBinders();
      return BuildBinderTree();
    case kCollapseAll:
      return collapseAllBinders();
    case kCloseAllCustom:
      CloseAllCustomBinders();
      return BuildBinderTree();
    default:
      return;
  }
}

void addCurrentDocument(int index) {
  if (documentOf(session.activePane) == nullptr) return;
  AddFilesToBinder(index, {pathOf(session.activePane)});
  BuildBinderTree();
  SelectBinderHead(index);
}

void toggleHeadBold(const BinderRow& row) {
  BinderFile& binder = binderAt(binderIndexOf(row));
  binder.bold = !binder.bold;
  platform::setTreeRowBold(kBinderTree, nearestTreeRow(row), binder.bold);
  WriteBinderFile(binder);
}

void runHeadCommand(const BinderRow& row, int index, std::uint32_t command) {
  switch (command) {
    case kAddDocuments:
      return AddFilesDialog(index);
    case kAddCurrent:
      return addCurrentDocument(index);
    case kRename:
      return platform::editTreeRow(kBinderTree, nearestTreeRow(row));
    case kBoldHead:
      return toggleHeadBold(row);
    case kOpenDocument:
      return openWithDialog(session.activePane);
    case kRefresh:
      RefreshBinder(index);
      return BuildBinderTree();
    case kCloseThisBinder:
      CloseBinder(index);
      return BuildBinderTree();
    case kDeleteThisBinder:
      if (DeleteBinder(index)) BuildBinderTree();
      return;
    case kCloseAll:
      if (RemoveAllFromBinder(index)) BuildBinderTree();
      return;
    default:
      return;
  }
}

void viewInFolder(const std::u16string& path) {
  if (!onGoneShare(path) && showInFolder(path)) return;
  showNotice(
      u"This file's folder could not be opened.\n\nWindows Explorer reported a fault. Try again if "
      u"this keeps happening.",
      BoxIcon::Warning);
}

void saveShelvedFile(int binder, int file, const std::u16string& path) {
  if (SaveShelved(binder, file)) DropShelfEntry(path);
  BuildBinderTree();
}

void toggleFileBold(const BinderRow& row) {
  BinderFile& binder = binderAt(binderIndexOf(row));
  BinderEntry& entry = binder.views[platform::toLower(row.file)];
  entry.bold = !entry.bold;
  platform::setTreeRowBold(kBinderTree, nearestTreeRow(row), entry.bold);
  WriteBinderFile(binder);
}

// The user is not asked again about a document whose changes were asked about when the row was
// selected for the menu.
void openFromMenu(const BinderRow& row) {
  const bool asked = session.binderTree.askedAbout != nullptr &&
                     session.binderTree.askedAbout == documentOf(session.activePane);
  openBinderRow(row, !asked, false);
}

void runFileCommand(const BinderRow& row, std::uint32_t command) {
  const int binder = binderIndexOf(row);
  const int file = fileIndexOf(row);
  if (file == kNoBinder) return;
  switch (command) {
    case kOpen:
      return openFromMenu(row);
    case kViewer:
      return showInViewer(row.file);
    case kViewInFolder:
      return viewInFolder(row.file);
    case kSave:
      return saveShelvedFile(binder, file, row.file);
    case kDiscard:
      return DiscardBinderFile(binder, file);
    case kBoldFile:
      return toggleFileBold(row);
    case kRemove:
      return removeBinderFile(row, false);
    default:
      return;
  }
}

// Selects the row as a left click does, but opens nothing. False when the user wants to stay.
bool selectForMenu(const BinderRow& row, std::int32_t value) {
  session.binderTree.askedAbout = nullptr;
  const TreeRow wanted = nearestTreeRow(row);
  if (platform::selectedTreeRow(kBinderTree) == wanted) return true;
  if (!mayMoveBinderSelection(value)) return false;
  const OwnTreeChange own;
  platform::selectTreeRow(kBinderTree, wanted);
  return true;
}

}  // namespace

std::vector<MenuRow> binderMenu(const BinderRow& row) {
  if (row.kind == BinderRowKind::None) return spaceMenu();
  const int binder = binderIndexOf(row);
  if (binder == kNoBinder) return {};
  if (row.kind == BinderRowKind::Head) return headMenu(binderAt(binder));
  return row.kind == BinderRowKind::File ? fileMenu(binderAt(binder), row.file)
                                         : std::vector<MenuRow>{};
}

void runBinderMenu(const BinderRow& row, std::uint32_t command) {
  if (row.kind == BinderRowKind::None) return runSpaceCommand(command);
  const int binder = binderIndexOf(row);
  if (binder == kNoBinder) return;
  if (row.kind == BinderRowKind::Head) runHeadCommand(row, binder, command);
  if (row.kind == BinderRowKind::File) runFileCommand(row, command);
}

void ShowBinderContextMenu(int x, int y, std::int32_t item) {
  const BinderRow row = binderRowOf(item);
  if (row.kind == BinderRowKind::NewBinder || row.kind == BinderRowKind::AddDocument) {
    clickBinderRow(item, false);
    return;
  }
  if (row.kind != BinderRowKind::None && !selectForMenu(row, item)) return;
  const std::uint32_t chosen = chooseFromMenu(binderMenu(row), x, y);
  if (chosen != 0) runBinderMenu(row, chosen);
  session.binderTree.askedAbout = nullptr;
}

}  // namespace quillmere
