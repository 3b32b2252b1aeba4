#pragma once

#include <array>
#include <string>

#include "base/pixel_rect.h"

namespace quillmere {

inline constexpr int kStatusPartCount = 4;
inline constexpr int kVersionPart = 3;

// Shows zoom, page and version of the session in the status bar.
void refreshStatus();

// Refreshes only the version, which names the newer one when it is known.
void refreshVersionPart();

// Shows in the title bar which documents are open.
void refreshTitle();

// The texts that these show.
std::u16string titleText();
std::u16string statusZoomText();
std::u16string statusPageText();  // leading tabs centre it in its part
std::u16string versionText();

// Right edges of the parts of a status bar `width` pixels wide; -1 for "to the end".
std::array<int, kStatusPartCount> statusPartEdges(int width);

// Whether a place in the status bar, in pixels from its top left corner, belongs to the link to a
// newer version; never while none is known.
bool onUpdateLink(int x, int y);

// The zoom slider's place in a status bar `height` pixels high, from the bar's top left corner.
PixelRect zoomSliderPlace(int height);

}  // namespace quillmere
