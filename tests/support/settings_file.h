#pragma once

#include <gtest/gtest.h>

#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/stand_in.h"
#include "session/session.h"
#include "support/session_test.h"

namespace quillmere::test {

inline constexpr const char16_t* kDataFolder = u"C:\\Users\\User\\AppData\\Local\\Quillmere\\";
inline constexpr const char16_t* kIniPath =
    u"C:\\Users\\User\\AppData\\Local\\Quillmere\\quillmere.ini";

// One "key=value" line of the settings file, with its section.
struct IniEntry {
  std::u16string section;
  std::u16string key;
  std::u16string value;
  bool operator==(const IniEntry&) const = default;
};

void PrintTo(const IniEntry& entry, std::ostream* out);

// Starts every test without a settings file.
class SettingsFileTest : public SessionTest {
 protected:
  // The settings never show the user a box.
  void TearDown() override { EXPECT_TRUE(platform::standIn().boxes.empty()); }
};

// Makes the settings file with the UTF-16 mark and these lines; a line feed becomes CR LF.
void putIni(std::u16string_view lines);

// The text of the settings file after its mark; nullopt without a file or without the mark.
std::optional<std::u16string> iniText();

// The lines of the settings file, in order.
std::vector<IniEntry> iniEntries();

// The value of a key as written in the file; nullopt when the key is absent.
std::optional<std::u16string> iniValue(std::u16string_view section, std::u16string_view key);

// A fresh session that reads the settings file, as the next start of the program does.
void restart();

}  // namespace quillmere::test
