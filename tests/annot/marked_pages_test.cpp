#include <fpdf_text.h>
#include <gmock/gmock.h>

#include <algorithm>

#include "annot/annot_test.h"
#include "annot/markups.h"
#include "annot/notes.h"
#include "app/commands.h"
#include "dialogs/dialog_script.h"
#include "store/write_document_copy.h"
#include "view/geometry.h"
#include "view/rotation.h"

// Marks on pages that are turned, moved or encrypted.
namespace quillmere::test {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;

constexpr std::uint32_t kWhite = 0xFFFFFF;
constexpr std::uint32_t kYellow = 0xFFEB3C;

class MarkedPagesTest : public AnnotTest {
 protected:
  // The smallest client rectangle around the pixels of pane 0's page that are `wanted`; empty when
  // there is none.
  template <typename Wanted>
  static PixelRect around(Wanted wanted) {
    const PaneSlot& slot = pane(0);
    const PixelRect area = paneRect(0);
    const int left = area.left + static_cast<int>(slot.panX);
    const int top = area.top + static_cast<int>(slot.panY);
    PixelRect found{left + slot.pageBitmapWidth, top + slot.pageBitmapHeight, left, top};
    for (int y = top; y < top + slot.pageBitmapHeight; ++y) {
      for (int x = left; x < left + slot.pageBitmapWidth; ++x) {
        if (!wanted(pictureAt({x, y}))) continue;
        found = {std::min(found.left, x), std::min(found.top, y), std::max(found.right, x + 1),
                 std::max(found.bottom, y + 1)};
      }
    }
    return found.left < found.right ? found : PixelRect{};
  }
  static void expectAlike(const PixelRect& seen, const PixelRect& wanted, int distance) {
    EXPECT_NEAR(seen.left, wanted.left, distance);
    EXPECT_NEAR(seen.top, wanted.top, distance);
    EXPECT_NEAR(seen.right, wanted.right, distance);
    EXPECT_NEAR(seen.bottom, wanted.bottom, distance);
  }
};

TEST_F(MarkedPagesTest, AMarkCoversTheWordsThatAreSeenWhateverTheOriginAndTurnsOfThePage) {
  for (const int degrees : {0, 90, 180, 270}) {
    for (int turns = 0; turns < 4; ++turns) {
      SCOPED_TRACE(testing::Message() << degrees << " degrees, " << turns << " pending turns");
      resetSession();
      PdfPage page;
      page.width = 200;
      page.height = 150;
      page.content = textContent("Quill", -20, 60);
      page.left = -50;
      page.bottom = -20;
      page.rotate = degrees;
      openPages({page});
      for (int i = 0; i < turns; ++i) rotateDocument(0);
      setView(0, 1.0f, 40.0f, 20.0f);
      const PixelRect ink = around([](std::uint32_t color) { return color != kWhite; });
      ASSERT_GT(std::max(ink.right - ink.left, ink.bottom - ink.top), 40);
      ASSERT_LT(std::max(ink.right - ink.left, ink.bottom - ink.top), 60);
      selectText(u"Quill");
      highlightSelection();
      expectAlike(around([](std::uint32_t color) { return color == kYellow; }), ink, 3);
      const ClientPoint middle{(ink.left + ink.right) / 2, (ink.top + ink.bottom) / 2};
      pick(middle);
      RemoveMarkup();
      EXPECT_EQ(around([](std::uint32_t color) { return color != kWhite; }), ink);
    }
  }
}

TEST_F(MarkedPagesTest, AnEncryptedDocumentKeepsItsMarksAndNotesInACopy) {
  openAndShow(encryptedPdf());
  setView(0, 1.0f, 40.0f, 20.0f);
  selectText(u"and");
  highlightSelection();
  selectText(u"page");
  strikeSelectionThrough();
  pick(middleOf(marksOn(documentOf(0), 0).at(0)));
  const std::u16string note = u"a secret, \u0142\u00F3d\u017A \U0001F58B";
  dialogScript().noteAnswers = {note};
  runCommand(kCmdNote);

  platform::putFolder(u"C:\\out");
  ASSERT_TRUE(WriteDocumentCopy(documentOf(0), u"C:\\out\\copy.pdf"));
  const std::string bytes = *platform::fileBytes(u"C:\\out\\copy.pdf");
  EXPECT_THAT(bytes, HasSubstr("/Encrypt"));
  EXPECT_THAT(bytes, Not(HasSubstr("Quill and page")));
  EXPECT_THAT(bytes, Not(HasSubstr(std::string("s\0e\0c\0r\0e\0t", 11))));

  const DocumentHandle copy = loadDocument(bytes);
  ASSERT_NE(copy, nullptr);
  const std::vector<FoundMark> marks = marksOn(copy.get(), 0);
  ASSERT_THAT(marks, SizeIs(2));
  EXPECT_EQ(marks[0].subtype, FPDF_ANNOT_HIGHLIGHT);
  EXPECT_EQ(marks[0].color, kYellow);
  EXPECT_EQ(marks[0].note, note);
  EXPECT_EQ(marks[1].subtype, FPDF_ANNOT_STRIKEOUT);
  openAndShow(bytes);
  selectText(u"Quill and page");
}

}  // namespace
}  // namespace quillmere::test
