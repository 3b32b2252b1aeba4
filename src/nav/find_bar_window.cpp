#include "nav/find_bar_window.h"

#include <windows.h>

#include <commctrl.h>

#include "nav/find_bar.h"
#include "platform/win32/sized.h"
#include "platform/win32/system_fonts.h"
#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"
#include "session/density.h"
#include "session/session.h"
#include "ui/menu_work.h"
#include "view/geometry.h"

namespace quillmere {

using platform::windowHandles;

namespace {

constexpr const wchar_t* kClassName = L"QuillmereFindBar";
constexpr COLORREF kBottomLine = 0xA0A0A0;

enum SubclassId : UINT_PTR { kTabSubclass = 1, kFieldSubclass = 2 };

HFONT barFont = nullptr;
bool focusArriving = false;  // at a radio button, which reports that as a click

struct ControlClass {
  const wchar_t* name;
  DWORD style;
};

ControlClass classOf(FindControlKind kind) {
  switch (kind) {
    case FindControlKind::FirstRadio:
      return {WC_BUTTONW, BS_AUTORADIOBUTTON | WS_GROUP | WS_TABSTOP};
    case FindControlKind::Radio:
      return {WC_BUTTONW, BS_AUTORADIOBUTTON};
    case FindControlKind::Separator:
      return {WC_STATICW, SS_ETCHEDVERT | WS_GROUP};
    case FindControlKind::Check:
      return {WC_BUTTONW, BS_AUTOCHECKBOX | WS_TABSTOP};
    case FindControlKind::Label:
      return {WC_STATICW, SS_LEFT | SS_CENTERIMAGE};
    case FindControlKind::Edit:
      return {WC_EDITW, ES_AUTOHSCROLL | WS_BORDER | WS_TABSTOP};
    case FindControlKind::Button:
      return {WC_BUTTONW, BS_PUSHBUTTON | WS_TABSTOP};
    case FindControlKind::CentredLabel:
      break;
  }
  return {WC_STATICW, SS_CENTER | SS_CENTERIMAGE};
}

bool takesKeyboard(FindControlKind kind) {
  return kind != FindControlKind::Separator && kind != FindControlKind::Label &&
         kind != FindControlKind::CentredLabel;
}

bool shiftHeld() {
  return GetKeyState(VK_SHIFT) < 0;
}

bool isRadio(HWND window) {
  const int id = GetDlgCtrlID(window);
  return id == kFindLiteralMode || id == kFindRegexMode;
}

// Arrow keys go from one matcher to the other, as in any group of radio buttons.
bool chooseNeighbour(HWND window, WPARAM key) {
  const bool back = key == VK_LEFT || key == VK_UP;
  if (!back && key != VK_RIGHT && key != VK_DOWN) return false;
  const HWND neighbour = GetNextDlgGroupItem(GetParent(window), window, back);
  SetFocus(neighbour);
  SendMessageW(neighbour, BM_CLICK, 0, 0);
  return true;
}

// Tab cycles through the bar's controls and Escape closes the bar; their characters would make the
// controls beep.
LRESULT CALLBACK controlProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                  DWORD_PTR) {
  if (message == WM_KEYDOWN && wParam == VK_TAB) {
    SetFocus(GetNextDlgTabItem(GetParent(window), window, shiftHeld()));
    return 0;
  }
  if (message == WM_KEYDOWN && wParam == VK_ESCAPE) {
    CloseFindBar();
    return 0;
  }
  if (message == WM_KEYDOWN && isRadio(window) && chooseNeighbour(window, wParam)) return 0;
  if (message == WM_CHAR && (wParam == VK_TAB || wParam == VK_ESCAPE)) return 0;
  if (message == WM_SETFOCUS && isRadio(window)) {
    focusArriving = true;
    DefSubclassProc(window, message, wParam, lParam);
    focusArriving = false;
    return 0;
  }
  return DefSubclassProc(window, message, wParam, lParam);
}

LRESULT CALLBACK fieldProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                DWORD_PTR) {
  if (message == WM_KEYDOWN && wParam == VK_ESCAPE) {
    CloseFindBar();
    return 0;
  }
  if (message == WM_KEYDOWN && wParam == VK_RETURN) {
    stepFromFindBar(shiftHeld() ? -1 : 1);
    return 0;
  }
  // The edit control would beep at their characters.
  if (message == WM_CHAR && (wParam == VK_ESCAPE || wParam == VK_RETURN)) return 0;
  if (message == WM_PASTE) {
    pasteIntoFindField();
    return 0;
  }
  return DefSubclassProc(window, message, wParam, lParam);
}

