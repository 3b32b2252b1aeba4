#include "driver/find_scenario.h"

namespace quillmere::e2e {
namespace {

using test::pageDestination;

constexpr Size kPage{300, 400};

std::string outlinedPdf() {
  std::vector<test::PdfPage> pages;
  for (int i = 0; i < 4; ++i) pages.push_back(coloredPage(i, kPage));
  test::PdfOptions options;
  options.outline = {{u"First", pageDestination(1), {}}, {u"Third", pageDestination(3), {}}};
  return test::buildPdf(pages, options);
}

// Another program's window, which the tests themselves show.
class OtherWindow {
 public:
  OtherWindow()
      : window_(CreateWindowExW(0, L"STATIC", L"Other", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 200,
                                100, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr)) {}
  ~OtherWindow() { DestroyWindow(window_); }
  OtherWindow(const OtherWindow&) = delete;
  OtherWindow& operator=(const OtherWindow&) = delete;

  bool comesToFront() const {
    return eventually([&] {
      MSG message;
      while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
      SetForegroundWindow(window_);
      return GetForegroundWindow() == window_;
    });
  }

 private:
  HWND window_;
};

// Where the keyboard is after something else had it.
class Keyboard : public FindScenario {
 protected:
  HWND tree() const { return childOf(window, 401); }
  bool treeHasKeyboard() const {
    return eventually([&] { return focusOf(window) == tree(); });
  }
  void clickFirstBookmark() {
    RECT row{};
    ASSERT_TRUE(eventually([&] {
      row = treeRowOnScreen(window, tree(), L"First");
      return !IsRectEmpty(&row);
    }));
    click({row.left + 4, (row.top + row.bottom) / 2});
    ASSERT_TRUE(treeHasKeyboard());
  }
  void lookAtAnotherProgramAndBack() const {
    const OtherWindow other;
    ASSERT_TRUE(other.comesToFront());
    ASSERT_TRUE(bringToFront(window));
  }
};

TEST_F(Keyboard, WhoTypesInTheFindFieldGoesOnTypingAfterALookAtAnotherProgram) {
  startWith(coloredPdf(3));
  lookFor(L"sto");
  lookAtAnotherProgramAndBack();
  EXPECT_TRUE(keyboardGoesTo(kField));
  type(L"ne");
  EXPECT_TRUE(fieldBecomes(L"stone"));
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 3"));
}

TEST_F(Keyboard, AMinimisedWindowGivesItBackOnceRestored) {
  startWith(coloredPdf(3));
  lookFor(L"sto");
  PostMessageW(window, WM_SYSCOMMAND, SC_MINIMIZE, 0);
  ASSERT_TRUE(eventually([&] { return IsIconic(window) != FALSE; }));
  PostMessageW(window, WM_SYSCOMMAND, SC_RESTORE, 0);
  ASSERT_TRUE(eventually([&] { return !IsIconic(window); }));
  ASSERT_TRUE(bringToFront(window));
  EXPECT_TRUE(keyboardGoesTo(kField));
}

TEST_F(Keyboard, ATreeHasItAgainAfterALookAtAnotherProgram) {
  startWith(outlinedPdf());
  clickFirstBookmark();
  lookAtAnotherProgramAndBack();
  EXPECT_TRUE(treeHasKeyboard());
  press(VK_DOWN);
  EXPECT_TRUE(pageTextBecomes(L"Page 3 of 4"));
}

TEST_F(Keyboard, TheWindowItselfKeepsIt) {
  startWith(outlinedPdf());
  ASSERT_TRUE(keyboardGoesTo(0));
  lookAtAnotherProgramAndBack();
  EXPECT_TRUE(keyboardGoesTo(0));
  press(VK_NEXT);
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 4"));
}

TEST_F(Keyboard, AFieldThatWasHiddenMeanwhileLeavesItToTheWindow) {
  startWith(coloredPdf(3));
  lookFor(L"sto");
  {
    const OtherWindow other;
    ASSERT_TRUE(other.comesToFront());
    SendMessageW(control(kClose), BM_CLICK, 0, 0);
    ASSERT_TRUE(eventually([&] { return !barShown(); }));
    ASSERT_TRUE(bringToFront(window));
  }
  EXPECT_TRUE(keyboardGoesTo(0));
}

TEST_F(Keyboard, ABoxGivesItBackToTheTreeOrTheFindBar) {
  startWith(outlinedPdf());
  clickFirstBookmark();
  const std::wstring missing = scenarioFolder() + L"\\" + std::wstring(300, L'x') + L".pdf";
  sendPathAndReturn(window, missing);
  EXPECT_TRUE(boxSays(L"The file's path is too long to open."));
  EXPECT_TRUE(treeHasKeyboard());

  lookFor(L"a");
  sendPathAndReturn(window, missing);
  EXPECT_TRUE(boxSays(L"The file's path is too long to open."));
  EXPECT_TRUE(keyboardGoesTo(kField));

  press(VK_ESCAPE);
  ASSERT_TRUE(keyboardGoesTo(0));
  sendPathAndReturn(window, missing);
  EXPECT_TRUE(boxSays(L"The file's path is too long to open."));
  EXPECT_TRUE(keyboardGoesTo(0));
}

TEST_F(Keyboard, AFileDialogGivesItBackToTheTree) {
  startWith(outlinedPdf());
  clickFirstBookmark();
  press('O', kCtrl);
  ASSERT_TRUE(cancelFileDialog(waitForFileDialog(program)));
  EXPECT_TRUE(treeHasKeyboard());
}

}  // namespace
}  // namespace quillmere::e2e
