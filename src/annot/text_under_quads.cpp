#include "annot/text_under_quads.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <set>

namespace quillmere {

namespace {

constexpr std::size_t kFirstBuffer = 1024;  // units
// The engine's code for a hyphen that divides a word at a line's end.
constexpr char16_t kDividingHyphen = 0x02;
constexpr char32_t kFirstBeyondOneUnit = 0x10000;
constexpr char32_t kSurrogateBits = 10;

// A small file can cover a full page with any number of quads. So many characters of a page may be
// compared with quads by PDFium, which looks at all of the page for each quad; from then on only
// those at a quad's height are looked at, and in the end none.
constexpr std::size_t kMostComparedByPdfium = 2'000'000;
constexpr std::size_t kMostCompared = 4'000'000;

bool isBlank(char32_t code) {
  return code == U' ' || code == U'\t' || code == U'\r' || code == U'\n' || code == U'\u00A0';
}

std::u16string withoutOuterBlanks(const std::u16string& text) {
  const std::size_t first = text.find_first_not_of(u' ');
  if (first == std::u16string::npos) return {};
  return text.substr(first, text.find_last_not_of(u' ') + 1 - first);
}

void appendCode(std::u16string& text, char32_t code) {
  if (code < kFirstBeyondOneUnit) {
    text += static_cast<char16_t>(code);
    return;
  }
  const char32_t offset = code - kFirstBeyondOneUnit;
  text += static_cast<char16_t>(0xD800 + (offset >> kSurrogateBits));
  text += static_cast<char16_t>(0xDC00 + (offset & ((1u << kSurrogateBits) - 1)));
}

// The quads in their order, without those that came before.
std::vector<PageBox> withoutRepeated(const std::vector<PageBox>& quads) {
  std::vector<PageBox> once;
  std::set<std::array<double, 4>> seen;
  for (const PageBox& quad : quads) {
    const auto [at, isNew] = seen.insert({quad.left, quad.top, quad.right, quad.bottom});
    if (isNew) once.push_back(quad);
  }
  return once;
}

}  // namespace

std::optional<PageBox> boxOfQuad(FPDF_ANNOTATION annotation, std::size_t index) {
  FS_QUADPOINTSF quad{};
  if (!FPDFAnnot_GetAttachmentPoints(annotation, index, &quad)) return std::nullopt;
  const auto [left, right] = std::minmax({quad.x1, quad.x2, quad.x3, quad.x4});
  const auto [bottom, top] = std::minmax({quad.y1, quad.y2, quad.y3, quad.y4});
  return PageBox{left, top, right, bottom};
}

std::u16string TextUnderQuads::under(const std::vector<PageBox>& quads) {
  std::u16string text;
  bool wordContinues = false;
  for (const PageBox& quad : withoutRepeated(quads)) {
    const std::u16string next = piece(quad);
    if (next.empty()) continue;
    if (!text.empty() && !wordContinues) text += u' ';
    text += next;
    wordContinues = text.back() == kDividingHyphen;
    if (wordContinues) text.pop_back();
  }
  return text;
}

// PDFium includes the blank before or after a quad. Boxes of letters reach into the lines above and
// below, so a quad that is a little too high also catches parts of these. PDFium divides the lines
// by a line end, or only by the hyphen of a word that goes on in the next one.
std::u16string TextUnderQuads::piece(const PageBox& quad) {
  if (textPage_ == nullptr) return {};
  if (compared_ >= kMostComparedByPdfium) return withoutOuterBlanks(charactersIn(quad));
  const std::u16string text = withoutOuterBlanks(boundedText(quad));
  const bool oneLine = text.find_first_of(u"\r\n") == std::u16string::npos &&
                       text.find(kDividingHyphen) >= text.size() - 1;
  return oneLine ? text : withoutOuterBlanks(charactersIn(quad));
}

std::u16string TextUnderQuads::boundedText(const PageBox& quad) {
  if (buffer_.empty()) buffer_.resize(kFirstBuffer);
  for (;;) {
    compared_ += static_cast<std::size_t>(std::max(FPDFText_CountChars(textPage_), 0));
    const int room = static_cast<int>(buffer_.size());
    const int count =
        FPDFText_GetBoundedText(textPage_, quad.left, quad.top, quad.right, quad.bottom,
                                reinterpret_cast<unsigned short*>(buffer_.data()), room);
    if (count < room) {
      std::u16string text = buffer_.substr(0, static_cast<std::size_t>(std::max(count, 0)));
      while (!text.empty() && text.back() == u'\0') text.pop_back();
      return text;
    }
    buffer_.resize(2 * buffer_.size());
  }
}

std::u16string TextUnderQuads::charactersIn(const PageBox& quad) {
  readCharacters();
  std::vector<Character> inside;
  const auto lower = [](const Character& character, double y) { return character.y < y; };
  for (auto at = std::lower_bound(characters_.begin(), characters_.end(), quad.bottom, lower);
       at != characters_.end() && at->y <= quad.top && compared_ < kMostCompared; ++at) {
    ++compared_;
    if (at->x >= quad.left && at->x <= quad.right) inside.push_back(*at);
  }
  if (compared_ >= kMostCompared) return {};
  std::sort(inside.begin(), inside.end(),
            [](const Character& a, const Character& b) { return a.index < b.index; });
  std::u16string text;
  int before = -1;
  for (const Character& character : inside) {
    const auto blank = std::upper_bound(blanks_.begin(), blanks_.end(), before);
    const bool apart = blank != blanks_.end() && *blank < character.index;
    if (!text.empty() && apart && text.back() != kDividingHyphen) text += u' ';
    appendCode(text, character.code);
    before = character.index;
  }
  const bool wordContinues = !text.empty() && text.back() == kDividingHyphen;
  std::erase(text, kDividingHyphen);
  if (wordContinues) text += kDividingHyphen;
  return text;
}

void TextUnderQuads::readCharacters() {
  if (charactersRead_) return;
  charactersRead_ = true;
  const int count = FPDFText_CountChars(textPage_);
  for (int i = 0; i < count; ++i) {
    const char32_t code = FPDFText_GetUnicode(textPage_, i);
    double left = 0;
    double right = 0;
    double bottom = 0;
    double top = 0;
    if (isBlank(code)) {
      blanks_.push_back(i);
    } else if (code != 0 && FPDFText_GetCharBox(textPage_, i, &left, &right, &bottom, &top)) {
      characters_.push_back({i, (left + right) / 2, (bottom + top) / 2, code});
    }
  }
  std::sort(characters_.begin(), characters_.end(),
            [](const Character& a, const Character& b) { return a.y < b.y; });
}

}  // namespace quillmere
