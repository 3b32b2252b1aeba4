#include "store/settings_table.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <type_traits>

#include "base/text_format.h"

namespace quillmere {

namespace {

using enum SettingType;

constexpr SettingRange any() {
  return {};
}
constexpr SettingRange above(std::int32_t high, std::int32_t becomes) {
  return {RangeRule::Replace, 0, high, becomes};
}
constexpr SettingRange within(std::int32_t low, std::int32_t high) {
  return {RangeRule::Clamp, low, high, 0};
}

template <auto Field>
std::int32_t get(const AppSettings& settings) {
  return static_cast<std::int32_t>(settings.*Field);
}

template <auto Field>
void set(AppSettings& settings, std::int32_t value) {
  auto& field = settings.*Field;
  field = static_cast<std::remove_reference_t<decltype(field)>>(value);
}

template <auto Field>
constexpr SettingRow row(const char16_t* section, const char16_t* key, SettingType type,
                         std::int32_t fallback, SettingRange range = any(),
                         SettingSave save = SettingSave::WithTheRest) {
  return {section, key, type, fallback, range, get<Field>, set<Field>, save};
}

template <std::size_t Modifiers>
constexpr SettingRow wheelRow(const char16_t* key, WheelAction fallback) {
  return {u"MouseWheel",
          key,
          Unsigned,
          static_cast<std::int32_t>(fallback),
          above(3, 0),
          [](const AppSettings& settings) {
            return static_cast<std::int32_t>(settings.wheelActions[Modifiers]);
          },
          [](AppSettings& settings, std::int32_t value) {
            settings.wheelActions[Modifiers] = static_cast<WheelAction>(value);
          }};
}

using S = AppSettings;

// clang-format off
constexpr SettingRow kTable[] = {
    row<&S::defaultZoomMode>(u"Defaults", u"ZoomMode", Unsigned, 0, above(4, 0)),
    row<&S::defaultPanScroll>(u"Defaults", u"PanScroll", Unsigned, 1, above(2, 1)),
    row<&S::defaultNavPane>(u"Defaults", u"NavPane", Unsigned, 1, above(2, 1)),
    row<&S::defaultStampPane>(u"Defaults", u"StampPane", Unsigned, 0, above(2, 0)),
    row<&S::defaultBindersPanel>(u"Defaults", u"BindersPanel", Unsigned, 1, above(2, 1)),

    row<&S::lastZoomMode0>(u"LastUsed", u"ZoomMode0", Unsigned, 0, above(3, 0)),
    row<&S::lastZoomMode1>(u"LastUsed", u"ZoomMode1", Unsigned, 0, above(3, 0)),
    row<&S::lastPanScroll>(u"LastUsed", u"PanScroll", Bool, 0),

    row<&S::checkUpdatesAuto>(u"Updates", u"CheckAuto", Bool, 1),
    row<&S::lastUpdateCheckDate>(u"Updates", u"LastCheckDate", Unsigned, 0, any(),
                                 SettingSave::OnItsOwn),

    row<&S::textDialogX>(u"TextDialog", u"X", Signed, -1),
    row<&S::textDialogY>(u"TextDialog", u"Y", Signed, -1),
    row<&S::textSizePt>(u"TextDialog", u"SizePt", Signed, 12, within(4, 96)),
    row<&S::textFontIndex>(u"TextDialog", u"FontIdx", Unsigned, 0),
    row<&S::textColorIndex>(u"TextDialog", u"ColorIdx", Unsigned, 0),

    row<&S::highlightColorIndex>(u"Markup", u"HlColorIdx", Unsigned, 0),
    row<&S::strikeColorIndex>(u"Markup", u"StrikeColorIdx", Unsigned, 6),
    row<&S::highlightOpacity>(u"Markup", u"HlOpacity", Signed, 100, within(20, 100)),
    row<&S::markupDialogX>(u"Markup", u"DlgX", Signed, -1),
    row<&S::markupDialogY>(u"Markup", u"DlgY", Signed, -1),

    row<&S::stampAlphaEnabled>(u"StampImport", u"AlphaEnabled", Bool, 1),
    row<&S::stampAlphaThreshold>(u"StampImport", u"AlphaThreshold", Signed, 220, within(0, 255)),

    row<&S::restoreView>(u"Binders", u"RestoreView", Bool, 1),

    row<&S::markupGroupingDefault>(u"Navigation", u"MarkupGroupingDefault", Unsigned, 1, above(2, 1)),
    row<&S::markupsUnderBookmarks>(u"Navigation", u"MarkupsUnderBookmarks", Bool, 1),

    row<&S::openTimeoutSeconds>(u"Network", u"OpenTimeoutSeconds", Signed, 3, within(1, 60)),

    row<&S::skipTrustAlwaysConfirm>(u"Security", u"SkipTrustAlwaysConfirm", Bool, 0),
    row<&S::bypassInternetWarning>(u"Security", u"BypassInternetWarning", Bool, 0),

    row<&S::recentFilesEnabled>(u"RecentFiles", u"Enabled", Bool, 1),
    row<&S::recentFilesMaxEntries>(u"RecentFiles", u"MaxEntries", Signed, 5, within(1, 20)),

    wheelRow<0>(u"NoModifier", WheelAction::VerticalScroll),
    wheelRow<1>(u"Shift", WheelAction::PageTurn),
    wheelRow<2>(u"Ctrl", WheelAction::Zoom),
    wheelRow<3>(u"CtrlShift", WheelAction::HorizontalScroll),

    row<&S::bookPageTurnWheel>(u"BookMode", u"PageTurnWheel", Bool, 1),
    row<&S::bookRevertToFit>(u"BookMode", u"RevertToFit", Bool, 1),
    row<&S::bookEqualizePanes>(u"BookMode", u"EqualizePanes", Bool, 1),

    row<&S::windowX>(kWindowSection, u"X", Signed, -1),
    row<&S::windowY>(kWindowSection, u"Y", Signed, -1),
    row<&S::windowWidth>(kWindowSection, u"Width", Signed, 1100),
    row<&S::windowHeight>(kWindowSection, u"Height", Signed, 800),
    row<&S::windowMaximised>(kWindowSection, u"Maximised", Bool, 0),

    row<&S::lastNavVisible>(u"Panels", u"NavVisible", Bool, 0),
    row<&S::lastStampVisible>(u"Panels", u"StampVisible", Bool, 0),
    row<&S::navWidth>(u"Panels", u"NavWidth", Signed, 190, within(150, 500)),
    row<&S::stampWidth>(u"Panels", u"StampWidth", Signed, 180, within(120, 400)),
    row<&S::paneDivPos>(u"Panels", u"PaneDivPos", Unsigned, 0),
    row<&S::leftPanelSplitBp>(u"Panels", u"LeftPanelSplitBp", Signed, 500, within(50, 950)),

    row<&S::restoreOnLaunch>(u"Binders", u"RestoreOnLaunch", Bool, 1),
    row<&S::restoreOpenDocs>(u"Binders", u"RestoreOpenDocs", Bool, 1),
    row<&S::lastBinderPanelVisible>(u"Binders", u"PanelVisible", Bool, 0),
};
// clang-format on

}  // namespace

std::span<const SettingRow> settingsTable() {
  return kTable;
}

const SettingRow* findSetting(std::u16string_view section, std::u16string_view key) {
  const auto found = std::find_if(std::begin(kTable), std::end(kTable), [&](const SettingRow& row) {
    return section == row.section && key == row.key;
  });
  return found == std::end(kTable) ? nullptr : found;
}

std::int32_t settingInRange(const SettingRow& row, std::int32_t number) {
  if (row.type == SettingType::Bool) return number != 0 ? 1 : 0;
  switch (row.range.rule) {
    case RangeRule::Any:
      return number;
    case RangeRule::Replace:
      return static_cast<std::uint32_t>(number) > static_cast<std::uint32_t>(row.range.high)
                 ? row.range.replacement
                 : number;
    case RangeRule::Clamp:
      return std::clamp(number, row.range.low, row.range.high);
  }
  return number;
}

std::u16string pathKey(std::int32_t index) {
  return u"Path" + decimal(index);
}

std::u16string colorNameKey(std::int32_t row) {
  return u"Color" + decimal(row) + u"_Name";
}

std::u16string colorValueKey(std::int32_t row) {
  return u"Color" + decimal(row) + u"_Value";
}

}  // namespace quillmere
