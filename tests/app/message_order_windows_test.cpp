#include <gtest/gtest.h>
#include <windows.h>

#include <iterator>
#include <map>

#include "app/main_window.h"
#include "platform/win32/window_handles.h"
#include "session/session.h"

namespace quillmere::test {
namespace {

using platform::ModelessDialog;
using platform::windowHandles;

constexpr const wchar_t* kClass = L"QuillmereTestMessageOrder";
constexpr WORD kAccelerated = 777;

// The last command that each window got.
std::map<HWND, WORD> commands;

LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_COMMAND) commands[window] = LOWORD(wParam);
  return DefWindowProcW(window, message, wParam, lParam);
}

HWND createWindow(const wchar_t* className, DWORD style, HWND parent) {
  return CreateWindowExW(0, className, L"", style | WS_VISIBLE, 0, 0, 300, 200, parent, nullptr,
                         GetModuleHandleW(nullptr), nullptr);
}

// Enter is an accelerator of the main window, and in a dialog it stands for OK.
class MessageOrderTest : public testing::Test {
 protected:
  void SetUp() override {
    WNDCLASSW description{};
    description.lpfnWndProc = windowProcedure;
    description.hInstance = GetModuleHandleW(nullptr);
    description.lpszClassName = kClass;
    RegisterClassW(&description);
    commands.clear();
    windowHandles = {};
    windowHandles.main = createWindow(kClass, WS_OVERLAPPEDWINDOW, nullptr);
    outer_ = createWindow(kClass, WS_POPUP, windowHandles.main);
    inner_ = createWindow(kClass, WS_CHILD, outer_);
    control_ = createWindow(L"STATIC", WS_CHILD, inner_);
    ACCEL row{FVIRTKEY, VK_RETURN, kAccelerated};
    windowHandles.accelerators = CreateAcceleratorTableW(&row, 1);
  }

  void TearDown() override {
    DestroyAcceleratorTable(windowHandles.accelerators);
    DestroyWindow(windowHandles.main);
    windowHandles = {};
  }

  static HWND& dialog(ModelessDialog which) {
    return windowHandles.dialogs[static_cast<int>(which)];
  }

  static bool press(HWND window, WPARAM key) {
    MSG message{};
    message.hwnd = window;
    message.message = WM_KEYDOWN;
    message.wParam = key;
    return takenBeforeDispatch(message);
  }

  HWND outer_ = nullptr;
  HWND inner_ = nullptr;  // inside the outer one, so both could take the control's messages
  HWND control_ = nullptr;
};

TEST_F(MessageOrderTest, WithoutDialogsTheAcceleratorsGetTheKey) {
  EXPECT_TRUE(press(windowHandles.main, VK_RETURN));
  EXPECT_EQ(commands[windowHandles.main], kAccelerated);
}

TEST_F(MessageOrderTest, AKeyOfNobodyIsDispatched) {
  dialog(ModelessDialog::About) = outer_;
  EXPECT_FALSE(press(windowHandles.main, VK_F9));
  EXPECT_TRUE(commands.empty());
}

TEST_F(MessageOrderTest, ShiftReachesThePreviewOfATextWhileADialogHasTheKeyboard) {
  dialog(ModelessDialog::AddText) = outer_;
  session.textTool.armed = true;
  session.textTool.pointerKnown = true;
  for (const WPARAM key : {WPARAM{VK_F9}, WPARAM{VK_SHIFT}}) {
    ValidateRect(windowHandles.main, nullptr);
    press(control_, key);
    EXPECT_EQ(GetUpdateRect(windowHandles.main, nullptr, FALSE) != FALSE, key == VK_SHIFT);
  }
  resetSession();
}

TEST_F(MessageOrderTest, EveryDialogComesBeforeTheAccelerators) {
  for (int which = 0; which < platform::kModelessDialogCount; ++which) {
    SCOPED_TRACE(which);
    commands.clear();
    windowHandles.dialogs[which] = outer_;
    EXPECT_TRUE(press(control_, VK_RETURN));
    EXPECT_EQ(commands[outer_], IDOK);
    EXPECT_EQ(commands.count(windowHandles.main), 0u);
    windowHandles.dialogs[which] = nullptr;
  }
}

TEST_F(MessageOrderTest, AKeyOutsideADialogIsNotForIt) {
  dialog(ModelessDialog::Settings) = outer_;
  EXPECT_TRUE(press(windowHandles.main, VK_RETURN));
  EXPECT_EQ(commands[windowHandles.main], kAccelerated);
  EXPECT_EQ(commands.count(outer_), 0u);
}

TEST_F(MessageOrderTest, DialogsAreAskedInTheirOrder) {
  constexpr ModelessDialog kOrder[] = {ModelessDialog::Settings, ModelessDialog::Shortcuts,
                                       ModelessDialog::About,    ModelessDialog::SecurityInfo,
                                       ModelessDialog::AddText,  ModelessDialog::MarkUp};
  for (std::size_t first = 0; first + 1 < std::size(kOrder); ++first) {
    SCOPED_TRACE(first);
    dialog(kOrder[first]) = outer_;
    dialog(kOrder[first + 1]) = inner_;
    commands.clear();
    EXPECT_TRUE(press(control_, VK_RETURN));
    EXPECT_EQ(commands.count(outer_), 1u);
    EXPECT_EQ(commands.count(inner_), 0u);
    dialog(kOrder[first]) = inner_;
    dialog(kOrder[first + 1]) = outer_;
    commands.clear();
    EXPECT_TRUE(press(control_, VK_RETURN));
    EXPECT_EQ(commands.count(outer_), 0u);
    EXPECT_EQ(commands.count(inner_), 1u);
    dialog(kOrder[first]) = nullptr;
    dialog(kOrder[first + 1]) = nullptr;
  }
}

}  // namespace
}  // namespace quillmere::test
