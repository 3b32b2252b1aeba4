// Searches a document of any content and moves through it by its outline, its links and the
// histories. The first line is the search: one character whose bits are the options, then the text
// in UTF-8. The document follows.
#include <fpdf_doc.h>
#include <quillmere_engine.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "documents/modes.h"
#include "documents/open.h"
#include "nav/bookmarks.h"
#include "nav/find.h"
#include "nav/find_bar.h"
#include "nav/find_view.h"
#include "nav/jump_history.h"
#include "nav/links.h"
#include "platform/find_bar.h"
#include "platform/text.h"
#include "sound_session.h"
#include "store/working_documents.h"
#include "support/engine.h"
#include "view/geometry.h"
#include "view/navigation.h"
#include "view/render.h"
#include "view/zoom.h"

namespace {

using namespace quillmere;
using fuzz::require;

constexpr int kPages = 4;     // shown at most
constexpr int kJumps = 60;    // followed at most, along the outline and back
constexpr int kGridStep = 6;  // pixels between the places that are tested for a link

enum HowBit : unsigned {
  kRegex = 1,
  kMatchCase = 2,
  kWholeWord = 4,
  kMode = 8
};  // kMode is the lower of two bits

struct Search {
  unsigned how = 0;
  std::u16string text;
};

// Removes the search from the front of the bytes.
Search takeSearch(std::string_view& bytes) {
  const std::string_view line = bytes.substr(0, bytes.find('\n'));
  bytes.remove_prefix(std::min(line.size() + 1, bytes.size()));
  if (line.empty()) return {};
  return {static_cast<unsigned char>(line[0]), platform::fromUtf8(line.substr(1))};
}

void requireSoundHits() {
  const FindState& find = session.find;
  const auto count = static_cast<std::int32_t>(find.results.size());
  require(find.currentIndex >= -1 && find.currentIndex < count, "a current hit that is none");
  require((find.currentIndex == -1) == find.results.empty(), "hits without a current one");
  require(!find.wholeDocument || count <= 1000, "more hits than the cap");
  const FindResult* before = nullptr;
  for (const FindResult& hit : find.results) {
    require(hit.count > 0 && hit.start >= 0, "a hit of nothing");
    require(hit.page >= 0 && hit.page < pageCountOf(session.activePane), "a hit on no page");
    require(before == nullptr || before->page < hit.page ||
                (before->page == hit.page && before->start < hit.start),
            "hits out of order");
    before = &hit;
  }
}

void showHits() {
  requireSoundHits();
  for (int pane = 0; pane < 2; ++pane) findHitQuads(pane);
}

void searchWith(const Search& search, bool regex) {
  chooseFindMode(regex);
  chooseMatchCase((search.how & kMatchCase) != 0);
  chooseWholeWord((search.how & kWholeWord) != 0);
  platform::setFindFieldText(search.text);
  FindInVisiblePages();
  showHits();
  for (const int direction : {1, 1, 1, -1, 1}) {
    FindStep(direction);
    showHits();
  }
  for (int page = 0; page < std::min(pageCountOf(0), kPages); ++page) {
    goToPage(0, page, false);
    showHits();
  }
}

// Scrolls to the current hit at every rotation.
void turnAround() {
  for (std::uint32_t turns = 0; turns < 4; ++turns) {
    session.panes[0].documentRotation = turns;
    layoutAndRender(0);
    setActivePane(0);
    FindScrollToCurrent(0);
    showHits();
    const PanePoint corner = pageToPane(0, 0, 0);
    paneToPage(0, corner.x, corner.y);
  }
  session.panes[0].documentRotation = 0;
}

void followOutline() {
  ResolveBookmarks();
  const auto count = static_cast<std::int32_t>(session.bookmarks.size());
  for (std::int32_t index = 0; index < count; ++index) FillTreeEntry(index);
  for (const BookmarkOrderEntry& entry : session.bookmarkOrder) {
    require(entry.row != platform::kNoTreeRow, "a bookmark without a row");
  }
  for (std::int32_t index = 0; index < std::min(count, kJumps); ++index) JumpToTreeEntry(index);
}

void followLinksOf(int page) {
  goToPage(0, page, false);
  const PixelRect pane = paneRect(0);
  for (int y = pane.top; y < pane.bottom; y += kGridStep) {
    for (int x = pane.left; x < pane.right; x += 3 * kGridStep) {
      if (FollowLink(0, LinkAtPoint(0, x, y))) goToPage(0, page, false);
    }
  }
}

bool separatesArguments(char16_t unit) {
  return unit <= u' ' || unit == u'"' || unit == u'\'' || unit == 0x7F;
}

void followLinks() {
  setZoomMode(0, kFitPage);
  for (int page = 0; page < std::min(pageCountOf(0), kPages); ++page) followLinksOf(page);
  require(platform::standIn().processes.empty(), "a link that started a program");
  for (const std::u16string& address : platform::standIn().openedWithSystem) {
    const std::u16string start = platform::toLower(address.substr(0, 8));
    require(start == u"https://" || start.starts_with(u"http://") || start.starts_with(u"mailto:"),
            "an address of another kind");
    require(address.size() <= 2048, "an address longer than the system takes");
    require(std::none_of(address.begin(), address.end(), separatesArguments),
            "an address that a program can take for several arguments");
  }
}

void goBackAndForth() {
  for (int i = 0; i < kJumps && JumpBack(session.activePane); ++i) fuzz::requireSoundSession();
  for (int i = 0; i < kJumps && JumpForward(session.activePane); ++i) {
    fuzz::requireSoundSession();
  }
}

// Releases parsed objects and checks that the outline reads the same afterwards. Pages are read in
// between, so that other objects reuse the freed memory.
void releaseMemory() {
  FPDF_DOCUMENT document = documentOf(0);
  std::vector<std::u16string> titles;
  for (const BookmarkEntry& entry : session.bookmarks) titles.push_back(entry.title);
  QuillmereEngine_ReleaseParsedObjects(document);
  for (int page = 0; page < std::min(pageCountOf(0), kPages); ++page) goToPage(0, page, false);
  RebuildNavigationTree();
  require(session.bookmarks.size() == titles.size(), "another number of bookmarks");
  for (std::size_t i = 0; i < titles.size(); ++i) {
    require(session.bookmarks[i].title == titles[i], "another object's title");
  }
}

void use(const Search& search) {
  session.findBarVisible = true;
  setViewMode(static_cast<ViewMode>(search.how / kMode % 4));
  const bool regex = (search.how & kRegex) != 0;
  searchWith(search, regex);
  turnAround();
  releaseMemory();
  followOutline();
  followLinks();
  goBackAndForth();
  searchWith(search, !regex);
  fuzz::requireSoundSession();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  test::startEngine();
  platform::resetStandIn();
  std::string_view bytes = fuzz::textOf(data, size);
  const Search search = takeSearch(bytes);
  platform::putFile(fuzz::kPath, bytes);
  fuzz::prepareSession(false);
  platform::standIn().findBar.onFieldChanged = findFieldChanged;
  if (openDocument(&fuzz::kPath, 0, kWorkingDocsLeaveAlone, true, nullptr)) use(search);
  resetSession();
  return 0;
}
