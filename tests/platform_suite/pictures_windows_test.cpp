#include <windows.h>

#include <gdiplus.h>
#include <gtest/gtest.h>
#include <shlwapi.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "platform/pictures.h"
#include "platform/text.h"
#include "platform/win32/handles.h"
#include "platform/win32/wide.h"
#include "platform_suite/suite_side.h"

// The formats that the system's decoders know.
namespace quillmere::platform {
namespace {

class PicturesWindows : public PlatformSuite {
 protected:
  // Writes a bitmap with the system's encoder of this type.
  static void save(Gdiplus::Bitmap& bitmap, const std::u16string& path, const wchar_t* mimeType) {
    UINT count = 0;
    UINT size = 0;
    Gdiplus::GetImageEncodersSize(&count, &size);
    std::vector<std::uint64_t> room(size / 8 + 1);
    auto* encoders = reinterpret_cast<Gdiplus::ImageCodecInfo*>(room.data());
    Gdiplus::GetImageEncoders(count, size, encoders);
    for (UINT n = 0; n < count; ++n) {
      if (std::wstring_view(encoders[n].MimeType) != mimeType) continue;
      ASSERT_EQ(bitmap.Save(wide(path), &encoders[n].Clsid, nullptr), Gdiplus::Ok);
      return;
    }
    FAIL() << "no encoder";
  }

  // A bitmap of 8 by 4 pixels, red on the left and blue on the right.
  static void paint(Gdiplus::Bitmap& bitmap) {
    for (int y = 0; y < 4; ++y) {
      for (int x = 0; x < 8; ++x) {
        bitmap.SetPixel(x, y,
                        x < 4 ? Gdiplus::Color(255, 255, 0, 0) : Gdiplus::Color(255, 0, 0, 255));
      }
    }
  }

  // `bytes` in the form of a C string with its zeros.
  template <std::size_t kSize>
  SharedPicture loaded(const char (&bytes)[kSize]) const {
    putBytes(in(u"a.bin"), std::string(bytes, kSize - 1));
    return loadPicture(in(u"a.bin"));
  }
};

bool alike(std::uint32_t pixel, std::uint32_t wanted) {
  for (const int shift : {0, 8, 16, 24}) {
    const int difference =
        static_cast<int>(pixel >> shift & 0xFF) - static_cast<int>(wanted >> shift & 0xFF);
    if (difference < -40 || difference > 40) return false;
  }
  return true;
}

TEST_F(PicturesWindows, TheUsualFormatsAreDecoded) {
  // Wine writes GIF files without their pixels; another test reads one.
  for (const wchar_t* mimeType : {L"image/png", L"image/jpeg", L"image/bmp", L"image/tiff"}) {
    SCOPED_TRACE(toUtf8(fromWide(mimeType)));
    Gdiplus::Bitmap bitmap(8, 4, PixelFormat24bppRGB);
    paint(bitmap);
    save(bitmap, in(u"picture"), mimeType);
    const SharedPicture picture = loadPicture(in(u"picture"));
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->width, 8);
    EXPECT_EQ(picture->height, 4);
    EXPECT_TRUE(alike(picture->pixels[0], 0xFFFF0000)) << std::hex << picture->pixels[0];
    EXPECT_TRUE(alike(picture->pixels[7], 0xFF0000FF)) << std::hex << picture->pixels[7];
  }
}

TEST_F(PicturesWindows, OfAnAnimationTheFirstFrameCounts) {
  // Two frames of one pixel each, red and then blue.
  const SharedPicture picture = loaded(
      "GIF89a\1\0\1\0\x80\0\0\xFF\0\0\0\0\xFF"
      "\x21\xF9\4\0\0\0\0\0\x2C\0\0\0\0\1\0\1\0\0\2\2\x44\1\0"
      "\x21\xF9\4\0\0\0\0\0\x2C\0\0\0\0\1\0\1\0\0\2\2\x4C\1\0;");
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->pixels, (std::vector<std::uint32_t>{0xFFFF0000}));
}

