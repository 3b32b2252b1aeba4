#include "driver/files.h"

#include <knownfolders.h>
#include <shlobj.h>

#include <cstring>

#include "driver/wait.h"

namespace quillmere::e2e {
namespace {

std::wstring knownFolder(const KNOWNFOLDERID& id) {
  wchar_t* path = nullptr;
  SHGetKnownFolderPath(id, 0, nullptr, &path);
  const std::wstring result = path ? path : L"";
  CoTaskMemFree(path);
  return result;
}

HANDLE openFile(const std::wstring& path, DWORD access, DWORD disposition) {
  return CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                     nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
}

}  // namespace

std::wstring userDataFolder() {
  return knownFolder(FOLDERID_LocalAppData) + L"\\Quillmere";
}

std::wstring settingsFile() {
  return userDataFolder() + L"\\quillmere.ini";
}

std::wstring desktopFolder() {
  return knownFolder(FOLDERID_Desktop);
}

std::wstring scenarioFolder() {
  return L"C:\\scenario";
}

void prepareFolders(bool promptAnswered) {
  removeTree(userDataFolder());
  removeTree(scenarioFolder());
  CreateDirectoryW(scenarioFolder().c_str(), nullptr);
  if (promptAnswered) setSetting(L"Onboarding", L"DesktopShortcutPromptShown", L"1");
}

bool exists(const std::wstring& path) {
  return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

void removeTree(const std::wstring& folder) {
  WIN32_FIND_DATAW found{};
  const HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return;
  do {
    const std::wstring name = found.cFileName;
    if (name == L"." || name == L"..") continue;
    const std::wstring path = folder + L"\\" + name;
    if (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) {
      removeTree(path);
    } else {
      SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
      DeleteFileW(path.c_str());
    }
  } while (FindNextFileW(search, &found));
  FindClose(search);
  RemoveDirectoryW(folder.c_str());
}

bool writeFile(const std::wstring& path, const std::string& bytes) {
  const HANDLE file = openFile(path, GENERIC_WRITE, CREATE_ALWAYS);
  if (file == INVALID_HANDLE_VALUE) return false;
  DWORD written = 0;
  WriteFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
  CloseHandle(file);
  return written == bytes.size();
}

std::string readFile(const std::wstring& path) {
  const HANDLE file = openFile(path, GENERIC_READ, OPEN_EXISTING);
  if (file == INVALID_HANDLE_VALUE) return {};
  LARGE_INTEGER size{};
  GetFileSizeEx(file, &size);
  std::string bytes(static_cast<std::size_t>(size.QuadPart), '\0');
  DWORD read = 0;
  ReadFile(file, bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
  CloseHandle(file);
  bytes.resize(read);
  return bytes;
}

FILETIME lastWrite(const std::wstring& path) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data);
  return data.ftLastWriteTime;
}

bool isWrittenBy(const std::wstring& path, const std::function<void()>& action) {
  const FILETIME before = lastWrite(path);
  action();
  return eventually([&] {
    const FILETIME now = lastWrite(path);
    return CompareFileTime(&now, &before) != 0;
  });
}

std::wstring makeFile(const std::wstring& name, const std::string& bytes) {
  const std::wstring path = scenarioFolder() + L"\\" + name;
  writeFile(path, bytes);
  return path;
}

std::wstring setting(const wchar_t* section, const wchar_t* key) {
  wchar_t value[1024];
  const DWORD length =
      GetPrivateProfileStringW(section, key, L"", value, 1024, settingsFile().c_str());
  return {value, length};
}

void setSetting(const wchar_t* section, const wchar_t* key, const std::wstring& value) {
  CreateDirectoryW(userDataFolder().c_str(), nullptr);
  if (!exists(settingsFile())) writeFile(settingsFile(), "\xFF\xFE");
  WritePrivateProfileStringW(section, key, value.c_str(), settingsFile().c_str());
}

std::vector<std::wstring> settingsLines() {
  const std::string bytes = readFile(settingsFile());
  std::wstring text(bytes.size() / 2, L'\0');
  std::memcpy(text.data(), bytes.data(), text.size() * 2);
  std::vector<std::wstring> lines(1);
  for (const wchar_t unit : text) {
    if (unit == L'\n') {
      lines.emplace_back();
    } else if (unit != L'\r' && unit != 0xFEFF) {
      lines.back() += unit;
    }
  }
  while (!lines.empty() && lines.back().empty()) lines.pop_back();
  return lines;
}

}  // namespace quillmere::e2e
