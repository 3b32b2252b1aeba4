#include "platform/main_window.h"

#include <windows.h>

#include <commctrl.h>

#include <utility>
#include <vector>

#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"

// Texts, parts and positions are set only where they change: setting them anew repaints, which
// flickers while the user drags or scrolls.
namespace quillmere::platform {

WindowHandles windowHandles;

namespace {

HWND mainWindow() {
  return windowHandles.main;
}

constexpr UINT_PTR kStatusTextSubclass = 0x51;

void giveStatusText(HWND bar, std::size_t index) {
  if (index >= windowHandles.statusParts.size()) return;
  StatusPart& part = windowHandles.statusParts[index];
  if (!std::exchange(part.waiting, false)) return;
  SendMessageW(bar, SB_SETTEXTW, index, reinterpret_cast<LPARAM>(wide(part.text)));
}

// Without asking the bar, which takes longer.
RECT statusPartPlace(HWND bar, std::size_t index) {
  RECT place{};
  GetClientRect(bar, &place);
  const std::vector<int>& edges = windowHandles.statusPartEdges;
  if (index > 0) place.left = edges[index - 1];
  if (edges[index] >= 0) place.right = edges[index];
  return place;
}

LRESULT CALLBACK statusTextProcedure(HWND bar, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                     DWORD_PTR) {
  if (message == WM_PAINT || message == WM_PRINTCLIENT) {
    for (std::size_t i = 0; i < windowHandles.statusParts.size(); ++i) giveStatusText(bar, i);
  } else if (message == SB_GETTEXTW || message == SB_GETTEXTLENGTHW) {
    giveStatusText(bar, wParam);
  }
  return DefSubclassProc(bar, message, wParam, lParam);
}

RECT clientRect() {
  RECT rect{};
  if (mainWindow() != nullptr) GetClientRect(mainWindow(), &rect);
  return rect;
}

}  // namespace

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
  if (mainWindow() == nullptr || windowText(mainWindow()) == title) return;
  updatePages();
  SetWindowTextW(mainWindow(), wide(title));
}

void invalidateMainWindow(bool erase) {
  // A null window would mean every window of the desktop.
  if (mainWindow() != nullptr) InvalidateRect(mainWindow(), nullptr, erase);
}

void updateMainWindow() {
  if (mainWindow() != nullptr) UpdateWindow(mainWindow());
}

void updatePages() {
  if (mainWindow() == nullptr) return;
  RedrawWindow(mainWindow(), nullptr, nullptr, RDW_UPDATENOW | RDW_NOCHILDREN);
}

void setStatusParts(const int* rightEdges, int count) {
  if (windowHandles.statusBar == nullptr) return;
  std::vector<int> wanted(rightEdges, rightEdges + count);
  if (windowHandles.statusPartEdges == wanted) return;
  SendMessageW(windowHandles.statusBar, SB_SETPARTS, static_cast<WPARAM>(count),
               reinterpret_cast<LPARAM>(wanted.data()));
  windowHandles.statusPartEdges = std::move(wanted);
  windowHandles.statusParts.resize(static_cast<std::size_t>(count));
}

// A status bar may draw a text the moment it gets it. That must not hold up the page that the text
// is about, so the text waits until the bar is painted itself, or asked.
void setStatusText(int part, const std::u16string& text) {
  const HWND bar = windowHandles.statusBar;
  const auto index = static_cast<std::size_t>(part);
  if (bar == nullptr || index >= windowHandles.statusParts.size()) return;
  StatusPart& wanted = windowHandles.statusParts[index];
  if (wanted.text == text) return;
  wanted = {text, true};
  if (windowHandles.statusTextsHeldBy != bar) {
    SetWindowSubclass(bar, statusTextProcedure, kStatusTextSubclass, 0);
    windowHandles.statusTextsHeldBy = bar;
  }
  const RECT place = statusPartPlace(bar, index);
  InvalidateRect(bar, &place, FALSE);
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

void setZoomSlider(int position, bool enabled) {
  const HWND slider = windowHandles.zoomSlider;
  if (slider == nullptr) return;
  if ((IsWindowEnabled(slider) != 0) != enabled) EnableWindow(slider, enabled);
  if (SendMessageW(slider, TBM_GETPOS, 0, 0) == position) return;
  SendMessageW(slider, TBM_SETPOS, TRUE, position);
}

void setMenuItem(std::uint32_t command, bool checked, bool enabled) {
  const HMENU menuBar = mainWindow() == nullptr ? nullptr : GetMenu(mainWindow());
  if (menuBar == nullptr) return;
  CheckMenuItem(menuBar, command, MF_BYCOMMAND | (checked ? MF_CHECKED : MF_UNCHECKED));
  EnableMenuItem(menuBar, command, MF_BYCOMMAND | (enabled ? MF_ENABLED : MF_GRAYED));
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
  if (mainWindow() == nullptr) return;
  PostMessageW(mainWindow(), kBinderTreeRebuildMessage, 0, 0);
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
  SetWindowPlacement(mainWindow(), &placement);
}

void closeMainWindow() {
  if (mainWindow() != nullptr) SendMessageW(mainWindow(), WM_CLOSE, 0, 0);
}

}  // namespace quillmere::platform
