#include "documents/document_loader.h"

#include <utility>

#include "base/text_format.h"
#include "platform/files.h"
#include "session/session.h"
#include "ui/boxes.h"

namespace quillmere {

namespace {

// PDFium's memory loader takes the size as a signed 32-bit number.
constexpr std::uint64_t kMaximumMemoryFile = 0x7FFFFFFF;

bool isOpen(FPDF_DOCUMENT document) {
  return document == session.active.document.get() || document == session.panes[0].document.get() ||
         document == session.panes[1].document.get();
}

// A closed document leaves its bytes behind, which nothing reads any more.
void dropUnusedBuffers() {
  std::erase_if(session.documentKeptBuffer, [](const auto& kept) { return !isOpen(kept.first); });
}

}  // namespace

DocumentHandle loadDocumentFile(const std::u16string& path) {
  if (session.viewerRole) return loadDocumentIntoMemory(path);
  return DocumentHandle(FPDF_LoadDocument(platform::pathForLibraries(path).c_str(), nullptr));
}

DocumentHandle loadDocumentIntoMemory(const std::u16string& path) {
  dropUnusedBuffers();
  auto bytes = platform::readFileShared(path, kMaximumMemoryFile);
  if (!bytes || bytes->empty()) return nullptr;
  DocumentHandle document(
      FPDF_LoadMemDocument(bytes->data(), static_cast<int>(bytes->size()), nullptr));
  if (document) session.documentKeptBuffer[document.get()] = std::move(*bytes);
  return document;
}

void showLoadFailure(unsigned long error) {
  showNotice(formatText(u"Could not open PDF.\n(PDFium error %lu)",
                        {decimal(static_cast<std::int64_t>(error))}),
             BoxIcon::Error);
}

}  // namespace quillmere
