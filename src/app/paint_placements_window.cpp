#include <windows.h>

#include <gdiplus.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <memory>
#include <type_traits>
#include <variant>
#include <vector>

#include "annot/placement_fonts.h"
#include "annot/stamp_pictures.h"
#include "app/overlays.h"
#include "app/paint_placements.h"
#include "platform/win32/wide.h"
#include "session/density.h"

namespace quillmere {

namespace {

constexpr COLORREF kFrameColor = RGB(80, 140, 220);
constexpr COLORREF kHandleEdge = RGB(30, 30, 30);
constexpr COLORREF kRotationHandle = RGB(60, 200, 100);
constexpr COLORREF kCrossColor = RGB(40, 40, 40);
constexpr int kOpaque = 255;

// Objects that are selected into a device context for as long as this lives.
class Selected {
 public:
  Selected(HDC dc, HGDIOBJ object) : dc_(dc), before_(SelectObject(dc, object)) {}
  Selected(const Selected&) = delete;
  Selected& operator=(const Selected&) = delete;
  ~Selected() { SelectObject(dc_, before_); }

 private:
  HDC dc_;
  HGDIOBJ before_;
};

struct ObjectDeleter {
  void operator()(HGDIOBJ object) const { DeleteObject(object); }
};
using PenHandle = std::unique_ptr<std::remove_pointer_t<HPEN>, ObjectDeleter>;
using BrushHandle = std::unique_ptr<std::remove_pointer_t<HBRUSH>, ObjectDeleter>;
using FontHandle = std::unique_ptr<std::remove_pointer_t<HFONT>, ObjectDeleter>;
using SectionHandle = std::unique_ptr<std::remove_pointer_t<HBITMAP>, ObjectDeleter>;
struct ContextDeleter {
  void operator()(HDC dc) const { DeleteDC(dc); }
};
using ContextHandle = std::unique_ptr<std::remove_pointer_t<HDC>, ContextDeleter>;

// Copies of large pictures that came out of a document. Making one takes longer than drawing it, so
// each is kept for as long as its picture is.
struct DrawnCopy {
  std::weak_ptr<const platform::Picture> whole;
  platform::SharedPicture copy;
};
std::vector<DrawnCopy> drawnCopies;

platform::SharedPicture drawnCopyOf(const platform::SharedPicture& picture) {
  std::erase_if(drawnCopies, [](const DrawnCopy& known) { return known.whole.expired(); });
  for (const DrawnCopy& known : drawnCopies) {
    if (known.whole.lock() == picture) return known.copy;
  }
  platform::SharedPicture copy = quickToDraw(picture);
  if (copy != picture) drawnCopies.push_back({picture, copy});
  return copy;
}

// A bitmap over the picture's own pixels.
std::unique_ptr<Gdiplus::Bitmap> bitmapOver(const platform::Picture& picture) {
  auto* first = reinterpret_cast<BYTE*>(const_cast<std::uint32_t*>(picture.pixels.data()));
  return std::make_unique<Gdiplus::Bitmap>(picture.width, picture.height, picture.width * 4,
                                           PixelFormat32bppARGB, first);
}

void drawPicture(HDC dc, const PictureDrawing& drawing) {
  const platform::SharedPicture shown = drawnCopyOf(drawing.picture);
  const platform::Picture& picture = *shown;
  const auto width = static_cast<Gdiplus::REAL>(drawing.width);
  const auto height = static_cast<Gdiplus::REAL>(drawing.height);
  Gdiplus::Graphics graphics(dc);
  graphics.SetInterpolationMode(Gdiplus::InterpolationModeHighQualityBicubic);
  graphics.SetPixelOffsetMode(Gdiplus::PixelOffsetModeHalf);
  graphics.SetSmoothingMode(Gdiplus::SmoothingModeHighQuality);
  graphics.TranslateTransform(static_cast<Gdiplus::REAL>(drawing.centre.x),
                              static_cast<Gdiplus::REAL>(drawing.centre.y));
  if (drawing.degrees != 0) {
    graphics.RotateTransform(static_cast<Gdiplus::REAL>(drawing.degrees));
  }
  Gdiplus::ImageAttributes attributes;
  // Without it the picture's edge mixes with the transparency around it.
  attributes.SetWrapMode(Gdiplus::WrapModeTileFlipXY);
  if (drawing.alpha < 1) {
    const auto alpha = static_cast<Gdiplus::REAL>(drawing.alpha);
    const Gdiplus::ColorMatrix matrix = {
        {{1, 0, 0, 0, 0}, {0, 1, 0, 0, 0}, {0, 0, 1, 0, 0}, {0, 0, 0, alpha, 0}, {0, 0, 0, 0, 1}}};
    attributes.SetColorMatrix(&matrix);
  }
  const Gdiplus::RectF target(-width / 2, -height / 2, width, height);
  graphics.DrawImage(bitmapOver(picture).get(), target, 0, 0,
                     static_cast<Gdiplus::REAL>(picture.width),
                     static_cast<Gdiplus::REAL>(picture.height), Gdiplus::UnitPixel, &attributes);
}

void drawFrame(HDC dc, const PictureDrawing& drawing) {
  POINT corners[std::tuple_size_v<decltype(drawing.frame)>];
  std::transform(drawing.frame.begin(), drawing.frame.end(), std::begin(corners),
                 [](const PixelPoint& point) {
                   return POINT{point.x, point.y};
                 });
  const PenHandle pen(CreatePen(PS_DOT, 1, kFrameColor));
  const Selected selected(dc, pen.get());
  SetBkMode(dc, TRANSPARENT);
  Polyline(dc, corners, static_cast<int>(std::size(corners)));
}

void drawHandles(HDC dc, const PictureDrawing& drawing) {
  const PenHandle pen(CreatePen(PS_SOLID, 1, kHandleEdge));
  const BrushHandle green(CreateSolidBrush(kRotationHandle));
  const Selected edge(dc, pen.get());
  for (std::size_t handle = 0; handle < drawing.handles.size(); ++handle) {
    const PixelRect square = handleSquare(drawing.handles[handle]);
    const bool turns = handle == 0;
    const Selected fill(dc,
                        turns ? static_cast<HGDIOBJ>(green.get()) : GetStockObject(WHITE_BRUSH));
    (turns ? Ellipse : Rectangle)(dc, square.left, square.top, square.right, square.bottom);
  }
}

// The font of a ghost, turned clockwise.
FontHandle ghostFont(const TextGhost& ghost) {
  const PlacementFont& row = placementFont(ghost.fontIndex);
  LOGFONTW font{};
  font.lfHeight = -ghost.pixelHeight;
  font.lfWeight = row.weight;
  font.lfCharSet = DEFAULT_CHARSET;
  font.lfOutPrecision = OUT_DEFAULT_PRECIS;
  font.lfQuality = CLEARTYPE_QUALITY;
  font.lfEscapement = (3600 - 900 * ghost.turns) % 3600;
  font.lfOrientation = font.lfEscapement;
  const std::u16string_view family = row.family;
  std::memcpy(font.lfFaceName, family.data(), family.size() * sizeof(char16_t));
  return FontHandle(CreateFontIndirectW(&font));
}

LineExtent extentOf(HDC dc, const TextGhost& ghost) {
  SIZE size{};
  TEXTMETRICW metrics{};
  GetTextExtentPoint32W(dc, platform::wideUnits(ghost.text), static_cast<int>(ghost.text.size()),
                        &size);
  GetTextMetricsW(dc, &metrics);
  return {static_cast<int>(size.cx), static_cast<int>(metrics.tmAscent),
          static_cast<int>(metrics.tmDescent)};
}

void writeGhost(HDC dc, const TextGhost& ghost, int x, int y, COLORREF color) {
  SetTextAlign(dc, TA_BASELINE | TA_LEFT);
  SetTextColor(dc, color);
  SetBkMode(dc, TRANSPARENT);
  TextOutW(dc, x, y, platform::wideUnits(ghost.text), static_cast<int>(ghost.text.size()));
}

// White text on black tells how far each pixel is covered; the channel in which the colour is
// strongest decides.
void colorCoverage(std::uint32_t* pixels, std::size_t count, const TextGhost& ghost) {
  const std::uint32_t red = ghost.color >> 16 & 0xFF;
  const std::uint32_t green = ghost.color >> 8 & 0xFF;
  const std::uint32_t blue = ghost.color & 0xFF;
  const int shift = red >= green && red >= blue ? 16 : green >= blue ? 8 : 0;
  for (std::size_t i = 0; i < count; ++i) {
    const std::uint32_t coverage = pixels[i] >> shift & 0xFF;
    const std::uint32_t alpha = static_cast<std::uint32_t>(ghost.alpha) * coverage / kOpaque;
    pixels[i] = alpha << 24 | red * alpha / kOpaque << 16 | green * alpha / kOpaque << 8 |
                blue * alpha / kOpaque;
  }
}

// Draws what of the text lies in the box.
void blendGhost(HDC dc, const TextGhost& ghost, HFONT font, const PixelRect& box) {
  BITMAPINFO info{};
  info.bmiHeader.biSize = sizeof(BITMAPINFOHEADER);
  info.bmiHeader.biWidth = box.width();
  info.bmiHeader.biHeight = -box.height();
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  const ContextHandle memory(CreateCompatibleDC(dc));
  const SectionHandle section(
      CreateDIBSection(memory.get(), &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (!section || bits == nullptr) return;
  {
    const Selected bitmap(memory.get(), section.get());
    const Selected face(memory.get(), font);
    writeGhost(memory.get(), ghost, ghost.place.x - box.left, ghost.place.y - box.top,
               RGB(255, 255, 255));
    GdiFlush();
  }
  auto* pixels = static_cast<std::uint32_t*>(bits);
  const auto width = static_cast<std::size_t>(box.width());
  colorCoverage(pixels, width * static_cast<std::size_t>(box.height()), ghost);
  Gdiplus::Bitmap picture(box.width(), box.height(), box.width() * 4, PixelFormat32bppPARGB,
                          reinterpret_cast<BYTE*>(pixels));
  Gdiplus::Graphics graphics(dc);
  graphics.DrawImage(&picture, box.left, box.top);
}

void drawGhostText(HDC dc, const TextGhost& ghost, const PixelRect& area) {
  const FontHandle font = ghostFont(ghost);
  const Selected face(dc, font.get());
  if (ghost.alpha < kOpaque) {
    const PixelRect box = textGhostArea(ghost, extentOf(dc, ghost), area);
    if (!box.empty()) blendGhost(dc, ghost, font.get(), box);
    return;
  }
  const COLORREF color = RGB(ghost.color >> 16 & 0xFF, ghost.color >> 8 & 0xFF, ghost.color & 0xFF);
  writeGhost(dc, ghost, ghost.place.x, ghost.place.y, color);
}

void drawCross(HDC dc, const PixelPoint& place) {
  const PenHandle pen(CreatePen(PS_SOLID, 1, kCrossColor));
  const Selected selected(dc, pen.get());
  const int arm = scaled(kGhostCross);
  MoveToEx(dc, place.x - arm, place.y, nullptr);
  LineTo(dc, place.x + arm + 1, place.y);
  MoveToEx(dc, place.x, place.y - arm, nullptr);
  LineTo(dc, place.x, place.y + arm + 1);
}

void draw(HDC dc, const PictureDrawing& drawing, const PixelRect&) {
  if (drawing.picture) drawPicture(dc, drawing);
  if (!drawing.selected) return;
  drawFrame(dc, drawing);
  drawHandles(dc, drawing);
}

void draw(HDC dc, const TextGhost& ghost, const PixelRect& area) {
  if (!ghost.text.empty()) drawGhostText(dc, ghost, area);
  drawCross(dc, ghost.place);
}

}  // namespace

void DrawPlacements(HDC deviceContext, int pane, const PixelRect& paneRectangle) {
  for (const OverlayDrawing& overlay : overlayDrawings(pane, paneRectangle)) {
    std::visit([&](const auto& drawing) { draw(deviceContext, drawing, paneRectangle); }, overlay);
  }
}

}  // namespace quillmere
