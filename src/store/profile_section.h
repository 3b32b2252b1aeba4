#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/profile.h"

namespace quillmere {

// A section of a profile file as it was when this object was made.
class ProfileSection {
 public:
  ProfileSection(const std::u16string& section, const std::u16string& path);

  // As platform::readProfileInteger() and platform::readProfileText().
  std::int32_t integer(std::u16string_view key, std::int32_t fallback) const;
  std::u16string text(std::u16string_view key, std::uint32_t size) const;

  // True when the key is there with this value, so that there is nothing to write.
  bool holds(std::u16string_view key, std::u16string_view value) const;

 private:
  // The first of several with this key; null without one.
  const std::u16string* find(std::u16string_view key) const;

  std::vector<platform::ProfileEntry> entries_;
};

}  // namespace quillmere
