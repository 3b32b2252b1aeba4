#include "driver/binder_scenario.h"

namespace quillmere::e2e {
namespace {

constexpr wchar_t kUnsavedDialog[] = L"QuillmereUnsavedFilesDlg";
constexpr std::uint32_t kYellow = rgb(0xFF, 0xEB, 0x3C);

class Shelf : public BinderScenario {
 protected:
  void startWithDocuments() {
    first = makeFile(L"first.pdf", markedPdf(1, 300, 400, "Quill", 200));
    second = makeFile(L"second.pdf", markedPdf(1, 300, 400, "Paper", 200));
    work = makeBinder(L"Work", {first, second});
    start();
  }
  bool open(const std::wstring& row) {
    clickRow(row);
    return titleBecomes(L"Quillmere - " + row + L".pdf");
  }
  // Marks all text of the page that the row's document shows.
  ::testing::AssertionResult openAndMark(const std::wstring& row) {
    if (!open(row)) return ::testing::AssertionFailure() << "not opened";
    press(VK_TAB);
    press('A', kCtrl);
    press(VK_SPACE);
    return marked(true);
  }
  ::testing::AssertionResult marked(bool wanted) const {
    int seen = 0;
    if (eventually([&] {
          seen = client().countAlike(pageArea(), kYellow);
          return wanted ? seen > 200 : seen == 0;
        })) {
      return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << seen << " pixels of the mark's colour";
  }
  // Closes the window and waits for the question.
  HWND closeAndAsk() const {
    PostMessageW(window, WM_CLOSE, 0, 0);
    const HWND dialog = dialogOfClass(kUnsavedDialog);
    inputIsHandled(dialog);
    return dialog;
  }
  bool dialogGoes() const {
    return eventually([&] { return program.find(kUnsavedDialog) == nullptr; });
  }
  void kill() {
    TerminateProcess(program.process, 1);
    ASSERT_EQ(program.exitCode(), 1u);
  }
  static std::wstring index() { return userDataFolder() + L"\\Shelve\\_index.txt"; }
  static bool shelfIsEmpty() {
    WIN32_FIND_DATAW found{};
    const HANDLE search = FindFirstFileW((userDataFolder() + L"\\Shelve\\*.pdf").c_str(), &found);
    if (search != INVALID_HANDLE_VALUE) FindClose(search);
    return search == INVALID_HANDLE_VALUE && !exists(index());
  }
};

TEST_F(Shelf, AMarkedDocumentIsLeftWithoutAQuestionAndComesBackMarked) {
  startWithDocuments();
  const std::string before = readFile(first);
  ASSERT_TRUE(openAndMark(L"first"));
  ASSERT_TRUE(open(L"second"));
  EXPECT_TRUE(marked(false));
  EXPECT_EQ(readFile(first), before);
  EXPECT_FALSE(shelfIsEmpty());
  ASSERT_TRUE(open(L"first"));
  EXPECT_TRUE(marked(true));
  picture("Shelf.BackAgain");
}

TEST_F(Shelf, TheQuestionAtTheEndCanBeCancelledAndThenSaves) {
  startWithDocuments();
  const std::string before = readFile(first);
  const std::string other = readFile(second);
  ASSERT_TRUE(openAndMark(L"first"));
  ASSERT_TRUE(openAndMark(L"second"));
  HWND dialog = closeAndAsk();
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(titleOf(dialog), L"Save Changes Before Closing");
  picture("Shelf.Unsaved");
  press(VK_ESCAPE);
  ASSERT_TRUE(dialogGoes());
  EXPECT_TRUE(marked(true));
  EXPECT_EQ(readFile(first), before);

  dialog = closeAndAsk();
  ASSERT_NE(dialog, nullptr);
  press(VK_RETURN);
  EXPECT_EQ(program.exitCode(), 0u);
  EXPECT_NE(readFile(first), before);
  EXPECT_NE(readFile(second), other);
  EXPECT_TRUE(shelfIsEmpty());
  start();
  ASSERT_TRUE(open(L"first"));
  EXPECT_TRUE(marked(true));
}

TEST_F(Shelf, OnlyWhatIsCheckedIsSaved) {
  startWithDocuments();
  const std::string before = readFile(first);
  const std::string other = readFile(second);
  ASSERT_TRUE(openAndMark(L"first"));
  ASSERT_TRUE(openAndMark(L"second"));
  const HWND dialog = closeAndAsk();
  ASSERT_NE(dialog, nullptr);
  const HWND list = childOf(dialog, 1002);
  const RECT place = windowRect(list);
  click({place.left + dip(30), place.top + dip(8)});  // selects the first row
  press(VK_SPACE);
  ASSERT_TRUE(inputIsHandled(dialog));
  picture("Shelf.OneChecked");
  EXPECT_TRUE(IsWindowEnabled(childOf(dialog, 1005)));
  press('S', kAlt);
  EXPECT_EQ(program.exitCode(), 0u);
  EXPECT_EQ(readFile(first), before);
  EXPECT_NE(readFile(second), other);
  EXPECT_TRUE(shelfIsEmpty());
}

TEST_F(Shelf, DiscardingAllIsConfirmedAndLeavesTheFilesAlone) {
  startWithDocuments();
  const std::string before = readFile(first);
  ASSERT_TRUE(openAndMark(L"first"));
  const HWND dialog = closeAndAsk();
  ASSERT_NE(dialog, nullptr);
  press('N', kAlt);
  EXPECT_TRUE(eventually([&] { return !IsWindowEnabled(childOf(dialog, 1005)); }));
  press('D', kAlt);
  Box box = waitForBox(program);
  EXPECT_EQ(box.title, L"Discard All");
  EXPECT_EQ(box.text, L"Discard unsaved changes to all 1 file?\n\nThis cannot be undone.");
  picture("Shelf.DiscardAll");
  ASSERT_TRUE(answerBox(box, VK_RETURN));  // No is the default
  EXPECT_TRUE(IsWindowVisible(dialog));
  press('D', kAlt);
  box = waitForBox(program);
  ASSERT_TRUE(answerBox(box, 'Y'));
  EXPECT_EQ(program.exitCode(), 0u);
  EXPECT_EQ(readFile(first), before);
  EXPECT_TRUE(shelfIsEmpty());
}

TEST_F(Shelf, AKilledProgramLosesNothingThatWasShelved) {
  startWithDocuments();
  ASSERT_TRUE(openAndMark(L"first"));
  ASSERT_TRUE(open(L"second"));
  kill();
  start();
  ASSERT_TRUE(open(L"first"));
  EXPECT_TRUE(marked(true));
  kill();

  ASSERT_TRUE(writeFile(first, markedPdf(2, 300, 400, "Newer", 200)));
  start();
  clickRow(L"first");
  Box box = waitForBox(program);
  EXPECT_EQ(box.title, L"Conflicting Versions");
  picture("Shelf.Conflict");
  ASSERT_TRUE(answerBox(box, VK_ESCAPE));
  EXPECT_TRUE(titleBecomes(L"Quillmere"));
  clickRow(L"second");
  ASSERT_TRUE(titleBecomes(L"Quillmere - second.pdf"));
  clickRow(L"first");
  box = waitForBox(program);
  ASSERT_TRUE(answerBox(box, 'Y'));
  EXPECT_TRUE(titleBecomes(L"Quillmere - first.pdf"));
  EXPECT_TRUE(marked(true));
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 1"));
}

TEST_F(Shelf, NoInTheConflictOpensTheNewerFile) {
  startWithDocuments();
  ASSERT_TRUE(openAndMark(L"first"));
  ASSERT_TRUE(open(L"second"));
  kill();
  ASSERT_TRUE(writeFile(first, markedPdf(2, 300, 400, "Newer", 200)));
  start();
  clickRow(L"first");
  const Box box = waitForBox(program);
  ASSERT_TRUE(answerBox(box, 'N'));
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 2"));
  EXPECT_TRUE(marked(false));
}

TEST_F(Shelf, LoggingOffKeepsWhatIsOpen) {
  startWithDocuments();
  const std::string before = readFile(first);
  ASSERT_TRUE(openAndMark(L"first"));
  EXPECT_TRUE(SendMessageW(window, WM_QUERYENDSESSION, 0, 0));
  SendMessageW(window, WM_ENDSESSION, TRUE, 0);
  kill();
  EXPECT_EQ(readFile(first), before);
  start();
  ASSERT_TRUE(open(L"first"));
  EXPECT_TRUE(marked(true));
}

TEST_F(Shelf, CloseAsksAboutTheDocumentInPlaceOfShelvingIt) {
  startWithDocuments();
  ASSERT_TRUE(openAndMark(L"first"));
  PostMessageW(window, WM_COMMAND, 105, 0);
  Box box = waitForBox(program);
  EXPECT_EQ(box.text, L"Document \"first.pdf\" has unsaved changes.\n\nSave them before closing?");
  ASSERT_TRUE(inputIsHandled(box.window));
  picture("Shelf.Close");
  ASSERT_TRUE(answerBox(box, VK_ESCAPE));
  EXPECT_TRUE(marked(true));
  PostMessageW(window, WM_COMMAND, 105, 0);
  box = waitForBox(program);
  ASSERT_TRUE(answerBox(box, 'N'));
  EXPECT_TRUE(titleBecomes(L"Quillmere"));
  ASSERT_TRUE(open(L"first"));
  EXPECT_TRUE(marked(false));
}

TEST_F(Shelf, ChangesAreDiscardedByCommand) {
  startWithDocuments();
  ASSERT_TRUE(openAndMark(L"first"));
  PostMessageW(window, WM_COMMAND, 707, 0);
  const Box box = waitForBox(program);
  EXPECT_EQ(box.title, L"Discard Changes");
  ASSERT_TRUE(inputIsHandled(box.window));
  picture("Shelf.Discard");
  ASSERT_TRUE(answerBox(box, VK_RETURN));
  EXPECT_TRUE(marked(false));
  EXPECT_EQ(title(), L"Quillmere - first.pdf");
}

}  // namespace
}  // namespace quillmere::e2e
