#pragma once

namespace quillmere {

// Opens the PDF before (-1) or after (+1) the active document in its folder, by name. Does nothing
// past either end.
void StepInFolder(int direction);

}  // namespace quillmere
