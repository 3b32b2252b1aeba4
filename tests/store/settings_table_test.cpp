#include "store/settings_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "platform/text.h"
#include "store/settings.h"
#include "support/settings_file.h"

namespace quillmere::test {
namespace {

class SettingsTableTest : public SettingsFileTest {};

constexpr const char16_t* kAbsent = nullptr;

// The text of one key, the only one in the file, and the value that it reads as.
struct ReadCase {
  const char16_t* section;
  const char16_t* key;
  const char16_t* text;
  std::int32_t expected;
};

// clang-format off
const ReadCase kReadCases[] = {
    {u"Defaults", u"ZoomMode", kAbsent, 0},
    {u"Defaults", u"ZoomMode", u"4", 4},
    {u"Defaults", u"ZoomMode", u"5", 0},
    {u"Defaults", u"ZoomMode", u"-1", 0},
    {u"Defaults", u"PanScroll", kAbsent, 1},
    {u"Defaults", u"PanScroll", u"0", 0},
    {u"Defaults", u"PanScroll", u"2", 2},
    {u"Defaults", u"PanScroll", u"3", 1},
    {u"Defaults", u"PanScroll", u"-1", 1},
    {u"Defaults", u"NavPane", kAbsent, 1},
    {u"Defaults", u"NavPane", u"0", 0},
    {u"Defaults", u"NavPane", u"2", 2},
    {u"Defaults", u"NavPane", u"3", 1},
    {u"Defaults", u"NavPane", u"-2", 1},
    {u"Defaults", u"StampPane", kAbsent, 0},
    {u"Defaults", u"StampPane", u"2", 2},
    {u"Defaults", u"StampPane", u"3", 0},
    {u"Defaults", u"StampPane", u"-1", 0},
    {u"Defaults", u"BindersPanel", kAbsent, 1},
    {u"Defaults", u"BindersPanel", u"2", 2},
    {u"Defaults", u"BindersPanel", u"3", 1},
    {u"Defaults", u"BindersPanel", u"-1", 1},

    {u"LastUsed", u"ZoomMode0", kAbsent, 0},
    {u"LastUsed", u"ZoomMode0", u"3", 3},
    {u"LastUsed", u"ZoomMode0", u"4", 0},
    {u"LastUsed", u"ZoomMode0", u"-1", 0},
    {u"LastUsed", u"ZoomMode1", kAbsent, 0},
    {u"LastUsed", u"ZoomMode1", u"3", 3},
    {u"LastUsed", u"ZoomMode1", u"4", 0},
    {u"LastUsed", u"PanScroll", kAbsent, 0},
    {u"LastUsed", u"PanScroll", u"1", 1},
    {u"LastUsed", u"PanScroll", u"-7", 1},

    {u"Updates", u"CheckAuto", kAbsent, 1},
    {u"Updates", u"CheckAuto", u"0", 0},
    {u"Updates", u"CheckAuto", u"yes", 0},
    {u"Updates", u"LastCheckDate", kAbsent, 0},
    {u"Updates", u"LastCheckDate", u"20261121", 20261121},

    {u"Markup", u"HlColorIdx", kAbsent, 0},
    {u"Markup", u"HlColorIdx", u"99", 99},
    {u"Markup", u"StrikeColorIdx", kAbsent, 6},
    {u"Markup", u"StrikeColorIdx", u"-1", -1},
    {u"Markup", u"HlOpacity", kAbsent, 100},
    {u"Markup", u"HlOpacity", u"20", 20},
    {u"Markup", u"HlOpacity", u"5", 20},
    {u"Markup", u"HlOpacity", u"400", 100},
    {u"Markup", u"HlOpacity", u"-1", 20},
    {u"Markup", u"HlOpacity", u"63", 63},
    {u"Markup", u"DlgX", kAbsent, -1},
    {u"Markup", u"DlgX", u"-1800", -1800},
    {u"Markup", u"DlgY", kAbsent, -1},
    {u"Markup", u"DlgY", u"77", 77},

    {u"TextDialog", u"X", kAbsent, -1},
    {u"TextDialog", u"X", u"300", 300},
    {u"TextDialog", u"Y", kAbsent, -1},
    {u"TextDialog", u"Y", u"-20", -20},
    {u"TextDialog", u"SizePt", kAbsent, 12},
    {u"TextDialog", u"SizePt", u"3", 4},
    {u"TextDialog", u"SizePt", u"97", 96},
    {u"TextDialog", u"SizePt", u"-5", 4},
    {u"TextDialog", u"FontIdx", kAbsent, 0},
    {u"TextDialog", u"FontIdx", u"1000", 1000},
    {u"TextDialog", u"ColorIdx", kAbsent, 0},
    {u"TextDialog", u"ColorIdx", u"8", 8},

    {u"StampImport", u"AlphaEnabled", kAbsent, 1},
    {u"StampImport", u"AlphaEnabled", u"0", 0},
    {u"StampImport", u"AlphaThreshold", kAbsent, 220},
    {u"StampImport", u"AlphaThreshold", u"-1", 0},
    {u"StampImport", u"AlphaThreshold", u"256", 255},

    {u"Binders", u"RestoreView", kAbsent, 1},
    {u"Binders", u"RestoreView", u"0", 0},
    {u"Binders", u"RestoreOpenDocs", kAbsent, 1},
    {u"Binders", u"RestoreOpenDocs", u"0", 0},
    {u"Binders", u"RestoreOnLaunch", kAbsent, 1},
    {u"Binders", u"RestoreOnLaunch", u"0", 0},
    {u"Binders", u"PanelVisible", kAbsent, 0},
    {u"Binders", u"PanelVisible", u"2", 1},

    {u"Navigation", u"MarkupGroupingDefault", kAbsent, 1},
    {u"Navigation", u"MarkupGroupingDefault", u"2", 2},
    {u"Navigation", u"MarkupGroupingDefault", u"0", 0},
    {u"Navigation", u"MarkupGroupingDefault", u"3", 1},
    {u"Navigation", u"MarkupGroupingDefault", u"-1", 1},
    {u"Navigation", u"MarkupsUnderBookmarks", kAbsent, 1},
    {u"Navigation", u"MarkupsUnderBookmarks", u"0", 0},

    {u"Network", u"OpenTimeoutSeconds", kAbsent, 3},
    {u"Network", u"OpenTimeoutSeconds", u"0", 1},
    {u"Network", u"OpenTimeoutSeconds", u"-9", 1},
    {u"Network", u"OpenTimeoutSeconds", u"61", 60},

    {u"Security", u"SkipTrustAlwaysConfirm", kAbsent, 0},
    {u"Security", u"SkipTrustAlwaysConfirm", u"1", 1},
    {u"Security", u"BypassInternetWarning", kAbsent, 0},
    {u"Security", u"BypassInternetWarning", u"1", 1},

    {u"RecentFiles", u"Enabled", kAbsent, 1},
    {u"RecentFiles", u"Enabled", u"0", 0},
    {u"RecentFiles", u"MaxEntries", kAbsent, 5},
    {u"RecentFiles", u"MaxEntries", u"0", 1},
    {u"RecentFiles", u"MaxEntries", u"21", 20},
    {u"RecentFiles", u"MaxEntries", u"-3", 1},

    {u"MouseWheel", u"NoModifier", kAbsent, 1},
    {u"MouseWheel", u"NoModifier", u"3", 3},
    {u"MouseWheel", u"NoModifier", u"4", 0},
    {u"MouseWheel", u"NoModifier", u"-1", 0},
    {u"MouseWheel", u"Shift", kAbsent, 0},
    {u"MouseWheel", u"Shift", u"2", 2},
    {u"MouseWheel", u"Shift", u"9", 0},
    {u"MouseWheel", u"Ctrl", kAbsent, 3},
    {u"MouseWheel", u"Ctrl", u"1", 1},
    {u"MouseWheel", u"Ctrl", u"4", 0},
    {u"MouseWheel", u"CtrlShift", kAbsent, 2},
    {u"MouseWheel", u"CtrlShift", u"-4", 0},
    {u"MouseWheel", u"CtrlShift", u"1", 1},

    {u"BookMode", u"PageTurnWheel", kAbsent, 1},
    {u"BookMode", u"PageTurnWheel", u"0", 0},
    {u"BookMode", u"RevertToFit", kAbsent, 1},
    {u"BookMode", u"RevertToFit", u"0", 0},
    {u"BookMode", u"EqualizePanes", kAbsent, 1},
    {u"BookMode", u"EqualizePanes", u"0", 0},

    {u"Window", u"X", kAbsent, -1},
    {u"Window", u"X", u"-1900", -1900},
    {u"Window", u"Y", kAbsent, -1},
    {u"Window", u"Y", u"5000", 5000},
    {u"Window", u"Width", kAbsent, 1100},
    {u"Window", u"Width", u"0", 0},
    {u"Window", u"Height", kAbsent, 800},
    {u"Window", u"Height", u"-3", -3},
    {u"Window", u"Maximised", kAbsent, 0},
    {u"Window", u"Maximised", u"1", 1},

    {u"Panels", u"NavVisible", kAbsent, 0},
    {u"Panels", u"NavVisible", u"1", 1},
    {u"Panels", u"StampVisible", kAbsent, 0},
    {u"Panels", u"StampVisible", u"1", 1},
    {u"Panels", u"NavWidth", kAbsent, 190},
    {u"Panels", u"NavWidth", u"149", 150},
    {u"Panels", u"NavWidth", u"501", 500},
    {u"Panels", u"NavWidth", u"-1", 150},
    {u"Panels", u"StampWidth", kAbsent, 180},
    {u"Panels", u"StampWidth", u"119", 120},
    {u"Panels", u"StampWidth", u"401", 400},
    {u"Panels", u"PaneDivPos", kAbsent, 0},
    {u"Panels", u"PaneDivPos", u"100000", 100000},
    {u"Panels", u"LeftPanelSplitBp", kAbsent, 500},
    {u"Panels", u"LeftPanelSplitBp", u"49", 50},
    {u"Panels", u"LeftPanelSplitBp", u"951", 950},
};
// clang-format on

std::string nameOf(const ReadCase& read) {
  const std::u16string text = read.text == kAbsent ? u" absent" : std::u16string(u"=") + read.text;
  return platform::toUtf8(std::u16string(read.section) + u" " + read.key + text);
}

// The cases in groups that fit into one file: no key twice in a group.
std::vector<std::vector<ReadCase>> filesOfCases() {
  std::map<std::pair<std::u16string, std::u16string>, std::size_t> seen;
  std::vector<std::vector<ReadCase>> files;
  for (const ReadCase& read : kReadCases) {
    const std::size_t file = seen[{read.section, read.key}]++;
    if (file == files.size()) files.emplace_back();
    files[file].push_back(read);
  }
  return files;
}

std::u16string linesOf(const std::vector<ReadCase>& reads) {
  std::u16string lines;
  std::u16string section;
  for (const ReadCase& read : reads) {
    if (section != read.section) lines += u"[" + (section = read.section) + u"]\n";
    if (read.text != kAbsent) lines += std::u16string(read.key) + u"=" + read.text + u"\n";
  }
  return lines;
}

TEST_F(SettingsTableTest, EveryNumberIsReadWithItsDefaultAndItsRange) {
  for (const std::vector<ReadCase>& reads : filesOfCases()) {
    putIni(linesOf(reads));
    restart();
    for (const ReadCase& read : reads) {
      const SettingRow* row = findSetting(read.section, read.key);
      ASSERT_NE(row, nullptr) << nameOf(read);
      EXPECT_EQ(row->get(session.settings), read.expected) << nameOf(read);
    }
  }
}

TEST_F(SettingsTableTest, NoNumberOfTheFileIsWithoutATestOfItsDefaultAndOfAnotherValue) {
  for (const SettingRow& row : settingsTable()) {
    const auto covered = [&row](bool absent) {
      return std::any_of(std::begin(kReadCases), std::end(kReadCases), [&](const ReadCase& read) {
        return read.section == std::u16string_view(row.section) &&
               read.key == std::u16string_view(row.key) && (read.text == kAbsent) == absent;
      });
    };
    EXPECT_TRUE(covered(true) && covered(false))
        << platform::toUtf8(row.section) << " " << platform::toUtf8(row.key);
  }
}

TEST_F(SettingsTableTest, SettingsStartAsAnEmptyFileReads) {
  putIni(u"");
  restart();
  const AppSettings atStart;
  for (const SettingRow& row : settingsTable()) {
    EXPECT_EQ(row.get(atStart), row.get(session.settings))
        << platform::toUtf8(row.section) << " " << platform::toUtf8(row.key);
  }
  EXPECT_EQ(atStart.textColors, session.settings.textColors);
  EXPECT_EQ(atStart.markupColors, session.settings.markupColors);
  EXPECT_TRUE(session.settings.recentFiles.empty());
}

TEST_F(SettingsTableTest, NumbersOutOfRangeStayInTheFileUntilTheNextSave) {
  putIni(u"[Markup]\nHlOpacity=5\n");
  restart();
  EXPECT_EQ(session.settings.highlightOpacity, 20);
  EXPECT_EQ(iniValue(u"Markup", u"HlOpacity"), u"5");
  SaveSettings();
  EXPECT_EQ(iniValue(u"Markup", u"HlOpacity"), u"20");
}

TEST_F(SettingsTableTest, KeysAndSectionsAreFoundWhateverTheirCase) {
  putIni(u"[pANELS]\nNAVwidth=333\n");
  restart();
  EXPECT_EQ(session.leftPanelWidth, 333);
}

TEST_F(SettingsTableTest, TheFirstOfDuplicateKeysAndSectionsIsRead) {
  putIni(
      u"[Network]\nOpenTimeoutSeconds=7\nOpenTimeoutSeconds=9\n"
      u"[Network]\nOpenTimeoutSeconds=11\n");
  restart();
  EXPECT_EQ(session.settings.openTimeoutSeconds, 7);
}

}  // namespace
}  // namespace quillmere::test
