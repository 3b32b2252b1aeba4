#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/files.h"
#include "platform/open_file.h"
#include "platform/write_guard.h"
#include "session/pdfium_handles.h"

namespace quillmere {

// The file that PDFium reads an open document from, all the while that it is open.
struct LoadedFile {
  std::u16string path;  // empty when it was loaded from memory
  // Taken just before it was loaded; nullopt when the system did not tell.
  std::optional<platform::FileStamp> stamp;
  // The file, opened once more as soon as the page has been painted: when PDFium can no longer read
  // it, neither can this. Null until then, in a viewer, and when it could not be opened.
  platform::OpenFileHandle opened;
  // Held from the first edit on, unless another program writes to the file or has done so since it
  // was loaded.
  platform::WriteGuardHandle guard;
};

// The file beside a document's own that a save wrote and could not put in place.
struct KeptSibling {
  std::u16string path;  // empty for none
  // As the save wrote it; nullopt when the system did not tell.
  std::optional<platform::FileStamp> stamp;
};

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
  // No two of its page numbers share a page object; written by separatePages().
  bool pagesSeparate = false;
  LoadedFile loadedFrom;
  // The file at `path` as the user knows it, where the document is read from another one; nullopt
  // where it is not, or when there was no such file.
  std::optional<platform::FileStamp> knownFile;
  // The next save overwrites it, unless somebody has made the file theirs meanwhile.
  KeptSibling keptSibling;
};

}  // namespace quillmere
