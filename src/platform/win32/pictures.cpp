#include "platform/pictures.h"

#include <windows.h>

#include <gdiplus.h>
#include <objidl.h>
#include <shlwapi.h>

#include <algorithm>
#include <cmath>
#include <new>
#include <span>

#include "platform/files.h"
#include "platform/text.h"
#include "platform/win32/handles.h"
#include "platform/win32/wide.h"

namespace quillmere::platform {

namespace {

// Files beyond this size are not read; no picture within the limit of pixels needs more.
constexpr std::uint64_t kLargestFile = 512ull << 20;
constexpr Gdiplus::REAL kNoLimit = 100000;  // pixels

Gdiplus::BitmapData lockedOver(Picture& picture) {
  Gdiplus::BitmapData data{};
  data.Width = static_cast<UINT>(picture.width);
  data.Height = static_cast<UINT>(picture.height);
  data.Stride = picture.width * 4;
  data.PixelFormat = PixelFormat32bppARGB;
  data.Scan0 = picture.pixels.data();
  return data;
}

std::shared_ptr<Picture> emptyPicture(std::int64_t width, std::int64_t height) {
  if (width < 1 || height < 1 || width > kMostPicturePixels / height) return nullptr;
  auto picture = std::make_shared<Picture>();
  picture->width = static_cast<int>(width);
  picture->height = static_cast<int>(height);
  picture->pixels.resize(static_cast<std::size_t>(width * height));
  return picture;
}

// The bitmap's pixels; null when they cannot be had.
SharedPicture pixelsOf(Gdiplus::Bitmap& bitmap) {
  const std::shared_ptr<Picture> picture = emptyPicture(bitmap.GetWidth(), bitmap.GetHeight());
  if (!picture) return nullptr;
  const Gdiplus::Rect whole(0, 0, picture->width, picture->height);
  Gdiplus::BitmapData data = lockedOver(*picture);
  const UINT mode = Gdiplus::ImageLockModeRead | Gdiplus::ImageLockModeUserInputBuf;
  if (bitmap.LockBits(&whole, mode, PixelFormat32bppARGB, &data) != Gdiplus::Ok) return nullptr;
  bitmap.UnlockBits(&data);
  return picture;
}

// The turn and flip that bring a picture with this orientation tag upright.
Gdiplus::RotateFlipType uprightTurn(unsigned orientation) {
  constexpr Gdiplus::RotateFlipType kTurns[] = {
      Gdiplus::RotateNoneFlipNone, Gdiplus::RotateNoneFlipX,   Gdiplus::Rotate180FlipNone,
      Gdiplus::Rotate180FlipX,     Gdiplus::Rotate90FlipX,     Gdiplus::Rotate90FlipNone,
      Gdiplus::Rotate270FlipX,     Gdiplus::Rotate270FlipNone,
  };
  return orientation >= 1 && orientation <= std::size(kTurns) ? kTurns[orientation - 1]
                                                              : Gdiplus::RotateNoneFlipNone;
}

// The orientation that the decoder tells; 0 when it tells none.
unsigned toldOrientation(Gdiplus::Image& image) {
  const UINT size = image.GetPropertyItemSize(PropertyTagOrientation);
  if (size < sizeof(Gdiplus::PropertyItem)) return 0;
  std::vector<std::uint64_t> room(size / sizeof(std::uint64_t) + 1);
  auto* item = reinterpret_cast<Gdiplus::PropertyItem*>(room.data());
  if (image.GetPropertyItem(PropertyTagOrientation, size, item) != Gdiplus::Ok) return 0;
  if (item->type != PropertyTagTypeShort || item->length < sizeof(WORD)) return 0;
  return *static_cast<const WORD*>(item->value);
}

// Numbers of a camera's notes, in their own byte order; 0 beyond the end.
struct CameraNotes {
  std::span<const std::uint8_t> bytes;
  bool littleEndian;

