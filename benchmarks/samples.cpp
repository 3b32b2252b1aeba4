#include "samples.h"

#include <cstdio>

namespace quillmere::bench {

void reportPair(const std::string& row, const std::string& document, double ours, double theirs) {
  std::printf("pair\t%s\t%s\t%.6f\t%.6f\n", row.c_str(), document.c_str(), ours, theirs);
}

void reportValue(const std::string& row, const std::string& document, double value) {
  std::printf("value\t%s\t%s\t%.6f\n", row.c_str(), document.c_str(), value);
}

std::string documentName(const std::string& path) {
  return path.substr(path.find_last_of("/\\") + 1);
}

}  // namespace quillmere::bench
