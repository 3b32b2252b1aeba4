#pragma once

namespace quillmere {

// Answers the main window's paint message: draws what is invalid into memory first and copies it to
// the screen once. Renders and loads nothing.
void paintMainWindow();

// Frees what painting keeps from one call to the next.
void releasePaintBuffers();

}  // namespace quillmere
