#pragma once

#include <string>
#include <string_view>

// The one place that casts between the system's wide characters and UTF-16 units.
namespace quillmere::platform {

static_assert(sizeof(wchar_t) == sizeof(char16_t));

// The same units, with their terminator; valid until `text` changes.
inline const wchar_t* wide(const std::u16string& text) {
  return reinterpret_cast<const wchar_t*>(text.c_str());
}

// For literals and other terminated text. The deleted overload rejects temporaries, whose pointer
// would dangle.
inline const wchar_t* wide(const char16_t* text) {
  return reinterpret_cast<const wchar_t*>(text);
}
const wchar_t* wide(std::u16string&& text) = delete;

// For calls that fill the text; `text` must be large enough already.
inline wchar_t* wideBuffer(std::u16string& text) {
  return reinterpret_cast<wchar_t*>(text.data());
}

// Units without a terminator; pass their number with them.
inline const wchar_t* wideUnits(std::u16string_view text) {
  return reinterpret_cast<const wchar_t*>(text.data());
}

inline std::u16string fromWide(std::wstring_view text) {
  return std::u16string(reinterpret_cast<const char16_t*>(text.data()), text.size());
}

}  // namespace quillmere::platform
