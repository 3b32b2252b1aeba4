#pragma once

#include <windows.h>

namespace quillmere::platform {

// System fonts for a screen with `dpi` dots per inch. The caller owns the result, which is null on
// failure.
HFONT createMessageFont(int dpi);
// The menu font, its height multiplied by 4 / 3, underlined.
HFONT createPlaceholderFont(int dpi);

}  // namespace quillmere::platform
