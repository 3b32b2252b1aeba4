#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "base/fnv1a.h"
#include "base/pixel_rect.h"
#include "session/annotation_search.h"
#include "session/app_settings.h"
#include "session/binder.h"
#include "session/binder_tree.h"
#include "session/bookmark_entry.h"
#include "session/find_state.h"
#include "session/gesture.h"
#include "session/markup_entry.h"
#include "session/markup_tip_state.h"
#include "session/markup_tree.h"
#include "session/pane_slot.h"
#include "session/placement.h"
#include "session/placement_drag.h"
#include "session/shelf_index.h"
#include "session/stamp_drag.h"
#include "session/stamp_entry.h"
#include "session/text_selection.h"
#include "session/text_tool.h"
#include "session/waiting_opens.h"

namespace quillmere {

enum class ViewMode : std::uint32_t {
  SinglePage = 0,        // one document, pane 0 only
  Book = 1,              // one document, page n left and n + 1 right, turning together
  IndependentPages = 2,  // one document, each pane on a page of its own
  TwoDocuments = 3,      // each pane owns a document
};

// The state of the user-interface thread; no other thread reads it. Each group names the files that
// write it; all others only read.
struct SessionState {
  SessionState() = default;
  SessionState(const SessionState&) = delete;
  SessionState& operator=(const SessionState&) = delete;

  // The process. Written by main.cpp and app/startup.cpp.
  bool viewerRole = false;      // set once at start: a read-only process
  bool ownsPrimaryName = true;  // false when another main window owns the shared files

  // Open dialogs, and what waits until they are answered. Written by session/waiting_opens.cpp, by
  // documents/open_requests.cpp, which opens what waits, and by app/exit.cpp when the window closes
  // for good.
  std::int32_t documentWork = 0;          // DocumentWork guards alive
  std::vector<WaitingOpen> waitingOpens;  // what arrived meanwhile
  bool closeWaits = false;                // the main window was asked to close meanwhile
  // The window closes for good: the shelf was cleared, and further files are for another process.
  bool leaving = false;
  std::vector<std::u16string> pathsToHandOn;  // what arrived then, once the window has gone

  // Documents, panes and the mode. Written by documents/ and session/document_slots.cpp, the active
  // pane by session/session.cpp too, what a pane shows by view/, and the binders of documents by
  // store/binder_library.cpp too.
  ViewMode viewMode = ViewMode::SinglePage;
  std::int32_t activePane = 0;  // the pane that commands act on
  // Bytes of documents that were loaded from memory; PDFium reads them while the documents are
  // open.
  std::unordered_map<FPDF_DOCUMENT, std::vector<std::uint8_t>, Fnv1aPointerHash> documentKeptBuffer;
  ActiveDocument active;  // declared before the panes, whose pages must close first
  PaneSlot panes[2];
  // Lower-cased document path to the path of the binder that it was opened from.
  std::unordered_map<std::u16string, std::u16string, Fnv1aTextHash> documentBinders;

  // How panes are laid out. Written by view/panes.cpp, view/geometry.cpp, documents/modes.cpp,
  // store/settings.cpp and app/command_actions.cpp.
  bool panScrollEnabled = false;
  std::int32_t paneDividerPosition = 0;  // client x of the divider; 0 means centred
  std::int32_t lastPaneWidth[2] = {-1, -1};

  // The view before Book mode changed it. Written by view/panes.cpp.
  bool bookOverrideActive = false;  // the panes' view was saved on entering Book
  float bookOverrideZoom[2] = {1, 1};
  float bookOverridePanX[2] = {0, 0};
  float bookOverridePanY[2] = {0, 0};
  ZoomMode bookOverrideZoomMode[2] = {kFitPage, kFitPage};
  PixelRect bookOverridePane[2];  // the panes' areas then; empty for a hidden one

  // Panels and bars. Written by panels/, nav/find_bar.cpp, store/settings.cpp, documents/modes.cpp,
  // app/viewer_role.cpp, app/child_windows_window.cpp and session/density.cpp; the placeholders by
  // painting.
  bool navigationPanelVisible = false;
  bool binderPanelVisible = false;
  bool stampPanelVisible = false;
  std::int32_t leftPanelWidth = 190;   // pixels at the screen's own density
  std::int32_t stampPanelWidth = 180;  // pixels at the screen's own density
  float leftPanelSplit = 0.5f;         // share of the left panel above its split
  bool findBarVisible = false;
  PixelRect placeholderRect[2];  // where a click opens the file dialog; empty when not shown
  std::int32_t dpi = 96;         // of the window's screen; written by session/density.cpp and app/

  // Stamps and text on pages. Written by annot/; by documents/ and session/document_slots.cpp when
  // a document closes, is saved, or gets other pages; the library by
  // app/exit.cpp, and its thumbnails by panels/stamp_panel.cpp and session/density.cpp, too.
  std::map<std::int32_t, std::vector<Placement>> placements;  // by zero-based page
  FPDF_DOCUMENT placementDocument = nullptr;                  // their document; not owned
  // A document whose placements are still to be read; not owned, null for none.
  FPDF_DOCUMENT waitingPlacements = nullptr;
  std::set<std::int32_t> placementPagesRead;  // those of its pages that are read already
  std::int32_t selectedPlacementPage = -1;
  std::int32_t selectedPlacementIndex = -1;
  PlacementDrag placementDrag;
  std::vector<StampEntry> stampLibrary;  // the date stamp first
  TextTool textTool;

