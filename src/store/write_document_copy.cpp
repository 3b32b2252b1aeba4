#include "store/write_document_copy.h"

#include <fpdf_save.h>

#include "platform/file_in_writing.h"
#include "store/replace_whole_file.h"

namespace quillmere {

namespace {

struct BlockWriter : FPDF_FILEWRITE {
  platform::FileInWriting* file = nullptr;
  bool refused = false;
};

int writeNextBlock(FPDF_FILEWRITE* self, const void* bytes, unsigned long size) {
  auto& writer = *static_cast<BlockWriter*>(self);
  if (!platform::writeBlock(*writer.file, bytes, size)) writer.refused = true;
  return writer.refused ? 0 : 1;
}

// The library reports success even if its last block was refused.
bool writeBlocks(FPDF_DOCUMENT document, platform::FileInWriting& file) {
  BlockWriter writer;
  writer.version = 1;
  writer.WriteBlock = writeNextBlock;
  writer.file = &file;
  return FPDF_SaveAsCopy(document, &writer, FPDF_NO_INCREMENTAL) && !writer.refused;
}

}  // namespace

bool WriteDocumentCopy(FPDF_DOCUMENT document, const std::u16string& path) {
  if (document == nullptr) return false;
  const auto write = [document](platform::FileInWriting& file) {
    return writeBlocks(document, file);
  };
  return replaceWholeFile(path, write) == Replacement::Done;
}

}  // namespace quillmere
