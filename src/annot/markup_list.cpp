#include "annot/markup_list.h"

#include <fpdf_annot.h>

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

#include "annot/annotations.h"
#include "annot/idle_slice.h"
#include "annot/read_markups.h"
#include "base/text_format.h"
#include "session/session.h"

namespace quillmere {

namespace {

constexpr int kPagesWhileIdle = 8;  // of about a millisecond each
constexpr int kWordsOfText = 5;
constexpr int kWordsOfNote = 6;
// No tree shows more of a row, and in scripts without blanks a word can have any length.
constexpr std::size_t kLongestShortText = 250;  // units
constexpr std::u16string_view kWordEnds = u" \t\r\n";
constexpr std::u16string_view kMore = u"...";

bool readsBefore(const MarkupEntry& a, const MarkupEntry& b) {
  return a.page != b.page ? a.page < b.page : a.top > b.top;
}

std::vector<MarkupEntry> inReadingOrder(std::vector<FoundMarkup> found) {
  std::vector<MarkupEntry> entries;
  entries.reserve(found.size());
  for (FoundMarkup& markup : found) entries.push_back(std::move(markup.entry));
  std::stable_sort(entries.begin(), entries.end(), readsBefore);
  return entries;
}

void collectPage(FPDF_DOCUMENT document, int page, std::vector<MarkupEntry>& list) {
  std::erase_if(list, [page](const MarkupEntry& entry) { return entry.page == page; });
  std::vector<MarkupEntry> fresh = inReadingOrder(readMarkupsOfPage(document, page));
  const auto place = std::find_if(list.begin(), list.end(),
                                  [page](const MarkupEntry& entry) { return entry.page > page; });
  list.insert(place, std::make_move_iterator(fresh.begin()), std::make_move_iterator(fresh.end()));
}

void collectMissingPages(FPDF_DOCUMENT document, std::vector<MarkupEntry>& list) {
  const auto missing = session.pagesToCollect.extract(document);
  if (!missing) return;
  for (const int page : missing.mapped()) collectPage(document, page, list);
}

// Makes the list of `document` the present one; false for a document whose markups have not been
// collected.
bool takeCollectedList(FPDF_DOCUMENT document) {
  if (session.markupListDocument == document) return true;
  if (session.markupListDocument != nullptr) {
    session.otherMarkupLists[session.markupListDocument] = std::move(session.markupList);
  }
  session.markupListDocument = document;
  auto kept = session.otherMarkupLists.extract(document);
  if (kept) session.markupList = std::move(kept.mapped());
  return static_cast<bool>(kept);
}

bool endsWithinPair(const std::u16string& text) {
  return !text.empty() && text.back() >= 0xD800 && text.back() <= 0xDBFF;
}

std::u16string kindAndPage(const MarkupEntry& entry) {
  const bool highlight = entry.subtype == FPDF_ANNOT_HIGHLIGHT;
  return formatText(highlight ? u"Highlight (p.%d)" : u"Strikeout (p.%d)",
                    {decimal(entry.page + 1)});
}

}  // namespace

void CollectMarkups(FPDF_DOCUMENT document, std::vector<MarkupEntry>& list) {
  list = inReadingOrder(readMarkups(document));
}

void InvalidateMarkupList() {
  session.markupListDocument = nullptr;
  session.markupList.clear();
  session.otherMarkupLists.clear();
  session.pagesToCollect.clear();
}

const std::vector<MarkupEntry>& markupsOf(FPDF_DOCUMENT document) {
  if (takeCollectedList(document)) {
    collectMissingPages(document, session.markupList);
  } else {
    CollectMarkups(document, session.markupList);
  }
  return session.markupList;
}

bool collectSomeMarkups(FPDF_DOCUMENT document) {
  if (!takeCollectedList(document)) {
    session.markupList.clear();
    const std::vector<int> marked = pagesWithMarkups(document);
    session.pagesToCollect[document] = {marked.begin(), marked.end()};
  }
  const auto missing = session.pagesToCollect.find(document);
  if (missing == session.pagesToCollect.end()) return false;
  std::set<int>& pages = missing->second;
  IdleSlice slice(kPagesWhileIdle);
  for (bool last = pages.empty(); !last;) {
    collectPage(document, pages.extract(pages.begin()).value(), session.markupList);
    releasePagesRead(document, pages.size());
    last = slice.endsWithPage() || pages.empty();
  }
  if (pages.empty()) session.pagesToCollect.erase(missing);
  return true;
}

bool markupsCollected(FPDF_DOCUMENT document) {
  return document != nullptr &&
         (session.markupListDocument == document || session.otherMarkupLists.contains(document));
}

void collectPageLater(FPDF_DOCUMENT document, int page) {
  if (markupsCollected(document)) session.pagesToCollect[document].insert(page);
}

std::u16string firstWords(const std::u16string& text, int limit) {
  std::u16string words;
  std::size_t begin = text.find_first_not_of(kWordEnds);
  bool whole = true;
  for (int count = 0; begin != std::u16string::npos; ++count) {
    if (count == limit || words.size() > kLongestShortText) {
      whole = false;
      break;
    }
    const std::size_t end = std::min(text.find_first_of(kWordEnds, begin), text.size());
    if (!words.empty()) words += u' ';
    words += text.substr(begin, std::min(end - begin, kLongestShortText + 1));
    begin = text.find_first_not_of(kWordEnds, end);
  }
  if (words.size() > kLongestShortText) {
    words.resize(kLongestShortText);
    if (endsWithinPair(words)) words.pop_back();
    whole = false;
  }
  return whole ? words : words.append(kMore);
}

std::u16string markupLabel(const MarkupEntry& entry) {
  std::u16string label = firstWords(entry.text, kWordsOfText);
  if (label.empty()) label = kindAndPage(entry);
  const std::u16string note = firstWords(entry.note, kWordsOfNote);
  return note.empty() ? label : label + u" - " + note;
}

}  // namespace quillmere
