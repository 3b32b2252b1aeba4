#include <algorithm>
#include <set>

#include "driver/tree_scenario.h"

namespace quillmere::e2e {
namespace {

constexpr Size kPage{612, 792};
constexpr double kBaseline = 200;  // points from the top
constexpr double kTextLeft = 72;   // points
constexpr std::uint32_t kYellow = rgb(0xFF, 0xEB, 0x3C);
constexpr std::uint32_t kGreen = rgb(0x82, 0xE6, 0x82);
constexpr std::uint32_t kRed = rgb(0xEB, 0x50, 0x50);
constexpr std::uint32_t kTipColor = rgb(255, 247, 153);
constexpr wchar_t kNoteDialog[] = L"QuillmereNoteDlg";
constexpr int kNoteText = 1002;
constexpr wchar_t kMarkupDialog[] = L"QuillmereMarkupDlg";

class Markup : public TreeScenario {
 protected:
  void startWithText(const std::string& text) {
    startWith(markedPdf(2, kPage.width, kPage.height, text, kBaseline));
    press('A');
    page = placedPage(pageArea(), kPage, 1);
    ASSERT_TRUE(pageBecomes(pageArea(), clipped(page, pageArea())));
  }
  // The same line, with more bookmarks in the tree than it has room for.
  void startWithBookmarks(const std::string& text) {
    test::PdfPage sheet;
    sheet.width = kPage.width;
    sheet.height = kPage.height;
    sheet.content = test::textContent(text, kTextLeft, kPage.height - kBaseline, 24, "F3");
    test::PdfOptions options;
    for (int i = 1; i <= 120; ++i) {
      const std::string number = std::to_string(i);
      options.outline.push_back(
          {u"Chapter " + std::u16string(number.begin(), number.end()), "", {}});
    }
    startGrouped(false, test::buildPdf({sheet}, options));
    press('A');
    page = placedPage(pageArea(), kPage, 1);
    ASSERT_TRUE(pageBecomes(pageArea(), clipped(page, pageArea())));
  }
  // The centre of a character of the line, counted from 0, on the screen.
  POINT character(int index) const {
    const double x = kTextLeft + (index + 0.5) * kCourierAdvance;
    return onScreen(page.left + static_cast<int>(x), page.top + static_cast<int>(kBaseline) - 6);
  }
  ::testing::AssertionResult markedPixelsBecome(std::uint32_t color, bool some) const {
    int seen = 0;
    if (eventually([&] {
          seen = client().countAlike(pageArea(), color);
          return some ? seen > 200 : seen == 0;
        })) {
      return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << seen << " pixels of the mark's colour";
  }
  HWND dialogComes(const wchar_t* className) const {
    HWND dialog = nullptr;
    eventually([&] { return (dialog = program.find(className)) && IsWindowVisible(dialog); });
    return dialog;
  }
  bool dialogGoes(const wchar_t* className) const {
    return eventually([&] { return program.find(className) == nullptr; });
  }
  // Chooses a row of the context menu by the arrow keys, counted from 1.
  void chooseInContextMenu(POINT place, int row) const {
    click(place, Button::Right);
    ASSERT_TRUE(eventually([] { return FindWindowW(L"#32768", nullptr) != nullptr; }));
    for (int i = 0; i < row; ++i) press(VK_DOWN);
    press(VK_RETURN);
  }
  // Moves to the place from beside it. A movement during the handling of another would be lost.
  void hover(POINT place) const {
    movePointer({place.x - 3, place.y});
    ASSERT_TRUE(inputIsHandled(window));
    movePointer(place);
    ASSERT_TRUE(inputIsHandled(window));
  }

  RECT page{};
};

TEST_F(Markup, AMarkIsMadeNotedFoundAgainAndRemoved) {
  startWithText("Quill and page");
  drag(character(0), character(4));
  press(VK_SPACE);
  ASSERT_TRUE(markedPixelsBecome(kYellow, true));

  chooseInContextMenu(character(2), 1);
  const HWND dialog = dialogComes(kNoteDialog);
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(titleOf(dialog), L"Annotation Note");
  type(L"check this");
  press(VK_RETURN);
  type(L"twice");
  ASSERT_TRUE(inputIsHandled(window));
  picture("Markup.NoteDialog");
  press(VK_TAB);
  press(VK_RETURN);
  ASSERT_TRUE(dialogGoes(kNoteDialog));

  const POINT place = character(2);
  hover(place);
  ASSERT_TRUE(eventually([&] { return shownTip() != nullptr; }));
  const RECT tip = windowRect(shownTip());
  EXPECT_EQ(tip.left, place.x + dip(16));
  EXPECT_EQ(tip.top, place.y + dip(20));
  EXPECT_LE(tip.right - tip.left, dip(400));
  EXPECT_TRUE(eventually([&] { return screenPixel({tip.left + 2, tip.top + 2}) == kTipColor; }));
  EXPECT_EQ(controlText(shownTip()), L"check this\r\ntwice");
  picture("Markup.Tip");
  press(VK_SHIFT);
  EXPECT_TRUE(eventually([&] { return shownTip() == nullptr; }));

  chooseInContextMenu(place, 1);
  const HWND again = dialogComes(kNoteDialog);
  ASSERT_NE(again, nullptr);
  ASSERT_TRUE(eventually([&] { return focusOf(again) == GetDlgItem(again, kNoteText); }));
  EXPECT_EQ(controlText(GetDlgItem(again, kNoteText)), L"check this\r\ntwice");
  press(VK_ESCAPE);
  ASSERT_TRUE(dialogGoes(kNoteDialog));

  chooseInContextMenu(place, 2);
  EXPECT_TRUE(markedPixelsBecome(kYellow, false));
  hover(place);
  EXPECT_EQ(shownTip(), nullptr);
}

TEST_F(Markup, TheDialogChangesWhatNewMarksLookLike) {
  startWithText("Quill and page");
  press('M', kCtrl);
  const HWND dialog = dialogComes(kMarkupDialog);
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(titleOf(dialog), L"Mark Up");
  ASSERT_TRUE(eventually([&] { return focusOf(dialog) == GetDlgItem(dialog, 1001); }));
  EXPECT_EQ(SendDlgItemMessageW(dialog, 1001, CB_GETCOUNT, 0, 0), 7);
  EXPECT_EQ(SendDlgItemMessageW(dialog, 1002, CB_GETCURSEL, 0, 0), 6);
  press(VK_DOWN);
  EXPECT_TRUE(eventually([] { return setting(L"Markup", L"HlColorIdx") == L"1"; }));
  press(VK_TAB);
  press(VK_TAB);
  press(VK_PRIOR);
  EXPECT_TRUE(eventually([] { return setting(L"Markup", L"HlOpacity") == L"90"; }));
  EXPECT_EQ(controlText(GetDlgItem(dialog, 1004)), L"90%");
  press(VK_NEXT);
  EXPECT_TRUE(eventually([] { return setting(L"Markup", L"HlOpacity") == L"100"; }));
  ASSERT_TRUE(inputIsHandled(window));
  picture("Markup.Dialog");

  SetWindowPos(dialog, nullptr, dip(500), dip(400), 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  press('M', kCtrl);
  ASSERT_TRUE(dialogGoes(kMarkupDialog));
  EXPECT_EQ(setting(L"Markup", L"DlgX"), std::to_wstring(dip(500)));
  toFront();
  press('M', kCtrl);
  const HWND again = dialogComes(kMarkupDialog);
  ASSERT_NE(again, nullptr);
  EXPECT_EQ(windowRect(again).left, dip(500));
  EXPECT_EQ(windowRect(again).top, dip(400));
  press(VK_ESCAPE);
  ASSERT_TRUE(dialogGoes(kMarkupDialog));

  toFront();
  drag(character(0), character(4));
  press(VK_SPACE);
  EXPECT_TRUE(markedPixelsBecome(kGreen, true));
}

TEST_F(Markup, ADragOfTheOpacityIsSavedWhenTheButtonIsReleased) {
  startWithText("Quill and page");
  press('M', kCtrl);
  const HWND dialog = dialogComes(kMarkupDialog);
  ASSERT_NE(dialog, nullptr);
  ASSERT_TRUE(eventually([&] { return focusOf(dialog) == GetDlgItem(dialog, 1001); }));
  const HWND percent = GetDlgItem(dialog, 1004);
  ASSERT_EQ(controlText(percent), L"100%");
  const std::wstring before = setting(L"Markup", L"HlOpacity");
  const RECT slider = windowRect(GetDlgItem(dialog, 1003));
  const POINT thumb{slider.right - dip(13), (slider.top + slider.bottom) / 2};
  pressButton(thumb);
  std::set<std::wstring> shown;
  for (int step = 1; step <= 10; ++step) {
    movePointer({thumb.x - step * dip(8), thumb.y});
    ASSERT_TRUE(inputIsHandled(dialog));
    shown.insert(controlText(percent));
    EXPECT_EQ(setting(L"Markup", L"HlOpacity"), before);
  }
  EXPECT_GE(shown.size(), 5u) << "the value does not follow the pointer";
  releaseButton({thumb.x - 10 * dip(8), thumb.y});
  ASSERT_TRUE(inputIsHandled(dialog));
  const std::wstring last = controlText(percent);
  EXPECT_NE(last, L"100%");
  EXPECT_EQ(settled([] { return setting(L"Markup", L"HlOpacity") + L"%"; }, last), last);
  picture("Markup.Dragged");
}

TEST_F(Markup, EscapeInThePageClosesTheDialogAndClosingTheWindowKeepsItsPlace) {
  startWithText("Quill and page");
  press('M', kCtrl);
  ASSERT_NE(dialogComes(kMarkupDialog), nullptr);
  toFront();
  press(VK_ESCAPE);
  ASSERT_TRUE(dialogGoes(kMarkupDialog));
  press('M', kCtrl);
  const HWND dialog = dialogComes(kMarkupDialog);
  ASSERT_NE(dialog, nullptr);
  SetWindowPos(dialog, nullptr, dip(300), dip(250), 0, 0, SWP_NOSIZE | SWP_NOZORDER);
  PostMessageW(window, WM_CLOSE, 0, 0);
  EXPECT_EQ(program.exitCode(), 0u);
  EXPECT_EQ(setting(L"Markup", L"DlgX"), std::to_wstring(dip(300)));
  EXPECT_EQ(setting(L"Markup", L"DlgY"), std::to_wstring(dip(250)));
}

class MarkupInTree : public Markup {
 protected:
  // Opens the Markups group at the end of the tree and selects a row above it.
  void openGroupAndSelectAbove() {
    clickRow(L"Chapter 1");
    ASSERT_TRUE(rowSelected(L"Chapter 1"));
    press(VK_END);
    ASSERT_TRUE(rowSelected(L"Markups"));
    press(VK_RIGHT);
    ASSERT_TRUE(markRowsBecome({L"1|(no markups)"}));
    const RECT area = windowRect(tree());
    const POINT middle{(area.left + area.right) / 2, (area.top + area.bottom) / 2};
    for (int i = 0; i < 3; ++i) turnWheel(middle, 120);
    ASSERT_TRUE(inputIsHandled(window));
    clickRow(kSelected);
    ASSERT_TRUE(rowSelected(kSelected));
    selectedPlace = rowPlace(kSelected);
    const RECT first = treeRowOnScreen(window, tree(), L"Chapter 1");
    ASSERT_TRUE(IsRectEmpty(&first)) << "the tree has room for all rows";
  }
  // Waits for the rows of the group.
  ::testing::AssertionResult markRowsBecome(const std::vector<std::wstring>& wanted) const {
    std::vector<std::wstring> seen;
    if (eventually([&] {
          seen = rows();
          const auto group = std::find(seen.begin(), seen.end(), L"0|Markups");
          seen.erase(seen.begin(), group == seen.end() ? group : group + 1);
          return seen == wanted;
        })) {
      return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << ::testing::PrintToString(seen);
  }
  void expectTreeUnmoved() const {
    EXPECT_TRUE(rowSelected(kSelected));
    EXPECT_EQ(treeRowOnScreen(window, tree(), kSelected), selectedPlace);
  }
  void highlight(int first, int last) const {
    drag(character(first), character(last));
    press(VK_SPACE);
  }
  // Types into the note of the mark at a place, which is opened for that.
  void typeNote(POINT place, const std::wstring& text) const {
    chooseInContextMenu(place, 1);
    const HWND dialog = dialogComes(kNoteDialog);
    ASSERT_NE(dialog, nullptr);
    ASSERT_TRUE(eventually([&] { return focusOf(dialog) == GetDlgItem(dialog, kNoteText); }));
    type(text);
    press(VK_TAB);
    press(VK_RETURN);
    ASSERT_TRUE(dialogGoes(kNoteDialog));
  }

  static constexpr wchar_t kSelected[] = L"Chapter 108";
  RECT selectedPlace{};
};

TEST_F(MarkupInTree, ItsRowsFollowTheMarksAndTheRestOfTheTreeStaysAsItIs) {
  startWithBookmarks("Quill and page");
  ASSERT_NO_FATAL_FAILURE(openGroupAndSelectAbove());
  highlight(0, 4);
  EXPECT_TRUE(markRowsBecome({L"1|Quill"}));
  expectTreeUnmoved();
  highlight(10, 13);
  EXPECT_TRUE(markRowsBecome({L"1|Quill", L"1|page"}));
  expectTreeUnmoved();
  typeNote(character(2), L"check this");
  EXPECT_TRUE(markRowsBecome({L"1|Quill - check this", L"1|page"}));
  expectTreeUnmoved();
  picture("noted");
  // The note is selected when it opens, so typing replaces it.
  typeNote(character(2), L"done");
  EXPECT_TRUE(markRowsBecome({L"1|Quill - done", L"1|page"}));
  chooseInContextMenu(character(2), 2);
  EXPECT_TRUE(markRowsBecome({L"1|page"}));
  expectTreeUnmoved();
  chooseInContextMenu(character(12), 2);
  EXPECT_TRUE(markRowsBecome({L"1|(no markups)"}));
  expectTreeUnmoved();
}

// A paper under the system's highlight colour at 130 of 255.
std::uint32_t selectedPaper() {
  const COLORREF highlight = GetSysColor(COLOR_HIGHLIGHT);
  return mixed(rgb(GetRValue(highlight), GetGValue(highlight), GetBValue(highlight)), 130, kPaper);
}

class TurnedMarkup : public Markup {
 protected:
  void markAll(int degrees) {
    test::PdfPage sheet = linedPage({"Quill and page", "a second line"}, kPage);
    sheet.rotate = degrees;
    startWith(test::buildPdf({sheet}));
    press('A', kCtrl);
    const RECT area = pageArea();
    ASSERT_TRUE(eventually([&] { return client().countAlike(area, selectedPaper()) > 200; }));
    const RECT selected = client().extentAlike(area, selectedPaper());
    press(VK_SPACE);
    ASSERT_TRUE(markedPixelsBecome(kYellow, true));
    const RECT marked = client().extentAlike(area, kYellow);
    EXPECT_NEAR(marked.left, selected.left, 2);
    EXPECT_NEAR(marked.top, selected.top, 2);
    EXPECT_NEAR(marked.right, selected.right, 2);
    EXPECT_NEAR(marked.bottom, selected.bottom, 2);
    press('A', kCtrl);
    press(VK_SPACE, kCtrl);
    EXPECT_TRUE(eventually([&] {
      const Picture now = client();
      return now.countAlike(area, kRed) > 50 && now.countAlike(area, selectedPaper()) == 0;
    }));
  }
};

TEST_F(TurnedMarkup, LiesOnTheWordsOfAnUprightPage) {
  markAll(0);
}
TEST_F(TurnedMarkup, LiesOnTheWordsOfAPageTurnedOnce) {
  markAll(90);
}
TEST_F(TurnedMarkup, LiesOnTheWordsOfAPageUpsideDown) {
  markAll(180);
}
TEST_F(TurnedMarkup, LiesOnTheWordsOfAPageTurnedThrice) {
  markAll(270);
}

}  // namespace
}  // namespace quillmere::e2e
