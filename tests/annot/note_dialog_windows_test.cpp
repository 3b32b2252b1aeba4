#include "annot/note_dialog.h"

#include <functional>
#include <optional>
#include <string>

#include "platform_suite/dialog_helper_windows_test.h"
#include "ui/plain_main_window_windows_test.h"

namespace quillmere::test {
namespace {

constexpr int kTextId = 1002;

class NoteDialogTest : public PlainMainWindowTest {
 protected:
  // Shows the dialog. `act` runs on another thread and must close it.
  static std::optional<std::u16string> ask(const std::u16string& text,
                                           const std::function<void(HWND)>& act) {
    const platform::DialogAnswerer person(L"QuillmereNoteDlg", L"Annotation Note", act);
    return askForNote({u"Annotation Note", u"Note (shows on hover):", text});
  }
  static void press(HWND dialog, int button) { PostMessageW(dialog, WM_COMMAND, button, 0); }
  static HWND textOf(HWND dialog) { return GetDlgItem(dialog, kTextId); }
};

TEST_F(NoteDialogTest, OpensWithItsTextSelectedSoThatTypingReplacesIt) {
  DWORD first = 1;
  DWORD last = 0;
  const auto answer = ask(u"one\r\ntwo", [&](HWND dialog) {
    SendMessageW(textOf(dialog), EM_GETSEL, reinterpret_cast<WPARAM>(&first),
                 reinterpret_cast<LPARAM>(&last));
    SendMessageW(textOf(dialog), WM_CHAR, L'x', 0);
    press(dialog, IDOK);
  });
  EXPECT_EQ(first, 0u);
  EXPECT_EQ(last, 8u);
  EXPECT_EQ(answer, u"x");
}

TEST_F(NoteDialogTest, SaysWhatItsPromptAndButtonsAre) {
  std::wstring prompt;
  std::wstring accept;
  std::wstring cancel;
  const auto answer = ask(u"kept", [&](HWND dialog) {
    prompt = platform::textOfWindow(GetDlgItem(dialog, 1001));
    accept = platform::textOfWindow(GetDlgItem(dialog, IDOK));
    cancel = platform::textOfWindow(GetDlgItem(dialog, IDCANCEL));
    press(dialog, IDCANCEL);
  });
  EXPECT_EQ(prompt, L"Note (shows on hover):");
  EXPECT_EQ(accept, L"&OK");
  EXPECT_EQ(cancel, L"Cancel");
  EXPECT_EQ(answer, std::nullopt);
}

TEST_F(NoteDialogTest, TakesANoteOfAMillionUnitsWhole) {
  std::u16string note;
  while (note.size() < 1'000'000) note += u"a line of the long note, with \U0001F58B in it\r\n";
  const auto answer = ask(u"", [&](HWND dialog) {
    SendMessageW(textOf(dialog), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(note.c_str()));
    SendMessageW(textOf(dialog), WM_CHAR, L'!', 0);
    press(dialog, IDOK);
  });
  ASSERT_TRUE(answer);
  EXPECT_EQ(answer->size(), note.size() + 1);
  EXPECT_TRUE(*answer == note + u"!");
}

}  // namespace
}  // namespace quillmere::test
