#include <windows.h>

#include <gdiplus.h>

#include <cstdio>

#include "app/main_window.h"
#include "documents/close.h"
#include "documents/open_requests.h"
#include "platform/main_window.h"
#include "platform/profile.h"
#include "platform/text.h"
#include "platform/win32/window_handles.h"
#include "reader_window.h"
#include "samples.h"
#include "session/session.h"
#include "store/data_folder.h"
#include "store/onboarding.h"
#include "store/working_documents.h"

namespace quillmere::bench {

using platform::windowHandles;

namespace {

struct PlainPicture {
  HDC dc = nullptr;
  HBITMAP bitmap = nullptr;
  int width = 0;
  int height = 0;
};

void fitToClientArea(PlainPicture& picture, HDC window) {
  const platform::PixelSize client = platform::mainWindowClientSize();
  if (picture.width == client.width && picture.height == client.height) return;
  if (picture.dc == nullptr) picture.dc = CreateCompatibleDC(window);
  const HBITMAP previous = picture.bitmap;
  picture.bitmap = CreateCompatibleBitmap(window, client.width, client.height);
  SelectObject(picture.dc, picture.bitmap);
  if (previous != nullptr) DeleteObject(previous);
  picture.width = client.width;
  picture.height = client.height;
  PatBlt(picture.dc, 0, 0, client.width, client.height, WHITENESS);
}

PlainPicture plainPicture;

// Records when pages are painted.
struct PaintWatch {
  Stopwatch watch;
  PaintTimes times;
};
PaintWatch* paintWatch = nullptr;
WNDPROC readerProcedure = nullptr;

LRESULT CALLBACK watchingProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const LRESULT result = CallWindowProcW(readerProcedure, window, message, wParam, lParam);
  if (message == WM_PAINT && paintWatch != nullptr && session.panes[0].pageBitmap) {
    paintWatch->times.last = paintWatch->watch.milliseconds();
    if (paintWatch->times.first == 0) paintWatch->times.first = paintWatch->times.last;
  }
  return result;
}

// False when Windows refuses the window.
bool showReader() {
  if (!registerMainWindowClass() || !createMainWindow()) return false;
  readerProcedure = reinterpret_cast<WNDPROC>(SetWindowLongPtrW(
      windowHandles.main, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(watchingProcedure)));
  showMainWindow(SW_SHOWNORMAL);
  handleMessages();
  return true;
}

}  // namespace

void prepareSettings() {
  rememberDesktopShortcutPrompt();
  platform::writeProfileText(u"Updates", u"CheckAuto", u"0", GetIniPath());
}

void handleMessages() {
  MSG message{};
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

int runInReader(const std::function<bool()>& measure) {
  prepareSettings();
  if (!showReader()) {
    std::fputs("The main window could not be made.\n", stderr);
    return 1;
  }
  const bool measured = measure();
  closeAllDocuments();
  DestroyWindow(windowHandles.main);
  if (!measured) std::fputs("Something could not be measured.\n", stderr);
  return measured ? 0 : 1;
}

bool openAndPaint(const std::string& path) {
  const bool opened = openRequested(platform::fromUtf8(path), 0, kWorkingDocsToHead, true);
  paintNow();
  return opened;
}

PaintTimes timePainting(const std::function<void()>& work) {
  PaintWatch painting;
  paintWatch = &painting;
  work();
  painting.times.work = painting.watch.milliseconds();
  paintNow();
  painting.times.whole = painting.watch.milliseconds();
  paintWatch = nullptr;
  return painting.times;
}

void paintNow() {
  RedrawWindow(windowHandles.main, nullptr, nullptr, RDW_UPDATENOW | RDW_NOCHILDREN);
  GdiFlush();
}

void copyPlainPicture() {
  PlainPicture& picture = plainPicture;
  const HDC window = GetDC(windowHandles.main);
  fitToClientArea(picture, window);
  BitBlt(window, 0, 0, picture.width, picture.height, picture.dc, 0, 0, SRCCOPY);
  ReleaseDC(windowHandles.main, window);
  GdiFlush();
}

void drawOnPlainPicture(const platform::Picture& picture, int width, int height) {
  Gdiplus::Graphics graphics(plainPicture.dc);
  graphics.SetInterpolationMode(Gdiplus::InterpolationModeHighQualityBicubic);
  graphics.SetPixelOffsetMode(Gdiplus::PixelOffsetModeHalf);
  auto* first = reinterpret_cast<BYTE*>(const_cast<std::uint32_t*>(picture.pixels.data()));
  Gdiplus::Bitmap bitmap(picture.width, picture.height, picture.width * 4, PixelFormat32bppARGB,
                         first);
  graphics.DrawImage(&bitmap, Gdiplus::Rect(100, 100, width, height));
}

}  // namespace quillmere::bench
