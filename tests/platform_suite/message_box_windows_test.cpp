#include "platform/message_box.h"

#include <gtest/gtest.h>

#include "platform/win32/window_handles.h"
#include "platform_suite/dialog_helper_windows_test.h"

namespace quillmere::platform {
namespace {

// Presses a button of the box and returns the call's answer.
BoxAnswer answerWith(BoxButtons buttons, WPARAM command, BoxOwner owner = BoxOwner::MainWindow) {
  const DialogAnswerer answerer(L"#32770", L"Suite Title",
                                [command](HWND box) { PostMessageW(box, WM_COMMAND, command, 0); });
  return showMessageBox(u"Some text", u"Suite Title", buttons, BoxIcon::Warning, owner);
}

TEST(MessageBoxWindows, EveryButtonGivesItsAnswer) {
  EXPECT_EQ(answerWith(BoxButtons::Ok, IDOK), BoxAnswer::Ok);
  EXPECT_EQ(answerWith(BoxButtons::OkCancel, IDOK), BoxAnswer::Ok);
  EXPECT_EQ(answerWith(BoxButtons::OkCancel, IDCANCEL), BoxAnswer::Cancel);
  EXPECT_EQ(answerWith(BoxButtons::OkDefaultCancel, IDOK), BoxAnswer::Ok);
  EXPECT_EQ(answerWith(BoxButtons::OkDefaultCancel, IDCANCEL), BoxAnswer::Cancel);
  EXPECT_EQ(answerWith(BoxButtons::YesNo, IDYES), BoxAnswer::Yes);
  EXPECT_EQ(answerWith(BoxButtons::YesNo, IDNO), BoxAnswer::No);
  EXPECT_EQ(answerWith(BoxButtons::YesNoCancel, IDYES), BoxAnswer::Yes);
  EXPECT_EQ(answerWith(BoxButtons::YesNoCancel, IDNO), BoxAnswer::No);
  EXPECT_EQ(answerWith(BoxButtons::YesNoCancel, IDCANCEL), BoxAnswer::Cancel);
}

TEST(MessageBoxWindows, TheSecondButtonIsTheDefaultWhereTheFirstCannotBeUndone) {
  // Wine's boxes do not answer DM_GETDEFID by their buttons, whose styles say it everywhere.
  const auto isDefault = [](HWND box, int id) {
    return (SendMessageW(GetDlgItem(box, id), WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON) != 0;
  };
  bool cancelIsDefault = false;
  {
    const DialogAnswerer answerer(L"#32770", L"Suite Title", [&](HWND box) {
      cancelIsDefault = isDefault(box, IDCANCEL);
      PostMessageW(box, WM_COMMAND, IDCANCEL, 0);
    });
    showMessageBox(u"Some text", u"Suite Title", BoxButtons::OkDefaultCancel, BoxIcon::Warning);
  }
  EXPECT_TRUE(cancelIsDefault);
}

// Which window owns the box; Wine does not put a box on top, so the owner is what can be seen.
HWND ownerOfBox(BoxOwner owner) {
  HWND found = nullptr;
  const DialogAnswerer answerer(L"#32770", L"Suite Title", [&found](HWND box) {
    found = GetWindow(box, GW_OWNER);
    PostMessageW(box, WM_COMMAND, IDOK, 0);
  });
  showMessageBox(u"Some text", u"Suite Title", BoxButtons::Ok, BoxIcon::Information, owner);
  return found;
}

TEST(MessageBoxWindows, TheMainWindowOwnsABoxUnlessNobodyShall) {
  windowHandles.main = CreateWindowExW(0, L"STATIC", L"", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 50, 50,
                                       300, 200, nullptr, nullptr, nullptr, nullptr);
  ASSERT_NE(windowHandles.main, nullptr);
  EXPECT_EQ(ownerOfBox(BoxOwner::MainWindow), windowHandles.main);
  EXPECT_EQ(ownerOfBox(BoxOwner::NoneTopmost), nullptr);
  EXPECT_TRUE(IsWindowEnabled(windowHandles.main));
  DestroyWindow(windowHandles.main);
  windowHandles.main = nullptr;
}

TEST(MessageBoxWindows, TextIsShownWholeWithItsLineBreaks) {
  std::wstring shown;
  {
    const DialogAnswerer answerer(L"#32770", L"Größe 報告", [&shown](HWND box) {
      shown = textOfWindow(GetDlgItem(box, 0xFFFF));
      PostMessageW(box, WM_COMMAND, IDOK, 0);
    });
    showMessageBox(u"First é\n\nSecond", u"Größe 報告", BoxButtons::Ok, BoxIcon::None);
  }
  EXPECT_EQ(shown, L"First é\n\nSecond");
}

}  // namespace
}  // namespace quillmere::platform
