#pragma once

#include <windows.h>

#include "platform/pixels.h"

namespace quillmere::platform {

// The section behind a surface, for selecting into a device context; still owned by the surface.
HBITMAP bitmapOf(const PixelSurface* surface);

}  // namespace quillmere::platform