void createControl(HWND bar, const FindControl& control) {
  const ControlClass look = classOf(control.kind);
  const HWND window = CreateWindowExW(0, look.name, platform::wide(control.text),
                                      WS_CHILD | WS_VISIBLE | look.style, 0, 0, 0, 0, bar,
                                      reinterpret_cast<HMENU>(static_cast<INT_PTR>(control.id)),
                                      GetModuleHandleW(nullptr), nullptr);
  if (takesKeyboard(control.kind)) SetWindowSubclass(window, controlProcedure, kTabSubclass, 0);
}

void giveFont(HWND bar) {
  const HFONT font = platform::createMessageFont(session.dpi);
  for (const FindControl& control : findBarControls()) {
    SendDlgItemMessageW(bar, control.id, WM_SETFONT, reinterpret_cast<WPARAM>(font), TRUE);
  }
  if (barFont != nullptr) DeleteObject(barFont);
  barFont = font;
}

void createControls(HWND bar) {
  for (const FindControl& control : findBarControls()) createControl(bar, control);
  giveFont(bar);
  CheckDlgButton(bar, kFindLiteralMode, BST_CHECKED);
  windowHandles.findField = GetDlgItem(bar, kFindField);
  windowHandles.findStatus = GetDlgItem(bar, kFindStatusLabel);
  windowHandles.findMatchCase = GetDlgItem(bar, kFindMatchCase);
  windowHandles.findWholeWord = GetDlgItem(bar, kFindWholeWord);
  SetWindowSubclass(windowHandles.findField, fieldProcedure, kFieldSubclass, 0);
  holdOpensWhileMenuIsUp(windowHandles.findField);
}

void placeControls(HWND bar, int width) {
  for (const FindControl& control : findBarControls()) {
    const FindControlPlace place = placeOf(control, width);
    MoveWindow(GetDlgItem(bar, control.id), place.x, place.y, place.width, place.height, TRUE);
  }
}

// The bar gets its controls and a width when it is first shown, since most starts do without it.
void resizeBar(HWND bar, int width) {
  if (width == 0) return;
  if (windowHandles.findField == nullptr) createControls(bar);
  placeControls(bar, width);
}

bool checked(HWND bar, int id) {
  return IsDlgButtonChecked(bar, id) == BST_CHECKED;
}

void handleCommand(HWND bar, WORD id, WORD notification) {
  if (id == kFindField) {
    if (notification == EN_CHANGE) findFieldChanged();
    return;
  }
  if (notification != BN_CLICKED || focusArriving) return;
  switch (id) {
    case kFindCloseButton:
      CloseFindBar();
      break;
    case kFindPrevious:
      stepFromFindBar(-1);
      break;
    case kFindNext:
      stepFromFindBar(1);
      break;
    case kFindLiteralMode:
    case kFindRegexMode:
      chooseFindMode(id == kFindRegexMode);
      break;
    case kFindMatchCase:
      chooseMatchCase(checked(bar, id));
      break;
    case kFindWholeWord:
      chooseWholeWord(checked(bar, id));
      break;
    default:
      break;
  }
}

void paintBar(HWND bar) {
  PAINTSTRUCT paint{};
  const HDC dc = BeginPaint(bar, &paint);
  RECT client{};
  GetClientRect(bar, &client);
  FillRect(dc, &client, GetSysColorBrush(COLOR_BTNFACE));
  SetBkColor(dc, kBottomLine);
  const RECT line{0, client.bottom - 1, client.right, client.bottom};
  ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &line, nullptr, 0, nullptr);
  EndPaint(bar, &paint);
}

LRESULT CALLBACK barProcedure(HWND bar, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_DESTROY:
      DeleteObject(barFont);
      barFont = nullptr;
      return 0;
    case WM_SIZE:
      resizeBar(bar, LOWORD(lParam));
      return 0;
    case WM_COMMAND:
      handleCommand(bar, LOWORD(wParam), HIWORD(wParam));
      return 0;
    case WM_CTLCOLORSTATIC:
      SetBkMode(reinterpret_cast<HDC>(wParam), TRANSPARENT);
      return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_BTNFACE));
    case WM_ERASEBKGND:
      return 1;
    case WM_PAINT:
      paintBar(bar);
      return 0;
    default:
      return DefWindowProcW(bar, message, wParam, lParam);
  }
}

}  // namespace

void applyFindBarFont() {
  giveFont(windowHandles.findBar);
}

void createFindBar(int controlId) {
  auto description = platform::sized<WNDCLASSEXW>();
  description.lpfnWndProc = barProcedure;
  description.hInstance = GetModuleHandleW(nullptr);
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.lpszClassName = kClassName;
  RegisterClassExW(&description);
  windowHandles.findBar = CreateWindowExW(
      WS_EX_CONTROLPARENT, kClassName, L"", WS_CHILD | WS_CLIPCHILDREN, 0, 0, 0,
      scaled(kFindBarHeight), windowHandles.main,
      reinterpret_cast<HMENU>(static_cast<INT_PTR>(controlId)), GetModuleHandleW(nullptr), nullptr);
}

}  // namespace quillmere
