#pragma once

#include <windows.h>

#include "driver/wait.h"

namespace quillmere::e2e {

// Another program's window, which the tests themselves show.
class OtherWindow {
 public:
  OtherWindow()
      : window_(CreateWindowExW(0, L"STATIC", L"Other", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200,
                                100, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr)) {}
  ~OtherWindow() { DestroyWindow(window_); }
  OtherWindow(const OtherWindow&) = delete;
  OtherWindow& operator=(const OtherWindow&) = delete;

  bool comesToFront() const {
    return eventually([&] {
      MSG message;
      while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
      SetForegroundWindow(window_);
      return GetForegroundWindow() == window_;
    });
  }

 private:
  HWND window_;
};

}  // namespace quillmere::e2e
