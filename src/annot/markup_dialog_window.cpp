#include <windows.h>

#include <commctrl.h>

#include <optional>

#include "annot/markup_dialog.h"
#include "annot/markups.h"
#include "platform/win32/dialog_parts.h"
#include "platform/win32/modeless_dialog.h"
#include "platform/win32/wide.h"
#include "session/density.h"
#include "session/session.h"
#include "ui/menu_work.h"

namespace quillmere {

using platform::createDialogControl;

namespace {

constexpr const wchar_t* kClassName = L"QuillmereMarkupDlg";
constexpr const wchar_t* kTitle = L"Mark Up";

enum ControlId : int {
  kHighlightColorId = 1001,
  kStrikeColorId = 1002,
  kOpacityId = 1003,
  kPercentId = 1004,
  kHelpId = 1005,
  kNoId = -1,
};

// Pixels at 96 DPI.
constexpr int kClientWidth = 390;
constexpr int kClientHeight = 214;
constexpr int kMargin = 12;
constexpr int kLabelWidth = 130;
constexpr int kFieldLeft = 146;
constexpr int kFieldWidth = kClientWidth - kMargin - kFieldLeft;
constexpr int kRowHeight = 32;
constexpr int kLabelDrop = 4;  // from a field's top to its label's
constexpr int kLineHeight = 18;
constexpr int kListHeight = 200;  // of a drop-down list when open
constexpr int kSliderWidth = 180;
constexpr int kSliderHeight = 26;
constexpr int kPercentLeft = kFieldLeft + kSliderWidth + 4;
constexpr int kHelpTop = kMargin + 3 * kRowHeight + 6;
constexpr int kSliderPage = 10;  // percent

int rowTop(int row) {
  return kMargin + row * kRowHeight;
}

RECT area(int left, int top, int width, int height) {
  return {scaled(left), scaled(top), scaled(left + width), scaled(top + height)};
}

// The key that opened the dialog also closes it while the dialog has the keyboard.
LRESULT CALLBACK fieldProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                DWORD_PTR) {
  const bool control = GetKeyState(VK_CONTROL) < 0;
  if (message == WM_KEYDOWN && wParam == 'M' && control) {
    PostMessageW(GetParent(window), WM_CLOSE, 0, 0);
    return 0;
  }
  if (message == WM_CHAR && wParam == VK_RETURN && control) return 0;
  return DefSubclassProc(window, message, wParam, lParam);
}

void addLabel(HWND dialog, const wchar_t* text, int row) {
  createDialogControl(dialog, {WC_STATICW, text, SS_LEFT, kNoId,
                               area(kMargin, rowTop(row) + kLabelDrop, kLabelWidth, kLineHeight)});
}

HWND addColorList(HWND dialog, int id, int row, const std::vector<std::u16string>& colors,
                  int chosen) {
  const HWND list =
      createDialogControl(dialog, {WC_COMBOBOXW, L"", CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP,
                                   id, area(kFieldLeft, rowTop(row), kFieldWidth, kListHeight)});
  for (const std::u16string& color : colors) {
    SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(platform::wide(color)));
  }
  SendMessageW(list, CB_SETCURSEL, static_cast<WPARAM>(chosen), 0);
  SetWindowSubclass(list, fieldProcedure, 0, 0);
  return list;
}

void addOpacity(HWND dialog, const MarkupDialogView& view) {
  const HWND slider = createDialogControl(
      dialog, {TRACKBAR_CLASSW, L"", TBS_HORZ | TBS_NOTICKS | WS_TABSTOP, kOpacityId,
               area(kFieldLeft, rowTop(2), kSliderWidth, kSliderHeight)});
  SendMessageW(slider, TBM_SETRANGE, FALSE, MAKELPARAM(kLeastMarkupOpacity, kFullMarkupOpacity));
  SendMessageW(slider, TBM_SETPAGESIZE, 0, kSliderPage);
  SendMessageW(slider, TBM_SETPOS, TRUE, view.opacity);
  SetWindowSubclass(slider, fieldProcedure, 0, 0);
  createDialogControl(dialog, {WC_STATICW, platform::wide(view.opacityText), SS_LEFT, kPercentId,
                               area(kPercentLeft, rowTop(2) + kLabelDrop,
                                    kClientWidth - kMargin - kPercentLeft, kLineHeight)});
}

HWND addControls(HWND dialog, const MarkupDialogView& view) {
  addLabel(dialog, L"Highlight color:", 0);
  const HWND first = addColorList(dialog, kHighlightColorId, 0, view.colors, view.highlightRow);
  addLabel(dialog, L"Strikethrough color:", 1);
  addColorList(dialog, kStrikeColorId, 1, view.colors, view.strikeRow);
  addLabel(dialog, L"Highlight opacity:", 2);
  addOpacity(dialog, view);
  createDialogControl(
      dialog,
      {WC_STATICW, platform::wide(view.help), SS_LEFT | SS_NOPREFIX, kHelpId,
       area(kMargin, kHelpTop, kClientWidth - 2 * kMargin, kClientHeight - kMargin - kHelpTop)});
  return first;
}

void onColor(HWND dialog, WPARAM wParam) {
  if (HIWORD(wParam) != CBN_SELCHANGE) return;
  const int id = LOWORD(wParam);
  const auto row = static_cast<int>(SendDlgItemMessageW(dialog, id, CB_GETCURSEL, 0, 0));
  if (id == kHighlightColorId) chooseHighlightColor(row);
  if (id == kStrikeColorId) chooseStrikeColor(row);
}

void onOpacity(HWND dialog, WPARAM wParam) {
  const auto percent = static_cast<int>(SendDlgItemMessageW(dialog, kOpacityId, TBM_GETPOS, 0, 0));
  const std::u16string text = moveMarkupOpacity(percent);
  SetDlgItemTextW(dialog, kPercentId, platform::wide(text));
  const WORD what = LOWORD(wParam);
  if (what == TB_THUMBPOSITION || what == TB_ENDTRACK) settleMarkupOpacity();
}

LRESULT CALLBACK dialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

constexpr platform::ModelessDialogDesign kDesign = {platform::ModelessDialog::MarkUp, kClassName,
                                                    kTitle, dialogProcedure};

void onDestroy(HWND dialog) {
  const POINT corner = platform::forgetModelessDialog(kDesign, dialog);
  markupDialogCloses({corner.x, corner.y});
}

LRESULT CALLBACK dialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_COMMAND:
      onColor(window, wParam);
      return platform::modelessDialogMessage(kDesign, window, message, wParam, lParam);
    case WM_HSCROLL:
      onOpacity(window, wParam);
      return 0;
    case WM_DESTROY:
      onDestroy(window);
      return 0;
    default:
      return platform::modelessDialogMessage(kDesign, window, message, wParam, lParam);
  }
}

}  // namespace

bool markupDialogOpen() {
  return platform::modelessDialogOpen(kDesign.kind);
}

void openMarkupDialog(const MarkupDialogView& view) {
  std::optional<POINT> corner;
  if (view.place) corner = POINT{view.place->left, view.place->top};
  const HWND dialog = platform::makeModelessDialog(
      kDesign, {scaled(kClientWidth), scaled(kClientHeight)}, session.dpi, corner);
  if (dialog == nullptr) return;
  const HWND first = addControls(dialog, view);
  holdOpensWhileMenusOfDialogAreUp(dialog);
  markupDialogOpened();
  platform::showModelessDialog(kDesign, session.dpi, first);
}

void closeMarkupDialog() {
  platform::closeModelessDialog(kDesign.kind);
}

}  // namespace quillmere
