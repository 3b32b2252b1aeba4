#pragma once

#include <cstdint>

namespace quillmere {

// What a drag does to the selected placement; at most one of the first three applies.
struct PlacementDrag {
  bool moving = false;
  bool rotating = false;
  std::int32_t resizeHandle = -1;  // 1 to 7; -1 when none is dragged
  bool started = false;            // the pointer left the place of the press
  std::int32_t pressX = 0;         // client pixels
  std::int32_t pressY = 0;
  double startX = 0;  // the box at the press, in points
  double startY = 0;
  double startWidth = 0;
  double startHeight = 0;
  double startAngle = 0;  // of the press about the box's centre, in radians
  double startRotation = 0;
};

}  // namespace quillmere
