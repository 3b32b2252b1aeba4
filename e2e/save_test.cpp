#include <thread>

#include "driver/scenario.h"

namespace quillmere::e2e {
namespace {

constexpr Size kPage{612, 792};
constexpr double kBaseline = 200;  // points from the top
constexpr double kTextLeft = 72;   // points
constexpr std::uint32_t kYellow = rgb(0xFF, 0xEB, 0x3C);
constexpr int kSaveAs = 604;

class Save : public Scenario {
 protected:
  void startWithText() {
    startWith(markedPdf(2, kPage.width, kPage.height, "Quill and page", kBaseline));
    press('A');
    page = placedPage(pageArea(), kPage, 1);
    ASSERT_TRUE(pageBecomes(pageArea(), clipped(page, pageArea())));
  }
  // Highlights the first word of the page.
  void markWord() {
    drag(character(0), character(4));
    press(VK_SPACE);
    ASSERT_TRUE(markShown());
  }
  bool markShown() const {
    return eventually([&] { return client().countAlike(pageArea(), kYellow) > 200; });
  }
  POINT character(int index) const {
    const double x = kTextLeft + (index + 0.5) * kCourierAdvance;
    return onScreen(page.left + static_cast<int>(x), page.top + static_cast<int>(kBaseline) - 6);
  }
  static std::wstring file(const std::wstring& name) { return scenarioFolder() + L"\\" + name; }
  static bool isMarked(const std::wstring& path) {
    return readFile(path).find("/Highlight") != std::string::npos;
  }
  template <typename Saving>
  static bool becomesMarked(const std::wstring& path, Saving save) {
    return isWrittenBy(path, save) && isMarked(path);
  }
  static void pressSave() { press('S', kCtrl); }
  // Closes the document and opens a file in its place.
  void openAgain(const std::wstring& path) {
    press('W', kCtrl);
    ASSERT_TRUE(eventually([&] { return client().countAlike(pageArea(), kYellow) == 0; }));
    sendPath(window, path);
    press('A');
  }

  RECT page{};
};

TEST_F(Save, AMarkIsThereWhenTheSavedFileIsOpenedAgain) {
  startWithText();
  markWord();
  EXPECT_FALSE(isMarked(file(L"one.pdf")));
  EXPECT_TRUE(becomesMarked(file(L"one.pdf"), pressSave));
  EXPECT_TRUE(markShown());
  EXPECT_EQ(boxNow(program).window, nullptr);
  picture("saved");
  openAgain(file(L"one.pdf"));
  EXPECT_TRUE(markShown());
  EXPECT_FALSE(exists(file(L"one.pdf.tmp")));
  picture("opened again");
}

TEST_F(Save, SaveAsWritesThroughTheDialogAndTakesTheNewName) {
  startWithText();
  markWord();
  press('S', kCtrl | kShift);
  const HWND dialog = waitForFileDialog(program);
  ASSERT_NE(dialog, nullptr);
  ASSERT_TRUE(inputIsHandled(dialog));
  picture("dialog");
  ASSERT_TRUE(bringToFront(dialog));
  press(VK_HOME);
  press(VK_END, kShift);
  EXPECT_TRUE(becomesMarked(file(L"other.pdf"), [&] {
    ASSERT_TRUE(chooseInFileDialog(dialog, scenarioFolder() + L"\\other"));
  }));
  EXPECT_TRUE(eventually([&] { return title().find(L"other.pdf") != std::wstring::npos; }));
  EXPECT_FALSE(isMarked(file(L"one.pdf")));
  EXPECT_TRUE(markShown());
  picture("saved elsewhere");
}

TEST_F(Save, AReadOnlyFileKeepsItsBytesAndTheWindowTheEdits) {
  startWithText();
  const std::string before = readFile(file(L"one.pdf"));
  SetFileAttributesW(file(L"one.pdf").c_str(), FILE_ATTRIBUTE_READONLY);
  markWord();
  press('S', kCtrl);
  ASSERT_TRUE(boxSays(L"Saved to temporary file but could not replace original."));
  EXPECT_TRUE(markShown());
  EXPECT_EQ(readFile(file(L"one.pdf")), before);
  EXPECT_TRUE(isMarked(file(L"one.pdf.tmp")));
  picture("kept");
  SetFileAttributesW(file(L"one.pdf").c_str(), FILE_ATTRIBUTE_NORMAL);
  EXPECT_TRUE(becomesMarked(file(L"one.pdf"), pressSave));
  EXPECT_TRUE(eventually([&] { return !exists(file(L"one.pdf.tmp")); }));
}

TEST_F(Save, AFileThatAnotherProgramHoldsStaysUntilItLetsGo) {
  startWithText();
  markWord();
  // Reading it is allowed while this program edits it; nobody can replace what is held so.
  const HANDLE holder = CreateFileW(file(L"one.pdf").c_str(), GENERIC_READ, FILE_SHARE_READ,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(holder, INVALID_HANDLE_VALUE);
  press('S', kCtrl);
  EXPECT_TRUE(boxSays(L"Saved to temporary file but could not replace original."));
  EXPECT_FALSE(isMarked(file(L"one.pdf")));
  CloseHandle(holder);
  EXPECT_TRUE(becomesMarked(file(L"one.pdf"), pressSave));
  EXPECT_TRUE(markShown());
}

TEST_F(Save, AFileThatIsHeldForAMomentIsSavedAllTheSame) {
  startWithText();
  markWord();
  HANDLE holder = CreateFileW(file(L"one.pdf").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                              OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(holder, INVALID_HANDLE_VALUE);
  std::thread scanner([holder] {
    Sleep(300);
    CloseHandle(holder);
  });
  EXPECT_TRUE(becomesMarked(file(L"one.pdf"), pressSave));
  scanner.join();
  EXPECT_EQ(boxNow(program).window, nullptr);
  EXPECT_FALSE(exists(file(L"one.pdf.tmp")));
}

TEST_F(Save, WithoutADocumentBothCommandsSaySo) {
  start();
  ASSERT_TRUE(inputIsHandled(window));
  press('S', kCtrl);
  ASSERT_TRUE(boxSays(L"No document is open."));
  runCommand(window, kSaveAs);
  EXPECT_TRUE(boxSays(L"No document is open."));
}

}  // namespace
}  // namespace quillmere::e2e
