#include "driver/find_scenario.h"

namespace quillmere::e2e {
namespace {

constexpr Size kPage{300, 400};

// Files that another launch hands over while something of this one is up.
class Waiting : public FindScenario {
 protected:
  void handOver(const std::wstring& name, int pages) {
    sendPath(window, makeFile(name, coloredPdf(pages)));
  }
  ::testing::AssertionResult stillShows(const std::wstring& name) const {
    if (!inputIsHandled(window)) return ::testing::AssertionFailure() << "no answer";
    if (title() == L"Quillmere - " + name) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << ::testing::PrintToString(title());
  }
  // A tree captures the mouse until the button is released.
  bool mouseIsWith(HWND control) const {
    GUITHREADINFO info{};
    info.cbSize = sizeof(info);
    return GetGUIThreadInfo(GetWindowThreadProcessId(control, nullptr), &info) &&
           info.hwndCapture == control;
  }
  bool menuIsOpen() const {
    return eventually([] { return FindWindowW(L"#32768", nullptr) != nullptr; });
  }
};

TEST_F(Waiting, ForABox) {
  startWith(coloredPdf(2));
  sendPathAndReturn(window, scenarioFolder() + L"\\" + std::wstring(300, L'x'));
  const Box box = waitForBox(program);
  ASSERT_NE(box.window, nullptr);
  handOver(L"two.pdf", 3);
  EXPECT_TRUE(stillShows(L"one.pdf"));
  ASSERT_TRUE(answerBox(box, VK_RETURN));
  EXPECT_TRUE(titleBecomes(L"Quillmere - two.pdf"));
}

TEST_F(Waiting, ForAFileDialog) {
  startWith(coloredPdf(2));
  press('O', kCtrl);
  const HWND dialog = waitForFileDialog(program);
  ASSERT_NE(dialog, nullptr);
  handOver(L"two.pdf", 3);
  EXPECT_TRUE(stillShows(L"one.pdf"));
  ASSERT_TRUE(cancelFileDialog(dialog));
  EXPECT_TRUE(titleBecomes(L"Quillmere - two.pdf"));
}

TEST_F(Waiting, ForAContextMenu) {
  startWith(coloredPdf(2));
  click(middleOf(pageArea()), Button::Right);
  ASSERT_TRUE(menuIsOpen());
  handOver(L"two.pdf", 3);
  EXPECT_EQ(title(), L"Quillmere - one.pdf");
  press(VK_ESCAPE);
  EXPECT_TRUE(titleBecomes(L"Quillmere - two.pdf"));
}

TEST_F(Waiting, ForTheMenuBar) {
  startWith(coloredPdf(2));
  press('F', kAlt);
  ASSERT_TRUE(menuIsOpen());
  handOver(L"two.pdf", 3);
  EXPECT_EQ(title(), L"Quillmere - one.pdf");
  press(VK_ESCAPE);
  press(VK_ESCAPE);
  EXPECT_TRUE(titleBecomes(L"Quillmere - two.pdf"));
}

TEST_F(Waiting, ForTheMenuOfTheFindField) {
  startWith(coloredPdf(2));
  openFindBar();
  const RECT field = windowRect(control(kField));
  click({(field.left + field.right) / 2, (field.top + field.bottom) / 2}, Button::Right);
  ASSERT_TRUE(menuIsOpen());
  handOver(L"two.pdf", 3);
  EXPECT_EQ(title(), L"Quillmere - one.pdf");
  press(VK_ESCAPE);
  EXPECT_TRUE(titleBecomes(L"Quillmere - two.pdf"));
}

TEST_F(Waiting, ForTheNoteDialog) {
  test::PdfPage page = coloredPage(0, kPage);
  page.annotations = {
      "<< /Type /Annot /Subtype /Highlight /F 4 /C [1 1 0] /Rect [0 0 300 400] "
      "/QuadPoints [0 400 300 400 0 0 300 0] >>"};
  startWith(test::buildPdf({page}));
  click(middleOf(pageArea()), Button::Right);
  ASSERT_TRUE(menuIsOpen());
  press(VK_DOWN);
  press(VK_RETURN);
  HWND dialog = nullptr;
  ASSERT_TRUE(eventually([&] {
    dialog = program.find(L"QuillmereNoteDlg");
    return dialog != nullptr && IsWindowVisible(dialog);
  }));
  handOver(L"two.pdf", 3);
  EXPECT_TRUE(stillShows(L"one.pdf"));
  ASSERT_TRUE(bringToFront(dialog));
  press(VK_ESCAPE);
  EXPECT_TRUE(titleBecomes(L"Quillmere - two.pdf"));
}

TEST_F(Waiting, AChosenCommandActsOnTheFileItWasChosenFor) {
  startWith(coloredPdf(2));
  press('F', kAlt);
  ASSERT_TRUE(menuIsOpen());
  handOver(L"two.pdf", 3);
  press('C');  // Close
  EXPECT_TRUE(titleBecomes(L"Quillmere - two.pdf"));
  EXPECT_TRUE(stillShows(L"two.pdf"));
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 3"));
}

TEST_F(Waiting, ForAPressOnATree) {
  test::PdfOptions options;
  options.outline = {{u"First", test::pageDestination(1), {}}};
  startWith(test::buildPdf({coloredPage(0, kPage), coloredPage(1, kPage)}, options));
  const HWND tree = childOf(window, 401);
  RECT row{};
  ASSERT_TRUE(eventually([&] {
    row = treeRowOnScreen(window, tree, L"First");
    return !IsRectEmpty(&row);
  }));
  const POINT place{row.left + 4, (row.top + row.bottom) / 2};
  movePointer(place);
  pressButton(place);
  EXPECT_TRUE(eventually([&] { return mouseIsWith(tree); }));
  handOver(L"two.pdf", 3);
  EXPECT_EQ(title(), L"Quillmere - one.pdf");
  releaseButton(place);
  EXPECT_TRUE(titleBecomes(L"Quillmere - two.pdf"));
}

TEST_F(Waiting, ARequestToCloseWaitsForABoxAndLoggingOffDoesNot) {
  startWith(coloredPdf(2));
  sendPathAndReturn(window, scenarioFolder() + L"\\" + std::wstring(300, L'x'));
  const Box box = waitForBox(program);
  ASSERT_NE(box.window, nullptr);
  PostMessageW(window, WM_CLOSE, 0, 0);
  EXPECT_TRUE(stillShows(L"one.pdf"));
  EXPECT_TRUE(SendMessageW(window, WM_QUERYENDSESSION, 0, 0));
  ASSERT_TRUE(answerBox(box, VK_RETURN));
  EXPECT_EQ(program.exitCode(), 0u);
}

}  // namespace
}  // namespace quillmere::e2e
