#pragma once

#include <cstdint>
#include <string_view>

namespace quillmere::platform {

// The decimal integer at the start of `text`, after blanks and an optional sign, truncated to 32
// bits; 0 when there is none.
inline std::int32_t leadingInteger(std::u16string_view text) {
  std::size_t at = 0;
  while (at < text.size() && text[at] <= u' ') ++at;
  const bool negative = at < text.size() && text[at] == u'-';
  if (negative || (at < text.size() && text[at] == u'+')) ++at;
  std::uint32_t number = 0;
  for (; at < text.size() && text[at] >= u'0' && text[at] <= u'9'; ++at) {
    number = number * 10 + (text[at] - u'0');
  }
  return static_cast<std::int32_t>(negative ? 0 - number : number);
}

}  // namespace quillmere::platform
