#include "annot/idle_slice.h"

namespace quillmere {

namespace {

constexpr std::uint64_t kMilliseconds = 4;

}  // namespace

bool IdleSlice::endsWithPage() {
  return --pagesLeft_ <= 0 || platform::monotonicMilliseconds() - begun_ >= kMilliseconds;
}

}  // namespace quillmere
