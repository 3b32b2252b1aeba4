#include "platform/main_window.h"

#include <windows.h>

#include <commctrl.h>

#include <algorithm>
#include <utility>
#include <vector>

#include "platform/win32/class_procedure.h"
#include "platform/win32/main_window.h"
#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"

// Texts, parts and positions are set only when they change: setting them again repaints, which
// flickers while the user drags or scrolls.
namespace quillmere::platform {

WindowHandles windowHandles;

namespace {

HWND mainWindow() {
  return windowHandles.main;
}

constexpr UINT_PTR kStatusBarSubclass = 0x51;

bool needsStatus(UINT message) {
  switch (message) {
    case WM_PAINT:
    case WM_PRINTCLIENT:
    case WM_GETTEXT:
    case WM_GETTEXTLENGTH:
    case WM_KEYDOWN:
    case WM_LBUTTONDOWN:
    case WM_MOUSEWHEEL:
    case SB_GETTEXTA:
    case SB_GETTEXTW:
    case SB_GETTEXTLENGTHA:
    case SB_GETTEXTLENGTHW:
    case SB_GETPARTS:
    case SB_GETRECT:
    case TBM_GETPOS:
    case TBM_SETPOS:
    case TBM_GETTHUMBRECT:
      return true;
    default:
      return false;
  }
}

// Subclasses both the status bar and the slider in it; each has message numbers of its own.
LRESULT CALLBACK statusBarProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                    UINT_PTR, DWORD_PTR) {
  if (needsStatus(message)) {
    if (const auto fill = std::exchange(windowHandles.fillStatusBar, nullptr)) fill();
  }
  return DefSubclassProc(window, message, wParam, lParam);
}

void watchStatusBar(HWND bar) {
  if (std::exchange(windowHandles.watchedStatusBar, bar) == bar) return;
  windowHandles.fillStatusBar = nullptr;
  SetWindowSubclass(bar, statusBarProcedure, kStatusBarSubclass, 0);
  if (windowHandles.zoomSlider == nullptr) return;
  SetWindowSubclass(windowHandles.zoomSlider, statusBarProcedure, kStatusBarSubclass, 0);
}

RECT clientRect() {
  RECT rect{};
  if (mainWindow() != nullptr) GetClientRect(mainWindow(), &rect);
  return rect;
}

}  // namespace

HWND keyboardHolder() {
  const HWND focus = GetFocus();
  for (const HWND panel :
       {windowHandles.bookmarksTree, windowHandles.binderTree, windowHandles.stampPanel}) {
    if (panel != nullptr && (focus == panel || IsChild(panel, focus))) return panel;
  }
  const HWND bar = windowHandles.findBar;
  return bar != nullptr && IsChild(bar, focus) ? focus : mainWindow();
}

void giveKeyboardTo(HWND holder) {
  const bool able = holder != nullptr && IsWindowVisible(holder) && IsWindowEnabled(holder);
  if (able) {
    SetFocus(holder);
  } else {
    focusMainWindow();
  }
}

std::u16string windowText(HWND window) {
  std::u16string text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, u'\0');
  const int length = GetWindowTextW(window, wideBuffer(text), static_cast<int>(text.size()));
  text.resize(static_cast<std::size_t>(length));
  return text;
}

bool mainWindowExists() {
  return mainWindow() != nullptr;
}

PixelSize mainWindowClientSize() {
  const RECT rect = clientRect();
  return {rect.right, rect.bottom};
}

int statusBarHeight() {
  RECT rect{};
  if (windowHandles.statusBar == nullptr || !GetWindowRect(windowHandles.statusBar, &rect)) {
    return 0;
  }
  return rect.bottom - rect.top;
}

void setMainWindowTitle(const std::u16string& title) {
  if (mainWindow() == nullptr || windowHandles.title == title) return;
  windowHandles.title = title;
  if (windowHandles.titleWaits) return;
  windowHandles.titleWaits = PostMessageW(mainWindow(), kTitleMessage, 0, 0) != 0;
}

void showWaitingTitle() {
  if (mainWindow() == nullptr || !std::exchange(windowHandles.titleWaits, false)) return;
  if (windowText(mainWindow()) == windowHandles.title) return;
  updatePages();
  SetWindowTextW(mainWindow(), wide(windowHandles.title));
}

void invalidateMainWindow(bool erase) {
  // A null window would invalidate every window on the desktop.
  if (mainWindow() != nullptr) InvalidateRect(mainWindow(), nullptr, erase);
}

void invalidateStampPanel() {
  if (windowHandles.stampPanel != nullptr) InvalidateRect(windowHandles.stampPanel, nullptr, FALSE);
}

void updateMainWindow() {
  if (mainWindow() != nullptr) UpdateWindow(mainWindow());
}

