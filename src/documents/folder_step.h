#pragma once

namespace quillmere {

// Opens the PDF that stands before (-1) or after (+1) the active document in its folder, by name.
// Past either end nothing happens.
void StepInFolder(int direction);

}  // namespace quillmere
