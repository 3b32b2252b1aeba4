#include "documents/unsaved_dialog.h"

#include <windows.h>

#include <commctrl.h>

#include <functional>
#include <string>
#include <vector>

#include "platform_suite/dialog_helper_windows_test.h"
#include "ui/plain_main_window_windows_test.h"

namespace quillmere::test {
namespace {

enum : int {
  kTextId = 1001,
  kListId = 1002,
  kSelectAllId = 1003,
  kSelectNoneId = 1004,
  kSaveId = 1005,
  kDiscardId = 1006,
};

class UnsavedDialogTest : public PlainMainWindowTest {
 protected:
  UnsavedDialogTest() {
    for (const char16_t* label : {u"a.pdf  -  Work", u"b & c.pdf  -  Work", u"d.pdf  -  Rest"}) {
      UnsavedFile file;
      file.label = label;
      files_.push_back(file);
    }
  }
  // Shows the dialog. `act` runs on another thread and must close it.
  UnsavedAnswer ask(const std::function<void(HWND)>& act) {
    const platform::DialogAnswerer person(L"QuillmereUnsavedFilesDlg",
                                          L"Save Changes Before Closing", act);
    const UnsavedAnswer answer = ShowUnsavedDialog(files_, u"Save Changes Before Closing");
    EXPECT_TRUE(person.answered());
    return answer;
  }
  std::vector<bool> saved() const {
    std::vector<bool> flags;
    for (const UnsavedFile& file : files_) flags.push_back(file.save);
    return flags;
  }
  static HWND list(HWND dialog) { return GetDlgItem(dialog, kListId); }
  static void check(HWND dialog, int row, bool checked) {
    ListView_SetCheckState(list(dialog), row, checked);
  }
  static bool canSave(HWND dialog) { return IsWindowEnabled(GetDlgItem(dialog, kSaveId)) != 0; }
  static void click(HWND dialog, int button) { SendMessageW(dialog, WM_COMMAND, button, 0); }

