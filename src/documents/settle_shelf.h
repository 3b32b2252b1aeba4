#pragma once

#include <string>

namespace quillmere {

// What a request for a document opens once the shelf was asked about it.
struct ShelfDecision {
  bool opens = true;        // false when the user wants nothing opened
  std::u16string loadPath;  // the document itself, or the copy with its unsaved changes
};

// Looks for unsaved changes that an earlier session left of this document. When the document
// changed on disk since, the user decides which of the two goes on.
ShelfDecision settleShelfCopy(const std::u16string& path);

}  // namespace quillmere
