#include "platform/win32/modeless_dialog.h"

#include "platform/win32/dialog_parts.h"
#include "platform/win32/system_fonts.h"

namespace quillmere::platform {

namespace {

struct DialogState {
  HFONT font = nullptr;     // of its controls; owned
  HWND keyboard = nullptr;  // the control that gets it when the dialog is activated again
};

DialogState states[kModelessDialogCount];

HWND& windowOf(ModelessDialog kind) {
  return windowHandles.dialogs[static_cast<int>(kind)];
}

DialogState& stateOf(ModelessDialog kind) {
  return states[static_cast<int>(kind)];
}

}  // namespace

bool modelessDialogOpen(ModelessDialog kind) {
  return windowOf(kind) != nullptr;
}

HWND makeModelessDialog(const ModelessDialogDesign& design, SIZE client, int dpi,
                        const std::optional<POINT>& corner) {
  registerDialogClass(design.className, design.procedure);
  const SIZE size = dialogSize(client.cx, client.cy, dpi);
  const POINT place = corner ? placeOnScreen(*corner, size) : middlePlace(windowHandles.main, size);
  const HWND dialog = CreateWindowExW(
      kDialogExtendedStyle, design.className, design.title, kDialogStyle, place.x, place.y, size.cx,
      size.cy, windowHandles.main, nullptr, GetModuleHandleW(nullptr), nullptr);
  if (dialog != nullptr) windowOf(design.kind) = dialog;
  return dialog;
}

void showModelessDialog(const ModelessDialogDesign& design, int dpi, HWND first) {
  DialogState& state = stateOf(design.kind);
  state.font = createMessageFont(dpi);
  giveControlsFont(windowOf(design.kind), state.font);
  ShowWindow(windowOf(design.kind), SW_SHOW);
  SetFocus(first);
}

LRESULT modelessDialogMessage(const ModelessDialogDesign& design, HWND dialog, UINT message,
                              WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_COMMAND:
      if (LOWORD(wParam) == IDCANCEL) DestroyWindow(dialog);
      return 0;
    case WM_ACTIVATE:
      return keepKeyboard(dialog, wParam, lParam, stateOf(design.kind).keyboard);
    case WM_CTLCOLORSTATIC:
      return labelBackground(reinterpret_cast<HDC>(wParam));
    default:
      return DefWindowProcW(dialog, message, wParam, lParam);
  }
}

POINT forgetModelessDialog(const ModelessDialogDesign& design, HWND dialog) {
  RECT place{};
  GetWindowRect(dialog, &place);
  windowOf(design.kind) = nullptr;
  DialogState& state = stateOf(design.kind);
  if (state.font != nullptr) DeleteObject(state.font);
  state = {};
  return {place.left, place.top};
}

void closeModelessDialog(ModelessDialog kind) {
  if (modelessDialogOpen(kind)) DestroyWindow(windowOf(kind));
}

}  // namespace quillmere::platform
