#include "annot/text_dialog.h"

#include <gtest/gtest.h>

#include "platform/win32/main_window.h"
#include "ui/plain_main_window_windows_test.h"

namespace quillmere::test {
namespace {

using platform::windowHandles;

constexpr int kTextId = 1001;
constexpr int kFontId = 1002;

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

TEST_F(TextDialogWindowTest, EscClosesIt) {
  SendMessageW(dialog(), WM_COMMAND, IDCANCEL, 0);
  EXPECT_FALSE(textDialogOpen());
}

}  // namespace
}  // namespace quillmere::test
