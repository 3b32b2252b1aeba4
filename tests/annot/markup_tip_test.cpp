#include "annot/markup_tip.h"

#include <gmock/gmock.h>

#include "annot/annot_test.h"
#include "annot/markups.h"
#include "annot/notes.h"
#include "app/commands.h"
#include "app/keys.h"
#include "app/mouse.h"
#include "base/text_format.h"
#include "dialogs/dialog_script.h"
#include "session/changes.h"
#include "view/navigation.h"

namespace quillmere::test {
namespace {

class MarkupTipTest : public AnnotTest {
 protected:
  MarkupTipTest() {
    PdfPage page = linedPage({"Quill and page"});
    page.annotations = {highlightBox(100, 200, 180, 230, "/Contents (first note)"),
                        highlightBox(200, 200, 280, 230, "/Contents (second note)"),
                        highlightBox(300, 200, 380, 230),
                        highlightBox(400, 200, 480, 230, "/Contents ()")};
    openPages({page, linedPage({"other"})});
  }
  static void hover(double x, double y) {
    const ClientPoint place = placeOf(x, y);
    hoverPointer(place.x, place.y);
  }
  static std::u16string shown() {
    const auto& tip = dialogScript().tip;
    return tip ? tip->text : u"nothing";
  }
};

TEST_F(MarkupTipTest, AMarkWithANoteShowsItAndOthersDoNot) {
  hover(140, 215);
  EXPECT_EQ(shown(), u"first note");
  hover(240, 215);
  EXPECT_EQ(shown(), u"second note");
  hover(340, 215);
  EXPECT_EQ(shown(), u"nothing");
  hover(140, 215);
  hover(440, 215);
  EXPECT_EQ(shown(), u"nothing");
  hover(140, 215);
  hover(140, 400);
  EXPECT_EQ(shown(), u"nothing");
}

TEST_F(MarkupTipTest, TheTipFollowsThePointerOverItsMark) {
  hover(140, 215);
  hover(150, 220);
  const ClientPoint place = placeOf(150, 220);
  ASSERT_TRUE(dialogScript().tip);
  EXPECT_EQ(dialogScript().tip->x, place.x);
  EXPECT_EQ(dialogScript().tip->y, place.y);
  EXPECT_EQ(dialogScript().tipsShown, 1);
}

TEST_F(MarkupTipTest, OutsideThePanesThereIsNoTip) {
  hover(140, 215);
  hoverPointer(500, 790);  // over the status bar
  EXPECT_EQ(shown(), u"nothing");
  hover(140, 215);
  hoverPointer(-5, 300);
  EXPECT_EQ(shown(), u"nothing");
}

TEST_F(MarkupTipTest, WhateverThePersonDoesHidesTheTip) {
  const ClientPoint place = placeOf(140, 215);
  const auto hides = [&](const char* what, const std::function<void()>& act) {
    hover(150, 215);
    hover(140, 215);
    ASSERT_EQ(shown(), u"first note") << what;
    act();
    EXPECT_EQ(shown(), u"nothing") << what;
    // Windows reports a movement to the pointer's old position.
    hoverPointer(place.x, place.y);
    EXPECT_EQ(shown(), u"nothing") << what;
  };
  hides("key", [] { handleKey(kKeyHome + 100); });
  hides("wheel", [&] { turnWheel(place.x, place.y, 0, true, true); });
  hides("command", [] { runCommand(kCmdCopy); });
  hides("middle button", [&] {
    pressMiddle(place.x, place.y);
    loseCapture();
  });
  hides("left button", [&] {
    pressLeft(place.x, place.y);
    loseCapture();
  });
  hides("right button", [&] { releaseRight(place.x, place.y); });
  hides("leaving", [] { HideMarkupTip(); });
  // A key that goes to the find bar or a tree shows what it does by a change of the picture.
  hides("scrolling", [] { pictureChanged(); });
  hides("hits", [] { hitsChanged(); });
  hides("zoom", [] { zoomChanged(); });
  hides("sizes of panes", [] { panesLaidOut(); });
  hides("turn", [] { turnsChanged(0); });
  hover(141, 215);
  EXPECT_EQ(shown(), u"first note");
}

TEST_F(MarkupTipTest, ANewNoteIsShownAtOnceWhereThePointerRests) {
  const ClientPoint place = placeOf(140, 215);
  hoverPointer(place.x, place.y);
  releaseRight(place.x, place.y);
  dialogScript().noteAnswers = {u"changed"};
  runCommand(kCmdNote);
  hoverPointer(place.x, place.y);
  EXPECT_EQ(shown(), u"changed");
}

TEST_F(MarkupTipTest, ANoteGoesWithItsPageItsMarkAndItsDocument) {
  hover(140, 215);
  goToPage(0, 1, false);
  EXPECT_EQ(shown(), u"nothing");
  goToPage(0, 0, false);
  setView(0, 1.0f, 40.0f, 20.0f);
  hover(140, 215);
  ASSERT_EQ(shown(), u"first note");
  documentsLeaving();
  EXPECT_EQ(shown(), u"nothing");
  const ClientPoint place = placeOf(140, 215);
  releaseRight(place.x, place.y);
  RemoveMarkup();
  hover(140, 215);
  EXPECT_EQ(shown(), u"nothing");
}

TEST_F(MarkupTipTest, TheTipShowsTheBeginningOfALongNote) {
  EXPECT_EQ(tipText(std::u16string(1000, u'a')).size(), 1000u);
  EXPECT_EQ(tipText(std::u16string(1'000'000, u'a')).size(), 1000u);
  EXPECT_EQ(tipText(u"one\rtwo"), u"one\r\ntwo");
  // A surrogate pair is not cut in half.
  const std::u16string pens = std::u16string(999, u'a') + u"\U0001F58B more";
  EXPECT_EQ(tipText(pens), std::u16string(999, u'a'));
  EXPECT_EQ(tipText(std::u16string(998, u'a') + u"\U0001F58B"),
            std::u16string(998, u'a') + u"\U0001F58B");
}

TEST_F(MarkupTipTest, ANoteOfManyLinesShowsTheFirstTwenty) {
  const auto lines = [](int count) {
    std::u16string text;
    for (int i = 1; i <= count; ++i) text += (i > 1 ? u"\r\nline " : u"line ") + decimal(i);
    return text;
  };
  EXPECT_EQ(tipText(lines(20)), lines(20));
  EXPECT_EQ(tipText(lines(21)), lines(20));
  EXPECT_EQ(tipText(lines(20) + u"\r"), lines(20));
  std::u16string blank;
  for (int i = 1; i < 20; ++i) blank += u"\r\n";
  EXPECT_EQ(tipText(std::u16string(900, u'\r')), blank);
}

TEST_F(MarkupTipTest, TheTipStandsBelowThePointerAndStaysOnTheScreen) {
  const PixelRect screen{0, 0, 1000, 800};
  EXPECT_EQ(placeTip(100, 100, 200, 50, 16, 20, screen), (PixelRect{116, 120, 316, 170}));
  // At the right edge it moves left, at the bottom it moves above the pointer.
  EXPECT_EQ(placeTip(900, 100, 200, 50, 16, 20, screen), (PixelRect{800, 120, 1000, 170}));
  EXPECT_EQ(placeTip(100, 760, 200, 50, 16, 20, screen), (PixelRect{116, 690, 316, 740}));
  // One too tall for either starts at the top of the screen.
  EXPECT_EQ(placeTip(100, 400, 200, 900, 16, 20, screen), (PixelRect{116, 0, 316, 900}));
  const PixelRect second{-1000, -200, 0, 600};
  EXPECT_EQ(placeTip(-50, 590, 200, 50, 16, 20, second), (PixelRect{-200, 520, 0, 570}));
}

}  // namespace
}  // namespace quillmere::test
