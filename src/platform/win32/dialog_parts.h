#pragma once

#include <windows.h>

// What the dialogs that are made by hand have in common.
namespace quillmere::platform {

inline constexpr DWORD kDialogStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU;
inline constexpr DWORD kDialogExtendedStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;

// Registers a window class with the look of a dialog, unless there is one of that name.
void registerDialogClass(const wchar_t* name, WNDPROC procedure);

// The outer size for a client area, in pixels of a screen of `dpi` pixels an inch.
SIZE dialogSize(int clientWidth, int clientHeight, int dpi);
// The top left corner that puts a window of this size into the middle of another one.
POINT middlePlace(HWND around, SIZE size);

// A child control.
struct DialogControl {
  const wchar_t* className;
  const wchar_t* text;
  DWORD style;  // beside WS_CHILD and WS_VISIBLE
  int id;
  RECT place;  // client pixels of the dialog
  DWORD extendedStyle = 0;
};
// Null when Windows refuses.
HWND createDialogControl(HWND dialog, const DialogControl& control);

// Gives all controls of a dialog its font; the dialog goes on owning it.
void giveControlsFont(HWND dialog, HFONT font);

// The answer to WM_CTLCOLORSTATIC: labels take the dialog's colour.
LRESULT labelBackground(HDC label);

}  // namespace quillmere::platform
