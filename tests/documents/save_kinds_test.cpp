#include <fpdf_edit.h>
#include <fpdf_signature.h>
#include <fpdf_text.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "annot/placements.h"
#include "documents/close.h"
#include "documents/save_test.h"
#include "session/document_slots.h"
#include "support/pdf_builder.h"
#include "support/unusual_pdfs.h"
#include "view/rotation.h"

// Unusual documents, and processes that end in the middle.
namespace quillmere::test {
namespace {

using platform::fileBytes;
using platform::FileCall;
using platform::namesIn;
using platform::standIn;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const std::u16string kPath = u"C:\\docs\\a.pdf";

class SaveKindsTest : public SaveTest {
 protected:
  static std::string textOf(FPDF_DOCUMENT document, int page) {
    const PageHandle handle(FPDF_LoadPage(document, page));
    const TextPageHandle text(FPDFText_LoadPage(handle.get()));
    const int count = std::max(FPDFText_CountChars(text.get()), 0);
    std::vector<unsigned short> units(static_cast<std::size_t>(count) + 1);
    FPDFText_GetText(text.get(), 0, count, units.data());
    return std::string(units.begin(), units.begin() + count);
  }

  // What the window shows of the first and the last page.
  static std::pair<std::string, std::string> texts(FPDF_DOCUMENT document) {
    return {textOf(document, 0), textOf(document, FPDF_GetPageCount(document) - 1)};
  }

  // A mark on the first page and two saves; `annotations` are there before.
  void expectWhole(const std::string& bytes, int annotations = 0) {
    closeAllDocuments();
    ASSERT_TRUE(open(bytes, 0, kPath));
    const int pages = session.active.pageCount;
    const auto before = texts(documentOf(0));
    mark(0);
    for (int round = 1; round <= 2; ++round) {
      ASSERT_TRUE(save());
      EXPECT_THAT(boxTexts(), IsEmpty());
      EXPECT_EQ(session.active.pageCount, pages);
      EXPECT_EQ(texts(documentOf(0)), before);
      EXPECT_EQ(marksOf(0), annotations + 1);
      EXPECT_EQ(FPDF_GetPageCount(loadDocument(*fileBytes(kPath)).get()), pages);
    }
  }
};

TEST_F(SaveKindsTest, ADocumentWhoseTableWasRepairedIsSavedWhole) {
  expectWhole(wrongOffsetsPdf(4));
}

TEST_F(SaveKindsTest, ADocumentWithPackedObjectsIsSavedWhole) {
  expectWhole(packedPdf());
  EXPECT_THAT(*fileBytes(kPath), HasSubstr("/ObjStm")) << "still packed";
}

TEST_F(SaveKindsTest, AHybridDocumentIsSavedWhole) {
  expectWhole(hybridPdf());
}

TEST_F(SaveKindsTest, ALinearisedDocumentIsSavedWholeAndNoLongerSaysThatItIs) {
  const std::string bytes = linearisedPdf();
  ASSERT_THAT(bytes, HasSubstr("/Linearized"));
  expectWhole(bytes);
  EXPECT_THAT(*fileBytes(kPath), Not(HasSubstr("/Linearized")));
}

TEST_F(SaveKindsTest, ADocumentThatNamesAPageTwiceIsSavedWhole) {
  expectWhole(sharedPagePdf());
  expectWhole(sharedNodePdf());
  EXPECT_EQ(session.active.pageCount, 4);
}

TEST_F(SaveKindsTest, TheFieldOfASignatureStays) {
  expectWhole(signedPdf(), 1);
  EXPECT_EQ(FPDF_GetSignatureCount(documentOf(0)), 1);
}

TEST_F(SaveKindsTest, AnEncryptedDocumentStaysEncryptedAndOpensAsBefore) {
  for (const std::string& bytes : {encryptedPdf(), aes128Pdf(), aes256Pdf()}) {
    const DocumentHandle source = loadDocument(bytes);
    const int revision = FPDF_GetSecurityHandlerRevision(source.get());
    ASSERT_GT(revision, 0);
    EXPECT_EQ(textOf(source.get(), 0), "Quill and page");
    SCOPED_TRACE(revision);
    expectWhole(bytes);
    EXPECT_EQ(FPDF_GetSecurityHandlerRevision(documentOf(0)), revision);
    EXPECT_THAT(*fileBytes(kPath), Not(HasSubstr("Quill")));
  }
}

TEST_F(SaveKindsTest, ATurnedPageOfAnEncryptedDocumentAndATextOnItStay) {
  ASSERT_TRUE(open(aes256Pdf(), 0, kPath));
  placeText(0);
  rotatePage(0);
  commitRotations(0);
  ASSERT_TRUE(save());
  const PageHandle page(FPDF_LoadPage(documentOf(0), 0));
  EXPECT_EQ(FPDFPage_GetRotation(page.get()), 1);
  readWaitingPlacements();
  ASSERT_EQ(session.placements[0].size(), 1u);
  EXPECT_EQ(session.placements[0][0].text, u"Paid");
}

TEST_F(SaveKindsTest, TenThousandPagesAreSavedWhole) {
  expectWhole(manyPagesPdf(10000));
}

TEST_F(SaveKindsTest, FormFieldsStay) {
  ASSERT_TRUE(open(filledFormPdf(), 0, kPath));
  const int before = marksOf(0);
  mark(0);
  ASSERT_TRUE(save());
  EXPECT_EQ(marksOf(0), before + 1);
}

TEST_F(SaveKindsTest, ADamagedPageTreeIsSavedWholeOrNotAtAll) {
  ASSERT_TRUE(open(cyclicPageTreePdf(), 0, kPath));
  const std::string old = *fileBytes(kPath);
  const int pages = session.active.pageCount;
  markEdited(session.active);
  expectNotices(1);
  if (save()) {
    EXPECT_EQ(session.active.pageCount, pages);
  } else {
    EXPECT_EQ(*fileBytes(kPath), old);
    EXPECT_TRUE(session.active.dirty);
  }
  EXPECT_EQ(namesIn(u"C:\\docs").size(), 1u);
}

// The node of the second page lists the root of the tree, which lists it.
std::string rootAmongKidsPdf(bool counted) {
  PdfFile file;
  const int catalog = file.reserve();
  const int tree = file.reserve();
  const int node = file.reserve();
  const auto page = [&file](int parent, const std::string& text) {
    const int content = file.addStream(textContent(text));
    return file.add("<< /Type /Page /Parent " + PdfFile::reference(parent) +
                    " /MediaBox [0 0 612 792] /Contents " + PdfFile::reference(content) +
                    " /Resources << /Font << /F1 << /Type /Font /Subtype /Type1 /BaseFont "
                    "/Helvetica >> >> >> >>");
  };
  const auto pages = [&](int number, const std::string& entries, int first, int second) {
    file.set(number, "<< /Type /Pages " + entries + " /Kids [" + PdfFile::reference(first) + " " +
                         PdfFile::reference(second) + "] >>");
  };
  file.set(catalog, "<< /Type /Catalog /Pages " + PdfFile::reference(tree) + " >>");
  pages(tree, counted ? "/Count 2" : "", page(tree, "One"), node);
  pages(node, "/Parent " + PdfFile::reference(tree) + (counted ? " /Count 1" : ""),
        page(node, "Two"), tree);
  return file.finish(catalog);
}

TEST_F(SaveKindsTest, ADocumentWhosePageTreeLeadsBackToItsRootIsSavedWhole) {
  for (const bool counted : {true, false}) {
    SCOPED_TRACE(counted);
    expectWhole(rootAmongKidsPdf(counted));
    EXPECT_EQ(textOf(documentOf(0), 0), "One");
    EXPECT_EQ(textOf(documentOf(0), 1), "Two");
    mark(0, 1);
    ASSERT_TRUE(save());
    EXPECT_EQ(marksIn(kPath, 1), 1);
    EXPECT_EQ(marksIn(kPath, 0), 1);
  }
}

// The process ends when the machine is asked to do something for the n-th time.
class SaveInterruptedTest : public SaveTest {
 protected:
  static constexpr int kEnded = 77;

