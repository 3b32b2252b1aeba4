#include <windows.h>

#include <gdiplus.h>
#include <gtest/gtest.h>
#include <shlwapi.h>

#include <string>
#include <vector>

#include "platform/pictures.h"
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
  for (const wchar_t* mimeType :
       {L"image/png", L"image/jpeg", L"image/bmp", L"image/gif", L"image/tiff"}) {
    SCOPED_TRACE(fromWide(mimeType).size());
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

// A TIFF file, little-endian, of 2 by 1 pixels, red and blue, with this orientation.
std::string tiffWith(unsigned char orientation) {
  std::string file("II*\0\x0E\0\0\0", 8);
  file += std::string("\xFF\0\0\0\0\xFF", 6);
  struct Entry {
    unsigned short tag;
    unsigned short type;
    unsigned count;
    unsigned value;
  };
  const Entry entries[] = {{256, 3, 1, 2}, {257, 3, 1, 1}, {258, 3, 3, 140},         {259, 3, 1, 1},
                           {262, 3, 1, 2}, {273, 4, 1, 8}, {274, 3, 1, orientation}, {277, 3, 1, 3},
                           {278, 3, 1, 1}, {279, 4, 1, 6}};
  const auto put = [&](unsigned value, int bytes) {
    for (int n = 0; n < bytes; ++n) file += static_cast<char>(value >> 8 * n & 0xFF);
  };
  put(10, 2);
  for (const Entry& entry : entries) {
    put(entry.tag, 2);
    put(entry.type, 2);
    put(entry.count, 4);
    put(entry.value, 4);
  }
  put(0, 4);
  EXPECT_EQ(file.size(), 140u);
  for (int n = 0; n < 3; ++n) put(8, 2);
  return file;
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
