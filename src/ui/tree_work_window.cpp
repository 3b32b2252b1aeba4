#include <windows.h>

#include <commctrl.h>

#include <optional>

#include "session/waiting_opens.h"
#include "ui/tree_work.h"

namespace quillmere {

namespace {

constexpr UINT_PTR kSubclass = 0x7E;

std::optional<DocumentWork> labelWork;  // one label at a time has the keyboard

bool runsLoopOfItsOwn(UINT message) {
  switch (message) {
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
    case WM_RBUTTONDOWN:
    case WM_NCLBUTTONDOWN:  // on a scroll bar
      return true;
    default:
      return false;
  }
}

// The only child window that a tree creates is the edit control for renaming a row.
void followLabelField(WORD event) {
  if (event == WM_CREATE) labelWork.emplace();
  if (event == WM_DESTROY) labelWork.reset();
}

LRESULT CALLBACK treeProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                               DWORD_PTR) {
  if (message == WM_PARENTNOTIFY) followLabelField(LOWORD(wParam));
  if (!runsLoopOfItsOwn(message)) return DefSubclassProc(window, message, wParam, lParam);
  const DocumentWork work;
  return DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace

void holdOpensWhileTreeWorks(HWND tree) {
  SetWindowSubclass(tree, treeProcedure, kSubclass, 0);
}

}  // namespace quillmere
