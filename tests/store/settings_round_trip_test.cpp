#include <gtest/gtest.h>

#include <random>
#include <set>

#include "platform/text.h"
#include "store/settings.h"
#include "store/settings_table.h"
#include "support/settings_file.h"

namespace quillmere::test {
namespace {

using Random = std::mt19937;

std::int32_t between(Random& random, std::int32_t low, std::int32_t high) {
  return std::uniform_int_distribution<std::int32_t>(low, high)(random);
}

// Characters that a path can have, including those with a meaning in a settings file.
std::u16string anyPath(Random& random) {
  constexpr std::u16string_view kUnits = u"abcXYZ019 _-=;[]#%,.'äßéЖ文字\\";
  std::u16string path = u"C:\\";
  const int length = between(random, 1, 200);
  for (int index = 0; index < length; ++index) {
    path += kUnits[static_cast<std::size_t>(
        between(random, 0, static_cast<std::int32_t>(kUnits.size()) - 1))];
  }
  return path + u".pdf";
}

std::int32_t anyNumber(const SettingRow& row, Random& random) {
  if (row.type == SettingType::Bool) return between(random, 0, 1);
  if (row.range.rule == RangeRule::Any) return between(random, -100000, 100000);
  return between(random, row.range.low, row.range.high);
}

// Every save replaces these with the live state, or they follow a policy.
bool isLive(const SettingRow& row) {
  static const std::set<std::u16string_view> kLiveSections = {u"LastUsed", u"Panels", u"Window"};
  static const std::set<std::u16string_view> kPolicies = {
      u"ZoomMode",  u"PanScroll",    u"NavPane",
      u"StampPane", u"BindersPanel", u"MarkupGroupingDefault"};
  return kLiveSections.contains(row.section) || kPolicies.contains(row.key) ||
         row.save == SettingSave::OnItsOwn || row.key == std::u16string_view(u"PanelVisible");
}

void editLiveState(Random& random) {
  switch (between(random, 0, 9)) {
    case 0:
      session.panes[0].zoomMode = static_cast<ZoomMode>(between(random, kFitPage, kCustomFit));
      break;
    case 1:
      session.panes[1].zoomMode = static_cast<ZoomMode>(between(random, kFitPage, kCustomFit));
      break;
    case 2:
      session.panScrollEnabled = !session.panScrollEnabled;
      break;
    case 3:
      session.navigationPanelVisible = !session.navigationPanelVisible;
      break;
    case 4:
      session.stampPanelVisible = !session.stampPanelVisible;
      break;
    case 5:
      session.binderPanelVisible = !session.binderPanelVisible;
      break;
    case 6:
      session.leftPanelWidth = between(random, 150, 500);
      break;
    case 7:
      session.stampPanelWidth = between(random, 120, 400);
      break;
    case 8:
      session.paneDividerPosition = between(random, 0, 4000);
      break;
    case 9:
      session.leftPanelSplit = static_cast<float>(between(random, 50, 950)) / 1000.0f;
      break;
  }
}

void editRecentFiles(Random& random) {
  auto& list = session.settings.recentFiles;
  if (list.size() == 20 || (!list.empty() && between(random, 0, 1) == 0)) {
    list.erase(list.begin() + between(random, 0, static_cast<std::int32_t>(list.size()) - 1));
  } else {
    list.insert(list.begin(), anyPath(random));
  }
}

void editAnything(Random& random) {
  const int kind = between(random, 0, 9);
  if (kind < 3) return editLiveState(random);
  if (kind < 5) return editRecentFiles(random);
  const auto table = settingsTable();
  const SettingRow* row = nullptr;
  do {
    row = &table[static_cast<std::size_t>(
        between(random, 0, static_cast<std::int32_t>(table.size()) - 1))];
  } while (isLive(*row));
  row->set(session.settings, anyNumber(*row, random));
}

struct LiveState {
  std::int32_t zoomModes[2];
  bool flags[4];
  std::int32_t widths[3];
  float split;
  bool operator==(const LiveState&) const = default;
};

LiveState liveState() {
  return {{session.panes[0].zoomMode, session.panes[1].zoomMode},
          {session.panScrollEnabled, session.navigationPanelVisible, session.stampPanelVisible,
           session.binderPanelVisible},
          {session.leftPanelWidth, session.stampPanelWidth, session.paneDividerPosition},
          session.leftPanelSplit};
}

class SettingsRoundTripTest : public SettingsFileTest {};

void expectSameAfterARestart() {
  SaveSettings();
  const AppSettings settings = session.settings;
  const LiveState live = liveState();
  restart();
  for (const SettingRow& row : settingsTable()) {
    EXPECT_EQ(row.get(session.settings), row.get(settings))
        << platform::toUtf8(row.section) << " " << platform::toUtf8(row.key);
  }
  EXPECT_EQ(session.settings.recentFiles, settings.recentFiles);
  EXPECT_EQ(session.settings.textColors, settings.textColors);
  EXPECT_EQ(session.settings.markupColors, settings.markupColors);
  EXPECT_EQ(liveState(), live);
}

TEST_F(SettingsRoundTripTest, AThousandRandomEditsReadBackTheSame) {
  constexpr int kEdits = 1000;
  constexpr int kEditsBetweenRestarts = 50;
  putIni(
      u"[Defaults]\nZoomMode=4\nPanScroll=2\nNavPane=2\nStampPane=2\nBindersPanel=2\n"
      u"[Navigation]\nMarkupGroupingDefault=2\n");
  restart();
  Random random(20261121);
  for (int edit = 1; edit <= kEdits && !HasFailure(); ++edit) {
    editAnything(random);
    if (edit % kEditsBetweenRestarts == 0) {
      SCOPED_TRACE(edit);
      expectSameAfterARestart();
    }
  }
}

}  // namespace
}  // namespace quillmere::test
