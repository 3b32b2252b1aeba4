#pragma once

#include <cstdint>
#include <string>

namespace quillmere {

// Unsaved changes of one document, kept as a copy under a private name.
struct ShelfEntry {
  std::u16string path;           // lower-cased path of the document
  bool dirty = false;            // it holds changes that are not in the document's file
  std::u16string shelfName;      // base name of the copy; empty when there is none
  std::uint64_t sourceSize = 0;  // bytes of the document when the copy was made; 0 unknown
  std::uint64_t sourceTime = 0;  // its last-write time in 100-nanosecond ticks; 0 unknown
  // The same of the file that a save is about to put in the document's place; 0 while none does.
  std::uint64_t savedSize = 0;
  std::uint64_t savedTime = 0;
};

}  // namespace quillmere
