// Times what stamps cost: opening a document that has many, dragging one, and a library of large
// pictures.
//
// Usage: bench_placements DOCUMENT, or bench_placements --library

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "annot/placement_editing.h"
#include "annot/placements.h"
#include "annot/stamp_library.h"
#include "annot/stamp_pictures.h"
#include "annot/write_placements.h"
#include "documents/close.h"
#include "engine_calls.h"
#include "footprint.h"
#include "panels/panel_toggles.h"
#include "plain_pdfium.h"
#include "platform/files.h"
#include "platform/pictures.h"
#include "platform/text.h"
#include "reader_window.h"
#include "samples.h"
#include "session/session.h"
#include "store/write_document_copy.h"
#include "view/geometry.h"

namespace quillmere::bench {
namespace {

constexpr int kStamps = 100;
constexpr int kOpens = 10;
constexpr int kMoves = 200;
constexpr int kLargePictures = 50;
constexpr int kLargeSide = 4000;  // pixels
constexpr int kLibraryRounds = 2;

// A picture that compresses about as a photographed signature does.
platform::SharedPicture signature(int side) {
  auto picture = std::make_shared<platform::Picture>();
  picture->width = side;
  picture->height = side;
  picture->pixels.resize(static_cast<std::size_t>(side) * static_cast<std::size_t>(side));
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) {
      const auto shade = static_cast<std::uint32_t>((x * 7 + y * 3) / 16 % 200);
      picture->pixels[static_cast<std::size_t>(y) * static_cast<std::size_t>(side) +
                      static_cast<std::size_t>(x)] = 0xFF000000 | shade * 0x010101;
    }
  }
  return picture;
}

Placement stampOf(const platform::SharedPicture& picture) {
  Placement placement;
  placement.stampIndex = -1;
  placement.image = picture;
  placement.x = 100;
  placement.y = 100;
  placement.width = 120;
  placement.height = 60;
  return placement;
}

// A copy of the document with a stamp on each of its first pages.
std::string stampedCopy(const std::string& path, int& pages) {
  if (!openAndPaint(path)) return {};
  const FPDF_DOCUMENT document = session.active.document.get();
  const platform::SharedPicture picture = signature(300);
  LoadPlacements(document);
  pages = std::min(kStamps, session.active.pageCount);
  for (int page = 0; page < pages; ++page) session.placements[page].push_back(stampOf(picture));
  WritePendingStamps(document);
  const std::u16string copy = platform::temporaryFolder() + u"stamped.pdf";
  const bool written = WriteDocumentCopy(document, copy);
  closeAllDocuments();
  return written ? platform::pathForLibraries(copy) : std::string();
}

// Handles messages until the stamps of all pages are known; a long document's are read in between.
void waitForStamps(int pages) {
  constexpr double kPatience = 60000;  // milliseconds
  const Stopwatch watch;
  while (session.placements.size() < static_cast<std::size_t>(pages) &&
         watch.milliseconds() < kPatience) {
    handleMessages();
  }
}

// PDFium cannot find stamps without loading their pages.
void compareOpening(const std::string& path, const std::string& name, int pages) {
  PlainView plain;
  const auto theirs = [&] {
    openPlain(plain, path);
    for (int page = 0; page < pages; ++page) loadPlainPage(plain, page, false);
  };
  for (int i = 0; i < kOpens; ++i) {
    closeAllDocuments();
    closePlain(plain);
    handleMessages();
    const bool oursFirst = i % 2 == 0;
    double theirTime = oursFirst ? 0 : timed(theirs);
    const Stopwatch watch;
    const PaintTimes ours = timePainting([&] { openAndPaint(path); });
    waitForStamps(pages);
    const double known = watch.milliseconds();
    if (oursFirst) theirTime = timed(theirs);
    reportPair("open-stamped", name, ours.first, theirTime);
    reportPair("open-stamped-known", name, known, theirTime);
  }
  closePlain(plain);
}

// What the limit of a move is: four copies of the client area, and drawing the stamp once.
void copyAndDraw(const Placement& stamp) {
  constexpr int kCopies = 4;
  for (int n = 0; n < kCopies; ++n) copyPlainPicture();
  const double zoom = session.panes[0].zoom;
  drawOnPlainPicture(*stamp.image, static_cast<int>(stamp.width * zoom),
                     static_cast<int>(stamp.height * zoom));
}

// Moves a pending stamp to and fro.
void compareDragging(const std::string& name) {
  if (!session.stampPanelVisible) toggleStampPanel();
  const PaneSlot& slot = session.panes[0];
  LoadPlacements(session.active.document.get());
  const Placement stamp = stampOf(signature(300));
  session.placements[slot.openPage] = {stamp};
  const PanePoint centre = pageToPane(0, 160, 130);
  const PixelRect pane = paneRect(0);
  const int x = pane.left + static_cast<int>(centre.x);
  const int y = pane.top + static_cast<int>(centre.y);
  pressPlacement(x, y);
  takeEngineCalls();
  for (int i = 0; i < kMoves; ++i) {
    const int offset = i % 40 - 20;
    const double ours = timed([&] {
      movePlacementDrag(x + offset, y - offset);
      paintNow();
    });
    reportPair("stamp-drag", name, ours, timed([&stamp] { copyAndDraw(stamp); }));
    handleMessages();
  }
  reportValue("stamp-drag-renders", name, takeEngineCalls().renders);
  endPlacementDrag();
  ClearPlacements();
}

bool measureDocument(const std::string& path) {
  int pages = 0;
  const std::string copy = stampedCopy(path, pages);
  if (copy.empty()) return false;
  compareOpening(copy, documentName(path), pages);
  compareDragging(documentName(path));
  closeAllDocuments();
  platform::deleteFile(platform::temporaryFolder() + u"stamped.pdf");
  return true;
}

std::u16string largePath(int number) {
  const std::string name = "large" + std::to_string(number) + ".png";
  return session.stampsFolder + std::u16string(name.begin(), name.end());
}

// The panel makes its thumbnails one by one while the program is idle.
void openPanelWithAllThumbnails() {
  refreshStampLibrary();
  for (StampEntry& entry : session.stampLibrary) makeThumbnail(entry);
}

bool measureLibrary() {
  if (session.stampsFolder.empty()) return false;
  if (!platform::savePng(*signature(kLargeSide), largePath(0))) return false;
  const auto bytes = platform::readFileShared(largePath(0), 1 << 30);
  for (int n = 1; bytes && n < kLargePictures; ++n) {
    platform::writeFile(largePath(n), bytes->data(), bytes->size());
  }
  platform::deleteFile(session.stampsFolder + u"stamps.lst");
  const double before = memory().workingSet;
  openPanelWithAllThumbnails();
  reportPair("stamp-library-memory", "50 pictures", memory().workingSet, before);
  for (int i = 0; i < kLibraryRounds; ++i) {
    const double theirs = timed([] {
      for (int n = 0; n < kLargePictures; ++n) platform::loadPicture(largePath(n));
    });
    reportPair("stamp-library", "50 pictures", timed(openPanelWithAllThumbnails), theirs);
  }
  DeleteAllStamps();
  return true;
}

bool measure(const std::string& argument) {
  startCountingEngineCalls();
  return argument == "--library" ? measureLibrary() : measureDocument(argument);
}

}  // namespace
}  // namespace quillmere::bench

int main(int argc, char** argv) {
  using namespace quillmere::bench;
  return argc == 2 ? runInReader([&] { return measure(argv[1]); }) : 2;
}