void invalidateMainWindowPart(int left, int top, int right, int bottom) {
  const RECT rect{left, top, right, bottom};
  if (mainWindow() != nullptr) InvalidateRect(mainWindow(), &rect, FALSE);
}

void updatePages() {
  if (mainWindow() == nullptr) return;
  RedrawWindow(mainWindow(), nullptr, nullptr, RDW_UPDATENOW | RDW_NOCHILDREN);
}

void fillStatusBarLater(void (*fill)()) {
  const HWND bar = windowHandles.statusBar;
  if (bar == nullptr) return;
  watchStatusBar(bar);
  if (std::exchange(windowHandles.fillStatusBar, fill) != nullptr) return;
  // One invalid pixel makes the bar paint; filling it then invalidates what it changes.
  constexpr RECT kPixel{0, 0, 1, 1};
  InvalidateRect(bar, &kPixel, FALSE);
}

void setStatusParts(const int* rightEdges, int count) {
  if (windowHandles.statusBar == nullptr) return;
  std::vector<int> wanted(rightEdges, rightEdges + count);
  if (windowHandles.statusPartEdges == wanted) return;
  SendMessageW(windowHandles.statusBar, SB_SETPARTS, static_cast<WPARAM>(count),
               reinterpret_cast<LPARAM>(wanted.data()));
  windowHandles.statusPartEdges = std::move(wanted);
  windowHandles.statusTexts.resize(static_cast<std::size_t>(count));
}

void setStatusText(int part, const std::u16string& text) {
  const HWND bar = windowHandles.statusBar;
  const auto index = static_cast<std::size_t>(part);
  if (bar == nullptr || index >= windowHandles.statusTexts.size()) return;
  std::u16string& shown = windowHandles.statusTexts[index];
  if (shown == text) return;
  shown = text;
  SendMessageW(bar, SB_SETTEXTW, index, reinterpret_cast<LPARAM>(wide(text)));
}

void placeZoomSlider(int x, int y, int width, int height) {
  if (windowHandles.zoomSlider == nullptr) return;
  RECT place{};
  GetWindowRect(windowHandles.zoomSlider, &place);
  MapWindowPoints(nullptr, windowHandles.statusBar, reinterpret_cast<POINT*>(&place), 2);
  const RECT wanted{x, y, x + width, y + height};
  if (EqualRect(&place, &wanted)) return;
  SetWindowPos(windowHandles.zoomSlider, nullptr, x, y, width, height,
               SWP_NOZORDER | SWP_NOACTIVATE);
}

void enableZoomSlider(bool enabled) {
  const HWND slider = windowHandles.zoomSlider;
  if (slider == nullptr || (IsWindowEnabled(slider) != 0) == enabled) return;
  EnableWindow(slider, enabled);
}

int zoomSliderPosition() {
  const HWND slider = windowHandles.zoomSlider;
  return slider == nullptr ? 0 : static_cast<int>(askClassOf(slider, TBM_GETPOS));
}

void setZoomSlider(int position) {
  const HWND slider = windowHandles.zoomSlider;
  if (slider == nullptr || zoomSliderPosition() == position) return;
  SendMessageW(slider, TBM_SETPOS, TRUE, position);
}

void setMenuItem(std::uint32_t command, bool checked, bool enabled) {
  const MenuItemState wanted{checked, enabled};
  const auto known = windowHandles.menuItems.find(command);
  if (known != windowHandles.menuItems.end() && known->second == wanted) return;
  const HMENU menuBar = mainWindow() == nullptr ? nullptr : GetMenu(mainWindow());
  if (menuBar == nullptr) return;
  CheckMenuItem(menuBar, command, MF_BYCOMMAND | (checked ? MF_CHECKED : MF_UNCHECKED));
  EnableMenuItem(menuBar, command, MF_BYCOMMAND | (enabled ? MF_ENABLED : MF_GRAYED));
  windowHandles.menuItems[command] = wanted;
}

void layoutMainWindow() {
  if (windowHandles.layoutChildren != nullptr) windowHandles.layoutChildren();
}

void refreshCursor() {
  POINT point{};
  if (mainWindow() == nullptr || !GetCursorPos(&point)) return;
  if (WindowFromPoint(point) != mainWindow()) return;
  const LRESULT area = SendMessageW(mainWindow(), WM_NCHITTEST, 0, MAKELPARAM(point.x, point.y));
  SendMessageW(mainWindow(), WM_SETCURSOR, reinterpret_cast<WPARAM>(mainWindow()),
               MAKELPARAM(area, WM_MOUSEMOVE));
}

void captureMouse() {
  if (mainWindow() != nullptr) SetCapture(mainWindow());
}

void releaseMouse() {
  if (mainWindow() != nullptr && GetCapture() == mainWindow()) ReleaseCapture();
}

void focusMainWindow() {
  if (mainWindow() != nullptr) SetFocus(mainWindow());
}

