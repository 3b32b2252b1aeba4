#include "store/settings_placement.h"

#include <gtest/gtest.h>

#include <limits>

#include "store/settings.h"
#include "support/settings_file.h"

namespace quillmere::test {
namespace {

constexpr platform::ScreenRect kWorkArea = {0, 0, 1920, 1040};

void expectPlace(const StoredPlacement& place, std::int32_t x, std::int32_t y, std::int32_t width,
                 std::int32_t height) {
  EXPECT_EQ(place.x, x);
  EXPECT_EQ(place.y, y);
  EXPECT_EQ(place.width, width);
  EXPECT_EQ(place.height, height);
}

TEST(FitToWorkAreaTest, AWindowInsideKeepsItsPlace) {
  expectPlace(fitToWorkArea({200, 100, 1100, 800}, kWorkArea), 200, 100, 1100, 800);
}

TEST(FitToWorkAreaTest, AHugeWindowFillsTheWorkAreaButForItsEdge) {
  expectPlace(fitToWorkArea({-700, 10, 5000, 4000}, kWorkArea), 32, 32, 1856, 976);
}

TEST(FitToWorkAreaTest, AWindowBeyondRightAndBottomMovesBack) {
  expectPlace(fitToWorkArea({1900, 1000, 600, 400}, kWorkArea), 1288, 608, 600, 400);
}

TEST(FitToWorkAreaTest, OnASmallScreenTheFarEdgesWin) {
  expectPlace(fitToWorkArea({0, 0, 1100, 800}, {0, 0, 420, 310}), -12, -22, 400, 300);
}

TEST(FitToWorkAreaTest, AWindowBelowTheLeastSizeStaysSmall) {
  expectPlace(fitToWorkArea({50, 60, 120, 90}, {0, 0, 420, 310}), 50, 60, 120, 90);
}

TEST(FitToWorkAreaTest, AScreenLeftOfThePrimaryHasItsOwnEdges) {
  expectPlace(fitToWorkArea({-3000, 500, 800, 600}, {-1600, 200, 0, 1100}), -1568, 468, 800, 600);
}

TEST(FitToWorkAreaTest, TheLargestNumbersDoNotOverflow) {
  constexpr std::int32_t kMost = std::numeric_limits<std::int32_t>::max();
  constexpr std::int32_t kLeast = std::numeric_limits<std::int32_t>::min();
  expectPlace(fitToWorkArea({kMost, kMost, kMost, kMost}, kWorkArea), 32, 32, 1856, 976);
  expectPlace(fitToWorkArea({kLeast, kLeast, 500, 500}, kWorkArea), 32, 32, 500, 500);
}

class WindowPlacementSettingsTest : public SettingsFileTest {
 protected:
  static const std::vector<platform::WindowPlacement>& placements() {
    return platform::standIn().window.placementsSet;
  }
};

TEST_F(WindowPlacementSettingsTest, TheWindowComesUpWhereItWas) {
  putIni(u"[Window]\nX=300\nY=200\nWidth=900\nHeight=700\nMaximised=1\n");
  restart();
  ASSERT_EQ(placements().size(), 1u);
  EXPECT_EQ(placements()[0].normal, (platform::ScreenRect{300, 200, 1200, 900}));
  EXPECT_TRUE(placements()[0].maximised);
}

TEST_F(WindowPlacementSettingsTest, AHugeStoredWindowFitsTheScreen) {
  putIni(u"[Window]\nX=0\nY=0\nWidth=5000\nHeight=4000\n");
  restart();
  ASSERT_EQ(placements().size(), 1u);
  EXPECT_EQ(placements()[0].normal, (platform::ScreenRect{32, 32, 1888, 1008}));
  EXPECT_FALSE(placements()[0].maximised);
}

TEST_F(WindowPlacementSettingsTest, WithoutAKnownScreenTheStoredPlaceIsUsedAsItIs) {
  platform::standIn().workAreaNearestKnown = false;
  putIni(u"[Window]\nX=-4000\nY=7\nWidth=5000\nHeight=4000\n");
  restart();
  ASSERT_EQ(placements().size(), 1u);
  EXPECT_EQ(placements()[0].normal, (platform::ScreenRect{-4000, 7, 1000, 4007}));
}

TEST_F(WindowPlacementSettingsTest, ExtremeNumbersInTheFileArePlacedOnTheScreen) {
  putIni(u"[Window]\nX=2147483647\nY=2147483647\nWidth=2147483647\nHeight=2147483647\n");
  restart();
  ASSERT_EQ(placements().size(), 1u);
  EXPECT_EQ(placements()[0].normal, (platform::ScreenRect{32, 32, 1888, 1008}));
}

TEST_F(WindowPlacementSettingsTest, IncompletePlacesAreIgnored) {
  for (const std::u16string lines : {
           u"Y=200\nWidth=900\nHeight=700\n",
           u"X=300\nWidth=900\nHeight=700\n",
           u"X=-1\nY=200\nWidth=900\nHeight=700\n",
           u"X=300\nY=-1\nWidth=900\nHeight=700\n",
           u"X=300\nY=200\nWidth=0\nHeight=700\n",
           u"X=300\nY=200\nWidth=900\nHeight=-5\n",
       }) {
    putIni(u"[Window]\n" + lines);
    restart();
  }
  EXPECT_TRUE(placements().empty());
}

TEST_F(WindowPlacementSettingsTest, APlaceWithoutASizeHasTheFirstSize) {
  putIni(u"[Window]\nX=300\nY=200\n");
  restart();
  ASSERT_EQ(placements().size(), 1u);
  EXPECT_EQ(placements()[0].normal, (platform::ScreenRect{300, 200, 1400, 1000}));
}

TEST_F(WindowPlacementSettingsTest, AViewerIsNotPlaced) {
  putIni(u"[Window]\nX=300\nY=200\nWidth=900\nHeight=700\n");
  session.viewerRole = true;
  LoadSettings();
  EXPECT_TRUE(placements().empty());
}

TEST_F(WindowPlacementSettingsTest, BeforeTheWindowExistsNothingIsPlaced) {
  platform::standIn().window.exists = false;
  putIni(u"[Window]\nX=300\nY=200\nWidth=900\nHeight=700\n");
  restart();
  EXPECT_TRUE(placements().empty());
}

TEST_F(WindowPlacementSettingsTest, SavingStoresTheNormalPosition) {
  platform::standIn().window.placement = platform::WindowPlacement{{-1500, 40, -300, 940}, true};
  SaveSettings();
  EXPECT_EQ(iniValue(u"Window", u"X"), u"-1500");
  EXPECT_EQ(iniValue(u"Window", u"Y"), u"40");
  EXPECT_EQ(iniValue(u"Window", u"Width"), u"1200");
  EXPECT_EQ(iniValue(u"Window", u"Height"), u"900");
  EXPECT_EQ(iniValue(u"Window", u"Maximised"), u"1");
}

TEST_F(WindowPlacementSettingsTest, AWindowThatTellsNoPlaceLeavesTheStoredOne) {
  putIni(u"[Window]\nX=300\nY=200\nWidth=900\nHeight=700\n");
  restart();
  platform::standIn().window.placement = std::nullopt;
  session.settings.windowX = 1;
  SaveSettings();
  EXPECT_EQ(iniValue(u"Window", u"X"), u"300");
  EXPECT_EQ(iniValue(u"Window", u"Maximised"), std::nullopt);
}

}  // namespace
}  // namespace quillmere::test
