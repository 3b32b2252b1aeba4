#pragma once

#include <windows.h>

#include <optional>

#include "platform/win32/window_handles.h"

// The frame of a small dialog that stays open beside the main window. At most one of each kind is
// open; windowHandles.dialogs holds it.
namespace quillmere::platform {

struct ModelessDialogDesign {
  ModelessDialog kind;
  const wchar_t* className;
  const wchar_t* title;
  WNDPROC procedure;  // passes to modelessDialogMessage() what it does not handle
};

bool modelessDialogOpen(ModelessDialog kind);

// Makes the dialog, still hidden and empty, with its top left corner at `corner` as far as a screen
// is there, otherwise in the middle of the main window. `client` is in pixels of a screen with
// `dpi` pixels per inch. Null when Windows refuses.
HWND makeModelessDialog(const ModelessDialogDesign& design, SIZE client, int dpi,
                        const std::optional<POINT>& corner);

// Shows it once it has its controls; `first` gets the keyboard.
void showModelessDialog(const ModelessDialogDesign& design, int dpi, HWND first);

// What all of them do with a message: the keyboard returns to the control that had it, labels take
// the dialog's colour, Esc and the close box close it.
LRESULT modelessDialogMessage(const ModelessDialogDesign& design, HWND dialog, UINT message,
                              WPARAM wParam, LPARAM lParam);

// For WM_DESTROY: forgets the dialog and returns where its top left corner was.
POINT forgetModelessDialog(const ModelessDialogDesign& design, HWND dialog);

void closeModelessDialog(ModelessDialog kind);

}  // namespace quillmere::platform
