#include "driver/binder_scenario.h"
#include "driver/inside_request.h"

namespace quillmere::e2e {
namespace {

using ::testing::ElementsAre;

// The binder tree while something goes on in it: a press, a drag, an edit, a wait for a share.
class BinderTree : public BinderScenario {
 protected:
  bool treeShown(bool wanted) const {
    return eventually([&] { return (IsWindowVisible(tree()) != FALSE) == wanted; });
  }
  bool nobodyHasMouse() const {
    return eventually([&] {
      GUITHREADINFO info{};
      info.cbSize = sizeof(info);
      return GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info) &&
             info.hwndCapture == nullptr;
    });
  }
  // A binder with more documents than the tree has room for.
  void startWithManyDocuments() {
    std::vector<std::wstring> files;
    for (int i = 10; i < 90; ++i) {
      files.push_back(scenarioFolder() + L"\\d" + std::to_wstring(i) + L".pdf");
    }
    work = makeBinder(L"Work", files);
    start();
    ASSERT_TRUE(rowShown(L"d12"));
  }
  POINT middleOfTree() const {
    const RECT area = windowRect(tree());
    return {(area.left + area.right) / 2, (area.top + area.bottom) / 2};
  }
};

TEST_F(BinderTree, AClickCountsForTheRowWhereTheButtonWentDown) {
  startWithBinders();
  clickRow(L"first");
  ASSERT_TRUE(titleBecomes(L"Quillmere - first.pdf"));
  runCommand(window, 105);
  ASSERT_TRUE(titleBecomes(L"Quillmere"));
  const RECT row = rowPlace(L"first");
  const POINT down = aside({row.left + 4, row.bottom - 1});
  const POINT up{down.x, down.y + 2};  // on the next row, and not far enough for a drag
  movePointer(down);
  ASSERT_TRUE(inputIsHandled(window));
  pressButton(down);
  ASSERT_TRUE(treeHasMouse());
  movePointer(up);
  ASSERT_TRUE(inputIsHandled(window));
  releaseButton(up);
  EXPECT_TRUE(titleBecomes(L"Quillmere - first.pdf"));
  EXPECT_TRUE(rowSelected(L"first"));
}

TEST_F(BinderTree, ARebuildWaitsForTheEndOfAPress) {
  startWithBinders();
  const POINT place = aside(pointOf(L"second"));
  movePointer(place);
  ASSERT_TRUE(inputIsHandled(window));
  pressButton(place);
  ASSERT_TRUE(treeHasMouse());
  const std::vector<LRESULT> before = rowHandles();
  deliverRebuild();
  EXPECT_EQ(rowHandles(), before);
  releaseButton(place);
  EXPECT_TRUE(titleBecomes(L"Quillmere - second.pdf"));
  EXPECT_TRUE(rowsBecome(kStartRows));
  EXPECT_TRUE(rowSelected(L"second"));
}

TEST_F(BinderTree, ARebuildWaitsForTheEndOfADrag) {
  startWithBinders();
  startDrag(L"first");
  const std::vector<LRESULT> before = rowHandles();
  deliverRebuild();
  EXPECT_EQ(rowHandles(), before);
  const POINT to = pointOf(L"second", true);
  movePointer(to);
  ASSERT_TRUE(inputIsHandled(window));
  releaseButton(to);
  EXPECT_TRUE(rowsBecome({kStartRows[0], kStartRows[1], kStartRows[2], kStartRows[3], L"1|second",
                          L"1|first", kStartRows[6], kStartRows[7]}));
  EXPECT_THAT(documentsIn(work), ElementsAre(bytesOf(second), bytesOf(first)));
}

TEST_F(BinderTree, ARebuildWaitsUntilANameIsTyped) {
  startWithBinders();
  startRename(L"Work");
  type(L"Pa");
  ASSERT_TRUE(inputIsHandled(window));
  const std::vector<LRESULT> before = rowHandles();
  deliverRebuild();
  EXPECT_EQ(rowHandles(), before);
  EXPECT_EQ(classOf(focusOf(window)), L"Edit");
  type(L"pers");
  press(VK_RETURN);
  EXPECT_TRUE(rowSelected(L"Papers"));
  EXPECT_TRUE(exists(userDataFolder() + L"\\Binders\\Papers.lst"));
}

TEST_F(BinderTree, TheWheelScrollsDuringADragAndTheDropCounts) {
  startWithManyDocuments();
  const std::string dragged = documentsIn(work)[1];
  startDrag(L"d11");
  turnWheel(middleOfTree(), -3 * WHEEL_DELTA);
  EXPECT_TRUE(eventually([&] { return firstVisibleRow() > 0; }));
  ASSERT_TRUE(rowShown(L"d19"));
  const POINT to = pointOf(L"d19", true);
  movePointer(to);
  ASSERT_TRUE(inputIsHandled(window));
  picture("BinderTree.WheelInDrag");
  releaseButton(to);
  EXPECT_TRUE(rowSelected(L"d11"));  // the file has been written then, and can be read
  EXPECT_EQ(documentsIn(work)[9], dragged);
}

TEST_F(BinderTree, AMoveInAnEdgeRowScrollsDuringADrag) {
  startWithManyDocuments();
  const POINT from = startDrag(L"d11");
  const RECT area = clientOnScreen(tree());
  const auto moveAlong = [&](LONG y) {
    for (LONG step = 0; step < 4; ++step) {
      movePointer({from.x + step, y});
      ASSERT_TRUE(inputIsHandled(window));
    }
  };
  moveAlong(area.bottom - 3);
  const int down = firstVisibleRow();
  EXPECT_GT(down, 0);
  moveAlong(area.top + 3);
  EXPECT_LT(firstVisibleRow(), down);
  press(VK_ESCAPE);
  EXPECT_TRUE(nobodyHasMouse());
  releaseButton({from.x + 3, area.top + 3});
  EXPECT_EQ(documentsIn(work)[1], bytesOf(scenarioFolder() + L"\\d11.pdf"));
}

TEST_F(BinderTree, TheKeyboardOpensTheMenuOfTheSelectedRow) {
  startWithBinders();
  clickRow(L"first");
  ASSERT_TRUE(titleBecomes(L"Quillmere - first.pdf"));
  ASSERT_TRUE(treeHasKeyboard());
  for (const bool menuKey : {false, true}) {
    if (menuKey) {
      press(VK_APPS);
    } else {
      press(VK_F10, kShift);
    }
    ASSERT_TRUE(menuIsOpen());
    EXPECT_EQ(menuRows().front(), L"Open");
    if (menuKey) picture("BinderTree.MenuByKey");
    press(VK_ESCAPE);
    ASSERT_TRUE(eventually([&] { return program.find(L"#32768") == nullptr; }));
  }
  EXPECT_TRUE(rowSelected(L"first"));
}

TEST_F(BinderTree, TheMenuKeyBringsTheSelectedRowIntoView) {
  startWithManyDocuments();
  clickRow(L"Work");
  ASSERT_TRUE(treeHasKeyboard());
  turnWheel(middleOfTree(), -10 * WHEEL_DELTA);
  ASSERT_TRUE(eventually([&] {
    const RECT row = treeRowOnScreen(window, tree(), L"Work");
    return IsRectEmpty(&row) != FALSE;
  }));
  press(VK_APPS);
  ASSERT_TRUE(menuIsOpen());
  EXPECT_EQ(menuRows().front(), L"Add Document to Binder...");
  press(VK_ESCAPE);
  EXPECT_TRUE(rowShown(L"Work"));
}

TEST_F(BinderTree, ClosingTheWindowEndsTheTypingOfAName) {
  startWithBinders();
  startRename(L"Work");
  type(L"half");
  ASSERT_TRUE(inputIsHandled(window));
  PostMessageW(window, WM_CLOSE, 0, 0);
  EXPECT_EQ(program.exitCode(), 0u);
  EXPECT_TRUE(exists(work));
  EXPECT_FALSE(exists(userDataFolder() + L"\\Binders\\half.lst"));
}

TEST_F(BinderTree, HidingThePanelEndsTheTypingOfAName) {
  startWithBinders();
  startRename(L"Work");
  type(L"half");
  press(VK_F3);
  EXPECT_TRUE(treeShown(false));
  EXPECT_TRUE(eventually([&] { return focusOf(window) == window; }));
  press(VK_F3);
  EXPECT_TRUE(treeShown(true));
  EXPECT_TRUE(rowsBecome(kStartRows));
  EXPECT_TRUE(exists(work));
}

TEST_F(BinderTree, HidingThePanelEndsADrag) {
  startWithBinders();
  startDrag(L"first");
  const POINT to = pointOf(L"second", true);
  movePointer(to);
  ASSERT_TRUE(inputIsHandled(window));
  runCommand(window, 212);  // the system runs no shortcuts while the mouse is captured
  EXPECT_TRUE(treeShown(false));
  EXPECT_TRUE(nobodyHasMouse());
  runCommand(window, 212);
  EXPECT_TRUE(treeShown(true));
  releaseButton(to);
  ASSERT_TRUE(inputIsHandled(window));
  EXPECT_TRUE(rowsBecome(kStartRows));
  EXPECT_THAT(documentsIn(work), ElementsAre(bytesOf(first), bytesOf(second)));
}

TEST_F(BinderTree, AShareThatNeverAnswersHoldsTheWindowForTheTimeoutAlone) {
  first = makeFile(L"first.pdf", coloredPdf(2));
  makeBinder(L"Work", {L"\\\\silent\\texts\\far.pdf", L"//silent/texts/other.pdf", first});
  setSetting(L"Network", L"OpenTimeoutSeconds", L"1");
  start();
  ASSERT_EQ(askInside(window, InsideRequest::SilenceShare, 0, L"\\\\silent\\"), L"1");
  EXPECT_TRUE(rowHas(L"far", TVIS_CUT, false));
  const ULONGLONG pressed = GetTickCount64();
  clickRow(L"far");
  const Box box = waitForBox(program);
  EXPECT_LT(GetTickCount64() - pressed, 10'000u);  // the share is silent for a minute
  EXPECT_EQ(box.title, L"Network Location Unavailable");
  EXPECT_EQ(box.text,
            L"This document is on a network location that didn't respond within 1 second.\n\nIf "
            L"it's a slow or sleeping connection (for example a NAS waking up), increase \"Network "
            L"open timeout\" in Settings (App) and try again.\n\nOtherwise, check that you're "
            L"connected to the network (VPN / Wi-Fi).");
  EXPECT_THAT(box.buttons, ElementsAre(L"OK"));
  picture("BinderTree.SilentShare");
  ASSERT_TRUE(answerBox(box, VK_RETURN));
  EXPECT_TRUE(rowHas(L"far", TVIS_CUT));
  EXPECT_TRUE(titleBecomes(L"Quillmere"));
  clickRow(L"first");
  EXPECT_TRUE(titleBecomes(L"Quillmere - first.pdf"));
}

}  // namespace
}  // namespace quillmere::e2e
