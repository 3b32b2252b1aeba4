#pragma once

#include <fpdfview.h>

#include <string>

namespace quillmere {

// Writes the document whole to `path`, replacing a file of that name. True when `path` now holds
// it; otherwise a file that stood there is as it was.
bool WriteDocumentCopy(FPDF_DOCUMENT document, const std::u16string& path);

}  // namespace quillmere
