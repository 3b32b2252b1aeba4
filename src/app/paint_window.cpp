#include <windows.h>

#include <gdiplus.h>

#include <algorithm>
#include <memory>
#include <type_traits>

#include "app/overlays.h"
#include "app/paint.h"
#include "app/paint_placements.h"
#include "app/paint_plan.h"
#include "app/repaint.h"
#include "platform/win32/pixels.h"
#include "platform/win32/system_fonts.h"
#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"
#include "session/session.h"
#include "view/geometry.h"

namespace quillmere {

namespace {

struct ObjectDeleter {
  void operator()(HGDIOBJ object) const { DeleteObject(object); }
};
struct DeviceContextDeleter {
  void operator()(HDC dc) const { DeleteDC(dc); }
};
using FontHandle = std::unique_ptr<std::remove_pointer_t<HFONT>, ObjectDeleter>;
using BitmapHandle = std::unique_ptr<std::remove_pointer_t<HBITMAP>, ObjectDeleter>;
using DeviceContextHandle = std::unique_ptr<std::remove_pointer_t<HDC>, DeviceContextDeleter>;

// The picture of the whole client area, for what is painted over pages. It is kept while there are
// pages and until the window's size changes, since creating it costs more than filling it. Without
// memory for it the program draws on the window directly.
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

RECT toRect(const PixelRect& rect) {
  return {rect.left, rect.top, rect.right, rect.bottom};
}

// Fills without making a brush for each colour.
void fill(HDC dc, const PixelRect& rect, Color color) {
  if (rect.empty()) return;
  const RECT area = toRect(rect);
  SetBkColor(dc, colorRef(color));
  ExtTextOutW(dc, 0, 0, ETO_OPAQUE, &area, nullptr, 0, nullptr);
}

PixelRect common(const PixelRect& a, const PixelRect& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
}

// Fills all of `area` except the part that something else covers.
void fillAround(HDC dc, const PixelRect& area, const PixelRect& covered, Color color) {
  const PixelRect hole = common(area, covered);
  if (hole.empty()) return fill(dc, area, color);
  fill(dc, {area.left, area.top, area.right, hole.top}, color);
  fill(dc, {area.left, hole.top, hole.left, hole.bottom}, color);
  fill(dc, {hole.right, hole.top, area.right, hole.bottom}, color);
  fill(dc, {area.left, hole.bottom, area.right, area.bottom}, color);
}

PixelRect pageRect(const PaneSlot& slot, const PanePlan& plan) {
  return {plan.bitmapX, plan.bitmapY, plan.bitmapX + slot.pageBitmapWidth,
          plan.bitmapY + slot.pageBitmapHeight};
}

void drawPage(HDC dc, const PaneSlot& slot, const PanePlan& plan) {
  fillAround(dc, plan.shadow, pageRect(slot, plan), kPageShadow);
  platform::copySurface(slot.pageBitmap.get(), dc, plan.bitmapX, plan.bitmapY);
}

// Remembers the text's place, in client pixels, for clicks.
void drawPlaceholder(HDC dc, int pane, const PanePlan& plan) {
  const std::u16string text = placeholderText(pane);
  const FontHandle font(platform::createPlaceholderFont(session.dpi));
  const HGDIOBJ previous = SelectObject(dc, font.get());
  RECT measured{};
  DrawTextW(dc, platform::wide(text), -1, &measured, DT_CALCRECT | DT_SINGLELINE | DT_NOPREFIX);
  const PixelRect box = placeholderBox(plan, {static_cast<int>(measured.right - measured.left),
                                              static_cast<int>(measured.bottom - measured.top)});
  session.placeholderRect[pane] = placeholderTarget(plan, box);
  SetTextColor(dc, colorRef(kPlaceholderColor));
  SetBkMode(dc, TRANSPARENT);
  RECT area = toRect(box);
  DrawTextW(dc, platform::wide(text), -1, &area, DT_SINGLELINE | DT_NOPREFIX | DT_NOCLIP);
  SelectObject(dc, previous);
}

// Quads follow the page's rotation, so they are filled as polygons.
void drawOverlays(HDC dc, int pane) {
  const std::vector<OverlayQuad> overlays = overlayQuads(pane);
  if (overlays.empty()) return;
  Gdiplus::Graphics graphics(dc);
  graphics.SetSmoothingMode(Gdiplus::SmoothingModeNone);
  Gdiplus::SolidBrush brush{Gdiplus::Color()};
  for (const OverlayQuad& overlay : overlays) {
    Gdiplus::PointF corners[4];
    for (int i = 0; i < 4; ++i) {
      corners[i] = {static_cast<Gdiplus::REAL>(overlay.quad.corner[i].x),
                    static_cast<Gdiplus::REAL>(overlay.quad.corner[i].y)};
    }
    const OverlayColor& color = overlay.color;
    brush.SetColor({color.alpha, color.r, color.g, color.b});
    graphics.FillPolygon(&brush, corners, 4, Gdiplus::FillModeAlternate);
  }
}

// Draws with the pane's top left corner as the origin.
void drawPaneContent(HDC dc, int pane, const PanePlan& plan) {
  PaneSlot& slot = session.panes[pane];
  if (plan.hasBitmap) {
    drawPage(dc, slot, plan);
  } else if (plan.showsPlaceholder) {
    drawPlaceholder(dc, pane, plan);
  }
  DrawPlacements(dc, pane, plan.content);
  drawOverlays(dc, pane);
}

void paintPane(HDC dc, int pane, const PixelRect& rect) {
  session.placeholderRect[pane] = {};
  if (rect.empty()) return;
  const PanePlan plan = planPane(pane, rect);
  const int saved = SaveDC(dc);
  IntersectClipRect(dc, rect.left, rect.top, rect.right, rect.bottom);
  SetViewportOrgEx(dc, rect.left, rect.top, nullptr);
  const PixelRect covered =
      plan.hasBitmap ? common(plan.content, pageRect(session.panes[pane], plan)) : PixelRect{};
  fillAround(dc, {0, 0, rect.width(), rect.height()}, covered, kPaneBackground);

  const int unclipped = SaveDC(dc);
  IntersectClipRect(dc, plan.content.left, plan.content.top, plan.content.right,
                    plan.content.bottom);
  drawPaneContent(dc, pane, plan);
  RestoreDC(dc, unclipped);

  if (plan.framed) {
    for (const PixelRect& side : plan.frame) fill(dc, side, kActiveFrameColor);
  }
  RestoreDC(dc, saved);
}

// The divider fills what lies between two panes.
PixelRect coveredByPanes(const WindowPlan& plan) {
  const PixelRect first = paneRect(0);
  const PixelRect last = paneRect(plan.paneCount - 1);
  if (first.empty() || last.empty()) return {};
  return {first.left, first.top, last.right, last.bottom};
}

void paintInto(HDC dc, int width, int height) {
  const WindowPlan plan = planWindow();
  fillAround(dc, {0, 0, width, height}, coveredByPanes(plan), kPaneBackground);
  if (plan.paneCount == 1) session.placeholderRect[1] = {};
  for (int pane = 0; pane < plan.paneCount; ++pane) paintPane(dc, pane, paneRect(pane));
  for (const FilledRect& line :
       {plan.divider, plan.leftSplitter, plan.leftPanelBar, plan.stampSplitter}) {
    fill(dc, line.rect, line.color);
  }
}

void paintBuffered(HDC window, const RECT& part, int width, int height) {
  const HDC buffer = backBufferFor(window, width, height);
  const int saved = SaveDC(buffer);
  IntersectClipRect(buffer, part.left, part.top, part.right, part.bottom);
  paintInto(buffer, width, height);
  RestoreDC(buffer, saved);
  if (buffer != window) {
    BitBlt(window, part.left, part.top, part.right - part.left, part.bottom - part.top, buffer,
           part.left, part.top, SRCCOPY);
  }
  if (!session.panes[0].page && !session.panes[1].page) releasePaintBuffers();
}

// What is painted later leaves `rect` out.
void exclude(HDC dc, const PixelRect& rect) {
  if (!rect.empty()) ExcludeClipRect(dc, rect.left, rect.top, rect.right, rect.bottom);
}

void fillForGood(HDC dc, const PixelRect& rect, Color color) {
  fill(dc, rect, color);
  exclude(dc, rect);
}

// Paints a pane's frame, page and shadow, and leaves the rest of it to the background.
void paintPage(HDC dc, const PaneSlot& slot, const PanePlan& plan) {
  SetViewportOrgEx(dc, plan.rect.left, plan.rect.top, nullptr);
  if (plan.framed) {
    for (const PixelRect& side : plan.frame) fillForGood(dc, side, kActiveFrameColor);
  }
  const int saved = SaveDC(dc);
  IntersectClipRect(dc, plan.content.left, plan.content.top, plan.content.right,
                    plan.content.bottom);
  drawPage(dc, slot, plan);
  RestoreDC(dc, saved);
  exclude(dc, common(plan.content, pageRect(slot, plan)));
  exclude(dc, common(plan.content, plan.shadow));
  SetViewportOrgEx(dc, 0, 0, nullptr);
}

// Paints pages with nothing over them, from the front to the back and each pixel once, so that
// nothing flickers without a buffer.
void paintPages(HDC dc, const WindowPicture& picture, const PixelRect& client) {
  const WindowPlan& plan = picture.window;
  for (const FilledRect& line :
       {plan.divider, plan.leftSplitter, plan.leftPanelBar, plan.stampSplitter}) {
    fillForGood(dc, line.rect, line.color);
  }
  for (PixelRect& place : session.placeholderRect) place = {};
  for (std::size_t pane = 0; pane < static_cast<std::size_t>(plan.paneCount); ++pane) {
    paintPage(dc, session.panes[pane], picture.panes[pane]);
  }
  fill(dc, client, kPaneBackground);
}

}  // namespace

void paintMainWindow() {
  PAINTSTRUCT paint{};
  const HDC window = BeginPaint(platform::windowHandles.main, &paint);
  const platform::PixelSize client = platform::mainWindowClientSize();
  const int width = std::max(client.width, 1);
  const int height = std::max(client.height, 1);
  const WindowPicture picture = pictureNow();
  if (picture.pagesOnly) {
    paintPages(window, picture, {0, 0, width, height});
  } else {
    paintBuffered(window, paint.rcPaint, width, height);
  }
  EndPaint(platform::windowHandles.main, &paint);
  notePainted(picture);
}

void releasePaintBuffers() {
  backBuffer = BackBuffer{};
}

}  // namespace quillmere
