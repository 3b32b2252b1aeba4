#include "platform/text_ruler.h"

#include <windows.h>

#include <gdiplus.h>

#include <algorithm>

#include "platform/win32/wide.h"

namespace quillmere::platform {

struct TextRuler {
  TextRuler(int pixelSize, bool bold)
      : bitmap(1, 1, PixelFormat32bppARGB),
        graphics(&bitmap),
        font(L"Arial", static_cast<Gdiplus::REAL>(pixelSize),
             bold ? Gdiplus::FontStyleBold : Gdiplus::FontStyleRegular, Gdiplus::UnitPixel),
        size(pixelSize) {
    graphics.SetTextRenderingHint(Gdiplus::TextRenderingHintAntiAliasGridFit);
  }

  Gdiplus::Bitmap bitmap;
  mutable Gdiplus::Graphics graphics;
  Gdiplus::Font font;
  int size;
};

namespace {

constexpr Gdiplus::REAL kNoLimit = 100000;  // pixels
// Without any font, text must still be broken into lines.
constexpr double kGuessedAdvance = 0.5;  // of the font's size

}  // namespace

TextRuler* createTextRuler(int pixelSize, bool bold) {
  return new TextRuler(std::max(pixelSize, 1), bold);
}

void destroyTextRuler(TextRuler* ruler) {
  delete ruler;
}

double measureText(const TextRuler& ruler, std::u16string_view text) {
  // Some systems count trailing blanks.
  while (!text.empty() && text.back() == u' ') text.remove_suffix(1);
  if (text.empty()) return 0;
  Gdiplus::RectF bounds;
  const Gdiplus::Status status = ruler.graphics.MeasureString(
      wideUnits(text), static_cast<INT>(text.size()), &ruler.font, {0, 0, kNoLimit, kNoLimit},
      Gdiplus::StringFormat::GenericTypographic(), &bounds);
  if (status != Gdiplus::Ok) return static_cast<double>(text.size()) * ruler.size * kGuessedAdvance;
  return bounds.Width;
}

}  // namespace quillmere::platform
