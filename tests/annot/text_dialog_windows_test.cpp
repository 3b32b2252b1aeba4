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
constexpr int kColorId = 1004;

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
  static void type(HWND field, const std::wstring& text) {
    SendMessageW(field, EM_SETSEL, 0, -1);
    for (const wchar_t unit : text) SendMessageW(field, WM_CHAR, unit, 0);
  }
  static HWND sizeField() { return FindWindowExW(control(kSizeId), nullptr, L"Edit", nullptr); }
  // Chooses a row as the arrow keys do.
  static void choose(int id, int row) {
    SendMessageW(control(id), CB_SETCURSEL, static_cast<WPARAM>(row), 0);
    SendMessageW(dialog(), WM_COMMAND, MAKEWPARAM(id, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(control(id)));
  }
};

TEST_F(TextDialogWindowTest, TypingBeginsInTheTextField) {
  EXPECT_EQ(GetFocus(), control(kTextId));
}

TEST_F(TextDialogWindowTest, TypingReplacesTheTextOfLastTime) {
  type(control(kTextId), L"Paid");
  closeTextDialog();
  openTextDialog(textDialogView());
  for (const wchar_t unit : {L'O', L'K'}) SendMessageW(control(kTextId), WM_CHAR, unit, 0);
  EXPECT_EQ(session.textTool.text, u"OK");
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

TEST_F(TextDialogWindowTest, TheTextEndsAtItsLimit) {
  type(control(kTextId), L"Paid");
  EXPECT_EQ(session.textTool.text, u"Paid");
  type(control(kTextId), std::wstring(300, L'x'));
  EXPECT_EQ(session.textTool.text, std::u16string(256, u'x'));
}

TEST_F(TextDialogWindowTest, ATypedSizeThatIsNoneKeepsTheLastGoodOne) {
  type(sizeField(), L"13");
  EXPECT_EQ(session.settings.textSizePt, 13);
  for (const wchar_t* none : {L"0", L"-5", L"abc"}) {
    type(sizeField(), none);
    EXPECT_EQ(session.settings.textSizePt, 13) << none;
  }
  type(sizeField(), L"12.7");
  EXPECT_EQ(session.settings.textSizePt, 12);
  type(sizeField(), L"1e3");
  EXPECT_EQ(session.settings.textSizePt, 4);
  type(sizeField(), L"500");
  EXPECT_EQ(session.settings.textSizePt, 96);
}

TEST_F(TextDialogWindowTest, WhatTheSizeListCompletesWhenItClosesCounts) {
  type(sizeField(), L"2");
  ASSERT_EQ(session.settings.textSizePt, 4);
  SetWindowTextW(control(kSizeId), L"20");
  SendMessageW(dialog(), WM_COMMAND, MAKEWPARAM(kSizeId, CBN_CLOSEUP),
               reinterpret_cast<LPARAM>(control(kSizeId)));
  EXPECT_EQ(session.settings.textSizePt, 20);
}

TEST_F(TextDialogWindowTest, ChoicesInItsListsCount) {
  EXPECT_EQ(SendMessageW(control(kFontId), CB_GETCOUNT, 0, 0), 6);
  EXPECT_EQ(SendMessageW(control(kSizeId), CB_GETCOUNT, 0, 0), 18);
  EXPECT_EQ(SendMessageW(control(kColorId), CB_GETCOUNT, 0, 0), 8);
  choose(kSizeId, 17);
  EXPECT_EQ(session.settings.textSizePt, 96);
  choose(kSizeId, 0);
  EXPECT_EQ(session.settings.textSizePt, 6);
  choose(kFontId, 4);
  EXPECT_EQ(session.settings.textFontIndex, 4u);
  choose(kColorId, 7);
  EXPECT_EQ(session.settings.textColorIndex, 7u);
}

TEST_F(TextDialogWindowTest, EscClosesIt) {
  SendMessageW(dialog(), WM_COMMAND, IDCANCEL, 0);
  EXPECT_FALSE(textDialogOpen());
}

}  // namespace
}  // namespace quillmere::test
