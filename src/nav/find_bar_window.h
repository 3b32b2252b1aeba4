#pragma once

namespace quillmere {

// Makes the find bar with its controls, hidden, as a child of the main window.
void createFindBar(int controlId);

}  // namespace quillmere
