#include <windows.h>

#include <psapi.h>
#include <winternl.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

#include "footprint.h"

namespace quillmere::bench {

namespace {

// Where the table of a process's GDI handles is.
constexpr std::uintptr_t kGdiTableInEnvironmentBlock = 0xF8;
constexpr int kGdiTableLength = 0x4000;
struct GdiTableEntry {
  std::uint64_t object;
  std::uint32_t owner;
  std::uint16_t unique;
  std::uint8_t type;  // 0 for a free entry
  std::uint8_t flags;
  std::uint64_t userPointer;
};

constexpr auto kSystemHandleInformation = static_cast<SYSTEM_INFORMATION_CLASS>(16);
struct SystemHandle {
  std::uint32_t owner;
  std::uint8_t objectType;
  std::uint8_t flags;
  std::uint16_t value;
  void* object;
  std::uint32_t access;
};
constexpr std::size_t kHandlesOffset = 8;
constexpr std::size_t kMostHandles = 65536;

double mebibytes(SIZE_T bytes) {
  return static_cast<double>(bytes) / (1024.0 * 1024.0);
}

template <typename Function>
Function systemFunction(const char* name) {
  return reinterpret_cast<Function>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), name)));
}

int countGdiObjects() {
  PROCESS_BASIC_INFORMATION basic{};
  const auto query =
      systemFunction<NTSTATUS(NTAPI*)(HANDLE, PROCESSINFOCLASS, PVOID, ULONG, PULONG)>(
          "NtQueryInformationProcess");
  query(GetCurrentProcess(), ProcessBasicInformation, &basic, sizeof(basic), nullptr);
  const auto block = reinterpret_cast<std::uintptr_t>(basic.PebBaseAddress);
  const auto* table =
      *reinterpret_cast<const GdiTableEntry* const*>(block + kGdiTableInEnvironmentBlock);
  if (table == nullptr) return 0;
  return static_cast<int>(std::count_if(
      table, table + kGdiTableLength, [](const GdiTableEntry& entry) { return entry.type != 0; }));
}

BOOL CALLBACK countWindow(HWND window, LPARAM count) {
  ++*reinterpret_cast<int*>(count);
  EnumChildWindows(
      window,
      [](HWND, LPARAM childCount) {
        ++*reinterpret_cast<int*>(childCount);
        return TRUE;
      },
      count);
  return TRUE;
}

int countWindows() {
  int count = 0;
  EnumThreadWindows(GetCurrentThreadId(), countWindow, reinterpret_cast<LPARAM>(&count));
  return count;
}

int countHandles() {
  const auto query =
      systemFunction<NTSTATUS(NTAPI*)(SYSTEM_INFORMATION_CLASS, PVOID, ULONG, PULONG)>(
          "NtQuerySystemInformation");
  std::vector<std::uint8_t> buffer(kHandlesOffset + kMostHandles * sizeof(SystemHandle));
  const auto size = static_cast<ULONG>(buffer.size());
  if (query(kSystemHandleInformation, buffer.data(), size, nullptr) != 0) return 0;
  std::uint32_t count = 0;
  std::memcpy(&count, buffer.data(), sizeof(count));
  const auto* handles = reinterpret_cast<const SystemHandle*>(buffer.data() + kHandlesOffset);
  const DWORD self = GetCurrentProcessId();
  return static_cast<int>(std::count_if(
      handles, handles + count, [self](const SystemHandle& entry) { return entry.owner == self; }));
}

}  // namespace

Memory memory() {
  return memoryOf(GetCurrentProcess());
}

Memory memoryOf(void* process) {
  PROCESS_MEMORY_COUNTERS counters{};
  counters.cb = sizeof(counters);
  GetProcessMemoryInfo(process, &counters, sizeof(counters));
  return {mebibytes(counters.WorkingSetSize), mebibytes(counters.PeakWorkingSetSize)};
}

OpenObjects openObjects() {
  return {countGdiObjects(), countWindows(), countHandles()};
}

}  // namespace quillmere::bench
