#include <windows.h>

#include <commctrl.h>

#include "panels/close_or_delete_dialog.h"
#include "platform/win32/dialog_parts.h"
#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"
#include "session/density.h"
#include "ui/modal_dialog.h"

namespace quillmere {

using platform::createDialogControl;
using platform::windowHandles;

namespace {

enum ControlId : int { kQuestionId = 1001, kCloseId = 1002, kDeleteId = 1003 };

// Pixels at 96 DPI.
constexpr int kClientWidth = 300;
constexpr int kClientHeight = 100;
constexpr int kMargin = 12;
constexpr int kQuestionHeight = 36;
constexpr int kButtonWidth = 84;
constexpr int kButtonHeight = 26;
constexpr int kButtonGap = 12;
constexpr int kButtonTop = kClientHeight - kMargin - kButtonHeight;

ModalDialog closeOrDeleteDialog;

RECT area(int left, int top, int width, int height) {
  return {scaled(left), scaled(top), scaled(left + width), scaled(top + height)};
}

// The three buttons stand centred side by side.
HWND createButton(HWND dialog, int place, const wchar_t* text, DWORD style, int id) {
  constexpr int kAllButtons = 3 * kButtonWidth + 2 * kButtonGap;
  const int left = (kClientWidth - kAllButtons) / 2 + place * (kButtonWidth + kButtonGap);
  return createDialogControl(dialog, {WC_BUTTONW, text, style | WS_TABSTOP, id,
                                      area(left, kButtonTop, kButtonWidth, kButtonHeight)});
}

HWND createControls(ModalDialog& dialog, void*) {
  createDialogControl(
      dialog.window,
      {WC_STATICW, L"Do you want to Close the binder or\npermanently Delete it from disk?",
       SS_CENTER | SS_NOPREFIX, kQuestionId,
       area(kMargin, kMargin, kClientWidth - 2 * kMargin, kQuestionHeight)});
  const HWND close = createButton(dialog.window, 0, L"&Close", BS_DEFPUSHBUTTON, kCloseId);
  createButton(dialog.window, 1, L"&Delete", BS_PUSHBUTTON, kDeleteId);
  createButton(dialog.window, 2, L"Cancel", BS_PUSHBUTTON, IDCANCEL);
  return close;
}

bool handleCommand(ModalDialog& dialog, std::uint16_t id, std::uint16_t, void*) {
  if (id != kCloseId && id != kDeleteId) return false;
  const CloseOrDelete answer = id == kCloseId ? CloseOrDelete::Close : CloseOrDelete::Delete;
  endModalDialog(dialog, static_cast<std::int32_t>(answer));
  return true;
}

}  // namespace

CloseOrDelete AskCloseOrDelete(const std::u16string& binderName) {
  const std::u16string title = u"Close or Delete Binder " + binderName;
  ModalDialogDesign design;
  design.className = L"QuillmereCloseOrDeleteDlg";
  design.title = platform::wide(title);
  design.clientWidth = kClientWidth;
  design.clientHeight = kClientHeight;
  design.cancelResult = static_cast<std::int32_t>(CloseOrDelete::Cancel);
  design.createControls = createControls;
  design.handleCommand = handleCommand;
  return static_cast<CloseOrDelete>(
      runModalDialog(closeOrDeleteDialog, design, windowHandles.main));
}

}  // namespace quillmere