void raiseMainWindow() {
  if (mainWindow() == nullptr) return;
  if (IsIconic(mainWindow())) ShowWindow(mainWindow(), SW_RESTORE);
  SetForegroundWindow(mainWindow());
}

void focusNavigationTree() {
  if (windowHandles.bookmarksTree != nullptr) SetFocus(windowHandles.bookmarksTree);
}

void focusBinderTree() {
  if (windowHandles.binderTree != nullptr) SetFocus(windowHandles.binderTree);
}

void postBinderTreeRebuild() {
  if (mainWindow() == nullptr || windowHandles.binderRebuildPosted) return;
  windowHandles.binderRebuildPosted =
      PostMessageW(mainWindow(), kBinderTreeRebuildMessage, 0, 0) != FALSE;
}

void postWaitingWork() {
  if (mainWindow() == nullptr) return;
  PostMessageW(mainWindow(), kWaitingWorkMessage, 0, 0);
}

void doAfterPainting(void (*work)()) {
  if (mainWindow() == nullptr) return work();
  std::vector<void (*)()>& waiting = windowHandles.afterPainting;
  if (std::find(waiting.begin(), waiting.end(), work) != waiting.end()) return;
  waiting.push_back(work);
  if (waiting.size() == 1) PostMessageW(mainWindow(), kAfterPaintingMessage, 0, 0);
}

bool anyWorkAfterPainting() {
  return !windowHandles.afterPainting.empty();
}

void workAfterPainting() {
  if (!anyWorkAfterPainting()) return;
  updatePages();
  for (void (*work)() : std::exchange(windowHandles.afterPainting, {})) work();
}

void doWhenIdle(bool (*work)()) {
  if (mainWindow() == nullptr) return;
  std::vector<bool (*)()>& waiting = windowHandles.whenIdle;
  if (std::find(waiting.begin(), waiting.end(), work) != waiting.end()) return;
  waiting.push_back(work);
  if (waiting.size() == 1) SetTimer(mainWindow(), kIdleTimer, USER_TIMER_MINIMUM, nullptr);
}

namespace {

void doIdleSlice() {
  std::vector<bool (*)()>& waiting = windowHandles.whenIdle;
  for (std::size_t i = 0; i < waiting.size();) {
    bool (*const work)() = waiting[i];
    if (work()) {
      ++i;
    } else {
      std::erase(waiting, work);
    }
  }
}

bool messageWaits() {
  return HIWORD(GetQueueStatus(QS_ALLINPUT)) != 0;
}

}  // namespace

// A slice is much shorter than the timer's period, so one tick does slices until a message waits.
// The next tick is such a message, and comes after all input.
void workWhenIdle() {
  do doIdleSlice();
  while (!windowHandles.whenIdle.empty() && !messageWaits());
  if (windowHandles.whenIdle.empty()) KillTimer(mainWindow(), kIdleTimer);
}

void doWhenQuiet(void (*work)()) {
  constexpr UINT kQuiet = 500;  // milliseconds
  const auto tick = [](HWND window, UINT, UINT_PTR timer, DWORD) {
    KillTimer(window, timer);
    reinterpret_cast<void (*)()>(timer)();
  };
  // Work that is asked for again has the same number, so its time begins anew.
  if (mainWindow() != nullptr) {
    SetTimer(mainWindow(), reinterpret_cast<UINT_PTR>(work), kQuiet, tick);
  }
}

SystemColor highlightColor() {
  const COLORREF color = GetSysColor(COLOR_HIGHLIGHT);
  return {GetRValue(color), GetGValue(color), GetBValue(color)};
}

std::optional<WindowPlacement> mainWindowPlacement() {
  WINDOWPLACEMENT placement{};
  placement.length = sizeof placement;
  if (mainWindow() == nullptr || !GetWindowPlacement(mainWindow(), &placement)) {
    return std::nullopt;
  }
  const RECT& normal = placement.rcNormalPosition;
  return WindowPlacement{{normal.left, normal.top, normal.right, normal.bottom},
                         placement.showCmd == SW_SHOWMAXIMIZED};
}

void placeMainWindow(const WindowPlacement& wanted) {
  if (mainWindow() == nullptr) return;
  WINDOWPLACEMENT placement{};
  placement.length = sizeof placement;
  placement.showCmd = wanted.maximised ? SW_SHOWMAXIMIZED : SW_SHOWNORMAL;
  placement.rcNormalPosition = {wanted.normal.left, wanted.normal.top, wanted.normal.right,
                                wanted.normal.bottom};
  windowHandles.placing = true;
  SetWindowPlacement(mainWindow(), &placement);
  windowHandles.placing = false;
}

void closeMainWindow() {
  if (mainWindow() != nullptr) SendMessageW(mainWindow(), WM_CLOSE, 0, 0);
}

}  // namespace quillmere::platform
