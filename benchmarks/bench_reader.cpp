// Times what the reader does in its real main window against the PDFium calls or the copying that
// it cannot do without.
//
// Usage: bench_reader DOCUMENT...

#include <fpdf_annot.h>
#include <quillmere_engine.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <string>
#include <vector>

#include "annot/markups.h"
#include "documents/close.h"
#include "documents/modes.h"
#include "engine_calls.h"
#include "page_walk.h"
#include "plain_pdfium.h"
#include "reader_window.h"
#include "samples.h"
#include "session/session.h"
#include "view/geometry.h"
#include "view/navigation.h"
#include "view/rotation.h"
#include "view/zoom.h"

namespace quillmere::bench {
namespace {

constexpr int kOpens = 40;
constexpr int kTurns = 200;
constexpr int kZoomSteps = 60;
constexpr int kModeCycles = 16;
constexpr int kRotations = 40;
constexpr int kMarks = 20;
constexpr int kMarkedCharacters = 60;
constexpr int kPanMoves = 200;
constexpr int kMiddlePage = 100;

BitmapSize shownSize(int pane) {
  return {session.panes[pane].pageBitmapWidth, session.panes[pane].pageBitmapHeight};
}

bool same(BitmapSize left, BitmapSize right) {
  return left.width == right.width && left.height == right.height;
}

// The document being measured: open in the reader, and once more in plain PDFium for comparison.
struct Subject {
  std::string path;
  std::string name;
  PlainView plain;
  PlainView plainRight;  // a second page of the same document
};

// The two sides take turns at going first, since the first one fills caches for the other.
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

void compareOpening(Subject& subject) {
  BitmapSize size;
  for (int i = -1; i < kOpens; ++i) {
    closeAllDocuments();
    closePlain(subject.plain);
    handleMessages();
    const auto theirs = [&] {
      openPlain(subject.plain, subject.path);
      loadPlainPage(subject.plain, 0, false);
      renderView(subject.plain, size);
    };
    // The first time fills the font caches and gives the size.
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
          renderView(subject.plain, shownSize(0));
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

// Reports a step twice: without painting, and with the repaint that follows it.
void reportStep(const std::string& row, const Subject& subject, const PaintTimes& ours,
                double theirs) {
  reportPair(row, subject.name, ours.work, theirs);
  reportPair(row + "-painted", subject.name, ours.last, theirs);
}

// Steps through a cycle that ends where it began, over and over. The first cycle fills the caches
// and gives the sizes, so afterwards either side may go first.
template <typename Ours, typename Theirs>
void compareSteps(const char* row, const Subject& subject, int cycleLength, int steps, Ours ours,
                  Theirs theirs) {
  std::vector<BitmapSize> sizes;
  for (int i = -cycleLength; i < steps; ++i) {
    const int place = (i + cycleLength) % cycleLength;
    const bool oursFirst = i < 0 || i % 2 == 0;
    double theirTime = 0;
    const auto timeTheirs = [&] {
      theirTime = timed([&] { theirs(place, sizes[static_cast<std::size_t>(place)]); });
    };
    if (!oursFirst) timeTheirs();
    const PaintTimes ourTimes = timePainting([&] { ours(place); });
    if (i < 0) sizes.push_back(shownSize(0));
    if (oursFirst) timeTheirs();
    if (i >= 0) reportStep(row, subject, ourTimes, theirTime);
    handleMessages();
  }
}

void compareZoom(Subject& subject) {
  constexpr int kStepsInOneDirection = 3;
  compareSteps(
      "zoom-step", subject, 2 * kStepsInOneDirection, kZoomSteps,
      [](int place) { place < kStepsInOneDirection ? zoomIn(0) : zoomOut(0); },
      [&](int, BitmapSize size) { renderView(subject.plain, size); });
  setZoomMode(0, kFitPage);
}

void compareRotation(Subject& subject) {
  compareSteps(
      "rotation", subject, 4, kRotations, [](int) { rotateDocument(0); },
      [&](int place, BitmapSize size) { renderView(subject.plain, size, (place + 1) % 4); });
}

constexpr ViewMode kModeCycle[] = {ViewMode::Book, ViewMode::IndependentPages,
                                   ViewMode::TwoDocuments, ViewMode::SinglePage};

// The page loads and renderings that a mode needs after the previous one in the cycle.
void showPlainMode(ViewMode mode, Subject& subject, int index, BitmapSize left, BitmapSize right) {
  if (mode == ViewMode::Book) loadPlainPage(subject.plainRight, index + 1, false);
  const bool opensAgain = mode == ViewMode::TwoDocuments || mode == ViewMode::SinglePage;
  if (opensAgain) loadPlainPage(subject.plain, index, false);
  renderView(subject.plain, left);
  if (!opensAgain) renderView(subject.plainRight, right);
}

// Goes through the cycle once; the sides take turns at each step. `sizes` are those of both pages
// after each step, from the previous cycle.
void compareModeCycle(Subject& subject, bool oursFirst, int index,
                      std::vector<std::array<BitmapSize, 2>>& sizes) {
  PaintTimes ours;
  double theirs = 0;
  EngineCalls calls;
  EngineCalls needed;
  for (std::size_t i = 0; i < std::size(kModeCycle); ++i) {
    const ViewMode mode = kModeCycle[i];
    const auto timeTheirs = [&] {
      takeEngineCalls();
      theirs += timed([&] { showPlainMode(mode, subject, index, sizes[i][0], sizes[i][1]); });
      needed += takeEngineCalls();
    };
    if (!oursFirst) timeTheirs();
    takeEngineCalls();
    const PaintTimes change = timePainting([&] { setViewMode(mode); });
    handleMessages();
    calls += takeEngineCalls();
    sizes[i] = {shownSize(0), shownSize(1)};
    if (oursFirst) timeTheirs();
    ours.work += change.work;
    ours.last += change.last;
  }
  reportStep("mode-change", subject, ours, theirs);
  reportPair("mode-renders", subject.name, calls.renders, needed.renders);
  reportPair("mode-loads", subject.name, calls.pageLoads, needed.pageLoads);
}

void compareModes(Subject& subject) {
  openPlain(subject.plainRight, subject.path);
  const int index = session.panes[0].currentPage;
  std::vector<std::array<BitmapSize, 2>> sizes;
  for (const ViewMode mode : kModeCycle) {
    setViewMode(mode);
    handleMessages();
    sizes.push_back({shownSize(0), shownSize(1)});
  }
  for (int i = 0; i < kModeCycles; ++i) compareModeCycle(subject, i % 2 == 0, index, sizes);
  closePlain(subject.plainRight);
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

// A highlight like the last annotation of another page.
void copyLastHighlight(FPDF_PAGE from, FPDF_PAGE to) {
  const AnnotationHandle mark(FPDFPage_GetAnnot(from, FPDFPage_GetAnnotCount(from) - 1));
  const AnnotationHandle copy(FPDFPage_CreateAnnot(to, FPDF_ANNOT_HIGHLIGHT));
  unsigned r = 0;
  unsigned g = 0;
  unsigned b = 0;
  unsigned alpha = 0;
  FPDFAnnot_GetColor(mark.get(), FPDFANNOT_COLORTYPE_Color, &r, &g, &b, &alpha);
  FPDFAnnot_SetColor(copy.get(), FPDFANNOT_COLORTYPE_Color, r, g, b, alpha);
  for (std::size_t i = 0; i < FPDFAnnot_CountAttachmentPoints(mark.get()); ++i) {
    FS_QUADPOINTSF quad{};
    FPDFAnnot_GetAttachmentPoints(mark.get(), i, &quad);
    FPDFAnnot_AppendAttachmentPoints(copy.get(), &quad);
  }
  QuillmereEngine_WriteMarkAppearance(copy.get(), 0);
}

void takeLastMarkAway() {
  session.markupMenuPage = session.panes[0].openPage;
  session.markupMenuAnnot = FPDFPage_GetAnnotCount(session.panes[0].page.get()) - 1;
  RemoveMarkup();
  handleMessages();
}

// Marks a few words, and takes the mark away again while no clock runs. What it needs is a picture
// of the page with the mark.
void compareMarking(Subject& subject) {
  goToMiddle(subject);
  session.panes[0].textPage.get();  // as whoever selects text has done
  const TextSelection words = {true, 0, 0, kMarkedCharacters, false};
  session.selection = words;
  highlightSelection();
  copyLastHighlight(session.panes[0].page.get(), subject.plain.page.get());
  takeLastMarkAway();
  for (int i = 0; i < kMarks; ++i) {
    session.selection = words;
    double theirs = 0;
    const auto timeTheirs = [&] {
      theirs = timed([&] { renderView(subject.plain, shownSize(0)); });
    };
    if (i % 2 != 0) timeTheirs();
    const PaintTimes ours = timePainting(highlightSelection);
    if (i % 2 == 0) timeTheirs();
    reportStep("mark", subject, ours, theirs);
    takeLastMarkAway();
  }
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
  compareMarking(subject);
  closeAllDocuments();
}

}  // namespace
}  // namespace quillmere::bench

int main(int argc, char** argv) {
  using namespace quillmere::bench;
  return runInReader([&] {
    startCountingEngineCalls();
    for (int i = 1; i < argc; ++i) measure(argv[i]);
    return true;
  });
}
