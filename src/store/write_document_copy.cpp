#include "store/write_document_copy.h"

#include <fpdf_save.h>

#include <string_view>
#include <vector>

#include "platform/file_in_writing.h"
#include "platform/file_properties.h"
#include "platform/files.h"
#include "session/pdfium_handles.h"
#include "store/sibling_file.h"

namespace quillmere {

namespace {

constexpr std::string_view kHeader = "%PDF-1.";
constexpr int kFirstVersionTwo = 20;  // as FPDF_GetFileVersion counts

struct BlockWriter : FPDF_FILEWRITE {
  platform::FileInWriting* file = nullptr;
  int documentVersion = 0;  // ten times the number; 0 when unknown
  bool begun = false;
  bool refused = false;
};

// PDFium writes version 2.0 as 1.0.
std::vector<char> withHeaderMended(const void* bytes, unsigned long size, int version) {
  const auto* first = static_cast<const char*>(bytes);
  std::vector<char> block(first, first + size);
  const bool plain = std::string_view(first, size).starts_with(kHeader);
  if (plain && size > kHeader.size() && version >= kFirstVersionTwo) {
    block[kHeader.size() - 2] = static_cast<char>('0' + version / 10);
    block[kHeader.size()] = static_cast<char>('0' + version % 10);
  }
  return block;
}

bool writeFirstBlock(BlockWriter& writer, const void* bytes, unsigned long size) {
  writer.begun = true;
  const std::vector<char> block = withHeaderMended(bytes, size, writer.documentVersion);
  return platform::writeBlock(*writer.file, block.data(), block.size());
}

int writeNextBlock(FPDF_FILEWRITE* self, const void* bytes, unsigned long size) {
  auto& writer = *static_cast<BlockWriter*>(self);
  const bool written = writer.begun ? platform::writeBlock(*writer.file, bytes, size)
                                    : writeFirstBlock(writer, bytes, size);
  if (!written) writer.refused = true;
  return writer.refused ? 0 : 1;
}

// The library reports success even if its last block was refused.
bool writeBlocks(FPDF_DOCUMENT document, platform::FileInWriting& file) {
  BlockWriter writer;
  writer.version = 1;
  writer.WriteBlock = writeNextBlock;
  writer.file = &file;
  FPDF_GetFileVersion(document, &writer.documentVersion);
  return FPDF_SaveAsCopy(document, &writer, FPDF_NO_INCREMENTAL) && !writer.refused;
}

// Some documents come out broken though the library reports success.
bool opensAlike(FPDF_DOCUMENT document, const std::u16string& path) {
  const DocumentHandle written(
      FPDF_LoadDocument(platform::pathForLibraries(path).c_str(), nullptr));
  return written && FPDF_GetPageCount(written.get()) == FPDF_GetPageCount(document) &&
         FPDF_GetSecurityHandlerRevision(written.get()) ==
             FPDF_GetSecurityHandlerRevision(document);
}

// False, with no file left, unless the file is whole and opens.
bool writeSibling(FPDF_DOCUMENT document, SiblingFile& sibling) {
  if (!sibling.file) return false;
  const bool written = writeBlocks(document, *sibling.file);
  const bool finished = finishSibling(sibling);
  if (written && finished && opensAlike(document, sibling.path)) return true;
  platform::deleteFile(sibling.path);
  return false;
}

bool attributesForbidWriting(const std::u16string& path) {
  const platform::AttributeQuery query = platform::queryAttributes(path);
  constexpr std::uint32_t kForbidding =
      platform::kAttributeReadOnly | platform::kAttributeHidden | platform::kAttributeSystem;
  return query.attributes != platform::kInvalidAttributes && (query.attributes & kForbidding) != 0;
}

}  // namespace

bool WriteDocumentCopy(FPDF_DOCUMENT document, const std::u16string& path,
                       const std::function<bool()>& confirm) {
  if (document == nullptr || attributesForbidWriting(path)) return false;
  SiblingFile sibling = startSibling(path);
  if (!writeSibling(document, sibling)) return false;
  // Alternate streams describe the old contents; who may read the file does not.
  platform::copyFileProperties(path, sibling.path);
  if ((!confirm || confirm()) && takePlace(sibling.path, path)) return true;
  platform::deleteFile(sibling.path);
  return false;
}

std::u16string writeDocumentBeside(FPDF_DOCUMENT document, const std::u16string& path) {
  SiblingFile sibling = startNamedSibling(path);
  return writeSibling(document, sibling) ? sibling.path : std::u16string();
}

}  // namespace quillmere
