#pragma once

#include <string>
#include <string_view>

#include "session/placement.h"

// The private string under which an annotation says how the program can edit it again:
//
//   QMR1;S;rotation;x;y;width;height;
//   QMR1;T;rotation;x;y;width;height;fontSize;fontIndex;colorIndex;text
namespace quillmere {

// Its key in the annotation's dictionary.
inline constexpr char kPlacementKey[] = "QMR";

inline constexpr int kLeastFontSize = 4;  // points
inline constexpr int kLargestFontSize = 96;

// Boxes of records reach at most this far from the origin, and are at most this large, in points.
inline constexpr double kFarthestPlace = 1e7;

// Numbers keep six significant digits.
std::u16string FormatPlacementRecord(const Placement& placement);

// Reads a record into a pending placement that is not selected and has no picture. False, with
// `placement` untouched, when the text is no such record. Fields beyond their limits take the
// nearest value that is allowed.
bool ParsePlacementRecord(std::u16string_view text, Placement& placement);

}  // namespace quillmere
