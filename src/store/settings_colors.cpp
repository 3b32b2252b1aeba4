#include "store/settings_colors.h"

#include <cstddef>
#include <cstdint>

#include "platform/profile.h"
#include "session/session.h"
#include "store/profile_section.h"
#include "store/settings_table.h"

namespace quillmere {

namespace {

constexpr std::uint32_t kNameBufferUnits = 64;
constexpr std::uint32_t kValueBufferUnits = 16;
constexpr std::size_t kNameUnits = 31;
constexpr std::size_t kValueUnits = 7;

// The digit's value; 16 for a unit that is not a hexadecimal digit.
std::uint32_t hexDigit(char16_t unit) {
  if (unit >= u'0' && unit <= u'9') return unit - u'0';
  if (unit >= u'a' && unit <= u'f') return unit - u'a' + 10u;
  if (unit >= u'A' && unit <= u'F') return unit - u'A' + 10u;
  return 16;
}

std::u16string hexByte(std::uint8_t value) {
  constexpr std::u16string_view kDigits = u"0123456789ABCDEF";
  return {kDigits[value >> 4], kDigits[value & 0xF]};
}

}  // namespace

std::optional<ColorEntry> parseColorValue(std::u16string_view text) {
  if (text.size() != kValueUnits || text.front() != u'#') return std::nullopt;
  std::uint32_t number = 0;
  for (const char16_t unit : text.substr(1)) {
    const std::uint32_t digit = hexDigit(unit);
    if (digit > 15) return std::nullopt;
    number = number << 4 | digit;
  }
  return ColorEntry{{},
                    static_cast<std::uint8_t>(number >> 16),
                    static_cast<std::uint8_t>(number >> 8),
                    static_cast<std::uint8_t>(number)};
}

std::u16string colorValueText(const ColorEntry& color) {
  return u"#" + hexByte(color.r) + hexByte(color.g) + hexByte(color.b);
}

void LoadColorTable(const std::u16string& iniPath, const std::u16string& section,
                    std::span<ColorEntry> table) {
  const ProfileSection stored(section, iniPath);
  for (std::size_t index = 0; index < table.size(); ++index) {
    const std::u16string nameKey = colorNameKey(static_cast<std::int32_t>(index));
    const std::u16string valueKey = colorValueKey(static_cast<std::int32_t>(index));
    const std::u16string name = stored.text(nameKey, kNameBufferUnits);
    std::optional<ColorEntry> color = parseColorValue(stored.text(valueKey, kValueBufferUnits));
    if (!name.empty() && color) {
      color->name = name.substr(0, kNameUnits);
      table[index] = *color;
    } else if (!session.viewerRole) {
      platform::writeProfileText(section, nameKey, table[index].name, iniPath);
      platform::writeProfileText(section, valueKey, colorValueText(table[index]), iniPath);
    }
  }
}

}  // namespace quillmere
