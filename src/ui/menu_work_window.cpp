#include "ui/menu_work.h"

#include <windows.h>

#include <commctrl.h>

#include <optional>

#include "session/waiting_opens.h"

namespace quillmere {

namespace {

constexpr UINT_PTR kSubclass = 0x7F;

// One menu at a time is up.
std::optional<DocumentWork> menuWork;
HWND menuWindow = nullptr;  // null when none is up; the work may still last

UINT menuGoneMessage() {
  static const UINT message = RegisterWindowMessageW(L"QuillmereMenuGone");
  return message;
}

void begin(HWND window) {
  menuWindow = window;
  if (!menuWork) menuWork.emplace();
}

// Windows may post the chosen command only after the menu has gone. What waits must not be opened
// before it, or the command would act on that.
void endLater(HWND window) {
  menuWindow = nullptr;
  if (!PostMessageW(window, menuGoneMessage(), 0, 0)) menuWork.reset();
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

}  // namespace

void noteMenuMessage(HWND window, UINT message) {
  if (message == WM_ENTERMENULOOP) begin(window);
  if (message == WM_EXITMENULOOP) endLater(window);
  if (message == menuGoneMessage() && menuWindow == nullptr) menuWork.reset();
  if (message == WM_DESTROY && (menuWindow == window || menuWindow == nullptr)) {
    menuWindow = nullptr;
    menuWork.reset();
  }
}

void holdOpensWhileMenuIsUp(HWND window) {
  SetWindowSubclass(window, menuProcedure, kSubclass, 0);
}

}  // namespace quillmere
