#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "annot/placement.h"
#include "core/fnv1a.h"
#include "core/pane_rect.h"
#include "core/pdfium_handles.h"
#include "core/waiting_opens.h"
#include "nav/bookmark_entry.h"
#include "nav/find_state.h"
#include "nav/jump_record.h"
#include "platform/pixels.h"
#include "store/app_settings.h"
#include "store/binder.h"
#include "store/shelf_entry.h"
#include "view/input_state.h"
#include "view/text_selection.h"

namespace quillmere {

enum class ViewMode : std::uint32_t {
  SinglePage = 0,        // one document, pane 0 alone
  Book = 1,              // one document, page n left and n + 1 right, turning together
  IndependentPages = 2,  // one document, each pane on a page of its own
  TwoDocuments = 3,      // each pane owns a document
};

enum ZoomMode : std::int32_t {
  kFitPage = 0,
  kFitWidth = 1,
  kActualSize = 2,
  kCustomFit = 3,
};

// Pending clockwise quarter turns by zero-based page; only the low two bits count.
using PageRotations = std::map<std::int32_t, std::uint32_t>;

// One of the two places where a page is shown. What is said of `document` to `dirty` holds in
// TwoDocuments alone; in the other modes `ActiveDocument` stands for both panes.
struct PaneSlot {
  std::int32_t currentPage = 0;  // zero-based
  float zoom = 1.0f;             // pixels per PDF point
  float panX = 0;                // left edge of the page, in pixels from the pane's left edge
  float panY = 0;                // top edge of the page, in pixels from the pane's top edge
  std::int32_t zoomMode = kFitPage;
  std::uint32_t documentRotation = 0;  // pending quarter turns of the whole document
  PageRotations pageRotations;         // used in TwoDocuments

  bool shiftPan = false;  // a drag pan of this pane is in progress
  std::int32_t shiftPanAnchorX = 0;
  std::int32_t shiftPanAnchorY = 0;
  float shiftPanStartX = 0;
  float shiftPanStartY = 0;

  platform::PixelSurfaceHandle pageBitmap;  // the rendered page; null when there is none
  std::int32_t pageBitmapWidth = 0;
  std::int32_t pageBitmapHeight = 0;

  DocumentHandle document;
  PageHandle page;             // the open page; null when no page is loaded
  TextOfPage textPage;         // null together with `page`, or when loading it failed
  std::int32_t pagesRead = 0;  // since memory was last given back
  std::int32_t pageCount = 0;
  std::u16string path;  // empty means none
  bool dirty = false;   // unsaved edits

  std::vector<JumpRecord> backHistory;     // most recent last
  std::vector<JumpRecord> forwardHistory;  // most recent last
};

// The document of SinglePage, Book and IndependentPages; empty in TwoDocuments.
struct ActiveDocument {
  DocumentHandle document;
  std::int32_t pageCount = 0;
  std::u16string path;
  bool dirty = false;
  PageRotations pageRotations;  // shared by both panes
};

// All that the user-interface thread knows. Nothing else reads it.
struct SessionState {
  bool viewerRole = false;        // set once at start: a read-only process
  bool ownsPrimaryName = true;    // false beside another main window, which owns the shared files
  std::int32_t documentWork = 0;  // questions about documents that are being asked
  std::vector<WaitingOpen> waitingOpens;  // what arrived meanwhile
  ViewMode viewMode = ViewMode::SinglePage;
  std::int32_t activePane = 0;  // the pane that commands act on

  // Files of documents that were read whole, which PDFium reads from as long as they are open.
  std::unordered_map<FPDF_DOCUMENT, std::vector<std::uint8_t>, Fnv1aPointerHash> documentKeptBuffer;
  ActiveDocument active;  // stands before the panes, whose pages must close first
  PaneSlot panes[2];

  bool panScrollEnabled = false;
  std::int32_t paneDividerPosition = 0;  // client x of the divider; 0 means centred
  std::int32_t lastPaneWidth[2] = {-1, -1};

