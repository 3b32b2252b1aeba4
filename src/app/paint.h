#pragma once

namespace quillmere {

// Answers the main window's request to be painted: everything is drawn into memory first and copied
// to the screen once. Nothing is rendered and no page is loaded here.
void paintMainWindow();

// Frees what painting keeps from one call to the next.
void releasePaintBuffers();

}  // namespace quillmere
