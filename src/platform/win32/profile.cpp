#include "platform/profile.h"

#include <windows.h>

#include "platform/leading_integer.h"
#include "platform/win32/read_only.h"
#include "platform/win32/wide.h"

namespace quillmere::platform {
namespace {

constexpr std::uint32_t kIntegerUnits = 64;

// Whether the key exists and already has this value. The system rewrites the whole file for every
// write, and the lists alone are some twenty keys that seldom change.
bool alreadyReads(const std::u16string& section, const std::u16string& key,
                  const std::u16string& value, const std::u16string& path) {
  constexpr const wchar_t* kAbsent = L"\x01";
  std::u16string found(value.size() + 2, u'\0');  // long enough to notice a longer value
  const DWORD length =
      GetPrivateProfileStringW(wide(section), wide(key), kAbsent, wideBuffer(found),
                               static_cast<DWORD>(found.size()), wide(path));
  found.resize(length);
  return found == value;
}

}  // namespace

std::int32_t readProfileInteger(const std::u16string& section, const std::u16string& key,
                                std::int32_t fallback, const std::u16string& path) {
  // The system's own integer call would read "0x10" and the like in other bases.
  const std::u16string value = readProfileText(section, key, kIntegerUnits, path);
  return value.empty() ? fallback : leadingInteger(value);
}

std::u16string readProfileText(const std::u16string& section, const std::u16string& key,
                               std::uint32_t size, const std::u16string& path) {
  if (size == 0) return {};
  std::u16string value(size, u'\0');
  const DWORD length =
      GetPrivateProfileStringW(wide(section), wide(key), L"", wideBuffer(value), size, wide(path));
  value.resize(length);
  return value;
}

bool writeProfileText(const std::u16string& section, const std::u16string& key,
                      const std::u16string& value, const std::u16string& path) {
  if (alreadyReads(section, key, value, path)) return true;
  return !isReadOnlyFile(path) &&
         WritePrivateProfileStringW(wide(section), wide(key), wide(value), wide(path)) != 0;
}

}  // namespace quillmere::platform
