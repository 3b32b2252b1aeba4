#include "panels/stamp_panel_window.h"

#include <windows.h>

#include <gdiplus.h>
#include <windowsx.h>

#include <algorithm>

#include "panels/stamp_panel.h"
#include "platform/win32/sized.h"
#include "platform/win32/wide.h"
#include "platform/win32/window_handles.h"
#include "session/density.h"
#include "session/session.h"

namespace quillmere {

using platform::windowHandles;

namespace {

constexpr const wchar_t* kClassName = L"QuillmereStampPanel";

const Gdiplus::Color kGround(255, 240, 240, 240);
const Gdiplus::Color kCard(255, 255, 255, 255);
const Gdiplus::Color kEdge(255, 200, 200, 200);
const Gdiplus::Color kHoverEdge(255, 150, 185, 230);
const Gdiplus::Color kChosenEdge(255, 80, 140, 220);
const Gdiplus::Color kButton(255, 225, 225, 225);
const Gdiplus::Color kButtonDown(255, 204, 220, 240);

// Pixels at 96 DPI.
constexpr int kButtonInset = 4;
constexpr int kCardInset = 3;  // around a thumbnail
constexpr int kChosenThickness = 2;

Gdiplus::Rect toRect(const PixelRect& rect) {
  return {rect.left, rect.top, rect.width(), rect.height()};
}

PixelRect grown(const PixelRect& rect, int by) {
  return {rect.left - by, rect.top - by, rect.right + by, rect.bottom + by};
}

void fillAndFrame(Gdiplus::Graphics& graphics, const PixelRect& rect, const Gdiplus::Color& ground,
                  const Gdiplus::Color& edge, int thickness) {
  const Gdiplus::SolidBrush brush(ground);
  graphics.FillRectangle(&brush, toRect(rect));
  const Gdiplus::SolidBrush frame(edge);
  const auto side = [&](const PixelRect& line) { graphics.FillRectangle(&frame, toRect(line)); };
  side({rect.left, rect.top, rect.right, rect.top + thickness});
  side({rect.left, rect.bottom - thickness, rect.right, rect.bottom});
  side({rect.left, rect.top, rect.left + thickness, rect.bottom});
  side({rect.right - thickness, rect.top, rect.right, rect.bottom});
}

void drawButton(HDC dc, Gdiplus::Graphics& graphics, const StampPanelButton& button) {
  const PixelRect rect{button.rect.left + scaled(kButtonInset), button.rect.top,
                       button.rect.right - scaled(kButtonInset), button.rect.bottom};
  fillAndFrame(graphics, rect, button.pressed ? kButtonDown : kButton,
               button.hovered ? kHoverEdge : kEdge, 1);
  RECT text{rect.left, rect.top, rect.right, rect.bottom};
  DrawTextW(dc, platform::wide(button.label), -1, &text,
            DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}

void drawThumbnail(Gdiplus::Graphics& graphics, const StampPanelThumbnail& thumbnail) {
  const Gdiplus::Color& edge =
      thumbnail.selected ? kChosenEdge : (thumbnail.hovered ? kHoverEdge : kEdge);
  fillAndFrame(graphics, grown(thumbnail.rect, scaled(kCardInset)), kCard, edge,
               thumbnail.selected ? scaled(kChosenThickness) : 1);
  if (!thumbnail.picture) return;
  const platform::Picture& picture = *thumbnail.picture;
  auto* first = reinterpret_cast<BYTE*>(const_cast<std::uint32_t*>(picture.pixels.data()));
  Gdiplus::Bitmap bitmap(picture.width, picture.height, picture.width * 4, PixelFormat32bppARGB,
                         first);
  // Without it the picture's edge mixes with the transparency around it; a small one would fade.
  Gdiplus::ImageAttributes attributes;
  attributes.SetWrapMode(Gdiplus::WrapModeTileFlipXY);
  graphics.DrawImage(&bitmap, toRect(thumbnail.rect), 0, 0, picture.width, picture.height,
                     Gdiplus::UnitPixel, &attributes);
}

void paintPanel(HDC dc, const RECT& client) {
  const StampPanelPlan plan = planStampPanel();
  const HGDIOBJ before = SelectObject(dc, windowHandles.headerFont);
  SetBkMode(dc, TRANSPARENT);
  SetTextColor(dc, RGB(0, 0, 0));
  Gdiplus::Graphics graphics(dc);
  const Gdiplus::SolidBrush ground(kGround);
  graphics.FillRectangle(&ground, 0, 0, static_cast<INT>(client.right),
                         static_cast<INT>(client.bottom));
  graphics.SetInterpolationMode(Gdiplus::InterpolationModeHighQualityBicubic);
  graphics.SetPixelOffsetMode(Gdiplus::PixelOffsetModeHalf);
  for (const StampPanelButton& button : plan.buttons) drawButton(dc, graphics, button);
  graphics.SetClip(toRect(plan.list));
  for (const StampPanelThumbnail& thumbnail : plan.thumbnails) drawThumbnail(graphics, thumbnail);
  const Gdiplus::SolidBrush mark(kChosenEdge);
  if (!plan.insertionMark.empty()) graphics.FillRectangle(&mark, toRect(plan.insertionMark));
  SelectObject(dc, before);
}

// Paints into a picture of its own first, so that nothing flickers during a drag.
void onPaint(HWND window) {
  PAINTSTRUCT paint{};
  const HDC screen = BeginPaint(window, &paint);
  RECT client{};
  GetClientRect(window, &client);
  const HDC memory = CreateCompatibleDC(screen);
  const HBITMAP picture = CreateCompatibleBitmap(screen, std::max<LONG>(client.right, 1),
                                                 std::max<LONG>(client.bottom, 1));
  const HGDIOBJ before = SelectObject(memory, picture);
  paintPanel(memory, client);
  BitBlt(screen, 0, 0, client.right, client.bottom, memory, 0, 0, SRCCOPY);
  SelectObject(memory, before);
  DeleteObject(picture);
  DeleteDC(memory);
  EndPaint(window, &paint);
}

void onPress(HWND window, int x, int y) {
  SetFocus(window);
  pressStampPanel(x, y);
  if (session.stampDrag.dragActive) SetCapture(window);
}

bool givingMouseBack = false;

// A drop may ask something, and a box gets no clicks while the panel has the mouse.
void onRelease(HWND window, int x, int y) {
  givingMouseBack = true;
  if (GetCapture() == window) ReleaseCapture();
  givingMouseBack = false;
  releaseStampPanel(x, y);
}

bool pointerIsOver(HWND window) {
  POINT place{};
  return GetCursorPos(&place) && WindowFromPoint(place) == window;
}

// The pointer may be on another window by the time that a movement is handled, and not every system
// then tells that it left.
void onMove(HWND window, int x, int y) {
  TRACKMOUSEEVENT leaving{sizeof(leaving), TME_LEAVE, window, 0};
  TrackMouseEvent(&leaving);
  moveOverStampPanel(x, y);
  if (!pointerIsOver(window)) leaveStampPanel();
}

LRESULT CALLBACK panelProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const int x = GET_X_LPARAM(lParam);
  const int y = GET_Y_LPARAM(lParam);
  switch (message) {
    case WM_PAINT:
      onPaint(window);
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      onPress(window, x, y);
      return 0;
    case WM_MOUSEMOVE:
      onMove(window, x, y);
      return 0;
    case WM_LBUTTONUP:
      onRelease(window, x, y);
      return 0;
    case WM_CAPTURECHANGED:
      if (!givingMouseBack) cancelStampDrag();
      return 0;
    case WM_MOUSELEAVE:
      leaveStampPanel();
      return 0;
    case WM_KEYDOWN:
      if (wParam == VK_DELETE && deleteSelectedStamp()) return 0;
      return SendMessageW(windowHandles.main, message, wParam, lParam);
    case WM_MOUSEWHEEL:  // the main window asks what is under the pointer
      return SendMessageW(windowHandles.main, message, wParam, lParam);
    default:
      return DefWindowProcW(window, message, wParam, lParam);
  }
}

}  // namespace

void registerStampPanelClass() {
  auto description = platform::sized<WNDCLASSEXW>();
  description.style = CS_DBLCLKS | CS_HREDRAW | CS_VREDRAW;
  description.lpfnWndProc = panelProcedure;
  description.hInstance = GetModuleHandleW(nullptr);
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.lpszClassName = kClassName;
  RegisterClassExW(&description);
}

}  // namespace quillmere
