#include <gmock/gmock.h>

#include <optional>
#include <string>

#include "documents/save.h"
#include "documents/shelve.h"
#include "store/shelf.h"
#include "support/shelf_flow_test.h"

// A process that ends after a save has replaced the document and before it drops the older copy.
namespace quillmere::test {
namespace {

using platform::fileBytes;
using platform::FileCall;
using platform::standIn;
using testing::IsEmpty;

class SaveCaughtUpTest : public ShelfFlowTest {
 protected:
  // Runs `save` and puts the shelf back as it was right after the document was replaced.
  template <typename Saving>
  void endAfterReplacing(Saving save) {
    const std::string before = *fileBytes(kA);
    const std::u16string copy = copyOf(kA);
    std::optional<std::string> index;
    std::optional<std::string> edits;
    standIn().refuseFileCall = [&](FileCall) {
      if (index || fileBytes(kA) == before) return false;
      index = fileBytes(ShelfIndexPath());
      edits = fileBytes(copy);
      return false;
    };
    save();
    standIn().refuseFileCall = {};
    ASSERT_TRUE(index && edits);
    platform::putFile(ShelfIndexPath(), *index);
    platform::putFile(copy, *edits);
    restart();
  }
};

TEST_F(SaveCaughtUpTest, AfterASaveThatGotThroughNothingIsAskedAndNothingOlderComesBack) {
  shelveFile(1, 0);
  openFile(1, 1);
  openFile(1, 0);
  mark();
  endAfterReplacing([] { SaveCommand(); });
  openFile(1, 0);
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_EQ(marks(), 2);
  EXPECT_THAT(session.shelfIndex, IsEmpty());
  EXPECT_THAT(shelfFiles(), IsEmpty());
}

TEST_F(SaveCaughtUpTest, TheSameHoldsForADocumentThatIsNotOpen) {
  shelveFile(1, 0);
  openFile(1, 1);
  endAfterReplacing([] { EXPECT_TRUE(SaveShelved(1, 0)); });
  EXPECT_TRUE(SaveShelved(1, 0)) << "there is nothing left to save";
  openFile(1, 0);
  EXPECT_THAT(standIn().boxes, IsEmpty());
  EXPECT_EQ(marks(), 1);
  EXPECT_THAT(shelfFiles(), IsEmpty());
}

TEST_F(SaveCaughtUpTest, AfterASaveThatFailedTheShelfIsAsBefore) {
  shelveFile(1, 0);
  openFile(1, 1);
  openFile(1, 0);
  const std::string before = index();
  platform::setReadOnly(kA, true);
  standIn().boxAnswers = {platform::BoxAnswer::Ok};
  SaveCommand();
  platform::setReadOnly(kA, false);
  EXPECT_EQ(index(), before);
}

TEST_F(SaveCaughtUpTest, AnotherProgramsFileIsStillAskedAbout) {
  shelveFile(1, 0);
  openFile(1, 1);
  openFile(1, 0);
  endAfterReplacing([] { SaveCommand(); });
  platform::putFile(kA, *fileBytes(kB));
  standIn().boxAnswers = {platform::BoxAnswer::Cancel};
  openFile(1, 0);
  ASSERT_EQ(standIn().boxes.size(), 1u);
  EXPECT_EQ(standIn().boxes[0].title, u"Conflicting Versions");
}

// The two further fields of a line are there only while a document is replaced.
TEST_F(SaveCaughtUpTest, ASavedDocumentLeavesTheIndexWithoutAMark) {
  shelveFile(1, 0);
  openFile(1, 1);
  openFile(1, 0);
  ASSERT_TRUE(SaveDocumentTo(0, kA));
  EXPECT_THAT(index(), testing::HasSubstr("-\t1\t"));
  EXPECT_THAT(index(), testing::EndsWith("\tc:\\a.pdf\r\n"));
}

}  // namespace
}  // namespace quillmere::test
