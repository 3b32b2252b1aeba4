#pragma once

#include <cstdint>
#include <memory>

namespace quillmere::platform {

// A top-down picture of 32 bits a pixel (blue, green, red, unused) that the window can copy from
// and PDFium can write into. Rows follow each other without padding.
struct PixelSurface;

// Null when a side is below 1 or memory ran out.
PixelSurface* createPixelSurface(int width, int height);
void destroyPixelSurface(PixelSurface* surface);
// Resizes the surface and leaves its pixels undefined. False, with nothing changed, when its memory
// is too small or far too large for the new size; make a new surface then.
bool resizePixelSurface(PixelSurface* surface, int width, int height);
// First pixel of the top row; valid until the surface is destroyed or resized.
std::uint32_t* pixelsOf(PixelSurface* surface);

struct PixelSurfaceDeleter {
  void operator()(PixelSurface* surface) const { destroyPixelSurface(surface); }
};
using PixelSurfaceHandle = std::unique_ptr<PixelSurface, PixelSurfaceDeleter>;

}  // namespace quillmere::platform
