#include "ui/menu_work.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include "session/session.h"

namespace quillmere::test {
namespace {

constexpr UINT_PTR kProbe = 1;
constexpr UINT kLook = WM_APP + 50;

int guardsSeen = -1;  // when a menu has come up

LRESULT CALLBACK probeProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                DWORD_PTR) {
  if (message == WM_INITMENUPOPUP) {
    guardsSeen = session.documentWork;
    PostMessageW(window, WM_KEYDOWN, VK_ESCAPE, 0);
  }
  if (message == kLook) guardsSeen = session.documentWork;
  return DefSubclassProc(window, message, wParam, lParam);
}

void handlePosted() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
}

class MenuWorkTest : public testing::Test {
 protected:
  void SetUp() override {
    resetSession();
    guardsSeen = -1;
    owner = CreateWindowExW(0, L"STATIC", L"Owner", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 80, 400,
                            300, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    holdOpensWhileMenuIsUp(owner);
  }
  void TearDown() override {
    if (owner != nullptr) DestroyWindow(owner);
    handlePosted();
    resetSession();
  }

  HWND owner = nullptr;
};

TEST_F(MenuWorkTest, APopupMenuHoldsOpensBack) {
  SetWindowSubclass(owner, probeProcedure, kProbe, 0);
  const HMENU menu = CreatePopupMenu();
  AppendMenuW(menu, MF_STRING, 7, L"Row");
  TrackPopupMenu(menu, TPM_RETURNCMD, 120, 120, 0, owner, nullptr);
  DestroyMenu(menu);
  EXPECT_EQ(guardsSeen, 1);
  handlePosted();
  EXPECT_EQ(session.documentWork, 0);
}

// The command of the row that was chosen may arrive only after the menu has gone.
TEST_F(MenuWorkTest, WhatWaitsStillWaitsForTheChosenCommand) {
  SendMessageW(owner, WM_ENTERMENULOOP, FALSE, 0);
  SendMessageW(owner, WM_EXITMENULOOP, FALSE, 0);
  EXPECT_EQ(session.documentWork, 1);
  handlePosted();
  EXPECT_EQ(session.documentWork, 0);
}

TEST_F(MenuWorkTest, AMenuThatFollowsAnotherAtOnceHoldsOpensBackToo) {
  SendMessageW(owner, WM_ENTERMENULOOP, FALSE, 0);
  SendMessageW(owner, WM_EXITMENULOOP, FALSE, 0);
  SendMessageW(owner, WM_ENTERMENULOOP, FALSE, 0);
  handlePosted();
  EXPECT_EQ(session.documentWork, 1);
  SendMessageW(owner, WM_EXITMENULOOP, FALSE, 0);
  handlePosted();
  EXPECT_EQ(session.documentWork, 0);
}

TEST_F(MenuWorkTest, AWindowThatGoesWithItsMenuHoldsNothingBack) {
  SendMessageW(owner, WM_ENTERMENULOOP, FALSE, 0);
  DestroyWindow(owner);
  owner = nullptr;
  EXPECT_EQ(session.documentWork, 0);
}

TEST_F(MenuWorkTest, AnotherWindowThatGoesLeavesTheChosenCommandItsTime) {
  const HWND other = CreateWindowExW(0, L"STATIC", L"Other", WS_POPUP, 0, 0, 10, 10, nullptr,
                                     nullptr, GetModuleHandleW(nullptr), nullptr);
  holdOpensWhileMenuIsUp(other);
  SendMessageW(owner, WM_ENTERMENULOOP, FALSE, 0);
  SendMessageW(owner, WM_EXITMENULOOP, FALSE, 0);
  DestroyWindow(other);
  EXPECT_EQ(session.documentWork, 1);
  handlePosted();
  EXPECT_EQ(session.documentWork, 0);
}

// Its rows paste and delete, which starts a search of the shown document.
TEST_F(MenuWorkTest, TheOwnMenuOfAFieldHoldsOpensBack) {
  const HWND field = CreateWindowExW(0, L"EDIT", L"text", WS_CHILD | WS_VISIBLE, 0, 0, 100, 20,
                                     owner, nullptr, GetModuleHandleW(nullptr), nullptr);
  holdOpensWhileMenuIsUp(field);
  SetWindowSubclass(owner, probeProcedure, kProbe, 0);
  PostMessageW(owner, kLook, 0, 0);
  PostMessageW(field, WM_KEYDOWN, VK_ESCAPE, 0);
  SendMessageW(field, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(field), MAKELPARAM(120, 120));
  EXPECT_EQ(guardsSeen, 1);
  handlePosted();
  EXPECT_EQ(session.documentWork, 0);
}

}  // namespace
}  // namespace quillmere::test
