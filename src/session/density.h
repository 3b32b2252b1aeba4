#pragma once

#include <cstdint>

// Pixel constants are given at 96 DPI; these functions convert them to pixels of the window's
// screen.
namespace quillmere {

// A length given at 96 DPI, in pixels of the window's screen. The identity at 96.
int scaled(int pixels);
// The inverse, for widths stored in the settings.
int unscaled(int pixels);

// Switches the session to a screen of `dpi` dots per inch; panels keep their apparent width.
void changeDensity(std::int32_t dpi);

}  // namespace quillmere
