#pragma once

#include <string>
#include <string_view>

// How the bytes of a private-profile file encode text.
namespace quillmere::platform {

enum class ProfileEncoding {
  Utf16,     // little-endian, after the mark FF FE
  CodePage,  // Windows-1252, without a mark
};

ProfileEncoding profileEncodingOf(std::string_view bytes);

std::u16string decodeProfile(std::string_view bytes, ProfileEncoding encoding);

// Includes the encoding's mark, if it has one. Units outside the code page become "?".
std::string encodeProfile(std::u16string_view text, ProfileEncoding encoding);

}  // namespace quillmere::platform
