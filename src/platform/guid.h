#pragma once

#include <string>

namespace quillmere::platform {

// A name that is unique everywhere: 36 units, lower-case hexadecimal digits in groups of 8, 4, 4, 4
// and 12 with a hyphen between them. Empty when the system cannot make one.
std::u16string newGuid();

}  // namespace quillmere::platform
