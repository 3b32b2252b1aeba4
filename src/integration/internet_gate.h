#pragma once

#include <string>

namespace quillmere {

// True when the file may be opened: it does not come from the Internet, or the user said yes.
bool CheckInternetZone(const std::u16string& path);

}  // namespace quillmere
