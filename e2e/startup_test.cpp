#include "driver/scenario.h"

namespace quillmere::e2e {
namespace {

class Startup : public Scenario {
 protected:
  void expectOpens(const std::wstring& name, const std::wstring& commandLine) {
    makeFile(name, coloredPdf(2));
    start(commandLine);
    EXPECT_TRUE(titleBecomes(L"Quillmere - " + name)) << ::testing::PrintToString(title());
    EXPECT_TRUE(pageTextBecomes(L"Page 1 of 2"));
    EXPECT_EQ(boxNow(program).window, nullptr);
  }
};

TEST_F(Startup, AnUnquotedPathIsTheWholeRestOfTheLine) {
  expectOpens(L"a  name with blanks.pdf", scenarioFolder() + L"\\a  name with blanks.pdf");
}

TEST_F(Startup, TextBehindTheClosingQuoteIsDropped) {
  expectOpens(L"one.pdf", inQuotes(scenarioFolder() + L"\\one.pdf") + L" and more");
}

TEST_F(Startup, NamesOutsideAsciiAndOutsideTheBasicPlaneOpen) {
  const std::wstring name = L"\u00DCbung \u03A9 \u6587\u66F8 \U0001F4D8.pdf";
  expectOpens(name, inQuotes(scenarioFolder() + L"\\" + name));
}

TEST_F(Startup, NamesWithMarksThatShellsReadOtherwiseOpen) {
  const std::wstring name = L"it's (1) & [2] 100% ^ !x!.pdf";
  expectOpens(name, inQuotes(scenarioFolder() + L"\\" + name));
}

TEST_F(Startup, ASecondLaunchHandsItsFileOver) {
  const std::wstring path = makeFile(L"one.pdf", coloredPdf(2));
  start();
  const Program second = startProgram(inQuotes(path));
  EXPECT_EQ(second.exitCode(), 0u);
  EXPECT_TRUE(titleBecomes(L"Quillmere - one.pdf"));
  EXPECT_EQ(windowsOfClass(kMainClass).size(), 1u);
}

TEST_F(Startup, RelativePathsCountFromTheFolderOfTheirOwnLaunch) {
  const std::wstring left = scenarioFolder() + L"\\left";
  const std::wstring right = scenarioFolder() + L"\\right";
  CreateDirectoryW(left.c_str(), nullptr);
  CreateDirectoryW(right.c_str(), nullptr);
  ASSERT_TRUE(writeFile(left + L"\\a b.pdf", coloredPdf(2)));
  ASSERT_TRUE(writeFile(right + L"\\a b.pdf", coloredPdf(3)));
  program = startProgram(L"a b.pdf", left);
  window = program.window();
  EXPECT_TRUE(titleBecomes(L"Quillmere - a b.pdf"));
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 2"));
  EXPECT_EQ(startProgram(L"\".\\a b.pdf\"", right).exitCode(), 0u);
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 3"));
  // A drive alone and a backslash alone say where, too.
  EXPECT_EQ(startProgram(left.substr(0, 2) + L"a b.pdf", left).exitCode(), 0u);
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 2"));
  EXPECT_EQ(startProgram(right.substr(2) + L"\\a b.pdf", left).exitCode(), 0u);
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 3"));
}

TEST_F(Startup, ARelativePathThatBecomesTooLongIsRefusedInWords) {
  start();
  startProgram(std::wstring(250, L'x') + L".pdf", scenarioFolder());
  EXPECT_TRUE(boxSays(L"The file's path is too long to open."));
  EXPECT_EQ(title(), L"Quillmere");
}

TEST_F(Startup, AFileDialogLeavesTheFolderThatTheProgramWorksIn) {
  const std::wstring path = makeFile(L"one.pdf", coloredPdf(2));
  wchar_t temporary[MAX_PATH];
  GetTempPathW(MAX_PATH, temporary);
  program = startProgram(L"", temporary);
  window = program.window();
  toFront();
  press('O', kCtrl);
  ASSERT_TRUE(chooseInFileDialog(waitForFileDialog(program), path));
  ASSERT_TRUE(titleBecomes(L"Quillmere - one.pdf"));
  // A folder that a process works in cannot be renamed.
  press('W', kCtrl);
  ASSERT_TRUE(titleBecomes(L"Quillmere"));
  EXPECT_TRUE(MoveFileW(scenarioFolder().c_str(), (scenarioFolder() + L"-moved").c_str()));
  MoveFileW((scenarioFolder() + L"-moved").c_str(), scenarioFolder().c_str());
}

TEST_F(Startup, ASecondLaunchWithoutFileRestoresTheMinimisedWindow) {
  start();
  ShowWindow(window, SW_MINIMIZE);
  ASSERT_TRUE(eventually([&] { return IsIconic(window) != FALSE; }));
  EXPECT_EQ(startProgram().exitCode(), 0u);
  EXPECT_TRUE(eventually([&] { return !IsIconic(window); }));
  EXPECT_TRUE(eventually([&] { return GetForegroundWindow() == window; }));
}

TEST_F(Startup, TwoLaunchesAtOnceEndInOneWindowWithTheLaterFile) {
  const std::wstring one = makeFile(L"one.pdf", coloredPdf(1));
  const std::wstring two = makeFile(L"two.pdf", coloredPdf(2));
  const Program first = startProgram(inQuotes(one));
  const Program second = startProgram(inQuotes(two));
  ASSERT_TRUE(eventually([&] { return !first.running() || !second.running(); }));
  program = first.running() ? first : second;
  window = program.window();
  EXPECT_TRUE(titleBecomes(first.running() ? L"Quillmere - two.pdf" : L"Quillmere - one.pdf"));
  EXPECT_EQ(windowsOfClass(kMainClass).size(), 1u);
  EXPECT_TRUE(program.running());
}

TEST_F(Startup, CopyDataRestoresTheWindowAndOpensThePath) {
  const std::wstring path = makeFile(L"one.pdf", coloredPdf(2));
  start();
  ShowWindow(window, SW_MINIMIZE);
  ASSERT_TRUE(eventually([&] { return IsIconic(window) != FALSE; }));
  sendPath(window, path);
  EXPECT_FALSE(IsIconic(window));
  EXPECT_EQ(title(), L"Quillmere - one.pdf");
}

TEST_F(Startup, CopyDataWithAnEmptyPathRaisesNothing) {
  start();
  ShowWindow(window, SW_MINIMIZE);
  ASSERT_TRUE(eventually([&] { return IsIconic(window) != FALSE; }));
  sendPath(window, L"");
  EXPECT_TRUE(IsIconic(window));
}

TEST_F(Startup, CopyDataThatIsNoPathIsIgnored) {
  const std::wstring path = makeFile(L"one.pdf", coloredPdf(2));
  const auto size = static_cast<DWORD>((path.size() + 1) * sizeof(wchar_t));
  start();
  ShowWindow(window, SW_MINIMIZE);
  ASSERT_TRUE(eventually([&] { return IsIconic(window) != FALSE; }));
  sendCopyData(window, kOpenFileTag + 1, path.c_str(), size);
  sendCopyData(window, kOpenFileTag, path.c_str(), 1);
  sendCopyData(window, kOpenFileTag, nullptr, 0);
  EXPECT_TRUE(IsIconic(window));
  EXPECT_EQ(title(), L"Quillmere");
  // The path is the same without a terminator and with several.
  sendCopyData(window, kOpenFileTag, path.c_str(), size - 2);
  EXPECT_EQ(title(), L"Quillmere - one.pdf");
  EXPECT_FALSE(IsIconic(window));
  const std::wstring padded = makeFile(L"two.pdf", coloredPdf(2)) + std::wstring(5, L'\0');
  sendCopyData(window, kOpenFileTag, padded.c_str(),
               static_cast<DWORD>(padded.size() * sizeof(wchar_t)));
  EXPECT_EQ(title(), L"Quillmere - two.pdf");
}

TEST_F(Startup, TheWindowsOfTheMainWindowAreCreatedInTheirOrder) {
  start();
  std::vector<int> ids;
  for (HWND child = GetWindow(window, GW_CHILD); child != nullptr;
       child = GetWindow(child, GW_HWNDNEXT)) {
    ids.push_back(GetDlgCtrlID(child));
  }
  // From top to bottom of the window order: stamp panel, find bar, status bar, headers and trees.
  EXPECT_THAT(ids, ::testing::ElementsAre(402, 404, 0, 422, 401, 423, 420));
  EXPECT_NE(GetDlgItem(statusBarOf(window), 403), nullptr);
}

TEST_F(Startup, TheHeadersNameTheTreesBelowThem) {
  start();
  EXPECT_EQ(controlText(childOf(window, 422)), L" Bookmarks");
  EXPECT_EQ(controlText(childOf(window, 423)), L" Binder Library");
}

TEST_F(Startup, TheMainWindowIsToldOfDoubleClicksAndDroppedFiles) {
  start();
  EXPECT_NE(GetClassLongPtrW(window, GCL_STYLE) & CS_DBLCLKS, 0u);
  EXPECT_NE(GetWindowLongPtrW(window, GWL_EXSTYLE) & WS_EX_ACCEPTFILES, 0);
}

TEST_F(Startup, APrintChildWithoutAJobFailsAndShowsNothing) {
  const Program child = startProgram(L"--printnothing");
  EXPECT_EQ(child.exitCode(), 2u);
  EXPECT_TRUE(windowsOfClass(kMainClass).empty());
}

TEST_F(Startup, APathOf260UnitsIsCutBeforeItIsOpened) {
  std::wstring path = scenarioFolder() + L"\\";
  path += std::wstring(260 - path.size() - 4, L'x') + L".pdf";
  ASSERT_EQ(path.size(), 260u);
  start(inQuotes(path));
  const Box box = waitForBox(program);
  EXPECT_EQ(box.text, L"Could not open PDF.\n(PDFium error 2)");
  EXPECT_TRUE(answerBox(box, VK_RETURN));
}

TEST_F(Startup, AMutexWhoseOwnerShowsNoWindowIsOverruled) {
  const HANDLE mutex = CreateMutexW(nullptr, TRUE, L"Local\\Quillmere.quillmere.primary");
  ASSERT_NE(mutex, nullptr);
  start(inQuotes(makeFile(L"one.pdf", coloredPdf(2))));
  EXPECT_TRUE(titleBecomes(L"Quillmere - one.pdf"));
  CloseHandle(mutex);
}

// A marker file asks for this; its launch is never handed to a running window.
class DefaultViewerMarker : public Startup {
 protected:
  void answerMarker(const std::wstring& prefix) {
    wchar_t folder[MAX_PATH];
    const DWORD length = GetTempPathW(MAX_PATH, folder);
    ASSERT_NE(length, 0u);
    const std::wstring marker = std::wstring(folder, length) + L"Set Quillmere as default.pdf";
    ASSERT_TRUE(writeFile(marker, ""));
    const Program child = startProgram(prefix + inQuotes(marker));
    const Box box = waitForBox(child);
    EXPECT_EQ(box.title, L"Set as Default PDF Viewer");
    EXPECT_EQ(
        box.text,
        L"Quillmere was not set as the Windows default PDF viewer.\n\nTo make it the default, "
        L"run \"Set as Default PDF Viewer\" again and click \"Always\" when the system picker "
        L"appears.");
    EXPECT_FALSE(exists(marker));
    EXPECT_TRUE(answerBox(box, VK_RETURN));
    EXPECT_EQ(child.exitCode(), 0u);
  }
};

TEST_F(DefaultViewerMarker, IsDeletedAndAnswered) {
  answerMarker({});
}

TEST_F(DefaultViewerMarker, NeverReachesAWindowThatRunsAlready) {
  start();
  answerMarker({});
  EXPECT_EQ(title(), L"Quillmere");
}

TEST_F(DefaultViewerMarker, IsAnsweredByAViewerToo) {
  answerMarker(L"--viewer ");
  EXPECT_TRUE(windowsOfClass(kViewerClass).empty());
}

class FirstStart : public Scenario {
 protected:
  FirstStart() { promptAnswered = false; }

