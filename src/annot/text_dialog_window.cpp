#include <windows.h>

#include <commctrl.h>

#include <optional>

#include "annot/text_dialog.h"
#include "platform/win32/dialog_parts.h"
#include "platform/win32/main_window.h"
#include "platform/win32/modeless_dialog.h"
#include "platform/win32/wide.h"
#include "session/density.h"
#include "session/session.h"
#include "ui/menu_work.h"

namespace quillmere {

using platform::createDialogControl;

namespace {

constexpr const wchar_t* kClassName = L"QuillmereAddTextDlg";
constexpr const wchar_t* kTitle = L"Add Text";

enum ControlId : int {
  kTextId = 1001,
  kFontId = 1002,
  kSizeId = 1003,
  kColorId = 1004,
  kNoId = -1,
};

// Pixels at 96 DPI.
constexpr int kClientWidth = 320;
constexpr int kRowHeight = 32;
constexpr int kMargin = 12;
constexpr int kClientHeight = 2 * kMargin + 4 * kRowHeight - 8;
constexpr int kLabelWidth = 60;
constexpr int kFieldLeft = 76;
constexpr int kFieldWidth = kClientWidth - kMargin - kFieldLeft;
constexpr int kFieldHeight = 23;
constexpr int kSizeWidth = 80;
constexpr int kLabelDrop = 4;  // from a field's top to its label's
constexpr int kLineHeight = 18;
constexpr int kListHeight = 220;  // of a drop-down list when open

int rowTop(int row) {
  return kMargin + row * kRowHeight;
}

RECT area(int left, int top, int width, int height) {
  return {scaled(left), scaled(top), scaled(left + width), scaled(top + height)};
}

void addLabel(HWND dialog, const wchar_t* text, int row) {
  createDialogControl(dialog, {WC_STATICW, text, SS_LEFT, kNoId,
                               area(kMargin, rowTop(row) + kLabelDrop, kLabelWidth, kLineHeight)});
}

HWND addList(HWND dialog, int id, int row, int width, DWORD style,
             const std::vector<std::u16string>& lines) {
  const HWND list =
      createDialogControl(dialog, {WC_COMBOBOXW, L"", style | WS_VSCROLL | WS_TABSTOP, id,
                                   area(kFieldLeft, rowTop(row), width, kListHeight)});
  for (const std::u16string& line : lines) {
    SendMessageW(list, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(platform::wide(line)));
  }
  return list;
}

HWND addControls(HWND dialog, const TextDialogView& view) {
  addLabel(dialog, L"Text:", 0);
  const HWND field = createDialogControl(
      dialog, {WC_EDITW, platform::wide(view.text), ES_AUTOHSCROLL | WS_TABSTOP, kTextId,
               area(kFieldLeft, rowTop(0), kFieldWidth, kFieldHeight), WS_EX_CLIENTEDGE});
  SendMessageW(field, EM_SETLIMITTEXT, kMostTextUnits, 0);
  addLabel(dialog, L"Font:", 1);
  const HWND fonts = addList(dialog, kFontId, 1, kFieldWidth, CBS_DROPDOWNLIST, view.fonts);
  SendMessageW(fonts, CB_SETCURSEL, static_cast<WPARAM>(view.fontRow), 0);
  addLabel(dialog, L"Size:", 2);
  const HWND sizes = addList(dialog, kSizeId, 2, kSizeWidth, CBS_DROPDOWN, view.sizes);
  SetWindowTextW(sizes, platform::wide(view.size));
  addLabel(dialog, L"Color:", 3);
  const HWND colors = addList(dialog, kColorId, 3, kFieldWidth, CBS_DROPDOWNLIST, view.colors);
  SendMessageW(colors, CB_SETCURSEL, static_cast<WPARAM>(view.colorRow), 0);
  return field;
}

int chosenRow(HWND dialog, int id) {
  return static_cast<int>(SendDlgItemMessageW(dialog, id, CB_GETCURSEL, 0, 0));
}

// The field of the list still shows the previous size when it tells of a choice.
std::u16string chosenSize(HWND dialog) {
  std::u16string text(16, u'\0');
  const auto row = static_cast<WPARAM>(chosenRow(dialog, kSizeId));
  SendDlgItemMessageW(dialog, kSizeId, CB_GETLBTEXT, row,
                      reinterpret_cast<LPARAM>(platform::wideBuffer(text)));
  return text.substr(0, text.find(u'\0'));
}

void onCommand(HWND dialog, int id, int what) {
  if (id == kTextId && what == EN_CHANGE) {
    changeDialogText(platform::windowText(GetDlgItem(dialog, kTextId)));
  } else if (id == kFontId && what == CBN_SELCHANGE) {
    chooseTextFont(chosenRow(dialog, kFontId));
  } else if (id == kColorId && what == CBN_SELCHANGE) {
    chooseTextColor(chosenRow(dialog, kColorId));
  } else if (id == kSizeId && what == CBN_SELCHANGE) {
    changeTextSize(chosenSize(dialog));
  } else if (id == kSizeId && (what == CBN_EDITCHANGE || what == CBN_CLOSEUP)) {
    // A list that closes can complete what was typed, and tells of no choice then.
    changeTextSize(platform::windowText(GetDlgItem(dialog, kSizeId)));
  }
}

LRESULT CALLBACK dialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

constexpr platform::ModelessDialogDesign kDesign = {platform::ModelessDialog::AddText, kClassName,
                                                    kTitle, dialogProcedure};

void onDestroy(HWND dialog) {
  const POINT corner = platform::forgetModelessDialog(kDesign, dialog);
  textDialogCloses({corner.x, corner.y});
}

LRESULT CALLBACK dialogProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_COMMAND:
      onCommand(window, LOWORD(wParam), HIWORD(wParam));
      return platform::modelessDialogMessage(kDesign, window, message, wParam, lParam);
    case WM_DESTROY:
      onDestroy(window);
      return 0;
    default:
      return platform::modelessDialogMessage(kDesign, window, message, wParam, lParam);
  }
}

}  // namespace

bool textDialogOpen() {
  return platform::modelessDialogOpen(kDesign.kind);
}

void openTextDialog(const TextDialogView& view) {
  std::optional<POINT> corner;
  if (view.place) corner = POINT{view.place->left, view.place->top};
  const HWND dialog = platform::makeModelessDialog(
      kDesign, {scaled(kClientWidth), scaled(kClientHeight)}, session.dpi, corner);
  if (dialog == nullptr) return;
  const HWND first = addControls(dialog, view);
  holdOpensWhileMenusOfDialogAreUp(dialog);
  textDialogOpened();
  platform::showModelessDialog(kDesign, session.dpi, first);
  SendMessageW(first, EM_SETSEL, 0, -1);  // typing replaces the text of last time
}

void closeTextDialog() {
  platform::closeModelessDialog(kDesign.kind);
}

}  // namespace quillmere
