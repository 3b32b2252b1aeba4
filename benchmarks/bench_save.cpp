// Times a whole Save of a document with one new mark, and shelving it, and compares the size of its
// file.
//
// Usage: bench_save DOCUMENT

#include <fpdf_annot.h>
#include <fpdf_save.h>

#include <cstdint>
#include <string>

#include "documents/close.h"
#include "documents/join_working_documents.h"
#include "documents/save_document.h"
#include "documents/shelve.h"
#include "plain_pdfium.h"
#include "platform/files.h"
#include "platform/text.h"
#include "reader_window.h"
#include "samples.h"
#include "session/document_slots.h"
#include "session/session.h"

namespace quillmere::bench {
namespace {

constexpr int kSaves = 5;
constexpr std::uint64_t kLargestDocument = 1u << 30;  // bytes
constexpr double kKilobyte = 1024;

int dropBlock(FPDF_FILEWRITE*, const void*, unsigned long) {
  return 1;
}

// PDFium's part of a save alone, of a document that it has just opened, as the reader's is after
// every save.
double timePlainCopy(const std::string& path) {
  const DocumentHandle document(FPDF_LoadDocument(path.c_str(), nullptr));
  FPDF_FILEWRITE sink{};
  sink.version = 1;
  sink.WriteBlock = dropBlock;
  return timed([&] { FPDF_SaveAsCopy(document.get(), &sink, FPDF_NO_INCREMENTAL); });
}

void markFirstPage() {
  const PageHandle page(FPDF_LoadPage(session.active.document.get(), 0));
  FPDFPage_CloseAnnot(FPDFPage_CreateAnnot(page.get(), FPDF_ANNOT_HIGHLIGHT));
  markEdited(session.active);
}

double kilobytes(const std::u16string& path) {
  const auto stamp = platform::fileStamp(path);
  return stamp ? static_cast<double>(stamp->size) / kKilobyte : 0;
}

bool measureDocument(const std::string& source) {
  const std::string name = documentName(source);
  const auto bytes = platform::readFileShared(platform::fromUtf8(source), kLargestDocument);
  const std::u16string path = platform::temporaryFolder() + u"saved.pdf";
  if (!bytes || !platform::writeFile(path, bytes->data(), bytes->size())) return false;
  const std::string plainPath = platform::pathForLibraries(path);
  if (!openAndPaint(plainPath)) return false;
  const double sizeBefore = kilobytes(path);
  for (int i = 0; i < kSaves; ++i) {
    markFirstPage();
    const double theirs = timePlainCopy(source);
    bool saved = false;
    const double ours = timed([&] { saved = SaveDocumentTo(0, path); });
    if (!saved) return false;
    reportPair("save", name, ours, theirs);
  }
  reportPair("save-size", name, kilobytes(path), sizeBefore);
  joinWorkingDocuments(path, kWorkingDocsToHead);
  for (int i = 0; i < kSaves; ++i) {
    markFirstPage();
    const double theirs = timePlainCopy(source);
    bool shelved = false;
    const double ours = timed([&] { shelved = ShelveCurrentDocument(); });
    if (!shelved) return false;
    reportPair("shelve", name, ours, theirs);
  }
  DropActiveShelfEntry();
  closeAllDocuments();
  platform::deleteFile(path);
  return true;
}

}  // namespace
}  // namespace quillmere::bench

int main(int argc, char** argv) {
  using namespace quillmere::bench;
  return argc == 2 ? runInReader([&] { return measureDocument(argv[1]); }) : 2;
}
