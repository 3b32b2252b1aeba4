#pragma once

#include <cstdint>
#include <string>

#include "session/pdfium_handles.h"

namespace quillmere {

// What belongs to one open document, wherever the mode keeps it. It neither moves nor copies as a
// whole, since pages of the document must close before it: session/document_slots.h does both.
struct DocumentSlot {
  DocumentSlot() = default;
  DocumentSlot(const DocumentSlot&) = delete;
  DocumentSlot& operator=(const DocumentSlot&) = delete;

  DocumentHandle document;  // null when none is open
  std::int32_t pageCount = 0;
  std::u16string path;  // empty means none
  bool dirty = false;   // it has edits that its file lacks
  // It was edited in memory since it was loaded. A save to another file or a shelf copy clears
  // `dirty` and never this: what PDFium holds then still differs from the file that it reads.
  bool altered = false;
};

}  // namespace quillmere
