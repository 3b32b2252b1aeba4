#include "support/session_invariants.h"

#include <fpdf_doc.h>

#include <cmath>

#include "session/session.h"

namespace quillmere::test {
namespace {

bool inTwoDocuments() {
  return session.viewMode == ViewMode::TwoDocuments;
}

bool shown(int pane) {
  return pane == 0 || session.viewMode != ViewMode::SinglePage;
}

std::string brokenOwnership() {
  if (inTwoDocuments()) {
    if (session.active.document) return "a shared document in TwoDocuments";
    if (session.active.pageCount != 0) return "a shared page count in TwoDocuments";
    if (session.active.dirty) return "a shared dirty flag in TwoDocuments";
    return {};
  }
  for (const PaneSlot& slot : session.panes) {
    if (slot.document) return "a pane owns a document beside the shared one";
    if (slot.dirty) return "a pane is dirty beside the shared document";
  }
  return {};
}

std::string brokenDocument(int pane) {
  const FPDF_DOCUMENT document = documentOf(pane);
  if (document == nullptr) {
    if (pageCountOf(pane) != 0) return "pages without a document";
    if (shown(pane) && session.panes[pane].page) return "an open page without a document";
    return {};
  }
  if (pageCountOf(pane) != FPDF_GetPageCount(document)) return "a page count that is not PDFium's";
  const std::int32_t page = session.panes[pane].currentPage;
  const bool numbered = shown(pane) && pageCountOf(pane) > 0;  // without a page there is no number
  if (numbered && (page < 0 || page >= pageCountOf(pane))) {
    return "a page number outside the document";
  }
  return {};
}

std::string brokenPane(int pane) {
  const PaneSlot& slot = session.panes[pane];
  if (slot.textPage && !slot.page) return "a text page without its page";
  if (slot.pageBitmap && !slot.page) return "a picture of no page";
  const bool hasSize = slot.pageBitmapWidth > 0 && slot.pageBitmapHeight > 0;
  if ((slot.pageBitmap != nullptr) != hasSize) return "a picture whose size is not known";
  if (slot.zoomMode < kFitPage || slot.zoomMode > kCustomFit) return "an unknown zoom mode";
  if (!(slot.zoom >= 0.2f && slot.zoom <= 5.0f)) return "a zoom outside its limits";
  if (!std::isfinite(slot.panX) || !std::isfinite(slot.panY)) return "a pan that is no number";
  return {};
}

std::string brokenBook() {
  if (session.viewMode != ViewMode::Book || !session.active.document) return {};
  const PaneSlot& left = session.panes[0];
  const PaneSlot& right = session.panes[1];
  if (left.currentPage + 1 < session.active.pageCount) {
    return right.currentPage == left.currentPage + 1 ? "" : "a book whose pages do not follow";
  }
  return right.page || right.pageBitmap ? "a book with a page behind its last" : "";
}

// The record of what is selected and the marks on the placements themselves tell the same.
std::string brokenPlacementSelection() {
  int selected = 0;
  for (const auto& [page, list] : session.placements) {
    for (std::size_t index = 0; index < list.size(); ++index) {
      if (!list[index].selected) continue;
      ++selected;
      if (page != session.selectedPlacementPage ||
          static_cast<std::int32_t>(index) != session.selectedPlacementIndex) {
        return "a placement is marked as selected that is not";
      }
    }
  }
  if (session.selectedPlacementPage < 0) return {};
  if (selected == 0) return "a selected placement without its mark";
  return session.viewMode == ViewMode::SinglePage ? "" : "a selected placement between two panes";
}

std::string brokenPlacements() {
  const FPDF_DOCUMENT owner = session.placementDocument;
  if (owner == nullptr && !session.placements.empty()) return "placements of no document";
  if (owner != nullptr && owner != documentOf(0) && owner != documentOf(1)) {
    return "placements of a closed document";
  }
  const bool half = owner != nullptr && owner == session.waitingPlacements;
  if (!session.placementPagesRead.empty() && !half) return "pages read of no document that waits";
  if (session.gesture.kind == Gesture::Placement && session.selectedPlacementPage < 0) {
    return "a drag of no placement";
  }
  return brokenPlacementSelection();
}

std::string brokenShelf() {
  for (const FPDF_DOCUMENT document : session.editsGivenUp) {
    if (document == nullptr || (document != documentOf(0) && document != documentOf(1))) {
      return "edits given up of a closed document";
    }
  }
  return session.givenUpPaths.empty() ? "" : "edits given up that are still on the shelf";
}

std::string brokenBookmarks() {
  const FPDF_DOCUMENT document = documentOf(session.activePane);
  if (document == nullptr) return session.bookmarks.empty() ? "" : "bookmarks of no document";
  const FPDF_BOOKMARK first = FPDFBookmark_GetFirstChild(document, nullptr);
  if (first == nullptr || session.bookmarks.empty()) {
    return (first == nullptr) == session.bookmarks.empty() ? "" : "bookmarks of another document";
  }
  std::u16string title(FPDFBookmark_GetTitle(first, nullptr, 0) / sizeof(char16_t), u'\0');
  FPDFBookmark_GetTitle(first, title.data(), title.size() * sizeof(char16_t));
  title.resize(std::min(title.find(u'\0'), title.size()));
  const std::u16string& shown = session.bookmarks.front().title;
  return title.empty() || shown == title ? "" : "bookmarks of another document";
}

std::string brokenSelection() {
  const TextSelection& selection = session.selection;
  if (!selection.active) return {};
  if (selection.pane != 0 && selection.pane != 1) return "a selection in no pane";
  const FPDF_TEXTPAGE text = session.panes[selection.pane].textPage.get();
  if (text == nullptr) return "a selection on no page";
  const int count = FPDFText_CountChars(text);
  return selection.anchorChar < count && selection.endChar < count ? "" : "a selection beyond text";
}

}  // namespace

std::string brokenInvariant() {
  if (session.activePane != 0 && session.activePane != 1) return "no active pane";
  if (session.viewMode == ViewMode::SinglePage && session.activePane != 0) {
    return "a hidden pane is active";
  }
  if (std::string broken = brokenOwnership(); !broken.empty()) return broken;
  for (int pane = 0; pane < 2; ++pane) {
    if (std::string broken = brokenDocument(pane); !broken.empty()) return broken;
    if (std::string broken = brokenPane(pane); !broken.empty()) return broken;
  }
  if (std::string broken = brokenBook(); !broken.empty()) return broken;
  if (std::string broken = brokenPlacements(); !broken.empty()) return broken;
  if (std::string broken = brokenShelf(); !broken.empty()) return broken;
  if (std::string broken = brokenBookmarks(); !broken.empty()) return broken;
  if (std::string broken = brokenSelection(); !broken.empty()) return broken;
  if (documentOf(session.activePane) == nullptr && hasUnsavedChanges()) {
    return "unsaved changes of no document";
  }
  return {};
}

}  // namespace quillmere::test
