#include "annot/stamp_pictures.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "annot/stamp_library.h"
#include "platform/files.h"
#include "session/density.h"
#include "session/session.h"

namespace quillmere {

namespace {

// What is drawn over a page is a copy of at most this many pixels: whole pictures would take
// gigabytes, and seconds to draw.
constexpr double kMostDrawnPixels = 2 << 20;
constexpr int kBytesPerPixel = 4;

PictureSize shrunk(const platform::Picture& picture, double factor) {
  const auto side = [&](int length) {
    return std::max(1, static_cast<std::int32_t>(std::lround(length * factor)));
  };
  return {side(picture.width), side(picture.height)};
}

}  // namespace

std::optional<PictureSize> stampPictureSize(const std::u16string& path) {
  const auto head = platform::readFileHead(path, kPngHeadBytes);
  if (!head) return std::nullopt;
  if (const auto size = pngSize(*head)) return size;
  const platform::SharedPicture picture = platform::loadPicture(path);
  if (!picture) return std::nullopt;
  return PictureSize{picture->width, picture->height};
}

platform::SharedPicture stampBitmap(std::int32_t index) {
  if (!isStampIndex(index)) return nullptr;
  StampEntry& entry = session.stampLibrary[static_cast<std::size_t>(index)];
  if (entry.bitmap) return entry.bitmap;
  const platform::SharedPicture picture = platform::loadPicture(entry.path);
  entry.bitmap = picture ? quickToDraw(picture) : entry.thumbnail;
  return entry.bitmap;
}

platform::SharedPicture quickToDraw(const platform::SharedPicture& picture) {
  const double pixels = static_cast<double>(picture->width) * picture->height;
  if (pixels <= kMostDrawnPixels) return picture;
  return scaledDown(*picture, shrunk(*picture, std::sqrt(kMostDrawnPixels / pixels)));
}

platform::SharedPicture keptStampPicture(const StampEntry& entry) {
  return entry.bitmap ? entry.bitmap : entry.thumbnail;
}

platform::SharedPicture wholeStampPicture(std::int32_t index) {
  if (!isStampIndex(index)) return nullptr;
  const StampEntry& entry = session.stampLibrary[static_cast<std::size_t>(index)];
  platform::SharedPicture picture = platform::loadPicture(entry.path);
  return picture ? picture : keptStampPicture(entry);
}

bool makeThumbnail(StampEntry& entry) {
  if (entry.thumbnail) return true;
  const platform::SharedPicture picture = platform::loadPicture(entry.path);
  if (!picture) return false;
  const double factor =
      std::min(1.0, static_cast<double>(scaled(kThumbnailHeight)) / picture->height);
  entry.thumbnail = scaledDown(*picture, shrunk(*picture, factor));
  return true;
}

FPDF_BITMAP pdfBitmapOf(const platform::Picture& picture) {
  const FPDF_BITMAP bitmap = FPDFBitmap_Create(picture.width, picture.height, 1);
  if (bitmap == nullptr) return nullptr;
  auto* row = static_cast<unsigned char*>(FPDFBitmap_GetBuffer(bitmap));
  const int stride = FPDFBitmap_GetStride(bitmap);
  const std::size_t rowBytes = static_cast<std::size_t>(picture.width) * kBytesPerPixel;
  for (int y = 0; y < picture.height; ++y, row += stride) {
    const std::size_t first = static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width);
    std::memcpy(row, picture.pixels.data() + first, rowBytes);
  }
  return bitmap;
}

FPDF_BITMAP LoadStampBitmapForPdf(const std::u16string& path) {
  const platform::SharedPicture picture = platform::loadPicture(path);
  return picture ? pdfBitmapOf(*picture) : nullptr;
}

}  // namespace quillmere
