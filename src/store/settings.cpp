#include "store/settings.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "base/text_format.h"
#include "platform/profile.h"
#include "session/density.h"
#include "session/session.h"
#include "store/binder_library.h"
#include "store/data_folder.h"
#include "store/profile_section.h"
#include "store/settings_colors.h"
#include "store/settings_lists.h"
#include "store/settings_placement.h"
#include "store/settings_table.h"
#include "store/working_documents.h"

namespace quillmere {

namespace {

constexpr float kSplitUnits = 1000.0f;

// The sections of a settings file, each read when it is first asked for.
class SettingsFile {
 public:
  explicit SettingsFile(std::u16string path) : path_(std::move(path)) {}

  const ProfileSection& section(std::u16string_view name) {
    return sections_.try_emplace(name, std::u16string(name), path_).first->second;
  }

 private:
  std::u16string path_;
  std::map<std::u16string_view, ProfileSection> sections_;  // the names are the table's
};

void readNumbers(const std::u16string& path) {
  SettingsFile file(path);
  for (const SettingRow& row : settingsTable()) {
    const std::int32_t number = file.section(row.section).integer(row.key, row.fallback);
    row.set(session.settings, settingInRange(row, number));
  }
}

void writeRow(const SettingRow& row, const std::u16string& path) {
  platform::writeProfileText(row.section, row.key, decimal(row.get(session.settings)), path);
}

bool alreadyWritten(const SettingRow& row, SettingsFile& file) {
  return file.section(row.section).holds(row.key, decimal(row.get(session.settings)));
}

bool visibleAtStart(std::uint32_t policy, bool lastTime) {
  return policy == kPanelLastUsed ? lastTime : policy == kPanelVisible;
}

void startZoomAndPanScroll() {
  const AppSettings& settings = session.settings;
  const bool asLastTime = settings.defaultZoomMode == kZoomModeLastUsed;
  const std::uint32_t mode0 = asLastTime ? settings.lastZoomMode0 : settings.defaultZoomMode;
  const std::uint32_t mode1 = asLastTime ? settings.lastZoomMode1 : settings.defaultZoomMode;
  session.panes[0].zoomMode = static_cast<ZoomMode>(mode0);
  session.panes[1].zoomMode = static_cast<ZoomMode>(mode1);
  session.panScrollEnabled = settings.defaultPanScroll == kPanScrollLastUsed
                                 ? settings.lastPanScroll
                                 : settings.defaultPanScroll == kPanScrollOn;
}

void startMarkupGrouping() {
  AppSettings& settings = session.settings;
  const bool asLastTime = settings.markupGroupingDefault == kMarkupsLastUsed;
  settings.markupsUnderBookmarks = asLastTime ? settings.markupsUnderBookmarks
                                              : settings.markupGroupingDefault == kMarkupsGrouped;
}

void startPanels() {
  const AppSettings& settings = session.settings;
  session.navigationPanelVisible = visibleAtStart(settings.defaultNavPane, settings.lastNavVisible);
  session.stampPanelVisible = visibleAtStart(settings.defaultStampPane, settings.lastStampVisible);
  session.binderPanelVisible =
      visibleAtStart(settings.defaultBindersPanel, settings.lastBinderPanelVisible);
  session.leftPanelWidth = scaled(settings.navWidth);
  session.stampPanelWidth = scaled(settings.stampWidth);
  session.paneDividerPosition = scaled(static_cast<std::int32_t>(settings.paneDivPos));
  session.leftPanelSplit = static_cast<float>(settings.leftPanelSplitBp) / kSplitUnits;
}

void rememberLiveState(AppSettings& settings) {
  settings.lastZoomMode0 = static_cast<std::uint32_t>(session.panes[0].zoomMode);
  settings.lastZoomMode1 = static_cast<std::uint32_t>(session.panes[1].zoomMode);
  settings.lastPanScroll = session.panScrollEnabled;
  settings.lastNavVisible = session.navigationPanelVisible;
  settings.lastStampVisible = session.stampPanelVisible;
  settings.lastBinderPanelVisible = session.binderPanelVisible;
  settings.navWidth = unscaled(session.leftPanelWidth);
  settings.stampWidth = unscaled(session.stampPanelWidth);
  settings.paneDivPos = static_cast<std::uint32_t>(unscaled(session.paneDividerPosition));
  settings.leftPanelSplitBp =
      static_cast<std::int32_t>(session.leftPanelSplit * kSplitUnits + 0.5f);
}

// The number of table rows up to and including those of `section`.
std::size_t rowsThrough(std::u16string_view section) {
  const std::span<const SettingRow> table = settingsTable();
  std::size_t end = table.size();
  while (end > 0 && table[end - 1].section != section) --end;
  return end;
}

// Settings that could not be read are not replaced by what stood in for them.
bool isStandIn(const SettingRow& row) {
  return session.standInSettings && row.get(session.settings) == row.get(*session.standInSettings);
}

void writeRows(std::span<const SettingRow> rows, bool placementKnown, const std::u16string& path) {
  SettingsFile before(path);
  for (const SettingRow& row : rows) {
    if (row.save == SettingSave::OnItsOwn || isStandIn(row)) continue;
    if (!placementKnown && std::u16string_view(row.section) == kWindowSection) continue;
    if (!alreadyWritten(row, before)) writeRow(row, path);
  }
}

// Without a data folder, or while their file cannot be read, the settings keep their defaults.
void readSettings(const std::u16string& path) {
  if (path.empty()) return;
  if (!iniFileReadable(path)) {
    session.standInSettings = session.settings;
    session.listsUnread = true;
    return;
  }
  AppSettings& settings = session.settings;
  readNumbers(path);
  LoadColorTable(path, kTextColorsSection, settings.textColors);
  LoadColorTable(path, kMarkupColorsSection, settings.markupColors);
  settings.recentFiles = readPathList(kRecentFilesList, path);
}

}  // namespace

void LoadSettings() {
  const std::u16string path = GetIniPath();
  readSettings(path);
  startZoomAndPanScroll();
  startMarkupGrouping();
  placeMainWindowFromSettings();
  startPanels();
  if (session.standInSettings) rememberLiveState(*session.standInSettings);
  if (path.empty()) return;
  if (session.settings.restoreOnLaunch) RestoreBinders();
  LoadWorkingDocuments();
}

void SaveSettings() {
  if (session.viewerRole) return;
  const std::u16string path = GetIniPath();
  if (path.empty()) return;
  rememberLiveState(session.settings);
  // Without the stored placement the window is not where the user had it last.
  const bool placementKnown = rememberMainWindowPlacement() && !session.standInSettings;
  const std::span<const SettingRow> table = settingsTable();
  const std::size_t split = rowsThrough(kRecentFilesList.section);
  writeRows(table.first(split), placementKnown, path);
  SaveRecentFiles();
  writeRows(table.subspan(split), placementKnown, path);
  SaveBinderList();
}

void SaveUpdateCheckDate() {
  if (session.viewerRole) return;
  const std::u16string path = GetIniPath();
  const SettingRow* row = findSetting(u"Updates", u"LastCheckDate");
  if (!path.empty() && row != nullptr) writeRow(*row, path);
}

}  // namespace quillmere
