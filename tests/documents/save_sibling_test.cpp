#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "documents/modes.h"
#include "documents/save_test.h"
#include "platform/files.h"
#include "support/pdf_builder.h"

// The file beside a document's own that a failed save left, once somebody has made it theirs.
namespace quillmere::test {
namespace {

using platform::fileBytes;
using platform::namesIn;
using testing::ElementsAre;

const std::u16string kSibling = u"C:\\docs\\a.pdf.tmp";
const std::u16string kOtherSibling = u"C:\\docs\\~quillmere1.tmp";

class KeptSiblingTest : public SaveTest {
 protected:
  // A document whose mark a save could only write beside its file.
  KeptSiblingTest() {
    const std::u16string name = u"docs\\a.pdf";
    path = opened(name);
    mark(0);
    failToSave(0);
    EXPECT_EQ(marksIn(kSibling), 1);
  }

  static void failToSave(int pane) {
    const std::u16string target = pathOf(pane);
    platform::setReadOnly(target, true);
    expectNotices(1);
    EXPECT_FALSE(save(pane));
    platform::setReadOnly(target, false);
  }

  static void openSiblingBeside() {
    setViewMode(ViewMode::TwoDocuments);
    ASSERT_TRUE(open(kSibling, {.pane = 1}));
  }

  // The other pane shows the sibling from memory, so nothing keeps others from deleting the file.
  void showSiblingUnheld() {
    openSiblingBeside();
    mark(1);
    failToSave(1);
    ASSERT_EQ(pathOf(1), kSibling);
    ASSERT_FALSE(platform::isHeld(kSibling));
  }

  static std::vector<std::u16string> names() { return namesIn(u"C:\\docs"); }

  std::u16string path;
};

TEST_F(KeptSiblingTest, ASaveLeavesOneThatAnotherProgramChanged) {
  platform::putFile(kSibling, "theirs");
  EXPECT_TRUE(save());
  EXPECT_EQ(marksIn(path), 1);
  EXPECT_EQ(fileBytes(kSibling), "theirs");
}

TEST_F(KeptSiblingTest, ASaveLeavesOneOfTheSameSizeThatHasAnotherTime) {
  platform::setWriteTime(kSibling, 132'223'104'000'000'000);
  EXPECT_TRUE(save());
  EXPECT_EQ(marksIn(kSibling), 1);
}

TEST_F(KeptSiblingTest, AFailedSaveTakesAnotherNameThanOneThatAnotherProgramChanged) {
  platform::putFile(kSibling, "theirs");
  mark(0);
  failToSave(0);
  EXPECT_EQ(fileBytes(kSibling), "theirs");
  EXPECT_EQ(marksIn(kOtherSibling), 2);
  failToSave(0);
  EXPECT_EQ(names().size(), 3u) << "its own is replaced";
  EXPECT_TRUE(save());
  EXPECT_EQ(marksIn(path), 2);
  EXPECT_THAT(names(), ElementsAre(u"a.pdf", u"a.pdf.tmp"));
}

TEST_F(KeptSiblingTest, ASaveLeavesTheOneThatTheOtherPaneShows) {
  showSiblingUnheld();
  EXPECT_TRUE(save(0));
  EXPECT_EQ(marksIn(path), 1);
  EXPECT_EQ(marksIn(kSibling), 1);
  EXPECT_TRUE(save(1));
  EXPECT_EQ(marksIn(kSibling), 2);
  EXPECT_THAT(names(), ElementsAre(u"a.pdf", u"a.pdf.tmp"));
}

TEST_F(KeptSiblingTest, AFailedSaveTakesAnotherNameThanTheOneThatTheOtherPaneShows) {
  showSiblingUnheld();
  mark(0);
  mark(0);
  failToSave(0);
  EXPECT_EQ(marksIn(kSibling), 1);
  EXPECT_EQ(marksIn(kOtherSibling), 3);
}

TEST_F(KeptSiblingTest, OneThatTheOtherPaneSavedStaysAfterItsDocumentHasGone) {
  openSiblingBeside();
  mark(1);
  ASSERT_TRUE(save(1));
  ASSERT_TRUE(open(simplePdf(1), 1));
  EXPECT_TRUE(save(0));
  EXPECT_EQ(marksIn(path), 1);
  EXPECT_EQ(marksIn(kSibling), 2);
}

}  // namespace
}  // namespace quillmere::test