  bool bookOverrideActive = false;  // the view of the panes was saved on entering Book
  float bookOverrideZoom[2] = {1, 1};
  float bookOverridePanX[2] = {0, 0};
  float bookOverridePanY[2] = {0, 0};
  std::int32_t bookOverrideZoomMode[2] = {kFitPage, kFitPage};
  PaneRect bookOverridePane[2];  // where the panes were then; empty for one that was not shown

  bool navigationPanelVisible = false;
  bool binderPanelVisible = false;
  bool stampPanelVisible = false;
  std::int32_t leftPanelWidth = 190;   // pixels at the screen's own density
  std::int32_t stampPanelWidth = 180;  // pixels at the screen's own density
  float leftPanelSplit = 0.5f;         // share of the left panel above its split
  bool findBarVisible = false;
  PaneRect placeholderRect[2];  // where a click opens the file dialog; empty when not shown
  std::int32_t dpi = 96;        // of the window's screen

  std::map<std::int32_t, std::vector<Placement>> placements;  // by zero-based page
  FPDF_DOCUMENT placementDocument = nullptr;                  // where they came from; not owned
  std::int32_t selectedPlacementPage = -1;
  std::int32_t selectedPlacementIndex = -1;

  // Lower-cased document path to the path of the binder that it was opened from.
  std::unordered_map<std::u16string, std::u16string, Fnv1aTextHash> documentBinders;

  // Nodes of the navigation tree by number, and in the tree's order.
  std::vector<BookmarkEntry> bookmarks;
  std::vector<BookmarkOrderEntry> bookmarkOrder;

  TextSelection selection;
  FindState find;
  ViewInput input;

  AppSettings settings;
  std::u16string latestVersion;       // newer than this one, as an update check found; empty before
  std::u16string latestInstallerUrl;  // of the manifest that installs it
  bool settingsFileSeeded = false;    // this process has tried to make the settings file
  bool restoringBinders = false;      // the list of loaded binders is not to be saved now
  std::u16string stampsFolder;   // with a trailing backslash; empty when there is no data folder
  std::u16string bindersFolder;  // likewise
  std::u16string shelveFolder;   // likewise

  std::vector<BinderFile> binderLibrary;
  std::unordered_set<std::u16string, Fnv1aTextHash> unavailableFiles;        // lower-cased paths
  std::unordered_map<std::u16string, ShelfEntry, Fnv1aTextHash> shelfIndex;  // by lower-cased path
};

// The one record of the process.
extern SessionState session;

// Puts the session into its start state, closing what it holds in the order that PDFium needs.
void resetSession();

// Where the document of a pane lives depends on the mode alone: in the pane itself in TwoDocuments,
// in `session.active` otherwise. Everybody goes through these five.
bool inTwoDocuments();
FPDF_DOCUMENT documentOf(int pane);
std::int32_t& pageCountOf(int pane);
std::u16string& pathOf(int pane);
bool& dirtyOf(int pane);
PageRotations& pageRotationsOf(int pane);

// The owner of `documentOf(pane)`, for those who open and close documents.
DocumentHandle& documentHandleOf(int pane);

// True when the active pane's document has edits, placements or rotations that its file lacks.
bool hasUnsavedChanges();

// True when `document` has placements that its annotations lack.
bool placementsPending(FPDF_DOCUMENT document);

// Rotations are counted in quarter turns clockwise; whole turns count as none.
inline constexpr std::uint32_t kQuarterTurnBits = 3;
// True when the pane's document as a whole has pending quarter turns.
bool documentRotationPending(const PaneSlot& pane);
// True when a page of the pane's document has pending quarter turns.
bool anyPageRotationPending(int pane);

// Closes the pane's text page, then its page.
void closePanePage(int pane);

// Drops the pane's bitmap and its size.
void freePaneBitmap(int pane);

// Both of the above.
void dropPaneView(int pane);

// Opens the page `index`, clamped to the document, as the pane's page, with its text page. Without
// a document nothing happens; a page that cannot be loaded leaves the pane without one.
void loadPane(int pane, std::int32_t index);

// Empties the lists of one pane, or of both.
void clearJumpHistories(int pane);
void clearJumpHistories();

// Makes a pane the one that commands act on. Placements stay with the document that has them.
void setActivePane(int pane);

}  // namespace quillmere
