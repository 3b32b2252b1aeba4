#pragma once

#include <cstdint>

namespace quillmere {

// What mouse gestures over the view have begun and not yet ended. Places are client pixels.
struct ViewInput {
  // Less than a notch of wheel movement that page turns and zoom steps still wait for, and where
  // it was gathered.
  std::int32_t wheelDelta = 0;
  std::int32_t wheelPane = -1;
  unsigned wheelModifiers = 0;

  bool dividerDrag = false;
  std::int32_t dividerPressX = 0;
  std::int32_t dividerStartX = 0;  // of the divider when the drag began

  bool panelWidthDrag = false;
  std::int32_t panelPressX = 0;
  std::int32_t panelStartWidth = 0;

  bool panelBarDrag = false;
  std::int32_t panelBarGrip = 0;  // pixels between the bar's top and the press

  bool stampSplitterDrag = false;
  std::int32_t stampSplitterPressX = 0;
  std::int32_t stampSplitterStartWidth = 0;
};

}  // namespace quillmere
