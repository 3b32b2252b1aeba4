#pragma once

#include <cstdint>
#include <string>

#include "platform/pictures.h"

namespace quillmere {

enum class PlacementKind : std::int32_t { Stamp = 0, TextDrop = 1 };

// A stamp or a text that the user put on a page. The box is the one before its turn, in points of
// the page's own coordinates; it turns about its centre.
struct Placement {
  PlacementKind kind = PlacementKind::Stamp;
  double x = 0;  // left edge
  double y = 0;  // bottom edge
  double width = 0;
  double height = 0;
  double rotation = 0;  // radians; positive turns clockwise on the page
  bool selected = false;
  // Row of the stamp library behind a new stamp; -1 for one that was read from a document.
  std::int32_t stampIndex = 0;
  std::u16string text;          // of a text drop
  std::int32_t fontSize = 12;   // points
  std::int32_t fontIndex = 0;   // row of the table of fonts
  std::int32_t colorIndex = 0;  // row of the table of text colours
  // What is drawn while it is pending: a text drop, drawn when it is first needed, or a stamp's
  // picture that no longer comes from the library. May be null.
  platform::SharedPicture image;
  std::int32_t annotIndex = -1;  // in the page's annotation list; -1 while it is pending

  bool pending() const { return annotIndex < 0; }
};

}  // namespace quillmere
