#include "platform/file_dialog.h"

#include "platform/win32/wide.h"
#include "platform_suite/dialog_helper_windows_test.h"
#include "platform_suite/suite_side.h"

namespace quillmere::platform {
namespace {

using FileDialogWindows = PlatformSuite;

OpenDialogRequest requestFor(bool several) {
  OpenDialogRequest request;
  request.title = u"Suite Open";
  request.filters = {{u"PDF Files (*.pdf)", u"*.pdf"}, {u"All Files", u"*.*"}};
  request.allowSeveral = several;
  return request;
}

// The box where the user types a file name.
HWND findNameBox(HWND dialog) {
  HWND found = nullptr;
  EnumChildWindows(
      dialog,
      [](HWND child, LPARAM result) -> BOOL {
        wchar_t name[64] = {};
        GetClassNameW(child, name, static_cast<int>(std::size(name)));
        if (std::wstring(name) != L"Edit" || !IsWindowVisible(child)) return TRUE;
        *reinterpret_cast<HWND*>(result) = child;
        return FALSE;
      },
      reinterpret_cast<LPARAM>(&found));
  return found;
}

TEST_F(FileDialogWindows, ACancelledDialogGivesNothing) {
  const DialogAnswerer answerer(L"#32770", L"Suite Open",
                                [](HWND dialog) { PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0); });
  EXPECT_TRUE(chooseFilesToOpen(requestFor(true)).empty());
}

TEST_F(FileDialogWindows, ATypedPathComesBackWhole) {
  const std::u16string path = in(u"A file – ü.pdf");
  putBytes(path, "x");
  const DialogAnswerer answerer(L"#32770", L"Suite Open", [&path](HWND dialog) {
    SendMessageW(findNameBox(dialog), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(wide(path)));
    PostMessageW(dialog, WM_COMMAND, IDOK, 0);
  });
  EXPECT_EQ(chooseFilesToOpen(requestFor(false)), std::vector<std::u16string>{path});
}

SaveDialogRequest saveRequest(const std::u16string& folder) {
  return {u"Suite Save", {{u"PDF Files", u"*.pdf"}}, u"pdf", u"proposed.pdf", folder};
}

TEST_F(FileDialogWindows, ACancelledSaveDialogGivesNothing) {
  const DialogAnswerer answerer(L"#32770", L"Suite Save",
                                [](HWND dialog) { PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0); });
  EXPECT_TRUE(chooseFileToSave(saveRequest(folder)).empty());
}

TEST_F(FileDialogWindows, TheProposedNameLiesInTheProposedFolder) {
  const DialogAnswerer answerer(L"#32770", L"Suite Save",
                                [](HWND dialog) { PostMessageW(dialog, WM_COMMAND, IDOK, 0); });
  EXPECT_EQ(chooseFileToSave(saveRequest(folder.substr(0, folder.size() - 1))),
            in(u"proposed.pdf"));
}

TEST_F(FileDialogWindows, ATypedNameGetsTheExtension) {
  const std::u16string path = in(u"A new file \u2013 \u00FC");
  const DialogAnswerer answerer(L"#32770", L"Suite Save", [&path](HWND dialog) {
    SendMessageW(findNameBox(dialog), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(wide(path)));
    PostMessageW(dialog, WM_COMMAND, IDOK, 0);
  });
  EXPECT_EQ(chooseFileToSave(saveRequest(u"")), path + u".pdf");
}

}  // namespace
}  // namespace quillmere::platform
