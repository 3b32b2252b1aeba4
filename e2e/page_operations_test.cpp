#include <cstdlib>

#include "driver/scenario.h"
#include "support/pdf_builder.h"

namespace quillmere::e2e {
namespace {

constexpr int kDeletePage = 708;
constexpr int kInsertAbove = 725;
constexpr int kInsertBelow = 726;
constexpr int kFlatten = 706;
constexpr int kRemoveAll = 719;
constexpr Size kPage{300, 400};
constexpr std::uint32_t kYellow = rgb(255, 255, 0);

class PageOperations : public Scenario {
 protected:
  // The command shows a box or a dialog, so it must not be waited for.
  void choose(int command) const { PostMessageW(window, WM_COMMAND, command, 0); }
  // Chooses to delete the page and agrees.
  void deletePage(const std::wstring& question) const {
    choose(kDeletePage);
    const Box box = waitForBox(program);
    ASSERT_NE(box.window, nullptr);
    EXPECT_EQ(box.title, L"Delete Page");
    EXPECT_EQ(box.text, question);
    ASSERT_TRUE(answerBox(box, VK_RETURN));
  }
  bool shows(std::uint32_t color) const {
    return eventually([&] {
      const RECT area = pageArea();
      return client().at((area.left + area.right) / 2, (area.top + area.bottom) / 2) == color;
    });
  }
  bool marked(bool yes) const {
    return eventually([&] { return (client().countAlike(pageArea(), kYellow) > 200) == yes; });
  }
  static std::string highlightedPdf() {
    test::PdfPage page = linedPage({"Harbour"}, kPage);
    page.annotations = {
        "<< /Type /Annot /Subtype /Highlight /Rect [72 290 180 325] /C [1 1 0] "
        "/QuadPoints [72 325 180 325 72 290 180 290] >>"};
    return test::buildPdf({page});
  }
};

TEST_F(PageOperations, AQuestionPrecedesTheDeletionOfThePage) {
  startWith(coloredPdf(3));
  press(VK_NEXT);
  ASSERT_TRUE(pageTextBecomes(L"Page 2 of 3"));
  const std::wstring question =
      L"Delete page 2 from the document?\n\nThe deletion is in-memory until you save. Use "
      L"Edit->Discard Changes to revert before saving.";
  choose(kDeletePage);
  const Box box = waitForBox(program);
  ASSERT_NE(box.window, nullptr);
  EXPECT_EQ(box.title, L"Delete Page");
  EXPECT_EQ(box.text, question);
  picture("PageOperations.DeleteQuestion");
  ASSERT_TRUE(answerBox(box, VK_ESCAPE));
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 3"));
  deletePage(question);
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 2"));
  EXPECT_TRUE(shows(pageColor(2)));
  deletePage(question);
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 1"));
  EXPECT_TRUE(shows(pageColor(0)));
  EXPECT_TRUE(menuItem(window, kDeletePage).grayed);
  picture("PageOperations.Deleted");
}

TEST_F(PageOperations, ADocumentFromTheDialogComesAboveAndBelow) {
  const std::wstring source = makeFile(L"source.pdf", coloredPdf(4));
  startWith(coloredPdf(1));
  choose(kInsertBelow);
  HWND dialog = waitForFileDialog(program);
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(titleOf(dialog), L"Insert Document Below");
  picture("PageOperations.InsertDialog");
  ASSERT_TRUE(chooseInFileDialog(dialog, source));
  EXPECT_TRUE(pageTextBecomes(L"Page 2 of 5"));
  toFront();
  press(VK_END);
  EXPECT_TRUE(shows(pageColor(3)));
  choose(kInsertAbove);
  dialog = waitForFileDialog(program);
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(titleOf(dialog), L"Insert Document Above");
  ASSERT_TRUE(chooseInFileDialog(dialog, source));
  EXPECT_TRUE(pageTextBecomes(L"Page 5 of 9"));
  EXPECT_TRUE(shows(pageColor(0)));
}

TEST_F(PageOperations, AFileThatIsNoDocumentIsRefused) {
  const std::wstring source = makeFile(L"source.pdf", "not a document");
  startWith(coloredPdf(2));
  choose(kInsertBelow);
  const HWND dialog = waitForFileDialog(program);
  ASSERT_NE(dialog, nullptr);
  ASSERT_TRUE(chooseInFileDialog(dialog, source));
  EXPECT_TRUE(boxSays(L"Could not open PDF.\n(PDFium error 3)"));
  EXPECT_TRUE(pageTextBecomes(L"Page 1 of 2"));
}

TEST_F(PageOperations, AFlattenedPageLooksAsBefore) {
  startWith(highlightedPdf());
  ASSERT_TRUE(marked(true));
  movePointer(onScreen(pageArea().left + 5, pageArea().top + 5));
  const Picture before = client();
  choose(kFlatten);
  const Box box = waitForBox(program);
  ASSERT_NE(box.window, nullptr);
  EXPECT_EQ(box.title, L"Flatten Annotations");
  picture("PageOperations.FlattenQuestion");
  ASSERT_TRUE(answerBox(box, VK_RETURN));
  ASSERT_TRUE(inputIsHandled(window));
  // The text under the mark may be smoothed in another way.
  const int yellow = before.countAlike(pageArea(), kYellow);
  EXPECT_TRUE(eventually([&] {
    const Picture after = client();
    const RECT was = before.extentAlike(pageArea(), kYellow);
    const RECT is = after.extentAlike(pageArea(), kYellow);
    return EqualRect(&was, &is) &&
           std::abs(after.countAlike(pageArea(), kYellow) - yellow) < yellow / 20;
  }));
  picture("PageOperations.Flattened");
  choose(kRemoveAll);
  ASSERT_NE(waitForBox(program).window, nullptr);
  ASSERT_TRUE(answerBox(boxNow(program), VK_RETURN));
  EXPECT_TRUE(marked(true)) << "it belongs to the page now";
}

TEST_F(PageOperations, RemovedAnnotationsLeaveThePage) {
  startWith(highlightedPdf());
  ASSERT_TRUE(marked(true));
  choose(kRemoveAll);
  const Box box = waitForBox(program);
  ASSERT_NE(box.window, nullptr);
  EXPECT_EQ(box.title, L"Remove All Annotations");
  picture("PageOperations.RemoveQuestion");
  ASSERT_TRUE(answerBox(box, VK_RETURN));
  EXPECT_TRUE(marked(false));
  picture("PageOperations.Removed");
}

}  // namespace
}  // namespace quillmere::e2e
