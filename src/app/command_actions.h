#pragma once

#include <cstdint>

// Handlers of commands that belong to no single room.
namespace quillmere {

void openInSeparateViewer();
void openUserGuide();
// Opens a row of the recent list, counted from 0; does nothing beyond its end.
void openRecentDocument(std::uint32_t row);

void togglePanScroll();

}  // namespace quillmere
