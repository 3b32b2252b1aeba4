#include "support/session_actions.h"

#include <array>
#include <iterator>
#include <utility>

#include "app/commands.h"
#include "app/keys.h"
#include "app/mouse.h"
#include "base/limits.h"
#include "dialogs/dialog_script.h"
#include "documents/close.h"
#include "documents/modes.h"
#include "documents/open_requests.h"
#include "platform/files.h"
#include "platform/stand_in.h"
#include "session/density.h"
#include "session/document_slots.h"
#include "session/session.h"
#include "store/working_documents.h"
#include "support/pdf_builder.h"
#include "support/session_invariants.h"
#include "view/geometry.h"
#include "view/panes.h"

namespace quillmere::test {
namespace {

using platform::BoxAnswer;
using platform::BoxButtons;
using platform::standIn;

constexpr const char16_t* kFiles[] = {
    u"C:\\one.pdf",  u"C:\\two.pdf", u"C:\\seven.pdf",  u"C:\\turned.pdf", u"C:\\linked.pdf",
    u"C:\\none.pdf", u"C:\\bad.pdf", u"C:\\secret.pdf", u"C:\\SEVEN.pdf",  u"C:\\gone.pdf",
};

constexpr std::uint32_t kCommands[] = {
    101, 103, 104, 105, 106, 110, 201, 202, 203, 204, 205, 206, 207, 208, 209, 210, 211,
    212, 213, 214, 301, 302, 303, 304, 501, 502, 503, 504, 505, 601, 602, 604, 605, 606,
    701, 702, 703, 704, 705, 706, 707, 708, 709, 710, 719, 725, 726, 727, 728, 731, 732,
};

// Reads bytes one after the other, then zeros once they are used up.
class Reader {
 public:
  Reader(const std::uint8_t* bytes, std::size_t size) : bytes_(bytes), size_(size) {}
  bool atEnd() const { return at_ >= size_; }
  std::uint8_t next() { return atEnd() ? 0 : bytes_[at_++]; }
  int pane() { return next() & 1; }
  int within(int limit) { return next() * limit / 256; }
  template <typename Item, std::size_t count>
  const Item& oneOf(const Item (&items)[count]) {
    return items[next() % count];
  }

