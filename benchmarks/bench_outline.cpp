// Times how long the reader takes to fill its tree with the outline of a newly opened document.
//
// Usage: bench_outline DOCUMENT

#include "documents/close.h"
#include "documents/modes.h"
#include "documents/open_requests.h"
#include "platform/text.h"
#include "reader_window.h"
#include "samples.h"
#include "session/session.h"
#include "store/working_documents.h"
#include "view/panes.h"

namespace quillmere::bench {
namespace {

constexpr int kFills = 5;
constexpr int kOtherPane = 1;

// Opens the document in the inactive pane, since its outline is not read there.
bool openAside(const std::string& path) {
  setActivePane(0);
  if (!openRequested(platform::fromUtf8(path), kOtherPane, kWorkingDocsToHead, true)) return false;
  paintNow();
  handleMessages();
  return session.bookmarks.empty();
}

// Activates the pane, and with it its document's outline.
bool timeFill(const std::string& document) {
  const Stopwatch watch;
  activatePane(kOtherPane);
  handleMessages();
  reportValue("outline-fill", document, watch.milliseconds());
  return !session.bookmarks.empty();
}

bool measureOutline(const std::string& path) {
  setViewMode(ViewMode::TwoDocuments);
  for (int i = 0; i < kFills; ++i) {
    closeAllDocuments();
    handleMessages();
    if (!openAside(path) || !timeFill(documentName(path))) return false;
  }
  return true;
}

}  // namespace
}  // namespace quillmere::bench

int main(int argc, char** argv) {
  using namespace quillmere::bench;
  return argc == 2 ? runInReader([&] { return measureOutline(argv[1]); }) : 2;
}
