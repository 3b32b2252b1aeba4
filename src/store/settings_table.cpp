#include "store/settings_table.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <type_traits>

#include "core/text_format.h"

namespace quillmere {

namespace {

constexpr SettingType U32 = SettingType::Unsigned;
constexpr SettingType I32 = SettingType::Signed;
constexpr SettingType Bool = SettingType::Bool;

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
          U32,
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
    row<&S::defaultZoomMode>(u"Defaults", u"ZoomMode", U32, 0, above(4, 0)),
    row<&S::defaultPanScroll>(u"Defaults", u"PanScroll", U32, 1, above(2, 1)),
    row<&S::defaultNavPane>(u"Defaults", u"NavPane", U32, 1, above(2, 1)),
    row<&S::defaultStampPane>(u"Defaults", u"StampPane", U32, 0, above(2, 0)),
    row<&S::defaultBindersPanel>(u"Defaults", u"BindersPanel", U32, 1, above(2, 1)),

    row<&S::lastZoomMode0>(u"LastUsed", u"ZoomMode0", U32, 0, above(3, 0)),
    row<&S::lastZoomMode1>(u"LastUsed", u"ZoomMode1", U32, 0, above(3, 0)),
    row<&S::lastPanScroll>(u"LastUsed", u"PanScroll", Bool, 0),

    row<&S::checkUpdatesAuto>(u"Updates", u"CheckAuto", Bool, 1),
    row<&S::lastUpdateCheckDate>(u"Updates", u"LastCheckDate", U32, 0, any(),
                                 SettingSave::OnItsOwn),

    row<&S::textDialogX>(u"TextDialog", u"X", I32, -1),
    row<&S::textDialogY>(u"TextDialog", u"Y", I32, -1),
    row<&S::textSizePt>(u"TextDialog", u"SizePt", I32, 12, within(4, 96)),
    row<&S::textFontIndex>(u"TextDialog", u"FontIdx", U32, 0),
    row<&S::textColorIndex>(u"TextDialog", u"ColorIdx", U32, 0),

    row<&S::highlightColorIndex>(u"Markup", u"HlColorIdx", U32, 0),
    row<&S::strikeColorIndex>(u"Markup", u"StrikeColorIdx", U32, 6),
    row<&S::highlightOpacity>(u"Markup", u"HlOpacity", I32, 100, within(20, 100)),
    row<&S::markupDialogX>(u"Markup", u"DlgX", I32, -1),
    row<&S::markupDialogY>(u"Markup", u"DlgY", I32, -1),

    row<&S::stampAlphaEnabled>(u"StampImport", u"AlphaEnabled", Bool, 1),
    row<&S::stampAlphaThreshold>(u"StampImport", u"AlphaThreshold", I32, 220, within(0, 255)),

    row<&S::restoreView>(u"Binders", u"RestoreView", Bool, 1),

    row<&S::markupGroupingDefault>(u"Navigation", u"MarkupGroupingDefault", U32, 1, above(2, 1)),
    row<&S::markupsUnderBookmarks>(u"Navigation", u"MarkupsUnderBookmarks", Bool, 1),

    row<&S::openTimeoutSeconds>(u"Network", u"OpenTimeoutSeconds", I32, 3, within(1, 60)),

    row<&S::skipTrustAlwaysConfirm>(u"Security", u"SkipTrustAlwaysConfirm", Bool, 0),
    row<&S::bypassInternetWarning>(u"Security", u"BypassInternetWarning", Bool, 0),

    row<&S::recentFilesEnabled>(u"RecentFiles", u"Enabled", Bool, 1),
    row<&S::recentFilesMaxEntries>(u"RecentFiles", u"MaxEntries", I32, 5, within(1, 20)),

    wheelRow<0>(u"NoModifier", WheelAction::VerticalScroll),
    wheelRow<1>(u"Shift", WheelAction::PageTurn),
    wheelRow<2>(u"Ctrl", WheelAction::Zoom),
    wheelRow<3>(u"CtrlShift", WheelAction::HorizontalScroll),

    row<&S::bookPageTurnWheel>(u"BookMode", u"PageTurnWheel", Bool, 1),
    row<&S::bookRevertToFit>(u"BookMode", u"RevertToFit", Bool, 1),
    row<&S::bookEqualizePanes>(u"BookMode", u"EqualizePanes", Bool, 1),

    row<&S::windowX>(kWindowSection, u"X", I32, -1),
    row<&S::windowY>(kWindowSection, u"Y", I32, -1),
    row<&S::windowWidth>(kWindowSection, u"Width", I32, 1100),
    row<&S::windowHeight>(kWindowSection, u"Height", I32, 800),
    row<&S::windowMaximised>(kWindowSection, u"Maximised", Bool, 0),

    row<&S::lastNavVisible>(u"Panels", u"NavVisible", Bool, 0),
    row<&S::lastStampVisible>(u"Panels", u"StampVisible", Bool, 0),
    row<&S::navWidth>(u"Panels", u"NavWidth", I32, 190, within(150, 500)),
    row<&S::stampWidth>(u"Panels", u"StampWidth", I32, 180, within(120, 400)),
    row<&S::paneDivPos>(u"Panels", u"PaneDivPos", U32, 0),
    row<&S::leftPanelSplitBp>(u"Panels", u"LeftPanelSplitBp", I32, 500, within(50, 950)),

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