 private:
  const std::uint8_t* bytes_;
  std::size_t size_;
  std::size_t at_ = 0;
};

void makeFiles() {
  platform::putFile(kFiles[0], simplePdf(1));
  platform::putFile(kFiles[1], simplePdf(2, 300, 200));
  platform::putFile(kFiles[2], simplePdf(7, 200, 300));
  std::vector<PdfPage> turned(4);
  for (std::size_t i = 0; i < turned.size(); ++i) {
    turned[i].rotate = static_cast<int>(i) * 90;
    turned[i].width = 100 + 50.0 * static_cast<double>(i);
    turned[i].content = textContent("Turned", 10, 10);
  }
  platform::putFile(kFiles[3], buildPdf(turned));
  PdfOptions options;
  options.outline = {{u"Second", pageDestination(2), {{u"First", pageDestination(1, 50), {}}}}};
  PdfPage linked;
  linked.annotations = {linkAnnotation(0, 0, 600, 400, pageDestination(3)),
                        linkAnnotation(0, 400, 600, 790, webAction("https://example.invalid/"))};
  platform::putFile(kFiles[4], buildPdf({linked, linked, linked}, options));
  platform::putFile(kFiles[5], zeroPagePdf());
  platform::putFile(kFiles[6], garbageFile());
  platform::putFile(kFiles[7], passwordProtectedPdf());
}

BoxAnswer answerFor(const platform::ShownBox& box, std::uint8_t choice) {
  constexpr std::array three = {BoxAnswer::Yes, BoxAnswer::No, BoxAnswer::Cancel};
  if (box.buttons == BoxButtons::Ok) return BoxAnswer::Ok;
  if (box.buttons == BoxButtons::YesNo) return three[choice % 2];
  return three[choice % 3];
}

void resize(Reader& reader) {
  standIn().window.client = {reader.next() * 3, reader.next() * 3};
  refitPanes();
}

void drag(Reader& reader) {
  const int width = standIn().window.client.width;
  const int height = standIn().window.client.height;
  standIn().shiftDown = (reader.next() & 1) != 0;
  const bool middle = (reader.next() & 1) != 0;
  const int x = reader.within(width);
  const int y = reader.within(height);
  middle ? pressMiddle(x, y) : pressLeft(x, y);
  cursorAt(x, y);
  for (int moves = reader.next() % 4; moves > 0; --moves) {
    movePointer(reader.within(width), reader.within(height));
  }
  const std::uint8_t end = reader.next() % 8;
  if (end == 0) return;  // the button stays down for the next actions
  const int endX = reader.within(width);
  end == 1 ? loseCapture() : middle ? releaseMiddle(endX, y) : releaseLeft(endX, y);
  standIn().shiftDown = false;
}

void click(Reader& reader) {
  const int x = reader.within(standIn().window.client.width);
  const int y = reader.within(standIn().window.client.height);
  hoverPointer(x, y);
  if ((reader.next() & 1) != 0) return doubleClickLeft(x, y);
  releaseRight(x, y);
  if (x % 3 > 0) runCommand(x % 3 == 1 ? kCmdNote : kCmdRemoveMarkup);
}

void wheel(Reader& reader) {
  const int x = reader.within(standIn().window.client.width);
  const int y = reader.within(standIn().window.client.height);
  const std::uint8_t modifiers = reader.next();
  turnWheel(x, y, (reader.next() - 128) * 4, (modifiers & 1) != 0, (modifiers & 2) != 0);
}

// Leaves the same state as a real edit.
void edit(Reader& reader) {
  const int pane = session.activePane;
  if (documentOf(pane) == nullptr || pageCountOf(pane) == 0) return;
  if ((reader.next() & 1) != 0) {
    markEdited(documentSlotOf(pane));
  } else if (session.placementDocument == documentOf(pane)) {
    session.placements[session.panes[pane].currentPage].push_back(Placement{});
  }
}

void openFile(Reader& reader) {
  const int pane = reader.pane();
  const std::u16string path = reader.oneOf(kFiles);
  const bool ask = (reader.next() & 1) != 0;
  openRequested(path, session.viewMode == ViewMode::SinglePage ? 0 : pane, kWorkingDocsToHead, ask);
}

void pressKey(Reader& reader) {
  standIn().controlDown = (reader.next() & 1) != 0;
  handleKey(reader.next());
}

void dropFiles(Reader& reader) {
  openDropped({reader.oneOf(kFiles), reader.oneOf(kFiles)},
              reader.within(standIn().window.client.width));
}

// Another program renames the shown document's folder or deletes its file.
void vanish(Reader& reader) {
  const bool two = session.viewMode == ViewMode::TwoDocuments;
  std::u16string& path = two ? session.panes[session.activePane].path : session.active.path;
  if (path.empty()) return;
  if ((reader.next() & 1) != 0) {
    path = u"C:\\gone\\" + fileNameOf(path);
  } else {
    platform::deleteFile(path);
  }
}

struct Action {
  const char* name;
  void (*play)(Reader& reader);
};

constexpr Action kActions[] = {
    {"open", openFile},
    {"drop", dropFiles},
    {"command", [](Reader& reader) { runCommand(reader.oneOf(kCommands)); }},
    {"key", pressKey},
    {"drag", drag},
    {"click", click},
    {"wheel", wheel},
    {"mode", [](Reader& reader) { setViewMode(static_cast<ViewMode>(reader.next() & 3)); }},
    {"edit", edit},
    {"resize", resize},
    {"density", [](Reader& reader) { changeDensity((reader.next() & 1) != 0 ? 144 : 96); }},
    {"close", [](Reader&) { closeCommand(session.activePane); }},
    {"close by path", [](Reader& reader) { closeDocumentByPath(reader.oneOf(kFiles)); }},
    {"vanish", vanish},
};

}  // namespace

std::string playSessionActions(const std::uint8_t* bytes, std::size_t size) {
  makeFiles();
  Reader reader(bytes, size);
  std::uint8_t answer = reader.next();
  session.viewerRole = (answer & 0x80) != 0;
  standIn().chooseAnswer = [&answer](const platform::ShownBox& box) {
    return answerFor(box, answer++);
  };
  dialogScript().answerNote = [&answer](const NoteQuestion& question) {
    return answer++ % 3 == 0 ? std::nullopt : std::optional(question.text + u"\r\nmore");
  };
  while (!reader.atEnd()) {
    const Action& action = reader.oneOf(kActions);
    const std::u16string file = reader.oneOf(kFiles);
    standIn().openDialogAnswers = {{file}};
    standIn().saveDialogAnswers = {file};
    action.play(reader);
    while (std::exchange(standIn().window.waitingWorkPosted, 0) > 0) openWaiting();
    const std::string broken = brokenInvariant();
    if (!broken.empty()) return std::string(action.name) + " leaves " + broken;
  }
  return {};
}

}  // namespace quillmere::test
