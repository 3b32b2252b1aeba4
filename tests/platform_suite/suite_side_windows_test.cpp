#include <windows.h>

#include <commctrl.h>
#include <gdiplus.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "platform/win32/handles.h"
#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"
#include "platform_suite/suite_side.h"

namespace fs = std::filesystem;

namespace quillmere::platform {
namespace {

fs::path pathOf(const std::u16string& path) {
  return fs::path(wide(path));
}

void makeDeletable(const fs::path& folder) {
  std::error_code ignored;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder, ignored)) {
    SetFileAttributesW(entry.path().c_str(), FILE_ATTRIBUTE_NORMAL);
  }
}

// As the program starts it before anything is measured.
struct GraphicsLibrary {
  GraphicsLibrary() {
    const Gdiplus::GdiplusStartupInput input;
    Gdiplus::GdiplusStartup(&token, &input, nullptr);
  }
  ~GraphicsLibrary() { Gdiplus::GdiplusShutdown(token); }
  ULONG_PTR token = 0;
};

HTREEITEM nextItem(HTREEITEM item, UINT which) {
  return reinterpret_cast<HTREEITEM>(SendMessageW(windowHandles.bookmarksTree, TVM_GETNEXTITEM,
                                                  which, reinterpret_cast<LPARAM>(item)));
}

std::u16string describe(HTREEITEM row) {
  wchar_t text[100] = {};
  TVITEMW item{};
  item.mask = TVIF_TEXT | TVIF_CHILDREN | TVIF_STATE;
  item.stateMask = TVIS_EXPANDED;
  item.hItem = row;
  item.pszText = text;
  item.cchTextMax = static_cast<int>(std::size(text));
  SendMessageW(windowHandles.bookmarksTree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
  const bool expanded = (item.state & TVIS_EXPANDED) != 0;
  return (expanded ? u"-" : item.cChildren != 0 ? u"+" : u"") + fromWide(text);
}

void appendRows(HTREEITEM first, const std::u16string& indentation,
                std::vector<std::u16string>& rows) {
  for (HTREEITEM row = first; row != nullptr; row = nextItem(row, TVGN_NEXT)) {
    rows.push_back(indentation + describe(row));
    appendRows(nextItem(row, TVGN_CHILD), indentation + u" ", rows);
  }
}

}  // namespace

std::u16string makeScratchFolder() {
  static const GraphicsLibrary graphics;
  static int count = 0;
  const std::wstring name = L"quillmere-suite-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
                            std::to_wstring(++count);
  const fs::path folder = fs::temp_directory_path() / name;
  fs::create_directories(folder);
  return fromWide(folder.native()) + u"\\";
}

void workIn(const std::u16string& folder) {
  EXPECT_TRUE(SetCurrentDirectoryW(wide(folder)));
}

void removeScratchFolder(const std::u16string& folder) {
  // A folder that a process works in cannot be removed.
  SetCurrentDirectoryW(fs::temp_directory_path().c_str());
  makeDeletable(pathOf(folder));
  std::error_code ignored;
  fs::remove_all(pathOf(folder), ignored);
}

void putBytes(const std::u16string& path, const std::string& bytes) {
  std::ofstream file(pathOf(path), std::ios::binary);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  EXPECT_TRUE(file.good());
}

std::string bytesOf(const std::u16string& path) {
  std::ifstream file(pathOf(path), std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

TreeScene::TreeScene() {
  INITCOMMONCONTROLSEX controls{sizeof(controls), ICC_TREEVIEW_CLASSES};
  InitCommonControlsEx(&controls);
  windowHandles.main = CreateWindowExW(0, L"Static", L"", WS_OVERLAPPEDWINDOW, 0, 0, 300, 200,
                                       nullptr, nullptr, nullptr, nullptr);
  windowHandles.bookmarksTree = CreateWindowExW(
      0, WC_TREEVIEWW, L"", WS_CHILD | WS_VISIBLE | TVS_HASBUTTONS | TVS_LINESATROOT, 0, 0, 200,
      150, windowHandles.main, nullptr, nullptr, nullptr);
  ShowWindow(windowHandles.main, SW_SHOWNORMAL);
}

TreeScene::~TreeScene() {
  DestroyWindow(windowHandles.main);
  windowHandles = {};
}

std::vector<std::u16string> TreeScene::rows() const {
  std::vector<std::u16string> rows;
  appendRows(nextItem(nullptr, TVGN_ROOT), u"", rows);
  return rows;
}

FileLock::FileLock(const std::u16string& path, LockKind kind) : path_(path) {
  const DWORD sharing =
      kind == LockKind::Exclusive ? 0 : FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  handle_ = openFile(wide(path), GENERIC_READ | GENERIC_WRITE, sharing, OPEN_EXISTING).release();
  EXPECT_NE(handle_, nullptr);
}

FileLock::~FileLock() {
  if (handle_ != nullptr) CloseHandle(handle_);
}

}  // namespace quillmere::platform
