// Pictures at odd angles.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <string>
#include <vector>

#include "support.h"
#include "tests.h"

namespace {

constexpr int kPageWidth = 200, kPageHeight = 100;  // points
constexpr int kPaper = 255, kLight = 128, kDark = 0;

// A picture on the page, in points; it turns clockwise about its middle.
struct Turned {
  double x, y, width, height, degrees;

  // From the picture's middle along its sides to a place on the page, counted downwards.
  void Find(double place_x, double place_y, double* along, double* down) const {
    const double angle = degrees * std::numbers::pi / 180;
    const double dx = place_x - x, dy = place_y - (kPageHeight - y);
    *along = dx * std::cos(angle) + dy * std::sin(angle);
    *down = dy * std::cos(angle) - dx * std::sin(angle);
  }

  std::string Content() const {
    const double angle = degrees * std::numbers::pi / 180;
    const double a = width * std::cos(angle), b = -width * std::sin(angle);
    const double c = height * std::sin(angle), d = height * std::cos(angle);
    char line[160];
    snprintf(line, sizeof line, "q %.5f %.5f %.5f %.5f %.5f %.5f cm /I Do Q\n", a, b, c, d, x - (a + c) / 2,
             y - (b + d) / 2);
    return line;
  }
};

std::string Gray(int side, const std::string& tones, const std::string& entries) {
  const std::string length = std::to_string(side);
  return Stream(tones, "/Type /XObject /Subtype /Image /Width " + length + " /Height " + length +
                           " /BitsPerComponent 8 /ColorSpace /DeviceGray " + entries);
}

// The tones of a page that draws the picture of |side| by |side| |tones| with |content|.
class Drawn {
 public:
  Drawn(const std::string& content, int side, const std::string& tones, bool masked, double scale)
      : width_(static_cast<int>(kPageWidth * scale + 0.5)) {
    const std::string pdf =
        MakePdf({kCatalog, "<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
                 Page("/Contents 4 0 R " + XObjects("/I 5 0 R")), Stream(content),
                 Gray(side, tones, masked ? "/SMask 6 0 R" : ""), Gray(1, "\xFF", "")});
    ScopedFPDFDocument document = Load(pdf);
    ScopedFPDFPage page(FPDF_LoadPage(document.get(), 0));
    pixels_ = Pixels(page.get(), 0, scale);
  }

  int width() const { return width_; }
  int height() const { return static_cast<int>(pixels_.size() / 4) / width_; }
  int At(int x, int y) const { return static_cast<unsigned char>(pixels_[4 * (static_cast<size_t>(y) * width_ + x)]); }

 private:
  int width_;
  std::string pixels_;
};

// Dark and light quarters, as a chess board.
std::string Quarters(int side) {
  std::string tones;
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      tones += static_cast<char>((x < side / 2) == (y < side / 2) ? kDark : kLight);
    }
  }
  return tones;
}

// How many pixels of |drawn| differ from |picture|, not counting those whose middle is within half a
// pixel of an edge of the picture or of its quarters.
int Misplaced(const Drawn& drawn, const Turned& picture, double scale) {
  int count = 0;
  for (int y = 0; y < drawn.height(); ++y) {
    for (int x = 0; x < drawn.width(); ++x) {
      double along, down;
      picture.Find((x + 0.5) / scale, (y + 0.5) / scale, &along, &down);
      const double beyond_sides = (std::fabs(along) - picture.width / 2) * scale;
      const double beyond_ends = (std::fabs(down) - picture.height / 2) * scale;
      const bool inside = beyond_sides < 0 && beyond_ends < 0;
      const double to_outline = inside ? -std::max(beyond_sides, beyond_ends) : std::max(beyond_sides, beyond_ends);
      const double to_quarters = std::min(std::fabs(along), std::fabs(down)) * scale;
      if (to_outline < 0.5 || (inside && to_quarters < 0.5)) {
        continue;
      }
      const int tone = !inside ? kPaper : (along < 0) == (down < 0) ? kDark : kLight;
      count += std::abs(drawn.At(x, y) - tone) > 62 ? 1 : 0;
    }
  }
  return count;
}

}  // namespace

