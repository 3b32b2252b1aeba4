#include "store/write_document_copy.h"

#include <fpdf_save.h>

#include <utility>

#include "base/text_format.h"
#include "platform/file_in_writing.h"
#include "platform/files.h"

namespace quillmere {

namespace {

// Processes that ended while writing leave names behind; if there are more of them, something else
// is wrong.
constexpr int kMostNamesTried = 100;

// A new file beside `path`, so that it can take its place in one step.
struct Sibling {
  platform::FileInWritingHandle file;  // null when none could be created
  std::u16string path;
};

Sibling startSibling(const std::u16string& path) {
  const std::u16string folder = path.substr(0, path.find_last_of(u"\\/") + 1);
  Sibling sibling;
  for (int n = 1; n <= kMostNamesTried && !sibling.file; ++n) {
    sibling.path = formatText(u"%s~quillmere%d.tmp", {folder, decimal(n)});
    sibling.file.reset(platform::startNewFile(sibling.path));
    if (!sibling.file && !platform::fileExists(sibling.path)) break;
  }
  return sibling;
}

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

bool writeWhole(FPDF_DOCUMENT document, platform::FileInWritingHandle file) {
  const bool written = writeBlocks(document, *file) && platform::flushFile(*file);
  return platform::closeFile(file.release()) && written;
}

}  // namespace

bool WriteDocumentCopy(FPDF_DOCUMENT document, const std::u16string& path) {
  if (document == nullptr) return false;
  Sibling sibling = startSibling(path);
  if (!sibling.file) return false;
  if (writeWhole(document, std::move(sibling.file)) && platform::replaceFile(sibling.path, path)) {
    return true;
  }
  platform::deleteFile(sibling.path);
  return false;
}

}  // namespace quillmere
