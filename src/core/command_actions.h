#pragma once

#include <cstdint>

// Handlers of commands that belong to no single room.
namespace quillmere {

void openInSeparateViewer();
void openUserGuide();
// Opens a row of the recent list, counted from 0; without effect beyond its end.
void openRecentDocument(std::uint32_t row);
void saveAllDocuments();
void discardAllDocuments();

void toggleNavigationPanel();
void toggleBinderPanel();
// The panel exists in SinglePage alone.
void toggleStampPanel();
void toggleMarkupGrouping();
void togglePanScroll();

// Shows the panel when it is hidden and gives its tree the keyboard.
void focusNavigationPanel();
void focusBinderPanel();

}  // namespace quillmere
