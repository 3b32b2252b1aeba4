#include "driver/binder_scenario.h"

namespace quillmere::e2e {
namespace {

using ::testing::ElementsAre;

using Rows = std::vector<std::wstring>;

constexpr wchar_t kCloseOrDeleteDialog[] = L"QuillmereCloseOrDeleteDlg";

class Binders : public BinderScenario {
 protected:
  bool renameBoxSays(const std::wstring& text) const {
    const Box box = waitForBox(program);
    EXPECT_EQ(box.title, L"Rename Binder");
    EXPECT_EQ(box.text, text);
    return answerBox(box, VK_RETURN) && box.text == text;
  }
  std::wstring rest() const { return userDataFolder() + L"\\Binders\\Rest.lst"; }
};

TEST_F(Binders, BindersAreShownWithTheirDocuments) {
  startWithBinders();
  EXPECT_TRUE(rowsBecome(kStartRows));
  EXPECT_TRUE(rowHas(L"Working Documents", TVIS_BOLD));
  EXPECT_TRUE(rowHas(L"Work", TVIS_BOLD, false));
  EXPECT_TRUE(rowHas(L"Work", TVIS_EXPANDED));
  EXPECT_EQ(titleOf(childOf(window, 423)), L" Binder Library");
}

TEST_F(Binders, AClickOpensADocumentAndLeavesTheDocumentsInUseAlone) {
  startWithBinders();
  clickRow(L"second");
  EXPECT_TRUE(titleBecomes(L"Quillmere - second.pdf"));
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 3"));
  clickRow(L"first");
  EXPECT_TRUE(titleBecomes(L"Quillmere - first.pdf"));
  EXPECT_TRUE(rowsBecome(kStartRows));
  EXPECT_TRUE(rowSelected(L"first"));
}

TEST_F(Binders, ADocumentComesBackAtThePageItWasLeftAt) {
  startWithBinders();
  clickRow(L"second");
  ASSERT_TRUE(pageTextBecomes(L"Page 1 of 3"));
  press(VK_TAB);
  press(VK_END);
  ASSERT_TRUE(pageTextBecomes(L"Page 3 of 3"));
  clickRow(L"first");
  ASSERT_TRUE(pageTextBecomes(L"Page 1 of 2"));
  clickRow(L"second");
  EXPECT_TRUE(pageTextBecomes(L"Page 3 of 3"));
}

TEST_F(Binders, ArrowsOpenWhatTheyReachAndEnterOpensAgain) {
  startWithBinders();
  clickRow(kAddDocumentRow);
  ASSERT_TRUE(cancelFileDialog(waitForFileDialog(program)));
  ASSERT_TRUE(treeHasKeyboard());
  press(VK_DOWN);
  EXPECT_TRUE(titleBecomes(L"Quillmere - first.pdf"));
  press(VK_DOWN);
  EXPECT_TRUE(titleBecomes(L"Quillmere - second.pdf"));
  EXPECT_EQ(focusOf(window), tree());
  runCommand(window, 105);
  ASSERT_TRUE(titleBecomes(L"Quillmere"));
  press(VK_RETURN);
  EXPECT_TRUE(titleBecomes(L"Quillmere - second.pdf"));
  press(VK_PRIOR);
  EXPECT_TRUE(rowSelected(kAddDocumentRow));
  press(VK_NEXT);
  EXPECT_TRUE(rowSelected(L"second"));
}

TEST_F(Binders, ANewBinderGetsDocumentsAndIsThereAtTheNextStart) {
  const std::wstring document = makeFile(L"paper.pdf", coloredPdf(1));
  start();
  clickRow(kNewBinderRow);
  ASSERT_TRUE(chooseInFileDialog(waitForFileDialog(program), L"Plans"));
  EXPECT_TRUE(rowsBecome(
      {L"0|" + kNewBinderRow, L"0|Working Documents", L"0|Plans", L"1|" + kAddDocumentRow}));
  EXPECT_TRUE(rowSelected(L"Plans"));
  EXPECT_TRUE(exists(userDataFolder() + L"\\Binders\\Plans.lst"));
  clickRow(kAddDocumentRow);
  ASSERT_TRUE(chooseInFileDialog(waitForFileDialog(program), document));
  const Rows wanted{L"0|" + kNewBinderRow, L"0|Working Documents", L"0|Plans",
                    L"1|" + kAddDocumentRow, L"1|paper"};
  EXPECT_TRUE(rowsBecome(wanted));
  PostMessageW(window, WM_CLOSE, 0, 0);
  ASSERT_EQ(program.exitCode(), 0u);
  start();
  EXPECT_TRUE(rowsBecome(wanted));
}

TEST_F(Binders, AnExistingBinderIsAddedByCommand) {
  const std::wstring document = makeFile(L"paper.pdf", coloredPdf(1));
  const std::wstring binder = makeFile(L"Shared.lst", "\xEF\xBB\xBF" + bytesOf(document) + "\r\n");
  start();
  runCommand(window, 212);
  ASSERT_TRUE(eventually([&] { return !IsWindowVisible(tree()); }));
  PostMessageW(window, WM_COMMAND, 108, 0);
  ASSERT_TRUE(chooseInFileDialog(waitForFileDialog(program), binder));
  EXPECT_TRUE(rowSelected(L"Shared"));
  EXPECT_TRUE(rowShown(L"paper"));
  EXPECT_TRUE(IsWindowVisible(tree()));
}

TEST_F(Binders, DocumentsAreDraggedToAnotherPlace) {
  startWithBinders();
  dragRow(L"first", L"second", true);
  EXPECT_TRUE(rowsBecome({kStartRows[0], kStartRows[1], kStartRows[2], kStartRows[3], L"1|second",
                          L"1|first", kStartRows[6], kStartRows[7]}));
  EXPECT_TRUE(rowSelected(L"first"));
  EXPECT_THAT(documentsIn(work), ElementsAre(bytesOf(second), bytesOf(first)));
  EXPECT_TRUE(titleBecomes(L"Quillmere"));
}

TEST_F(Binders, ADragIsCancelledByEscapeAndByTheRightButton) {
  startWithBinders();
  for (const bool byKey : {true, false}) {
    POINT from = pointOf(L"first");
    if (!byKey) from.x += 12;  // a press at the same place would be a double click
    const POINT to = pointOf(L"second", true);
    pressButton(from);
    for (int i = 1; i <= 10; ++i) {
      movePointer({from.x, from.y + (to.y - from.y) * i / 10});
      ASSERT_TRUE(inputIsHandled(window));
    }
    if (byKey) picture("Binders.Drag");
    if (byKey) {
      press(VK_ESCAPE);
    } else {
      click(to, Button::Right);
    }
    ASSERT_TRUE(inputIsHandled(window));
    releaseButton(to);
    ASSERT_TRUE(inputIsHandled(window));
    EXPECT_TRUE(rowsBecome(kStartRows));
    EXPECT_THAT(documentsIn(work), ElementsAre(bytesOf(first), bytesOf(second)));
  }
}

TEST_F(Binders, BindersAreDraggedButNotAboveTheDocumentsInUse) {
  startWithBinders();
  dragRow(L"Rest", L"Working Documents", false);
  EXPECT_TRUE(rowsBecome(kStartRows));
  dragRow(L"Rest", L"Work", false);
  EXPECT_TRUE(rowsBecome({kStartRows[0], kStartRows[1], kStartRows[6], kStartRows[7], kStartRows[2],
                          kStartRows[3], kStartRows[4], kStartRows[5]}));
  EXPECT_TRUE(rowSelected(L"Rest"));
  EXPECT_EQ(setting(L"Binders", L"Path0"), rest());
}

TEST_F(Binders, ABinderIsRenamedInPlace) {
  startWithBinders();
  startRename(L"Work");
  type(L"Papers");
  press(VK_RETURN);
  EXPECT_TRUE(rowSelected(L"Papers"));
  EXPECT_TRUE(exists(userDataFolder() + L"\\Binders\\Papers.lst"));
  EXPECT_FALSE(exists(work));
  EXPECT_EQ(setting(L"Binders", L"Path0"), userDataFolder() + L"\\Binders\\Papers.lst");
}

TEST_F(Binders, ANameThatIsTakenOrForbiddenIsRefused) {
  startWithBinders();
  startRename(L"Work");
  type(L"a?b");
  press(VK_RETURN);
  EXPECT_TRUE(renameBoxSays(
      L"The name cannot contain any of these characters:\n    <  >  :  \"  /  \\  |  ?  *"));
  EXPECT_TRUE(rowsBecome(kStartRows));
  startRename(L"Work");
  type(L"rest");
  press(VK_RETURN);
  EXPECT_TRUE(renameBoxSays(L"A binder named 'rest' already exists."));
  EXPECT_TRUE(rowsBecome(kStartRows));
  startRename(L"Work");
  type(L"other");
  press(VK_ESCAPE);
  EXPECT_TRUE(treeHasKeyboard());
  EXPECT_TRUE(rowsBecome(kStartRows));
}

TEST_F(Binders, BoldIsShownAndKept) {
  startWithBinders();
  openMenuOf(L"Work");
  EXPECT_THAT(menuRows(), ElementsAre(L"Add Document to Binder...",
                                      L"Add Current Doc to Binder (off)", L"Rename", L"Bold", L"-",
                                      L"Refresh", L"-", L"Close Binder", L"Delete Binder"));
  chooseInMenu(4);
  EXPECT_TRUE(rowHas(L"Work", TVIS_BOLD));
  openMenuOf(L"first");
  EXPECT_THAT(menuRows(),
              ElementsAre(L"Open", L"Open in Separate Viewer", L"View in Folder", L"Save (off)",
                          L"Discard Changes... (off)", L"Bold", L"-", L"Remove from Binder"));
  chooseInMenu(6);
  EXPECT_TRUE(rowHas(L"first", TVIS_BOLD));
  PostMessageW(window, WM_CLOSE, 0, 0);
  ASSERT_EQ(program.exitCode(), 0u);
  start();
  EXPECT_TRUE(rowHas(L"Work", TVIS_BOLD));
  EXPECT_TRUE(rowHas(L"first", TVIS_BOLD));
  EXPECT_TRUE(rowHas(L"second", TVIS_BOLD, false));
}

TEST_F(Binders, DeleteOnAHeadClosesOrDeletesIt) {
  startWithBinders();
  clickRow(L"Rest");
  press(VK_DELETE);
  HWND dialog = dialogOfClass(kCloseOrDeleteDialog);
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(titleOf(dialog), L"Close or Delete Binder Rest");
  ASSERT_TRUE(inputIsHandled(dialog));
  picture("Binders.CloseOrDelete");
  press(VK_ESCAPE);
  ASSERT_TRUE(eventually([&] { return program.find(kCloseOrDeleteDialog) == nullptr; }));
  EXPECT_TRUE(rowsBecome(kStartRows));
  ASSERT_TRUE(treeHasKeyboard());
  press(VK_DELETE);
  ASSERT_NE(dialogOfClass(kCloseOrDeleteDialog), nullptr);
  press(VK_RETURN);
  EXPECT_TRUE(rowsBecome({kStartRows.begin(), kStartRows.begin() + 6}));
  EXPECT_TRUE(exists(rest()));
  clickRow(L"Work");
  press(VK_DELETE);
  ASSERT_NE(dialogOfClass(kCloseOrDeleteDialog), nullptr);
  press('D');
  const Box box = waitForBox(program);
  EXPECT_EQ(box.title, L"Confirm Delete");
  ASSERT_TRUE(bringToFront(box.window));
  press(VK_TAB);
  EXPECT_TRUE(answerBox(box, VK_RETURN));
  EXPECT_TRUE(rowsBecome({kStartRows[0], kStartRows[1]}));
  EXPECT_FALSE(exists(work));
  EXPECT_TRUE(exists(first));
}

TEST_F(Binders, DeleteOnADocumentAsksUnlessShiftIsDown) {
  startWithBinders();
  clickRow(L"first");
  ASSERT_TRUE(titleBecomes(L"Quillmere - first.pdf"));
  press(VK_DELETE);
  const Box box = waitForBox(program);
  EXPECT_EQ(box.title, L"Remove from Binder");
  EXPECT_EQ(box.text,
            L"Remove this file from binder 'Work'?\n\n    first.pdf\n\nThe file itself "
            L"will not be deleted from disk.");
  EXPECT_TRUE(answerBox(box, 'Y'));
  EXPECT_TRUE(titleBecomes(L"Quillmere"));
  EXPECT_TRUE(rowSelected(L"second"));
  press(VK_DELETE, kShift);
  EXPECT_TRUE(rowsBecome(
      {kStartRows[0], kStartRows[1], kStartRows[2], kStartRows[3], kStartRows[6], kStartRows[7]}));
  EXPECT_TRUE(exists(first));
}

TEST_F(Binders, ACollapsedBinderStaysSoAndFillsWhenExpanded) {
  startWithBinders();
  clickButtonOf(L"Work");
  EXPECT_TRUE(rowHas(L"Work", TVIS_EXPANDED, false));
  PostMessageW(window, WM_CLOSE, 0, 0);
  ASSERT_EQ(program.exitCode(), 0u);
  start();
  EXPECT_TRUE(
      rowsBecome({kStartRows[0], kStartRows[1], kStartRows[2], kStartRows[6], kStartRows[7]}));
  clickButtonOf(L"Work");
  EXPECT_TRUE(rowsBecome(kStartRows));
  clickRow(L"first");
  EXPECT_TRUE(titleBecomes(L"Quillmere - first.pdf"));
}

TEST_F(Binders, AMissingDocumentIsDimmedAndBeepsAlone) {
  first = makeFile(L"first.pdf", coloredPdf(2));
  second = scenarioFolder() + L"\\second.pdf";
  work = makeBinder(L"Work", {first, second});
  start();
  EXPECT_TRUE(rowHas(L"second", TVIS_CUT));
  EXPECT_TRUE(rowHas(L"first", TVIS_CUT, false));
  picture("Binders.Dimmed");
  clickRow(L"second");
  EXPECT_TRUE(rowSelected(L"second"));
  EXPECT_EQ(boxNow(program).window, nullptr);
  ASSERT_TRUE(writeFile(second, coloredPdf(3)));
  clickRow(L"second");
  EXPECT_TRUE(titleBecomes(L"Quillmere - second.pdf"));
  EXPECT_TRUE(rowHas(L"second", TVIS_CUT, false));
}

TEST_F(Binders, DocumentsInUseComeToTheHeadAndLeaveForTheRecentOnes) {
  startWithBinders();
  dropFiles(window, {400, 300}, {first});
  EXPECT_TRUE(titleBecomes(L"Quillmere - first.pdf"));
  EXPECT_TRUE(rowsBecome({kStartRows[0], kStartRows[1], L"1|first", kStartRows[2], kStartRows[3],
                          kStartRows[4], kStartRows[5], kStartRows[6], kStartRows[7]}));
  openMenuOf(L"first");
  EXPECT_EQ(menuRows().back(), L"Close from Working Docs");
  press(VK_UP);
  press(VK_RETURN);
  EXPECT_TRUE(titleBecomes(L"Quillmere"));
  EXPECT_TRUE(rowsBecome(kStartRows));
  EXPECT_EQ(setting(L"RecentFiles", L"Path0"), first);
}

TEST_F(Binders, TheEmptySpaceHasAMenuAndCollapsesAll) {
  startWithBinders();
  openMenuOf(L"");
  EXPECT_THAT(menuRows(),
              ElementsAre(L"Add New Binder...", L"Add Existing Binder...", L"-", L"Refresh Binders",
                          L"-", L"Collapse All", L"-", L"Close All Custom Binders"));
  picture("Binders.SpaceMenu");
  chooseInMenu(4);
  EXPECT_TRUE(rowHas(L"Work", TVIS_EXPANDED, false));
  EXPECT_TRUE(rowHas(L"Rest", TVIS_EXPANDED, false));
}

TEST_F(Binders, TheTipOfARowIsItsFullPath) {
  startWithBinders();
  ASSERT_TRUE(rowShown(L"second"));
  EXPECT_EQ(treeRowTip(window, tree(), L"second"), second);
  EXPECT_EQ(treeRowTip(window, tree(), L"Work"), work);
  EXPECT_EQ(treeRowTip(window, tree(), kNewBinderRow), L"");
}

TEST_F(Binders, FocusOpensNothingAndTabLeavesTheTree) {
  startWithBinders();
  ASSERT_TRUE(eventually([&] { return focusOf(window) == window; }));
  press('L');
  ASSERT_TRUE(treeHasKeyboard());
  EXPECT_TRUE(titleBecomes(L"Quillmere"));
  press(VK_TAB);
  EXPECT_TRUE(eventually([&] { return focusOf(window) == window; }));
}

}  // namespace
}  // namespace quillmere::e2e
