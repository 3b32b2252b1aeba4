#include "annot/text_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/keys.h"
#include "dialogs/dialog_script.h"
#include "support/session_test.h"

namespace quillmere::test {
namespace {

class TextDialogTest : public SessionTest {
 protected:
  TextDialogTest() { resetDialogScript(); }
};

TEST_F(TextDialogTest, ItOffersFontsSizesAndColours) {
  session.settings.textFontIndex = 3;
  session.settings.textColorIndex = 7;
  session.settings.textSizePt = 17;
  const TextDialogView view = textDialogView();
  EXPECT_THAT(view.fonts, testing::ElementsAre(u"Helvetica", u"Helvetica Bold", u"Times Roman",
                                               u"Times Bold", u"Courier", u"Courier Bold"));
  EXPECT_EQ(view.sizes.size(), 18u);
  EXPECT_EQ(view.sizes.front(), u"6");
  EXPECT_EQ(view.sizes.back(), u"96");
  EXPECT_EQ(view.colors.size(), 8u);
  EXPECT_EQ(view.colors[1], session.settings.textColors[1].name);
  EXPECT_EQ(view.fontRow, 3);
  EXPECT_EQ(view.colorRow, 7);
  EXPECT_EQ(view.size, u"17");
  EXPECT_FALSE(view.place);
}

TEST_F(TextDialogTest, RowsThatAreNotThereCountAsTheFirst) {
  session.settings.textFontIndex = 6;
  session.settings.textColorIndex = 8;
  EXPECT_EQ(textDialogView().fontRow, 0);
  EXPECT_EQ(textDialogView().colorRow, 0);
  chooseTextFont(-1);
  chooseTextColor(99);
  EXPECT_EQ(session.settings.textFontIndex, 0u);
  EXPECT_EQ(session.settings.textColorIndex, 0u);
}

TEST_F(TextDialogTest, TypedSizesAreLimitedOrIgnored) {
  changeTextSize(u"13");
  EXPECT_EQ(session.settings.textSizePt, 13);
  for (const char16_t* typed : {u"", u"0", u"-5", u"abc"}) changeTextSize(typed);
  EXPECT_EQ(session.settings.textSizePt, 13);
  changeTextSize(u"2");
  EXPECT_EQ(session.settings.textSizePt, 4);
  changeTextSize(u"12.7");
  EXPECT_EQ(session.settings.textSizePt, 12);
  changeTextSize(u" 30 pt");
  EXPECT_EQ(session.settings.textSizePt, 30);
  changeTextSize(u"1e3");
  EXPECT_EQ(session.settings.textSizePt, 4) << "it begins with a 1";
  changeTextSize(u"99999999999999");
  EXPECT_EQ(session.settings.textSizePt, 96);
}

TEST_F(TextDialogTest, TheToolIsArmedWhileItIsOpen) {
  session.textTool.extraTurns = 3;
  toggleTextDialog();
  EXPECT_TRUE(session.textTool.armed);
  EXPECT_EQ(session.textTool.extraTurns, 0u);
  toggleTextDialog();
  EXPECT_FALSE(session.textTool.armed);
  EXPECT_EQ(session.settings.textDialogX, 320);
  EXPECT_EQ(session.settings.textDialogY, 220);
  EXPECT_EQ(textDialogView().place->left, 320);
}

TEST_F(TextDialogTest, EscapeClosesItBeforeMarkUp) {
  toggleMarkupDialog();
  toggleTextDialog();
  handleKey(kKeyEscape);
  EXPECT_FALSE(textDialogOpen());
  EXPECT_TRUE(markupDialogOpen());
}

TEST_F(TextDialogTest, TheTextIsKeptUpToItsLimit) {
  changeDialogText(std::u16string(300, u'x'));
  EXPECT_EQ(session.textTool.text.size(), 256u);
  EXPECT_EQ(textDialogView().text.size(), 256u);
}

}  // namespace
}  // namespace quillmere::test
