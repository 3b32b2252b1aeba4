#include "view/render.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "core/session.h"
#include "view/geometry.h"

namespace quillmere {

namespace {

constexpr FPDF_DWORD kPaper = 0xFFFFFFFF;
constexpr int kBytesPerPixel = 4;

struct BitmapCloser {
  void operator()(FPDF_BITMAP bitmap) const { FPDFBitmap_Destroy(bitmap); }
};
using BitmapHandle = std::unique_ptr<std::remove_pointer_t<FPDF_BITMAP>, BitmapCloser>;

double sideInPixels(double points, float zoom) {
  return std::max(1.0, std::trunc(points * zoom));
}

// The sizes that the system and PDFium count bytes with have 32 bits.
bool fitsBitmap(double width, double height) {
  return width * height * kBytesPerPixel <= std::numeric_limits<std::int32_t>::max();
}

bool drawPage(int pane, platform::PixelSurface* surface, int width, int height) {
  const BitmapHandle bitmap(FPDFBitmap_CreateEx(
      width, height, FPDFBitmap_BGRx, platform::pixelsOf(surface), width * kBytesPerPixel));
  if (!bitmap) return false;
  FPDFBitmap_FillRect(bitmap.get(), 0, 0, width, height, kPaper);
  FPDF_RenderPageBitmap(bitmap.get(), session.panes[pane].page.get(), 0, 0, width, height,
                        static_cast<int>(renderRotationOf(pane)), FPDF_ANNOT | FPDF_LCD_TEXT);
  return true;
}

}  // namespace

void renderPane(int pane) {
  freePaneBitmap(pane);
  PaneSlot& slot = session.panes[pane];
  if (!slot.page) return;
  const PageSize page = pageSizeRotated(pane);
  const double wide = sideInPixels(page.width, slot.zoom);
  const double high = sideInPixels(page.height, slot.zoom);
  if (!fitsBitmap(wide, high)) return;

  const int width = static_cast<int>(wide);
  const int height = static_cast<int>(high);
  platform::PixelSurfaceHandle surface(platform::createPixelSurface(width, height));
  if (!surface || !drawPage(pane, surface.get(), width, height)) return;
  slot.pageBitmap = std::move(surface);
  slot.pageBitmapWidth = width;
  slot.pageBitmapHeight = height;
}

void layoutAndRender(int pane) {
  layoutPane(pane, false, 0);
  renderPane(pane);
}

void refreshPicture(int pane) {
  if (paneShown(pane)) {
    layoutAndRender(pane);
  } else {
    freePaneBitmap(pane);
  }
}

}  // namespace quillmere
