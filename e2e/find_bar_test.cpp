#include <vector>

#include "driver/clipboard.h"
#include "driver/find_scenario.h"

namespace quillmere::e2e {
namespace {

constexpr Size kPage{612, 792};
constexpr std::uint32_t kBottomLine = rgb(160, 160, 160);

struct Row {
  int id;
  const wchar_t* kind;
  DWORD type;  // the lowest style bits, which distinguish the kinds of a class
  const wchar_t* text;
  int x;      // pixels at 96 DPI; from the bar's right edge when negative
  int width;  // pixels at 96 DPI; added to the bar's width when negative
};

constexpr Row kControls[] = {
    {418, L"Button", BS_AUTORADIOBUTTON, L"Find", 10, 48},
    {419, L"Button", BS_AUTORADIOBUTTON, L"RegEx", 62, 62},
    {424, L"Static", SS_ETCHEDVERT, L"", 132, 2},
    {415, L"Button", BS_AUTOCHECKBOX, L"Match case", 142, 94},
    {421, L"Button", BS_AUTOCHECKBOX, L"Whole word", 244, 96},
    {417, L"Static", SS_ETCHEDVERT, L"", 348, 2},
    {416, L"Static", SS_LEFT, L"Search:", 358, 50},
    {410, L"Edit", ES_LEFT, L"", 414, -598},
    {411, L"Button", BS_PUSHBUTTON, L"\u25B2", -182, 28},
    {412, L"Button", BS_PUSHBUTTON, L"\u25BC", -152, 28},
    {413, L"Static", SS_CENTER, L"", -122, 90},
    {414, L"Button", BS_PUSHBUTTON, L"\u00D7", -28, 24},
};

int barHeight() {
  return dip(34);
}

int controlTop() {
  return dip(6);
}

int controlBottom() {
  return controlTop() + dip(22);
}

std::uint32_t systemColor(int index) {
  const COLORREF color = GetSysColor(index);
  return rgb(GetRValue(color), GetGValue(color), GetBValue(color));
}

std::wstring messageFont() {
  NONCLIENTMETRICSW metrics{};
  metrics.cbSize = sizeof(metrics);
  SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
  const LOGFONTW& font = metrics.lfMessageFont;
  return font.lfFaceName + (L'|' + std::to_wstring(font.lfHeight)) + L'|' +
         std::to_wstring(font.lfWeight);
}

class FindBar : public FindScenario {
 protected:
  void startWithLines(const std::vector<std::string>& lines) {
    startWith(test::buildPdf({linedPage(lines, kPage)}));
    ASSERT_TRUE(pageBecomes(pageArea(), fitPage(pageArea(), kPage)));
  }
  RECT inClient(HWND child) const {
    RECT rect = windowRect(child);
    MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&rect), 2);
    return rect;
  }
  void expectControlsInTheirPlaces() const {
    const int width = clientOnScreen(window).right - clientOnScreen(window).left;
    EXPECT_EQ(settled([&] { return inClient(findBar()); }, RECT{0, 0, width, barHeight()}),
              (RECT{0, 0, width, barHeight()}));
    for (const Row& row : kControls) {
      const LONG left = dip(row.x) + (row.x < 0 ? width : 0);
      const LONG right = left + dip(row.width) + (row.width < 0 ? width : 0);
      const RECT wanted{left, controlTop(), right, controlBottom()};
      EXPECT_EQ(settled([&] { return inClient(control(row.id)); }, wanted), wanted) << row.id;
    }
  }
  void goRound(const std::vector<int>& ids, unsigned modifiers) const {
    for (const int id : ids) {
      press(VK_TAB, modifiers);
      EXPECT_TRUE(keyboardGoesTo(id));
    }
  }
};

TEST_F(FindBar, ItsControlsAreWhatTheTableSays) {
  start();
  toFront();
  openFindBar();
  HWND next = GetWindow(findBar(), GW_CHILD);
  for (const Row& row : kControls) {
    ASSERT_NE(next, nullptr) << row.id;
    EXPECT_EQ(GetDlgCtrlID(next), row.id);
    EXPECT_EQ(classOf(next), row.kind) << row.id;
    EXPECT_EQ(GetWindowLongW(next, GWL_STYLE) & SS_TYPEMASK, row.type) << row.id;
    EXPECT_EQ(controlText(next), row.text) << row.id;
    EXPECT_EQ(fontOf(window, next), row.type == SS_ETCHEDVERT ? L"" : messageFont()) << row.id;
    EXPECT_TRUE(IsWindowVisible(next)) << row.id;
    EXPECT_TRUE(IsWindowEnabled(next)) << row.id;
    EXPECT_EQ(isChecked(row.id), row.id == kLiteral) << row.id;
    next = GetWindow(next, GW_HWNDNEXT);
  }
  EXPECT_EQ(next, nullptr);
}

