#include "store/text_lines.h"

#include <algorithm>

#include "platform/text.h"

namespace quillmere {

namespace {

constexpr std::size_t kMostBytesOfUnit = 3;  // in UTF-8

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kLittleEndianMark = "\xFF\xFE";
constexpr std::string_view kBigEndianMark = "\xFE\xFF";

struct LineReader {
  std::size_t longest;
  const std::function<void(std::u16string_view)>& take;
  const std::function<bool(std::string_view)>& takeUndecoded;

  void undecoded(std::string_view line) const {
    if (line.empty() || line.size() > longest * kMostBytesOfUnit) return;
    if (takeUndecoded && takeUndecoded(line)) return;
    decoded(platform::fromUtf8(line));
  }
  void decoded(std::u16string_view line) const {
    if (line.size() <= longest && line.find(u'\0') == std::u16string_view::npos) take(line);
  }
};

void readUtf8(std::string_view bytes, const LineReader& reader) {
  while (!bytes.empty()) {
    const std::size_t end = std::min(bytes.find('\n'), bytes.size());
    std::string_view line = bytes.substr(0, end);
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    reader.undecoded(line);
  }
}

void readUtf16(std::string_view bytes, const LineReader& reader) {
  std::u16string line;
  const auto endLine = [&] {
    if (line.ends_with(u'\r')) line.pop_back();
    // The program writes UTF-8, which has no lone surrogates.
    if (!line.empty()) reader.decoded(platform::fromUtf8(platform::toUtf8(line)));
    line.clear();
  };
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
    const auto low = static_cast<unsigned char>(bytes[at]);
    const auto high = static_cast<unsigned char>(bytes[at + 1]);
    const auto unit = static_cast<char16_t>(high << 8 | low);
    if (unit == u'\n') {
      endLine();
    } else if (line.size() <= reader.longest + 1) {  // enough to see that it is too long
      line += unit;
    }
  }
  endLine();
}

}  // namespace

bool readTextLines(std::string_view bytes, std::size_t longest,
                   const std::function<void(std::u16string_view)>& take,
                   const std::function<bool(std::string_view)>& takeUndecoded) {
  if (bytes.starts_with(kBigEndianMark)) return false;
  const LineReader reader{longest, take, takeUndecoded};
  if (bytes.starts_with(kLittleEndianMark)) {
    readUtf16(bytes.substr(kLittleEndianMark.size()), reader);
  } else {
    if (bytes.starts_with(kUtf8Mark)) bytes.remove_prefix(kUtf8Mark.size());
    readUtf8(bytes, reader);
  }
  return true;
}

std::string textFileBytes(std::u16string_view text) {
  return std::string(kUtf8Mark) + platform::toUtf8(text);
}

}  // namespace quillmere
