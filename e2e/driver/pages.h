#pragma once

#include <windows.h>

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "support/pdf_builder.h"

// Documents whose pages can be told apart by their pixels, and where a page must be in a pane.
namespace quillmere::e2e {

struct Size {
  double width;
  double height;
};

// Page i (from 0) is filled with pageColor(i), which is unique among the first six pages.
std::string coloredPdf(int pages, double width = 300, double height = 400);
std::uint32_t pageColor(int page);

// One such page, to which annotations can be added.
test::PdfPage coloredPage(int page, Size size);

// A white page with lines of 24-point Courier that begin 72 points from the left. The first has its
// baseline 100 points from the top, each further one 50 below the one before.
test::PdfPage linedPage(const std::vector<std::string>& lines, Size size);
inline constexpr double kLineLeft = 72;        // points
inline constexpr double kFirstBaseline = 100;  // points from the top
inline constexpr double kLineStep = 50;        // points

// A white page with a red square of 60 points in its top left corner and a line of 24-point Courier
// that begins 72 points from the left, with its baseline `baseline` points from the top.
std::string markedPdf(int pages, double width, double height, const std::string& text = "",
                      double baseline = 200);
inline constexpr double kCourierAdvance = 14.4;  // points, at 24 points

// A length given at 96 DPI, in pixels of this desktop.
int dip(int length);

// Where Fit Page puts a page: within the pane less 4%, centred. Client pixels.
RECT fitPage(RECT pane, Size page);
// The zoom of Fit Page and Fit Width.
float fitPageZoom(RECT pane, Size page);
float fitWidthZoom(RECT pane, Size page);
// A page at this zoom, centred horizontally; centred vertically if it fits, otherwise 8 pixels from
// the top.
RECT placedPage(RECT pane, Size page, float zoom);
// Client pixels of a point of the page, given in points from its bottom left corner.
POINT placeOnPage(RECT page, float zoom, Size size, double x, double y);
// The visible part of a page.
RECT clipped(RECT page, RECT pane);
std::wstring percent(float zoom);

}  // namespace quillmere::e2e

bool operator==(const RECT& a, const RECT& b);
void PrintTo(const RECT& rect, std::ostream* out);