TEST_F(PicturesWindows, PatternsNameWhatTheSystemDecodes) {
  const std::u16string patterns = picturePatterns();
  for (const char16_t* wanted : {u"*.jpg", u"*.gif", u"*.tif"}) {
    EXPECT_NE(patterns.find(wanted), std::u16string::npos);
  }
}

// How the two pixels of a TIFF file are stored.
struct TiffPixels {
  std::string bytes;
  unsigned bitsOfSample = 8;
  unsigned samples = 3;
  unsigned kind = 2;  // red, green and blue; 5 is for inks
};

// A TIFF file, little-endian, of 2 by 1 pixels with this orientation.
std::string tiffWith(unsigned orientation, const TiffPixels& pixels) {
  std::string file;
  const auto put = [&](unsigned value, int bytes) {
    for (int n = 0; n < bytes; ++n) file += static_cast<char>(value >> 8 * n & 0xFF);
  };
  struct Entry {
    unsigned tag;
    unsigned type;
    unsigned count;
    unsigned value;
  };
  const auto length = static_cast<unsigned>(pixels.bytes.size());
  const unsigned list = 8 + length;
  const unsigned bits = list + 2 + 10 * 12 + 4;  // behind the list of ten entries
  const Entry entries[] = {{256, 3, 1, 2},
                           {257, 3, 1, 1},
                           {258, 3, pixels.samples, bits},
                           {259, 3, 1, 1},
                           {262, 3, 1, pixels.kind},
                           {273, 4, 1, 8},
                           {274, 3, 1, orientation},
                           {277, 3, 1, pixels.samples},
                           {278, 3, 1, 1},
                           {279, 4, 1, length}};
  file += std::string("II*\0", 4);
  put(list, 4);
  file += pixels.bytes;
  put(10, 2);
  for (const Entry& entry : entries) {
    put(entry.tag, 2);
    put(entry.type, 2);
    put(entry.count, 4);
    put(entry.value, 4);
  }
  put(0, 4);
  EXPECT_EQ(file.size(), bits);
  for (unsigned n = 0; n < pixels.samples; ++n) put(pixels.bitsOfSample, 2);
  return file;
}

// Red and blue.
std::string tiffWith(unsigned orientation) {
  return tiffWith(orientation, {std::string("\xFF\0\0\0\0\xFF", 6)});
}

std::string bigEndian(unsigned value) {
  return {static_cast<char>(value >> 8 & 0xFF), static_cast<char>(value & 0xFF)};
}

// Bits of a JPEG scan, whose bytes of ones are followed by a zero.
class ScanBits {
 public:
  void put(unsigned value, int bits) {
    for (int n = bits - 1; n >= 0; --n) {
      byte_ = byte_ << 1 | (value >> n & 1);
      if (++filled_ == 8) flush();
    }
  }
  std::string finish() {
    while (filled_ != 0) put(1, 1);
    return bytes_;
  }

 private:
  void flush() {
    bytes_ += static_cast<char>(byte_);
    if (byte_ == 0xFF) bytes_ += '\0';
    byte_ = 0;
    filled_ = 0;
  }
  std::string bytes_;
  unsigned byte_ = 0;
  int filled_ = 0;
};

// How much a block's mean differs from that of the block before: the number of bits, then these.
void putDifference(ScanBits& scan, int difference) {
  int bits = 0;
  while (std::abs(difference) >> bits != 0) ++bits;
  scan.put(static_cast<unsigned>(bits), 4);
  if (bits != 0) {
    scan.put(static_cast<unsigned>(difference > 0 ? difference : difference + (1 << bits) - 1),
             bits);
  }
  scan.put(0, 1);  // the block has nothing but its mean
}

