#include "platform/process.h"

#include <windows.h>

#include <process.h>
#include <shellapi.h>

#include <chrono>
#include <memory>
#include <new>

#include "platform/win32/handles.h"
#include "platform/win32/wide.h"

namespace quillmere::platform {
namespace {

constexpr DWORD kExecutablePathUnits = 260;

struct ThreadStart {
  void (*work)(void* context);
  void* context;
};

unsigned __stdcall runThread(void* parameter) {
  const std::unique_ptr<ThreadStart> start(static_cast<ThreadStart*>(parameter));
  start->work(start->context);
  return 0;
}

}  // namespace

struct Event {
  KernelHandle handle;
};

std::u16string executablePath() {
  wchar_t path[kExecutablePathUnits] = {};
  const DWORD length = GetModuleFileNameW(nullptr, path, kExecutablePathUnits);
  if (length == 0 || length >= kExecutablePathUnits) return {};
  return fromWide({path, length});
}

bool startProcess(const std::u16string& program, const std::u16string& commandLine) {
  std::u16string writable = commandLine;  // because the system writes into it
  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process{};
  if (!CreateProcessW(wide(program), wideBuffer(writable), nullptr, nullptr, FALSE, 0, nullptr,
                      nullptr, &startup, &process)) {
    return false;
  }
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return true;
}

bool openWithSystem(const std::u16string& target) {
  const ComApartment apartment;
  SHELLEXECUTEINFOW request{};
  request.cbSize = sizeof request;
  request.fMask = SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;  // the COM apartment ends with this call
  request.lpVerb = L"open";
  request.lpFile = wide(target);
  request.nShow = SW_SHOWNORMAL;
  return ShellExecuteExW(&request) != 0;
}

std::uint64_t monotonicMilliseconds() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return static_cast<std::uint64_t>(
      std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
}

void sleepMilliseconds(std::uint32_t milliseconds) {
  Sleep(milliseconds);
}

std::uint32_t localDate() {
  SYSTEMTIME now{};
  GetLocalTime(&now);
  return now.wYear * 10000u + now.wMonth * 100u + now.wDay;
}

Event* createEvent() {
  KernelHandle handle(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  return handle ? new (std::nothrow) Event{std::move(handle)} : nullptr;
}

void signalEvent(Event* event) {
  SetEvent(event->handle.get());
}

bool waitForEvent(Event* event, std::uint32_t timeoutMilliseconds) {
  return WaitForSingleObject(event->handle.get(), timeoutMilliseconds) == WAIT_OBJECT_0;
}

void closeEvent(Event* event) {
  delete event;
}

bool startDetachedThread(void (*work)(void* context), void* context) {
  auto* start = new (std::nothrow) ThreadStart{work, context};
  if (start == nullptr) return false;
  const std::uintptr_t thread = _beginthreadex(nullptr, 0, runThread, start, 0, nullptr);
  if (thread == 0) {
    delete start;
    return false;
  }
  CloseHandle(reinterpret_cast<HANDLE>(thread));
  return true;
}

}  // namespace quillmere::platform
