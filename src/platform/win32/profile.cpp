#include "platform/profile.h"

#include <windows.h>

#include <algorithm>
#include <string_view>

#include "platform/leading_integer.h"
#include "platform/win32/read_only.h"
#include "platform/win32/wide.h"

namespace quillmere::platform {
namespace {

constexpr std::uint32_t kIntegerUnits = 64;
constexpr std::size_t kSectionUnits = 4096;  // more than a section usually has

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

// Lines "key=value" with a null unit after each.
std::u16string sectionLines(const std::u16string& section, const std::u16string& path) {
  constexpr DWORD kTerminators = 2;  // what the system leaves free where the lines do not fit
  std::u16string lines(kSectionUnits, u'\0');
  for (;;) {
    const auto size = static_cast<DWORD>(lines.size());
    const DWORD used =
        GetPrivateProfileSectionW(wide(section), wideBuffer(lines), size, wide(path));
    if (used + kTerminators < size) {
      lines.resize(used);
      return lines;
    }
    lines.resize(lines.size() * 2);
  }
}

std::u16string_view withoutBlanks(std::u16string_view text) {
  constexpr std::u16string_view kBlanks = u" \t\n\v\f\r";
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::u16string_view withoutQuotes(std::u16string_view value) {
  const bool quoted = value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') &&
                      value.back() == value.front();
  return quoted ? value.substr(1, value.size() - 2) : value;
}

ProfileEntry entryOf(std::u16string_view line) {
  const std::size_t equals = line.find(u'=');
  const std::u16string_view value = equals == line.npos ? u"" : line.substr(equals + 1);
  return {std::u16string(withoutBlanks(line.substr(0, equals))),
          std::u16string(withoutQuotes(withoutBlanks(value)))};
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

std::vector<ProfileEntry> readProfileSection(const std::u16string& section,
                                             const std::u16string& path) {
  const std::u16string lines = sectionLines(section, path);
  std::vector<ProfileEntry> entries;
  for (std::u16string_view left = lines; !left.empty();) {
    const std::u16string_view line = left.substr(0, left.find(u'\0'));
    if (const ProfileEntry entry = entryOf(line); !entry.key.starts_with(u';')) {
      entries.push_back(entry);
    }
    left.remove_prefix(std::min(line.size() + 1, left.size()));
  }
  return entries;
}

bool writeProfileText(const std::u16string& section, const std::u16string& key,
                      const std::u16string& value, const std::u16string& path) {
  if (alreadyReads(section, key, value, path)) return true;
  return !isReadOnlyFile(path) &&
         WritePrivateProfileStringW(wide(section), wide(key), wide(value), wide(path)) != 0;
}

}  // namespace quillmere::platform
