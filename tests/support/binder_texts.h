#pragma once

#include <cstddef>
#include <random>
#include <string>

#include "session/binder.h"

namespace quillmere::test {

// Texts of binder files, good ones and damaged ones: the same in the same order at each run.
class RandomBinderTexts {
 public:
  std::string next();

 private:
  std::size_t below(std::size_t count) { return random_() % count; }
  std::string number();
  std::string line();
  void damage(std::string& text);

  std::mt19937 random_{20240607};
};

// What reads differently once the binder was written and read again; empty when nothing does. Six
// digits of a number are written, and a mode brings its page along.
std::string lostByWriting(const BinderFile& binder);

}  // namespace quillmere::test
