#include "annot/idle_slice.h"

namespace quillmere {

namespace {

constexpr int kPages = 8;
constexpr std::uint64_t kMilliseconds = 4;

}  // namespace

bool IdleSlice::endsWithPage() {
  return ++pages_ >= kPages || platform::monotonicMilliseconds() - begun_ >= kMilliseconds;
}

}  // namespace quillmere
