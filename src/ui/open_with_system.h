#pragma once

#include <string>

namespace quillmere {

// Opens an address with its default program; false on failure. The system handles messages of this
// program meanwhile, so documents that others ask to open wait.
bool openWithSystem(const std::u16string& target);

}  // namespace quillmere
