#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Picture files, by the system's decoders, and text drawn as a picture. GDI+ must be running.
namespace quillmere::platform {

// Rows follow each other from the top without gaps. A pixel is 0xAARRGGBB; its colour is not
// multiplied by its alpha. A picture has at least one pixel.
struct Picture {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;
};
using SharedPicture = std::shared_ptr<const Picture>;

// Larger pictures are refused: decoded, one would take more than 400 MB.
inline constexpr std::int64_t kMostPicturePixels = 100'000'000;

// Decodes a file of any format that the system knows, going by its content and not by its name: the
// first frame, turned upright as its orientation tag says. Null when it cannot be read or decoded.
SharedPicture loadPicture(const std::u16string& path);

// Writes the picture as a PNG file, replacing one of that name. False on failure, with nothing left
// of a new file that could not be written whole; one that was there may be damaged.
bool savePng(const Picture& picture, const std::u16string& path);

// Patterns of the files that the system decodes, such as "*.png;*.jpg", in lower case. Empty when
// it names none.
std::u16string picturePatterns();

struct TextFace {
  std::u16string family;  // the system's default family stands in for a missing one
  int pixelSize = 1;      // height of the font, at least 1
  bool bold = false;
};

// How text lies in its box.
enum class TextSetting {
  Tight,   // glyphs begin at the box's edge and are fitted to the pixel grid
  Padded,  // with the margins that the system gives lines of text
};

struct TextExtent {
  double width = 0;  // pixels
  double height = 0;
};
TextExtent measureTextBox(const TextFace& face, TextSetting setting, std::u16string_view text);

// Where text goes in a new picture, in pixels.
struct TextPlace {
  int width = 1;  // of the picture
  int height = 1;
  int left = 0;  // of the text's box in it
  int top = 0;
};
// Text in an opaque colour, 0xRRGGBB, on transparent ground. Null when memory ran out.
SharedPicture drawTextPicture(const TextFace& face, TextSetting setting, std::u16string_view text,
                              std::uint32_t color, const TextPlace& place);

// The ascent of a family's cell as a share of its em; nullopt when the family is missing.
std::optional<double> cellAscent(const std::u16string& family, bool bold);

}  // namespace quillmere::platform
