#include "documents/document_loader.h"

#include <gtest/gtest.h>

#include "platform/files.h"
#include "support/pdf_builder.h"
#include "support/session_test.h"

namespace quillmere::test {
namespace {

class DocumentLoaderTest : public SessionTest {};

class ViewerLoaderTest : public SessionTest {
 protected:
  ViewerLoaderTest() { session.viewerRole = true; }
};

TEST_F(DocumentLoaderTest, OpensAFileByItsPath) {
  const DocumentHandle document = loadDocumentFile(putPdf(u"a.pdf", simplePdf(3)));
  ASSERT_NE(document, nullptr);
  EXPECT_EQ(FPDF_GetPageCount(document.get()), 3);
  EXPECT_TRUE(session.documentKeptBuffer.empty());
}

TEST_F(DocumentLoaderTest, NamesOfAnyKindOpen) {
  const std::u16string names[] = {
      u"with space.pdf",
      u"it's.pdf",
      u"100% & more;+#.pdf",
      u"\u00FCml\u00E4ut.pdf",
      u"\u041F\u0430\u043F\u043A\u0430\\\u6587\u66F8.pdf",
      u"emoji \U0001F4C4.pdf",
      u"no extension",
      u"deep\\er\\and\\deeper\\a.pdf",
  };
  for (const std::u16string& name : names) {
    EXPECT_NE(loadDocumentFile(putPdf(name, simplePdf(1))), nullptr)
        << testing::PrintToString(name);
  }
}

TEST_F(DocumentLoaderTest, AFailureTellsPdfiumsError) {
  EXPECT_EQ(loadDocumentFile(u"C:\\missing.pdf"), nullptr);
  EXPECT_EQ(FPDF_GetLastError(), static_cast<unsigned long>(FPDF_ERR_FILE));
  EXPECT_EQ(loadDocumentFile(putPdf(u"garbage.pdf", garbageFile())), nullptr);
  EXPECT_EQ(FPDF_GetLastError(), static_cast<unsigned long>(FPDF_ERR_FORMAT));
  EXPECT_EQ(loadDocumentFile(putPdf(u"secret.pdf", passwordProtectedPdf())), nullptr);
  EXPECT_EQ(FPDF_GetLastError(), static_cast<unsigned long>(FPDF_ERR_PASSWORD));
}

TEST_F(DocumentLoaderTest, AnEmptyFileFailsInPdfium) {
  EXPECT_EQ(loadDocumentFile(putPdf(u"empty.pdf", emptyFile())), nullptr);
}

TEST_F(DocumentLoaderTest, ADamagedTableIsRepaired) {
  const DocumentHandle document = loadDocumentFile(putPdf(u"a.pdf", wrongOffsetsPdf(2)));
  ASSERT_NE(document, nullptr);
  EXPECT_EQ(FPDF_GetPageCount(document.get()), 2);
}

TEST_F(ViewerLoaderTest, KeepsTheBytesUnderTheHandle) {
  const std::string bytes = simplePdf(2);
  const DocumentHandle document = loadDocumentFile(putPdf(u"a.pdf", bytes));
  ASSERT_NE(document, nullptr);
  ASSERT_EQ(session.documentKeptBuffer.size(), 1u);
  ASSERT_TRUE(session.documentKeptBuffer.contains(document.get()));
  EXPECT_EQ(session.documentKeptBuffer[document.get()].size(), bytes.size());
}

TEST_F(ViewerLoaderTest, LeavesTheFileFreeForOthers) {
  const std::u16string path = putPdf(u"a.pdf", simplePdf(4));
  session.active.document = loadDocumentFile(path);
  ASSERT_NE(session.active.document, nullptr);
  session.active.pageCount = 4;
  EXPECT_TRUE(platform::replaceFile(putPdf(u"new.pdf", simplePdf(1)), path));
  EXPECT_TRUE(platform::deleteFile(path));
  loadPane(0, 3);
  ASSERT_NE(session.panes[0].textPage, nullptr);
  EXPECT_EQ(FPDFText_GetUnicode(session.panes[0].textPage.get(), 5), static_cast<unsigned>('4'));
}

TEST_F(ViewerLoaderTest, FreesTheBytesOfClosedDocumentsAtTheNextLoad) {
  const std::u16string path = putPdf(u"a.pdf", simplePdf(1));
  session.active.document = loadDocumentFile(path);
  session.panes[0].document = loadDocumentFile(path);
  session.panes[1].document = loadDocumentFile(path);
  { const DocumentHandle closedAgain = loadDocumentFile(path); }
  const DocumentHandle last = loadDocumentFile(path);
  EXPECT_EQ(session.documentKeptBuffer.size(), 4u);
  EXPECT_TRUE(session.documentKeptBuffer.contains(session.active.document.get()));
  EXPECT_TRUE(session.documentKeptBuffer.contains(session.panes[0].document.get()));
  EXPECT_TRUE(session.documentKeptBuffer.contains(session.panes[1].document.get()));
  EXPECT_TRUE(session.documentKeptBuffer.contains(last.get()));
}

TEST_F(ViewerLoaderTest, AFailedLoadKeepsNothing) {
  EXPECT_EQ(loadDocumentFile(putPdf(u"garbage.pdf", garbageFile())), nullptr);
  EXPECT_EQ(FPDF_GetLastError(), static_cast<unsigned long>(FPDF_ERR_FORMAT));
  EXPECT_EQ(loadDocumentFile(putPdf(u"secret.pdf", passwordProtectedPdf())), nullptr);
  EXPECT_EQ(FPDF_GetLastError(), static_cast<unsigned long>(FPDF_ERR_PASSWORD));
  EXPECT_TRUE(session.documentKeptBuffer.empty());
}

TEST_F(ViewerLoaderTest, AFileWithoutBytesOrWithoutAccessGivesNothing) {
  EXPECT_EQ(loadDocumentFile(u"C:\\missing.pdf"), nullptr);
  EXPECT_EQ(loadDocumentFile(putPdf(u"empty.pdf", emptyFile())), nullptr);
  platform::putFolder(u"C:\\folder.pdf");
  EXPECT_EQ(loadDocumentFile(u"C:\\folder.pdf"), nullptr);
  const std::u16string locked = putPdf(u"locked.pdf", simplePdf(1));
  platform::setOtherUse(locked, platform::OtherUse::Exclusive);
  EXPECT_EQ(loadDocumentFile(locked), nullptr);
  EXPECT_TRUE(session.documentKeptBuffer.empty());
}

TEST_F(ViewerLoaderTest, ReadsAFileThatItsWriterShares) {
  const std::u16string path = putPdf(u"a.pdf", simplePdf(1));
  platform::setOtherUse(path, platform::OtherUse::SharedWriter);
  EXPECT_NE(loadDocumentFile(path), nullptr);
}

TEST_F(ViewerLoaderTest, AFileOfTwoGigabytesOrMoreIsRefused) {
  const std::u16string path = putPdf(u"sparse.pdf", simplePdf(1));
  std::filesystem::resize_file(platform::realPath(path), 0x80000000u);
  EXPECT_EQ(loadDocumentFile(path), nullptr);
  EXPECT_TRUE(session.documentKeptBuffer.empty());
}

}  // namespace
}  // namespace quillmere::test
