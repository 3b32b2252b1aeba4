#pragma once

#include <string>

#include "session/document_slot.h"

// PDFium lets other programs write to the file that it reads. Once somebody has, what it has not
// read yet no longer fits what it has, and a document written from both lacks pages.
namespace quillmere {

// What PDFium reads a document from, as far as one can tell from outside.
enum class SourceState {
  Sound,
  Changed,  // another program may have written to the file since it was loaded
  // The file cannot be read any more, as when its drive was unplugged, though the drive may be
  // back. PDFium leaves out what it cannot read, and reports nothing.
  Lost,
};

// The file as it is now, for a document that is about to be loaded from it.
LoadedFile loadedFileNow(const std::u16string& path);

// Opens the files of documents that were loaded since it was called last once more, to tell whether
// they can still be read. A viewer reads its file into memory, and others may replace it.
void keepSourcesOpen();

// Keeps other programs from writing to the file of a document that is edited for the first time.
// Does nothing when the file has changed already.
void guardLoadedFile(LoadedFile& file);

SourceState sourceState(const LoadedFile& file);

// Makes `from` the file that the slot's document was loaded from, and notes the state of its own
// file if that is another one.
void noteLoaded(DocumentSlot& slot, LoadedFile from);

// True when its own file, from which the document is not read, is not the one that the user knows.
bool ownFileReplaced(const DocumentSlot& slot);

}  // namespace quillmere
