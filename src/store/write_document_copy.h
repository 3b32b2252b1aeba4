#pragma once

#include <fpdfview.h>

#include <functional>
#include <string>

namespace quillmere {

// Writes the whole document to `path`, replacing a file of that name. True when `path` now holds
// it; otherwise a file that was there is unchanged. Read-only, hidden and system files are not
// replaced. If given, `confirm` is asked once everything is written and may still fail it.
bool WriteDocumentCopy(FPDF_DOCUMENT document, const std::u16string& path,
                       const std::function<bool()>& confirm = {});

// Writes the whole document to a new file beside `path`, named by `startNamedSibling`. Returns its
// path; empty on failure, with no file left.
std::u16string writeDocumentBeside(FPDF_DOCUMENT document, const std::u16string& path);

}  // namespace quillmere
