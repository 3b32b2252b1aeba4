#include "platform/file_dialog.h"

#include <windows.h>

#include <shobjidl.h>

#include <utility>

#include "platform/win32/handles.h"
#include "platform/win32/main_window.h"
#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"

namespace quillmere::platform {
namespace {

void setFilters(IFileDialog& dialog, const std::vector<FileFilter>& filters) {
  if (filters.empty()) return;
  std::vector<COMDLG_FILTERSPEC> rows;
  rows.reserve(filters.size());
  for (const FileFilter& filter : filters)
    rows.push_back({wide(filter.name), wide(filter.pattern)});
  dialog.SetFileTypes(static_cast<UINT>(rows.size()), rows.data());
  dialog.SetFileTypeIndex(1);  // one-based
}

void setFolder(IFileDialog& dialog, const std::u16string& folder) {
  void* item = nullptr;
  if (folder.empty()) return;
  if (FAILED(SHCreateItemFromParsingName(wide(folder), nullptr, IID_IShellItem, &item))) return;
  const ComOwner<IShellItem> owner(static_cast<IShellItem*>(item));
  dialog.SetFolder(owner.get());
}

void setOptions(IFileOpenDialog& dialog, bool allowSeveral) {
  FILEOPENDIALOGOPTIONS options = 0;
  dialog.GetOptions(&options);
  options |= FOS_FILEMUSTEXIST | FOS_PATHMUSTEXIST | FOS_NOCHANGEDIR;
  if (allowSeveral) options |= FOS_ALLOWMULTISELECT;
  dialog.SetOptions(options);
}

std::u16string pathOf(IShellItem& item) {
  wchar_t* path = nullptr;
  if (FAILED(item.GetDisplayName(SIGDN_FILESYSPATH, &path)) || path == nullptr) return {};
  const TaskText owner(path);
  return fromWide(path);
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
    std::u16string path = pathOf(*item);
    if (!path.empty()) paths.push_back(std::move(path));
  }
  return paths;
}

std::vector<std::u16string> runDialog(const OpenDialogRequest& request) {
  const auto dialog = createComObject<IFileOpenDialog>(CLSID_FileOpenDialog, IID_IFileOpenDialog);
  if (!dialog) return {};
  if (!request.title.empty()) dialog->SetTitle(wide(request.title));
  setFilters(*dialog, request.filters);
  setOptions(*dialog, request.allowSeveral);
  setFolder(*dialog, request.folder);
  if (FAILED(dialog->Show(windowHandles.main))) return {};
  return chosenPaths(*dialog);
}

std::u16string chosenPath(IFileDialog& dialog) {
  IShellItem* item = nullptr;
  if (FAILED(dialog.GetResult(&item)) || item == nullptr) return {};
  const ComOwner<IShellItem> owner(item);
  return pathOf(*item);
}

std::u16string runDialog(const SaveDialogRequest& request) {
  const auto dialog = createComObject<IFileSaveDialog>(CLSID_FileSaveDialog, IID_IFileSaveDialog);
  if (!dialog) return {};
  if (!request.title.empty()) dialog->SetTitle(wide(request.title));
  setFilters(*dialog, request.filters);
  dialog->SetDefaultExtension(wide(request.defaultExtension));
  dialog->SetFileName(wide(request.name));
  setFolder(*dialog, request.folder);
  FILEOPENDIALOGOPTIONS options = 0;
  dialog->GetOptions(&options);
  dialog->SetOptions(options | FOS_OVERWRITEPROMPT | FOS_PATHMUSTEXIST | FOS_NOCHANGEDIR);
  if (FAILED(dialog->Show(windowHandles.main))) return {};
  return chosenPath(*dialog);
}

}  // namespace

std::u16string chooseFileToSave(const SaveDialogRequest& request) {
  const ComApartment apartment;
  const HWND holder = keyboardHolder();
  std::u16string path = runDialog(request);
  giveKeyboardTo(holder);
  return path;
}

std::vector<std::u16string> chooseFilesToOpen(const OpenDialogRequest& request) {
  const ComApartment apartment;
  const HWND holder = keyboardHolder();
  std::vector<std::u16string> paths = runDialog(request);
  giveKeyboardTo(holder);
  return paths;
}

}  // namespace quillmere::platform
