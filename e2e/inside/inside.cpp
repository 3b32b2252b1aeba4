#include "inside/inside.h"

#include <commctrl.h>
#include <shellapi.h>
#include <shlobj.h>

#include <cstring>
#include <string>

#include "inside/silent_share.h"

namespace quillmere::e2e {
namespace {

std::wstring menuText(HMENU menu, int position) {
  wchar_t text[256]{};
  GetMenuStringW(menu, static_cast<UINT>(position), text, ARRAYSIZE(text), MF_BYPOSITION);
  return text;
}

std::wstring describeMenu(HWND window, HMENU menu, int depth) {
  std::wstring rows;
  SendMessageW(window, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu), 0);
  for (int i = 0; i < GetMenuItemCount(menu); ++i) {
    MENUITEMINFOW info{};
    info.cbSize = sizeof(info);
    info.fMask = MIIM_FTYPE | MIIM_STATE | MIIM_ID | MIIM_SUBMENU;
    GetMenuItemInfoW(menu, static_cast<UINT>(i), TRUE, &info);
    std::wstring state;
    if (info.fType & MFT_SEPARATOR) state += L's';
    if (info.fState & MFS_CHECKED) state += L'c';
    if (info.fState & MFS_GRAYED) state += L'g';
    const int id = info.hSubMenu ? -1 : static_cast<int>(info.wID);
    rows += std::to_wstring(depth) + L'|' + std::to_wstring(id) + L'|' + state + L'|' +
            menuText(menu, i) + L'\n';
    if (info.hSubMenu) rows += describeMenu(window, info.hSubMenu, depth + 1);
  }
  return rows;
}

std::wstring treeRowText(HWND tree, HTREEITEM item) {
  wchar_t text[512]{};
  TVITEMW info{};
  info.mask = TVIF_TEXT;
  info.hItem = item;
  info.pszText = text;
  info.cchTextMax = ARRAYSIZE(text);
  SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&info));
  return text;
}

std::wstring treeRowPlace(HWND tree, const std::wstring& wanted) {
  HTREEITEM item = TreeView_GetFirstVisible(tree);
  while (item != nullptr && treeRowText(tree, item) != wanted) {
    item = TreeView_GetNextVisible(tree, item);
  }
  RECT place{};
  if (item == nullptr || !TreeView_GetItemRect(tree, item, &place, TRUE)) return {};
  return std::to_wstring(place.left) + L' ' + std::to_wstring(place.top) + L' ' +
         std::to_wstring(place.right) + L' ' + std::to_wstring(place.bottom);
}

// The system's control asks the window for the tip when the pointer rests; here it does not.
std::wstring treeRowTip(HWND tree, const std::wstring& wanted) {
  HTREEITEM item = TreeView_GetFirstVisible(tree);
  while (item != nullptr && treeRowText(tree, item) != wanted) {
    item = TreeView_GetNextVisible(tree, item);
  }
  TVITEMW info{};
  info.mask = TVIF_PARAM;
  info.hItem = item;
  SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&info));
  wchar_t text[512]{};
  NMTVGETINFOTIPW tip{};
  tip.hdr.hwndFrom = tree;
  tip.hdr.idFrom = static_cast<UINT_PTR>(GetDlgCtrlID(tree));
  tip.hdr.code = TVN_GETINFOTIPW;
  tip.pszText = text;
  tip.cchTextMax = ARRAYSIZE(text);
  tip.hItem = item;
  tip.lParam = info.lParam;
  SendMessageW(GetParent(tree), WM_NOTIFY, tip.hdr.idFrom, reinterpret_cast<LPARAM>(&tip));
  return text;
}

std::wstring describeFont(HWND control) {
  const auto font = reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0));
  LOGFONTW look{};
  if (GetObjectW(font, sizeof(look), &look) == 0) return {};
  return look.lfFaceName + (L'|' + std::to_wstring(look.lfHeight)) + L'|' +
         std::to_wstring(look.lfWeight);
}

std::wstring describeTreeItem(HWND tree, HTREEITEM item, int depth) {
  std::wstring rows;
  for (; item != nullptr; item = TreeView_GetNextSibling(tree, item)) {
    wchar_t text[512]{};
    TVITEMW info{};
    info.mask = TVIF_TEXT | TVIF_STATE;
    info.hItem = item;
    info.pszText = text;
    info.cchTextMax = ARRAYSIZE(text);
    info.stateMask = TVIS_SELECTED;
    SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&info));
    rows += std::to_wstring(depth) + L'|' + ((info.state & TVIS_SELECTED) ? L"1|" : L"0|") + text +
            L'\n';
    rows += describeTreeItem(tree, TreeView_GetChild(tree, item), depth + 1);
  }
  return rows;
}

std::wstring statusText(HWND window, WPARAM part) {
  const HWND bar = FindWindowExW(window, nullptr, STATUSCLASSNAMEW, nullptr);
  std::wstring text(LOWORD(SendMessageW(bar, SB_GETTEXTLENGTHW, part, 0)) + 1u, L'\0');
  SendMessageW(bar, SB_GETTEXTW, part, reinterpret_cast<LPARAM>(text.data()));
  text.pop_back();
  return text;
}

