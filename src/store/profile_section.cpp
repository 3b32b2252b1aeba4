#include "store/profile_section.h"

#include <algorithm>

#include "platform/leading_integer.h"
#include "platform/text.h"

namespace quillmere {

namespace {

// A number is read from this many units of its value, the terminator included.
constexpr std::uint32_t kIntegerUnits = 64;

}  // namespace

ProfileSection::ProfileSection(const std::u16string& section, const std::u16string& path)
    : entries_(platform::readProfileSection(section, path)) {}

std::int32_t ProfileSection::integer(std::u16string_view key, std::int32_t fallback) const {
  const std::u16string value = text(key, kIntegerUnits);
  return value.empty() ? fallback : platform::leadingInteger(value);
}

std::u16string ProfileSection::text(std::u16string_view key, std::uint32_t size) const {
  const std::u16string* value = find(key);
  return value == nullptr || size == 0 ? std::u16string() : value->substr(0, size - 1);
}

bool ProfileSection::holds(std::u16string_view key, std::u16string_view value) const {
  const std::u16string* stored = find(key);
  return stored != nullptr && *stored == value;
}

const std::u16string* ProfileSection::find(std::u16string_view key) const {
  const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const auto& entry) {
    return platform::equalIgnoringCase(entry.key, key);
  });
  return found == entries_.end() ? nullptr : &found->value;
}

}  // namespace quillmere
