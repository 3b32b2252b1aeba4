#pragma once

#include <windows.h>

namespace quillmere::e2e {

// Long enough for a loaded machine; a test that passes never waits that long.
constexpr DWORD kPatience = 20000;  // milliseconds

// Polls until `question` returns true; false when time runs out first.
template <typename Question>
bool eventually(Question question, DWORD patience = kPatience) {
  const ULONGLONG end = GetTickCount64() + patience;
  for (;;) {
    if (question()) return true;
    if (GetTickCount64() >= end) return false;
    Sleep(5);
  }
}

// Polls until `read` returns `wanted`. Returns the last value read, for the failure message.
template <typename Read, typename Value>
auto settled(Read read, const Value& wanted, DWORD patience = kPatience) {
  auto last = read();
  eventually([&] { return (last = read()) == wanted; }, patience);
  return last;
}

}  // namespace quillmere::e2e
