#pragma once

#include <string>
#include <string_view>

namespace quillmere {

// The system opens no longer address, in UTF-16 units.
inline constexpr std::size_t kLongestAddress = 2048;

// What to hand to the system for a link's address: a web or mail address in which quotes, blanks
// and control characters are percent-encoded, so that no program takes it for more than one
// argument. Everything else stays as it is; non-ASCII characters are left for the browser to
// encode. Empty for any other address and for one that is too long once it is encoded.
std::u16string openableAddress(std::u16string_view address);

}  // namespace quillmere
