#include "nav/idle_reading.h"

#include <fpdfview.h>

#include "annot/annotations.h"
#include "annot/markup_list.h"
#include "annot/placements.h"
#include "nav/markup_tree.h"
#include "platform/main_window.h"
#include "session/session.h"

namespace quillmere {

namespace {

// The document that something is missing of; null when nothing is.
FPDF_DOCUMENT unreadDocument() {
  if (session.waitingPlacements != nullptr) return session.waitingPlacements;
  return markupRowsWait() ? documentOf(session.activePane) : nullptr;
}

bool searchNeeded(FPDF_DOCUMENT document) {
  return document == session.waitingPlacements || !markupsCollected(document);
}

// False when all of the document's pages are read. Stamps on those found so far can be edited
// before the search has come to its end.
bool readPart(FPDF_DOCUMENT document) {
  if (readFoundPlacements()) return true;
  if (searchNeeded(document) && continueAnnotationSearch(document)) return true;
  if (document == session.waitingPlacements) return readFoundPlacements();
  return collectSomeMarkups(document);
}

// True when there is more to do.
bool readSlice() {
  const FPDF_DOCUMENT document = unreadDocument();
  if (document == nullptr) {
    forgetAnnotationSearch();
    return false;
  }
  if (readPart(document)) return true;
  if (document == session.waitingPlacements) {
    readWaitingPlacements();
  } else {
    showMarkupsUnderBookmarks();
  }
  return true;
}

}  // namespace

void readAnnotationsWhenIdle() {
  if (unreadDocument() != nullptr) platform::doWhenIdle(readSlice);
}

}  // namespace quillmere