std::wstring statusParts(HWND window) {
  const HWND bar = FindWindowExW(window, nullptr, STATUSCLASSNAMEW, nullptr);
  int edges[16]{};
  const LRESULT count =
      SendMessageW(bar, SB_GETPARTS, ARRAYSIZE(edges), reinterpret_cast<LPARAM>(edges));
  std::wstring text;
  for (LRESULT i = 0; i < count; ++i) text += L' ' + std::to_wstring(edges[i]);
  return text;
}

// The receiver takes ownership of the block.
void dropFiles(HWND window, LPARAM place, const wchar_t* paths, DWORD units) {
  const SIZE_T size = sizeof(DROPFILES) + (units + 1) * sizeof(wchar_t);
  const HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, size);
  auto* drop = static_cast<DROPFILES*>(GlobalLock(memory));
  drop->pFiles = sizeof(DROPFILES);
  drop->pt = {static_cast<short>(LOWORD(place)), static_cast<short>(HIWORD(place))};
  drop->fWide = TRUE;
  std::memcpy(drop + 1, paths, units * sizeof(wchar_t));
  GlobalUnlock(memory);
  PostMessageW(window, WM_DROPFILES, reinterpret_cast<WPARAM>(memory), 0);
}

void answer(InsideBlock& block, const std::wstring& text) {
  block.units = static_cast<DWORD>(text.size());
  std::memcpy(block.text, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
}

void serve(HWND window, InsideRequest request, LPARAM detail, InsideBlock& block) {
  switch (request) {
    case InsideRequest::DescribeMenu:
      answer(block,
             describeMenu(window, detail ? reinterpret_cast<HMENU>(detail) : GetMenu(window), 0));
      break;
    case InsideRequest::DropFiles:
      dropFiles(window, detail, block.text, block.units);
      break;
    case InsideRequest::DescribeTree: {
      const auto tree = reinterpret_cast<HWND>(detail);
      answer(block, describeTreeItem(tree, TreeView_GetRoot(tree), 0));
      break;
    }
    case InsideRequest::StatusText:
      answer(block, statusText(window, static_cast<WPARAM>(detail)));
      break;
    case InsideRequest::StatusParts:
      answer(block, statusParts(window));
      break;
    case InsideRequest::Cursor:
      answer(block, std::to_wstring(reinterpret_cast<ULONG_PTR>(GetCursor())));
      break;
    case InsideRequest::ChangeDensity: {
      RECT place{};
      GetWindowRect(window, &place);
      SendMessageW(window, WM_DPICHANGED, MAKEWPARAM(detail, detail),
                   reinterpret_cast<LPARAM>(&place));
      break;
    }
    case InsideRequest::InputWaits:
      answer(block, HIWORD(GetQueueStatus(QS_INPUT)) != 0 ? L"1" : L"0");
      break;
    case InsideRequest::TreeRowPlace:
      answer(block, treeRowPlace(reinterpret_cast<HWND>(detail), {block.text, block.units}));
      break;
    case InsideRequest::TreeRowTip:
      answer(block, treeRowTip(reinterpret_cast<HWND>(detail), {block.text, block.units}));
      break;
    case InsideRequest::SilenceShare:
      answer(block, silenceShare({block.text, block.units}) ? L"1" : L"0");
      break;
    case InsideRequest::DescribeFont:
      answer(block, describeFont(reinterpret_cast<HWND>(detail)));
      break;
  }
}

void serveFromBlock(const CWPSTRUCT& message) {
  const HANDLE mapping = OpenFileMappingW(FILE_MAP_ALL_ACCESS, FALSE, kInsideBlock);
  if (mapping == nullptr) return;
  auto* block = static_cast<InsideBlock*>(
      MapViewOfFile(mapping, FILE_MAP_ALL_ACCESS, 0, 0, sizeof(InsideBlock)));
  if (block != nullptr) {
    serve(message.hwnd, static_cast<InsideRequest>(message.wParam), message.lParam, *block);
    InterlockedExchange(&block->done, 1);
    UnmapViewOfFile(block);
  }
  CloseHandle(mapping);
}

}  // namespace
}  // namespace quillmere::e2e

extern "C" __declspec(dllexport) LRESULT CALLBACK
    insideHook(int code, WPARAM wParam, LPARAM lParam) {
  using namespace quillmere::e2e;
  static const UINT message = RegisterWindowMessageW(kInsideMessage);
  if (code >= 0) {
    const auto& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
    if (sent.message == message) serveFromBlock(sent);
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

// For rundll32, which passes the "FILE TEXT" after this function's name: appends TEXT as a line to
// FILE.
extern "C" __declspec(dllexport) void CALLBACK
    noteAddressW(HWND, HINSTANCE, const wchar_t* rest, int) {
  const std::wstring line = rest;
  const std::size_t blank = line.find(L' ');
  if (blank == std::wstring::npos) return;
  const HANDLE file = CreateFileW(line.substr(0, blank).c_str(), FILE_APPEND_DATA, FILE_SHARE_READ,
                                  nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return;
  const std::wstring address = line.substr(blank + 1) + L'\n';
  const std::string bytes(address.begin(), address.end());
  DWORD written = 0;
  WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  CloseHandle(file);
}
