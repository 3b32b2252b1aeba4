#include "support/shelf_flow_test.h"

#include <fpdf_annot.h>
#include <gmock/gmock.h>

#include <algorithm>

#include "documents/document_loader.h"
#include "documents/open_binder_entry.h"
#include "documents/shelve.h"
#include "session/changes.h"
#include "session/document_slots.h"
#include "session/pdfium_handles.h"
#include "store/binder_library.h"
#include "store/data_folder.h"
#include "store/shelf.h"
#include "store/working_documents.h"
#include "support/pdf_builder.h"

namespace quillmere::test {

ShelfFlowTest::ShelfFlowTest() {
  unsavedDialogScript() = {};
  putDocuments(simplePdf(3));
  start();
}

ShelfFlowTest::~ShelfFlowTest() {
  EXPECT_THAT(platform::standIn().boxAnswers, testing::IsEmpty());
}

void ShelfFlowTest::start() {
  makeDataFolders();
  LoadShelfIndex();
  LoadWorkingDocuments();
  LoadBinder(u"C:\\Work.lst");
  LoadBinder(u"C:\\Other.lst");
}

void ShelfFlowTest::putDocuments(const std::string& bytes) {
  for (const char16_t* path : {kA, kB, kC}) putPdf(path, bytes);
  platform::putFile(u"C:\\Work.lst", "C:\\a.pdf\r\nC:\\b.pdf\r\nC:\\c.pdf\r\n");
  platform::putFile(u"C:\\Other.lst", "c:\\B.PDF\r\n");
}

void ShelfFlowTest::restart() {
  resetSession();
  start();
}

void ShelfFlowTest::startOver(const std::string& bytes) {
  const std::u16string shelf = session.shelveFolder;
  resetSession();
  for (const std::u16string& name : platform::namesIn(shelf)) platform::deleteFile(shelf + name);
  for (const std::u16string& name : platform::namesIn(u"C:\\")) {
    if (name.ends_with(u".tmp")) platform::deleteFile(u"C:\\" + name);
  }
  putDocuments(bytes);
  start();
}

void ShelfFlowTest::openFile(int binder, int file, bool ask) {
  openBinderEntry(static_cast<std::uint32_t>(binder) << 16 | static_cast<std::uint32_t>(file), ask,
                  false);
}

void ShelfFlowTest::mark(int pane) {
  const FPDF_DOCUMENT document = documentOf(pane);
  ASSERT_NE(document, nullptr);
  {
    const PageHandle page(FPDF_LoadPage(document, 0));
    const AnnotationHandle annotation(FPDFPage_CreateAnnot(page.get(), FPDF_ANNOT_HIGHLIGHT));
    const FS_RECTF rect{10, 50, 100, 20};
    FPDFAnnot_SetRect(annotation.get(), &rect);
  }
  markEdited(documentSlotOf(pane));
  markupsChanged(document, 0);
}

namespace {
int marksOf(FPDF_DOCUMENT document) {
  if (document == nullptr) return -1;
  const PageHandle page(FPDF_LoadPage(document, 0));
  return FPDFPage_GetAnnotCount(page.get());
}
}  // namespace

int ShelfFlowTest::marks(int pane) {
  return marksOf(documentOf(pane));
}

int ShelfFlowTest::marksIn(const std::u16string& path) {
  return marksOf(loadDocumentFile(path).get());
}

void ShelfFlowTest::shelveFile(int binder, int file) {
  openFile(binder, file);
  mark();
  ASSERT_TRUE(ShelveCurrentDocument());
}

std::string ShelfFlowTest::index() {
  return platform::fileBytes(ShelfIndexPath()).value_or("none");
}

std::vector<std::u16string> ShelfFlowTest::shelfFiles() {
  std::vector<std::u16string> names = platform::namesIn(session.shelveFolder);
  std::erase(names, u"_index.txt");
  return names;
}

std::u16string ShelfFlowTest::copyOf(const std::u16string& path) {
  return liveShelfCopy(path);
}

void ShelfFlowTest::answerDialog(const std::vector<std::u16string>& saved) {
  unsavedDialogScript().answer = [saved](std::vector<UnsavedFile>& files) {
    for (UnsavedFile& file : files) {
      file.save = std::find(saved.begin(), saved.end(), file.label) != saved.end();
    }
    return UnsavedAnswer::GoAhead;
  };
}

}  // namespace quillmere::test
