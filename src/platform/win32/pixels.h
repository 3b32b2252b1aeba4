#pragma once

#include <windows.h>

#include "platform/pixels.h"

namespace quillmere::platform {

// Copies the whole surface into a device context, its top left corner to x, y.
void copySurface(const PixelSurface* surface, HDC dc, int x, int y);

}  // namespace quillmere::platform
