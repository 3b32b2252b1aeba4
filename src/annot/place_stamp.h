#pragma once

#include <cstdint>

#include "annot/picture_work.h"
#include "session/stamp_entry.h"

// Putting stamps of the library onto a page.
namespace quillmere {

// Room beside the thumbnails of the panel, in pixels at 96 DPI, on each side.
inline constexpr int kThumbnailMargin = 8;

// The size in which the panel shows an entry, in pixels: the whole picture in the panel's width,
// and not higher than a thumbnail may be.
PictureSize thumbnailSize(const StampEntry& entry, int panelWidth);

// Adds a stamp to the page that pane 0 shows, in the size that it has in the panel, with its centre
// at a point of the page and upright on the screen, and selects it. Nothing happens in a read-only
// process, without such a stamp, its picture or a page, and when the user keeps another document's
// pending placements.
void PlaceStamp(std::int32_t stampIndex, double pageX, double pageY);

}  // namespace quillmere
