#include "session/page_memory.h"

#include <fpdf_text.h>

#include "nav/bookmarks.h"
#include "nav/find.h"
#include "nav/find_bar.h"
#include "session/document_slots.h"
#include "view/navigation.h"
#include "view/rotation.h"
#include "view/view_test.h"

namespace quillmere::test {
namespace {

constexpr int kManyPages = 2 * kPagesBetweenReleases;

// Changes the first page's text in the file while the document is open, so that the text shows
// whether the page was read again.
class PageMemoryTest : public ViewTest {
 protected:
  ~PageMemoryTest() override { resetSession(); }

  void open(std::string bytes, int pages) {
    bytes_ = std::move(bytes);
    session.active.document.reset(FPDF_LoadMemDocument64(bytes_.data(), bytes_.size(), nullptr));
    session.active.pageCount = pages;
    session.active.altered = false;
    ASSERT_NE(session.active.document, nullptr);
    show(0, 0);
    bytes_.replace(bytes_.find("(Page 1)"), 8, "(Page X)");
  }

  void open(int pages) { open(simplePdf(pages), pages); }

  // Turns through the other pages until memory must have been released, if it can be.
  static void turnManyPages() {
    const int last = session.active.pageCount - 1;
    for (int i = 0; i < 2 * kPagesBetweenReleases; ++i) show(0, 1 + i % last);
  }

  static bool firstPageIsReadAgain() {
    show(0, 0);
    unsigned short text[16] = {};
    FPDFText_GetText(pane(0).textPage.get(), 0, 6, text);
    EXPECT_TRUE(text[5] == '1' || text[5] == 'X') << text[5];
    return text[5] == 'X';
  }

  static std::vector<std::uint32_t> picture() {
    const std::uint32_t* pixels = platform::pixelsOf(pane(0).pageBitmap.get());
    const std::ptrdiff_t count = pane(0).pageBitmapWidth * pane(0).pageBitmapHeight;
    return {pixels, pixels + count};
  }

 private:
  std::string bytes_;
};

TEST_F(PageMemoryTest, ASearchOfTheWholeDocumentKeepsNothingOfIt) {
  open(kManyPages);
  show(0, 1);
  OpenFindBar();
  platform::standIn().findBar.field = u"nothing like it";
  FindInDocument();
  EXPECT_TRUE(firstPageIsReadAgain());
}

TEST_F(PageMemoryTest, ALongSearchKeepsNothingForLongOnItsWay) {
  // All pages have the same content, so that each shows whether it was read again.
  PdfPage page;
  page.content = textContent("Page 1");
  constexpr int kPages = 1000;
  open(buildPdf(std::vector<PdfPage>(kPages, page)), kPages);
  OpenFindBar();
  platform::standIn().findBar.field = u"Page X";
  FindInDocument();
  ASSERT_FALSE(session.find.results.empty());
  EXPECT_GT(session.find.results.front().page, 0);
  EXPECT_EQ(session.find.results.back().page, kPages - 1);
}

TEST_F(PageMemoryTest, APageIsKeptWhileFewOthersAreRead) {
  open(kManyPages);
  for (int page = 1; page < kPagesBetweenReleases / 2; ++page) show(0, page);
  EXPECT_FALSE(firstPageIsReadAgain());
}

TEST_F(PageMemoryTest, APageIsReadAgainAfterManyOthers) {
  open(kManyPages);
  turnManyPages();
  EXPECT_TRUE(firstPageIsReadAgain());
}

TEST_F(PageMemoryTest, AShortDocumentIsKeptWhole) {
  open(kPagesBetweenReleases);
  turnManyPages();
  EXPECT_FALSE(firstPageIsReadAgain());
}

TEST_F(PageMemoryTest, AnEditedDocumentIsKeptWhole) {
  open(kManyPages);
  markEdited(session.active);
  turnManyPages();
  EXPECT_FALSE(firstPageIsReadAgain());
}

TEST_F(PageMemoryTest, AnEditedDocumentIsKeptWholeAfterItWasSavedElsewhere) {
  open(kManyPages);
  markEdited(session.active);
  session.active.dirty = false;
  turnManyPages();
  EXPECT_FALSE(firstPageIsReadAgain());
}

TEST_F(PageMemoryTest, WrittenTurnsKeepTheDocumentWhole) {
  open(kManyPages);
  session.active.pageRotations[7] = 1;
  commitRotations(0);
  turnManyPages();
  EXPECT_FALSE(firstPageIsReadAgain());
}

TEST_F(PageMemoryTest, PendingTurnsAndPlacementsAreNotInTheDocumentAndKeepNothing) {
  open(kManyPages);
  session.active.pageRotations[7] = 1;
  pane(1).documentRotation = 3;
  session.placementDocument = session.active.document.get();
  session.placements[3].emplace_back();
  turnManyPages();
  EXPECT_TRUE(firstPageIsReadAgain());
}

TEST_F(PageMemoryTest, MemoryIsGivenBackOnceTheDocumentWasLoadedAnew) {
  open(kManyPages);
  markEdited(session.active);
  turnManyPages();
  open(kManyPages);
  turnManyPages();
  EXPECT_TRUE(firstPageIsReadAgain());
}

TEST_F(PageMemoryTest, APageLooksTheSameWhenItIsReadAgain) {
  open(kManyPages);
  show(0, 5);
  const std::vector<std::uint32_t> before = picture();
  turnManyPages();
  show(0, 5);
  EXPECT_EQ(picture(), before);
}

TEST_F(PageMemoryTest, BookmarksLeadOnAfterManyPages) {
  std::vector<PdfPage> pages(kManyPages);
  for (PdfPage& page : pages) page.content = textContent("Page 1");
  PdfOptions options;
  options.outline = {{u"Near", pageDestination(2), {}}, {u"Far", pageDestination(41), {}}};
  open(buildPdf(pages, options), kManyPages);
  RebuildNavigationTree();
  turnManyPages();
  JumpToTreeEntry(1);
  EXPECT_EQ(pane(0).currentPage, 40);
}

}  // namespace
}  // namespace quillmere::test
