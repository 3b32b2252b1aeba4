#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// System fonts, for embedding in documents.
namespace quillmere::platform {

// A face like Arial that has all characters of the text; Arial when no known face has them.
std::u16string faceFor(std::u16string_view text);

// The TrueType file of a face; empty when the system does not offer it as a file of its own.
std::vector<std::uint8_t> fontFile(const std::u16string& face, bool bold);

}  // namespace quillmere::platform
