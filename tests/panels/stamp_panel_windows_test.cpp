#include "panels/stamp_panel.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <commctrl.h>

#include "panels/stamp_panel_window.h"
#include "panels/stamp_splitter.h"
#include "ui/plain_main_window_windows_test.h"

namespace quillmere::test {
namespace {

constexpr UINT_PTR kProbe = 1;

std::u16string namesWhenMouseWent;  // in the library's order

std::u16string order() {
  std::u16string names;
  for (const StampEntry& entry : session.stampLibrary) names += entry.name;
  return names;
}

LRESULT CALLBACK probeProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                DWORD_PTR) {
  if (message == WM_CAPTURECHANGED) namesWhenMouseWent = order();
  return DefSubclassProc(window, message, wParam, lParam);
}

// The panel with three stamps, each in a row of 80 pixels.
class StampPanelWindowTest : public PlainMainWindowTest {
 protected:
  void SetUp() override {
    namesWhenMouseWent.clear();
    for (const char16_t* name : {u"a", u"b", u"c"}) {
      StampEntry entry;
      entry.name = name;
      entry.width = 160;
      entry.height = 80;
      session.stampLibrary.push_back(entry);
    }
    session.stampPanelVisible = true;
    registerStampPanelClass();
    const PixelRect place = stampPanelRect();
    panel = CreateWindowExW(0, L"QuillmereStampPanel", L"", WS_CHILD | WS_VISIBLE, place.left,
                            place.top, place.width(), place.height(), platform::windowHandles.main,
                            nullptr, GetModuleHandleW(nullptr), nullptr);
    ASSERT_NE(panel, nullptr);
    SetWindowSubclass(panel, probeProcedure, kProbe, 0);
    ValidateRect(panel, nullptr);  // the stamps have no files
  }
  void send(UINT message, int y) const {
    SendMessageW(panel, message, MK_LBUTTON, MAKELPARAM(50, y));
  }
  static int rowOf(int index) { return 98 + 88 * index + 40; }

  HWND panel = nullptr;
};

TEST_F(StampPanelWindowTest, ADropGivesTheMouseBackBeforeItTakesEffect) {
  send(WM_LBUTTONDOWN, rowOf(0));
  EXPECT_EQ(GetCapture(), panel);
  send(WM_MOUSEMOVE, rowOf(1));
  send(WM_LBUTTONUP, rowOf(2) + 20);
  EXPECT_EQ(GetCapture(), nullptr);
  EXPECT_EQ(namesWhenMouseWent, u"abc");
  EXPECT_EQ(order(), u"bca");
}

TEST_F(StampPanelWindowTest, ADragThatLosesTheMouseHasNoEffect) {
  send(WM_LBUTTONDOWN, rowOf(0));
  send(WM_MOUSEMOVE, rowOf(1));
  ReleaseCapture();
  EXPECT_FALSE(session.stampDrag.dragActive);
  send(WM_LBUTTONUP, rowOf(2) + 20);
  EXPECT_EQ(order(), u"abc");
}

TEST_F(StampPanelWindowTest, AMovementThatIsHandledWhenThePointerIsElsewhereMarksNothing) {
  POINT corner{-1, -1};
  ClientToScreen(panel, &corner);
  SetCursorPos(corner.x, corner.y);
  send(WM_MOUSEMOVE, rowOf(1));
  EXPECT_EQ(session.hoveredStampItem, kNoStampItem);
}

// What is drawn left of the second button's middle, from the panel's edge: the first pixel of its
// frame.
TEST_F(StampPanelWindowTest, MarginsGrowWithTheScreensDensity) {
  const auto frameAt = [&](int y) {
    RedrawWindow(panel, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    const HDC context = GetDC(panel);
    int x = 0;
    while (x < 20 && GetPixel(context, x, y) != RGB(200, 200, 200)) ++x;
    ReleaseDC(panel, context);
    return x;
  };
  session.stampLibrary.clear();
  EXPECT_EQ(frameAt(46), 4);
  session.dpi = 144;
  EXPECT_EQ(frameAt(69), 6);
}

TEST_F(StampPanelWindowTest, ADoubleClickIsTwoPresses) {
  send(WM_LBUTTONDOWN, rowOf(0));
  send(WM_LBUTTONUP, rowOf(0));
  send(WM_LBUTTONDBLCLK, rowOf(1));
  EXPECT_EQ(session.selectedStamp, 1);
  EXPECT_TRUE(session.stampDrag.dragActive);
  send(WM_LBUTTONUP, rowOf(1));
  EXPECT_EQ(GetCapture(), nullptr);
}

}  // namespace
}  // namespace quillmere::test
