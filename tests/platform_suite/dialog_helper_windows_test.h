#pragma once

#include <windows.h>

#include <atomic>
#include <functional>
#include <string>
#include <thread>

// A helper for tests that show a real box or dialog: a thread that waits for it and answers it.
namespace quillmere::platform {

// Waits up to half a minute, while it exists, for a visible window of this process with that class
// and title, and passes it to `answer` once.
class DialogAnswerer {
 public:
  DialogAnswerer(std::wstring className, std::wstring title, std::function<void(HWND)> answer);
  ~DialogAnswerer();
  DialogAnswerer(const DialogAnswerer&) = delete;
  DialogAnswerer& operator=(const DialogAnswerer&) = delete;

  bool answered() const { return answered_; }

 private:
  void run();

  std::wstring className_;
  std::wstring title_;
  std::function<void(HWND)> answer_;
  std::atomic<bool> stop_{false};
  std::atomic<bool> answered_{false};
  std::thread thread_;
};

// The text of a window of this or another thread.
std::wstring textOfWindow(HWND window);

}  // namespace quillmere::platform
