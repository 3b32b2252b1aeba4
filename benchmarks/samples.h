#pragma once

#include <chrono>
#include <string>

// What the benchmark programs tell the script that makes the table: one line a measurement, with
// tabs between its fields. The script knows the rows and takes the medians.
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

// One repetition of a row: ours and what it is compared with, measured right after each other.
void reportPair(const std::string& row, const std::string& document, double ours, double theirs);

// A single number: a count, or one side of a comparison whose other side another program measures.
void reportValue(const std::string& row, const std::string& document, double value);

// Last part of a path with either kind of separator.
std::string documentName(const std::string& path);

}  // namespace quillmere::bench
