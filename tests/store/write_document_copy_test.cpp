#include "store/write_document_copy.h"

#include <fpdf_annot.h>

#include <optional>
#include <string>
#include <vector>

#include "support/pdf_builder.h"
#include "support/session_test.h"

namespace quillmere::test {
namespace {

using platform::fileBytes;
using platform::FileCall;
using platform::namesIn;
using platform::standIn;

using Names = std::vector<std::u16string>;

class WriteDocumentCopyTest : public SessionTest {
 protected:
  WriteDocumentCopyTest() : document(loadDocument(simplePdf(3))) {
    platform::putFolder(u"C:\\out");
  }

  static std::u16string target() { return u"C:\\out\\copy.pdf"; }
  bool write() const { return WriteDocumentCopy(document.get(), target()); }

  DocumentHandle document;
};

TEST_F(WriteDocumentCopyTest, TheFileHoldsTheWholeDocument) {
  ASSERT_TRUE(write());
  const DocumentHandle copy = loadDocument(*fileBytes(target()));
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(FPDF_GetPageCount(copy.get()), 3);
  EXPECT_EQ(namesIn(u"C:\\out"), Names{u"copy.pdf"});
}

TEST_F(WriteDocumentCopyTest, EditsInMemoryAreInTheFile) {
  {
    const PageHandle page(FPDF_LoadPage(document.get(), 1));
    FPDFPage_CloseAnnot(FPDFPage_CreateAnnot(page.get(), FPDF_ANNOT_HIGHLIGHT));
  }
  ASSERT_TRUE(write());
  const DocumentHandle copy = loadDocument(*fileBytes(target()));
  const PageHandle page(FPDF_LoadPage(copy.get(), 1));
  EXPECT_EQ(FPDFPage_GetAnnotCount(page.get()), 1);
}

TEST_F(WriteDocumentCopyTest, AnOlderFileIsReplacedWhole) {
  platform::putFile(target(), std::string(100000, 'x'));
  ASSERT_TRUE(write());
  EXPECT_TRUE(fileBytes(target())->starts_with("%PDF"));
  EXPECT_EQ(fileBytes(target())->find('x', 20000), std::string::npos);
}

// Every call that writes, flushes, closes or replaces fails in turn.
TEST_F(WriteDocumentCopyTest, WhicheverCallFailsTheOlderFileStaysAndNothingElseIsLeft) {
  platform::putFile(target(), "older");
  int failing = 0;
  for (;; ++failing) {
    int calls = 0;
    standIn().refuseFileCall = [&](FileCall) { return calls++ == failing; };
    if (write()) break;
    EXPECT_EQ(*fileBytes(target()), "older") << failing;
    EXPECT_EQ(namesIn(u"C:\\out"), Names{u"copy.pdf"}) << failing;
  }
  // Start, at least one block, flush, close, replace.
  EXPECT_GE(failing, 5);
  EXPECT_TRUE(fileBytes(target())->starts_with("%PDF"));
}

TEST_F(WriteDocumentCopyTest, ARefusedLastBlockFailsTheWrite) {
  int blocks = 0;
  standIn().refuseFileCall = [&](FileCall call) {
    if (call == FileCall::Write) ++blocks;
    return false;
  };
  ASSERT_TRUE(write());
  const int last = blocks;
  platform::putFile(target(), "older");
  blocks = 0;
  standIn().refuseFileCall = [&](FileCall call) {
    return call == FileCall::Write && ++blocks == last;
  };
  EXPECT_FALSE(write());
  EXPECT_EQ(*fileBytes(target()), "older");
}

TEST_F(WriteDocumentCopyTest, AFullDiskLeavesNoPart) {
  standIn().diskFree = 300;
  EXPECT_FALSE(write());
  EXPECT_EQ(namesIn(u"C:\\out"), Names{});
}

TEST_F(WriteDocumentCopyTest, FilesLeftByAnInterruptedWriteAreNotTouched) {
  platform::putFile(u"C:\\out\\~quillmere1.tmp", "left");
  ASSERT_TRUE(write());
  EXPECT_EQ(*fileBytes(u"C:\\out\\~quillmere1.tmp"), "left");
  EXPECT_EQ(namesIn(u"C:\\out"), (Names{u"copy.pdf", u"~quillmere1.tmp"}));
}

TEST_F(WriteDocumentCopyTest, TargetsThatCannotBeReplacedStay) {
  platform::putFile(target(), "older");
  platform::setReadOnly(target(), true);
  EXPECT_FALSE(write());
  EXPECT_EQ(*fileBytes(target()), "older");
  platform::setReadOnly(target(), false);
  platform::setOtherUse(target(), platform::OtherUse::Exclusive);
  EXPECT_FALSE(write());
  platform::setOtherUse(target(), platform::OtherUse::Nobody);
  platform::putFolder(u"C:\\out\\folder.pdf");
  EXPECT_FALSE(WriteDocumentCopy(document.get(), u"C:\\out\\folder.pdf"));
  EXPECT_FALSE(WriteDocumentCopy(document.get(), u"C:\\missing\\copy.pdf"));
  EXPECT_EQ(namesIn(u"C:\\out"), (Names{u"copy.pdf", u"folder.pdf"}));
}

TEST_F(WriteDocumentCopyTest, WithoutADocumentNothingIsWritten) {
  EXPECT_FALSE(WriteDocumentCopy(nullptr, target()));
  EXPECT_EQ(namesIn(u"C:\\out"), Names{});
}

TEST_F(WriteDocumentCopyTest, ALargeDocumentGoesOutInBlocks) {
  std::size_t blocks = 0;
  const DocumentHandle large = loadDocument(manyPagesPdf(3000));
  standIn().refuseFileCall = [&](FileCall call) {
    if (call == FileCall::Write) ++blocks;
    return false;
  };
  ASSERT_TRUE(WriteDocumentCopy(large.get(), target()));
  EXPECT_GT(blocks, 1u);
}

}  // namespace
}  // namespace quillmere::test
