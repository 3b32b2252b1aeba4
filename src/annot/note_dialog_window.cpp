#include "annot/note_dialog.h"

#include <windows.h>

#include <commctrl.h>

#include "platform/win32/dialog_parts.h"
#include "platform/win32/main_window.h"
#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"
#include "session/density.h"
#include "ui/modal_dialog.h"

namespace quillmere {

using platform::createDialogControl;
using platform::windowHandles;

namespace {

constexpr std::int32_t kCancelled = 0;
constexpr std::int32_t kAccepted = 1;

enum ControlId : int { kPromptId = 1001, kTextId = 1002 };

// Pixels at 96 DPI.
constexpr int kClientWidth = 420;
constexpr int kClientHeight = 250;
constexpr int kMargin = 12;
constexpr int kPromptHeight = 16;
constexpr int kTextTop = 32;
constexpr int kButtonWidth = 80;
constexpr int kButtonHeight = 24;
constexpr int kButtonGap = 8;
constexpr int kButtonTop = kClientHeight - kMargin - kButtonHeight;
constexpr int kTextHeight = kButtonTop - kMargin - kTextTop;

ModalDialog noteDialog;

struct Exchange {
  const NoteQuestion& question;
  std::u16string answer;
};

RECT area(int left, int top, int width, int height) {
  return {scaled(left), scaled(top), scaled(left + width), scaled(top + height)};
}

// Enter starts a new line. Tab and Escape, which a multi-line edit control would take too, go to
// the dialog.
LRESULT CALLBACK textProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                               DWORD_PTR) {
  const LRESULT result = DefSubclassProc(window, message, wParam, lParam);
  const auto* key = reinterpret_cast<const MSG*>(lParam);
  if (message != WM_GETDLGCODE || key == nullptr || key->message != WM_KEYDOWN) return result;
  const bool leaves = key->wParam == VK_TAB || key->wParam == VK_ESCAPE;
  return leaves ? result & ~(DLGC_WANTMESSAGE | DLGC_WANTTAB) : result;
}

HWND createText(HWND dialog, const std::u16string& text) {
  const HWND edit = createDialogControl(
      dialog, {WC_EDITW, L"",
               ES_MULTILINE | ES_WANTRETURN | ES_AUTOVSCROLL | WS_VSCROLL | WS_TABSTOP, kTextId,
               area(kMargin, kTextTop, kClientWidth - 2 * kMargin, kTextHeight), WS_EX_CLIENTEDGE});
  SetWindowSubclass(edit, textProcedure, 0, 0);
  SendMessageW(edit, EM_SETLIMITTEXT, 0, 0);  // no limit
  SetWindowTextW(edit, platform::wide(text));
  SendMessageW(edit, EM_SETSEL, 0, -1);
  return edit;
}

HWND createControls(ModalDialog& dialog, void* context) {
  const NoteQuestion& question = static_cast<const Exchange*>(context)->question;
  createDialogControl(
      dialog.window, {WC_STATICW, platform::wide(question.prompt), SS_LEFT | SS_NOPREFIX, kPromptId,
                      area(kMargin, kMargin, kClientWidth - 2 * kMargin, kPromptHeight)});
  const HWND text = createText(dialog.window, question.text);
  const int cancelLeft = kClientWidth - kMargin - kButtonWidth;
  const int okLeft = cancelLeft - kButtonGap - kButtonWidth;
  createDialogControl(dialog.window, {WC_BUTTONW, L"&OK", BS_DEFPUSHBUTTON | WS_TABSTOP, IDOK,
                                      area(okLeft, kButtonTop, kButtonWidth, kButtonHeight)});
  createDialogControl(dialog.window, {WC_BUTTONW, L"Cancel", BS_PUSHBUTTON | WS_TABSTOP, IDCANCEL,
                                      area(cancelLeft, kButtonTop, kButtonWidth, kButtonHeight)});
  return text;
}

bool handleCommand(ModalDialog& dialog, std::uint16_t id, std::uint16_t, void* context) {
  if (id != IDOK) return false;
  static_cast<Exchange*>(context)->answer =
      platform::windowText(GetDlgItem(dialog.window, kTextId));
  endModalDialog(dialog, kAccepted);
  return true;
}

}  // namespace

std::optional<std::u16string> askForNote(const NoteQuestion& question) {
  Exchange exchange{question, {}};
  ModalDialogDesign design;
  design.className = L"QuillmereNoteDlg";
  design.title = platform::wide(question.title);
  design.clientWidth = kClientWidth;
  design.clientHeight = kClientHeight;
  design.cancelResult = kCancelled;
  design.createControls = createControls;
  design.handleCommand = handleCommand;
  design.context = &exchange;
  if (runModalDialog(noteDialog, design, windowHandles.main) != kAccepted) return std::nullopt;
  return exchange.answer;
}

}  // namespace quillmere
