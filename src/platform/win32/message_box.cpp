#include "platform/message_box.h"

#include <windows.h>

#include "platform/win32/main_window.h"
#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"

namespace quillmere::platform {
namespace {

UINT buttonFlags(BoxButtons buttons) {
  switch (buttons) {
    case BoxButtons::OkCancel:
      return MB_OKCANCEL;
    case BoxButtons::OkDefaultCancel:
      return MB_OKCANCEL | MB_DEFBUTTON2;
    case BoxButtons::YesNo:
      return MB_YESNO;
    case BoxButtons::YesDefaultNo:
      return MB_YESNO | MB_DEFBUTTON2;
    case BoxButtons::YesNoCancel:
      return MB_YESNOCANCEL;
    case BoxButtons::Ok:
      break;
  }
  return MB_OK;
}

UINT iconFlags(BoxIcon icon) {
  switch (icon) {
    case BoxIcon::Information:
      return MB_ICONINFORMATION;
    case BoxIcon::Warning:
      return MB_ICONWARNING;
    case BoxIcon::Error:
      return MB_ICONERROR;
    case BoxIcon::Question:
      return MB_ICONQUESTION;
    case BoxIcon::None:
      break;
  }
  return 0;
}

// Owned by the main window, a box would leave a dialog that is open enabled.
HWND ownerWindow() {
  const HWND main = windowHandles.main;
  return main == nullptr || IsWindowEnabled(main) ? main : GetLastActivePopup(main);
}

}  // namespace

BoxAnswer showMessageBox(const std::u16string& text, const std::u16string& title,
                         BoxButtons buttons, BoxIcon icon, BoxOwner owner) {
  const bool owned = owner == BoxOwner::MainWindow;
  const HWND window = owned ? ownerWindow() : nullptr;
  const HWND holder = keyboardHolder();
  const UINT flags = buttonFlags(buttons) | iconFlags(icon) | (owned ? 0u : MB_TOPMOST);
  const int answer = MessageBoxW(window, wide(text), wide(title), flags);
  if (owned && window == windowHandles.main) giveKeyboardTo(holder);
  return answer == 0 ? BoxAnswer::Cancel : static_cast<BoxAnswer>(answer);
}

}  // namespace quillmere::platform