  // The stamp panel. Written by panels/stamp_panel.cpp.
  std::int32_t stampScroll = 0;        // pixels
  std::int32_t selectedStamp = -1;     // in the library; -1 for none
  std::int32_t hoveredStampItem = -1;  // as stampPanelHit() counts
  StampDrag stampDrag;

  // Written by annot/annotations.cpp, and by session/document_slots.cpp when its document closes.
  AnnotationSearch annotationSearch;

  // The markup that the last context menu was opened over; -1 for none. Written by
  // annot/markups.cpp.
  std::int32_t markupMenuPage = -1;   // zero-based
  std::int32_t markupMenuAnnot = -1;  // in the page's annotation list

  // Written by annot/markup_tip.cpp.
  MarkupTipState markupTip;

  // The markups of one document, in reading order. Written by annot/markup_list.cpp, and by
  // session/document_slots.cpp when that document closes.
  std::vector<MarkupEntry> markupList;
  FPDF_DOCUMENT markupListDocument = nullptr;  // that they are of; not owned, null for none
  // Lists of other open documents, kept for when they are shown again.
  std::unordered_map<FPDF_DOCUMENT, std::vector<MarkupEntry>, Fnv1aPointerHash> otherMarkupLists;
  // Zero-based pages edited since their document's markups were collected.
  std::unordered_map<FPDF_DOCUMENT, std::set<int>, Fnv1aPointerHash> pagesToCollect;

  // The navigation tree: its nodes by number, and in the tree's order. Written by
  // nav/bookmarks.cpp.
  std::vector<BookmarkEntry> bookmarks;
  std::vector<BookmarkOrderEntry> bookmarkOrder;
  MarkupTree markupTree;  // written by nav/markup_tree.cpp

  BinderTree binderTree;  // written by panels/

  // Written by view/selection.cpp, nav/find.cpp, nav/find_bar.cpp, session/gesture.cpp and
  // view/navigation.cpp.
  TextSelection selection;
  FindState find;
  GestureState gesture;
  WheelGathering wheel;

  // Settings and the data folder. Written by store/, and by the commands that change a setting.
  AppSettings settings;
  // What stood in at the start for settings that could not be read; nullopt when they were read.
  // Their file keeps every value that has not changed since.
  std::optional<AppSettings> standInSettings;
  bool listsUnread = false;           // the two lists in that file are still to be read
  bool markupOpacityUnsaved = false;  // its slider was moved and not yet let go
  bool settingsFileSeeded = false;    // this process has tried to make the settings file
  bool restoringBinders = false;      // the list of loaded binders is not to be saved now
  std::u16string stampsFolder;   // with a trailing backslash; empty when there is no data folder
  std::u16string bindersFolder;  // likewise
  std::u16string shelveFolder;   // likewise

  // Written by integration/update_check.cpp.
  std::u16string latestVersion;       // newer than this one; empty until a check finds one
  std::u16string latestInstallerUrl;  // of the manifest that installs it

  // Binders and unsaved work. Written by store/ and documents/; which binders are collapsed or
  // bold, by panels/.
  std::vector<BinderFile> binderLibrary;    // the documents in use first, when there is such a list
  std::vector<AbsentBinder> absentBinders;  // in the order of the settings; they stay in there
  bool workingDocumentsUnread = false;      // their file is there and could not be opened
  std::unordered_set<std::u16string, Fnv1aTextHash> unavailableFiles;  // lower-cased paths
  // When a share last kept the program waiting in vain, in milliseconds of the monotonic clock; by
  // its lower-cased name.
  std::unordered_map<std::u16string, std::uint64_t, Fnv1aTextHash> deafShares;
  std::uint32_t localDrives = 0;  // letters that are known to stand for no share, a bit each
  ShelfIndex shelfIndex;
  bool shelfIndexUnread = false;  // its file is there and could not be read
  // Copies of no entry that were still open when they should have been deleted.
  std::vector<std::u16string> shelfFilesLeft;
  // Open documents whose unsaved changes the user gave up; their entries go when they close.
  std::set<FPDF_DOCUMENT> editsGivenUp;
  std::vector<std::u16string> givenUpPaths;  // of those that have closed
};

// The one record of the process.
extern SessionState session;

// Resets the session to its initial state, closing what it holds in the order that PDFium needs.
void resetSession();

// Where a pane's document is kept depends only on the mode: in the pane itself in TwoDocuments, in
// `session.active` otherwise. Always use these accessors.
bool inTwoDocuments();
DocumentSlot& documentSlotOf(int pane);
FPDF_DOCUMENT documentOf(int pane);
std::int32_t& pageCountOf(int pane);
std::u16string& pathOf(int pane);
bool& dirtyOf(int pane);
PageRotations& pageRotationsOf(int pane);

// The pane whose document has this path, however it is spelled; the active one where both panes
// share it; -1 for none.
int paneWithPath(std::u16string_view path);

// True when the document of the pane, or of the active one, has edits, placements or rotations that
// its file lacks.
bool hasUnsavedChanges(int pane);
bool hasUnsavedChanges();

// True when `document` has placements that are not annotations of it yet.
bool placementsPending(FPDF_DOCUMENT document);

// Rotations are counted in clockwise quarter turns; full turns count as none.
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

// Opens page `index`, clamped to the document, as the pane's page, with its text page. Does nothing
// without a document; the pane has no page when it cannot be loaded.
void loadPane(int pane, std::int32_t index);

// Empties the back and forward lists of one pane, or of both.
void clearJumpHistories(int pane);
void clearJumpHistories();

// Makes `pane` the one that commands act on. Placements stay with their document.
void setActivePane(int pane);

}  // namespace quillmere
