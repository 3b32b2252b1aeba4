#include "nav/find.h"

#include <algorithm>
#include <memory>
#include <type_traits>
#include <utility>

#include "base/text_format.h"
#include "nav/find_view.h"
#include "nav/jump_history.h"
#include "platform/find_bar.h"
#include "session/changes.h"
#include "session/page_memory.h"
#include "session/session.h"
#include "ui/boxes.h"
#include "view/navigation.h"

namespace quillmere {

namespace {

// A search of the whole document stops at this many hits.
constexpr std::size_t kHitCap = 1000;
constexpr std::size_t kNoLimit = 0;
// Releasing memory takes time, so it is not worth doing for fewer pages.
constexpr int kSearchedPagesBetweenReleases = 400;

struct SearchCloser {
  void operator()(FPDF_SCHHANDLE search) const { FPDFText_FindClose(search); }
};
using SearchHandle = std::unique_ptr<std::remove_pointer_t<FPDF_SCHHANDLE>, SearchCloser>;

// What one search looks for.
struct SearchJob {
  std::u16string text;
  FindPattern pattern;  // in RegEx mode
};

unsigned long literalFlags() {
  unsigned long flags = 0;
  if (session.find.matchCase) flags |= FPDF_MATCHCASE;
  if (session.find.wholeWord) flags |= FPDF_MATCHWHOLEWORD;
  return flags;
}

// A whole-word search with a leading blank makes PDFium loop, so strip it.
std::u16string literalText(const std::u16string& text) {
  const std::size_t first = text.find_first_not_of(u' ');
  const bool blanksInFront = first != 0 && first != std::u16string::npos;
  return session.find.wholeWord && blanksInFront ? text.substr(first) : text;
}

// Appends the page's hits. True when the list then holds `limit` hits or more.
bool findLiteral(FPDF_TEXTPAGE textPage, int pageIndex, const std::u16string& text,
                 std::size_t limit, std::vector<FindResult>& results) {
  if (textPage == nullptr) return false;
  const std::u16string wanted = literalText(text);
  const SearchHandle search(FPDFText_FindStart(
      textPage, reinterpret_cast<FPDF_WIDESTRING>(wanted.c_str()), literalFlags(), 0));
  while (FPDFText_FindNext(search.get())) {
    const int start = FPDFText_GetSchResultIndex(search.get());
    const int count = FPDFText_GetSchCount(search.get());
    if (start < 0 || count <= 0) continue;
    results.push_back({pageIndex, start, count});
    if (limit != kNoLimit && results.size() >= limit) return true;
  }
  return false;
}

bool findOnPage(FPDF_PAGE page, int pageIndex, SearchJob& job, std::size_t limit,
                std::vector<FindResult>& results) {
  if (session.find.regexMode) return FindRegexPage(page, pageIndex, job.pattern, limit, results);
  const TextPageHandle textPage(FPDFText_LoadPage(page));
  return findLiteral(textPage.get(), pageIndex, job.text, limit, results);
}

// The text of a shown page is loaded already, which saves most of the work of a keystroke.
void findOnShownPage(const PaneSlot& slot, SearchJob& job, std::vector<FindResult>& results) {
  if (session.find.regexMode) {
    FindRegexPage(slot.page.get(), slot.openPage, job.pattern, kNoLimit, results);
  } else {
    findLiteral(slot.textPage.get(), slot.openPage, job.text, kNoLimit, results);
  }
}

// False when there is nothing to search for or nothing to search in; the search is then cleared.
bool startSearch(SearchJob& job) {
  job.text = platform::findFieldText();
  if (job.text.empty() || documentOf(session.activePane) == nullptr) {
    forgetSearch();
    return false;
  }
  session.find.badPattern = false;
  return true;
}

bool patternUsable(SearchJob& job) {
  return !session.find.regexMode || FindCompilePattern(job.text, job.pattern);
}

void keepResults(SearchJob& job, std::vector<FindResult> results, bool wholeDocument, bool capped) {
  FindState& find = session.find;
  find.results = std::move(results);
  find.query = std::move(job.text);
  find.wholeDocument = wholeDocument;
  find.capped = capped;
  find.currentIndex = find.results.empty() ? -1 : 0;
}

bool paneSearched(int pane) {
  if (!session.panes[pane].page) return false;
  if (session.viewMode == ViewMode::SinglePage) return pane == 0;
  return session.viewMode != ViewMode::TwoDocuments || pane == session.activePane;
}

void searchShownPages(SearchJob& job, std::vector<FindResult>& results) {
  std::vector<std::int32_t> searched;
  for (int pane = 0; pane < 2; ++pane) {
    const PaneSlot& slot = session.panes[pane];
    if (!paneSearched(pane) || std::count(searched.begin(), searched.end(), slot.openPage) > 0) {
      continue;
    }
    searched.push_back(slot.openPage);
    findOnShownPage(slot, job, results);
    if (session.find.badPattern) return;
  }
}

// True when the cap was reached.
bool searchAllPages(SearchJob& job, std::vector<FindResult>& results) {
  const PaneSlot& shown = session.panes[session.activePane];
  const FPDF_DOCUMENT document = documentOf(session.activePane);
  const std::int32_t pageCount = pageCountOf(session.activePane);
  for (std::int32_t index = 0; index < pageCount && !session.find.badPattern; ++index) {
    const bool open = shown.page && index == shown.openPage;
    const PageHandle loaded(open ? nullptr : FPDF_LoadPage(document, index));
    const FPDF_PAGE page = open ? shown.page.get() : loaded.get();
    if (page != nullptr && findOnPage(page, index, job, kHitCap, results)) return true;
    if ((index + 1) % kSearchedPagesBetweenReleases == 0) noteDocumentRead(session.activePane);
  }
  return false;
}

void reportCap() {
  const std::u16string cap = decimal(static_cast<std::int64_t>(kHitCap));
  showNotice(
      formatText(u"Search found more than %d results.\nOnly the first %d are shown. Try a more "
                 u"specific query.",
                 {cap, cap}),
      BoxIcon::Information);
}

bool comesBefore(const FindResult& left, const FindResult& right) {
  return std::pair(left.page, left.start) < std::pair(right.page, right.start);
}

void searchVisiblePages() {
  SearchJob job;
  if (!startSearch(job)) return;
  std::vector<FindResult> results;
  if (patternUsable(job)) searchShownPages(job, results);
  std::sort(results.begin(), results.end(), comesBefore);
  keepResults(job, std::move(results), false, false);
}

// The first hit on a page becomes the current one; on a page without any it stays.
void moveCurrentHitTo(std::int32_t page) {
  FindState& find = session.find;
  if (find.currentIndex >= 0 &&
      find.results[static_cast<std::size_t>(find.currentIndex)].page == page) {
    return;
  }
  const auto first = std::find_if(find.results.begin(), find.results.end(),
                                  [&](const FindResult& hit) { return hit.page == page; });
  if (first == find.results.end()) return;
  find.currentIndex = static_cast<std::int32_t>(first - find.results.begin());
}

// Scrolls the pane that shows the hit's page; in Book that is not always the pane that was turned.
void scrollToCurrentHit(int pane) {
  const FindState& find = session.find;
  const int shown =
      paneShowing(pane, find.results[static_cast<std::size_t>(find.currentIndex)].page);
  if (shown >= 0) FindScrollToCurrent(shown);
}

}  // namespace

void FindInVisiblePages() {
  searchVisiblePages();
  hitsChanged();
}

void FindInDocument() {
  SearchJob job;
  if (!startSearch(job)) return hitsChanged();
  std::vector<FindResult> results;
  const bool capped = patternUsable(job) && searchAllPages(job, results);
  keepResults(job, std::move(results), true, capped);
  noteDocumentRead(session.activePane);

  const FindState& find = session.find;
  const int pane = session.activePane;
  if (!find.results.empty() && paneShowing(pane, find.results.front().page) < 0) {
    goToPage(pane, find.results.front().page, false);
  }
  if (find.capped && !find.badPattern) reportCap();
  hitsChanged();
}

void FindClear() {
  if (forgetSearch()) hitsChanged();
}

bool forgetSearch() {
  FindState& find = session.find;
  if (find.query.empty() && find.results.empty() && !find.badPattern) return false;
  find.results.clear();
  find.currentIndex = -1;
  find.capped = false;
  find.wholeDocument = false;
  find.badPattern = false;
  find.query.clear();
  FindStatusText();
  return true;
}

void FindStep(int direction) {
  FindState& find = session.find;
  const int pane = session.activePane;
  if (!find.wholeDocument) {
    FindInDocument();
    if (!find.results.empty()) {
      scrollToCurrentHit(pane);
      pictureChanged();
      return;
    }
  }
  if (find.results.empty()) return;
  const std::int32_t wanted = find.currentIndex + direction;
  if (wanted >= 0 && static_cast<std::size_t>(wanted) < find.results.size()) {
    find.currentIndex = wanted;
  }
  // Turning the page syncs the hits to it, which must not move the current one.
  const std::int32_t chosen = find.currentIndex;
  const std::int32_t page = find.results[static_cast<std::size_t>(chosen)].page;
  if (paneShowing(pane, page) < 0) {
    PushJump(pane);
    goToPage(pane, page, false);
    find.currentIndex = chosen;
  }
  scrollToCurrentHit(pane);
  hitsChanged();
}

void FindSyncToPage(int pane) {
  FindState& find = session.find;
  if (find.query.empty() || (inTwoDocuments() && pane != session.activePane)) return;
  if (!find.wholeDocument) {
    searchVisiblePages();
  } else if (!find.results.empty()) {
    moveCurrentHitTo(session.panes[pane].openPage);
  }
  FindStatusText();
}

void FindStatusText() {
  platform::setFindStatus(findStatus());
}

std::u16string findStatus() {
  const FindState& find = session.find;
  const std::u16string count = decimal(static_cast<std::int64_t>(find.results.size()));
  if (find.badPattern) return u"Bad pattern";
  if (!find.results.empty() && find.wholeDocument) {
    return formatText(u"%d of %d%s",
                      {decimal(find.currentIndex + 1), count, find.capped ? u"+" : u""});
  }
  if (!find.results.empty()) return formatText(u"%d on page", {count});
  if (find.query.empty()) return {};
  return find.wholeDocument ? u"No results" : u"0 on page";
}

bool FindCompilePattern(const std::u16string& text, FindPattern& regex) {
  if (compilePattern(text, regex)) return true;
  session.find.badPattern = true;
  return false;
}

bool FindRegexPage(FPDF_PAGE page, int pageIndex, FindPattern& regex, std::size_t limit,
                   std::vector<FindResult>& results) {
  const TextPageHandle textPage(FPDFText_LoadPage(page));
  if (!textPage) return false;
  const int count = FPDFText_CountChars(textPage.get());
  if (count <= 0) return false;
  std::u16string subject(static_cast<std::size_t>(count) + 1, u'\0');
  FPDFText_GetText(textPage.get(), 0, count, reinterpret_cast<unsigned short*>(subject.data()));
  subject.pop_back();

  const std::size_t wanted = limit == kNoLimit ? kNoLimit : limit - results.size();
  std::vector<PatternMatch> matches;
  const PatternOutcome outcome = findMatches(regex, subject, wanted, matches);
  for (const PatternMatch& match : matches) {
    results.push_back({pageIndex, static_cast<std::int32_t>(match.start),
                       static_cast<std::int32_t>(match.length)});
  }
  if (outcome == PatternOutcome::TooComplex) session.find.badPattern = true;
  return outcome == PatternOutcome::Stopped;
}

}  // namespace quillmere
