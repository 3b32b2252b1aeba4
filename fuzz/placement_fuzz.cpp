// The private string of an annotation may hold anything. What is accepted is within its limits, and
// what is written of it reads as the same placement.
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>

#include "annot/placement_fonts.h"
#include "annot/placement_record.h"
#include "platform/text.h"
#include "sound_session.h"

namespace {

using namespace quillmere;
using fuzz::require;

void requireWithinLimits(const Placement& read) {
  require(std::isfinite(read.rotation), "a turn without end");
  require(std::abs(read.x) <= kFarthestPlace && std::abs(read.y) <= kFarthestPlace, "a far place");
  require(read.width >= 0 && read.width <= kFarthestPlace, "a width beyond the limits");
  require(read.height >= 0 && read.height <= kFarthestPlace, "a height beyond the limits");
  require(read.fontSize >= kLeastFontSize && read.fontSize <= kLargestFontSize, "a font size");
  require(read.fontIndex >= 0 && read.fontIndex < kPlacementFonts, "an unknown font");
  require(read.colorIndex >= 0 && read.colorIndex < 8, "an unknown colour");
  require(read.pending() && !read.selected && read.image == nullptr, "more than a record says");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Placement read;
  if (!ParsePlacementRecord(platform::fromUtf8(fuzz::textOf(data, size)), read)) return 0;
  requireWithinLimits(read);
  const std::u16string written = FormatPlacementRecord(read);
  Placement again;
  require(ParsePlacementRecord(written, again), "what was written is refused");
  requireWithinLimits(again);
  require(again.text == read.text, "a text reads differently");
  require(FormatPlacementRecord(again) == written, "a record changes when it is written again");
  return 0;
}
