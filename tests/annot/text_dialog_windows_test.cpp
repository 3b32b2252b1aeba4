#include "annot/text_dialog.h"

#include <gtest/gtest.h>

#include "platform/win32/main_window.h"
#include "session/session.h"
#include "ui/plain_main_window_windows_test.h"

namespace quillmere::test {
namespace {

using platform::windowHandles;

constexpr int kTextId = 1001;
constexpr int kFontId = 1002;
constexpr int kSizeId = 1003;

class TextDialogWindowTest : public PlainMainWindowTest {
 protected:
  void SetUp() override {
    openTextDialog(textDialogView());
    ASSERT_TRUE(textDialogOpen());
  }
  void TearDown() override { closeTextDialog(); }

  static HWND dialog() {
    return windowHandles.dialogs[static_cast<int>(platform::ModelessDialog::AddText)];
  }
  static HWND control(int id) { return GetDlgItem(dialog(), id); }
};

TEST_F(TextDialogWindowTest, TypingBeginsInTheTextField) {
  EXPECT_EQ(GetFocus(), control(kTextId));
}

TEST_F(TextDialogWindowTest, TheControlThatHadTheKeyboardGetsItBack) {
  SetFocus(control(kFontId));
  SendMessageW(dialog(), WM_ACTIVATE, WA_INACTIVE, 0);
  SetFocus(windowHandles.main);
  SendMessageW(dialog(), WM_ACTIVATE, WA_ACTIVE, 0);
  EXPECT_EQ(GetFocus(), control(kFontId));
}

// A right click in the text or in the field of the size list, Alt+Space in the dialog.
TEST_F(TextDialogWindowTest, ItsMenusHoldOpensBack) {
  const HWND sizeField = FindWindowExW(control(kSizeId), nullptr, L"Edit", nullptr);
  ASSERT_NE(sizeField, nullptr);
  for (const HWND window : {control(kTextId), sizeField, dialog()}) {
    SendMessageW(window, WM_ENTERMENULOOP, FALSE, 0);
    EXPECT_EQ(session.documentWork, 1);
    SendMessageW(window, WM_EXITMENULOOP, FALSE, 0);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    EXPECT_EQ(session.documentWork, 0);
  }
}

TEST_F(TextDialogWindowTest, EscClosesIt) {
  SendMessageW(dialog(), WM_COMMAND, IDCANCEL, 0);
  EXPECT_FALSE(textDialogOpen());
}

}  // namespace
}  // namespace quillmere::test
