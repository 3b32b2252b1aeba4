#pragma once

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "support/pdf_builder.h"

// Pages with text in known places and markups over it.
namespace quillmere::test {

struct Box {
  double left;
  double bottom;
  double right;
  double top;
};

inline std::string number(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.4f", value);
  return text;
}

// An annotation with these quads, its rectangle around them.
inline std::string markup(const std::string& subtype, const std::vector<Box>& quads,
                          const std::string& entries = "/C [1 1 0]") {
  Box all = quads.front();
  std::string points;
  for (const Box& quad : quads) {
    all = {std::min(all.left, quad.left), std::min(all.bottom, quad.bottom),
           std::max(all.right, quad.right), std::max(all.top, quad.top)};
    for (const double value : {quad.left, quad.top, quad.right, quad.top, quad.left, quad.bottom,
                               quad.right, quad.bottom}) {
      points += number(value) + " ";
    }
  }
  return "<< /Type /Annot /Subtype /" + subtype + " /F 4 /Rect [" + number(all.left) + " " +
         number(all.bottom) + " " + number(all.right) + " " + number(all.top) + "] /QuadPoints [" +
         points + "] " + entries + " >>";
}

inline std::string note(const std::u16string& text) {
  return "/C [1 1 0] /Contents " + PdfFile::textString(text);
}

// Lines of Courier, 10 points with an advance of 6, from x = 72; the first has its baseline at 700,
// each further one 20 below.
inline constexpr double kAdvance = 6;
inline constexpr double kLineDistance = 20;
inline double baselineOf(int line) {
  return 700 - kLineDistance * line;
}
inline PdfPage courierPage(const std::vector<std::string>& lines) {
  PdfPage page;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    page.content += textContent(lines[i], 72, baselineOf(static_cast<int>(i)), 10, "F3");
  }
  return page;
}

// The box around characters `first` to `last` of a line.
inline Box charactersOf(int line, int first, int last) {
  const double y = baselineOf(line);
  return {72 + kAdvance * first + 0.5, y - 2, 72 + kAdvance * (last + 1) - 0.5, y + 8};
}

}  // namespace quillmere::test
