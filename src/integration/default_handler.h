#pragma once

namespace quillmere {

// True when PDF files open with this program.
bool IsDefaultPdfHandler();

}  // namespace quillmere
