#include <windows.h>

#include <commctrl.h>

#include <algorithm>

#include "documents/unsaved_dialog.h"
#include "platform/win32/dialog_parts.h"
#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"
#include "session/density.h"
#include "ui/modal_dialog.h"

namespace quillmere {

using platform::createDialogControl;
using platform::windowHandles;

namespace {

enum ControlId : int {
  kTextId = 1001,
  kListId = 1002,
  kSelectAllId = 1003,
  kSelectNoneId = 1004,
  kSaveId = 1005,
  kDiscardId = 1006,
};

// Pixels at 96 DPI.
constexpr int kClientWidth = 460;
constexpr int kClientHeight = 340;
constexpr int kMargin = 12;
constexpr int kGap = 8;
constexpr int kTextHeight = 34;
constexpr int kButtonWidth = 100;
constexpr int kButtonHeight = 26;
constexpr int kListTop = kMargin + kTextHeight + kGap;
constexpr int kButtonTop = kClientHeight - kMargin - kButtonHeight;
constexpr int kSelectTop = kButtonTop - kMargin - kButtonHeight;
constexpr int kListHeight = kSelectTop - kGap - kListTop;

ModalDialog unsavedDialog;

using Files = std::vector<UnsavedFile>;

RECT area(int left, int top, int width, int height) {
  return {scaled(left), scaled(top), scaled(left + width), scaled(top + height)};
}

HWND listOf(const ModalDialog& dialog) {
  return GetDlgItem(dialog.window, kListId);
}

HWND createButton(HWND dialog, int left, int top, const wchar_t* text, DWORD style, int id) {
  return createDialogControl(dialog, {WC_BUTTONW, text, style | WS_TABSTOP, id,
                                      area(left, top, kButtonWidth, kButtonHeight)});
}

void insertRow(HWND list, int row, const UnsavedFile& file) {
  LVITEMW item{};
  item.mask = LVIF_TEXT;
  item.iItem = row;
  std::u16string label = file.label;
  item.pszText = platform::wideBuffer(label);
  SendMessageW(list, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
  ListView_SetCheckState(list, row, file.save);
}

// One column, as wide as the longest row and at least as wide as the list.
void fillList(HWND list, const Files& files) {
  ListView_SetExtendedListViewStyle(list, LVS_EX_CHECKBOXES);
  LVCOLUMNW column{};
  SendMessageW(list, LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
  for (std::size_t row = 0; row < files.size(); ++row) {
    insertRow(list, static_cast<int>(row), files[row]);
  }
  RECT client{};
  GetClientRect(list, &client);
  ListView_SetColumnWidth(list, 0, LVSCW_AUTOSIZE);
  const int widest = ListView_GetColumnWidth(list, 0);
  ListView_SetColumnWidth(list, 0, std::max<int>(widest, client.right));
}

bool anyChecked(HWND list) {
  const int rows = ListView_GetItemCount(list);
  for (int row = 0; row < rows; ++row) {
    if (ListView_GetCheckState(list, row)) return true;
  }
  return false;
}

void enableSave(const ModalDialog& dialog) {
  EnableWindow(GetDlgItem(dialog.window, kSaveId), anyChecked(listOf(dialog)));
}

HWND createControls(ModalDialog& dialog, void* context) {
  constexpr int kInner = kClientWidth - 2 * kMargin;
  constexpr int kCancelLeft = kClientWidth - kMargin - kButtonWidth;
  constexpr int kDiscardLeft = kCancelLeft - kGap - kButtonWidth;
  constexpr int kSaveLeft = kDiscardLeft - kGap - kButtonWidth;
  const HWND window = dialog.window;
  createDialogControl(
      window, {WC_STATICW,
               L"These files have unsaved changes. Checked files are saved to disk; the rest are "
               L"discarded.",
               SS_NOPREFIX, kTextId, area(kMargin, kMargin, kInner, kTextHeight)});
  const HWND list = createDialogControl(
      window, {WC_LISTVIEWW, L"",
               LVS_REPORT | LVS_NOCOLUMNHEADER | LVS_SINGLESEL | LVS_SHOWSELALWAYS | WS_TABSTOP,
               kListId, area(kMargin, kListTop, kInner, kListHeight), WS_EX_CLIENTEDGE});
  createButton(window, kMargin, kSelectTop, L"Select &All", BS_PUSHBUTTON, kSelectAllId);
  createButton(window, kMargin + kButtonWidth + kGap, kSelectTop, L"Select &None", BS_PUSHBUTTON,
               kSelectNoneId);
  const HWND save =
      createButton(window, kSaveLeft, kButtonTop, L"&Save Checked", BS_DEFPUSHBUTTON, kSaveId);
  createButton(window, kDiscardLeft, kButtonTop, L"&Discard All", BS_PUSHBUTTON, kDiscardId);
  createButton(window, kCancelLeft, kButtonTop, L"Cancel", BS_PUSHBUTTON, IDCANCEL);
  fillList(list, *static_cast<const Files*>(context));
  enableSave(dialog);
  return IsWindowEnabled(save) ? save : list;
}

void goAhead(ModalDialog& dialog) {
  endModalDialog(dialog, static_cast<std::int32_t>(UnsavedAnswer::GoAhead));
}

void saveChecked(ModalDialog& dialog, Files& files) {
  for (std::size_t row = 0; row < files.size(); ++row) {
    files[row].save = ListView_GetCheckState(listOf(dialog), static_cast<int>(row)) != 0;
  }
  goAhead(dialog);
}

void discardAll(ModalDialog& dialog, Files& files) {
  if (!confirmDiscardAll(files.size())) return;
  for (UnsavedFile& file : files) file.save = false;
  goAhead(dialog);
}

bool handleCommand(ModalDialog& dialog, std::uint16_t id, std::uint16_t, void* context) {
  auto& files = *static_cast<Files*>(context);
  constexpr int kEveryRow = -1;
  switch (id) {
    case kSelectAllId:
    case kSelectNoneId:
      ListView_SetCheckState(listOf(dialog), kEveryRow, id == kSelectAllId);
      enableSave(dialog);
      return true;
    case kSaveId:
      saveChecked(dialog, files);
      return true;
    case kDiscardId:
      discardAll(dialog, files);
      return true;
    default:
      return false;
  }
}

std::intptr_t handleNotify(ModalDialog& dialog, NMHDR& notification, void*) {
  if (notification.idFrom == kListId && notification.code == static_cast<UINT>(LVN_ITEMCHANGED)) {
    enableSave(dialog);
  }
  return 0;
}

}  // namespace

UnsavedAnswer ShowUnsavedDialog(std::vector<UnsavedFile>& files, const std::u16string& title) {
  ModalDialogDesign design;
  design.className = L"QuillmereUnsavedFilesDlg";
  design.title = platform::wide(title);
  design.clientWidth = kClientWidth;
  design.clientHeight = kClientHeight;
  design.cancelResult = static_cast<std::int32_t>(UnsavedAnswer::Cancel);
  design.createControls = createControls;
  design.handleCommand = handleCommand;
  design.handleNotify = handleNotify;
  design.context = &files;
  return static_cast<UnsavedAnswer>(runModalDialog(unsavedDialog, design, windowHandles.main));
}

}  // namespace quillmere