// A JPEG file of two blocks of 8 by 8 pixels, left and right, each of one colour. `names` has a
// letter for each sample: red, green and blue, or four inks, stored as the paper that they leave.
std::string jpegWith(const std::string& names, const std::vector<std::uint8_t>& left,
                     const std::vector<std::uint8_t>& right, const std::string& segments = "") {
  const auto segment = [](const std::string& marker, const std::string& body) {
    return marker + bigEndian(static_cast<unsigned>(body.size()) + 2) + body;
  };
  const std::size_t samples = names.size();
  std::string frame = "\x08" + bigEndian(8) + bigEndian(16) + static_cast<char>(samples);
  std::string scanHead(1, static_cast<char>(samples));
  for (const char name : names) {
    frame += std::string{name, '\x11', '\0'};
    scanHead += std::string{name, '\0'};
  }
  scanHead += std::string("\0\x3F\0", 3);
  ScanBits scan;
  for (std::size_t n = 0; n < samples; ++n) putDifference(scan, 8 * (left[n] - 128));
  for (std::size_t n = 0; n < samples; ++n) putDifference(scan, 8 * (right[n] - left[n]));
  // Twelve codes of four bits for the means; for the rest one of a single bit, the end of a block.
  const std::string means = std::string("\0\0\0\0\x0C\0\0\0\0\0\0\0\0\0\0\0\0", 17) +
                            std::string("\0\1\2\3\4\5\6\7\x8\x9\xA\xB", 12);
  const std::string rest = "\x10" + std::string("\1\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0", 17);
  return "\xFF\xD8" + segments + segment("\xFF\xEE", std::string("Adobe\0\x64\0\0\0\0\0", 12)) +
         segment("\xFF\xDB", std::string(1, '\0') + std::string(64, '\1')) +
         segment("\xFF\xC0", frame) + segment("\xFF\xC4", means) + segment("\xFF\xC4", rest) +
         segment("\xFF\xDA", scanHead) + scan.finish() + "\xFF\xD9";
}

// What a camera writes that was held so.
std::string cameraSegment(unsigned orientation) {
  std::string body("Exif\0\0II*\0\x08\0\0\0\1\0\x12\1\3\0\1\0\0\0", 24);
  body += static_cast<char>(orientation);
  body += std::string(7, '\0');
  return "\xFF\xE1" + bigEndian(static_cast<unsigned>(body.size()) + 2) + body;
}

TEST_F(PicturesWindows, APhotographsInksBecomeColours) {
  putBytes(in(u"a.jpg"), jpegWith("CMYK", {0xFF, 0, 0, 0xFF}, {0, 0, 0xFF, 0xFF}));
  const SharedPicture picture = loadPicture(in(u"a.jpg"));
  ASSERT_TRUE(picture);
  ASSERT_EQ(picture->width, 16);
  EXPECT_TRUE(alike(picture->pixels[0], 0xFFFF0000)) << std::hex << picture->pixels[0];
  EXPECT_TRUE(alike(picture->pixels[15], 0xFF0000FF)) << std::hex << picture->pixels[15];
}

TEST_F(PicturesWindows, PhotographsAreTurnedUpright) {
  const std::vector<std::uint8_t> red = {0xFF, 0, 0};
  const std::vector<std::uint8_t> blue = {0, 0, 0xFF};
  putBytes(in(u"a.jpg"), jpegWith("RGB", red, blue));
  const SharedPicture plain = loadPicture(in(u"a.jpg"));
  ASSERT_TRUE(plain);
  ASSERT_EQ(plain->width, 16);
  EXPECT_TRUE(alike(plain->pixels[0], 0xFFFF0000)) << std::hex << plain->pixels[0];
  putBytes(in(u"a.jpg"), jpegWith("RGB", red, blue, cameraSegment(6)));
  const SharedPicture turned = loadPicture(in(u"a.jpg"));
  ASSERT_TRUE(turned);
  ASSERT_EQ(turned->width, 8);
  ASSERT_EQ(turned->height, 16);
  EXPECT_TRUE(alike(turned->pixels.front(), 0xFFFF0000)) << std::hex << turned->pixels.front();
  EXPECT_TRUE(alike(turned->pixels.back(), 0xFF0000FF)) << std::hex << turned->pixels.back();
  // Notes that end in the middle, or have another length than they say, tell nothing.
  const std::string notes = cameraSegment(6);
  for (const std::size_t length : {4u, 12u, 18u, 20u, 27u}) {
    const std::string cut = notes.substr(0, 2) + bigEndian(static_cast<unsigned>(length) - 2) +
                            notes.substr(4, length - 4);
    putBytes(in(u"a.jpg"), jpegWith("RGB", red, blue, cut));
    const SharedPicture picture = loadPicture(in(u"a.jpg"));
    ASSERT_TRUE(picture) << length;
    EXPECT_EQ(picture->width, 16) << length;
  }
}

