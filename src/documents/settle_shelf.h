#pragma once

#include <optional>
#include <string>

#include "platform/files.h"

namespace quillmere {

// What a request for a document opens, after looking on the shelf.
struct ShelfDecision {
  bool opens = true;         // false when the user wants nothing opened
  std::u16string loadPath;   // the document itself, or the copy with its unsaved changes
  bool givesUpCopy = false;  // the user chose the document's file over the copy
  // The state of the document's file that the changes in the copy belong to; nullopt when it is not
  // known, or no copy is opened.
  std::optional<platform::FileStamp> known;
  // The state of the document's file that the user chose the copy over; nullopt when there was no
  // conflict.
  std::optional<platform::FileStamp> overruled;
};

// Looks for unsaved changes to this document from an earlier session. If the document has changed
// on disk since, the user decides which version to continue with.
ShelfDecision settleShelfCopy(const std::u16string& path);

// Does what was decided once the document has been loaded; nothing is given up before that.
void followShelfDecision(const std::u16string& path, const ShelfDecision& decision);

}  // namespace quillmere
