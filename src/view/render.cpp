#include "view/render.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "session/session.h"
#include "view/geometry.h"

namespace quillmere {

namespace {

constexpr FPDF_DWORD kPaper = 0xFFFFFFFF;
constexpr int kBytesPerPixel = 4;

double sideInPixels(double points, float zoom) {
  return std::max(1.0, std::trunc(points * zoom));
}

// The system and PDFium count a bitmap's bytes in 32 bits.
bool fitsBitmap(double width, double height) {
  return width * height * kBytesPerPixel <= std::numeric_limits<std::int32_t>::max();
}

// Reuses the bitmap's memory where it can: fresh memory costs about as much as the rendering
// itself.
bool prepareBitmap(PaneSlot& slot, int width, int height) {
  if (!slot.pageBitmap || !platform::resizePixelSurface(slot.pageBitmap.get(), width, height)) {
    slot.pageBitmap.reset();
    slot.pageBitmap.reset(platform::createPixelSurface(width, height));
  }
  slot.pageBitmapWidth = width;
  slot.pageBitmapHeight = height;
  return slot.pageBitmap != nullptr;
}

bool drawPage(int pane) {
  const PaneSlot& slot = session.panes[pane];
  const int width = slot.pageBitmapWidth;
  const int height = slot.pageBitmapHeight;
  const PdfBitmapHandle bitmap(FPDFBitmap_CreateEx(width, height, FPDFBitmap_BGRx,
                                                   platform::pixelsOf(slot.pageBitmap.get()),
                                                   width * kBytesPerPixel));
  if (!bitmap) return false;
  FPDFBitmap_FillRect(bitmap.get(), 0, 0, width, height, kPaper);
  FPDF_RenderPageBitmap(bitmap.get(), slot.page.get(), 0, 0, width, height,
                        static_cast<int>(renderRotationOf(pane)), FPDF_ANNOT | FPDF_LCD_TEXT);
  return true;
}

}  // namespace

void renderPane(int pane) {
  PaneSlot& slot = session.panes[pane];
  if (!slot.page) return freePaneBitmap(pane);
  const PageSize page = pageSizeRotated(pane);
  const double wide = sideInPixels(page.width, slot.zoom);
  const double high = sideInPixels(page.height, slot.zoom);
  if (!fitsBitmap(wide, high)) return freePaneBitmap(pane);
  if (!prepareBitmap(slot, static_cast<int>(wide), static_cast<int>(high)) || !drawPage(pane)) {
    freePaneBitmap(pane);
  }
}

void layoutAndRender(int pane) {
  layoutPane(pane, false, 0);
  renderPane(pane);
}

void redrawPicture(int pane) {
  if (paneShown(pane)) {
    renderPane(pane);
  } else {
    freePaneBitmap(pane);
  }
}

void refreshPicture(int pane) {
  if (paneShown(pane)) layoutPane(pane, false, 0);
  redrawPicture(pane);
}

}  // namespace quillmere
