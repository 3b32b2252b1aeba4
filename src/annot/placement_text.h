#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "annot/placement_box.h"
#include "platform/pictures.h"

// The text of text drops, measured and drawn with the system's fonts.
namespace quillmere {

// True for text that would show nothing.
bool isBlankText(std::u16string_view text);

// Sides of the box around the text in a font of `pixelSize`; at least 1.
void MeasureTextPixels(std::u16string_view text, int pixelSize, std::int32_t fontIndex, int& width,
                       int& height);

// From the top of a line to its baseline, in points.
double FontAscentPoints(std::int32_t fontIndex, std::int32_t fontSize);

// The text's natural size in points.
TextMetrics measureTextDrop(std::u16string_view text, std::int32_t fontSize,
                            std::int32_t fontIndex);

// The text at four pixels a point, or fewer where it would take more than 16 megapixels. Null for
// blank text. Rows that the tables do not have count as the first ones.
platform::SharedPicture RenderTextBitmap(std::u16string_view text, std::int32_t fontSize,
                                         std::int32_t fontIndex, std::int32_t colorIndex);

// The colour of a row, 0xRRGGBB; of the first row for a number that the table does not have.
std::uint32_t textColor(std::int32_t colorIndex);

// The character codes of a text in PDF's standard fonts, encoded as WinAnsi; nullopt when these
// lack a glyph for one of its characters, the text is not a single line, or it is longer than what
// is measured and drawn.
std::optional<std::vector<std::uint32_t>> standardFontCodes(std::u16string_view text);

}  // namespace quillmere
