#pragma once

#include <string>

#include "session/document_slot.h"

// PDFium lets other programs write to the file that it reads. Once somebody has, what it has not
// read yet no longer fits what it has, and a document written from both lacks pages.
namespace quillmere {

// The file as it is now, for a document that is about to be loaded from it.
LoadedFile loadedFileNow(const std::u16string& path);

// Keeps other programs from writing to the file of a document that is edited for the first time.
// Does nothing when the file has changed already.
void guardLoadedFile(LoadedFile& file);

// True when another program may have written to the file since it was loaded.
bool changedSinceLoad(const LoadedFile& file);

}  // namespace quillmere
