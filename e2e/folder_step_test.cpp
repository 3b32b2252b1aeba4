#include "driver/scenario.h"

namespace quillmere::e2e {
namespace {

constexpr WORD kPreviousKey = VK_OEM_4;  // [
constexpr WORD kNextKey = VK_OEM_6;      // ]

class FolderStep : public Scenario {
 protected:
  // Makes a folder of files with these names; the first has one page, the second two and so on.
  static void putFiles(const std::vector<std::wstring>& names) {
    int pages = 0;
    for (const std::wstring& name : names) makeFile(name, coloredPdf(++pages));
  }
  void startAt(const std::wstring& name) {
    start(inQuotes(scenarioFolder() + L"\\" + name));
    ASSERT_TRUE(titleBecomes(L"Quillmere - " + name));
    toFront();
  }
  void stepTo(WORD key, const std::wstring& wantedTitle) const {
    press(key, kCtrl);
    EXPECT_TRUE(titleBecomes(L"Quillmere - " + wantedTitle)) << ::testing::PrintToString(title());
  }
  // Steps and expects no effect. A file opened by mistake would show before the mode changes are
  // done.
  void stepNowhere(WORD key) const {
    const std::wstring before = title();
    press(key, kCtrl);
    press(VK_F5);
    press(VK_F6);
    ASSERT_TRUE(becomesChecked(302));
    press(VK_F5);
    ASSERT_TRUE(becomesChecked(301));
    EXPECT_EQ(title(), before);
    EXPECT_EQ(boxNow(program).window, nullptr);
  }
  void expectWarning(const std::wstring& text) const {
    press(kNextKey, kCtrl);
    const Box box = waitForBox(program);
    EXPECT_EQ(box.title, L"Quillmere");
    EXPECT_EQ(box.text, text);
    EXPECT_TRUE(answerBox(box, VK_RETURN));
  }
};

TEST_F(FolderStep, TheKeysGoThroughTheFolderByNameAndStopAtItsEnds) {
  putFiles({L"b.pdf", L"C.pdf", L"a.PDF", L"d.txt"});
  CreateDirectoryW((scenarioFolder() + L"\\bb.pdf").c_str(), nullptr);
  startAt(L"b.pdf");
  stepTo(kNextKey, L"C.pdf");
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 2"));
  stepNowhere(kNextKey);
  stepTo(kPreviousKey, L"b.pdf");
  stepTo(kPreviousKey, L"a.PDF");
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 3"));
  stepNowhere(kPreviousKey);
  // Files opened by stepping are not remembered anywhere.
  runCommand(window, 109);
  ASSERT_EQ(program.exitCode(), 0u);
  for (const std::wstring& line : settingsLines()) {
    EXPECT_EQ(line.find(L"C.pdf"), std::wstring::npos) << ::testing::PrintToString(line);
  }
}

TEST_F(FolderStep, TheMenuStepsToo) {
  putFiles({L"a.pdf", L"b.pdf"});
  startAt(L"a.pdf");
  runCommand(window, 104);
  EXPECT_TRUE(titleBecomes(L"Quillmere - b.pdf"));
  runCommand(window, 103);
  EXPECT_TRUE(titleBecomes(L"Quillmere - a.pdf"));
}

TEST_F(FolderStep, AKeyInATreeOrInTheFindBarStepsAndGivesThePageTheKeyboard) {
  putFiles({L"a.pdf", L"b.pdf"});
  startAt(L"a.pdf");
  press('N');
  ASSERT_TRUE(eventually([&] { return focusOf(window) == childOf(window, 401); }));
  stepTo(kNextKey, L"b.pdf");
  EXPECT_TRUE(eventually([&] { return focusOf(window) == window; }));
  press('F', kCtrl);
  ASSERT_TRUE(eventually([&] { return focusOf(window) == childOf(window, 410); }));
  stepTo(kPreviousKey, L"a.pdf");
  EXPECT_TRUE(eventually([&] { return focusOf(window) == window; }));
}

TEST_F(FolderStep, BesideAnotherDocumentItsFileIsSkipped) {
  putFiles({L"a.pdf", L"b.pdf", L"c.pdf"});
  startAt(L"a.pdf");
  press(VK_F8);
  ASSERT_TRUE(becomesChecked(304));
  dropFiles(window, {rightPane().left + 50, 100}, {scenarioFolder() + L"\\B.pdf"});
  ASSERT_TRUE(titleBecomes(L"Quillmere - a.pdf | B.pdf"));
  stepTo(kNextKey, L"c.pdf | B.pdf");
  stepTo(kPreviousKey, L"a.pdf | B.pdf");
  press(VK_TAB);
  ASSERT_TRUE(paneIsActive(rightPane()));
  stepTo(kNextKey, L"a.pdf | c.pdf");
  stepTo(kPreviousKey, L"a.pdf | b.pdf");
  EXPECT_TRUE(pageTextBecomes(L"L:1/1  R:1/2"));
  // The previous file is open in the other pane, and there is none before that.
  press(kPreviousKey, kCtrl);
  press(VK_END);
  EXPECT_TRUE(pageTextBecomes(L"L:1/1  R:2/2"));
  EXPECT_EQ(title(), L"Quillmere - a.pdf | b.pdf");
}

TEST_F(FolderStep, AFileAndAFolderThatAreGoneAreReported) {
  putFiles({L"a.pdf", L"b.pdf"});
  const std::wstring path = scenarioFolder() + L"\\a.pdf";
  start(L"--viewer " + inQuotes(path));  // it does not lock its file
  ASSERT_TRUE(titleBecomes(L"Quillmere - Viewer (Read-Only) - a.pdf"));
  toFront();
  ASSERT_TRUE(MoveFileW(path.c_str(), (scenarioFolder() + L"\\c.pdf").c_str()));
  expectWarning(
      L"Could not locate the current file in its folder.\nIt may have been renamed or moved.");
  removeTree(scenarioFolder());
  expectWarning(L"Could not read the folder.\nIt may have been moved or renamed.");
  EXPECT_EQ(title(), L"Quillmere - Viewer (Read-Only) - a.pdf");
}

TEST_F(FolderStep, AmongIndependentPagesItSplitsTheWindow) {
  putFiles({L"a.pdf", L"b.pdf", L"c.pdf"});
  startAt(L"b.pdf");
  press(VK_F7);
  press(VK_NEXT);
  ASSERT_TRUE(pageTextBecomes(L"L:2  R:1  of 2"));
  stepTo(kNextKey, L"c.pdf | b.pdf");
  EXPECT_TRUE(becomesChecked(304));
  EXPECT_TRUE(pageTextBecomes(L"L:1/3  R:1/2"));
}

}  // namespace
}  // namespace quillmere::e2e
