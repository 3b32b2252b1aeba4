#include "platform/instances.h"

#include <windows.h>

#include "platform/win32/wide.h"

namespace quillmere::platform {
namespace {

constexpr int kClassNameUnits = 64;

// The mutex of the latest claim.
HANDLE claimedMutex = nullptr;

HWND windowOf(WindowId window) {
  return reinterpret_cast<HWND>(window);
}

ScreenRect screenRect(const RECT& rect) {
  return {rect.left, rect.top, rect.right, rect.bottom};
}

std::optional<ScreenRect> workAreaOf(HMONITOR monitor) {
  MONITORINFO info{};
  info.cbSize = sizeof info;
  if (!GetMonitorInfoW(monitor, &info)) return std::nullopt;
  return screenRect(info.rcWork);
}

ScreenRect systemWorkArea() {
  RECT area{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
  return screenRect(area);
}

struct ClassWalk {
  const std::u16string* className;
  int count;
  bool close;
};

BOOL CALLBACK visitWindow(HWND window, LPARAM parameter) {
  auto* walk = reinterpret_cast<ClassWalk*>(parameter);
  wchar_t name[kClassNameUnits] = {};
  const int length = GetClassNameW(window, name, kClassNameUnits);
  if (length <= 0 || fromWide({name, static_cast<std::size_t>(length)}) != *walk->className) {
    return TRUE;
  }
  ++walk->count;
  if (walk->close) PostMessageW(window, WM_CLOSE, 0, 0);
  return TRUE;
}

int walkWindows(const std::u16string& className, bool close) {
  ClassWalk walk{&className, 0, close};
  EnumWindows(visitWindow, reinterpret_cast<LPARAM>(&walk));
  return walk.count;
}

}  // namespace

MutexClaim claimPrimaryMutex(const std::u16string& name) {
  SetLastError(ERROR_SUCCESS);
  const HANDLE mutex = CreateMutexW(nullptr, TRUE, wide(name));
  const bool exists = GetLastError() == ERROR_ALREADY_EXISTS;
  if (mutex == nullptr) return MutexClaim::Unavailable;
  claimedMutex = mutex;
  return exists ? MutexClaim::AlreadyExists : MutexClaim::Owned;
}

void closePrimaryMutex() {
  if (claimedMutex != nullptr) CloseHandle(claimedMutex);
  claimedMutex = nullptr;
}

WindowId findTopWindow(const std::u16string& className) {
  return reinterpret_cast<WindowId>(FindWindowW(wide(className), nullptr));
}

void raiseWindow(WindowId window) {
  if (IsIconic(windowOf(window))) ShowWindow(windowOf(window), SW_RESTORE);
  SetForegroundWindow(windowOf(window));
}

void sendPathToWindow(WindowId window, std::uint32_t tag, const std::u16string& path) {
  std::u16string units = path;
  COPYDATASTRUCT data{};
  data.dwData = tag;
  data.cbData = static_cast<DWORD>(2 * units.size() + 2);
  data.lpData = units.data();
  SendMessageW(windowOf(window), WM_COPYDATA, 0, reinterpret_cast<LPARAM>(&data));
}

int countTopWindows(const std::u16string& className) {
  return walkWindows(className, false);
}

void closeTopWindows(const std::u16string& className) {
  walkWindows(className, true);
}

std::optional<ScreenRect> visibleWindowRect(WindowId window) {
  RECT rect{};
  if (IsIconic(windowOf(window)) || !GetWindowRect(windowOf(window), &rect)) return std::nullopt;
  return screenRect(rect);
}

ScreenRect workAreaOfWindow(WindowId window) {
  const HMONITOR monitor = MonitorFromWindow(windowOf(window), MONITOR_DEFAULTTONEAREST);
  return workAreaOf(monitor).value_or(systemWorkArea());
}

std::optional<ScreenRect> workAreaNearest(const ScreenRect& rect) {
  const RECT wanted{rect.left, rect.top, rect.right, rect.bottom};
  return workAreaOf(MonitorFromRect(&wanted, MONITOR_DEFAULTTONEAREST));
}

ScreenRect primaryWorkArea() {
  const HMONITOR monitor = MonitorFromPoint(POINT{0, 0}, MONITOR_DEFAULTTOPRIMARY);
  return workAreaOf(monitor).value_or(systemWorkArea());
}

int captionHeight() {
  return GetSystemMetrics(SM_CYCAPTION);
}

}  // namespace quillmere::platform
