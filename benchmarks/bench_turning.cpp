// Turns hundreds of pages of one document and reports what the process holds afterwards.
//
// Usage: bench_turning DOCUMENT           in the reader's real main window
//        bench_turning --plain DOCUMENT   with PDFium's calls only

#include <algorithm>
#include <cstring>
#include <functional>
#include <string>

#include "footprint.h"
#include "page_walk.h"
#include "plain_pdfium.h"
#include "reader_window.h"
#include "samples.h"
#include "session/session.h"
#include "view/navigation.h"

namespace quillmere::bench {
namespace {

constexpr int kFirstTurns = 100;
constexpr int kTurns = 500;
constexpr BitmapSize kPlainSize{560, 725};

struct State {
  Memory memory;
  OpenObjects objects;
};

State currentState() {
  return {memory(), openObjects()};
}

void report(const std::string& row, const std::string& name, const State& first,
            const State& last) {
  reportPair(row + "-memory", name, last.memory.workingSet, first.memory.workingSet);
  reportPair(row + "-gdi", name, last.objects.gdiObjects, first.objects.gdiObjects);
  reportPair(row + "-windows", name, last.objects.windows, first.objects.windows);
  reportPair(row + "-handles", name, last.objects.handles, first.objects.handles);
}

// Both states are taken on the same page, so they differ only by what page turning left behind.
void measure(const std::string& row, const std::string& name, int pageCount,
             const std::function<void(int)>& show) {
  const auto turn = [&](int turns, int farthest) {
    const int last = std::min(farthest, pageCount - 1);
    for (int i = 0; i < turns; ++i) show(pageOfStep(i, last));
  };
  turn(kFirstTurns, kFirstTurns);
  const State first = currentState();
  turn(2 * kTurns, kTurns);
  turn(kFirstTurns, kFirstTurns);
  report(row, name, first, currentState());
}

bool measureReader(const std::string& path) {
  if (!openAndPaint(path)) return false;
  measure("turning", documentName(path), session.active.pageCount, [](int index) {
    goToPage(0, index, false);
    paintNow();
    handleMessages();
  });
  return true;
}

int measurePlain(const std::string& path) {
  startPdfium();
  PlainView view;
  if (!openPlain(view, path)) return 1;
  measure("plain-turning", documentName(path), FPDF_GetPageCount(view.document.get()),
          [&](int index) {
            loadPlainPage(view, index, true);
            renderView(view, kPlainSize);
          });
  return 0;
}

}  // namespace
}  // namespace quillmere::bench

int main(int argc, char** argv) {
  using namespace quillmere::bench;
  if (argc == 3 && std::strcmp(argv[1], "--plain") == 0) return measurePlain(argv[2]);
  return argc == 2 ? runInReader([&] { return measureReader(argv[1]); }) : 2;
}
