#include "platform/file_dialog.h"

#include <windows.h>

#include <shobjidl.h>

#include "platform/win32/handles.h"
#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"

namespace quillmere::platform {
namespace {

void setFilters(IFileOpenDialog& dialog, const std::vector<FileFilter>& filters) {
  if (filters.empty()) return;
  std::vector<COMDLG_FILTERSPEC> rows;
  rows.reserve(filters.size());
  for (const FileFilter& filter : filters)
    rows.push_back({wide(filter.name), wide(filter.pattern)});
  dialog.SetFileTypes(static_cast<UINT>(rows.size()), rows.data());
  dialog.SetFileTypeIndex(1);  // counted from 1
}

void setOptions(IFileOpenDialog& dialog, bool allowSeveral) {
  FILEOPENDIALOGOPTIONS options = 0;
  dialog.GetOptions(&options);
  options |= FOS_FILEMUSTEXIST | FOS_PATHMUSTEXIST | FOS_NOCHANGEDIR;
  if (allowSeveral) options |= FOS_ALLOWMULTISELECT;
  dialog.SetOptions(options);
}

std::vector<std::u16string> chosenPaths(IFileOpenDialog& dialog) {
  IShellItemArray* items = nullptr;
  if (FAILED(dialog.GetResults(&items)) || items == nullptr) return {};
  const ComOwner<IShellItemArray> itemsOwner(items);
  DWORD count = 0;
  items->GetCount(&count);
  std::vector<std::u16string> paths;
  for (DWORD n = 0; n < count; ++n) {
    IShellItem* item = nullptr;
    if (FAILED(items->GetItemAt(n, &item)) || item == nullptr) continue;
    const ComOwner<IShellItem> itemOwner(item);
    wchar_t* path = nullptr;
    if (FAILED(item->GetDisplayName(SIGDN_FILESYSPATH, &path)) || path == nullptr) continue;
    const TaskText pathOwner(path);
    paths.push_back(fromWide(path));
  }
  return paths;
}

std::vector<std::u16string> runDialog(const OpenDialogRequest& request) {
  const auto dialog = createComObject<IFileOpenDialog>(CLSID_FileOpenDialog, IID_IFileOpenDialog);
  if (!dialog) return {};
  if (!request.title.empty()) dialog->SetTitle(wide(request.title));
  setFilters(*dialog, request.filters);
  setOptions(*dialog, request.allowSeveral);
  if (FAILED(dialog->Show(windowHandles.main))) return {};
  return chosenPaths(*dialog);
}

}  // namespace

std::vector<std::u16string> chooseFilesToOpen(const OpenDialogRequest& request) {
  const ComApartment apartment;
  const HWND holder = keyboardHolder();
  std::vector<std::u16string> paths = runDialog(request);
  giveKeyboardTo(holder);
  return paths;
}

}  // namespace quillmere::platform
