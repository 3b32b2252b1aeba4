#include <windows.h>

#include <gdiplus.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <type_traits>

#include "core/session.h"
#include "nav/find.h"
#include "platform/win32/pixel_surface.h"
#include "platform/win32/system_fonts.h"
#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"
#include "view/geometry.h"
#include "view/paint.h"
#include "view/paint_plan.h"
#include "view/selection.h"

namespace quillmere {

namespace {

constexpr Gdiplus::ARGB kFindHitColor = 0x78FFDC00;
constexpr Gdiplus::ARGB kCurrentHitColor = 0xB49B32C8;

struct ObjectDeleter {
  void operator()(HGDIOBJ object) const { DeleteObject(object); }
};
struct DeviceContextDeleter {
  void operator()(HDC dc) const { DeleteDC(dc); }
};
using FontHandle = std::unique_ptr<std::remove_pointer_t<HFONT>, ObjectDeleter>;
using BitmapHandle = std::unique_ptr<std::remove_pointer_t<HBITMAP>, ObjectDeleter>;
using DeviceContextHandle = std::unique_ptr<std::remove_pointer_t<HDC>, DeviceContextDeleter>;

// The picture of the whole client area, for what is drawn over a page. It is kept while the window
// has this size, since making it costs more than filling it. Without memory for it the window is
// drawn on directly.
struct BackBuffer {
  DeviceContextHandle dc;
  BitmapHandle bitmap;
  int width = 0;
  int height = 0;
};
BackBuffer backBuffer;

HDC backBufferFor(HDC window, int width, int height) {
  BackBuffer& buffer = backBuffer;
  if (!buffer.dc) buffer.dc.reset(CreateCompatibleDC(window));
  if (buffer.bitmap && buffer.width == width && buffer.height == height) return buffer.dc.get();
  BitmapHandle bitmap(CreateCompatibleBitmap(window, width, height));
  if (!bitmap) return window;
  SelectObject(buffer.dc.get(), bitmap.get());
  buffer.bitmap = std::move(bitmap);
  buffer.width = width;
  buffer.height = height;
  return buffer.dc.get();
}

COLORREF colorRef(Color color) {
  return RGB(color.r, color.g, color.b);
}

RECT toRect(const PaneRect& rect) {
  return {rect.left, rect.top, rect.right, rect.bottom};
}

// Fills without making a brush for each colour.
void fill(HDC dc, const PaneRect& rect, Color color) {
  if (rect.empty()) return;
  const RECT area = toRect(rect);
  SetBkColor(dc, colorRef(color));
  ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &area, nullptr, 0, nullptr);
}

PaneRect common(const PaneRect& a, const PaneRect& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
}

// What is drawn once is not drawn over: a window without a picture of its whole would flicker.
void keep(HDC dc, const PaneRect& rect) {
  if (!rect.empty()) ExcludeClipRect(dc, rect.left, rect.top, rect.right, rect.bottom);
}

void fillAndKeep(HDC dc, const PaneRect& rect, Color color) {
  fill(dc, rect, color);
  keep(dc, rect);
}

PaneRect pageRect(const PaneSlot& slot, const PanePlan& plan) {
  return {plan.bitmapX, plan.bitmapY, plan.bitmapX + slot.pageBitmapWidth,
          plan.bitmapY + slot.pageBitmapHeight};
}

// Copies the part of the page's picture that lies in `visible`.
void copyPage(HDC dc, const PaneSlot& slot, const PanePlan& plan, const PaneRect& visible) {
  if (visible.empty()) return;
  const int unclipped = SaveDC(dc);
  IntersectClipRect(dc, visible.left, visible.top, visible.right, visible.bottom);
  platform::copySurface(slot.pageBitmap.get(), dc, plan.bitmapX, plan.bitmapY);
  RestoreDC(dc, unclipped);
}

// Draws with the pane's top left corner as the origin, what lies in front first.
void drawGround(HDC dc, int pane, const PanePlan& plan) {
  const PaneSlot& slot = session.panes[pane];
  const int whole = SaveDC(dc);
  if (plan.hasBitmap) {
    const PaneRect page = common(pageRect(slot, plan), plan.content);
    copyPage(dc, slot, plan, page);
    keep(dc, page);
    fillAndKeep(dc, common(plan.shadow, plan.content), kPageShadow);
  }
  if (plan.framed) {
    for (const PaneRect& side : plan.frame) fillAndKeep(dc, side, kActiveFrameColor);
  }
  fill(dc, {0, 0, plan.rect.width(), plan.rect.height()}, kPaneBackground);
  RestoreDC(dc, whole);
}

// The text's place is remembered for clicks, in client pixels.
void drawPlaceholder(HDC dc, int pane, const PanePlan& plan) {
  const std::u16string text = placeholderText(pane);
  const FontHandle font(platform::createPlaceholderFont(session.dpi));
  const HGDIOBJ previous = SelectObject(dc, font.get());
  RECT measured{};
  DrawTextW(dc, platform::wide(text), -1, &measured, DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
  const PaneRect box = placeholderBox(plan, {static_cast<int>(measured.right - measured.left),
                                             static_cast<int>(measured.bottom - measured.top)});
  session.placeholderRect[pane] = placeholderTarget(plan, box);
  SetTextColor(dc, colorRef(kPlaceholderColor));
  SetBkMode(dc, TRANSPARENT);
  RECT area = toRect(box);
  DrawTextW(dc, platform::wide(text), -1, &area, DT_SINGLELINE | DT_NOPREFIX | DT_NOCLIP);
  SelectObject(dc, previous);
}

// Hits stand under whatever rotation the page has, so they are filled as polygons.
void drawFindHits(HDC dc, const std::vector<FindHitQuad>& hits) {
  if (hits.empty()) return;
  Gdiplus::Graphics graphics(dc);
  graphics.SetSmoothingMode(Gdiplus::SmoothingModeNone);
  const Gdiplus::SolidBrush ordinary{Gdiplus::Color(kFindHitColor)};
  const Gdiplus::SolidBrush current{Gdiplus::Color(kCurrentHitColor)};
  for (const FindHitQuad& hit : hits) {
    Gdiplus::PointF corners[4];
    for (int i = 0; i < 4; ++i) {
      corners[i] = {static_cast<Gdiplus::REAL>(hit.quad.corner[i].x),
                    static_cast<Gdiplus::REAL>(hit.quad.corner[i].y)};
    }
    graphics.FillPolygon(hit.current ? &current : &ordinary, corners, 4,
                         Gdiplus::FillModeAlternate);
  }
}

void drawSelection(HDC dc, const std::vector<PaneBox>& boxes) {
  if (boxes.empty()) return;
  const COLORREF highlight = GetSysColor(COLOR_HIGHLIGHT);
  Gdiplus::Graphics graphics(dc);
  const Gdiplus::SolidBrush brush(Gdiplus::Color(kSelectionAlpha, GetRValue(highlight),
                                                 GetGValue(highlight), GetBValue(highlight)));
  for (const PaneBox& box : boxes) {
    graphics.FillRectangle(&brush, static_cast<Gdiplus::REAL>(box.left),
                           static_cast<Gdiplus::REAL>(box.top),
                           static_cast<Gdiplus::REAL>(box.right - box.left),
                           static_cast<Gdiplus::REAL>(box.bottom - box.top));
  }
}

// One pane with what is drawn over its ground.
struct PanePicture {
  PanePlan plan;
  std::vector<FindHitQuad> hits;
  std::vector<PaneBox> selection;

  bool layered() const { return plan.showsPlaceholder || !hits.empty() || !selection.empty(); }
};

PanePicture pictureOf(int pane) {
  PanePicture picture;
  picture.plan = planPane(pane, paneRect(pane));
  if (picture.plan.rect.empty()) return picture;
  picture.hits = findHitQuads(pane);
  picture.selection = selectionBoxes(pane);
  return picture;
}

void paintPane(HDC dc, int pane, const PanePicture& picture) {
  session.placeholderRect[pane] = {};
  const PanePlan& plan = picture.plan;
  if (plan.rect.empty()) return;
  const int saved = SaveDC(dc);
  IntersectClipRect(dc, plan.rect.left, plan.rect.top, plan.rect.right, plan.rect.bottom);
  SetViewportOrgEx(dc, plan.rect.left, plan.rect.top, nullptr);
  drawGround(dc, pane, plan);
  IntersectClipRect(dc, plan.content.left, plan.content.top, plan.content.right,
                    plan.content.bottom);
  if (plan.showsPlaceholder) drawPlaceholder(dc, pane, plan);
  drawFindHits(dc, picture.hits);
  drawSelection(dc, picture.selection);
  RestoreDC(dc, saved);
  keep(dc, plan.rect);
}

// What the window shows, in front first.
struct WindowPicture {
  WindowPlan plan;
  PanePicture panes[2];

  bool layered() const { return panes[0].layered() || panes[1].layered(); }
};

WindowPicture presentPicture() {
  WindowPicture picture;
  picture.plan = planWindow();
  for (int pane = 0; pane < picture.plan.paneCount; ++pane) picture.panes[pane] = pictureOf(pane);
  return picture;
}

void paintInto(HDC dc, const WindowPicture& picture, int width, int height) {
  const WindowPlan& plan = picture.plan;
  const int whole = SaveDC(dc);
  for (const FilledRect& line :
       {plan.divider, plan.leftSplitter, plan.leftPanelBar, plan.stampSplitter}) {
    fillAndKeep(dc, line.rect, line.color);
  }
  for (int pane = 0; pane < 2; ++pane) paintPane(dc, pane, picture.panes[pane]);
  fill(dc, {0, 0, width, height}, kPaneBackground);
  RestoreDC(dc, whole);
}

}  // namespace

void paintMainWindow() {
  PAINTSTRUCT paint{};
  const HDC window = BeginPaint(platform::windowHandles.main, &paint);
  const platform::PixelSize client = platform::mainWindowClientSize();
  const int width = std::max(client.width, 1);
  const int height = std::max(client.height, 1);
  const WindowPicture picture = presentPicture();
  const HDC buffer = picture.layered() ? backBufferFor(window, width, height) : window;
  paintInto(buffer, picture, width, height);
  if (buffer != window) BitBlt(window, 0, 0, width, height, buffer, 0, 0, SRCCOPY);
  EndPaint(platform::windowHandles.main, &paint);
}

void releasePaintBuffers() {
  backBuffer = BackBuffer{};
}

}  // namespace quillmere