  static void saveUntil(int calls) {
    int asked = 0;
    standIn().refuseFileCall = [&](FileCall) {
      if (asked++ == calls) std::_Exit(kEnded);
      return false;
    };
    save();
    standIn().refuseFileCall = {};
    std::_Exit(0);
  }
};

TEST_F(SaveInterruptedTest, WhereverTheProcessEndsTheFileIsTheOldOrTheNewOne) {
#ifdef _WIN32
  GTEST_SKIP() << "another process has another machine here";
#endif
  const std::u16string path = putPdf(u"docs\\a.pdf", manyPagesPdf(1500));
  const std::string old = *fileBytes(path);
  bool ended = true;
  int points = 0;
  for (; ended; ++points) {
    SCOPED_TRACE(points);
    closeAllDocuments();
    for (const std::u16string& name : namesIn(u"C:\\docs")) {
      platform::deleteFile(u"C:\\docs\\" + name);
    }
    platform::putFile(path, old);
    ASSERT_TRUE(open(path));
    mark(0);
    placeText(0, 1);
    const auto either = [&ended](int status) {
      ended = testing::ExitedWithCode(kEnded)(status);
      return true;
    };
    EXPECT_EXIT(saveUntil(points), either, "");
    const bool isOld = *fileBytes(path) == old;
    EXPECT_TRUE(isOld || (marksIn(path) == 1 && marksIn(path, 1) == 1));
    // What stands beside it is no obstacle for the next save.
    ASSERT_TRUE(save());
    EXPECT_EQ(marksIn(path), 1);
    EXPECT_EQ(marksIn(path, 1), 1);
  }
  EXPECT_GT(points, 10);
}

}  // namespace
}  // namespace quillmere::test
