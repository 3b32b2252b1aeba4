#include <cstdlib>

#include "driver/find_scenario.h"

namespace quillmere::e2e {
namespace {

constexpr Size kPage{612, 792};
constexpr Size kSmall{300, 400};

using Lines = std::vector<std::string>;

std::string linedPdf(const std::vector<Lines>& pages, Size size = kPage) {
  std::vector<test::PdfPage> list;
  for (const Lines& lines : pages) list.push_back(linedPage(lines, size));
  return test::buildPdf(list);
}

// Invisible text, so that only the hits show.
test::PdfPage invisiblePage(const Lines& lines, Size size = kSmall) {
  test::PdfPage page = linedPage(lines, size);
  page.content = "3 Tr\n" + page.content;
  return page;
}

std::string invisiblePdf(const std::vector<Lines>& pages) {
  std::vector<test::PdfPage> list;
  for (const Lines& lines : pages) list.push_back(invisiblePage(lines));
  return test::buildPdf(list);
}

bool withinAPixel(RECT a, RECT b) {
  return std::abs(a.left - b.left) <= 1 && std::abs(a.top - b.top) <= 1 &&
         std::abs(a.right - b.right) <= 1 && std::abs(a.bottom - b.bottom) <= 1;
}

// Where a rectangle of an unturned page is after the page was turned clockwise so many times.
RECT turned(RECT place, RECT unturnedPage, RECT turnedPage, int turns) {
  OffsetRect(&place, -unturnedPage.left, -unturnedPage.top);
  const LONG width = unturnedPage.right - unturnedPage.left;
  const LONG height = unturnedPage.bottom - unturnedPage.top;
  RECT result = place;
  if (turns == 1) result = {height - place.bottom, place.left, height - place.top, place.right};
  if (turns == 2) {
    result = {width - place.right, height - place.bottom, width - place.left, height - place.top};
  }
  if (turns == 3) result = {place.top, width - place.right, place.bottom, width - place.left};
  OffsetRect(&result, turnedPage.left, turnedPage.top);
  return result;
}

class Find : public FindScenario {
 protected:
  // Waits until the pane has exactly one filled rectangle of this colour.
  ::testing::AssertionResult oneHit(RECT pane, std::uint32_t color, RECT wanted) const {
    RECT seen{};
    const bool found = eventually([&] {
      const Picture shown = client();
      seen = shown.extentAlike(pane, color);
      const LONG area = (seen.right - seen.left) * (seen.bottom - seen.top);
      return withinAPixel(seen, wanted) && shown.countAlike(pane, color) == area;
    });
    if (found) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "a hit is at " << ::testing::PrintToString(seen)
                                         << ", wanted " << ::testing::PrintToString(wanted);
  }
  RECT hitIn(RECT pane, std::uint32_t color) const {
    RECT seen{};
    eventually([&] { return !IsRectEmpty(&(seen = client().extentAlike(pane, color))); });
    return seen;
  }
  bool hitShownIn(RECT pane, std::uint32_t color) const {
    return eventually([&] { return client().countAlike(pane, color) > 0; });
  }
  bool noHitIn(RECT pane) const {
    const Picture shown = client();
    return shown.countAlike(pane, hitColor()) + shown.countAlike(pane, currentHitColor()) == 0;
  }
  // A hit that was brought into view is vertically centred in the pane.
  bool hitIsInTheMiddle(RECT pane) const {
    return eventually([&] {
      const RECT hit = client().extentAlike(pane, currentHitColor());
      return !IsRectEmpty(&hit) &&
             std::abs((hit.top + hit.bottom) / 2 - (pane.top + pane.bottom) / 2) <= 1;
    });
  }
};

TEST_F(Find, TypingSearchesThePageAndEnterTheDocument) {
  startWith(linedPdf({{"stone"}, {}, {"a stone", "a stone"}, {"Stone bridge"}}));
  press(VK_NEXT);
  press(VK_NEXT);
  ASSERT_TRUE(pageTextBecomes(L"Page 3 of 4"));
  lookFor(L"stone");
  EXPECT_TRUE(hitsBecome(L"2 on page"));
  EXPECT_TRUE(pageTextBecomes(L"Page 3 of 4"));
  press(VK_RETURN);
  EXPECT_TRUE(hitsBecome(L"1 of 4"));
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 4"));
  EXPECT_TRUE(keyboardGoesTo(0));
  for (const wchar_t* hits : {L"2 of 4", L"3 of 4", L"4 of 4"}) {
    press(VK_RETURN);
    EXPECT_TRUE(hitsBecome(hits));
  }
  EXPECT_TRUE(pageTextBecomes(L"Page 4 of 4"));
  press(VK_RETURN);
  press(VK_RETURN, kShift);
  EXPECT_TRUE(hitsBecome(L"3 of 4"));
  EXPECT_TRUE(pageTextBecomes(L"Page 3 of 4"));
}

TEST_F(Find, SteppingFromTheFieldAndByTheButtonsGivesThePageTheKeyboard) {
  startWith(linedPdf({{"stone stone stone"}}));
  lookFor(L"stone");
  clickControl(kNext);
  EXPECT_TRUE(hitsBecome(L"1 of 3"));
  EXPECT_TRUE(keyboardGoesTo(0));
  clickControl(kNext);
  EXPECT_TRUE(hitsBecome(L"2 of 3"));
  clickControl(kNext);
  EXPECT_TRUE(hitsBecome(L"3 of 3"));
  clickControl(kPrevious);
  EXPECT_TRUE(hitsBecome(L"2 of 3"));
  // A click into the field does not search.
  clickControl(kField);
  ASSERT_TRUE(keyboardGoesTo(kField));
  press(VK_RETURN, kShift);
  EXPECT_TRUE(hitsBecome(L"1 of 3"));
  EXPECT_TRUE(keyboardGoesTo(0));
}

TEST_F(Find, EveryKeystrokeSearchesTheShownPageAndTurningFollows) {
  startWith(linedPdf({{"stone store"}, {"stoa"}}));
  lookFor(L"sto");
  EXPECT_TRUE(hitsBecome(L"2 on page"));
  type(L"n");
  EXPECT_TRUE(hitsBecome(L"1 on page"));
  type(L"x");
  EXPECT_TRUE(hitsBecome(L"0 on page"));
  press(VK_BACK);
  press(VK_BACK);
  EXPECT_TRUE(hitsBecome(L"2 on page"));
  click(onScreen(pageArea().left + 5, pageArea().top + 5));
  ASSERT_TRUE(keyboardGoesTo(0));
  press(VK_NEXT);
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 2"));
  EXPECT_TRUE(hitsBecome(L"1 on page"));
  lookFor(L"nowhere");
  EXPECT_TRUE(hitsBecome(L"0 on page"));
  press(VK_RETURN);
  EXPECT_TRUE(hitsBecome(L"No results"));
  openFindBar();
  press(VK_DELETE);
  EXPECT_TRUE(fieldBecomes(L""));
  EXPECT_TRUE(hitsBecome(L""));
}

TEST_F(Find, OnlyStepsBetweenPagesGoIntoTheHistory) {
  startWith(linedPdf({{}, {"stone"}, {}, {"stone stone"}}));
  press(VK_END);
  press(VK_PRIOR);
  ASSERT_TRUE(pageTextBecomes(L"Page 3 of 4"));
  lookFor(L"stone");
  press(VK_RETURN);
  ASSERT_TRUE(hitsBecome(L"1 of 3"));
  ASSERT_TRUE(pageTextBecomes(L"Page 2 of 4"));
  press(VK_RETURN);
  press(VK_RETURN);
  ASSERT_TRUE(hitsBecome(L"3 of 3"));
  press(VK_BACK);
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 4"));
  // The first hit on the shown page becomes the current one.
  EXPECT_TRUE(hitsBecome(L"1 of 3"));
  press(VK_BACK);
  press(VK_BACK, kShift);
  EXPECT_TRUE(pageTextBecomes(L"Page 4 of 4"));
  EXPECT_TRUE(hitsBecome(L"2 of 3"));
}

TEST_F(Find, TheBoxesNarrowTheSearchThatStands) {
  startWith(linedPdf({{"Stone stones stone"}, {"stone"}}));
  lookFor(L"stone");
  EXPECT_TRUE(hitsBecome(L"3 on page"));
  clickControl(kMatchCase);
  EXPECT_TRUE(checkBecomes(kMatchCase, true));
  EXPECT_TRUE(hitsBecome(L"2 on page"));
  clickControl(kWholeWord);
  EXPECT_TRUE(hitsBecome(L"1 on page"));
  clickControl(kMatchCase);
  EXPECT_TRUE(hitsBecome(L"2 on page"));
  EXPECT_TRUE(checkBecomes(kMatchCase, false));
  clickControl(kNext);
  EXPECT_TRUE(hitsBecome(L"1 of 3"));
  clickControl(kWholeWord);
  EXPECT_TRUE(hitsBecome(L"1 of 4"));
}

TEST_F(Find, ChoosingRegExGreysTheBoxesAndTakesTheTextForAPattern) {
  startWith(linedPdf({{"Stone st.ne stone"}}));
  lookFor(L"st.ne");
  ASSERT_TRUE(hitsBecome(L"1 on page"));
  clickControl(kMatchCase);
  ASSERT_TRUE(checkBecomes(kMatchCase, true));
  clickControl(kRegex);
  EXPECT_TRUE(checkBecomes(kRegex, true));
  EXPECT_TRUE(hitsBecome(L"2 on page"));
  EXPECT_FALSE(IsWindowEnabled(control(kMatchCase)));
  EXPECT_FALSE(IsWindowEnabled(control(kWholeWord)));
  EXPECT_TRUE(isChecked(kMatchCase));
  EXPECT_FALSE(isChecked(kWholeWord));
  clickControl(kMatchCase);
  clickControl(kLiteral);
  EXPECT_TRUE(checkBecomes(kLiteral, true));
  EXPECT_TRUE(hitsBecome(L"1 on page"));
  EXPECT_TRUE(IsWindowEnabled(control(kMatchCase)));
  EXPECT_TRUE(IsWindowEnabled(control(kWholeWord)));
  EXPECT_TRUE(isChecked(kMatchCase));
}

TEST_F(Find, APatternWaitsForEnter) {
  startWith(linedPdf({{"stone"}, {"stare Stone"}}));
  openFindBar();
  clickControl(kRegex);
  ASSERT_TRUE(checkBecomes(kRegex, true));
  lookFor(L"st[a-z]+e\\b");
  EXPECT_TRUE(hitsBecome(L""));
  press(VK_RETURN);
  EXPECT_TRUE(hitsBecome(L"1 of 2"));
  openFindBar();
  press(VK_END);
  type(L"?");
  EXPECT_TRUE(fieldBecomes(L"st[a-z]+e\\b?"));
  EXPECT_TRUE(hitsBecome(L""));
}

TEST_F(Find, ABadPatternIsToldOnTheBarAndCanBeMended) {
  startWith(linedPdf({{std::string(30, 'a')}}));
  openFindBar();
  clickControl(kRegex);
  ASSERT_TRUE(checkBecomes(kRegex, true));
  lookFor(L"[");
  press(VK_RETURN);
  EXPECT_TRUE(hitsBecome(L"Bad pattern"));
  lookFor(L"(a+)+b");
  EXPECT_TRUE(hitsBecome(L""));
  press(VK_RETURN);
  EXPECT_TRUE(hitsBecome(L"Bad pattern"));
  lookFor(L"[a]{15}");
  EXPECT_TRUE(hitsBecome(L""));
  press(VK_RETURN);
  EXPECT_TRUE(hitsBecome(L"1 of 2"));
  EXPECT_EQ(boxNow(program).window, nullptr);
}

TEST_F(Find, APatternWhoseTimeIsUpIsABadOneAndTheProgramGoesOn) {
  Lines lines(300, std::string(100, 'a'));
  lines.push_back("away");
  startWith(linedPdf({lines, {"stone"}}));
  openFindBar();
  clickControl(kRegex);
  ASSERT_TRUE(checkBecomes(kRegex, true));
  lookFor(L"(?:(?=[\\s\\S]*away)[\\s\\S])+");
  press(VK_RETURN);
  EXPECT_TRUE(hitsBecome(L"Bad pattern"));
  lookFor(L"st[o]ne");
  press(VK_RETURN);
  EXPECT_TRUE(hitsBecome(L"1 of 1"));
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 2"));
}

TEST_F(Find, AThousandHitsAreToldAboutAndOneLessIsNot) {
  constexpr Size kSheet{700, 1400};
  Lines lines(25, std::string(40, 'x'));
  const std::wstring full = makeFile(L"full.pdf", linedPdf({lines}, kSheet));
  lines.back().pop_back();
  startWith(linedPdf({lines}, kSheet));
  lookFor(L"x");
  press(VK_RETURN);
  EXPECT_TRUE(hitsBecome(L"1 of 999"));
  EXPECT_EQ(boxNow(program).window, nullptr);
  sendPath(window, full);
  ASSERT_TRUE(titleBecomes(L"Quillmere - full.pdf"));
  EXPECT_TRUE(hitsBecome(L""));
  press(VK_RETURN);
  EXPECT_TRUE(
      boxSays(L"Search found more than 1000 results.\nOnly the first 1000 are shown. Try a more "
              L"specific query."));
  EXPECT_TRUE(hitsBecome(L"1 of 1000+"));
  toFront();
  press(VK_RETURN);
  EXPECT_TRUE(hitsBecome(L"2 of 1000+"));
}

TEST_F(Find, HitsStandOnThePageAtEveryRotation) {
  const Lines lines{"mark", "  mark"};
  test::PdfPage sideways = invisiblePage(lines);
  sideways.rotate = 90;
  startWith(test::buildPdf({invisiblePage(lines), sideways}));
  lookFor(L"mark");
  press(VK_RETURN);
  ASSERT_TRUE(hitsBecome(L"1 of 4"));
  press('A');
  const RECT area = pageArea();
  const RECT upright = placedPage(area, kSmall, 1);
  const RECT across = placedPage(area, {kSmall.height, kSmall.width}, 1);
  ASSERT_TRUE(pageBecomes(area, upright));
  const RECT first = hitIn(area, currentHitColor());
  const RECT second = hitIn(area, hitColor());
  const auto expectTurned = [&](int turns, RECT current, RECT other) {
    const RECT page = turns % 2 == 0 ? upright : across;
    EXPECT_TRUE(oneHit(area, currentHitColor(), turned(current, upright, page, turns))) << turns;
    EXPECT_TRUE(oneHit(area, hitColor(), turned(other, upright, page, turns))) << turns;
  };
  // A word of four characters of equal width, with no descenders.
  const POINT start = placeOnPage(upright, 1, kSmall, kLineLeft, kSmall.height - kFirstBaseline);
  EXPECT_NEAR(first.left, start.x, 2);
  EXPECT_NEAR(first.right, start.x + 4 * kCourierAdvance, 2);
  EXPECT_NEAR(first.bottom, start.y, 3);
  EXPECT_NEAR(first.top, start.y - 16, 5);
  EXPECT_NEAR(second.left - first.left, 2 * kCourierAdvance, 1);
  EXPECT_NEAR(second.top - first.top, kLineStep, 1);
  for (const int turns : {0, 1, 2, 3, 0}) {
    expectTurned(turns, first, second);
    press('R');
  }
  press(VK_NEXT);
  ASSERT_TRUE(hitsBecome(L"3 of 4"));
  // The engine reads the lines of a page that is turned on its side from last to first.
  expectTurned(2, second, first);
  press('R', kCtrl);
  expectTurned(3, second, first);
  press(VK_RETURN);
  ASSERT_TRUE(hitsBecome(L"4 of 4"));
  expectTurned(3, first, second);
}

TEST_F(Find, HitsVanishWithTheBar) {
  startWith(invisiblePdf({{"mark", "mark"}}));
  lookFor(L"mark");
  ASSERT_TRUE(hitShownIn(pageArea(), hitColor()));
  press(VK_ESCAPE);
  ASSERT_TRUE(eventually([&] { return !barShown(); }));
  EXPECT_TRUE(pageBecomes(pageArea(), fitPage(pageArea(), kSmall)));
  EXPECT_TRUE(eventually([&] { return noHitIn(pageArea()); }));
}

TEST_F(Find, AHitOutOfViewComesIntoTheMiddleOfThePane) {
  Lines lines(14);
  lines[0] = "mark";
  lines[12] = "mark";
  startWith(test::buildPdf({invisiblePage(lines, kPage)}));
  press('W');
  lookFor(L"mark");
  press(VK_RETURN);
  ASSERT_TRUE(hitsBecome(L"1 of 2"));
  const RECT area = pageArea();
  const float zoom = fitWidthZoom(area, kPage);
  EXPECT_TRUE(pageBecomes(area, clipped(placedPage(area, kPage, zoom), area)));
  press(VK_RETURN);
  ASSERT_TRUE(hitsBecome(L"2 of 2"));
  EXPECT_TRUE(hitIsInTheMiddle(area));
  // At the last hit, another step returns to it.
  press('W');
  EXPECT_TRUE(pageBecomes(area, clipped(placedPage(area, kPage, zoom), area)));
  press(VK_RETURN);
  EXPECT_TRUE(hitIsInTheMiddle(area));
  EXPECT_TRUE(hitsBecome(L"2 of 2"));
}

TEST_F(Find, ABookShowsTheHitsOfBothItsPages) {
  startWith(invisiblePdf({{"mark"}, {"mark", "", "mark"}, {}, {"mark"}}));
  press(VK_F6);
  ASSERT_TRUE(pageTextBecomes(L"L:1  R:2  of 4"));
  lookFor(L"mark");
  EXPECT_TRUE(hitsBecome(L"3 on page"));
  // The left page's hits come first.
  EXPECT_TRUE(hitShownIn(leftPane(), currentHitColor()));
  EXPECT_TRUE(hitShownIn(rightPane(), hitColor()));
  EXPECT_EQ(client().countAlike(rightPane(), currentHitColor()), 0);
  press(VK_RETURN);
  EXPECT_TRUE(hitsBecome(L"1 of 4"));
  press(VK_RETURN);
  EXPECT_TRUE(hitsBecome(L"2 of 4"));
  // What the right page shows needs no turn, and Back has nowhere to go.
  EXPECT_TRUE(pageTextBecomes(L"L:1  R:2  of 4"));
  EXPECT_TRUE(hitShownIn(rightPane(), currentHitColor()));
  press(VK_BACK);
  ASSERT_TRUE(inputIsHandled(window));
  EXPECT_TRUE(pageTextBecomes(L"L:1  R:2  of 4"));
  press(VK_RETURN);
  press(VK_RETURN);
  EXPECT_TRUE(hitsBecome(L"4 of 4"));
  // The last page is on the right.
  EXPECT_TRUE(pageTextBecomes(L"L:3  R:4  of 4"));
  EXPECT_TRUE(hitShownIn(rightPane(), currentHitColor()));
}

TEST_F(Find, PanesOnOnePageCountItsHitsOnceAndBothShowThem) {
  startWith(invisiblePdf({{"mark", "mark"}, {"mark"}}));
  press(VK_F7);
  ASSERT_TRUE(pageTextBecomes(L"L:1  R:1  of 2"));
  lookFor(L"mark");
  EXPECT_TRUE(hitsBecome(L"2 on page"));
  for (const RECT pane : {leftPane(), rightPane()}) {
    const RECT hit = hitIn(pane, currentHitColor());
    EXPECT_TRUE(oneHit(pane, currentHitColor(), hit));
    EXPECT_TRUE(hitShownIn(pane, hitColor()));
  }
  click(onScreen(rightPane().left + 10, rightPane().top + 10));
  ASSERT_TRUE(paneIsActive(rightPane()));
  press(VK_END);
  EXPECT_TRUE(pageTextBecomes(L"L:1  R:2  of 2"));
  EXPECT_TRUE(hitsBecome(L"3 on page"));
  // The right pane has a page even while it is not shown.
  press(VK_F5);
  ASSERT_TRUE(pageTextBecomes(L"Page 1 of 2"));
  lookFor(L"mar");
  EXPECT_TRUE(hitsBecome(L"2 on page"));
}

TEST_F(Find, OfTwoDocumentsTheActiveOneIsSearched) {
  startWithTwo(invisiblePdf({{"mark"}}), invisiblePdf({{"mark", "mark"}}));
  lookFor(L"mark");
  EXPECT_TRUE(hitsBecome(L"1 on page"));
  EXPECT_TRUE(hitShownIn(leftPane(), currentHitColor()));
  EXPECT_TRUE(noHitIn(rightPane()));
  press(VK_RETURN);
  ASSERT_TRUE(hitsBecome(L"1 of 1"));
  press(VK_TAB);
  ASSERT_TRUE(paneIsActive(rightPane()));
  // The hits belonged to the previous document; the text stays for the next search.
  EXPECT_TRUE(hitsBecome(L""));
  EXPECT_TRUE(eventually([&] { return noHitIn(leftPane()); }));
  EXPECT_EQ(controlText(control(kField)), L"mark");
  press(VK_RETURN);
  EXPECT_TRUE(hitsBecome(L"1 of 2"));
  EXPECT_TRUE(hitShownIn(rightPane(), currentHitColor()));
  EXPECT_TRUE(noHitIn(leftPane()));
}

TEST_F(Find, ClosingTheDocumentForgetsItsHits) {
  startWith(linedPdf({{"stone"}}));
  lookFor(L"stone");
  press(VK_RETURN);
  ASSERT_TRUE(hitsBecome(L"1 of 1"));
  press('W', kCtrl);
  ASSERT_TRUE(titleBecomes(L"Quillmere"));
  EXPECT_TRUE(hitsBecome(L""));
  EXPECT_EQ(controlText(control(kField)), L"stone");
}

}  // namespace
}  // namespace quillmere::e2e
