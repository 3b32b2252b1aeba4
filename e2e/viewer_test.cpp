#include <algorithm>

#include "driver/scenario.h"
#include "support/pdf_builder.h"

namespace quillmere::e2e {
namespace {

constexpr wchar_t kViewerTitle[] = L"Quillmere - Viewer (Read-Only)";

class Viewer : public Scenario {
 protected:
  // Starts a viewer from the main window and waits for its new window.
  HWND openViewer() {
    const std::vector<HWND> before = windowsOfClass(kViewerClass);
    runCommand(window, 110);
    HWND viewer = nullptr;
    eventually([&] {
      for (const HWND candidate : windowsOfClass(kViewerClass)) {
        const bool known = std::find(before.begin(), before.end(), candidate) != before.end();
        if (!known && IsWindowVisible(candidate)) viewer = candidate;
      }
      return viewer != nullptr;
    });
    return viewer;
  }
  static bool shows(HWND viewer, const std::wstring& name) {
    return eventually([&] { return titleOf(viewer) == kViewerTitle + (L" - " + name); });
  }
};

TEST_F(Viewer, StartsEmptyWithoutAPath) {
  start(L"--viewer");
  EXPECT_EQ(classOf(window), kViewerClass);
  EXPECT_EQ(title(), kViewerTitle);
  EXPECT_TRUE(eventually([&] { return pageArea().left == 0; }));
}

TEST_F(Viewer, ShowsTheBookmarksOfADocumentThatHasSomeInANarrowerPanel) {
  test::PdfOptions options;
  options.outline.push_back({u"Chapter", test::pageDestination(1), {}});
  const std::string bytes = test::buildPdf({test::PdfPage{}}, options);
  start(L"--viewer " + inQuotes(makeFile(L"book.pdf", bytes)));
  EXPECT_TRUE(eventually([&] { return pageArea().left == dip(152) + dip(3); }));
  EXPECT_TRUE(IsWindowVisible(childOf(window, 401)));
  EXPECT_FALSE(IsWindowVisible(childOf(window, 420)));
}

TEST_F(Viewer, TakesWhatFollowsItsPrefixAsThePath) {
  makeFile(L"one.pdf", coloredPdf(2));
  start(L"--viewer" + scenarioFolder() + L"\\one.pdf");
  EXPECT_TRUE(shows(window, L"one.pdf"));
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 2"));
}

TEST_F(Viewer, AnySecondViewerIsAWindowOfItsOwn) {
  const std::wstring path = makeFile(L"with blanks.pdf", coloredPdf(2));
  start(L"--viewer   " + inQuotes(path));
  const Program second = startProgram(L"--viewer " + inQuotes(path));
  EXPECT_NE(second.window(), nullptr);
  EXPECT_TRUE(shows(window, L"with blanks.pdf"));
  EXPECT_TRUE(shows(second.window(), L"with blanks.pdf"));
  EXPECT_TRUE(program.running());
}

TEST_F(Viewer, NeverGetsTheFileOfALaterLaunch) {
  start(L"--viewer");
  const Program primary = startProgram(inQuotes(makeFile(L"one.pdf", coloredPdf(1))));
  EXPECT_TRUE(eventually([&] { return titleOf(primary.window()) == L"Quillmere - one.pdf"; }));
  EXPECT_EQ(title(), kViewerTitle);
}

TEST_F(Viewer, EachStandsBesideTheMainWindowAndAStepFurtherThanTheLast) {
  startWith(coloredPdf(1), L"a file.pdf");
  SetWindowPos(window, nullptr, 100, 300, 900, 700, SWP_NOZORDER);
  const RECT main = windowRect(window);
  const HWND first = openViewer();
  ASSERT_NE(first, nullptr);
  EXPECT_TRUE(shows(first, L"a file.pdf"));
  const int step = GetSystemMetrics(SM_CYCAPTION);
  const int width = dip(600);  // the minimum; 65% of 900 is less
  const int height = std::max(630, dip(480));
  const RECT wanted{main.right + 2 * step - width, main.top - step, main.right + 2 * step,
                    main.top - step + height};
  EXPECT_EQ(windowRect(first), wanted);
  const HWND second = openViewer();
  ASSERT_NE(second, nullptr);
  RECT moved = wanted;
  OffsetRect(&moved, 2 * step, -step);
  EXPECT_EQ(windowRect(second), moved);
  EXPECT_TRUE(shows(second, L"a file.pdf"));
}

TEST_F(Viewer, LeavesTheFileFreeAndRefreshesFromIt) {
  const std::wstring path = makeFile(L"one.pdf", coloredPdf(2));
  start(L"--viewer " + inQuotes(path));
  ASSERT_TRUE(pageTextBecomes(L"Page 1 of 2"));
  toFront();
  const std::wstring newer = makeFile(L"newer.pdf", coloredPdf(5));
  ASSERT_TRUE(MoveFileExW(newer.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING));
  press(VK_NEXT);
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 2"));
  runCommand(window, 213);
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 5"));
  // The first page is shown under the old page number until the next page turn.
  const RECT area = pageArea();
  EXPECT_TRUE(pixelBecomes((area.left + area.right) / 2, area.bottom / 2, pageColor(0)));
  press(VK_NEXT);
  EXPECT_TRUE(pixelBecomes((area.left + area.right) / 2, area.bottom / 2, pageColor(2)));
  EXPECT_TRUE(DeleteFileW(path.c_str()));
}

TEST_F(Viewer, AnEmptyFileIsRefused) {
  start(L"--viewer " + inQuotes(makeFile(L"empty.pdf", "")));
  const Box box = waitForBox(program);
  EXPECT_THAT(box.text, ::testing::StartsWith(L"Could not open PDF.\n(PDFium error "));
  EXPECT_TRUE(answerBox(box, VK_RETURN));
  EXPECT_TRUE(titleBecomes(kViewerTitle));
}

TEST_F(Viewer, RefusesWhatChangesADocument) {
  const RECT none{};
  start(L"--viewer " + inQuotes(makeFile(L"one.pdf", markedPdf(2, 300, 400))));
  ASSERT_TRUE(pageTextBecomes(L"Page 1 of 2"));
  toFront();
  const RECT area = pageArea();
  const RECT page = fitPage(area, {300, 400});
  ASSERT_TRUE(pageBecomes(area, page));
  const Picture before = client();
  press('R');
  press('R', kCtrl);
  press(VK_F4);
  press(VK_NEXT);
  press(VK_PRIOR);
  ASSERT_TRUE(pageTextBecomes(L"Page 1 of 2"));
  EXPECT_TRUE(pageBecomes(area, page));
  EXPECT_NE(area, none);
  EXPECT_TRUE(eventually([&] { return client() == before; }));
}

TEST_F(Viewer, WritesNoSettings) {
  const std::string before = readFile(settingsFile());
  start(L"--viewer " + inQuotes(makeFile(L"one.pdf", coloredPdf(1))));
  ASSERT_TRUE(pageTextBecomes(L"Page 1 of 1"));
  PostMessageW(window, WM_CLOSE, 0, 0);
  EXPECT_EQ(program.exitCode(), 0u);
  EXPECT_EQ(setting(L"Window", L"Width"), L"");
  EXPECT_EQ(setting(L"TextColors", L"Color0_Name"), L"");
  EXPECT_EQ(setting(L"Onboarding", L"DesktopShortcutPromptShown"), L"1");
}

TEST_F(Viewer, NeverComesUpMaximised) {
  setSetting(L"Window", L"X", L"120");
  setSetting(L"Window", L"Y", L"90");
  setSetting(L"Window", L"Maximised", L"1");
  start(L"--viewer " + inQuotes(makeFile(L"one.pdf", coloredPdf(1))));
  ASSERT_TRUE(pageTextBecomes(L"Page 1 of 1"));
  EXPECT_FALSE(IsZoomed(window));
}

TEST_F(Viewer, StaysOpenWhenTheMainWindowClosesWithTheAnswerNo) {
  startWith(coloredPdf(1));
  const HWND viewer = openViewer();
  ASSERT_TRUE(shows(viewer, L"one.pdf"));
  PostMessageW(window, WM_CLOSE, 0, 0);
  const Box box = waitForBox(program);
  EXPECT_EQ(box.title, L"Quillmere");
  EXPECT_EQ(box.text, L"Close All Viewer Windows?");
  EXPECT_THAT(box.buttons, ::testing::ElementsAre(L"Yes", L"No"));
  EXPECT_TRUE(answerBox(box, 'N'));
  EXPECT_EQ(program.exitCode(), 0u);
  EXPECT_TRUE(IsWindow(viewer));
  ASSERT_TRUE(bringToFront(viewer));
  press(VK_F6);
  EXPECT_TRUE(eventually([&] { return menuItem(viewer, 302).checked; }));
}

TEST_F(Viewer, AFileThatArrivesDuringTheQuestionIsOpenedByAFreshProcess) {
  const std::wstring late = makeFile(L"late.pdf", coloredPdf(2));
  startWith(coloredPdf(1));
  const HWND viewer = openViewer();
  ASSERT_TRUE(shows(viewer, L"one.pdf"));
  PostMessageW(window, WM_CLOSE, 0, 0);
  const Box box = waitForBox(program);
  ASSERT_NE(box.window, nullptr);
  sendPath(window, late);
  EXPECT_TRUE(answerBox(box, 'N'));
  EXPECT_EQ(program.exitCode(), 0u);
  HWND fresh = nullptr;
  ASSERT_TRUE(eventually([&] {
    const std::vector<HWND> windows = windowsOfClass(kMainClass);
    fresh = windows.empty() ? nullptr : windows.front();
    return fresh != nullptr && fresh != window && titleOf(fresh) == L"Quillmere - late.pdf";
  }));
  PostMessageW(viewer, WM_CLOSE, 0, 0);
  ASSERT_TRUE(eventually([&] { return !IsWindow(viewer); }));
  PostMessageW(fresh, WM_CLOSE, 0, 0);
  EXPECT_TRUE(eventually([&] { return !IsWindow(fresh); }));
}

TEST_F(Viewer, ClosesWithTheMainWindowAfterTheAnswerYes) {
  startWith(coloredPdf(1));
  const HWND viewer = openViewer();
  ASSERT_TRUE(shows(viewer, L"one.pdf"));
  PostMessageW(window, WM_CLOSE, 0, 0);
  EXPECT_TRUE(answerBox(waitForBox(program), 'Y'));
  EXPECT_EQ(program.exitCode(), 0u);
  EXPECT_TRUE(eventually([&] { return !IsWindow(viewer); }));
}

}  // namespace
}  // namespace quillmere::e2e
