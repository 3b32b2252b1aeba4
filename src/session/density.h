#pragma once

#include <cstdint>

// Pixel constants are those of a screen with 96 pixels an inch; here they become pixels of the
// window's own screen.
namespace quillmere {

// A length at 96 pixels an inch, in pixels of the window's screen. The identity at 96.
int scaled(int pixels);
// The inverse, for widths that the settings keep.
int unscaled(int pixels);

// Moves the session to a screen of `dpi` pixels an inch; panels keep their width to the eye.
void changeDensity(std::int32_t dpi);

}  // namespace quillmere
