#include "documents/modes.h"

#include <algorithm>

#include "annot/placements.h"
#include "documents/close.h"
#include "documents/open.h"
#include "documents/shelve.h"
#include "platform/main_window.h"
#include "platform/text.h"
#include "session/changes.h"
#include "session/document_slots.h"
#include "store/binder_library.h"
#include "store/binder_views.h"
#include "view/panes.h"
#include "view/render.h"

namespace quillmere {

namespace {

// Pane 0 still needs the binder if it shows the same file.
void forgetBinderOfPaneOne() {
  const PaneSlot& kept = session.panes[0];
  const std::u16string& path = session.panes[1].path;
  if (kept.document && platform::equalIgnoringCase(kept.path, path)) return;
  forgetDocumentBinder(path);
}

void applyMode(ViewMode mode) {
  session.viewMode = mode;
  session.paneDividerPosition = 0;
  session.lastPaneWidth[0] = -1;
  session.lastPaneWidth[1] = -1;
}

void enterTwoDocuments() {
  dropPaneView(0);
  dropPaneView(1);
  if (session.active.document) {
    moveDocument(session.active, session.panes[0]);
  } else {
    clearDocument(session.panes[0]);
  }
  forgetBinderOfPaneOne();
  clearDocument(session.panes[1]);
  session.panes[1].currentPage = 0;
  applyMode(ViewMode::TwoDocuments);
  if (session.panes[0].document) showPane(0);
}

void loadSharedPlacements() {
  if (session.placementDocument == session.active.document.get()) return;
  if (session.active.document) {
    loadPlacementsLater(session.active.document.get());
  } else {
    ClearPlacements();
  }
}

// Changes of pane 1 that cannot be shelved are lost.
void shelveLeavingDocument() {
  if (hasUnsavedChanges(1)) shelveDocument(1);
}

// Page turns stay in the pane; those of the shared document are unchanged.
void leaveTwoDocuments() {
  PaneSlot& kept = session.panes[0];
  PaneSlot& lost = session.panes[1];
  SaveCurrentView(1);
  shelveLeavingDocument();
  dropPaneView(0);
  dropPaneView(1);
  forgetBinderOfPaneOne();
  if (session.placementDocument == lost.document.get()) ClearPlacements();
  clearDocument(lost);
  lost.documentRotation = kept.documentRotation;
  moveDocument(kept, session.active);
  loadSharedPlacements();
}

// Pane 0 keeps its open page even when its page number is lowered; only pane 1's page must match
// its number.
void showBook() {
  if (session.settings.bookRevertToFit) {
    session.panes[0].zoomMode = kFitPage;
    session.panes[1].zoomMode = kFitPage;
  }
  const std::int32_t pageCount = session.active.pageCount;
  const std::int32_t left = std::min(session.panes[0].currentPage, std::max(pageCount - 2, 0));
  const std::int32_t right = std::min(left + 1, pageCount - 1);
  if (session.panes[1].currentPage != right) closePanePage(1);
  session.panes[0].currentPage = left;
  session.panes[1].currentPage = right;
  showPane(0);
  if (pageCount < 2) {
    dropPaneView(1);
  } else {
    showPane(1);
  }
}

void showMode(ViewMode mode) {
  if (mode == ViewMode::SinglePage) session.activePane = 0;
  if (!session.active.document) return;
  switch (mode) {
    case ViewMode::Book:
      showBook();
      break;
    case ViewMode::IndependentPages:
      showPane(0);
      showPane(1);
      break;
    default:
      showPane(0);
      break;
  }
}

// Leaving Book restores the view that the panes had before it.
bool leaveBook() {
  if (session.viewMode != ViewMode::Book || !session.bookOverrideActive) return false;
  restoreBookOverride();
  return true;
}

// If Book will fit the pages to the panes, saves the current view before it changes.
void rememberViewForBook(ViewMode mode) {
  if (mode != ViewMode::Book || !session.settings.bookRevertToFit) return;
  if (documentOf(0) != nullptr && !session.bookOverrideActive) saveBookOverride();
}

// The stamp panel exists only in SinglePage. True when this hid it.
bool hideStampPanelFor(ViewMode mode) {
  if (mode == ViewMode::SinglePage || !session.stampPanelVisible) return false;
  session.stampPanelVisible = false;
  return true;
}

void enterMode(ViewMode mode) {
  if (mode == ViewMode::TwoDocuments) {
    enterTwoDocuments();
    return;
  }
  if (inTwoDocuments()) leaveTwoDocuments();
  applyMode(mode);
  showMode(mode);
}

}  // namespace

void setViewMode(ViewMode mode) {
  if (mode == session.viewMode) return;
  const FPDF_DOCUMENT documentBefore = documentOf(session.activePane);
  const bool viewReturns = leaveBook();
  documentsLeaving();
  clearJumpHistories();
  rememberViewForBook(mode);
  const bool stampsHidden = hideStampPanelFor(mode);
  enterMode(mode);
  if (viewReturns) restoreBookPan();
  if (stampsHidden) platform::layoutMainWindow();
  if (documentOf(session.activePane) != documentBefore) outlineChanged();
  documentsChanged();
}

void refreshFromSource() {
  const int pane = session.activePane;
  const std::u16string path = pathOf(pane);
  if (!session.viewerRole || path.empty()) return;
  const PaneSlot& before = session.panes[pane];
  const std::int32_t currentPage = before.currentPage;
  const JumpRecord view{currentPage, before.panX, before.panY, before.zoom, before.zoomMode};
  const std::uint32_t documentRotation = before.documentRotation;
  if (!openDocument(&path, pane, kWorkingDocsToHead, false, nullptr)) return;

  PaneSlot& slot = session.panes[pane];
  const std::int32_t pageCount = pageCountOf(pane);
  slot.currentPage = pageCount > 0 ? std::min(view.page, pageCount - 1) : view.page;
  slot.zoom = view.zoom;
  slot.panX = view.panX;
  slot.panY = view.panY;
  slot.zoomMode = view.zoomMode;
  slot.documentRotation = documentRotation;
  renderPane(pane);
  documentsChanged();
}

}  // namespace quillmere
