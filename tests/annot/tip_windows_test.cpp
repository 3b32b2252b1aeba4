#include <string>

#include "annot/markup_tip.h"
#include "annot/tip_window.h"
#include "platform/win32/wide.h"
#include "ui/plain_main_window_windows_test.h"

namespace quillmere::test {
namespace {

constexpr COLORREF kBackground = RGB(255, 247, 153);
constexpr COLORREF kText = RGB(33, 33, 33);

class TipWindowTest : public PlainMainWindowTest {
 protected:
  // The tip on the screen; null when there is none.
  static HWND shownTip() {
    HWND tip = nullptr;
    while ((tip = FindWindowExW(nullptr, tip, TOOLTIPS_CLASSW, nullptr)) != nullptr) {
      DWORD process = 0;
      GetWindowThreadProcessId(tip, &process);
      if (process == GetCurrentProcessId() && IsWindowVisible(tip)) return tip;
    }
    return nullptr;
  }
  // Shows the text and returns how much space it takes; the tip's borders, too, unless they have
  // been measured.
  static SIZE shownSize(const std::u16string& text) {
    showTip(text, 100, 100);
    const SIZE size = sizeOf(shownTip());
    return {size.cx - border.cx, size.cy - border.cy};
  }
  static void measureBorder() {
    border = {};
    const SIZE all = shownSize(u"a");
    const SIZE text = textSize(shownTip(), L"a", DT_NOPREFIX);
    border = {all.cx - text.cx, all.cy - text.cy};
  }

  static inline SIZE border{};
};

TEST_F(TipWindowTest, ATipComesAndGoes) {
  EXPECT_EQ(shownTip(), nullptr);
  showTip(u"a note", 100, 100);
  ASSERT_NE(shownTip(), nullptr);
  hideTip();
  EXPECT_EQ(shownTip(), nullptr);
}

TEST_F(TipWindowTest, AnAmpersandIsShownAsItStands) {
  measureBorder();
  const SIZE shown = shownSize(u"a & b");
  const SIZE literal = textSize(shownTip(), L"a & b", DT_NOPREFIX);
  ASSERT_NE(literal.cx, textSize(shownTip(), L"a & b", 0).cx);
  EXPECT_EQ(shown.cx, literal.cx);
}

TEST_F(TipWindowTest, ALongNoteIsBrokenIntoLines) {
  measureBorder();
  std::u16string note = u"word";
  for (int i = 1; i < 300; ++i) note += i % 7 == 0 ? u" longer-word" : u" word";
  const std::u16string beginning = tipText(note);
  const SIZE shown = shownSize(beginning);
  const std::wstring text = platform::wide(beginning);
  constexpr int kWidth = 360;
  EXPECT_LE(shown.cx, kWidth);
  const SIZE broken = textSize(shownTip(), text, DT_NOPREFIX | DT_WORDBREAK, kWidth);
  EXPECT_NEAR(shown.cy, broken.cy, 2);
  EXPECT_GT(shown.cy, 10 * textSize(shownTip(), L"a", DT_NOPREFIX).cy);
}

TEST_F(TipWindowTest, TheTipIsYellowWithDarkText) {
  showTip(u"____||||____", 100, 100);
  const HWND tip = shownTip();
  ASSERT_NE(tip, nullptr);
  UpdateWindow(tip);
  const SIZE size = sizeOf(tip);
  const HDC context = GetDC(tip);
  int background = 0;
  int text = 0;
  for (int y = 0; y < size.cy; ++y) {
    for (int x = 0; x < size.cx; ++x) {
      const COLORREF color = GetPixel(context, x, y);
      if (color == kBackground) ++background;
      if (color == kText) ++text;
    }
  }
  ReleaseDC(tip, context);
  EXPECT_GT(background, size.cx * size.cy / 2);
  EXPECT_GT(text, 10);
}

}  // namespace
}  // namespace quillmere::test
