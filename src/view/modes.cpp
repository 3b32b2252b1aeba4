#include "view/modes.h"

#include <algorithm>
#include <utility>

#include "annot/placement_record.h"
#include "core/close.h"
#include "core/commands.h"
#include "core/open.h"
#include "nav/bookmarks.h"
#include "nav/find.h"
#include "platform/main_window.h"
#include "platform/text.h"
#include "store/working_documents.h"
#include "view/geometry.h"
#include "view/navigation.h"
#include "view/render.h"
#include "view/selection.h"
#include "view/status.h"

namespace quillmere {

namespace {

struct PanePair {
  PaneRect rect[2];
};

PanePair presentPanes() {
  return {{paneRect(0), paneRect(1)}};
}

void saveBookOverride(const PanePair& panes) {
  for (int pane = 0; pane < 2; ++pane) {
    const PaneSlot& slot = session.panes[pane];
    session.bookOverrideZoom[pane] = slot.zoom;
    session.bookOverridePanX[pane] = slot.panX;
    session.bookOverridePanY[pane] = slot.panY;
    session.bookOverrideZoomMode[pane] = slot.zoomMode;
    session.bookOverridePane[pane] = panes.rect[pane];
  }
  session.bookOverrideActive = true;
}

void restoreBookOverride() {
  for (int pane = 0; pane < 2; ++pane) {
    PaneSlot& slot = session.panes[pane];
    slot.zoom = session.bookOverrideZoom[pane];
    slot.panX = session.bookOverridePanX[pane];
    slot.panY = session.bookOverridePanY[pane];
    slot.zoomMode = session.bookOverrideZoomMode[pane];
  }
  session.bookOverrideActive = false;
}

// The layout centres pages anew; the pan of before belongs to a pane that has its size of before.
void restoreBookPan(int pane) {
  PaneSlot& slot = session.panes[pane];
  if (!paneShown(pane) || !slot.page) return;
  const PaneRect now = paneRect(pane);
  const PaneRect& before = session.bookOverridePane[pane];
  const bool custom = slot.zoomMode == kCustomFit;
  if (custom || now.width() == before.width()) slot.panX = session.bookOverridePanX[pane];
  if (custom || now.height() == before.height()) slot.panY = session.bookOverridePanY[pane];
  clampPan(pane);
}

void showPane(int pane) {
  PaneSlot& slot = session.panes[pane];
  if (!slot.page) loadPane(pane, slot.currentPage);
  if (slot.page) layoutAndRender(pane);
}

// Its place in a binder stays when the other pane shows the same file.
void forgetBinderOfPaneOne() {
  const PaneSlot& kept = session.panes[0];
  const std::u16string& path = session.panes[1].path;
  if (kept.document && platform::equalIgnoringCase(kept.path, path)) return;
  forgetDocumentBinder(path);
}

void takeMode(ViewMode mode) {
  session.viewMode = mode;
  session.paneDividerPosition = 0;
  session.lastPaneWidth[0] = -1;
  session.lastPaneWidth[1] = -1;
}

void moveActiveToPaneZero() {
  ActiveDocument& active = session.active;
  PaneSlot& slot = session.panes[0];
  const bool open = active.document != nullptr;
  slot.document = std::move(active.document);
  slot.pageCount = open ? active.pageCount : 0;
  slot.path = open ? active.path : std::u16string();
  slot.dirty = open && active.dirty;
  active.pageCount = 0;
  active.dirty = false;
}

void enterTwoDocuments() {
  dropPaneView(0);
  dropPaneView(1);
  moveActiveToPaneZero();
  forgetBinderOfPaneOne();
  PaneSlot& slot = session.panes[1];
  slot.document.reset();
  slot.pageCount = 0;
  slot.currentPage = 0;
  slot.path.clear();
  slot.dirty = false;
  takeMode(ViewMode::TwoDocuments);
  if (session.panes[0].document) showPane(0);
}

void takeOverPlacements() {
  if (session.placementDocument == session.active.document.get()) return;
  if (session.active.document) {
    LoadPlacements(session.active.document.get());
  } else {
    ClearPlacements();
  }
}

void leaveTwoDocuments() {
  PaneSlot& kept = session.panes[0];
  PaneSlot& lost = session.panes[1];
  dropPaneView(0);
  dropPaneView(1);
  forgetBinderOfPaneOne();
  if (session.placementDocument == lost.document.get()) ClearPlacements();
  lost.document.reset();
  lost.pageCount = 0;
  lost.dirty = false;
  lost.documentRotation = kept.documentRotation;
  session.active.document = std::move(kept.document);
  session.active.pageCount = kept.pageCount;
  session.active.path = kept.path;
  session.active.dirty = kept.dirty;
  kept.dirty = false;
  takeOverPlacements();
}

// Pane 0 keeps an open page even where its number is lowered; only pane 1 must show its number.
void showBook(const PanePair& panesBefore) {
  if (session.settings.bookRevertToFit) {
    if (!session.bookOverrideActive) saveBookOverride(panesBefore);
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

void showMode(ViewMode mode, const PanePair& panesBefore) {
  if (mode == ViewMode::SinglePage) session.activePane = 0;
  if (!session.active.document) return;
  switch (mode) {
    case ViewMode::Book:
      showBook(panesBefore);
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

void refitPane(int pane) {
  std::int32_t& lastWidth = session.lastPaneWidth[pane];
  if (!session.panes[pane].page) {
    lastWidth = -1;
    return;
  }
  const int widthDelta = lastWidth < 0 ? 0 : paneRect(pane).width() - lastWidth;
  layoutPane(pane, false, widthDelta);
  renderPane(pane);
}

}  // namespace

void setViewMode(ViewMode mode) {
  if (mode == session.viewMode) return;
  const PanePair panesBefore = presentPanes();
  const FPDF_DOCUMENT documentBefore = documentOf(session.activePane);
  const bool restoreView = session.viewMode == ViewMode::Book && session.bookOverrideActive;
  if (restoreView) restoreBookOverride();
  FindClear();
  clearTextSelection();
  clearJumpHistories();
  const bool hideStamps = mode != ViewMode::SinglePage && session.stampPanelVisible;
  if (hideStamps) session.stampPanelVisible = false;

  if (mode == ViewMode::TwoDocuments) {
    enterTwoDocuments();
  } else {
    if (session.viewMode == ViewMode::TwoDocuments) leaveTwoDocuments();
    takeMode(mode);
    showMode(mode, panesBefore);
  }
  if (restoreView) {
    restoreBookPan(0);
    restoreBookPan(1);
  }

  if (hideStamps) platform::layoutMainWindow();
  platform::invalidateMainWindow(true);
  if (documentOf(session.activePane) != documentBefore) RebuildNavigationTree();
  refreshMenus();
  refreshTitle();
  refreshStatus();
}

void saveBookOverride() {
  saveBookOverride(presentPanes());
}

void applyBookSettings() {
  if (session.viewMode != ViewMode::Book) return;
  if (session.settings.bookEqualizePanes) session.paneDividerPosition = 0;
  if (session.settings.bookRevertToFit) {
    if (!session.bookOverrideActive) saveBookOverride();
    for (int pane = 0; pane < 2; ++pane) {
      if (!session.panes[pane].page) continue;
      session.panes[pane].zoomMode = kFitPage;
      layoutAndRender(pane);
    }
  } else {
    session.bookOverrideActive = false;
  }
  refreshMenus();
  refreshStatus();
  platform::invalidateMainWindow(true);
}

void refitPanes() {
  for (int pane = 0; pane < 2; ++pane) {
    if (paneShown(pane)) refitPane(pane);
  }
  refreshStatus();
  platform::invalidateMainWindow(true);
}

void activatePane(int pane) {
  if (session.activePane == pane) return;
  setActivePane(pane);
  platform::invalidateMainWindow(false);
}

void flipActivePane() {
  if (session.viewMode != ViewMode::SinglePage) activatePane(1 - session.activePane);
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
  refreshMenus();
  refreshTitle();
  refreshStatus();
  platform::invalidateMainWindow(false);
}

}  // namespace quillmere
