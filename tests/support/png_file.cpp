#include "support/png_file.h"

#include <algorithm>
#include <array>

namespace quillmere::test {

namespace {

constexpr std::string_view kSignature = "\x89PNG\r\n\x1A\n";
constexpr std::size_t kMostInBlock = 0xFFFF;                  // bytes
constexpr std::string_view kKind("\x08\x06\x00\x00\x00", 5);  // depth, colour type, no interlacing

std::array<std::uint32_t, 256> crcTable() {
  std::array<std::uint32_t, 256> table{};
  for (std::uint32_t n = 0; n < table.size(); ++n) {
    std::uint32_t value = n;
    for (int bit = 0; bit < 8; ++bit)
      value = (value & 1) != 0 ? 0xEDB88320u ^ value >> 1 : value >> 1;
    table[n] = value;
  }
  return table;
}

std::uint32_t crcOf(std::string_view bytes) {
  static const std::array<std::uint32_t, 256> table = crcTable();
  std::uint32_t crc = 0xFFFFFFFF;
  for (const char byte : bytes)
    crc = table[(crc ^ static_cast<unsigned char>(byte)) & 0xFF] ^ crc >> 8;
  return ~crc;
}

std::uint32_t adlerOf(std::string_view bytes) {
  std::uint32_t low = 1;
  std::uint32_t high = 0;
  for (const char byte : bytes) {
    low = (low + static_cast<unsigned char>(byte)) % 65521;
    high = (high + low) % 65521;
  }
  return high << 16 | low;
}

std::string fourBytes(std::uint32_t value) {
  std::string bytes;
  for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift & 0xFF);
  return bytes;
}

std::uint32_t numberAt(std::string_view bytes, std::size_t at) {
  std::uint32_t value = 0;
  for (std::size_t i = 0; i < 4; ++i)
    value = value << 8 | static_cast<unsigned char>(bytes[at + i]);
  return value;
}

std::string chunk(std::string_view type, std::string_view data) {
  const std::string body = std::string(type) + std::string(data);
  return fourBytes(static_cast<std::uint32_t>(data.size())) + body + fourBytes(crcOf(body));
}

std::string stored(std::string_view data) {
  std::string bytes = "\x78\x01";
  for (std::size_t at = 0;; at += kMostInBlock) {
    const std::string_view block = data.substr(at, kMostInBlock);
    const auto size = static_cast<std::uint16_t>(block.size());
    const bool last = at + block.size() >= data.size();
    bytes += last ? '\1' : '\0';
    for (const unsigned number : {unsigned{size}, ~unsigned{size}}) {
      bytes += static_cast<char>(number & 0xFF);
      bytes += static_cast<char>(number >> 8 & 0xFF);
    }
    bytes += block;
    if (last) break;
  }
  return bytes + fourBytes(adlerOf(data));
}

// Empty when the bytes are compressed or cut off.
std::string unstored(std::string_view bytes) {
  std::string data;
  std::size_t at = 2;
  for (bool last = false; !last;) {
    if (at + 5 > bytes.size() || (bytes[at] & ~1) != 0) return {};
    last = bytes[at] == 1;
    const std::size_t size = static_cast<unsigned char>(bytes[at + 1]) |
                             static_cast<std::size_t>(static_cast<unsigned char>(bytes[at + 2]))
                                 << 8;
    at += 5;
    if (at + size > bytes.size()) return {};
    data += bytes.substr(at, size);
    at += size;
  }
  if (at + 4 > bytes.size() || numberAt(bytes, at) != adlerOf(data)) return {};
  return data;
}

std::string rowsOf(const platform::Picture& picture) {
  std::string rows;
  for (int y = 0; y < picture.height; ++y) {
    rows += '\0';
    for (int x = 0; x < picture.width; ++x) {
      const std::uint32_t pixel =
          picture.pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width) +
                         static_cast<std::size_t>(x)];
      for (const int shift : {16, 8, 0, 24}) rows += static_cast<char>(pixel >> shift & 0xFF);
    }
  }
  return rows;
}

platform::SharedPicture pictureOf(std::uint32_t width, std::uint32_t height,
                                  std::string_view rows) {
  const std::size_t rowSize = 1 + std::size_t{width} * 4;
  if (width == 0 || height == 0 || rows.size() != rowSize * height) return nullptr;
  auto picture = std::make_shared<platform::Picture>();
  picture->width = static_cast<int>(width);
  picture->height = static_cast<int>(height);
  for (std::size_t y = 0; y < height; ++y) {
    for (std::size_t x = 0; x < width; ++x) {
      const std::uint32_t rgba = numberAt(rows, y * rowSize + 1 + x * 4);
      picture->pixels.push_back(rgba >> 8 | rgba << 24);
    }
  }
  return picture;
}

}  // namespace

std::string encodePng(const platform::Picture& picture) {
  const std::string header = fourBytes(static_cast<std::uint32_t>(picture.width)) +
                             fourBytes(static_cast<std::uint32_t>(picture.height));
  return std::string(kSignature) + chunk("IHDR", header + std::string(kKind)) +
         chunk("IDAT", stored(rowsOf(picture))) + chunk("IEND", "");
}

platform::SharedPicture decodePng(std::string_view bytes) {
  if (!bytes.starts_with(kSignature)) return nullptr;
  std::uint32_t width = 0;
  std::uint32_t height = 0;
  std::string data;
  for (std::size_t at = kSignature.size(); at + 12 <= bytes.size();) {
    const std::size_t size = numberAt(bytes, at);
    if (size > bytes.size() - at - 12) return nullptr;
    const std::string_view body = bytes.substr(at + 4, size + 4);
    if (numberAt(bytes, at + 8 + size) != crcOf(body)) return nullptr;
    const std::string_view type = body.substr(0, 4);
    if (type == "IHDR" && size == 13) {
      if (body.substr(12) != kKind) return nullptr;
      width = numberAt(body, 4);
      height = numberAt(body, 8);
    } else if (type == "IDAT") {
      data += body.substr(4);
    } else if (type == "IEND") {
      return pictureOf(width, height, unstored(data));
    }
    at += 12 + size;
  }
  return nullptr;
}

platform::Picture plainPicture(int width, int height, std::uint32_t color) {
  const auto pixels = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
  return {width, height, std::vector<std::uint32_t>(pixels, color)};
}

std::string plainPng(int width, int height, std::uint32_t color) {
  return encodePng(plainPicture(width, height, color));
}

}  // namespace quillmere::test
