#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "annot/markup_dialog.h"
#include "platform/win32/main_window.h"
#include "ui/plain_main_window_windows_test.h"

namespace quillmere::test {
namespace {

using platform::windowHandles;
using platform::windowText;
using testing::ElementsAre;

constexpr int kOpacityId = 1003;
constexpr int kPercentId = 1004;

class MarkupDialogWindowTest : public PlainMainWindowTest {
 protected:
  void SetUp() override {
    openMarkupDialog(markupDialogView());
    ASSERT_TRUE(markupDialogOpen());
  }
  void TearDown() override { closeMarkupDialog(); }

  static HWND dialog() {
    return windowHandles.dialogs[static_cast<int>(platform::ModelessDialog::MarkUp)];
  }
  static HWND control(int id) { return GetDlgItem(dialog(), id); }
  // The texts of all labels, in their order.
  static std::vector<std::u16string> labels() {
    std::vector<std::u16string> texts;
    HWND label = nullptr;
    while ((label = FindWindowExW(dialog(), label, WC_STATICW, nullptr)) != nullptr) {
      texts.push_back(windowText(label));
    }
    return texts;
  }
  static LRESULT askSlider(UINT message) {
    return SendMessageW(control(kOpacityId), message, 0, 0);
  }
  static void pressOnSlider(WPARAM key) { SendMessageW(control(kOpacityId), WM_KEYDOWN, key, 0); }
};

TEST_F(MarkupDialogWindowTest, ItsLabelsNameTheChoicesAndTellHowToMarkUp) {
  EXPECT_THAT(
      labels(),
      ElementsAre(u"Highlight color:", u"Strikethrough color:", u"Highlight opacity:", u"100%",
                  u"How to mark up:\r\n"
                  u"  Select text, press Ctrl+Spacebar to strike through.\r\n"
                  u"  Right-click an annotation to Add Note... or Remove Markup.\r\n"
                  u"  Hover over an annotation to view its note.\r\n"
                  u"  Edit menu > Create Markup Summary to export all notes."));
}

TEST_F(MarkupDialogWindowTest, EveryLabelHasRoomForItsText) {
  HWND label = nullptr;
  int seen = 0;
  while ((label = FindWindowExW(dialog(), label, WC_STATICW, nullptr)) != nullptr) {
    wchar_t text[1024] = {};
    GetWindowTextW(label, text, static_cast<int>(std::size(text)));
    const SIZE needed = textSize(label, text, DT_NOPREFIX);
    const SIZE room = sizeOf(label);
    EXPECT_LE(needed.cx, room.cx) << testing::PrintToString(windowText(label));
    EXPECT_LE(needed.cy, room.cy) << testing::PrintToString(windowText(label));
    ++seen;
  }
  EXPECT_EQ(seen, 5);
}

TEST_F(MarkupDialogWindowTest, TheSliderGoesFromTwentyToAHundredPercent) {
  EXPECT_EQ(askSlider(TBM_GETRANGEMIN), 20);
  EXPECT_EQ(askSlider(TBM_GETRANGEMAX), 100);
  EXPECT_EQ(askSlider(TBM_GETPOS), 100);
  pressOnSlider(VK_HOME);
  EXPECT_EQ(windowText(control(kPercentId)), u"20%");
  EXPECT_EQ(session.settings.highlightOpacity, 20);
  pressOnSlider(VK_NEXT);
  EXPECT_EQ(windowText(control(kPercentId)), u"30%");
  EXPECT_EQ(session.settings.highlightOpacity, 30);
}

}  // namespace
}  // namespace quillmere::test
