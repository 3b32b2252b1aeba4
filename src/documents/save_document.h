#pragma once

#include <string>

namespace quillmere {

// Writes the pane's document to `path`. True when that is done and its unsaved state is cleared;
// otherwise the user was told why, and no edit is lost. Turns that are still pending are not
// written and stay pending.
bool SaveDocumentTo(int pane, const std::u16string& path);

}  // namespace quillmere
