#pragma once

namespace quillmere {

// Offers this program to the user's shell as one that opens PDF files, without making it the one.
// False when the system did not take what that needs.
bool RegisterPdfHandler();

// True when PDF files open with this program.
bool IsDefaultPdfHandler();

}  // namespace quillmere
