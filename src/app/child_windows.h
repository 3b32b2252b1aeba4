#pragma once

// The windows inside the main window.
namespace quillmere {

// Makes them in their fixed order, hidden or shown as the session says.
void createChildWindows();

// Puts each in its place for the present client size.
void layoutChildWindows();

// Fonts of the screen's density, for the panel headers and trees.
void applyPanelFonts();

}  // namespace quillmere
