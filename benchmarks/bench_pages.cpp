// Times deleting and inserting a page of a document.
//
// Usage: bench_pages DOCUMENT

#include <fpdf_edit.h>
#include <fpdf_ppo.h>

#include <string>
#include <utility>

#include "annot/placements.h"
#include "documents/page_operations.h"
#include "plain_pdfium.h"
#include "reader_window.h"
#include "samples.h"
#include "session/session.h"
#include "view/navigation.h"

namespace quillmere::bench {
namespace {

constexpr int kRounds = 20;
constexpr int kPage = 3;  // zero-based

void showPlain(PlainView& view) {
  const PaneSlot& slot = session.panes[0];
  loadPlainPage(view, kPage, true);
  renderView(view, {slot.pageBitmapWidth, slot.pageBitmapHeight}, 0);
}

DocumentHandle onePageOf(FPDF_DOCUMENT document) {
  DocumentHandle page(FPDF_CreateNewDocument());
  FPDF_ImportPages(page.get(), document, "1", 0);
  return page;
}

double deletePlain(PlainView& view) {
  return timed([&] {
    view.textPage.reset();
    view.page.reset();
    FPDFPage_Delete(view.document.get(), kPage);
    showPlain(view);
  });
}

double insertPlain(PlainView& view) {
  const DocumentHandle source = onePageOf(view.document.get());
  return timed([&] {
    view.textPage.reset();
    view.page.reset();
    FPDF_ImportPages(view.document.get(), source.get(), nullptr, kPage);
    showPlain(view);
  });
}

double deleteOurs() {
  goToPage(0, kPage, false);
  handleMessages();
  return timePainting([] { deletePage(kPage); }).first;
}

double insertOurs() {
  DocumentHandle source = onePageOf(session.active.document.get());
  return timePainting([&] { insertPages(std::move(source), kPage); }).first;
}

// The sides take turns at going first, and every page that goes is followed by one that comes.
void measure(PlainView& view, const std::string& name) {
  for (int i = 0; i < kRounds; ++i) {
    const bool oursFirst = i % 2 == 0;
    double ours = oursFirst ? deleteOurs() : 0;
    double theirs = deletePlain(view);
    if (!oursFirst) ours = deleteOurs();
    reportPair("page-delete", name, ours, theirs);
    handleMessages();
    ours = oursFirst ? insertOurs() : 0;
    theirs = insertPlain(view);
    if (!oursFirst) ours = insertOurs();
    reportPair("page-insert", name, ours, theirs);
    handleMessages();
  }
}

bool measureDocument(const std::string& path) {
  PlainView view;
  if (!openAndPaint(path) || !openPlain(view, path)) return false;
  readWaitingPlacements();
  handleMessages();
  showPlain(view);
  measure(view, documentName(path));
  closePlain(view);
  return true;
}

}  // namespace
}  // namespace quillmere::bench

int main(int argc, char** argv) {
  using namespace quillmere::bench;
  return argc == 2 ? runInReader([&] { return measureDocument(argv[1]); }) : 2;
}
