#pragma once

#include <string>
#include <string_view>

// Text is UTF-16 everywhere; these are its conversions and comparisons.
namespace quillmere::platform {

// One unit in lower case, by the system's own table. Surrogates stay as they are.
char16_t lowerUnit(char16_t unit);

// Every unit in lower case; the form in which paths serve as keys.
std::u16string toLower(std::u16string_view text);

// Compares as the file system does: unit by unit, ignoring case.
bool equalIgnoringCase(std::u16string_view left, std::u16string_view right);

// UTF-8 of `text`; an unpaired surrogate becomes U+FFFD.
std::string toUtf8(std::u16string_view text);

// UTF-16 of `bytes`; malformed sequences become U+FFFD.
std::u16string fromUtf8(std::string_view bytes);

// True for letters and digits of any script.
bool isLetterOrDigit(char16_t unit);

}  // namespace quillmere::platform
