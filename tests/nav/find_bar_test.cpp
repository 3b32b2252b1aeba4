#include "nav/find_bar.h"

#include <iterator>
#include <span>
#include <string>

#include "app/commands.h"
#include "app/keys.h"
#include "nav/nav_test.h"
#include "view/geometry.h"
#include "view/selection.h"

namespace quillmere::test {
namespace {

class FindBarTest : public NavTest {};

TEST_F(FindBarTest, ControlsStandInARowThatGrowsWithTheBar) {
  for (const int width : {700, 1000}) {
    int right = 0;
    for (const FindControl& control : findBarControls()) {
      const FindControlPlace place = placeOf(control, width);
      EXPECT_GE(place.x, right) << control.id;
      EXPECT_GT(place.width, 0) << control.id;
      EXPECT_LE(place.y + place.height, kFindBarHeight);
      right = place.x + place.width;
    }
    EXPECT_LE(right, width);
    EXPECT_EQ(right, width - 4);
  }
}

TEST_F(FindBarTest, EveryControlStandsInItsPlace) {
  using enum FindControlKind;
  const struct {
    int id;
    FindControlKind kind;
    std::u16string text;
    int x;
    int width;
  } rows[] = {
      {418, FirstRadio, u"Find", 10, 48},   {419, Radio, u"RegEx", 62, 62},
      {424, Separator, u"", 132, 2},        {415, Check, u"Match case", 142, 94},
      {421, Check, u"Whole word", 244, 96}, {417, Separator, u"", 348, 2},
      {416, Label, u"Search:", 358, 50},    {410, Edit, u"", 414, 402},
      {411, Button, u"\u25B2", 818, 28},    {412, Button, u"\u25BC", 848, 28},
      {413, CentredLabel, u"", 878, 90},    {414, Button, u"\u00D7", 972, 24},
  };
  const std::span<const FindControl> controls = findBarControls();
  ASSERT_EQ(controls.size(), std::size(rows));
  for (std::size_t i = 0; i < std::size(rows); ++i) {
    const FindControlPlace place = placeOf(controls[i], 1000);
    EXPECT_EQ(controls[i].id, rows[i].id);
    EXPECT_EQ(controls[i].kind, rows[i].kind) << rows[i].id;
    EXPECT_EQ(controls[i].text, rows[i].text) << rows[i].id;
    EXPECT_EQ(place.x, rows[i].x) << rows[i].id;
    EXPECT_EQ(place.width, rows[i].width) << rows[i].id;
    EXPECT_EQ(place.y, 6) << rows[i].id;
    EXPECT_EQ(place.height, 22) << rows[i].id;
  }
}

TEST_F(FindBarTest, ABarTooNarrowForItsFieldHidesIt) {
  for (const FindControl& control : findBarControls()) {
    EXPECT_GE(placeOf(control, 100).width, 0) << control.id;
    if (control.id == kFindField) {
      EXPECT_EQ(placeOf(control, 100).width, 0);
    }
  }
}

TEST_F(FindBarTest, TheBarGrowsWithTheDensityOfTheScreen) {
  session.dpi = 192;
  const FindControlPlace field = placeOf(findBarControls()[7], 2000);
  EXPECT_EQ(field.x, 828);
  EXPECT_EQ(field.y, 12);
  EXPECT_EQ(field.width, 804);
  EXPECT_EQ(field.height, 44);
}

TEST_F(FindBarTest, OnlyTheFieldTakesTheRoomOfAWiderBar) {
  for (const FindControl& control : findBarControls()) {
    const int narrow = placeOf(control, 800).width;
    const int wide = placeOf(control, 900).width;
    EXPECT_EQ(wide - narrow, control.id == kFindField ? 100 : 0) << control.id;
  }
}

TEST_F(FindBarTest, AnOpenBarTakesItsHeightFromThePages) {
  ASSERT_TRUE(open(simplePdf(1)));
  const int top = paneRect(0).top;
  OpenFindBar();
  EXPECT_TRUE(session.findBarVisible);
  EXPECT_EQ(paneRect(0).top - top, kFindBarHeight);
  EXPECT_GT(bar().focusRequests, 0);
  CloseFindBar();
  EXPECT_EQ(paneRect(0).top, top);
}

TEST_F(FindBarTest, ASelectedWordIsSearchedInTheDocument) {
  ASSERT_TRUE(open(buildPdf({pageWith({"word"}), pageWith({"word other"})})));
  selectAll(0);
  OpenFindBar();
  EXPECT_EQ(bar().field, u"word");
  EXPECT_TRUE(find().wholeDocument);
  EXPECT_EQ(bar().status, u"1 of 2");
}

TEST_F(FindBarTest, OfASelectionOnlyTheFirstLineIsTaken) {
  ASSERT_TRUE(open(buildPdf({pageWith({"first line", "second line"})})));
  selectAll(0);
  OpenFindBar();
  EXPECT_EQ(bar().field, u"first line");
}

TEST_F(FindBarTest, ALongSelectionIsCut) {
  ASSERT_TRUE(open(buildPdf({pageWith({std::string(90, 'm')})})));
  selectAll(0);
  OpenFindBar();
  EXPECT_EQ(bar().field, std::u16string(80, u'm'));
}

TEST_F(FindBarTest, OpeningAgainSearchesTheTextThatStands) {
  ASSERT_TRUE(open(simplePdf(3)));
  bar().field = u"Page";
  OpenFindBar();
  EXPECT_EQ(bar().status, u"1 of 3");
}

TEST_F(FindBarTest, ClosingKeepsTextAndOptionsAndForgetsTheHits) {
  ASSERT_TRUE(open(simplePdf(3)));
  OpenFindBar();
  type(u"Page");
  chooseMatchCase(true);
  CloseFindBar();
  EXPECT_FALSE(session.findBarVisible);
  EXPECT_TRUE(find().results.empty());
  EXPECT_TRUE(find().query.empty());
  EXPECT_TRUE(find().matchCase);
  EXPECT_EQ(bar().field, u"Page");
  EXPECT_GT(platform::standIn().window.focusRequests, 0);
}

TEST_F(FindBarTest, PastingKeepsTheFirstLine) {
  platform::standIn().clipboard = u"one\r\ntwo";
  OpenFindBar();
  pasteIntoFindField();
  EXPECT_EQ(bar().field, u"one");
}

TEST_F(FindBarTest, PastingCutsLongText) {
  platform::standIn().clipboard = std::u16string(100, u'p');
  OpenFindBar();
  pasteIntoFindField();
  EXPECT_EQ(bar().field.size(), 80u);
}

TEST_F(FindBarTest, PastingWithoutTextDoesNothing) {
  OpenFindBar();
  bar().field = u"kept";
  pasteIntoFindField();
  EXPECT_EQ(bar().field, u"kept");
}

TEST_F(FindBarTest, NothingIsPastedIntoAHiddenBar) {
  platform::standIn().clipboard = u"text";
  runCommand(kCmdPaste);
  EXPECT_EQ(bar().field, u"");
}

TEST_F(FindBarTest, ChoosingRegExSearchesTheSameTextAsAPattern) {
  ASSERT_TRUE(open(buildPdf({pageWith({"a.c abc"})})));
  OpenFindBar();
  type(u"a.c");
  EXPECT_EQ(bar().status, u"1 on page");
  chooseFindMode(true);
  EXPECT_EQ(bar().status, u"2 on page");
}

// As a radio button reports it that merely gets the keyboard.
TEST_F(FindBarTest, ChoosingTheModeThatStandsSearchesAgain) {
  ASSERT_TRUE(open(simplePdf(3)));
  OpenFindBar();
  type(u"Page");
  stepFromFindBar(1);
  stepFromFindBar(1);
  ASSERT_EQ(bar().status, u"2 of 3");
  chooseFindMode(false);
  EXPECT_EQ(bar().status, u"1 of 3");
}

TEST_F(FindBarTest, StepsGiveThePageTheKeyboardBack) {
  ASSERT_TRUE(open(simplePdf(2)));
  OpenFindBar();
  type(u"Page");
  const int before = platform::standIn().window.focusRequests;
  stepFromFindBar(1);
  EXPECT_GT(platform::standIn().window.focusRequests, before);
  EXPECT_EQ(bar().status, u"1 of 2");
}

TEST_F(FindBarTest, EnterOnThePageStepsWhileTheBarIsOpen) {
  ASSERT_TRUE(open(simplePdf(3)));
  type(u"Page");
  handleKey(kKeyEnter);
  EXPECT_EQ(bar().status, u"1 of 3");
  handleKey(kKeyEnter);
  EXPECT_EQ(bar().status, u"2 of 3");
  platform::standIn().shiftDown = true;
  handleKey(kKeyEnter);
  EXPECT_EQ(bar().status, u"1 of 3");
}

TEST_F(FindBarTest, EnterWithoutTheBarDoesNothing) {
  ASSERT_TRUE(open(simplePdf(3)));
  bar().field = u"Page";
  handleKey(kKeyEnter);
  EXPECT_TRUE(find().query.empty());
}

TEST_F(FindBarTest, EscapeClosesTheBar) {
  OpenFindBar();
  handleKey(kKeyEscape);
  EXPECT_FALSE(session.findBarVisible);
}

}  // namespace
}  // namespace quillmere::test
