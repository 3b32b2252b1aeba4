#pragma once

#include <chrono>
#include <string>

// What the benchmark programs print for the script that makes the table: one line per measurement,
// with tab-separated fields. The script knows the rows and computes the medians.
namespace quillmere::bench {

class Stopwatch {
 public:
  double milliseconds() const {
    const std::chrono::duration<double, std::milli> passed =
        std::chrono::steady_clock::now() - start_;
    return passed.count();
  }

 private:
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

// Milliseconds that `work` takes.
template <typename Work>
double timed(Work work) {
  const Stopwatch watch;
  work();
  return watch.milliseconds();
}

// One repetition of a row: our value and the one it is compared with, measured one right after the
// other.
void reportPair(const std::string& row, const std::string& document, double ours, double theirs);

// A single number: a count, or one side of a comparison whose other side is measured by another
// program.
void reportValue(const std::string& row, const std::string& document, double value);

// The last part of a path with either kind of separator.
std::string documentName(const std::string& path);

}  // namespace quillmere::bench
