#include "panels/binder_actions.h"

#include <string>
#include <vector>

#include "documents/binder_files.h"
#include "documents/open_binder_entry.h"
#include "documents/open_requests.h"
#include "panels/binder_panel.h"
#include "panels/binder_rows.h"
#include "panels/close_or_delete_dialog.h"
#include "panels/panel_toggles.h"
#include "session/session.h"
#include "session/waiting_opens.h"
#include "store/binder_library.h"
#include "ui/boxes.h"

namespace quillmere {

namespace {

std::vector<platform::FileFilter> binderFilters() {
  return {{u"Binder Files (*.lst)", u"*.lst"}, {u"All Files", u"*.*"}};
}

// Shows a binder that was just loaded.
void showBinder(int index) {
  if (!session.binderPanelVisible) toggleBinderPanel();
  BuildBinderTree();
  SelectBinderHead(index);
}

void closeOrDelete(int index) {
  switch (AskCloseOrDelete(binderAt(index).name)) {
    case CloseOrDelete::Close:
      CloseBinder(index);
      break;
    case CloseOrDelete::Delete:
      if (!DeleteBinder(index)) return;
      break;
    case CloseOrDelete::Cancel:
      return;
  }
  BuildBinderTree();
}

}  // namespace

void AddNewBinder() {
  if (session.viewerRole) return;
  const DocumentWork work;
  SaveDialogRequest request;
  request.title = u"Add New Binder";
  request.filters = binderFilters();
  request.defaultExtension = u"lst";
  request.folder = session.bindersFolder;
  const std::u16string path = askWhereToSave(request);
  if (path.empty()) return;
  const int index = CreateBinder(path);
  if (index >= 0) showBinder(index);
}

void AddExistingBinder() {
  if (session.viewerRole) return;
  const DocumentWork work;
  OpenDialogRequest request;
  request.title = u"Add Existing Binder";
  request.filters = binderFilters();
  request.allowSeveral = true;
  request.folder = session.bindersFolder;
  int last = kNoBinder;
  bool failed = false;
  for (const std::u16string& path : askForFiles(request)) {
    const int index = LoadBinder(path);
    if (index >= 0) last = index;
    failed |= index == kNoBinder;
  }
  if (failed) {
    showBox(u"One or more binder files could not be opened.", request.title, BoxButtons::Ok,
            BoxIcon::Warning);
  }
  if (last != kNoBinder) showBinder(last);
}

void AddFilesDialog(int index) {
  if (session.viewerRole || !IsValidBinder(index)) return;
  const DocumentWork work;
  OpenDialogRequest request;
  request.title = u"Add PDFs to Binder";
  request.filters = {{u"PDF Files (*.pdf)", u"*.pdf"}, {u"All Files", u"*.*"}};
  request.allowSeveral = true;
  const std::vector<std::u16string> passed = filesPastGate(askForFiles(request));
  if (passed.empty()) return;
  AddFilesToBinder(index, passed);
  BuildBinderTree();
  SelectBinderHead(index);
}

void openBinderRow(const BinderRow& row, bool askBeforeReplace, bool otherPaneCounts) {
  const int binder = binderIndexOf(row);
  const int file = fileIndexOf(row);
  if (file == kNoBinder) return;
  session.binderTree.lastOpened = row;
  const std::int32_t item =
      binderRowValue(static_cast<std::size_t>(binder), static_cast<std::uint32_t>(file));
  openBinderEntry(static_cast<std::uint32_t>(item), askBeforeReplace, otherPaneCounts);
}

void deleteBinderRow(const BinderRow& row, bool quick) {
  if (session.viewerRole) return;
  const int index = binderIndexOf(row);
  if (row.kind == BinderRowKind::File) {
    removeBinderFile(row, !quick);
  } else if (row.kind == BinderRowKind::Head && index != kNoBinder && !isWorkingDocuments(row)) {
    closeOrDelete(index);
  }
}

void removeBinderFile(const BinderRow& row, bool confirm) {
  const int file = fileIndexOf(row);
  if (file == kNoBinder) return;
  if (RemoveFileFromBinder(binderIndexOf(row), file, confirm)) BuildBinderTree();
}

}  // namespace quillmere
