#pragma once

#include <cstdint>

#include "platform/process.h"

namespace quillmere {

// A piece of reading that is done while the program waits for the user, who may press a key during
// it. It ends after a few milliseconds, and after some pages where the clock is coarse.
class IdleSlice {
 public:
  explicit IdleSlice(int mostPages) : pagesLeft_(mostPages) {}

  // Counts a page that was read. True when it was the last one of this slice.
  bool endsWithPage();

 private:
  std::uint64_t begun_ = platform::monotonicMilliseconds();
  int pagesLeft_;
};

}  // namespace quillmere
