#include "store/binder_file.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>
#include <unordered_set>
#include <utility>

#include "base/limits.h"
#include "base/text_format.h"
#include "platform/files.h"
#include "platform/text.h"
#include "session/changes.h"
#include "session/session.h"
#include "store/probe_path.h"
#include "store/replace_whole_file.h"
#include "store/text_lines.h"
#include "ui/boxes.h"

namespace quillmere {

namespace {

constexpr std::size_t kLongestLine = 518;          // units, not counting the line end
constexpr std::uint64_t kLargestFile = 256 << 20;  // bytes; no real list of documents is larger
constexpr std::uint32_t kLastPage = 999999;
constexpr std::uint32_t kLastMode = 3;
constexpr float kZoomAbove = 0.01f;
constexpr float kZoomBelow = 100.0f;

// Numbers are read as the C library reads them: after blanks, up to the first other character.
bool isBlank(char16_t unit) {
  return unit == u' ' || (unit >= u'\t' && unit <= u'\r');
}

// The decimal integer at the start of the text, clamped to 32 bits with sign, as its bits; nullopt
// without a digit.
std::optional<std::uint32_t> unsignedBits(std::u16string_view text) {
  std::size_t at = 0;
  while (at < text.size() && isBlank(text[at])) ++at;
  const bool negative = at < text.size() && text[at] == u'-';
  if (negative || (at < text.size() && text[at] == u'+')) ++at;
  const std::size_t first = at;
  const std::int64_t limit = negative ? -std::int64_t{std::numeric_limits<std::int32_t>::min()}
                                      : std::int64_t{std::numeric_limits<std::int32_t>::max()};
  std::int64_t number = 0;
  for (; at < text.size() && text[at] >= u'0' && text[at] <= u'9'; ++at) {
    number = std::min(number * 10 + (text[at] - u'0'), limit);
  }
  if (at == first) return std::nullopt;
  return static_cast<std::uint32_t>(negative ? -number : number);
}

// The number at the start of the text; nullopt when there is none or it is not finite.
std::optional<float> finiteNumber(std::u16string_view text) {
  std::string narrow;
  for (const char16_t unit : text) {
    if (unit > 0x7E) break;
    narrow += static_cast<char>(unit);
  }
  char* end = nullptr;
  const float number = std::strtof(narrow.c_str(), &end);
  if (end == narrow.c_str() || !std::isfinite(number)) return std::nullopt;
  return number;
}

void readPage(BinderEntry& entry, std::u16string_view value) {
  const auto page = unsignedBits(value);
  if (!page || *page > kLastPage) return;
  entry.page = static_cast<std::int32_t>(*page);
  entry.hasPage = true;
}

void readPanX(BinderEntry& entry, std::u16string_view value) {
  entry.panX = finiteNumber(value).value_or(entry.panX);
}

void readPanY(BinderEntry& entry, std::u16string_view value) {
  entry.panY = finiteNumber(value).value_or(entry.panY);
}

void readZoom(BinderEntry& entry, std::u16string_view value) {
  const auto zoom = finiteNumber(value);
  if (zoom && *zoom > kZoomAbove && *zoom < kZoomBelow) entry.zoom = *zoom;
}

void readMode(BinderEntry& entry, std::u16string_view value) {
  const auto mode = unsignedBits(value);
  if (mode && *mode <= kLastMode) entry.mode = static_cast<std::int32_t>(*mode);
}

void readBold(BinderEntry& entry, std::u16string_view value) {
  entry.bold = !value.starts_with(u'0');
}

struct Field {
  std::u16string_view key;
  void (*read)(BinderEntry& entry, std::u16string_view value);
};

constexpr Field kFields[] = {
    {u"page", readPage}, {u"panX", readPanX}, {u"panY", readPanY},
    {u"zoom", readZoom}, {u"mode", readMode}, {u"bold", readBold},
};

void readField(std::u16string_view token, BinderEntry& entry) {
  const std::size_t sign = token.find(u'=');
  if (sign == std::u16string_view::npos) return;
  for (const Field& field : kFields) {
    if (platform::equalIgnoringCase(token.substr(0, sign), field.key)) {
      field.read(entry, token.substr(sign + 1));
    }
  }
}

BinderEntry readFields(std::u16string_view fields) {
  BinderEntry entry;
  while (!fields.empty()) {
    const std::size_t end = std::min(fields.find(u'\t'), fields.size());
    readField(fields.substr(0, end), entry);
    fields.remove_prefix(std::min(end + 1, fields.size()));
  }
  return entry;
}

void stripTrailing(std::u16string_view& text) {
  while (!text.empty() && (text.back() == u' ' || text.back() == u'\r')) text.remove_suffix(1);
}

// The value of this key if the head line has it.
std::optional<bool> flagOf(std::u16string_view head, std::u16string_view key) {
  if (!platform::equalIgnoringCase(head.substr(0, key.size()), key)) return std::nullopt;
  return !head.substr(key.size()).starts_with(u'0');
}

void readHead(std::u16string_view head, BinderFile& binder) {
  const std::size_t start = head.find_first_not_of(u" \t");
  head.remove_prefix(std::min(start, head.size()));
  binder.collapsed = flagOf(head, u"collapsed=").value_or(binder.collapsed);
  binder.bold = flagOf(head, u"bold=").value_or(binder.bold);
}

void readLine(std::u16string_view line, BinderFile& binder) {
  stripTrailing(line);
  if (line.empty()) return;
  if (line.front() == u'#') return readHead(line.substr(1), binder);

  const std::size_t end = std::min(line.find(u'\t'), line.size());
  // The system ignores blanks after a name, and a line without fields would lose them.
  std::u16string_view path = line.substr(0, end);
  stripTrailing(path);
  if (path.empty()) return;
  if (binder.files.size() >= kMostFilesHeld) {
    binder.furtherLines += platform::toUtf8(line) + "\r\n";
    return;
  }
  binder.files.emplace_back(path);
  const BinderEntry entry = readFields(line.substr(end));
  if (entry.mode >= 0 || entry.bold || entry.hasPage) {
    binder.views[platform::toLower(path)] = entry;
  }
}

// In ASCII text each byte is a unit.
bool isPlainFileLine(std::string_view line) {
  return !line.starts_with('#') && line.size() <= kLongestLine &&
         std::all_of(line.begin(), line.end(),
                     [](unsigned char byte) { return byte > 0 && byte < 0x80; });
}

// A file can hold millions of lines beyond those that a list holds. True when the line was one of
// these and is kept as it is.
bool keepFurtherLine(std::string_view line, BinderFile& binder) {
  if (binder.files.size() < kMostFilesHeld || !isPlainFileLine(line)) return false;
  const std::size_t last = line.find_last_not_of(" \r");
  const std::size_t path = line.find_first_not_of(" \r");
  if (last != std::string_view::npos && line[path] != '\t') {
    binder.furtherLines.append(line.substr(0, last + 1)).append("\r\n");
  }
  return true;
}

std::u16string fieldsOf(const BinderEntry& entry) {
  std::u16string fields;
  if (entry.mode >= 0) {
    fields = formatText(u"\tpage=%d\tpanX=%s\tpanY=%s\tzoom=%s\tmode=%d",
                        {decimal(entry.page), sixDigits(entry.panX), sixDigits(entry.panY),
                         sixDigits(entry.zoom), decimal(entry.mode)});
  } else if (entry.hasPage) {
    fields = formatText(u"\tpage=%d", {decimal(entry.page)});
  }
  if (entry.bold) fields += u"\tbold=1";
  return fields;
}

std::u16string lineOf(const BinderFile& binder, const std::u16string& path) {
  const auto view = binder.views.find(platform::toLower(path));
  if (view == binder.views.end()) return path;
  const std::u16string fields = fieldsOf(view->second);
  // The reader drops a line that is too long, so write the path without its view rather than lose
  // both.
  return path.size() + fields.size() <= kLongestLine ? path + fields : path;
}

// Adds what the file of the documents in use holds, after what was added since the start.
void adoptStored(BinderFile& stored, BinderFile& binder) {
  std::unordered_set<std::u16string, Fnv1aTextHash> listed;
  for (const std::u16string& path : binder.files) listed.insert(platform::toLower(path));
  for (std::u16string& path : stored.files) {
    if (!listed.contains(platform::toLower(path))) binder.files.push_back(std::move(path));
  }
  binder.views.merge(stored.views);
  binder.furtherLines += stored.furtherLines;
  bindersChanged();
}

// A folder that takes no new file, or whose path leaves no room for its name, may still let the
// file itself be written.
bool writeBytes(const std::u16string& path, const std::string& bytes) {
  const auto write = [&bytes](platform::FileInWriting& file) {
    return platform::writeBlock(file, bytes.data(), bytes.size());
  };
  const Replacement replacement = replaceWholeFile(path, write);
  return replacement == Replacement::Done ||
         (replacement == Replacement::NoSibling &&
          platform::writeFile(path, bytes.data(), bytes.size()));
}

}  // namespace

bool catchUpWithFile(BinderFile& binder) {
  if (!binder.isWorkingDocuments || !session.workingDocumentsUnread) return true;
  BinderFile stored;
  if (LoadBinderFile(binder.path, stored)) {
    adoptStored(stored, binder);
  } else if (platform::fileExists(binder.path)) {
    return false;
  }
  session.workingDocumentsUnread = false;
  return true;
}

std::u16string BinderNameFromPath(std::u16string_view path) {
  const std::u16string name = fileNameOf(path);
  return name.substr(0, name.rfind(u'.'));
}

bool parseBinder(std::string_view bytes, BinderFile& binder) {
  return readTextLines(
      bytes, kLongestLine, [&binder](std::u16string_view line) { readLine(line, binder); },
      [&binder](std::string_view line) { return keepFurtherLine(line, binder); });
}

std::string binderBytes(const BinderFile& binder) {
  std::u16string text =
      formatText(u"# collapsed=%d\r\n# bold=%d\r\n",
                 {decimal(binder.collapsed ? 1 : 0), decimal(binder.bold ? 1 : 0)});
  for (const std::u16string& path : binder.files) text += lineOf(binder, path) + u"\r\n";
  return textFileBytes(text) + binder.furtherLines;
}

bool LoadBinderFile(const std::u16string& path, BinderFile& binder) {
  binder.files.clear();
  binder.views.clear();
  binder.furtherLines.clear();
  binder.path = path;
  binder.name = BinderNameFromPath(path);
  binder.dirty = false;
  const auto bytes = platform::readFileShared(path, kLargestFile);
  return bytes &&
         parseBinder({reinterpret_cast<const char*>(bytes->data()), bytes->size()}, binder);
}

bool keepsBinderFile(const BinderFile& binder) {
  return !session.viewerRole && (!binder.isWorkingDocuments || session.ownsPrimaryName);
}

bool WriteBinderFile(BinderFile& binder) {
  if (binder.path.empty() || !keepsBinderFile(binder)) return false;
  if (onGoneShare(binder.path) || !catchUpWithFile(binder)) return false;
  if (!writeBytes(binder.path, binderBytes(binder))) return false;
  binder.dirty = false;
  return true;
}

bool SaveBinderFile(BinderFile& binder) {
  if (WriteBinderFile(binder)) return true;
  if (keepsBinderFile(binder)) {
    showBox(formatText(u"Could not save the binder file:\n\n    %s\n\nYour change is in memory but "
                       u"has NOT been written to disk.",
                       {binder.path}),
            u"Save Binder Failed", BoxButtons::Ok, BoxIcon::Warning);
  }
  return false;
}

}  // namespace quillmere
