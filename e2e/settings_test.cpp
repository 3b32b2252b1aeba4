#include "driver/scenario.h"

namespace quillmere::e2e {
namespace {

constexpr Size kPage{300, 400};

class Settings : public Scenario {
 protected:
  // Closes the main window and waits until the program has ended.
  void close() {
    PostMessageW(window, WM_CLOSE, 0, 0);
    ASSERT_EQ(program.exitCode(), 0u);
  }
  static std::vector<std::wstring> sections() {
    std::vector<std::wstring> names;
    for (const std::wstring& line : settingsLines()) {
      if (line.size() > 2 && line.front() == L'[') names.push_back(line.substr(1, line.size() - 2));
    }
    return names;
  }
  // The keys of a section in the order of the file, such as "ZoomMode=0".
  static std::vector<std::wstring> linesOf(const std::wstring& section) {
    std::vector<std::wstring> lines;
    bool inside = false;
    for (const std::wstring& line : settingsLines()) {
      if (!line.empty() && line.front() == L'[') {
        inside = line == L"[" + section + L"]";
      } else if (inside && !line.empty()) {
        lines.push_back(line);
      }
    }
    return lines;
  }
};

TEST_F(Settings, AFirstRunWritesEverySectionInItsOrder) {
  DeleteFileW(settingsFile().c_str());
  start();
  EXPECT_TRUE(answerBox(waitForBox(program), 'N'));
  close();
  EXPECT_EQ(readFile(settingsFile()).substr(0, 2), "\xFF\xFE");
  EXPECT_THAT(sections(), ::testing::ElementsAre(
                              L"TextColors", L"MarkupColors", L"Binders", L"Onboarding",
                              L"Defaults", L"LastUsed", L"Updates", L"TextDialog", L"Markup",
                              L"StampImport", L"Navigation", L"Network", L"Security",
                              L"RecentFiles", L"MouseWheel", L"BookMode", L"Window", L"Panels"));
  EXPECT_THAT(linesOf(L"Defaults"),
              ::testing::ElementsAre(L"ZoomMode=0", L"PanScroll=1", L"NavPane=1", L"StampPane=0",
                                     L"BindersPanel=1"));
  EXPECT_THAT(linesOf(L"MouseWheel"),
              ::testing::ElementsAre(L"NoModifier=1", L"Shift=0", L"Ctrl=3", L"CtrlShift=2"));
  EXPECT_EQ(setting(L"TextColors", L"Color7_Value"), L"#7D23AA");
  EXPECT_EQ(setting(L"MarkupColors", L"Color6_Name"), L"Red");
}

TEST_F(Settings, TheWindowComesBackWhereItWas) {
  start();
  SetWindowPos(window, nullptr, 120, 90, 1000, 700, SWP_NOZORDER);
  const RECT before = windowRect(window);
  close();
  EXPECT_EQ(setting(L"Window", L"Width"), L"1000");
  EXPECT_EQ(setting(L"Window", L"Maximised"), L"0");
  start();
  EXPECT_EQ(windowRect(window), before);
}

TEST_F(Settings, AMaximisedWindowComesBackMaximised) {
  start();
  ShowWindow(window, SW_MAXIMIZE);
  ASSERT_TRUE(eventually([&] { return IsZoomed(window) != FALSE; }));
  close();
  EXPECT_EQ(setting(L"Window", L"Maximised"), L"1");
  start();
  EXPECT_TRUE(eventually([&] { return IsZoomed(window) != FALSE; }));
}

TEST_F(Settings, AMaximisedWindowWithoutAPlaceComesUpMaximisedToo) {
  setSetting(L"Window", L"X", L"-1");
  setSetting(L"Window", L"Maximised", L"1");
  start();
  EXPECT_TRUE(eventually([&] { return IsZoomed(window) != FALSE; }));
}

TEST_F(Settings, AWindowClosedWhileMinimisedComesBackAtItsNormalPlace) {
  start();
  SetWindowPos(window, nullptr, 120, 90, 1000, 700, SWP_NOZORDER);
  const RECT before = windowRect(window);
  ShowWindow(window, SW_MAXIMIZE);
  ASSERT_TRUE(eventually([&] { return IsZoomed(window) != FALSE; }));
  ShowWindow(window, SW_MINIMIZE);
  ASSERT_TRUE(eventually([&] { return IsIconic(window) != FALSE; }));
  close();
  EXPECT_EQ(setting(L"Window", L"Maximised"), L"0");
  EXPECT_EQ(setting(L"Window", L"Width"), L"1000");
  EXPECT_EQ(setting(L"Window", L"Height"), L"700");
  start();
  EXPECT_EQ(windowRect(window), before);
}

TEST_F(Settings, LoggingOffKeepsWhatWasChanged) {
  startWith(coloredPdf(1));
  const auto savedWidth = [] { return setting(L"Panels", L"NavWidth"); };
  const LONG edge = pageArea().left;
  drag(onScreen(edge - 2, 300), onScreen(edge + 58, 300));
  ASSERT_TRUE(eventually([&] { return pageArea().left == edge + 60; }));
  EXPECT_TRUE(SendMessageW(window, WM_QUERYENDSESSION, 0, 0));
  // Another program refused to end the session.
  SendMessageW(window, WM_ENDSESSION, FALSE, 0);
  EXPECT_NE(savedWidth(), L"250");
  SendMessageW(window, WM_ENDSESSION, TRUE, 0);
  EXPECT_EQ(settled(savedWidth, std::wstring(L"250")), L"250");
}

TEST_F(Settings, AWindowThatIsTooLargeIsBroughtOntoTheScreen) {
  setSetting(L"Window", L"X", L"5000");
  setSetting(L"Window", L"Y", L"4000");
  setSetting(L"Window", L"Width", L"5000");
  setSetting(L"Window", L"Height", L"4000");
  start();
  RECT work{};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &work, 0);
  EXPECT_EQ(windowRect(window),
            (RECT{work.left + 32, work.top + 32, work.right - 32, work.bottom - 32}));
}

TEST_F(Settings, TheChosenZoomModeGreetsANewDocument) {
  setSetting(L"Defaults", L"ZoomMode", L"2");
  startWith(coloredPdf(1));
  EXPECT_TRUE(zoomTextBecomes(L"Zoom: 100%"));
  EXPECT_TRUE(pageBecomes(pageArea(), placedPage(pageArea(), kPage, 1)));
  EXPECT_TRUE(menuItem(window, 206).checked);
}

TEST_F(Settings, LastUsedBringsBackModeAndPanScrollOfTheLastRun) {
  setSetting(L"Defaults", L"ZoomMode", L"4");
  setSetting(L"Defaults", L"PanScroll", L"2");
  startWith(coloredPdf(1));
  press('W');
  press('N', kCtrl);
  ASSERT_TRUE(becomesChecked(209));
  close();
  EXPECT_EQ(setting(L"LastUsed", L"ZoomMode0"), L"1");
  EXPECT_EQ(setting(L"LastUsed", L"PanScroll"), L"1");
  start();
  EXPECT_TRUE(menuItem(window, 205).checked);
  EXPECT_TRUE(menuItem(window, 209).checked);
}

TEST_F(Settings, HiddenPanelsLeaveTheirRoomToThePage) {
  setSetting(L"Defaults", L"NavPane", L"0");
  setSetting(L"Defaults", L"BindersPanel", L"0");
  setSetting(L"Defaults", L"StampPane", L"1");
  startWith(coloredPdf(1));
  RECT area = pageArea();
  EXPECT_EQ(area.left, 0);
  area.right -= dip(180) + dip(3);
  EXPECT_TRUE(pageBecomes(area, fitPage(area, kPage)));
}

TEST_F(Settings, PanelWidthsAreClampedInMemoryOnly) {
  setSetting(L"Panels", L"NavWidth", L"20");
  startWith(coloredPdf(1));
  EXPECT_EQ(pageArea().left, 153);
  EXPECT_EQ(setting(L"Panels", L"NavWidth"), L"20");
  close();
  EXPECT_EQ(setting(L"Panels", L"NavWidth"), L"150");
}

TEST_F(Settings, TheWheelFollowsTheFile) {
  setSetting(L"MouseWheel", L"NoModifier", L"0");
  setSetting(L"MouseWheel", L"Shift", L"9");
  startWith(coloredPdf(3));
  const POINT place = middleOf(pageArea());
  turnWheel(place, -WHEEL_DELTA);
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 3"));
  turnWheel(place, -WHEEL_DELTA, kShift);
  EXPECT_TRUE(pageTextBecomes(L"Page 3 of 3"));
}

TEST_F(Settings, ABookWithoutItsSettingsKeepsTheZoomAndFreesTheDivider) {
  setSetting(L"BookMode", L"RevertToFit", L"0");
  setSetting(L"BookMode", L"EqualizePanes", L"0");
  startWith(coloredPdf(3));
  press('A');
  ASSERT_TRUE(zoomTextBecomes(L"Zoom: 100%"));
  press(VK_F6);
  ASSERT_TRUE(pageTextBecomes(L"L:1  R:2  of 3"));
  EXPECT_TRUE(zoomTextBecomes(L"Zoom: 100%"));
  const LONG divider = leftPane().right;
  const LONG middle = (leftPane().top + leftPane().bottom) / 2;
  drag(onScreen(divider, middle), onScreen(divider - 80, middle));
  EXPECT_TRUE(pixelBecomes(divider - 80, leftPane().top + 10, kDivider));
}

TEST_F(Settings, AMalformedColourRowHealsItself) {
  setSetting(L"TextColors", L"Color1_Name", L"Ruby");
  setSetting(L"TextColors", L"Color1_Value", L"#C81E1E0");
  setSetting(L"TextColors", L"Color2_Name", L"Moss");
  setSetting(L"TextColors", L"Color2_Value", L"#102030");
  start();
  EXPECT_EQ(setting(L"TextColors", L"Color1_Name"), L"Red");
  EXPECT_EQ(setting(L"TextColors", L"Color1_Value"), L"#C81E1E");
  EXPECT_EQ(setting(L"TextColors", L"Color2_Name"), L"Moss");
  EXPECT_EQ(setting(L"TextColors", L"Color2_Value"), L"#102030");
}

TEST_F(Settings, RecentDocumentsOfTheFileStandInTheMenuAndOpen) {
  const std::wstring path = makeFile(L"\u00E4lteres Dokument.pdf", coloredPdf(2));
  setSetting(L"RecentFiles", L"Count", L"2");
  setSetting(L"RecentFiles", L"Path0", path);
  setSetting(L"RecentFiles", L"Path1", L"C:\\nowhere\\gone.pdf");
  start();
  EXPECT_EQ(menuItem(window, 709).text, L"&1  \u00E4lteres Dokument.pdf");
  EXPECT_EQ(menuItem(window, 710).text, L"&2  gone.pdf");
  runCommand(window, 709);
  EXPECT_TRUE(titleBecomes(L"Quillmere - \u00E4lteres Dokument.pdf"));
}

}  // namespace
}  // namespace quillmere::e2e
