#pragma once

#include <memory>
#include <string_view>

namespace quillmere::platform {

// Measures text that is set in Arial. GDI+ must be running.
struct TextRuler;

// `pixelSize` is the height of the font in pixels, at least 1. Never null.
TextRuler* createTextRuler(int pixelSize, bool bold);
void destroyTextRuler(TextRuler* ruler);

// Pixels from the text's start to its end, in one line; blanks at the end do not count. The longer
// of two texts of which one begins with the other is never narrower.
double measureText(const TextRuler& ruler, std::u16string_view text);

struct TextRulerDeleter {
  void operator()(TextRuler* ruler) const { destroyTextRuler(ruler); }
};
using TextRulerHandle = std::unique_ptr<TextRuler, TextRulerDeleter>;

}  // namespace quillmere::platform
