#include "driver/pages.h"

#include <algorithm>
#include <iterator>
#include <ostream>

namespace quillmere::e2e {
namespace {

struct PageColor {
  int red;
  int green;
  int blue;
};
// Any renderer reproduces channels of 0 and 1 exactly.
constexpr PageColor kPageColors[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1},
                                     {1, 1, 0}, {0, 1, 1}, {1, 0, 1}};

const PageColor& colorOf(int page) {
  return kPageColors[static_cast<std::size_t>(page) % std::size(kPageColors)];
}

constexpr double kTextSize = 24;  // points
constexpr double kFitMargin = 0.96;
constexpr int kVerticalMargin = 8;  // at 96 DPI

float clamped(double zoom) {
  return static_cast<float>(std::max(std::min(zoom, 5.0), 0.2));
}

int widthOf(RECT rect) {
  return rect.right - rect.left;
}
int heightOf(RECT rect) {
  return rect.bottom - rect.top;
}

RECT pageAt(RECT pane, Size page, float zoom, float panX, float panY) {
  const int left = pane.left + static_cast<int>(panX);
  const int top = pane.top + static_cast<int>(panY);
  return {left, top, left + static_cast<int>(static_cast<double>(zoom) * page.width),
          top + static_cast<int>(static_cast<double>(zoom) * page.height)};
}

}  // namespace

int dip(int length) {
  return MulDiv(length, static_cast<int>(GetDpiForSystem()), 96);
}

std::string coloredPdf(int pages, double width, double height) {
  std::vector<test::PdfPage> list;
  for (int i = 0; i < pages; ++i) {
    list.push_back(coloredPage(i, {width, height}));
  }
  return test::buildPdf(list);
}

test::PdfPage coloredPage(int page, Size size) {
  const PageColor& color = colorOf(page);
  test::PdfPage result;
  result.width = size.width;
  result.height = size.height;
  result.content =
      test::rectangleContent(0, 0, size.width, size.height, color.red, color.green, color.blue);
  return result;
}

test::PdfPage linedPage(const std::vector<std::string>& lines, Size size) {
  test::PdfPage page;
  page.width = size.width;
  page.height = size.height;
  double baseline = size.height - kFirstBaseline;
  for (const std::string& line : lines) {
    page.content += test::textContent(line, kLineLeft, baseline, kTextSize, "F3");
    baseline -= kLineStep;
  }
  return page;
}

std::uint32_t pageColor(int page) {
  const PageColor& color = colorOf(page);
  return static_cast<std::uint32_t>(color.red * 0xFF0000 + color.green * 0xFF00 +
                                    color.blue * 0xFF);
}

std::string markedPdf(int pages, double width, double height, const std::string& text,
                      double baseline) {
  test::PdfPage page;
  page.width = width;
  page.height = height;
  page.content = test::rectangleContent(0, height - 60, 60, 60, 1, 0, 0);
  if (!text.empty()) {
    page.content += "0 0 0 rg\n" + test::textContent(text, 72, height - baseline, 24, "F3");
  }
  return test::buildPdf(std::vector<test::PdfPage>(static_cast<std::size_t>(pages), page));
}

float fitPageZoom(RECT pane, Size page) {
  return clamped(std::min(heightOf(pane) / page.height, widthOf(pane) / page.width) * kFitMargin);
}

float fitWidthZoom(RECT pane, Size page) {
  return clamped(widthOf(pane) / page.width * kFitMargin);
}

RECT fitPage(RECT pane, Size page) {
  const float zoom = fitPageZoom(pane, page);
  return pageAt(pane, page, zoom,
                static_cast<float>((widthOf(pane) - static_cast<double>(zoom) * page.width) / 2),
                static_cast<float>((heightOf(pane) - static_cast<double>(zoom) * page.height) / 2));
}

RECT placedPage(RECT pane, Size page, float zoom) {
  const double height = static_cast<double>(zoom) * page.height;
  const auto margin = static_cast<float>(dip(kVerticalMargin));
  const bool fits = heightOf(pane) - dip(2 * kVerticalMargin) >= height;
  const auto panY = fits ? static_cast<float>((heightOf(pane) - height) / 2) : margin;
  return pageAt(pane, page, zoom,
                static_cast<float>((widthOf(pane) - static_cast<double>(zoom) * page.width) / 2),
                panY);
}

POINT placeOnPage(RECT page, float zoom, Size size, double x, double y) {
  return {page.left + static_cast<LONG>(x * zoom),
          page.top + static_cast<LONG>((size.height - y) * zoom)};
}

RECT clipped(RECT page, RECT pane) {
  RECT visible{};
  IntersectRect(&visible, &page, &pane);
  return visible;
}

std::wstring percent(float zoom) {
  return L"Zoom: " + std::to_wstring(static_cast<int>(zoom * 100 + 0.5)) + L"%";
}

}  // namespace quillmere::e2e

bool operator==(const RECT& a, const RECT& b) {
  return EqualRect(&a, &b) != FALSE;
}

void PrintTo(const RECT& rect, std::ostream* out) {
  *out << "(" << rect.left << ", " << rect.top << ")-(" << rect.right << ", " << rect.bottom << ")";
}
