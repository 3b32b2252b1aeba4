#pragma once

#include <windows.h>

#include <string>

// What window code needs of the main window besides platform/main_window.h.
namespace quillmere::platform {

// The window to give the keyboard back to after a box, a dialog or another program had it: the
// tree, the stamp panel or the control of the find bar that has it now, otherwise the main window.
HWND keyboardHolder();
// Gives the keyboard to that window, or to the main window if it has been hidden, disabled or
// destroyed.
void giveKeyboardTo(HWND holder);

// The text of a window of this process.
std::u16string windowText(HWND window);

// Posted to the main window; rebuilds the binder tree.
inline constexpr UINT kBinderTreeRebuildMessage = WM_APP + 1;

// Posted to the main window; handles work that had to wait.
inline constexpr UINT kWaitingWorkMessage = WM_APP + 201;

// Posted to the main window, which calls workAfterPainting() for it as soon as no other work is
// under way.
inline constexpr UINT kAfterPaintingMessage = WM_APP + 202;

// Paints invalid pages, then does what doAfterPainting() was asked for.
void workAfterPainting();

// The main window's timer that calls workWhenIdle(). Timers come after all input and painting.
inline constexpr UINT_PTR kIdleTimer = 1;

// Does slices of what doWhenIdle() was asked for until a message waits or nothing is left.
void workWhenIdle();

// Posted to the main window, which calls showWaitingTitle() for it and when asked for its text.
inline constexpr UINT kTitleMessage = WM_APP + 200;

// The position to which the user moved the zoom slider. Bypasses the subclass that fills a waiting
// status bar, since filling it would move the slider back to the previous zoom.
int zoomSliderPosition();

// Sets the main window's waiting title, after painting invalid pages.
void showWaitingTitle();

}  // namespace quillmere::platform
