#pragma once

namespace quillmere {

// Ends the text selection and repaints; without effect when there is none.
void clearTextSelection();

}  // namespace quillmere
