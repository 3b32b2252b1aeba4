// The least that a Windows program must do to show a window: the baseline for starting the reader.

#include <windows.h>

namespace {

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_DESTROY) PostQuitMessage(0);
  return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR, int showCommand) {
  WNDCLASSW description{};
  description.lpfnWndProc = procedure;
  description.hInstance = instance;
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
  description.lpszClassName = L"QuillmereEmptyWindow";
  RegisterClassW(&description);
  const HWND window =
      CreateWindowExW(0, description.lpszClassName, L"", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT,
                      CW_USEDEFAULT, 1100, 800, nullptr, nullptr, instance, nullptr);
  ShowWindow(window, showCommand);
  UpdateWindow(window);
  MSG message{};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  return 0;
}
