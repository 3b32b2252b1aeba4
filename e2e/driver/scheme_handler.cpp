#include "driver/scheme_handler.h"

#include <windows.h>

#include "driver/files.h"

namespace quillmere::e2e {
namespace {

std::wstring inTestFolder(const std::wstring& name) {
  wchar_t own[MAX_PATH];
  GetModuleFileNameW(nullptr, own, MAX_PATH);
  const std::wstring path = own;
  return path.substr(0, path.rfind(L'\\') + 1) + name;
}

std::wstring notesFile() {
  return scenarioFolder() + L"\\addresses.txt";
}

std::wstring readDefault(const std::wstring& key) {
  wchar_t value[1024]{};
  DWORD size = sizeof(value) - sizeof(wchar_t);
  RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), nullptr, RRF_RT_REG_SZ | RRF_RT_REG_EXPAND_SZ,
               nullptr, value, &size);
  return value;
}

void writeDefault(const std::wstring& key, const std::wstring& value) {
  HKEY opened = nullptr;
  if (RegCreateKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, nullptr, 0, KEY_WRITE, nullptr, &opened,
                      nullptr) != ERROR_SUCCESS) {
    return;
  }
  RegSetValueExW(opened, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()),
                 static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
  RegCloseKey(opened);
}

}  // namespace

SchemeHandler::SchemeHandler(const std::wstring& scheme)
    : key_(scheme + L"\\shell\\open\\command"), before_(readDefault(key_)) {
  writeDefault(key_, L"rundll32.exe \"" + inTestFolder(L"e2e_inside.dll") + L"\",noteAddress " +
                         notesFile() + L" %1");
}

SchemeHandler::~SchemeHandler() {
  writeDefault(key_, before_);
}

std::string openedAddresses() {
  return readFile(notesFile());
}

}  // namespace quillmere::e2e
