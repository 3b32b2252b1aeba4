#pragma once

namespace quillmere {

// Answers the main window's paint message. Pages with nothing over them are copied straight to the
// window; everything else is drawn into memory first and copied once. Renders and loads nothing.
void paintMainWindow();

// Frees what painting keeps from one call to the next.
void releasePaintBuffers();

}  // namespace quillmere
