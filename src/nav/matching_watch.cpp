#include "nav/matching_watch.h"

#include <algorithm>

#include "platform/process.h"

namespace quillmere {

MatchingWatch::MatchingWatch(std::uint64_t& left, std::uint64_t limit,
                             std::uint32_t stepsBetweenLooks)
    : left_(left),
      leftForText_(limit),
      stepsBetweenLooks_(stepsBetweenLooks),
      before_(platform::monotonicMilliseconds()) {
  stepsToLook = stepsBetweenLooks_;
  current = this;
}

MatchingWatch::~MatchingWatch() {
  takePassedTime();
  current = nullptr;
}

void MatchingWatch::look() {
  stepsToLook = stepsBetweenLooks_;
  takePassedTime();
  if (left_ == 0 || leftForText_ == 0) throw MatchingTimeUp();
}

void MatchingWatch::takePassedTime() {
  const std::uint64_t now = platform::monotonicMilliseconds();
  left_ -= std::min(now - before_, left_);
  leftForText_ -= std::min(now - before_, leftForText_);
  before_ = now;
}

}  // namespace quillmere
