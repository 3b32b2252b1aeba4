#pragma once

#include <optional>
#include <string>

namespace quillmere::platform {

// Forgets attributes, times and other users of files.
void resetFileBooks();

// All bytes of the file, possibly none; nullopt when it cannot be read.
std::optional<std::string> readForProfile(const std::u16string& path);

}  // namespace quillmere::platform
