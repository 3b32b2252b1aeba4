#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "session/app_settings.h"

// The settings file as data: what it holds, how each number is checked, and where it goes.
namespace quillmere {

// How a number in the file is read. Unsigned makes "-1" the largest value of all.
enum class SettingType { Unsigned, Signed, Bool };

enum class RangeRule {
  Any,      // every number is accepted
  Replace,  // a number above `high`, or below zero, becomes `replacement`
  Clamp,    // a number is limited to `low` .. `high`
};

struct SettingRange {
  RangeRule rule = RangeRule::Any;
  std::int32_t low = 0;
  std::int32_t high = 0;
  std::int32_t replacement = 0;
};

enum class SettingSave {
  WithTheRest,  // by every full save
  OnItsOwn,     // only when it changes
};

// One number of the file.
struct SettingRow {
  const char16_t* section;
  const char16_t* key;
  SettingType type;
  std::int32_t fallback;  // what an absent key reads as
  SettingRange range;
  std::int32_t (*get)(const AppSettings&);        // unsigned values as the same bits
  void (*set)(AppSettings&, std::int32_t value);  // `value` is within the range
  SettingSave save = SettingSave::WithTheRest;
};

// Every number, in the order in which a full save writes them.
std::span<const SettingRow> settingsTable();

// The row of a key; null when no row has that exact spelling.
const SettingRow* findSetting(std::u16string_view section, std::u16string_view key);

// The value that a number in the file stands for, once it is checked.
std::int32_t settingInRange(const SettingRow& row, std::int32_t number);

// Written only when the window's position is known.
inline constexpr const char16_t* kWindowSection = u"Window";

// A numbered list of paths: keys "Count" and "Path0", "Path1" and so on.
struct PathListRow {
  const char16_t* section;
  std::int32_t maximumCount;  // a larger "Count" is cut to this
};

inline constexpr PathListRow kRecentFilesList = {u"RecentFiles", 20};
inline constexpr PathListRow kBinderList = {u"Binders", 50};

inline constexpr const char16_t* kCountKey = u"Count";
std::u16string pathKey(std::int32_t index);

// The two keys of a row of a colour table.
inline constexpr const char16_t* kTextColorsSection = u"TextColors";
inline constexpr const char16_t* kMarkupColorsSection = u"MarkupColors";
std::u16string colorNameKey(std::int32_t row);
std::u16string colorValueKey(std::int32_t row);

}  // namespace quillmere
