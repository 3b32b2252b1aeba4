#include "session/density.h"

#include "session/session.h"

namespace quillmere {

namespace {

constexpr int kReferenceDpi = 96;

// The same length at another density, to the nearest pixel.
int rescaled(int length, std::int32_t fromDpi, std::int32_t toDpi) {
  if (fromDpi == toDpi) return length;
  const std::int64_t product = std::int64_t{length} * toDpi;
  const std::int64_t half = length < 0 ? -(fromDpi / 2) : fromDpi / 2;
  return static_cast<int>((product + half) / fromDpi);
}

}  // namespace

int scaled(int pixels) {
  return rescaled(pixels, kReferenceDpi, session.dpi);
}

int unscaled(int pixels) {
  return rescaled(pixels, session.dpi, kReferenceDpi);
}

void changeDensity(std::int32_t dpi) {
  for (std::int32_t* length :
       {&session.leftPanelWidth, &session.stampPanelWidth, &session.paneDividerPosition}) {
    *length = rescaled(*length, session.dpi, dpi);
  }
  // Thumbnails have the size of the density before.
  for (StampEntry& entry : session.stampLibrary) entry.thumbnail.reset();
  session.dpi = dpi;
}

}  // namespace quillmere
