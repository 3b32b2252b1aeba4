#include "view/rotation.h"

#include <fpdf_edit.h>

#include <algorithm>
#include <array>
#include <utility>

#include "base/text_format.h"
#include "session/changes.h"
#include "session/document_slots.h"
#include "session/session.h"
#include "view/render.h"

namespace quillmere {

namespace {

// Whether `other` shows the document of `pane`.
bool sameDocument(int pane, int other) {
  return pane == other || !inTwoDocuments();
}

bool canRotate(int pane) {
  return !session.viewerRole && session.panes[pane].page != nullptr;
}

void forgetJumps(int pane) {
  for (int each = 0; each < 2; ++each) {
    if (sameDocument(pane, each)) clearJumpHistories(each);
  }
}

std::uint32_t turnsOf(const PageRotations& rotations, std::int32_t page) {
  const auto entry = rotations.find(page);
  return entry == rotations.end() ? 0 : entry->second & kQuarterTurnBits;
}

void turnPageInDocument(FPDF_DOCUMENT document, int index, std::uint32_t turns) {
  const PageHandle page(FPDF_LoadPage(document, index));
  if (!page) return;
  const int own = FPDFPage_GetRotation(page.get());
  FPDFPage_SetRotation(page.get(), (own + static_cast<int>(turns)) % 4);
}

std::int64_t turnedPages(const PageRotations& rotations) {
  return std::count_if(rotations.begin(), rotations.end(),
                       [](const auto& entry) { return (entry.second & kQuarterTurnBits) != 0; });
}

void refreshPanes(int pane) {
  for (int each = 0; each < 2; ++each) {
    if (sameDocument(pane, each) && session.panes[each].page) refreshPicture(each);
  }
}

// The zero-based pages that panes have open; -1 for none.
using OpenPages = std::array<std::int32_t, 2>;

// The document's pages must not be open while those that share an object become separate.
OpenPages closePages(int pane) {
  OpenPages open = {-1, -1};
  for (const int each : {0, 1}) {
    if (!sameDocument(pane, each)) continue;
    open[static_cast<std::size_t>(each)] = session.panes[each].openPage;
    closePanePage(each);
  }
  return open;
}

void reopenPages(const OpenPages& open) {
  for (const int each : {0, 1}) {
    const std::int32_t page = open[static_cast<std::size_t>(each)];
    if (page >= 0) openUnderItsNumber(each, page);
  }
}

// True when a page had turns to write, whether or not it could be loaded.
bool writeTurns(int pane) {
  const FPDF_DOCUMENT document = documentOf(pane);
  if (document == nullptr) return false;
  separatePages(documentSlotOf(pane));
  bool any = false;
  const std::int32_t pageCount = pageCountOf(pane);
  for (std::int32_t index = 0; index < pageCount; ++index) {
    const std::uint32_t turns =
        (turnsOf(pageRotationsOf(pane), index) + session.panes[pane].documentRotation) &
        kQuarterTurnBits;
    if (turns == 0) continue;
    turnPageInDocument(document, index, turns);
    any = true;
  }
  return any;
}

std::u16string viewRotationName(std::uint32_t turns) {
  switch (turns) {
    case 1:
      return u"90\u00B0 clockwise";
    case 2:
      return u"180\u00B0";
    default:
      return u"270\u00B0 clockwise";
  }
}

}  // namespace

void rotateDocument(int pane) {
  if (!canRotate(pane)) return;
  const std::uint32_t turns = (session.panes[pane].documentRotation + 1) & kQuarterTurnBits;
  for (int each = 0; each < 2; ++each) {
    if (sameDocument(pane, each)) session.panes[each].documentRotation = turns;
  }
  forgetJumps(pane);
  refreshPicture(pane);
  const int other = 1 - pane;
  if (sameDocument(pane, other) && session.panes[other].page) refreshPicture(other);
  turnsChanged(pane);
}

void rotatePage(int pane) {
  if (!canRotate(pane)) return;
  const std::int32_t page = session.panes[pane].openPage;
  std::uint32_t& turns = pageRotationsOf(pane)[page];
  turns = (turns + 1) & kQuarterTurnBits;
  forgetJumps(pane);
  for (int each = 0; each < 2; ++each) {
    if (sameDocument(pane, each) && session.panes[each].openPage == page) refreshPicture(each);
  }
  turnsChanged(pane);
}

PageRotations* waitingTurnsOf(int pane) {
  if (!inTwoDocuments()) return &session.panes[0].pageRotations;
  return pane == 0 ? &session.active.pageRotations : nullptr;
}

bool turnsWait(int pane) {
  const PageRotations* waiting = waitingTurnsOf(pane);
  return documentOf(pane) != nullptr && waiting != nullptr && turnedPages(*waiting) > 0;
}

void gatherTurns(int pane) {
  if (session.viewerRole || !turnsWait(pane)) return;
  PageRotations& turns = pageRotationsOf(pane);
  for (const auto& [page, waiting] : std::exchange(*waitingTurnsOf(pane), {})) {
    if (turnsOf(turns, page) == 0) turns[page] = waiting;
  }
  forgetJumps(pane);
  refreshPanes(pane);
  turnsChanged(pane);
}

void forgetWaitingTurns(int pane) {
  if (PageRotations* waiting = waitingTurnsOf(pane)) waiting->clear();
}

void commitRotations(int pane) {
  const bool documentTurned = documentRotationPending(session.panes[pane]);
  if (session.viewerRole || (!documentTurned && !anyPageRotationPending(pane))) return;
  const OpenPages open = closePages(pane);
  if (writeTurns(pane)) markEdited(documentSlotOf(pane));
  for (int each = 0; each < 2; ++each) {
    if (sameDocument(pane, each)) session.panes[each].documentRotation = 0;
  }
  pageRotationsOf(pane).clear();
  reopenPages(open);
  refreshPanes(pane);
  pictureChanged();
}

std::u16string rotationQuestion(int pane) {
  const std::uint32_t turns = session.panes[pane].documentRotation & kQuarterTurnBits;
  const std::int64_t pages = turnedPages(pageRotationsOf(pane));
  if (turns == 0 && pages == 0) return {};
  std::u16string view;
  if (turns != 0) view = formatText(u"  \u2022 View rotation: %s\n", {viewRotationName(turns)});
  std::u16string single;
  if (pages != 0) {
    single = formatText(u"  \u2022 %d page%s individually rotated\n",
                        {decimal(pages), pages == 1 ? u"" : u"s"});
  }
  return formatText(
      u"This document has rotations that haven't been saved:\n%s%s\n"
      u"Save these rotations to the file?",
      {view, single});
}

BoxAnswer confirmRotationSave(int pane) {
  gatherTurns(pane);
  const std::u16string question = rotationQuestion(pane);
  if (question.empty()) return BoxAnswer::Yes;
  const BoxAnswer answer =
      showBox(question, u"Save Rotation", BoxButtons::YesNoCancel, BoxIcon::Question);
  if (answer == BoxAnswer::Yes) commitRotations(pane);
  return answer;
}

}  // namespace quillmere
