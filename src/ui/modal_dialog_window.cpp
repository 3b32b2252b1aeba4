#include <windows.h>

#include "platform/win32/dialog_parts.h"
#include "platform/win32/main_window.h"
#include "platform/win32/system_fonts.h"
#include "platform/win32/window_handles.h"
#include "session/density.h"
#include "session/session.h"
#include "session/waiting_opens.h"
#include "ui/modal_dialog.h"

namespace quillmere {

namespace {

struct OpenDialog {
  ModalDialog& dialog;
  const ModalDialogDesign& design;
  HWND keyboard = nullptr;  // who gets it back; null for the owner
  WORD defaultId = 0;       // of the default button; 0 without one
  HWND typedInto =
      nullptr;  // the control that gets the keyboard when the dialog is activated again
};

OpenDialog* openDialogOf(HWND window) {
  return reinterpret_cast<OpenDialog*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

// The owner must be enabled before the dialog is destroyed, or Windows activates another program.
void closeDialog(ModalDialog& dialog) {
  EnableWindow(dialog.owner, TRUE);
  DestroyWindow(dialog.window);
}

void forgetWindow(OpenDialog& open) {
  ModalDialog& dialog = open.dialog;
  DeleteObject(dialog.font);
  dialog.font = nullptr;
  SetForegroundWindow(dialog.owner);
  platform::giveKeyboardTo(open.keyboard != nullptr ? open.keyboard : dialog.owner);
  dialog.window = nullptr;
}

bool isPushButton(HWND window) {
  const LRESULT code = SendMessageW(window, WM_GETDLGCODE, 0, 0);
  return (code & (DLGC_DEFPUSHBUTTON | DLGC_UNDEFPUSHBUTTON)) != 0;
}

LRESULT defaultButton(const OpenDialog& open) {
  const HWND focus = GetFocus();
  const bool own = IsChild(open.dialog.window, focus) && isPushButton(focus);
  const WORD id = own ? static_cast<WORD>(GetDlgCtrlID(focus)) : open.defaultId;
  return id == 0 ? 0 : MAKELONG(id, DC_HASDEFID);
}

LRESULT handleNotify(OpenDialog& open, LPARAM lParam) {
  const auto handle = open.design.handleNotify;
  if (handle == nullptr) return 0;
  return handle(open.dialog, *reinterpret_cast<NMHDR*>(lParam), open.design.context);
}

LRESULT handleCommand(OpenDialog& open, WPARAM wParam) {
  const WORD id = LOWORD(wParam);
  const auto handle = open.design.handleCommand;
  if (handle != nullptr && handle(open.dialog, id, HIWORD(wParam), open.design.context)) return 0;
  if (id == IDCANCEL) endModalDialog(open.dialog, open.design.cancelResult);
  return 0;
}

LRESULT CALLBACK dialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCREATE) {
    const auto* create = reinterpret_cast<const CREATESTRUCTW*>(lParam);
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(create->lpCreateParams));
    return DefWindowProcW(window, message, wParam, lParam);
  }
  OpenDialog* open = openDialogOf(window);
  if (open == nullptr) return DefWindowProcW(window, message, wParam, lParam);
  switch (message) {
    case WM_COMMAND:
      return handleCommand(*open, wParam);
    case WM_NOTIFY:
      return handleNotify(*open, lParam);
    case WM_ACTIVATE:
      return platform::keepKeyboard(window, wParam, lParam, open->typedInto);
    case DM_GETDEFID:
      return defaultButton(*open);
    case DM_SETDEFID:
      open->defaultId = LOWORD(wParam);
      return TRUE;
    case WM_CLOSE:
      closeDialog(open->dialog);
      return 0;
    case WM_DESTROY:
      forgetWindow(*open);
      return 0;
    case WM_CTLCOLORSTATIC:
      return platform::labelBackground(reinterpret_cast<HDC>(wParam));
    default:
      return DefWindowProcW(window, message, wParam, lParam);
  }
}

BOOL CALLBACK findDefaultButton(HWND control, LPARAM context) {
  if ((SendMessageW(control, WM_GETDLGCODE, 0, 0) & DLGC_DEFPUSHBUTTON) == 0) return TRUE;
  reinterpret_cast<OpenDialog*>(context)->defaultId = static_cast<WORD>(GetDlgCtrlID(control));
  return FALSE;
}

bool createDialogWindow(OpenDialog& open, HWND owner) {
  const ModalDialogDesign& design = open.design;
  platform::registerDialogClass(design.className, dialogProcedure);
  const SIZE size =
      platform::dialogSize(scaled(design.clientWidth), scaled(design.clientHeight), session.dpi);
  const POINT place = platform::middlePlace(owner, size);
  open.dialog.owner = owner;
  open.dialog.window = CreateWindowExW(
      platform::kDialogExtendedStyle, design.className, design.title, platform::kDialogStyle,
      place.x, place.y, size.cx, size.cy, owner, nullptr, GetModuleHandleW(nullptr), &open);
  return open.dialog.window != nullptr;
}

void showControls(OpenDialog& open) {
  ModalDialog& dialog = open.dialog;
  dialog.font = platform::createMessageFont(session.dpi);
  const HWND focused = open.design.createControls(dialog, open.design.context);
  platform::giveControlsFont(dialog.window, dialog.font);
  EnumChildWindows(dialog.window, findDefaultButton, reinterpret_cast<LPARAM>(&open));
  EnableWindow(dialog.owner, FALSE);
  ShowWindow(dialog.window, SW_SHOW);
  UpdateWindow(dialog.window);
  SetFocus(focused);
}

// Runs until the window is gone. A quit message belongs to the main loop and is posted again.
void runLoop(ModalDialog& dialog) {
  MSG message{};
  while (dialog.window != nullptr) {
    if (GetMessageW(&message, nullptr, 0, 0) <= 0) {
      closeDialog(dialog);
      PostQuitMessage(static_cast<int>(message.wParam));
      return;
    }
    if (IsDialogMessageW(dialog.window, &message)) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

}  // namespace

std::int32_t runModalDialog(ModalDialog& dialog, const ModalDialogDesign& design, HWND owner) {
  if (dialog.window != nullptr) return design.cancelResult;
  dialog = ModalDialog{};
  dialog.result = design.cancelResult;
  OpenDialog open{dialog, design,
                  owner == platform::windowHandles.main ? platform::keyboardHolder() : nullptr};
  if (!createDialogWindow(open, owner)) {
    dialog = ModalDialog{};
    return design.cancelResult;
  }
  const DocumentWork work;
  showControls(open);
  runLoop(dialog);
  const std::int32_t result = dialog.result;
  dialog = ModalDialog{};
  return result;
}

void endModalDialog(ModalDialog& dialog, std::int32_t result) {
  dialog.result = result;
  PostMessageW(dialog.window, WM_CLOSE, 0, 0);
}

}  // namespace quillmere
