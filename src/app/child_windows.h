#pragma once

// The windows inside the main window.
namespace quillmere {

// Creates them in their fixed order, hidden or shown as the session says.
void createChildWindows();

// Moves each to its place for the present client size.
void layoutChildWindows();

// Gives panel headers and trees the fonts for the screen's density.
void applyPanelFonts();

}  // namespace quillmere
