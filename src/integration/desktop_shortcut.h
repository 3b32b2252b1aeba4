#pragma once

namespace quillmere {

// Puts a shortcut to this program on the user's desktop. False on failure.
bool createDesktopShortcut();

}  // namespace quillmere
