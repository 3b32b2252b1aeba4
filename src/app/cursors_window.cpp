#include <windows.h>

#include <array>

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