  void SetUp() override {
    Scenario::SetUp();
    DeleteFileW(shortcut().c_str());
  }
  static std::wstring shortcut() { return desktopFolder() + L"\\Quillmere.lnk"; }

  // Starts the program and answers the question with a button's key.
  void answerPrompt(const std::wstring& rest, WORD key) {
    start(rest);
    const Box box = waitForBox(program);
    EXPECT_EQ(box.title, L"Welcome to Quillmere");
    EXPECT_EQ(box.text,
              L"Add Quillmere to your desktop?\n\nA desktop shortcut makes it easy to launch "
              L"Quillmere without searching the Start menu.\n\nYou can also do this later from "
              L"Edit > Settings.");
    EXPECT_THAT(box.buttons, ::testing::ElementsAre(L"Yes", L"No"));
    picture("FirstStart.Question");
    EXPECT_TRUE(answerBox(box, key));
    EXPECT_TRUE(
        eventually([] { return setting(L"Onboarding", L"DesktopShortcutPromptShown") == L"1"; }));
  }
};

TEST_F(FirstStart, YesPutsAShortcutOnTheDesktop) {
  answerPrompt({}, 'Y');
  EXPECT_TRUE(eventually([] { return exists(shortcut()); }));
}

TEST_F(FirstStart, NoIsRememberedAndAskedOnce) {
  answerPrompt({}, 'N');
  EXPECT_FALSE(exists(shortcut()));
  ASSERT_TRUE(endPrograms());
  start();
  dropFiles(window, {400, 100}, {makeFile(L"one.pdf", coloredPdf(1))});
  EXPECT_TRUE(titleBecomes(L"Quillmere - one.pdf"));
  EXPECT_EQ(boxNow(program).window, nullptr);
}

TEST_F(FirstStart, AViewerAsksTooAndSeedsTheFileWithItsMark) {
  answerPrompt(L"--viewer", 'N');
  EXPECT_EQ(readFile(settingsFile()).substr(0, 2), "\xFF\xFE");
}

}  // namespace
}  // namespace quillmere::e2e
