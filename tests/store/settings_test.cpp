#include "store/settings.h"

#include <gtest/gtest.h>

#include "store/settings_lists.h"
#include "support/settings_file.h"

namespace quillmere::test {
namespace {

class SettingsTest : public SettingsFileTest {};

TEST_F(SettingsTest, BothPanesStartInTheZoomModeChosen) {
  putIni(u"[Defaults]\nZoomMode=2\n[LastUsed]\nZoomMode0=1\nZoomMode1=3\n");
  restart();
  EXPECT_EQ(session.panes[0].zoomMode, kActualSize);
  EXPECT_EQ(session.panes[1].zoomMode, kActualSize);
}

TEST_F(SettingsTest, ZoomModeLastUsedGivesEachPaneItsOwn) {
  putIni(u"[Defaults]\nZoomMode=4\n[LastUsed]\nZoomMode0=1\nZoomMode1=3\n");
  restart();
  EXPECT_EQ(session.panes[0].zoomMode, kFitWidth);
  EXPECT_EQ(session.panes[1].zoomMode, kCustomFit);
}

TEST_F(SettingsTest, LastUsedItselfIsNoLastZoomMode) {
  putIni(u"[Defaults]\nZoomMode=4\n[LastUsed]\nZoomMode0=4\nZoomMode1=2\n");
  restart();
  EXPECT_EQ(session.panes[0].zoomMode, kFitPage);
  EXPECT_EQ(session.panes[1].zoomMode, kActualSize);
}

TEST_F(SettingsTest, PanScrollFollowsItsPolicy) {
  const auto startsWith = [](const char16_t* policy, const char16_t* last) {
    putIni(std::u16string(u"[Defaults]\nPanScroll=") + policy + u"\n[LastUsed]\nPanScroll=" + last +
           u"\n");
    restart();
    return session.panScrollEnabled;
  };
  EXPECT_FALSE(startsWith(u"0", u"1"));
  EXPECT_TRUE(startsWith(u"1", u"0"));
  EXPECT_FALSE(startsWith(u"2", u"0"));
  EXPECT_TRUE(startsWith(u"2", u"1"));
  EXPECT_TRUE(startsWith(u"9", u"0"));
}

TEST_F(SettingsTest, MarkupGroupingFollowsItsPolicy) {
  const auto startsWith = [](const char16_t* policy, const char16_t* last) {
    putIni(std::u16string(u"[Navigation]\nMarkupGroupingDefault=") + policy +
           u"\nMarkupsUnderBookmarks=" + last + u"\n");
    restart();
    return session.settings.markupsUnderBookmarks;
  };
  EXPECT_FALSE(startsWith(u"0", u"1"));
  EXPECT_TRUE(startsWith(u"1", u"0"));
  EXPECT_FALSE(startsWith(u"2", u"0"));
  EXPECT_TRUE(startsWith(u"2", u"7"));
}

TEST_F(SettingsTest, PanelsFollowTheirPolicies) {
  putIni(
      u"[Defaults]\nNavPane=0\nStampPane=1\nBindersPanel=0\n"
      u"[Panels]\nNavVisible=1\nStampVisible=0\n[Binders]\nPanelVisible=1\n");
  restart();
  EXPECT_FALSE(session.navigationPanelVisible);
  EXPECT_TRUE(session.stampPanelVisible);
  EXPECT_FALSE(session.binderPanelVisible);
}

TEST_F(SettingsTest, PanelsComeBackAsTheyWereWhenTheirPoliciesSayLastUsed) {
  const std::u16string policies = u"[Defaults]\nNavPane=2\nStampPane=2\nBindersPanel=2\n";
  putIni(policies + u"[Panels]\nNavVisible=1\nStampVisible=1\n[Binders]\nPanelVisible=1\n");
  restart();
  EXPECT_TRUE(session.navigationPanelVisible);
  EXPECT_TRUE(session.stampPanelVisible);
  EXPECT_TRUE(session.binderPanelVisible);
  putIni(policies);
  restart();
  EXPECT_FALSE(session.navigationPanelVisible);
  EXPECT_FALSE(session.stampPanelVisible);
  EXPECT_FALSE(session.binderPanelVisible);
}

TEST_F(SettingsTest, PanelSizesComeBack) {
  putIni(u"[Panels]\nNavWidth=321\nStampWidth=222\nPaneDivPos=640\nLeftPanelSplitBp=333\n");
  restart();
  EXPECT_EQ(session.leftPanelWidth, 321);
  EXPECT_EQ(session.stampPanelWidth, 222);
  EXPECT_EQ(session.paneDividerPosition, 640);
  EXPECT_FLOAT_EQ(session.leftPanelSplit, 0.333f);
}

TEST_F(SettingsTest, PanelSizesAreThoseOfThisScreenAndTheFileHasThemAt96PixelsAnInch) {
  const struct {
    std::int32_t dpi, nav, stamp, divider;
  } rows[] = {
      {96, 190, 181, 640}, {120, 238, 226, 800}, {144, 285, 272, 960}, {192, 380, 362, 1280}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.dpi);
    putIni(u"[Panels]\nNavWidth=190\nStampWidth=181\nPaneDivPos=640\nLeftPanelSplitBp=333\n");
    resetSession();
    session.dpi = row.dpi;
    LoadSettings();
    EXPECT_EQ(session.leftPanelWidth, row.nav);
    EXPECT_EQ(session.stampPanelWidth, row.stamp);
    EXPECT_EQ(session.paneDividerPosition, row.divider);
    EXPECT_FLOAT_EQ(session.leftPanelSplit, 0.333f);
    SaveSettings();
    EXPECT_EQ(iniValue(u"Panels", u"NavWidth"), u"190");
    EXPECT_EQ(iniValue(u"Panels", u"StampWidth"), u"181");
    EXPECT_EQ(iniValue(u"Panels", u"PaneDivPos"), u"640");
    EXPECT_EQ(iniValue(u"Panels", u"LeftPanelSplitBp"), u"333");
  }
}

TEST_F(SettingsTest, AWidthThatWasDraggedOnADenseScreenIsSavedAt96PixelsAnInch) {
  session.dpi = 144;
  session.leftPanelWidth = 300;
  session.stampPanelWidth = 240;
  session.paneDividerPosition = 750;
  SaveSettings();
  EXPECT_EQ(iniValue(u"Panels", u"NavWidth"), u"200");
  EXPECT_EQ(iniValue(u"Panels", u"StampWidth"), u"160");
  EXPECT_EQ(iniValue(u"Panels", u"PaneDivPos"), u"500");
}

TEST_F(SettingsTest, ThePanelSplitIsSavedToTheNearestThousandth) {
  session.leftPanelSplit = 0.6786f;
  SaveSettings();
  EXPECT_EQ(iniValue(u"Panels", u"LeftPanelSplitBp"), u"679");
  session.leftPanelSplit = 0.6784f;
  SaveSettings();
  EXPECT_EQ(iniValue(u"Panels", u"LeftPanelSplitBp"), u"678");
}

TEST_F(SettingsTest, SavingTakesTheLiveStateWhateverThePolicies) {
  putIni(u"[Defaults]\nZoomMode=0\nPanScroll=0\nNavPane=0\nStampPane=0\nBindersPanel=0\n");
  restart();
  session.panes[0].zoomMode = kCustomFit;
  session.panes[1].zoomMode = kFitWidth;
  session.panScrollEnabled = true;
  session.navigationPanelVisible = true;
  session.stampPanelVisible = true;
  session.binderPanelVisible = true;
  SaveSettings();
  EXPECT_EQ(iniValue(u"LastUsed", u"ZoomMode0"), u"3");
  EXPECT_EQ(iniValue(u"LastUsed", u"ZoomMode1"), u"1");
  EXPECT_EQ(iniValue(u"LastUsed", u"PanScroll"), u"1");
  EXPECT_EQ(iniValue(u"Panels", u"NavVisible"), u"1");
  EXPECT_EQ(iniValue(u"Panels", u"StampVisible"), u"1");
  EXPECT_EQ(iniValue(u"Binders", u"PanelVisible"), u"1");
}

// clang-format off
std::vector<IniEntry> savedWithoutAStart() {
  std::vector<IniEntry> entries = {
      {u"Defaults", u"ZoomMode", u"4"}, {u"Defaults", u"PanScroll", u"1"},
      {u"Defaults", u"NavPane", u"1"}, {u"Defaults", u"StampPane", u"0"},
      {u"Defaults", u"BindersPanel", u"1"},
      {u"LastUsed", u"ZoomMode0", u"2"}, {u"LastUsed", u"ZoomMode1", u"0"},
      {u"LastUsed", u"PanScroll", u"0"},
      {u"Updates", u"CheckAuto", u"0"},
      {u"TextDialog", u"X", u"-1"}, {u"TextDialog", u"Y", u"-1"}, {u"TextDialog", u"SizePt", u"12"},
      {u"TextDialog", u"FontIdx", u"0"}, {u"TextDialog", u"ColorIdx", u"0"},
      {u"Markup", u"HlColorIdx", u"0"}, {u"Markup", u"StrikeColorIdx", u"6"},
      {u"Markup", u"HlOpacity", u"100"}, {u"Markup", u"DlgX", u"-1"}, {u"Markup", u"DlgY", u"-1"},
      {u"StampImport", u"AlphaEnabled", u"1"}, {u"StampImport", u"AlphaThreshold", u"220"},
      {u"Binders", u"RestoreView", u"1"}, {u"Binders", u"RestoreOnLaunch", u"1"},
      {u"Binders", u"RestoreOpenDocs", u"1"}, {u"Binders", u"PanelVisible", u"0"},
      {u"Binders", u"Count", u"0"},
      {u"Navigation", u"MarkupGroupingDefault", u"1"}, {u"Navigation", u"MarkupsUnderBookmarks", u"1"},
      {u"Network", u"OpenTimeoutSeconds", u"3"},
      {u"Security", u"SkipTrustAlwaysConfirm", u"0"}, {u"Security", u"BypassInternetWarning", u"0"},
      {u"RecentFiles", u"Enabled", u"1"}, {u"RecentFiles", u"MaxEntries", u"5"},
      {u"RecentFiles", u"Count", u"1"}, {u"RecentFiles", u"Path0", u"C:\\a.pdf"},
      {u"MouseWheel", u"NoModifier", u"1"}, {u"MouseWheel", u"Shift", u"0"},
      {u"MouseWheel", u"Ctrl", u"3"}, {u"MouseWheel", u"CtrlShift", u"2"},
      {u"BookMode", u"PageTurnWheel", u"1"}, {u"BookMode", u"RevertToFit", u"1"},
      {u"BookMode", u"EqualizePanes", u"1"},
      {u"Window", u"X", u"10"}, {u"Window", u"Y", u"20"}, {u"Window", u"Width", u"800"},
      {u"Window", u"Height", u"700"}, {u"Window", u"Maximised", u"0"},
      {u"Panels", u"NavVisible", u"0"}, {u"Panels", u"StampVisible", u"0"},
      {u"Panels", u"NavWidth", u"250"}, {u"Panels", u"StampWidth", u"180"},
      {u"Panels", u"PaneDivPos", u"0"}, {u"Panels", u"LeftPanelSplitBp", u"500"},
  };
  return entries;
}
// clang-format on

TEST_F(SettingsTest, AWholeSaveWritesItsKeysInOrderAndNoColors) {
  platform::standIn().window.placement = platform::WindowPlacement{{10, 20, 810, 720}, false};
  session.settings.defaultZoomMode = kZoomModeLastUsed;
  session.settings.checkUpdatesAuto = false;
  session.settings.recentFiles = {u"C:\\a.pdf"};
  session.panes[0].zoomMode = kActualSize;
  session.leftPanelWidth = 250;
  SaveSettings();
  std::vector<IniEntry> entries = iniEntries();
  std::erase_if(entries, [](const IniEntry& entry) {
    return entry.key.starts_with(u"Path") && entry.value.empty();
  });
  EXPECT_EQ(entries, savedWithoutAStart());
}

TEST_F(SettingsTest, SavingLeavesKeysAloneThatTheProgramDoesNotKnow) {
  putIni(u"[Panels]\nGhost=boo\nNavWidth=200\n[Elsewhere]\nKey = a value \n");
  restart();
  SaveSettings();
  EXPECT_EQ(iniValue(u"Panels", u"Ghost"), u"boo");
  EXPECT_NE(iniText()->find(u"Key = a value "), std::u16string::npos);
}

TEST_F(SettingsTest, AWholeSaveLeavesTheDateOfTheUpdateCheckAlone) {
  putIni(u"[Updates]\nLastCheckDate=20260101\n");
  restart();
  session.settings.lastUpdateCheckDate = 20261121;
  SaveSettings();
  EXPECT_EQ(iniValue(u"Updates", u"LastCheckDate"), u"20260101");
  SaveUpdateCheckDate();
  EXPECT_EQ(iniValue(u"Updates", u"LastCheckDate"), u"20261121");
}

TEST_F(SettingsTest, TheDateOfTheUpdateCheckIsSavedAlone) {
  putIni(u"");
  session.settings.lastUpdateCheckDate = 20261121;
  SaveUpdateCheckDate();
  EXPECT_EQ(iniEntries(), (std::vector<IniEntry>{{u"Updates", u"LastCheckDate", u"20261121"}}));
}

TEST_F(SettingsTest, AnUnsignedValueBeyondTheSignedRangeComesBack) {
  putIni(u"[Markup]\nHlColorIdx=-1\n");
  restart();
  EXPECT_EQ(session.settings.highlightColorIndex, 0xFFFFFFFFu);
  SaveSettings();
  EXPECT_EQ(iniValue(u"Markup", u"HlColorIdx"), u"-1");
}

TEST_F(SettingsTest, AViewerReadsTheSettingsAndWritesNone) {
  putIni(u"[Defaults]\nZoomMode=1\n[Binders]\nRestoreOnLaunch=0\n");
  const std::optional<std::string> before = platform::fileBytes(kIniPath);
  session.viewerRole = true;
  LoadSettings();
  EXPECT_EQ(session.panes[0].zoomMode, kFitWidth);
  session.leftPanelWidth = 400;
  SaveSettings();
  SaveUpdateCheckDate();
  EXPECT_EQ(platform::fileBytes(kIniPath), before);
}

TEST_F(SettingsTest, AViewerLeavesAMissingFileMissing) {
  session.viewerRole = true;
  LoadSettings();
  SaveSettings();
  SaveRecentFiles();
  SaveBinderList();
  SaveUpdateCheckDate();
  EXPECT_FALSE(platform::fileExists(kIniPath));
}

TEST_F(SettingsTest, WithoutADataFolderTheBuiltInSettingsHold) {
  platform::standIn().localAppDataFolder.clear();
  session.settings.recentFiles = {u"C:\\a.pdf"};
  LoadSettings();
  SaveSettings();
  SaveRecentFiles();
  SaveBinderList();
  EXPECT_EQ(session.settings.textColors, builtInTextColors());
  EXPECT_TRUE(session.panScrollEnabled);
  EXPECT_TRUE(session.navigationPanelVisible);
  EXPECT_FALSE(session.stampPanelVisible);
  EXPECT_TRUE(platform::standIn().window.placementsSet.empty());
}

TEST_F(SettingsTest, AReadOnlyFileIsReadAndItsRefusalIsSilent) {
  putIni(u"[Panels]\nNavWidth=260\n");
  ASSERT_TRUE(platform::setReadOnly(kIniPath, true));
  const std::optional<std::string> before = platform::fileBytes(kIniPath);
  restart();
  EXPECT_EQ(session.leftPanelWidth, 260);
  session.leftPanelWidth = 300;
  SaveSettings();
  EXPECT_EQ(platform::fileBytes(kIniPath), before);
  EXPECT_TRUE(platform::standIn().boxes.empty());
}

TEST_F(SettingsTest, AFileWithoutTheMarkIsReadAndKeptAsItIs) {
  platform::putFile(kIniPath, "[Panels]\r\nNavWidth=260\r\n");
  restart();
  EXPECT_EQ(session.leftPanelWidth, 260);
  session.leftPanelWidth = 300;
  SaveSettings();
  const std::string bytes = platform::fileBytes(kIniPath).value_or("");
  EXPECT_EQ(bytes.substr(0, 8), "[Panels]");
  EXPECT_NE(bytes.find("NavWidth=300"), std::string::npos);
}

TEST_F(SettingsTest, AFolderInThePlaceOfTheFileReadsAsAnEmptyFile) {
  platform::putFolder(kIniPath);
  restart();
  SaveSettings();
  EXPECT_TRUE(session.panScrollEnabled);
  EXPECT_EQ(session.leftPanelWidth, 190);
  EXPECT_TRUE(platform::standIn().boxes.empty());
}

}  // namespace
}  // namespace quillmere::test
