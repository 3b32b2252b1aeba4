#include "driver/scenario.h"
#include "support/pdf_builder.h"

namespace quillmere::e2e {
namespace {

constexpr wchar_t kTooLong[] = L"The file's path is too long to open.";
constexpr std::uint32_t kPlaceholder = rgb(120, 200, 255);

std::wstring loadFailure(int code) {
  return L"Could not open PDF.\n(PDFium error " + std::to_wstring(code) + L")";
}

class Opening : public Scenario {
 protected:
  // Starts the program with the path, answers the box and checks that the program still works.
  void expectRefused(const std::wstring& path, const std::wstring& text) {
    start(inQuotes(path));
    EXPECT_TRUE(boxSays(text));
    expectGoesOn();
  }
  void expectGoesOn() {
    dropFiles(window, {400, 100}, {makeFile(L"sound.pdf", coloredPdf(2))});
    EXPECT_TRUE(titleBecomes(L"Quillmere - sound.pdf"));
    EXPECT_TRUE(pageTextBecomes(L"Page 1 of 2"));
  }
  // Makes a file whose path has this many units, in a chain of folders.
  static std::wstring longPath(std::size_t units, const std::string& bytes) {
    std::wstring folder = scenarioFolder();
    while (folder.size() + 61 < units - 10) {
      folder += L"\\" + std::wstring(60, L'f');
      CreateDirectoryW((L"\\\\?\\" + folder).c_str(), nullptr);
    }
    const std::wstring path =
        folder + L"\\" + std::wstring(units - folder.size() - 5, L'n') + L".pdf";
    writeFile(L"\\\\?\\" + path, bytes);
    return path;
  }
};

TEST_F(Opening, TheEmptyWindowOffersToOpenAFile) {
  start();
  EXPECT_EQ(title(), L"Quillmere");
  EXPECT_TRUE(zoomTextBecomes(L"Zoom: 100%"));
  EXPECT_EQ(status(2), L"");
  EXPECT_EQ(status(3), L"  v1.4.3.242");
  EXPECT_FALSE(IsWindowEnabled(childOf(window, 403)));
  const RECT area = pageArea();
  EXPECT_TRUE(eventually([&] { return client().count(area, kPlaceholder) > 100; }));
  EXPECT_TRUE(pixelBecomes(area.left, area.top, kBackground));
  const RECT text = client().extent(kPlaceholder);
  ASSERT_FALSE(IsRectEmpty(&text));
  EXPECT_NEAR((text.left + text.right) / 2, (area.left + area.right) / 2, 3);
  EXPECT_NEAR((text.top + text.bottom) / 2, (area.top + area.bottom) / 2, 8);
}

TEST_F(Opening, AClickOnThePlaceholderOpensTheDialog) {
  const std::wstring path = makeFile(L"one.pdf", coloredPdf(3));
  start();
  toFront();
  const RECT area = pageArea();
  ASSERT_TRUE(eventually([&] { return client().count(area, kPlaceholder) > 100; }));
  click(middleOf(area));
  const HWND dialog = waitForFileDialog(program);
  ASSERT_NE(dialog, nullptr);
  picture("Opening.Dialog");
  EXPECT_TRUE(chooseInFileDialog(dialog, path));
  EXPECT_TRUE(titleBecomes(L"Quillmere - one.pdf"));
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 3"));
}

TEST_F(Opening, AClickBesideThePlaceholderOpensNothing) {
  start();
  toFront();
  const RECT area = pageArea();
  click(onScreen(area.left + 40, area.top + 40));
  press(VK_F6);
  EXPECT_TRUE(becomesChecked(302));
  EXPECT_EQ(program.find(L"#32770"), nullptr);
}

TEST_F(Opening, CtrlOOpensSeveralFilesAndShowsTheFirst) {
  const std::wstring one = makeFile(L"one.pdf", coloredPdf(1));
  const std::wstring two = makeFile(L"two.pdf", coloredPdf(2));
  start();
  toFront();
  press('O', kCtrl);
  const HWND dialog = waitForFileDialog(program);
  ASSERT_NE(dialog, nullptr);
  EXPECT_TRUE(chooseInFileDialog(dialog, inQuotes(one) + L" " + inQuotes(two)));
  EXPECT_TRUE(titleBecomes(L"Quillmere - one.pdf"));
}

TEST_F(Opening, ACancelledDialogChangesNothing) {
  startWith(coloredPdf(2));
  press('O', kCtrl);
  const HWND dialog = waitForFileDialog(program);
  ASSERT_NE(dialog, nullptr);
  EXPECT_TRUE(cancelFileDialog(dialog));
  press(VK_NEXT);
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 2"));
  EXPECT_EQ(title(), L"Quillmere - one.pdf");
}

TEST_F(Opening, ADropOfSeveralFilesShowsTheFirst) {
  const std::wstring one = makeFile(L"one.pdf", coloredPdf(1));
  const std::wstring two = makeFile(L"two.pdf", coloredPdf(2));
  start();
  dropFiles(window, {400, 100}, {one, two});
  EXPECT_TRUE(titleBecomes(L"Quillmere - one.pdf"));
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 1"));
}

TEST_F(Opening, ADropOnAPaneOpensThere) {
  const std::wstring one = makeFile(L"one.pdf", coloredPdf(1));
  const std::wstring two = makeFile(L"two.pdf", coloredPdf(2));
  start();
  toFront();
  press(VK_F8);
  ASSERT_TRUE(becomesChecked(304));
  dropFiles(window, {rightPane().left + 50, 100}, {two});
  EXPECT_TRUE(titleBecomes(L"Quillmere -  | two.pdf"));
  // Over the left panel there is no pane, so the left one gets the file.
  dropFiles(window, {20, 100}, {one});
  EXPECT_TRUE(titleBecomes(L"Quillmere - one.pdf | two.pdf"));
  EXPECT_TRUE(pageTextBecomes(L"L:1/1  R:1/2"));
}

TEST_F(Opening, OpeningPagingAndClosingNeverWritesToTheFile) {
  const std::string bytes = coloredPdf(3);
  startWith(bytes);
  const std::wstring path = scenarioFolder() + L"\\one.pdf";
  const FILETIME before = lastWrite(path);
  press(VK_NEXT);
  press(VK_ADD);
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 3"));
  press('W', kCtrl);
  EXPECT_TRUE(titleBecomes(L"Quillmere"));
  EXPECT_EQ(readFile(path), bytes);
  const FILETIME after = lastWrite(path);
  EXPECT_EQ(CompareFileTime(&before, &after), 0);
}

TEST_F(Opening, ClosingWithNothingOpenDoesNothing) {
  start();
  toFront();
  press('W', kCtrl);
  expectGoesOn();
}

TEST_F(Opening, GarbageIsRefused) {
  expectRefused(makeFile(L"bad.pdf", test::garbageFile()), loadFailure(3));
}

TEST_F(Opening, AnEmptyFileIsRefused) {
  expectRefused(makeFile(L"bad.pdf", test::emptyFile()), loadFailure(3));
}

TEST_F(Opening, ATruncatedFileIsRefused) {
  expectRefused(makeFile(L"bad.pdf", test::truncatedPdf()), loadFailure(3));
}

TEST_F(Opening, AFileWithPasswordIsRefused) {
  expectRefused(makeFile(L"bad.pdf", test::passwordProtectedPdf()), loadFailure(4));
}

TEST_F(Opening, AFolderIsRefused) {
  CreateDirectoryW((scenarioFolder() + L"\\folder.pdf").c_str(), nullptr);
  expectRefused(scenarioFolder() + L"\\folder.pdf", loadFailure(2));
}

TEST_F(Opening, AFileThatWentAwayIsRefused) {
  const std::wstring path = makeFile(L"gone.pdf", coloredPdf(1));
  start();
  DeleteFileW(path.c_str());
  sendPathAndReturn(window, path);
  EXPECT_TRUE(boxSays(loadFailure(2)));
  expectGoesOn();
}

TEST_F(Opening, AFileThatAnotherProgramHoldsIsRefused) {
  const std::wstring path = makeFile(L"held.pdf", coloredPdf(1));
  const HANDLE held = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                  OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(held, INVALID_HANDLE_VALUE);
  expectRefused(path, loadFailure(2));
  CloseHandle(held);
}

TEST_F(Opening, WrongOffsetsAreRepaired) {
  startWith(test::wrongOffsetsPdf(2));
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 2"));
}

TEST_F(Opening, AFileWithoutPagesIsSurvived) {
  start(inQuotes(makeFile(L"bare.pdf", test::zeroPagePdf())));
  ASSERT_TRUE(titleBecomes(L"Quillmere - bare.pdf"));
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 0"));
  const RECT area = pageArea();
  EXPECT_TRUE(eventually([&] { return client().isFilledWith(area, kBackground); }));
  toFront();
  press(VK_NEXT);
  press(VK_END);
  press('R');
  press('A', kCtrl);
  expectGoesOn();
}

TEST_F(Opening, APageTreeThatContainsItselfIsSurvived) {
  const std::wstring path = makeFile(L"cycle.pdf", test::cyclicPageTreePdf());
  start(inQuotes(path));
  ASSERT_TRUE(eventually(
      [&] { return boxNow(program).window != nullptr || title() == L"Quillmere - cycle.pdf"; }));
  const Box box = boxNow(program);
  if (box.window != nullptr) {
    EXPECT_TRUE(answerBox(box, VK_RETURN));
  }
  expectGoesOn();
}

TEST_F(Opening, TenThousandPagesAreWalkedToTheLast) {
  startWith(test::manyPagesPdf(10000));
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 10000"));
  press(VK_END);
  EXPECT_TRUE(pageTextBecomes(L"Page 10000 of 10000"));
}

TEST_F(Opening, AHugePageStaysWithinTheZoomLimitsAndTheProgramGoesOn) {
  startWith(test::hugePagePdf());
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 1"));
  EXPECT_TRUE(zoomTextBecomes(L"Zoom: 20%"));
  expectGoesOn();
}

TEST_F(Opening, APathOf259UnitsOpens) {
  const std::wstring path = longPath(259, coloredPdf(2));
  start(inQuotes(path));
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 2"));
}

TEST_F(Opening, APathOf260UnitsIsTooLong) {
  const std::wstring path = longPath(260, coloredPdf(2));
  start();
  sendPathAndReturn(window, path);
  EXPECT_TRUE(boxSays(kTooLong));
  expectGoesOn();
}

TEST_F(Opening, AFailedOpenLeavesAnEmptyWindow) {
  startWith(coloredPdf(2));
  sendPathAndReturn(window, makeFile(L"bad.pdf", test::garbageFile()));
  EXPECT_TRUE(boxSays(loadFailure(3)));
  EXPECT_TRUE(titleBecomes(L"Quillmere"));
  EXPECT_EQ(status(2), L"");
}

TEST_F(Opening, AFailedOpenInAPaneOfTwoDocumentsKeepsThePane) {
  startWith(coloredPdf(2));
  press(VK_F8);
  ASSERT_TRUE(becomesChecked(304));
  dropFiles(window, {leftPane().left + 50, 100}, {makeFile(L"bad.pdf", test::garbageFile())});
  EXPECT_TRUE(boxSays(loadFailure(3)));
  EXPECT_TRUE(titleBecomes(L"Quillmere - one.pdf | "));
  EXPECT_TRUE(pageTextBecomes(L"L:1/2  R:1/0"));
}

}  // namespace
}  // namespace quillmere::e2e
