#pragma once

#include <memory>
#include <string_view>

namespace quillmere::platform {

// Measures text set in Arial. GDI+ must be running.
struct TextRuler;

// `pixelSize` is the height of the font in pixels, at least 1. Never null.
TextRuler* createTextRuler(int pixelSize, bool bold);
void destroyTextRuler(TextRuler* ruler);

// Pixels from the text's start to its end, in one line; trailing blanks do not count. A text is
// never narrower than a text that it begins with.
double measureText(const TextRuler& ruler, std::u16string_view text);

struct TextRulerDeleter {
  void operator()(TextRuler* ruler) const { destroyTextRuler(ruler); }
};
using TextRulerHandle = std::unique_ptr<TextRuler, TextRulerDeleter>;

}  // namespace quillmere::platform
