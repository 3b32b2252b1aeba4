#pragma once

#include <string>

namespace quillmere::platform {

// The same path in a form that the system takes at any length; a path of usual length comes back as
// it is.
std::u16string longPath(const std::u16string& path);

}  // namespace quillmere::platform
