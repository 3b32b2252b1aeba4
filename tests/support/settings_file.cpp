#include "support/settings_file.h"

#include <cstddef>
#include <ostream>

#include "platform/text.h"
#include "store/settings.h"

namespace quillmere::test {

void PrintTo(const IniEntry& entry, std::ostream* out) {
  *out << "[" << platform::toUtf8(entry.section) << "] " << platform::toUtf8(entry.key) << "="
       << platform::toUtf8(entry.value);
}

void putIni(std::u16string_view lines) {
  std::string bytes = "\xFF\xFE";
  const auto put = [&bytes](char16_t unit) {
    bytes.push_back(static_cast<char>(unit & 0xFF));
    bytes.push_back(static_cast<char>(unit >> 8));
  };
  for (const char16_t unit : lines) {
    if (unit == u'\n') put(u'\r');
    put(unit);
  }
  platform::putFile(kIniPath, bytes);
}

std::optional<std::u16string> iniText() {
  const std::optional<std::string> bytes = platform::fileBytes(kIniPath);
  if (!bytes || bytes->substr(0, 2) != "\xFF\xFE") return std::nullopt;
  std::u16string text;
  for (std::size_t at = 2; at + 1 < bytes->size(); at += 2) {
    const auto low = static_cast<unsigned char>((*bytes)[at]);
    const auto high = static_cast<unsigned char>((*bytes)[at + 1]);
    text.push_back(static_cast<char16_t>(high << 8 | low));
  }
  return text;
}

std::vector<IniEntry> iniEntries() {
  const std::u16string text = iniText().value_or(std::u16string()) + u"\n";
  std::vector<IniEntry> entries;
  std::u16string section;
  for (std::size_t start = 0, end; (end = text.find(u'\n', start)) != text.npos; start = end + 1) {
    std::u16string line = text.substr(start, end - start);
    if (!line.empty() && line.back() == u'\r') line.pop_back();
    if (line.empty()) continue;
    if (line.front() == u'[') {
      section = line.substr(1, line.size() - 2);
      continue;
    }
    const std::size_t sign = line.find(u'=');
    entries.push_back({section, line.substr(0, sign), line.substr(sign + 1)});
  }
  return entries;
}

std::optional<std::u16string> iniValue(std::u16string_view section, std::u16string_view key) {
  for (const IniEntry& entry : iniEntries()) {
    if (entry.section == section && entry.key == key) return entry.value;
  }
  return std::nullopt;
}

void restart() {
  resetSession();
  LoadSettings();
}

}  // namespace quillmere::test
