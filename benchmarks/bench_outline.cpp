// Times how long the reader needs to fill its tree with the outline of a document that it has just
// opened.
//
// Usage: bench_outline DOCUMENT

#include "core/close.h"
#include "nav/bookmarks.h"
#include "reader_window.h"
#include "samples.h"

namespace quillmere::bench {
namespace {

constexpr int kFills = 5;

int run(const std::string& path) {
  prepareSettings();
  if (!showReader()) return 1;
  for (int i = 0; i < kFills; ++i) {
    closeAllDocuments();
    handleMessages();
    if (!openAndPaint(path)) return 1;
    handleMessages();
    ClearNavigationTree();
    const Stopwatch watch;
    RebuildNavigationTree();
    handleMessages();
    reportValue("outline-fill", documentName(path), watch.milliseconds());
  }
  closeAllDocuments();
  closeReader();
  return 0;
}

}  // namespace
}  // namespace quillmere::bench

int main(int argc, char** argv) {
  return argc == 2 ? quillmere::bench::run(argv[1]) : 2;
}
