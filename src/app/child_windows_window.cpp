#include <windows.h>

#include <commctrl.h>
#include <windowsx.h>

#include "app/child_windows.h"
#include "app/cursors.h"
#include "integration/update_check.h"
#include "nav/find_bar_window.h"
#include "panels/binder_panel.h"
#include "panels/binder_panel_window.h"
#include "panels/left_panel.h"
#include "panels/stamp_panel.h"
#include "panels/stamp_panel_window.h"
#include "panels/stamp_splitter.h"
#include "platform/main_window.h"
#include "platform/win32/system_fonts.h"
#include "platform/win32/window_handles.h"
#include "session/density.h"
#include "session/session.h"
#include "ui/tree_work.h"
#include "view/geometry.h"
#include "view/status.h"
#include "view/zoom.h"

namespace quillmere {

using platform::windowHandles;

namespace {

constexpr int kStatusBarId = 0;
constexpr int kBookmarksTreeId = 401;
constexpr int kStampPanelId = 402;
constexpr int kZoomSliderId = 403;
constexpr int kFindBarId = 404;
constexpr int kBinderTreeId = 420;
constexpr int kBookmarksHeaderId = 422;
constexpr int kBinderHeaderId = 423;

constexpr int kSliderPage = 10;
constexpr int kTreeTooltipMilliseconds = 15000;
constexpr DWORD kTreeStyle =
    WS_CHILD | TVS_HASBUTTONS | TVS_LINESATROOT | TVS_HASLINES | TVS_SHOWSELALWAYS;

HWND createChild(const wchar_t* className, const wchar_t* text, DWORD style, int id,
                 HWND parent = windowHandles.main) {
  return CreateWindowExW(0, className, text, style, 0, 0, 0, 0, parent,
                         reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                         GetModuleHandleW(nullptr), nullptr);
}

// Tab moves the keyboard from a tree to the page.
LRESULT CALLBACK treeProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                               DWORD_PTR) {
  if (message == WM_KEYDOWN && wParam == VK_TAB) {
    SetFocus(windowHandles.main);
    return 0;
  }
  if (message == WM_CHAR && wParam == VK_TAB) return 0;
  return DefSubclassProc(window, message, wParam, lParam);
}

bool pointerOnUpdateLink(HWND bar) {
  POINT point{};
  return GetCursorPos(&point) && ScreenToClient(bar, &point) && onUpdateLink(point.x, point.y);
}

// The slider reports to its parent, the status bar, and the main window acts on it. The version
// part is a link once there is a newer version.
LRESULT CALLBACK statusBarProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR, DWORD_PTR) {
  if (message == WM_HSCROLL) return SendMessageW(windowHandles.main, message, wParam, lParam);
  if (message == WM_SETCURSOR && reinterpret_cast<HWND>(wParam) == window &&
      pointerOnUpdateLink(window)) {
    showCursor(CursorKind::Hand);
    return TRUE;
  }
  if (message == WM_LBUTTONUP && onUpdateLink(GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam))) {
    InstallUpdate(session.latestInstallerUrl);
    return 0;
  }
  return DefSubclassProc(window, message, wParam, lParam);
}

// The page keeps the keyboard while the mouse moves the slider.
LRESULT CALLBACK sliderProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                 DWORD_PTR) {
  if (message == WM_SETFOCUS) {
    SetFocus(windowHandles.main);
    return 0;
  }
  return DefSubclassProc(window, message, wParam, lParam);
}

void createStatusBar() {
  windowHandles.statusBar =
      createChild(STATUSCLASSNAMEW, L"", WS_CHILD | WS_VISIBLE | SBARS_SIZEGRIP, kStatusBarId);
  SetWindowSubclass(windowHandles.statusBar, statusBarProcedure, 0, 0);

  windowHandles.zoomSlider = createChild(
      TRACKBAR_CLASSW, L"", WS_CHILD | WS_VISIBLE | WS_DISABLED | TBS_HORZ | TBS_NOTICKS,
      kZoomSliderId, windowHandles.statusBar);
  SendMessageW(windowHandles.zoomSlider, TBM_SETRANGE, TRUE, MAKELPARAM(0, zoomSliderMaximum()));
  SendMessageW(windowHandles.zoomSlider, TBM_SETPAGESIZE, 0, kSliderPage);
  SetWindowSubclass(windowHandles.zoomSlider, sliderProcedure, 0, 0);
  refreshStatus();
}

