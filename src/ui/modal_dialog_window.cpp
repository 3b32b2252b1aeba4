#include <windows.h>

#include "platform/win32/dialog_parts.h"
#include "platform/win32/system_fonts.h"
#include "session/density.h"
#include "session/session.h"
#include "session/waiting_opens.h"
#include "ui/modal_dialog.h"

namespace quillmere {

namespace {

struct OpenDialog {
  ModalDialog& dialog;
  const ModalDialogDesign& design;
};

OpenDialog* openDialogOf(HWND window) {
  return reinterpret_cast<OpenDialog*>(GetWindowLongPtrW(window, GWLP_USERDATA));
}

// The owner must be enabled before the dialog is destroyed, or Windows activates another program.
void closeDialog(ModalDialog& dialog) {
  EnableWindow(dialog.owner, TRUE);
  DestroyWindow(dialog.window);
}

void forgetWindow(ModalDialog& dialog) {
  DeleteObject(dialog.font);
  dialog.font = nullptr;
  SetForegroundWindow(dialog.owner);
  SetFocus(dialog.owner);
  dialog.window = nullptr;
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
    case WM_CLOSE:
      closeDialog(open->dialog);
      return 0;
    case WM_DESTROY:
      forgetWindow(open->dialog);
      return 0;
    case WM_CTLCOLORSTATIC:
      return platform::labelBackground(reinterpret_cast<HDC>(wParam));
    default:
      return DefWindowProcW(window, message, wParam, lParam);
  }
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
  OpenDialog open{dialog, design};
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
