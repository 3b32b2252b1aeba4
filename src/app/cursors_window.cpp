#include <windows.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "app/cursors.h"

namespace quillmere {

namespace {

constexpr int kMaskSide = 32;  // pixels; 32 of them make four bytes
constexpr int kMaskBytes = kMaskSide * kMaskSide / 8;
constexpr int kBeamCentre = 15;
constexpr int kBeamHalfLength = 8;
constexpr int kSerifHalfLength = 2;

using Mask = std::array<BYTE, kMaskBytes>;

void setBit(Mask& mask, int x, int y) {
  const int byte = y * kMaskSide / 8 + x / 8;
  mask[static_cast<std::size_t>(byte)] |= static_cast<BYTE>(0x80 >> (x % 8));
}

void clearBit(Mask& mask, int x, int y) {
  const int byte = y * kMaskSide / 8 + x / 8;
  mask[static_cast<std::size_t>(byte)] &= static_cast<BYTE>(~(0x80 >> (x % 8)));
}

// The text beam lying on its side, inverting what it covers:
//
//      |              |
//      |--------------|
//      |              |
HCURSOR createSidewaysBeam() {
  Mask keep;
  keep.fill(0xFF);
  Mask invert{};
  for (int x = kBeamCentre - kBeamHalfLength; x <= kBeamCentre + kBeamHalfLength; ++x) {
    setBit(invert, x, kBeamCentre);
  }
  for (int y = kBeamCentre - kSerifHalfLength; y <= kBeamCentre + kSerifHalfLength; ++y) {
    if (y == kBeamCentre) continue;
    setBit(invert, kBeamCentre - kBeamHalfLength, y);
    setBit(invert, kBeamCentre + kBeamHalfLength, y);
  }
  return CreateCursor(GetModuleHandleW(nullptr), kBeamCentre, kBeamCentre, kMaskSide, kMaskSide,
                      keep.data(), invert.data());
}

HCURSOR sidewaysBeam() {
  static const HCURSOR cursor = createSidewaysBeam();
  return cursor != nullptr ? cursor : LoadCursorW(nullptr, IDC_IBEAM);
}

// A black ring with a gap and an arrowhead, with a white edge that keeps it visible on black.
//
//        .####.
//      ##      ##  #
//     #          ###
//     #         ####
//      ##      ##
//        '####'
HCURSOR createRotationCursor() {
  constexpr int kCentre = 15;
  constexpr double kRadius = 8;
  constexpr double kPenHalf = 1.1;
  constexpr double kEdge = 1.2;       // of white, beyond the pen
  constexpr double kGapFrom = -0.95;  // radians, of the part without a line
  constexpr double kGapTo = 0.0;
  Mask keep;
  keep.fill(0xFF);
  Mask white{};
  const auto arrowDistance = [](double x, double y) {
    // The head hangs below the end of the ring at the right, as wide as it is high.
    const double down = y - kRadius * 0.1;
    const double half = 4.0 - down;
    return down < -1 ? 99.0 : std::max(std::abs(x - kRadius) - half, -down);
  };
  for (int y = 0; y < kMaskSide; ++y) {
    for (int x = 0; x < kMaskSide; ++x) {
      const double dx = x - kCentre;
      const double dy = y - kCentre;
      const double angle = std::atan2(dy, dx);
      const bool inGap = angle > kGapFrom && angle < kGapTo;
      const double ring = inGap ? 99.0 : std::abs(std::hypot(dx, dy) - kRadius) - kPenHalf;
      const double distance = std::min(ring, arrowDistance(dx, dy));
      if (distance > kEdge) continue;
      clearBit(keep, x, y);
      if (distance > 0) setBit(white, x, y);
    }
  }
  return CreateCursor(GetModuleHandleW(nullptr), kCentre, kCentre, kMaskSide, kMaskSide,
                      keep.data(), white.data());
}

HCURSOR rotationCursor() {
  static const HCURSOR cursor = createRotationCursor();
  return cursor != nullptr ? cursor : LoadCursorW(nullptr, IDC_SIZEALL);
}

HCURSOR cursorOf(CursorKind kind) {
  switch (kind) {
    case CursorKind::Hand:
      return LoadCursorW(nullptr, IDC_HAND);
    case CursorKind::TextBeam:
      return LoadCursorW(nullptr, IDC_IBEAM);
    case CursorKind::SidewaysBeam:
      return sidewaysBeam();
    case CursorKind::ResizeHorizontal:
      return LoadCursorW(nullptr, IDC_SIZEWE);
    case CursorKind::ResizeVertical:
      return LoadCursorW(nullptr, IDC_SIZENS);
    case CursorKind::ResizeFalling:
      return LoadCursorW(nullptr, IDC_SIZENWSE);
    case CursorKind::ResizeRising:
      return LoadCursorW(nullptr, IDC_SIZENESW);
    case CursorKind::Move:
      return LoadCursorW(nullptr, IDC_SIZEALL);
    case CursorKind::Rotate:
      return rotationCursor();
    case CursorKind::Cross:
      return LoadCursorW(nullptr, IDC_CROSS);
    case CursorKind::Arrow:
    case CursorKind::Default:
      break;
  }
  return LoadCursorW(nullptr, IDC_ARROW);
}

}  // namespace

void showCursor(CursorKind kind) {
  SetCursor(cursorOf(kind));
}

}  // namespace quillmere
