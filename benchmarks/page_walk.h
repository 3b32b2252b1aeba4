#pragma once

namespace quillmere::bench {

// The page that step `step` (from 0) of a walk turns to. The walk starts on page 0, goes forward to
// page `last` and back, over and over. `last` is at least 1.
inline int pageOfStep(int step, int last) {
  const int place = (step + 1) % (2 * last);
  return place <= last ? place : 2 * last - place;
}

}  // namespace quillmere::bench
