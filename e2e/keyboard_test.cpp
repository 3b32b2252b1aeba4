#include "driver/find_scenario.h"
#include "driver/other_window.h"

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
  void lookAtAnotherProgramAndBack() const { lookAtAnotherProgramAndBackTo(window); }
  static void lookAtAnotherProgramAndBackTo(HWND shown) {
    const OtherWindow other;
    ASSERT_TRUE(other.comesToFront());
    ASSERT_TRUE(bringToFront(shown));
  }
  HWND dialogComes(const wchar_t* className) const {
    HWND dialog = nullptr;
    eventually([&] { return (dialog = program.find(className)) && IsWindowVisible(dialog); });
    return dialog;
  }
  bool isTypedInto(HWND dialog, int id) const {
    return eventually([&] { return focusOf(dialog) == GetDlgItem(dialog, id); });
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

TEST_F(Keyboard, WhoTypesANoteGoesOnTypingAfterALookAtAnotherProgram) {
  constexpr int kNoteText = 1002;
  constexpr int kOkButton = 1;
  test::PdfPage page = linedPage({"stone"}, kPage);
  page.annotations = {
      "<< /Type /Annot /Subtype /Highlight /F 4 /C [1 1 0] /Rect [0 0 300 400] "
      "/QuadPoints [0 400 300 400 0 0 300 0] >>"};
  startWith(test::buildPdf({page}));
  click(middleOf(pageArea()), Button::Right);
  ASSERT_TRUE(eventually([] { return FindWindowW(L"#32768", nullptr) != nullptr; }));
  press(VK_DOWN);
  press(VK_RETURN);
  const HWND dialog = dialogComes(L"QuillmereNoteDlg");
  ASSERT_NE(dialog, nullptr);
  ASSERT_TRUE(isTypedInto(dialog, kNoteText));
  type(L"sto");
  ASSERT_TRUE(inputIsHandled(dialog));
  lookAtAnotherProgramAndBackTo(dialog);
  EXPECT_TRUE(isTypedInto(dialog, kNoteText));
  type(L"ne");
  EXPECT_TRUE(eventually([&] { return controlText(GetDlgItem(dialog, kNoteText)) == L"stone"; }));
  press(VK_TAB);
  ASSERT_TRUE(isTypedInto(dialog, kOkButton));
  lookAtAnotherProgramAndBackTo(dialog);
  EXPECT_TRUE(isTypedInto(dialog, kOkButton));
  press(VK_ESCAPE);
  EXPECT_TRUE(eventually([&] { return program.find(L"QuillmereNoteDlg") == nullptr; }));
}

TEST_F(Keyboard, TheListOfColoursHasItAgainAfterALookAtAnotherProgram) {
  constexpr int kStrikeColor = 1002;
  startWith(coloredPdf(3));
  press('M', kCtrl);
  const HWND dialog = dialogComes(L"QuillmereMarkupDlg");
  ASSERT_NE(dialog, nullptr);
  ASSERT_TRUE(isTypedInto(dialog, 1001));
  press(VK_TAB);
  ASSERT_TRUE(isTypedInto(dialog, kStrikeColor));
  lookAtAnotherProgramAndBackTo(dialog);
  EXPECT_TRUE(isTypedInto(dialog, kStrikeColor));
  // The page is another window of the same program.
  toFront();
  ASSERT_TRUE(keyboardGoesTo(0));
  ASSERT_TRUE(bringToFront(dialog));
  EXPECT_TRUE(isTypedInto(dialog, kStrikeColor));
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

TEST_F(Keyboard, TheStampPanelHasItAgainAfterALookAtAnotherProgram) {
  startWith(coloredPdf(3));
  press(VK_F4);
  const HWND panel = childOf(window, 402);
  ASSERT_TRUE(eventually([&] { return IsWindowVisible(panel) != FALSE; }));
  const auto panelHasKeyboard = [&] {
    return eventually([&] { return focusOf(window) == panel; });
  };
  // Below its buttons, on the date stamp.
  const RECT area = clientOnScreen(panel);
  click({(area.left + area.right) / 2, area.top + dip(110)});
  ASSERT_TRUE(panelHasKeyboard());
  lookAtAnotherProgramAndBack();
  EXPECT_TRUE(panelHasKeyboard());
  press(VK_NEXT);
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 3"));
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