TEST_F(FindBar, ItsControlsKeepTheirPlacesInAWindowOfAnySize) {
  start();
  toFront();
  openFindBar();
  expectControlsInTheirPlaces();
  SetWindowPos(window, nullptr, 0, 0, dip(900), dip(500), SWP_NOMOVE | SWP_NOZORDER);
  expectControlsInTheirPlaces();
  const LONG width = inClient(findBar()).right;
  const std::uint32_t face = systemColor(COLOR_BTNFACE);
  const auto becomesFilled = [&](const RECT& area, std::uint32_t color) {
    return eventually([&] { return client().isFilledWith(area, color); });
  };
  EXPECT_TRUE(becomesFilled({0, barHeight() - 1, width, barHeight()}, kBottomLine));
  EXPECT_TRUE(becomesFilled({0, 0, width, controlTop()}, face));
  EXPECT_TRUE(becomesFilled({0, controlBottom(), width, barHeight() - 1}, face));
  for (const LONG x : {8, 60, 140, 242, 356}) {
    const LONG left = dip(x);
    EXPECT_TRUE(becomesFilled({left - dip(4), 0, left, barHeight() - 1}, face)) << x;
  }
  // Labels have no colour of their own.
  EXPECT_TRUE(pixelBecomes(dip(358), controlTop(), face));
  EXPECT_TRUE(pixelBecomes(width - dip(122), controlTop(), face));
}

TEST_F(FindBar, ThePageLiesBelowItAndTakesItsRoomAgain) {
  startWithLines({"text"});
  const RECT before = pageArea();
  openFindBar();
  const RECT below = pageArea();
  EXPECT_EQ(below.top - before.top, barHeight());
  EXPECT_EQ(inClient(childOf(window, 422)).top, barHeight());
  EXPECT_TRUE(pageBecomes(below, fitPage(below, kPage)));
  press(VK_ESCAPE);
  EXPECT_TRUE(keyboardGoesTo(0));
  EXPECT_TRUE(eventually([&] { return !barShown(); }));
  EXPECT_EQ(pageArea(), before);
  EXPECT_TRUE(pageBecomes(before, fitPage(before, kPage)));
  EXPECT_EQ(inClient(childOf(window, 422)).top, 0);
}

TEST_F(FindBar, ThePanelMakesRoomWithoutLeavingTraces) {
  test::PdfOptions options;
  const std::u16string title(60, u'm');
  options.outline.assign(60, {title, test::pageDestination(1), {}});
  startWith(test::buildPdf({linedPage({}, kPage)}, options));
  const HWND header = childOf(window, 423);
  const std::uint32_t face = systemColor(COLOR_BTNFACE);
  for (const bool opens : {true, false}) {
    press(opens ? 'F' : VK_ESCAPE, opens ? kCtrl : kNone);
    ASSERT_TRUE(eventually([&] { return barShown() == opens; }));
    EXPECT_TRUE(eventually([&] {
      RECT beside = inClient(header);
      beside.left += dip(100);  // right of its text
      return client().isFilledWith(beside, face);
    })) << opens;
  }
}

TEST_F(FindBar, ItsCloseButtonAndEscapeOnThePageCloseIt) {
  startWithLines({"text"});
  openFindBar();
  clickControl(kClose);
  EXPECT_TRUE(eventually([&] { return !barShown(); }));
  EXPECT_TRUE(keyboardGoesTo(0));
  lookFor(L"text");
  press(VK_RETURN);
  ASSERT_TRUE(keyboardGoesTo(0));
  press(VK_ESCAPE);
  EXPECT_TRUE(eventually([&] { return !barShown(); }));
  // The text and the options stay, the hits do not.
  EXPECT_TRUE(hitsBecome(L""));
  EXPECT_EQ(controlText(control(kField)), L"text");
}

TEST_F(FindBar, TabGoesRoundItsControls) {
  start();
  toFront();
  openFindBar();
  goRound({kPrevious, kNext, kClose, kLiteral, kMatchCase, kWholeWord, kField, kPrevious}, kNone);
  goRound({kField, kWholeWord, kMatchCase, kLiteral, kClose, kNext}, kShift);
  press(VK_ESCAPE);
  EXPECT_TRUE(eventually([&] { return !barShown(); }));
  EXPECT_TRUE(keyboardGoesTo(0));
}

TEST_F(FindBar, WithRegExChosenTabPassesTheGreyedBoxes) {
  start();
  toFront();
  openFindBar();
  clickControl(kRegex);
  ASSERT_TRUE(keyboardGoesTo(kRegex));
  goRound({kField, kPrevious, kNext, kClose, kRegex, kField}, kNone);
  goRound({kRegex, kClose}, kShift);
  goRound({kRegex}, kNone);
  // Arrow keys choose within the group.
  press(VK_LEFT);
  EXPECT_TRUE(keyboardGoesTo(kLiteral));
  EXPECT_TRUE(checkBecomes(kLiteral, true));
  EXPECT_TRUE(eventually([&] { return IsWindowEnabled(control(kMatchCase)) != FALSE; }));
  goRound({kMatchCase}, kNone);
  press(VK_SPACE);
  EXPECT_TRUE(checkBecomes(kMatchCase, true));
}

