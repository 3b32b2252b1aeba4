#pragma once

#include <cstdint>

#include "platform/process.h"

namespace quillmere {

// A piece of reading that is done while the program waits for the user, who may press a key during
// it. It ends after a few milliseconds, and after a few pages where the clock is coarse.
class IdleSlice {
 public:
  // Counts a page that was read. True when it was the last one of this slice.
  bool endsWithPage();

 private:
  std::uint64_t begun_ = platform::monotonicMilliseconds();
  int pages_ = 0;
};

}  // namespace quillmere
