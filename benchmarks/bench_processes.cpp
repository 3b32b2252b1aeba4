// Starts the reader and the smallest comparable programs, and reports how long each takes until its
// window is painted and it waits for the user, and how much memory it then uses.
//
// Usage: bench_processes DOCUMENT...    next to quillmere.exe, with no other reader running

#include <windows.h>

#include <cstdio>
#include <string>

#include "footprint.h"
#include "platform/text.h"
#include "platform/win32/wide.h"
#include "reader_window.h"
#include "samples.h"

namespace quillmere::bench {
namespace {

constexpr int kStarts = 9;
constexpr DWORD kPatience = 30000;  // milliseconds

struct Started {
  double milliseconds = 0;
  Memory memory;
};

std::wstring ownFolder() {
  wchar_t path[MAX_PATH];
  const DWORD length = GetModuleFileNameW(nullptr, path, MAX_PATH);
  const std::wstring whole(path, length);
  return whole.substr(0, whole.find_last_of(L'\\') + 1);
}

BOOL CALLBACK keepVisibleWindow(HWND window, LPARAM found) {
  if (!IsWindowVisible(window)) return TRUE;
  *reinterpret_cast<HWND*>(found) = window;
  return FALSE;
}

HWND windowOf(DWORD thread) {
  HWND window = nullptr;
  EnumThreadWindows(thread, keepVisibleWindow, reinterpret_cast<LPARAM>(&window));
  return window;
}

// A program counts as waiting for its user once it has nothing left to paint.
bool waitUntilPainted(const PROCESS_INFORMATION& process) {
  if (WaitForInputIdle(process.hProcess, kPatience) != 0) return false;
  const HWND window = windowOf(process.dwThreadId);
  return window != nullptr && !GetUpdateRect(window, nullptr, FALSE);
}

void end(const PROCESS_INFORMATION& process) {
  if (const HWND window = windowOf(process.dwThreadId)) PostMessageW(window, WM_CLOSE, 0, 0);
  if (WaitForSingleObject(process.hProcess, kPatience) != WAIT_OBJECT_0) {
    TerminateProcess(process.hProcess, 1);
  }
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
}

bool start(const wchar_t* program, const std::wstring& argument, Started& started) {
  std::wstring line = L'"' + ownFolder() + program + L'"';
  if (!argument.empty()) line += L' ' + argument;
  STARTUPINFOW info{};
  info.cb = sizeof(info);
  PROCESS_INFORMATION process{};
  const Stopwatch watch;
  if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &info,
                      &process)) {
    std::fprintf(stderr, "%ls did not start.\n", program);
    return false;
  }
  const bool painted = waitUntilPainted(process);
  started.milliseconds = watch.milliseconds();
  started.memory = memoryOf(process.hProcess);
  end(process);
  if (!painted) std::fprintf(stderr, "%ls did not paint its window.\n", program);
  return painted;
}

bool compareEmpty() {
  for (int i = -1; i < kStarts; ++i) {
    Started ours;
    Started theirs;
    if (!start(L"quillmere.exe", L"", ours)) return false;
    if (!start(L"bench_empty_window.exe", L"", theirs)) return false;
    if (i < 0) continue;
    reportPair("start", "", ours.milliseconds, theirs.milliseconds);
    reportPair("start-memory", "", ours.memory.peakWorkingSet, theirs.memory.peakWorkingSet);
  }
  return true;
}

bool compareWithDocument(const std::string& path) {
  const std::string name = documentName(path);
  const std::u16string wholePath = platform::fromUtf8(path);
  const std::wstring argument = platform::wide(wholePath);
  for (int i = -1; i < kStarts; ++i) {
    Started ours;
    Started theirs;
    if (!start(L"quillmere.exe", argument, ours)) return false;
    if (!start(L"bench_plain_window.exe", argument, theirs)) return false;
    if (i < 0) continue;
    reportPair("start-with-document", name, ours.milliseconds, theirs.milliseconds);
    reportPair("memory", name, ours.memory.peakWorkingSet, theirs.memory.peakWorkingSet);
  }
  return true;
}

int run(int argc, char** argv) {
  prepareSettings();
  if (!compareEmpty()) return 1;
  for (int i = 1; i < argc; ++i) {
    if (!compareWithDocument(argv[i])) return 1;
  }
  return 0;
}

}  // namespace
}  // namespace quillmere::bench

int main(int argc, char** argv) {
  return quillmere::bench::run(argc, argv);
}
