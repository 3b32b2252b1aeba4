#include <windows.h>

#include <shlobj.h>

#include "platform/files.h"
#include "platform/process.h"
#include "platform/shell.h"
#include "platform/win32/handles.h"
#include "platform/win32/wide.h"
#include "platform_suite/suite_side.h"

namespace quillmere::platform {
namespace {

using ShellWindows = PlatformSuite;

constexpr std::uint64_t kPatience = 20'000;  // milliseconds

TEST_F(ShellWindows, AShortcutHoldsTargetAndDescription) {
  const std::u16string target = in(u"some prögram.exe");
  putBytes(target, "MZ");
  const Shortcut shortcut{in(u"Viewer.lnk"), target, u"Quillmere PDF Viewer"};
  ASSERT_TRUE(createShortcut(shortcut));

  const ComApartment apartment;
  const auto link = createComObject<IShellLinkW>(CLSID_ShellLink, IID_IShellLinkW);
  ASSERT_TRUE(link);
  const auto file = queryInterface<IPersistFile>(*link, IID_IPersistFile);
  ASSERT_TRUE(file && SUCCEEDED(file->Load(wide(shortcut.path), STGM_READ)));
  wchar_t path[MAX_PATH] = {};
  wchar_t description[MAX_PATH] = {};
  link->GetPath(path, MAX_PATH, nullptr, 0);
  link->GetDescription(description, MAX_PATH);
  EXPECT_EQ(fromWide(path), target);
  EXPECT_EQ(fromWide(description), u"Quillmere PDF Viewer");
}

TEST_F(ShellWindows, RegistryTextIsReadByNameAndAsDefault) {
  HKEY created = nullptr;
  ASSERT_EQ(RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\QuillmereSuite", 0, nullptr,
                            REG_OPTION_VOLATILE, KEY_ALL_ACCESS, nullptr, &created, nullptr),
            ERROR_SUCCESS);
  const RegistryKey key(created);
  const auto set = [&](const wchar_t* name, const std::u16string& text) {
    RegSetValueExW(key.get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                   static_cast<DWORD>(text.size() * 2 + 2));
  };
  set(L"ProgId", u"quillmere.pdf");
  set(nullptr, u"Größe 報告");
  set(L"Empty", u"");
  const DWORD number = 5;
  RegSetValueExW(key.get(), L"Number", 0, REG_DWORD, reinterpret_cast<const BYTE*>(&number), 4);
  EXPECT_EQ(readUserRegistryText(u"Software\\QuillmereSuite", u"progid"), u"quillmere.pdf");
  EXPECT_EQ(readUserRegistryText(u"Software\\QuillmereSuite", u""), u"Größe 報告");
  EXPECT_EQ(readUserRegistryText(u"Software\\QuillmereSuite", u"Empty"), u"");
  EXPECT_FALSE(readUserRegistryText(u"Software\\QuillmereSuite", u"Number"));
  EXPECT_FALSE(readUserRegistryText(u"Software\\QuillmereSuite", u"None"));
  RegDeleteKeyW(HKEY_CURRENT_USER, L"Software\\QuillmereSuite");
}

TEST_F(ShellWindows, AStartedProgramGetsItsCommandLine) {
  wchar_t system[MAX_PATH] = {};
  ASSERT_GT(GetSystemDirectoryW(system, MAX_PATH), 0u);
  const std::u16string program = fromWide(system) + u"\\cmd.exe";
  const std::u16string result = in(u"made by child.txt");
  ASSERT_TRUE(startProcess(program, u"\"" + program + u"\" /c echo made>\"" + result + u"\""));
  const std::uint64_t limit = monotonicMilliseconds() + kPatience;
  while (!fileStamp(result).value_or(FileStamp{}).size && monotonicMilliseconds() < limit) {
    sleepMilliseconds(20);
  }
  EXPECT_EQ(bytesOf(result).substr(0, 4), "made");
}

TEST_F(ShellWindows, AFileWithoutAProgramForItIsNotOpened) {
  EXPECT_FALSE(openWithSystem(in(u"none.quillmerenone")));
}

}  // namespace
}  // namespace quillmere::platform
