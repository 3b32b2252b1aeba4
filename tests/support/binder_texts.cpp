#include "support/binder_texts.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "store/binder_file.h"

namespace quillmere::test {

namespace {

constexpr std::size_t kMostLines = 9;
constexpr std::size_t kMostFields = 7;
constexpr std::size_t kSurelyFits = 400;  // units of a path behind which every field still fits

bool sameNumber(float left, float right) {
  return std::abs(double{left} - right) <= 5e-6 * std::abs(double{left});
}

// Six digits can round it to a zoom that is refused, which comes back as the default.
bool atTheEdge(float zoom) {
  return zoom > 99.9995f || zoom < 0.0100001f;
}

std::string lostOfView(const BinderEntry& before, const BinderEntry& after) {
  if (after.page != before.page || after.mode != before.mode || after.bold != before.bold) {
    return "page, mode or bold";
  }
  if (after.hasPage != (before.hasPage || before.mode >= 0)) return "whether there is a page";
  if (before.mode < 0) return {};  // without a mode, zoom and pan are not written
  if (!sameNumber(before.panX, after.panX) || !sameNumber(before.panY, after.panY)) return "a pan";
  return sameNumber(before.zoom, after.zoom) || atTheEdge(before.zoom) ? "" : "a zoom";
}

std::string lostOfViews(const BinderFile& before, const BinderFile& after) {
  for (const auto& [path, view] : before.views) {
    if (path.size() > kSurelyFits) continue;
    const auto found = after.views.find(path);
    if (found == after.views.end()) return "a view";
    if (const std::string lost = lostOfView(view, found->second); !lost.empty()) return lost;
  }
  return after.views.size() > before.views.size() ? "that there was no view" : "";
}

std::string inUtf16(const std::string& bytes) {
  std::string wide = "\xFF\xFE";
  for (const char byte : bytes) wide.append({byte, '\0'});
  return wide;
}

}  // namespace

std::string lostByWriting(const BinderFile& binder) {
  BinderFile again;
  if (!parseBinder(binderBytes(binder), again)) return "all of it";
  if (again.files != binder.files) return "a file";
  if (again.furtherLines != binder.furtherLines) return "a further line";
  if (again.collapsed != binder.collapsed || again.bold != binder.bold) return "a flag";
  return lostOfViews(binder, again);
}

std::string RandomBinderTexts::number() {
  static constexpr const char* kNumbers[] = {
      "0", "1",      "-3.25", "99.9", "0.01", "100", "1e5", "nan",   "12345", "-1",  "3x", "",  "2",
      "3", "999999", "1e9",   "0.5",  "-0",   "+7",  " 4",  "1e-45", "0x1p3", "inf", "1.", ".5"};
  if (below(3) != 0) return kNumbers[below(std::size(kNumbers))];
  return std::to_string(below(2'000'000)) + "." + std::to_string(below(100'000'000));
}

std::string RandomBinderTexts::line() {
  static constexpr const char* kNames[] = {
      "C:\\a.pdf", "c:\\A.PDF", "\xC3\xA4 b.pdf", "  x",
      "#head",     "\xFF\xC3",  "# bold=1\t",     "",
      "y ",        "C:\\z\r",   "//nas/x.pdf",    "# collapsed=1"};
  static constexpr const char* kKeys[] = {"page", "panX", "panY", "zoom",
                                          "mode", "bold", "Page", "odd"};
  std::string text = kNames[below(std::size(kNames))];
  if (below(100) == 0) text.append(430 + below(100), 'l');
  for (std::size_t fields = below(kMostFields); fields > 0; --fields) {
    text.append(1 + below(2), '\t').append(kKeys[below(std::size(kKeys))]) += '=';
    text += number();
  }
  return text + (below(4) == 0 ? "\n" : "\r\n");
}

// Other bytes in a place, a piece that is missing, and one that stands somewhere else too.
void RandomBinderTexts::damage(std::string& text) {
  if (text.empty()) return;
  const std::size_t place = below(text.size());
  const std::size_t length = std::min(1 + below(12), text.size() - place);
  switch (below(3)) {
    case 0:
      for (std::size_t i = 0; i < length; ++i) text[place + i] = static_cast<char>(below(256));
      break;
    case 1:
      text.erase(place, length);
      break;
    default:
      text.insert(below(text.size()), std::string(text, place, length));
      break;
  }
}

std::string RandomBinderTexts::next() {
  std::string text = below(2) == 0 ? "\xEF\xBB\xBF" : "";
  for (std::size_t lines = below(kMostLines); lines > 0; --lines) text += line();
  for (std::size_t times = below(4); times > 0; --times) damage(text);
  return below(16) == 0 ? inUtf16(text) : text;
}

}  // namespace quillmere::test
