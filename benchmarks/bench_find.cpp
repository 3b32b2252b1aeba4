// Times searches in the reader's real main window against direct PDFium calls for the same pages,
// and reports the process's memory after the first search and after some more.
//
// Usage: bench_find DOCUMENT                 in the reader's real main window
//        bench_find --bad-pattern DOCUMENT   there, with a pattern that explodes on a run of a's
//        bench_find --plain DOCUMENT         memory with PDFium's calls only

#include <windows.h>

#include <cstring>
#include <string>

#include "documents/close.h"
#include "footprint.h"
#include "nav/find.h"
#include "nav/find_bar.h"
#include "plain_pdfium.h"
#include "platform/find_bar.h"
#include "platform/win32/window_handles.h"
#include "reader_window.h"
#include "samples.h"
#include "session/session.h"
#include "view/navigation.h"

namespace quillmere::bench {
namespace {

// Rare enough that the search goes on to the last page.
constexpr const char16_t* kWord = u"eigenvalue";
constexpr const char16_t* kPattern = u"[Ee]igenvalues?";
// Backtracks exponentially on a run of a's that is followed by something else.
constexpr const char16_t* kExplodingPattern = u"(a+)+$";
constexpr int kSearches = 2;
constexpr int kExplosions = 3;
constexpr int kFurtherSearches = 4;
constexpr int kKeystrokePage = 100;
constexpr int kTypings = 6;

struct Kind {
  const char* row;
  bool regex;
  const char16_t* text;
};
constexpr Kind kKinds[] = {{"find-literal", false, kWord}, {"find-regex", true, kPattern}};

void setField(const std::u16string& text) {
  platform::setFindFieldText(text);
  handleMessages();
}

double searchOurs(const std::string& path, const Kind& kind) {
  closeAllDocuments();
  openAndPaint(path);
  chooseFindMode(kind.regex);
  setField(kind.text);
  const double time = timed(FindInDocument);
  handleMessages();
  return time;
}

double searchTheirs(const std::string& path) {
  PlainView view;
  openPlain(view, path);
  return timed([&] { searchPlain(view.document.get(), kWord); });
}

void compareSearches(const std::string& path) {
  for (const Kind& kind : kKinds) {
    for (int i = 0; i < kSearches; ++i) {
      const bool oursFirst = i % 2 == 0;
      double theirTime = oursFirst ? 0 : searchTheirs(path);
      const double ourTime = searchOurs(path, kind);
      if (oursFirst) theirTime = searchTheirs(path);
      reportPair(kind.row, documentName(path), ourTime, theirTime);
    }
  }
}

// Must run before any other search.
void measureMemory(const std::string& path) {
  setField(kWord);
  FindInDocument();
  const Memory first = memory();
  for (int i = 0; i < kFurtherSearches; ++i) FindInDocument();
  reportPair("find-memory", documentName(path), memory().workingSet, first.workingSet);
}

// Types the word letter by letter; each letter starts a search on the shown page.
void compareKeystrokes(const std::string& path) {
  chooseFindMode(false);
  goToPage(0, kKeystrokePage, false);
  PlainView plain;
  openPlain(plain, path);
  loadPlainPage(plain, session.panes[0].currentPage, false);
  const std::u16string word = kWord;
  for (int typing = 0; typing < kTypings; ++typing) {
    setField(u"");
    for (std::size_t length = 1; length <= word.size(); ++length) {
      const double ours = timed(
          [&] { SendMessageW(platform::windowHandles.findField, WM_CHAR, word[length - 1], 1); });
      const double theirs =
          timed([&] { searchPlainPage(plain.page.get(), word.substr(0, length)); });
      const double search = timed(FindInVisiblePages);
      handleMessages();
      reportPair("find-keystroke", documentName(path), ours, theirs);
      reportPair("find-page", documentName(path), search, theirs);
    }
  }
}

bool measureReader(const std::string& path) {
  if (!openAndPaint(path)) return false;
  OpenFindBar();
  handleMessages();
  measureMemory(path);
  compareSearches(path);
  compareKeystrokes(path);
  return true;
}

// True when the search ended as it should.
bool timeExplosion(const std::string& document) {
  FindClear();
  setField(kExplodingPattern);
  const double time = timed([] {
    stepFromFindBar(1);
    handleMessages();
  });
  reportValue("find-bad-pattern", document, time);
  return findStatus() == u"Bad pattern";
}

bool measureExplosion(const std::string& path) {
  if (!openAndPaint(path)) return false;
  OpenFindBar();
  chooseFindMode(true);
  for (int i = 0; i < kExplosions; ++i) {
    if (!timeExplosion(documentName(path))) return false;
  }
  return true;
}

int measurePlain(const std::string& path) {
  startPdfium();
  PlainView view;
  if (!openPlain(view, path)) return 1;
  searchPlain(view.document.get(), kWord);
  const Memory first = memory();
  for (int i = 0; i < kFurtherSearches; ++i) searchPlain(view.document.get(), kWord);
  reportPair("plain-find-memory", documentName(path), memory().workingSet, first.workingSet);
  return 0;
}

}  // namespace
}  // namespace quillmere::bench

int main(int argc, char** argv) {
  using namespace quillmere::bench;
  if (argc == 3 && std::strcmp(argv[1], "--plain") == 0) return measurePlain(argv[2]);
  if (argc == 3 && std::strcmp(argv[1], "--bad-pattern") == 0) {
    return runInReader([&] { return measureExplosion(argv[2]); });
  }
  return argc == 2 ? runInReader([&] { return measureReader(argv[1]); }) : 2;
}
