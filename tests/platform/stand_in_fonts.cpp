#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/font_files.h"
#include "platform/text_ruler.h"
#include "stand_in.h"

namespace quillmere::platform {

struct TextRuler {
  int pixelSize = 1;
  bool bold = false;
};

namespace {

constexpr char kFontFolder[] = "/usr/share/fonts/truetype/liberation/";

// Advances of the printable characters of ASCII in a face like Helvetica, in thousandths of its
// size.
constexpr int kAdvances[] = {
    278, 278, 355, 556, 556, 889, 667, 191, 333, 333, 389, 584, 278, 333,  278, 278, 556, 556, 556,
    556, 556, 556, 556, 556, 556, 556, 278, 278, 584, 584, 584, 556, 1015, 667, 667, 722, 722, 667,
    611, 778, 722, 278, 500, 667, 556, 833, 722, 778, 667, 778, 722, 667,  611, 722, 667, 944, 667,
    667, 611, 278, 278, 278, 469, 556, 333, 556, 556, 500, 556, 556, 278,  556, 556, 222, 222, 500,
    222, 833, 556, 556, 556, 556, 333, 500, 278, 556, 500, 722, 500, 500,  500, 334, 260, 334, 584};
constexpr int kOtherAdvance = 600;  // of a unit beyond ASCII
constexpr double kBoldFactor = 1.06;
constexpr char16_t kFirst = u' ';

int advanceOf(char16_t unit) {
  const std::size_t index = static_cast<std::size_t>(unit - kFirst);
  return unit >= kFirst && index < std::size(kAdvances) ? kAdvances[index] : kOtherAdvance;
}

}  // namespace

TextRuler* createTextRuler(int pixelSize, bool bold) {
  return new TextRuler{std::max(pixelSize, 1), bold};
}

void destroyTextRuler(TextRuler* ruler) {
  delete ruler;
}

double measureText(const TextRuler& ruler, std::u16string_view text) {
  while (!text.empty() && text.back() == u' ') text.remove_suffix(1);
  int thousandths = 0;
  for (const char16_t unit : text) thousandths += advanceOf(unit);
  return thousandths * 0.001 * ruler.pixelSize * (ruler.bold ? kBoldFactor : 1.0);
}

std::u16string faceFor(std::u16string_view) {
  return u"Liberation Sans";
}

std::vector<std::uint8_t> fontFile(const std::u16string&, bool bold) {
  if (!standIn().fontFilesThere) return {};
  ++standIn().fontFilesRead;
  const std::string name = bold ? "LiberationSans-Bold.ttf" : "LiberationSans-Regular.ttf";
  std::ifstream file(std::filesystem::path(kFontFolder + name), std::ios::binary);
  return std::vector<std::uint8_t>(std::istreambuf_iterator<char>(file), {});
}

}  // namespace quillmere::platform
