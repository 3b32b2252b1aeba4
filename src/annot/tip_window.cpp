#include "annot/tip_window.h"

#include <windows.h>

#include <commctrl.h>

#include "annot/markup_tip.h"
#include "platform/win32/sized.h"
#include "platform/win32/system_fonts.h"
#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"
#include "session/density.h"
#include "session/session.h"

namespace quillmere {

using platform::windowHandles;

namespace {

constexpr int kLongestLine = 360;  // pixels at 96 DPI
constexpr int kBesideX = 16;       // likewise, from the pointer
constexpr int kBesideY = 20;       // likewise
constexpr LPARAM kShownMilliseconds = 32767;
constexpr COLORREF kBackground = RGB(255, 247, 153);
constexpr COLORREF kText = RGB(33, 33, 33);

HWND tip = nullptr;
HFONT tipFont = nullptr;
std::int32_t tipDpi = 0;  // DPI of the font

// The main window as a tool whose tip is positioned and shown by the program.
TTTOOLINFOW mainTool() {
  auto tool = platform::sized<TTTOOLINFOW>();
  tool.uFlags = TTF_TRACK | TTF_ABSOLUTE;
  tool.hwnd = windowHandles.main;
  tool.uId = 1;
  return tool;
}

void sendTool(UINT message, WPARAM wParam, TTTOOLINFOW tool) {
  SendMessageW(tip, message, wParam, reinterpret_cast<LPARAM>(&tool));
}

// With a visual theme the tip would keep the theme's colours instead of the program's.
void switchThemeOff() {
  using SetWindowThemeCall = HRESULT(WINAPI*)(HWND, LPCWSTR, LPCWSTR);
  const HMODULE library = LoadLibraryExW(L"uxtheme.dll", nullptr, LOAD_LIBRARY_SEARCH_SYSTEM32);
  if (library == nullptr) return;
  const auto call = reinterpret_cast<SetWindowThemeCall>(
      reinterpret_cast<void*>(GetProcAddress(library, "SetWindowTheme")));
  if (call != nullptr) call(tip, L"", L"");
}

void fitToDensity() {
  if (tipDpi == session.dpi) return;
  tipDpi = session.dpi;
  const HFONT font = platform::createMessageFont(tipDpi);
  SendMessageW(tip, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  if (tipFont != nullptr) DeleteObject(tipFont);
  tipFont = font;
  SendMessageW(tip, TTM_SETMAXTIPWIDTH, 0, scaled(kLongestLine));
}

// False when there is no tip. It is destroyed with the main window, which owns it.
bool prepareTip() {
  if (!IsWindow(tip)) {
    tip = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr,
                          WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, 0, 0, 0, 0, windowHandles.main,
                          nullptr, GetModuleHandleW(nullptr), nullptr);
    if (tip == nullptr) return false;
    tipDpi = 0;
    switchThemeOff();
    SendMessageW(tip, TTM_SETDELAYTIME, TTDT_AUTOPOP, kShownMilliseconds);
    SendMessageW(tip, TTM_SETTIPBKCOLOR, kBackground, 0);
    SendMessageW(tip, TTM_SETTIPTEXTCOLOR, kText, 0);
    sendTool(TTM_ADDTOOLW, 0, mainTool());
  }
  fitToDensity();
  return true;
}

PixelRect workAreaAt(POINT place) {
  auto monitor = platform::sized<MONITORINFO>();
  GetMonitorInfoW(MonitorFromPoint(place, MONITOR_DEFAULTTONEAREST), &monitor);
  const RECT& area = monitor.rcWork;
  return {area.left, area.top, area.right, area.bottom};
}

}  // namespace

void showTip(const std::u16string& text, int x, int y) {
  if (!prepareTip()) return;
  TTTOOLINFOW tool = mainTool();
  std::u16string shown = text;
  tool.lpszText = platform::wideBuffer(shown);
  sendTool(TTM_UPDATETIPTEXTW, 0, tool);
  moveTip(x, y);
  sendTool(TTM_TRACKACTIVATE, TRUE, mainTool());
  moveTip(x, y);
}

// The control adds its border to the position it is given, so set the window's position too.
void moveTip(int x, int y) {
  if (!IsWindow(tip)) return;
  POINT pointer{x, y};
  ClientToScreen(windowHandles.main, &pointer);
  TTTOOLINFOW tool = mainTool();
  const auto size =
      static_cast<DWORD>(SendMessageW(tip, TTM_GETBUBBLESIZE, 0, reinterpret_cast<LPARAM>(&tool)));
  const PixelRect place = placeTip(pointer.x, pointer.y, LOWORD(size), HIWORD(size),
                                   scaled(kBesideX), scaled(kBesideY), workAreaAt(pointer));
  SendMessageW(tip, TTM_TRACKPOSITION, 0, MAKELPARAM(place.left, place.top));
  SetWindowPos(tip, nullptr, place.left, place.top, 0, 0,
               SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void hideTip() {
  if (IsWindow(tip)) sendTool(TTM_TRACKACTIVATE, FALSE, mainTool());
}

}  // namespace quillmere
