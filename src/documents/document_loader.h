#pragma once

#include <string>

#include "session/pdfium_handles.h"

namespace quillmere {

// Opens a PDF; null on failure, with the reason in FPDF_GetLastError. A viewer reads the whole file
// into memory, so that others may replace it while it is open; otherwise PDFium keeps it open.
DocumentHandle loadDocumentFile(const std::u16string& path);

// The same into memory in every process; the session keeps the bytes until the document closes.
DocumentHandle loadDocumentIntoMemory(const std::u16string& path);

// Tells the user that a file could not be opened; `error` is that of FPDF_GetLastError.
void showLoadFailure(unsigned long error);

}  // namespace quillmere
