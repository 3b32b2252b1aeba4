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
// Gives the surface another size and leaves its pixels undefined. False, with nothing changed, when
// a new surface should take its place: its memory may be too small for that, or far too large.
bool resizePixelSurface(PixelSurface* surface, int width, int height);
// First pixel of the top row; valid until the surface goes or changes its size.
std::uint32_t* pixelsOf(PixelSurface* surface);

struct PixelSurfaceDeleter {
  void operator()(PixelSurface* surface) const { destroyPixelSurface(surface); }
};
using PixelSurfaceHandle = std::unique_ptr<PixelSurface, PixelSurfaceDeleter>;

}  // namespace quillmere::platform
