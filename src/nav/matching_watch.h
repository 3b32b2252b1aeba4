#pragma once

#include <cstdint>
#include <exception>

namespace quillmere {

// Thrown to leave the matcher when its time is up.
class MatchingTimeUp : public std::exception {};

// Limits the time for matching one text. The matcher counts a step for each character it reads;
// after `stepsBetweenLooks` of them the watch reads the clock. Only one watch exists at a time.
class MatchingWatch {
 public:
  // Subtracts the time that passes from `left`. A step throws MatchingTimeUp once nothing is left,
  // or once this text has used `limit`; all in milliseconds.
  MatchingWatch(std::uint64_t& left, std::uint64_t limit, std::uint32_t stepsBetweenLooks);
  ~MatchingWatch();
  MatchingWatch(const MatchingWatch&) = delete;
  MatchingWatch& operator=(const MatchingWatch&) = delete;

  // Called for every character, so it must cost next to nothing.
  static void step() {
    if (--stepsToLook == 0) current->look();
  }

 private:
  void look();
  void takePassedTime();

  static inline std::uint32_t stepsToLook = 0;
  static inline MatchingWatch* current = nullptr;

  std::uint64_t& left_;
  std::uint64_t leftForText_;
  std::uint32_t stepsBetweenLooks_;
  std::uint64_t before_;
};

}  // namespace quillmere
