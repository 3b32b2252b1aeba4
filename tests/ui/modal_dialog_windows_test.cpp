#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

#include "platform/win32/window_handles.h"
#include "session/session.h"
#include "ui/modal_dialog.h"

namespace quillmere::test {
namespace {

constexpr const wchar_t* kOwnerClass = L"QuillmereTestOwner";
constexpr const wchar_t* kProbeClass = L"QuillmereTestProbe";
constexpr const wchar_t* kDialogClass = L"QuillmereTestDialog";
constexpr UINT kRunScript = WM_APP + 50;
constexpr WORD kAnswerButton = 1001;
constexpr WORD kField = 1002;
constexpr WORD kTree = 1003;
constexpr std::int32_t kCancelled = -7;
constexpr std::int32_t kAnswered = 42;

// What a test's dialog runs, and what it records.
struct Script {
  std::function<void()> whileOpen;  // runs once the dialog's loop runs
  HWND owner = nullptr;
  HWND button = nullptr;
  HWND cancel = nullptr;
  HWND field = nullptr;
  HWND tree = nullptr;
  std::vector<UINT> notifications;
  HWND focus = nullptr;
  int timesCreated = 0;
  bool ownerEnabledWhenControlsGo = false;
};
Script* script = nullptr;

LRESULT CALLBACK ownerProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == kRunScript) {
    script->whileOpen();
    return 0;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

LRESULT CALLBACK probeProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_DESTROY) {
    script->ownerEnabledWhenControlsGo = IsWindowEnabled(script->owner) != FALSE;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

void registerClass(const wchar_t* name, WNDPROC procedure) {
  WNDCLASSEXW description{};
  description.cbSize = sizeof(description);
  description.lpfnWndProc = procedure;
  description.hInstance = GetModuleHandleW(nullptr);
  description.lpszClassName = name;
  RegisterClassExW(&description);
}

HWND createControls(ModalDialog& dialog, void*) {
  ++script->timesCreated;
  const HINSTANCE instance = GetModuleHandleW(nullptr);
  script->button = CreateWindowExW(
      0, L"BUTTON", L"&Answer", WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_DEFPUSHBUTTON, 10, 10, 80,
      24, dialog.window, reinterpret_cast<HMENU>(INT_PTR{kAnswerButton}), instance, nullptr);
  script->field =
      CreateWindowExW(0, L"EDIT", L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 10, 40, 80, 16,
                      dialog.window, reinterpret_cast<HMENU>(INT_PTR{kField}), instance, nullptr);
  script->cancel =
      CreateWindowExW(0, L"BUTTON", L"Cancel", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 100, 10, 80, 24,
                      dialog.window, reinterpret_cast<HMENU>(INT_PTR{IDCANCEL}), instance, nullptr);
  CreateWindowExW(0, kProbeClass, L"", WS_CHILD, 0, 0, 1, 1, dialog.window, nullptr, instance,
                  nullptr);
  PostMessageW(script->owner, kRunScript, 0, 0);
  return script->button;
}

// Refuses to open the rows of the tree.
std::intptr_t handleNotify(ModalDialog&, NMHDR& notification, void*) {
  script->notifications.push_back(notification.code);
  return notification.idFrom == kTree && notification.code == TVN_ITEMEXPANDINGW ? TRUE : FALSE;
}

bool handleCommand(ModalDialog& dialog, std::uint16_t id, std::uint16_t, void*) {
  if (id != kAnswerButton) return false;
  endModalDialog(dialog, kAnswered);
  return true;
}

BOOL CALLBACK countDialogs(HWND window, LPARAM count) {
  wchar_t name[64] = {};
  GetClassNameW(window, name, 64);
  if (std::wstring(name) == kDialogClass) ++*reinterpret_cast<int*>(count);
  return TRUE;
}

class ModalDialogTest : public testing::Test {
 protected:
  void SetUp() override {
    script = &script_;
    registerClass(kOwnerClass, ownerProcedure);
    registerClass(kProbeClass, probeProcedure);
    script_.owner =
        CreateWindowExW(0, kOwnerClass, L"Owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 80, 700,
                        500, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    ASSERT_NE(script_.owner, nullptr);
    design_.className = kDialogClass;
    design_.title = L"Dialog";
    design_.clientWidth = 200;
    design_.clientHeight = 60;
    design_.cancelResult = kCancelled;
    design_.createControls = createControls;
    design_.handleCommand = handleCommand;
  }

  void TearDown() override {
    session.dpi = 96;
    DestroyWindow(script_.owner);
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    script = nullptr;
  }

  std::int32_t run(std::function<void()> whileOpen) {
    script_.whileOpen = std::move(whileOpen);
    return runModalDialog(dialog_, design_, script_.owner);
  }

  void pressButton() {
    PostMessageW(dialog_.window, WM_COMMAND, MAKEWPARAM(kAnswerButton, BN_CLICKED),
                 reinterpret_cast<LPARAM>(script_.button));
  }

  void pressCloseBox() { PostMessageW(dialog_.window, WM_SYSCOMMAND, SC_CLOSE, 0); }

  static int openDialogs() {
    int count = 0;
    EnumWindows(countDialogs, reinterpret_cast<LPARAM>(&count));
    return count;
  }

  Script script_;
  ModalDialog dialog_;
  ModalDialogDesign design_;
};

TEST_F(ModalDialogTest, AButtonGivesItsResult) {
  EXPECT_EQ(run([&] { pressButton(); }), kAnswered);
}

TEST_F(ModalDialogTest, TheCloseBoxGivesTheCancelValue) {
  EXPECT_EQ(run([&] { pressCloseBox(); }), kCancelled);
}

TEST_F(ModalDialogTest, EscapeGivesTheCancelValue) {
  EXPECT_EQ(run([&] { PostMessageW(script_.button, WM_KEYDOWN, VK_ESCAPE, 0); }), kCancelled);
}

TEST_F(ModalDialogTest, EnterPressesTheDefaultButton) {
  EXPECT_EQ(run([&] { PostMessageW(script_.button, WM_KEYDOWN, VK_RETURN, 0); }), kAnswered);
}

TEST_F(ModalDialogTest, EnterInAFieldPressesTheDefaultButtonWhateverItsId) {
  EXPECT_EQ(run([&] {
              SetFocus(script_.field);
              PostMessageW(script_.field, WM_KEYDOWN, VK_RETURN, 0);
            }),
            kAnswered);
}

TEST_F(ModalDialogTest, EnterOnAnotherButtonPressesThatOne) {
  EXPECT_EQ(run([&] {
              SetFocus(script_.cancel);
              PostMessageW(script_.cancel, WM_KEYDOWN, VK_RETURN, 0);
            }),
            kCancelled);
}

TEST_F(ModalDialogTest, ItTellsWhichButtonIsTheDefaultOne) {
  LRESULT first = 0;
  LRESULT changed = 0;
  run([&] {
    SetFocus(script_.field);
    first = SendMessageW(dialog_.window, DM_GETDEFID, 0, 0);
    SendMessageW(dialog_.window, DM_SETDEFID, IDCANCEL, 0);
    changed = SendMessageW(dialog_.window, DM_GETDEFID, 0, 0);
    pressButton();
  });
  EXPECT_EQ(first, MAKELONG(kAnswerButton, DC_HASDEFID));
  EXPECT_EQ(changed, MAKELONG(IDCANCEL, DC_HASDEFID));
}

TEST_F(ModalDialogTest, NotificationsOfControlsReachTheDesignAndItsAnswerTheControl) {
  InitCommonControls();
  design_.handleNotify = handleNotify;
  bool refused = true;
  run([&] {
    script_.tree = CreateWindowExW(0, WC_TREEVIEWW, L"", WS_CHILD, 0, 0, 10, 10, dialog_.window,
                                   reinterpret_cast<HMENU>(INT_PTR{kTree}),
                                   GetModuleHandleW(nullptr), nullptr);
    NMTREEVIEWW expanding{};
    expanding.hdr = {script_.tree, kTree, TVN_ITEMEXPANDINGW};
    refused = SendMessageW(dialog_.window, WM_NOTIFY, kTree,
                           reinterpret_cast<LPARAM>(&expanding)) == TRUE;
    pressButton();
  });
  EXPECT_TRUE(refused);
  EXPECT_NE(std::find(script_.notifications.begin(), script_.notifications.end(),
                      static_cast<UINT>(TVN_ITEMEXPANDINGW)),
            script_.notifications.end());
}

TEST_F(ModalDialogTest, WithoutAHandlerNotificationsAreAnsweredByNothing) {
  LRESULT answer = 1;
  run([&] {
    NMHDR notification{script_.button, kAnswerButton, static_cast<UINT>(NM_CLICK)};
    answer = SendMessageW(dialog_.window, WM_NOTIFY, kAnswerButton,
                          reinterpret_cast<LPARAM>(&notification));
    pressButton();
  });
  EXPECT_EQ(answer, 0);
}

// A tree of the main window, and the main window around it.
TEST_F(ModalDialogTest, ATreeThatHadTheKeyboardHasItAgainAfterwards) {
  InitCommonControls();
  platform::windowHandles.main = script_.owner;
  const HWND tree = CreateWindowExW(0, WC_TREEVIEWW, L"", WS_CHILD | WS_VISIBLE, 0, 0, 100, 100,
                                    script_.owner, nullptr, GetModuleHandleW(nullptr), nullptr);
  platform::windowHandles.binderTree = tree;
  SetFocus(tree);
  run([&] { pressButton(); });
  EXPECT_EQ(GetFocus(), tree);
  SetFocus(script_.owner);
  run([&] { pressButton(); });
  EXPECT_EQ(GetFocus(), script_.owner);
  SetFocus(tree);
  run([&] {
    ShowWindow(tree, SW_HIDE);
    pressButton();
  });
  EXPECT_EQ(GetFocus(), script_.owner);
  platform::windowHandles = {};
}

// A window of another program, as far as activation is concerned.
class OtherWindow {
 public:
  OtherWindow()
      : window_(CreateWindowExW(0, kOwnerClass, L"Other", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                200, 100, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr)) {}
  ~OtherWindow() { DestroyWindow(window_); }
  OtherWindow(const OtherWindow&) = delete;
  OtherWindow& operator=(const OtherWindow&) = delete;

  // Activates this window, then `back`.
  void lookAndReturnTo(
      HWND back, const std::function<void()>& meanwhile = [] {}) const {
    SetActiveWindow(window_);
    EXPECT_EQ(GetActiveWindow(), window_);
    meanwhile();
    SetActiveWindow(back);
    EXPECT_EQ(GetActiveWindow(), back);
  }

 private:
  HWND window_;
};

TEST_F(ModalDialogTest, WhoTypesInAFieldGoesOnTypingAfterALookAtAnotherWindow) {
  HWND first = nullptr;
  HWND second = nullptr;
  run([&] {
    const OtherWindow other;
    SetFocus(script_.field);
    other.lookAndReturnTo(dialog_.window);
    first = GetFocus();
    SetFocus(script_.cancel);
    other.lookAndReturnTo(dialog_.window);
    second = GetFocus();
    pressButton();
  });
  EXPECT_EQ(first, script_.field);
  EXPECT_EQ(second, script_.cancel);
}

// Windows would leave the keyboard with a control that is gone or takes no keys.
TEST_F(ModalDialogTest, AControlThatCannotHaveTheKeyboardAnyLongerDoesNotGetIt) {
  HWND disabled = nullptr;
  HWND destroyed = nullptr;
  HWND dialog = nullptr;
  run([&] {
    const OtherWindow other;
    dialog = dialog_.window;
    SetFocus(script_.field);
    other.lookAndReturnTo(dialog_.window, [&] { EnableWindow(script_.field, FALSE); });
    disabled = GetFocus();
    EnableWindow(script_.field, TRUE);
    SetFocus(script_.field);
    other.lookAndReturnTo(dialog_.window, [&] { DestroyWindow(script_.field); });
    destroyed = GetFocus();
    pressButton();
  });
  EXPECT_EQ(disabled, dialog);
  EXPECT_EQ(destroyed, dialog);
}

TEST_F(ModalDialogTest, FilesThatArriveWaitWhileItIsOpen) {
  int guards = 0;
  run([&] {
    guards = session.documentWork;
    pressButton();
  });
  EXPECT_EQ(guards, 1);
  EXPECT_EQ(session.documentWork, 0);
}

TEST_F(ModalDialogTest, TheDialogStaysUntilTheCommandIsDone) {
  bool stillThere = false;
  EXPECT_EQ(run([&] {
              SendMessageW(dialog_.window, WM_COMMAND, MAKEWPARAM(kAnswerButton, BN_CLICKED), 0);
              stillThere = dialog_.window != nullptr && IsWindow(dialog_.window);
            }),
            kAnswered);
  EXPECT_TRUE(stillThere);
}

TEST_F(ModalDialogTest, ASecondCallWhileItIsOpenShowsNothing) {
  std::int32_t second = 0;
  int dialogs = 0;
  EXPECT_EQ(run([&] {
              second = runModalDialog(dialog_, design_, script_.owner);
              dialogs = openDialogs();
              pressButton();
            }),
            kAnswered);
  EXPECT_EQ(second, kCancelled);
  EXPECT_EQ(dialogs, 1);
  EXPECT_EQ(script_.timesCreated, 1);
}

TEST_F(ModalDialogTest, ItOpensAgainAfterwardsAndRemembersNothing) {
  EXPECT_EQ(run([&] { pressButton(); }), kAnswered);
  EXPECT_EQ(dialog_.window, nullptr);
  EXPECT_EQ(dialog_.font, nullptr);
  EXPECT_EQ(run([&] { pressCloseBox(); }), kCancelled);
  EXPECT_EQ(script_.timesCreated, 2);
}

TEST_F(ModalDialogTest, ARequestToQuitClosesTheDialogAndReachesTheMainLoop) {
  EXPECT_EQ(run([] { PostQuitMessage(5); }), kCancelled);
  EXPECT_EQ(dialog_.window, nullptr);
  EXPECT_EQ(openDialogs(), 0);
  EXPECT_TRUE(IsWindowEnabled(script_.owner));
  MSG message{};
  bool quit = false;
  while (!quit && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    quit = message.message == WM_QUIT;
  }
  ASSERT_TRUE(quit);
  EXPECT_EQ(message.wParam, 5u);
}

TEST_F(ModalDialogTest, TheOwnerIsDisabledWhileItIsOpenAndInFrontAfterwards) {
  bool enabled = true;
  run([&] {
    enabled = IsWindowEnabled(script_.owner) != FALSE;
    pressButton();
  });
  EXPECT_FALSE(enabled);
  EXPECT_TRUE(IsWindowEnabled(script_.owner));
  EXPECT_EQ(GetForegroundWindow(), script_.owner);
}

TEST_F(ModalDialogTest, TheOwnerIsEnabledBeforeTheDialogGoes) {
  run([&] { pressCloseBox(); });
  EXPECT_TRUE(script_.ownerEnabledWhenControlsGo);
}

TEST_F(ModalDialogTest, ItStandsInTheMiddleOfItsOwner) {
  RECT outer{};
  RECT client{};
  run([&] {
    GetWindowRect(dialog_.window, &outer);
    GetClientRect(dialog_.window, &client);
    pressButton();
  });
  RECT owner{};
  GetWindowRect(script_.owner, &owner);
  EXPECT_EQ(client.right, 200);
  EXPECT_EQ(client.bottom, 60);
  EXPECT_NEAR(outer.left + outer.right, owner.left + owner.right, 1);
  EXPECT_NEAR(outer.top + outer.bottom, owner.top + owner.bottom, 1);
}

// Compares outer sizes: the frame drawn here has the real screen's density, not the session's.
TEST_F(ModalDialogTest, ItGrowsWithTheScreensDensity) {
  session.dpi = 144;
  RECT outer{};
  RECT wanted{0, 0, 300, 90};
  LOGFONTW font{};
  run([&] {
    GetWindowRect(dialog_.window, &outer);
    AdjustWindowRectExForDpi(
        &wanted, static_cast<DWORD>(GetWindowLongPtrW(dialog_.window, GWL_STYLE)), FALSE,
        static_cast<DWORD>(GetWindowLongPtrW(dialog_.window, GWL_EXSTYLE)), 144);
    GetObjectW(dialog_.font, sizeof(font), &font);
    pressButton();
  });
  EXPECT_EQ(outer.right - outer.left, wanted.right - wanted.left);
  EXPECT_EQ(outer.bottom - outer.top, wanted.bottom - wanted.top);

  LOGFONTW fontAt96{};
  session.dpi = 96;
  run([&] {
    GetObjectW(dialog_.font, sizeof(fontAt96), &fontAt96);
    pressButton();
  });
  EXPECT_NEAR(font.lfHeight, fontAt96.lfHeight * 1.5, 1);
}

TEST_F(ModalDialogTest, TextStandsOnTheDialogsOwnBackground) {
  HBRUSH brush = nullptr;
  int mode = 0;
  run([&] {
    const HDC context = GetDC(dialog_.window);
    SetBkMode(context, OPAQUE);
    brush = reinterpret_cast<HBRUSH>(SendMessageW(dialog_.window, WM_CTLCOLORSTATIC,
                                                  reinterpret_cast<WPARAM>(context),
                                                  reinterpret_cast<LPARAM>(script_.button)));
    mode = GetBkMode(context);
    ReleaseDC(dialog_.window, context);
    pressButton();
  });
  EXPECT_EQ(brush, GetSysColorBrush(COLOR_BTNFACE));
  EXPECT_EQ(mode, TRANSPARENT);
}

TEST_F(ModalDialogTest, ADialogThatCannotBeMadeGivesTheCancelValueAndLeavesNoTrace) {
  design_.className = L"";
  EXPECT_EQ(run([] {}), kCancelled);
  EXPECT_EQ(script_.timesCreated, 0);
  EXPECT_EQ(dialog_.window, nullptr);
  EXPECT_EQ(dialog_.owner, nullptr);
  EXPECT_TRUE(IsWindowEnabled(script_.owner));
  design_.className = kDialogClass;
  EXPECT_EQ(run([&] { pressButton(); }), kAnswered);
}

TEST_F(ModalDialogTest, ControlsShareTheDialogsFontAndTheDefaultOneHasTheFocus) {
  HFONT used = nullptr;
  HFONT own = nullptr;
  HWND focus = nullptr;
  run([&] {
    used = reinterpret_cast<HFONT>(SendMessageW(script_.button, WM_GETFONT, 0, 0));
    own = dialog_.font;
    focus = GetFocus();
    pressButton();
  });
  EXPECT_NE(own, nullptr);
  EXPECT_EQ(used, own);
  EXPECT_EQ(focus, script_.button);
  EXPECT_EQ(GetObjectType(own), 0u);
}

}  // namespace
}  // namespace quillmere::test