  unsigned at(std::size_t place, std::size_t length) const {
    if (place > bytes.size() || length > bytes.size() - place) return 0;
    unsigned value = 0;
    for (std::size_t n = 0; n < length; ++n) {
      value = value << 8 | bytes[place + (littleEndian ? length - 1 - n : n)];
    }
    return value;
  }
};

// The orientation in a camera's notes: those are a list of entries of 12 bytes, as in a TIFF file.
unsigned orientationIn(std::span<const std::uint8_t> bytes) {
  constexpr std::size_t kEntryBytes = 12;
  const CameraNotes notes{bytes, !bytes.empty() && bytes[0] == 'I'};
  const std::size_t list = notes.at(4, 4);
  const std::size_t entries = notes.at(list, 2);
  for (std::size_t n = 0; n < entries; ++n) {
    const std::size_t entry = list + 2 + n * kEntryBytes;
    if (notes.at(entry, 2) == PropertyTagOrientation) return notes.at(entry + 8, 2);
  }
  return 0;
}

// The same of a JPEG file's own segments, since not every system's decoder tells it. 0 for none.
unsigned notedOrientation(std::span<const std::uint8_t> file) {
  constexpr std::uint8_t kNotesStart[] = {'E', 'x', 'i', 'f', 0, 0};
  if (file.size() < 4 || file[0] != 0xFF || file[1] != 0xD8) return 0;
  for (file = file.subspan(2); file.size() >= 4 && file[0] == 0xFF && file[1] != 0xDA;) {
    const std::size_t length = std::size_t{file[2]} << 8 | file[3];
    if (length < 2 || length > file.size() - 2) return 0;
    const std::span<const std::uint8_t> body = file.subspan(4, length - 2);
    const bool notes = file[1] == 0xE1 && body.size() > std::size(kNotesStart) &&
                       std::equal(std::begin(kNotesStart), std::end(kNotesStart), body.begin());
    if (notes) return orientationIn(body.subspan(std::size(kNotesStart)));
    file = file.subspan(2 + length);
  }
  return 0;
}

void turnUpright(Gdiplus::Image& image, std::span<const std::uint8_t> file) {
  const unsigned told = toldOrientation(image);
  const Gdiplus::RotateFlipType turn = uprightTurn(told != 0 ? told : notedOrientation(file));
  if (turn != Gdiplus::RotateNoneFlipNone) image.RotateFlip(turn);
}

// Reads from memory, so that the file is neither locked nor read later.
ComOwner<IStream> streamOver(const std::vector<std::uint8_t>& bytes) {
  return ComOwner<IStream>(SHCreateMemStream(bytes.data(), static_cast<UINT>(bytes.size())));
}

// The sides that a PNG file names, before anything of it is decoded: a file of some kilobytes can
// ask for more memory than there is. False when they are beyond the limit.
bool withinLimit(const std::vector<std::uint8_t>& bytes) {
  constexpr std::uint8_t kSignature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
  constexpr std::size_t kWidthAt = 16;
  if (bytes.size() < kWidthAt + 8) return true;
  if (!std::equal(std::begin(kSignature), std::end(kSignature), bytes.begin())) return true;
  const auto sideAt = [&](std::size_t at) {
    return std::uint64_t{bytes[at]} << 24 | std::uint64_t{bytes[at + 1]} << 16 |
           std::uint64_t{bytes[at + 2]} << 8 | bytes[at + 3];
  };
  const std::uint64_t width = sideAt(kWidthAt);
  const std::uint64_t height = sideAt(kWidthAt + 4);
  return height == 0 || width <= kMostPicturePixels / height;
}

std::optional<CLSID> pngEncoder() {
  UINT count = 0;
  UINT size = 0;
  if (Gdiplus::GetImageEncodersSize(&count, &size) != Gdiplus::Ok || size == 0) return std::nullopt;
  std::vector<std::uint64_t> room(size / sizeof(std::uint64_t) + 1);
  auto* encoders = reinterpret_cast<Gdiplus::ImageCodecInfo*>(room.data());
  if (Gdiplus::GetImageEncoders(count, size, encoders) != Gdiplus::Ok) return std::nullopt;
  const auto found = std::find_if(encoders, encoders + count, [](const auto& encoder) {
    return std::wstring_view(encoder.MimeType) == L"image/png";
  });
  if (found == encoders + count) return std::nullopt;
  return found->Clsid;
}

std::optional<std::vector<std::uint8_t>> bytesOf(IStream& stream) {
  STATSTG state{};
  if (FAILED(stream.Stat(&state, STATFLAG_NONAME))) return std::nullopt;
  std::vector<std::uint8_t> bytes(static_cast<std::size_t>(state.cbSize.QuadPart));
  ULONG read = 0;
  if (FAILED(stream.Seek({}, STREAM_SEEK_SET, nullptr))) return std::nullopt;
  if (FAILED(stream.Read(bytes.data(), static_cast<ULONG>(bytes.size()), &read))) {
    return std::nullopt;
  }
  if (read != bytes.size()) return std::nullopt;
  return bytes;
}

class FaceFont {
 public:
  explicit FaceFont(const TextFace& face) {
    const auto size = static_cast<Gdiplus::REAL>(std::max(face.pixelSize, 1));
    const INT style = face.bold ? Gdiplus::FontStyleBold : Gdiplus::FontStyleRegular;
    font_ = std::make_unique<Gdiplus::Font>(wide(face.family), size, style, Gdiplus::UnitPixel);
    if (font_->IsAvailable()) return;
    font_ = std::make_unique<Gdiplus::Font>(Gdiplus::FontFamily::GenericSansSerif(), size, style,
                                            Gdiplus::UnitPixel);
  }
  const Gdiplus::Font* get() const { return font_.get(); }

