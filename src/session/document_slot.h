#pragma once

#include <cstdint>
#include <string>

#include "session/pdfium_handles.h"

namespace quillmere {

// What belongs to one open document, wherever the mode keeps it. It has no copy or move of its own,
// since pages must close before their document: use session/document_slots.h.
struct DocumentSlot {
  DocumentSlot() = default;
  DocumentSlot(const DocumentSlot&) = delete;
  DocumentSlot& operator=(const DocumentSlot&) = delete;

  DocumentHandle document;  // null when none is open
  std::int32_t pageCount = 0;
  std::u16string path;  // empty means none
  bool dirty = false;   // it has edits that are not in its file
  // It was edited in memory since it was loaded. Saving to another file or to the shelf clears
  // `dirty` but never this: what PDFium holds still differs from the file that it reads.
  bool altered = false;
};

}  // namespace quillmere
