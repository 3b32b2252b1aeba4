#include <algorithm>
#include <optional>
#include <vector>

#include "platform/files.h"
#include "platform/leading_integer.h"
#include "platform/profile.h"
#include "platform/text.h"
#include "profile_encoding.h"
#include "stand_in_files.h"

// Private-profile files as the system reads and writes them: comments, blank lines and lines that
// it does not understand stay where they are.
namespace quillmere::platform {
namespace {

struct ProfileFile {
  ProfileEncoding encoding = ProfileEncoding::CodePage;
  std::vector<std::u16string> lines;  // without line ends
};

bool isBlank(char16_t unit) {
  return unit == u' ' || (unit >= 9 && unit <= 13);
}

std::u16string_view trimmed(std::u16string_view text) {
  while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
  while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
  return text;
}

std::vector<std::u16string> linesOf(std::u16string_view text) {
  std::vector<std::u16string> lines;
  while (!text.empty()) {
    const std::size_t end = text.find_first_of(u"\r\n");
    lines.emplace_back(text.substr(0, end));
    if (end == std::u16string_view::npos) break;
    text.remove_prefix(text.substr(end).starts_with(u"\r\n") ? end + 2 : end + 1);
  }
  return lines;
}

// Returns nullopt when the file exists but cannot be read.
std::optional<ProfileFile> loadProfile(const std::u16string& path) {
  if (!fileExists(path)) return ProfileFile{};
  const std::optional<std::string> bytes = readForProfile(path);
  if (!bytes) return std::nullopt;
  ProfileFile file;
  file.encoding = profileEncodingOf(*bytes);
  file.lines = linesOf(decodeProfile(*bytes, file.encoding));
  return file;
}

bool saveProfile(const ProfileFile& file, const std::u16string& path) {
  std::u16string text;
  for (const std::u16string& line : file.lines) text += line + u"\r\n";
  const std::string bytes = encodeProfile(text, file.encoding);
  return writeFile(path, bytes.data(), bytes.size());
}

// The name between the brackets of a section line; nullopt for other lines.
std::optional<std::u16string_view> sectionName(std::u16string_view line) {
  line = trimmed(line);
  const std::size_t end = line.rfind(u']');
  if (!line.starts_with(u'[') || end == std::u16string_view::npos) return std::nullopt;
  return trimmed(line.substr(1, end - 1));
}

// True for "key=value" with that key, and for a line with only the key; `value` gets the part after
// the equals sign.
bool takeValue(std::u16string_view line, std::u16string_view key, std::u16string_view& value) {
  const std::size_t equals = line.find(u'=');
  if (!equalIgnoringCase(trimmed(line.substr(0, equals)), key)) return false;
  value = equals == std::u16string_view::npos ? std::u16string_view()
                                              : trimmed(line.substr(equals + 1));
  return true;
}

struct SectionLines {
  std::size_t begin = 0;  // after the section's own line
  std::size_t end = 0;
};

std::optional<SectionLines> findSection(const ProfileFile& file, const std::u16string& section) {
  const auto isAnySection = [](const std::u16string& line) {
    return sectionName(line).has_value();
  };
  const auto isThisSection = [&](const std::u16string& line) {
    const auto name = sectionName(line);
    return name && equalIgnoringCase(*name, trimmed(section));
  };
  const auto head = std::find_if(file.lines.begin(), file.lines.end(), isThisSection);
  if (head == file.lines.end()) return std::nullopt;
  const auto end = std::find_if(head + 1, file.lines.end(), isAnySection);
  return SectionLines{static_cast<std::size_t>(head + 1 - file.lines.begin()),
                      static_cast<std::size_t>(end - file.lines.begin())};
}

std::u16string_view withoutQuotes(std::u16string_view value) {
  const bool quoted = value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') &&
                      value.back() == value.front();
  return quoted ? value.substr(1, value.size() - 2) : value;
}

// The value as the system reads it, without surrounding blanks and quotes; nullopt when the key is
// missing.
std::optional<std::u16string> findValue(const ProfileFile& file, const std::u16string& section,
                                        const std::u16string& key) {
  const std::optional<SectionLines> lines = findSection(file, section);
  if (!lines) return std::nullopt;
  for (std::size_t n = lines->begin; n < lines->end; ++n) {
    std::u16string_view value;
    if (takeValue(file.lines[n], trimmed(key), value)) return std::u16string(withoutQuotes(value));
  }
  return std::nullopt;
}

// As `findValue` in a file on disk; empty when the key is missing.
std::u16string readValue(const std::u16string& section, const std::u16string& key,
                         const std::u16string& path) {
  const std::optional<ProfileFile> file = loadProfile(path);
  return file ? findValue(*file, section, key).value_or(u"") : std::u16string();
}

// Where a new key goes: after the section's last line that is not empty.
std::size_t placeForKey(const ProfileFile& file, const SectionLines& lines) {
  std::size_t place = lines.end;
  while (place > lines.begin && trimmed(file.lines[place - 1]).empty()) --place;
  return place;
}

void setValue(ProfileFile& file, const std::u16string& section, const std::u16string& key,
              const std::u16string& value) {
  const std::u16string line = key + u"=" + value;
  const std::optional<SectionLines> lines = findSection(file, section);
  if (!lines) {
    file.lines.push_back(u"[" + section + u"]");
    file.lines.push_back(line);
    return;
  }
  for (std::size_t n = lines->begin; n < lines->end; ++n) {
    std::u16string_view ignored;
    if (takeValue(file.lines[n], trimmed(key), ignored)) {
      file.lines[n] = line;
      return;
    }
  }
  const auto place = static_cast<std::ptrdiff_t>(placeForKey(file, *lines));
  file.lines.insert(file.lines.begin() + place, line);
}

}  // namespace

std::int32_t readProfileInteger(const std::u16string& section, const std::u16string& key,
                                std::int32_t fallback, const std::u16string& path) {
  const std::u16string value = readValue(section, key, path);
  return value.empty() ? fallback : leadingInteger(value);
}

std::u16string readProfileText(const std::u16string& section, const std::u16string& key,
                               std::uint32_t size, const std::u16string& path) {
  return size == 0 ? std::u16string() : readValue(section, key, path).substr(0, size - 1);
}

std::vector<ProfileEntry> readProfileSection(const std::u16string& section,
                                             const std::u16string& path) {
  const std::optional<ProfileFile> file = loadProfile(path);
  const std::optional<SectionLines> lines = file ? findSection(*file, section) : std::nullopt;
  std::vector<ProfileEntry> entries;
  for (std::size_t n = lines ? lines->begin : 0; lines && n < lines->end; ++n) {
    const std::u16string_view line = file->lines[n];
    const std::u16string_view key = trimmed(line.substr(0, line.find(u'=')));
    std::u16string_view value;
    if (key.starts_with(u';') || trimmed(line).empty() || !takeValue(line, key, value)) continue;
    entries.push_back({std::u16string(key), std::u16string(withoutQuotes(value))});
  }
  return entries;
}

bool writeProfileText(const std::u16string& section, const std::u16string& key,
                      const std::u16string& value, const std::u16string& path) {
  std::optional<ProfileFile> file = loadProfile(path);
  if (!file) return false;
  if (findValue(*file, section, key) == value) return true;
  setValue(*file, section, key, value);
  return saveProfile(*file, path);
}

}  // namespace quillmere::platform
