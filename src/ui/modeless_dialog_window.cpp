#include "ui/modeless_dialog_window.h"

#include "platform/win32/dialog_parts.h"
#include "platform/win32/system_fonts.h"
#include "session/density.h"
#include "session/session.h"

namespace quillmere {

using platform::windowHandles;

namespace {

struct DialogState {
  HFONT font = nullptr;     // of its controls; owned
  HWND keyboard = nullptr;  // the control that gets it when the dialog is activated again
};

DialogState states[platform::kModelessDialogCount];

HWND& windowOf(platform::ModelessDialog kind) {
  return windowHandles.dialogs[static_cast<int>(kind)];
}

DialogState& stateOf(platform::ModelessDialog kind) {
  return states[static_cast<int>(kind)];
}

}  // namespace

bool modelessDialogOpen(platform::ModelessDialog kind) {
  return windowOf(kind) != nullptr;
}

HWND makeModelessDialog(const ModelessDialogDesign& design, const std::optional<POINT>& corner) {
  platform::registerDialogClass(design.className, design.procedure);
  const SIZE size =
      platform::dialogSize(scaled(design.clientWidth), scaled(design.clientHeight), session.dpi);
  const POINT place = corner ? platform::placeOnScreen(*corner, size)
                             : platform::middlePlace(windowHandles.main, size);
  const HWND dialog =
      CreateWindowExW(platform::kDialogExtendedStyle, design.className, design.title,
                      platform::kDialogStyle, place.x, place.y, size.cx, size.cy,
                      windowHandles.main, nullptr, GetModuleHandleW(nullptr), nullptr);
  if (dialog != nullptr) windowOf(design.kind) = dialog;
  return dialog;
}

void showModelessDialog(const ModelessDialogDesign& design, HWND first) {
  DialogState& state = stateOf(design.kind);
  state.font = platform::createMessageFont(session.dpi);
  platform::giveControlsFont(windowOf(design.kind), state.font);
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
      return platform::keepKeyboard(dialog, wParam, lParam, stateOf(design.kind).keyboard);
    case WM_CTLCOLORSTATIC:
      return platform::labelBackground(reinterpret_cast<HDC>(wParam));
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

void closeModelessDialog(platform::ModelessDialog kind) {
  if (modelessDialogOpen(kind)) DestroyWindow(windowOf(kind));
}

}  // namespace quillmere
