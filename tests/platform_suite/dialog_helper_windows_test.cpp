#include "platform_suite/dialog_helper_windows_test.h"

#include <chrono>
#include <utility>

namespace quillmere::platform {
namespace {

constexpr auto kPatience = std::chrono::seconds(30);
constexpr DWORD kPause = 20;  // milliseconds

HWND findOwnWindow(const std::wstring& className, const std::wstring& title) {
  HWND window = nullptr;
  while ((window = FindWindowExW(nullptr, window, className.c_str(), title.c_str())) != nullptr) {
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    if (process == GetCurrentProcessId() && IsWindowVisible(window)) return window;
  }
  return nullptr;
}

}  // namespace

DialogAnswerer::DialogAnswerer(std::wstring className, std::wstring title,
                               std::function<void(HWND)> answer)
    : className_(std::move(className)),
      title_(std::move(title)),
      answer_(std::move(answer)),
      thread_([this] { run(); }) {}

DialogAnswerer::~DialogAnswerer() {
  stop_ = true;
  thread_.join();
}

void DialogAnswerer::run() {
  const auto limit = std::chrono::steady_clock::now() + kPatience;
  while (!stop_ && std::chrono::steady_clock::now() < limit) {
    const HWND window = findOwnWindow(className_, title_);
    if (window != nullptr) {
      answer_(window);
      answered_ = true;
      return;
    }
    Sleep(kPause);
  }
}

std::wstring textOfWindow(HWND window) {
  wchar_t text[1024] = {};
  SendMessageW(window, WM_GETTEXT, std::size(text), reinterpret_cast<LPARAM>(text));
  return text;
}

}  // namespace quillmere::platform