 private:
  std::unique_ptr<Gdiplus::Font> font_;
};

// A line feed ends a line on every system; Wine gives the carriage return before it a width.
std::u16string withoutReturns(std::u16string_view text) {
  std::u16string lines(text);
  std::erase(lines, u'\r');
  return lines;
}

const Gdiplus::StringFormat* formatOf(TextSetting setting, const Gdiplus::StringFormat& padded) {
  return setting == TextSetting::Tight ? Gdiplus::StringFormat::GenericTypographic() : &padded;
}

}  // namespace

SharedPicture loadPicture(const std::u16string& path) {
  const auto bytes = readFileShared(path, kLargestFile);
  if (!bytes || bytes->empty() || !withinLimit(*bytes)) return nullptr;
  const ComOwner<IStream> stream = streamOver(*bytes);
  if (!stream) return nullptr;
  Gdiplus::Bitmap bitmap(stream.get());
  if (bitmap.GetLastStatus() != Gdiplus::Ok) return nullptr;
  turnUpright(bitmap, *bytes);
  return pixelsOf(bitmap);
}

bool savePng(const Picture& picture, const std::u16string& path) {
  const std::optional<CLSID> encoder = pngEncoder();
  const ComOwner<IStream> stream(SHCreateMemStream(nullptr, 0));
  if (!encoder || !stream) return false;
  auto* first = reinterpret_cast<BYTE*>(const_cast<std::uint32_t*>(picture.pixels.data()));
  Gdiplus::Bitmap bitmap(picture.width, picture.height, picture.width * 4, PixelFormat32bppARGB,
                         first);
  if (bitmap.Save(stream.get(), &*encoder, nullptr) != Gdiplus::Ok) return false;
  const auto bytes = bytesOf(*stream);
  if (!bytes) return false;
  const bool existed = fileExists(path);
  if (writeFile(path, bytes->data(), bytes->size())) return true;
  if (!existed) deleteFile(path);
  return false;
}

namespace {

std::u16string patternsOfDecoders() {
  UINT count = 0;
  UINT size = 0;
  if (Gdiplus::GetImageDecodersSize(&count, &size) != Gdiplus::Ok || size == 0) return {};
  std::vector<std::uint64_t> room(size / sizeof(std::uint64_t) + 1);
  auto* decoders = reinterpret_cast<Gdiplus::ImageCodecInfo*>(room.data());
  if (Gdiplus::GetImageDecoders(count, size, decoders) != Gdiplus::Ok) return {};
  std::u16string patterns;
  for (UINT n = 0; n < count; ++n) {
    if (decoders[n].FilenameExtension == nullptr) continue;
    if (!patterns.empty()) patterns += u';';
    patterns += toLower(fromWide(decoders[n].FilenameExtension));
  }
  return patterns;
}

}  // namespace

// The decoders stay the same while the program runs.
std::u16string picturePatterns() {
  static std::u16string patterns;
  if (patterns.empty()) patterns = patternsOfDecoders();
  return patterns;
}

TextExtent measureTextBox(const TextFace& face, TextSetting setting, std::u16string_view text) {
  Gdiplus::Bitmap bitmap(1, 1, PixelFormat32bppARGB);
  Gdiplus::Graphics graphics(&bitmap);
  graphics.SetTextRenderingHint(Gdiplus::TextRenderingHintAntiAliasGridFit);
  const FaceFont font(face);
  const Gdiplus::StringFormat padded;
  const std::u16string lines = withoutReturns(text);
  Gdiplus::RectF bounds;
  graphics.MeasureString(wideUnits(lines), static_cast<INT>(lines.size()), font.get(),
                         {0, 0, kNoLimit, kNoLimit}, formatOf(setting, padded), &bounds);
  return {bounds.Width, bounds.Height};
}

SharedPicture drawTextPicture(const TextFace& face, TextSetting setting, std::u16string_view text,
                              std::uint32_t color, const TextPlace& place) {
  Gdiplus::Bitmap bitmap(place.width, place.height, PixelFormat32bppPARGB);
  if (bitmap.GetLastStatus() != Gdiplus::Ok) return nullptr;
  {
    Gdiplus::Graphics graphics(&bitmap);
    graphics.Clear(Gdiplus::Color(0, 0, 0, 0));
    const bool tight = setting == TextSetting::Tight;
    graphics.SetTextRenderingHint(tight ? Gdiplus::TextRenderingHintAntiAliasGridFit
                                        : Gdiplus::TextRenderingHintAntiAlias);
    if (!tight) graphics.SetSmoothingMode(Gdiplus::SmoothingModeHighQuality);
    const Gdiplus::SolidBrush brush(Gdiplus::Color(0xFF000000 | color));
    const FaceFont font(face);
    const Gdiplus::StringFormat padded;
    const Gdiplus::RectF box(static_cast<Gdiplus::REAL>(place.left),
                             static_cast<Gdiplus::REAL>(place.top), 0, 0);
    const std::u16string lines = withoutReturns(text);
    graphics.DrawString(wideUnits(lines), static_cast<INT>(lines.size()), font.get(), box,
                        formatOf(setting, padded), &brush);
  }
  return pixelsOf(bitmap);
}

std::optional<double> cellAscent(const std::u16string& family, bool bold) {
  const Gdiplus::FontFamily found(wide(family));
  if (!found.IsAvailable()) return std::nullopt;
  const INT style = bold ? Gdiplus::FontStyleBold : Gdiplus::FontStyleRegular;
  const UINT16 em = found.GetEmHeight(style);
  if (em == 0) return std::nullopt;
  return static_cast<double>(found.GetCellAscent(style)) / em;
}

}  // namespace quillmere::platform
