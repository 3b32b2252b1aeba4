#include "inside/silent_share.h"

#include <windows.h>

#include <algorithm>
#include <cstring>

namespace quillmere::e2e {
namespace {

constexpr DWORD kSilence = 60'000;  // milliseconds, longer than any scenario waits

using AttributeQuery = DWORD(WINAPI*)(const wchar_t* path);

AttributeQuery systemQuery = nullptr;
std::wstring silentStart;

DWORD WINAPI querySilently(const wchar_t* path) {
  std::wstring start(path, wcsnlen(path, silentStart.size()));
  std::replace(start.begin(), start.end(), L'/', L'\\');
  if (start == silentStart) Sleep(kSilence);
  return systemQuery(path);
}

template <typename Type>
Type* at(BYTE* base, ULONGLONG offset) {
  return reinterpret_cast<Type*>(base + offset);
}

// Where the program looks up the address of a system function; null when it never calls it.
ULONGLONG* importOf(BYTE* program, const char* function) {
  const auto* head = at<IMAGE_NT_HEADERS>(program, at<IMAGE_DOS_HEADER>(program, 0)->e_lfanew);
  const auto& imports = head->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  const auto* library = at<IMAGE_IMPORT_DESCRIPTOR>(program, imports.VirtualAddress);
  for (; library->Name != 0; ++library) {
    const auto* name = at<IMAGE_THUNK_DATA>(program, library->OriginalFirstThunk);
    auto* address = at<IMAGE_THUNK_DATA>(program, library->FirstThunk);
    for (; name->u1.AddressOfData != 0; ++name, ++address) {
      if (IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal)) continue;
      const auto* entry = at<IMAGE_IMPORT_BY_NAME>(program, name->u1.AddressOfData);
      if (std::strcmp(reinterpret_cast<const char*>(entry->Name), function) == 0) {
        return &address->u1.Function;
      }
    }
  }
  return nullptr;
}

// The program goes on calling into this library after the hook that loaded it is gone.
bool stayLoaded() {
  HMODULE library = nullptr;
  constexpr DWORD kForEver = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN;
  return GetModuleHandleExW(kForEver, reinterpret_cast<const wchar_t*>(&silentStart), &library) !=
         0;
}

}  // namespace

bool silenceShare(const std::wstring& start) {
  ULONGLONG* import =
      importOf(reinterpret_cast<BYTE*>(GetModuleHandleW(nullptr)), "GetFileAttributesW");
  DWORD before = 0;
  if (import == nullptr || !stayLoaded() ||
      !VirtualProtect(import, sizeof *import, PAGE_READWRITE, &before)) {
    return false;
  }
  silentStart = start;
  systemQuery = reinterpret_cast<AttributeQuery>(*import);
  *import = reinterpret_cast<ULONGLONG>(&querySilently);
  VirtualProtect(import, sizeof *import, before, &before);
  return true;
}

}  // namespace quillmere::e2e