TEST_F(FindBar, AClickOnTheMatcherThatStandsSearchesAgainAndItsKeyboardDoesNot) {
  startWithLines({"quill quill quill"});
  lookFor(L"quill");
  press(VK_RETURN);
  press(VK_RETURN);
  ASSERT_TRUE(hitsBecome(L"2 of 3"));
  openFindBar();
  press(VK_RETURN);
  ASSERT_TRUE(hitsBecome(L"2 of 3"));
  clickControl(kField);
  goRound({kWholeWord, kMatchCase, kLiteral}, kShift);
  EXPECT_TRUE(hitsBecome(L"2 of 3"));
  clickControl(kLiteral);
  EXPECT_TRUE(hitsBecome(L"1 of 3"));
}

TEST_F(FindBar, ThePointerIsABeamOverItsFieldAlone) {
  start();
  toFront();
  openFindBar();
  const auto pointerOver = [&](int id) {
    movePointer(middleOf(inClient(control(id))));
    inputIsHandled(window);
    return cursorOf(window);
  };
  const std::wstring arrow = pointerOver(kNext);
  EXPECT_TRUE(eventually([&] { return pointerOver(kField) != arrow; }));
  for (const int id : {kLiteral, kMatchCase, kHits, kClose}) {
    EXPECT_TRUE(eventually([&] { return pointerOver(id) == arrow; })) << id;
  }
}

TEST_F(FindBar, PastingTakesTheFirstLineAndEightyUnits) {
  startWithLines({"first"});
  ASSERT_TRUE(setClipboardText(L"first\r\nsecond"));
  openFindBar();
  press('V', kCtrl);
  EXPECT_TRUE(fieldBecomes(L"first"));
  EXPECT_TRUE(hitsBecome(L"1 on page"));
  ASSERT_TRUE(setClipboardText(std::wstring(100, L'm')));
  openFindBar();
  press('V', kCtrl);
  EXPECT_TRUE(fieldBecomes(std::wstring(80, L'm')));
  EXPECT_TRUE(hitsBecome(L"0 on page"));
  press('Z', kCtrl);
  EXPECT_TRUE(fieldBecomes(L"first"));
  // Pasting replaces only the selection.
  ASSERT_TRUE(setClipboardText(L"ly\nrest"));
  press(VK_END);
  press('V', kCtrl);
  EXPECT_TRUE(fieldBecomes(L"firstly"));
}

TEST_F(FindBar, ThePageAndTheMenuPasteIntoItsFieldWhileItIsOpen) {
  startWithLines({"one two"});
  ASSERT_TRUE(setClipboardText(L"two"));
  press('V', kCtrl);
  runCommand(window, 704);
  lookFor(L"one");
  press(VK_RETURN);
  ASSERT_TRUE(keyboardGoesTo(0));
  press('V', kCtrl);
  EXPECT_TRUE(fieldBecomes(L"onetwo"));
  runCommand(window, 704);
  EXPECT_TRUE(fieldBecomes(L"onetwotwo"));
}

TEST_F(FindBar, AnEmptyClipboardPastesNothing) {
  startWithLines({"word"});
  ASSERT_TRUE(clearClipboard());
  lookFor(L"wor");
  press('V', kCtrl);
  type(L"d");
  EXPECT_TRUE(fieldBecomes(L"word"));
}

TEST_F(FindBar, OpeningItWithAWordSelectedLooksForTheWord) {
  startWithLines({"quill ink quill", "quill"});
  const RECT page = fitPage(pageArea(), kPage);
  const float zoom = fitPageZoom(pageArea(), kPage);
  const POINT word = placeOnPage(page, zoom, kPage, kLineLeft + 7.5 * kCourierAdvance,
                                 kPage.height - kFirstBaseline + 6);
  doubleClick(onScreen(word.x, word.y));
  openFindBar();
  EXPECT_TRUE(fieldBecomes(L"ink"));
  EXPECT_TRUE(hitsBecome(L"1 of 1"));
  // All of the text is selected, so typing replaces it.
  type(L"quill");
  EXPECT_TRUE(fieldBecomes(L"quill"));
  EXPECT_TRUE(hitsBecome(L"3 on page"));
}

TEST_F(FindBar, OfSelectedLinesTheFirstIsTaken) {
  startWithLines({"upper line", "lower line"});
  press('A', kCtrl);
  openFindBar();
  EXPECT_TRUE(fieldBecomes(L"upper line"));
  EXPECT_TRUE(hitsBecome(L"1 of 1"));
}

TEST_F(FindBar, OpeningItAgainLooksForTheTextAtOnce) {
  startWithLines({"quill", "quill"});
  lookFor(L"quill");
  ASSERT_TRUE(hitsBecome(L"2 on page"));
  openFindBar();
  EXPECT_TRUE(hitsBecome(L"1 of 2"));
  press(VK_RETURN);
  EXPECT_TRUE(hitsBecome(L"2 of 2"));
  press(VK_ESCAPE);
  ASSERT_TRUE(eventually([&] { return !barShown(); }));
  openFindBar();
  EXPECT_TRUE(hitsBecome(L"1 of 2"));
}

}  // namespace
}  // namespace quillmere::e2e
