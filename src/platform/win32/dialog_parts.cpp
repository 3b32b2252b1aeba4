#include "platform/win32/dialog_parts.h"

#include <algorithm>

#include "platform/win32/sized.h"

namespace quillmere::platform {

namespace {

BOOL CALLBACK giveFont(HWND control, LPARAM font) {
  SendMessageW(control, WM_SETFONT, static_cast<WPARAM>(font), TRUE);
  return TRUE;
}

}  // namespace

void registerDialogClass(const wchar_t* name, WNDPROC procedure) {
  auto existing = sized<WNDCLASSEXW>();
  const HINSTANCE instance = GetModuleHandleW(nullptr);
  if (GetClassInfoExW(instance, name, &existing)) return;
  auto description = sized<WNDCLASSEXW>();
  description.lpfnWndProc = procedure;
  description.hInstance = instance;
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.hbrBackground = GetSysColorBrush(COLOR_BTNFACE);
  description.lpszClassName = name;
  RegisterClassExW(&description);
}

SIZE dialogSize(int clientWidth, int clientHeight, int dpi) {
  RECT size{0, 0, clientWidth, clientHeight};
  AdjustWindowRectExForDpi(&size, kDialogStyle, FALSE, kDialogExtendedStyle,
                           static_cast<UINT>(dpi));
  return {size.right - size.left, size.bottom - size.top};
}

POINT middlePlace(HWND around, SIZE size) {
  RECT rect{};
  GetWindowRect(around, &rect);
  return {rect.left + (rect.right - rect.left - size.cx) / 2,
          rect.top + (rect.bottom - rect.top - size.cy) / 2};
}

POINT placeOnScreen(POINT wanted, SIZE size) {
  const RECT rect{wanted.x, wanted.y, wanted.x + size.cx, wanted.y + size.cy};
  auto monitor = sized<MONITORINFO>();
  GetMonitorInfoW(MonitorFromRect(&rect, MONITOR_DEFAULTTONEAREST), &monitor);
  const RECT& screen = monitor.rcWork;
  return {std::max(std::min(wanted.x, screen.right - size.cx), screen.left),
          std::max(std::min(wanted.y, screen.bottom - size.cy), screen.top)};
}

HWND createDialogControl(HWND dialog, const DialogControl& control) {
  const RECT& place = control.place;
  return CreateWindowExW(control.extendedStyle, control.className, control.text,
                         WS_CHILD | WS_VISIBLE | control.style, place.left, place.top,
                         place.right - place.left, place.bottom - place.top, dialog,
                         reinterpret_cast<HMENU>(static_cast<INT_PTR>(control.id)),
                         GetModuleHandleW(nullptr), nullptr);
}

void giveControlsFont(HWND dialog, HFONT font) {
  EnumChildWindows(dialog, giveFont, reinterpret_cast<LPARAM>(font));
}

LRESULT keepKeyboard(HWND dialog, WPARAM wParam, LPARAM lParam, HWND& control) {
  if (LOWORD(wParam) == WA_INACTIVE) {
    const HWND focus = GetFocus();
    control = IsChild(dialog, focus) ? focus : nullptr;
    return 0;
  }
  if (!IsChild(dialog, control) || !IsWindowVisible(control) || !IsWindowEnabled(control)) {
    return DefWindowProcW(dialog, WM_ACTIVATE, wParam, lParam);
  }
  SetFocus(control);
  return 0;
}

LRESULT labelBackground(HDC label) {
  SetBkMode(label, TRANSPARENT);
  return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_BTNFACE));
}

}  // namespace quillmere::platform
