#include "ui/menu_work.h"

#include <windows.h>

#include <commctrl.h>

#include <optional>

#include "session/waiting_opens.h"

namespace quillmere {

namespace {

constexpr UINT_PTR kSubclass = 0x7F;

// One menu at a time is up.
std::optional<DocumentWork> menuWork;  // lasts a little longer than the menu
HWND menuWindow = nullptr;             // whose menu it was; null when there is no work
bool menuUp = false;

UINT menuGoneMessage() {
  static const UINT message = RegisterWindowMessageW(L"QuillmereMenuGone");
  return message;
}

void begin(HWND window) {
  menuWindow = window;
  menuUp = true;
  if (!menuWork) menuWork.emplace();
}

void end() {
  menuWindow = nullptr;
  menuUp = false;
  menuWork.reset();
}

// Windows may post the chosen command only after the menu has gone. What waits must not be opened
// before it, or the command would act on that.
void endLater(HWND window) {
  menuUp = false;
  if (!PostMessageW(window, menuGoneMessage(), 0, 0)) end();
}

LRESULT CALLBACK menuProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                               DWORD_PTR) {
  if (message == WM_CONTEXTMENU) {
    // An edit field may show its own menu without telling that it runs a loop.
    const DocumentWork work;
    return DefSubclassProc(window, message, wParam, lParam);
  }
  noteMenuMessage(window, message);
  return DefSubclassProc(window, message, wParam, lParam);
}

BOOL CALLBACK holdForControl(HWND control, LPARAM) {
  holdOpensWhileMenuIsUp(control);
  return TRUE;
}

}  // namespace

void noteMenuMessage(HWND window, UINT message) {
  if (message == WM_ENTERMENULOOP) begin(window);
  if (message == WM_EXITMENULOOP) endLater(window);
  if (message == menuGoneMessage() && !menuUp) end();
  if (message == WM_DESTROY && window == menuWindow) end();
}

void holdOpensWhileMenuIsUp(HWND window) {
  SetWindowSubclass(window, menuProcedure, kSubclass, 0);
}

void holdOpensWhileMenusOfDialogAreUp(HWND dialog) {
  holdOpensWhileMenuIsUp(dialog);
  EnumChildWindows(dialog, holdForControl, 0);
}

}  // namespace quillmere
