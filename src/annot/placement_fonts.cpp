#include "annot/placement_fonts.h"

namespace quillmere {

const PlacementFont PlacementFontTable[kPlacementFonts] = {
    {u"Helvetica", "Helvetica", u"Arial", 400, 0.718, 0.207},
    {u"Helvetica Bold", "Helvetica-Bold", u"Arial", 700, 0.718, 0.207},
    {u"Times Roman", "Times-Roman", u"Times New Roman", 400, 0.683, 0.217},
    {u"Times Bold", "Times-Bold", u"Times New Roman", 700, 0.683, 0.217},
    {u"Courier", "Courier", u"Courier New", 400, 0.629, 0.157},
    {u"Courier Bold", "Courier-Bold", u"Courier New", 700, 0.629, 0.157},
};

const PlacementFont& placementFont(std::int32_t row) {
  return PlacementFontTable[row >= 0 && row < kPlacementFonts ? row : 0];
}

}  // namespace quillmere
