#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace quillmere {

// A named colour that the user can edit in the settings file.
struct ColorEntry {
  std::u16string name;  // at most 31 units
  std::uint8_t r = 0;
  std::uint8_t g = 0;
  std::uint8_t b = 0;
  bool operator==(const ColorEntry&) const = default;
};

using TextColorTable = std::array<ColorEntry, 8>;
using MarkupColorTable = std::array<ColorEntry, 7>;

TextColorTable builtInTextColors();
MarkupColorTable builtInMarkupColors();

// Start-up policies that can also mean "as last time".
enum PanScrollPolicy : std::uint32_t {
  kPanScrollOff = 0,
  kPanScrollOn = 1,
  kPanScrollLastUsed = 2
};
enum PanelPolicy : std::uint32_t { kPanelHidden = 0, kPanelVisible = 1, kPanelLastUsed = 2 };
enum MarkupGroupingPolicy : std::uint32_t {
  kMarkupsInterleaved = 0,  // among the bookmarks
  kMarkupsGrouped = 1,      // under the bookmarks
  kMarkupsLastUsed = 2,
};
inline constexpr std::uint32_t kZoomModeLastUsed = 4;

// What a turn of the mouse wheel does.
enum class WheelAction : std::uint32_t {
  PageTurn = 0,
  VerticalScroll = 1,
  HorizontalScroll = 2,
  Zoom = 3,
};

// Every setting of "quillmere.ini", with its default. The live state of the panels, the view and
// the loaded binders is in the session itself; the fields that remember it for the next start hold
// what was last read or saved.
struct AppSettings {
  // Defaults
  std::uint32_t defaultZoomMode = 0;
  std::uint32_t defaultPanScroll = kPanScrollOn;
  std::uint32_t defaultNavPane = kPanelVisible;
  std::uint32_t defaultStampPane = kPanelHidden;
  std::uint32_t defaultBindersPanel = kPanelVisible;
  // LastUsed
  std::uint32_t lastZoomMode0 = 0;
  std::uint32_t lastZoomMode1 = 0;
  bool lastPanScroll = false;
  // Updates
  bool checkUpdatesAuto = true;
  std::uint32_t lastUpdateCheckDate = 0;  // year * 10000 + month * 100 + day
  // TextColors, MarkupColors
  TextColorTable textColors = builtInTextColors();
  MarkupColorTable markupColors = builtInMarkupColors();
  // Markup
  std::uint32_t highlightColorIndex = 0;
  std::uint32_t strikeColorIndex = 6;
  std::int32_t highlightOpacity = 100;  // percent
  std::int32_t markupDialogX = -1;
  std::int32_t markupDialogY = -1;
  // TextDialog
  std::int32_t textDialogX = -1;
  std::int32_t textDialogY = -1;
  std::int32_t textSizePt = 12;
  std::uint32_t textFontIndex = 0;
  std::uint32_t textColorIndex = 0;
  // StampImport
  bool stampAlphaEnabled = true;
  std::int32_t stampAlphaThreshold = 220;
  // Binders
  bool restoreView = true;
  bool restoreOpenDocs = true;
  bool restoreOnLaunch = true;
  bool lastBinderPanelVisible = false;
  // Navigation
  std::uint32_t markupGroupingDefault = kMarkupsGrouped;
  bool markupsUnderBookmarks = true;  // the current grouping
  // Network
  std::int32_t openTimeoutSeconds = 3;
  // Security
  bool skipTrustAlwaysConfirm = false;
  bool bypassInternetWarning = false;
  // RecentFiles
  bool recentFilesEnabled = true;
  std::int32_t recentFilesMaxEntries = 5;
  std::vector<std::u16string> recentFiles;  // newest first
  // MouseWheel, by modifiers: bit 0 Shift, bit 1 Ctrl
  std::array<WheelAction, 4> wheelActions = {WheelAction::VerticalScroll, WheelAction::PageTurn,
                                             WheelAction::Zoom, WheelAction::HorizontalScroll};
  // BookMode
  bool bookPageTurnWheel = true;
  bool bookRevertToFit = true;
  bool bookEqualizePanes = true;
  // Window: the normal position; -1 in x or y means no stored placement
  std::int32_t windowX = -1;
  std::int32_t windowY = -1;
  std::int32_t windowWidth = 1100;
  std::int32_t windowHeight = 800;
  bool windowMaximised = false;
  // Panels
  bool lastNavVisible = false;
  bool lastStampVisible = false;
  std::int32_t navWidth = 190;
  std::int32_t stampWidth = 180;
  std::uint32_t paneDivPos = 0;
  std::int32_t leftPanelSplitBp = 500;  // thousandths
};

}  // namespace quillmere
