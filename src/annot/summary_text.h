#pragma once

#include <string>
#include <vector>

#include "platform/text_ruler.h"

// How the text of a markup summary is measured and broken into lines.
namespace quillmere {

// Measures text in Helvetica, regular or bold, of one size in points.
class SummaryRuler {
 public:
  SummaryRuler(bool bold, double size);
  // Points, rounded up to quarters, so never too narrow; 0 for an empty text.
  double widthOf(std::u16string_view text) const;

 private:
  platform::TextRulerHandle ruler_;
};

// The lines of a text that is `width` points wide. Words stay whole unless one is wider than a
// line; line ends in the text are kept.
std::vector<std::u16string> WrapSummaryText(const std::u16string& text, bool bold, double size,
                                            double width);
std::vector<std::u16string> WrapSummaryText(const std::u16string& text, const SummaryRuler& ruler,
                                            double width);

// False when the standard fonts' encoding lacks a character of the line.
bool fitsStandardFonts(std::u16string_view line);
// The line with a question mark for each character that they lack.
std::u16string fittedToStandardFonts(std::u16string_view line);

}  // namespace quillmere
