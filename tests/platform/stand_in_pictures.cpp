#include <algorithm>
#include <cmath>
#include <string>

#include "platform/files.h"
#include "platform/pictures.h"
#include "platform/text_ruler.h"
#include "stand_in.h"
#include "support/png_file.h"

// Pictures are PNG files of the simplest kind; text is a row of bars of the letters' widths.
namespace quillmere::platform {

namespace {

constexpr double kLineHeight = 1.15;  // of the font's size
constexpr double kPadding = 1.0 / 6;  // on each side, of the font's size
constexpr double kInkTop = 0.2;       // of the font's size
constexpr double kInkBottom = 0.9;

struct Family {
  const char16_t* name;
  double ascent;
};
constexpr Family kFamilies[] = {{u"Arial", 1854.0 / 2048},
                                {u"Times New Roman", 1825.0 / 2048},
                                {u"Courier New", 1705.0 / 2048}};

std::vector<std::u16string_view> linesOf(std::u16string_view text) {
  std::vector<std::u16string_view> lines;
  for (;;) {
    const std::size_t end = text.find(u'\n');
    std::u16string_view line = text.substr(0, end);
    if (line.ends_with(u'\r')) line.remove_suffix(1);
    lines.push_back(line);
    if (end == std::u16string_view::npos) return lines;
    text.remove_prefix(end + 1);
  }
}

double paddingOf(const TextFace& face, TextSetting setting) {
  return setting == TextSetting::Padded ? face.pixelSize * kPadding : 0;
}

class Canvas {
 public:
  explicit Canvas(Picture& picture) : picture_(picture) {}
  void fill(double left, double top, double right, double bottom, std::uint32_t pixel) {
    const int fromX = std::max(static_cast<int>(left), 0);
    const int fromY = std::max(static_cast<int>(top), 0);
    for (int y = fromY; y < std::min(static_cast<int>(bottom), picture_.height); ++y) {
      for (int x = fromX; x < std::min(static_cast<int>(right), picture_.width); ++x) {
        picture_.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(picture_.width) +
                        static_cast<std::size_t>(x)] = pixel;
      }
    }
  }

 private:
  Picture& picture_;
};

}  // namespace

SharedPicture loadPicture(const std::u16string& path) {
  ++standIn().picturesDecoded;
  const auto bytes = readFileShared(path, 1 << 30);
  if (!bytes) return nullptr;
  return test::decodePng({reinterpret_cast<const char*>(bytes->data()), bytes->size()});
}

bool savePng(const Picture& picture, const std::u16string& path) {
  const std::string bytes = test::encodePng(picture);
  const bool existed = fileExists(path);
  if (writeFile(path, bytes.data(), bytes.size())) return true;
  if (!existed) deleteFile(path);
  return false;
}

std::u16string picturePatterns() {
  return standIn().picturePatterns;
}

TextExtent measureTextBox(const TextFace& face, TextSetting setting, std::u16string_view text) {
  if (text.empty()) return {};
  const TextRulerHandle ruler(createTextRuler(face.pixelSize, face.bold));
  double width = 0;
  const std::vector<std::u16string_view> lines = linesOf(text);
  for (const std::u16string_view line : lines) width = std::max(width, measureText(*ruler, line));
  const double padding = paddingOf(face, setting);
  return {width + 2 * padding,
          static_cast<double>(lines.size()) * kLineHeight * face.pixelSize + padding};
}

SharedPicture drawTextPicture(const TextFace& face, TextSetting setting, std::u16string_view text,
                              std::uint32_t color, const TextPlace& place) {
  ++standIn().textsDrawn;
  auto picture = std::make_shared<Picture>(test::plainPicture(place.width, place.height, 0));
  Canvas canvas(*picture);
  const TextRulerHandle ruler(createTextRuler(face.pixelSize, face.bold));
  double top = place.top;
  for (const std::u16string_view line : linesOf(text)) {
    double left = place.left + paddingOf(face, setting);
    for (std::size_t i = 0; i < line.size(); ++i) {
      const double right = left + measureText(*ruler, line.substr(i, 1));
      canvas.fill(left, top + kInkTop * face.pixelSize, right - 1,
                  top + kInkBottom * face.pixelSize, 0xFF000000 | color);
      left = right;
    }
    top += kLineHeight * face.pixelSize;
  }
  return picture;
}

std::optional<double> cellAscent(const std::u16string& family, bool) {
  const auto* found = std::find_if(std::begin(kFamilies), std::end(kFamilies),
                                   [&](const Family& row) { return family == row.name; });
  if (found == std::end(kFamilies) || !standIn().fontFilesThere) return std::nullopt;
  return found->ascent;
}

}  // namespace quillmere::platform
