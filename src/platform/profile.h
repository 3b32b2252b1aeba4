#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Private-profile files: "[section]" lines with "key=value" lines below. Sections and keys are
// compared ignoring case.
namespace quillmere::platform {

// The leading decimal integer of the value as 32 bits, 0 for text without one, `fallback` when the
// key is absent or its value empty.
std::int32_t readProfileInteger(const std::u16string& section, const std::u16string& key,
                                std::int32_t fallback, const std::u16string& path);

// The value cut to `size` - 1 units; empty when absent.
std::u16string readProfileText(const std::u16string& section, const std::u16string& key,
                               std::uint32_t size, const std::u16string& path);

struct ProfileEntry {
  std::u16string key;
  std::u16string value;  // whole, without the blanks and the pair of quotes around it
};

// All keys of a section in the order of the file, with those that occur twice; empty without the
// section. Every call here reads the whole file, so whoever wants several keys asks for all.
std::vector<ProfileEntry> readProfileSection(const std::u16string& section,
                                             const std::u16string& path);

// Replaces or adds the key, making section and file when needed, in the file's own encoding (a new
// file is made in the system's code page). False on failure.
bool writeProfileText(const std::u16string& section, const std::u16string& key,
                      const std::u16string& value, const std::u16string& path);

}  // namespace quillmere::platform
