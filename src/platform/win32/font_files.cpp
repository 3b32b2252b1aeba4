#include "platform/font_files.h"

#include <windows.h>

#include <algorithm>
#include <iterator>

#include "platform/win32/wide.h"

namespace quillmere::platform {
namespace {

// From general faces to those for a single script. Font collections cannot be embedded, so families
// that come as one are left out.
constexpr const wchar_t* kFaces[] = {L"Arial",         L"Segoe UI", L"Segoe UI Symbol",
                                     L"Malgun Gothic", L"DengXian", L"Nirmala UI",
                                     L"Leelawadee UI"};
constexpr WORD kNoGlyph = 0xFFFF;
constexpr int kAnyHeight = -64;  // pixels

// A memory context with a face selected; several fonts are tried one after another.
class FaceContext {
 public:
  FaceContext(const wchar_t* face, bool bold)
      : dc_(CreateCompatibleDC(nullptr)),
        font_(CreateFontW(kAnyHeight, 0, 0, 0, bold ? FW_BOLD : FW_NORMAL, FALSE, FALSE, FALSE,
                          DEFAULT_CHARSET, OUT_TT_ONLY_PRECIS, CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY,
                          DEFAULT_PITCH, face)),
        before_(SelectObject(dc_, font_)) {}
  FaceContext(const FaceContext&) = delete;
  FaceContext& operator=(const FaceContext&) = delete;
  ~FaceContext() {
    SelectObject(dc_, before_);
    DeleteObject(font_);
    DeleteDC(dc_);
  }
  HDC dc() const { return dc_; }

 private:
  HDC dc_;
  HFONT font_;
  HGDIOBJ before_;
};

bool hasAll(HDC dc, std::u16string_view text) {
  std::vector<WORD> glyphs(text.size());
  const DWORD count = GetGlyphIndicesW(dc, wideUnits(text), static_cast<int>(text.size()),
                                       glyphs.data(), GGI_MARK_NONEXISTING_GLYPHS);
  return count != GDI_ERROR && std::find(glyphs.begin(), glyphs.end(), kNoGlyph) == glyphs.end();
}

bool isTrueType(const std::vector<std::uint8_t>& file) {
  constexpr std::uint8_t kVersion[] = {0, 1, 0, 0};
  return file.size() > std::size(kVersion) &&
         std::equal(std::begin(kVersion), std::end(kVersion), file.begin());
}

}  // namespace

std::u16string faceFor(std::u16string_view text) {
  for (const wchar_t* face : kFaces) {
    const FaceContext context(face, false);
    if (hasAll(context.dc(), text)) return fromWide(face);
  }
  return fromWide(kFaces[0]);
}

std::vector<std::uint8_t> fontFile(const std::u16string& face, bool bold) {
  const FaceContext context(wide(face), bold);
  const DWORD size = GetFontData(context.dc(), 0, 0, nullptr, 0);
  if (size == GDI_ERROR || size == 0) return {};
  std::vector<std::uint8_t> file(size);
  if (GetFontData(context.dc(), 0, 0, file.data(), size) != size || !isTrueType(file)) return {};
  return file;
}

}  // namespace quillmere::platform
