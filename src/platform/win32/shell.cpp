#include "platform/shell.h"

#include <windows.h>

#include <shlobj.h>
#include <shobjidl.h>

#include "platform/win32/handles.h"
#include "platform/win32/wide.h"

namespace quillmere::platform {
namespace {

constexpr UINT32 kPackageIdentityUnits = 512;

using GetIdentityFunction = LONG(WINAPI*)(UINT32* length, PWSTR identity);

// Some systems' kernel32.dll do not export it, so look it up at run time.
GetIdentityFunction findGetIdentity() {
  const HMODULE kernel = GetModuleHandleW(L"kernel32.dll");
  const FARPROC found = GetProcAddress(kernel, "GetCurrentApplicationUserModelId");
  return reinterpret_cast<GetIdentityFunction>(reinterpret_cast<void*>(found));
}

bool fillLink(IShellLinkW& link, const Shortcut& shortcut) {
  return SUCCEEDED(link.SetPath(wide(shortcut.target))) &&
         SUCCEEDED(link.SetDescription(wide(shortcut.description)));
}

}  // namespace

std::optional<std::u16string> readUserRegistryText(const std::u16string& key,
                                                   const std::u16string& name) {
  DWORD size = 0;
  const wchar_t* valueName = name.empty() ? nullptr : wide(name);
  if (RegGetValueW(HKEY_CURRENT_USER, wide(key), valueName, RRF_RT_REG_SZ, nullptr, nullptr,
                   &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  std::u16string text(size / sizeof(char16_t) + 1, u'\0');
  size = static_cast<DWORD>(text.size() * sizeof(char16_t));
  if (RegGetValueW(HKEY_CURRENT_USER, wide(key), valueName, RRF_RT_REG_SZ, nullptr, text.data(),
                   &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  text.resize(text.find(u'\0'));
  return text;
}

bool setUserRegistryText(const std::u16string& key, const std::u16string& name,
                         const std::u16string& text) {
  const auto size = static_cast<DWORD>((text.size() + 1) * sizeof(char16_t));
  return RegSetKeyValueW(HKEY_CURRENT_USER, wide(key), wide(name), REG_SZ, text.c_str(), size) ==
         ERROR_SUCCESS;
}

bool addUserRegistryName(const std::u16string& key, const std::u16string& name) {
  return RegSetKeyValueW(HKEY_CURRENT_USER, wide(key), wide(name), REG_NONE, nullptr, 0) ==
         ERROR_SUCCESS;
}

void announceAssociationChange() {
  SHChangeNotify(SHCNE_ASSOCCHANGED, SHCNF_IDLIST, nullptr, nullptr);
}

std::u16string packageIdentity() {
  const GetIdentityFunction getIdentity = findGetIdentity();
  if (getIdentity == nullptr) return {};
  wchar_t identity[kPackageIdentityUnits] = {};
  UINT32 length = kPackageIdentityUnits;
  if (getIdentity(&length, identity) != ERROR_SUCCESS) return {};
  return fromWide(identity);
}

std::u16string effectiveDefaultHandler(const std::u16string& extension) {
  const ComApartment apartment;
  const auto registration = createComObject<IApplicationAssociationRegistration>(
      CLSID_ApplicationAssociationRegistration, IID_IApplicationAssociationRegistration);
  if (!registration) return {};
  wchar_t* handler = nullptr;
  const HRESULT result =
      registration->QueryCurrentDefault(wide(extension), AT_FILEEXTENSION, AL_EFFECTIVE, &handler);
  const TaskText owner(handler);
  return SUCCEEDED(result) && handler != nullptr ? fromWide(handler) : std::u16string();
}

bool showInFolder(const std::u16string& path) {
  const ComApartment apartment;
  PIDLIST_ABSOLUTE item = nullptr;
  if (FAILED(SHParseDisplayName(wide(path), nullptr, &item, 0, nullptr))) return false;
  const HRESULT result = SHOpenFolderAndSelectItems(item, 0, nullptr, 0);
  CoTaskMemFree(item);
  return SUCCEEDED(result);
}

bool createShortcut(const Shortcut& shortcut) {
  const ComApartment apartment;
  const auto link = createComObject<IShellLinkW>(CLSID_ShellLink, IID_IShellLinkW);
  if (!link || !fillLink(*link, shortcut)) return false;
  const auto file = queryInterface<IPersistFile>(*link, IID_IPersistFile);
  return file && SUCCEEDED(file->Save(wide(shortcut.path), TRUE));
}

}  // namespace quillmere::platform
