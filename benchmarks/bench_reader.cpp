// Times what the reader does in its real main window, each time beside the PDFium calls or the
// copy that it cannot do without.
//
// Usage: bench_reader DOCUMENT...

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "core/close.h"
#include "core/session.h"
#include "engine_calls.h"
#include "page_walk.h"
#include "plain_pdfium.h"
#include "reader_window.h"
#include "samples.h"
#include "view/geometry.h"
#include "view/modes.h"
#include "view/navigation.h"
#include "view/rotation.h"
#include "view/zoom.h"

namespace quillmere::bench {
namespace {

constexpr int kOpens = 21;
constexpr int kTurns = 200;
constexpr int kZoomSteps = 60;
constexpr int kModeCycles = 15;
constexpr int kRotations = 40;
constexpr int kPanMoves = 200;
constexpr int kMiddlePage = 100;

template <typename Work>
double timed(Work work) {
  const Stopwatch watch;
  work();
  return watch.milliseconds();
}

BitmapSize shownSize(int pane) {
  return {session.panes[pane].pageBitmapWidth, session.panes[pane].pageBitmapHeight};
}

bool same(BitmapSize left, BitmapSize right) {
  return left.width == right.width && left.height == right.height;
}

// The document that is being measured: open in the reader, and for comparison once more beside it.
struct Subject {
  std::string path;
  std::string name;
  PlainView plain;
  PlainView plainRight;  // a second page of the same document
};

// What does most for one side's caches must not help the other side's time: they take turns.
template <typename Ours, typename Theirs>
void comparePair(const char* row, const Subject& subject, int repetition, Ours ours,
                 Theirs theirs) {
  const bool oursFirst = repetition % 2 == 0;
  double theirTime = oursFirst ? 0 : timed(theirs);
  const BitmapSize before = shownSize(0);
  const double ourTime = timePainting(ours).last;
  if (oursFirst) theirTime = timed(theirs);
  if (oursFirst || same(before, shownSize(0))) {
    reportPair(row, subject.name, ourTime, theirTime);
  }
}

void renderLikeShown(PlainView& view, int pane, int rotate = 0) {
  view.bitmap = renderPlain(view.page.get(), shownSize(pane), rotate);
}

void compareOpening(Subject& subject) {
  BitmapSize size;
  for (int i = -1; i < kOpens; ++i) {
    closeAllDocuments();
    subject.plain = PlainView{};
    handleMessages();
    const auto theirs = [&] {
      openPlain(subject.plain, subject.path);
      loadPlainPage(subject.plain, 0, false);
      subject.plain.bitmap = renderPlain(subject.plain.page.get(), size);
    };
    // The first time fills the caches of fonts and tells the size.
    if (i < 0) {
      openAndPaint(subject.path);
      size = shownSize(0);
      theirs();
      continue;
    }
    const bool oursFirst = i % 2 == 0;
    double theirTime = oursFirst ? 0 : timed(theirs);
    const PaintTimes ourTimes = timePainting([&] { openAndPaint(subject.path); });
    if (oursFirst) theirTime = timed(theirs);
    reportPair("open", subject.name, ourTimes.first, theirTime);
    reportPair("open-whole", subject.name, ourTimes.whole, theirTime);
  }
}

void compareTurning(Subject& subject) {
  goToPage(0, 0, false);
  handleMessages();
  for (int i = 0; i < kTurns; ++i) {
    const int index = pageOfStep(i, session.active.pageCount - 1);
    comparePair(
        "page-turn", subject, i, [&] { goToPage(0, index, false); },
        [&] {
          loadPlainPage(subject.plain, index, true);
          renderLikeShown(subject.plain, 0);
        });
    handleMessages();
  }
}

void goToMiddle(Subject& subject) {
  const int index = std::min(kMiddlePage, session.active.pageCount / 2);
  goToPage(0, index, false);
  loadPlainPage(subject.plain, index, true);
  handleMessages();
}

void compareZoom(Subject& subject) {
  constexpr int kStepsInOneDirection = 3;
  for (int i = -2 * kStepsInOneDirection; i < kZoomSteps; ++i) {
    const bool in = (i + 2 * kStepsInOneDirection) / kStepsInOneDirection % 2 == 0;
    const double ours = timePainting([&] { in ? zoomIn(0) : zoomOut(0); }).last;
    const double theirs = timed([&] { renderLikeShown(subject.plain, 0); });
    if (i >= 0) reportPair("zoom-step", subject.name, ours, theirs);
    handleMessages();
  }
  setZoomMode(0, kFitPage);
}

void compareRotation(Subject& subject) {
  for (int i = 0; i < kRotations; ++i) {
    const double ours = timePainting([&] { rotateDocument(0); }).last;
    const double theirs = timed([&] { renderLikeShown(subject.plain, 0, (i + 1) % 4); });
    if (i >= 4) reportPair("rotation", subject.name, ours, theirs);
    handleMessages();
  }
}

// The pages and renders that each mode needs when it follows the one before it.
double enterMode(ViewMode mode) {
  const double time = timePainting([&] { setViewMode(mode); }).last;
  handleMessages();
  return time;
}

double needsOf(ViewMode mode, Subject& subject) {
  const int index = session.panes[0].currentPage;
  return timed([&] {
    switch (mode) {
      case ViewMode::Book:
        loadPlainPage(subject.plainRight, index + 1, true);
        renderLikeShown(subject.plain, 0);
        renderLikeShown(subject.plainRight, 1);
        break;
      case ViewMode::IndependentPages:
        renderLikeShown(subject.plain, 0);
        renderLikeShown(subject.plainRight, 1);
        break;
      default:
        loadPlainPage(subject.plain, index, true);
        renderLikeShown(subject.plain, 0);
        break;
    }
  });
}

void compareModes(Subject& subject) {
  constexpr ViewMode kCycle[] = {ViewMode::Book, ViewMode::IndependentPages, ViewMode::TwoDocuments,
                                 ViewMode::SinglePage};
  openPlain(subject.plainRight, subject.path);
  takeEngineCalls();
  for (int i = -1; i < kModeCycles; ++i) {
    double ours = 0;
    double theirs = 0;
    for (const ViewMode mode : kCycle) {
      ours += enterMode(mode);
      const EngineCalls calls = takeEngineCalls();
      theirs += needsOf(mode, subject);
      const EngineCalls needed = takeEngineCalls();
      if (i < 0) continue;
      reportPair("mode-renders", subject.name, calls.renders, needed.renders);
      reportPair("mode-loads", subject.name, calls.pageLoads, needed.pageLoads);
    }
    if (i >= 0) reportPair("mode-change", subject.name, ours, theirs);
  }
  subject.plainRight = PlainView{};
}

void comparePanning(Subject& subject) {
  setZoomMode(0, kFitWidth);
  paintNow();
  handleMessages();
  constexpr int kStartX = 400;
  constexpr int kStartY = 300;
  constexpr int kReach = 40;
  startDragPan(0, kStartX, kStartY);
  int engineCalls = 0;
  for (int i = 0; i < kPanMoves; ++i) {
    const int offset = i % kReach - kReach / 2;
    double ours = 0;
    {
      const EngineBarred barred;
      ours = timed([&] {
        moveDragPan(kStartX + offset, kStartY - offset);
        paintNow();
      });
      engineCalls += barred.calls();
    }
    reportPair("pan-repaint", subject.name, ours, timed(copyPlainPicture));
    handleMessages();
  }
  endDragPan();
  reportValue("pan-engine-calls", subject.name, engineCalls);
  setZoomMode(0, kFitPage);
  handleMessages();
}

void measure(const std::string& path) {
  Subject subject;
  subject.path = path;
  subject.name = documentName(path);
  compareOpening(subject);
  compareTurning(subject);
  goToMiddle(subject);
  comparePanning(subject);
  compareZoom(subject);
  compareRotation(subject);
  compareModes(subject);
  closeAllDocuments();
}

int run(int argc, char** argv) {
  prepareSettings();
  if (!showReader()) {
    std::fputs("The main window could not be made.\n", stderr);
    return 1;
  }
  startCountingEngineCalls();
  for (int i = 1; i < argc; ++i) measure(argv[i]);
  closeReader();
  return 0;
}

}  // namespace
}  // namespace quillmere::bench

int main(int argc, char** argv) {
  return quillmere::bench::run(argc, argv);
}