void TestTurnedImages() {
  constexpr int kSide = 512;
  const std::string tones = Quarters(kSide);
  for (const double degrees : {3.0, 17.0, 33.0, 45.0, 88.0, 107.0, 160.0, 213.0, 287.0, 345.0}) {
    for (const Turned& picture : {Turned{100.3, 50.2, 40, 30, degrees}, Turned{99.7, 49.9, 25, 50.5, degrees},
                                  Turned{100, 50, 180, 21, degrees}}) {
      for (const double scale : {1.0, 2.0, 6.0}) {
        for (const bool masked : {false, true}) {
          const Drawn drawn(picture.Content(), kSide, tones, masked, scale);
          Check(Misplaced(drawn, picture, scale) == 0,
                "a picture of " + std::to_string(picture.width) + " points that is turned by " +
                    std::to_string(degrees) + " degrees, drawn at a scale of " + std::to_string(scale) +
                    (masked ? ", with a mask" : ""));
        }
      }
    }
  }
}

void TestThinTurnedImages() {
  // Dots smaller than a pixel, each somewhere else between the pixels.
  std::string dots;
  std::vector<Turned> places;
  for (int i = 0; i < 18; ++i) {
    places.push_back({10.0 + 10.17 * i, 50 + 0.31 * i, 0.6, 0.6, 45.0 + 10 * i});
    dots += places.back().Content();
  }
  const Drawn drawn_dots(dots, 1, std::string(1, kDark), false, 1);
  for (const Turned& dot : places) {
    int dark = 0;
    for (int y = static_cast<int>(kPageHeight - dot.y) - 1; y <= kPageHeight - dot.y + 1; ++y) {
      for (int x = static_cast<int>(dot.x) - 1; x <= dot.x + 1; ++x) {
        dark += drawn_dots.At(x, y) < kLight ? 1 : 0;
      }
    }
    Check(dark >= 1 && dark <= 4, "a dot at " + std::to_string(dot.x) + " has " + std::to_string(dark) + " pixels");
  }

  // A line of a quarter of a pixel.
  const Turned line = {100, 50, 160, 0.25, 17};
  const Drawn drawn_line(line.Content(), 1, std::string(1, kDark), false, 1);
  for (int x = 30; x < 170; ++x) {
    int dark = 0;
    for (int y = 0; y < drawn_line.height(); ++y) {
      dark += drawn_line.At(x, y) < kLight ? 1 : 0;
    }
    Check(dark == 1 || dark == 2, "a line has " + std::to_string(dark) + " pixels at " + std::to_string(x));
  }
}

void TestTurnedImagesThatTouch() {
  // One band in three pieces.
  const double angle = 33 * std::numbers::pi / 180;
  std::string pieces;
  for (int i = -1; i <= 1; ++i) {
    pieces += Turned{100 + 20 * i * std::cos(angle), 50 - 20 * i * std::sin(angle), 20, 40, 33}.Content();
  }
  const Turned whole = {100, 50, 60, 40, 33};
  for (const double scale : {1.0, 2.0, 3.7}) {
    const Drawn drawn(pieces, 1, std::string(1, kDark), false, scale);
    int holes = 0;
    for (int y = 0; y < drawn.height(); ++y) {
      for (int x = 0; x < drawn.width(); ++x) {
        double along, down;
        whole.Find((x + 0.5) / scale, (y + 0.5) / scale, &along, &down);
        const bool inside = std::fabs(along) < 29 && std::fabs(down) < 19;
        holes += inside && drawn.At(x, y) > kLight ? 1 : 0;
      }
    }
    Check(holes == 0, std::to_string(holes) + " holes between pictures that touch");
  }
}
