#pragma once

#include <windows.h>

#include <commctrl.h>
#include <gtest/gtest.h>

#include <string>

#include "platform/win32/window_handles.h"
#include "session/session.h"

namespace quillmere::test {

// A test of the program's real dialogs and tips. A plain window stands for the main window, which
// owns them. The session is fresh and saves no settings.
class PlainMainWindowTest : public testing::Test {
 protected:
  PlainMainWindowTest() {
    const INITCOMMONCONTROLSEX controls{sizeof(controls), ICC_WIN95_CLASSES};
    InitCommonControlsEx(&controls);
    resetSession();
    session.viewerRole = true;
    platform::windowHandles.main =
        CreateWindowExW(0, L"STATIC", L"Main", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 100, 80, 900, 700,
                        nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
  }
  ~PlainMainWindowTest() override {
    DestroyWindow(platform::windowHandles.main);
    platform::windowHandles = {};
    resetSession();
  }

  static SIZE sizeOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return {place.right - place.left, place.bottom - place.top};
  }
  // The size of a text in the window's font, broken into lines of `width` pixels if the flags say
  // so.
  static SIZE textSize(HWND window, const std::wstring& text, UINT flags, int width = 0) {
    const HDC context = GetDC(window);
    const auto font = reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
    const HGDIOBJ before = SelectObject(context, font);
    RECT area{0, 0, width, 0};
    DrawTextW(context, text.c_str(), -1, &area, DT_CALCRECT | flags);
    SelectObject(context, before);
    ReleaseDC(window, context);
    return {area.right, area.bottom};
  }
};

}  // namespace quillmere::test
