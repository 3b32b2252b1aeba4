#include "annot/picture_work.h"

#include <algorithm>
#include <array>
#include <limits>

namespace quillmere {

namespace {

constexpr int kOpaque = 255;

// Signature, then the length and the type of the first chunk.
constexpr std::uint8_t kPngStart[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n',
                                      0,    0,   0,   13,  'I',  'H',  'D',  'R'};

std::uint32_t bigEndian(std::span<const std::uint8_t> bytes, std::size_t at) {
  return std::uint32_t{bytes[at]} << 24 | std::uint32_t{bytes[at + 1]} << 16 |
         std::uint32_t{bytes[at + 2]} << 8 | bytes[at + 3];
}

constexpr std::uint32_t channel(std::uint32_t pixel, int shift) {
  return pixel >> shift & 0xFF;
}

std::uint32_t fadedAlpha(std::uint32_t alpha, int least, int threshold) {
  if (threshold >= kOpaque) return 0;
  const double share = 1 - static_cast<double>(least - threshold) / (kOpaque - threshold);
  return static_cast<std::uint32_t>(share * alpha + 0.5);
}

// The sums over a block of pixels. Colours count by their alpha, so that transparent pixels leave
// no trace of theirs.
struct PixelSum {
  std::uint64_t alpha = 0;
  std::uint64_t red = 0;
  std::uint64_t green = 0;
  std::uint64_t blue = 0;

  void add(std::uint32_t pixel) {
    const std::uint64_t weight = channel(pixel, 24);
    alpha += weight;
    red += weight * channel(pixel, 16);
    green += weight * channel(pixel, 8);
    blue += weight * channel(pixel, 0);
  }

  std::uint32_t mean(std::uint64_t pixels) const {
    if (alpha == 0) return 0;
    const auto share = [&](std::uint64_t sum) {
      return static_cast<std::uint32_t>((sum + alpha / 2) / alpha);
    };
    const auto opacity = static_cast<std::uint32_t>((alpha + pixels / 2) / pixels);
    return opacity << 24 | share(red) << 16 | share(green) << 8 | share(blue);
  }
};

// Where the source pixels of place `index` begin.
std::size_t sourceStart(std::int32_t index, std::int32_t from, std::int32_t to) {
  return static_cast<std::size_t>(std::int64_t{index} * from / to);
}

void addRow(const platform::Picture& picture, std::size_t row, std::vector<PixelSum>& sums) {
  const auto places = static_cast<std::int32_t>(sums.size());
  const std::uint32_t* pixels =
      picture.pixels.data() + row * static_cast<std::size_t>(picture.width);
  for (std::int32_t x = 0; x < places; ++x) {
    const std::size_t end = sourceStart(x + 1, picture.width, places);
    PixelSum& sum = sums[static_cast<std::size_t>(x)];
    for (std::size_t at = sourceStart(x, picture.width, places); at < end; ++at) {
      sum.add(pixels[at]);
    }
  }
}

}  // namespace

std::optional<PictureSize> pngSize(std::span<const std::uint8_t> head) {
  if (head.size() < kPngHeadBytes) return std::nullopt;
  if (!std::equal(std::begin(kPngStart), std::end(kPngStart), head.begin())) return std::nullopt;
  const std::uint32_t width = bigEndian(head, std::size(kPngStart));
  const std::uint32_t height = bigEndian(head, std::size(kPngStart) + 4);
  constexpr std::uint32_t kMost = std::numeric_limits<std::int32_t>::max();
  if (width == 0 || height == 0 || width > kMost || height > kMost) return std::nullopt;
  if (width > platform::kMostPicturePixels / height) return std::nullopt;
  return PictureSize{static_cast<std::int32_t>(width), static_cast<std::int32_t>(height)};
}

void MakeWhiteTransparent(platform::Picture& picture, int threshold) {
  const int limit = std::clamp(threshold, 0, kOpaque);
  for (std::uint32_t& pixel : picture.pixels) {
    const auto least =
        static_cast<int>(std::min({channel(pixel, 16), channel(pixel, 8), channel(pixel, 0)}));
    if (least < limit) continue;
    pixel = (pixel & 0xFFFFFF) | fadedAlpha(channel(pixel, 24), least, limit) << 24;
  }
}

platform::SharedPicture scaledDown(const platform::Picture& picture, PictureSize size) {
  auto small = std::make_shared<platform::Picture>();
  small->width = std::clamp(size.width, 1, picture.width);
  small->height = std::clamp(size.height, 1, picture.height);
  if (small->width == picture.width && small->height == picture.height) {
    small->pixels = picture.pixels;
    return small;
  }
  const auto width = static_cast<std::size_t>(small->width);
  small->pixels.reserve(width * static_cast<std::size_t>(small->height));
  for (std::int32_t y = 0; y < small->height; ++y) {
    const std::size_t first = sourceStart(y, picture.height, small->height);
    const std::size_t end = sourceStart(y + 1, picture.height, small->height);
    std::vector<PixelSum> sums(width);
    for (std::size_t row = first; row < end; ++row) addRow(picture, row, sums);
    for (std::size_t x = 0; x < width; ++x) {
      const auto place = static_cast<std::int32_t>(x);
      const std::size_t columns = sourceStart(place + 1, picture.width, small->width) -
                                  sourceStart(place, picture.width, small->width);
      small->pixels.push_back(sums[x].mean(columns * (end - first)));
    }
  }
  return small;
}

}  // namespace quillmere
