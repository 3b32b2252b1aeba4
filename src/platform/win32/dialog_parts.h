#pragma once

#include <windows.h>

// What dialogs without a template have in common.
namespace quillmere::platform {

inline constexpr DWORD kDialogStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU;
inline constexpr DWORD kDialogExtendedStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;

// Registers a window class that looks like a dialog, unless one of that name exists.
void registerDialogClass(const wchar_t* name, WNDPROC procedure);

// The outer size for a client area, in pixels of a screen with `dpi` pixels per inch.
SIZE dialogSize(int clientWidth, int clientHeight, int dpi);
// The top left corner that centres a window of this size over another one.
POINT middlePlace(HWND around, SIZE size);
// The same corner, moved so that the window lies on a screen that exists now.
POINT placeOnScreen(POINT wanted, SIZE size);

// A child control.
struct DialogControl {
  const wchar_t* className;
  const wchar_t* text;
  DWORD style;  // besides WS_CHILD and WS_VISIBLE
  int id;
  RECT place;  // client pixels of the dialog
  DWORD extendedStyle = 0;
};
// Null when Windows refuses.
HWND createDialogControl(HWND dialog, const DialogControl& control);

// Gives all controls of a dialog its font, which the dialog still owns.
void giveControlsFont(HWND dialog, HFONT font);

// The reply to WM_ACTIVATE. A plain window takes the keyboard itself when it is activated again,
// and whoever was typing in a field of it would type into nothing. So this remembers in `control`
// which one had the keyboard, and gives it back. `control` is the dialog's own, null at first.
LRESULT keepKeyboard(HWND dialog, WPARAM wParam, LPARAM lParam, HWND& control);

// The reply to WM_CTLCOLORSTATIC: labels take the dialog's colour.
LRESULT labelBackground(HDC label);

}  // namespace quillmere::platform