TEST_F(PicturesWindows, SixteenBitsOfAColourBecomeEight) {
  putBytes(in(u"a.tif"), tiffWith(1, {std::string("\xFF\xFF\0\0\0\0\0\0\0\0\xFF\xFF", 12), 16}));
  const SharedPicture tiff = loadPicture(in(u"a.tif"));
  ASSERT_TRUE(tiff);
  EXPECT_EQ(tiff->pixels, (std::vector<std::uint32_t>{0xFFFF0000, 0xFF0000FF}));
  // The same pixels as a PNG file.
  const SharedPicture png = loaded(
      "\x89\x50\x4E\x47\x0D\x0A\x1A\x0A\x00\x00\x00\x0D\x49\x48\x44\x52"
      "\x00\x00\x00\x02\x00\x00\x00\x01\x10\x02\x00\x00\x00\x2B\xD0\x34"
      "\x9E\x00\x00\x00\x18\x49\x44\x41\x54\x78\x01\x01\x0D\x00\xF2\xFF"
      "\x00\xFF\xFF\x00\x00\x00\x00\x00\x00\x00\x00\xFF\xFF\x19\xF3\x03"
      "\xFD\x02\x76\x88\x0A\x00\x00\x00\x00\x49\x45\x4E\x44\xAE\x42\x60"
      "\x82");
  ASSERT_TRUE(png);
  EXPECT_EQ(png->pixels, (std::vector<std::uint32_t>{0xFFFF0000, 0xFF0000FF}));
}

TEST_F(PicturesWindows, InksBecomeColours) {
  putBytes(in(u"a.tif"), tiffWith(1, {std::string("\0\xFF\xFF\0\xFF\xFF\0\0", 8), 8, 4, 5}));
  const SharedPicture picture = loadPicture(in(u"a.tif"));
  ASSERT_TRUE(picture);
  EXPECT_TRUE(alike(picture->pixels[0], 0xFFFF0000)) << std::hex << picture->pixels[0];
  EXPECT_TRUE(alike(picture->pixels[1], 0xFF0000FF)) << std::hex << picture->pixels[1];
}

TEST_F(PicturesWindows, OrientationTagsTurnPicturesUpright) {
  putBytes(in(u"a.tif"), tiffWith(1));
  const SharedPicture plain = loadPicture(in(u"a.tif"));
  ASSERT_TRUE(plain);
  EXPECT_EQ(plain->pixels, (std::vector<std::uint32_t>{0xFFFF0000, 0xFF0000FF}));
  putBytes(in(u"a.tif"), tiffWith(3));
  const SharedPicture half = loadPicture(in(u"a.tif"));
  ASSERT_TRUE(half);
  EXPECT_EQ(half->pixels, (std::vector<std::uint32_t>{0xFF0000FF, 0xFFFF0000}));
  putBytes(in(u"a.tif"), tiffWith(6));
  const SharedPicture quarter = loadPicture(in(u"a.tif"));
  ASSERT_TRUE(quarter);
  EXPECT_EQ(quarter->width, 1);
  EXPECT_EQ(quarter->height, 2);
  EXPECT_EQ(quarter->pixels.front(), 0xFFFF0000u);
}

}  // namespace
}  // namespace quillmere::platform
