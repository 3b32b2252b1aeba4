#include "app/main_window.h"

#include <windows.h>

#include <algorithm>

#include "app/main_window_messages.h"
#include "app/mouse.h"
#include "app/window_placement.h"
#include "base/product.h"
#include "platform/instances.h"
#include "platform/win32/main_window.h"
#include "platform/win32/sized.h"
#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"
#include "session/session.h"
#include "ui/menu_work.h"
#include "view/geometry.h"

namespace quillmere {

using platform::windowHandles;

namespace {

constexpr int kIconResource = 1;
constexpr const wchar_t* kAcceleratorTable = L"APPACCEL";

const wchar_t* windowClassName() {
  return platform::wide(session.viewerRole ? kViewerWindowClass : kMainWindowClass);
}

HICON loadIcon(int widthMetric, int heightMetric) {
  return static_cast<HICON>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(kIconResource),
                                       IMAGE_ICON, GetSystemMetrics(widthMetric),
                                       GetSystemMetrics(heightMetric), LR_SHARED));
}

HICON bigIcon() {
  return loadIcon(SM_CXICON, SM_CYICON);
}
HICON smallIcon() {
  return loadIcon(SM_CXSMICON, SM_CYSMICON);
}

LRESULT CALLBACK mainWindowProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  // Messages that arrive while the window is being created already ask for its handle.
  if (message == WM_NCCREATE) windowHandles.main = window;
  noteMenuMessage(window, message);
  const std::span<const MessageHandler> handlers = mainWindowHandlers();
  const auto found = std::find_if(handlers.begin(), handlers.end(), [&](const MessageHandler& row) {
    return row.message == message;
  });
  if (found != handlers.end()) {
    const std::optional<LRESULT> result = found->handle(wParam, lParam);
    // Another program may read the title as soon as its message is answered.
    if (InSendMessage()) platform::showWaitingTitle();
    if (result) return *result;
  }
  return DefWindowProcW(window, message, wParam, lParam);
}

InitialPlacement initialPlacement() {
  session.dpi = static_cast<std::int32_t>(GetDpiForSystem());
  if (session.viewerRole) return viewerInitialPlacement(viewerSurroundings());
  return mainWindowInitialPlacement(platform::primaryWorkArea());
}

bool isShift(const MSG& message) {
  const bool key = message.message == WM_KEYDOWN || message.message == WM_KEYUP;
  return key && message.wParam == VK_SHIFT;
}

void loadAcceleratorsAndIcons() {
  windowHandles.accelerators = LoadAcceleratorsW(GetModuleHandleW(nullptr), kAcceleratorTable);
  const auto big = reinterpret_cast<LPARAM>(bigIcon());
  SendMessageW(windowHandles.main, WM_SETICON, ICON_BIG, big);
  SendMessageW(windowHandles.main, WM_SETICON, ICON_SMALL2, big);
  SendMessageW(windowHandles.main, WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(smallIcon()));
}

}  // namespace

bool registerMainWindowClass() {
  auto description = platform::sized<WNDCLASSEXW>();
  description.style = CS_HREDRAW | CS_VREDRAW | CS_DBLCLKS;
  description.lpfnWndProc = mainWindowProcedure;
  description.hInstance = GetModuleHandleW(nullptr);
  description.hIcon = bigIcon();
  description.hIconSm = smallIcon();
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.lpszClassName = windowClassName();
  return RegisterClassExW(&description) != 0;
}

bool createMainWindow() {
  const InitialPlacement placement = initialPlacement();
  const int x = placement.positioned ? placement.x : CW_USEDEFAULT;
  const int y = placement.positioned ? placement.y : CW_USEDEFAULT;
  const char16_t* title = session.viewerRole ? kViewerTitle : kProductTitle;
  return CreateWindowExW(WS_EX_ACCEPTFILES, windowClassName(), platform::wide(title),
                         WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, x, y, placement.width,
                         placement.height, nullptr, nullptr, GetModuleHandleW(nullptr),
                         nullptr) != nullptr;
}

void showMainWindow(int showCommand) {
  const bool maximised = session.settings.windowMaximised && !session.viewerRole;
  ShowWindow(windowHandles.main, maximised ? SW_SHOWMAXIMIZED : showCommand);
  UpdateWindow(windowHandles.main);
  loadAcceleratorsAndIcons();
}

// A modeless dialog keeps its Tab and Enter; accelerators get what no dialog takes.
bool takenBeforeDispatch(MSG& message) {
  if (isShift(message)) shiftChanged();
  for (const HWND dialog : windowHandles.dialogs) {
    if (dialog != nullptr && IsDialogMessageW(dialog, &message)) return true;
  }
  return TranslateAcceleratorW(windowHandles.main, windowHandles.accelerators, &message) != 0;
}

int runMessageLoop() {
  MSG message{};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (takenBeforeDispatch(message)) continue;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return static_cast<int>(message.wParam);
}

}  // namespace quillmere
