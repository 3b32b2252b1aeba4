#include <limits>
#include <memory>
#include <new>

#include "platform/pixels.h"
#include "stand_in_pixels.h"

namespace quillmere::platform {

struct PixelSurface {
  std::unique_ptr<std::uint32_t[]> pixels;
};

namespace {

int made = 0;

}  // namespace

int surfacesMade() {
  return made;
}

PixelSurface* createPixelSurface(int width, int height) {
  if (width < 1 || height < 1) return nullptr;
  const std::int64_t count = std::int64_t{width} * height;
  if (count > std::numeric_limits<std::int32_t>::max() / 4) return nullptr;
  std::unique_ptr<std::uint32_t[]> pixels(new (std::nothrow)
                                              std::uint32_t[static_cast<std::size_t>(count)]());
  if (!pixels) return nullptr;
  ++made;
  return new PixelSurface{std::move(pixels)};
}

// Always refuses, so that a new surface shows a test that a page was rendered again.
bool resizePixelSurface(PixelSurface*, int, int) {
  return false;
}

void destroyPixelSurface(PixelSurface* surface) {
  delete surface;
}

std::uint32_t* pixelsOf(PixelSurface* surface) {
  return surface->pixels.get();
}

}  // namespace quillmere::platform
