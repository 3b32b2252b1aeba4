#pragma once

#include <fpdfview.h>

#include <string>

namespace quillmere {

// Writes the whole document to `path`, replacing a file of that name. True when `path` now holds
// it; otherwise a file that was there is unchanged.
bool WriteDocumentCopy(FPDF_DOCUMENT document, const std::u16string& path);

}  // namespace quillmere
