#include "annot/markup_dialog.h"

#include <gmock/gmock.h>

#include "app/commands.h"
#include "app/keys.h"
#include "dialogs/dialog_script.h"
#include "nav/find_bar.h"
#include "store/settings.h"
#include "support/settings_file.h"

namespace quillmere::test {
namespace {

using testing::ElementsAre;

class MarkupDialogTest : public SettingsFileTest {
 protected:
  MarkupDialogTest() {
    putIni(u"[Defaults]\n");
    restart();
  }
  static std::optional<std::u16string> saved(std::u16string_view key) {
    return iniValue(u"Markup", key);
  }
};

TEST_F(MarkupDialogTest, ItShowsWhatNewMarksLookLike) {
  session.settings.highlightColorIndex = 3;
  session.settings.strikeColorIndex = 1;
  session.settings.highlightOpacity = 55;
  session.settings.markupColors[1].name = u"Grass";
  const MarkupDialogView view = markupDialogView();
  EXPECT_THAT(view.colors,
              ElementsAre(u"Yellow", u"Grass", u"Cyan", u"Pink", u"Orange", u"Blue", u"Red"));
  EXPECT_EQ(view.highlightRow, 3);
  EXPECT_EQ(view.strikeRow, 1);
  EXPECT_EQ(view.opacity, 55);
  EXPECT_EQ(view.opacityText, u"55%");
  EXPECT_FALSE(view.place);
}

TEST_F(MarkupDialogTest, ItTellsHowToMarkUp) {
  EXPECT_EQ(markupDialogView().help,
            u"How to mark up:\r\n"
            u"  Select text, press Ctrl+Spacebar to strike through.\r\n"
            u"  Right-click an annotation to Add Note... or Remove Markup.\r\n"
            u"  Hover over an annotation to view its note.\r\n"
            u"  Edit menu > Create Markup Summary to export all notes.");
}

TEST_F(MarkupDialogTest, SettingsBeyondTheirRangeAreShownAsTheyAreUsed) {
  session.settings.highlightColorIndex = 7;
  session.settings.strikeColorIndex = 0xFFFFFFFF;
  session.settings.highlightOpacity = 3;
  const MarkupDialogView view = markupDialogView();
  EXPECT_EQ(view.highlightRow, 0);
  EXPECT_EQ(view.strikeRow, 0);
  EXPECT_EQ(view.opacity, 20);
}

TEST_F(MarkupDialogTest, TheCommandOpensAndClosesIt) {
  runCommand(kCmdMarkUp);
  EXPECT_TRUE(markupDialogOpen());
  runCommand(kCmdMarkUp);
  EXPECT_FALSE(markupDialogOpen());
}

TEST_F(MarkupDialogTest, AViewerHasNone) {
  session.viewerRole = true;
  runCommand(kCmdMarkUp);
  EXPECT_FALSE(markupDialogOpen());
}

TEST_F(MarkupDialogTest, AColourIsSavedAtOnce) {
  chooseHighlightColor(4);
  EXPECT_EQ(saved(u"HlColorIdx"), u"4");
  chooseStrikeColor(5);
  EXPECT_EQ(saved(u"StrikeColorIdx"), u"5");
  EXPECT_EQ(session.settings.highlightColorIndex, 4u);
  EXPECT_EQ(session.settings.strikeColorIndex, 5u);
}

TEST_F(MarkupDialogTest, AColourThatTheListDoesNotHaveIsTheFirst) {
  for (const int row : {7, 100, -1}) {
    chooseHighlightColor(3);
    chooseHighlightColor(row);
    EXPECT_EQ(session.settings.highlightColorIndex, 0u) << row;
    chooseStrikeColor(3);
    chooseStrikeColor(row);
    EXPECT_EQ(session.settings.strikeColorIndex, 0u) << row;
  }
}

TEST_F(MarkupDialogTest, TheOpacityHoldsWhileItsSliderMovesAndIsSavedAtTheEnd) {
  SaveSettings();
  EXPECT_EQ(moveMarkupOpacity(80), u"80%");
  EXPECT_EQ(moveMarkupOpacity(40), u"40%");
  EXPECT_EQ(session.settings.highlightOpacity, 40);
  EXPECT_EQ(saved(u"HlOpacity"), u"100");
  settleMarkupOpacity();
  EXPECT_EQ(saved(u"HlOpacity"), u"40");
}

TEST_F(MarkupDialogTest, ASliderThatDidNotMoveSavesNothing) {
  putIni(u"[Markup]\nHlOpacity=77\n");
  moveMarkupOpacity(session.settings.highlightOpacity);
  settleMarkupOpacity();
  EXPECT_EQ(saved(u"HlOpacity"), u"77");
  moveMarkupOpacity(50);
  settleMarkupOpacity();
  putIni(u"[Markup]\nHlOpacity=77\n");
  settleMarkupOpacity();
  EXPECT_EQ(saved(u"HlOpacity"), u"77");
}

TEST_F(MarkupDialogTest, TheOpacityStaysWithinItsLimits) {
  EXPECT_EQ(moveMarkupOpacity(5), u"20%");
  EXPECT_EQ(session.settings.highlightOpacity, 20);
  EXPECT_EQ(moveMarkupOpacity(500), u"100%");
  EXPECT_EQ(session.settings.highlightOpacity, 100);
}

TEST_F(MarkupDialogTest, ItOpensWhereItStoodLast) {
  runCommand(kCmdMarkUp);
  dialogScript().markupDialogPlace = {250, -40};
  runCommand(kCmdMarkUp);
  EXPECT_EQ(saved(u"DlgX"), u"250");
  EXPECT_EQ(saved(u"DlgY"), u"-40");
  runCommand(kCmdMarkUp);
  ASSERT_TRUE(dialogScript().markupDialog->place);
  EXPECT_EQ(dialogScript().markupDialog->place->left, 250);
  EXPECT_EQ(dialogScript().markupDialog->place->top, -40);
}

TEST_F(MarkupDialogTest, ClosingItSavesAnOpacityThatWasStillMoving) {
  runCommand(kCmdMarkUp);
  moveMarkupOpacity(30);
  runCommand(kCmdMarkUp);
  EXPECT_EQ(saved(u"HlOpacity"), u"30");
}

TEST_F(MarkupDialogTest, EscapeClosesItBeforeTheFindBar) {
  OpenFindBar();
  runCommand(kCmdMarkUp);
  handleKey(kKeyEscape);
  EXPECT_FALSE(markupDialogOpen());
  EXPECT_TRUE(session.findBarVisible);
  handleKey(kKeyEscape);
  EXPECT_FALSE(session.findBarVisible);
}

}  // namespace
}  // namespace quillmere::test
