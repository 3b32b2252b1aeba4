#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "base/pixel_rect.h"
#include "platform/main_window.h"

// What is painted where, as plain rectangles; the window code copies and fills.
namespace quillmere {

struct Color {
  std::uint8_t r = 0;
  std::uint8_t g = 0;
  std::uint8_t b = 0;
  bool operator==(const Color&) const = default;
};

inline constexpr Color kPaneBackground{70, 70, 70};
inline constexpr Color kPageShadow{30, 30, 30};
inline constexpr Color kDividerColor{40, 40, 40};
inline constexpr Color kSplitterColor{45, 45, 45};
inline constexpr Color kPlaceholderColor{120, 200, 255};
inline constexpr Color kActiveFrameColor{80, 140, 220};

struct FilledRect {
  PixelRect rect;
  Color color;
  bool operator==(const FilledRect&) const = default;
};

// The lines and bars between panes and panels, in client pixels; empty if missing.
struct WindowPlan {
  int paneCount = 1;
  FilledRect divider;
  FilledRect leftSplitter;
  FilledRect leftPanelBar;
  FilledRect stampSplitter;
  bool operator==(const WindowPlan&) const = default;
};
WindowPlan planWindow();

// One pane, in pixels from its top left corner.
struct PanePlan {
  PixelRect rect;     // the pane in client pixels
  PixelRect content;  // what the page may cover: the pane without the inset of its frame
  bool hasBitmap = false;
  PixelRect shadow;
  std::int32_t bitmapX = 0;
  std::int32_t bitmapY = 0;
  bool showsPlaceholder = false;  // the pane has neither a bitmap nor a document
  bool framed = false;
  std::array<PixelRect, 4> frame;  // top, bottom, left, right
};
PanePlan planPane(int pane, const PixelRect& rect);

// The invitation to open a document in an empty pane.
std::u16string placeholderText(int pane);

// The text's box, centred in the pane's content, in pixels from the pane's top left corner.
PixelRect placeholderBox(const PanePlan& plan, platform::PixelSize text);

// The part of that box that can be clicked, in client pixels: in a narrow pane the text is wider
// than the pane.
PixelRect placeholderTarget(const PanePlan& plan, const PixelRect& box);

}  // namespace quillmere
