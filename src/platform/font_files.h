#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Fonts of the system, to be put into documents.
namespace quillmere::platform {

// A face like Arial that has all characters of the text; Arial where none is known to.
std::u16string faceFor(std::u16string_view text);

// The TrueType file of a face. Empty when the system does not give it away as a file of its own.
std::vector<std::uint8_t> fontFile(const std::u16string& face, bool bold);

}  // namespace quillmere::platform