HWND createTree(int id, DWORD style) {
  const HWND tree = createChild(WC_TREEVIEWW, L"", style, id);
  SetWindowSubclass(tree, treeProcedure, 0, 0);
  holdOpensWhileTreeWorks(tree);
  return tree;
}

void createLeftPanel() {
  constexpr DWORD kHeaderStyle = WS_CHILD | SS_LEFT | SS_CENTERIMAGE | SS_NOPREFIX;
  windowHandles.bookmarksHeader =
      createChild(WC_STATICW, L" Bookmarks", kHeaderStyle, kBookmarksHeaderId);
  windowHandles.bookmarksTree = createTree(kBookmarksTreeId, kTreeStyle);
  windowHandles.binderHeader =
      createChild(WC_STATICW, L" Binder Library", kHeaderStyle, kBinderHeaderId);
  windowHandles.binderTree = createTree(kBinderTreeId, kTreeStyle | binderTreeStyle());
  watchBinderTree(windowHandles.binderTree);
  if (const HWND tooltip = TreeView_GetToolTips(windowHandles.binderTree)) {
    SendMessageW(tooltip, TTM_SETDELAYTIME, TTDT_AUTOPOP, kTreeTooltipMilliseconds);
  }
  applyPanelFonts();
  BuildBinderTree();
}

// A panel that is hidden ends what goes on in it: the typing of a name, a drag.
void endInput(HWND window) {
  if (GetCapture() == window) ReleaseCapture();
  const HWND keyboard = GetFocus();
  if (keyboard != window && !IsChild(window, keyboard)) return;
  if (window == windowHandles.binderTree) cancelBinderEdit();
  SetFocus(windowHandles.main);
}

// Do not copy the old picture: a neighbour with scroll bars that was placed before may have drawn
// over it.
void place(HWND window, const PixelRect& rect, bool visible) {
  if (window == nullptr) return;
  const bool shown = visible && !rect.empty();
  // Moving what stays hidden would lay out its controls for nothing, several times at each start.
  if (!shown && (GetWindowStyle(window) & WS_VISIBLE) == 0) return;
  if (!shown) endInput(window);
  SetWindowPos(
      window, nullptr, rect.left, rect.top, std::max(rect.width(), 0), std::max(rect.height(), 0),
      SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS | (shown ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
}

void layoutLeftPanel() {
  const LeftPanelParts parts = leftPanelParts();
  place(windowHandles.bookmarksHeader, parts.bookmarksHeader, session.navigationPanelVisible);
  place(windowHandles.bookmarksTree, parts.bookmarksTree, session.navigationPanelVisible);
  place(windowHandles.binderHeader, parts.bindersHeader, session.binderPanelVisible);
  place(windowHandles.binderTree, parts.bindersTree, session.binderPanelVisible);
}

}  // namespace

void createChildWindows() {
  registerStampPanelClass();
  windowHandles.layoutChildren = layoutChildWindows;
  openStampPanelAtStart();
  windowHandles.stampPanel = createChild(L"QuillmereStampPanel", L"", WS_CHILD, kStampPanelId);
  createFindBar(kFindBarId);
  createStatusBar();
  createLeftPanel();
}

void layoutChildWindows() {
  SendMessageW(windowHandles.statusBar, WM_SIZE, 0, 0);
  const platform::PixelSize client = platform::mainWindowClientSize();
  place(windowHandles.findBar, {0, 0, client.width, scaled(kFindBarHeight)},
        session.findBarVisible);
  layoutLeftPanel();
  place(windowHandles.stampPanel, stampPanelRect(), session.stampPanelVisible);
}

void applyPanelFonts() {
  if (windowHandles.headerFont != nullptr) DeleteObject(windowHandles.headerFont);
  windowHandles.headerFont = platform::createMessageFont(session.dpi);
  const auto font = reinterpret_cast<WPARAM>(windowHandles.headerFont);
  for (const HWND window : {windowHandles.bookmarksHeader, windowHandles.bookmarksTree,
                            windowHandles.binderHeader, windowHandles.binderTree}) {
    SendMessageW(window, WM_SETFONT, font, TRUE);
  }
}

}  // namespace quillmere