  std::vector<UnsavedFile> files_;
};

TEST_F(UnsavedDialogTest, ShowsEveryFileCheckedUnderItsText) {
  std::wstring text;
  std::vector<std::wstring> rows;
  std::vector<std::wstring> buttons;
  bool all = true;
  const UnsavedAnswer answer = ask([&](HWND dialog) {
    text = platform::textOfWindow(GetDlgItem(dialog, kTextId));
    for (int row = 0; row < ListView_GetItemCount(list(dialog)); ++row) {
      wchar_t label[64] = {};
      LVITEMW item{};
      item.pszText = label;
      item.cchTextMax = 64;
      SendMessageW(list(dialog), LVM_GETITEMTEXTW, static_cast<WPARAM>(row),
                   reinterpret_cast<LPARAM>(&item));
      rows.emplace_back(label);
      all = all && ListView_GetCheckState(list(dialog), row);
    }
    for (const int id : {1003, 1004, 1005, 1006, IDCANCEL}) {
      buttons.push_back(platform::textOfWindow(GetDlgItem(dialog, id)));
    }
    click(dialog, IDCANCEL);
  });
  EXPECT_EQ(answer, UnsavedAnswer::Cancel);
  EXPECT_EQ(text,
            L"These files have unsaved changes. Checked files are saved to disk; the rest are "
            L"discarded.");
  EXPECT_EQ(rows, (std::vector<std::wstring>{L"a.pdf  -  Work", L"b & c.pdf  -  Work",
                                             L"d.pdf  -  Rest"}));
  EXPECT_EQ(buttons, (std::vector<std::wstring>{L"Select &All", L"Select &None", L"&Save Checked",
                                                L"&Discard All", L"Cancel"}));
  EXPECT_TRUE(all);
}

TEST_F(UnsavedDialogTest, SavesWhatIsChecked) {
  const UnsavedAnswer answer = ask([&](HWND dialog) {
    check(dialog, 1, false);
    click(dialog, kSaveId);
  });
  EXPECT_EQ(answer, UnsavedAnswer::GoAhead);
  EXPECT_EQ(saved(), (std::vector<bool>{true, false, true}));
}

TEST_F(UnsavedDialogTest, CanSaveOnlyWhileSomethingIsChecked) {
  std::vector<bool> states;
  const UnsavedAnswer answer = ask([&](HWND dialog) {
    states.push_back(canSave(dialog));
    click(dialog, kSelectNoneId);
    states.push_back(canSave(dialog));
    states.push_back(IsWindowEnabled(GetDlgItem(dialog, kDiscardId)) != 0);
    check(dialog, 2, true);
    states.push_back(canSave(dialog));
    check(dialog, 2, false);
    states.push_back(canSave(dialog));
    click(dialog, kSelectAllId);
    states.push_back(canSave(dialog));
    click(dialog, kSaveId);
  });
  EXPECT_EQ(answer, UnsavedAnswer::GoAhead);
  EXPECT_EQ(states, (std::vector<bool>{true, false, true, true, false, true}));
  EXPECT_EQ(saved(), (std::vector<bool>{true, true, true}));
}

TEST_F(UnsavedDialogTest, DiscardingAllIsConfirmed) {
  std::wstring question;
  bool openStill = false;
  bool unchecked = false;
  bool dialogDisabled = false;
  const UnsavedAnswer answer = ask([&](HWND dialog) {
    check(dialog, 0, false);
    for (const int reply : {IDNO, IDYES}) {
      const platform::DialogAnswerer person(L"#32770", L"Discard All", [&](HWND box) {
        dialogDisabled = !IsWindowEnabled(dialog);
        question = platform::textOfWindow(GetDlgItem(box, 0xFFFF));
        PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(reply), 0);
      });
      click(dialog, kDiscardId);
      if (reply == IDYES) break;
      openStill = IsWindowVisible(dialog) != 0 && IsWindowEnabled(dialog);
      unchecked =
          !ListView_GetCheckState(list(dialog), 0) && ListView_GetCheckState(list(dialog), 1);
    }
  });
  EXPECT_EQ(answer, UnsavedAnswer::GoAhead);
  EXPECT_EQ(saved(), (std::vector<bool>{false, false, false}));
  EXPECT_EQ(question, L"Discard unsaved changes to all 3 files?\n\nThis cannot be undone.");
  EXPECT_TRUE(dialogDisabled);
  EXPECT_TRUE(openStill);
  EXPECT_TRUE(unchecked);
}

TEST_F(UnsavedDialogTest, TheCloseBoxCancelsAndKeepsTheChoice) {
  const UnsavedAnswer answer = ask([&](HWND dialog) {
    check(dialog, 0, false);
    PostMessageW(dialog, WM_CLOSE, 0, 0);
  });
  EXPECT_EQ(answer, UnsavedAnswer::Cancel);
  EXPECT_EQ(saved(), (std::vector<bool>{true, true, true}));
}

bool secondCancelled = false;

// Runs in the loop of the first dialog.
void CALLBACK openSecond(HWND, UINT, UINT_PTR timer, DWORD) {
  KillTimer(nullptr, timer);
  std::vector<UnsavedFile> files;
  secondCancelled = ShowUnsavedDialog(files, u"Second") == UnsavedAnswer::Cancel;
}

TEST_F(UnsavedDialogTest, ASecondOneIsCancelledAtOnce) {
  secondCancelled = false;
  SetTimer(nullptr, 0, 20, openSecond);
  const UnsavedAnswer answer = ask([&](HWND dialog) {
    for (int n = 0; n < 200 && !secondCancelled; ++n) Sleep(20);
    click(dialog, kSaveId);
  });
  EXPECT_TRUE(secondCancelled);
  EXPECT_EQ(answer, UnsavedAnswer::GoAhead);
}

}  // namespace
}  // namespace quillmere::test
