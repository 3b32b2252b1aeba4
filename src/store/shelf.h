#pragma once

#include <string>

#include "session/shelf_entry.h"

namespace quillmere {

// Reads the index of shelved documents.
void LoadShelfIndex();

// The path of the copy named `shelfName`; empty without a data folder or a name.
std::u16string ShelfFilePath(const std::u16string& shelfName);

// The entry of a document; null when it has none. Valid until the index changes.
const ShelfEntry* shelfEntryOf(const std::u16string& path);

// True when the document has changes that stand on the shelf alone.
bool IsShelved(const std::u16string& path);

// The copy that holds such changes, if it is there; empty otherwise.
std::u16string liveShelfCopy(const std::u16string& path);

// Forgets a document's entry and deletes its copy.
void DropShelfEntry(const std::u16string& path);

}  // namespace quillmere
