#include "nav/bookmarks.h"

#include <fpdf_doc.h>

#include "core/session.h"

namespace quillmere {

// The tree has no rows yet, so that emptying and filling it come to the same.
void RebuildNavigationTree() {
  ClearNavigationTree();
}

void ClearNavigationTree() {}

bool documentHasBookmarks() {
  const FPDF_DOCUMENT document = documentOf(session.activePane);
  return document != nullptr && FPDFBookmark_GetFirstChild(document, nullptr) != nullptr;
}

}  // namespace quillmere
