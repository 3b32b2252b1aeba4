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
// First pixel of the top row; valid until the surface goes.
std::uint32_t* pixelsOf(PixelSurface* surface);

struct PixelSurfaceDeleter {
  void operator()(PixelSurface* surface) const { destroyPixelSurface(surface); }
};
using PixelSurfaceHandle = std::unique_ptr<PixelSurface, PixelSurfaceDeleter>;

}  // namespace quillmere::platform
