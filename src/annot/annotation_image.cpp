#include "annot/annotation_image.h"

#include <fpdf_edit.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <type_traits>

#include "session/pdfium_handles.h"

namespace quillmere {

namespace {

constexpr double kMostPixels = 16 << 20;

FPDF_PAGEOBJECT firstImage(FPDF_ANNOTATION annotation) {
  const int count = FPDFAnnot_GetObjectCount(annotation);
  for (int i = 0; i < count; ++i) {
    const FPDF_PAGEOBJECT object = FPDFAnnot_GetObject(annotation, i);
    if (FPDFPageObj_GetType(object) == FPDF_PAGEOBJ_IMAGE) return object;
  }
  return nullptr;
}

// The image's own size in pixels, made smaller when it is beyond the limit. A width of 0 when it
// has none.
FS_SIZEF drawnSize(FPDF_PAGEOBJECT image) {
  unsigned width = 0;
  unsigned height = 0;
  if (!FPDFImageObj_GetImagePixelSize(image, &width, &height)) return {0, 0};
  if (width == 0 || height == 0) return {0, 0};
  const double pixels = static_cast<double>(width) * height;
  const double factor = std::min(1.0, std::sqrt(kMostPixels / pixels));
  return {static_cast<float>(std::max(1.0, std::floor(width * factor))),
          static_cast<float>(std::max(1.0, std::floor(height * factor)))};
}

// A pixel of a bitmap's row in the program's own form.
std::uint32_t pixelAt(const unsigned char* row, int x, int format) {
  constexpr std::uint32_t kOpaque = 0xFF000000;
  const auto at = [&](int bytes, int part) { return std::uint32_t{row[x * bytes + part]}; };
  if (format == FPDFBitmap_Gray) return kOpaque | at(1, 0) * 0x010101u;
  const int bytes = format == FPDFBitmap_BGR ? 3 : 4;
  const std::uint32_t color = at(bytes, 2) << 16 | at(bytes, 1) << 8 | at(bytes, 0);
  return format == FPDFBitmap_BGRA ? at(bytes, 3) << 24 | color : kOpaque | color;
}

platform::SharedPicture pictureOf(FPDF_BITMAP bitmap) {
  const int format = FPDFBitmap_GetFormat(bitmap);
  const int width = FPDFBitmap_GetWidth(bitmap);
  const int height = FPDFBitmap_GetHeight(bitmap);
  const auto* row = static_cast<const unsigned char*>(FPDFBitmap_GetBuffer(bitmap));
  const bool known = format == FPDFBitmap_Gray || format == FPDFBitmap_BGR ||
                     format == FPDFBitmap_BGRx || format == FPDFBitmap_BGRA;
  if (!known || width < 1 || height < 1 || row == nullptr) return nullptr;
  auto picture = std::make_shared<platform::Picture>();
  picture->width = width;
  picture->height = height;
  picture->pixels.reserve(static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  for (int y = 0; y < height; ++y, row += FPDFBitmap_GetStride(bitmap)) {
    for (int x = 0; x < width; ++x) picture->pixels.push_back(pixelAt(row, x, format));
  }
  return picture;
}

}  // namespace

platform::SharedPicture ExtractAnnotImage(FPDF_DOCUMENT document, FPDF_PAGE page,
                                          FPDF_ANNOTATION annotation) {
  const FPDF_PAGEOBJECT image = firstImage(annotation);
  if (image == nullptr) return nullptr;
  const FS_SIZEF size = drawnSize(image);
  FS_MATRIX before{};
  if (!(size.width > 0) || !FPDFPageObj_GetMatrix(image, &before)) return nullptr;
  const FS_MATRIX natural{size.width, 0, 0, size.height, 0, 0};
  FPDFPageObj_SetMatrix(image, &natural);
  const PdfBitmapHandle bitmap(FPDFImageObj_GetRenderedBitmap(document, page, image));
  FPDFPageObj_SetMatrix(image, &before);
  return bitmap ? pictureOf(bitmap.get()) : nullptr;
}

}  // namespace quillmere
