#pragma once

namespace quillmere {

// Registers this program with the user's shell as one that opens PDF files, without making it the
// default. False when the system refused something that this needs.
bool RegisterPdfHandler();

// True when PDF files open with this program.
bool IsDefaultPdfHandler();

}  // namespace quillmere
