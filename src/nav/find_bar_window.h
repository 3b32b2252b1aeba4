#pragma once

namespace quillmere {

// Makes the find bar with its controls, hidden, as a child of the main window.
void createFindBar(int controlId);

// Gives its controls the font of the screen's density.
void applyFindBarFont();

}  // namespace quillmere
