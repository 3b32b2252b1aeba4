#pragma once

#include <string>
#include <string_view>

#include "platform/files.h"
#include "session/shelf_index.h"

// The index of documents with unsaved changes, and the copies that hold these. Only the main window
// that owns the program's name keeps a shelf; in any other process everything here does nothing and
// finds nothing.
namespace quillmere {

// Whether this process keeps the shelf.
bool keepsShelf();

// The index file; empty without a data folder.
std::u16string ShelfIndexPath();

// The path of the copy named `shelfName`; empty without a data folder, and for what is no plain
// name of a file.
std::u16string ShelfFilePath(const std::u16string& shelfName);

// A name that no other copy has or will have; empty when the system gives none.
std::u16string NewShelfName();

// Adds the entries in the bytes of an index file. Lines that are not understood are left out; of
// several for one document the last one counts.
void parseShelfIndex(std::string_view bytes, ShelfIndex& index);

// The bytes of an index file with these entries; those that hold nothing are left out.
std::string shelfIndexBytes(const ShelfIndex& index);

// Reads the index file. A missing one leaves the shelf empty.
void LoadShelfIndex();

// Writes the index file; the old one stays if that fails. An index that could not be read at the
// start is read first, and never written over unread. True when the file is up to date.
bool SaveShelfIndex();

// True once every entry of earlier sessions is known.
bool shelfIndexKnown();

// The form of a document's path under which the index keeps its entry: full and lower-cased.
std::u16string shelfKeyOf(const std::u16string& path);

// The entry of a document; null when it has none. Valid until the index changes.
ShelfEntry* shelfEntryOf(const std::u16string& path);

// True when a file with this size and time is not the one that the entry's changes were made to. A
// stored 0 means that the value was not known.
bool stampDiffers(const ShelfEntry& entry, const platform::FileStamp& stamp);

// To be called before a finished file with everything that the document's copy has takes the
// document's place: an entry whose copy goes afterwards. Should the process end in between, the
// next start tells by it that the document has caught up. The other two take it back, the last one
// in memory alone.
void noteSaveBegins(const std::u16string& path, const std::u16string& finished);
void noteSaveFailed(const std::u16string& path);

void forgetSave(ShelfEntry& entry);

// True when a file with this size and time is one that a save put in the document's place, so that
// nothing on the shelf is missing from it.
bool caughtUp(const ShelfEntry& entry, const platform::FileStamp& stamp);

// True when the document has changes that its file lacks. An entry without a copy counts only while
// the document is open, since its changes are nowhere else.
bool IsShelved(const std::u16string& path);
bool ActiveIsShelved();

// The copy that holds such changes; empty when there is none or it has gone.
std::u16string liveShelfCopy(const std::u16string& path);

// Forgets a document's entry and deletes its copy.
void DropShelfEntry(const std::u16string& path);

// Deletes the document's copy, which its file has caught up with, and keeps the entry.
void DropShelfCopy(const std::u16string& path);

// Deletes a copy. One that is still open is deleted by deleteLeftShelfFiles() once it is closed.
void DeleteShelfFile(const std::u16string& shelfName);
void deleteLeftShelfFiles();

// Empties the shelf: every copy, also those that no entry knows, and the index.
void ClearShelf();

}  // namespace quillmere
