// The least that a Windows program must do to show the first page of a document with PDFium: the
// baseline for the reader's memory. Its command line is the document's path.

#include <windows.h>

#include <fpdfview.h>

#include "plain_pdfium.h"
#include "platform/text.h"
#include "platform/win32/wide.h"

namespace {

using namespace quillmere;

// Leaves about the room that the reader's status bar and margins take.
constexpr double kShareOfHeight = 0.93;

struct PagePicture {
  HDC dc = nullptr;
  int width = 0;
  int height = 0;
};
PagePicture picture;
bench::PlainView view;

void renderFirstPage(const std::string& path, int clientHeight) {
  if (!bench::openPlain(view, path)) return;
  bench::loadPlainPage(view, 0, false);
  const FPDF_PAGE page = view.page.get();
  const double zoom = clientHeight * kShareOfHeight / FPDF_GetPageHeightF(page);
  picture.width = static_cast<int>(FPDF_GetPageWidthF(page) * zoom);
  picture.height = static_cast<int>(FPDF_GetPageHeightF(page) * zoom);
  BITMAPINFO info{};
  info.bmiHeader = {
      sizeof(BITMAPINFOHEADER), picture.width, -picture.height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* pixels = nullptr;
  const HBITMAP bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
  bench::renderPlain(page, {picture.width, picture.height}, 0, pixels);
  picture.dc = CreateCompatibleDC(nullptr);
  SelectObject(picture.dc, bitmap);
}

LRESULT CALLBACK procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_PAINT) {
    PAINTSTRUCT paint{};
    const HDC dc = BeginPaint(window, &paint);
    BitBlt(dc, 0, 0, picture.width, picture.height, picture.dc, 0, 0, SRCCOPY);
    EndPaint(window, &paint);
    return 0;
  }
  if (message == WM_DESTROY) PostQuitMessage(0);
  return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, PWSTR commandLine, int showCommand) {
  bench::startPdfium();
  WNDCLASSW description{};
  description.lpfnWndProc = procedure;
  description.hInstance = instance;
  description.hCursor = LoadCursorW(nullptr, IDC_ARROW);
  description.hbrBackground = GetSysColorBrush(COLOR_WINDOW);
  description.lpszClassName = L"QuillmerePlainWindow";
  RegisterClassW(&description);
  const HWND window =
      CreateWindowExW(0, description.lpszClassName, L"", WS_OVERLAPPEDWINDOW, CW_USEDEFAULT,
                      CW_USEDEFAULT, 1100, 800, nullptr, nullptr, instance, nullptr);
  RECT client{};
  GetClientRect(window, &client);
  renderFirstPage(platform::toUtf8(platform::fromWide(commandLine)), client.bottom);
  ShowWindow(window, showCommand);
  UpdateWindow(window);
  MSG message{};
  while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  return 0;
}
