#include "driver/inside_request.h"

#include <cstring>

#include "driver/wait.h"

namespace quillmere::e2e {
namespace {

HMODULE insideLibrary() {
  static const HMODULE library = [] {
    wchar_t own[MAX_PATH];
    GetModuleFileNameW(nullptr, own, MAX_PATH);
    const std::wstring path = own;
    return LoadLibraryW((path.substr(0, path.rfind(L'\\') + 1) + L"e2e_inside.dll").c_str());
  }();
  return library;
}

InsideBlock* sharedBlock() {
  static InsideBlock* const block = [] {
    const HANDLE mapping = CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0,
                                              sizeof(InsideBlock), kInsideBlock);
    return static_cast<InsideBlock*>(
        MapViewOfFile(mapping, FILE_MAP_ALL_ACCESS, 0, 0, sizeof(InsideBlock)));
  }();
  return block;
}

}  // namespace

std::wstring askInside(HWND window, InsideRequest request, LPARAM detail,
                       const std::wstring& text) {
  const HMODULE library = insideLibrary();
  InsideBlock* const block = sharedBlock();
  if (library == nullptr || block == nullptr) return {};
  block->done = 0;
  block->units = static_cast<DWORD>(text.size());
  std::memcpy(block->text, text.c_str(), (text.size() + 1) * sizeof(wchar_t));

  const auto hookProcedure =
      reinterpret_cast<HOOKPROC>(reinterpret_cast<void*>(GetProcAddress(library, "insideHook")));
  const HHOOK hook = SetWindowsHookExW(WH_CALLWNDPROC, hookProcedure, library,
                                       GetWindowThreadProcessId(window, nullptr));
  DWORD_PTR result = 0;
  SendMessageTimeoutW(window, RegisterWindowMessageW(kInsideMessage), static_cast<WPARAM>(request),
                      detail, SMTO_NORMAL, kPatience, &result);
  UnhookWindowsHookEx(hook);
  return block->done ? std::wstring(block->text, block->units) : std::wstring();
}

}  // namespace quillmere::e2e
