// Usage: window_picture CLASS TITLE_PART OUT.png [SECONDS]
// Waits until a window of the class shows the text in its title and has finished painting, then
// writes a picture of the whole window. Exits with 1 when that does not happen in time; the picture
// then shows the last state.
#include <windows.h>
// GDI+ needs the COM types first.
#include <objidl.h>

#include <gdiplus.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

constexpr DWORD kPollMilliseconds = 100;
// So many equal pictures in a row mean finished; more are needed while the middle has only one
// colour.
constexpr int kStableWhenPainted = 4;
constexpr int kStableWhenPlain = 30;

struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;

  bool operator==(const Picture& other) const = default;
};

std::wstring titleOf(HWND window) {
  wchar_t text[512] = L"";
  GetWindowTextW(window, text, static_cast<int>(std::size(text)));
  return text;
}

HWND findWindow(const std::wstring& className, const std::wstring& titlePart) {
  HWND window = nullptr;
  while ((window = FindWindowExW(nullptr, window, className.c_str(), nullptr)) != nullptr) {
    if (IsWindowVisible(window) && titleOf(window).find(titlePart) != std::wstring::npos) {
      return window;
    }
  }
  return nullptr;
}

Picture takePicture(HWND window) {
  RECT frame{};
  GetWindowRect(window, &frame);
  Picture picture{frame.right - frame.left, frame.bottom - frame.top, {}};
  if (picture.width <= 0 || picture.height <= 0) return {};

  BITMAPINFO info{};
  info.bmiHeader = {sizeof(info.bmiHeader), picture.width, -picture.height, 1, 32, BI_RGB};
  void* bits = nullptr;
  HDC screen = GetDC(nullptr);
  HDC memory = CreateCompatibleDC(screen);
  HBITMAP bitmap = CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  HGDIOBJ before = SelectObject(memory, bitmap);
  BitBlt(memory, 0, 0, picture.width, picture.height, screen, frame.left, frame.top, SRCCOPY);
  GdiFlush();
  const auto* first = static_cast<const std::uint32_t*>(bits);
  picture.pixels.assign(first, first + picture.width * picture.height);
  SelectObject(memory, before);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
  return picture;
}

bool middleIsPlain(const Picture& picture) {
  const int left = picture.width / 4;
  const int top = picture.height / 4;
  for (int y = top; y < picture.height - top; ++y) {
    for (int x = left; x < picture.width - left; ++x) {
      if (picture.pixels[y * picture.width + x] != picture.pixels[top * picture.width + left]) {
        return false;
      }
    }
  }
  return true;
}

bool savePng(Picture& picture, const std::wstring& path) {
  constexpr CLSID kPngEncoder = {
      0x557cf406, 0x1a04, 0x11d3, {0x9a, 0x73, 0x00, 0x00, 0xf8, 0x1e, 0xf3, 0x2e}};
  Gdiplus::Bitmap bitmap(picture.width, picture.height, picture.width * 4, PixelFormat32bppRGB,
                         reinterpret_cast<BYTE*>(picture.pixels.data()));
  return bitmap.Save(path.c_str(), &kPngEncoder, nullptr) == Gdiplus::Ok;
}

BOOL CALLBACK printTitle(HWND window, LPARAM) {
  wchar_t className[128] = L"";
  GetClassNameW(window, className, static_cast<int>(std::size(className)));
  if (IsWindowVisible(window)) {
    std::fwprintf(stderr, L"  %ls: %ls\n", className, titleOf(window).c_str());
  }
  return TRUE;
}

// True when the window stopped changing; `picture` is the last one taken, if any.
bool waitForPicture(const std::wstring& className, const std::wstring& titlePart, DWORD limit,
                    Picture& picture) {
  const ULONGLONG end = GetTickCount64() + limit;
  int equal = 0;
  for (; GetTickCount64() < end; Sleep(kPollMilliseconds)) {
    HWND window = findWindow(className, titlePart);
    if (window == nullptr) continue;
    Picture next = takePicture(window);
    equal = next == picture ? equal + 1 : 0;
    picture = std::move(next);
    if (picture.pixels.empty()) continue;
    if (equal >= kStableWhenPainted && (equal >= kStableWhenPlain || !middleIsPlain(picture))) {
      return true;
    }
  }
  return false;
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
  if (count < 4) {
    std::fputs("Usage: window_picture CLASS TITLE_PART OUT.png [SECONDS]\n", stderr);
    return 2;
  }
  const DWORD seconds = count > 4 ? std::wcstoul(arguments[4], nullptr, 10) : 30;
  Gdiplus::GdiplusStartupInput input;
  ULONG_PTR token = 0;
  Gdiplus::GdiplusStartup(&token, &input, nullptr);

  Picture picture;
  bool finished = waitForPicture(arguments[1], arguments[2], seconds * 1000, picture);
  if (!finished) {
    std::fputs("The window did not come to rest in time. Visible windows:\n", stderr);
    EnumWindows(printTitle, 0);
  }
  if (!picture.pixels.empty() && !savePng(picture, arguments[3])) {
    std::fputs("Could not write the picture.\n", stderr);
    finished = false;
  }
  Gdiplus::GdiplusShutdown(token);
  return finished ? 0 : 1;
}
