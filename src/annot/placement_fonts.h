#pragma once

#include <cstdint>

// The fonts that text drops can have. Records store the row number.
namespace quillmere {

struct PlacementFont {
  const char16_t* label;   // in the user interface
  const char* baseFont;    // PDF's name of the standard font
  const char16_t* family;  // the system's font that text is measured and drawn with
  int weight;              // bold from kBoldWeight on
  double ascentRatio;      // of the font's size, for want of the family
  double descentRatio;
};

inline constexpr int kBoldWeight = 700;
inline constexpr std::int32_t kPlacementFonts = 6;
// NOLINTNEXTLINE(readability-identifier-naming)
extern const PlacementFont PlacementFontTable[kPlacementFonts];

// The row, or the first one for a number that the table does not have.
const PlacementFont& placementFont(std::int32_t row);

inline bool isBold(const PlacementFont& font) {
  return font.weight >= kBoldWeight;
}

}  // namespace quillmere
