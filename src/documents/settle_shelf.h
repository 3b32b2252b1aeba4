#pragma once

#include <string>

namespace quillmere {

// What a request for a document opens, after looking on the shelf.
struct ShelfDecision {
  bool opens = true;        // false when the user wants nothing opened
  std::u16string loadPath;  // the document itself, or the copy with its unsaved changes
};

// Looks for unsaved changes to this document from an earlier session. If the document has changed
// on disk since, the user decides which version to continue with.
ShelfDecision settleShelfCopy(const std::u16string& path);

}  // namespace quillmere
